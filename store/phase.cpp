#include "store/phase.h"

#include <cmath>

float advance_phase(float before, double cycles) {
    double whole;
    const double fraction = std::modf(cycles, &whole);
    float position = static_cast<float>(before / two_pi + fraction);
    if (position >= 1.0f) {
        position -= 1.0f;
    }
    return static_cast<float>(position * two_pi);
}

void chain_phases(Breakpoint *points, int32_t n) {
    for (int32_t i = 1; i < n; ++i) {
        const float cycles = (points[i].time - points[i - 1].time) * points[i - 1].freq;
        points[i].phase = advance_phase(points[i - 1].phase, cycles);
    }
}
