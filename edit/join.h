// edit/join.h -- makes one partial of two that follow each other. The caller brings the derived
// values back. Window thread only.
#pragma once

#include <cstdint>

/// Whether one of two points is the last of its partial, the other one the first of its own,
/// and the last strictly earlier. False for numbers that name no point.
bool verify_found(int32_t part0, int32_t point0, int32_t part1, int32_t point1);

/// Joins two partials, in either order, mends the levels at the seam as a split left them, and
/// derives the phases anew. The result becomes the last partial, the others close up. In the
/// flat view the selection is cleared. Numbers that name no pair leave the store alone.
void join3d(int32_t a, int32_t b);
