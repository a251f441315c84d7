// live/gestures.h -- the sound frozen at one moment: under the pointer while it scrubs over the
// flat view, or where MIDI points. The audio callback follows pcandidates from block to block.
#pragma once

#include <cstdint>

/// Samples at pixel column x, or at wgen.time when MIDI asks, and starts wgen unless it plays.
/// Window thread; with from_midi the MIDI thread, and then without any call to the graphics.
void pplay(int32_t x, uint8_t from_midi);

/// Motion callback of a scrub. Window thread.
void pmotion(int x, int y);

/// Samples at wgen.time while notes move it. MIDI thread.
void mmotion();

/// Releases the scrub's sound and stops its unit. Window thread.
void stop();

/// The same for the zone's.
void zstop();

/// Reserved for a still sound; without effect.
void synthesizeSnapshot();
void sinusoid();
