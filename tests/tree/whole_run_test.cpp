// The tests' own watch over processes that end before their last test.
#include "tests/support/child.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

namespace {

constexpr const char *ending = "QUILLGROVE_TEST_ENDS"; // set in the run that ends early

/// This test alone, in a process of its own.
ChildResult run_again() {
    return in_child("", [] {
        unsetenv("GTEST_TOTAL_SHARDS");
        unsetenv("GTEST_SHARD_INDEX");
        setenv(ending, "1", 1);
        execl("/proc/self/exe", "quillgrove_tests", "--gtest_filter=WholeRun.AnEarlyEndIsAFailure",
              nullptr);
    });
}

TEST(WholeRun, AnEarlyEndIsAFailure) {
    if (std::getenv(ending) != nullptr) {
        std::exit(0);
    }
    const ChildResult result = run_again();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "The process ended within WholeRun.AnEarlyEndIsAFailure\n");
}

TEST(WholeRun, TheEndOfAChildIsItsOwn) {
    EXPECT_EQ(in_child("", [] { std::exit(0); }).status, 0);
    EXPECT_EQ(in_child("", [] { std::exit(7); }).status, 7);
}

} // namespace
