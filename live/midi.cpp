#include "live/midi.h"

#include "live/audio_unit.h"
#include "live/midi_system.h"
#include "live/notes.h"
#include "live/shared.h"

#include <cstdio>

namespace {

template <typename Record> void connect_all(Record &record) {
    record.midi_client = 0;
    CheckError(MIDIClientCreate("MIDI_Client", &record.midi_client),
               "MIDI Client Create Error\nRelaunch Application:");
    CheckError(MIDIInputPortCreate(record.midi_client, "MIDI_Input", midiReadProc, nullptr,
                                   &record.midi_port),
               "MIDI Port Create Error\nRelaunch Application:");
    const int64_t sources = MIDIGetNumberOfSources();
    std::printf("MIDI Sources: %ld\n", static_cast<long>(sources));
    poke(omni, 1);
    for (int64_t i = 0; i < sources; ++i) {
        MIDIPortConnectSource(record.midi_port, MIDIGetSource(i), nullptr);
    }
}

template <typename Record> void let_go(Record &record) {
    if (record.midi_client == 0) {
        return;
    }
    const int64_t sources = MIDIGetNumberOfSources();
    for (int64_t i = 0; i < sources; ++i) {
        MIDIPortDisconnectSource(record.midi_port, MIDIGetSource(i));
    }
    MIDIPortDispose(record.midi_port);
    MIDIClientDispose(record.midi_client);
    record.midi_client = 0;
}

} // namespace

void createNFMIDI(LiveGenerator *record) {
    connect_all(*record);
}

void disposeNFMIDI(LiveGenerator *record) {
    let_go(*record);
}

void createMIDI(SineGenerator *record) {
    connect_all(*record);
}

void disposeMIDI(SineGenerator *record) {
    let_go(*record);
}
