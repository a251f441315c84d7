// What comes out of a sound server when the mouse scrubs over the picture and when a swept zone
// plays: pitch, level, length, and no click but the ramps of a block.
#include "tests/e2e/menu_test.h"
#include "tests/e2e/process.h"
#include "tests/e2e/recorded.h"
#include "tests/e2e/sound_server.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr double pitch = 440.0; // Hz
constexpr double level = 0.2;   // of a partial at 0 dB
constexpr double pi = 3.141592653589793;

/// Import takes the first and the last two points down; between them the level is even.
const std::string tone = "( PARTIALS 1\n"
                         "( POINTS 5\n0.0 440 0\n0.1 440 0\n1.8 440 0\n1.9 440 0\n2.0 440 0\n)\n"
                         ")\n";

class LiveTest : public MenuTest {
  protected:
    /// The tone at the level of live play, without a click; `fade` frames at its ends are left
    /// out of the measuring. Its length in seconds.
    double expect_tone(const Samples &samples, size_t fade) {
        const Samples part = heard_part(samples);
        EXPECT_GT(part.size(), 4 * fade);
        if (part.size() <= 4 * fade) {
            return 0.0;
        }
        // The tone's own steepest step, that of two ramps at once, and two in a hundred.
        EXPECT_LT(largest_step(samples),
                  (2.0 * pi * pitch / rate * level + 2.0 * level / block) * 1.02);
        const auto end = static_cast<std::ptrdiff_t>(fade);
        const Samples middle(part.begin() + end, part.end() - end);
        EXPECT_NEAR(measured(middle, "Maximum amplitude", folder.path()), level, 0.001);
        EXPECT_NEAR(measured(middle, "Minimum amplitude", folder.path()), -level, 0.001);
        EXPECT_NEAR(measured(middle, "RMS     amplitude", folder.path()), level / std::sqrt(2.0),
                    0.001);
        EXPECT_NEAR(measured(middle, "Rough   frequency", folder.path()), pitch, 1.0);
        return static_cast<double>(part.size()) / rate;
    }
};

} // namespace

TEST_F(LiveTest, ScrubAndZone) {
    PulseServer server(folder.path());
    ASSERT_TRUE(server.ready());
    begin_on(tone, "-fb");

    Recording scrub(folder.path());
    ASSERT_TRUE(hands->press(Button::middle, spot(0.3, 0.4), spot(0.6, 0.4), {"alt"}));
    pause_for(Duration(800));
    ASSERT_TRUE(hands->let_go(Button::middle, {"alt"}));
    EXPECT_TRUE(program->expect("Stop")) << program->output();
    EXPECT_GT(expect_tone(scrub.finish(), 4410), 0.7);

    sweep(0.25, 0.1, 0.75, 0.2);
    Recording zone(folder.path());
    const size_t before = program->output().size();
    choose("Play/Zone");
    EXPECT_TRUE(program->expect("  Synthesis completed, zgAU stopped", Duration(15000)))
        << program->output();
    const double length = expect_tone(zone.finish(), 4410);
    float start = 0.0f, end = 0.0f;
    const std::string said = program->output().substr(before);
    const size_t at = said.find("->start_time: ");
    ASSERT_NE(at, std::string::npos) << said;
    ASSERT_EQ(std::sscanf(said.c_str() + at, "->start_time: %fs\tend_time: %fs", &start, &end), 2);
    EXPECT_NEAR(start, 0.5, 0.02);
    EXPECT_NEAR(end, 1.5, 0.02);
    // The end is seen by the idle function, some blocks late, and then released.
    EXPECT_GT(length, static_cast<double>(end - start) - 0.04);
    EXPECT_LT(length, static_cast<double>(end - start) + 0.3);

    const double busy = program->busy_seconds();
    pause_for(Duration(1000));
    EXPECT_LT(program->busy_seconds() - busy, 0.3) << "no idle function runs on";
    expect_alive();
    choose("Quit");
    EXPECT_EQ(program->exit_status(), 0) << program->output();
}
