// Pasting selected stretches at another time: the destination word, the copies field by field,
// what is refreshed and what is not.

#include "edit/replicate.h"

#include "tests/edit/generating_support.h"

#include <malloc.h>

namespace {

using Replicate = StoreTest;

void replicate(const char *word) {
    printed([word] { replicate_selections(word); });
}

/// The two sources of fill_with_sources as they come out at `time`; the earliest starts at 0.15.
Points with_copies(const Points &before, float time) {
    Points want = before;
    const float earliest = before[0][1].time;
    for (auto copy : {stretch_of(before, 0, 1, 3), stretch_of(before, 1, 0, 3)}) {
        for (Breakpoint &point : copy) {
            Breakpoint made = {};
            made.time = point.time + time - earliest;
            made.freq = point.freq;
            made.amp = point.amp;
            made.logfreq = point.logfreq;
            made.selected = 1;
            point = made;
        }
        plain_phases(copy);
        want.push_back(copy);
    }
    return want;
}

/// Asserts that the word is refused with nothing changed.
void expect_refused(const std::string &word) {
    fill_with_sources();
    flat = 1;
    const Points before = all_points();
    EXPECT_EQ(printed([&word] { replicate_selections(word.c_str()); }),
              say("sndlen = %f\n", sndlen) + "Bad value for time: " + word + "\n");
    expect_points(before);
    EXPECT_EQ(sweepSelect, 0);
}

/// Where the copy of fill_with_one_source starts.
float start_of_copy(const char *word) {
    fill_with_one_source();
    flat = 1;
    replicate(word);
    EXPECT_EQ(partials, 2);
    return parray[1][0].time;
}

} // namespace

TEST_F(Replicate, CopiesEveryFieldInTheFlatView) {
    fill_with_sources();
    flat = 1;
    Points before = all_points();
    replicate("0.4");
    unflag(before);
    expect_points(with_copies(before, 0.4f));
    expect_summaries();
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Replicate, PrintsLittleByItself) {
    fill_with_sources();
    EXPECT_EQ(printed([] { replicate_selections("0.4"); }),
              say("sndlen = %f\n", sndlen) +
                  "Paste replica @: 0.400000 secs.\n2 source candidates\n");
}

TEST_F(Replicate, VerbosePrintsTheCandidates) {
    fill_with_sources();
    verbose = 1;
    EXPECT_EQ(printed([] { replicate_selections("0.4"); }),
              say("sndlen = %f\n", sndlen) +
                  "Paste replica @: 0.400000 secs.\n2 source candidates\n" + two_candidates);
}

TEST_F(Replicate, DebuggingPrintsCountsAndTimes) {
    fill_with_sources();
    dbp = 1;
    const Points want = with_copies(all_points(), 0.4f);
    std::string text = say("sndlen = %f\n", sndlen) + "Paste replica @: 0.400000 secs.\n" +
                       "2 source candidates\n" +
                       "npoints[0] = 5\nnpoints[1] = 4\nnpoints[2] = 3\nnpoints[3] = 1\n" +
                       "npoints[4] = 3\nnpoints[5] = 4\n" +
                       "m = 4\tnpoints[4] = 3\nm = 5\tnpoints[5] = 4\n" + "T = 0.150000\n";
    for (int32_t m = 4; m < 6; ++m) {
        const auto &partial = want[static_cast<size_t>(m)];
        for (size_t j = 0; j < partial.size(); ++j) {
            text += say("time[%d][%d] = %f\n", m, static_cast<int32_t>(j),
                        partial[j].time - want[0][0].time);
        }
        text += "\n";
    }
    EXPECT_EQ(printed([] { replicate_selections("0.4"); }), text);
}

TEST_F(Replicate, MinusOneIsOneSpacingBehindTheEnd) {
    fill_with_sources();
    const float end = sndlen;
    const float time = end + meant;
    const Points want = with_copies(all_points(), time);
    EXPECT_EQ(printed([] { replicate_selections("-1"); }),
              say("sndlen = %f\n", end) + say("Paste replica @: %f secs.\n", time) +
                  "2 source candidates\n");
    EXPECT_EQ(parray[4][0].time, want[4][0].time);
    EXPECT_NEAR(parray[4][0].time, time, 1e-6f);
    EXPECT_EQ(sndlen, want[5][3].time);
    EXPECT_GT(sndlen, end);
}

TEST_F(Replicate, MinusTwelveMeansTheEndToo) {
    EXPECT_EQ(start_of_copy("-12"), start_of_copy("-1"));
    EXPECT_NEAR(start_of_copy("-12"), 0.3f, 1e-6f);
}

TEST_F(Replicate, MinusOneAndAHalfMeansTheEndToo) {
    EXPECT_EQ(start_of_copy("-1.5"), start_of_copy("-1"));
}

TEST_F(Replicate, LaterThanTheEndIsTheEnd) {
    EXPECT_EQ(start_of_copy("77"), start_of_copy("-1"));
    EXPECT_EQ(start_of_copy("inf"), start_of_copy("-1"));
    EXPECT_EQ(start_of_copy("1e300"), start_of_copy("-1"));
}

