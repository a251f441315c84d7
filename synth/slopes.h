// synth/slopes.h -- the straight lines along which every oscillator moves from one breakpoint to
// the next. `p` is the partial, `j` the point. All in single precision, in the order of the
// formulas; a slope is per second, the caller divides it by the rate. Nothing guards against
// equal times: the slope is then infinite or not a number. The records at j and j + 1 (of the
// two-segment laws, at j and j + 2) must exist.
#pragma once

#include <cstdint>

constexpr float TWOPI_F = 6.2831855f; // one turn, radians

/// Hz per second. The phase difference, in cycles, is added to the frequency difference so that
/// the oscillator lands near the next point's phase; the mix of units is meant.
float find_tanfreq(int32_t p, int32_t j);

/// Hz per second over two segments, phases left out.
float bug_tanfreq(int32_t p, int32_t j);

/// dB per second: over one segment, over two, and with the rise moved by 100 dB up and down.
float find_tanamp(int32_t p, int32_t j);
float bug_tanamp(int32_t p, int32_t j);
float hack_tanamp(int32_t p, int32_t j);
float hack_e_tanamp(int32_t p, int32_t j);

/// Linear amplitude per second: plain; from silence to the next point; from the point down to
/// silence. -140 dB counts as powf(10, -7), not as silence.
float lin_tanamp(int32_t p, int32_t j);
float lins_tanamp(int32_t p, int32_t j);
float linh_tanamp(int32_t p, int32_t j);

/// Linear amplitude per second over two segments, as if from silence whatever the first point.
float lin_bug_tanamp(int32_t p, int32_t j);

/// 0 to 1 over 2000 frames; the player's and the generator's name of one law.
float nramp(float x);
float kramp(float x);

/// Seconds: MIDI notes `lo` to `hi` spread over the time from `t0` to 512 frames before the end
/// of the sound. From `hi` on it is that end.
float note2time(float x, float t0, int32_t lo, int32_t hi);
