#include "live/notes.h"

#include "interact/selection.h"
#include "live/audio_unit.h"
#include "live/generator.h"
#include "live/gestures.h"
#include "live/live.h"
#include "live/shared.h"
#include "store/settings.h"
#include "store/store.h"
#include "synth/sound.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr int32_t top_of_stack = note_room - 1; // n[0] holds no note
constexpr float from_note = 48.0f;
constexpr float to_note = 72.0f;
constexpr uint8_t mod_wheel = 1;
constexpr uint8_t expression = 11;
constexpr uint8_t hold_pedal = 64;

/// The first message of a packet; data bytes that it lacks are 0.
struct Message {
    uint8_t kind;    // high half of the status; below 8 for a data byte
    uint8_t channel; // low half
    uint8_t data1, data2;
};

/// From the notes and the bend to the moment heard.
void map() {
    const float start = peek(sndstart);
    const float end = peek(sndlen) + static_cast<float>(-512.0 / peek(R));
    const float p = pitchf + bendf;
    const float time =
        p < to_note ? ((p - from_note) * (end - start)) / (to_note - from_note) + start : end;
    poke(wgen.time, time);
}

/// Releases the sound and stops its unit; the notes fall silent.
void silence() {
    poke(liveSynth, 0);
    halt_generator(wgen);
    poke(wgen.midi_started, uint8_t{0});
}

void end_test() {
    if (dbp) {
        std::printf("HOLD = %d\n", hold);
    }
    if (hold != 0) {
        return;
    }
    silence();
    if (dbp) {
        std::puts("*****************");
    }
}

/// Pushes a note; one that finds the stack full is heard, but not kept.
void add_note(uint8_t k) {
    prev_hold = hold;
    if (hold >= 0) {
        amplitudef = 0.67f;
    }
    pitchf = k;
    map();
    const bool kept = hold < top_of_stack;
    hold += kept ? 1 : 0;
    unkept += kept ? 0 : 1;
    mmotion();
    if (dbp) {
        std::printf("time = %f\n", peek(wgen.time));
    }
    if (hold == 1 && prev_hold == 0) {
        poke(liveSynth, 1);
        pplay(peek(square[0]), 1);
        if (dbp) {
            std::puts("||||||||||||||||||");
        }
    }
    if (kept) {
        n[hold] = k;
    }
    map();
    mmotion();
}

/// Closes the gaps that note k leaves below the top. True when the stack held it.
bool take_from_stack(uint8_t k) {
    bool found = false;
    for (int32_t at = 1; at <= hold; ++at) {
        if (n[at] != k) {
            continue;
        }
        found = true;
        std::copy(n + at + 1, n + hold + 1, n + at);
    }
    return found;
}

void take_note(uint8_t k) {
    if (hold <= 0) {
        return;
    }
    const bool found = take_from_stack(k);
    if (!found && unkept > 0) {
        unkept -= 1; // the notes in the stack are all still held
        pitchf = n[hold];
        map();
        mmotion();
        return;
    }
    pitchf = n[hold - 1];
    map();
    mmotion();
    if (hold < 2) {
        amplitudef = 0.0f;
    }
    prev_hold = hold;
    hold -= 1;
}

void note_off(const Message &message) {
    take_note(message.data1);
}

void note_on(const Message &message) {
    if (message.data2 == 0) {
        take_note(message.data1);
    } else {
        add_note(message.data1);
    }
    end_test();
}

void turn_wheel(uint8_t to) {
    bmi = to;
    poke(mmif, static_cast<float>(bmi) / 127.0f);
    poke(changed, uint8_t{1});
    mmotion();
    std::printf("mod:%f\n", peek(mmif));
}

void express(uint8_t to) {
    bmi = to;
    mxpf = static_cast<float>(bmi * 3) / 127.0f + 1.0f;
    changex = 1;
    std::printf("xpr:%f\n", mxpf);
}

void release_pedal() {
    hold = 0;
    prev_hold = 0;
    if (peek(wgen.state) != 0) {
        silence();
    }
}

void control(const Message &message) {
    if (message.data1 == mod_wheel) {
        turn_wheel(message.data2);
    } else if (message.data1 == expression) {
        express(message.data2);
    } else if (message.data1 == hold_pedal && message.data2 == 0) {
        release_pedal();
    }
}

void bend(const Message &message) {
    bendf = static_cast<float>((message.data1 + message.data2 * 128 - 8192) * 0.0001220703125);
    map();
    mmotion();
}

void pass_over(const Message &) {}

/// What each kind of message does, from 8 on.
void (*const handlers[])(const Message &message) = {
    note_off,  // 8
    note_on,   // 9
    pass_over, // 0xA, polyphonic pressure
    control,   // 0xB
    pass_over, // 0xC, program change
    pass_over, // 0xD, channel pressure
    bend,      // 0xE
};
constexpr uint8_t first_kind = 8;
constexpr uint8_t system_kind = 0xF;

void act(const Message &message) {
    if (peek(midi) == 0 || message.kind == system_kind) {
        return;
    }
    if (dbp) {
        std::printf("Channel: %x, Message: %x\n", unsigned{message.channel},
                    unsigned{message.kind});
    }
    if (peek(omni) == 0 && message.channel != peek(channel)) {
        return;
    }
    if (message.kind >= first_kind) {
        handlers[message.kind - first_kind](message);
    }
}

void take_packet(const uint8_t *bytes, size_t length) {
    const auto byte = [=](size_t k) { return k < length ? bytes[k] : uint8_t{0}; };
    const auto data = [=](size_t k) { return static_cast<uint8_t>(byte(k) & 0x7F); };
    if (hold == 0) {
        amplitudef = 0.0f;
    }
    act({static_cast<uint8_t>(byte(0) >> 4), static_cast<uint8_t>(byte(0) & 0xF), data(1),
         data(2)});
    if (hold == 0) {
        prev_hold = 0;
    }
    if (peek(wgen.playing) == 0) {
        hold = 0;
        prev_hold = 0;
    }
    if (hold == 0) {
        unkept = 0;
    }
}

/// Reads a number that may stand anywhere; false where the bytes end before it.
template <typename Number>
bool read_number(const MidiPacketList &packets, size_t &at, Number &number) {
    if (packets.size - at < sizeof number) {
        return false;
    }
    std::memcpy(&number, packets.bytes + at, sizeof number);
    at += sizeof number;
    return true;
}

} // namespace

void midiReadProc(const MidiPacketList &packets, void *, void *) {
    size_t at = 0;
    uint32_t count = 0;
    read_number(packets, at, count);
    for (uint32_t i = 0; i < count; ++i) {
        uint64_t stamp = 0;
        uint16_t length = 0;
        if (!read_number(packets, at, stamp) || !read_number(packets, at, length)) {
            return;
        }
        const size_t held = std::min(size_t{length}, packets.size - at);
        take_packet(packets.bytes + at, held);
        at += held;
    }
}
