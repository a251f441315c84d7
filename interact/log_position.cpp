#include "interact/log_position.h"

#include "store/store.h"

#include <cmath>

namespace {

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
