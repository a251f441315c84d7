// edit/mirror.h -- turning the frequencies of selected points upside down, in place. The mirror
// is held inside the range of the analysis, with a message when it had to move. The caller
// refreshes pitch range, log positions, phases and averages. Window thread only.
#pragma once

/// Lays the band above `freq` (Hz) upside down onto the band below it, scaled to fit, and the
/// other way about. Results stay within minfreq to maxfreq.
void mirror3d(float freq);

/// Turns each interval from `freq` (Hz) into the same interval on its other side. Results may
/// leave the range.
void mirror_pitch(float freq);
