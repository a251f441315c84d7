// live/notes.h -- MIDI as a way through the sound: the newest of the notes held chooses the
// moment that is heard, the bend moves it by up to a note, the wheel may choose the partials. Two
// octaves from note 48 to note 72 cover the sound. MIDI thread.
#pragma once

#include "live/midi_system.h"

/// Takes the first message of each packet. Neither context is used.
void midiReadProc(const MidiPacketList &packets, void *port_context, void *source_context);