TEST_F(Replicate, TheLimitIsPrinted) {
    fill_with_one_source();
    EXPECT_EQ(printed([] { replicate_selections("77"); }),
              "sndlen = 0.200000\nPaste replica @: 0.300000 secs.\n1 source candidates\n");
}

TEST_F(Replicate, HalfASecondMovesASelectionAtTwoOneAndAHalfEarlier) {
    fill_store({{{0.0f, 100.0f, -6.0f}, {1.0f, 110.0f, -6.0f}},
                {{2.0f, 200.0f, -6.0f}, {2.25f, 210.0f, -6.0f}, {2.75f, 220.0f, -6.0f}}});
    flag(1, 0, 2);
    replicate("0.5");
    ASSERT_EQ(partials, 3);
    EXPECT_EQ(parray[2][0].time, 0.5f);
    EXPECT_EQ(parray[2][1].time, 0.75f);
    EXPECT_EQ(parray[2][2].time, 1.25f);
}

TEST_F(Replicate, NoughtPointNoughtIsATime) {
    fill_store({{{0.5f, 100.0f, -6.0f}, {0.75f, 101.0f, -7.0f}, {1.0f, 102.0f, -8.0f}}});
    flag(0, 0, 2);
    replicate("0.0");
    ASSERT_EQ(partials, 2);
    EXPECT_EQ(parray[1][0].time, 0.0f);
    EXPECT_EQ(sndstart, 0.0f);
}

TEST_F(Replicate, NoughtWithAPointAloneIsATime) {
    EXPECT_EQ(start_of_copy("0."), 0.0f);
}

TEST_F(Replicate, NoughtAloneIsRefused) {
    expect_refused("0");
}

TEST_F(Replicate, NegativeTimesOtherThanTheEndAreRefused) {
    expect_refused("-0.5");
    expect_refused("-2");
    expect_refused("-inf");
}

TEST_F(Replicate, WordsThatAreNoNumberAreRefused) {
    expect_refused("soon");
    expect_refused("");
    expect_refused("-");
}

TEST_F(Replicate, NotANumberPassesAsADestination) {
    fill_with_one_source();
    EXPECT_EQ(printed([] { replicate_selections("nan"); }),
              "sndlen = 0.200000\nPaste replica @: nan secs.\n1 source candidates\n");
    ASSERT_EQ(partials, 2);
    EXPECT_TRUE(std::isnan(parray[1][0].time));
    EXPECT_EQ(parray[1][2].freq, 102.0f);
}

TEST_F(Replicate, ASoundWithoutSpacingsHasNoEnd) {
    fill_store({{{0.5f, 100.0f, -6.0f}}, {{0.7f, 100.0f, -6.0f}}});
    flag_everything();
    ASSERT_TRUE(std::isnan(meant));
    printed([] { replicate_selections("-1"); });
    EXPECT_EQ(partials, 2);
}

TEST_F(Replicate, TwoRunsOfOnePartialKeepTheirDistance) {
    fill_store({even_partial(9, 0.5f, 111.0f, -9.0f)});
    flag(0, 1, 3);
    flag(0, 5, 8);
    const float distance = parray[0][5].time - parray[0][1].time;
    replicate("0.25");
    ASSERT_EQ(partials, 3);
    EXPECT_EQ(npoints[1], 3);
    EXPECT_EQ(npoints[2], 4);
    EXPECT_NEAR(parray[1][0].time, 0.25f, 1e-6f);
    EXPECT_NEAR(parray[2][0].time - parray[1][0].time, distance, 1e-6f);
}

TEST_F(Replicate, TheEarliestCandidateSetsTheOffset) {
    fill_store({even_partial(3, 1.0f, 100.0f, -9.0f), even_partial(3, 0.5f, 200.0f, -9.0f)});
    flag_everything();
    replicate("0.25");
    EXPECT_NEAR(parray[3][0].time, 0.25f, 1e-6f);
    EXPECT_NEAR(parray[2][0].time, 0.75f, 1e-6f);
}

TEST_F(Replicate, WithoutCandidatesTheFlatViewLosesItsSelection) {
    fill_store(small_content());
    flag(0, 1, 2);
    flag(2, 0, 1);
    flat = 1;
    Points want = all_points();
    EXPECT_EQ(printed([] { replicate_selections("0.1"); }),
              "sndlen = 0.600000\nPaste replica @: 0.100000 secs.\n0 source candidates\n");
    unflag(want);
    expect_points(want);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Replicate, WithoutCandidatesThePerspectiveKeepsItsSelection) {
    fill_store(small_content());
    flag(0, 1, 2);
    replicate("0.1");
    EXPECT_EQ(partials, 4);
    EXPECT_EQ(parray[0][1].selected, 1);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Replicate, ShortRunsAtAnEndTakeNoPlace) {
    fill_store({even_partial(4, 0.0f, 100.0f, -9.0f), even_partial(5, 0.0f, 200.0f, -9.0f)});
    flag(0, 2, 3);
    flag(1, 0, 2);
    verbose = 1;
    EXPECT_EQ(printed([] { replicate_selections("0.1"); }),
              say("sndlen = %f\n", sndlen) +
                  "Paste replica @: 0.100000 secs.\n1 source candidates\n"
                  "Candidate [0]:\t ord_num =1\tfirst_point =0\tlast_point =2\n");
    EXPECT_EQ(partials, 3);
}

