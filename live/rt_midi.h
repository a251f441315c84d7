// live/rt_midi.h -- the MIDI sources of this machine, by the ALSA sequencer and JACK. One thread
// asks all connected sources in turn and hands what came to the read procedure; without a MIDI
// system there are 0 sources. Sources that appear later are not found.
#pragma once

#include "live/midi_system.h"

extern const MidiBackEnd rt_midi;
