// Moving tails in time.

#include "edit/shifts.h"

#include "tests/edit/edit_support.h"

#include <cstring>

namespace {

using TimeShift = StoreTest;

std::string shift(float seconds) {
    return printed([seconds] { timesh(seconds); });
}

} // namespace

TEST_F(TimeShift, ZeroReturnsWithoutAWord) {
    fill_with_runs();
    const Points before = all_points();
    sndlen = 99.0f;
    EXPECT_EQ(shift(0.0f), "");
    EXPECT_EQ(shift(-0.0f), "");
    expect_points(before);
    EXPECT_EQ(sndlen, 99.0f);
}

TEST_F(TimeShift, MovesTheFirstSelectedPointAndAllBehindIt) {
    fill_with_runs();
    parray[0][0].selected = 0;
    Points expected = all_points();
    const size_t first[] = {1, 1, 0};
    for (size_t i = 0; i < 3; ++i) {
        for (size_t j = first[i]; j < expected[i].size(); ++j) {
            expected[i][j].time += 0.37f;
        }
    }
    EXPECT_EQ(shift(0.37f), "TIME SHIFTING by 0.370000\n");
    expect_points(expected);
}

TEST_F(TimeShift, APartialStartingTooEarlyLimitsTheMove) {
    fill_store({{{0.3f, 100.0f, 0.0f}, {0.5f, 100.0f, 0.0f}}, {{0.9f, 200.0f, 0.0f}}});
    flag(0, 0, 1);
    flag(1, 0, 0);
    EXPECT_EQ(shift(-1.0f), "Closest acceptable time shift value: -0.300000 sec.\n"
                            "TIME SHIFTING by -0.300000\n");
    EXPECT_EQ(parray[0][0].time, 0.0f);
    EXPECT_EQ(parray[0][1].time, 0.5f - 0.3f);
    EXPECT_EQ(parray[1][0].time, 0.9f - 0.3f);
    EXPECT_EQ(sndstart, 0.0f);
}

TEST_F(TimeShift, ATailMovesByHalfOfTheGapBeforeIt) {
    fill_store({{{1.0f, 100.0f, 0.0f},
                 {1.25f, 100.0f, 0.0f},
                 {1.5f, 100.0f, 0.0f},
                 {1.75f, 100.0f, 0.0f},
                 {2.0f, 100.0f, 0.0f},
                 {2.02f, 100.0f, 0.0f},
                 {2.5f, 100.0f, 0.0f}}});
    flag(0, 5, 6);
    const float half = (2.02f - 2.0f) * -0.5f;
    EXPECT_EQ(shift(-1.0f), "Closest acceptable time shift value: -0.010000 sec.\n"
                            "TIME SHIFTING by -0.010000\n");
    EXPECT_EQ(parray[0][4].time, 2.0f);
    EXPECT_EQ(parray[0][5].time, 2.02f + half);
    EXPECT_EQ(parray[0][6].time, 2.5f + half);
}

TEST_F(TimeShift, ASmallMoveIntoAGapIsNotLimited) {
    fill_store({{{1.0f, 100.0f, 0.0f}, {1.5f, 100.0f, 0.0f}, {2.0f, 100.0f, 0.0f}}});
    flag(0, 1, 1);
    EXPECT_EQ(shift(-0.25f), "TIME SHIFTING by -0.250000\n");
    EXPECT_EQ(parray[0][1].time, 1.25f);
    EXPECT_EQ(parray[0][2].time, 1.75f);
}

TEST_F(TimeShift, AMoveOfExactlyTheGapIsLimited) {
    fill_store({{{1.0f, 100.0f, 0.0f}, {1.5f, 100.0f, 0.0f}}});
    flag(0, 1, 1);
    EXPECT_EQ(shift(-0.5f), "Closest acceptable time shift value: -0.250000 sec.\n"
                            "TIME SHIFTING by -0.250000\n");
}

TEST_F(TimeShift, TheLimitOfOnePartialCarriesOnToTheNext) {
    // After the first partial's limit of -0.25 the second one's gap of 0.5 is wide enough.
    fill_store({{{1.0f, 100.0f, 0.0f}, {1.5f, 100.0f, 0.0f}},
                {{1.0f, 100.0f, 0.0f}, {1.5f, 100.0f, 0.0f}},
                {{1.0f, 100.0f, 0.0f}, {1.125f, 100.0f, 0.0f}}});
    flag(0, 1, 1);
    flag(1, 1, 1);
    flag(2, 1, 1);
    EXPECT_EQ(shift(-3.0f), "Closest acceptable time shift value: -0.062500 sec.\n"
                            "TIME SHIFTING by -0.062500\n");
    EXPECT_EQ(parray[0][1].time, 1.4375f);
}

