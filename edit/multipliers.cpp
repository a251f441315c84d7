#include "edit/multipliers.h"

#include "store/settings.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr size_t word_room = 16;
constexpr double least_multiplier = 0.0001;

bool ends_line(char c) {
    return c == '\n' || c == '\0';
}

/// Copies the word at `text`, cut to its room, and returns what ends it.
const char *take_word(const char *text, char (&word)[word_room]) {
    std::memset(word, 0, sizeof word);
    size_t length = 0;
    for (; *text != ' ' && !ends_line(*text); ++text) {
        if (length < word_room - 1) {
            word[length++] = *text;
        }
    }
    return text;
}

bool is_law_letter(const char *word) {
    return word[0] != '\0' && word[1] == '\0' && std::strchr("crqeb", word[0]) != nullptr;
}

/// The factors behind `k` move up.
void take_out(FactorTable &table, int32_t k) {
    std::copy(table.values + k + 1, table.values + table.count, table.values + k);
    table.values[--table.count] = 0.0f;
}

void drop_nonsense(FactorTable &table) {
    for (int32_t k = 0; k < table.count; ++k) {
        if (table.values[k] == 1.0f || !(table.values[k] > least_multiplier)) {
            take_out(table, k);
            if (dbp != 0) {
                std::puts("Nonsense");
            }
        }
    }
}

void drop_duplicates(FactorTable &table) {
    for (int32_t k = 0; k < table.count; ++k) {
        for (int32_t later = k + 1; later < table.count; ++later) {
            if (table.values[later] == table.values[k]) {
                take_out(table, later);
                if (dbp != 0) {
                    std::puts("Duplicate");
                }
            }
        }
    }
}

} // namespace

MultiplierLine read_multipliers(const char *line) {
    MultiplierLine read = {{}, "c"};
    char word[word_room];
    const char *end = take_word(line, word);
    while (!ends_line(*end)) {
        add_factor(read.multipliers, string2ratio(word));
        end = take_word(end + 1, word);
    }
    if (is_law_letter(word)) {
        read.law[0] = word[0];
        add_factor(read.multipliers, 0.0f); // its place in the list, for the filter to take out
    } else {
        add_factor(read.multipliers, static_cast<float>(std::atof(word)));
    }
    drop_nonsense(read.multipliers);
    drop_duplicates(read.multipliers);
    return read;
}
