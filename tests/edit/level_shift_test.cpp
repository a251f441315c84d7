// Fades and gain.

#include "edit/shifts.h"

#include "tests/edit/edit_support.h"

namespace {

using LevelShift = StoreTest;

Breakpoint &want(Points &points, int32_t i, int32_t j) {
    return points[static_cast<size_t>(i)][static_cast<size_t>(j)];
}

/// The runs of fill_with_runs: partial, first, last.
constexpr int32_t runs[][3] = {{0, 0, 3}, {0, 5, 7}, {1, 1, 2}, {1, 4, 5}, {2, 0, 3}};

} // namespace

TEST_F(LevelShift, FadeInTakesNinetySixFromTheFirstPointAndNothingFromTheLast) {
    fill_store({even_partial(5, 0.0f, 100.0f, 0.0f)});
    for (int32_t j = 0; j < 5; ++j) {
        parray[0][j].amp = -1.0f;
    }
    flag(0, 0, 4);
    fade(1);
    const float levels[] = {-97.0f, -73.0f, -49.0f, -25.0f, -1.0f};
    for (int32_t j = 0; j < 5; ++j) {
        EXPECT_EQ(parray[0][j].amp, levels[j]) << j;
    }
}

TEST_F(LevelShift, FadeOutKeepsTheFirstPointAndTakesNinetySixFromTheLast) {
    fill_store({even_partial(5, 0.0f, 100.0f, 0.0f)});
    for (int32_t j = 0; j < 5; ++j) {
        parray[0][j].amp = -1.0f;
    }
    flag(0, 0, 4);
    fade(0);
    const float levels[] = {-1.0f, -25.0f, -49.0f, -73.0f, -97.0f};
    for (int32_t j = 0; j < 5; ++j) {
        EXPECT_EQ(parray[0][j].amp, levels[j]) << j;
    }
}

TEST_F(LevelShift, FadeInMatchesItsFormulaOnEveryPoint) {
    fill_with_runs();
    Points expected = all_points();
    for (const auto &[i, s, e] : runs) {
        for (int32_t j = s; j <= e; ++j) {
            const float span = static_cast<float>(e - s);
            const float ramp = 1.0f - static_cast<float>(j - s) / span;
            want(expected, i, j).amp = want(expected, i, j).amp - ramp * 96.0f;
        }
    }
    fade(1);
    expect_points(expected);
}

TEST_F(LevelShift, FadeOutMatchesItsFormulaOnEveryPoint) {
    fill_with_runs();
    Points expected = all_points();
    for (const auto &[i, s, e] : runs) {
        for (int32_t j = s; j <= e; ++j) {
            const float span = static_cast<float>(e - s);
            want(expected, i, j).amp += static_cast<float>((j - s) * -96) / span;
        }
    }
    fade(0);
    expect_points(expected);
}

TEST_F(LevelShift, TheRampKeepsSinglePrecision) {
    // Somewhere on a span of 7 the same in double would differ in the last place.
    fill_store({even_partial(8, 0.0f, 100.0f, 0.0f)});
    for (int32_t j = 0; j < 8; ++j) {
        parray[0][j].amp = 0.0f;
    }
    flag(0, 0, 7);
    fade(1);
    bool differs = false;
    for (int32_t j = 0; j < 8; ++j) {
        const float single = (1.0f - static_cast<float>(j) / 7.0f) * 96.0f;
        EXPECT_EQ(parray[0][j].amp, 0.0f - single) << j;
        differs = differs || single != static_cast<float>((1.0 - j / 7.0) * 96.0);
    }
    EXPECT_TRUE(differs);
}

TEST_F(LevelShift, TheFadeOutMultipliesBeforeItDivides) {
    bool order_matters = false;
    for (int32_t span = 1; span < 40; ++span) {
        fill_store({even_partial(static_cast<size_t>(span) + 1, 0.0f, 100.0f, 0.0f)});
        for (int32_t j = 0; j <= span; ++j) {
            parray[0][j].amp = 0.0f;
        }
        flag(0, 0, span);
        fade(0);
        for (int32_t j = 0; j <= span; ++j) {
            const float whole = static_cast<float>(j * -96) / static_cast<float>(span);
            const float place = static_cast<float>(j) / static_cast<float>(span);
            EXPECT_EQ(parray[0][j].amp, whole) << j << " of " << span;
            order_matters = order_matters || whole != place * -96.0f;
        }
    }
    EXPECT_TRUE(order_matters);
}

TEST_F(LevelShift, TwoRunsOfAPartialFadeEachFromTheirOwnFirstPoint) {
    fill_store({{{0.0f, 100.0f, -1.0f},
                 {0.1f, 100.0f, -1.0f},
                 {0.2f, 100.0f, -1.0f},
                 {0.3f, 100.0f, -1.0f},
                 {0.4f, 100.0f, -1.0f},
                 {0.5f, 100.0f, -1.0f}}});
    flag(0, 0, 1);
    flag(0, 3, 5);
    fade(1);
    const float levels[] = {-97.0f, -1.0f, -1.0f, -97.0f, -49.0f, -1.0f};
    for (int32_t j = 0; j < 6; ++j) {
        EXPECT_EQ(parray[0][j].amp, levels[j]) << j;
    }
}

TEST_F(LevelShift, TheRampTakesNoAccountOfTime) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {5.0f, 100.0f, 0.0f}, {5.1f, 100.0f, 0.0f}}});
    flag(0, 0, 2);
    fade(0);
    EXPECT_EQ(parray[0][1].amp, -48.0f);
}

TEST_F(LevelShift, FadeOfASinglePointIsNotANumber) {
    for (const int32_t mode : {1, 0}) {
        fill_store(small_content());
        flag(0, 2, 2);
        flag(3, 0, 0);
        Points expected = all_points();
        want(expected, 0, 2).amp = nan_f;
        want(expected, 3, 0).amp = nan_f;
        fade(mode);
        expect_points(expected);
    }
}

TEST_F(LevelShift, AnyModeButOneFadesOut) {
    for (const int32_t mode : {0, 2, -1, std::numeric_limits<int32_t>::min()}) {
        fill_store(small_content());
        flag(1, 0, 2);
        fade(mode);
        EXPECT_EQ(parray[1][0].amp, -12.0f) << mode;
        EXPECT_EQ(parray[1][2].amp, -114.0f) << mode;
    }
}

TEST_F(LevelShift, FadeAndGainPrintNothingAndKeepTheSelection) {
    fill_with_runs();
    EXPECT_EQ(printed([] {
                  fade(1);
                  fade(0);
                  gain(1.0f);
              }),
              "");
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(parray[0][3].selected, 1);
    EXPECT_EQ(parray[0][4].selected, 0);
}

TEST_F(LevelShift, FadesAndGainWithNothingSelectedChangeNothing) {
    fill_store(small_content());
    const Points before = all_points();
    fade(1);
    fade(0);
    gain(12.0f);
    expect_points(before);
}

TEST_F(LevelShift, GainAddsDecibelsToEverySelectedPoint) {
    fill_with_runs();
    for (const float decibels : {6.5f, -0.1f, 0.0f, 1e30f, inf_f, -inf_f, nan_f}) {
        Points expected = all_points();
        for_flagged(expected, [decibels](Breakpoint &point) { point.amp += decibels; });
        gain(decibels);
        expect_points(expected);
    }
}

TEST_F(LevelShift, AFlagOtherThanOneIsNotSelectedForGain) {
    fill_store(small_content());
    flag(0, 1, 1, 2);
    const Points before = all_points();
    gain(3.0f);
    expect_points(before);
}
