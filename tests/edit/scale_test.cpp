// Stretching time, spreading pitch and companding level.

#include "edit/scale.h"

#include "tests/edit/edit_support.h"

namespace {

using ScaleTime = StoreTest;
using ScalePitch = StoreTest;
using ScaleLevel = StoreTest;
using ScaleGuard = StoreTest;

std::string scale(float stretch, float exponent, float compand) {
    return printed([=] { newscale(stretch, exponent, compand); });
}

/// One partial of these values, a point each 0.25 s from `start` on.
Partial partial_of(const std::vector<float> &freqs, const std::vector<float> &amps,
                   float start = 0.0f) {
    Partial partial;
    for (size_t j = 0; j < freqs.size(); ++j) {
        partial.push_back({start + 0.25f * static_cast<float>(j), freqs[j], amps[j]});
    }
    return partial;
}

Partial times_of(const std::vector<float> &times) {
    Partial partial;
    for (const float time : times) {
        partial.push_back({time, 100.0f, -10.0f});
    }
    return partial;
}

void expect_times(int32_t i, const std::vector<float> &times) {
    ASSERT_EQ(static_cast<size_t>(npoints[i]), times.size());
    for (int32_t j = 0; j < npoints[i]; ++j) {
        EXPECT_EQ(parray[i][j].time, times[static_cast<size_t>(j)]) << i << " " << j;
    }
}

void mark_scratch() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].scratch = 7.0f;
        }
    }
}

/// 100 f / (f / 100) to a power, the plain way: the mean times the interval's power.
float spread(float freq, float mean, float exponent) {
    const float interval = freq / mean;
    return mean * static_cast<float>(std::pow(static_cast<double>(interval), exponent));
}

void expect_freqs(int32_t i, const std::vector<float> &freqs) {
    for (int32_t j = 0; j < npoints[i]; ++j) {
        EXPECT_TRUE(close_floats(parray[i][j].freq, freqs[static_cast<size_t>(j)], 2))
            << i << " " << j << ": " << parray[i][j].freq << " for "
            << freqs[static_cast<size_t>(j)];
    }
}

void expect_amps(int32_t i, const std::vector<float> &amps) {
    for (int32_t j = 0; j < npoints[i]; ++j) {
        EXPECT_TRUE(close_floats(parray[i][j].amp, amps[static_cast<size_t>(j)]))
            << i << " " << j << ": " << parray[i][j].amp << " for " << amps[static_cast<size_t>(j)];
    }
}

} // namespace

TEST_F(ScaleGuard, RefusesAStretchBelowATenthAndChangesNothing) {
    for (const float stretch : {0.05f, -0.05f, 0.0f, std::nextafter(0.1f, 0.0f)}) {
        fill_with_runs();
        mark_scratch();
        const Points before = all_points();
        EXPECT_EQ(scale(stretch, 2.0f, 2.0f), "Time-stretch must be > 0.1\n") << stretch;
        expect_points(before);
        EXPECT_EQ(peval[0].selected, 0);
    }
}

TEST_F(ScaleGuard, ATenthIsAccepted) {
    fill_store({times_of({1.0f, 2.0f})});
    flag(0, 0, 1);
    EXPECT_EQ(scale(0.1f, 1.0f, 1.0f), "Reference time = 1.000000\n");
    EXPECT_EQ(parray[0][1].time, 1.0f * 0.1f + 1.0f);
}

TEST_F(ScaleGuard, ANegativeStretchWaitsToBeBuiltAndTheOthersFollow) {
    fill_store({partial_of({100.0f, 200.0f, 100.0f}, {-10.0f, -20.0f, -30.0f})});
    flag(0, 0, 2);
    for (const float stretch : {-0.1f, -2.0f}) {
        EXPECT_EQ(scale(stretch, 1.0f, 1.0f), "Not implemented yet...\n");
        expect_times(0, {0.0f, 0.25f, 0.5f});
        EXPECT_EQ(peval[0].selected, 0);
    }
    EXPECT_EQ(scale(-2.0f, 0.0f, 0.0f), "Not implemented yet...\n");
    expect_times(0, {0.0f, 0.25f, 0.5f});
    EXPECT_NE(parray[0][1].freq, 200.0f);
    EXPECT_NE(parray[0][1].amp, -20.0f);
}

