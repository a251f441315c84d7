// When a device counts as dead: by the count of its blocks and by the clock of who looks.
#include "live/stall.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;

/// Looks each ten milliseconds.
class Stall : public testing::Test {
  protected:
    void SetUp() override {
        watch.reset(now);
    }
    bool look(uint64_t count, milliseconds later = milliseconds(10)) {
        now += later;
        return watch.stalled(count, now);
    }
    /// Looks until it is stalled; after how long, 10 s at most.
    milliseconds life(uint64_t count) {
        milliseconds time(10);
        while (!look(count) && time < milliseconds(10000)) {
            time += milliseconds(10);
        }
        return time;
    }

    StallWatch watch;
    StallWatch::Time now{std::chrono::hours(100)};
};

TEST_F(Stall, ACountThatGrowsIsAlive) {
    for (uint64_t count = 0; count < 1000; ++count) {
        EXPECT_FALSE(look(count / 40));
    }
}

TEST_F(Stall, ACountThatStandsIsStalledAfterTwoSeconds) {
    EXPECT_EQ(life(0), milliseconds(2010)) << "none at all from the start";
    EXPECT_FALSE(look(5)) << "it goes on after all";
    EXPECT_EQ(life(5), milliseconds(2010));
    EXPECT_TRUE(look(5));
}

TEST_F(Stall, AHeldProcessFindsItsDeviceAlive) {
    EXPECT_FALSE(look(7));
    EXPECT_FALSE(look(7, milliseconds(60000))) << "nothing was asked for while it was held";
    EXPECT_FALSE(look(8));
}

TEST_F(Stall, ADeviceThatDiedMeanwhileIsFoundLater) {
    EXPECT_FALSE(look(7));
    EXPECT_FALSE(look(7, milliseconds(60000)));
    EXPECT_EQ(life(7), milliseconds(2010));
}

} // namespace
