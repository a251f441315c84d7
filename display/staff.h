// display/staff.h -- the ten lines of a grand staff at their equal-tempered frequencies, as a
// musician's reference over the analysis. Window thread only.
#pragma once

/// Frequencies (Hz) of the lines G2 to A3 and E4 to F5, from the bottom, for the A of `a` Hz.
void make_et_staff(const float *a, float *f1, float *f2, float *f3, float *f4, float *f5, float *f6,
                   float *f7, float *f8, float *f9, float *f10);

/// Frequency (Hz) at which the treble clef stands.
void make_fs(const float *a, float *fs);

/// The staff and, in the log view, its clefs, each by its flag; in every case leaves their
/// colour behind.
void draw_staff();
