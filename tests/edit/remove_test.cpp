// Removing one breakpoint or all partials of a group selection.
#include "edit/remove.h"

#include "store/recompute.h"
#include "store/settings.h"
#include "tests/edit/structure.h"
#include "tests/support/console.h"

#include <gtest/gtest.h>

using namespace structure;

namespace {

class Remove : public StoreTest {
  protected:
    std::string remove(int32_t part, int32_t point) {
        return printed([=] { remove3d(part, point, 0); });
    }

    std::string remove_selected() {
        return printed([] { remove3d(-1, -1, 1); });
    }

    /// Every later phase is wrong, so that a rebuilt chain shows.
    void disturb_phases() {
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                parray[i][j].phase = 0.5f + static_cast<float>(i);
            }
            // A frequency that makes no whole number of cycles in a quarter of a second.
            for (int32_t j = 0; j < npoints[i]; ++j) {
                parray[i][j].freq += 1.0f;
            }
        }
    }

    void expect_chained(int32_t i, float phase0) {
        EXPECT_EQ(phases(i), chained(snapshot()[static_cast<size_t>(i)], phase0));
    }
};

using Labels = std::vector<int>;
using Floats = std::vector<float>;

TEST_F(Remove, PrecheckWantsAPointOrAGroup) {
    EXPECT_TRUE(remove_precheck(0, 0, 0));
    EXPECT_FALSE(remove_precheck(-1, 0, 0));
    EXPECT_FALSE(remove_precheck(0, -1, 0));
    EXPECT_FALSE(remove_precheck(-1, -1, 0));
    EXPECT_TRUE(remove_precheck(-1, -1, 1));
    EXPECT_TRUE(remove_precheck(-1, -1, 2));
}

TEST_F(Remove, TheLastPointOfThreeTakesThePartial) {
    fill_store(numbered({4, 3, 4, 5}));
    EXPECT_EQ(remove(1, 2), "");
    EXPECT_EQ(labels(), (Labels{0, 2, 3}));
    EXPECT_EQ(npoints[1], 4);
    EXPECT_EQ(npoints[2], 5);
}

TEST_F(Remove, TheLastPointOfTwoOrOneTakesThePartial) {
    fill_store(numbered({2, 1, 4}));
    remove(0, 1);
    EXPECT_EQ(labels(), (Labels{1, 2}));
    remove(0, 0);
    EXPECT_EQ(labels(), Labels{2});
}

TEST_F(Remove, APartialThatGoesBringsPhasesAndTimesBack) {
    fill_store(numbered({4, 3, 4, 3}));
    disturb_phases();
    const Snapshot before = snapshot();
    remove(1, 2);
    EXPECT_TRUE(same_points(snapshot()[0], before[0]));
    expect_chained(1, 2.5f);
    expect_chained(2, 3.5f);
    EXPECT_EQ(sndlen, 3.5f);
    remove(2, 2);
    EXPECT_EQ(sndlen, 2.75f);
    EXPECT_EQ(meant, 0.25f);
}

TEST_F(Remove, TheLastPointOfFourLeavesThreeAndTheirPhases) {
    fill_store(numbered({4, 4}));
    disturb_phases();
    Snapshot want = snapshot();
    want[0].pop_back();
    EXPECT_EQ(remove(0, 3), "");
    EXPECT_TRUE(same_points(snapshot(), want));
    EXPECT_EQ(sndlen, 1.75f);
}

TEST_F(Remove, TheFirstPointOfTwoLeavesOne) {
    fill_store(numbered({2, 4}));
    remove(0, 0);
    EXPECT_EQ(partials, 2);
    EXPECT_EQ(times(0), Floats{0.25f});
}

TEST_F(Remove, TheMiddlePointOfThreeLeavesTwo) {
    fill_store(numbered({3, 4}));
    disturb_phases();
    const Snapshot before = snapshot();
    remove(0, 1);
    EXPECT_EQ(times(0), (Floats{0.0f, 0.5f}));
    expect_chained(0, 0.5f);
    EXPECT_TRUE(same_points(snapshot()[1], before[1]));
}

