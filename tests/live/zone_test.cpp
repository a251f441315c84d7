// Zones: from the menu's sweep, from times, looping, each partial by itself, and their ends.
#include "live/zone.h"

#include "display/view.h"
#include "interact/selection.h"
#include "interact/unproject.h"
#include "live/idle.h"
#include "live/moment.h"
#include "live/requests.h"
#include "live/shared.h"
#include "store/settings.h"
#include "synth/sound.h"
#include "tests/interact/menu_support.h"
#include "tests/support/console.h"
#include "tests/support/live_play.h"
#include "tests/support/rendering.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <cstdlib>

namespace {

const std::vector<Partial> content = {
    {{0.0f, 440.0f, -6.0f}, {2.0f, 440.0f, -6.0f}},
    {{0.0f, 100.0f, -20.0f}, {1.0f, 200.0f, -40.0f}, {2.0f, 300.0f, -40.0f}},
    {{0.0f, 21000.0f, -30.0f}, {2.0f, 21000.0f, -30.0f}}};

class Zones : public LivePlayTest {
  protected:
    void SetUp() override {
        LivePlayTest::SetUp();
        fill_store(content);
        open_edit_view();
    }

    static void play(float start, float end) {
        zgen.starttime = zgen.time = start;
        zgen.endtime = end;
        glutIdleFunc(qmotion);
        printed([] { tqplay(&zgen.starttime, &zgen.endtime); });
    }

    /// Idle calls until the zone has ended; what they print.
    static std::string play_on(int most_calls = 2000) {
        return printed([most_calls] {
            for (int n = 0; n < most_calls && idle() != nullptr; ++n) {
                idle()();
            }
        });
    }

