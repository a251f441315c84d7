// Keys of the players: what each does to them and in which order, on every state of the records.
#include "display/scene.h"
#include "display/view.h"
#include "interact/mouse.h"
#include "live/fbp.h"
#include "live/idle.h"
#include "live/live.h"
#include "live/pause.h"
#include "live/requests.h"
#include "live/zone.h"
#include "store/recompute.h"
#include "synth/sound.h"
#include "synth/syn.h"
#include "tests/interact/keys_support.h"
#include "tests/support/console.h"

#include <algorithm>

namespace {

constexpr int64_t sound_frames = 10000;
constexpr uint32_t block = 512; // frames

/// Stands for whatever was registered before.
void earlier_idle() {}

void (*idle())() {
    return gl_double::recorder().callbacks.idle;
}

/// What the player says at its end and at a start.
const std::string ended = "fpAU:Stopped!\n";
const std::string started = "FBP1: 10000\t frames\nzgen.state = 0\n";
const std::string underscores = "_____________________________________________\n\n";

class KeysSound : public KeysTest {
  protected:
    void SetUp() override {
        KeysTest::SetUp();
        glutIdleFunc(earlier_idle);
    }
    /// The player has played three blocks of a sound.
    static void play_sound() {
        give_sound(sound_frames);
        printed([] { fbplay1(0.0f, sound_frames); });
        run_blocks(3);
    }
    /// The same, paused by its key.
    static void pause_sound() {
        play_sound();
        press(' ');
        run_blocks(2);
        EXPECT_EQ(printed(serve_requests), ended);
    }
};

std::string stopped_at(double position) {
    return "Stopped at frame: " + std::to_string(position) + "\n";
}

// --- Return ------------------------------------------------------------------------------------

TEST_F(KeysSound, ReturnRewindsARunningPlayer) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        play_sound();
        const size_t before = pauses().size();
        EXPECT_EQ(press(key_return, modifiers), "Enter\n");
        ASSERT_EQ(pauses().size(), before + 1);
        EXPECT_EQ(pauses().back(), 20000u);
        EXPECT_EQ(fplayer.playing, 0) << "the fade-out is over";
        EXPECT_EQ(fplayer.state, 0);
        EXPECT_EQ(fplayer.position, 0.0);
        EXPECT_EQ(idle(), nullptr);
        EXPECT_EQ(posted(), 1);
        run_blocks(2);
        EXPECT_EQ(fplayer.position, 0.0);
        EXPECT_EQ(printed(serve_requests), ended);
        EXPECT_EQ(press(' '), started + underscores + "Re-playing...\n");
        fplayer.playing = 0;
        fplayer.state = 0;
    }
}

/// A fade-out that came after the rewind would leave its own place behind.
TEST_F(KeysSound, ReturnWaitsForAnOutputWithLongBlocks) {
    play_sound();
    static int left;
    left = 5;
    pause_for = [](uint32_t) {
        if (--left == 0) {
            run_blocks(1);
        }
    };
    press(key_return);
    EXPECT_EQ(left, 0);
    EXPECT_EQ(fplayer.playing, 0);
    EXPECT_EQ(fplayer.position, 0.0);
}

