// bench/large_store.h -- a store of 1,000,000 points that benchmarks of the interface share.
#pragma once

#include <cstdint>

constexpr int32_t partial_count = 2000;
constexpr int32_t point_count = 500; // of each partial
constexpr int64_t all_points = int64_t{partial_count} * point_count;

/// Fills the empty store; every partial begins at `start` seconds, and all points are `selected`
/// or none. Frequencies jump from point to point, so that no branch predictor can guess a hit.
void build_store(float start, bool selected);
