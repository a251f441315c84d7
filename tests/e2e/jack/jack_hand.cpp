// A hand at a JACK server: plays two MIDI keyboards and records what another program plays.
// Commands come on standard input, one a line; each is answered by a line, "ok" when it worked.
//
//   midi PORT STATUS DATA1 DATA2   sends a message from keyboard 0 or 1, numbers in decimal
//   listen SOURCE                  connects the recorder to another program's output
//   record FILE                    records from here on
//   stop                           ends the recording; FILE holds raw 32-bit floats
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <jack/jack.h>
#include <jack/midiport.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr size_t keyboards = 2;
constexpr size_t room = 48000 * 60; // samples
constexpr size_t queue_length = 256;

struct Message {
    size_t port;
    std::array<uint8_t, 3> bytes;
};

std::array<jack_port_t *, keyboards> outputs;
jack_port_t *input = nullptr;

// From the console's thread to the server's: messages, and whether to record.
std::array<Message, queue_length> queue;
std::atomic<size_t> written = 0;
std::atomic<size_t> sent = 0;
std::atomic<bool> recording = false;

// From the server's thread.
std::vector<float> samples(room);
std::atomic<size_t> recorded = 0;

int process(jack_nframes_t frames, void *) {
    std::array<void *, keyboards> buffers;
    for (size_t k = 0; k < keyboards; ++k) {
        buffers[k] = jack_port_get_buffer(outputs[k], frames);
        jack_midi_clear_buffer(buffers[k]);
    }
    size_t at = sent;
    for (; at != written; ++at) {
        const Message &message = queue[at % queue_length];
        if (jack_midi_event_write(buffers[message.port], 0, message.bytes.data(),
                                  message.bytes.size()) != 0) {
            break; // full: the rest goes with the next block
        }
    }
    sent = at;
    const auto *in = static_cast<const float *>(jack_port_get_buffer(input, frames));
    const size_t before = recorded;
    if (recording && before + frames <= room) {
        std::memcpy(samples.data() + before, in, frames * sizeof(float));
        recorded = before + frames;
    }
    return 0;
}

bool send(std::istringstream &words) {
    size_t port = keyboards;
    unsigned status = 0;
    unsigned data1 = 0;
    unsigned data2 = 0;
    words >> port >> status >> data1 >> data2;
    if (words.fail() || port >= keyboards || written - sent >= queue_length) {
        return false;
    }
    queue[written % queue_length] = {
        port,
        {static_cast<uint8_t>(status), static_cast<uint8_t>(data1), static_cast<uint8_t>(data2)}};
    ++written;
    return true;
}

std::string rest_of(std::istringstream &words) {
    std::string rest;
    std::getline(words >> std::ws, rest);
    return rest;
}

bool obey(jack_client_t *client, const std::string &line, std::string &file) {
    std::istringstream words(line);
    std::string command;
    words >> command;
    if (command == "midi") {
        return send(words);
    }
    if (command == "listen") {
        return jack_connect(client, rest_of(words).c_str(), jack_port_name(input)) == 0;
    }
    if (command == "record") {
        file = rest_of(words);
        recorded = 0;
        recording = true;
        return true;
    }
    if (command == "stop") {
        recording = false;
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char *>(samples.data()),
                   static_cast<std::streamsize>(recorded * sizeof(float)));
        return true;
    }
    return false;
}

} // namespace

int main() {
    jack_client_t *client = jack_client_open("hand", JackNoStartServer, nullptr);
    if (client == nullptr) {
        return 1;
    }
    const char *const names[] = {"keys 1", "keys 2"};
    for (size_t k = 0; k < keyboards; ++k) {
        outputs[k] =
            jack_port_register(client, names[k], JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    }
    input = jack_port_register(client, "ear", JACK_DEFAULT_AUDIO_TYPE, JackPortIsInput, 0);
    jack_set_process_callback(client, process, nullptr);
    if (jack_activate(client) != 0) {
        return 1;
    }
    std::cout << "ok" << std::endl;
    std::string file;
    for (std::string line; std::getline(std::cin, line);) {
        std::cout << (obey(client, line, file) ? "ok" : "failed") << std::endl;
    }
    jack_client_close(client);
    return 0;
}
