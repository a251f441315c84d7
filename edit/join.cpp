#include "edit/join.h"

#include "interact/clear.h"
#include "store/phase.h"
#include "store/slots.h"
#include "store/store.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr float seam_rise = 6.0f; // dB, what a split took from the second piece's start

bool is_partial(int32_t i) {
    return i >= 0 && i < partials;
}

/// Whether the first point ends its partial, strictly before the second one starts its own.
bool leads(int32_t part0, int32_t point0, int32_t part1, int32_t point1) {
    if (!is_partial(part0) || !is_partial(part1) || point0 < 0 || npoints[part1] < 1) {
        return false;
    }
    return point0 == npoints[part0] - 1 && point1 == 0 &&
           parray[part0][point0].time < parray[part1][0].time;
}

/// Levels around the seam, which lies behind place `last`.
void mend_seam(Breakpoint *points, int32_t last) {
    points[last + 1].amp += seam_rise;
    if (last < 1) {
        return; // a leading partial of one point has no neighbour to take a mean with
    }
    if (last >= 2) {
        points[last - 1].amp = points[last - 2].amp;
    }
    const double sum = static_cast<double>(points[last + 1].amp) + points[last - 1].amp;
    points[last].amp = static_cast<float>(sum * 0.5);
}

} // namespace

bool verify_found(int32_t part0, int32_t point0, int32_t part1, int32_t point1) {
    return leads(part0, point0, part1, point1) || leads(part1, point1, part0, point0);
}

void join3d(int32_t a, int32_t b) {
    if (!is_partial(a) || !is_partial(b) || a == b || npoints[a] < 1 || npoints[b] < 1) {
        return;
    }
    std::printf("Joining partials %d and %d\n", a, b);
    const bool a_leads = parray[a][0].time <= parray[b][0].time;
    const int32_t lead = a_leads ? a : b;
    const int32_t trail = a_leads ? b : a;
    const int32_t n = npoints[lead] + npoints[trail];
    const int32_t last = npoints[lead] - 1;
    Breakpoint *joined = new_points(n);
    std::copy_n(parray[trail], npoints[trail], std::copy_n(parray[lead], npoints[lead], joined));
    mend_seam(joined, last);
    chain_phases(joined, n);
    take_out_slot(std::min(a, b), false);
    --partials;
    take_out_slot(std::max(a, b) - 1, false);
    trim_slots(partials);
    parray[partials - 1] = joined;
    npoints[partials - 1] = n;
    deselect_all();
}
