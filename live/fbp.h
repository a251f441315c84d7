// live/fbp.h -- the player of the rendered sound: starts, fades, pauses and loops fBuffer on an
// output unit of its own, and keeps the time for the play head. Interface thread, but for the
// render procedure.
#pragma once

#include "live/live.h"

#include <cstdint>

/// Creates the player's unit. Any failure ends the program.
void CreateAndConnectFpOutputUnit1(FloatPlayer *record);

/// Plays fBuffer from its beginning; `start` (seconds) is where the play head begins. Nothing
/// while it plays already. `frames` is told under dbp, no more. Returns 0.
int32_t fbplay1(float start, int64_t frames);

/// Asks for the fade-out to a stop; the place is kept.
void fbstop1();

/// Plays on from `position`.
void fbresume1();

/// Render procedure of the player; the context is its record. Audio thread.
void FloatBufRenderProc1(void *context, uint32_t frames, float *out);
