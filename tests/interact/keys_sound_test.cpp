// Keys of the players: what each asks of them and in which order, on every state of the records.
#include "display/scene.h"
#include "display/view.h"
#include "interact/mouse.h"
#include "interact/transport.h"
#include "live/live.h"
#include "tests/interact/keys_support.h"
#include "tests/support/console.h"

namespace {

/// Stands for whatever was registered before.
void earlier_idle() {}

void (*idle())() {
    return gl_double::recorder().callbacks.idle;
}

const float sound[] = {0.0f};
int unit = 0;

class KeysSound : public KeysTest {
  protected:
    void SetUp() override {
        KeysTest::SetUp();
        glutIdleFunc(earlier_idle);
    }
    static void player_plays(int32_t state) {
        fplayer.playing = 1;
        fplayer.state = state;
        fplayer.position = 1234.5;
    }
    static void zone_plays() {
        zgen.playing = 1;
        zgen.state = 2;
        zgen.unit = &unit;
        zgen.time = 0.75f;
    }
};

// --- Return ------------------------------------------------------------------------------------

TEST_F(KeysSound, ReturnRewindsARunningPlayer) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        player_plays(2);
        forget_player_calls();
        during_wait = [] { EXPECT_EQ(fplayer.position, 1234.5); };
        EXPECT_EQ(press(key_return, modifiers), "Enter\n");
        EXPECT_EQ(player_calls(), "fbstop1 wait 20000");
        EXPECT_EQ(fplayer.position, 0.0);
        EXPECT_EQ(idle(), nullptr);
        EXPECT_EQ(posted(), 1);
    }
}

TEST_F(KeysSound, ReturnLeavesARestingPlayer) {
    player_plays(0);
    EXPECT_EQ(press(key_return), "Enter\n");
    fplayer.playing = 0;
    fplayer.state = 2;
    EXPECT_EQ(press(key_return), "Enter\n");
    EXPECT_EQ(player_calls(), "");
    EXPECT_EQ(fplayer.position, 1234.5);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSound, ReturnKeepsTheIdleFunctionOfAZone) {
    zgen.state = 2;
    press(key_return);
    EXPECT_EQ(idle(), earlier_idle);
    zgen.state = 0;
    press(key_return);
    EXPECT_EQ(idle(), nullptr);
}

// --- Space -------------------------------------------------------------------------------------

TEST_F(KeysSound, AltSpacePlaysTheSelection) {
    sweepSelect = 1;
    selecting = 1;
    select_group({"0100", "000", "00", "0"});
    parray[0][1].phase = 9.0f;
    EXPECT_EQ(press(' ', key_alt), "Play select partials: ");
    EXPECT_EQ(player_calls(), "synssumWT 900");
    EXPECT_NE(parray[0][1].phase, 9.0f) << "phases are derived first";
    EXPECT_EQ(selecting, 1);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(idle(), earlier_idle);
}

TEST_F(KeysSound, AltSpaceNeedsASweep) {
    select_group({"0100", "000", "00", "0"});
    for (const uint8_t playing : {uint8_t{0}, uint8_t{1}}) {
        fplayer.playing = playing;
        EXPECT_EQ(press(' ', key_alt), "Invalid Selection Mode for: Play Selected\n");
        EXPECT_EQ(posted(), 0);
    }
    EXPECT_EQ(player_calls(), "");
}

TEST_F(KeysSound, ShiftSpacePlaysAll) {
    selecting = 1;
    select_group({"0100", "000", "00", "0"});
    parray[0][1].phase = 9.0f;
    EXPECT_EQ(press(' ', key_shift), "Play All Partials ");
    EXPECT_EQ(player_calls(), "synsumWT 900");
    EXPECT_NE(parray[0][1].phase, 9.0f);
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(posted(), 0) << "no redisplay of its own";
}

TEST_F(KeysSound, NoRenderWhileThePlayerRuns) {
    sweepSelect = 1;
    player_plays(2);
    expect_nothing(' ', key_alt);
    expect_nothing(' ', key_shift);
    EXPECT_EQ(player_calls(), "");
}

TEST_F(KeysSound, SpacePauses) {
    test_sound = sound;
    for (const int modifiers : all_modifiers_but({key_alt, key_shift})) {
        player_plays(2);
        forget_player_calls();
        EXPECT_EQ(press(' ', modifiers), "Stopped at frame: 1234.500000\n");
        EXPECT_EQ(player_calls(), "fbstop1");
        EXPECT_EQ(idle(), nullptr);
        EXPECT_EQ(posted(), 1);
    }
}

