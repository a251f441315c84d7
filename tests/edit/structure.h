// tests/edit/structure.h -- what the tests of structural edits share: stores whose partials can
// be told apart, copies of all points, and the refresh that commands run behind each edit.
#pragma once

#include "store/store.h"
#include "tests/support/fixture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace structure {

using Snapshot = std::vector<std::vector<Breakpoint>>;

/// A copy of every point.
Snapshot snapshot();

/// Partials of these lengths, the k-th at 100 (k + 1) Hz, -10 (k + 1) dB, from k seconds on at
/// quarters of a second.
std::vector<Partial> numbered(const std::vector<int> &lengths);

/// Each partial's number in numbered(), in the order of the store.
std::vector<int> labels();

std::vector<float> times(int32_t i);
std::vector<float> freqs(int32_t i);
std::vector<float> amps(int32_t i);
std::vector<float> phases(int32_t i);

/// The phases that follow from the first one by the segments' times and left frequencies.
std::vector<float> chained(const std::vector<Breakpoint> &points, float phase0);

void select_points(int32_t i, int32_t first, int32_t last);

/// Both agree bit by bit.
bool same_points(const std::vector<Breakpoint> &a, const std::vector<Breakpoint> &b);
bool same_points(const Snapshot &a, const Snapshot &b);

/// What the menu runs behind a structural edit, without the redisplay; a merge leaves the
/// phases out.
void refresh(bool phases = true);

} // namespace structure
