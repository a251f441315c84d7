#include "interact/keys.h"

#include "display/view.h"
#include "interact/key_rows.h"
#include "interact/modifiers.h"
#include "store/console.h"
#include "store/settings.h"

#include <GL/freeglut.h>
#include <cstdio>

namespace {

constexpr unsigned char control_l = 12;

bool has_key(const KeyRow &row, unsigned char code) {
    return row.keys.find(static_cast<char>(code)) != std::string_view::npos;
}

/// What is known of a character: the row for these modifiers, and whether it has any row.
struct Lookup {
    const KeyRow *row;
    bool known;
};

Lookup look_up(unsigned char code, int modifiers) {
    Lookup result = {nullptr, false};
    for (const auto &rows :
         {view_keys(), select_keys(), edit_keys(), sound_keys(), console_keys()}) {
        for (const KeyRow &row : rows) {
            if (!has_key(row, code)) {
                continue;
            }
            result.known = true;
            if (row.modifiers == modifiers) {
                return {&row, true};
            }
            if (row.modifiers == other_modifiers) {
                result.row = &row;
            }
        }
    }
    return result;
}

void run_row(const KeyRow &row, int modifiers) {
    if (row.guard != nullptr && !row.guard()) {
        return;
    }
    say(row.announce);
    row.run(modifiers);
    if (row.redisplay) {
        glutPostRedisplay();
    }
}

} // namespace

void key(unsigned char code, int, int) {
    ++input_events;
    const int modifiers = event_modifiers();
    gLastKey = code;
    // With ctrl held GLUT hands over the control code of a letter; of those only this one has a
    // row.
    const bool ctrl_l = code == control_l && modifiers == ctrl;
    const Lookup found = look_up(ctrl_l ? 'l' : code, modifiers);
    if (found.row != nullptr) {
        run_row(*found.row, modifiers);
    } else if (!found.known) {
        std::printf("Pressed key : %c \n", code);
    }
    std::fflush(stdout);
}
