// Removal of empty partials after an import, with its walk that stops one short of the end.
#include "store/evaluate.h"

#include "store/phase.h"
#include "store/settings.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

namespace {

class ImportSanity : public StoreTest {};

/// A partial of n points that is known again by its frequency.
Partial marked(float freq, int n) {
    Partial result;
    for (int j = 0; j < n; ++j) {
        result.push_back({static_cast<float>(j) * 0.1f, freq, -10.0f});
    }
    return result;
}

/// The mark of each partial, 0 for one of no points.
std::vector<float> marks() {
    std::vector<float> result;
    for (int i = 0; i < partials; ++i) {
        result.push_back(npoints[i] > 0 ? parray[i][0].freq : 0.0f);
    }
    return result;
}

TEST_F(ImportSanity, NothingEmptyNothingRemoved) {
    fill_store({marked(100, 3), marked(200, 1)});
    EXPECT_EQ(printed(check_import_sanity), "All corrupt partials removed\n");
    EXPECT_EQ(marks(), (std::vector<float>{100, 200}));
}

TEST_F(ImportSanity, AnEmptyPartialInTheLastPlaceGoesCleanly) {
    fill_store({marked(100, 3), marked(200, 2), {}});
    EXPECT_EQ(printed(check_import_sanity),
              "Corrupt partial[2] with 0 points\nAll corrupt partials removed\n");
    EXPECT_EQ(marks(), (std::vector<float>{100, 200}));
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(npoints[1], 2);
}

TEST_F(ImportSanity, InTheLastButOnePlaceTheLastGoesInItsStead) {
    fill_store({marked(100, 3), {}, marked(300, 2)});
    EXPECT_EQ(printed(check_import_sanity),
              "Corrupt partial[1] with 0 points\nAll corrupt partials removed\n");
    EXPECT_EQ(marks(), (std::vector<float>{100, 0}));
}

TEST_F(ImportSanity, FurtherInTheLastIsLostAndTheOneBeforeStandsTwice) {
    fill_store({marked(100, 3), {}, marked(300, 2), marked(400, 4), marked(500, 5)});
    printed(check_import_sanity);
    EXPECT_EQ(marks(), (std::vector<float>{100, 300, 400, 400}));
    EXPECT_EQ(npoints[1], 2);
    EXPECT_EQ(npoints[2], 4);
    EXPECT_EQ(npoints[3], 4);
}

TEST_F(ImportSanity, TheTwoCopiesOwnTheirPoints) {
    fill_store({{}, marked(200, 2), marked(300, 3), marked(400, 4)});
    printed(check_import_sanity);
    ASSERT_EQ(marks(), (std::vector<float>{200, 300, 300}));
    EXPECT_NE(parray[1], parray[2]);
    parray[1][0].freq = 1.0f;
    EXPECT_EQ(parray[2][0].freq, 300.0f);
}

TEST_F(ImportSanity, ReportsGoFromTheLastToTheFirst) {
    fill_store({{}, marked(200, 2), {}, marked(400, 4), marked(500, 5), {}});
    EXPECT_EQ(printed(check_import_sanity), "Corrupt partial[5] with 0 points\n"
                                            "Corrupt partial[2] with 0 points\n"
                                            "Corrupt partial[0] with 0 points\n"
                                            "All corrupt partials removed\n");
    // 5 goes cleanly; at 2 the last of five is lost and 400 stands twice; at 0 again.
    EXPECT_EQ(marks(), (std::vector<float>{200, 400, 400}));
}

TEST_F(ImportSanity, ANegativeCountIsEmptyToo) {
    fill_store({marked(100, 3), {}});
    npoints[1] = -4;
    EXPECT_EQ(printed(check_import_sanity),
              "Corrupt partial[1] with -4 points\nAll corrupt partials removed\n");
    EXPECT_EQ(partials, 1);
}

TEST_F(ImportSanity, NothingButEmptyPartialsLeavesNone) {
    fill_store({{}, {}});
    printed(check_import_sanity);
    EXPECT_EQ(partials, 0);
}

TEST_F(ImportSanity, TheDebugSwitchTellsEachStep) {
    fill_store({{}, marked(200, 2), marked(300, 3), marked(400, 4)});
    dbp = 1;
    EXPECT_EQ(printed(check_import_sanity), "Corrupt partial[0] with 0 points\n"
                                            "k = 0\n"
                                            "Compacting partial #    0\n"
                                            "Compacting partial #    1\n"
                                            "All corrupt partials removed\n");
}

TEST_F(ImportSanity, MovedPartialsHaveTheirPhasesDerivedAnew) {
    fill_store({{}, marked(201, 3), marked(300, 3), marked(400, 4)});
    parray[1][0].phase = 1.0f;
    printed(check_import_sanity);
    EXPECT_EQ(parray[0][0].phase, 1.0f);
    EXPECT_EQ(parray[0][1].phase, advance_phase(1.0f, 0.1f * 201.0f));
    EXPECT_NE(parray[0][1].phase, 0.0f);
}

TEST_F(ImportSanity, OfTheTwoCopiesTheOneThatDidNotMoveKeepsItsPhases) {
    fill_store({{}, marked(200, 2), marked(301, 2), marked(400, 4)});
    parray[2][0].phase = 1.0f;
    parray[2][1].phase = 5.0f;
    printed(check_import_sanity);
    ASSERT_EQ(marks(), (std::vector<float>{200, 301, 301}));
    EXPECT_EQ(parray[1][1].phase, advance_phase(1.0f, 0.1f * 301.0f));
    EXPECT_EQ(parray[2][0].phase, 1.0f);
    EXPECT_EQ(parray[2][1].phase, 5.0f);
}

/// The removal of one empty partial as it is told: each later one but the last takes the place
/// before it, then the last place goes.
void remove_plainly(std::vector<std::vector<Breakpoint>> &store, size_t k) {
    for (size_t i = k; store.size() >= 3 && i <= store.size() - 3; ++i) {
        store[i] = store[i + 1];
        if (!store[i].empty()) {
            chain_phases(store[i].data(), static_cast<int32_t>(store[i].size()));
        }
    }
    store.pop_back();
}

std::vector<std::vector<Breakpoint>> copy_of_store() {
    std::vector<std::vector<Breakpoint>> store;
    for (int i = 0; i < partials; ++i) {
        store.emplace_back(parray[i], parray[i] + npoints[i]);
    }
    return store;
}

TEST_F(ImportSanity, EveryPatternOfUpToSevenPartialsGoesAsStepByStep) {
    for (int n = 1; n <= 7; ++n) {
        for (int pattern = 0; pattern < 1 << n; ++pattern) {
            std::vector<Partial> content;
            for (int i = 0; i < n; ++i) {
                content.push_back((pattern >> i & 1) != 0
                                      ? marked(101.0f + 7.0f * static_cast<float>(i), 2 + i)
                                      : Partial());
            }
            fill_store(content);
            for (int i = 0; i < n; ++i) {
                for (int j = 0; j < npoints[i]; ++j) {
                    parray[i][j].phase = 0.5f + 0.1f * static_cast<float>(i + j);
                }
            }
            auto expected = copy_of_store();
            for (int k = n - 1; k >= 0; --k) {
                if ((pattern >> k & 1) == 0) {
                    remove_plainly(expected, static_cast<size_t>(k));
                }
            }
            printed(check_import_sanity);
            const auto got = copy_of_store();
            ASSERT_EQ(got.size(), expected.size()) << n << " " << pattern;
            for (size_t i = 0; i < got.size(); ++i) {
                ASSERT_EQ(got[i].size(), expected[i].size()) << n << " " << pattern;
                for (size_t j = 0; j < got[i].size(); ++j) {
                    EXPECT_EQ(got[i][j].freq, expected[i][j].freq) << n << " " << pattern;
                    EXPECT_EQ(got[i][j].phase, expected[i][j].phase) << n << " " << pattern;
                }
            }
        }
    }
}

TEST_F(ImportSanity, AHundredThousandGapsTakeNoTime) {
    std::vector<Partial> content(100000);
    content[99998] = marked(200, 500);
    content[99999] = marked(300, 500);
    fill_store(content);
    printed(check_import_sanity); // by single steps 5,000,000,000 moves
    EXPECT_EQ(marks(), (std::vector<float>{200, 200}));
}

} // namespace
