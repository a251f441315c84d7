// live/midi.h -- connects the program to all sources of MIDI at its start and lets go of them at
// its end. Main thread.
#pragma once

#include "live/live.h"

/// Creates the client and the input port of a generator and connects every source there is,
/// telling how many; from then on all channels are taken. A failure to create either ends the
/// program with status -1.
void createNFMIDI(LiveGenerator *record);

/// Disconnects the sources and disposes the port and the client; a generator without a client is
/// left alone.
void disposeNFMIDI(LiveGenerator *record);

/// The same for the generator that computes each sine.
void createMIDI(SineGenerator *record);
void disposeMIDI(SineGenerator *record);
