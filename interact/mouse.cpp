#include "interact/mouse.h"

#include "display/view.h"
#include "interact/drags.h"
#include "interact/find.h"
#include "interact/modifiers.h"
#include "interact/selection.h"
#include "interact/unproject.h"
#include "interact/view_drags.h"
#include "live/gestures.h"
#include "live/live.h"
#include "live/shared.h"
#include "store/published.h"

#include <GL/freeglut.h>
#include <cstdint>
#include <cstdio>

namespace {

constexpr int no_modifier_row = -1; // matches what no other row has matched
constexpr int buttons = 3;

bool button_down[buttons] = {};
bool desel = false; // the running sweep deselects

/// One kind of press: the first row whose button, modifiers and guard match decides.
struct PressRow {
    int button;
    int modifiers;
    bool (*guard)();
    void (*run)(int x, int y);
};

bool always() {
    return true;
}
bool in_perspective() {
    return flat == 0;
}

void drag_view(void (*motion)(int, int)) {
    glutMotionFunc(motion);
    selecting = 0;
}

void press_pan(int, int) {
    drag_view(mouseTranslate);
}
void press_zoom(int, int) {
    drag_view(mouseScale);
}
void press_rotate(int, int) {
    drag_view(mouseRot);
}

void press_sweep(int, int) {
    selecting = 1;
    glutMotionFunc(testInput);
}

void press_deselect(int x, int y) {
    desel = true;
    press_sweep(x, y);
}

void press_scale_partials(int, int) {
    drag_view(partialsScale);
    std::puts("//");
}

void press_drag_selected(int, int) {
    drag_view(partialsTranslate);
}

/// Sounds what stands under the pointer, as long as the button is held.
void press_scrub(int x, int) {
    selecting = 0;
    poke(liveSynth, 1);
    poke(STOP, uint8_t{0});
    glutMotionFunc(pmotion);
    pplay(x, 0);
    glutPostRedisplay();
}

/// With nothing found the motion callback stays as it was.
void press_drag_found(int, int) {
    if (foundSubscriptions.count > 0) {
        glutMotionFunc(breakpointsTranslate);
    }
    selecting = 0;
    dragging = 0;
}

void press_middle_plain(int, int) {
    drag_view(nullptr);
    dragging = 0;
}

void press_ignored(int, int) {}

const PressRow press_rows[] = {
    {GLUT_LEFT_BUTTON, shift, always, press_pan},
    {GLUT_LEFT_BUTTON, ctrl, always, press_zoom},
    {GLUT_LEFT_BUTTON, alt, in_perspective, press_rotate},
    {GLUT_LEFT_BUTTON, alt, always, press_deselect},
    {GLUT_LEFT_BUTTON, no_modifier_row, always, press_sweep},
    {GLUT_MIDDLE_BUTTON, shift, always, press_drag_selected},
    {GLUT_MIDDLE_BUTTON, ctrl, always, press_scale_partials},
    {GLUT_MIDDLE_BUTTON, alt, edit_mode, press_scrub},
    {GLUT_MIDDLE_BUTTON, alt, always, press_ignored},
    {GLUT_MIDDLE_BUTTON, no_modifier_row, edit_mode, press_drag_found},
    {GLUT_MIDDLE_BUTTON, no_modifier_row, always, press_middle_plain},
};

void press(int button, int modifiers, int x, int y) {
    if (button == GLUT_LEFT_BUTTON || button == GLUT_MIDDLE_BUTTON) {
        poke(square[0], x);
        square[2] = y;
    }
    for (const PressRow &row : press_rows) {
        const bool modifiers_match = row.modifiers == no_modifier_row || row.modifiers == modifiers;
        if (row.button == button && modifiers_match && row.guard()) {
            row.run(x, y);
            return;
        }
    }
}

/// A sweep without horizontal motion is a click, which also looks for the nearest point.
void end_sweep() {
    const StoreEdit edit;
    transformInput();
    zgen.events = 0;
    if (desel) {
        deselectBreakpoints(swept_square().data(), gCamera);
        desel = false;
    } else {
        findBreakpoints(swept_square().data(), gCamera);
    }
    if (square[1] == peek(square[0]) && edit_mode()) {
        transformInput();
        findSingleBreakpoint(swept_square().data(), gCamera);
    }
}

void end_scrub() {
    stop();
    poke(liveSynth, 0);
    poke(STOP, uint8_t{1});
    glutPostRedisplay();
}

void release(int button, int x, int y) {
    glutMotionFunc(nullptr);
    dragging = 0;
    if (button == GLUT_RIGHT_BUTTON) {
        return;
    }
    square[1] = x;
    square[3] = y;
    if (button == GLUT_LEFT_BUTTON) {
        if (selecting == 1) {
            end_sweep();
        }
        glutPostRedisplay();
    }
    if (button == GLUT_MIDDLE_BUTTON && peek(liveSynth) != 0) {
        end_scrub();
    }
}

/// False for wheel buttons and for a release that follows no press.
bool note_button(int button, int state) {
    if (button < 0 || button >= buttons) {
        return false;
    }
    const bool was_down = button_down[button];
    button_down[button] = state == GLUT_DOWN;
    return state == GLUT_DOWN || was_down;
}

} // namespace

void reset_mouse() {
    for (bool &down : button_down) {
        down = false;
    }
    desel = false;
}

void mouse(int button, int state, int x, int y) {
    if (!note_button(button, state)) {
        return;
    }
    ++input_events;
    const int modifiers = event_modifiers();
    if (modifiers == shift || modifiers == ctrl || (modifiers == alt && flat == 0)) {
        selecting = 0;
    }
    if (state == GLUT_DOWN) {
        press(button, modifiers, x, y);
    } else {
        release(button, x, y);
    }
}
