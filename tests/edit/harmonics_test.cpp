// New partials as a harmonic series above a source that is a member of it: the four series, the
// refusals, every field, the whole trace, the finish, and orders and numbers out of all bounds.

#include "edit/generate.h"

#include "tests/edit/generating_support.h"
#include "tests/support/drawing.h"

#include <malloc.h>

namespace {

using Harmonics = StoreTest;
using HarmonicsDrawn = DrawingTest;

void harmonics(int32_t number, const char *type, int32_t order, const char *decay) {
    artificial_harmonics(&number, type, &order, decay);
}

std::string printed_by(int32_t number, const char *type, int32_t order, const char *decay) {
    return printed([=] { harmonics(number, type, order, decay); });
}

/// Frequencies at the start of the new partials of one source at 100 Hz.
std::vector<float> frequencies(int32_t number, const char *type, int32_t order,
                               const char *decay = "c") {
    fill_with_one_source();
    printed_by(number, type, order, decay);
    std::vector<float> starts;
    for (int32_t m = 1; m < partials; ++m) {
        starts.push_back(parray[m][0].freq);
    }
    return starts;
}

/// Levels at the start of the new partials, above that of the source.
std::vector<double> gains(int32_t number, int32_t order, const char *decay) {
    fill_with_one_source();
    printed_by(number, "a", order, decay);
    std::vector<double> starts;
    for (int32_t m = 1; m < partials; ++m) {
        starts.push_back(parray[m][0].amp + 6.0);
    }
    return starts;
}

void expect_gains(const std::vector<double> &found, const std::vector<double> &amplitudes) {
    ASSERT_EQ(found.size(), amplitudes.size());
    for (size_t l = 0; l < found.size(); ++l) {
        EXPECT_NEAR(found[l], 20.0 * std::log10(amplitudes[l]), 1e-4) << l;
    }
}

/// Asserts that nothing changes and that this alone is printed.
void expect_refused(int32_t number, const char *type, int32_t order, const char *decay,
                    const std::string &text) {
    fill_with_sources();
    flat = 1;
    const Points before = all_points();
    EXPECT_EQ(printed_by(number, type, order, decay), text);
    expect_points(before);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 0);
}

/// The store after a series of these members; the order stands in front of the first one.
Points with_series(const Points &before, const std::vector<float> &members, float order,
                   const std::vector<float> &afac) {
    Points want = before;
    for (const auto &source : {stretch_of(before, 0, 1, 3), stretch_of(before, 1, 0, 3)}) {
        for (size_t l = 0; l < members.size(); ++l) {
            want.push_back(voice(source, members[l], order, afac[l]));
        }
    }
    return want;
}

using Floats = std::vector<float>;

const std::string found_two = "2 source candidates\n" + two_candidates;
const std::string found_one = "1 source candidates\n" + one_candidate;
const std::vector<int32_t> old_counts = {5, 4, 3, 1};
const std::vector<int32_t> source_counts = {3, 4};

} // namespace

// --- series ------------------------------------------------------------------------------------

TEST_F(Harmonics, AllAboveAFundamental) {
    EXPECT_EQ(frequencies(3, "a", 1), (Floats{200.0f, 300.0f, 400.0f}));
}

TEST_F(Harmonics, AllAboveASecondHarmonic) {
    EXPECT_EQ(frequencies(3, "a", 2), (Floats{150.0f, 200.0f, 250.0f}));
}

TEST_F(Harmonics, EvenOnes) {
    // Members 2, 4, 6, 8, 10; order 2 starts at the third of them.
    EXPECT_EQ(frequencies(3, "e", 2), (Floats{300.0f, 400.0f, 500.0f}));
    EXPECT_EQ(frequencies(2, "e", 4), (Floats{100.0f * 10.0f / 4.0f, 100.0f * 12.0f / 4.0f}));
}

TEST_F(Harmonics, OneCountsAsEven) {
    EXPECT_EQ(frequencies(2, "e", 1), (Floats{400.0f, 600.0f}));
}

TEST_F(Harmonics, OddOnes) {
    EXPECT_EQ(frequencies(3, "o", 1), (Floats{300.0f, 500.0f, 700.0f}));
}

TEST_F(Harmonics, AnOddSourceOfOrderThreeStartsWithSevenThirds) {
    EXPECT_EQ(frequencies(2, "o", 3), (Floats{100.0f * 7.0f / 3.0f, 100.0f * 9.0f / 3.0f}));
}

