// live/oscillator_kernels.h -- the vector arithmetic of the table oscillators, for whatever
// vectors the processor has, with the bits of the plain form.
#pragma once

#include "live/oscillator_block.h"

/// True when the processor has vectors that the kernels were built for.
bool oscillators_have_vectors();

/// The kind of vectors, by Highway's name for it.
const char *oscillator_vector_kind();

/// As sum_block_plain. `sum` has room for 16 frames behind the last.
void sum_block_in_vectors(const OscillatorBlock &block, uint32_t frames, float *sum);
