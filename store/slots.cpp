#include "store/slots.h"

#include "store/published.h"
#include "store/settings.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

size_t at_least_one(int32_t n) {
    return n > 0 ? static_cast<size_t>(n) : 1;
}

size_t with_spare(int32_t count) {
    return static_cast<size_t>(std::max(count, 0)) + static_cast<size_t>(spare_partials);
}

/// How many records peval has room for; grown in place, so the tail can be cleared.
size_t peval_room = 0;

} // namespace

Breakpoint *new_points(int32_t n) {
    return static_cast<Breakpoint *>(std::calloc(at_least_one(n), sizeof(Breakpoint)));
}

Breakpoint *clone_points(const Breakpoint *points, int32_t n) {
    Breakpoint *copy = new_points(n);
    if (copy != nullptr) {
        std::copy_n(points, std::max(n, 0), copy);
    }
    return copy;
}

void free_points(Breakpoint *points) {
    retire(points);
}

void allocate_counts(int32_t count) {
    std::free(npoints);
    npoints = static_cast<int32_t *>(std::calloc(with_spare(count), sizeof(int32_t)));
}

void allocate_index(int32_t count) {
    std::free(xarray);
    xarray =
        static_cast<PartialIndexEntry *>(std::calloc(with_spare(count), sizeof(PartialIndexEntry)));
}

void trim_counts(int32_t count) {
    npoints = static_cast<int32_t *>(std::realloc(npoints, at_least_one(count) * sizeof(int32_t)));
}

void trim_slots(int32_t count) {
    parray = static_cast<Breakpoint **>(
        std::realloc(parray, at_least_one(count) * sizeof(Breakpoint *)));
}

void allocate_points() {
    parray = static_cast<Breakpoint **>(std::calloc(at_least_one(partials), sizeof(Breakpoint *)));
    for (int32_t i = 0; i < partials; ++i) {
        parray[i] = new_points(npoints[i]);
    }
}

void own_points(int32_t i) {
    if (!withdraw_store()) { // a reader is inside: leave it the old array
        Breakpoint *whole = clone_points(parray[i], parray[i] != nullptr ? npoints[i] : 0);
        retire(parray[i]);
        parray[i] = whole;
    }
}

void resize_partial(int32_t i, int32_t n) {
    const int32_t before = std::max(npoints[i], 0); // an import may leave a negative count
    own_points(i);
    parray[i] =
        static_cast<Breakpoint *>(std::realloc(parray[i], at_least_one(n) * sizeof(Breakpoint)));
    if (n > before) {
        std::memset(static_cast<void *>(parray[i] + before), 0,
                    static_cast<size_t>(n - before) * sizeof(Breakpoint));
    }
    npoints[i] = n;
}

void grow_slots(int32_t extra) {
    const size_t before = static_cast<size_t>(partials);
    const size_t after = before + static_cast<size_t>(extra);
    parray = static_cast<Breakpoint **>(std::realloc(parray, after * sizeof(Breakpoint *)));
    npoints = static_cast<int32_t *>(std::realloc(npoints, after * sizeof(int32_t)));
    for (size_t i = before; i < after; ++i) {
        parray[i] = nullptr;
        npoints[i] = 0;
    }
}

void regrow_peval() {
    const size_t room = with_spare(partials);
    peval = static_cast<PartialEval *>(std::realloc(peval, room * sizeof(PartialEval)));
    if (room > peval_room) {
        std::memset(static_cast<void *>(peval + peval_room), 0,
                    (room - peval_room) * sizeof(PartialEval));
    }
    peval_room = room;
}

void cover_by_peval() {
    if (static_cast<size_t>(partials) > peval_room) {
        regrow_peval();
    }
}

void peval_replaced(int32_t count) {
    peval_room = with_spare(count);
}

void allocate_peval_exactly() {
    std::free(peval);
    peval_room = at_least_one(partials);
    peval = static_cast<PartialEval *>(std::calloc(peval_room, sizeof(PartialEval)));
}

void move_slot_down(int32_t k, bool trace) {
    free_points(parray[k]);
    if (trace) {
        std::printf("Compacting partial # %4d\n", k);
    }
    npoints[k] = npoints[k + 1];
    parray[k] = parray[k + 1];
    parray[k + 1] = nullptr;
}

void take_out_slot(int32_t part, bool tell_slots) {
    for (int32_t k = part; k <= partials - 2; ++k) {
        if (tell_slots && dbp) {
            std::printf("k = %d\n", k);
        }
        move_slot_down(k, verbose != 0);
    }
    free_points(parray[partials - 1]);
    parray[partials - 1] = nullptr;
    npoints[partials - 1] = 0;
}

void free_store() {
    for (int32_t i = 0; parray != nullptr && i < partials; ++i) {
        free_points(parray[i]);
    }
    std::free(parray);
    std::free(npoints);
    std::free(xarray);
    std::free(peval);
    parray = nullptr;
    npoints = nullptr;
    xarray = nullptr;
    peval = nullptr;
    peval_room = 0;
    partials = 0;
}
