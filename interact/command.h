// interact/command.h -- a menu command as a row of data: what it announces, what it asks for,
// what it does, how it finishes. menu_select runs every row by the same steps: opening,
// announcement, gate, requirement, action, finish. Window thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

struct Command {
    int32_t value;              // the menu entry's value
    bool opening;               // shows the prompt and drops the rest of the last reply's line
    const char *announce;       // printed first, may be empty
    const char *gate_refusal;   // printed outside soft mode; null for commands without the gate
    bool (*require)();          // prints its own refusal; null when nothing is asked
    bool (*act)(int modifiers); // dialogue and operation; false: no finish
    void (*finish)();           // null when nothing follows
    bool gate_first = false;    // the gate is tested before the announcement
};

// The rows, by submenu.
std::span<const Command> view_commands();
std::span<const Command> select_commands();
std::span<const Command> edit_commands();
std::span<const Command> process_commands();
std::span<const Command> export_commands();
std::span<const Command> sound_commands();

/// What menu_select keeps between calls.
struct MenuState {
    int16_t param; // mode of the last render
    int32_t iarg0; // number of harmonics
    int32_t iarg1; // their order
    char carg0[2]; // their type
    char carg1[2]; // their decay
};
extern MenuState menu_state;

constexpr size_t word_size = 256; // bytes of a console word, its end included

/// Reads a word; "-c" prints the cancelling line. False then, and at the end of input.
bool read_parameter(char *word, const char *prompt);

// Requirements: a group selection, else their line, with or without a redisplay.
bool require_selection();
bool require_selection_or_redisplay();
bool require_selection_plainly();
bool require_selection_for_export();

/// Requirement of playing the selection, from the menu as from the keyboard: a sweep.
bool require_sweep_to_play();

// Finishes.
void finish_refresh();
void finish_refresh_without_phase();
void finish_redisplay();
