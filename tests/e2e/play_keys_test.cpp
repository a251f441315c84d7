// The keys of the players, by real strokes: what they say and what comes out of a sound server.
#include "tests/e2e/menu_test.h"
#include "tests/e2e/process.h"
#include "tests/e2e/recorded.h"
#include "tests/e2e/sound_server.h"

#include <cmath>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr Spot aside = {20, 60};
constexpr double high = 1320.0; // Hz, of the upper of two partials
constexpr double seconds = 3.0; // of the sound

/// Two partials, the upper one with a point each quarter of a second.
std::string chord() {
    std::string text = "( PARTIALS 2\n( POINTS 5\n"
                       "0.0 440 0\n0.05 440 0\n2.9 440 0\n2.95 440 0\n3.0 440 0\n)\n"
                       "( POINTS 13\n";
    for (int k = 0; k <= 12; k++) {
        text += std::to_string(0.25 * k) + " 1320 0\n";
    }
    return text + ")\n)\n";
}

const std::string start_of_play = "FBP1: 132300\t frames\nzgen.state = 0\n";
const std::string underscores = "_____________________________________________\n\n";
const std::string end_of_play = "fpAU:Stopped!\n";
const std::string end_of_zone = "  Synthesis completed, zgAU stopped\n";

/// The number behind the last of these texts.
double number_after(const std::string &text, const std::string &name) {
    double number = -1.0;
    const size_t at = text.rfind(name);
    if (at != std::string::npos) {
        std::sscanf(text.c_str() + at + name.size(), "%lf", &number);
    }
    return number;
}

class PlayKeys : public MenuTest {
  protected:
    void SetUp() override {
        MenuTest::SetUp();
        server = std::make_unique<PulseServer>(folder.path());
        ASSERT_TRUE(server->ready());
        begin_on(chord(), "-fb");
    }

    void stroke(const std::string &name) {
        ASSERT_TRUE(hands->key(name, aside));
    }

    /// Waits for the end of the text, which may be long in coming.
    std::string said_at_last(const std::string &text) {
        program->expect(text, Duration(15000));
        return said_until("");
    }

    double pitch_of(const Samples &samples) {
        const Samples part = heard_part(samples);
        const auto quarter = static_cast<std::ptrdiff_t>(part.size() / 4);
        const Samples middle(part.begin() + quarter, part.end() - quarter);
        return measured(middle, "Rough   frequency", folder.path());
    }

    /// What is heard while `work` runs. A machine at its limits may miss blocks of the server's:
    /// a recording that does not last so long is made again, three times at most.
    Samples recorded(double wanted, const std::function<void()> &work) {
        Samples samples;
        for (int i = 0; i < 3 && std::fabs(heard_seconds(samples) - wanted) > 0.025; i++) {
            Recording recording(folder.path());
            work();
            samples = recording.finish();
        }
        return samples;
    }

    std::unique_ptr<PulseServer> server;
};

} // namespace

TEST_F(PlayKeys, RenderPauseResumeReplayRewind) {
    const Samples whole = recorded(seconds, [this] {
        stroke("shift+space");
        const std::string said = said_at_last(end_of_play);
        char factor[32];
        std::snprintf(factor, sizeof factor, "%f", number_after(said, "zgen.floatmax = "));
        EXPECT_EQ(said, std::string("Play All Partials partials: 2, 3.000000 s\nzgen.floatmax = ") +
                            factor + "\n" + start_of_play + underscores + end_of_play);
    });
    EXPECT_NEAR(heard_seconds(whole), seconds, 0.025);
    EXPECT_NEAR(measured(whole, "Maximum amplitude", folder.path()), 0.7, 0.01);

    const Samples halves = recorded(seconds, [this] {
        stroke("space");
        expect_said(start_of_play + underscores + "Re-playing...\n");
        pause_for(Duration(800));
        stroke("space");
        const std::string stop = said_at_last(end_of_play);
        const double frame = number_after(stop, "Stopped at frame: ");
        EXPECT_EQ(stop, "Stopped at frame: " + std::to_string(frame) + "\n" + end_of_play);
        EXPECT_GT(frame, 0.3 * rate);
        pause_for(Duration(500));
        stroke("space");
        const std::string on = said_at_last(end_of_play);
        const double place = number_after(on, "Resuming... at ");
        EXPECT_EQ(on,
                  start_of_play + "Resuming... at " + std::to_string(place) + "\n" + end_of_play);
        EXPECT_GE(place, frame + block) << "the fade-out has been played";
        EXPECT_LE(place, frame + 4 * block);
    });
    EXPECT_GT(longest_pause(halves), 0.4);
    EXPECT_NEAR(heard_seconds(halves), seconds, 0.025) << "no frames are lost";

    for (int i = 0; i < 2; i++) {
        stroke("space");
        expect_said(start_of_play + underscores + "Re-playing...\n");
        pause_for(Duration(300));
        stroke("Return");
        expect_said("Enter\n" + end_of_play);
    }
    choose("Quit");
    EXPECT_EQ(program->exit_status(), 0) << program->output();
}

TEST_F(PlayKeys, SelectionAndZones) {
    stroke("alt+space");
    expect_said("Invalid Selection Mode for: Play Selected\n");
    sweep(0.24, 0.9, 0.76, 1.03);
    // From the first selected point, at 0.75 s, down to the first that is not, at 2.5 s.
    const double length = 1.75;
    const Samples selection = recorded(length, [this] {
        stroke("alt+space");
        EXPECT_EQ(said_at_last(end_of_play),
                  "Play select partials: " + start_of_play + underscores + end_of_play);
    });
    EXPECT_NEAR(heard_seconds(selection), length, 0.025);
    EXPECT_NEAR(pitch_of(selection), high, 5.0);

    const std::string zone = "start_time: 0.7";
    Recording recording(folder.path());
    stroke("alt+z");
    const std::string alone = said_at_last(end_of_zone);
    EXPECT_TRUE(alone.starts_with("->" + zone)) << alone;
    EXPECT_NE(alone.find("\n|->" + zone), std::string::npos) << alone;
    EXPECT_TRUE(alone.ends_with("s\n" + end_of_zone)) << alone;
    const Samples sound = recording.finish();
    EXPECT_NEAR(pitch_of(sound), high, 5.0) << "the selection alone";
    EXPECT_GT(heard_seconds(sound), 1.4);
    EXPECT_LT(heard_seconds(sound), 1.9);

    stroke("z");
    EXPECT_TRUE(said_at_last("|->" + zone).starts_with("Event: 1\n|->" + zone));
    pause_for(Duration(400));
    stroke("z");
    const std::string halted = said_at_last("s, zgAU stopped\n");
    EXPECT_NE(halted.find("  Synthesis halted @ "), std::string::npos) << halted;
    EXPECT_GT(number_after(halted, "halted @ "), 0.8);
    EXPECT_LT(number_after(halted, "halted @ "), 2.3);

    sweep(0.5, 0.2, 0.6, 0.25);
    stroke("shift+z");
    EXPECT_TRUE(said_at_last("|->start_time").starts_with("Event: 0\n->start_time: 1."));
    pause_for(Duration(1500)); // five times round
    listen_from_now();
    stroke("alt+z");
    const std::string ended = said_at_last("s, zgAU stopped\n");
    EXPECT_TRUE(ended.starts_with("  Synthesis halted @ 1.")) << ended;
    EXPECT_EQ(program->output().find(end_of_zone), program->output().rfind(end_of_zone))
        << "only the zone before the loop came to its end";
    choose("Quit");
    EXPECT_EQ(program->exit_status(), 0) << program->output();
}
