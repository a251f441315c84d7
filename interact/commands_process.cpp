#include "interact/command.h"

#include "edit/envelope_probe.h"
#include "edit/mirror.h"
#include "edit/retro.h"
#include "edit/scale.h"
#include "edit/shifts.h"
#include "store/console.h"
#include "store/misc.h"
#include "store/recompute.h"
#include "toolbox/auxmath3d.h"

#include <GL/freeglut.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

bool fade_in(int) {
    std::puts("QuillGrove > Fade In");
    fade(1);
    return true;
}

bool fade_out(int) {
    std::puts("Quillgrove > Fade Out");
    fade(0);
    return true;
}

bool gain_shift(int) {
    char word[word_size] = "";
    if (!read_parameter(word, "Quillgrove > Enter gain shift (dB):\n             ")) {
        return false;
    }
    gain(static_cast<float>(std::atof(word)));
    return true;
}

/// A first word "v" asks for a shift that varies over time, with the factor behind it.
bool pitch_shift(int) {
    char word[word_size] = "";
    say("Quillgrove > Enter pitch shift factor:\n             ");
    if (!read_word(word, sizeof word)) {
        return false;
    }
    const bool varying = std::strcmp(word, "v") == 0;
    if (varying && !read_word(word, sizeof word)) {
        return false;
    }
    std::puts(word);
    if (std::strcmp(word, "-c") == 0) {
        std::puts("Command cancelled");
        return false;
    }
    const float ratio = string2ratio(word);
    if (varying) {
        va_pitch(ratio);
    } else {
        pitch(ratio);
    }
    return true;
}

bool time_shift(int) {
    char word[word_size] = "";
    if (!read_parameter(word, "Quillgrove > Enter time shift value:\n             ")) {
        return false;
    }
    timesh(static_cast<float>(std::atof(word)));
    return true;
}

bool scale(int) {
    char word[word_size] = "";
    if (!read_parameter(word, "Arguments: time-stretch freq.exponent gain-compand\n"
                              "Arguments: ")) {
        return false;
    }
    const float stretch = static_cast<float>(std::atof(word));
    float exponent = 0.0f;
    float compand = 0.0f;
    if (!read_float(exponent) || !read_float(compand)) {
        return false;
    }
    std::printf("%f\t%f\t%f\n", stretch, exponent, compand);
    newscale(stretch, exponent, compand);
    return true;
}

bool mirror(int) {
    char word[word_size] = "";
    say("Quillgrove > Enter mirror freq:\n             ");
    say(">0 ->freq. mirror, <0 ->pitch mirror\n             ");
    if (!read_parameter(word, " 0 ->cancel\n             ")) {
        return false;
    }
    const float value = static_cast<float>(std::atof(word));
    if (value > 0.0f) {
        mirror3d(value);
    } else if (value < 0.0f) {
        mirror_pitch(-value);
    } else {
        std::puts("Command cancelled");
        return false;
    }
    return true;
}

bool retrograde(int) {
    char word[word_size] = "";
    say("Retro: [@|*]\n\t");
    say("@ = internal  retrogression\n\t");
    if (!read_parameter(word, "* = selected group reversal\n\t")) {
        return false;
    }
    if (std::strcmp(word, "@") == 0) {
        retro();
    } else if (std::strcmp(word, "*") == 0) {
        reverse();
    }
    return true;
}

bool envelope(int) {
    char word[word_size] = "";
    say("Enter SDIF Spectral Envelope file name:\nquillgrove> ");
    if (!read_word(word, sizeof word)) {
        return false;
    }
    if (std::strcmp(word, "-c") == 0) {
        std::puts("operation cancelled");
        return false;
    }
    spectral_envelope(word);
    wip();
    return true;
}

void finish_amp() {
    recompute_amp(&maxamp, &minamp);
    glutPostRedisplay();
}

void finish_amp_and_phase() {
    recompute_amp(&maxamp, &minamp);
    recompute_all_phase();
    glutPostRedisplay();
}

void finish_pitch() {
    recompute_all_pitch();
    recompute_logfreq();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
    glutPostRedisplay();
}

void finish_time_shift() {
    recompute_all_phase();
    glutPostRedisplay();
}

void finish_scale() {
    recompute_all_pitch();
    recompute_logfreq();
    recompute_times();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
    glutPostRedisplay();
}

void finish_retrograde() {
    recompute_times();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
    glutPostRedisplay();
}

const Command rows[] = {
    {16, false, "Process: Fade: In\t ", "Invalid Selection Mode for: Fade In",
     require_selection_or_redisplay, fade_in, finish_amp},
    {17, false, "Process: Fade: Out\t ", "Invalid Selection Mode for: Fade Out",
     require_selection_or_redisplay, fade_out, finish_amp_and_phase},
    {18, true, "Process: Shift:\tGain\t ", "Invalid Selection Mode for: Gain Shift",
     require_selection_or_redisplay, gain_shift, finish_amp},
    {19, true, "Process: Shift:  Pitch\t ", "Invalid Selection Mode for: Pitch Shift",
     require_selection_or_redisplay, pitch_shift, finish_pitch},
    {20, true, "Process: Shift: Time\t", "Invalid Selection Mode for: Time Shift",
     require_selection_or_redisplay, time_shift, finish_time_shift},
    {21, true, "Process: Scale...  ", "Invalid Selection Mode for: Scale",
     require_selection_or_redisplay, scale, finish_scale},
    {22, true, "Process: Mirror...\t ", "Invalid Selection Mode for: Mirror", nullptr, mirror,
     finish_pitch, true},
    {23, true, "Process: Retrogression \t ", "Invalid Selection Mode for: Retro", nullptr,
     retrograde, finish_retrograde},
    {37, true, "", nullptr, nullptr, envelope, finish_redisplay},
};

} // namespace

std::span<const Command> process_commands() {
    return rows;
}
