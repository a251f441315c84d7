// Pitch shifts, constant and gliding.

#include "edit/shifts.h"

#include "store/settings.h"
#include "tests/edit/edit_support.h"

namespace {

using PitchShift = StoreTest;
using PitchGlide = StoreTest;

/// Five points, evenly spaced at powers of two of a second, at frequencies with exact inverses.
void fill_exact() {
    fill_store({{{0.0f, 64.0f, 0.0f}, {0.5f, 128.0f, 0.0f}, {1.0f, 128.0f, 0.0f}},
                {{0.25f, 256.0f, 0.0f},
                 {0.5f, 256.0f, 0.0f},
                 {0.75f, 256.0f, 0.0f},
                 {1.0f, 256.0f, 0.0f},
                 {1.25f, 512.0f, 0.0f}}});
}

} // namespace

TEST_F(PitchShift, MultipliesEverySelectedFrequency) {
    fill_with_runs();
    for (const float ratio : {1.3348398f, 0.3f, 1.0f, 0.0f, -1.0f}) {
        Points expected = all_points();
        for_flagged(expected, [ratio](Breakpoint &point) { point.freq *= ratio; });
        EXPECT_EQ(printed([ratio] { pitch(ratio); }), "");
        expect_points(expected);
    }
}

TEST_F(PitchShift, TheHighestPointTakesTheRangeAlong) {
    fill_store(small_content());
    ASSERT_EQ(maxfreq, 1000.0f);
    ASSERT_EQ(minfreq, 100.0f);
    const float before = logmaxfreq;
    flag(3, 0, 0);
    pitch(2.0f);
    EXPECT_EQ(maxfreq, 2000.0f);
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_FLOAT_EQ(logmaxfreq, before + 1.0f);
    const float natural = std::log(20.0f);
    EXPECT_TRUE(close_floats(logmaxfreq, static_cast<float>(natural / 0.69314718055994530942), 2));
}

TEST_F(PitchShift, TheLowestPointTakesTheRangeAlong) {
    fill_store(small_content());
    flag(0, 0, 0);
    pitch(0.5f);
    EXPECT_EQ(minfreq, 50.0f);
    EXPECT_EQ(maxfreq, 1000.0f);
}

TEST_F(PitchShift, RaisingTheLowestPointRaisesTheRangeAboveItsNeighbour) {
    // The range follows the one point, although another point, 110 Hz, stays below.
    fill_store(small_content());
    flag(0, 0, 0);
    pitch(3.0f);
    EXPECT_EQ(minfreq, 300.0f);
    EXPECT_EQ(parray[0][1].freq, 110.0f);
}

TEST_F(PitchShift, APointOutsideTheTrackedRangeWidensIt) {
    fill_store(small_content());
    flag(1, 0, 0);
    pitch(3.0f);
    EXPECT_EQ(maxfreq, 1200.0f);
    pitch(0.05f);
    EXPECT_EQ(minfreq, 60.0f);
    EXPECT_EQ(maxfreq, 60.0f);
}

TEST_F(PitchShift, ALonePointAtBothEndsMovesBothOfThem) {
    fill_store({{{0.0f, 440.0f, 0.0f}}});
    ASSERT_EQ(minfreq, maxfreq);
    flag(0, 0, 0);
    pitch(1.5f);
    EXPECT_EQ(minfreq, 660.0f);
    EXPECT_EQ(maxfreq, 660.0f);
    EXPECT_EQ(logmaxfreq, 0.0f);
}

TEST_F(PitchShift, EachPointAtTheTopMultipliesTheRangeAsTheWalkMeetsIt) {
    // The first of two equal points takes the top to 2000; the second is then below it.
    fill_store({{{0.0f, 100.0f, 0.0f}, {0.1f, 1000.0f, 0.0f}, {0.2f, 1000.0f, 0.0f}}});
    flag(0, 1, 2);
    pitch(2.0f);
    EXPECT_EQ(maxfreq, 2000.0f);
    // Downward the first point takes the top with it; its twin, now above, comes to lie on it.
    pitch(0.5f);
    EXPECT_EQ(maxfreq, 1000.0f);
}

