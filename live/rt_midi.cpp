#include "live/rt_midi.h"

#include <RtMidi.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr uint32_t only_handle = 1;
constexpr auto poll_interval = std::chrono::milliseconds(1);
constexpr unsigned queue_size = 1024; // messages of a source between two polls
constexpr const char *alsa_sequencer = "/dev/snd/seq";

/// One port of another program or device.
struct Source {
    RtMidi::Api api;
    unsigned port;
    std::unique_ptr<RtMidiIn> input; // null until it is connected
};

std::vector<Source> sources;
std::string client_name;
std::string port_name;
MidiReadProc read_procedure = nullptr;
void *read_context = nullptr;
std::thread delivery;
std::atomic<bool> ending = false;

/// RtMidi tells on std::cerr what it then throws; a system that is not there is no failure here.
class QuietErrors {
  public:
    QuietErrors() : usual(std::cerr.rdbuf(nullptr)) {}
    ~QuietErrors() {
        std::cerr.rdbuf(usual);
        std::cerr.clear();
    }
    QuietErrors(const QuietErrors &) = delete;
    QuietErrors &operator=(const QuietErrors &) = delete;

  private:
    std::streambuf *usual;
};

/// Null where the system is missing.
std::unique_ptr<RtMidiIn> open_system(RtMidi::Api api) {
    if (api == RtMidi::LINUX_ALSA && access(alsa_sequencer, R_OK) != 0) {
        return nullptr;
    }
    const QuietErrors quiet;
    try {
        auto input = std::make_unique<RtMidiIn>(api, client_name, queue_size);
        return input->getCurrentApi() == api ? std::move(input) : nullptr;
    } catch (const RtMidiError &) {
        return nullptr;
    }
}

void find_sources() {
    const QuietErrors quiet; // counting, too, tells of a server that is not there
    for (const RtMidi::Api api : {RtMidi::LINUX_ALSA, RtMidi::UNIX_JACK}) {
        const std::unique_ptr<RtMidiIn> input = open_system(api);
        const unsigned count = input != nullptr ? input->getPortCount() : 0;
        for (unsigned port = 0; port < count; ++port) {
            sources.push_back({api, port, nullptr});
        }
    }
}

/// Messages of a channel have up to three bytes, and the others are not asked for.
constexpr size_t longest_message = 16;

/// One message as a list of one packet.
void hand_on(const std::vector<unsigned char> &message) {
    const uint32_t count = 1;
    const uint64_t stamp = 0;
    const auto length = static_cast<uint16_t>(std::min(message.size(), longest_message));
    uint8_t bytes[sizeof count + sizeof stamp + sizeof length + longest_message];
    uint8_t *at = bytes;
    const auto put = [&at](const void *from, size_t size) {
        std::memcpy(at, from, size);
        at += size;
    };
    put(&count, sizeof count);
    put(&stamp, sizeof stamp);
    put(&length, sizeof length);
    put(message.data(), length);
    read_procedure({bytes, static_cast<size_t>(at - bytes)}, read_context, nullptr);
}

void deliver() {
    std::vector<unsigned char> message;
    while (!ending) {
        for (const Source &source : sources) {
            for (;;) {
                if (source.input != nullptr) {
                    source.input->getMessage(&message);
                }
                if (source.input == nullptr || message.empty() || ending) {
                    break;
                }
                hand_on(message);
            }
        }
        std::this_thread::sleep_for(poll_interval);
    }
}

void stop_delivery() {
    if (delivery.joinable()) {
        ending = true;
        delivery.join();
    }
}

int32_t client_create(const char *name, uint32_t *client) {
    client_name = name;
    find_sources();
    *client = only_handle;
    return 0;
}

int32_t port_create(uint32_t, const char *name, MidiReadProc procedure, void *context,
                    uint32_t *port) {
    // No way out of the program leaves a thread behind that would call into it.
    static const bool registered = std::atexit(stop_delivery) == 0;
    static_cast<void>(registered);
    port_name = name;
    read_procedure = procedure;
    read_context = context;
    *port = only_handle;
    return 0;
}

int64_t count_sources() {
    return static_cast<int64_t>(sources.size());
}

uint32_t get_source(int64_t index) {
    return static_cast<uint32_t>(index);
}

/// Runs `work` while no delivery is under way.
template <typename Work> void between_deliveries(Work work) {
    stop_delivery();
    work();
    bool connected = false;
    for (const Source &source : sources) {
        connected = connected || source.input != nullptr;
    }
    if (connected) {
        ending = false;
        delivery = std::thread(deliver);
    }
}

constexpr int32_t not_connected = -1;

int32_t connect_source(uint32_t, uint32_t number, void *) {
    if (number >= sources.size()) {
        return not_connected;
    }
    Source &source = sources[number];
    between_deliveries([&source] {
        source.input = open_system(source.api);
        const QuietErrors quiet;
        try {
            if (source.input != nullptr) {
                source.input->ignoreTypes(true, true, true);
                source.input->openPort(source.port, port_name);
            }
        } catch (const RtMidiError &) {
            source.input.reset();
        }
    });
    return source.input != nullptr ? 0 : not_connected;
}

int32_t disconnect_source(uint32_t, uint32_t number) {
    if (number >= sources.size()) {
        return not_connected;
    }
    between_deliveries([number] {
        const QuietErrors quiet;
        sources[number].input.reset();
    });
    return 0;
}

int32_t port_dispose(uint32_t) {
    stop_delivery();
    return 0;
}

int32_t client_dispose(uint32_t) {
    stop_delivery();
    const QuietErrors quiet;
    sources.clear();
    return 0;
}

} // namespace

const MidiBackEnd rt_midi = {client_create,  port_create,       count_sources, get_source,
                             connect_source, disconnect_source, port_dispose,  client_dispose};
