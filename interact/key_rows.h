// interact/key_rows.h -- a key as a row of data: the characters and modifiers it answers to, the
// guard that must hold, what it announces, what it does, whether the picture follows. `key` runs
// every row by the same steps. Window thread only.
#pragma once

#include <span>
#include <string_view>

constexpr int other_modifiers = -1; // every state of the modifiers that no other row of the key has

struct KeyRow {
    std::string_view keys;      // characters
    int modifiers;              // the exact state, or other_modifiers
    bool (*guard)();            // null for none; a failing one prints its own refusal, if any
    const char *announce;       // printed before the effect, may be empty
    void (*run)(int modifiers); // the effect
    bool redisplay;             // posted after the effect
};

// The rows, by subject. No two rows answer to one character with the same modifiers.
std::span<const KeyRow> view_keys();
std::span<const KeyRow> select_keys();
std::span<const KeyRow> edit_keys();
std::span<const KeyRow> sound_keys();
std::span<const KeyRow> console_keys();

/// The effect that is an operation and takes no notice of the modifiers.
template <void (*operation)()> void plainly(int) {
    operation();
}
