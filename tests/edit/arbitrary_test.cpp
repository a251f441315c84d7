// New partials by a list of factors: the worked lines, every field, the whole trace, the finish.

#include "edit/generate.h"

#include "tests/edit/generating_support.h"

#include <malloc.h>

namespace {

using Arbitrary = StoreTest;

void arbitrary(const std::string &line) {
    printed([&line] { arbitrary_partials(line.c_str()); });
}

/// The store after `factors` with `afac`, but for phases of old partials and log positions.
Points with_voices(const Points &before, const std::vector<float> &factors,
                   const std::vector<float> &afac) {
    Points want = before;
    for (const auto &source : {stretch_of(before, 0, 1, 3), stretch_of(before, 1, 0, 3)}) {
        for (size_t l = 0; l < factors.size(); ++l) {
            want.push_back(voice(source, factors[l], 1.0f, afac[l]));
            plain_phases(want.back());
        }
    }
    return want;
}

/// Runs the line in the flat view and compares every field of every point.
void expect_voices(const std::string &line, const std::vector<float> &factors,
                   const std::vector<float> &afac) {
    fill_with_sources();
    flat = 1;
    Points want = all_points();
    unflag(want);
    want = with_voices(want, factors, afac);
    plain_positions(want);
    arbitrary(line);
    expect_points(want);
    expect_summaries();
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

const std::vector<int32_t> old_counts = {5, 4, 3, 1};
const std::vector<int32_t> source_counts = {3, 4};

} // namespace

TEST_F(Arbitrary, TwoThreeWithTheSquareLaw) {
    expect_voices("2 3 q\n", {2.0f, 3.0f},
                  {static_cast<float>(1.0 / 9.0), static_cast<float>(1.0 / 16.0)});
}

TEST_F(Arbitrary, TwoThreeWithoutALetter) {
    expect_voices("2 3\n", {2.0f, 3.0f}, {1.0f, 1.0f});
}

TEST_F(Arbitrary, OneTwoTwoThreeDropsTheOneAndATwo) {
    expect_voices("1 2 2 3 c\n", {2.0f, 3.0f}, {1.0f, 1.0f});
}

TEST_F(Arbitrary, ReciprocalLaw) {
    expect_voices("2 3.5 r\n", {2.0f, 3.5f}, {1.0f, 1.0f / 3.5f});
}

TEST_F(Arbitrary, ExponentialLaw) {
    expect_voices("2 3.5 0.7 e\n", {2.0f, 3.5f, 0.7f}, {1.0f, std::exp(-1.0f), std::exp(-2.0f)});
}

TEST_F(Arbitrary, BellLaw) {
    // J0 at 2, 1 and 0.
    fill_with_one_source();
    arbitrary("2 3 4 b\n");
    ASSERT_EQ(partials, 4);
    EXPECT_NEAR(parray[1][0].amp, -6.0 + 20.0 * std::log10(0.2238907791 * 0.2238907791 / 4), 1e-4);
    EXPECT_NEAR(parray[2][0].amp, -6.0 + 20.0 * std::log10(0.7651976866 * 0.7651976866 / 6), 1e-4);
    EXPECT_NEAR(parray[3][0].amp, -6.0 + 20.0 * std::log10(1.0 / 8.0), 1e-4);
}

TEST_F(Arbitrary, NotesAndFractions) {
    expect_voices("etP5 3/2 -etP8 c\n", {static_cast<float>(std::exp2(7.0 / 12.0)), 1.5f, 0.5f},
                  {1.0f, 1.0f, 1.0f});
}

TEST_F(Arbitrary, PrintsItsWholeTrace) {
    fill_with_sources();
    EXPECT_EQ(printed([] { arbitrary_partials("2 3\n"); }),
              "len = 1\ti = 1\nNew partials per candidate: 2\n"
              "AFAC = 1.000000\nAFAC = 1.000000\n\n2 source candidates\n" +
                  two_candidates + making(old_counts, source_counts, {1.0f, 1.0f}));
}

TEST_F(Arbitrary, TheSquareLawPrintsNoFactorsOfItsOwn) {
    fill_with_sources();
    EXPECT_EQ(printed([] { arbitrary_partials("2 3 q\n"); }),
              "len = 1\ti = 1\nlen = 1\ti = 1\nNew partials per candidate: 2\n"
              "\n2 source candidates\n" +
                  two_candidates + making(old_counts, source_counts, {0.111111f, 0.0625f}));
}

TEST_F(Arbitrary, VerbosePrintsFactorsAndLaw) {
    fill_with_sources();
    verbose = 1;
    EXPECT_EQ(printed([] { arbitrary_partials("2 3.5 e\n"); }),
              "len = 1\ti = 1\nlen = 3\ti = 3\nNew partials per candidate: 2\n"
              "Freq. multiplyer1 = 2.000000\nFreq. multiplyer2 = 3.500000\n"
              "amp. envelope = e\n"
              "AFAC = 1.000000\nAFAC = 0.367879\n\n2 source candidates\n" +
                  two_candidates + making(old_counts, source_counts, {1.0f, std::exp(-1.0f)}));
}

TEST_F(Arbitrary, DebuggingPrintsTheLineTheFrequenciesAndTheCounts) {
    fill_with_sources();
    dbp = 1;
    const Points before = all_points();
    std::string text = "received: 2 2 c\n\n"
                       "len = 1\ti = 1\nlen = 1\ti = 1\nNonsense\nDuplicate\n"
                       "New partials per candidate: 1\nAFAC = 1.000000\n\n2 source candidates\n" +
                       two_candidates + making(old_counts, source_counts, {1.0f});
    for (int32_t j = 0; j < 3; ++j) {
        text += say("freq[4][%d] = %f\n", j, 2.0f * before[0][static_cast<size_t>(1 + j)].freq);
    }
    for (int32_t j = 0; j < 4; ++j) {
        text += say("freq[5][%d] = %f\n", j, 2.0f * before[1][static_cast<size_t>(j)].freq);
    }
    text += "#[0]:\t5 points\n#[1]:\t4 points\n#[2]:\t3 points\n#[3]:\t1 points\n"
            "#[4]:\t3 points\n#[5]:\t4 points\n";
    EXPECT_EQ(printed([] { arbitrary_partials("2 2 c\n"); }), text);
}

TEST_F(Arbitrary, PerspectiveKeepsTheOldSelectionAndDerivesItsPhases) {
    fill_with_sources();
    Points want = with_voices(all_points(), {2.0f}, {1.0f});
    for (size_t i = 0; i < 4; ++i) {
        plain_phases(want[i]);
    }
    plain_positions(want);
    arbitrary("2\n");
    expect_points(want);
    EXPECT_EQ(parray[0][1].selected, 1);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Arbitrary, FoundPointsAreForgottenInTheFlatViewOnly) {
    fill_with_one_source();
    foundSubscriptions = {0, 1, 0, 2, 2};
    arbitrary("2\n");
    EXPECT_EQ(foundSubscriptions.count, 2);
    flat = 1;
    arbitrary("2\n");
    EXPECT_EQ(foundSubscriptions.count, 0);
    EXPECT_EQ(foundSubscriptions.part0, -1);
}

TEST_F(Arbitrary, WithoutCandidatesTheFinishStillRuns) {
    fill_store(small_content());
    flag(0, 1, 2);
    flag(2, 0, 1);
    flat = 1;
    minfreq = maxfreq = 5.0f;
    EXPECT_EQ(printed([] { arbitrary_partials("2\n"); }),
              "New partials per candidate: 1\nAFAC = 1.000000\n\n0 source candidates\n" +
                  making({4, 3, 2, 1}, {}, {1.0f}));
    EXPECT_EQ(partials, 4);
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 1000.0f);
    EXPECT_EQ(parray[0][1].selected, 0);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Arbitrary, ALetterAloneMakesNothing) {
    fill_with_one_source();
    EXPECT_EQ(printed([] { arbitrary_partials("c\n"); }),
              "New partials per candidate: 0\n\n1 source candidates\n" + one_candidate +
                  making({3}, {3}, {}));
    EXPECT_EQ(partials, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Arbitrary, AnEmptyLineMakesNothing) {
    for (const char *line : {"\n", ""}) {
        fill_with_one_source();
        EXPECT_EQ(printed([line] { arbitrary_partials(line); }),
                  "New partials per candidate: 0\n\n1 source candidates\n" + one_candidate +
                      making({3}, {3}, {}));
        EXPECT_EQ(partials, 1);
    }
}

TEST_F(Arbitrary, AFactorOfNoughtGivesFrequenciesOfNought) {
    fill_with_one_source();
    arbitrary("2 1 c\n");
    ASSERT_EQ(partials, 3);
    EXPECT_EQ(parray[2][0].freq, 0.0f);
    EXPECT_EQ(parray[2][0].amp, -6.0f);
    EXPECT_EQ(minfreq, 0.0f);
}

TEST_F(Arbitrary, AnInfiniteFactorGoesThrough) {
    fill_with_one_source();
    arbitrary("2 inf\n");
    ASSERT_EQ(partials, 3);
    EXPECT_EQ(parray[2][0].freq, inf_f);
    EXPECT_EQ(maxfreq, inf_f);
}

TEST_F(Arbitrary, LevelsAreNotRefreshed) {
    fill_with_one_source();
    minamp = maxamp = 5.0f;
    sndlen = meant = 7.0f;
    arbitrary("2 3 q\n");
    EXPECT_EQ(minamp, 5.0f);
    EXPECT_EQ(maxamp, 5.0f);
    EXPECT_EQ(sndlen, 7.0f);
    EXPECT_EQ(meant, 7.0f);
}

TEST_F(Arbitrary, OtherFlagValuesEndACandidate) {
    fill_store({even_partial(7, 0.0f, 100.0f, -9.0f)});
    flag(0, 0, 6);
    parray[0][3].selected = 2;
    arbitrary("2\n");
    ASSERT_EQ(partials, 3);
    EXPECT_EQ(npoints[1], 3);
    EXPECT_EQ(parray[2][0].freq, 2.0f * parray[0][4].freq);
}

TEST_F(Arbitrary, AThousandFactorsOfOneCandidate) {
    std::string line;
    for (int32_t k = 0; k < 1000; ++k) {
        line += say("%.4f ", 1.5 + k * 0.002);
    }
    fill_with_one_source();
    arbitrary(line + "c\n");
    ASSERT_EQ(partials, 1001);
    EXPECT_EQ(parray[1000][0].freq, 100.0f * 3.498f);
    EXPECT_GE(malloc_usable_size(peval), 1101 * sizeof(PartialEval));
    expect_summaries();
}

TEST_F(Arbitrary, ThirtyFourThousandCandidates) {
    fill_with_many_sources(34000);
    arbitrary("2\n");
    ASSERT_EQ(partials, 68000);
    EXPECT_EQ(parray[67999][2].freq, 2.0f * parray[33999][2].freq);
}

TEST_F(Arbitrary, AHundredMillionNewPointsAreTheMost) {
    std::string line;
    for (int32_t k = 0; k < 1000; ++k) {
        line += say("%.4f ", 1.5 + k * 0.002);
    }
    line += "c\n";
    fill_store({Partial(100001, {0.0f, 100.0f, -6.0f})});
    flag_everything();
    flat = 1;
    const Points before = all_points();
    EXPECT_EQ(complained([&line] { arbitrary(line); }),
              "Quillgrove: 100001000 new points exceed the limit of 100000000\n");
    expect_points(before);
    EXPECT_EQ(sweepSelect, 0);
}

TEST_F(Arbitrary, ClearStringZeroesItsBytes) {
    char text[] = "abcdef";
    clear_string(text, 3);
    EXPECT_EQ(std::string(text, 6), std::string("\0\0\0def", 6));
}

TEST_F(Arbitrary, ClearStringOfNoBytesDoesNothing) {
    char text[] = "abc";
    clear_string(text, 0);
    clear_string(text, -5);
    EXPECT_STREQ(text, "abc");
}
