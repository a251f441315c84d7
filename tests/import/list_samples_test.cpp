// Lists that other programs wrote, where the folder of samples stands beside the source tree.
#include "tests/support/analysis_file.h"
#include "tests/support/fixture.h"

#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

std::string sample(const std::string &name) {
    return std::string(SOURCE_DIR) + "/../shared/samples/" + name;
}

class ListSamples : public StoreTest {
  protected:
    static bool there(const std::string &name) {
        return std::ifstream(sample(name)).good();
    }
    /// Points of each partial in the dump.
    static std::vector<int> counts_of(const std::string &out) {
        std::vector<int> counts;
        std::istringstream lines(out.substr(out.find("STORE\n") + 6));
        int points = 0;
        for (std::string line; std::getline(lines, line);) {
            if (line.empty()) {
                counts.push_back(points);
                points = 0;
            } else {
                ++points;
            }
        }
        return counts;
    }
};

TEST_F(ListSamples, Tones) {
    if (!there("tones.lisp-list.txt")) {
        GTEST_SKIP() << "no samples here";
    }
    const ChildResult result = start_on_path(sample("tones.lisp-list.txt"), "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(counts_of(result.out), (std::vector<int>{9, 10, 9, 9, 10}));
    EXPECT_NE(result.out.find("Importing 5 partials\n"), std::string::npos);
    EXPECT_NE(result.out.find("[0][0]\t 0.104000\t572.491028\t-11.391000\n"), std::string::npos);
    EXPECT_NE(result.out.find("[4][9]\t 1.115000\t645.995972\t-90.000000\n"), std::string::npos);
}

TEST_F(ListSamples, OfThreeListsTheFirstCounts) {
    if (!there("three-lists.lisp-list.txt")) {
        GTEST_SKIP() << "no samples here";
    }
    const ChildResult result = start_on_path(sample("three-lists.lisp-list.txt"), "");
    EXPECT_EQ(result.status, 0);
    const std::vector<int> counts = counts_of(result.out);
    ASSERT_EQ(counts.size(), 91u);
    EXPECT_EQ(counts[0], 15);
    EXPECT_EQ(counts[1], 7);
}

} // namespace
