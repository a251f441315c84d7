// store/phase.h -- the one rule for deriving the phases of a partial from its first phase.
// Pure; used by every importer and every edit.
#pragma once

#include "store/store.h"

/// The phase, in radians, after `cycles` cycles from phase `before`. The frequency of the left
/// end alone counts; a negative position is not wrapped.
float advance_phase(float before, double cycles);

/// The same with `turns` more in the sum. Still wrapped once alone, whatever they come to.
float advance_phase_by(float before, double cycles, double turns);

/// Cycles of the segment from points[0] to points[1]: a single-precision product.
inline float segment_cycles(const Breakpoint *points) {
    return (points[1].time - points[0].time) * points[0].freq;
}

/// Derives the phases of points 1 to n - 1 from that of point 0.
void chain_phases(Breakpoint *points, int32_t n);
