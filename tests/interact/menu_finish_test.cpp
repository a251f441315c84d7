// What the finishes of the editing entries have in common: the order of their steps shows in the
// values that build on each other.
#include "interact/menu.h"

#include "display/view.h"
#include "store/recompute.h"
#include "tests/interact/menu_support.h"

#include <algorithm>

namespace {

struct Row {
    int value;
    const char *replies;
};

/// Every row whose finish derives the log positions anew.
const Row rows[] = {{11, ""},      {12, ""},        {13, ""},          {14, "\n3\n"},  {15, ""},
                    {19, "\n2\n"}, {19, "\nv 2\n"}, {21, "\n2 3 1\n"}, {22, "\n300\n"}};

using MenuFinish = MenuTest;

/// A store on which each row finds something to work on.
void prepare(int value) {
    fill_store(small_content());
    reset_selection();
    set_flags({"0110", "010", "00", "0"});
    if (value == 11) {
        find_points(1, 2, 1, 1);
    } else if (value == 12) {
        find_points(2, 0, 1, 2);
    } else if (value == 13 || value == 14) {
        find_points(1, 1);
    } else {
        selected = 1;
    }
}

TEST_F(MenuFinish, LogPositionsFollowTheNewRange) {
    bps = 1;
    for (const Row &row : rows) {
        prepare(row.value);
        minfreq = 90.0f;
        maxfreq = 20000.0f;
        logmaxfreq = 1.0f;
        spoil_derived();
        command(row.value, row.replies);
        float lowest = 1.0f;
        float highest = 0.0f;
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                const Breakpoint &point = parray[i][j];
                EXPECT_NEAR(point.logfreq, freq2logfreq(point.freq, maxfreq, minfreq), 1e-5)
                    << row.value;
                lowest = std::min(lowest, point.logfreq);
                highest = std::max(highest, point.logfreq);
            }
        }
        EXPECT_NEAR(lowest, 0.0f, 0.01f) << row.value << ": the lowest up to a whole number of Hz";
        EXPECT_EQ(highest, 1.0f) << row.value;
    }
}

TEST_F(MenuFinish, AveragesAreThoseOfThePointsAsTheyStand) {
    bps = 1;
    for (const Row &row : rows) {
        prepare(row.value);
        command(row.value, row.replies);
        for (int32_t i = 0; i < partials; ++i) {
            float sum = 0.0f;
            for (int32_t j = 0; j < npoints[i]; ++j) {
                sum += parray[i][j].freq;
            }
            EXPECT_FLOAT_EQ(peval[i].avgfreq, sum / static_cast<float>(npoints[i])) << row.value;
            EXPECT_EQ(peval[i].start, parray[i][0].time) << row.value;
            EXPECT_EQ(peval[i].dur, parray[i][npoints[i] - 1].time - parray[i][0].time);
        }
    }
}

} // namespace
