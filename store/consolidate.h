// store/consolidate.h -- a repair pass over amplitudes where a tracker lost a partial for a
// point or two. No command calls it; it is kept for tools built on the library. Blocks in
// console reads; window thread.
#pragma once

#include "store/store.h"

/// Mends silent points inside the first n partials of more than 3 points, then lowers the loud
/// last-but-one point of every partial in dB. Asks on the console whether amplitudes are in dB;
/// prints one mark for each mend. Ends at end of input with nothing changed.
void consolidate(Breakpoint **parray, const int32_t *npoints, int32_t n);

/// The question of consolidate alone: 1 for dB, 0 for linear, -1 at end of input.
int32_t dialog__5();
