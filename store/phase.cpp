#include "store/phase.h"

#include <cmath>

namespace {

constexpr double all_whole = 4503599627370496.0; // from here on a double has no fraction

/// What std::modf leaves, sign of zero included, without a call for the usual numbers.
double fraction_of(double cycles) {
    if (std::fabs(cycles) < all_whole) {
        const double whole = static_cast<double>(static_cast<int64_t>(cycles));
        return std::copysign(cycles - whole, cycles);
    }
    double whole;
    return std::modf(cycles, &whole);
}

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
    return radians_of(before / two_pi + fraction_of(cycles));
}

float advance_phase_by(float before, double cycles, double turns) {
    return radians_of(before / two_pi + fraction_of(cycles) + turns);
}

void chain_phases(Breakpoint *points, int32_t n) {
    for (int32_t i = 1; i < n; ++i) {
        points[i].phase = advance_phase(points[i - 1].phase, segment_cycles(points + i - 1));
    }
}
