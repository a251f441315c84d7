// live/midi_system.h -- the MIDI system as the program uses it: a client, an input port with a
// read procedure, sources that are connected to the port. The operations go to a back end and
// return 0 or an error code. Main thread; the read procedure runs on the back end's one thread.
#pragma once

#include <cstddef>
#include <cstdint>

/// Packets as they come: a 32-bit count, then for each a 64-bit time stamp, a 16-bit length and
/// that many bytes, all without gaps and in the machine's byte order.
struct MidiPacketList {
    const uint8_t *bytes;
    size_t size; // bytes; no packet reaches behind them
};

using MidiReadProc = void (*)(const MidiPacketList &packets, void *port_context,
                              void *source_context);

/// The operations as a back end offers them. Sources are counted from 0.
struct MidiBackEnd {
    int32_t (*client_create)(const char *name, uint32_t *client);
    int32_t (*port_create)(uint32_t client, const char *name, MidiReadProc procedure, void *context,
                           uint32_t *port);
    int64_t (*count_sources)();
    uint32_t (*get_source)(int64_t index);
    int32_t (*connect)(uint32_t port, uint32_t source, void *context);
    int32_t (*disconnect)(uint32_t port, uint32_t source);
    int32_t (*port_dispose)(uint32_t port);
    int32_t (*client_dispose)(uint32_t client);
};

/// Sends the operations to another back end; null means one without any source, which is also
/// what there is at the start. Before any client exists.
void use_midi_back_end(const MidiBackEnd *chosen);

int32_t MIDIClientCreate(const char *name, uint32_t *client);
int32_t MIDIInputPortCreate(uint32_t client, const char *name, MidiReadProc procedure,
                            void *context, uint32_t *port);
int64_t MIDIGetNumberOfSources();
uint32_t MIDIGetSource(int64_t index);
int32_t MIDIPortConnectSource(uint32_t port, uint32_t source, void *context);
int32_t MIDIPortDisconnectSource(uint32_t port, uint32_t source);
/// The read procedure neither runs nor will when this returns.
int32_t MIDIPortDispose(uint32_t port);
int32_t MIDIClientDispose(uint32_t client);
