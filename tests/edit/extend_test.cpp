// Appending points behind the end of a partial.
#include "edit/extend.h"

#include "store/recompute.h"
#include "store/settings.h"
#include "tests/edit/structure.h"
#include "tests/support/console.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

using namespace structure;

namespace {

class Extend : public StoreTest {
  protected:
    std::string extend(int32_t part, int32_t additional) {
        return printed([=] { extend3d(part, additional); });
    }
};

using Labels = std::vector<int>;
using Floats = std::vector<float>;

const std::string opening = "EXTEND3d: Implementation in progress\n";

/// The lowest and the highest partial stand at logfreq 0 and 1.
const std::vector<Partial> two = {{{1.5f, 100, -10}, {1.75f, 100, -85}, {2.0f, 200, -90}},
                                  {{0.0f, 150, -20}, {1.0f, 100, -30}}};

TEST_F(Extend, TellsItsValuesAndEveryPoint) {
    fill_store(two);
    EXPECT_EQ(extend(0, 2), opening + "Appending 2 new points to partial #0\n"
                                      "2\t2\t5\t0.250000\n"
                                      "4\t2.000000\t200.000000\t1.000000\t-85.000000\n\n"
                                      "--temp--> 1.500000\t100.000000\t-10.000000\t0.000000\n"
                                      "--temp--> 1.750000\t100.000000\t-85.000000\t0.000000\n"
                                      "--temp--> 2.000000\t200.000000\t-85.000000\t1.000000\n"
                                      "--temp--> 2.250000\t200.000000\t-85.000000\t1.000000\n"
                                      "--temp--> 2.500000\t200.000000\t-120.000000\t1.000000\n");
    EXPECT_EQ(times(1), (Floats{1.5f, 1.75f, 2.0f, 2.25f, 2.5f}));
    EXPECT_EQ(freqs(1), (Floats{100, 100, 200, 200, 200}));
    EXPECT_EQ(amps(1), (Floats{-10, -85, -85, -85, -120}));
}

TEST_F(Extend, ByThreeAtAHundredthOfASecond) {
    fill_store({{{1.98f, 100, -10}, {1.99f, 100, -30}, {2.0f, 110, -40}}, {{0.0f, 200, -10}}});
    extend(0, 3);
    ASSERT_EQ(npoints[1], 6);
    const float step = (2.0f - 1.98f) / 2.0f;
    float time = 2.0f;
    for (int32_t j = 3; j < 6; ++j) {
        time += step;
        EXPECT_EQ(parray[1][j].time, time);
        EXPECT_NEAR(time, 2.0 + 0.01 * (j - 2), 1e-5);
    }
    EXPECT_EQ(amps(1), (Floats{-10, -30, -40, -30, -30, -120}));
    EXPECT_EQ(freqs(1), (Floats{100, 100, 110, 110, 110, 110}));
}

TEST_F(Extend, LiftsWhatIsBelowMinusEightyAnywhere) {
    fill_store({{{0.0f, 100, -100},
                 {0.1f, 100, -80},
                 {0.2f, 100, -80.5f},
                 {0.3f, 100, -30},
                 {0.4f, 100, -90}}});
    extend(0, 1);
    EXPECT_EQ(amps(0), (Floats{-30, -80, -30, -30, -30, -120}));
}

TEST_F(Extend, NewPointsAreUnselectedAtPhaseZero) {
    fill_store(two);
    select_points(0, 0, 2);
    for (int32_t j = 0; j < 3; ++j) {
        parray[0][j].phase = 1.0f;
        parray[0][j].scratch = 2.0f;
    }
    extend(0, 2);
    for (int32_t j = 0; j < 5; ++j) {
        const bool is_new = j >= 3;
        EXPECT_EQ(parray[1][j].phase, is_new ? 0.0f : 1.0f);
        EXPECT_EQ(parray[1][j].scratch, is_new ? 0.0f : 2.0f);
        EXPECT_EQ(parray[1][j].selected, is_new ? 0 : 1);
        EXPECT_EQ(parray[1][j].ampunits, is_new ? 0 : 1);
    }
}

TEST_F(Extend, ByNothingStillEndsThePartial) {
    for (const int32_t additional : {0, -5}) {
        fill_store(two);
        EXPECT_EQ(extend(0, additional),
                  opening + "Appending " + std::to_string(additional) +
                      " new points to partial #0\n"
                      "2\t0\t3\t0.250000\n"
                      "2\t2.000000\t200.000000\t1.000000\t-85.000000\n\n"
                      "--temp--> 1.500000\t100.000000\t-10.000000\t0.000000\n"
                      "--temp--> 1.750000\t100.000000\t-85.000000\t0.000000\n"
                      "--temp--> 2.000000\t200.000000\t-120.000000\t1.000000\n");
        EXPECT_EQ(npoints[0], 2);
        EXPECT_EQ(amps(1), (Floats{-10, -85, -120}));
    }
}

TEST_F(Extend, ThePartialMovesToTheEnd) {
    verbose = 1;
    fill_store(numbered({3, 4, 5, 6}));
    const std::string text = extend(1, 1);
    EXPECT_TRUE(text.ends_with("Compacting partial #    1\nCompacting partial #    2\n")) << text;
    EXPECT_EQ(labels(), (Labels{0, 2, 3, 1}));
    EXPECT_EQ(npoints[1], 5);
    EXPECT_EQ(npoints[3], 5);
    EXPECT_EQ(partials, 4);
}

TEST_F(Extend, TheBoundOfTheNumberIsLoose) {
    fill_store(two);
    const Snapshot before = snapshot();
    const std::string error = "Critical Error: save your work,\nquit and relaunch the program\n";
    EXPECT_EQ(extend(-1, 3), opening + error);
    EXPECT_EQ(extend(3, 3), opening + error);
    EXPECT_EQ(extend(2, 3), opening + "Appending 3 new points to partial #2\n");
    EXPECT_TRUE(same_points(snapshot(), before));
}

TEST_F(Extend, OnePointIsItsOwnTemplateAtTheMeanInterval) {
    fill_store({{{1.0f, 100, -90}}, {{0.0f, 200, -10}, {0.5f, 200, -10}}});
    ASSERT_EQ(meant, 0.5f);
    EXPECT_EQ(extend(0, 2), opening + "Appending 2 new points to partial #0\n"
                                      "0\t2\t3\t0.500000\n"
                                      "2\t1.000000\t100.000000\t0.000000\t-90.000000\n\n"
                                      "--temp--> 1.000000\t100.000000\t-90.000000\t0.000000\n"
                                      "--temp--> 1.500000\t100.000000\t-90.000000\t0.000000\n"
                                      "--temp--> 2.000000\t100.000000\t-120.000000\t0.000000\n");
    EXPECT_EQ(amps(1), (Floats{-90, -90, -120}));
}

TEST_F(Extend, OnePointWithoutAMeanIntervalStepsByAHundredth) {
    fill_store({{{1.0f, 100, -10}}});
    ASSERT_TRUE(std::isnan(meant));
    extend(0, 1);
    EXPECT_EQ(times(0), (Floats{1.0f, 1.0f + 0.01f}));
    fill_store({{{1.0f, 100, -10}}});
    meant = 0.0f;
    extend(0, 1);
    EXPECT_EQ(times(0), (Floats{1.0f, 1.0f + 0.01f}));
}

TEST_F(Extend, TooManyPointsAreRefused) {
    fill_store(two);
    const Snapshot before = snapshot();
    testing::internal::CaptureStderr();
    EXPECT_EQ(extend(0, 1000001), opening);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Quillgrove: cannot append 1000001 points\n");
    EXPECT_TRUE(same_points(snapshot(), before));
}

/// Ends the process with 0 when the most points are appended, its words dropped.
[[noreturn]] void append_the_most() {
    stdout = std::fopen("/dev/null", "w");
    extend3d(0, 1000000);
    std::_Exit(npoints[1] == 1000003 && parray[1][1000002].amp == -120.0f ? 0 : 1);
}

// In a process of its own, so that the memory does not stay with the tests that follow.
TEST_F(Extend, TheMostPointsAreAppended) {
    fill_store(two);
    EXPECT_EXIT(append_the_most(), testing::ExitedWithCode(0), "");
}

TEST_F(Extend, NewPointsKeepPhaseZeroThroughTheRefresh) {
    fill_store(two);
    extend(0, 3);
    refresh();
    EXPECT_EQ(phases(1), Floats(6, 0.0f));
    EXPECT_EQ(sndlen, 2.75f);
}

} // namespace
