// Picking whole partials: the dialogue text by text, each criterion with its bounds, and which
// flags it leaves alone.
#include "edit/pick.h"

#include "interact/selection.h"
#include "tests/edit/structure.h"
#include "tests/support/console.h"

#include <gtest/gtest.h>

using namespace structure;

namespace {

const std::string prompt = "size  [<|>]  num_points\n"
                           "start [<|>|time0] time1\n"
                           "endt  [<|>|time0] time1\n"
                           "> ";

class Pick : public StoreTest {
  protected:
    /// Partials 0 to 3 of 2, 3, 4 and 5 points, from 0, 1, 2, 3 s on; they end at 0.25, 1.5,
    /// 2.75 and 4 s.
    void SetUp() override {
        StoreTest::SetUp();
        fill_store(numbered({2, 3, 4, 5}));
    }

    /// The partials that are selected whole; -1 stands for one selected in part.
    std::vector<int> picked() {
        std::vector<int> result;
        for (int32_t i = 0; i < partials; ++i) {
            int count = 0;
            for (int32_t j = 0; j < npoints[i]; ++j) {
                count += parray[i][j].selected;
            }
            if (count != 0) {
                result.push_back(count == npoints[i] ? i : -1);
            }
        }
        return result;
    }

    std::string dialogue(const std::string &reply) {
        return conversation(reply, [] { pick(); });
    }