TEST_F(Remove, TheFirstPointHandsThePhaseToItsSuccessor) {
    fill_store(numbered({4}));
    disturb_phases();
    parray[0][1].phase = 1.25f;
    remove(0, 0);
    EXPECT_EQ(times(0), (Floats{0.25f, 0.5f, 0.75f}));
    expect_chained(0, 1.25f);
}

TEST_F(Remove, APointKeepsItsFlagsWhenAnotherGoes) {
    fill_store(numbered({4}));
    select_points(0, 2, 2);
    remove(0, 1);
    EXPECT_EQ(parray[0][0].selected, 0);
    EXPECT_EQ(parray[0][1].selected, 1);
    EXPECT_EQ(parray[0][2].selected, 0);
}

TEST_F(Remove, EqualTimesFuseIntoTheLaterPoint) {
    fill_store({{{0.0f, 300, -5}, {0.5f, 440, -10}, {0.5f, 440, -20}, {1.0f, 300, -5}},
                {{0.0f, 200, -5}}});
    parray[0][2].selected = 1;
    parray[0][2].scratch = 7.0f;
    EXPECT_EQ(remove(0, 1), "");
    EXPECT_EQ(times(0), (Floats{0.0f, 0.5f, 1.0f}));
    EXPECT_EQ(freqs(0), (Floats{300.0f, 220.0f, 300.0f}));
    EXPECT_EQ(amps(0), (Floats{-5.0f, -15.0f, -5.0f}));
    EXPECT_EQ(parray[0][1].selected, 1);
    EXPECT_EQ(parray[0][1].scratch, 7.0f);
    expect_chained(0, 0.0f);
}

TEST_F(Remove, FusedFrequenciesAddAsReciprocals) {
    fill_store({{{0.0f, 331.7f, -9}, {0.0f, 777.3f, -10}}, {{0.0f, 200, -5}}});
    const float sum = static_cast<float>(1.0 / 331.7f + 1.0 / 777.3f);
    remove(0, 0);
    EXPECT_EQ(freqs(0), Floats{1.0f / sum});
    EXPECT_EQ(amps(0), Floats{-9.5f});
}

TEST_F(Remove, VerboseTellsThePointOrTheMoves) {
    verbose = 1;
    fill_store(numbered({4, 3, 4, 5}));
    EXPECT_EQ(remove(0, 1), "thepoint = 1\n");
    EXPECT_EQ(remove(1, 2), "Compacting partial #    1\nCompacting partial #    2\n");
    fill_store({{{0.0f, 440, -10}, {0.0f, 440, -20}}, {{0.0f, 200, -5}}});
    EXPECT_EQ(remove(0, 0), "");
    dbp = 1;
    EXPECT_EQ(remove(1, 0), "");
    EXPECT_EQ(partials, 1);
}

TEST_F(Remove, OneRemovalTellsNoSlotsUnderDebug) {
    verbose = 1;
    dbp = 1;
    fill_store(numbered({3, 4}));
    EXPECT_EQ(remove(0, 2), "Compacting partial #    0\n");
}

TEST_F(Remove, NumbersThatNameNoPointAreLeftAlone) {
    fill_store(numbered({4, 3}));
    const Snapshot before = snapshot();
    for (const auto &[part, point] : std::vector<std::pair<int32_t, int32_t>>{
             {-1, 0}, {2, 0}, {0, -1}, {0, 4}, {1, 3}, {INT32_MAX, INT32_MAX}}) {
        EXPECT_EQ(remove(part, point), "");
    }
    EXPECT_TRUE(same_points(snapshot(), before));
}

TEST_F(Remove, TheOnlyPartialStays) {
    fill_store(numbered({3}));
    const Snapshot before = snapshot();
    EXPECT_EQ(remove(0, 2), "");
    EXPECT_TRUE(same_points(snapshot(), before));
}

