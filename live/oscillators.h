// live/oscillators.h -- the sum of a block of table oscillators, in vectors where the processor
// has them. Both forms give the same bits. No lock, no allocation, no system call. Audio thread.
#pragma once

#include "live/oscillator_block.h"

#include <cstdint>

/// How a block is summed.
enum class OscillatorForm {
    best,  // vectors where the processor has them
    plain, // frame by frame, one oscillator after the other
};

extern OscillatorForm oscillator_form; // best at the start; tests set it between blocks

/// Sums all oscillators, in their order, frame by frame into sum[0..frames). At most 2048
/// frames; `sum` has room for 16 more.
void sum_block(const OscillatorBlock &block, uint32_t frames, float *sum);

/// The kind of vectors that the best form runs on now; asking also settles the choice, which a
/// callback should find made.
const char *oscillator_vectors();
