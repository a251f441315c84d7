#include "interact/select.h"

#include "display/view.h"
#include "interact/clear.h"
#include "interact/selection.h"
#include "store/misc.h"
#include "store/settings.h"
#include "store/store.h"

#include <algorithm>
#include <cstdio>

namespace {

bool is_selected(int32_t i, int32_t j) {
    return parray[i][j].selected == 1;
}

/// Sets the flags of points `from` up to, not including, `to`.
void mark(int32_t i, int32_t from, int32_t to, uint16_t flag) {
    for (int32_t j = from; j < to; ++j) {
        parray[i][j].selected = flag;
    }
}

/// The first selected point from `from` on, npoints[i] when there is none.
int32_t first_selected(int32_t i, int32_t from) {
    int32_t j = from;
    while (j < npoints[i] && !is_selected(i, j)) {
        ++j;
    }
    return j;
}

/// The last selected point from `from` down to `lowest`; below `lowest` when there is none.
int32_t last_selected(int32_t i, int32_t from, int32_t lowest) {
    int32_t j = from;
    while (j >= lowest && !is_selected(i, j)) {
        --j;
    }
    return j;
}

bool any_selected(int32_t i) {
    return first_selected(i, 0) < npoints[i];
}

void flip(int32_t i) {
    for (int32_t j = 0; j < npoints[i]; ++j) {
        parray[i][j].selected = parray[i][j].selected == 0 ? 1 : 0;
    }
}

} // namespace

bool soft_mode() {
    return bps != 0 || flat != 0;
}

bool edit_mode() {
    return bps != 0 && flat != 0;
}

void select_left() {
    if (!soft_mode()) {
        return;
    }
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t first = first_selected(i, 0);
        if (first < npoints[i]) {
            mark(i, 0, first, 1);
            selected = 1;
            found = 1;
        }
    }
}

void select_right() {
    if (!soft_mode()) {
        return;
    }
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t last = last_selected(i, npoints[i] - 1, 1);
        if (last >= 1) {
            mark(i, last + 1, npoints[i], 1);
        }
    }
}

void select_vertical() {
    if (!soft_mode()) {
        return;
    }
    float tmin = sndlen;
    float tmax = 0.0f;
    for (int32_t i = 0; i < partials; ++i) {
        if (any_selected(i)) {
            tmin = std::min(tmin, parray[i][first_selected(i, 0)].time);
            tmax = std::max(tmax, parray[i][last_selected(i, npoints[i] - 1, 0)].time);
        }
    }
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            Breakpoint &point = parray[i][j];
            point.selected = point.time >= tmin && point.time <= tmax ? 1 : 0;
            if (point.selected == 1) {
                selected = 1;
                found = 1;
            }
        }
    }
}

void select_partials() {
    if (!soft_mode()) {
        return;
    }
    for (int32_t i = 0; i < partials; ++i) {
        if (any_selected(i)) {
            mark(i, 0, npoints[i], 1);
            selected = 1;
        }
    }
}

void select_all() {
    if (!edit_mode()) {
        return;
    }
    for (int32_t i = 0; i < partials; ++i) {
        mark(i, 0, npoints[i], 1);
    }
    selected = 1;
}

void select_inverted() {
    if (!soft_mode()) {
        return;
    }
    for (int32_t i = 0; i < partials; ++i) {
        flip(i);
    }
    selected = 1;
}

void select_p_inverted() {
    if (!soft_mode()) {
        return;
    }
    for (int32_t i = 0; i < partials; ++i) {
        if (any_selected(i)) {
            flip(i);
            selected = 1;
        }
    }
}

void deselect_group() {
    if (flat == 0) {
        return;
    }
    for (int32_t i = 0; i < partials; ++i) {
        peval[i].selected = 0;
        mark(i, 0, npoints[i], 0);
    }
    selected = 0;
    selecting = 0;
}

void select_none() {
    deselect_all();
}

void select_everything() {
    std::puts("Select All");
    select_all();
    sweepSelect = 1;
}

void drop_selection() {
    select_none();
    sweepSelect = 0;
    method = 0;
    gShowMethod = 0;
}

void oneMoreL() {
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t first = first_selected(i, 1);
        if (first < npoints[i]) {
            parray[i][first - 1].selected = 1;
        }
    }
}

void oneLessL() {
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t first = first_selected(i, 0);
        if (npoints[i] >= 2 && first < npoints[i]) {
            parray[i][first].selected = 0;
        }
    }
}

void oneMoreR() {
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t last = last_selected(i, npoints[i] - 2, 1);
        if (last >= 1) {
            parray[i][last + 1].selected = 1;
        }
    }
}

void oneLessR() {
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t last = last_selected(i, npoints[i] - 1, 1);
        if (last >= 1) {
            parray[i][last].selected = 0;
        }
    }
}

void select_remainder() {
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t last = last_selected(i, npoints[i] - 1, 1);
        if (last >= 1) {
            mark(i, last + 1, npoints[i], 1);
            mark(i, 0, last + 1, 0);
        }
    }
}

void select_trailer() {
    for (int32_t i = 0; i < partials; ++i) {
        // A hit moves on to the next partial in mid-scan: q is not set back there.
        for (int32_t q = 1; i < partials && q < npoints[i]; ++q) {
            if (is_selected(i, q)) {
                mark(i, q, npoints[i], 0);
                mark(i, 0, q, 1);
                ++i;
            }
        }
    }
}

void select_up() {
    wip();
}

void select_down() {
    wip();
}
