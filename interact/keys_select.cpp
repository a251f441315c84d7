// Keys that select, and those that let go.

#include "interact/key_rows.h"

#include "display/view.h"
#include "interact/clear.h"
#include "interact/modifiers.h"
#include "interact/select.h"
#include "interact/selection.h"
#include "store/misc.h"
#include "store/recompute.h"
#include "store/settings.h"

#include <cstdio>

namespace {

bool something_selected() {
    return sweepSelect != 0 || selected != 0;
}

bool selected_in_edit_mode() {
    return edit_mode() && something_selected();
}

bool band_source() {
    if (!something_selected()) {
        std::puts("No sweep-selection found");
        return false;
    }
    return true;
}

bool two_found() {
    return foundSubscriptions.count == 2;
}

/// Runs an operation that moves the ends of the selected runs.
template <void (*operation)()> void at_the_ends(int) {
    operation();
    recompute_logfreq();
}

bool soft_mode_for_all() {
    std::puts("<ctrl>a|A");
    if (!soft_mode()) {
        std::puts("Switch to Editing Mode");
        return false;
    }
    return true;
}

void everything(int) {
    select_everything();
    std::puts("a|A");
}

void tell_modifiers(int modifiers) {
    std::printf("%d\n", modifiers);
}

void to_the_right(int modifiers) {
    tell_modifiers(modifiers);
    std::fputs("Select: Right\t ", stdout);
    select_right();
}

void remainder(int modifiers) {
    tell_modifiers(modifiers);
    std::fputs("Select: Remainder\t ", stdout);
    select_remainder();
}

void nothing_more(int) {}

void hide_gesture() {
    method = 0;
    gShowMethod = 0;
}

void empty_second_slot() {
    foundSubscriptions.part1 = 0;
    foundSubscriptions.point1 = 0;
    foundSubscriptions.count = 1;
    hide_gesture();
}

void drop_newest(int) {
    foundSubscriptions.part0 = foundSubscriptions.part1;
    foundSubscriptions.point0 = foundSubscriptions.point1;
    empty_second_slot();
    reset_peval_spares(peval, &partials);
}

void drop_older(int) {
    empty_second_slot();
}

void drop_all(int) {
    drop_selection();
    reset_peval_spares(peval, &partials);
}

void drop_found(int) {
    directSelect = 0;
    found = 0;
    if (foundSubscriptions.count > 0) {
        foundSubscriptions = {};
        hide_gesture();
    }
}

constexpr int shift_alt = shift | alt;

const KeyRow rows[] = {
    {"L", shift_alt, nullptr, "Select: Trailing Left\t ", plainly<select_trailer>, true},
    {"l", alt, nullptr, "Select: Left\t ", plainly<select_left>, true},
    {"l", ctrl, nullptr, "^l\t ", plainly<wip>, true},
    {"m", alt, nullptr, "Select: Inverted\t ", plainly<select_p_inverted>, true},
    {"Nn", alt, nullptr, "Select: All Inverted\t ", plainly<select_inverted>, true},
    {"Pp", alt, nullptr, "Select: Partial(s)\t ", plainly<select_partials>, true},
    {"R", shift_alt, nullptr, "R", remainder, true},
    {"R", other_modifiers, nullptr, "R", tell_modifiers, false},
    {"r", alt, nullptr, "r", to_the_right, true},
    {"r", other_modifiers, nullptr, "r", tell_modifiers, false},
    {"Vv", alt, band_source, "", plainly<select_vertical>, true},
    {"[", alt, selected_in_edit_mode, "", at_the_ends<oneLessL>, true},
    {"[", other_modifiers, selected_in_edit_mode, "", at_the_ends<oneMoreL>, true},
    {"]", alt, selected_in_edit_mode, "", at_the_ends<oneLessR>, true},
    {"]", other_modifiers, selected_in_edit_mode, "", at_the_ends<oneMoreR>, true},
    {"a", alt, soft_mode_for_all, "", everything, true},
    {"a", other_modifiers, nullptr, "a|A", nothing_more, false},
    {"\177", shift, two_found, "", drop_newest, true},
    {"\177", alt, two_found, "", drop_older, true},
    {"\177", ctrl, nullptr, "Deselect", drop_all, true},
    {"\177", other_modifiers, nullptr, "", drop_found, true},
};

} // namespace

std::span<const KeyRow> select_keys() {
    return rows;
}