    static void (*idle())() {
        return gl_double::recorder().callbacks.idle;
    }
};

std::string columns_text(int x0, int x1) {
    char text[128];
    const float start = (sndlen - sndstart) * scene_offset(x0, 0.0).t + sndstart;
    const float end = (sndlen - sndstart) * scene_offset(x1, 0.0).t + sndstart;
    std::snprintf(text, sizeof text, "->start_time: %fs\tend_time: %fs\n", start,
                  end > sndlen ? sndlen : end);
    return text;
}

TEST_F(Zones, TheMenuPlaysTheSweep) {
    const int x0 = pixel_x(0.25), x1 = pixel_x(0.5);
    square[0] = x1;
    square[1] = x0;
    selecting = STOP = 1;
    liveSynth = 1;
    zgen.starttime = 9.0f;
    menu_state = {};
    const std::string text = printed([] { menu_select(75); });
    EXPECT_EQ(text, "Play zone: " + columns_text(x0, x1));
    EXPECT_EQ(square[0], x0) << "put in order in place";
    EXPECT_EQ(square[1], x1);
    EXPECT_EQ(selecting + liveSynth + STOP, 0);
    EXPECT_EQ(idle(), qmotion);
    EXPECT_EQ(zgen.starttime, 9.0f) << "left as it was";
    EXPECT_EQ(zgen.time, (sndlen - sndstart) * tfsquare[0] + sndstart);
    EXPECT_EQ(zgen.playing, 1);
    EXPECT_EQ(zgen.state, 1);
    EXPECT_EQ(pcandidates[1].time, zgen.time);
    EXPECT_EQ(pcandidates[2].freq, 21000.0f);
    EXPECT_EQ(zgen.freq_now[1], pcandidates[1].freq);
    EXPECT_EQ(qcandidates[1].status, 0) << "the idle function fills these";
}

TEST_F(Zones, ASweepBeyondTheEndEndsWithTheSound) {
    int32_t x0 = pixel_x(0.5), x1 = pixel_x(1.3);
    const std::string text = printed([&] { qplay(&x0, &x1); });
    EXPECT_EQ(text, columns_text(x0, x1));
    EXPECT_EQ(zgen.endtime, 2.0f);
    EXPECT_EQ(zgen.playing, 1);
}

TEST_F(Zones, ASweepBeforeTheSoundIsNoZone) {
    int32_t x0 = pixel_x(-0.2), x1 = pixel_x(-0.1);
    const std::string text = printed([&] { qplay(&x0, &x1); });
    EXPECT_EQ(text, columns_text(x0, x1) + "No zone selected\n");
    EXPECT_EQ(zgen.playing, 0);
    EXPECT_EQ(starts(), 0);
}

TEST_F(Zones, DebugModeOfTheMenusZone) {
    dbp = 1;
    int32_t x0 = pixel_x(0.25), x1 = pixel_x(0.5);
    const std::string text = printed([&] { qplay(&x0, &x1); });
    EXPECT_TRUE(text.starts_with("live_gain = 0.200000\n->start_time"));
    EXPECT_TRUE(text.ends_with("WPlaying = 1\n"));
}

TEST_F(Zones, TimesToPlay) {
    const float start = 0.5f, end = 1.25f;
    EXPECT_EQ(printed([&] { tqplay(&start, &end); }),
              "|->start_time: 0.500000s\tend_time: 1.250000s\n");
    EXPECT_EQ(numbOfCands, 3);
    EXPECT_EQ(qcandidates[1].freq, 150.0f);
    EXPECT_EQ(qcandidates[2].freq, 21000.0f);
    EXPECT_EQ(zgen.freq_now[1], 150.0f);
    EXPECT_EQ(zgen.amp_now[1], qcandidates[1].amp);
    EXPECT_EQ(zgen.state, 1);
    EXPECT_EQ(zgen.playing, 1);
    dbp = 1;
    zgen.playing = 0;
    EXPECT_TRUE(printed([&] { tqplay(&start, &end); }).ends_with("ZPlaying = 1\n"));
}

TEST_F(Zones, SelectedPointsAlone) {
    select_points({"01", "000", "00"});
    zgen.select = 1;
    const float start = 0.5f, end = 1.0f;
    printed([&] { tqplay(&start, &end); });
    EXPECT_EQ(qcandidates[0].amp,
              db2amp(linear_interpolation(0.5f, 2.0f, 0.0f, -6.0f, -100.0f)) * 0.2f);
    EXPECT_EQ(qcandidates[1].status, 0);
    select_points({"00", "000", "11"});
    zgen.time = 0.75f;
    printed(qmotion);
    EXPECT_EQ(qcandidates[0].status, 0);
    EXPECT_EQ(qcandidates[2].freq, 21000.0f) << "the higher limit";
    zgen.select = 0;
    printed(qmotion);
    EXPECT_EQ(qcandidates[2].freq, 20000.0f) << "the lower limit";
}

TEST_F(Zones, AZonePlaysForItsLength) {
    play(0.25f, 0.75f);
    EXPECT_EQ(play_on(), "  Synthesis completed, zgAU stopped\n");
    EXPECT_EQ(zgen.playing, 0);
    EXPECT_EQ(zgen.state, 0);
    EXPECT_EQ(zgen.time, 0.25f) << "back at the start";
    EXPECT_EQ(N, 1000.0f);
    EXPECT_EQ(idle(), nullptr);
    EXPECT_EQ(stops(), 1);
    const double seconds = static_cast<double>(heard(zgen).size()) / 44100.0;
    // Idle calls come every 5 ms; the release lasts 20 ms.
    EXPECT_NEAR(seconds, 0.5 + 0.02, 3 * 512 / 44100.0);
    EXPECT_GT(gl_double::recorder().redisplays, 50);
}

TEST_F(Zones, TheSoundFollowsTheTime) {
    play(0.25f, 0.75f);
    for (int n = 0; n < 30; ++n) {
        const float time = zgen.time;
        printed(qmotion);
        EXPECT_EQ(qcandidates[1].time, time);
        EXPECT_EQ(qcandidates[1].freq, linear_interpolation(time, 1.0f, 0.0f, 200.0f, 100.0f));
    }
    EXPECT_GT(zgen.time, 0.35f);
}

TEST_F(Zones, AnEndInDebugMode) {
    play(0.25f, 0.28f);
    dbp = 1;
    const std::string text = play_on();
    EXPECT_TRUE(text.starts_with("TIME:\t0.250000\nq")) << text;
    EXPECT_TRUE(text.ends_with("  Synthesis completed, zgAU stopped\n  zgen.endtime = 0.280000\n"))
        << text;
    zgen.time = 5.0f;
    EXPECT_EQ(printed(qmotion), "q") << "outside the sound";
}

TEST_F(Zones, WithARenderedSoundTheIdleFunctionIsItsOwn) {
    play(0.25f, 0.28f);
    fplayer.state = 2;
    printed([] {
        for (int n = 0; n < 20 && gl_double::recorder().callbacks.idle == qmotion; ++n) {
            qmotion();
        }
    });
    EXPECT_EQ(idle(), Idle);
    fplayer.state = 0;
}

TEST_F(Zones, ALoopGoesOn) {
    zloop = 1;
    play(0.25f, 0.35f);
    EXPECT_EQ(play_on(200), "");
    EXPECT_EQ(zgen.playing, 1);
    EXPECT_EQ(zgen.state, 2);
    EXPECT_GE(zgen.time, 0.25f);
    EXPECT_LT(zgen.time, 0.4f);
    EXPECT_GT(heard(zgen).size(), 4 * 4410u) << "several times its length";
    zloop = 0;
    EXPECT_EQ(play_on(), "  Synthesis completed, zgAU stopped\n");
}

TEST_F(Zones, AZoneToTheEndOfTheSoundEndsOnce) {
    play(1.9f, 2.0f);
    EXPECT_EQ(play_on(100), "  Synthesis completed, zgAU stopped\n");
    EXPECT_EQ(zgen.playing, 0);
}

TEST_F(Zones, TheCallbackMayEndTheSoundFirst) {
    play(1.9f, 2.0f);
    run_blocks(20);
    EXPECT_EQ(zgen.state, 0);
    EXPECT_EQ(zgen.playing, 0);
    EXPECT_EQ(printed(qmotion), "");
    EXPECT_EQ(stops(), 0) << "the unit runs on, silently";
    play(0.5f, 0.6f);
    EXPECT_EQ(zgen.playing, 1);
    EXPECT_EQ(play_on(), "  Synthesis completed, zgAU stopped\n");
}

TEST_F(Zones, AStartWhilePlayingChangesOnlyTheCandidates) {
    play(0.25f, 0.75f);
    run_blocks(2);
    const float start = 1.0f;
    printed([&] { tqplay(&start, &start); });
    EXPECT_EQ(starts(), 1);
    EXPECT_EQ(zgen.state, 2);
    EXPECT_EQ(qcandidates[1].time, 1.0f);
}

TEST_F(Zones, EachPartialByItself) {
    ran = 1;
    play(0.5f, 1.0f);
    zgen.frames = 441; // 10 ms
    numbOfCands = 3;
    times[0] = 0.0f;   // behind: is raised
    times[1] = 0.8f;   // ahead: stands
    times[2] = 0.995f; // near the end: jumps
    std::srand(5);
    const float draw = randf();
    std::srand(5);
    printed(qmotion);
    EXPECT_EQ(times[0], 0.5f);
    EXPECT_EQ(times[1], 0.8f);
    EXPECT_EQ(times[2], (1.0f - 0.5f) * draw + 0.5f);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(qcandidates[i].time, times[i]);
    }
    EXPECT_EQ(qcandidates[1].freq, linear_interpolation(0.8f, 1.0f, 0.0f, 200.0f, 100.0f));
}