TEST_F(ScaleGuard, OneAndMinusOneSkipTheTimesWithoutAWord) {
    for (const float stretch : {1.0f, -1.0f}) {
        fill_with_runs();
        mark_scratch();
        Points expected = all_points();
        for (auto &partial : expected) {
            for (Breakpoint &point : partial) {
                point.scratch = 0.0f;
            }
        }
        EXPECT_EQ(scale(stretch, 1.0f, 1.0f), "");
        expect_points(expected);
        EXPECT_EQ(peval[0].selected, 0);
    }
}

TEST_F(ScaleTime, AWholePartialDoublesEachIntervalAndItsDistanceFromTheReference) {
    fill_store({times_of({0.5f, 0.75f}), times_of({1.5f, 1.75f, 2.25f})});
    flag(0, 0, 1);
    flag(1, 0, 2);
    EXPECT_EQ(scale(2.0f, 1.0f, 1.0f), "Reference time = 0.500000\n");
    expect_times(0, {0.5f, 1.0f});
    expect_times(1, {2.5f, 3.0f, 4.0f});
}

TEST_F(ScaleTime, TheIntervalsThatStartAtASelectedPointAreStretched) {
    fill_store({times_of({0.0f, 0.5f, 1.0f, 1.5f, 2.0f, 2.5f, 3.0f, 3.5f, 4.0f})});
    flag(0, 3, 5);
    EXPECT_EQ(scale(2.0f, 1.0f, 1.0f), "Reference time = 1.500000\n");
    expect_times(0, {0.0f, 0.5f, 1.0f, 1.5f, 2.5f, 3.5f, 4.5f, 5.0f, 5.5f});
    EXPECT_EQ(peval[0].selected, 1);
}

TEST_F(ScaleTime, TwoRunsOfAPartialBothStretch) {
    fill_store({times_of({0.0f, 0.5f, 1.0f, 1.5f, 2.0f, 2.5f, 3.0f})});
    flag(0, 0, 1);
    flag(0, 4, 4);
    scale(3.0f, 1.0f, 1.0f);
    expect_times(0, {0.0f, 1.5f, 3.0f, 3.5f, 4.0f, 5.5f, 6.0f});
}

TEST_F(ScaleTime, ASelectedLastPointOfAnUnselectedPartialStays) {
    fill_store({times_of({0.0f, 0.5f, 1.0f})});
    flag(0, 2, 2);
    EXPECT_EQ(scale(4.0f, 1.0f, 1.0f), "Reference time = 1.000000\n");
    expect_times(0, {0.0f, 0.5f, 1.0f});
}

TEST_F(ScaleTime, PartialsWithoutASelectedPointStay) {
    fill_store({times_of({0.5f, 1.0f}), times_of({0.25f, 0.5f})});
    flag(0, 0, 1);
    scale(2.0f, 1.0f, 1.0f);
    expect_times(1, {0.25f, 0.5f});
    EXPECT_EQ(peval[0].selected, 1);
    EXPECT_EQ(peval[1].selected, 0);
}

TEST_F(ScaleTime, AnEarlierMarkOnTheSummaryRebuildsThePartialToo) {
    // Nothing in it is selected, so it is only rounded by the walk; these times have no rest.
    fill_store({times_of({0.5f, 1.0f}), times_of({0.25f, 0.5f})});
    peval[1].selected = 1;
    flag(0, 0, 1);
    scale(2.0f, 1.0f, 1.0f);
    expect_times(1, {0.25f, 0.5f});
    EXPECT_EQ(peval[1].selected, 1);
}

TEST_F(ScaleTime, WithNothingSelectedTheReferenceIsTheEnd) {
    fill_store({times_of({0.5f, 1.0f})});
    EXPECT_EQ(scale(2.0f, 1.0f, 1.0f), "Reference time = 1.000000\n");
    expect_times(0, {0.5f, 1.0f});
}

TEST_F(ScaleTime, AReferenceBehindTheEndIsTheEnd) {
    // A lone late point does not count into the end of the sound.
    fill_store({times_of({0.5f, 1.0f}), times_of({3.0f})});
    ASSERT_EQ(sndlen, 1.0f);
    flag(1, 0, 0);
    EXPECT_EQ(scale(2.0f, 1.0f, 1.0f), "Reference time = 1.000000\n");
    expect_times(1, {5.0f});
}

