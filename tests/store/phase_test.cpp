// The recursion that derives phases, against the same steps written out.
#include "store/phase.h"

#include "store/recompute.h"
#include "tests/support/fixture.h"

#include <cmath>

namespace {

class Phase : public StoreTest {};

/// The five steps for one segment, each at its own width.
float next_phase(float t0, float t1, float f0, float before) {
    const volatile float interval = t1 - t0;
    const volatile float c = interval * f0;
    const double fr = c - std::trunc(static_cast<double>(c));
    volatile float x = static_cast<float>(static_cast<double>(before) / 6.283185307179586 + fr);
    if (x >= 1.0f) {
        x = x - 1.0f;
    }
    return static_cast<float>(static_cast<double>(x) * 6.283185307179586);
}

TEST_F(Phase, QuarterOfACycleIsHalfPi) {
    EXPECT_EQ(advance_phase(0.0f, 0.25), static_cast<float>(0.25 * 6.283185307179586));
}

TEST_F(Phase, WholeCyclesChangeNothing) {
    EXPECT_EQ(advance_phase(0.0f, 17.0), 0.0f);
}

TEST_F(Phase, OneIsTakenOffWhenThePositionReachesOne) {
    const float half_turn = static_cast<float>(0.5 * 6.283185307179586);
    EXPECT_EQ(advance_phase(half_turn, 3.5), 0.0f);
    EXPECT_EQ(advance_phase(half_turn, 3.75), static_cast<float>(0.25 * 6.283185307179586));
}

TEST_F(Phase, OneIsTakenOffOnceOnly) {
    const float two_turns = static_cast<float>(2.0 * 6.283185307179586);
    const float x = static_cast<float>(static_cast<double>(two_turns) / 6.283185307179586 + 0.5);
    EXPECT_EQ(advance_phase(two_turns, 0.5), static_cast<float>((x - 1.0f) * 6.283185307179586));
    EXPECT_GT(advance_phase(two_turns, 0.5), 6.28f);
}

TEST_F(Phase, ANegativePositionIsNotWrapped) {
    EXPECT_EQ(advance_phase(0.0f, -0.25), static_cast<float>(-0.25 * 6.283185307179586));
}

TEST_F(Phase, TheLeftEndAloneGivesTheFrequency) {
    Breakpoint points[2] = {};
    points[0].freq = 100.0f;
    points[1].freq = 99999.0f;
    points[1].time = 0.0025f;
    chain_phases(points, 2);
    EXPECT_EQ(points[1].phase, next_phase(0.0f, 0.0025f, 100.0f, 0.0f));
    EXPECT_NEAR(points[1].phase, 0.25 * 6.283185307179586, 1e-5);
}

TEST_F(Phase, PointZeroKeepsItsPhase) {
    Breakpoint points[2] = {};
    points[0].phase = 1.25f;
    points[0].freq = 440.0f;
    points[1].time = 0.01f;
    chain_phases(points, 2);
    EXPECT_EQ(points[0].phase, 1.25f);
    EXPECT_EQ(points[1].phase, next_phase(0.0f, 0.01f, 440.0f, 1.25f));
}

TEST_F(Phase, CyclesOfASegmentAreASinglePrecisionProduct) {
    Breakpoint points[2] = {};
    points[0].time = 1.1f;
    points[0].freq = 12345.679f;
    points[1].time = 7.3f;
    chain_phases(points, 2);
    const double wide = (7.3f - 1.1f) * static_cast<double>(12345.679f);
    EXPECT_EQ(points[1].phase, next_phase(1.1f, 7.3f, 12345.679f, 0.0f));
    EXPECT_NE(points[1].phase, advance_phase(0.0f, wide));
}

TEST_F(Phase, LongChainMatchesTheStepsWrittenOut) {
    Breakpoint points[200] = {};
    float expected[200];
    for (int i = 0; i < 200; ++i) {
        points[i].time = static_cast<float>(i) * 0.0116f;
        points[i].freq = 440.0f + static_cast<float>((i * 37) % 91);
    }
    points[0].phase = expected[0] = 0.7f;
    chain_phases(points, 200);
    for (int i = 1; i < 200; ++i) {
        expected[i] =
            next_phase(points[i - 1].time, points[i].time, points[i - 1].freq, expected[i - 1]);
        EXPECT_EQ(points[i].phase, expected[i]) << i;
    }
}

TEST_F(Phase, NoPointsAndOnePointAreLeftAlone) {
    Breakpoint point = {};
    point.phase = 2.0f;
    chain_phases(&point, 1);
    chain_phases(&point, 0);
    EXPECT_EQ(point.phase, 2.0f);
}

TEST_F(Phase, RecomputePhaseSetsTheFirstPhaseAndDerivesTheRest) {
    fill_store(small_content());
    recompute_phase(1.5f, 0);
    EXPECT_EQ(parray[0][0].phase, 1.5f);
    float before = 1.5f;
    for (int j = 1; j < 4; ++j) {
        before =
            next_phase(parray[0][j - 1].time, parray[0][j].time, parray[0][j - 1].freq, before);
        EXPECT_EQ(parray[0][j].phase, before) << j;
    }
    EXPECT_EQ(parray[1][1].phase, 0.0f);
}

TEST_F(Phase, RecomputePhaseAcceptsASinglePoint) {
    fill_store(small_content());
    recompute_phase(0.5f, 3);
    EXPECT_EQ(parray[3][0].phase, 0.5f);
}

TEST_F(Phase, NothingSelectedChangesNothingAtAll) {
    fill_store(small_content());
    for (int i = 0; i < partials; ++i) {
        for (int j = 0; j < npoints[i]; ++j) {
            parray[i][j].phase = 3.0f + static_cast<float>(j);
        }
    }
    recompute_all_phase();
    for (int i = 0; i < partials; ++i) {
        for (int j = 0; j < npoints[i]; ++j) {
            EXPECT_EQ(parray[i][j].phase, 3.0f + static_cast<float>(j));
        }
    }
}

TEST_F(Phase, OneSelectedPointRenewsItsWholePartialAndNoOther) {
    fill_store(small_content());
    for (int i = 0; i < partials; ++i) {
        parray[i][0].phase = 1.0f;
    }
    parray[1][2].selected = 1;
    recompute_all_phase();
    EXPECT_EQ(parray[1][0].phase, 1.0f);
    EXPECT_EQ(parray[1][1].phase, next_phase(0.1f, 0.2f, 400.0f, 1.0f));
    EXPECT_EQ(parray[0][1].phase, 0.0f);
    EXPECT_EQ(parray[2][1].phase, 0.0f);
}

TEST_F(Phase, AFlagOtherThanOneIsNotASelection) {
    fill_store(small_content());
    parray[0][0].phase = 1.0f;
    parray[0][1].selected = 2;
    recompute_all_phase();
    EXPECT_EQ(parray[0][1].phase, 0.0f);
}

} // namespace
