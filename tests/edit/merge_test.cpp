// Fusing two partials that overlap in time.
#include "edit/merge.h"

#include "interact/selection.h"
#include "store/settings.h"
#include "tests/edit/structure.h"
#include "tests/support/console.h"
#include "toolbox/auxmath3d.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace structure;

namespace {

using Labels = std::vector<int>;
using Floats = std::vector<float>;

/// A partial of one frequency and level at these times.
Partial at_times(const Floats &times, float freq, float amp = -20.0f) {
    Partial partial;
    for (const float time : times) {
        partial.push_back({time, freq, amp});
    }
    return partial;
}

class Merge : public StoreTest {
  protected:
    /// Selects one point of each of the named partials and merges.
    std::string merge(const std::vector<int32_t> &chosen) {
        for (const int32_t i : chosen) {
            parray[i][npoints[i] / 2].selected = 1;
        }
        return printed(merge3d);
    }

    /// merge() must leave the store as it is.
    std::string merge_in_vain(const std::vector<int32_t> &chosen) {
        for (const int32_t i : chosen) {
            parray[i][npoints[i] / 2].selected = 1;
        }
        const Snapshot before = snapshot();
        const std::string text = printed(merge3d);
        EXPECT_TRUE(same_points(snapshot(), before));
        return text;
    }
};

/// The level of two levels added in phase.
float sum_of(float a, float b) {
    const double sum = static_cast<double>(db2amp(a)) + db2amp(b);
    return static_cast<float>(amp2db(std::sqrt(sum * sum)));
}

TEST_F(Merge, TwoStartsEarlierAndReceives) {
    fill_store({at_times({0.5f, 0.75f, 1.0f, 1.25f}, 100),
                at_times({1.0f, 1.25f, 1.5f, 1.75f}, 200), at_times({5.0f}, 300)});
    char level[32];
    std::snprintf(level, sizeof level, "%f", sum_of(-20, -20));
    EXPECT_EQ(merge({0, 1}), "MERGE\nOne: 1\tTwo: 0\n"
                             "1: 1.000000\t1.750000\n0: 0.500000\t1.250000\n"
                             "Common: 1.000000\t1.250000\n"
                             "Mean time = 0.187500\n"
                             "npone = 2;\tnptwo = 2\n"
                             "1.000000\t100.000000\t" +
                                 std::string(level) + "\n1.250000\t100.000000\t" + level + "\n");
    ASSERT_EQ(partials, 2);
    EXPECT_EQ(times(0), (Floats{0.5f, 0.75f, 1.0f, 1.25f, 1.5f, 1.75f}));
    EXPECT_EQ(freqs(0), (Floats{100, 100, 100, 100, 200, 200}));
    const float loud = sum_of(-20, -20);
    EXPECT_NEAR(loud, -20.0 + 20.0 * std::log10(2.0), 1e-5);
    EXPECT_EQ(amps(0), (Floats{-20, -20, loud, loud, -20, -20}));
    EXPECT_EQ(times(1), Floats{5.0f});
}

TEST_F(Merge, OneStartsEarlierAndReceives) {
    fill_store({at_times({1.0f, 1.25f, 1.5f, 1.75f}, 200),
                at_times({0.5f, 0.75f, 1.0f, 1.25f}, 100, -30), at_times({5.0f}, 300)});
    merge({0, 1});
    ASSERT_EQ(partials, 2);
    EXPECT_EQ(times(0), (Floats{0.5f, 0.75f, 1.0f, 1.25f, 1.5f, 1.75f}));
    EXPECT_EQ(freqs(0), (Floats{100, 100, 100, 100, 200, 200}));
    EXPECT_EQ(amps(0)[2], sum_of(-30, -20));
    EXPECT_EQ(times(1), Floats{5.0f});
}

TEST_F(Merge, TwoLiesInsideOne) {
    fill_store({at_times({0.25f, 0.5f}, 200, -30), at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100)});
    merge({0, 1});
    ASSERT_EQ(partials, 1);
    EXPECT_EQ(times(0), (Floats{0.0f, 0.25f, 0.5f, 0.75f}));
    EXPECT_EQ(freqs(0), Floats(4, 100.0f));
    EXPECT_EQ(amps(0), (Floats{-20, sum_of(-20, -30), sum_of(-20, -30), -20}));
}

