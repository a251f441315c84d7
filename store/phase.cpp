#include "store/phase.h"

#include <cmath>

namespace {

/// Whole and partial turns as radians, one turn taken off where there is one.
float radians_of(double turns) {
    float position = static_cast<float>(turns);
    if (position >= 1.0f) {
        position -= 1.0f;
    }
    return static_cast<float>(position * two_pi);
}

} // namespace

float advance_phase(float before, double cycles) {
    double whole;
    return radians_of(before / two_pi + std::modf(cycles, &whole));
}

float advance_phase_by(float before, double cycles, double turns) {
    double whole;
    return radians_of(before / two_pi + std::modf(cycles, &whole) + turns);
}

void chain_phases(Breakpoint *points, int32_t n) {
    for (int32_t i = 1; i < n; ++i) {
        const float cycles = (points[i].time - points[i - 1].time) * points[i - 1].freq;
        points[i].phase = advance_phase(points[i - 1].phase, cycles);
    }
}
