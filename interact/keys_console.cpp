// Keys about the terminal: the shell, how much is told there, and what is not built.

#include "interact/key_rows.h"

#include "interact/shell.h"
#include "store/misc.h"
#include "store/settings.h"

#include <cstdio>

namespace {

void toggle_verbose(int) {
    verbose = verbose != 0 ? 0 : 1;
    std::printf("%s shell\n", verbose != 0 ? "Verbose" : "Non-verbose");
}

const KeyRow rows[] = {
    {"\033", other_modifiers, nullptr, "", plainly<escape_to_shell>, false},
    {"Vv", other_modifiers, nullptr, "", toggle_verbose, false},
    {"Oo", other_modifiers, nullptr, "o|O", plainly<wip>, false},
};

} // namespace

std::span<const KeyRow> console_keys() {
    return rows;
}
