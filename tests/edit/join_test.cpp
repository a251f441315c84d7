// Making one partial of two.
#include "edit/join.h"

#include "display/view.h"
#include "edit/split.h"
#include "interact/selection.h"
#include "store/settings.h"
#include "tests/edit/structure.h"
#include "tests/support/console.h"

#include <gtest/gtest.h>

using namespace structure;

namespace {

class Join : public StoreTest {
  protected:
    std::string join(int32_t a, int32_t b) {
        return printed([=] { join3d(a, b); });
    }
};

using Labels = std::vector<int>;
using Floats = std::vector<float>;

const std::vector<Partial> in_sequence = {
    {{0.0f, 101, -10}, {0.3f, 111, -20}, {0.7f, 121, -30}, {1.2f, 131, -40}},
    {{1.5f, 141, -50}, {1.9f, 151, -12}}};

TEST_F(Join, AnEndAndALaterStartBelongTogether) {
    fill_store(in_sequence);
    EXPECT_TRUE(verify_found(0, 3, 1, 0));
    EXPECT_TRUE(verify_found(1, 0, 0, 3)) << "the second clause";
    EXPECT_FALSE(verify_found(0, 2, 1, 0));
    EXPECT_FALSE(verify_found(0, 3, 1, 1));
    EXPECT_FALSE(verify_found(0, 0, 1, 1)) << "outer ends";
    EXPECT_FALSE(verify_found(1, 1, 0, 0)) << "the later one's end";
}

TEST_F(Join, AGapIsWanted) {
    fill_store({{{0.0f, 100, -10}, {1.0f, 100, -10}}, {{1.0f, 200, -10}, {2.0f, 200, -10}}});
    EXPECT_FALSE(verify_found(0, 1, 1, 0));
    EXPECT_FALSE(verify_found(1, 0, 0, 1));
    parray[1][0].time = 1.001f;
    EXPECT_TRUE(verify_found(0, 1, 1, 0));
}

TEST_F(Join, SlotsThatNameNoPointDoNotPass) {
    fill_store(in_sequence);
    EXPECT_FALSE(verify_found(0, 3, -1, -1));
    EXPECT_FALSE(verify_found(-1, -1, 1, 0));
    EXPECT_FALSE(verify_found(0, 3, 2, 0));
    EXPECT_FALSE(verify_found(2, 0, 0, 3));
    EXPECT_FALSE(verify_found(0, 4, 1, 0));
}

TEST_F(Join, TheSeamIsMendedAndThePhasesFollow) {
    fill_store(in_sequence);
    parray[0][0].phase = 1.0f;
    parray[1][0].phase = 2.0f;
    EXPECT_EQ(join(0, 1), "Joining partials 0 and 1\n");
    ASSERT_EQ(partials, 1);
    EXPECT_EQ(times(0), (Floats{0.0f, 0.3f, 0.7f, 1.2f, 1.5f, 1.9f}));
    EXPECT_EQ(freqs(0), (Floats{101, 111, 121, 131, 141, 151}));
    EXPECT_EQ(amps(0), (Floats{-10, -20, -20, (-44.0f - 20.0f) * 0.5f, -44, -12}));
    EXPECT_EQ(phases(0), chained(snapshot()[0], 1.0f));
}

TEST_F(Join, EitherOrderGivesTheSamePartial) {
    fill_store(in_sequence);
    join(0, 1);
    const Snapshot one_way = snapshot();
    fill_store(in_sequence);
    EXPECT_EQ(join(1, 0), "Joining partials 1 and 0\n");
    EXPECT_TRUE(same_points(snapshot(), one_way));
}

TEST_F(Join, AtATieTheFirstNamedLeads) {
    const std::vector<Partial> tied = {{{0.0f, 100, -10}, {1.0f, 100, -10}},
                                       {{0.0f, 200, -20}, {1.0f, 200, -20}}};
    fill_store(tied);
    join(0, 1);
    EXPECT_EQ(freqs(0), (Floats{100, 100, 200, 200}));
    fill_store(tied);
    join(1, 0);
    EXPECT_EQ(freqs(0), (Floats{200, 200, 100, 100}));
}

TEST_F(Join, TwoAndFiveOfEight) {
    verbose = 1;
    fill_store(numbered({3, 3, 4, 3, 3, 5, 3, 3}));
    EXPECT_EQ(join(5, 2), "Joining partials 5 and 2\n"
                          "Compacting partial #    2\nCompacting partial #    3\n"
                          "Compacting partial #    4\nCompacting partial #    5\n"
                          "Compacting partial #    6\n"
                          "Compacting partial #    4\nCompacting partial #    5\n");
    EXPECT_EQ(labels(), (Labels{0, 1, 3, 4, 6, 7, 2}));
    EXPECT_EQ(npoints[6], 9);
}

TEST_F(Join, TheTwoHighestCompactOnce) {
    verbose = 1;
    fill_store(numbered({3, 4, 5}));
    EXPECT_EQ(join(1, 2), "Joining partials 1 and 2\nCompacting partial #    1\n");
    EXPECT_EQ(labels(), (Labels{0, 1}));
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(npoints[1], 9);
}

TEST_F(Join, ALeadingPartialOfTwoPointsKeepsItsFirstLevel) {
    fill_store({{{0.0f, 100, -10}, {0.5f, 100, -90}}, {{1.0f, 200, -26}, {2.0f, 200, -20}}});
    join(0, 1);
    EXPECT_EQ(amps(0), (Floats{-10, -15, -20, -20}));
}

TEST_F(Join, ALeadingPartialOfThreePoints) {
    fill_store({{{0.0f, 100, -10}, {0.2f, 100, -50}, {0.5f, 100, -90}}, {{1.0f, 200, -26}}});
    join(0, 1);
    EXPECT_EQ(amps(0), (Floats{-10, -10, -15, -20}));
}

TEST_F(Join, ALeadingPartialOfOnePointKeepsItsLevel) {
    fill_store({{{0.0f, 100, -90}}, {{1.0f, 200, -26}, {2.0f, 200, -20}}});
    join(0, 1);
    EXPECT_EQ(amps(0), (Floats{-90, -20, -20}));
}

TEST_F(Join, UndoesASplitButForTheCutsLastPoint) {
    fill_store({{{0.0f, 100, -10},
                 {0.1f, 110, -12},
                 {0.2f, 120, -14},
                 {0.3f, 130, -16},
                 {0.4f, 140, -18}}});
    split3d({0, 2, 0, 3, 2});
    ASSERT_EQ(amps(0), (Floats{-10, -30, -90}));
    ASSERT_EQ(amps(1), (Floats{-22, -18}));
    join(0, 1);
    EXPECT_EQ(times(0), (Floats{0.0f, 0.1f, 0.2f, 0.3f, 0.4f}));
    EXPECT_EQ(amps(0), (Floats{-10, -10, -13, -16, -18}));
}

TEST_F(Join, ClearsTheSelectionInTheFlatViewAlone) {
    for (const int in_flat : {0, 1}) {
        fill_store(in_sequence);
        flat = static_cast<decltype(flat)>(in_flat);
        select_points(0, 0, 0);
        select_points(1, 1, 1);
        selected = 1;
        found = 1;
        foundSubscriptions = {0, 3, 1, 0, 2};
        join(0, 1);
        const uint16_t stays = in_flat != 0 ? 0 : 1;
        EXPECT_EQ(parray[0][0].selected, stays);
        EXPECT_EQ(parray[0][4].selected, 0);
        EXPECT_EQ(parray[0][5].selected, stays);
        EXPECT_EQ(selected, stays);
        EXPECT_EQ(found, stays);
        EXPECT_EQ(foundSubscriptions.count, in_flat != 0 ? 0 : 2);
    }
}

TEST_F(Join, NumbersThatNameNoPairAreLeftAlone) {
    fill_store(in_sequence);
    const Snapshot before = snapshot();
    EXPECT_EQ(join(-1, 0), "");
    EXPECT_EQ(join(0, 2), "");
    EXPECT_EQ(join(1, 1), "");
    EXPECT_TRUE(same_points(snapshot(), before));
}

} // namespace
