// Keys that change what the window shows.

#include "interact/key_rows.h"

#include "display/view.h"
#include "interact/select.h"

namespace {

template <typename T> void toggle(T &flag) {
    flag = flag != 0 ? T{0} : T{1};
}

bool log_view() {
    return logpos != 0;
}

bool frequency_stays_on() {
    return Y != 0;
}

bool time_stays_on() {
    return X != 0;
}

void toggle_axes(int) {
    toggle(coord);
}

void toggle_help(int) {
    toggle(gShowHelp);
}

void toggle_information(int) {
    toggle(gShowInfo);
}

void toggle_clef(int) {
    toggle(gShowClef);
}

void toggle_staff(int) {
    toggle(gShowStaff);
}

void toggle_time_shift(int) {
    toggle(X);
}

void toggle_frequency_shift(int) {
    toggle(Y);
}

void smaller_points(int) {
    ptsize = ptsize > 1 ? ptsize - 1 : ptsize;
}

void larger_points(int) {
    ptsize = ptsize < 4 ? ptsize + 1 : ptsize;
}

const KeyRow rows[] = {
    {"Cc", other_modifiers, nullptr, "", toggle_axes, true},
    {"Hh", other_modifiers, nullptr, "", toggle_help, true},
    {"Ii", other_modifiers, nullptr, "", toggle_information, true},
    {"S", other_modifiers, log_view, "", toggle_clef, true},
    {"s", other_modifiers, nullptr, "", toggle_staff, true},
    {"Xx", other_modifiers, frequency_stays_on, "", toggle_time_shift, true},
    {"Yy", other_modifiers, time_stays_on, "", toggle_frequency_shift, true},
    {"<", other_modifiers, edit_mode, "", smaller_points, true},
    {">", other_modifiers, edit_mode, "", larger_points, true},
};

} // namespace

std::span<const KeyRow> view_keys() {
    return rows;
}
