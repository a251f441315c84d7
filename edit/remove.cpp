#include "edit/remove.h"

#include "store/phase.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "store/slots.h"
#include "store/store.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int32_t shortest_kept = 4; // points a partial needs to outlive its last one's removal

void chain_from(int32_t lowest) {
    for (int32_t i = lowest; i < partials; ++i) {
        chain_phases(parray[i], npoints[i]);
    }
}

void remove_whole(int32_t part) {
    if (partials < 2) {
        return;
    }
    take_out_slot(part, false);
    --partials;
    chain_from(part);
    recompute_times();
}

/// Closes the gap over `point`, which is not the last one.
void drop_point(int32_t part, int32_t point) {
    Breakpoint *points = parray[part];
    const int32_t n = npoints[part];
    std::copy(points + point + 1, points + n, points + point);
    resize_partial(part, n - 1);
    chain_phases(parray[part], npoints[part]);
}

/// Gives `later` the reciprocal of the summed reciprocals of both frequencies, which is half of
/// two equal ones, and their mean level in dB.
void fuse(const Breakpoint &earlier, Breakpoint &later) {
    const float sum = static_cast<float>(1.0 / earlier.freq + 1.0 / later.freq);
    later.freq = 1.0f / sum;
    later.amp = static_cast<float>((static_cast<double>(earlier.amp) + later.amp) * 0.5);
}

void remove_point(int32_t part, int32_t point) {
    const int32_t n = npoints[part];
    const bool last = point == n - 1;
    if (last && n < shortest_kept) {
        remove_whole(part);
        return;
    }
    if (last) {
        resize_partial(part, n - 1);
        return;
    }
    own_points(part);
    Breakpoint *points = parray[part];
    if (points[point].time == points[point + 1].time) {
        fuse(points[point], points[point + 1]);
    } else if (verbose) {
        std::printf("thepoint = %d\n", point);
    }
    drop_point(part, point);
}

/// The deletion of all marked partials: where it stands between the passes.
struct Removal {
    std::vector<char> marked; // by partial, kept in step with the store
    int32_t left;             // marked partials that still stand
    int32_t lowest;           // smallest number deleted
};

Removal start_removal() {
    Removal removal = {std::vector<char>(static_cast<size_t>(partials)), 0, partials};
    for (int32_t i = 0; i < partials; ++i) {
        const bool marked = has_selected_point(i);
        removal.marked[static_cast<size_t>(i)] = marked ? 1 : 0;
        removal.left += marked ? 1 : 0;
    }
    return removal;
}

void delete_marked(Removal &removal, int32_t i) {
    if (verbose) {
        std::printf("partial# %d\n", i);
    }
    take_out_slot(i, true);
    --partials;
    --removal.left;
    removal.marked.erase(removal.marked.begin() + i);
    removal.lowest = std::min(removal.lowest, i);
}

/// One walk from the top. After a deletion it steps over the neighbour below, which a later
/// walk looks at; so partials go in an order of its own, and never the last one.
void removal_pass(Removal &removal) {
    int32_t i = partials - 1;
    while (i >= 0) {
        if (verbose) {
            std::printf("-->%d\n", i);
        }
        if (removal.marked[static_cast<size_t>(i)] != 0) {
            delete_marked(removal, i);
            i -= 2;
        } else {
            i -= 1;
        }
    }
}

void remove_marked() {
    std::fputs("Removing multiple selections: ", stdout);
    Removal removal = start_removal();
    std::printf("\nnumber of selections = %d\n", removal.left);
    while (removal.left > (partials >= 2 ? 0 : 1)) {
        removal_pass(removal);
    }
    // Chaining again gives the same phases, so once at the end serves for every move.
    chain_from(removal.lowest);
    trim_counts(partials);
    if (dbp) {
        std::printf("\nd = %d\n", removal.left);
    }
}

} // namespace

bool remove_precheck(int32_t part, int32_t point, uint16_t selected) {
    return (part != -1 && point != -1) || selected != 0;
}

void remove3d(int32_t part, int32_t point, uint16_t selected) {
    if (selected != 0) {
        remove_marked();
    } else if (point_exists(part, point)) {
        remove_point(part, point);
    }
}
