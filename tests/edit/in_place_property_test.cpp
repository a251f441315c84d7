// What every edit in place promises, on many small random stores and selections: the shape of
// the store and the flags stay, unselected points keep what the edit does not own, and the
// refreshed ranges hold.

#include "edit/mirror.h"
#include "edit/retro.h"
#include "edit/scale.h"
#include "edit/shifts.h"
#include "tests/edit/edit_support.h"

#include <algorithm>
#include <functional>
#include <random>

namespace {

using InPlace = StoreTest;

/// What an edit may change of points that are not selected.
enum Unselected { keeps_all, keeps_all_but_time };

struct Edit {
    const char *name;
    std::function<void(float)> apply; // with a random number from -3 to 3
    std::function<void()> finish;
    Unselected unselected;
    bool changes_time, changes_freq, changes_amp;
};

const Edit edits[] = {
    {"fade in", [](float) { fade(1); }, finish_levels, keeps_all, false, false, true},
    {"fade out", [](float) { fade(0); },
     [] {
         finish_levels();
         recompute_all_phase();
     },
     keeps_all, false, false, true},
    {"gain", [](float x) { gain(x * 20.0f); }, finish_levels, keeps_all, false, false, true},
    {"pitch", [](float x) { pitch(std::exp2(x)); }, finish_pitch, keeps_all, false, true, false},
    {"glide", [](float x) { va_pitch(std::exp2(x)); }, finish_pitch, keeps_all, false, true, false},
    {"time", [](float x) { timesh(x); }, recompute_all_phase, keeps_all_but_time, true, false,
     false},
    {"stretch", [](float x) { newscale(std::exp2(x), 1.0f, 1.0f); }, finish_scale,
     keeps_all_but_time, true, false, false},
    {"spread", [](float x) { newscale(1.0f, x, 1.0f); }, finish_scale, keeps_all, false, true,
     false},
    {"compand", [](float x) { newscale(1.0f, 1.0f, x); }, finish_scale, keeps_all, false, false,
     true},
    {"retro", [](float) { retro(); }, finish_retro, keeps_all, false, true, true},
    {"reverse", [](float) { reverse(); }, finish_retro, keeps_all, true, true, true},
    {"mirror", [](float x) { mirror3d(std::exp2(x + 8.0f)); }, finish_pitch, keeps_all, false, true,
     false},
    {"mirror pitch", [](float x) { mirror_pitch(std::exp2(x + 8.0f)); }, finish_pitch, keeps_all,
     false, true, false},
};

/// One to five partials of one to eight points, some times equal, some levels silent.
void random_store(std::mt19937 &random) {
    const auto below = [&random](uint32_t n) { return static_cast<uint32_t>(random() % n); };
    std::vector<Partial> content(1 + below(5));
    for (Partial &partial : content) {
        float time = static_cast<float>(below(64)) / 32.0f;
        const uint32_t count = 1 + below(8);
        for (uint32_t j = 0; j < count; ++j) {
            partial.push_back({time, 30.0f + static_cast<float>(below(40000)) / 7.0f,
                               below(9) == 0 ? -140.0f : -static_cast<float>(below(900)) / 9.0f});
            time += static_cast<float>(below(4)) / 16.0f;
        }
    }
    fill_store(content);
}

/// Everything, nothing, whole partials, or points by chance.
void random_selection(std::mt19937 &random) {
    const uint32_t kind = random() % 4;
    for (int32_t i = 0; i < partials; ++i) {
        const bool whole = kind == 0 || (kind == 2 && random() % 2 == 0);
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].selected = whole || (kind == 3 && random() % 3 != 0) ? 1 : 0;
        }
    }
}

void expect_untouched(const Points &before, const Edit &edit) {
    ASSERT_EQ(static_cast<size_t>(partials), before.size());
    for (int32_t i = 0; i < partials; ++i) {
        const auto &points = before[static_cast<size_t>(i)];
        ASSERT_EQ(static_cast<size_t>(npoints[i]), points.size());
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const Breakpoint &now = parray[i][j];
            const Breakpoint &then = points[static_cast<size_t>(j)];
            const bool mine = then.selected == 1;
            EXPECT_EQ(now.selected, then.selected);
            EXPECT_EQ(now.ampunits, then.ampunits);
            EXPECT_EQ(now.scratch, 0.0f);
            EXPECT_TRUE(close_floats(now.phase, then.phase));
            if (!edit.changes_time || (!mine && edit.unselected == keeps_all)) {
                EXPECT_TRUE(close_floats(now.time, then.time)) << now.time << " " << then.time;
            }
            if (!edit.changes_freq || !mine) {
                EXPECT_TRUE(close_floats(now.freq, then.freq));
            }
            if (!edit.changes_amp || !mine) {
                EXPECT_TRUE(close_floats(now.amp, then.amp));
            }
        }
    }
}

