// Code under test that ends the process, with status 0 above all, would pass for a run of all
// tests. Here such an end becomes a failure.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

pid_t running = 0; // the process that is at its tests, 0 before the first and behind the last

void refuse_early_end() {
    if (running != getpid()) {
        return; // a child that a test started, or the regular end
    }
    const testing::TestInfo *test = testing::UnitTest::GetInstance()->current_test_info();
    std::fprintf(stderr, "The process ended within %s.%s\n",
                 test != nullptr ? test->test_suite_name() : "",
                 test != nullptr ? test->name() : "");
    _exit(1);
}

class WholeRun : public testing::Environment {
    void SetUp() override {
        running = getpid();
        std::atexit(refuse_early_end);
    }
    void TearDown() override {
        running = 0;
    }
};

const testing::Environment *const whole_run = testing::AddGlobalTestEnvironment(new WholeRun);

} // namespace
