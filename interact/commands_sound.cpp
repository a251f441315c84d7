#include "interact/command.h"

#include "interact/modifiers.h"
#include "interact/selection.h"
#include "live/cleanup.h"
#include "live/live.h"
#include "live/shared.h"
#include "live/zone.h"
#include "store/console.h"
#include "store/misc.h"
#include "store/settings.h"
#include "store/store.h"
#include "synth/syn.h"
#include "synth/synth3d.h"

#include <GL/freeglut.h>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int16_t file_mode = 88;
constexpr int16_t play_mode = 900;

void render_all(char *name) {
    synsumWT(file_mode, name);
}

void render_selected(char *name) {
    synssumWT(file_mode, name);
}

/// The diagnostic driver, for all partials or for selected stretches.
template <int32_t select> void diagnose(char *name) {
    synth33(sndstart, menu_state.param, name, parray, npoints, partials, select);
}

/// How a modifier steers a synthesis entry.
struct SynthRow {
    int modifiers;        // -1 for all that no other row names
    const char *announce; // printed before the further line, may be empty
    int16_t param;        // mode of the render
    const char *line;
    bool can_cancel; // a name of "-c" ends the dialogue
    void (*render)(char *name);
};

const SynthRow all_rows[] = {
    {ctrl, "", 881, "Synthesize AIFF file all parts. debug mode: ", true, diagnose<0>},
    {shift, "", 8, "Synthesize AIFF file all parts. debug w. fp file: ", false, diagnose<0>},
    {-1, "", 88, "Synthesize AIFF audio file from all partials: ", true, render_all},
};

const SynthRow selected_rows[] = {
    {ctrl, "Synth: All... ", 88, "Synthesize AIFF file select parts. debug mode: ", true,
     diagnose<1>},
    {shift, "Synth: All... ", 8,
     "Synthesize AIFF file select parts. debug mode\npreserving floating point file: ", true,
     diagnose<1>},
    {-1, "", 88, "Synthesize AIFF audio file from select partials: ", true, render_selected},
};

/// Asks for the sound file's name; an empty reply takes the analysis file's. False when it is
/// cancelled or the input ends.
bool read_sound_name(char *name, size_t size, bool can_cancel) {
    say("Enter the audio file name (no extension): ");
    if (!read_path(name, can_cancel)) {
        return false;
    }
    if (name[0] == '\0') {
        std::snprintf(name, size, "%s", afname);
    }
    return true;
}

/// Runs the entry's first row that the modifiers fit.
bool synthesize(std::span<const SynthRow> rows, int modifiers) {
    for (const SynthRow &row : rows) {
        if (row.modifiers != modifiers && row.modifiers != -1) {
            continue;
        }
        char name[sizeof afname] = "";
        say(row.announce);
        menu_state.param = row.param;
        say(row.line);
        if (read_sound_name(name, sizeof name, row.can_cancel)) {
            row.render(name);
        }
        return false;
    }
    return false;
}

bool synthesize_all(int modifiers) {
    return synthesize(all_rows, modifiers);
}

bool synthesize_selected(int modifiers) {
    if (sweepSelect == 0) {
        std::puts("Invalid Selection Mode for: Synth");
        return false;
    }
    say("Synth: Selected...\t ");
    return synthesize(selected_rows, modifiers);
}

bool play_all(int) {
    menu_state.param = play_mode;
    synsumWT(play_mode, nullptr);
    return true;
}

bool play_selected(int) {
    if (!require_sweep_to_play()) {
        return false;
    }
    say("Play select partials: ");
    menu_state.param = play_mode;
    synssumWT(play_mode, nullptr);
    return true;
}

bool play_zone(int) {
    if (peek(zgen.playing) == 0) {
        selecting = 0;
        poke(liveSynth, 0);
        poke(STOP, uint8_t{0});
        glutIdleFunc(qmotion);
        qplay(&square[0], &square[1]);
    }
    return true;
}

bool quit(int) {
    cleanupAudioMIDI();
    std::exit(0);
}

const Command rows[] = {
    {27, true, "Synth: All... ", nullptr, nullptr, synthesize_all, nullptr},
    {28, false, "", nullptr, nullptr, synthesize_selected, nullptr},
    {71, false, "Play All Partials ", nullptr, nullptr, play_all, finish_redisplay},
    {72, false, "", nullptr, nullptr, play_selected, finish_redisplay},
    {75, false, "Play zone: ", nullptr, nullptr, play_zone, finish_redisplay},
    {29, false, "Quillgrove QUIT", nullptr, nullptr, quit, nullptr},
};

} // namespace

bool require_sweep_to_play() {
    if (sweepSelect == 0) {
        std::puts("Invalid Selection Mode for: Play Selected");
        return false;
    }
    return true;
}

std::span<const Command> sound_commands() {
    return rows;
}
