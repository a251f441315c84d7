// Searches for the mouse: rectangles that select and deselect, and the point nearest to a click.
#include "interact/find.h"

#include "display/view.h"
#include "interact/clear.h"
#include "interact/selection.h"
#include "store/slots.h"
#include "tests/support/console.h"
#include "tests/support/pointer.h"

#include <cmath>
#include <limits>

namespace {

using Flags = std::vector<std::string>;

/// A search from the press at (t, f) to the release, in the order of tfsquare.
struct Rectangle {
    float corners[4];
    Rectangle(float t_press, float f_press, float t_release, float f_release)
        : corners{t_release, t_press, f_release, f_press} {}
};

void sweep(const Rectangle &r) {
    findBreakpoints(r.corners, gCamera);
}

void unsweep(const Rectangle &r) {
    deselectBreakpoints(r.corners, gCamera);
}

/// A click at the scene place (t, f); the release lies elsewhere in y and must not matter.
std::string click(float t, float f) {
    square[0] = square[1] = 100;
    const Rectangle r(t, f, t + 0.3f, f + 0.4f);
    return printed([&] { findSingleBreakpoint(r.corners, gCamera); });
}

const Rectangle everything(-1.0f, -1.0f, 2.0f, 2.0f);
const float not_a_number = std::numeric_limits<float>::quiet_NaN();

class Sweeps : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        fill_store(ladder_content());
    }
};

class Clicks : public Sweeps {
  protected:
    void SetUp() override {
        Sweeps::SetUp();
        flat = bps = 1;
    }
};

} // namespace

TEST_F(Sweeps, SelectsThePointsInsideAndMarksTheirPartials) {
    sweep({0.2f, 0.2f, 0.6f, 0.3f});
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
    EXPECT_EQ(peval[0].selected, 1);
    EXPECT_EQ(peval[1].selected, 1);
    EXPECT_EQ(peval[2].selected, 0);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(directSelect, 0);
}

TEST_F(Sweeps, AllFourEdgesAreInclusive) {
    // Points 1 to 3 of the ladder lie at (0.25, 0.125), (0.5, 0.25) and (0.75, 0.5).
    sweep({0.25f, 0.125f, 0.75f, 0.5f});
    EXPECT_EQ(flags(), (Flags{"01110", "11", "0"}));
}

TEST_F(Sweeps, APointJustOutsideAnEdgeStays) {
    const float below = std::nextafter(0.25f, 0.0f);
    const float above = std::nextafter(0.25f, 1.0f);
    sweep({above, 0.0f, 0.4f, 1.0f});
    sweep({0.0f, 0.0f, below, 0.12f});
    EXPECT_EQ(flags(), (Flags{"10000", "00", "0"}));
    clear_all();
    sweep({0.5f, above, 0.5f, 1.0f}); // 256 Hz lies at 0.25
    EXPECT_EQ(flags(), (Flags{"00000", "00", "1"}));
    clear_all();
    sweep({0.5f, 0.0f, 0.5f, below});
    EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
}

TEST_F(Sweeps, CornersMayComeInAnyOrder) {
    for (const Rectangle &r :
         {Rectangle(0.2f, 0.1f, 0.6f, 0.3f), Rectangle(0.6f, 0.1f, 0.2f, 0.3f),
          Rectangle(0.2f, 0.3f, 0.6f, 0.1f), Rectangle(0.6f, 0.3f, 0.2f, 0.1f)}) {
        clear_all();
        sweep(r);
        EXPECT_EQ(flags(), (Flags{"01100", "11", "0"}));
    }
}

TEST_F(Sweeps, TimesRunFromTheStartToTheEndOfTheSound) {
    fill_store({{{1.0f, 100.0f, 0.0f}, {2.0f, 100.0f, 0.0f}, {5.0f, 100.0f, 0.0f}}});
    ASSERT_EQ(sndstart, 1.0f);
    ASSERT_EQ(sndlen, 5.0f);
    sweep({0.25f, 0.0f, 0.25f, 1.0f});
    EXPECT_EQ(flags(), (Flags{"010"}));
}

