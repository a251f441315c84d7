// Cutting a partial in two.
#include "edit/split.h"

#include "store/settings.h"
#include "store/slots.h"
#include "tests/edit/structure.h"
#include "tests/support/console.h"

#include <gtest/gtest.h>

using namespace structure;

namespace {

class Split : public StoreTest {
  protected:
    std::string split(int32_t part, int32_t point0, int32_t point1) {
        return printed([=] { split3d({part, point0, part, point1, 2}); });
    }
};

using Labels = std::vector<int>;
using Floats = std::vector<float>;

TEST_F(Split, PrecheckWantsTwoNeighboursOfOnePartial) {
    EXPECT_TRUE(split_precheck({3, 4, 3, 5, 2}));
    EXPECT_TRUE(split_precheck({3, 5, 3, 4, 2}));
    EXPECT_FALSE(split_precheck({3, 4, 3, 5, 1}));
    EXPECT_FALSE(split_precheck({3, 4, 2, 5, 2}));
    EXPECT_FALSE(split_precheck({3, 4, 3, 4, 2}));
    EXPECT_FALSE(split_precheck({3, 4, 3, 6, 2}));
    EXPECT_FALSE(split_precheck({-1, -1, -1, -1, 0}));
    EXPECT_FALSE(split_precheck({3, INT32_MIN, 3, INT32_MAX, 2}));
}

TEST_F(Split, TheFirstOfThreeMovesToTheEnd) {
    fill_store(numbered({5, 3, 4}));
    EXPECT_EQ(split(0, 2, 1), "");
    EXPECT_EQ(labels(), (Labels{1, 2, 0, 0}));
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(npoints[1], 4);
    EXPECT_EQ(times(2), (Floats{0.0f, 0.25f}));
    EXPECT_EQ(times(3), (Floats{0.5f, 0.75f, 1.0f}));
}

TEST_F(Split, TheLastPartialCompactsNothing) {
    verbose = 1;
    dbp = 1;
    fill_store(numbered({3, 4, 5}));
    const Snapshot before = snapshot();
    EXPECT_EQ(split(2, 1, 2), "Split3d\n");
    EXPECT_EQ(labels(), (Labels{0, 1, 2, 2}));
    EXPECT_TRUE(same_points(snapshot()[0], before[0]));
    EXPECT_TRUE(same_points(snapshot()[1], before[1]));
}

TEST_F(Split, VerboseTellsTheMoves) {
    verbose = 1;
    fill_store(numbered({5, 3, 4}));
    EXPECT_EQ(split(0, 2, 1), "Compacting partial #    0\nCompacting partial #    1\n");
}

TEST_F(Split, TheOrderOfThePointsDoesNotMatter) {
    fill_store(numbered({5, 3}));
    split(0, 2, 3);
    const Snapshot one_way = snapshot();
    fill_store(numbered({5, 3}));
    split(0, 3, 2);
    EXPECT_TRUE(same_points(snapshot(), one_way));
    EXPECT_EQ(times(1), (Floats{0.0f, 0.25f, 0.5f}));
}

TEST_F(Split, LevelsFadeAtTheCut) {
    fill_store({{{0.0f, 100, -10},
                 {0.1f, 110, -20},
                 {0.2f, 120, -30},
                 {0.3f, 130, -25},
                 {0.4f, 140, -35}}});
    split(0, 2, 3);
    EXPECT_EQ(amps(0), (Floats{-10.0f, -38.0f, -90.0f}));
    EXPECT_EQ(amps(1), (Floats{-31.0f, -35.0f}));
}

TEST_F(Split, ALevelOfMinusThirtyTwoOrLowerNextToTheCutStays) {
    for (const float level : {-32.0f, -40.0f, -120.0f}) {
        fill_store({{{0.0f, 100, level}, {0.1f, 110, -20}, {0.2f, 120, -30}}});
        split(0, 1, 2);
        EXPECT_EQ(amps(0), (Floats{level, -90.0f}));
    }
    fill_store({{{0.0f, 100, -31.75f}, {0.1f, 110, -20}, {0.2f, 120, -30}}});
    split(0, 1, 2);
    EXPECT_EQ(amps(0), (Floats{-49.75f, -90.0f}));
}

TEST_F(Split, AFirstPieceOfOnePoint) {
    fill_store({{{0.0f, 100, -10}, {0.1f, 110, -20}, {0.2f, 120, -30}}});
    split(0, 0, 1);
    EXPECT_EQ(amps(0), Floats{-90.0f});
    EXPECT_EQ(amps(1), (Floats{-26.0f, -30.0f}));
}

TEST_F(Split, APairOfPointsBecomesTwoPartials) {
    fill_store({{{0.0f, 100, -10}, {0.1f, 110, -20}}});
    parray[0][1].phase = 2.0f;
    split(0, 0, 1);
    EXPECT_EQ(partials, 2);
    EXPECT_EQ(amps(0), Floats{-90.0f});
    EXPECT_EQ(amps(1), Floats{-26.0f});
    EXPECT_EQ(phases(1), Floats{0.0f});
}

TEST_F(Split, TheSecondPieceStartsAtPhaseZeroAndTheFirstKeepsItsOwn) {
    fill_store({{{0.0f, 101, -10}, {0.3f, 111, -20}, {0.7f, 121, -30}, {1.2f, 131, -30}}});
    const Floats before = {0.5f, 0.6f, 0.7f, 0.8f};
    for (int32_t j = 0; j < 4; ++j) {
        parray[0][j].phase = before[static_cast<size_t>(j)];
    }
    split(0, 1, 2);
    EXPECT_EQ(phases(0), (Floats{0.5f, 0.6f}));
    EXPECT_EQ(phases(1), chained(snapshot()[1], 0.0f));
    EXPECT_NE(phases(1)[1], 0.8f);
}

TEST_F(Split, MovedPartialsKeepTheirPhasesAndAllKeepTheirFlags) {
    fill_store(numbered({4, 4}));
    for (int32_t j = 0; j < 4; ++j) {
        parray[1][j].phase = 3.0f;
    }
    select_points(0, 1, 2);
    split(0, 1, 2);
    EXPECT_EQ(phases(0), Floats(4, 3.0f));
    EXPECT_EQ(parray[1][0].selected, 0);
    EXPECT_EQ(parray[1][1].selected, 1);
    EXPECT_EQ(parray[2][0].selected, 1);
    EXPECT_EQ(parray[2][1].selected, 0);
}

TEST_F(Split, NumbersThatNameNoCutAreLeftAlone) {
    fill_store(numbered({4, 4}));
    const Snapshot before = snapshot();
    for (const FoundPoints &points : std::vector<FoundPoints>{{-1, -1, -1, -1, 0},
                                                              {2, 0, 2, 1, 2},
                                                              {0, 3, 0, 4, 2},
                                                              {0, -1, 0, 0, 2},
                                                              {0, 0, 0, 0, 2},
                                                              {0, 0, 1, 1, 2}}) {
        EXPECT_EQ(printed([&] { split3d(points); }), "");
    }
    EXPECT_TRUE(same_points(snapshot(), before));
}

TEST_F(Split, SummariesKeepRoomForEveryPartial) {
    fill_store(numbered({250}));
    for (int count = 1; count <= 240; ++count) {
        split(partials - 1, 0, 1);
        peval[partials - 1].selected = 1;
    }
    EXPECT_EQ(partials, 241);
    refresh();
    EXPECT_EQ(peval[240].avgfreq, 100.0f);
    EXPECT_EQ(npoints[240], 10);
}

} // namespace
