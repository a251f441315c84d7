// The sound at one moment: scrubbing by mouse, MIDI's moments, and the stops.
#include "live/gestures.h"

#include "display/view.h"
#include "interact/selection.h"
#include "interact/unproject.h"
#include "live/moment.h"
#include "live/pause.h"
#include "live/requests.h"
#include "live/shared.h"
#include "store/published.h"
#include "store/settings.h"
#include "synth/sound.h"
#include "tests/support/console.h"
#include "tests/support/live_play.h"
#include "tests/support/rendering.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <cmath>

namespace {

constexpr int middle = GLUT_MIDDLE_BUTTON;
constexpr int left = GLUT_LEFT_BUTTON;
constexpr int alt = GLUT_ACTIVE_ALT;

/// A still tone, a glide, and a late one of the last half second.
const std::vector<Partial> content = {
    {{0.0f, 440.0f, -6.0f}, {2.0f, 440.0f, -6.0f}},
    {{0.0f, 100.0f, -20.0f}, {1.0f, 200.0f, -40.0f}, {2.0f, 300.0f, -40.0f}},
    {{1.5f, 21000.0f, -30.0f}, {2.0f, 21000.0f, -30.0f}},
    {{1.0f, 1000.0f, -30.0f}}};

class Gestures : public LivePlayTest {
  protected:
    void SetUp() override {
        LivePlayTest::SetUp();
        fill_store(content);
        open_edit_view();
    }
};

float time_under(int x) {
    return (sndlen - sndstart) * scene_offset(x, 0.0).t + sndstart;
}

void press(int x) {
    mouse_down(middle, x, 50, alt);
}

void let_go(int x) {
    mouse_up(middle, x, 50, alt);
}

TEST_F(Gestures, PressStartsTheSoundAtItsRightValues) {
    const int x = pixel_x(0.25);
    const float time = time_under(x);
    EXPECT_NEAR(time, 0.5f, 0.01f);
    selecting = 1;
    STOP = 1;
    EXPECT_EQ(printed([x] { press(x); }), "");
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(liveSynth, 1);
    EXPECT_EQ(STOP, 0);
    EXPECT_EQ(motion(), pmotion);
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    EXPECT_EQ(square[0], x);
    EXPECT_EQ(tfsquare[0], scene_offset(x, 0.0).t);
    EXPECT_EQ(numbOfCands, 4);
    EXPECT_EQ(wgen.state, 1);
    EXPECT_EQ(wgen.playing, 1);
    EXPECT_EQ(wgen.position, 0.0);
    EXPECT_EQ(totalFrames, 0);
    EXPECT_EQ(starts(), 1);
    const float freq = linear_interpolation(time, 1.0f, 0.0f, 200.0f, 100.0f);
    EXPECT_EQ(wgen.freq_now[1], freq);
    EXPECT_EQ(wgen.freq_target[1], freq);
    EXPECT_EQ(wgen.amp_now[0], db2amp(-6.0f) * 0.2f);
    EXPECT_EQ(wgen.amp_target[0], db2amp(-6.0f) * 0.2f);
    EXPECT_EQ(wgen.on[0], 1);
    EXPECT_EQ(wgen.on[2], 0);
    EXPECT_EQ(wgen.amp_now[2], 0.0f);
    EXPECT_EQ(zgen.playing, 0);
}

TEST_F(Gestures, AScrubInFull) {
    const int x = pixel_x(0.25);
    press(x);
    run_blocks(1);
    EXPECT_EQ(wgen.state, 2);
    gl_double::forget_drawing();
    mouse_move(pixel_x(0.5), 60);
    EXPECT_EQ(square[0], pixel_x(0.5));
    EXPECT_EQ(pcandidates[1].time, time_under(pixel_x(0.5)));
    run_blocks(1);
    EXPECT_EQ(wgen.freq_now[1], pcandidates[1].freq);
    const int before = gl_double::recorder().redisplays;
    EXPECT_EQ(printed([] { let_go(pixel_x(0.5)); }), "Stop\n");
    EXPECT_EQ(pauses(), std::vector<uint32_t>{20000});
    EXPECT_EQ(wgen.state, 0);
    EXPECT_EQ(wgen.playing, 0);
    EXPECT_EQ(stops(), 1);
    EXPECT_EQ(N, 1000.0f);
    EXPECT_EQ(liveSynth, 0);
    EXPECT_EQ(STOP, 1);
    EXPECT_EQ(motion(), nullptr);
    EXPECT_EQ(gl_double::recorder().redisplays, before + 1);
    const std::vector<float> &sound = heard(wgen);
    EXPECT_EQ(sound.front(), 0.0f);
    EXPECT_NEAR(sound.back(), 0.0f, 1e-2);
    for (size_t k = 1; k < sound.size(); ++k) {
        // The steepest that these partials and a ramp of a block can be.
        ASSERT_LT(std::fabs(sound[k] - sound[k - 1]), 0.02f) << k;
    }
}

TEST_F(Gestures, OnlyAltInTheEditViewScrubs) {
    for (const auto &[f, b] : {std::pair(0, 1), std::pair(1, 0), std::pair(0, 0)}) {
        flat = f;
        bps = b;
        press(100);
        EXPECT_EQ(liveSynth, 0);
        let_go(100);
    }
    flat = bps = 1;
    mouse_down(middle, 100, 50, alt | GLUT_ACTIVE_CTRL);
    mouse_up(middle, 100, 50, 0);
    EXPECT_EQ(starts(), 0);
}

TEST_F(Gestures, AReleaseWithoutAScrubStopsNothing) {
    wgen.playing = 1;
    mouse_down(middle, 100, 50, GLUT_ACTIVE_CTRL);
    EXPECT_EQ(printed([] { mouse_up(middle, 100, 50); }), "");
    EXPECT_EQ(wgen.playing, 1);
    EXPECT_EQ(STOP, 0);
    wgen.playing = 0;
}

TEST_F(Gestures, TheLeftButtonEndsNoScrub) {
    press(100);
    mouse_down(left, 100, 50, GLUT_ACTIVE_SHIFT);
    mouse_up(left, 100, 50);
    EXPECT_EQ(wgen.playing, 1);
    let_go(100);
    EXPECT_EQ(wgen.playing, 0);
}

TEST_F(Gestures, PressTakesTheHigherLimitMotionTheLower) {
    const int x = pixel_x(0.9);
    press(x);
    EXPECT_EQ(pcandidates[2].freq, 21000.0f);
    mouse_move(x, 50);
    EXPECT_EQ(pcandidates[2].freq, 20000.0f);
    let_go(x);
}

TEST_F(Gestures, OutsideTheSoundItFadesAndComesBack) {
    const int x = pixel_x(0.25);
    press(x);
    run_blocks(2);
    mouse_move(pixel_x(1.2), 50);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(pcandidates[i].status, 0);
    }
    const std::vector<float> fade = run_blocks(1);
    EXPECT_NE(fade[10], 0.0f);
    for (const float silent : run_blocks(2)) {
        EXPECT_EQ(silent, 0.0f);
    }
    EXPECT_EQ(wgen.state, 2);
    mouse_move(x, 50);
    run_blocks(1);
    EXPECT_EQ(wgen.amp_now[0], db2amp(-6.0f) * 0.2f);
    let_go(x);
}

