// store/phase_kernels.h -- the phase chains of many partials side by side, on whatever vectors
// the processor has: each step of a chain waits for the one before it, so that one chain alone
// leaves the processor idle. Bit for bit what chain_phases gives, partial by partial.
#pragma once

#include "store/store.h"

/// A partial whose phases are due.
struct PhaseRun {
    Breakpoint *points;
    int32_t n; // of points
};

/// chain_phases of each run. No two runs share a point.
void chain_side_by_side(const PhaseRun *runs, int32_t count);
