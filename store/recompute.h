// store/recompute.h -- brings the derived ranges back after an edit. Every operation is one
// sweep over the globals of the store, once per command, on the window thread.
#pragma once

#include "store/phase_kernels.h"
#include "store/store.h"

/// Hz at the normalised log position `logfreq` of the range minf to maxf (Hz, above 0).
float logfreq2freq(float logfreq, float maxf, float minf);

/// Normalised log position of `freq`; the numerator takes the store's minfreq, whatever minf is.
float freq2logfreq(float freq, float maxf, float minf);

/// sndstart, sndlen, meant, in seconds. A negative earliest time shifts the whole sound so that
/// it starts at 0. With single-point partials alone meant is 0/0.
void recompute_times();

/// minfreq, maxfreq (Hz), fspan, logmaxfreq and every peval[i].avgfreq. The minimum ends as a
/// whole number of Hz, the maximum exact. Empty partials give an avgfreq of NaN.
void recompute_all_pitch();

/// The same for partial i alone; widens the range, never narrows it.
void recompute_pitch(int32_t i);

/// Index of the first selected point of partial i, whose flag equals 1, from index `from` on;
/// npoints[i], or `from` behind that, when there is none.
int32_t first_selected_point(int32_t i, int32_t from = 0);

/// Whether any point of partial i is selected.
bool has_selected_point(int32_t i);

/// Derives the phases of each partial that holds a selected point, from its first phase.
void recompute_all_phase();

/// Sets the first phase of partial i (radians) and derives the others.
void recompute_phase(float phase0, int32_t i);

/// The logfreq of every point. Runs after recompute_all_pitch, whose range it needs.
void recompute_logfreq();

/// Largest and smallest amp of all points, in dB; -10000 and 10000 for an empty store.
void recompute_amp(float *max, float *min);

/// start, dur and avgfreq of the first n partials, in seconds and Hz.
void averages(int32_t n, const int32_t *npoints, Breakpoint *const *parray, PartialEval *peval);

/// What a sweep over partials, in their order, has gathered so far.
struct RangeSums {
    float earliest = 100000.0f; // seconds, of first points
    float latest = 0.0f;        // seconds, of last points of partials of more than one
    float intervals = 0.0f;     // seconds, sum over successive points
    int64_t interval_count = 0; //
    float low = 22050.0f;       // Hz
    float high = 0.0f;          // Hz
};

/// Partials whose phases are due, until there are enough of them to run side by side.
struct PhaseQueue {
    static constexpr int32_t room = 32;
    PhaseRun runs[room];
    int32_t count = 0;
};

/// The closing recomputations of an edit, each partial's while its points are still in the cache:
/// together they give what recompute_all_phase, recompute_times, recompute_all_pitch where `pitch`
/// is set, and averages of all partials give one after the other, bit for bit.
struct ClosingSweep {
    RangeSums sums;
    PhaseQueue phases;
};

/// Each partial once, in their order, after its last change.
void close_partial(ClosingSweep &sweep, int32_t i);

/// After the last partial. Until then none of the ranges has changed.
void finish_closing(ClosingSweep &sweep, bool pitch);

/// Clears the two work values of each summary.
void reset_peval_spares(PartialEval *peval, const int32_t *partials);

/// The full refresh after an edit of many points: amplitudes, times, pitch, phase, logfreq.
void recompute_everything();
