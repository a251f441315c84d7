// live/generator.h -- starting and stopping of the live generators: a sound begins at its right
// values under an envelope of one block, and ends by a release that the callback is left the
// time for. Window or MIDI thread.
#pragma once

#include "live/audio_unit.h"
#include "live/live.h"
#include "live/shared.h"

#include <cstdint>

/// Starts a generator that is not playing at `position` (frames) with the candidates' values;
/// `tell` is its text in the debug print, for one int. A failure to start is not reported.
void start_generator(LiveGenerator &generator, const LiveCandidate *candidates, double position,
                     const char *tell);

/// Pauses after a request, a `state` of 3, for a last block that fades out. A driver with long
/// blocks has not asked for it yet when the usual pause is over: waits on, but not for ever. A
/// unit that is not `running` asks for none.
void await_release(const int32_t &state, bool running = true);

/// Releases the sound and stops the unit.
template <typename Generator> void halt_generator(Generator &generator) {
    poke(generator.state, 3);
    await_release(generator.state, peek(generator.playing) != 0);
    AudioOutputUnitStop(generator.unit);
    poke(generator.playing, uint8_t{0});
    poke(N, 1000.0f);
}
