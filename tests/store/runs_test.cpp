// Stretches of selected points, under each rule that commands know.

#include "store/runs.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>

namespace {

/// One partial's flags, a digit a point.
std::vector<Breakpoint> flags(const std::string &digits) {
    std::vector<Breakpoint> points;
    for (const char digit : digits) {
        Breakpoint point = {};
        point.selected = static_cast<uint16_t>(digit - '0');
        points.push_back(point);
    }
    return points;
}

/// The runs of these partials as text: partial:first-last, blank-separated.
std::string runs_of(const std::vector<std::string> &content, const RunRule &rule) {
    std::vector<std::vector<Breakpoint>> points;
    std::vector<Breakpoint *> arrays;
    std::vector<int32_t> counts;
    for (const std::string &digits : content) {
        points.push_back(flags(digits));
    }
    for (auto &partial : points) {
        arrays.push_back(partial.data());
        counts.push_back(static_cast<int32_t>(partial.size()));
    }
    std::string text;
    for (const SelectedRun &run :
         selected_runs(arrays.data(), counts.data(), static_cast<int32_t>(content.size()), rule)) {
        char words[64];
        std::snprintf(words, sizeof words, "%d:%d-%d ", run.partial, run.first, run.last);
        text += words;
    }
    if (!text.empty()) {
        text.pop_back();
    }
    return text;
}

} // namespace

TEST(SelectedRuns, NothingSelectedHasNone) {
    EXPECT_EQ(runs_of({"0000", "0"}, every_run), "");
}

TEST(SelectedRuns, NoPartialsOrEmptyPartialsHaveNone) {
    EXPECT_EQ(runs_of({}, every_run), "");
    EXPECT_EQ(runs_of({"", "11", ""}, every_run), "1:0-1");
}

TEST(SelectedRuns, EveryRunCountsWhateverItsLength) {
    EXPECT_EQ(runs_of({"1011011100", "1", "01"}, every_run), "0:0-0 0:2-3 0:5-7 1:0-0 2:1-1");
}

TEST(SelectedRuns, OnePointBetweenKeepsRunsApart) {
    EXPECT_EQ(runs_of({"10101"}, every_run), "0:0-0 0:2-2 0:4-4");
}

TEST(SelectedRuns, NewPartialsNeedThreePointsEverywhere) {
    EXPECT_EQ(runs_of({"1101110011", "0011", "00111", "111"}, generating_run), "0:3-5 2:2-4 3:0-2");
}

TEST(SelectedRuns, ExportsTakeTwoPointsAtTheEndOnly) {
    EXPECT_EQ(runs_of({"1100", "0011", "0001", "11", "0111000"}, exported_run),
              "1:2-3 3:0-1 4:1-3");
}

TEST(SelectedRuns, ExportsTakeTheOnlyPointOfAPartial) {
    EXPECT_EQ(runs_of({"1", "0", "01", "10", "2", "1"}, exported_run), "0:0-0 5:0-0");
    EXPECT_EQ(runs_of({"1"}, generating_run), "");
}

TEST(SelectedRuns, AnotherFlagValueContinuesButDoesNotStartARun) {
    EXPECT_EQ(runs_of({"2212202"}, every_run), "0:2-4");
}

TEST(SelectedRuns, AnotherFlagValueEndsASourceOfNewPartials) {
    EXPECT_EQ(runs_of({"11211", "1112111", "2111", "1121"}, generating_run), "1:0-2 1:4-6 2:1-3");
}

TEST(SelectedRuns, LengthCountsBothEnds) {
    EXPECT_EQ(run_length({0, 3, 3}), 1);
    EXPECT_EQ(run_length({0, 3, 7}), 5);
}

TEST(SelectedRuns, SearchStartsAtTheGivenIndex) {
    const std::vector<Breakpoint> points = flags("110011");
    SelectedRun run = {7, 7, 7};
    ASSERT_TRUE(next_run(points.data(), 6, 4, 2, every_run, run));
    EXPECT_EQ(run.partial, 4);
    EXPECT_EQ(run.first, 4);
    EXPECT_EQ(run.last, 5);
    EXPECT_FALSE(next_run(points.data(), 6, 4, 6, every_run, run));
    EXPECT_EQ(run.first, 4);
}