TEST_F(Harmonics, PrimesFromTheirTable) {
    EXPECT_EQ(frequencies(3, "p", 1), (Floats{300.0f, 500.0f, 700.0f}));
    EXPECT_EQ(frequencies(2, "p", 3), (Floats{100.0f * 7.0f / 3.0f, 100.0f * 11.0f / 3.0f}));
}

TEST_F(Harmonics, FourCountsAsPrime) {
    EXPECT_EQ(frequencies(1, "p", 4), Floats{100.0f * 11.0f / 4.0f});
}

TEST_F(Harmonics, FiftyPrimesAreTwenty) {
    EXPECT_EQ(frequencies(50, "p", 1).size(), 20u);
    EXPECT_EQ(frequencies(511, "p", 1).size(), 20u);
    EXPECT_EQ(frequencies(20, "p", 1).size(), 20u);
}

TEST_F(Harmonics, NoPrimesAreOne) {
    EXPECT_EQ(frequencies(0, "p", 1), Floats{300.0f});
    EXPECT_EQ(frequencies(-7, "p", 1), Floats{300.0f});
}

TEST_F(Harmonics, PrimesBeyondTheirTableHaveNoFrequency) {
    const Floats starts = frequencies(3, "p", 31);
    EXPECT_EQ(starts, (Floats{100.0f * 127.0f / 31.0f, 100.0f * 131.0f / 31.0f, 0.0f}));
    EXPECT_EQ(minfreq, 0.0f);
}

TEST_F(Harmonics, FiveHundredAndElevenAreAccepted) {
    const Floats starts = frequencies(511, "a", 1);
    ASSERT_EQ(starts.size(), 511u);
    EXPECT_EQ(starts.back(), 51200.0f);
    EXPECT_GE(malloc_usable_size(peval), 612 * sizeof(PartialEval));
    expect_summaries();
}

TEST_F(Harmonics, FiveHundredAndTwelveAreRefused) {
    expect_refused(512, "a", 1, "c", "Maximum of 511 new harmonics exceeded!\n");
}

TEST_F(Harmonics, TheLargestNumberIsRefused) {
    expect_refused(INT32_MAX, "p", 1, "c", "Maximum of 511 new harmonics exceeded!\n");
}

// --- decay -------------------------------------------------------------------------------------

TEST_F(Harmonics, ConstantDecay) {
    expect_gains(gains(3, 1, "c"), {1.0, 1.0, 1.0});
}

TEST_F(Harmonics, ReciprocalDecayByThreeLetters) {
    for (const char *law : {"r", "l", "i"}) {
        expect_gains(gains(3, 1, law), {1.0, 1.0 / 2.0, 1.0 / 3.0});
        expect_gains(gains(2, 3, law), {1.0 / 3.0, 1.0 / 4.0});
    }
}

TEST_F(Harmonics, SquareDecay) {
    expect_gains(gains(3, 1, "q"), {1.0 / 4.0, 1.0 / 9.0, 1.0 / 16.0});
    expect_gains(gains(2, 3, "q"), {1.0 / 16.0, 1.0 / 25.0});
}

TEST_F(Harmonics, ExponentialDecay) {
    expect_gains(gains(3, 1, "e"), {1.0, std::exp(-1.0), std::exp(-2.0)});
    expect_gains(gains(2, 3, "e"), {std::exp(-2.0), std::exp(-3.0)});
}

TEST_F(Harmonics, BellDecay) {
    const double at1 = 0.7651976866, at2 = 0.2238907791;
    expect_gains(gains(4, 1, "b"), {at2 * at2 / 2.0, at1 * at1 / 4.0, 1.0 / 6.0, at1 * at1 / 8.0});
}

// --- every field -------------------------------------------------------------------------------

