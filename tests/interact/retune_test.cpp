// Retuning one found point by about 2 cents, and the ranges that it brings along.
#include "interact/choose.h"

#include "display/view.h"
#include "interact/selection.h"
#include "tests/support/pointer.h"

#include <cmath>
#include <limits>

namespace {

constexpr double octave = 0.6931472; // stands as it is: not quite ln 2

float up(float freq) {
    return static_cast<float>(freq * 1.00125);
}
float down(float freq) {
    return static_cast<float>(freq / 1.00125);
}

void hold(int part, int point) {
    foundSubscriptions = {part, point, -1, -1, 1};
    directSelect = 1;
    found = 1;
}

float log_position(float freq) {
    const double ratio = freq / minfreq;
    return static_cast<float>(std::log(ratio) / octave / logmaxfreq);
}

void expect_ranges_hold() {
    EXPECT_EQ(fspan, maxfreq / minfreq);
    const double span = fspan;
    EXPECT_EQ(logmaxfreq, static_cast<float>(std::log(span) / octave));
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            EXPECT_EQ(parray[i][j].logfreq, log_position(parray[i][j].freq)) << i << " " << j;
        }
    }
}

class Retune : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        fill_store({{{0.0f, 200.0f, 0.0f}, {0.5f, 300.0f, 0.0f}, {1.0f, 220.0f, 0.0f}},
                    {{0.0f, 100.0f, 0.0f}, {1.0f, 101.0f, 0.0f}},
                    {{0.0f, 800.0f, 0.0f}, {1.0f, 799.0f, 0.0f}}});
    }
};

} // namespace

TEST_F(Retune, UpTakesThePointByOneStepAndRefreshesItsPartial) {
    hold(0, 1);
    upfreq();
    EXPECT_EQ(parray[0][1].freq, up(300.0f));
    EXPECT_EQ(parray[0][0].freq, 200.0f);
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 800.0f);
    EXPECT_FLOAT_EQ(peval[0].avgfreq, (200.0f + up(300.0f) + 220.0f) / 3.0f);
    expect_ranges_hold();
}

TEST_F(Retune, DownTakesThePointByOneStepAndRefreshesItsPartial) {
    hold(0, 1);
    downfreq();
    EXPECT_EQ(parray[0][1].freq, down(300.0f));
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 800.0f);
    EXPECT_FLOAT_EQ(peval[0].avgfreq, (200.0f + down(300.0f) + 220.0f) / 3.0f);
    expect_ranges_hold();
}

TEST_F(Retune, AStepIsAboutTwoCents) {
    hold(0, 1);
    upfreq();
    EXPECT_NEAR(1200.0 * std::log2(parray[0][1].freq / 300.0), 2.16, 0.01);
}

TEST_F(Retune, UpRaisesTheTop) {
    hold(2, 0);
    upfreq();
    EXPECT_EQ(maxfreq, up(800.0f));
    EXPECT_EQ(parray[2][0].logfreq, log_position(up(800.0f)));
    expect_ranges_hold();
}

TEST_F(Retune, DownLowersTheBottom) {
    hold(1, 0);
    downfreq();
    EXPECT_EQ(minfreq, down(100.0f));
    EXPECT_EQ(parray[1][0].logfreq, 0.0f);
    expect_ranges_hold();
}

TEST_F(Retune, UpOnTheLowestPointSearchesItsPartialForTheNewOne) {
    hold(1, 0);
    upfreq(); // 100.125, still below 101
    EXPECT_EQ(minfreq, up(100.0f));
    for (int k = 0; k < 8; ++k) {
        upfreq();
    }
    EXPECT_GT(parray[1][0].freq, 101.0f);
    EXPECT_EQ(minfreq, 101.0f);
    expect_ranges_hold();
}

TEST_F(Retune, DownOnTheHighestPointSearchesItsPartialForTheNewOne) {
    hold(2, 0);
    downfreq(); // 799.0013, still above 799
    EXPECT_EQ(maxfreq, down(800.0f));
    downfreq();
    EXPECT_EQ(maxfreq, 799.0f);
    expect_ranges_hold();
}

TEST_F(Retune, UpMayLeaveTheMinimumAboveAnotherPartialsLowest) {
    parray[0][0].freq = 100.5f; // lower than what the other partial comes to hold
    hold(1, 0);
    for (int k = 0; k < 20; ++k) {
        upfreq();
    }
    EXPECT_EQ(minfreq, 101.0f);
    EXPECT_LT(parray[0][0].freq, minfreq);
    EXPECT_LT(parray[0][0].logfreq, 0.0f);
    expect_ranges_hold();
}

