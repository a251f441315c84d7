// live/pause.h -- the pauses that live play takes on the window or MIDI thread.
#pragma once

#include <cstdint>

/// Sleeps. Tests let a clock of their own run instead.
extern void (*pause_for)(uint32_t microseconds);
