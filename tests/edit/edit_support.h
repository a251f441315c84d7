// tests/edit/edit_support.h -- what the tests of edits in place share: flags by hand, copies of
// all points to compare with, and the refreshes that commands run behind each edit.
#pragma once

#include "interact/selection.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "store/store.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

using Points = std::vector<std::vector<Breakpoint>>;

constexpr float nan_f = std::numeric_limits<float>::quiet_NaN();
constexpr float inf_f = std::numeric_limits<float>::infinity();

/// Flags points `first` to `last` of partial `i`.
inline void flag(int32_t i, int32_t first, int32_t last, uint16_t value = 1) {
    for (int32_t j = first; j <= last; ++j) {
        parray[i][j].selected = value;
    }
    selected = 1;
}

inline void flag_everything() {
    for (int32_t i = 0; i < partials; ++i) {
        flag(i, 0, npoints[i] - 1);
    }
}

/// A copy of every point.
inline Points all_points() {
    Points copy;
    for (int32_t i = 0; i < partials; ++i) {
        copy.emplace_back(parray[i], parray[i] + npoints[i]);
    }
    return copy;
}

/// Calls `change` with each flagged point of a copy.
template <typename Change> void for_flagged(Points &points, Change change) {
    for (auto &partial : points) {
        for (Breakpoint &point : partial) {
            if (point.selected == 1) {
                change(point);
            }
        }
    }
}

/// Bit-equal, or within `ulps` units in the last place; NaN equals NaN.
inline bool close_floats(float a, float b, int32_t ulps = 0) {
    if (std::isnan(a) || std::isnan(b)) {
        return std::isnan(a) && std::isnan(b);
    }
    if (std::signbit(a) != std::signbit(b)) {
        return ulps > 0 && a == b;
    }
    const int64_t distance =
        static_cast<int64_t>(std::bit_cast<uint32_t>(a)) - std::bit_cast<uint32_t>(b);
    return std::abs(distance) <= ulps;
}

/// Every field of every point; `ulps` is what freq may be off by.
inline void expect_points(const Points &want, int32_t ulps = 0) {
    ASSERT_EQ(static_cast<size_t>(partials), want.size());
    for (int32_t i = 0; i < partials; ++i) {
        const auto &partial = want[static_cast<size_t>(i)];
        ASSERT_EQ(static_cast<size_t>(npoints[i]), partial.size()) << "partial " << i;
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const Breakpoint &a = parray[i][j];
            const Breakpoint &b = partial[static_cast<size_t>(j)];
            SCOPED_TRACE("partial " + std::to_string(i) + " point " + std::to_string(j));
            EXPECT_TRUE(close_floats(a.time, b.time)) << a.time << " for " << b.time;
            EXPECT_TRUE(close_floats(a.freq, b.freq, ulps)) << a.freq << " for " << b.freq;
            EXPECT_TRUE(close_floats(a.amp, b.amp)) << a.amp << " for " << b.amp;
            EXPECT_TRUE(close_floats(a.phase, b.phase)) << a.phase << " for " << b.phase;
            EXPECT_TRUE(close_floats(a.logfreq, b.logfreq)) << a.logfreq << " for " << b.logfreq;
            EXPECT_TRUE(close_floats(a.scratch, b.scratch)) << a.scratch << " for " << b.scratch;
            EXPECT_EQ(a.ampunits, b.ampunits);
            EXPECT_EQ(a.selected, b.selected);
        }
    }
}

/// One partial of `n` points, 0.1 s apart from `start` on.
inline Partial even_partial(size_t n, float start, float freq, float amp) {
    Partial partial;
    for (size_t j = 0; j < n; ++j) {
        const float k = static_cast<float>(j);
        partial.push_back({start + k * 0.1f, freq + k * 7.3f, amp - k * 1.7f});
    }
    return partial;
}

/// Three partials of 9, 6 and 4 points with runs at the start, inside, at the end and alone.
inline void fill_with_runs() {
    fill_store({even_partial(9, 0.05f, 111.1f, -9.3f), even_partial(6, 0.3f, 333.3f, -21.7f),
                even_partial(4, 0.72f, 777.7f, -33.1f), even_partial(1, 0.9f, 900.9f, -50.0f)});
    recompute_everything();
    flag(0, 0, 3);
    flag(0, 5, 7);
    flag(1, 1, 2);
    flag(1, 4, 5);
    flag(2, 0, 3);
}

// The refreshes, named after the commands that run them.

inline void finish_levels() {
    recompute_amp(&maxamp, &minamp);
}

inline void finish_pitch() {
    recompute_all_pitch();
    recompute_logfreq();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
}

inline void finish_scale() {
    recompute_all_pitch();
    recompute_logfreq();
    recompute_times();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
}

inline void finish_retro() {
    recompute_times();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
}