TEST_F(KeysSound, SpaceResumes) {
    test_sound = sound;
    fplayer.position = 250.0;
    EXPECT_EQ(press(' '), "Resuming... at 250.000000\n");
    EXPECT_EQ(player_calls(), "fbresume1");
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSound, SpacePlaysAnew) {
    test_sound = sound;
    fill_store({{{0.25f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    EXPECT_EQ(press(' '), "Re-playing...\n");
    EXPECT_EQ(player_calls(), "fbplay1 0.250000 77");
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSound, SpaceWithoutASound) {
    fplayer.position = 250.0;
    EXPECT_EQ(press(' '), "");
    EXPECT_EQ(player_calls(), "");
    EXPECT_EQ(idle(), nullptr);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSound, SpaceDuringAFadeOutStopsAgain) {
    test_sound = sound;
    player_plays(3);
    EXPECT_EQ(press(' '), "Stopped at frame: 1234.500000\n");
    EXPECT_EQ(player_calls(), "fbstop1");
}

TEST_F(KeysSound, SpaceKeepsTheIdleFunctionOfAZone) {
    zgen.state = 1;
    press(' ');
    EXPECT_EQ(idle(), earlier_idle);
}

/// A player whose stop takes effect at once, as when its callback ran in between.
TEST_F(KeysSound, StopThatIsOverResumesInTheSameStroke) {
    test_sound = sound;
    player_plays(2);
    transport.fbstop1 = [] { fplayer.playing = 0; };
    EXPECT_EQ(press(' '), "Stopped at frame: 1234.500000\nResuming... at 1234.500000\n");
    EXPECT_EQ(player_calls(), "fbresume1");
}

TEST_F(KeysSound, ColonTogglesTheLoop) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        EXPECT_EQ(press(':', modifiers), not_built);
        EXPECT_EQ(fplayer.loop, 1);
        EXPECT_EQ(posted(), 0);
        EXPECT_EQ(press(':', modifiers), not_built);
        EXPECT_EQ(fplayer.loop, 0);
    }
}

// --- gain and switches -------------------------------------------------------------------------

TEST_F(KeysSound, Gain) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        live_gain = 0.2f;
        EXPECT_EQ(press('G', modifiers), "");
        EXPECT_EQ(live_gain, static_cast<float>(static_cast<double>(0.2f) * 1.1892071));
        EXPECT_EQ(posted(), 0);
        live_gain = 0.3f;
        EXPECT_EQ(press('g', modifiers), "");
        EXPECT_EQ(live_gain, modifiers == key_alt
                                 ? 0.2f
                                 : static_cast<float>(static_cast<double>(0.3f) / 1.1892071));
        EXPECT_EQ(posted(), 0);
    }
}

TEST_F(KeysSound, RandomWalk) {
    for (const unsigned char code : {'D', 'd'}) {
        for (int modifiers = 0; modifiers < key_states; ++modifiers) {
            EXPECT_EQ(press(code, modifiers), "RAN\n");
            EXPECT_EQ(ran, 1);
            EXPECT_EQ(posted(), 1);
            EXPECT_EQ(press(code, modifiers), "");
            EXPECT_EQ(ran, 0);
            EXPECT_EQ(posted(), 1);
        }
    }
}

TEST_F(KeysSound, MidiOnArmsTheRepaintTimer) {
    EXPECT_EQ(press('M'), "MIDI: ON\n");
    EXPECT_EQ(midi, 1);
    EXPECT_EQ(tCallbackReg, 1);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(idle(), earlier_idle);
    ASSERT_EQ(gl_double::recorder().timers.size(), 1u);
    EXPECT_EQ(gl_double::recorder().timers[0].milliseconds, 100u);
    EXPECT_EQ(gl_double::recorder().timers[0].value, 100);
    press('m');
    EXPECT_EQ(press('m'), "MIDI: ON\n");
    EXPECT_EQ(gl_double::recorder().timers.size(), 1u) << "it was still armed";
    press('m');
    gl_double::fire_timers();
    EXPECT_EQ(tCallbackReg, 0);
    EXPECT_TRUE(gl_double::recorder().timers.empty());
}

TEST_F(KeysSound, MidiOffClearsInTheFlatView) {
    midi = 1;
    wgen.select = 1;
    select_group({"0110", "111", "01", "1"});
    sweepSelect = 1;
    EXPECT_EQ(press('m'), "MIDI: OFF\n");
    EXPECT_EQ(midi, 0);
    EXPECT_EQ(wgen.select, 0);
    EXPECT_EQ(idle(), nullptr);
    EXPECT_TRUE(selection_cleared());
    EXPECT_EQ(posted(), 1);
    EXPECT_TRUE(gl_double::recorder().timers.empty());
}

TEST_F(KeysSound, MidiOffKeepsASelectionInPerspective) {
    midi = 1;
    flat = 0;
    select_group({"0110", "111", "01", "1"});
    EXPECT_EQ(press('M', key_ctrl), "MIDI: OFF\n");
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(flags()[0], "0110");
}

