// The way to the MIDI sources: what is asked of the system, in which order, and what is told.
#include "live/midi.h"

#include "live/cleanup.h"
#include "live/midi_system.h"
#include "live/notes.h"
#include "tests/support/audio_double.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace {

std::string asked;
int64_t source_count = 0;
int32_t client_error = 0;
int32_t port_error = 0;

AudioDouble *heard_audio = nullptr; // what it has heard comes first

void note(const std::string &operation) {
    if (heard_audio != nullptr) {
        asked += heard_audio->heard();
    }
    asked += operation + "\n";
}

const MidiBackEnd scripted = {
    [](const char *name, uint32_t *client) {
        note(std::string("client ") + name + " " + std::to_string(*client));
        *client = 7;
        return client_error;
    },
    [](uint32_t client, const char *name, MidiReadProc procedure, void *context, uint32_t *port) {
        note("port " + std::to_string(client) + " " + name);
        EXPECT_EQ(procedure, &midiReadProc);
        EXPECT_EQ(context, nullptr);
        *port = 9;
        return port_error;
    },
    [] { return source_count; },
    [](int64_t index) { return static_cast<uint32_t>(100 + index); },
    [](uint32_t port, uint32_t source, void *) {
        note("connect " + std::to_string(port) + " " + std::to_string(source));
        return source == 101 ? -1 : 0;
    },
    [](uint32_t port, uint32_t source) {
        note("disconnect " + std::to_string(port) + " " + std::to_string(source));
        return 0;
    },
    [](uint32_t port) {
        note("dispose port " + std::to_string(port));
        return 0;
    },
    [](uint32_t client) {
        note("dispose client " + std::to_string(client));
        return 0;
    },
};

class Midi : public StoreTest {
  protected:
    void SetUp() override {
        StoreTest::SetUp();
        asked.clear();
        source_count = 0;
        client_error = 0;
        port_error = 0;
        use_midi_back_end(&scripted);
        record.midi_client = 3;
    }

    void TearDown() override {
        use_midi_back_end(nullptr);
        StoreTest::TearDown();
    }

    LiveGenerator record = {};
};

using MidiDeath = Midi;

TEST_F(Midi, EverySourceIsConnectedInOrder) {
    source_count = 3;
    EXPECT_EQ(printed([&] { createNFMIDI(&record); }), "MIDI Sources: 3\n");
    EXPECT_EQ(asked, "client MIDI_Client 0\nport 7 MIDI_Input\nconnect 9 100\nconnect 9 101\n"
                     "connect 9 102\n");
    EXPECT_EQ(record.midi_client, 7u);
    EXPECT_EQ(record.midi_port, 9u);
    EXPECT_EQ(omni, 1);
}

TEST_F(Midi, NoSourceIsNoFailure) {
    EXPECT_EQ(printed([&] { createNFMIDI(&record); }), "MIDI Sources: 0\n");
    EXPECT_EQ(omni, 1);
}

TEST_F(Midi, LettingGoIsTheOtherWayRound) {
    source_count = 2;
    printed([&] { createNFMIDI(&record); });
    asked.clear();
    disposeNFMIDI(&record);
    EXPECT_EQ(asked, "disconnect 9 100\ndisconnect 9 101\ndispose port 9\ndispose client 7\n");
    EXPECT_EQ(record.midi_client, 0u);
    asked.clear();
    disposeNFMIDI(&record);
    EXPECT_EQ(asked, "");
}

TEST_F(Midi, TheSineGeneratorConnectsAlike) {
    SineGenerator sines = {};
    source_count = 1;
    EXPECT_EQ(printed([&] { createMIDI(&sines); }), "MIDI Sources: 1\n");
    disposeMIDI(&sines);
    EXPECT_EQ(asked, "client MIDI_Client 0\nport 7 MIDI_Input\nconnect 9 100\n"
                     "disconnect 9 100\ndispose port 9\ndispose client 7\n");
}

TEST_F(Midi, WithoutASystemThereIsNoSource) {
    use_midi_back_end(nullptr);
    EXPECT_EQ(printed([&] { createNFMIDI(&record); }), "MIDI Sources: 0\n");
    EXPECT_NE(record.midi_client, 0u);
    disposeNFMIDI(&record);
    EXPECT_EQ(record.midi_client, 0u);
}

TEST_F(Midi, TheCleanUpLetsGoBetweenThePlayerAndTheGenerators) {
    AudioDouble audio;
    source_count = 1;
    printed([] { createNFMIDI(&wgen); });
    void **const units[] = {&fplayer.unit, &wgen.unit, &zgen.unit};
    for (void **unit : units) {
        *unit = &audio.units.emplace_back();
    }
    asked.clear();
    heard_audio = &audio;
    cleanupAudioMIDI();
    heard_audio = nullptr;
    EXPECT_EQ(asked, "uninitialize\ndispose\ndisconnect 9 100\ndispose port 9\n"
                     "dispose client 7\n");
    EXPECT_EQ(audio.heard(), "uninitialize\ndispose\nuninitialize\ndispose\n");
    EXPECT_EQ(wgen.midi_client, 0u);
    wgen = {};
}

/// The code of the exit that `error` leads to, with what was printed before it on standard error.
void create_telling() {
    LiveGenerator record = {};
    std::fflush(stdout);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    createNFMIDI(&record);
}

TEST_F(MidiDeath, AClientThatFailsEndsTheProgram) {
    client_error = -50;
    EXPECT_EXIT(create_telling(), testing::ExitedWithCode(255),
                "Error: MIDI Client Create Error\nRelaunch Application: \\(-50\\)");
}

TEST_F(MidiDeath, APortThatFailsEndsTheProgram) {
    port_error = -50;
    EXPECT_EXIT(create_telling(), testing::ExitedWithCode(255),
                "Error: MIDI Port Create Error\nRelaunch Application: \\(-50\\)");
}

} // namespace
