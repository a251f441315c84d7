// The arrows: found points along their partials and up and down in frequency, whole partials, and
// the relative gestures.

#include "interact/keys.h"

#include "display/text_layer.h"
#include "display/view.h"
#include "interact/choose.h"
#include "interact/gestures.h"
#include "interact/modifiers.h"
#include "interact/selection.h"
#include "store/misc.h"
#include "store/settings.h"

#include <GL/freeglut.h>
#include <cstdio>

namespace {

constexpr int others = -1; // every state of the modifiers that no other row of the key has
constexpr int shift_ctrl = shift | ctrl;

/// One arrow with one state of the modifiers.
struct ArrowRow {
    int key;
    int modifiers;
    bool (*guard)(); // null for none; a failing one prints its own refusal
    void (*run)();
    bool redisplay;
};

bool refuse(const char *line) {
    std::puts(line);
    return false;
}

bool whole_partials_shown() {
    if (bps == 0) {
        return refuse("Show breakpoints");
    }
    if (flat == 0) {
        return refuse("Enter Editing Mode");
    }
    return true;
}

bool refuse_follow(const char *line) {
    gShowMethod = 0;
    return refuse(line);
}

bool source_and_target() {
    const FoundPoints &queue = foundSubscriptions;
    if (queue.part0 != queue.part1) {
        return refuse_follow("Both source points must belong to the same partial");
    }
    if (queue.count != 2) {
        return refuse_follow("Two source points must be selected");
    }
    if (selected == 0) {
        return refuse_follow("Target partial(s) must be selected");
    }
    return true;
}

template <int32_t which> void to_the_left() {
    chooseSingle_left(which);
}

template <int32_t which> void to_the_right() {
    chooseSingle_right(which);
}

void next_partial() {
    if (selected != 0) {
        cycleSelection(1);
    }
}

void previous_partial() {
    if (selected != 0) {
        cycleSelection(-1);
    }
    gShowMethod = 0;
}

void show_gesture() {
    gShowMethod = 1;
    drawGLText(gCamera.viewWidth, gCamera.viewHeight);
}

void warp() {
    method = 1;
    partialsHarmonize(1);
    show_gesture();
}

void harmonize() {
    method = -1;
    partialsHarmonize(-1);
    show_gesture();
}

void follow() {
    method = -3;
    partialsFollow2(-3);
    show_gesture();
}

/// Its line is hidden, unlike those of the other gestures.
void stray() {
    method = 0;
    partialsFollow2(3);
    gShowMethod = 0;
}

void lower() {
    downfreq();
    gShowMethod = 0;
}

const ArrowRow rows[] = {
    {GLUT_KEY_LEFT, alt, nullptr, to_the_left<2>, true},
    {GLUT_KEY_LEFT, shift, nullptr, to_the_left<1>, true},
    {GLUT_KEY_LEFT, others, nullptr, to_the_left<0>, true},
    {GLUT_KEY_RIGHT, alt, nullptr, to_the_right<2>, true},
    {GLUT_KEY_RIGHT, shift, nullptr, to_the_right<1>, true},
    {GLUT_KEY_RIGHT, others, nullptr, to_the_right<0>, true},
    {GLUT_KEY_UP, shift, whole_partials_shown, next_partial, true},
    {GLUT_KEY_UP, ctrl, nullptr, warp, true},
    {GLUT_KEY_UP, shift_ctrl, nullptr, wip, false},
    {GLUT_KEY_UP, alt, nullptr, stray, true},
    {GLUT_KEY_UP, others, nullptr, upfreq, true},
    {GLUT_KEY_DOWN, shift, whole_partials_shown, previous_partial, true},
    {GLUT_KEY_DOWN, ctrl, nullptr, harmonize, true},
    {GLUT_KEY_DOWN, shift_ctrl, nullptr, wip, false},
    {GLUT_KEY_DOWN, alt, source_and_target, follow, true},
    {GLUT_KEY_DOWN, others, nullptr, lower, true},
};

/// The first row that fits; null for keys without one.
const ArrowRow *row_for(int key, int modifiers) {
    for (const ArrowRow &row : rows) {
        if (row.key == key && (row.modifiers == modifiers || row.modifiers == others)) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace

void special(int key, int, int) {
    ++input_events;
    gLastKey = key;
    const int modifiers = event_modifiers();
    const ArrowRow *row = row_for(key, modifiers);
    if (row == nullptr) {
        return;
    }
    if (key == GLUT_KEY_UP || key == GLUT_KEY_DOWN) {
        std::printf("%d\n", modifiers);
    }
    if (row->guard == nullptr || row->guard()) {
        row->run();
        if (row->redisplay) {
            glutPostRedisplay();
        }
    }
    std::fflush(stdout);
}
