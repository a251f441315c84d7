// edit/selected.h -- the points of the group selection, for edits that change them in place.
// Window thread only.
#pragma once

#include "store/store.h"

/// A flag of any other value than 1 does not count.
inline bool is_selected(const Breakpoint &point) {
    return point.selected == 1;
}

/// Calls change(point) for each selected point, in the order of partials and points.
template <typename Change> void for_selected(Change change) {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            if (is_selected(parray[i][j])) {
                change(parray[i][j]);
            }
        }
    }
}