TEST_F(Sweeps, LogarithmicViewComparesLogPositions) {
    logpos = 1;
    sweep({0.0f, 0.25f, 1.0f, 0.75f}); // 128 to 512 Hz, edges included
    EXPECT_EQ(flags(), (Flags{"01110", "11", "0"}));
    clear_all();
    sweep({0.0f, std::nextafter(0.25f, 1.0f), 1.0f, std::nextafter(0.75f, 0.0f)});
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
}

TEST_F(Sweeps, LogarithmicViewTakesTheStoredPositionNotTheFrequency) {
    logpos = 1;
    parray[2][0].logfreq = 0.1f;
    sweep({0.4f, 0.05f, 0.6f, 0.15f});
    EXPECT_EQ(flags(), (Flags{"00000", "00", "1"}));
}

TEST_F(Sweeps, LogarithmicBoundsAreDividedByTheTopAgain) {
    // The bound takes the way over Hz and back, with the rounding of both steps.
    logpos = 1;
    maxfreq = 1234.567f;
    int rounded_away = 0;
    for (int k = 1; k < 200; ++k) {
        const float corner = static_cast<float>(k) / 201.0f;
        const float bound = maxfreq * corner / maxfreq;
        parray[2][0].logfreq = corner;
        clear_all();
        sweep({0.5f, corner, 0.5f, 2.0f});
        EXPECT_EQ(parray[2][0].selected, corner >= bound ? 1 : 0);
        rounded_away += corner < bound ? 1 : 0;
    }
    EXPECT_GT(rounded_away, 0);
}

TEST_F(Sweeps, AddUp) {
    sweep({0.0f, 0.0f, 0.3f, 0.2f});
    sweep({0.4f, 0.7f, 0.6f, 0.8f});
    EXPECT_EQ(flags(), (Flags{"11000", "00", "1"}));
    EXPECT_EQ(peval[0].selected, 1);
    EXPECT_EQ(peval[1].selected, 0);
    EXPECT_EQ(peval[2].selected, 1);
}

TEST_F(Sweeps, OverEmptySpaceSetsSweepSelectAlone) {
    sweep({0.8f, 0.0f, 0.9f, 0.1f});
    EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 0);
}

TEST_F(Sweeps, OverEmptySpaceKeepsAnEarlierSelection) {
    sweep({0.0f, 0.0f, 0.1f, 0.1f});
    sweep({0.8f, 0.0f, 0.9f, 0.1f});
    EXPECT_EQ(flags(), (Flags{"10000", "00", "0"}));
    EXPECT_EQ(selected, 1);
}

TEST_F(Sweeps, OnAnEmptyStoreSetSweepSelect) {
    fill_store({});
    sweep(everything);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 0);
}

TEST_F(Sweeps, BeforeAnyFileSetSweepSelect) {
    free_store();
    reset_store_globals();
    sweep(everything);
    unsweep(everything);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 0);
}

TEST_F(Sweeps, ReplaceAFlagThatIsNeitherSetNorClear) {
    parray[0][0].selected = 7;
    sweep(everything);
    EXPECT_EQ(parray[0][0].selected, 1);
}

TEST_F(Sweeps, ReachEveryPointOfLongPartials) {
    // Longer than any stretch that the search may work in.
    Partial longer;
    for (int j = 0; j < 1003; ++j) {
        longer.push_back({static_cast<float>(j), j % 3 == 0 ? 100.0f : 900.0f, -10.0f});
    }
    fill_store({longer});
    sweep({-1.0f, 0.0f, 2.0f, 0.5f});
    for (int j = 0; j < 1003; ++j) {
        ASSERT_EQ(parray[0][j].selected, j % 3 == 0 ? 1 : 0) << j;
    }
    sweep(everything);
    unsweep({-1.0f, 0.0f, 2.0f, 0.5f});
    for (int j = 0; j < 1003; ++j) {
        ASSERT_EQ(parray[0][j].selected, j % 3 == 0 ? 0 : 1) << j;
    }
    EXPECT_EQ(peval[0].selected, 1);
    unsweep({-1.0f, 0.5f, 2.0f, 1.0f});
    EXPECT_EQ(peval[0].selected, 0);
}

