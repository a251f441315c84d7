#include "live/midi_system.h"

namespace {

constexpr uint32_t some_handle = 1;

int32_t create_no_client(const char *, uint32_t *client) {
    *client = some_handle;
    return 0;
}

int32_t create_no_port(uint32_t, const char *, MidiReadProc, void *, uint32_t *port) {
    *port = some_handle;
    return 0;
}

int64_t count_nothing() {
    return 0;
}

uint32_t no_source(int64_t) {
    return 0;
}

int32_t connect_nothing(uint32_t, uint32_t, void *) {
    return 0;
}

int32_t disconnect_nothing(uint32_t, uint32_t) {
    return 0;
}

int32_t dispose_nothing(uint32_t) {
    return 0;
}

constexpr MidiBackEnd no_sources = {create_no_client, create_no_port,  count_nothing,
                                    no_source,        connect_nothing, disconnect_nothing,
                                    dispose_nothing,  dispose_nothing};

const MidiBackEnd *back_end = &no_sources;

} // namespace

void use_midi_back_end(const MidiBackEnd *chosen) {
    back_end = chosen != nullptr ? chosen : &no_sources;
}

int32_t MIDIClientCreate(const char *name, uint32_t *client) {
    return back_end->client_create(name, client);
}

int32_t MIDIInputPortCreate(uint32_t client, const char *name, MidiReadProc procedure,
                            void *context, uint32_t *port) {
    return back_end->port_create(client, name, procedure, context, port);
}

int64_t MIDIGetNumberOfSources() {
    return back_end->count_sources();
}

uint32_t MIDIGetSource(int64_t index) {
    return back_end->get_source(index);
}

int32_t MIDIPortConnectSource(uint32_t port, uint32_t source, void *context) {
    return back_end->connect(port, source, context);
}

int32_t MIDIPortDisconnectSource(uint32_t port, uint32_t source) {
    return back_end->disconnect(port, source);
}

int32_t MIDIPortDispose(uint32_t port) {
    return back_end->port_dispose(port);
}

int32_t MIDIClientDispose(uint32_t client) {
    return back_end->client_dispose(client);
}
