// Notes, bend, wheel and pedal from a real MIDI system, and what the program then plays on a real
// sound server: which moment is heard, told by the pitch of a partial that glides, and when
// nothing is.
#include "tests/e2e/menu_test.h"
#include "tests/e2e/process.h"
#include "tests/e2e/sound_server.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int rate = 48000;      // Hz
constexpr double level = 0.2;    // of a partial at 0 dB
constexpr double seconds = 10.0; // of the sound
constexpr double pi = 3.141592653589793;
constexpr float noise = 1e-4f;    // below it nothing is heard
constexpr Duration settling(250); // messages, blocks and the server's own
constexpr Duration hearing(400);
constexpr Spot aside = {20, 60};

constexpr int note_off = 0x80, note_on = 0x90, control = 0xB0, bend = 0xE0;
constexpr int wheel = 1, expression = 11, pedal = 64;

/// From 200 Hz up to 2200 Hz in ten seconds.
const std::string glide = "( PARTIALS 1\n"
                          "( POINTS 5\n0.0 200 0\n1.0 400 0\n9.0 2000 0\n9.5 2100 0\n"
                          "10.0 2200 0\n)\n"
                          ")\n";

/// The pitch at the moment that a note stands for.
double pitch_of(double note) {
    return 200.0 + 200.0 * ((note - 48.0) * (seconds - 512.0 / rate) / 24.0);
}

/// What sox makes of a pitch: it takes the steps between samples for the slope. The oscillators
/// go through their table, one second long, by whole steps.
double rough(double pitch) {
    return std::trunc(rate / pi * std::sin(pi * std::trunc(pitch) / rate));
}

class MidiTest : public MenuTest {
  protected:
    /// The server, the keyboards, and the program that finds both.
    void SetUp() override {
        MenuTest::SetUp();
        ASSERT_TRUE(server.ready());
        hand = std::make_unique<JackHand>(folder.path());
        ASSERT_TRUE(hand->ready());
        begin_on(glide, "-f");
        ASSERT_TRUE(server.connected());
        ASSERT_TRUE(hand->listen("Quillgrove:outport 0"));
    }

    void switch_midi(const std::string &state) {
        ASSERT_TRUE(hands->key("m", aside));
        ASSERT_TRUE(program->expect("MIDI: " + state)) << program->output();
    }

    void send(int status, int data1, int data2, int keyboard = 0) {
        ASSERT_TRUE(hand->send(keyboard, status, data1, data2));
    }

    std::vector<float> hear() {
        pause_for(settling);
        return hand->record(hearing);
    }

    void expect_note(double note, int line = __builtin_LINE()) {
        const testing::ScopedTrace trace(__FILE__, line, "heard");
        const std::vector<float> heard = hear();
        ASSERT_GT(heard.size(), static_cast<size_t>(rate / 4));
        EXPECT_NEAR(measured(heard, "Rough   frequency", folder.path(), rate),
                    rough(pitch_of(note)), 1.0)
            << note;
        EXPECT_NEAR(measured(heard, "Maximum amplitude", folder.path(), rate), level, 0.002);
        EXPECT_NEAR(measured(heard, "RMS     amplitude", folder.path(), rate),
                    level / std::sqrt(2.0), 0.002);
    }

    void expect_silence(int line = __builtin_LINE()) {
        const testing::ScopedTrace trace(__FILE__, line, "heard");
        const std::vector<float> heard = hear();
        ASSERT_GT(heard.size(), static_cast<size_t>(rate / 4));
        EXPECT_TRUE(std::all_of(heard.begin(), heard.end(),
                                [](float sample) { return std::fabs(sample) < noise; }));
    }

    void leave() {
        expect_alive();
        choose("Quit");
        EXPECT_EQ(program->exit_status(), 0) << program->output();
    }

    JackServer server{512};
    std::unique_ptr<JackHand> hand;
};

} // namespace

TEST_F(MidiTest, NotesChooseTheMoment) {
    EXPECT_NE(program->output().find("\nMIDI Sources: 2\n"), std::string::npos)
        << program->output();
    send(note_on, 60, 100);
    expect_silence(); // not switched on yet
    switch_midi("ON");
    send(note_on, 60, 100);
    expect_note(60);
    send(note_on | 5, 66, 1, 1); // another keyboard, another channel
    expect_note(66);
    send(note_off, 66, 0);
    expect_note(60);
    send(note_off, 60, 0);
    expect_silence();
    send(note_on, 54, 100);
    expect_note(54);
    send(note_on, 40, 100); // before the sound
    expect_silence();
    send(note_off, 40, 0);
    expect_note(54);
    switch_midi("OFF");
    send(note_on, 60, 100);
    expect_note(54);
    leave();
}

TEST_F(MidiTest, BendMovesTheMomentByUpToANote) {
    switch_midi("ON");
    send(note_on, 60, 100);
    send(bend, 0, 0);
    expect_note(59);
    send(bend, 0, 96);
    expect_note(60.5);
    send(bend, 0, 64);
    expect_note(60);
    leave();
}

TEST_F(MidiTest, VelocityZeroAndThePedalStopTheSound) {
    switch_midi("ON");
    send(note_on, 60, 100);
    send(note_on, 62, 100);
    send(note_on, 62, 0);
    expect_note(60);
    send(note_on, 60, 0);
    expect_silence();
    send(note_on, 60, 100);
    send(note_on, 62, 100);
    send(control, pedal, 127);
    expect_note(62);
    send(control, pedal, 0);
    expect_silence();
    send(note_on, 57, 100);
    expect_note(57);
    leave();
}

TEST_F(MidiTest, WheelAndExpressionAreTold) {
    switch_midi("ON");
    send(note_on, 60, 100);
    send(control, wheel, 127);
    EXPECT_TRUE(program->expect("mod:1.000000\n")) << program->output();
    send(control, expression, 127);
    EXPECT_TRUE(program->expect("xpr:4.000000\n")) << program->output();
    expect_note(60);
    ASSERT_TRUE(hands->key("w", aside));
    EXPECT_TRUE(program->expect("mod.wheel->selection: ON")) << program->output();
    send(control, wheel, 0); // no partial
    expect_silence();
    send(control, wheel, 64); // the upper half from its start: every partial
    expect_note(60);
    leave();
}

TEST_F(MidiTest, TheProgramOutlivesTheMidiServer) {
    switch_midi("ON");
    send(note_on, 60, 100);
    expect_note(60);
    server.crash();
    pause_for(Duration(500));
    leave();
}

using WithoutMidi = MenuTest;

TEST_F(WithoutMidi, ThereAreNoSourcesAndNoComplaints) {
    begin_on(glide, "-f");
    const std::string said = program->output();
    EXPECT_NE(said.find("\nMIDI Sources: 0\n"), std::string::npos) << said;
    for (const char *word : {"jack", "JACK", "Jack", "ALSA", "RtMidi", "MidiIn", "server"}) {
        EXPECT_EQ(said.find(word), std::string::npos) << said;
    }
    ASSERT_TRUE(hands->key("m", aside));
    EXPECT_TRUE(program->expect("MIDI: ON")) << program->output();
    expect_alive();
    choose("Quit");
    EXPECT_EQ(program->exit_status(), 0) << program->output();
}
