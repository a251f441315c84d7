#include "synth/stretches.h"

#include "live/shared.h"

namespace {

/// What a walk meets from a selected point on.
struct Run {
    int32_t first;  // point
    int32_t last;   // last selected point
    int32_t next;   // where the walk goes on
    bool too_short; // one or two points, ended by an unselected one
    bool moved;     // passed over a selected point that is neither its first nor the partial's last
};

bool is_selected(const Breakpoint &point) {
    return peek(point.selected) == 1;
}

Run run_from(const Breakpoint *points, int32_t count, int32_t first) {
    int32_t k = first + 1;
    while (k < count && is_selected(points[k])) {
        ++k;
    }
    const bool to_end = k == count;
    const int32_t behind = k - first - 1; // selected points behind the first
    return {first, k - 1, k < count ? k + 1 : k, !to_end && behind<2, behind>(to_end ? 1 : 0)};
}

/// Calls work(partial, run) for each run of selected points in order.
template <typename Work>
void walk(const Breakpoint *const *array, const int32_t *counts, int32_t number, Work work) {
    for (int32_t p = 0; p < number; ++p) {
        int32_t i = 0;
        while (i < counts[p]) {
            if (!is_selected(array[p][i])) {
                ++i;
                continue;
            }
            const Run run = run_from(array[p], counts[p], i);
            work(p, run);
            i = run.next;
        }
    }
}

} // namespace

int32_t count_stretches(const Breakpoint *const *array, const int32_t *counts, int32_t number) {
    int32_t count = 0;
    walk(array, counts, number, [&](int32_t, const Run &run) { count += run.too_short ? 0 : 1; });
    return count;
}

void fill_stretches(const Breakpoint *const *array, const int32_t *counts, int32_t number,
                    SynthStretch *stretches, int32_t &count) {
    int32_t in_hand = 0;
    walk(array, counts, number, [&](int32_t p, const Run &run) {
        if (run.moved) {
            count = in_hand + 1;
        }
        if (run.too_short) {
            --count;
            return;
        }
        const bool lone = run.last == run.first;
        stretches[in_hand++] = {p, run.first, lone ? 0 : p, lone ? 0 : run.last};
    });
}