TEST_F(Gestures, ASecondStartChangesOnlyTheCandidates) {
    press(pixel_x(0.25));
    run_blocks(1);
    const float before = wgen.freq_now[1];
    wgen.position = 77.0;
    pplay(pixel_x(0.75), 0);
    EXPECT_EQ(starts(), 1);
    EXPECT_EQ(wgen.state, 2);
    EXPECT_EQ(wgen.position, 77.0);
    EXPECT_EQ(wgen.freq_now[1], before);
    EXPECT_EQ(pcandidates[1].time, time_under(pixel_x(0.75)));
    let_go(100);
}

TEST_F(Gestures, AFailedStartIsNotReported) {
    output().failing = "start";
    output().code = -1;
    EXPECT_EQ(printed([] { press(100); }), "");
    EXPECT_EQ(wgen.playing, 0);
    EXPECT_EQ(wgen.state, 1);
    EXPECT_EQ(printed([] { let_go(100); }), "") << "nothing plays";
    EXPECT_EQ(liveSynth, 0);
}

TEST_F(Gestures, WithoutUnitsNothingHappens) {
    void *unit = wgen.unit;
    wgen.unit = nullptr;
    press(100);
    EXPECT_EQ(wgen.playing, 0);
    let_go(100);
    wgen.unit = unit;
}

TEST_F(Gestures, PhasesLastFromPlayToPlay) {
    press(pixel_x(0.25));
    run_blocks(3);
    let_go(pixel_x(0.25));
    const int32_t phase = wgen.phase[0];
    EXPECT_NE(phase, 0);
    press(pixel_x(0.25));
    EXPECT_EQ(wgen.phase[0], phase);
    let_go(pixel_x(0.25));
}

