// display/clefs.h -- the glyphs of the bass and the treble clef: filled outlines in grids of
// their own, drawn in the current colour near the left end of the staff. Window thread only;
// matrix and colour are left as they were.
#pragma once

/// Each at scene height `y`; `x` is not used, the place along the staff is fixed.
void bass_clef(float x, float y);
void treble_clef(float x, float y);
