// Stands in for interact/log_kernels where a drag is measured without logarithms: the numbers
// travel as they do otherwise, and nothing is computed on the way.
#include "interact/log_kernels.h"

#include <algorithm>

void log_positions(const LogAxis &, const float *freqs, float *places, int32_t n) {
    std::copy(freqs, freqs + n, places);
}

void freqs_at_log_positions(const LogAxis &, const float *places, float *freqs, int32_t n) {
    std::copy(places, places + n, freqs);
}
