// Moving a selection that stands: whole partials in turn, found points along their partials; and
// the two clearings.
#include "interact/choose.h"

#include "display/view.h"
#include "interact/clear.h"
#include "interact/select.h"
#include "interact/selection.h"
#include "tests/support/console.h"
#include "tests/support/pointer.h"

#include <climits>

namespace {

using Flags = std::vector<std::string>;

constexpr int all = 0;
constexpr int shift = 1;
constexpr int alt = 2;

class CycleTest : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}},
                    {{0.0f, 200.0f, 0.0f}, {0.5f, 200.0f, 0.0f}, {1.0f, 200.0f, 0.0f}},
                    {{0.0f, 300.0f, 0.0f}}});
    }
};

std::string cycle(int direction) {
    return printed([&] { cycleSelection(direction); });
}

/// Partial 0 of the ladder has 5 points, partial 1 has 2, partial 2 has 1.
class ChooseTest : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        fill_store(ladder_content());
        flat = 1;
        numfound = 9; // stands for any value: none of these functions touches it
    }
    void TearDown() override {
        EXPECT_EQ(numfound, 9);
        PointerTest::TearDown();
    }
    static void hold(int part0, int point0, int part1 = -1, int point1 = -1) {
        foundSubscriptions = {part0, point0, part1, point1, part1 < 0 ? 1 : 2};
    }
};

} // namespace

TEST_F(CycleTest, MovesAWholePartialToTheNext) {
    set_flags({"11", "000", "0"});
    peval[0].selected = 1;
    EXPECT_EQ(cycle(1), "Current: [0]\tNext: [1]\n");
    EXPECT_EQ(flags(), (Flags{"00", "111", "0"}));
    EXPECT_EQ(peval[0].selected, 0);
    EXPECT_EQ(peval[1].selected, 1);
}

TEST_F(CycleTest, MovesAWholePartialToTheOneBefore) {
    set_flags({"00", "111", "0"});
    peval[1].selected = 1;
    EXPECT_EQ(cycle(-1), "Current: [1]\tNext: [0]\n");
    EXPECT_EQ(flags(), (Flags{"11", "000", "0"}));
    EXPECT_EQ(peval[1].selected, 0);
    EXPECT_EQ(peval[0].selected, 1);
}

TEST_F(CycleTest, WrapsAtBothEnds) {
    set_flags({"00", "000", "1"});
    EXPECT_EQ(cycle(1), "Current: [2]\tNext: [0]\n");
    EXPECT_EQ(flags(), (Flags{"11", "000", "0"}));
    EXPECT_EQ(cycle(-1), "Current: [0]\tNext: [2]\n");
    EXPECT_EQ(flags(), (Flags{"00", "000", "1"}));
}

TEST_F(CycleTest, RefusesAPartOfAPartial) {
    set_flags({"00", "110", "0"});
    EXPECT_EQ(cycle(1), "An entire partial must be selected\n");
    EXPECT_EQ(flags(), (Flags{"00", "110", "0"}));
}

TEST_F(CycleTest, RefusesNothingSelectedWherePartial0IsLong) {
    EXPECT_EQ(cycle(1), "An entire partial must be selected\n");
    EXPECT_EQ(flags(), (Flags{"00", "000", "0"}));
}

TEST_F(CycleTest, TakesASinglePointPartial0ForSelected) {
    // Without any selection partial 0 is meant, and it has no further point to be unselected.
    fill_store({{{0.0f, 100.0f, 0.0f}}, {{0.0f, 200.0f, 0.0f}, {1.0f, 200.0f, 0.0f}}});
    EXPECT_EQ(cycle(1), "Current: [0]\tNext: [1]\n");
    EXPECT_EQ(flags(), (Flags{"0", "11"}));
}

TEST_F(CycleTest, FallsBackToPartial0WithoutAskingForItsFirstPoint) {
    // No first point is selected, so partial 0 is meant; only its further points are looked at.
    set_flags({"01", "011", "0"});
    EXPECT_EQ(cycle(1), "Current: [0]\tNext: [1]\n");
    EXPECT_EQ(flags(), (Flags{"00", "111", "0"}));
}

TEST_F(CycleTest, RefusesTwoPartials) {
    set_flags({"11", "000", "1"});
    EXPECT_EQ(cycle(1), "Only one partial may be selected\n");
    EXPECT_EQ(flags(), (Flags{"11", "000", "1"}));
}

TEST_F(CycleTest, RefusesAFirstPointAloneBehind) {
    set_flags({"11", "100", "0"});
    EXPECT_EQ(cycle(1), "Only one partial may be selected\n");
}

TEST_F(CycleTest, LooksForWholenessBeforeItLooksForOthers) {
    set_flags({"10", "111", "0"});
    EXPECT_EQ(cycle(1), "An entire partial must be selected\n");
}

TEST_F(CycleTest, OverlooksOtherPartialsWithoutTheirFirstPoint) {
    set_flags({"11", "000", "0"});
    parray[1][2].selected = 1;
    EXPECT_EQ(cycle(-1), "Current: [0]\tNext: [2]\n");
    EXPECT_EQ(flags(), (Flags{"00", "001", "1"}));
}