    void expect_nothing_picked() {
        EXPECT_EQ(picked(), std::vector<int>());
        EXPECT_EQ(selected, 0);
        EXPECT_EQ(sweepSelect, 0);
    }
};

using Picks = std::vector<int>;

TEST_F(Pick, SizeAboveThreeTakesFourPointsOrMore) {
    EXPECT_EQ(dialogue("size > 3\n"), prompt + "Pick by: size > 3 points\n");
    EXPECT_EQ(picked(), (Picks{2, 3}));
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(found, 0);
    for (int32_t i = 0; i < partials; ++i) {
        EXPECT_EQ(peval[i].selected, 0);
    }
}

TEST_F(Pick, SizeBelowFourTakesThreePointsOrFewer) {
    EXPECT_EQ(dialogue("size < 4\n"), prompt + "Pick by: size < 4 points\n");
    EXPECT_EQ(picked(), (Picks{0, 1}));
}

TEST_F(Pick, SizeOfOneDoesNothing) {
    EXPECT_EQ(dialogue("size > 1\n"), prompt + "Pick by: size > 1 points\n");
    expect_nothing_picked();
}

TEST_F(Pick, SizeNotBelowTheLongestPicksNothing) {
    dialogue("size < 100\n");
    expect_nothing_picked();
    dialogue("size < 5\n");
    expect_nothing_picked();
    dialogue("size > 5\n");
    expect_nothing_picked();
}

TEST_F(Pick, SizeBelowAHundredWithALongestOfAHundred) {
    fill_store(numbered({100, 3}));
    dialogue("size < 100\n");
    expect_nothing_picked();
    dialogue("size < 99\n");
    EXPECT_EQ(picked(), Picks{1});
}

TEST_F(Pick, SizeWithAnotherOperatorDoesNothing) {
    EXPECT_EQ(dialogue("size = 3\n"), prompt + "Pick by: size = 3 points\n");
    expect_nothing_picked();
    EXPECT_EQ(dialogue("size >= 3\n"), prompt + "Pick by: size >= 3 points\n");
    expect_nothing_picked();
}

TEST_F(Pick, SizeWithoutANumberDoesNothing) {
    EXPECT_EQ(dialogue("size > x\n"), prompt + "Pick by: size > 0 points\n");
    expect_nothing_picked();
    EXPECT_EQ(dialogue("size"), prompt + "Pick by: size  0 points\n");
    expect_nothing_picked();
}

TEST_F(Pick, SizeCalledByItselfTakesAnyNumber) {
    pick_by_size(">", 1);
    EXPECT_EQ(picked(), (Picks{0, 1, 2, 3}));
}

TEST_F(Pick, SizeInAnEmptyStore) {
    fill_store({});
    pick_by_size("<", 0);
    pick_by_size(">", -1);
    expect_nothing_picked();
}

TEST_F(Pick, StartBetweenTwoTimesLeavesTheBoundsOut) {
    EXPECT_EQ(dialogue("start 0 2\n"), prompt + "Pick by: 0.000000 < start < 2.000000\n");
    EXPECT_EQ(picked(), Picks{1});
}

TEST_F(Pick, StartBetweenZeroAndOneLeavesOutAStartAtZero) {
    fill_store({{{0.0f, 100, -10}, {2.0f, 100, -10}}, {{0.5f, 200, -10}, {2.0f, 200, -10}}});
    dialogue("start 0 1\n");
    EXPECT_EQ(picked(), Picks{1});
}

TEST_F(Pick, StartBelowATime) {
    EXPECT_EQ(dialogue("start < 2.5\n"), prompt + "Pick by: 0.000000 < start < 2.500000\n");
    EXPECT_EQ(picked(), (Picks{1, 2}));
}

TEST_F(Pick, StartAboveATime) {
    EXPECT_EQ(dialogue("start > 1\n"), prompt + "Pick by: 1.000000 < start < 4.000000\n");
    EXPECT_EQ(picked(), (Picks{2, 3}));
}

TEST_F(Pick, StartAboveTheEndIsABadValue) {
    fill_store({{{0.0f, 100, -10}, {5.0f, 110, -10}}});
    EXPECT_EQ(dialogue("start > 10\n"), prompt + "Bad value\n");
    expect_nothing_picked();
}

TEST_F(Pick, StartBoundsMayTouchTheEndsOfTheRange) {
    EXPECT_EQ(dialogue("start 0 4\n"), prompt + "Pick by: 0.000000 < start < 4.000000\n");
    EXPECT_EQ(dialogue("start -0.5 4\n"), prompt + "Bad value\n");
    EXPECT_EQ(dialogue("start 0 4.5\n"), prompt + "Bad value\n");
    EXPECT_EQ(dialogue("start nan 4\n"), prompt + "Bad value\n");
}

TEST_F(Pick, StartTakesWordsForZeroAndKeepsTheEndWithoutANumber) {
    EXPECT_EQ(dialogue("start abc 2\n"), prompt + "Pick by: 0.000000 < start < 2.000000\n");
    EXPECT_EQ(dialogue("start 1 x\n"), prompt + "Pick by: 1.000000 < start < 4.000000\n");
    EXPECT_EQ(dialogue("start > x\n"), prompt + "Pick by: 4.000000 < start < 4.000000\n");
}

TEST_F(Pick, StartIsBoundedByZeroAndTheEndTimeAlone) {
    fill_store({{{0.5f, 100, -10}, {2.0f, 100, -10}}, {{1.0f, 200, -10}, {2.0f, 200, -10}}});
    ASSERT_EQ(sndstart, 0.5f);
    EXPECT_EQ(dialogue("start 0.1 2\n"), prompt + "Pick by: 0.100000 < start < 2.000000\n");
    EXPECT_EQ(picked(), (Picks{0, 1}));
    EXPECT_EQ(dialogue("start 0.1 2.4\n"), prompt + "Bad value\n");
}

TEST_F(Pick, EndBetweenTwoTimesLeavesTheBoundsOut) {
    EXPECT_EQ(dialogue("endt 0.25 2.75\n"), prompt + "Pick by: 0.250000 < endt < 2.750000\n");
    EXPECT_EQ(picked(), Picks{1});
}

TEST_F(Pick, EndBelowATimeStartsAtTheStartOfTheSound) {
    fill_store({{{0.5f, 100, -10}, {1.5f, 100, -10}}, {{1.0f, 200, -10}, {3.0f, 200, -10}}});
    EXPECT_EQ(dialogue("endt < 2\n"), prompt + "Pick by: 0.500000 < endt < 2.000000\n");
    EXPECT_EQ(picked(), Picks{0});
}

TEST_F(Pick, EndAboveATimeReachesToStartPlusEnd) {
    fill_store({{{0.5f, 100, -10}, {1.5f, 100, -10}}, {{1.0f, 200, -10}, {3.0f, 200, -10}}});
    EXPECT_EQ(dialogue("endt > 2\n"), prompt + "Pick by: 2.000000 < endt < 3.500000\n");
    EXPECT_EQ(picked(), Picks{1});
    EXPECT_EQ(dialogue("endt 0.25 2\n"), prompt + "Bad value\n");
    EXPECT_EQ(dialogue("endt 0.5 3.75\n"), prompt + "Bad value\n");
}

TEST_F(Pick, OddSelectsEverySecondPartialAndDeselectsTheOthers) {
    fill_store(numbered({3, 3, 3}));
    select_points(1, 0, 2);
    EXPECT_EQ(dialogue("odd\n"), prompt + "Not implemented yet...\n");
    EXPECT_EQ(picked(), (Picks{0, 2}));
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(peval[0].selected, 1);
    EXPECT_EQ(peval[1].selected, 0);
    EXPECT_EQ(peval[2].selected, 0);
}

TEST_F(Pick, OddLeavesTheFirstMarkAtTheLastPartialsAnswer) {
    peval[0].selected = 1;
    peval[3].selected = 1;
    dialogue("odd\n");
    EXPECT_EQ(picked(), (Picks{0, 2}));
    EXPECT_EQ(peval[0].selected, 0);
    EXPECT_EQ(peval[3].selected, 1);
}

TEST_F(Pick, OddInAnEmptyStore) {
    fill_store({});
    EXPECT_EQ(printed(pick_odd), "Not implemented yet...\n");
    expect_nothing_picked();
}

TEST_F(Pick, AddsToTheSelection) {
    select_points(0, 0, 1);
    select_points(1, 1, 1);
    dialogue("size > 4\n");
    EXPECT_EQ(picked(), (Picks{0, -1, 3}));
}

TEST_F(Pick, CriteriaWithoutABody) {
    for (const char *word : {"bad\n", "amp\n", "harm\n"}) {
        EXPECT_EQ(dialogue(word), prompt + "Not implemented yet...\n");
    }
    expect_nothing_picked();
}

TEST_F(Pick, EndOfInputInsideTheBoundsPicksNothing) {
    for (const char *reply : {"start", "start ", "start <", "start >", "start 0.5\n", "start 0.5 -",
                              "endt", "endt <\n", "endt 0.5"}) {
        EXPECT_EQ(dialogue(reply), prompt) << reply;
    }
    expect_nothing_picked();
}

TEST_F(Pick, OtherWords) {
    EXPECT_EQ(dialogue("-c\n"), prompt + "Command cancelled\n");
    EXPECT_EQ(dialogue("length > 3\n"), prompt + "No matching criteria recognized\n");
    EXPECT_EQ(dialogue(""), prompt + "No matching criteria recognized\n");
    expect_nothing_picked();
}

} // namespace
