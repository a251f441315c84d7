#include "interact/log_position.h"

#include "interact/log_kernels.h"
#include "store/store.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32_t block = 256; // points whose places are taken together

double range_ratio() {
    return static_cast<double>(maxfreq / minfreq);
}

} // namespace

LogAxis log_axis() {
    return {minfreq, std::log(range_ratio()) / place_octave, std::log2(range_ratio())};
}

float log_position(const LogAxis &axis, float freq) {
    const double octaves = std::log(static_cast<double>(freq / axis.lowest)) / place_octave;
    return static_cast<float>(octaves / axis.octaves);
}

float log_position(float freq) {
    return log_position(log_axis(), freq);
}

double freq_at_log_position(const LogAxis &axis, float logfreq) {
    return std::exp(axis.span * logfreq * freq_octave) * axis.lowest;
}

double freq_at_log_position(float logfreq) {
    return freq_at_log_position(log_axis(), logfreq);
}

void widen_range(float freq) {
    maxfreq = freq > maxfreq ? freq : maxfreq;
    minfreq = freq < minfreq ? freq : minfreq;
}

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

void refresh_log_positions() {
    const LogAxis axis = log_axis();
    for (int32_t i = 0; i < partials; ++i) {
        refresh_log_positions(axis, i);
    }
}
