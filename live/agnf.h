// live/agnf.h -- the working generators: oscillators that step through a table of one sine
// cycle. wgen follows pcandidates; zgen follows qcandidates and keeps a clock and a gain of its
// own. Main thread, but for the render procedures.
#pragma once

#include "live/live.h"

#include <cstdint>

extern float *Sin; // one cycle, an entry per Hz of the sample rate; null until made

/// Makes the table with `size` entries, dropping one made before; below 1 there are none. Before
/// any unit starts. Returns Sin.
float *makeSin(int32_t size);

/// Creates the unit of a generator and readies its arrays, the first for wgen, the second for
/// zgen. Any failure ends the program.
void createAdditiveNFToneUnit(LiveGenerator *record);
void createAdditiveNFToneUnit1(LiveGenerator *record);

/// Render procedures of the two; the context is the record. Audio thread.
void AdditiveNFRenderProc(void *context, uint32_t frames, float *out);
void AdditiveNFRenderProc1(void *context, uint32_t frames, float *out);