TEST_F(Merge, OneLiesInsideTwo) {
    verbose = 1;
    fill_store({at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100), at_times({0.25f, 0.5f}, 200, -30),
                at_times({5.0f}, 300)});
    const std::string text = merge({0, 1});
    EXPECT_TRUE(text.ends_with("Compacting partial #    1\n")) << text;
    ASSERT_EQ(partials, 2);
    // One starts at its point 0 in the overlap, so Two gives the frequency.
    EXPECT_EQ(freqs(0), Floats(4, 100.0f));
    EXPECT_EQ(amps(0), (Floats{-20, sum_of(-20, -30), sum_of(-20, -30), -20}));
    EXPECT_EQ(times(1), Floats{5.0f});
}

TEST_F(Merge, MergedPointsAreMeansOfTimeAndBlankOtherwise) {
    fill_store({at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100), at_times({0.27f, 0.52f}, 200)});
    for (int32_t j = 0; j < 4; ++j) {
        parray[0][j].scratch = 5.0f;
        parray[0][j].selected = 1;
        parray[0][j].phase = j == 0 ? 2.0f : 0.0f;
    }
    merge({0, 1});
    const double mean = (0.25f + static_cast<double>(0.27f)) * 0.5;
    EXPECT_EQ(times(0)[1], static_cast<float>(mean));
    for (int32_t j = 0; j < 4; ++j) {
        const bool merged = j == 1 || j == 2;
        EXPECT_EQ(parray[0][j].selected, merged ? 0 : 1);
        EXPECT_EQ(parray[0][j].scratch, merged ? 0.0f : 5.0f);
        EXPECT_EQ(parray[0][j].ampunits, merged ? 0 : 1);
        EXPECT_EQ(parray[0][j].phase, j == 0 ? 2.0f : 0.0f);
        if (merged) {
            EXPECT_EQ(parray[0][j].logfreq, 0.0f);
        }
    }
}

TEST_F(Merge, PhasesBendFrequencyAndLevel) {
    fill_store({at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100, -10), at_times({0.25f, 0.5f}, 200, -30)});
    parray[0][1].phase = 0.7f;
    parray[1][0].phase = 2.1f;
    merge({0, 1});
    // One is the higher number, here the partial inside.
    const float u = static_cast<float>(db2amp(-30) * std::cos(double{2.1f}));
    const float v = static_cast<float>(db2amp(-10) * std::cos(double{0.7f}));
    const double x = double{u} + v;
    const double y = double{static_cast<float>(u * std::sin(double{2.1f}))} +
                     static_cast<float>(v * std::sin(double{0.7f}));
    EXPECT_EQ(freqs(0)[1], 100.0f - static_cast<float>(std::atan2(y, x)) / 0.25f);
    EXPECT_LT(freqs(0)[1], 99.0f);
    EXPECT_EQ(amps(0)[1], static_cast<float>(20.0 * std::log10(std::sqrt(x * x + y * y))));
    EXPECT_EQ(freqs(0)[2], 100.0f);
}

TEST_F(Merge, SilenceIsTakenAtMinus140) {
    fill_store(
        {at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100, -200), at_times({0.25f, 0.5f}, 200, -160)});
    merge({0, 1});
    EXPECT_NEAR(amps(0)[1], -140.0 + 20.0 * std::log10(2.0), 1e-4);
}

TEST_F(Merge, OpposedPhasorsLeaveAlmostNothing) {
    fill_store({at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100), at_times({0.25f, 0.5f}, 200)});
    parray[1][0].phase = 3.14159265f; // its cosine is -1, its sine just below 0
    merge({0, 1});
    EXPECT_LT(amps(0)[1], -150.0f);
    EXPECT_EQ(freqs(0)[1], 100.0f - 1.57079632679f / 0.25f);
}

TEST_F(Merge, TheBaseIsTheStartOfTheEarlierPartial) {
    fill_store({at_times({0.25f, 0.5f}, 200), at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100)});
    parray[1][0].freq = 321.0f;
    merge({0, 1});
    EXPECT_EQ(freqs(0), (Floats{321, 321, 321, 100}));
}

TEST_F(Merge, AtTimeZeroTheBaseItself) {
    fill_store({at_times({0.0f, 0.25f}, 200), at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100)});
    parray[0][0].phase = 1.0f;
    parray[1][0].phase = 1.0f;
    merge({0, 1});
    ASSERT_EQ(partials, 1);
    EXPECT_EQ(freqs(0), (Floats{200, 200, 100, 100}));
}

