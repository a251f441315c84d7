// edit/decay.h -- the factors of generated partials: tables of fixed size, and the laws that
// lower the level from one new partial to the next. Window thread only.
#pragma once

#include <cstdint>

/// Elements of a table.
constexpr int32_t factor_room = 1024;

/// Factors 0 to count - 1; every other element is 0.
struct FactorTable {
    float values[factor_room];
    int32_t count;
};

/// Element k; 0 below and above the table, where nothing is read.
float factor_at(const FactorTable &table, int64_t k);

/// Appends a factor; one that the table has no room for is dropped.
void add_factor(FactorTable &table, float factor);

/// Fills `afac`, an empty table, with one linear amplitude for each multiplier, printing what
/// the law prints. `law` is "c", "r", "q", "e" or "b"; any other text is reported and counts as
/// "c".
void decay_of_multipliers(const char *law, const FactorTable &multipliers, FactorTable &afac);

/// The same for the members of a harmonic series. "l" and "i" stand for "r", and "q" falls
/// faster, from the second member on. Any other text is reported and gives false.
bool decay_of_harmonics(const char *law, const FactorTable &ffac, FactorTable &afac);
