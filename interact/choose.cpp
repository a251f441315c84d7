#include "interact/choose.h"

#include "display/view.h"
#include "interact/selection.h"
#include "store/store.h"

#include <cstdio>

namespace {

bool first_point_selected(int32_t i) {
    return npoints[i] > 0 && parray[i][0].selected == 1;
}

void mark_partial(int32_t i, uint16_t flag) {
    for (int32_t j = 0; j < npoints[i]; ++j) {
        parray[i][j].selected = flag;
    }
    peval[i].selected = static_cast<int16_t>(flag);
}

bool rest_selected(int32_t i) {
    for (int32_t j = 1; j < npoints[i]; ++j) {
        if (parray[i][j].selected != 1) {
            return false;
        }
    }
    return true;
}

/// Moves one slot by one point where its partial goes on that way; true when it has moved. A
/// place left behind by an edit, past its partial's end, can still come back.
bool step(int32_t part, int32_t &point, int32_t by) {
    if (part < 0 || part >= partials) {
        return false;
    }
    const bool room = by < 0 ? point > 0 : point < npoints[part] - 1;
    point += room ? by : 0;
    return room;
}

void merge_equal_slots(FoundPoints &queue) {
    if (queue.part0 == queue.part1 && queue.point0 == queue.point1) {
        queue.part1 = -1;
        queue.point1 = -1;
        queue.count = 1;
    }
}

/// Moves the newest point and, when there are two, the older one.
void choose(int32_t by, bool newest, bool older) {
    if (!soft_mode() || foundSubscriptions.count < 1) {
        return;
    }
    FoundPoints &queue = foundSubscriptions;
    if (queue.count == 1) {
        step(queue.part0, queue.point0, by);
        return;
    }
    if (newest) {
        step(queue.part0, queue.point0, by);
    }
    if (older && step(queue.part1, queue.point1, by)) {
        merge_equal_slots(queue);
    }
}

} // namespace

void cycleSelection(int32_t direction) {
    if (partials < 1) {
        return;
    }
    int32_t i = 0;
    while (i < partials && !first_point_selected(i)) {
        ++i;
    }
    i = i < partials ? i : 0;
    if (!rest_selected(i)) {
        std::puts("An entire partial must be selected");
        return;
    }
    const int32_t next = (i + direction + partials) % partials;
    for (int32_t k = i + 1; k < partials; ++k) {
        if (first_point_selected(k)) {
            std::puts("Only one partial may be selected");
            return;
        }
    }
    mark_partial(i, 0);
    mark_partial(next, 1);
    std::printf("Current: [%d]\tNext: [%d]\n", i, next);
}

void chooseSingle_left(int32_t which) {
    choose(-1, which != 1, which != 2);
}

void chooseSingle_right(int32_t which) {
    choose(1, which != 2, which != 1);
}