TEST_F(Harmonics, EveryFieldInTheFlatView) {
    fill_with_sources();
    flat = 1;
    Points want = with_series(all_points(), {3.0f, 4.0f, 5.0f}, 2.0f,
                              {1.0f / 9.0f, 1.0f / 16.0f, 1.0f / 25.0f});
    for (size_t i = 0; i < 4; ++i) { // still selected when phases are derived
        plain_phases(want[i]);
        for (Breakpoint &point : want[i]) {
            point.selected = 0;
        }
    }
    plain_positions(want);
    printed_by(3, "a", 2, "q");
    expect_points(want);
    expect_summaries();
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Harmonics, EveryFieldInPerspective) {
    fill_with_sources();
    Points want = with_series(all_points(), {7.0f, 9.0f}, 3.0f, {1.0f / 5.0f, 1.0f / 7.0f});
    for (size_t i = 0; i < 4; ++i) {
        plain_phases(want[i]);
    }
    plain_positions(want);
    printed_by(2, "o", 3, "r");
    expect_points(want);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Harmonics, NewPhasesAreNoughtWhereArbitraryOnesAreDerived) {
    fill_with_one_source();
    flat = 1;
    printed_by(1, "a", 1, "c");
    EXPECT_EQ(parray[1][1].phase, 0.0f);
    EXPECT_EQ(parray[1][2].phase, 0.0f);
    fill_with_one_source();
    flat = 1;
    printed([] { arbitrary_partials("2.5\n"); });
    EXPECT_EQ(parray[1][0].phase, 0.0f);
    EXPECT_NE(parray[1][2].phase, 0.0f);
}

TEST_F(Harmonics, UnselectedPartialsKeepTheirPhases) {
    fill_store({even_partial(3, 0.0f, 100.0f, -9.0f), even_partial(3, 0.0f, 200.0f, -9.0f)});
    mark_old_points();
    flag(0, 0, 2);
    const float kept = parray[1][2].phase;
    printed_by(1, "a", 1, "c");
    EXPECT_EQ(parray[1][2].phase, kept);
}

TEST_F(Harmonics, LevelsAndTimesAreNotRefreshed) {
    fill_with_one_source();
    minamp = maxamp = 5.0f;
    sndlen = meant = 7.0f;
    printed_by(2, "a", 1, "q");
    EXPECT_EQ(minamp, 5.0f);
    EXPECT_EQ(maxamp, 5.0f);
    EXPECT_EQ(sndlen, 7.0f);
    EXPECT_EQ(meant, 7.0f);
    EXPECT_EQ(maxfreq, 306.0f);
}

// --- trace -------------------------------------------------------------------------------------

TEST_F(Harmonics, PrintsItsWholeTrace) {
    fill_with_sources();
    EXPECT_EQ(printed_by(2, "a", 1, "c"),
              found_two + "AFAC = 1.000000\nAFAC = 1.000000\nAFAC = 1.000000\n\n" +
                  making(old_counts, source_counts, {1.0f, 1.0f}));
}

TEST_F(Harmonics, PrimesPrintTheirFactors) {
    fill_with_sources();
    EXPECT_EQ(printed_by(2, "p", 3, "b"),
              found_two +
                  "ffac[0] = 1.000000\nffac[1] = 3.000000\nffac[2] = 5.000000\n"
                  "ffac[3] = 7.000000\nffac[4] = 11.000000\n"
                  "AFAC[0] = 0.025064\nAFAC[1] = 0.097588\nAFAC[2] = 0.100000\n"
                  "AFAC[3] = 0.041823\nAFAC[4] = 0.002279\n\n" +
                  making(old_counts, source_counts, {0.1f, 0.041823f}));
}

TEST_F(Harmonics, VerbosePrintsNoMore) {
    fill_with_sources();
    const std::string quiet = printed_by(2, "a", 1, "e");
    fill_with_sources();
    verbose = 1;
    EXPECT_EQ(printed_by(2, "a", 1, "e"), quiet);
    EXPECT_EQ(quiet, found_two + "AFAC = 1.000000\nAFAC = 0.367879\nAFAC = 0.135335\n\n" +
                         making(old_counts, source_counts, {1.0f, std::exp(-1.0f)}));
}

TEST_F(Harmonics, DebuggingPrintsTheNewFrequencies) {
    fill_with_one_source();
    dbp = 1;
    EXPECT_EQ(printed_by(2, "a", 1, "r"),
              found_one + "\n" + making({3}, {3}, {1.0f, 0.5f}) +
                  "freq[1][0] = 200.000000\nfreq[1][1] = 202.000000\nfreq[1][2] = 204.000000\n"
                  "freq[2][0] = 300.000000\nfreq[2][1] = 303.000000\nfreq[2][2] = 306.000000\n");
}

TEST_F(Harmonics, ARunOfTwoPointsIsNoCandidate) {
    fill_store(small_content());
    flag(0, 1, 2);
    EXPECT_EQ(printed_by(1, "a", 1, "q"),
              "0 source candidates\n\n" + making({4, 3, 2, 1}, {}, {0.25f}));
    EXPECT_EQ(partials, 4);
}