TEST_F(Zones, AFrozenPartialRidesAlongOnceTheTimeReachesIt) {
    ran = 1;
    play(0.5f, 1.0f);
    zgen.frames = 512;
    times[1] = 0.6f;
    zgen.time = 0.59f;
    printed(qmotion);
    EXPECT_EQ(times[1], 0.6f);
    zgen.time = 0.61f;
    printed(qmotion);
    EXPECT_EQ(times[1], 0.61f);
}

TEST_F(Zones, WithoutTheWalkTheTimesStand) {
    play(0.5f, 1.0f);
    printed(qmotion);
    EXPECT_EQ(times[0], 0.0f);
}

TEST_F(Zones, NoPartialsNoHarm) {
    fill_store({});
    ran = 1;
    numbOfCands = 5;
    zgen.time = 0.5f;
    printed(qmotion);
    EXPECT_EQ(qcandidates[0].status, 0);
}

TEST_F(Zones, TheCursorStandsAtTheZonesTime) {
    play(0.5f, 1.5f);
    run_blocks(1);
    zgen.time = 1.0f;
    frame();
    const std::vector<DrawnLine> lines = lines_of_colour(0.33f, 0.4f, 0.2f);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NEAR(lines[0].from.x, 0.5, 1e-6);
}

} // namespace