TEST_F(Remove, AGroupGoesByPartials) {
    fill_store(numbered({4, 5, 6, 7}));
    select_points(1, 2, 2);
    select_points(3, 0, 6);
    parray[0][0].selected = 2; // only 1 counts
    EXPECT_EQ(remove_selected(), "Removing multiple selections: \nnumber of selections = 2\n");
    EXPECT_EQ(labels(), (Labels{0, 2}));
    EXPECT_EQ(npoints[1], 6);
}

TEST_F(Remove, AGroupIgnoresThePointNumbers) {
    fill_store(numbered({4, 4, 4}));
    select_points(2, 0, 0);
    printed([] { remove3d(0, 1, 1); });
    EXPECT_EQ(labels(), (Labels{0, 1}));
    EXPECT_EQ(npoints[0], 4);
}

TEST_F(Remove, PassesSkipTheNeighbourBelow) {
    verbose = 1;
    dbp = 1;
    fill_store(numbered({4, 4, 4, 4, 4, 4}));
    for (const int32_t i : {3, 4, 5}) {
        select_points(i, 1, 1);
    }
    EXPECT_EQ(remove_selected(), "Removing multiple selections: \nnumber of selections = 3\n"
                                 "-->5\npartial# 5\n"
                                 "-->3\npartial# 3\nk = 3\nCompacting partial #    3\n"
                                 "-->1\n-->0\n"
                                 "-->3\npartial# 3\n"
                                 "-->1\n-->0\n"
                                 "\nd = 0\n");
    EXPECT_EQ(labels(), (Labels{0, 1, 2}));
}

TEST_F(Remove, ADeletionAtOneOrZeroEndsThePass) {
    verbose = 1;
    fill_store(numbered({4, 4, 4}));
    select_points(0, 0, 0);
    select_points(1, 0, 0);
    EXPECT_EQ(remove_selected(), "Removing multiple selections: \nnumber of selections = 2\n"
                                 "-->2\n-->1\npartial# 1\nCompacting partial #    1\n"
                                 "-->1\n-->0\npartial# 0\nCompacting partial #    0\n");
    EXPECT_EQ(labels(), Labels{2});
}

TEST_F(Remove, MovedPartialsGetTheirPhasesAnew) {
    fill_store(numbered({4, 4, 4, 4, 4}));
    disturb_phases();
    select_points(1, 0, 0);
    select_points(3, 0, 0);
    const Snapshot before = snapshot();
    remove_selected();
    EXPECT_TRUE(same_points(snapshot()[0], before[0]));
    expect_chained(1, 2.5f);
    expect_chained(2, 4.5f);
}

TEST_F(Remove, AGroupOfEverythingKeepsOne) {
    dbp = 1;
    fill_store(numbered({4, 4}));
    select_points(0, 0, 3);
    select_points(1, 0, 3);
    EXPECT_EQ(remove_selected(),
              "Removing multiple selections: \nnumber of selections = 2\n\nd = 1\n");
    EXPECT_EQ(labels(), Labels{0});
    EXPECT_EQ(remove_selected(),
              "Removing multiple selections: \nnumber of selections = 1\n\nd = 1\n");
    EXPECT_EQ(labels(), Labels{0});
}

TEST_F(Remove, OfThreeTheMiddleOneIsKept) {
    fill_store(numbered({4, 4, 4}));
    for (const int32_t i : {0, 1, 2}) {
        select_points(i, 0, 0);
    }
    remove_selected();
    EXPECT_EQ(labels(), Labels{1});
}

TEST_F(Remove, AGroupOfNothing) {
    fill_store(numbered({4, 4}));
    const Snapshot before = snapshot();
    EXPECT_EQ(remove_selected(), "Removing multiple selections: \nnumber of selections = 0\n");
    EXPECT_TRUE(same_points(snapshot(), before));
}

} // namespace
