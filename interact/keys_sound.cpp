// Keys of the players: transport of the rendered sound, zone play, gain, MIDI control.

#include "interact/key_rows.h"

#include "display/scene.h"
#include "display/view.h"
#include "interact/clear.h"
#include "interact/command.h"
#include "interact/modifiers.h"
#include "interact/selection.h"
#include "interact/transport.h"
#include "interact/unproject.h"
#include "live/live.h"
#include "live/shared.h"
#include "store/misc.h"
#include "store/recompute.h"

#include <GL/freeglut.h>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int32_t play_mode = 900;
constexpr uint32_t release_time = 20000; // microseconds, for the audio thread's last blocks
constexpr float stopped_N = 1000.0f;
constexpr float default_gain = 0.2f;
constexpr double gain_step = 1.1892071; // 1.5 dB
constexpr int64_t least_sweep = 5;      // pixels
constexpr int64_t least_sweep_of_selected = 10;

template <typename T> T toggled(const T &flag) {
    return peek(flag) != 0 ? T{0} : T{1};
}

const char *on_or_off(const uint8_t &flag) {
    return peek(flag) != 0 ? "ON" : "OFF";
}

// --- the rendered sound ------------------------------------------------------------------------

bool player_runs() {
    return peek(fplayer.playing) == 1;
}

bool player_rests() {
    return !player_runs();
}

bool sweep_and_player_rests() {
    return require_sweep_to_play() && player_rests();
}

void release_idle() {
    if (peek(zgen.state) == 0) {
        glutIdleFunc(nullptr);
    }
}

void rewind(int) {
    if (player_runs() && peek(fplayer.state) != 0) {
        transport.fbstop1();
        transport.wait(release_time);
        poke(fplayer.position, 0.0);
    }
    release_idle();
}

void play_selected(int) {
    recompute_all_phase();
    transport.synssumWT(play_mode, nullptr);
}

void play_all(int) {
    recompute_all_phase();
    selecting = 0;
    transport.synsumWT(play_mode, nullptr);
}

void play_again() {
    if (peek(fplayer.position) != 0.0) {
        transport.fbresume1();
        std::fputs("Resuming... ", stdout);
        std::printf("at %lf\n", peek(fplayer.position));
    } else {
        transport.fbplay1(sndstart, transport.rendered_frames());
        std::puts("Re-playing...");
    }
}

void pause_or_play(int) {
    if (player_runs() && peek(fplayer.state) != 0) {
        transport.fbstop1();
        std::printf("Stopped at frame: %lf\n", peek(fplayer.position));
    }
    release_idle();
    if (peek(fplayer.playing) == 0 && transport.rendered_sound() != nullptr) {
        play_again();
    }
}

void toggle_loop(int) {
    poke(fplayer.loop, toggled(fplayer.loop));
    wip();
}

// --- gain and switches -------------------------------------------------------------------------

void louder(int) {
    poke(live_gain, static_cast<float>(peek(live_gain) * gain_step));
}

void quieter(int) {
    poke(live_gain, static_cast<float>(peek(live_gain) / gain_step));
}

void reset_gain(int) {
    poke(live_gain, default_gain);
}

void toggle_random_walk(int) {
    poke(ran, toggled(ran));
    if (peek(ran) != 0) {
        std::puts("RAN");
    }
}

/// The repaint timer lapses by itself once MIDI is off.
void toggle_midi(int) {
    poke(midi, toggled(midi));
    std::printf("MIDI: %s\n", on_or_off(midi));
    if (peek(midi) != 0) {
        arm_repaint_timer();
        return;
    }
    glutIdleFunc(nullptr);
    poke(wgen.select, uint8_t{0});
    deselect_all();
}

/// Without MIDI the wheel chooses nothing, whatever it did before.
bool midi_on() {
    if (peek(midi) == 0) {
        poke(wgen.select, uint8_t{0});
        return false;
    }
    return true;
}

void toggle_wheel(int) {
    poke(wgen.select, toggled(wgen.select));
    std::printf("mod.wheel->selection: %s\n", on_or_off(wgen.select));
}

// --- the zone ----------------------------------------------------------------------------------

bool sweep_is_wide(bool of_selected) {
    const int64_t width = int64_t{peek(square[0])} - peek(square[1]);
    return std::abs(width) >= (of_selected ? least_sweep_of_selected : least_sweep);
}

/// A zone that has played plays again until the next sweep ends.
void start_zone(bool of_selected) {
    poke(zgen.select, static_cast<uint8_t>(of_selected ? 1 : 0));
    selecting = 0;
    poke(STOP, uint8_t{0});
    if (!of_selected) {
        std::printf("Event: %d\n", zgen.events);
    }
    if (zgen.events == 0 && !sweep_is_wide(of_selected)) {
        return;
    }
    glutIdleFunc(transport.qmotion);
    if (zgen.events == 0) {
        x2time(&square[0], &square[1], &zgen);
    }
    transport.tqplay(&zgen.starttime, &zgen.endtime);
    ++zgen.events;
    glutPostRedisplay();
}

void halt_generator() {
    poke(zgen.state, 3);
    transport.wait(release_time);
    transport.AudioOutputUnitStop(zgen.unit);
    poke(zgen.playing, uint8_t{0});
    transport.set_N(stopped_N);
    std::printf("  Synthesis halted @ %fs, zgAU stopped\n", peek(zgen.time));
}

/// Only the stop of a selected zone ends looping: after any other the next start loops again.
void stop_zone(bool of_selected) {
    if (zgen.unit != nullptr) {
        halt_generator();
    }
    if (of_selected) {
        poke(zloop, uint8_t{0});
    }
    glutIdleFunc(peek(fplayer.state) != 0 ? transport.Idle : nullptr);
    poke(zgen.playing, uint8_t{0});
    glutPostRedisplay();
}

void play_zone(bool of_selected) {
    if (peek(zgen.playing) == 0) {
        start_zone(of_selected);
    } else {
        stop_zone(of_selected);
    }
}

void zone(int modifiers) {
    play_zone(modifiers == alt);
}

void looping_zone(int modifiers) {
    poke(zloop, uint8_t{1});
    zone(modifiers);
}

/// The zone posts its own redisplay: a sweep too narrow for one changes nothing in the picture.
const KeyRow rows[] = {
    {"\r", other_modifiers, nullptr, "Enter", rewind, true},
    {" ", alt, sweep_and_player_rests, "Play select partials: ", play_selected, true},
    {" ", shift, player_rests, "Play All Partials ", play_all, false},
    {" ", other_modifiers, nullptr, "", pause_or_play, true},
    {":", other_modifiers, nullptr, "", toggle_loop, false},
    {"G", other_modifiers, nullptr, "", louder, false},
    {"g", alt, nullptr, "", reset_gain, false},
    {"g", other_modifiers, nullptr, "", quieter, false},
    {"Dd", other_modifiers, nullptr, "", toggle_random_walk, true},
    {"Mm", other_modifiers, nullptr, "", toggle_midi, true},
    {"Ww", other_modifiers, midi_on, "", toggle_wheel, true},
    {"z", other_modifiers, nullptr, "", zone, false},
    {"Z", other_modifiers, nullptr, "", looping_zone, false},
};

} // namespace

std::span<const KeyRow> sound_keys() {
    return rows;
}