TEST_F(TimeShift, OnlyTheFirstCollidingRunOfAPartialIsLookedAt) {
    // The second run's gap is narrower, but the partial is left at the first one.
    fill_store({{{1.0f, 100.0f, 0.0f},
                 {1.5f, 100.0f, 0.0f},
                 {1.75f, 100.0f, 0.0f},
                 {1.8125f, 100.0f, 0.0f}}});
    flag(0, 1, 1);
    flag(0, 3, 3);
    EXPECT_EQ(shift(-2.0f), "Closest acceptable time shift value: -0.250000 sec.\n"
                            "TIME SHIFTING by -0.250000\n");
}

TEST_F(TimeShift, ALaterRunThatCollidesLimitsWhenTheFirstHasRoom) {
    // The whole tail moves together, and still the later gap counts.
    fill_store({{{1.0f, 100.0f, 0.0f},
                 {1.5f, 100.0f, 0.0f},
                 {1.75f, 100.0f, 0.0f},
                 {1.8125f, 100.0f, 0.0f}}});
    flag(0, 1, 1);
    flag(0, 3, 3);
    EXPECT_EQ(shift(-0.125f), "Closest acceptable time shift value: -0.031250 sec.\n"
                              "TIME SHIFTING by -0.031250\n");
    EXPECT_EQ(parray[0][2].time, 1.75f - 0.03125f);
}

TEST_F(TimeShift, TheStartLimitComesBeforeTheGapLimit) {
    // -0.5 from the start of partial 1 lets the tail of partial 0 keep its gap of 0.75.
    fill_store({{{1.0f, 100.0f, 0.0f}, {1.75f, 100.0f, 0.0f}}, {{0.5f, 100.0f, 0.0f}}});
    flag(0, 1, 1);
    flag(1, 0, 0);
    EXPECT_EQ(shift(-4.0f), "Closest acceptable time shift value: -0.500000 sec.\n"
                            "TIME SHIFTING by -0.500000\n");
    EXPECT_EQ(parray[0][1].time, 1.25f);
    EXPECT_EQ(parray[1][0].time, 0.0f);
}

TEST_F(TimeShift, AForwardMoveOpensAGapAndLengthensTheSound) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {0.5f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    flag(0, 1, 1);
    EXPECT_EQ(shift(100.0f), "TIME SHIFTING by 100.000000\n");
    EXPECT_EQ(parray[0][0].time, 0.0f);
    EXPECT_EQ(parray[0][1].time, 100.5f);
    EXPECT_EQ(parray[0][2].time, 101.0f);
    EXPECT_EQ(sndlen, 101.0f);
    EXPECT_EQ(sndstart, 0.0f);
    EXPECT_EQ(meant, 50.5f);
}

TEST_F(TimeShift, NothingSelectedStillRefreshesTheTimes) {
    fill_store(small_content());
    const Points before = all_points();
    sndlen = 99.0f;
    EXPECT_EQ(shift(-0.5f), "TIME SHIFTING by -0.500000\n");
    expect_points(before);
    EXPECT_EQ(sndlen, 0.6f);
}

TEST_F(TimeShift, APartialAtZeroPinsTheMoveThere) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {0.5f, 100.0f, 0.0f}}});
    flag(0, 0, 1);
    EXPECT_EQ(shift(-inf_f), "Closest acceptable time shift value: -0.000000 sec.\n"
                             "TIME SHIFTING by -0.000000\n");
    EXPECT_EQ(parray[0][0].time, 0.0f);
    EXPECT_EQ(parray[0][1].time, 0.5f);
}

TEST_F(TimeShift, InfinityAndNoNumberMoveAsTheyAre) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {0.5f, 100.0f, 0.0f}}});
    flag(0, 1, 1);
    EXPECT_EQ(shift(inf_f), "TIME SHIFTING by inf\n");
    EXPECT_EQ(parray[0][1].time, inf_f);
    EXPECT_EQ(sndlen, inf_f);
    EXPECT_TRUE(std::strstr(shift(nan_f).c_str(), "TIME SHIFTING by ") != nullptr);
    EXPECT_TRUE(std::isnan(parray[0][1].time));
    EXPECT_EQ(parray[0][0].time, 0.0f);
    EXPECT_EQ(sndstart, 0.0f);
}

TEST_F(TimeShift, AnEmptyStoreIsLeftAlone) {
    EXPECT_EQ(shift(-1.0f), "TIME SHIFTING by -1.000000\n");
}