TEST_F(CycleTest, AloneInTheStoreComesBackToItself) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    set_flags({"11"});
    EXPECT_EQ(cycle(1), "Current: [0]\tNext: [0]\n");
    EXPECT_EQ(flags(), (Flags{"11"}));
    EXPECT_EQ(cycle(-1), "Current: [0]\tNext: [0]\n");
    EXPECT_EQ(peval[0].selected, 1);
}

TEST_F(CycleTest, DoesNothingWithoutPartials) {
    fill_store({});
    EXPECT_EQ(cycle(1), "");
    EXPECT_EQ(cycle(-1), "");
}

TEST_F(CycleTest, PassesThroughEmptyPartials) {
    fill_store({{}, {{0.0f, 100.0f, 0.0f}}, {}});
    set_flags({"", "1", ""});
    EXPECT_EQ(cycle(1), "Current: [1]\tNext: [2]\n");
    EXPECT_EQ(flags(), (Flags{"", "0", ""}));
    EXPECT_EQ(cycle(1), "Current: [0]\tNext: [1]\n");
    EXPECT_EQ(flags(), (Flags{"", "1", ""}));
}

TEST_F(ChooseTest, OnePointGoesLeftAndRightWithinItsPartial) {
    hold(0, 1);
    chooseSingle_left(all);
    EXPECT_EQ(slots(), (Slots{0, 0, -1, -1, 1}));
    chooseSingle_left(all);
    EXPECT_EQ(slots(), (Slots{0, 0, -1, -1, 1}));
    hold(0, 3);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 4, -1, -1, 1}));
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 4, -1, -1, 1}));
}

TEST_F(ChooseTest, OnePointMovesUnderEveryModifier) {
    for (const int which : {all, shift, alt}) {
        hold(0, 2);
        chooseSingle_left(which);
        EXPECT_EQ(slots(), (Slots{0, 1, -1, -1, 1}));
        chooseSingle_right(which);
        EXPECT_EQ(slots(), (Slots{0, 2, -1, -1, 1}));
    }
}

TEST_F(ChooseTest, ARepeatedClickMovesTheNewestAndLeavesItsCopy) {
    foundSubscriptions = {0, 2, 0, 2, 1};
    chooseSingle_left(all);
    EXPECT_EQ(slots(), (Slots{0, 1, 0, 2, 1}));
}

TEST_F(ChooseTest, NeedsAViewThatAllowsIt) {
    hold(0, 2);
    flat = bps = 0;
    chooseSingle_left(all);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 2, -1, -1, 1}));
    bps = 1;
    chooseSingle_left(all);
    EXPECT_EQ(slots(), (Slots{0, 1, -1, -1, 1}));
}

TEST_F(ChooseTest, NeedsAFoundPoint) {
    foundSubscriptions = {0, 2, 0, 3, 0};
    chooseSingle_left(all);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 2, 0, 3, 0}));
}

TEST_F(ChooseTest, WithoutModifierBothMove) {
    hold(0, 2, 1, 1);
    chooseSingle_left(all);
    EXPECT_EQ(slots(), (Slots{0, 1, 1, 0, 2}));
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 2, 1, 1, 2}));
}

TEST_F(ChooseTest, LeftWithShiftMovesTheOlderWithAltTheNewest) {
    hold(0, 2, 1, 1);
    chooseSingle_left(shift);
    EXPECT_EQ(slots(), (Slots{0, 2, 1, 0, 2}));
    chooseSingle_left(alt);
    EXPECT_EQ(slots(), (Slots{0, 1, 1, 0, 2}));
}

TEST_F(ChooseTest, RightWithShiftMovesTheNewestWithAltTheOlder) {
    hold(0, 2, 1, 0);
    chooseSingle_right(shift);
    EXPECT_EQ(slots(), (Slots{0, 3, 1, 0, 2}));
    chooseSingle_right(alt);
    EXPECT_EQ(slots(), (Slots{0, 3, 1, 1, 2}));
}

TEST_F(ChooseTest, EachStopsAtItsOwnEnd) {
    hold(0, 0, 1, 1);
    chooseSingle_left(all);
    EXPECT_EQ(slots(), (Slots{0, 0, 1, 0, 2}));
    hold(0, 3, 1, 1);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 4, 1, 1, 2}));
}

TEST_F(ChooseTest, TheOlderOnTheNewestMergesToTheLeft) {
    hold(0, 1, 0, 2);
    chooseSingle_left(shift);
    EXPECT_EQ(slots(), (Slots{0, 1, -1, -1, 1}));
}

TEST_F(ChooseTest, TheOlderOnTheNewestMergesToTheRight) {
    hold(0, 3, 0, 2);
    chooseSingle_right(alt);
    EXPECT_EQ(slots(), (Slots{0, 3, -1, -1, 1}));
}

