// synth/bank.h -- the oscillator bank over a stripe of partials: numbers index, index + count,
// index + 2 count and so on. Reads the store and writes only the given buffer.
#pragma once

#include <cstdint>

/// How the samples are made. Both ways give the same bits.
enum class BankForm {
    best,  // vectors where the processor has them, plain elsewhere
    plain, // one partial after the other, one sinf a frame
};

extern BankForm bank_form; // best at the start; tests and benchmarks set it between renders

/// Adds all points of the stripe's partials to out[0..frames).
void render_stripe(int32_t index, int32_t count, float *out, int64_t frames);

/// Adds the selected stretches of the stripe's partials to out[0..frames). With `look_behind` a
/// stretch that follows an unselected point fades in; without, only one that follows a stretch.
void render_selected_stripe(int32_t index, int32_t count, bool look_behind, float *out,
                            int64_t frames);