TEST_F(ScaleTime, MatchesItsWalkOnEveryPoint) {
    for (const float stretch : {0.37f, 1.7f, 2.3f, 100.0f}) {
        fill_with_runs();
        Points expected = all_points();
        const float reft = expected[0][0].time;
        for (size_t i = 0; i < 3; ++i) {
            auto &points = expected[i];
            std::vector<float> moved;
            const float distance = points[0].time - reft;
            const float d = points[0].selected == 1 ? distance * stretch - distance : 0.0f;
            for (const Breakpoint &point : points) {
                moved.push_back(point.time + d);
            }
            points[0].time = moved[0];
            for (size_t j = 1; j < points.size(); ++j) {
                const float before = points[j - 1].time;
                if (points[j - 1].selected == 1) {
                    const float interval = (moved[j] - moved[j - 1]) * stretch;
                    points[j].time = interval + before;
                } else {
                    const float sum = moved[j] + before;
                    points[j].time = sum - moved[j - 1];
                }
            }
        }
        EXPECT_EQ(scale(stretch, 1.0f, 1.0f), "Reference time = 0.050000\n");
        expect_points(expected);
    }
}

TEST_F(ScaleTime, TheMoveOfAFirstPointIsADifferenceOfTwoDistances) {
    bool order_matters = false;
    for (int32_t k = 1; k < 60; ++k) {
        const float first = 0.3f + 0.17f * static_cast<float>(k);
        fill_store({times_of({0.3f, 0.4f}), times_of({first, first + 0.5f})});
        flag(0, 0, 0);
        flag(1, 0, 0);
        scale(1.37f, 1.0f, 1.0f);
        const float distance = first - 0.3f;
        const float stretched = distance * 1.37f;
        const float d = stretched - distance;
        EXPECT_EQ(parray[1][0].time, first + d) << k;
        order_matters = order_matters || first + d != first + distance * (1.37f - 1.0f);
    }
    EXPECT_TRUE(order_matters);
}

TEST_F(ScaleTime, FlagsStayAndScratchEndsCleared) {
    fill_with_runs();
    mark_scratch();
    scale(2.0f, 0.5f, 0.5f);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(parray[0][7].selected, 1);
    EXPECT_EQ(parray[0][8].selected, 0);
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            EXPECT_EQ(parray[i][j].scratch, 0.0f);
        }
    }
}

TEST_F(ScaleTime, HugeAndUnnumberedFactorsFollowTheArithmetic) {
    fill_store({times_of({0.5f, 1.0f})});
    flag(0, 0, 1);
    scale(3e38f, 1.0f, 1.0f);
    EXPECT_EQ(parray[0][1].time, 0.5f * 3e38f + 0.5f);
    scale(inf_f, 1.0f, 1.0f);
    EXPECT_TRUE(std::isnan(parray[0][0].time)); // no distance times infinity
    fill_store({times_of({0.5f, 1.0f})});
    flag(0, 0, 1);
    EXPECT_EQ(scale(nan_f, 1.0f, 1.0f), "Reference time = 0.500000\n");
    EXPECT_TRUE(std::isnan(parray[0][1].time));
    finish_scale();
}

TEST_F(ScalePitch, AStretchInsideAPartialWorksAroundItsHarmonicMean) {
    // 3 / (1/100 + 1/200 + 1/400) is 171.43.
    fill_store({partial_of({50.0f, 100.0f, 200.0f, 400.0f, 800.0f}, {0, 0, 0, 0, 0})});
    flag(0, 1, 3);
    float sum = 0.0f;
    for (const double freq : {100.0, 200.0, 400.0}) {
        sum = static_cast<float>(static_cast<double>(sum) + 1.0 / freq);
    }
    const float mean = 3.0f / sum;
    EXPECT_NEAR(mean, 171.4286, 0.001);
    EXPECT_EQ(scale(1.0f, 2.0f, 1.0f), "");
    expect_freqs(0, {50.0f, spread(100.0f, mean, 2.0f), spread(200.0f, mean, 2.0f),
                     spread(400.0f, mean, 2.0f), 800.0f});
}