TEST_F(KeysSound, ReturnLeavesARestingPlayer) {
    give_sound(sound_frames);
    fplayer.position = 1234.5;
    fplayer.playing = 1;
    EXPECT_EQ(press(key_return), "Enter\n");
    fplayer.playing = 0;
    fplayer.state = 2;
    EXPECT_EQ(press(key_return), "Enter\n");
    EXPECT_TRUE(players_left_alone());
    EXPECT_EQ(fplayer.state, 2);
    EXPECT_EQ(fplayer.position, 1234.5);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSound, ReturnWithoutASound) {
    fplayer.position = 250.0;
    EXPECT_EQ(press(key_return), "Enter\n");
    EXPECT_TRUE(players_left_alone());
    EXPECT_EQ(fplayer.position, 250.0);
    EXPECT_EQ(idle(), nullptr);
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

/// The sound that is there now.
Samples sound() {
    return Samples(fBuffer, fBuffer + fbuffersize);
}

/// What `render` makes of the store with fresh phases.
Samples rendered(void (*render)(int32_t, char *)) {
    recompute_all_phase();
    printed([render] { render(0, nullptr); });
    const Samples made = sound();
    drop_sound();
    return made;
}

TEST_F(KeysSound, AltSpacePlaysTheSelection) {
    sweepSelect = 1;
    selecting = 1;
    select_group({"0110", "110", "00", "0"});
    const Samples wanted = rendered(synssumWT);
    parray[0][1].phase = 9.0f;
    EXPECT_EQ(press(' ', key_alt), "Play select partials: FBP1: " + std::to_string(wanted.size()) +
                                       "\t frames\nzgen.state = 0\n" + underscores);
    EXPECT_EQ(sound(), wanted);
    EXPECT_EQ(fplayer.playing, 1);
    EXPECT_EQ(fplayer.seconds, sndstart);
    EXPECT_EQ(starts(), 1);
    EXPECT_NE(parray[0][1].phase, 9.0f) << "phases are derived first";
    EXPECT_EQ(selecting, 1);
    EXPECT_EQ(posted(), 2) << "the player's and the key's own";
    EXPECT_EQ(idle(), Idle);
}

TEST_F(KeysSound, AltSpaceNeedsASweep) {
    select_group({"0100", "000", "00", "0"});
    for (const uint8_t playing : {uint8_t{0}, uint8_t{1}}) {
        fplayer.playing = playing;
        EXPECT_EQ(press(' ', key_alt), "Invalid Selection Mode for: Play Selected\n");
        EXPECT_EQ(posted(), 0);
    }
    EXPECT_TRUE(players_left_alone());
    EXPECT_EQ(fBuffer, nullptr);
}

TEST_F(KeysSound, ShiftSpacePlaysAll) {
    selecting = 1;
    select_group({"0110", "110", "00", "0"});
    const Samples wanted = rendered(synsumWT);
    parray[0][1].phase = 9.0f;
    const std::string text = press(' ', key_shift);
    EXPECT_EQ(text, "Play All Partials partials: 4, " + std::to_string(sndlen) +
                        " s\nzgen.floatmax = " + std::to_string(zgen.floatmax) +
                        "\nFBP1: " + std::to_string(wanted.size()) + "\t frames\nzgen.state = 0\n" +
                        underscores);
    EXPECT_EQ(sound(), wanted);
    EXPECT_EQ(fplayer.playing, 1);
    EXPECT_EQ(starts(), 1);
    EXPECT_NE(parray[0][1].phase, 9.0f);
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(posted(), 1) << "the player's, none of its own";
    EXPECT_EQ(idle(), Idle);
}

TEST_F(KeysSound, NoRenderWhileThePlayerRuns) {
    sweepSelect = 1;
    play_sound();
    const Samples before = sound();
    expect_nothing(' ', key_alt);
    expect_nothing(' ', key_shift);
    EXPECT_EQ(sound(), before);
    EXPECT_EQ(starts(), 1);
}

TEST_F(KeysSound, SpacePauses) {
    int count = 0;
    for (const int modifiers : all_modifiers_but({key_alt, key_shift})) {
        play_sound();
        EXPECT_EQ(press(' ', modifiers), stopped_at(3 * block));
        EXPECT_EQ(fplayer.state, 3);
        EXPECT_EQ(idle(), nullptr);
        EXPECT_EQ(posted(), 1);
        EXPECT_EQ(run_blocks(1), falling(3 * block));
        EXPECT_EQ(run_blocks(1), Samples(block, 0.0f));
        EXPECT_EQ(stops(), ++count);
        EXPECT_EQ(fplayer.playing, 0);
        EXPECT_EQ(fplayer.position, 4.0 * block) << "the place behind the fade";
    }
    EXPECT_TRUE(pauses().empty()) << "only a rewind waits";
}

TEST_F(KeysSound, SpaceResumes) {
    pause_sound();
    EXPECT_EQ(press(' '), started + "Resuming... at 2048.000000\n");
    EXPECT_EQ(posted(), 2);
    EXPECT_EQ(idle(), Idle);
    EXPECT_EQ(run_blocks(1), rising(4 * block));
    EXPECT_EQ(run_blocks(1), level(5 * block));
}

TEST_F(KeysSound, SpacePlaysAnew) {
    fill_store({{{0.25f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    give_sound(sound_frames);
    EXPECT_EQ(press(' '), started + underscores + "Re-playing...\n");
    EXPECT_EQ(fplayer.seconds, 0.25f);
    EXPECT_EQ(posted(), 2);
    EXPECT_EQ(run_blocks(1), rising(0));
}

TEST_F(KeysSound, SpaceAfterTheEndPlaysAnew) {
    play_sound();
    run_blocks(sound_frames / block);
    EXPECT_EQ(stops(), 1);
    EXPECT_EQ(fplayer.playing, 0);
    EXPECT_EQ(printed(serve_requests), ended);
    EXPECT_EQ(press(' '), started + underscores + "Re-playing...\n");
    EXPECT_EQ(run_blocks(1), rising(0));
}

TEST_F(KeysSound, SpaceWithoutASound) {
    fplayer.position = 250.0;
    EXPECT_EQ(press(' '), "");
    EXPECT_TRUE(players_left_alone());
    EXPECT_EQ(idle(), nullptr);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSound, SpaceDuringAFadeOutStopsAgain) {
    play_sound();
    press(' ');
    EXPECT_EQ(press(' '), stopped_at(3 * block));
    EXPECT_EQ(fplayer.state, 3);
    EXPECT_EQ(fplayer.playing, 1);
}

TEST_F(KeysSound, SpaceKeepsTheIdleFunctionOfAZone) {
    zgen.state = 1;
    press(' ');
    EXPECT_EQ(idle(), earlier_idle);
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
    /// A zone that was started by `z` and has played two blocks.
    static void play_zone() {
        zgen.playing = 0;
        zgen.state = 0;
        zgen.events = 0;
        sweep_times(0.25, 0.75);
        press('z');
        run_blocks(2);
    }
};

/// What the player of zones says of its times.
std::string zone_text(const char *mark) {
    return std::string(mark) + "start_time: " + std::to_string(zgen.starttime) +
           "s\tend_time: " + std::to_string(zgen.endtime) + "s\n";
}

std::string halted_text() {
    return "  Synthesis halted @ " + std::to_string(zgen.time) + "s, zgAU stopped\n";
}

TEST_F(KeysZone, StartsFromASweep) {
    sweep_times(0.75, 0.25);
    zgen.select = 1;
    const int first = square[1];
    const std::string text = press('z');
    EXPECT_EQ(text, "Event: 0\n" + zone_text("->") + zone_text("|->"));
    EXPECT_EQ(square[0], first) << "the columns are put in order";
    EXPECT_NEAR(zgen.starttime, 0.25 * 0.6, 0.003);
    EXPECT_EQ(zgen.time, zgen.starttime);
    EXPECT_NEAR(zgen.endtime, 0.75 * 0.6, 0.003);
    EXPECT_EQ(starts(), 1);
    EXPECT_EQ(zgen.playing, 1);
    EXPECT_EQ(zgen.state, 1);
    EXPECT_EQ(qcandidates[0].status, 1);
    EXPECT_EQ(idle(), qmotion);
    EXPECT_EQ(zgen.events, 1);
    EXPECT_EQ(zgen.select, 0);
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(STOP, 0);
    EXPECT_EQ(zloop, 0);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysZone, AltPlaysTheSelectionWithoutAnEvent) {
    select_group({"0000", "111", "00", "0"});
    sweep_times(0.25, 0.75);
    const std::string text = press('z', key_alt);
    EXPECT_EQ(text, zone_text("->") + zone_text("|->"));
    EXPECT_EQ(zgen.select, 1);
    EXPECT_EQ(zgen.events, 1);
    EXPECT_EQ(qcandidates[0].status, 0);
    EXPECT_EQ(qcandidates[1].status, 1);
    EXPECT_EQ(starts(), 1);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysZone, CapitalLoops) {
    sweep_times(0.25, 0.75);
    EXPECT_TRUE(press('Z', key_shift).starts_with("Event: 0\n"));
    EXPECT_EQ(zloop, 1);
    EXPECT_EQ(starts(), 1);
    zgen.playing = 0;
    zgen.events = 0;
    EXPECT_TRUE(press('Z', key_alt).starts_with("->start_time: "));
    EXPECT_EQ(zgen.select, 1);
    EXPECT_EQ(zloop, 1);
    EXPECT_EQ(starts(), 2);
}

TEST_F(KeysZone, NarrowSweepDoesNothing) {
    struct Width {
        int pixels, modifiers;
        bool wide;
    };
    int count = 0;
    for (const Width &width :
         {Width{0, 0, false}, Width{4, 0, false}, Width{-4, key_ctrl, false}, Width{5, 0, true},
          Width{-5, key_shift, true}, Width{5, key_alt, false}, Width{-9, key_alt, false},
          Width{10, key_alt, true}, Width{-10, key_alt, true}}) {
        glutIdleFunc(earlier_idle);
        zgen.events = 0;
        zgen.playing = 0;
        STOP = 1;
        square[0] = 200;
        square[1] = 200 + width.pixels;
        const std::string text = press('z', width.modifiers);
        if (!width.wide) {
            EXPECT_EQ(text, width.modifiers == key_alt ? "" : "Event: 0\n") << width.pixels;
        }
        EXPECT_EQ(starts(), count += width.wide) << width.pixels;
        EXPECT_EQ(idle(), width.wide ? qmotion : earlier_idle) << width.pixels;
        EXPECT_EQ(posted(), width.wide ? 1 : 0) << width.pixels;
        EXPECT_EQ(zgen.events, width.wide ? 1 : 0) << width.pixels;
        EXPECT_EQ(STOP, 0) << "cleared before the width is looked at";
    }
}

TEST_F(KeysZone, CapitalArmsTheLoopEvenForANarrowSweep) {
    EXPECT_EQ(press('Z'), "Event: 0\n");
    EXPECT_EQ(zloop, 1);
    EXPECT_TRUE(players_left_alone());
}

TEST_F(KeysZone, ZoneThatPlayedPlaysAgainWithoutASweep) {
    zgen.events = 3;
    zgen.starttime = 0.1f;
    zgen.endtime = 0.2f;
    EXPECT_EQ(press('z'), "Event: 3\n" + zone_text("|->"));
    EXPECT_EQ(starts(), 1);
    EXPECT_EQ(zgen.events, 4);
    EXPECT_EQ(zgen.starttime, 0.1f) << "no new zone is made";
    EXPECT_EQ(zgen.endtime, 0.2f);
    EXPECT_EQ(idle(), qmotion);
    EXPECT_EQ(posted(), 1);
    zgen.playing = 0;
    EXPECT_EQ(press('z', key_alt), zone_text("|->"));
    EXPECT_EQ(zgen.events, 5);
}

TEST_F(KeysZone, NewSweepEndsTheOldZone) {
    zgen.events = 3;
    mouse_down(GLUT_LEFT_BUTTON, 100, 100);
    mouse_up(GLUT_LEFT_BUTTON, 102, 120);
    EXPECT_EQ(press('z'), "Event: 0\n") << "straight after a click nothing plays";
    EXPECT_TRUE(players_left_alone());
}

TEST_F(KeysZone, StopHaltsTheGenerator) {
    play_zone();
    zloop = 1;
    zgen.select = 1;
    selecting = 1;
    const size_t before = heard(zgen).size();
    const std::string text = press('z');
    EXPECT_EQ(text, halted_text());
    EXPECT_EQ(pauses(), std::vector<uint32_t>{20000});
    const std::vector<float> &all = heard(zgen);
    ASSERT_EQ(all.size(), before + block) << "the fade-out passes before the unit stops";
    EXPECT_GT(*std::max_element(all.end() - block, all.end()), 0.0f);
    EXPECT_EQ(stops(), 1);
    EXPECT_EQ(zgen.playing, 0);
    EXPECT_EQ(zgen.state, 0);
    EXPECT_EQ(N, 1000.0f);
    EXPECT_EQ(zloop, 1) << "a loop stays armed for the next start";
    EXPECT_EQ(idle(), nullptr);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(zgen.select, 1);
    EXPECT_EQ(selecting, 1);
}

TEST_F(KeysZone, AltStopEndsTheLoop) {
    play_zone();
    zloop = 1;
    std::string text = press('z', key_alt);
    EXPECT_EQ(text, halted_text());
    EXPECT_EQ(zloop, 0);
    play_zone();
    text = press('Z', key_alt);
    EXPECT_EQ(text, halted_text());
    EXPECT_EQ(zloop, 0) << "set by the capital and cleared by the stop";
    play_zone();
    press('Z', key_shift);
    EXPECT_EQ(zloop, 1);
}

TEST_F(KeysZone, StopHandsTheIdleFunctionToThePlayer) {
    play_zone();
    fplayer.state = 2;
    press('z');
    EXPECT_EQ(idle(), Idle);
}

TEST_F(KeysZone, StopWithoutAUnit) {
    zgen.playing = 1;
    zgen.state = 2;
    zgen.unit = nullptr;
    EXPECT_EQ(press('z'), "");
    EXPECT_TRUE(players_left_alone());
    EXPECT_EQ(zgen.playing, 0);
    EXPECT_EQ(zgen.state, 2);
    EXPECT_EQ(idle(), nullptr);
    EXPECT_EQ(posted(), 1);
}

} // namespace
