// live/oscillator_block.h -- the block of the table oscillators as the law has it: one integer
// phase each, stepping through a table of one cycle that has an entry per Hz. No lock, no
// allocation, no system call. Audio thread.
#pragma once

#include <cstdint>

constexpr int32_t most_oscillators = 2047;
constexpr uint32_t most_block_frames = 2048; // longer blocks are split

/// What one block needs of its generator. Lines run over the block: at frame k the amplitude is
/// da k + amp and the frequency df k + freq, cut to whole Hz.
struct OscillatorBlock {
    const float *freq; // Hz at the block's start
    const float *df;   // Hz a frame
    const float *amp;  // linear, at the block's start
    const float *da;   // a frame
    int32_t *phase;    // table index, of any size; left behind the block's last frame
    int32_t count;     // oscillators, at most 2047
    const float *table;
    int32_t size; // entries of the table, at least 1
};

/// A frequency cut to the phase step it gives; 0 for what is not a number and beyond any
/// frequency that could be meant, so that phases cannot overflow within a block.
int32_t whole_hertz(float freq);

/// The place in a table of `size` entries of any phase, negative ones counted backwards.
int32_t table_index(int32_t phase, int32_t size);

/// Sums all oscillators, in their order, frame by frame into sum[0..frames).
void sum_block_plain(const OscillatorBlock &block, uint32_t frames, float *sum);
