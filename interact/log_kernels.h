// interact/log_kernels.h -- many places on the logarithmic axis at once, on whatever vectors the
// processor has, with the bits of log_position and freq_at_log_position one by one: wherever the
// vector arithmetic could round otherwise, these are asked.
#pragma once

#include "interact/log_position.h"

#include <cstdint>

/// places[k] = log_position(axis, freqs[k]) for k below n.
void log_positions(const LogAxis &axis, const float *freqs, float *places, int32_t n);

/// freqs[k] = freq_at_log_position(axis, places[k]), rounded to single precision.
void freqs_at_log_positions(const LogAxis &axis, const float *places, float *freqs, int32_t n);
