#include "interact/keys.h"

#include "display/view.h"
#include "interact/key_rows.h"
#include "interact/modifiers.h"
#include "store/console.h"
#include "store/published.h"
#include "store/settings.h"

#include <GL/freeglut.h>
#include <cstdio>
#include <optional>

namespace {

constexpr unsigned char control_l = 12;

bool has_key(const KeyRow &row, unsigned char code) {
    return row.keys.find(static_cast<char>(code)) != std::string_view::npos;
}

/// What is known of a character: the row for these modifiers, and whether it has any row.
struct Lookup {
    const KeyRow *row;
    bool known;
    bool edits; // the row changes points
};

/// The rows of one subject.
struct Subject {
    std::span<const KeyRow> rows;
    bool edits;
};

Lookup look_up(unsigned char code, int modifiers) {
    const Subject subjects[] = {{view_keys(), false},
                                {select_keys(), true},
                                {edit_keys(), true},
                                {sound_keys(), false},
                                {console_keys(), false}};
    Lookup result = {nullptr, false, false};
    for (const Subject &subject : subjects) {
        for (const KeyRow &row : subject.rows) {
            if (!has_key(row, code)) {
                continue;
            }
            result.known = true;
            if (row.modifiers == modifiers) {
                return {&row, true, subject.edits};
            }
            if (row.modifiers == other_modifiers) {
                result.row = &row;
                result.edits = subject.edits;
            }
        }
    }
    return result;
}

void run_row(const KeyRow &row, bool edits, int modifiers) {
    std::optional<StoreEdit> edit;
    if (edits) {
        edit.emplace();
    }
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
        run_row(*found.row, found.edits, modifiers);
    } else if (!found.known) {
        std::printf("Pressed key : %c \n", code);
    }
    std::fflush(stdout);
}
