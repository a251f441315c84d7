// edit/extend.h -- lengthens a partial by points of constant frequency. The caller brings the
// derived values back. Window thread only.
#pragma once

#include <cstdint>

/// The most points that one command appends.
constexpr int32_t most_appended_points = 1000000;

/// Appends `additional` points to partial `part`, at its mean spacing, its last frequency and
/// the level of its last but one point, lifts what is below -80 dB in it, and ends it at -120
/// dB. It becomes the last partial, the others close up. Tells every point on the console. A
/// number that names no partial, or a count above the most, leaves the store alone.
void extend3d(int32_t part, int32_t additional);
