// interact/log_position.h -- places on the logarithmic frequency axis while the range itself is
// moving: both directions go by minfreq and maxfreq as they stand, not by the stored logmaxfreq,
// which may be an event behind. Window thread only.
#pragma once

constexpr double place_octave = 0.6931472; // natural logarithm of 2, for places
constexpr double freq_octave = 0.69314718; //  the same for frequencies

/// The axis of a range that stands still over many points; its logarithm is taken once.
struct LogAxis {
    float lowest;   // Hz
    double octaves; // of the range, by the constant of places
    double span;    // of the range in octaves, by that of frequencies
};

LogAxis log_axis();

/// The place of `freq`, in Hz, on an axis or on that of the range as it stands: 0 at minfreq, 1 at
/// maxfreq. Logarithms in double precision.
float log_position(const LogAxis &axis, float freq);
float log_position(float freq);

/// The frequency, in Hz, at the place `logfreq`; in double precision until it is stored.
double freq_at_log_position(const LogAxis &axis, float logfreq);
double freq_at_log_position(float logfreq);

/// Widens minfreq and maxfreq so that `freq` lies within.
void widen_range(float freq);
