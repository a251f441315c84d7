// Pulling level envelopes towards a source partial's, and pushing them away.
#include "interact/gestures.h"

#include "display/view.h"
#include "interact/selection.h"
#include "tests/interact/gesture_support.h"
#include "tests/support/console.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <cmath>

namespace {

using structure::amps;

const char *const no_pair = "Follower: Select both breakpoints from the source partial\n";
const char *const no_target = "Follower: No target selected\n";
const char *const illegitimate = "illegitimate selection\n";

class Follow : public PointerTest {
  protected:
    /// A source that fades by 20 dB, a target whose run is followed by a tail, one beside it.
    void SetUp() override {
        PointerTest::SetUp();
        fill_store({{{0.0f, 200.0f, -10.0f},
                     {0.25f, 200.0f, -12.0f},
                     {0.5f, 200.0f, -15.0f},
                     {0.75f, 200.0f, -20.0f},
                     {1.0f, 200.0f, -30.0f}},
                    {{0.0f, 300.0f, -20.0f},
                     {0.125f, 300.0f, -21.0f},
                     {0.375f, 300.0f, -20.0f},
                     {0.5f, 300.0f, -19.0f},
                     {0.625f, 300.0f, -25.0f},
                     {0.75f, 300.0f, -26.0f}},
                    {{0.0f, 700.0f, -30.0f}, {1.0f, 710.0f, -33.0f}}});
        flat = bps = 1;
        foundSubscriptions = {0, 1, 0, 3, 2};
        sweepSelect = 1;
        choose(1, {"00000", "011100", "00"});
    }

    static std::string press(int direction) {
        return printed([=] { partialsFollow2(direction); });
    }

    /// The level that point k of partial 1 gets against point j, from the store as it is.
    static float followed(int32_t j, int32_t k, float w) {
        const float a0 = db2amp(parray[1][j].amp);
        const float s0 = linear_interpol_al(parray, npoints, j, 1, 0);
        const float a = db2amp(parray[1][k].amp);
        const float s = linear_interpol_al(parray, npoints, k, 1, 0);
        const double mix = (1.0 - w) * (a / a0) + w * (s / s0);
        const float amp = static_cast<float>(mix * a0);
        return static_cast<float>(amp2db(amp < 0.0f ? 0.0f : amp));
    }
};

} // namespace

TEST_F(Follow, SilentWithoutBreakpointsButNotOutsideTheFlatView) {
    bps = 0;
    foundSubscriptions.count = 0;
    EXPECT_EQ(press(-3), "");
    bps = 1;
    flat = 0;
    EXPECT_EQ(press(-3), no_pair);
    foundSubscriptions.count = 2;
    EXPECT_EQ(press(-3), "direction = -3\n");
    EXPECT_NE(parray[1][2].amp, -20.0f);
}

TEST_F(Follow, AsksInOrder) {
    sweepSelect = 0;
    foundSubscriptions = {0, 1, 2, 0, 1};
    EXPECT_EQ(press(3), no_pair);
    foundSubscriptions.count = 2;
    EXPECT_EQ(press(3), ""); // two partials
    foundSubscriptions = {0, 1, 0, 2, 2};
    EXPECT_EQ(press(3), no_target);
    sweepSelect = 1;
    parray[0][2].selected = 1;
    const auto before = amps(1);
    EXPECT_EQ(press(3), std::string("direction = 3\n") + illegitimate);
    EXPECT_EQ(amps(1), before);
}