TEST_F(KeysSound, EveryModifierTogglesMidiButAltOfTheSmallLetter) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        midi = 0;
        EXPECT_EQ(press('M', modifiers), "MIDI: ON\n");
        if (modifiers != key_alt) {
            EXPECT_EQ(press('m', modifiers), "MIDI: OFF\n");
        }
    }
}

TEST_F(KeysSound, WheelNeedsMidi) {
    for (const unsigned char code : {'W', 'w'}) {
        for (int modifiers = 0; modifiers < key_states; ++modifiers) {
            midi = 1;
            wgen.select = 0;
            EXPECT_EQ(press(code, modifiers), "mod.wheel->selection: ON\n");
            EXPECT_EQ(wgen.select, 1);
            EXPECT_EQ(posted(), 1);
            EXPECT_EQ(press(code, modifiers), "mod.wheel->selection: OFF\n");
            EXPECT_EQ(wgen.select, 0);
            EXPECT_EQ(posted(), 1);
            midi = 0;
            wgen.select = 1;
            EXPECT_EQ(press(code, modifiers), "");
            EXPECT_EQ(wgen.select, 0);
            EXPECT_EQ(posted(), 0);
        }
    }
}

// --- the zone ----------------------------------------------------------------------------------

class KeysZone : public KeysSound {
  protected:
    void SetUp() override {
        KeysSound::SetUp();
        open_edit_view();
        glutIdleFunc(earlier_idle);
        selecting = 1;
        STOP = 1;
    }
    /// The columns of a sweep between two scene times.
    static void sweep_times(double from, double to) {
        square[0] = pixel_x(from);
        square[1] = pixel_x(to);
    }
};

TEST_F(KeysZone, StartsFromASweep) {
    sweep_times(0.75, 0.25);
    zgen.select = 1;
    const int first = square[1];
    const std::string text = press('z');
    EXPECT_TRUE(text.starts_with("Event: 0\n->start_time: ")) << text;
    EXPECT_EQ(square[0], first) << "the columns are put in order";
    EXPECT_NEAR(zgen.starttime, 0.25 * 0.6, 0.003);
    EXPECT_EQ(zgen.time, zgen.starttime);
    EXPECT_NEAR(zgen.endtime, 0.75 * 0.6, 0.003);
    EXPECT_EQ(player_calls(), "tqplay");
    EXPECT_EQ(idle(), zone_idle);
    EXPECT_EQ(zgen.events, 1);
    EXPECT_EQ(zgen.select, 0);
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(STOP, 0);
    EXPECT_EQ(zloop, 0);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysZone, AltPlaysTheSelectionWithoutAWord) {
    sweep_times(0.25, 0.75);
    const std::string text = press('z', key_alt);
    EXPECT_TRUE(text.starts_with("->start_time: ")) << text;
    EXPECT_EQ(zgen.select, 1);
    EXPECT_EQ(zgen.events, 1);
    EXPECT_EQ(player_calls(), "tqplay");
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysZone, CapitalLoops) {
    sweep_times(0.25, 0.75);
    EXPECT_TRUE(press('Z', key_shift).starts_with("Event: 0\n"));
    EXPECT_EQ(zloop, 1);
    EXPECT_EQ(player_calls(), "tqplay");
    zgen.events = 0;
    EXPECT_TRUE(press('Z', key_alt).starts_with("->start_time: "));
    EXPECT_EQ(zgen.select, 1);
    EXPECT_EQ(zloop, 1);
}

TEST_F(KeysZone, NarrowSweepDoesNothing) {
    struct Width {
        int pixels, modifiers;
        bool wide;
    };
    for (const Width &width :
         {Width{0, 0, false}, Width{4, 0, false}, Width{-4, key_ctrl, false}, Width{5, 0, true},
          Width{-5, key_shift, true}, Width{5, key_alt, false}, Width{-9, key_alt, false},
          Width{10, key_alt, true}, Width{-10, key_alt, true}}) {
        forget_player_calls();
        glutIdleFunc(earlier_idle);
        zgen.events = 0;
        STOP = 1;
        square[0] = 200;
        square[1] = 200 + width.pixels;
        const std::string text = press('z', width.modifiers);
        if (!width.wide) {
            EXPECT_EQ(text, width.modifiers == key_alt ? "" : "Event: 0\n") << width.pixels;
        }
        EXPECT_EQ(player_calls(), width.wide ? "tqplay" : "") << width.pixels;
        EXPECT_EQ(idle(), width.wide ? zone_idle : earlier_idle) << width.pixels;
        EXPECT_EQ(posted(), width.wide ? 1 : 0) << width.pixels;
        EXPECT_EQ(zgen.events, width.wide ? 1 : 0) << width.pixels;
        EXPECT_EQ(STOP, 0) << "cleared before the width is looked at";
    }
}

