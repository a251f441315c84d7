// store/evaluate.h -- judging and mending data as a file gave it: units of amplitude, order of
// times, empty partials, and the ranges that hold at import. Window thread, before the window
// opens; the utilities that no command calls are kept for tools built on the library.
#pragma once

#include "store/store.h"

/// All derived ranges, once, after import and before peval exists. Takes the addresses of the
/// store's globals, reports them on the console, and returns 0, or -1 with a message when there
/// is no partial (a null address or a count below 1).
int32_t global_parameters(Breakpoint ***parray, const int32_t *partials, int32_t **npoints,
                          float *sndstart, float *sndlen, float *maxfreq, float *minfreq,
                          float *logmaxfreq, float *fspan, float *nlogmaxfreq, float *maxamp,
                          float *sndstart_again, float *meant, float *oldmaxfreq,
                          float *oldminfreq);

/// Removes partials of no points, reporting each. Its walk stops one short of the end: the last
/// partial is lost, and the one before it stands twice.
void check_import_sanity();

/// One pass over each partial that swaps neighbouring times out of order, printing "*" for each
/// swap. Not a sort; frequency and amplitude stay on their points.
void sanityCheck();

/// 0 with every ampunits set to 0 when all amplitudes of the first n partials are linear (none
/// negative), else 1 with every ampunits set to 1. Its counters are 16 bits wide.
int32_t ampcheck(Breakpoint **parray, const int32_t *npoints, int32_t n);

/// Turns the first n partials into dB when all their amplitudes are linear.
void ampconvert(Breakpoint **parray, const int32_t *npoints, int32_t n);

/// The older evaluation of the whole store: units, then a fresh peval with exactly `partials`
/// records. Linear data become dB but keep their ampunits of 0, so that avgamp is their product
/// to the power of an integer quotient: 1.0 for any partial of more than one point.
void evalpart(Breakpoint **parray, const int32_t *npoints);

/// Arithmetic mean frequency, in Hz, of partial i.
float average(Breakpoint *const *parray, const int32_t *npoints, int32_t i);
