#include "interact/command.h"

#include "store/misc.h"

#include <cstdio>

namespace {

/// The exporters join here, each behind its announcement.
bool unbuilt(int) {
    wip();
    return true;
}

bool list_all(int) {
    std::puts("Export All");
    return unbuilt(0);
}

bool list_selected(int) {
    std::puts("Export Selected");
    return require_selection_for_export() && unbuilt(0);
}

const Command rows[] = {
    {24, true, "Export: Partials: All... ", nullptr, nullptr, list_all, nullptr},
    {25, true, "Export: Partials: Selected... ", nullptr, nullptr, list_selected, nullptr},
    {34, true, "Export: Cmix -all partials\t ", nullptr, nullptr, unbuilt, finish_redisplay},
    {35, true, "Export: Cmix -selected partials\t ", nullptr, require_selection_plainly, unbuilt,
     finish_redisplay},
    {73, true, "Export: SPEAR -all partials\t ", nullptr, nullptr, unbuilt, finish_redisplay},
    {74, true, "Export: SPEAR -selected partials\t ", nullptr, nullptr, unbuilt, finish_redisplay},
    {83, true, "Export: SDIF -all partials\t ", nullptr, nullptr, unbuilt, finish_redisplay},
    {84, true, "Export: SDIF -selected partials\t ", nullptr, nullptr, unbuilt, finish_redisplay},
};

} // namespace

std::span<const Command> export_commands() {
    return rows;
}
