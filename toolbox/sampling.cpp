// A partial seen at the times of another one, and the thinning of the store.

#include "toolbox/auxilliary3d.h"

#include "store/slots.h"
#include "toolbox/auxmath3d.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

float freq_of(const Breakpoint &point) {
    return point.freq;
}
float level_of(const Breakpoint &point) {
    return point.amp;
}
float amplitude_of(const Breakpoint &point) {
    return db2amp(point.amp);
}

/// The value of a partial of n points, at least one, at time t.
float value_at(const Breakpoint *points, int32_t n, float t, float (*value)(const Breakpoint &)) {
    int32_t i = 0;
    while (i < n - 1 && !(points[i].time >= t)) {
        ++i;
    }
    if (i == 0 || i == n - 1 || points[i].time == t) {
        return value(points[i]);
    }
    return linear_interpolation(t, points[i].time, points[i - 1].time, value(points[i]),
                                value(points[i - 1]));
}

/// The arrays that func1 builds before it lets go of the old ones.
struct Thinned {
    int32_t count;
    int32_t *counts = nullptr;
    Breakpoint **points = nullptr;
    PartialEval *evals = nullptr;
};

void release(Thinned &thinned) {
    for (int32_t i = 0; thinned.points != nullptr && i < thinned.count; ++i) {
        free_points(thinned.points[i]);
    }
    std::free(thinned.points);
    std::free(thinned.counts);
    std::free(thinned.evals);
}

/// Copies every second partial; the code of the failed allocation, or 0.
int32_t build_thinned(Thinned &thinned, Breakpoint *const *points, const int32_t *counts,
                      const PartialEval *evals) {
    const size_t room = static_cast<size_t>(thinned.count) + static_cast<size_t>(spare_partials);
    thinned.counts = static_cast<int32_t *>(std::calloc(room, sizeof(int32_t)));
    if (thinned.counts == nullptr) {
        return 1;
    }
    thinned.points = static_cast<Breakpoint **>(std::calloc(room, sizeof(Breakpoint *)));
    if (thinned.points == nullptr) {
        return 2;
    }
    for (int32_t i = 0; i < thinned.count; ++i) {
        thinned.counts[i] = counts[2 * i];
        thinned.points[i] = clone_points(points[2 * i], counts[2 * i]);
        if (thinned.points[i] == nullptr) {
            return 3;
        }
    }
    thinned.evals = static_cast<PartialEval *>(std::calloc(room, sizeof(PartialEval)));
    if (thinned.evals == nullptr) {
        return 4;
    }
    for (int32_t i = 0; i < thinned.count; ++i) {
        thinned.evals[i] = evals[2 * i];
    }
    return 0;
}

} // namespace

float linear_interpol(Breakpoint *const *points, const int32_t *counts, int32_t j, int32_t k,
                      int32_t m) {
    return value_at(points[m], counts[m], points[k][j].time, freq_of);
}

float linear_interpol_a(Breakpoint *const *points, const int32_t *counts, int32_t j, int32_t k,
                        int32_t m) {
    return value_at(points[m], counts[m], points[k][j].time, level_of);
}

float linear_interpol_al(Breakpoint *const *points, const int32_t *counts, int32_t j, int32_t k,
                         int32_t m) {
    return value_at(points[m], counts[m], points[k][j].time, amplitude_of);
}

int32_t func1(Breakpoint ***points, int32_t **counts, int32_t *count, PartialEval **evals) {
    const int32_t before = *count;
    Thinned thinned{before - before / 2};
    const int32_t failure = build_thinned(thinned, *points, *counts, *evals);
    if (failure != 0) {
        release(thinned);
        return failure;
    }
    for (int32_t i = 0; i < before; i += 2) {
        std::printf("[%d]: %f\n", i, (*evals)[i].start);
    }
    for (int32_t i = 0; i < before; ++i) {
        free_points((*points)[i]);
    }
    std::free(*points);
    std::free(*counts);
    std::free(*evals);
    *points = thinned.points;
    *counts = thinned.counts;
    *evals = thinned.evals;
    *count = thinned.count;
    peval_replaced(thinned.count);
    return 0;
}
