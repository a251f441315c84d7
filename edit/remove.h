// edit/remove.h -- deletes one breakpoint, or all partials that a group selection touches. The
// store keeps at least one partial, and numbers behind a deleted partial move down by one. The
// caller brings the derived values back. Window thread only.
#pragma once

#include <cstdint>

/// Whether there is something to remove: a point, neither number -1, or a group selection.
bool remove_precheck(int32_t part, int32_t point, uint16_t selected);

/// With `selected` non-zero deletes every partial that holds a selected point, whole, telling
/// its progress on the console. Else deletes that one point: the last point of a partial of at
/// most 3 takes the partial along; a point at the same time as its successor is fused with it.
/// Numbers that name no point, and the only partial of the store, are left alone.
void remove3d(int32_t part, int32_t point, uint16_t selected);
