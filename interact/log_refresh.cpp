#include "interact/log_refresh.h"

#include "interact/log_kernels.h"
#include "store/store.h"

#include <algorithm>

namespace {

constexpr int32_t block = 256; // points whose places are taken together

} // namespace

void widen_range_to_all() {
    float low = minfreq;
    float high = maxfreq;
    for (int32_t i = 0; i < partials; ++i) {
        const Breakpoint *points = parray[i];
        for (int32_t j = 0; j < npoints[i]; ++j) {
            low = points[j].freq < low ? points[j].freq : low;
            high = points[j].freq > high ? points[j].freq : high;
        }
    }
    minfreq = low;
    maxfreq = high;
}

void refresh_log_positions(const LogAxis &axis, int32_t i) {
    float freqs[block];
    float places[block];
    for (int32_t from = 0; from < npoints[i]; from += block) {
        Breakpoint *points = parray[i] + from;
        const int32_t n = std::min(block, npoints[i] - from);
        for (int32_t j = 0; j < n; ++j) {
            freqs[j] = points[j].freq;
        }
        log_positions(axis, freqs, places, n);
        for (int32_t j = 0; j < n; ++j) {
            points[j].logfreq = places[j];
        }
    }
}

void refresh_log_positions(const LogAxis &axis) {
    for (int32_t i = 0; i < partials; ++i) {
        refresh_log_positions(axis, i);
    }
}