TEST_F(PitchShift, LeavesTheSpanItselfToTheRefresh) {
    fill_store(small_content());
    const float before = fspan;
    flag(3, 0, 0);
    pitch(2.0f);
    EXPECT_EQ(fspan, before);
    finish_pitch();
    EXPECT_EQ(fspan, 20.0f);
}

TEST_F(PitchShift, NothingSelectedChangesNoPoint) {
    fill_store(small_content());
    const Points before = all_points();
    pitch(2.0f);
    va_pitch(2.0f);
    expect_points(before);
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 1000.0f);
}

TEST_F(PitchShift, NoNumberAndInfinityAreMultipliedAsTheyAre) {
    for (const float ratio : {nan_f, inf_f, -inf_f, 3e38f}) {
        fill_store(small_content());
        flag_everything();
        Points expected = all_points();
        for_flagged(expected, [ratio](Breakpoint &point) { point.freq *= ratio; });
        pitch(ratio);
        expect_points(expected);
        finish_pitch();
    }
}

TEST_F(PitchGlide, TheMiddleOfThreePointsGetsTheRootOfTheFactor) {
    fill_exact();
    flag(0, 0, 2);
    va_pitch(2.0f);
    EXPECT_EQ(parray[0][0].freq, 64.0f);
    EXPECT_TRUE(close_floats(parray[0][1].freq, 128.0f * 1.41421356f, 2));
    EXPECT_NEAR(parray[0][1].freq / 128.0f, 1.41421, 0.00001);
    EXPECT_EQ(parray[0][2].freq, 256.0f);
}

TEST_F(PitchGlide, ARunOfTwoPointsIsNoCandidate) {
    fill_store(small_content());
    flag(0, 1, 2);
    flag(2, 0, 1);
    verbose = 1;
    const Points before = all_points();
    EXPECT_EQ(printed([] { va_pitch(2.0f); }),
              "Time-varying pitch shift:\nnumber of candidates: 0\n");
    expect_points(before);
}

TEST_F(PitchGlide, OnlyPointsFlaggedOneMakeACandidate) {
    fill_exact();
    flag(1, 0, 3);
    parray[1][1].selected = 2;
    parray[1][2].selected = 2;
    verbose = 1;
    EXPECT_EQ(printed([] { va_pitch(2.0f); }),
              "Time-varying pitch shift:\nnumber of candidates: 0\n");
    flag(1, 1, 1);
    EXPECT_EQ(printed([] { va_pitch(2.0f); }),
              "Time-varying pitch shift:\nnumber of candidates: 1\n");
    EXPECT_EQ(parray[1][3].freq, 512.0f);
}

TEST_F(PitchGlide, MatchesItsFormulaOnEveryPoint) {
    for (const float ratio : {2.0f, 0.5f, 1.0594631f, 3.9f}) {
        fill_with_runs();
        Points expected = all_points();
        const int32_t long_runs[][3] = {{0, 0, 3}, {0, 5, 7}, {2, 0, 3}};
        for (const auto &[i, s, e] : long_runs) {
            auto &points = expected[static_cast<size_t>(i)];
            const float start = points[static_cast<size_t>(s)].time;
            const float end = points[static_cast<size_t>(e)].time;
            for (int32_t j = s; j <= e; ++j) {
                Breakpoint &point = points[static_cast<size_t>(j)];
                const float place = (point.time - start) / (end - start);
                const double factor = std::pow(static_cast<double>(ratio), place);
                point.freq *= static_cast<float>(factor);
            }
        }
        EXPECT_EQ(printed([ratio] { va_pitch(ratio); }), "");
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                // The glide brings the log positions up to date; the range test looks at them.
                expected[static_cast<size_t>(i)][static_cast<size_t>(j)].logfreq =
                    parray[i][j].logfreq;
            }
        }
        expect_points(expected, 2);
    }
}