TEST_F(Retune, DownMayLeaveTheMaximumBelowAnotherPartialsHighest) {
    parray[0][1].freq = 799.5f;
    hold(2, 0);
    downfreq();
    downfreq();
    EXPECT_EQ(maxfreq, 799.0f);
    EXPECT_GT(parray[0][1].logfreq, 1.0f);
}

TEST_F(Retune, APointBelowTheMinimumCountsAsTheLowest) {
    minfreq = 150.0f;
    hold(1, 0);
    upfreq();
    EXPECT_EQ(minfreq, up(100.0f));
}

TEST_F(Retune, APointAboveTheMaximumCountsAsTheHighest) {
    maxfreq = 700.0f;
    hold(2, 0);
    downfreq();
    EXPECT_EQ(maxfreq, down(800.0f));
}

TEST_F(Retune, TheMeanWalkWidensTheRangeByTheWholePartial) {
    minfreq = 250.0f;
    maxfreq = 260.0f;
    hold(0, 1);
    upfreq();
    EXPECT_EQ(minfreq, 200.0f);
    EXPECT_EQ(maxfreq, up(300.0f));
    expect_ranges_hold();
}

TEST_F(Retune, OtherMeansStay) {
    peval[0].avgfreq = 12.0f;
    hold(1, 0);
    upfreq();
    EXPECT_EQ(peval[0].avgfreq, 12.0f);
}

TEST_F(Retune, TheOctaveIsTheShortConstant) {
    // The span comes out otherwise for many maxima than with the full natural logarithm of 2.
    int different = 0;
    hold(0, 1);
    for (int k = 0; k < 50; ++k) {
        maxfreq = 900.0f + 37.0f * static_cast<float>(k);
        upfreq();
        const double span = fspan;
        EXPECT_EQ(logmaxfreq, static_cast<float>(std::log(span) / octave));
        different += logmaxfreq != static_cast<float>(std::log(span) / ln_2) ? 1 : 0;
    }
    EXPECT_GT(different, 0);
}

TEST_F(Retune, WithTwoFoundPointsNothingMoves) {
    foundSubscriptions = {0, 1, 0, 0, 2};
    directSelect = 1;
    upfreq();
    downfreq();
    EXPECT_EQ(parray[0][1].freq, 300.0f);
    EXPECT_EQ(parray[0][0].freq, 200.0f);
}

TEST_F(Retune, WithoutAFoundPointNothingMoves) {
    foundSubscriptions = {0, 1, -1, -1, 0};
    directSelect = 1;
    upfreq();
    downfreq();
    EXPECT_EQ(parray[0][1].freq, 300.0f);
}

TEST_F(Retune, WithoutADirectSelectionNothingMoves) {
    hold(0, 1);
    directSelect = 0;
    upfreq();
    downfreq();
    EXPECT_EQ(parray[0][1].freq, 300.0f);
}

TEST_F(Retune, WorksInEveryView) {
    flat = bps = 0;
    hold(0, 1);
    upfreq();
    EXPECT_EQ(parray[0][1].freq, up(300.0f));
}

TEST_F(Retune, AStaleFoundPointIsLeftAlone) {
    for (const FoundPoints &stale : {FoundPoints{3, 0, -1, -1, 1}, FoundPoints{0, 3, -1, -1, 1},
                                     FoundPoints{-1, -1, -1, -1, 1}, FoundPoints{0, -1, -1, -1, 1},
                                     FoundPoints{99, 99, -1, -1, 1}}) {
        foundSubscriptions = stale;
        directSelect = 1;
        upfreq();
        downfreq();
    }
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 800.0f);
}

TEST_F(Retune, OnlyPointOfTheStoreMovesTheWholeRange) {
    fill_store({{{0.0f, 100.0f, 0.0f}}});
    hold(0, 0);
    upfreq();
    EXPECT_EQ(minfreq, up(100.0f));
    EXPECT_EQ(maxfreq, up(100.0f));
    EXPECT_EQ(fspan, 1.0f);
    EXPECT_EQ(logmaxfreq, 0.0f);
    EXPECT_TRUE(std::isnan(parray[0][0].logfreq)); // 0 / 0
}

TEST_F(Retune, AFrequencyThatIsNotANumberStaysSo) {
    parray[0][1].freq = std::numeric_limits<float>::quiet_NaN();
    hold(0, 1);
    upfreq();
    downfreq();
    EXPECT_TRUE(std::isnan(parray[0][1].freq));
    EXPECT_TRUE(std::isnan(peval[0].avgfreq));
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 800.0f);
}