TEST_F(Sweeps, DeselectClearsOnlyPointsInside) {
    sweep(everything);
    unsweep({0.25f, 0.125f, 0.5f, 0.25f});
    EXPECT_EQ(flags(), (Flags{"10011", "00", "1"}));
    EXPECT_EQ(peval[0].selected, 1);
    EXPECT_EQ(peval[1].selected, 0);
    EXPECT_EQ(peval[2].selected, 1);
}

TEST_F(Sweeps, DeselectKeepsAFlagOtherThanOne) {
    parray[0][0].selected = 7;
    unsweep(everything);
    EXPECT_EQ(parray[0][0].selected, 7);
}

TEST_F(Sweeps, DeselectingEverythingLeavesTheSummaryFlags) {
    sweep(everything);
    unsweep(everything);
    EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
    EXPECT_EQ(peval[0].selected, 0);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Sweeps, DeselectSetsTheSummaryFlagsWhileAPartialStaysMarked) {
    sweep(everything);
    selected = sweepSelect = 0;
    unsweep({0.0f, 0.0f, 0.1f, 0.1f});
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Sweeps, DeselectSetsNothingWhenNoPartialIsMarked) {
    set_flags({"11111"});
    unsweep({0.0f, 0.0f, 0.1f, 0.1f});
    EXPECT_EQ(flags(), (Flags{"01111", "00", "0"}));
    EXPECT_EQ(peval[0].selected, 0);
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(sweepSelect, 0);
}

TEST_F(Sweeps, DeselectUnmarksAPartialThatLostItsPointsBefore) {
    peval[1].selected = 1;
    unsweep({0.9f, 0.0f, 0.95f, 0.01f});
    EXPECT_EQ(peval[1].selected, 0);
}

TEST_F(Sweeps, DeselectInTheLogarithmicView) {
    logpos = 1;
    sweep(everything);
    unsweep({0.0f, 0.25f, 1.0f, 0.75f});
    EXPECT_EQ(flags(), (Flags{"10001", "00", "1"}));
}

TEST_F(Sweeps, DeselectLeavesFoundPointsAlone) {
    flat = bps = 1;
    click(0.5f, 0.25f);
    unsweep(everything);
    EXPECT_EQ(slots(), (Slots{0, 2, -1, -1, 1}));
    EXPECT_EQ(directSelect, 1);
}

TEST_F(Clicks, FindTheNearestPoint) {
    EXPECT_EQ(click(0.51f, 0.7f), "##FOUND: 2  0\n");
    EXPECT_EQ(slots(), (Slots{2, 0, -1, -1, 1}));
    EXPECT_EQ(directSelect, 1);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(numfound, 1);
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
}

TEST_F(Clicks, WithHorizontalMotionFindNothing) {
    square[0] = 100;
    square[1] = 101;
    const Rectangle r(0.5f, 0.25f, 0.5f, 0.25f);
    EXPECT_EQ(printed([&] { findSingleBreakpoint(r.corners, gCamera); }), "");
    EXPECT_EQ(slots(), (Slots{-1, -1, -1, -1, 0}));
}

TEST_F(Clicks, FrequencyHasNoTolerance) {
    EXPECT_EQ(click(0.0f, 1.0f), "##FOUND: 0  0\n"); // 64 Hz, clicked at 1024
}

TEST_F(Clicks, AtOrBeyondTheTopFrequencyFromTheBottomFindNothing) {
    // The distance must stay below maxfreq.
    EXPECT_EQ(click(0.0f, 1.0625f), ""); // 1088 - 64 = 1024
    EXPECT_EQ(click(0.0f, 1.0624f), "##FOUND: 0  0\n");
}