TEST_F(ScalePitch, ZeroFlattensOntoTheMeanAndHalvesPullTogether) {
    fill_store({partial_of({128.0f, 256.0f, 128.0f, 64.0f}, {0, 0, 0, 0})});
    flag(0, 0, 2);
    const float mean = 3.0f / (5.0f / 256.0f);
    scale(1.0f, 0.0f, 1.0f);
    expect_freqs(0, {mean, mean, mean, 64.0f});
    fill_store({partial_of({128.0f, 256.0f, 128.0f, 64.0f}, {0, 0, 0, 0})});
    flag(0, 0, 2);
    scale(1.0f, 0.5f, 1.0f);
    expect_freqs(0, {spread(128.0f, mean, 0.5f), spread(256.0f, mean, 0.5f),
                     spread(128.0f, mean, 0.5f), 64.0f});
}

TEST_F(ScalePitch, TheLastPointOfAPartialIsLeftOutOfTheMean) {
    // 2 / (1/128 + 1/256), the last point, 512, not counted and yet changed.
    fill_store({partial_of({128.0f, 256.0f, 512.0f}, {0, 0, 0})});
    flag(0, 0, 2);
    const float mean = 2.0f / (3.0f / 256.0f);
    scale(1.0f, 0.0f, 1.0f);
    expect_freqs(0, {mean, mean, mean});
}

TEST_F(ScalePitch, ARunOfTwoAtTheEndWorksAroundItsFirstPoint) {
    fill_store({partial_of({64.0f, 128.0f, 256.0f}, {0, 0, 0})});
    flag(0, 1, 2);
    scale(1.0f, 0.0f, 1.0f);
    expect_freqs(0, {64.0f, 128.0f, 128.0f});
}

TEST_F(ScalePitch, ARunOfOneInsideKeepsItsFrequency) {
    fill_store({partial_of({64.0f, 128.0f, 256.0f}, {0, 0, 0})});
    flag(0, 1, 1);
    scale(1.0f, 3.0f, 1.0f);
    expect_freqs(0, {64.0f, 128.0f, 256.0f});
}

TEST_F(ScalePitch, ASecondRunWorksFromTheCarriedMean) {
    // By hand: 0 and 1 give 2 / (1/128 + 1/128) = 128 on points 0 to 2. Point 3, unselected,
    // takes 1/128 on 2 and 3. The second run adds 1/256 and 1/256 to that 1/128, with j at 3,
    // and ends at 6: 3 / (1/64) = 192.
    fill_store({partial_of({128.0f, 128.0f, 999.0f, 999.0f, 256.0f, 256.0f, 999.0f, 77.0f},
                           {0, 0, 0, 0, 0, 0, 0, 0})});
    flag(0, 0, 1);
    flag(0, 4, 5);
    scale(1.0f, 0.0f, 1.0f);
    expect_freqs(0, {128.0f, 128.0f, 999.0f, 999.0f, 192.0f, 192.0f, 999.0f, 77.0f});
}

TEST_F(ScalePitch, OneUnselectedPointBetweenCarriesTheMeanItself) {
    // 0 and 1 give 128; the second run adds 1/256 to that mean, with j at 2, and ends at 4.
    fill_store({partial_of({128.0f, 128.0f, 999.0f, 256.0f, 999.0f}, {0, 0, 0, 0, 0})});
    flag(0, 0, 1);
    flag(0, 3, 3);
    scale(1.0f, 0.0f, 1.0f);
    const float carried = static_cast<float>(128.0 + 1.0 / 256.0);
    expect_freqs(0, {128.0f, 128.0f, 999.0f, 2.0f / carried, 999.0f});
}

TEST_F(ScalePitch, AFirstSelectedPointThatIsTheLastIsNotANumber) {
    fill_store({partial_of({64.0f, 128.0f}, {0, 0}), partial_of({100.0f}, {0})});
    flag(0, 1, 1);
    flag(1, 0, 0);
    scale(1.0f, 2.0f, 1.0f);
    expect_freqs(0, {64.0f, nan_f});
    expect_freqs(1, {nan_f});
    finish_scale();
}

