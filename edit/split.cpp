#include "edit/split.h"

#include "store/phase.h"
#include "store/settings.h"
#include "store/slots.h"
#include "store/store.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr float start_drop = 6.0f;    // dB, first point of the second piece
constexpr float loud = -32.0f;        // dB, what is above it next to the cut is lowered
constexpr float loud_drop = 18.0f;    // dB
constexpr float end_of_fade = -90.0f; // dB, last point of the first piece

/// The number of points before the cut; 0 when there is no place to cut.
int32_t place_of_cut(const FoundPoints &found) {
    if (found.part0 != found.part1 || !point_exists(found.part0, found.point0) ||
        !point_exists(found.part1, found.point1)) {
        return 0;
    }
    return std::max(found.point0, found.point1);
}

void fade_end(Breakpoint *piece, int32_t n) {
    if (n >= 2 && piece[n - 2].amp > loud) {
        piece[n - 2].amp -= loud_drop;
    }
    piece[n - 1].amp = end_of_fade;
}

void soften_start(Breakpoint *piece, int32_t n) {
    piece[0].amp -= start_drop;
    piece[0].phase = 0.0f;
    chain_phases(piece, n);
}

} // namespace

bool split_precheck(FoundPoints found) {
    return found.count == 2 && found.part0 == found.part1 &&
           std::abs(static_cast<int64_t>(found.point0) - found.point1) == 1;
}

void split3d(FoundPoints found) {
    const int32_t before = place_of_cut(found);
    if (before < 1) {
        return;
    }
    const int32_t part = found.part0;
    const int32_t behind = npoints[part] - before;
    Breakpoint *head = clone_points(parray[part], before);
    Breakpoint *tail = clone_points(parray[part] + before, behind);
    soften_start(tail, behind);
    fade_end(head, before);
    take_out_slot(part, false);
    grow_slots(1);
    ++partials;
    cover_by_peval();
    parray[partials - 2] = head;
    npoints[partials - 2] = before;
    parray[partials - 1] = tail;
    npoints[partials - 1] = behind;
    if (dbp) {
        std::puts("Split3d");
    }
}
