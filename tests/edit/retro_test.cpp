// Selected material backward: inside runs, and as a group of whole partials.

#include "edit/retro.h"

#include "tests/edit/edit_support.h"

#include <algorithm>
#include <utility>

namespace {

using Retro = StoreTest;
using Reverse = StoreTest;

std::string run_retro() {
    return printed([] { retro(); });
}

std::string run_reverse() {
    return printed([] { reverse(); });
}

/// Exchanges what a retrograde exchanges between points `a` and `b`.
void exchange(Breakpoint &a, Breakpoint &b, bool times) {
    std::swap(a.freq, b.freq);
    std::swap(a.amp, b.amp);
    std::swap(a.logfreq, b.logfreq);
    if (times) {
        std::swap(a.time, b.time);
    }
}

/// Gives each point a phase of its own, so that a wandering phase shows.
void number_phases() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].phase = static_cast<float>(i) + 0.01f * static_cast<float>(j);
        }
    }
}

} // namespace

TEST_F(Retro, FourPointsExchangeTwoPairs) {
    fill_store(small_content());
    number_phases();
    flag(0, 0, 3);
    Points expected = all_points();
    exchange(expected[0][0], expected[0][3], false);
    exchange(expected[0][1], expected[0][2], false);
    EXPECT_EQ(run_retro(), "partials = 4\n"
                           "i = 0\tj = 0\tk = 0\n"
                           "i = 0\tj = 0\tk = 1\n");
    expect_points(expected);
}

TEST_F(Retro, FivePointsExchangeTwoPairsAndTheMiddleWithItself) {
    fill_store({even_partial(7, 0.0f, 100.0f, -3.0f)});
    number_phases();
    flag(0, 1, 5);
    Points expected = all_points();
    exchange(expected[0][1], expected[0][5], false);
    exchange(expected[0][2], expected[0][4], false);
    EXPECT_EQ(run_retro(), "partials = 1\n"
                           "i = 0\tj = 1\tk = 0\n"
                           "i = 0\tj = 1\tk = 1\n"
                           "i = 0\tj = 1\tk = 2\n");
    expect_points(expected);
}

TEST_F(Retro, ASinglePointPrintsOneLineAndStays) {
    fill_store(small_content());
    flag(1, 1, 1);
    const Points before = all_points();
    EXPECT_EQ(run_retro(), "partials = 4\ni = 1\tj = 1\tk = 0\n");
    expect_points(before);
}

TEST_F(Retro, EachRunOfEachPartialTurnsByItself) {
    fill_with_runs();
    number_phases();
    Points expected = all_points();
    exchange(expected[0][0], expected[0][3], false);
    exchange(expected[0][1], expected[0][2], false);
    exchange(expected[0][5], expected[0][7], false);
    exchange(expected[1][1], expected[1][2], false);
    exchange(expected[1][4], expected[1][5], false);
    exchange(expected[2][0], expected[2][3], false);
    exchange(expected[2][1], expected[2][2], false);
    EXPECT_EQ(run_retro(), "partials = 4\n"
                           "i = 0\tj = 0\tk = 0\n"
                           "i = 0\tj = 0\tk = 1\n"
                           "i = 0\tj = 5\tk = 0\n"
                           "i = 0\tj = 5\tk = 1\n"
                           "i = 1\tj = 1\tk = 0\n"
                           "i = 1\tj = 4\tk = 0\n"
                           "i = 2\tj = 0\tk = 0\n"
                           "i = 2\tj = 0\tk = 1\n");
    expect_points(expected);
}

TEST_F(Retro, TwiceIsAsBefore) {
    fill_with_runs();
    const Points before = all_points();
    run_retro();
    run_retro();
    expect_points(before);
}

TEST_F(Retro, NothingSelectedOnlyTellsTheCount) {
    fill_store(small_content());
    const Points before = all_points();
    EXPECT_EQ(run_retro(), "partials = 4\n");
    expect_points(before);
}

TEST_F(Retro, AnEmptyStoreOnlyTellsTheCount) {
    EXPECT_EQ(run_retro(), "partials = 0\n");
}

TEST_F(Retro, ExchangingBreakpointsAloneDoesNothing) {
    fill_with_runs();
    const Points before = all_points();
    EXPECT_EQ(printed([] { swap_breakpoints(); }), "");
    expect_points(before);
}

TEST_F(Reverse, MirrorsTheGroupAroundTheCentreOfItsSpan) {
    fill_store({{{1.0f, 100.0f, -1.0f}, {1.25f, 110.0f, -2.0f}, {2.0f, 120.0f, -3.0f}},
                {{2.5f, 200.0f, -4.0f}, {3.0f, 210.0f, -5.0f}},
                {{0.0f, 300.0f, -6.0f}, {5.0f, 310.0f, -7.0f}}});
    number_phases();
    flag(0, 0, 2);
    flag(1, 0, 1);
    const Points before = all_points();
    EXPECT_EQ(run_reverse(), "partials = 3\n"
                             "MINT = 1.000000\tMAXT = 3.000000\tTAU = 2.000000\n"
                             "i = 0\tj = 0\tk = 0\n"
                             "i = 0\tj = 0\tk = 1\n"
                             "i = 1\tj = 0\tk = 0\n");
    Points expected = before;
    const float first[] = {2.0f, 2.75f, 3.0f};
    for (size_t j = 0; j < 3; ++j) {
        expected[0][j].time = first[j];
        expected[0][j].freq = before[0][2 - j].freq;
        expected[0][j].amp = before[0][2 - j].amp;
        expected[0][j].logfreq = before[0][2 - j].logfreq;
    }
    const float second[] = {1.0f, 1.5f};
    for (size_t j = 0; j < 2; ++j) {
        expected[1][j].time = second[j];
        expected[1][j].freq = before[1][1 - j].freq;
        expected[1][j].amp = before[1][1 - j].amp;
        expected[1][j].logfreq = before[1][1 - j].logfreq;
    }
    expect_points(expected);
}