TEST_F(PitchGlide, RefreshesRangeLogPositionsAndAverages) {
    fill_exact();
    flag(1, 0, 4);
    peval[0].start = peval[0].dur = 99.0f;
    va_pitch(4.0f);
    EXPECT_EQ(maxfreq, 2048.0f);
    EXPECT_EQ(minfreq, 64.0f);
    EXPECT_EQ(fspan, 32.0f);
    EXPECT_FLOAT_EQ(logmaxfreq, 5.0f);
    EXPECT_EQ(parray[0][0].logfreq, 0.0f);
    EXPECT_FLOAT_EQ(parray[0][1].logfreq, 0.2f);
    EXPECT_FLOAT_EQ(parray[1][4].logfreq, 1.0f);
    EXPECT_EQ(peval[0].start, 0.0f);
    EXPECT_EQ(peval[0].dur, 1.0f);
    EXPECT_FLOAT_EQ(peval[0].avgfreq, 320.0f / 3.0f);
}

TEST_F(PitchGlide, DebugLinesTellEachCandidateAndEachPoint) {
    fill_exact();
    flag(0, 0, 2);
    flag(1, 2, 4);
    dbp = 1;
    EXPECT_EQ(printed([] { va_pitch(2.0f); }),
              "cands[0] @[0]: 0-->2 (0.000000-->1.000000 sec.) @96.000000Hz\n"
              "cands[1] @[1]: 2-->4 (0.750000-->1.250000 sec.) @307.200012Hz\n"
              "TANFR = 2.000000x/s\n"
              "t = 0.000000 dur = 1.000000 t/dur = 0.000000\n"
              "t = 0.500000 dur = 1.000000 t/dur = 0.500000\n"
              "t = 1.000000 dur = 1.000000 t/dur = 1.000000\n"
              "TANFR = 2.000000x/s\n"
              "t = 0.000000 dur = 0.500000 t/dur = 0.000000\n"
              "t = 0.250000 dur = 0.500000 t/dur = 0.500000\n"
              "t = 0.500000 dur = 0.500000 t/dur = 1.000000\n");
}

TEST_F(PitchGlide, VerboseCountsComeBeforeTheDebugLines) {
    fill_exact();
    verbose = 1;
    dbp = 1;
    EXPECT_EQ(printed([] { va_pitch(2.0f); }),
              "Time-varying pitch shift:\nnumber of candidates: 0\n");
}

TEST_F(PitchGlide, ARunWithoutDurationIsNotANumber) {
    fill_store({{{0.5f, 100.0f, 0.0f}, {0.5f, 200.0f, 0.0f}, {0.5f, 300.0f, 0.0f}}});
    flag(0, 0, 2);
    va_pitch(2.0f);
    for (int32_t j = 0; j < 3; ++j) {
        EXPECT_TRUE(std::isnan(parray[0][j].freq)) << j;
    }
}

TEST_F(PitchGlide, FactorsOutOfTheOrdinaryFollowThePower) {
    const struct {
        float ratio, middle, last;
    } cases[] = {
        {0.0f, 0.0f, 0.0f}, {-2.0f, nan_f, -256.0f}, {inf_f, inf_f, inf_f}, {nan_f, nan_f, nan_f}};
    for (const auto &c : cases) {
        fill_exact();
        flag(0, 0, 2);
        va_pitch(c.ratio);
        EXPECT_EQ(parray[0][0].freq, 64.0f) << c.ratio;
        EXPECT_TRUE(close_floats(parray[0][1].freq, c.middle)) << c.ratio;
        EXPECT_TRUE(close_floats(parray[0][2].freq, c.last)) << c.ratio;
        finish_pitch();
    }
}

TEST_F(PitchGlide, AnEmptyStoreIsLeftAlone) {
    EXPECT_EQ(printed([] { va_pitch(2.0f); }), "");
    EXPECT_EQ(minfreq, 22050.0f);
    EXPECT_EQ(maxfreq, 0.0f);
}