TEST_F(Clicks, FartherThanTwoPercentOfTheEndTimeFindNothing) {
    EXPECT_EQ(click(0.5f + 0.021f, 0.25f), "");
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(click(0.5f + 0.019f, 0.25f), "##FOUND: 0  2\n");
}

TEST_F(Clicks, BoundIsTakenFromTheEndTimeNotTheDuration) {
    fill_store({{{9.0f, 100.0f, 0.0f}, {10.0f, 100.0f, 0.0f}}});
    ASSERT_EQ(sndstart, 9.0f);
    ASSERT_EQ(sndlen, 10.0f);
    EXPECT_EQ(click(0.15f, 1.0f), "##FOUND: 0  0\n"); // 0.15 s away, 2 % of 10 s are 0.2 s
    EXPECT_EQ(click(0.25f, 1.0f), "");
}

TEST_F(Clicks, TheTimeBoundIsComparedInDoublePrecision) {
    // f32(0.02) is below 0.02: strictly nearer than the bound only at the wider width.
    ASSERT_EQ(sndlen, 1.0f);
    ASSERT_LT(static_cast<double>(0.02f), 0.02);
    EXPECT_EQ(click(0.02f, 0.0f), "##FOUND: 0  0\n");
    EXPECT_EQ(click(std::nextafter(0.02f, 1.0f), 0.0f), "");
}

TEST_F(Clicks, FartherThanNearlyHalfAHopFindNothingWhateverTheFrequency) {
    meant = 0.02f;
    EXPECT_EQ(click(0.5f + 0.0095f, 0.25f), "");
    EXPECT_EQ(click(0.5f + 0.0095f, 0.75f), "");
    EXPECT_EQ(found, 0);
    EXPECT_EQ(click(0.5f + 0.0085f, 0.25f), "##FOUND: 0  2\n");
}

TEST_F(Clicks, TheHopBoundIsComparedInDoublePrecision) {
    // Looks for a hop whose 45 % round up to the distance: beyond the bound at the wider width.
    float hop = 0.02f;
    while (static_cast<double>(static_cast<float>(hop * 0.45)) <= hop * 0.45) {
        hop = std::nextafter(hop, 1.0f);
    }
    const float distance = static_cast<float>(hop * 0.45);
    meant = hop;
    EXPECT_EQ(click(distance, 0.0f), "");
    EXPECT_EQ(click(std::nextafter(distance, 0.0f), 0.0f), "##FOUND: 0  0\n");
}

TEST_F(Clicks, TheFirstOfEquallyNearTimesWins) {
    fill_store({{{0.0f, 100.0f, 0.0f},
                 {0.49609375f, 200.0f, 0.0f},
                 {0.50390625f, 300.0f, 0.0f},
                 {1.0f, 400.0f, 0.0f}}});
    EXPECT_EQ(click(0.5f, 0.75f), "##FOUND: 0  1\n");
}

TEST_F(Clicks, APartialStandsForItsNearestTimeOnly) {
    // A point of the same partial nearer in frequency but farther in time is no candidate.
    fill_store({{{0.0f, 100.0f, 0.0f},
                 {0.5f, 200.0f, 0.0f},
                 {0.51f, 900.0f, 0.0f},
                 {1.0f, 1000.0f, 0.0f}}});
    EXPECT_EQ(click(0.501f, 0.9f), "##FOUND: 0  1\n");
}

TEST_F(Clicks, TheFirstOfEquallyNearFrequenciesWins) {
    EXPECT_EQ(click(0.5f, 0.25f), "##FOUND: 0  2\n"); // partial 1 has 256 Hz there too
    EXPECT_EQ(click(0.5f, 0.5f), "##FOUND: 0  2\n");  // 512 lies midway between 256 and 768
}

