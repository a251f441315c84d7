// live/generator.h -- starting and stopping of the live generators: a sound begins at its right
// values under an envelope of one block, and ends by a release that the callback is left the
// time for. Window or MIDI thread.
#pragma once

#include "live/audio_unit.h"
#include "live/live.h"
#include "live/pause.h"
#include "live/shared.h"

#include <cstdint>

constexpr uint32_t release_pause = 20000; // microseconds that a stop leaves for the last block

/// Starts a generator that is not playing at `position` (frames) with the candidates' values;
/// `tell` names it in the debug print. A failure to start is not reported.
void start_generator(LiveGenerator &generator, const LiveCandidate *candidates, double position,
                     const char *tell);

/// A driver with long blocks has not asked for the release block yet when the usual pause is
/// over; waits on for it, but not for ever.
void await_release(const int32_t &state);

/// Releases the sound and stops the unit.
template <typename Generator> void halt_generator(Generator &generator) {
    poke(generator.state, 3);
    pause_for(release_pause);
    if (peek(generator.playing) != 0) {
        await_release(generator.state);
    }
    AudioOutputUnitStop(generator.unit);
    poke(generator.playing, uint8_t{0});
}