TEST_F(ScalePitch, MatchesItsWalkOnEveryPoint) {
    for (const float exponent : {0.3f, 2.1f, -1.0f}) {
        fill_with_runs();
        Points expected = all_points();
        for (auto &points : expected) {
            const size_t last = points.size() - 1;
            size_t j = 0;
            while (j <= last && points[j].selected != 1) {
                ++j;
            }
            std::vector<float> mean(points.size(), 0.0f);
            float acc = 0.0f;
            for (size_t k = j; k <= last; ++k) {
                if (k == last || points[k].selected == 0) {
                    acc = static_cast<float>(k - j) / acc;
                    std::fill(mean.begin() + static_cast<std::ptrdiff_t>(j),
                              mean.begin() + static_cast<std::ptrdiff_t>(k) + 1, acc);
                    j = k;
                } else {
                    acc = static_cast<float>(static_cast<double>(acc) +
                                             1.0 / static_cast<double>(points[k].freq));
                }
            }
            for (size_t k = 0; k <= last; ++k) {
                if (points[k].selected == 1) {
                    points[k].freq = spread(points[k].freq, mean[k], exponent);
                }
            }
        }
        scale(1.0f, exponent, 1.0f);
        expect_points(expected, 2);
    }
}

TEST_F(ScalePitch, TheMeanDividesAndAddsInDoublePrecision) {
    // To the power of 0 every point comes to lie on the mean itself.
    bool width_matters = false;
    for (int32_t k = 0; k < 60; ++k) {
        const float base = 77.7f + 3.3f * static_cast<float>(k);
        const std::vector<float> freqs = {base, base * 1.31f, base * 0.77f, 50.0f, 60.0f};
        fill_store({partial_of(freqs, {0, 0, 0, 0, 0})});
        flag(0, 0, 2);
        scale(1.0f, 0.0f, 1.0f);
        float sum = 0.0f;
        float narrow = 0.0f;
        for (size_t j = 0; j < 3; ++j) {
            sum = static_cast<float>(static_cast<double>(sum) + 1.0 / freqs[j]);
            narrow += 1.0f / freqs[j];
        }
        EXPECT_EQ(parray[0][0].freq, 3.0f / sum) << k;
        EXPECT_EQ(parray[0][2].freq, 3.0f / sum) << k;
        width_matters = width_matters || sum != narrow;
    }
    EXPECT_TRUE(width_matters);
}

TEST_F(ScalePitch, AFrequencyTooSmallToInvertFollowsTheArithmetic) {
    fill_store({partial_of({1e-45f, 1e-45f, 100.0f}, {0, 0, 0})});
    flag(0, 0, 0);
    scale(1.0f, 2.0f, 1.0f);
    EXPECT_TRUE(std::isnan(parray[0][0].freq)); // around a mean of 1 / infinity
}

TEST_F(ScalePitch, ZeroFrequenciesAndUnnumberedExponentsFollowTheArithmetic) {
    fill_store({partial_of({0.0f, 0.0f, 100.0f}, {0, 0, 0})});
    flag(0, 0, 1);
    scale(1.0f, 2.0f, 1.0f);
    expect_freqs(0, {nan_f, nan_f, 100.0f});
    for (const float exponent : {inf_f, -inf_f, nan_f, 3e38f}) {
        fill_with_runs();
        scale(1.0f, exponent, 1.0f);
        EXPECT_EQ(parray[0][4].freq, 111.1f + 4.0f * 7.3f);
        finish_scale();
    }
}

TEST_F(ScaleLevel, TheRunsFirstLevelCountsForEachPoint) {
    // Three points at 4 places of the divisor: 3 * -8 / 4 = -6, no true mean.
    fill_store({partial_of({1, 1, 1, 1, 1}, {-8.0f, -16.0f, -32.0f, -64.0f, -1.0f})});
    flag(0, 0, 2);
    EXPECT_EQ(scale(1.0f, 1.0f, 0.0f), "");
    expect_amps(0, {-6.0f, -6.0f, -6.0f, -64.0f, -1.0f});
}

TEST_F(ScaleLevel, TheLastPointOfAPartialIsNotAddedButDivides) {
    // 2 * -9 / 3.
    fill_store({partial_of({1, 1, 1}, {-9.0f, -16.0f, -32.0f})});
    flag(0, 0, 2);
    scale(1.0f, 1.0f, 0.0f);
    expect_amps(0, {-6.0f, -6.0f, -6.0f});
}