TEST_F(ChooseTest, TheNewestOnTheOlderDoesNotMerge) {
    hold(0, 2, 0, 1);
    chooseSingle_left(alt);
    EXPECT_EQ(slots(), (Slots{0, 1, 0, 1, 2}));
    hold(0, 2, 0, 3);
    chooseSingle_right(shift);
    EXPECT_EQ(slots(), (Slots{0, 3, 0, 3, 2}));
}

TEST_F(ChooseTest, BothAtOneEndMergeOnlyWhenTheOlderMoved) {
    hold(0, 0, 0, 1);
    chooseSingle_left(all); // the newest stays at 0, the older comes to it
    EXPECT_EQ(slots(), (Slots{0, 0, -1, -1, 1}));
    hold(0, 1, 0, 0);
    chooseSingle_left(all); // the older cannot move: no test
    EXPECT_EQ(slots(), (Slots{0, 0, 0, 0, 2}));
    hold(0, 4, 0, 3);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 4, -1, -1, 1}));
    hold(0, 3, 0, 4);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 4, 0, 4, 2}));
}

TEST_F(ChooseTest, TheSamePlaceInOtherPartialsIsNotTheSamePoint) {
    hold(0, 0, 1, 1);
    chooseSingle_left(shift);
    EXPECT_EQ(slots(), (Slots{0, 0, 1, 0, 2}));
}

TEST_F(ChooseTest, ASlotWithoutAPartialStays) {
    foundSubscriptions = {-1, 2, -1, 3, 2};
    chooseSingle_left(all);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{-1, 2, -1, 3, 2}));
}

TEST_F(ChooseTest, AStalePartialStays) {
    hold(77, 2, INT_MAX, 3);
    chooseSingle_left(all);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{77, 2, INT_MAX, 3, 2}));
    hold(77, 2);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{77, 2, -1, -1, 1}));
}

TEST_F(ChooseTest, AStalePointGoesLeftOnly) {
    hold(0, 40, 1, 50);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 40, 1, 50, 2}));
    chooseSingle_left(all);
    EXPECT_EQ(slots(), (Slots{0, 39, 1, 49, 2}));
}

TEST_F(ChooseTest, AnEmptyPartialHasNoRoom) {
    fill_store({{}, {{0.0f, 100.0f, 0.0f}}});
    hold(0, 0);
    chooseSingle_left(all);
    chooseSingle_right(all);
    EXPECT_EQ(slots(), (Slots{0, 0, -1, -1, 1}));
}

namespace {

class ClearTest : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        fill_store(ladder_content());
        set_flags({"11010", "10", "1"});
        for (int i = 0; i < 3; ++i) {
            peval[i].selected = 1;
        }
        selected = sweepSelect = found = 1;
        directSelect = 1;
        numfound = 2;
        selecting = 1;
        foundSubscriptions = {0, 1, 2, 0, 2};
    }
    static void expect_cleared() {
        EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(peval[i].selected, 0);
        }
        EXPECT_EQ(selected, 0);
        EXPECT_EQ(sweepSelect, 0);
        EXPECT_EQ(found, 0);
        EXPECT_EQ(directSelect, 0);
        EXPECT_EQ(numfound, 0);
        EXPECT_EQ(selecting, 0);
        EXPECT_EQ(foundSubscriptions.part0, -1);
        EXPECT_EQ(foundSubscriptions.point0, -1);
        EXPECT_EQ(foundSubscriptions.part1, -1);
        EXPECT_EQ(foundSubscriptions.point1, -1);
        EXPECT_EQ(foundSubscriptions.count, 0);
    }
    static void expect_untouched() {
        EXPECT_EQ(flags(), (Flags{"11010", "10", "1"}));
        EXPECT_EQ(peval[2].selected, 1);
        EXPECT_EQ(selected, 1);
        EXPECT_EQ(sweepSelect, 1);
        EXPECT_EQ(found, 1);
        EXPECT_EQ(directSelect, 1);
        EXPECT_EQ(numfound, 2);
        EXPECT_EQ(selecting, 1);
        EXPECT_EQ(foundSubscriptions.count, 2);
        EXPECT_EQ(foundSubscriptions.part1, 2);
    }
};

} // namespace

TEST_F(ClearTest, CompleteInEveryView) {
    clear_all();
    expect_cleared();
}

TEST_F(ClearTest, DeselectAllInTheFlatView) {
    flat = 1;
    deselect_all();
    expect_cleared();
}

TEST_F(ClearTest, DeselectAllOutsideTheFlatViewDoesNothing) {
    bps = 1;
    deselect_all();
    expect_untouched();
}

TEST_F(ClearTest, SelectNoneInTheFlatView) {
    flat = 1;
    select_none();
    expect_cleared();
}

TEST_F(ClearTest, SelectNoneOutsideTheFlatViewDoesNothing) {
    bps = 1;
    select_none();
    expect_untouched();
}

TEST_F(ClearTest, ClearsAnEmptyStore) {
    fill_store({});
    clear_all();
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(foundSubscriptions.count, 0);
}
