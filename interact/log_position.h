// interact/log_position.h -- places on the logarithmic frequency axis while the range itself is
// moving: both directions go by minfreq and maxfreq as they stand, not by the stored logmaxfreq,
// which may be an event behind. Window thread only.
#pragma once

/// The place of `freq`, in Hz: 0 at minfreq, 1 at maxfreq. Logarithms in double precision.
float log_position(float freq);

/// The frequency, in Hz, at the place `logfreq`; in double precision until it is stored.
double freq_at_log_position(float logfreq);

/// Widens minfreq and maxfreq so that `freq` lies within.
void widen_range(float freq);

/// Puts the logfreq of every point where the range as it stands has it.
void refresh_log_positions();
