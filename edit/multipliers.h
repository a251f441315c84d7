// edit/multipliers.h -- the line that a user types for arbitrary partials: frequency factors,
// and a letter at its end for the decay. Window thread only.
#pragma once

#include "edit/decay.h"

/// What a line says.
struct MultiplierLine {
    FactorTable multipliers;
    char law[2]; // one of the letters c, r, q, e, b
};

/// Reads `line` up to its newline or its end, whichever comes first. Each blank ends a word, so
/// two in a row hold an empty one. A word in front of a blank is any ratio notation. The last
/// word is a law, or a plain number under the law "c". What a word has beyond 15 characters is
/// dropped, as are words beyond factor_room. Factors of 1, factors of 0.0001 and below, and
/// repeated ones are taken out, but for one that stands right behind one taken out.
MultiplierLine read_multipliers(const char *line);
