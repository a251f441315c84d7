// Keys that change the points: the amplitude step, the threshold, glides, thinning.

#include "interact/key_rows.h"

#include "display/text_layer.h"
#include "display/view.h"
#include "edit/shifts.h"
#include "interact/amplitude_step.h"
#include "interact/clear.h"
#include "interact/modifiers.h"
#include "interact/select.h"
#include "interact/selection.h"
#include "live/live.h"
#include "live/shared.h"
#include "store/misc.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr float default_floor = -90.0f; // dB
constexpr float floor_step = 3.0f;      // dB
constexpr double visible_step = 0.001;  // dB, the least step that the picture tells

void recompute_range() {
    recompute_amp(&maxamp, &minamp);
}

// --- the amplitude step ------------------------------------------------------------------------

template <int tenths> void choose_step(int) {
    increment = static_cast<float>(tenths / 10.0);
}

void choose_third(int) {
    increment = static_cast<float>(0.3333);
}

void forget_step(int) {
    increment = 0.0f;
    gShowMethod = 0;
}

/// Marks the step in the picture at once, before the points are moved.
void show_step(int32_t as_method) {
    method = as_method;
    if (std::fabs(increment) > visible_step) {
        gShowMethod = 1;
    }
    drawGLText(gCamera.viewWidth, gCamera.viewHeight);
}

void step_up(int) {
    if (sweepSelect != 0) {
        show_step(2);
        amplifyAll(increment);
        recompute_range();
    }
    if (directSelect != 0) {
        amplify(increment, foundSubscriptions);
        recompute_range();
    }
}

void step_down(int) {
    if (sweepSelect != 0) {
        show_step(-2);
        attenuateAll(increment);
    }
    if (directSelect != 0) {
        attenuate(increment, foundSubscriptions);
    }
    recompute_range();
}

// --- the threshold -----------------------------------------------------------------------------

/// Unlike expand, it leaves minamp as it was, below what the points now hold.
void compress(int) {
    raise_floor(floorAmp);
    std::printf("Compressed amplitudes below %6.2f\n", floorAmp);
}

void expand(int) {
    lower_floor(floorAmp);
    recompute_range();
    std::printf("Expanded amplitudes below %6.2f\n", floorAmp);
}

void reset_floor(int) {
    floorAmp = default_floor;
}

void move_floor(float by) {
    floorAmp += by;
    std::printf("Amp. treshold = %6.2f dB\n", floorAmp);
}

void higher_floor(int) {
    move_floor(floor_step);
}

void deeper_floor(int) {
    move_floor(-floor_step);
}

// --- pitch and structure -----------------------------------------------------------------------

void glide(int modifiers, float ratio) {
    std::printf("%d\n", modifiers);
    va_pitch(ratio);
}

void glide_tone_down(int modifiers) {
    glide(modifiers, string2ratio("-etm2"));
}

void glide_tone_up(int modifiers) {
    glide(modifiers, string2ratio("etm2"));
}

void glide_octave_down(int modifiers) {
    glide(modifiers, 0.5f);
}

void glide_octave_up(int modifiers) {
    glide(modifiers, 2.0f);
}

bool no_generator_plays() {
    return peek(wgen.playing) == 0 && peek(zgen.playing) == 0;
}

void thin_out(int) {
    func1(&parray, &npoints, &partials, &peval);
    recompute_everything();
    clear_all();
}

constexpr int shift_alt = shift | alt;

const KeyRow rows[] = {
    {"(", shift_alt, edit_mode, "", glide_tone_down, true},
    {"(", other_modifiers, edit_mode, "", glide_octave_down, true},
    {")", shift_alt, edit_mode, "", glide_tone_up, true},
    {")", other_modifiers, edit_mode, "", glide_octave_up, true},
    {"-", alt, nullptr, "", expand, true},
    {"-", other_modifiers, nullptr, "", step_down, true},
    {"=", alt, nullptr, "", compress, true},
    {"=", other_modifiers, nullptr, "", step_up, true},
    {"0", other_modifiers, nullptr, "", forget_step, true},
    {"1", other_modifiers, nullptr, "", choose_step<10>, false},
    {"2", alt, nullptr, "", choose_step<5>, false},
    {"2", other_modifiers, nullptr, "", choose_step<20>, false},
    {"3", alt, nullptr, "", choose_third, false},
    {"3", other_modifiers, nullptr, "", choose_step<30>, false},
    {"7", alt, no_generator_plays, "", thin_out, true},
    {"Ff", alt, nullptr, "Amp. treshold reset", reset_floor, false},
    {"F", other_modifiers, nullptr, "", higher_floor, false},
    {"f", other_modifiers, nullptr, "", deeper_floor, false},
    {"{}", other_modifiers, edit_mode, "", plainly<wip>, true},
};

} // namespace

std::span<const KeyRow> edit_keys() {
    return rows;
}
