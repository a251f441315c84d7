// Random structural edits of small random stores, each followed by the menu's refresh: what any
// store must keep, and for each command what a plain model of it leaves.
#include "edit/extend.h"
#include "edit/join.h"
#include "edit/merge.h"
#include "edit/pick.h"
#include "edit/remove.h"
#include "edit/split.h"

#include "display/view.h"
#include "interact/selection.h"
#include "store/settings.h"
#include "tests/edit/structure.h"
#include "tests/support/console.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace structure;

namespace {

constexpr int store_count = 3000;
constexpr int commands_each = 6;

using Points = std::vector<Breakpoint>;

class Edits : public StoreTest {
  protected:
    std::mt19937 random{20240611};

    int32_t below(int32_t n) {
        return std::uniform_int_distribution<int32_t>(0, n - 1)(random);
    }
    float between(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    }

    Partial random_partial() {
        Partial partial;
        float time = 0.1f * static_cast<float>(below(12));
        const int32_t n = 1 + below(7);
        for (int32_t j = 0; j < n; ++j) {
            partial.push_back({time, between(30.0f, 5000.0f), between(-110.0f, 0.0f)});
            // Equal times now and then, equal steps mostly, so that overlaps can be merged.
            time += below(8) == 0 ? 0.0f : below(5) == 0 ? between(0.01f, 0.2f) : 0.1f;
        }
        return partial;
    }

    void random_store() {
        std::vector<Partial> content;
        for (int32_t n = 1 + below(7); n > 0; --n) {
            content.push_back(random_partial());
        }
        fill_store(content);
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                parray[i][j].phase = between(0.0f, 6.28f);
            }
        }
        flat = static_cast<decltype(flat)>(below(2));
        bps = 1;
        verbose = below(2);
        dbp = below(2);
    }

    void random_selection() {
        const int32_t one_in = 1 + below(20);
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                parray[i][j].selected = below(one_in) == 0 ? 1 : 0;
            }
        }
    }

    /// A number of a partial, now and then one that names none.
    int32_t some_partial() {
        return below(12) == 0 ? below(2 * partials + 4) - partials - 2 : below(partials);
    }

    /// A number of a point of partial `i`, now and then one that names none.
    int32_t some_point(int32_t i) {
        const int32_t n = i >= 0 && i < partials ? npoints[i] : 3;
        return below(12) == 0 ? below(2 * n + 4) - n - 2 : below(n);
    }

    void check_store(bool ordered);

    void try_multiple_removal();
    void try_removal();
    void try_split();
    void try_join();
    void try_extension();
    bool try_merge();
    void try_pick();
    bool random_command();
};

void Edits::check_store(bool ordered) {
    ASSERT_GE(partials, 1);
    ASSERT_GE(sndstart, 0.0f);
    for (int32_t i = 0; i < partials; ++i) {
        ASSERT_NE(parray[i], nullptr);
        ASSERT_GE(npoints[i], 1);
        ASSERT_EQ(peval[i].start, parray[i][0].time);
        ASSERT_EQ(peval[i].dur, parray[i][npoints[i] - 1].time - parray[i][0].time);
        ASSERT_GE(parray[i][0].time, sndstart);
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const Breakpoint &point = parray[i][j];
            ASSERT_GE(point.freq, minfreq);
            ASSERT_LE(point.freq, maxfreq);
            ASSERT_GE(point.amp, minamp);
            ASSERT_LE(point.amp, maxamp);
            if (ordered && j > 0) {
                ASSERT_GE(point.time, parray[i][j - 1].time);
            }
            if (minfreq > 0.0f && maxfreq > minfreq) {
                ASSERT_GE(point.logfreq, 0.0f);
                ASSERT_LE(point.logfreq, 1.00001f);
            }
        }
    }
}

bool any_selected(const Points &points) {
    return std::any_of(points.begin(), points.end(),
                       [](const Breakpoint &point) { return point.selected == 1; });
}

/// Phases aside, which a move derives anew.
bool same_but_phases(Points a, Points b) {
    for (Points *points : {&a, &b}) {
        for (Breakpoint &point : *points) {
            point.phase = 0.0f;
        }
    }
    return same_points(a, b);
}

