// What comes out of the sound servers when the menu's Play entries render a sound and play it,
// and that the program lives without them. Each server is a process of the test's own.
#include "tests/e2e/menu_test.h"
#include "tests/e2e/process.h"
#include "tests/e2e/recorded.h"
#include "tests/e2e/sound_server.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr double pitch = 440.0; // Hz
constexpr double seconds = 1.5; // of the sound
constexpr double peak = 0.7;    // of a render
constexpr double pi = 3.141592653589793;

/// Import takes the first and the last two points down; between them the level is even.
const std::string tone = "( PARTIALS 1\n"
                         "( POINTS 5\n0.0 440 0\n0.05 440 0\n1.4 440 0\n1.45 440 0\n1.5 440 0\n)\n"
                         ")\n";

/// The tone's own steepest step and that of a fade, and two in a hundred.
double allowed_step() {
    return (2.0 * pi * pitch / rate * peak + peak / block) * 1.02;
}

class SoundTest : public MenuTest {
  protected:
    void begin_tone() {
        begin_on(tone, "-f");
    }

    void play_all() {
        choose("Play/All");
        ASSERT_TRUE(program->expect("zgen.state = 0")) << program->output();
    }

    void expect_end_of_play() {
        EXPECT_TRUE(program->expect("fpAU:Stopped!", Duration(15000))) << program->output();
    }

    /// The program goes on: it plays again, draws, and stands still without work.
    void expect_going_on() {
        play_all();
        expect_end_of_play();
        expect_alive();
    }

    /// Records a play from the menu. A machine at its limits may miss a block of the server's:
    /// what is not smooth is recorded again, three times at most.
    Samples recorded_play() {
        Samples samples;
        for (int i = 0; i < 3 && (i == 0 || largest_step(samples) > allowed_step()); i++) {
            Recording recording(folder.path());
            play_all();
            expect_end_of_play();
            samples = recording.finish();
        }
        return samples;
    }

    /// The tone as a whole, without a click, 440 Hz at a peak of 0.7.
    void expect_tone(const Samples &samples) {
        const Samples part = heard_part(samples);
        const double length = static_cast<double>(part.size());
        EXPECT_NEAR(length, seconds * rate, 2.0 * block);
        ASSERT_GT(length, rate);
        EXPECT_LT(largest_step(samples), allowed_step());
        const Samples middle(part.begin() + 4410, part.begin() + 4410 + 35280);
        EXPECT_NEAR(measured(middle, "Maximum amplitude", folder.path()), peak, 0.002);
        EXPECT_NEAR(measured(middle, "Minimum amplitude", folder.path()), -peak, 0.002);
        EXPECT_NEAR(measured(middle, "RMS     amplitude", folder.path()), peak / std::sqrt(2.0),
                    0.002);
        EXPECT_NEAR(measured(middle, "Rough   frequency", folder.path()), pitch, 1.0);
    }
};

} // namespace

TEST_F(SoundTest, PulseAudioPlaysTheRender) {
    PulseServer server(folder.path());
    ASSERT_TRUE(server.ready());
    begin_tone();
    expect_tone(recorded_play());
}

TEST_F(SoundTest, EachPlayIsTheWholeSound) {
    PulseServer server(folder.path());
    ASSERT_TRUE(server.ready());
    begin_tone();
    for (int i = 0; i < 2; i++) {
        expect_tone(recorded_play());
    }
}

TEST_F(SoundTest, QuittingWhileItPlaysEndsTheProgram) {
    PulseServer server(folder.path());
    ASSERT_TRUE(server.ready());
    begin_tone();
    play_all();
    choose("Quit");
    EXPECT_EQ(program->exit_status(), 0) << program->output();
}

TEST_F(SoundTest, TheProgramOutlivesPulseAudio) {
    PulseServer server(folder.path());
    ASSERT_TRUE(server.ready());
    begin_tone();
    play_all();
    server.crash();
    expect_end_of_play();
    expect_going_on();
    choose("Quit");
    EXPECT_EQ(program->exit_status(), 0) << program->output();
}

TEST_F(SoundTest, JackPlaysInBlocksOfItsOwn) {
    for (const int frames : {512, 1024, 4096}) {
        JackServer server(frames);
        ASSERT_TRUE(server.ready()) << frames;
        begin_tone();
        EXPECT_TRUE(server.connected()) << frames;
        play_all();
        EXPECT_TRUE(program->expect("fpAU:Stopped!")) << frames;
        // 48000 Hz is what the server reports, and what the render is made for.
        EXPECT_NE(program->output().find("FBP1: 72000\t frames"), std::string::npos)
            << program->output();
        choose("Quit");
        EXPECT_EQ(program->exit_status(), 0) << frames;
    }
}

TEST_F(SoundTest, TheProgramOutlivesJack) {
    JackServer server(1024);
    ASSERT_TRUE(server.ready());
    begin_tone();
    play_all();
    server.crash();
    expect_end_of_play();
    expect_going_on();
}

TEST_F(SoundTest, WithoutAServerItPlaysInSilence) {
    begin_tone();
    const auto before = std::chrono::steady_clock::now();
    play_all();
    expect_end_of_play();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
    EXPECT_GT(taken.count(), seconds - 0.1); // at the pace of a card
    EXPECT_EQ(program->output().find("ALSA"), std::string::npos) << program->output();
    EXPECT_EQ(program->output().find("RtA"), std::string::npos) << program->output();
    expect_going_on();
}

TEST_F(SoundTest, AnIdleProgramLeavesTheProcessorAlone) {
    begin_tone();
    pause_for(Duration(300));
    const double before = program->busy_seconds();
    pause_for(Duration(3000));
    EXPECT_LT(program->busy_seconds() - before, 0.02 * 3.0);
}