TEST_F(Harmonics, WithoutCandidatesTheFlatViewLosesItsSelection) {
    fill_store(small_content());
    mark_old_points();
    flag(0, 1, 2);
    flat = 1;
    minfreq = maxfreq = 5.0f;
    Points want = all_points();
    plain_phases(want[0]);
    unflag(want);
    plain_positions(want);
    printed_by(1, "a", 1, "c");
    expect_points(want);
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Harmonics, ShortRunsAtAnEndTakeNoPlace) {
    fill_store({even_partial(5, 0.0f, 100.0f, -9.0f), even_partial(4, 0.0f, 200.0f, -9.0f)});
    flag(0, 3, 4);
    flag(1, 1, 3);
    EXPECT_EQ(printed_by(1, "a", 1, "r"),
              "1 source candidates\n"
              "Candidate [0]:\t ord_num =1\tfirst_point =1\tlast_point =3\n\n" +
                  making({5, 4}, {3}, {1.0f}));
}

// --- refusals ----------------------------------------------------------------------------------

TEST_F(Harmonics, AnOddOrderIsNoEvenMember) {
    expect_refused(3, "e", 3, "c", found_two + "Source partial's order isn't an even number\n");
    expect_refused(3, "e", 0, "c", found_two + "Source partial's order isn't an even number\n");
}

TEST_F(Harmonics, AnEvenOrderIsNoOddMember) {
    expect_refused(3, "o", 2, "c", found_two + "Source partial's order isn't an odd number\n");
    expect_refused(3, "o", 0, "c", found_two + "Source partial's order isn't an odd number\n");
}

TEST_F(Harmonics, NineIsNoPrime) {
    expect_refused(3, "p", 9, "c", found_two + "Source partial's order isn't a prime number\n");
    expect_refused(3, "p", 0, "c", found_two + "Source partial's order isn't a prime number\n");
    expect_refused(3, "p", -3, "c", found_two + "Source partial's order isn't a prime number\n");
}

TEST_F(Harmonics, AnUnknownTypeIsRefusedWithTheTextAboutTheOrder) {
    for (const char *type : {"x", "", "A", "aa"}) {
        expect_refused(3, type, 1, "c", found_two + "Order must be a non-zero positive integer\n");
    }
}

TEST_F(Harmonics, AnUnknownDecayIsRefused) {
    expect_refused(3, "a", 1, "x", found_two + "Invalid argument for f_decay (c, l, r, q, e, b)\n");
}

TEST_F(Harmonics, AnUnknownDecayOfPrimesIsRefusedBehindTheFactors) {
    expect_refused(1, "p", 1, "",
                   found_two + "ffac[0] = 1.000000\nffac[1] = 3.000000\n"
                               "Invalid argument for f_decay (c, l, r, q, e, b)\n");
}

TEST_F(Harmonics, TheTypeIsTestedBeforeTheDecay) {
    expect_refused(3, "x", 1, "x", found_two + "Order must be a non-zero positive integer\n");
}

// --- out of all bounds -------------------------------------------------------------------------