void Edits::try_multiple_removal() {
    const Snapshot before = snapshot();
    Snapshot want;
    std::copy_if(before.begin(), before.end(), std::back_inserter(want),
                 [](const Points &points) { return !any_selected(points); });
    printed([] { remove3d(-1, -1, 1); });
    const Snapshot after = snapshot();
    if (want.empty()) {
        ASSERT_EQ(after.size(), 1u);
        ASSERT_TRUE(std::any_of(before.begin(), before.end(), [&](const Points &points) {
            return same_but_phases(points, after[0]);
        }));
        return;
    }
    ASSERT_EQ(after.size(), want.size());
    bool moved = false;
    for (size_t i = 0; i < want.size(); ++i) {
        moved = moved || !same_but_phases(before[i], want[i]) || any_selected(before[i]);
        ASSERT_TRUE(same_but_phases(after[i], want[i]));
        if (moved) {
            ASSERT_EQ(phases(static_cast<int32_t>(i)), chained(want[i], want[i][0].phase));
        } else {
            ASSERT_TRUE(same_points(after[i], want[i]));
        }
    }
}

void Edits::try_removal() {
    const int32_t part = some_partial();
    const int32_t point = some_point(part);
    const Snapshot before = snapshot();
    Snapshot want = before;
    if (part >= 0 && part < partials && point >= 0 && point < npoints[part]) {
        Points &points = want[static_cast<size_t>(part)];
        if (point == npoints[part] - 1 && npoints[part] < 4) {
            if (partials > 1) {
                want.erase(want.begin() + part);
            }
        } else {
            points.erase(points.begin() + point);
        }
    }
    printed([=] { remove3d(part, point, 0); });
    const Snapshot after = snapshot();
    ASSERT_EQ(after.size(), want.size());
    for (size_t i = 0; i < want.size(); ++i) {
        ASSERT_EQ(after[i].size(), want[i].size());
        for (size_t j = 0; j < want[i].size(); ++j) {
            ASSERT_EQ(after[i][j].time, want[i][j].time);
            ASSERT_EQ(after[i][j].selected, want[i][j].selected);
        }
    }
}

void Edits::try_split() {
    const int32_t part = some_partial();
    const int32_t point = some_point(part);
    const FoundPoints points = {part, point, part, point + (below(2) == 0 ? 1 : -1), 2};
    const int32_t cut = std::max(points.point0, points.point1);
    Snapshot want = snapshot();
    printed([=] { split3d(points); });
    const Snapshot after = snapshot();
    const size_t at = static_cast<size_t>(part);
    if (part < 0 || at >= want.size() || cut < 1 || cut >= static_cast<int32_t>(want[at].size())) {
        ASSERT_TRUE(same_points(after, want));
        return;
    }
    const Points whole = want[at];
    want.erase(want.begin() + part);
    ASSERT_EQ(after.size(), want.size() + 2);
    for (size_t i = 0; i < want.size(); ++i) {
        ASSERT_TRUE(same_points(after[i], want[i]));
    }
    Points pieces = after[after.size() - 2];
    ASSERT_EQ(static_cast<int32_t>(pieces.size()), cut);
    ASSERT_EQ(pieces.back().amp, -90.0f);
    pieces.insert(pieces.end(), after.back().begin(), after.back().end());
    ASSERT_EQ(pieces.size(), whole.size());
    for (size_t j = 0; j < whole.size(); ++j) {
        ASSERT_EQ(pieces[j].time, whole[j].time);
        ASSERT_EQ(pieces[j].freq, whole[j].freq);
        ASSERT_EQ(pieces[j].selected, whole[j].selected);
    }
}

void Edits::try_join() {
    const int32_t a = some_partial();
    const int32_t b = some_partial();
    const auto end_of = [](int32_t i) { return i >= 0 && i < partials ? npoints[i] - 1 : 0; };
    const bool fits = verify_found(a, end_of(a), b, 0) || verify_found(a, 0, b, end_of(b));
    const Snapshot before = snapshot();
    if (!fits) {
        return;
    }
    printed([=] { join3d(a, b); });
    const Snapshot after = snapshot();
    ASSERT_EQ(after.size(), before.size() - 1);
    size_t place = 0;
    for (size_t i = 0; i < before.size(); ++i) {
        if (static_cast<int32_t>(i) != a && static_cast<int32_t>(i) != b) {
            ASSERT_EQ(after[place].size(), before[i].size());
            ASSERT_EQ(after[place][0].freq, before[i][0].freq);
            ++place;
        }
    }
    ASSERT_EQ(after.back().size(),
              before[static_cast<size_t>(a)].size() + before[static_cast<size_t>(b)].size());
    ASSERT_EQ(phases(partials - 1), chained(after.back(), after.back()[0].phase));
}

