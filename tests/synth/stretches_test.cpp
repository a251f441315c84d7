// Which runs of selected points are stretches, and how the count moves while they are written.

#include "synth/stretches.h"
#include "tests/support/fixture.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Stretches = std::vector<std::vector<int>>;

class StretchTest : public StoreTest {
  protected:
    /// A partial a word, a point a digit: its selected flag.
    void select(const std::vector<std::string> &words) {
        std::vector<Partial> content;
        for (const std::string &word : words) {
            Partial partial;
            for (size_t i = 0; i < word.size(); ++i) {
                partial.push_back({static_cast<float>(i), 100.0f, -20.0f});
            }
            content.push_back(partial);
        }
        fill_store(content);
        for (size_t p = 0; p < words.size(); ++p) {
            for (size_t i = 0; i < words[p].size(); ++i) {
                parray[p][i].selected = static_cast<uint16_t>(words[p][i] - '0');
            }
        }
    }

    int32_t counted() {
        return count_stretches(parray, npoints, partials);
    }

    /// All entries as filled; `last_count` is what became of the count.
    Stretches filled() {
        last_count = counted();
        std::vector<SynthStretch> entries(static_cast<size_t>(last_count));
        fill_stretches(parray, npoints, partials, entries.data(), last_count);
        Stretches found;
        for (const SynthStretch &entry : entries) {
            found.push_back({entry.part, entry.first, entry.part2, entry.last});
        }
        return found;
    }

    int32_t last_count = -1;
};

} // namespace

TEST_F(StretchTest, NothingSelected) {
    select({"0000", "", "0"});
    EXPECT_EQ(filled(), Stretches{});
    EXPECT_EQ(last_count, 0);
}

TEST_F(StretchTest, TwoAdjacentPointsInMidPartialAreNone) {
    select({"011000"});
    EXPECT_EQ(counted(), 0);
    EXPECT_EQ(filled(), Stretches{});
    EXPECT_EQ(last_count, 0); // raised to 1 by the second point, lowered for being short
}

TEST_F(StretchTest, ThreeAdjacentPointsInMidPartialAreOne) {
    select({"0111000"});
    EXPECT_EQ(filled(), (Stretches{{0, 1, 0, 3}}));
    EXPECT_EQ(last_count, 1);
}

TEST_F(StretchTest, LongRunsFromTheFirstPoint) {
    select({"000", "11111001110"});
    EXPECT_EQ(filled(), (Stretches{{1, 0, 1, 4}, {1, 7, 1, 9}}));
    EXPECT_EQ(last_count, 2);
}

TEST_F(StretchTest, TwoPointsUpToTheEndAreOne) {
    select({"00", "00011"});
    EXPECT_EQ(filled(), (Stretches{{1, 3, 1, 4}}));
    EXPECT_EQ(last_count, 1);
}

TEST_F(StretchTest, WholePartial) {
    select({"1111", "11"});
    EXPECT_EQ(filled(), (Stretches{{0, 0, 0, 3}, {1, 0, 1, 1}}));
    EXPECT_EQ(counted(), 2);
}

TEST_F(StretchTest, LoneLastPointCountsAndLeavesLastAtZero) {
    select({"000", "0001"});
    EXPECT_EQ(filled(), (Stretches{{1, 3, 0, 0}}));
    EXPECT_EQ(last_count, 1);
}

TEST_F(StretchTest, LoneLastPointBehindAShortRunLeavesLastAtZeroToo) {
    select({"11001"});
    EXPECT_EQ(filled(), (Stretches{{0, 4, 0, 0}}));
    EXPECT_EQ(last_count, 0); // 1, set to 1, lowered
}

TEST_F(StretchTest, PartialOfOneSelectedPoint) {
    select({"1", "0", "1"});
    EXPECT_EQ(filled(), (Stretches{{0, 0, 0, 0}, {2, 0, 0, 0}}));
    EXPECT_EQ(last_count, 2);
}

TEST_F(StretchTest, WalkGoesOnBehindThePointThatEndedARun) {
    // The unselected point belongs to no run; the next one starts right behind it.
    select({"1110111"});
    EXPECT_EQ(filled(), (Stretches{{0, 0, 0, 2}, {0, 4, 0, 6}}));
    select({"1011101"});
    EXPECT_EQ(filled(), (Stretches{{0, 2, 0, 4}, {0, 6, 0, 0}}));
}

TEST_F(StretchTest, OnlyTheFlag1IsSelected) {
    select({"0112111", "2222"});
    EXPECT_EQ(filled(), (Stretches{{0, 4, 0, 6}}));
}

TEST_F(StretchTest, LonePointBehindTheLastStretchDropsIt) {
    select({"0111010"});
    EXPECT_EQ(filled(), (Stretches{{0, 1, 0, 3}}));
    EXPECT_EQ(last_count, 0);
}

TEST_F(StretchTest, LonePointInALaterPartialDropsItToo) {
    select({"01110", "01110", "010"});
    EXPECT_EQ(filled(), (Stretches{{0, 1, 0, 3}, {1, 1, 1, 3}}));
    EXPECT_EQ(last_count, 1);
}

TEST_F(StretchTest, LonePointBeforeAStretchDoesNoHarm) {
    select({"0101110"});
    EXPECT_EQ(filled(), (Stretches{{0, 3, 0, 5}}));
    EXPECT_EQ(last_count, 1);
}

TEST_F(StretchTest, ShortPairBehindTheLastStretchDropsNothing) {
    // Its second point sets the count to one more than the stretches, the end takes that back.
    select({"01110110"});
    EXPECT_EQ(filled(), (Stretches{{0, 1, 0, 3}}));
    EXPECT_EQ(last_count, 1);
}

TEST_F(StretchTest, EachLonePointLowersTheCount) {
    select({"01110", "01010100"});
    filled();
    EXPECT_EQ(last_count, -2);
}

TEST_F(StretchTest, PairUpToTheEndDoesNotSetTheCount) {
    select({"01110", "0011"});
    EXPECT_EQ(filled(), (Stretches{{0, 1, 0, 3}, {1, 2, 1, 3}}));
    EXPECT_EQ(last_count, 1); // the first one set it, the pair has no point between
    select({"01110", "0111"});
    EXPECT_EQ(filled(), (Stretches{{0, 1, 0, 3}, {1, 1, 1, 3}}));
    EXPECT_EQ(last_count, 2);
}

TEST_F(StretchTest, OnlyTheFirstPartialsAreWalked) {
    select({"111", "111"});
    EXPECT_EQ(count_stretches(parray, npoints, 1), 1);
    EXPECT_EQ(count_stretches(parray, npoints, 0), 0);
    EXPECT_EQ(count_stretches(parray, npoints, -1), 0);
}
