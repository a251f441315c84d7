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

LogAxis log_axis() {
    return {minfreq, std::log(range_ratio()) / octave, std::log2(range_ratio())};
}

float log_position(const LogAxis &axis, float freq) {
    const double octaves = std::log(static_cast<double>(freq / axis.lowest)) / octave;
    return static_cast<float>(octaves / axis.octaves);
}

float log_position(float freq) {
    return log_position(log_axis(), freq);
}

double freq_at_log_position(const LogAxis &axis, float logfreq) {
    return std::exp(axis.span * logfreq * octave_back) * axis.lowest;
}

double freq_at_log_position(float logfreq) {
    return freq_at_log_position(log_axis(), logfreq);
}

void widen_range(float freq) {
    maxfreq = freq > maxfreq ? freq : maxfreq;
    minfreq = freq < minfreq ? freq : minfreq;
}

void refresh_log_positions() {
    const LogAxis axis = log_axis();
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].logfreq = log_position(axis, parray[i][j].freq);
        }
    }
}
