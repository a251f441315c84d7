// store/store.h -- the one analysis in memory: partials of breakpoints and the ranges drawn
// from them. Importers fill it once; every edit works on it in place. The window thread owns
// all writes unless a field says otherwise.
#pragma once

#include <cstdint>

/// One analysis point: a sample of one sinusoid at one moment.
struct Breakpoint {
    float time;        // seconds from the start of the sound
    float freq;        // Hz
    float amp;         // dB, 0 is full scale; -140 is silence
    float phase;       // radians, 0 to 2 pi
    float logfreq;     // place between minfreq (0) and maxfreq (1) on a log2 scale
    uint16_t ampunits; // 1: amp is in dB, 0: amp is linear
    uint16_t selected; // selected when equal to 1
    float scratch;     // work value of a time stretch, 0 outside it
};

/// The summary of one partial.
struct PartialEval {
    float start;        // seconds, time of the first point
    float dur;          // seconds, last time minus first
    float avgfreq;      // Hz, arithmetic mean over the points
    float avgamp;       // written by evalpart alone
    uint16_t reserved1; // 0
    uint64_t reserved2; // 0
    float spare1;       // work value of the harmonize gesture
    float spare2;       // work value of the harmonize gesture
    int16_t selected;   // selected when equal to 1
};

/// A partial's number as the list and SDIF readers met it.
struct PartialIndexEntry {
    int32_t index;
    int32_t second; // 0
};

/// Spare elements behind the per-partial arrays, so that a few partials can be added
/// before the next regrow.
constexpr int32_t spare_partials = 100;

constexpr double two_pi = 6.283185307179586;
constexpr double ln_2 = 0.69314718055994530942;

// Filled by the importer, changed by every structural edit.
extern int32_t partials;          // number of partials
extern int32_t *npoints;          // point count of each partial
extern Breakpoint **parray;       // one array of exactly npoints[i] records per partial
extern PartialEval *peval;        // one summary per partial, with spare elements
extern PartialIndexEntry *xarray; // written by the list and SDIF readers; nothing reads it

// Derived by the recompute family.
extern float sndstart;   // seconds, earliest first point
extern float sndlen;     // seconds, latest last point: an end time, not a duration
extern float meant;      // seconds, mean interval of successive points
extern float minfreq;    // Hz
extern float maxfreq;    // Hz
extern float fspan;      // maxfreq / minfreq
extern float logmaxfreq; // log2 of fspan
extern float minamp;     // dB
extern float maxamp;     // dB

// As they stood at import; global_parameters writes them once.
extern float nlogmaxfreq; // natural logarithm of the span
extern float oldmaxfreq;  // Hz
extern float oldminfreq;  // Hz

/// Whether a pair of numbers, as the found points hold them, names a point of the store: an edit
/// may have left it stale.
inline bool point_exists(int32_t part, int32_t point) {
    return part >= 0 && part < partials && point >= 0 && point < npoints[part];
}

/// Start values of the store, before any file is read.
void reset_store_globals();