TEST_F(Clicks, LogarithmicViewMeasuresLogPositions) {
    // At 0.5 s there are 256 Hz, at 0.25 or 0.5 of the height, and 768 Hz, at 0.75 or 0.896.
    logpos = 1;
    EXPECT_EQ(click(0.5f, 0.6f), "##FOUND: 0  2\n");
    clear_all();
    EXPECT_EQ(click(0.5f, 0.75f), "##FOUND: 2  0\n");
    clear_all();
    logpos = 0;
    EXPECT_EQ(click(0.5f, 0.6f), "##FOUND: 2  0\n");
}

TEST_F(Clicks, LogarithmicViewHasTheBoundOne) {
    logpos = 1;
    EXPECT_EQ(click(0.0f, 1.0f), ""); // from 0 to 1
    EXPECT_EQ(click(0.0f, 0.999f), "##FOUND: 0  0\n");
}

TEST_F(Clicks, ThePressCountsNotTheRelease) {
    square[0] = square[1] = 7;
    const Rectangle r(0.25f, 0.125f, 0.75f, 0.5f);
    EXPECT_EQ(printed([&] { findSingleBreakpoint(r.corners, gCamera); }), "##FOUND: 0  1\n");
}

TEST_F(Clicks, ASecondPointMovesTheFirstDown) {
    click(0.0f, 0.0f);
    EXPECT_EQ(click(1.0f, 1.0f), "##FOUND: 0  4\n##FOUN2: 0  0\n");
    EXPECT_EQ(slots(), (Slots{0, 4, 0, 0, 2}));
    EXPECT_EQ(numfound, 2);
}

TEST_F(Clicks, ThreeKeepTheLastTwo) {
    click(0.0f, 0.0f);
    click(1.0f, 1.0f);
    EXPECT_EQ(click(0.5f, 0.75f), "##FOUND: 2  0\n##FOUN2: 0  4\n");
    EXPECT_EQ(slots(), (Slots{2, 0, 0, 4, 2}));
    EXPECT_EQ(numfound, 2);
}

TEST_F(Clicks, TwiceOnTheSamePointIsNoPair) {
    click(0.0f, 0.0f);
    EXPECT_EQ(click(0.0f, 0.0f), "##FOUND: 0  0\n");
    EXPECT_EQ(slots(), (Slots{0, 0, 0, 0, 1}));
    EXPECT_EQ(numfound, 1);
}

TEST_F(Clicks, AgainOnTheNewestOfTwoGoesBackToOne) {
    click(0.0f, 0.0f);
    click(1.0f, 1.0f);
    EXPECT_EQ(click(1.0f, 1.0f), "##FOUND: 0  4\n");
    EXPECT_EQ(slots(), (Slots{0, 4, 0, 4, 1}));
    EXPECT_EQ(numfound, 1);
}

TEST_F(Clicks, AgainOnTheOlderOfTwoSwapsThem) {
    click(0.0f, 0.0f);
    click(1.0f, 1.0f);
    EXPECT_EQ(click(0.0f, 0.0f), "##FOUND: 0  0\n##FOUN2: 0  4\n");
    EXPECT_EQ(slots(), (Slots{0, 0, 0, 4, 2}));
}

TEST_F(Clicks, AfterARepeatAnotherPointPairsWithIt) {
    click(0.0f, 0.0f);
    click(0.0f, 0.0f);
    EXPECT_EQ(click(1.0f, 1.0f), "##FOUND: 0  4\n##FOUN2: 0  0\n");
    EXPECT_EQ(slots(), (Slots{0, 4, 0, 0, 2}));
}

TEST_F(Clicks, ThatMissChangeNothing) {
    click(0.0f, 0.0f);
    EXPECT_EQ(click(0.9f, 0.5f), "");
    EXPECT_EQ(slots(), (Slots{0, 0, -1, -1, 1}));
    EXPECT_EQ(numfound, 1);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(directSelect, 1);
}

TEST_F(Clicks, OnAnEmptyStoreFindNothing) {
    fill_store({});
    EXPECT_EQ(click(0.5f, 0.5f), "");
    free_store();
    reset_store_globals();
    EXPECT_EQ(click(0.5f, 0.5f), "");
    EXPECT_EQ(foundSubscriptions.count, 0);
}

