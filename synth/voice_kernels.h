// synth/voice_kernels.h -- the vector arithmetic of the bank, for whatever vectors the processor
// has. Every kernel gives the bits of the plain law; where it could not, the plain law runs.
#pragma once

#include "synth/voices.h"

#include <cstddef>
#include <cstdint>

constexpr int32_t lane_count = 16;      // voices side by side
constexpr int32_t block_frames = 256;   // the output block stays in the first cache
constexpr int32_t chunk_frames = 64;    // rendered in one go; a multiple of 4
constexpr size_t row_stride = 256 + 16; // floats; a power of two would crowd the cache's sets

/// Room for one block of lanes; one for each worker, never on a thread's stack.
struct LaneScratch {
    alignas(64) float ph[chunk_frames * lane_count]; // radians by frames, or one voice's
    alignas(64) float a[chunk_frames * lane_count];  // linear, likewise
    alignas(64) float row[lane_count * row_stride];  // samples by lanes
};

/// True when the processor has vectors that the kernels were built for.
bool vectors_at_hand();

/// The kind of vectors that the kernels run on now, by Highway's name for it.
const char *vector_kind();

/// Adds frames [from, to), at most a block, of up to 16 voices to `out`, frame `from` first, in
/// the order given. All of them overlap the block.
void render_voices(Voice *const *voices, int32_t count, int64_t from, int64_t to, float per_hz,
                   LaneScratch &scratch, float *out);

/// Adds frames [from, to) of one voice to `out`, frame `from` first, by the plain law.
void plain_voice(Voice &voice, int64_t from, int64_t to, float per_hz, float *out);

/// The sine that the kernels use: equal to sinf for -22 <= x <= 22.
void vector_sine(const float *x, float *sine, size_t count);
