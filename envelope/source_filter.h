// envelope/source_filter.h -- shapes the levels of points by two frames of a spectral envelope,
// interpolated in time and frequency. Sums and products run in double precision; a level is
// stored in single. Window thread.
#pragma once

#include "envelope/LPC.h"
#include "store/store.h"

/// Applies the span from `frameA` to `frameB` to all points of the store's partials that lie in
/// it. `scale` stretches the frames' times onto the sound. `dbmode` 1 takes the envelope as dB
/// and adds; 0 takes it as linear and multiplies, from the first segment that fits. `power`, 0 or
/// 1, is the share that a point keeps of its own level. lpoints becomes the count of points in
/// element 0 of `frameA`, within the records that both frames have. A missing frame is reported
/// and shapes nothing.
void source_filter(float scale, Breakpoint **parray, PartialEval *peval, LpcFrame frameA,
                   LpcFrame frameB, const int32_t *npoints, int32_t dbmode, float power);