TEST_F(Follow, OneStepToTheLetter) {
    const float l2 = followed(1, 2, 0.02f);
    const float l3 = followed(1, 3, 0.02f);
    const float tail4 = (-25.0f + l3) - -21.0f;
    const float tail5 = (-26.0f + l3) - -21.0f;
    EXPECT_EQ(press(-3), "direction = -3\n");
    EXPECT_EQ(amps(1), (std::vector<float>{-20.0f, -21.0f, l2, l3, tail4, tail5}));
    EXPECT_LT(l3, -19.0f); // the source falls
    EXPECT_EQ(amps(0), (std::vector<float>{-10.0f, -12.0f, -15.0f, -20.0f, -30.0f}));
    EXPECT_EQ(amps(2), (std::vector<float>{-30.0f, -33.0f}));
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(Follow, StrayingIsTheOtherWay) {
    const float l3 = followed(1, 3, -0.02f);
    press(3);
    EXPECT_EQ(parray[1][3].amp, l3);
    EXPECT_GT(l3, -19.0f);
}

TEST_F(Follow, OnlyTheSignOfTheDirectionCounts) {
    const float follows = followed(1, 2, 0.02f);
    EXPECT_EQ(press(-77), "direction = -77\n");
    EXPECT_EQ(parray[1][2].amp, follows);
    SetUp();
    const float strays = followed(1, 2, -0.02f);
    EXPECT_EQ(press(0), "direction = 0\n");
    EXPECT_EQ(parray[1][2].amp, strays);
}

TEST_F(Follow, TheLastTwoPointsMayOnlyFall) {
    // A steep fade of the target against a source that fades little: following would raise it.
    choose(1, {"00000", "111111", "00"});
    parray[1][4].amp = -60.0f;
    parray[1][5].amp = -80.0f;
    const float l3 = followed(0, 3, 0.02f);
    ASSERT_GT(followed(0, 4, 0.02f), -60.0f);
    press(-3);
    EXPECT_EQ(parray[1][3].amp, l3);
    EXPECT_EQ(parray[1][4].amp, -60.0f);
    EXPECT_EQ(parray[1][5].amp, -80.0f);
}

TEST_F(Follow, TheLastTwoPointsDoFall) {
    choose(1, {"00000", "111111", "00"});
    parray[1][4].amp = parray[1][5].amp = -10.0f;
    const float l4 = followed(0, 4, 0.02f);
    const float l5 = followed(0, 5, 0.02f);
    ASSERT_LT(l5, -10.0f);
    press(-3);
    EXPECT_EQ(parray[1][4].amp, l4);
    EXPECT_EQ(parray[1][5].amp, l5);
}

TEST_F(Follow, TheThirdFromTheEndMayRise) {
    choose(1, {"00000", "111111", "00"});
    parray[1][3].amp = -80.0f;
    press(-3);
    EXPECT_GT(parray[1][3].amp, -80.0f);
}

TEST_F(Follow, ATailAfterAKeptPointFollowsWhatItWouldHaveBeen) {
    choose(1, {"00000", "011110", "00"});
    parray[1][4].amp = -60.0f; // one of the last two, so it is kept
    const float would = followed(1, 4, 0.02f);
    ASSERT_GT(would, -60.0f);
    press(-3);
    EXPECT_EQ(parray[1][4].amp, -60.0f);
    EXPECT_EQ(parray[1][5].amp, (-26.0f + would) - -21.0f);
}

TEST_F(Follow, ARunOfOnePointShiftsNothing) {
    choose(1, {"00000", "010000", "00"});
    const auto before = amps(1);
    press(-3);
    EXPECT_EQ(amps(1), before);
}

TEST_F(Follow, ALoneRunDoesNotTakeTheLevelOfThePartialBefore) {
    choose(1, {"00000", "011100", "10"});
    peval[2].selected = 1;
    press(-3);
    EXPECT_EQ(amps(2), (std::vector<float>{-30.0f, -33.0f}));
}

TEST_F(Follow, TheTailTakesASecondRunAlong) {
    choose(1, {"00000", "110011", "00"});
    const float l1 = followed(0, 1, 0.02f);
    press(-3);
    EXPECT_EQ(parray[1][2].amp, (-20.0f + l1) - -20.0f);
    EXPECT_EQ(parray[1][5].amp, (-26.0f + l1) - -20.0f);
}

TEST_F(Follow, AFlagOfTwoEndsTheRun) {
    parray[1][2].selected = 2;
    const auto before = amps(1);
    press(-3);
    EXPECT_EQ(amps(1), before);
}

TEST_F(Follow, StrayingStopsAtSilence) {
    // The source is far louder at the second point than at the first: the sum turns negative.
    fill_store({{{0.0f, 200.0f, -100.0f}, {0.5f, 200.0f, 0.0f}, {1.0f, 200.0f, 0.0f}},
                {{0.0f, 300.0f, -20.0f},
                 {0.5f, 300.0f, -20.0f},
                 {0.6f, 300.0f, -20.0f},
                 {0.7f, 300.0f, -20.0f}}});
    choose(1, {"000", "1100"});
    press(3);
    EXPECT_EQ(amps(1), (std::vector<float>{-20.0f, -140.0f, -140.0f, -140.0f}));
}

TEST_F(Follow, BehindTheSourcesEndItsLastLevelStands) {
    for (int j = 0; j < 6; ++j) {
        parray[1][j].time += 5.0f;
    }
    press(-3);
    const float a0 = db2amp(-21.0f);
    const double mix = (1.0 - 0.02f) * (db2amp(-20.0f) / a0) + 0.02f * 1.0f;
    EXPECT_EQ(parray[1][2].amp, static_cast<float>(amp2db(static_cast<float>(mix * a0))));
}

TEST_F(Follow, LeavesRangesAndPhases) {
    minamp = -1.0f;
    maxamp = 1.0f;
    maxfreq = 5000.0f;
    parray[1][3].phase = 9.0f;
    press(-3);
    EXPECT_EQ(minamp, -1.0f);
    EXPECT_EQ(maxamp, 1.0f);
    EXPECT_EQ(maxfreq, 5000.0f);
    EXPECT_EQ(parray[1][3].phase, 9.0f);
}

TEST_F(Follow, ManyPressesBringTheRunToTheSourcesEnvelope) {
    choose(1, {"00000", "111100", "00"});
    for (int i = 0; i < 1000; ++i) {
        press(-3);
    }
    for (int32_t j = 1; j < 4; ++j) {
        const float s0 = linear_interpol_al(parray, npoints, 0, 1, 0);
        const float s = linear_interpol_al(parray, npoints, j, 1, 0);
        EXPECT_NEAR(parray[1][j].amp, -20.0 + 20.0 * std::log10(s / s0), 1e-3) << j;
    }
}

TEST_F(Follow, TheSourceIsPassedOverEvenWhenMarked) {
    peval[0].selected = 1;
    const auto before = amps(0);
    EXPECT_EQ(press(-3), "direction = -3\n");
    EXPECT_EQ(amps(0), before);
}

TEST_F(Follow, StandsSmallPartialsAndPairsThatAreGone) {
    for (const FoundPoints &pair : {FoundPoints{9, 0, 9, 1, 2}, {-1, -1, -1, -1, 2}}) {
        foundSubscriptions = pair;
        EXPECT_EQ(press(-3), "");
    }
    fill_store({{{0.5f, 100.0f, -3.0f}}, {{0.0f, 100.0f, -6.0f}}, {}});
    foundSubscriptions = {0, 0, 0, 0, 2};
    choose(1, {"0", "1", ""});
    peval[2].selected = 1;
    EXPECT_EQ(press(-3), "direction = -3\n");
    EXPECT_EQ(parray[1][0].amp, -6.0f);
}