TEST_F(ScaleLevel, TheSignOfTheFactorIsIgnored) {
    for (const float compand : {0.5f, -0.5f}) {
        fill_store({partial_of({1, 1, 1, 1, 1}, {-8.0f, -16.0f, -32.0f, -64.0f, -1.0f})});
        flag(0, 0, 2);
        scale(1.0f, 1.0f, compand);
        expect_amps(0, {-7.0f, -11.0f, -19.0f, -64.0f, -1.0f});
    }
}

TEST_F(ScaleLevel, ASecondRunWorksFromTheCarriedValue) {
    // 0 and 1: 2 * -12 / 3 = -8 on points 0 to 2. Point 3, unselected: -8 / 2 = -4 on 2 and 3.
    // The second run adds the level of point 3, where j stands, twice: -4 - 20 - 20 = -44, and
    // ends at 6: -44 / 4 = -11.
    fill_store({partial_of({1, 1, 1, 1, 1, 1, 1},
                           {-12.0f, -99.0f, -50.0f, -20.0f, -30.0f, -40.0f, -60.0f})});
    flag(0, 0, 1);
    flag(0, 4, 5);
    scale(1.0f, 1.0f, 0.0f);
    expect_amps(0, {-8.0f, -8.0f, -50.0f, -20.0f, -11.0f, -11.0f, -60.0f});
}

TEST_F(ScaleLevel, ALonePointAtTheEndWorksAroundZero) {
    fill_store({partial_of({1, 1}, {-8.0f, -16.0f}), partial_of({1}, {-5.0f})});
    flag(0, 1, 1);
    flag(1, 0, 0);
    scale(1.0f, 1.0f, 0.25f);
    expect_amps(0, {-8.0f, -4.0f});
    expect_amps(1, {-1.25f});
}

TEST_F(ScaleLevel, MatchesItsWalkOnEveryPoint) {
    for (const float compand : {0.3f, 1.9f, -0.7f, 1e30f}) {
        fill_with_runs();
        Points expected = all_points();
        for (auto &points : expected) {
            const size_t last = points.size() - 1;
            size_t j = 0;
            while (j <= last && points[j].selected != 1) {
                ++j;
            }
            std::vector<float> level(points.size(), 0.0f);
            float acc = 0.0f;
            for (size_t k = j; k <= last; ++k) {
                if (k == last || points[k].selected == 0) {
                    acc = acc / static_cast<float>(k - j + 1);
                    std::fill(level.begin() + static_cast<std::ptrdiff_t>(j),
                              level.begin() + static_cast<std::ptrdiff_t>(k) + 1, acc);
                    j = k;
                } else {
                    acc += points[j].amp;
                }
            }
            for (size_t k = 0; k <= last; ++k) {
                if (points[k].selected == 1) {
                    const float distance = points[k].amp - level[k];
                    points[k].amp = distance * std::fabs(compand) + level[k];
                }
            }
        }
        scale(1.0f, 1.0f, compand);
        expect_points(expected);
    }
}

TEST_F(ScaleLevel, UnnumberedFactorsFollowTheArithmetic) {
    for (const float compand : {inf_f, -inf_f, nan_f}) {
        fill_store({partial_of({1, 1, 1}, {-9.0f, -6.0f, -32.0f})});
        flag(0, 0, 2);
        scale(1.0f, 1.0f, compand);
        EXPECT_TRUE(std::isnan(parray[0][1].amp)); // no distance times infinity
        finish_scale();
    }
}

TEST_F(ScaleLevel, AllThreeEffectsWorkInOrderAndIndependently) {
    fill_with_runs();
    scale(1.5f, 1.0f, 1.0f);
    scale(1.0f, 0.5f, 1.0f);
    scale(1.0f, 1.0f, 0.5f);
    const Points one_by_one = all_points();
    fill_with_runs();
    EXPECT_EQ(scale(1.5f, 0.5f, 0.5f), "Reference time = 0.050000\n");
    expect_points(one_by_one);
}

TEST_F(ScaleGuard, NothingSelectedChangesNoPoint) {
    fill_store(small_content());
    const Points before = all_points();
    EXPECT_EQ(scale(2.0f, 2.0f, 2.0f), "Reference time = 0.600000\n");
    expect_points(before);
}

TEST_F(ScaleGuard, AnEmptyStoreIsLeftAlone) {
    EXPECT_EQ(scale(1.0f, 2.0f, 2.0f), "");
    EXPECT_EQ(scale(1.0f, 2.0f, 1.0f), "");
}
