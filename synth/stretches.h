// synth/stretches.h -- runs of selected points that the diagnostic driver renders: three or more
// in a row, or any that runs up to the partial's last point.
#pragma once

#include "store/store.h"

/// One run. A lone selected last point leaves `last` 0.
struct SynthStretch {
    int32_t part;  // partial
    int32_t first; // point
    int32_t part2; // the partial again
    int32_t last;  // point
};

/// The number of stretches in the first `number` partials.
int32_t count_stretches(const Breakpoint *const *array, const int32_t *counts, int32_t number);

/// Writes all of them to `stretches`, zero-filled and with room for as many as were counted.
/// `count` goes on changing meanwhile: a run of two or more sets it to the place in hand plus
/// one, a run too short lowers it, so in the end it may leave out the last ones.
void fill_stretches(const Breakpoint *const *array, const int32_t *counts, int32_t number,
                    SynthStretch *stretches, int32_t &count);