TEST_F(Merge, EqualStartsStayUnlessOneLiesInside) {
    fill_store({at_times({0.0f, 0.25f, 0.5f, 0.75f, 1.25f}, 100),
                at_times({0.0f, 0.25f, 0.5f, 0.75f, 0.76f}, 200)});
    const std::string text = merge_in_vain({0, 1});
    EXPECT_NE(text.find("npone = 4;\tnptwo = 4\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("resolve"), std::string::npos);
}

TEST_F(Merge, EqualSpansStay) {
    fill_store({at_times({0.0f, 0.25f, 0.5f}, 100), at_times({0.0f, 0.25f, 0.5f}, 200)});
    const std::string text = merge_in_vain({0, 1});
    EXPECT_NE(text.find("npone = 3;\tnptwo = 3\n"), std::string::npos) << text;
}

TEST_F(Merge, WhollyOverlappingPartialsOfDifferentStartsBecomeTheEarlierOne) {
    fill_store({at_times({0.01f, 0.25f, 0.5f}, 100), at_times({0.0f, 0.25f, 0.5f}, 200)});
    merge({0, 1});
    ASSERT_EQ(partials, 1);
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(times(0)[0], 0.005f);
}

TEST_F(Merge, TheTailStartsAtTheCommonCount) {
    // One's overlap starts at its point 1: the tail from point 2 on repeats its last one.
    fill_store({at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100),
                at_times({0.1875f, 0.5f, 0.75f, 1.0f, 1.25f}, 200)});
    parray[1][0].time = 0.3125f;
    parray[0][1].time = 0.3125f;
    merge({0, 1});
    EXPECT_EQ(times(0), (Floats{0.0f, 0.3125f, 0.5f, 0.75f, 1.0f, 1.25f}));
}

TEST_F(Merge, HalfTheMeanSpacingIsNotNear) {
    // The mean is 0.25: 0.875 lies exactly half of it from the common start at 1.
    fill_store({at_times({1.0f, 1.125f, 1.375f, 1.625f}, 100),
                at_times({0.0f, 0.875f, 1.25f, 1.375f}, 200)});
    EXPECT_EQ(merge_in_vain({0, 1}), "MERGE\nOne: 1\tTwo: 0\n"
                                     "1: 0.000000\t1.375000\n0: 1.000000\t1.625000\n"
                                     "Common: 1.000000\t1.375000\n"
                                     "Mean time = 0.250000\n"
                                     "npone = 4;\tnptwo = 3\n"
                                     "Can't resolve merge\n");
}

TEST_F(Merge, PartialsThatDoNotMeet) {
    fill_store({at_times({0.0f, 0.25f, 0.5f, 0.75f}, 100), at_times({10.0f, 10.25f, 10.5f}, 200)});
    const std::string text = merge_in_vain({0, 1});
    EXPECT_TRUE(text.ends_with("npone = 1;\tnptwo = 4\nCan't resolve merge\n")) << text;
}

TEST_F(Merge, SinglePointsCountAsOneInTheMean) {
    fill_store({at_times({0.0f, 1.0f}, 100), at_times({0.0f}, 200)});
    const std::string text = merge({0, 1});
    EXPECT_NE(text.find("Mean time = 0.333333\n"), std::string::npos) << text;
    EXPECT_EQ(partials, 1);
}

TEST_F(Merge, ThreePartialsAreRefused) {
    fill_store({at_times({0.0f, 0.25f}, 100), at_times({0.0f, 0.25f}, 200),
                at_times({0.0f, 0.25f}, 300), at_times({0.0f, 0.25f}, 400)});
    EXPECT_EQ(merge_in_vain({1, 2, 3}), "MERGE\nInvalid selection\n");
}

TEST_F(Merge, FewerThanTwoAreRefused) {
    fill_store({at_times({0.0f, 0.25f}, 100), at_times({0.0f, 0.25f}, 200)});
    EXPECT_EQ(merge_in_vain({}), "MERGE\nInsufficient selection\n");
    EXPECT_EQ(merge_in_vain({1}), "MERGE\nInsufficient selection\n");
    parray[0][0].selected = 2;
    EXPECT_EQ(merge_in_vain({}), "MERGE\nInsufficient selection\n");
}

} // namespace