/// The refreshed ranges, whatever the edit did.
void expect_ranges() {
    EXPECT_GE(sndstart, 0.0f);
    for (int32_t i = 0; i < partials; ++i) {
        EXPECT_GE(parray[i][0].time, 0.0f);
        for (int32_t j = 0; j < npoints[i]; ++j) {
            EXPECT_FALSE(parray[i][j].freq < minfreq);
            EXPECT_FALSE(parray[i][j].freq > maxfreq);
        }
    }
}

/// The largest step back from one point to the next, in seconds; 0 when there is none.
float worst_step_back() {
    float worst = 0.0f;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 1; j < npoints[i]; ++j) {
            worst = std::max(worst, parray[i][j - 1].time - parray[i][j].time);
        }
    }
    return worst;
}

} // namespace

TEST_F(InPlace, ShapeFlagsAndUnselectedPointsOutliveEveryEdit) {
    std::mt19937 random(20240607);
    for (int32_t round = 0; round < 400; ++round) {
        random_store(random);
        random_selection(random);
        const Points start = all_points();
        for (const Edit &edit : edits) {
            SCOPED_TRACE(std::string(edit.name) + " in round " + std::to_string(round));
            std::vector<Partial> content;
            for (const auto &partial : start) {
                content.emplace_back();
                for (const Breakpoint &point : partial) {
                    content.back().push_back({point.time, point.freq, point.amp});
                }
            }
            fill_store(content);
            for (int32_t i = 0; i < partials; ++i) {
                for (int32_t j = 0; j < npoints[i]; ++j) {
                    parray[i][j].selected =
                        start[static_cast<size_t>(i)][static_cast<size_t>(j)].selected;
                }
            }
            const Points before = all_points();
            const float x = static_cast<float>(random() % 6000) / 1000.0f - 3.0f;
            printed([&] { edit.apply(x); });
            expect_untouched(before, edit);
            edit.finish();
            expect_ranges();
            if (HasFailure()) {
                return;
            }
        }
    }
}

TEST_F(InPlace, MovedTimesStayInOrder) {
    std::mt19937 random(31337);
    for (int32_t round = 0; round < 500; ++round) {
        random_store(random);
        random_selection(random);
        const float x = static_cast<float>(random() % 4000) / 1000.0f;
        printed([x] { timesh(x); });
        ASSERT_EQ(worst_step_back(), 0.0f) << "round " << round << " by " << x;
    }
}

TEST_F(InPlace, StretchedTimesStayInOrderButForTheLastPlace) {
    // Points that share a time come apart by rounding, to either side.
    std::mt19937 random(31338);
    for (int32_t round = 0; round < 500; ++round) {
        random_store(random);
        random_selection(random);
        const float x = std::exp2(static_cast<float>(random() % 4000) / 1000.0f - 2.0f);
        printed([x] { newscale(x, 1.0f, 1.0f); });
        finish_scale();
        ASSERT_LE(worst_step_back(), 1e-5f) << "round " << round << " by " << x;
    }
}

TEST_F(InPlace, WildNumbersNeverBreakTheStore) {
    const float wild[] = {0.0f, -0.0f, 1e-38f, 1e38f, -1e38f, inf_f, -inf_f, nan_f, 1e-45f};
    std::mt19937 random(4711);
    for (int32_t round = 0; round < 60; ++round) {
        random_store(random);
        random_selection(random);
        for (int32_t k = 0; k < 6; ++k) {
            Breakpoint &point = parray[random() % static_cast<uint32_t>(partials)][0];
            point.freq = k == 0 ? wild[random() % 9] : point.freq;
            point.time = k == 1 ? wild[random() % 9] : point.time;
            point.amp = k == 2 ? wild[random() % 9] : point.amp;
        }
        const int32_t count = partials;
        printed([&wild, &random] {
            for (int32_t k = 0; k < 20; ++k) {
                const float x = wild[random() % 9];
                switch (random() % 8) {
                case 0:
                    fade(static_cast<int32_t>(random() % 2));
                    finish_levels();
                    break;
                case 1:
                    gain(x);
                    finish_levels();
                    break;
                case 2:
                    pitch(x);
                    finish_pitch();
                    break;
                case 3:
                    va_pitch(x);
                    finish_pitch();
                    break;
                case 4:
                    timesh(x);
                    recompute_all_phase();
                    break;
                case 5:
                    newscale(x, wild[random() % 9], wild[random() % 9]);
                    finish_scale();
                    break;
                case 6:
                    retro();
                    reverse();
                    finish_retro();
                    break;
                default:
                    mirror3d(x);
                    mirror_pitch(x);
                    finish_pitch();
                    break;
                }
            }
        });
        ASSERT_EQ(partials, count);
    }
}