TEST_F(Harmonics, NoNumberMakesNothing) {
    fill_with_one_source();
    flat = 1;
    EXPECT_EQ(printed_by(0, "a", 2, "c"),
              found_one + "AFAC = 1.000000\nAFAC = 1.000000\n\n" + making({3}, {3}, {}));
    EXPECT_EQ(partials, 1);
    EXPECT_EQ(parray[0][0].selected, 0);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(Harmonics, ANegativeNumberCountsAsNone) {
    for (const int32_t number : {-1, -511, INT32_MIN}) {
        fill_with_one_source();
        EXPECT_EQ(printed_by(number, "a", 1, "c"),
                  found_one + "AFAC = 1.000000\n\n" + making({3}, {3}, {}));
        EXPECT_EQ(partials, 1);
    }
}

TEST_F(Harmonics, AnOrderOfNoughtDividesByIt) {
    fill_with_one_source();
    EXPECT_EQ(printed_by(2, "a", 0, "c"),
              found_one + "AFAC = 1.000000\nAFAC = 1.000000\n\n" + making({3}, {3}, {0.0f, 1.0f}));
    ASSERT_EQ(partials, 3);
    EXPECT_EQ(parray[1][0].freq, inf_f);
    EXPECT_EQ(parray[1][0].amp, -146.0f); // in front of the table there is silence
    EXPECT_EQ(parray[2][2].freq, inf_f);
    EXPECT_EQ(parray[2][2].amp, -8.0f);
    EXPECT_EQ(maxfreq, inf_f);
}

TEST_F(Harmonics, ANegativeOrderTurnsFrequenciesNegative) {
    EXPECT_EQ(frequencies(3, "a", -1), (Floats{-0.0f, -100.0f, -200.0f}));
    EXPECT_EQ(frequencies(2, "o", -1), (Floats{-0.0f, -100.0f}));
    EXPECT_EQ(frequencies(2, "e", -2), (Floats{-0.0f, -0.0f}));
}

TEST_F(Harmonics, TheLeastOrderReadsNothing) {
    fill_with_one_source();
    EXPECT_EQ(printed_by(2, "a", INT32_MIN, "c"),
              found_one + "\n" + making({3}, {3}, {0.0f, 0.0f}));
    EXPECT_EQ(parray[1][0].freq, 0.0f);
    EXPECT_EQ(parray[1][0].amp, -146.0f);
}

TEST_F(Harmonics, TheLargestOrderReadsNothing) {
    fill_with_one_source();
    const std::string text = printed_by(511, "a", INT32_MAX, "r");
    EXPECT_EQ(text, found_one + "\n" + making({3}, {3}, Floats(511, 0.0f)));
    EXPECT_EQ(parray[511][2].freq, 0.0f);
    EXPECT_EQ(parray[511][2].amp, -148.0f);
}

TEST_F(Harmonics, TheLargestPrimeOrderPrintsTheWholeTable) {
    fill_with_one_source();
    std::string text = found_one;
    const int32_t members[] = {1,  3,  5,  7,  11,  13,  17,  19,  23,  29,  31,
                               37, 41, 43, 47, 49,  53,  59,  61,  67,  71,  73,
                               79, 83, 89, 97, 101, 103, 107, 109, 113, 127, 131};
    for (int32_t k = 0; k < 1024; ++k) {
        text += say("ffac[%d] = %f\n", k, k < 33 ? static_cast<float>(members[k]) : 0.0f);
    }
    EXPECT_EQ(printed_by(1, "p", INT32_MAX, "r"), text + "\n" + making({3}, {3}, {0.0f}));
}

TEST_F(Harmonics, TheLastMemberOfTheTable) {
    // Members 1,022 and 1,023 stand in the table, counted from 0; the third is beyond it.
    EXPECT_EQ(frequencies(3, "a", 1022),
              (Floats{100.0f * 1023.0f / 1022.0f, 100.0f * 1024.0f / 1022.0f, 0.0f}));
    // The decay stays one member behind.
    EXPECT_EQ(gains(3, 1023, "c"), (std::vector<double>{0.0, 0.0, -140.0}));
}

TEST_F(Harmonics, ThirtyFourThousandCandidates) {
    fill_with_many_sources(34000);
    printed_by(1, "a", 1, "c");
    ASSERT_EQ(partials, 68000);
    EXPECT_EQ(parray[67999][2].freq, 2.0f * parray[33999][2].freq);
}

TEST_F(Harmonics, AHundredMillionNewPointsAreTheMost) {
    // 511 times 195,695 is 145 points too many.
    fill_store({Partial(195695, {0.0f, 100.0f, -6.0f})});
    flag_everything();
    flat = 1;
    const Points before = all_points();
    std::string text;
    EXPECT_EQ(complained([&text] { text = printed_by(511, "a", 1, "r"); }),
              "Quillgrove: 100000145 new points exceed the limit of 100000000\n");
    EXPECT_EQ(text, "1 source candidates\n"
                    "Candidate [0]:\t ord_num =0\tfirst_point =0\tlast_point =195694\n");
    expect_points(before);
    EXPECT_EQ(sweepSelect, 0);
}

TEST_F(HarmonicsDrawn, FrequenciesOutOfBoundsAreDrawn) {
    for (const int32_t order : {0, -1, INT32_MIN, INT32_MAX}) {
        for (const int32_t view : {0, 1}) {
            fill_with_one_source();
            flat = bps = view;
            printed_by(3, "a", order, "b");
            EXPECT_GT(frame().primitives.size(), 0u);
        }
    }
}