TEST_F(Gestures, DebugModeTellsWhatSounds) {
    dbp = 1;
    const int x = pixel_x(0.25);
    const std::string text = printed([x] { press(x); });
    char rows[256];
    std::snprintf(rows, sizeof rows, "live_gain = 0.200000\n0\t%f\t%f\n1\t%f\t%f\nWPlaying = 1\n",
                  pcandidates[0].freq, pcandidates[0].amp, pcandidates[1].freq, pcandidates[1].amp);
    EXPECT_EQ(text, rows);
    std::snprintf(rows, sizeof rows, "TIME:\t%f\n", time_under(x));
    EXPECT_EQ(printed([x] { mouse_move(x, 50); }), rows);
    EXPECT_EQ(printed([] { mouse_move(pixel_x(1.2), 50); }), "");
    dbp = 0;
    let_go(x);
}

TEST_F(Gestures, WithoutWTheZonesGeneratorSounds) {
    W = 0;
    dbp = 1;
    const std::string text = printed([] { pplay(pixel_x(0.25), 0); });
    EXPECT_TRUE(text.ends_with("ZPlaying = 1\n"));
    EXPECT_EQ(zgen.playing, 1);
    EXPECT_EQ(wgen.playing, 0);
}

TEST_F(Gestures, AReleaseIsWaitedForButNotForEver) {
    press(100);
    unit_of(wgen).started = false; // a driver that has died
    EXPECT_EQ(printed([] { stop(); }), "Stop\n");
    EXPECT_EQ(pauses().size(), 11u);
    EXPECT_EQ(pauses().front(), 20000u);
    EXPECT_EQ(wgen.playing, 0);
}

TEST_F(Gestures, StopOfWhatIsSilentDoesNothing) {
    EXPECT_EQ(printed([] {
                  stop();
                  zstop();
              }),
              "");
    EXPECT_TRUE(pauses().empty());
}

TEST_F(Gestures, StopTakesTheFirstGeneratorToo) {
    gen.unit = wgen.unit; // stands for one of its own
    gen.playing = 1;
    EXPECT_EQ(printed([] { stop(); }), "Stop\n");
    EXPECT_EQ(gen.playing, 0);
    EXPECT_EQ(gen.state, 3);
    gen = {};
}

TEST_F(Gestures, ZstopTellsTheTimeOfItsEntry) {
    zgen.playing = 1;
    zgen.state = 2;
    zgen.time = 0.25f;
    unit_of(zgen).started = true;
    EXPECT_EQ(printed([] { zstop(); }), "  Synthesis halted @ 0.250000s, zgAU stopped\n");
    EXPECT_EQ(zgen.state, 0);
    EXPECT_EQ(zgen.playing, 0);
    EXPECT_EQ(N, 1000.0f);
}

TEST_F(Gestures, ANoteSoundsAtTheGeneratorsTime) {
    wgen.time = 0.5f;
    gl_double::forget_drawing();
    pplay(7, 1);
    EXPECT_TRUE(gl_double::recorder().calls.empty());
    EXPECT_EQ(square[0], 7);
    EXPECT_EQ(tfsquare[0], 0.25f);
    EXPECT_EQ(pcandidates[1].freq, 150.0f);
    EXPECT_EQ(wgen.midi_started, 1);
    EXPECT_EQ(wgen.position, 0.5 * 44100.0 / 2.0);
    EXPECT_EQ(wgen.playing, 1);
    EXPECT_EQ(numbOfCands, 4);
    stop();
}

TEST_F(Gestures, ANoteInDebugMode) {
    dbp = 1;
    wgen.time = 0.5f;
    EXPECT_TRUE(printed([] { pplay(0, 1); })
                    .starts_with("live_gain = 0.200000\nwgen.time: 0.500000\n"
                                 "tfsquare.tdn = 0.250000\n"));
}

TEST_F(Gestures, MidiMotion) {
    numbOfCands = 4;
    wgen.time = 1.5f;
    changed = 1;
    mmotion();
    EXPECT_EQ(tfsquare[0], 0.75f);
    EXPECT_EQ(tfsquare[1], 0.75f);
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(wgen.prev_time, 1.5f);
    EXPECT_EQ(pcandidates[1].freq, 250.0f);
    EXPECT_EQ(pcandidates[2].freq, 20000.0f) << "the lower limit";
}