TEST_F(Reverse, MatchesItsFormulaOnEveryPoint) {
    fill_store({even_partial(7, 0.13f, 100.0f, -3.0f), even_partial(4, 0.57f, 300.0f, -4.0f),
                even_partial(5, 0.31f, 500.0f, -5.0f)});
    flag(0, 0, 6);
    flag(1, 0, 3);
    const Points before = all_points();
    Points expected = before;
    const float tau = (before[0][0].time + before[1][3].time) * 0.5f;
    for (size_t i = 0; i < 2; ++i) {
        const size_t last = before[i].size() - 1;
        for (size_t j = 0; j <= last; ++j) {
            const Breakpoint &source = before[i][last - j];
            expected[i][j].time = 2.0f * tau - source.time;
            expected[i][j].freq = source.freq;
            expected[i][j].amp = source.amp;
            expected[i][j].logfreq = source.logfreq;
        }
    }
    run_reverse();
    expect_points(expected);
    for (int32_t j = 1; j < 7; ++j) {
        EXPECT_LT(parray[0][j - 1].time, parray[0][j].time);
    }
}

TEST_F(Reverse, RefusesAPartialThatIsSelectedOnlyToItsMiddle) {
    fill_store(small_content());
    flag(0, 0, 1);
    flag(1, 0, 2);
    const Points before = all_points();
    EXPECT_EQ(run_reverse(), "partials = 4\n"
                             "Reverse can work only on selections\n"
                             "\tmade of entire partials!\n");
    expect_points(before);
}

TEST_F(Reverse, AHoleInsideIsRefusedToo) {
    fill_store(small_content());
    flag(0, 0, 3);
    parray[0][2].selected = 0;
    EXPECT_EQ(run_reverse(), "partials = 4\n"
                             "Reverse can work only on selections\n"
                             "\tmade of entire partials!\n");
}

TEST_F(Reverse, ARunBehindAnUnselectedFirstPointPassesAndRunsBackward) {
    fill_store(small_content());
    number_phases();
    flag(0, 1, 2);
    Points expected = all_points();
    exchange(expected[0][1], expected[0][2], true);
    EXPECT_EQ(run_reverse(), "partials = 4\n"
                             "MINT = 0.600000\tMAXT = 0.000000\tTAU = 0.300000\n"
                             "i = 0\tj = 1\tk = 0\n");
    expect_points(expected);
    EXPECT_GT(parray[0][1].time, parray[0][2].time);
}

TEST_F(Reverse, ASinglePointPartialMirrorsItsTime) {
    fill_store({{{1.0f, 100.0f, 0.0f}}, {{2.0f, 200.0f, 0.0f}, {4.0f, 210.0f, 0.0f}}});
    flag(0, 0, 0);
    flag(1, 0, 1);
    EXPECT_EQ(run_reverse(), "partials = 2\n"
                             "MINT = 1.000000\tMAXT = 4.000000\tTAU = 2.500000\n"
                             "i = 0\tj = 0\tk = 0\n"
                             "i = 1\tj = 0\tk = 0\n");
    EXPECT_EQ(parray[0][0].time, 4.0f);
    EXPECT_EQ(parray[1][0].time, 1.0f);
    EXPECT_EQ(parray[1][1].time, 3.0f);
}

TEST_F(Reverse, ALoneLatePointTakesTheEndOfTheSoundAsItsStart) {
    // The smallest start begins at the end of the sound, which single points do not extend.
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 110.0f, 0.0f}}, {{3.0f, 200.0f, 0.0f}}});
    ASSERT_EQ(sndlen, 1.0f);
    flag(1, 0, 0);
    EXPECT_EQ(run_reverse(), "partials = 2\n"
                             "MINT = 1.000000\tMAXT = 3.000000\tTAU = 2.000000\n"
                             "i = 1\tj = 0\tk = 0\n");
    EXPECT_EQ(parray[1][0].time, 1.0f);
}

TEST_F(Reverse, NothingSelectedChangesNothing) {
    fill_store(small_content());
    const Points before = all_points();
    EXPECT_EQ(run_reverse(), "partials = 4\n"
                             "MINT = 0.600000\tMAXT = 0.000000\tTAU = 0.300000\n");
    expect_points(before);
}

TEST_F(Reverse, TimesThatAreNoNumbersComeThrough) {
    fill_store(small_content());
    flag(0, 0, 3);
    parray[0][0].time = nan_f;
    parray[0][3].time = inf_f;
    run_reverse();
    finish_retro();
    EXPECT_TRUE(std::isnan(parray[0][3].time));
}

TEST_F(Reverse, AnEmptyStoreOnlyTellsItsFigures) {
    sndlen = 0.0f;
    EXPECT_EQ(run_reverse(), "partials = 0\nMINT = 0.000000\tMAXT = 0.000000\tTAU = 0.000000\n");
}