TEST_F(Clicks, PassOverEmptyPartials) {
    fill_store({{}, {{0.0f, 100.0f, 0.0f}, {1.0f, 200.0f, 0.0f}}, {}});
    meant = 1.0f;
    EXPECT_EQ(click(0.0f, 0.5f), "##FOUND: 1  0\n");
    sweep(everything);
    EXPECT_EQ(flags(), (Flags{"", "11", ""}));
    EXPECT_EQ(peval[0].selected, 0);
    EXPECT_EQ(peval[2].selected, 0);
    unsweep(everything);
    EXPECT_EQ(flags(), (Flags{"", "00", ""}));
}

TEST_F(Clicks, InAStoreOfSinglePointsHaveNoHopToExceed) {
    // With no interval to average the hop is 0/0, and no distance is beyond it.
    fill_store({{{0.0f, 100.0f, 0.0f}}, {{1.0f, 200.0f, 0.0f}}});
    ASSERT_TRUE(std::isnan(meant));
    sndlen = 1.0f;
    EXPECT_EQ(click(0.0f, 0.5f), "##FOUND: 0  0\n");
    EXPECT_EQ(click(0.999f, 0.5f), "##FOUND: 1  0\n##FOUN2: 0  0\n");
    sweep(everything);
    EXPECT_EQ(flags(), (Flags{"1", "1"}));
}

TEST_F(Clicks, NeverFindAFrequencyThatIsNotANumber) {
    parray[2][0].freq = parray[0][0].freq = not_a_number;
    parray[0][0].logfreq = not_a_number;
    EXPECT_EQ(click(0.0f, 0.5f), "");
    EXPECT_EQ(click(0.5f, 0.75f), "##FOUND: 0  2\n");
    sweep(everything);
    EXPECT_EQ(flags(), (Flags{"01111", "11", "0"}));
    logpos = 1;
    EXPECT_EQ(click(0.0f, 0.5f), "");
}

TEST_F(Clicks, NeverFindATimeThatIsNotANumber) {
    parray[0][0].time = not_a_number;
    EXPECT_EQ(click(0.0f, 0.0f), "");
    sweep(everything);
    EXPECT_EQ(flags(), (Flags{"01111", "11", "1"}));
}

TEST_F(Clicks, WithAMaximumThatIsNotANumberFindNothing) {
    maxfreq = not_a_number;
    EXPECT_EQ(click(0.0f, 0.0f), "");
    sweep(everything);
    EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
}

TEST_F(Clicks, InASoundOfNoLengthTakeTheOneTime) {
    fill_store({{{2.0f, 100.0f, 0.0f}}, {{2.0f, 400.0f, 0.0f}}});
    sndlen = sndstart;
    ASSERT_EQ(sndlen, 2.0f);
    EXPECT_EQ(click(17.0f, 1.0f), "##FOUND: 1  0\n");
    sweep({5.0f, 0.0f, 6.0f, 1.0f});
    EXPECT_EQ(flags(), (Flags{"1", "1"}));
    unsweep({5.0f, 0.0f, 6.0f, 0.5f});
    EXPECT_EQ(flags(), (Flags{"0", "1"}));
}

TEST_F(Clicks, AtInfinityOrNowhereFindNothing) {
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(click(infinity, 0.5f), "");
    EXPECT_EQ(click(not_a_number, not_a_number), "");
    sweep({not_a_number, 0.0f, 1.0f, 1.0f});
    EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
    sweep({-infinity, -infinity, infinity, infinity});
    EXPECT_EQ(flags(), (Flags{"11111", "11", "1"}));
}

TEST_F(Clicks, OnTopOfAStaleSlotMoveItDown) {
    foundSubscriptions = {77, 88, 99, 11, 2};
    EXPECT_EQ(click(0.0f, 0.0f), "##FOUND: 0  0\n##FOUN2: 77  88\n");
    EXPECT_EQ(slots(), (Slots{0, 0, 77, 88, 2}));
}
