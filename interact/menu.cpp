#include "interact/menu.h"

#include "display/view.h"
#include "interact/command.h"
#include "interact/modifiers.h"
#include "store/console.h"
#include "store/misc.h"
#include "store/published.h"

#include <GL/freeglut.h>
#include <cstdio>
#include <optional>

namespace {

/// Other threads read the store while it renders and plays.
bool changes_store(const Command &row) {
    const std::span<const Command> sounds = sound_commands();
    return &row < sounds.data() || &row >= sounds.data() + sounds.size();
}

const Command *find_command(int value) {
    for (const auto &rows : {view_commands(), select_commands(), edit_commands(),
                             process_commands(), export_commands(), sound_commands()}) {
        for (const Command &row : rows) {
            if (row.value == value) {
                return &row;
            }
        }
    }
    return nullptr;
}

void announce_modifiers(int modifiers) {
    switch (modifiers) {
    case shift:
        std::puts("SHIFT");
        break;
    case ctrl:
        std::puts("CTRL");
        break;
    case alt:
        std::puts("ALT");
        break;
    default:
        break;
    }
}

bool passes_gate(const Command &row) {
    if (row.gate_refusal == nullptr || soft_mode()) {
        return true;
    }
    std::puts(row.gate_refusal);
    return false;
}

void run_command(const Command &row, int modifiers) {
    if (row.opening) {
        m();
        drop_line();
    }
    if (row.gate_first && !passes_gate(row)) {
        return;
    }
    say(row.announce);
    if (!passes_gate(row) || (row.require != nullptr && !row.require())) {
        return;
    }
    std::optional<StoreEdit> edit;
    if (changes_store(row)) {
        edit.emplace();
    }
    if (row.act(modifiers) && row.finish != nullptr) {
        row.finish();
    }
}

} // namespace

void menu_select(int value) {
    ++input_events;
    const int modifiers = menu_modifiers();
    announce_modifiers(modifiers);
    const Command *row = find_command(value);
    if (row == nullptr) {
        std::puts("default");
    } else {
        run_command(*row, modifiers);
    }
    std::fflush(stdout);
}

void null_select() {
    std::puts("null_select");
}
