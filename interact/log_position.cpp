#include "interact/log_position.h"

#include "store/store.h"

#include <cmath>

namespace {

constexpr double octave = 0.6931472;
constexpr double octave_back = 0.69314718;

double range_ratio() {
    return static_cast<double>(maxfreq / minfreq);
}

} // namespace

float log_position(float freq) {
    const double octaves = std::log(static_cast<double>(freq / minfreq)) / octave;
    return static_cast<float>(octaves / (std::log(range_ratio()) / octave));
}

double freq_at_log_position(float logfreq) {
    return std::exp(std::log2(range_ratio()) * logfreq * octave_back) * minfreq;
}

void widen_range(float freq) {
    maxfreq = freq > maxfreq ? freq : maxfreq;
    minfreq = freq < minfreq ? freq : minfreq;
}

void refresh_log_positions() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].logfreq = log_position(parray[i][j].freq);
        }
    }
}
