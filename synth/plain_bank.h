// synth/plain_bank.h -- the oscillator bank written down as its law says: one partial after the
// other, one sinf a frame. Every faster form gives the same bits; tests and benchmarks compare
// with this one.
#pragma once

#include <cstdint>

/// Adds partial p to out[0..frames), all of it. Frames behind the buffer are not rendered.
void plain_partial(int32_t p, float *out, int64_t frames);

/// How the selected stretches of partials start and end.
struct StretchFade {
    bool due;         // the next segment starts from silence; outlives the partial
    bool look_behind; // an unselected point before a stretch makes its fade-in due
};

/// Adds the selected stretches of partial p to out[0..frames).
void plain_stretches(int32_t p, StretchFade &fade, float *out, int64_t frames);