void Edits::try_extension() {
    const int32_t part = some_partial();
    const int32_t additional = below(8) - 2;
    Snapshot want = snapshot();
    printed([=] { extend3d(part, additional); });
    const Snapshot after = snapshot();
    if (part < 0 || part >= static_cast<int32_t>(want.size())) {
        ASSERT_TRUE(same_points(after, want));
        return;
    }
    const Points whole = want[static_cast<size_t>(part)];
    want.erase(want.begin() + part);
    ASSERT_EQ(after.size(), want.size() + 1);
    for (size_t i = 0; i < want.size(); ++i) {
        ASSERT_TRUE(same_points(after[i], want[i]));
    }
    ASSERT_EQ(after.back().size(), whole.size() + static_cast<size_t>(std::max(additional, 0)));
    ASSERT_EQ(after.back().back().amp, -120.0f);
    ASSERT_EQ(after.back().back().freq, whole.back().freq);
}

/// Whether the store was changed. Merged points may leave the order of times.
bool Edits::try_merge() {
    const Snapshot before = snapshot();
    int64_t chosen = 0;
    for (const Points &points : before) {
        chosen += any_selected(points) ? 1 : 0;
    }
    printed(merge3d);
    const Snapshot after = snapshot();
    if (after.size() == before.size()) {
        EXPECT_TRUE(same_points(after, before));
        return false;
    }
    EXPECT_EQ(chosen, 2);
    EXPECT_EQ(after.size(), before.size() - 1);
    int64_t untouched = 0;
    for (const Points &points : before) {
        for (const Points &kept : after) {
            if (!any_selected(points) && same_points(points, kept)) {
                ++untouched;
                break;
            }
        }
    }
    EXPECT_EQ(untouched, static_cast<int64_t>(before.size()) - 2);
    return true;
}

void Edits::try_pick() {
    const char *const replies[] = {"size > 2\n",    "size < 4\n",   "start < 0.5\n",
                                   "start > 0.3\n", "endt < 0.8\n", "endt 0.5 0.9\n"};
    const Snapshot before = snapshot();
    conversation(replies[below(6)], [] { pick(); });
    for (int32_t i = 0; i < partials; ++i) {
        const Points &old = before[static_cast<size_t>(i)];
        Points now(parray[i], parray[i] + npoints[i]);
        ASSERT_EQ(now.size(), old.size());
        const bool whole = std::all_of(now.begin(), now.end(),
                                       [](const Breakpoint &p) { return p.selected == 1; });
        for (size_t j = 0; j < now.size(); ++j) {
            ASSERT_TRUE(whole || now[j].selected == old[j].selected);
            now[j].selected = old[j].selected;
        }
        ASSERT_TRUE(same_points(now, old));
    }
}

/// One command with the refresh that belongs to it; false when the times may be out of order.
bool Edits::random_command() {
    bool merged = false;
    switch (below(7)) {
    case 0:
        try_multiple_removal();
        break;
    case 1:
        try_removal();
        break;
    case 2:
        try_split();
        break;
    case 3:
        try_join();
        break;
    case 4:
        try_extension();
        break;
    case 5:
        merged = try_merge();
        refresh(false);
        return !merged;
    default:
        try_pick();
    }
    refresh();
    return true;
}

TEST_F(Edits, RandomCommandsKeepTheStoreWhole) {
    int merges = 0;
    for (int k = 0; k < store_count; ++k) {
        SCOPED_TRACE("store " + std::to_string(k));
        random_store();
        bool ordered = true;
        for (int c = 0; c < commands_each && ordered; ++c) {
            random_selection();
            ordered = random_command();
            check_store(ordered);
            ASSERT_FALSE(HasFailure()) << "command " << c;
        }
        merges += ordered ? 0 : 1;
    }
    EXPECT_GT(merges, store_count / 20) << "the stores must be such that merges happen";
}

} // namespace
