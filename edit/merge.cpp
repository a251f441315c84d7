#include "edit/merge.h"

#include "store/recompute.h"
#include "store/slots.h"
#include "store/store.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

struct Pair {
    int32_t one; // the higher number; -1 when there is none
    int32_t two; // -1 when there is none
};

/// A stretch of time, in seconds, and how near to its ends a point must be to count as there.
struct Overlap {
    float start;
    float end;
    double nearness;
};

/// The stretch of one partial that lies in the overlap.
struct Stretch {
    int32_t part;
    int32_t first;
    int32_t count; // 0 or less where no point is near the end
};

/// The two partials with selected points, or why there are not just two. The walk stops at the
/// third.
bool choose_pair(Pair &pair) {
    pair = {-1, -1};
    for (int32_t i = partials - 1; i >= 0; --i) {
        if (!has_selected_point(i)) {
            continue;
        }
        if (pair.one < 0) {
            pair.one = i;
        } else if (pair.two < 0) {
            pair.two = i;
        } else {
            std::puts("Invalid selection");
            return false;
        }
    }
    if (pair.two < 0) {
        std::puts("Insufficient selection");
        return false;
    }
    return true;
}

float first_time(int32_t i) {
    return parray[i][0].time;
}

float last_time(int32_t i) {
    return parray[i][npoints[i] - 1].time;
}

double summed_intervals(int32_t i) {
    double sum = 0.0;
    for (int32_t j = 1; j < npoints[i]; ++j) {
        sum += static_cast<double>(parray[i][j].time) - parray[i][j - 1].time;
    }
    return sum;
}

Overlap find_overlap(Pair pair) {
    for (const int32_t i : {pair.one, pair.two}) {
        std::printf("%d: %f\t%f\n", i, first_time(i), last_time(i));
    }
    Overlap overlap;
    overlap.start = std::max(first_time(pair.one), first_time(pair.two));
    overlap.end = std::min(last_time(pair.one), last_time(pair.two));
    std::printf("Common: %f\t%f\n", overlap.start, overlap.end);
    // By definition the divisor counts points, not intervals.
    const double mean = (summed_intervals(pair.one) + summed_intervals(pair.two)) /
                        (static_cast<double>(npoints[pair.one]) + npoints[pair.two]);
    std::printf("Mean time = %f\n", mean);
    overlap.nearness = mean * 0.5;
    return overlap;
}

/// The first point of a partial, from place `from` on, near to `time`; 0 when there is none.
int32_t place_near(int32_t part, int32_t from, float time, double nearness) {
    for (int32_t j = from; j < npoints[part]; ++j) {
        if (std::fabs(static_cast<double>(parray[part][j].time) - time) < nearness) {
            return j;
        }
    }
    return 0;
}

Stretch find_stretch(int32_t part, const Overlap &overlap) {
    const int32_t first = place_near(part, 0, overlap.start, overlap.nearness);
    const int32_t last = place_near(part, first, overlap.end, overlap.nearness);
    return {part, first, last - first + 1};
}

/// Two points added as phasors, as a frequency below `base` Hz. The sines weigh the amplitudes
/// that are projected on the cosine already: that is the formula of record.
Breakpoint combine(const Breakpoint &p, const Breakpoint &q, float base) {
    const double p_phase = p.phase;
    const double q_phase = q.phase;
    const float u = static_cast<float>(db2amp(p.amp) * std::cos(p_phase));
    const float v = static_cast<float>(db2amp(q.amp) * std::cos(q_phase));
    const double x = static_cast<double>(u) + v;
    const double y = static_cast<double>(static_cast<float>(u * std::sin(p_phase))) +
                     static_cast<float>(v * std::sin(q_phase));
    Breakpoint merged = {};
    merged.time = static_cast<float>((static_cast<double>(p.time) + q.time) * 0.5);
    merged.amp = static_cast<float>(amp2db(std::sqrt(x * x + y * y)));
    merged.freq = base;
    if (merged.time != 0.0f) {
        merged.freq = base - static_cast<float>(std::atan2(y, x)) / merged.time;
    }
    return merged;
}

std::vector<Breakpoint> combine_stretches(const Stretch &one, const Stretch &two) {
    const float base = parray[one.first == 0 ? two.part : one.part][0].freq;
    std::vector<Breakpoint> merged;
    merged.reserve(static_cast<size_t>(one.count));
    for (int32_t k = 0; k < one.count; ++k) {
        merged.push_back(
            combine(parray[one.part][one.first + k], parray[two.part][two.first + k], base));
        const Breakpoint &point = merged.back();
        std::printf("%f\t%f\t%f\n", point.time, point.freq, point.amp);
    }
    return merged;
}

void delete_partial(int32_t part) {
    take_out_slot(part, false);
    --partials;
}

/// Puts the merged points over the stretch of the longer partial; the other one lies inside it.
void put_inside(const std::vector<Breakpoint> &merged, const Stretch &outer, const Stretch &inner) {
    own_points(outer.part);
    std::copy(merged.begin(), merged.end(), parray[outer.part] + outer.first);
    delete_partial(inner.part);
}

/// Lengthens the earlier partial by the merged points and the tail of the later one, which is
/// taken to start with the overlap.
void put_in_sequence(const std::vector<Breakpoint> &merged, const Stretch &earlier,
                     const Stretch &later) {
    const int32_t n = npoints[earlier.part];
    const int32_t tail = npoints[later.part] - later.count;
    resize_partial(earlier.part, n + tail);
    Breakpoint *points = parray[earlier.part];
    std::copy(merged.begin(), merged.end(), points + earlier.first);
    std::copy_n(parray[later.part] + later.count, tail, points + n);
    delete_partial(later.part);
}

void place_result(const std::vector<Breakpoint> &merged, const Stretch &one, const Stretch &two) {
    const bool one_is_longer = npoints[one.part] > one.count;
    const bool two_is_longer = npoints[two.part] > two.count;
    const float start_of_one = first_time(one.part);
    const float start_of_two = first_time(two.part);
    if (one_is_longer && !two_is_longer) {
        put_inside(merged, one, two);
    } else if (two_is_longer && !one_is_longer) {
        put_inside(merged, two, one);
    } else if (start_of_two < start_of_one) {
        put_in_sequence(merged, two, one);
    } else if (start_of_one < start_of_two) {
        put_in_sequence(merged, one, two);
    }
    // Partials that start together, neither inside the other, stay as they are.
}

} // namespace

void merge3d() {
    std::puts("MERGE");
    Pair pair;
    if (!choose_pair(pair)) {
        return;
    }
    std::printf("One: %d\tTwo: %d\n", pair.one, pair.two);
    const Overlap overlap = find_overlap(pair);
    const Stretch one = find_stretch(pair.one, overlap);
    const Stretch two = find_stretch(pair.two, overlap);
    std::printf("npone = %d;\tnptwo = %d\n", one.count, two.count);
    if (one.count != two.count || one.count < 1) {
        std::puts("Can't resolve merge");
        return;
    }
    place_result(combine_stretches(one, two), one, two);
}
