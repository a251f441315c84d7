// tests/interact/log_places.h -- the logarithmic frequency axis from `low` to `high`, in Hz, by its
// formulas as they are told: in double precision, each way with its own constant.
#pragma once

/// The place of a frequency, rounded as it is stored.
float place_between(float low, float high, float freq);

/// The frequency at a place.
double freq_between(float low, float high, float place);
