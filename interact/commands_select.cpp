#include "interact/command.h"

#include "edit/pick.h"
#include "interact/select.h"

#include <cstdio>

namespace {

/// Runs an operation that needs nothing asked of the user.
template <void (*operation)()> bool silently(int) {
    operation();
    return true;
}

bool pick_dialogue(int) {
    std::puts("Pick partials:");
    pick();
    return true;
}

const char *const wrong_mode = "Switch to Editing Mode";

const Command rows[] = {
    {5, false, "Select: Left\t ", nullptr, nullptr, silently<select_left>, finish_redisplay},
    {6, false, "Select: Right\t ", nullptr, nullptr, silently<select_right>, finish_redisplay},
    {7, false, "Select: Partial(s)\t ", nullptr, nullptr, silently<select_partials>,
     finish_redisplay},
    {8, false, "Select: All\t ", wrong_mode, nullptr, silently<select_everything>,
     finish_redisplay},
    {9, false, "Select: Partial Inverted\t ", nullptr, nullptr, silently<select_p_inverted>,
     finish_redisplay},
    {10, false, "Select: All Inverted\t ", nullptr, nullptr, silently<select_inverted>,
     finish_redisplay},
    {30, false, "Select: None     ", nullptr, nullptr, silently<drop_selection>, finish_redisplay},
    {101, false, "", wrong_mode, nullptr, pick_dialogue, finish_redisplay},
};

} // namespace

std::span<const Command> select_commands() {
    return rows;
}