TEST_F(Gestures, TheWheelChoosesWhatSounds) {
    numbOfCands = 4;
    wgen.select = 1;
    wgen.time = 1.75f;
    mmif = 0.375f; // partials 0 to 2
    mmotion();
    EXPECT_EQ(flags(), (std::vector<std::string>{"11", "111", "11", "0"}));
    EXPECT_EQ(pcandidates[2].freq, 21000.0f) << "the higher limit";
    mmif = 0.75f;
    mmotion();
    EXPECT_EQ(flags(), (std::vector<std::string>{"00", "000", "11", "1"}));
    EXPECT_EQ(pcandidates[0].status, 0);
    EXPECT_EQ(pcandidates[2].status, 1);
}

TEST_F(Gestures, TheWheelStartsUnselectedEndsAtFullLevel) {
    numbOfCands = 4;
    select_points({"01", "000", "00", "0"});
    // The wheel itself selects whole partials; without it flags may differ within one.
    wgen.time = 1.0f;
    const StoreReader reader;
    sample_published(*reader.store(), 1.0f, wheel_rule, pcandidates);
    EXPECT_EQ(pcandidates[0].amp,
              db2amp(linear_interpolation(1.0f, 2.0f, 0.0f, -6.0f, 0.0f)) * 0.2f);
}

TEST_F(Gestures, PositionsOfTheWheel) {
    numbOfCands = 4;
    wgen.select = 1;
    dbp = 1;
    const struct {
        float wheel;
        const char *text;
    } rows[] = {
        {0.0f, "A = 0\nB = 0\n\n"},  {0.124f, "A = 0\nB = 0\n\n"}, {0.125f, "A = 0\nB = 1\n\n"},
        {0.49f, "A = 0\nB = 3\n\n"}, {0.5f, "A = 0\nB = 4\n\n"},   {0.625f, "A = 1\nB = 4\n\n"},
        {0.9f, "A = 3\nB = 4\n\n"},  {1.0f, "A = 4\nB = 4\n\n"},   {-1.0f, "A = 0\nB = 0\n\n"},
        {2.0f, "A = 4\nB = 4\n\n"},  {NAN, "A = 0\nB = 0\n\n"}};
    for (const auto &row : rows) {
        mmif = row.wheel;
        EXPECT_EQ(printed(mmotion), row.text) << row.wheel;
    }
}

TEST_F(Gestures, DuringAnEditMidiKeepsWhatItHad) {
    wgen.time = 0.5f;
    pplay(0, 1);
    withdraw_store();
    wgen.time = 1.5f;
    wgen.select = 1;
    mmif = 1.0f;
    mmotion();
    EXPECT_EQ(pcandidates[1].freq, 150.0f);
    EXPECT_EQ(wgen.prev_time, 1.5f);
    publish_store();
    wgen.select = 0;
    mmotion();
    EXPECT_EQ(pcandidates[1].freq, 250.0f);
    stop();
}

TEST_F(Gestures, AMoveDuringAnEditWaitsForItsEnd) {
    numbOfCands = 4;
    wgen.time = 1.5f;
    withdraw_store();
    static int pauses_left;
    pauses_left = 3;
    pause_for = [](uint32_t microseconds) {
        EXPECT_EQ(microseconds, 1000u);
        if (--pauses_left == 0) {
            publish_store();
        }
    };
    mmotion();
    EXPECT_EQ(pauses_left, 0);
    EXPECT_EQ(pcandidates[1].freq, 250.0f);
    EXPECT_EQ(tfsquare[0], 0.75f);
    withdraw_store();
    wgen.time = 0.5f;
    mmotion(); // not for ever
    EXPECT_EQ(pauses_left, -20);
    EXPECT_EQ(pcandidates[1].freq, 250.0f);
    EXPECT_EQ(tfsquare[0], 0.75f);
}

TEST_F(Gestures, ReservedFunctionsHaveNoEffect) {
    EXPECT_EQ(printed([] {
                  synthesizeSnapshot();
                  sinusoid();
              }),
              "");
}

TEST_F(Gestures, TheCursorFollowsTheScrub) {
    const int x = pixel_x(0.25);
    press(x);
    frame();
    const std::vector<DrawnLine> lines = lines_of_colour(0.1f, 0.45f, 0.3f);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NEAR(lines[0].from.x, 0.25, 0.01);
    let_go(x);
    frame();
    EXPECT_TRUE(lines_of_colour(0.1f, 0.45f, 0.3f).empty());
}

} // namespace