TEST_F(Replicate, OtherFlagValuesAreNotSelected) {
    fill_store({even_partial(7, 0.0f, 100.0f, -9.0f)});
    flag(0, 0, 6);
    parray[0][2].selected = 2;
    replicate("0.1");
    ASSERT_EQ(partials, 2);
    EXPECT_EQ(npoints[1], 4);
    EXPECT_EQ(parray[1][0].freq, parray[0][3].freq);
}

TEST_F(Replicate, PerspectiveKeepsTheOldSelectionAndDerivesItsPhases) {
    fill_with_sources();
    const Points before = all_points();
    replicate("0.4");
    Points want = with_copies(before, 0.4f);
    for (size_t i = 0; i < 4; ++i) {
        plain_phases(want[i]);
    }
    expect_points(want);
    EXPECT_EQ(parray[0][2].selected, 1);
}

TEST_F(Replicate, ASecondReplicateInPerspectiveTakesBoth) {
    fill_with_sources();
    replicate("0.4");
    replicate("0.5");
    EXPECT_EQ(partials, 4 + 2 + 4);
}

TEST_F(Replicate, ASecondReplicateInTheFlatViewTakesTheCopies) {
    fill_with_sources();
    flat = 1;
    replicate("0.4");
    replicate("0.5");
    EXPECT_EQ(partials, 4 + 2 + 2);
}

TEST_F(Replicate, TheHighestPointHasTheUnitSwitchOn) {
    fill_store({{{0.0f, 100.0f, -6.0f}, {0.1f, 300.0f, -7.0f}, {0.2f, 400.0f, -8.0f}}});
    flag(0, 0, 2);
    replicate("0.1");
    EXPECT_EQ(parray[1][0].ampunits, 0);
    EXPECT_EQ(parray[1][1].ampunits, 0);
    EXPECT_EQ(parray[1][2].ampunits, 1);
}

TEST_F(Replicate, WildLogPositionsGiveTheNearestUnitSwitch) {
    fill_store({even_partial(7, 0.0f, 100.0f, -9.0f)});
    flag(0, 0, 6);
    const float wild[] = {nan_f, -5.5f, 2.9f, 65535.5f, 65536.0f, inf_f, -inf_f};
    const uint16_t units[] = {0, 0, 2, 65535, 65535, 65535, 0};
    for (int32_t j = 0; j < 7; ++j) {
        parray[0][j].logfreq = wild[j];
    }
    replicate("0.1");
    for (int32_t j = 0; j < 7; ++j) {
        EXPECT_EQ(parray[1][j].ampunits, units[j]) << wild[j];
        EXPECT_TRUE(close_floats(parray[1][j].logfreq, wild[j]));
    }
}

TEST_F(Replicate, LogPositionsStayAsTheyWere) {
    fill_with_one_source();
    parray[0][1].logfreq = 0.25f;
    replicate("0.1");
    EXPECT_EQ(parray[0][1].logfreq, 0.25f);
    EXPECT_EQ(parray[1][1].logfreq, 0.25f);
}

TEST_F(Replicate, RangesAreRefreshedButLevelsAreNot) {
    fill_with_one_source();
    minfreq = maxfreq = minamp = maxamp = 5.0f;
    replicate("0.1");
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 102.0f);
    EXPECT_EQ(minamp, 5.0f);
    EXPECT_EQ(maxamp, 5.0f);
    EXPECT_EQ(sndlen, parray[1][2].time);
}

TEST_F(Replicate, CopiesHaveNoScratch) {
    fill_with_one_source();
    parray[0][1].scratch = 7.0f;
    replicate("0.1");
    EXPECT_EQ(parray[1][1].scratch, 0.0f);
    EXPECT_EQ(parray[0][1].scratch, 7.0f);
}

TEST_F(Replicate, SummariesHaveAHundredSpareOnesBehindTheNew) {
    fill_with_many_sources(150);
    replicate("0.1");
    ASSERT_EQ(partials, 300);
    EXPECT_GE(malloc_usable_size(peval), 400 * sizeof(PartialEval));
    expect_summaries();
}

TEST_F(Replicate, NewSummariesHoldNothingOfDroppedPartials) {
    fill_with_one_source();
    peval[1].selected = 1;
    peval[1].spare1 = 3.0f;
    replicate("0.1");
    EXPECT_EQ(peval[1].selected, 0);
    EXPECT_EQ(peval[1].spare1, 0.0f);
}

TEST_F(Replicate, MoreThan1024CandidatesAreNoLimit) {
    fill_with_many_sources(1500);
    EXPECT_EQ(printed([] { replicate_selections("0.1"); }),
              "sndlen = 0.200000\nPaste replica @: 0.100000 secs.\n1500 source candidates\n");
    EXPECT_EQ(partials, 3000);
    EXPECT_EQ(npoints[2999], 3);
    EXPECT_EQ(parray[2999][2].freq, parray[1499][2].freq);
}