TEST_F(KeysZone, CapitalArmsTheLoopEvenForANarrowSweep) {
    EXPECT_EQ(press('Z'), "Event: 0\n");
    EXPECT_EQ(zloop, 1);
    EXPECT_EQ(player_calls(), "");
}

TEST_F(KeysZone, ZoneThatPlayedPlaysAgainWithoutASweep) {
    zgen.events = 3;
    zgen.starttime = 0.1f;
    zgen.endtime = 0.2f;
    EXPECT_EQ(press('z'), "Event: 3\n");
    EXPECT_EQ(player_calls(), "tqplay");
    EXPECT_EQ(zgen.events, 4);
    EXPECT_EQ(zgen.starttime, 0.1f) << "no new zone is made";
    EXPECT_EQ(zgen.endtime, 0.2f);
    EXPECT_EQ(idle(), zone_idle);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(press('z', key_alt), "");
    EXPECT_EQ(zgen.events, 5);
}

TEST_F(KeysZone, NewSweepEndsTheOldZone) {
    zgen.events = 3;
    mouse_down(GLUT_LEFT_BUTTON, 100, 100);
    mouse_up(GLUT_LEFT_BUTTON, 102, 120);
    EXPECT_EQ(press('z'), "Event: 0\n") << "straight after a click nothing plays";
    EXPECT_EQ(player_calls(), "");
}

TEST_F(KeysZone, StopHaltsTheGenerator) {
    zone_plays();
    zloop = 1;
    zgen.select = 1;
    during_wait = [] {
        EXPECT_EQ(zgen.state, 3);
        EXPECT_EQ(zgen.playing, 1);
    };
    EXPECT_EQ(press('z'), "  Synthesis halted @ 0.750000s, zgAU stopped\n");
    EXPECT_EQ(player_calls(), "wait 20000 unit_stop N 1000");
    EXPECT_EQ(zgen.playing, 0);
    EXPECT_EQ(zloop, 1) << "a loop stays armed for the next start";
    EXPECT_EQ(idle(), nullptr);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(zgen.select, 1);
    EXPECT_EQ(selecting, 1);
}

TEST_F(KeysZone, AltStopEndsTheLoop) {
    zone_plays();
    zloop = 1;
    EXPECT_EQ(press('z', key_alt), "  Synthesis halted @ 0.750000s, zgAU stopped\n");
    EXPECT_EQ(zloop, 0);
    zone_plays();
    EXPECT_EQ(press('Z', key_alt), "  Synthesis halted @ 0.750000s, zgAU stopped\n");
    EXPECT_EQ(zloop, 0) << "set by the capital and cleared by the stop";
    zone_plays();
    press('Z', key_shift);
    EXPECT_EQ(zloop, 1);
}

TEST_F(KeysZone, StopHandsTheIdleFunctionToThePlayer) {
    zone_plays();
    fplayer.state = 2;
    press('z');
    EXPECT_EQ(idle(), player_idle);
}

TEST_F(KeysZone, StopWithoutAUnit) {
    zone_plays();
    zgen.unit = nullptr;
    EXPECT_EQ(press('z'), "");
    EXPECT_EQ(player_calls(), "");
    EXPECT_EQ(zgen.playing, 0);
    EXPECT_EQ(idle(), nullptr);
    EXPECT_EQ(posted(), 1);
}

// --- before the players are there --------------------------------------------------------------

TEST_F(KeysZone, UnbuiltPlayersSaySo) {
    transport = unbuilt_transport();
    sweepSelect = 1;
    EXPECT_EQ(press(' ', key_alt), std::string("Play select partials: ") + not_built);
    EXPECT_EQ(press(' ', key_shift), std::string("Play All Partials ") + not_built);
    EXPECT_EQ(press(' '), "") << "there is no sound to play";
    zgen.events = 1;
    EXPECT_EQ(press('z'), std::string("Event: 1\n") + not_built);
    EXPECT_EQ(idle(), nullptr);
    zone_plays();
    EXPECT_EQ(press('z'),
              std::string(not_built) + "  Synthesis halted @ 0.750000s, zgAU stopped\n");
    player_plays(2);
    EXPECT_EQ(press(key_return), std::string("Enter\n") + not_built);
    EXPECT_EQ(printed([] {
                  transport.fbresume1();
                  EXPECT_EQ(transport.fbplay1(0.0f, 1), 0);
                  EXPECT_EQ(transport.rendered_frames(), 0);
              }),
              std::string(not_built) + not_built);
}

} // namespace
