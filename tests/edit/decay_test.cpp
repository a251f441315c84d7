// Decay laws and factor tables of generated partials, and the line that holds the factors.

#include "edit/decay.h"

#include "edit/multipliers.h"
#include "store/settings.h"
#include "tests/edit/generating_support.h"
#include "toolbox/auxilliary3d.h"

namespace {

using Decay = StoreTest;
using Multipliers = StoreTest;

FactorTable table_of(const std::vector<float> &factors) {
    FactorTable table = {};
    for (const float factor : factors) {
        add_factor(table, factor);
    }
    return table;
}

std::vector<float> factors_of(const FactorTable &table) {
    return {table.values, table.values + table.count};
}

std::vector<float> multiplier_decay(const char *law, const std::vector<float> &factors) {
    FactorTable afac = {};
    printed([&] { decay_of_multipliers(law, table_of(factors), afac); });
    return factors_of(afac);
}

std::vector<float> harmonic_decay(const char *law, const std::vector<float> &factors) {
    FactorTable afac = {};
    printed([&] { EXPECT_TRUE(decay_of_harmonics(law, table_of(factors), afac)); });
    return factors_of(afac);
}

/// Both commands' prints for three factors.
void expect_prints(const char *law, const std::string &text) {
    const FactorTable factors = table_of({2.0f, 3.0f, 4.0f});
    EXPECT_EQ(printed([&] {
                  FactorTable afac = {};
                  decay_of_multipliers(law, factors, afac);
              }),
              text);
    EXPECT_EQ(printed([&] {
                  FactorTable afac = {};
                  EXPECT_TRUE(decay_of_harmonics(law, factors, afac));
              }),
              text);
}

std::vector<float> multipliers_in(const std::string &line) {
    MultiplierLine read = {};
    printed([&] { read = read_multipliers(line.c_str()); });
    return factors_of(read.multipliers);
}

std::string law_in(const std::string &line) {
    MultiplierLine read = {};
    printed([&] { read = read_multipliers(line.c_str()); });
    return read.law;
}

using Floats = std::vector<float>;

} // namespace

// --- laws --------------------------------------------------------------------------------------

TEST_F(Decay, ConstantLaw) {
    EXPECT_EQ(multiplier_decay("c", {2.0f, 3.0f}), (Floats{1.0f, 1.0f}));
    EXPECT_EQ(harmonic_decay("c", {2.0f, 3.0f}), (Floats{1.0f, 1.0f}));
    expect_prints("c", "AFAC = 1.000000\nAFAC = 1.000000\nAFAC = 1.000000\n");
}

TEST_F(Decay, ReciprocalLaw) {
    const Floats want = {1.0f, 1.0f / 3.0f, 1.0f / 0.7f};
    EXPECT_EQ(multiplier_decay("r", {2.0f, 3.0f, 0.7f}), want);
    EXPECT_EQ(harmonic_decay("r", {2.0f, 3.0f, 0.7f}), want);
    expect_prints("r", "");
}

TEST_F(Decay, LettersLAndIStandForRInHarmonics) {
    const Floats want = {1.0f, 1.0f / 3.0f};
    EXPECT_EQ(harmonic_decay("l", {2.0f, 3.0f}), want);
    EXPECT_EQ(harmonic_decay("i", {2.0f, 3.0f}), want);
}

TEST_F(Decay, SquareLawOfMultipliersAddsOne) {
    EXPECT_EQ(multiplier_decay("q", {2.0f, 3.0f}),
              (Floats{static_cast<float>(1.0 / 9.0), static_cast<float>(1.0 / 16.0)}));
}

TEST_F(Decay, SquareLawOfMultipliersRunsInDoublePrecision) {
    const float factor = 1.0594631f;
    const double root = static_cast<double>(factor) + 1.0;
    EXPECT_EQ(multiplier_decay("q", {factor}), Floats{static_cast<float>(1.0 / (root * root))});
}

TEST_F(Decay, SquareLawOfHarmonicsTakesTheNextMember) {
    const Floats factors = {1.0f, 2.7f, 3.3f};
    const Floats afac = harmonic_decay("q", factors);
    ASSERT_EQ(afac.size(), 3u);
    EXPECT_EQ(afac[0], 1.0f / (2.7f * 2.7f));
    EXPECT_EQ(afac[1], 1.0f / (3.3f * 3.3f));
    EXPECT_EQ(afac[2], inf_f);
}

TEST_F(Decay, SquareLawsPrintNothing) {
    expect_prints("q", "");
}

TEST_F(Decay, SquareLawOfAFullTableStaysInside) {
    const Floats afac = harmonic_decay("q", Floats(factor_room, 2.0f));
    ASSERT_EQ(afac.size(), 1024u);
    EXPECT_EQ(afac[1022], 0.25f);
    EXPECT_EQ(afac[1023], inf_f);
}

TEST_F(Decay, ExponentialLaw) {
    const Floats want = {1.0f, std::exp(-1.0f), std::exp(-2.0f)};
    EXPECT_EQ(multiplier_decay("e", {2.0f, 3.0f, 4.0f}), want);
    EXPECT_EQ(harmonic_decay("e", {2.0f, 3.0f, 4.0f}), want);
    expect_prints("e", "AFAC = 1.000000\nAFAC = 0.367879\nAFAC = 0.135335\n");
}

TEST_F(Decay, BellLaw) {
    Floats want;
    const Floats factors = {2.0f, 3.0f, 4.7f, 5.0f};
    for (size_t k = 0; k < factors.size(); ++k) {
        const double wave = bessj0(static_cast<double>(k) - 2.0);
        want.push_back(static_cast<float>(static_cast<float>(wave * wave) * 0.5 / factors[k]));
    }
    EXPECT_EQ(multiplier_decay("b", factors), want);
    EXPECT_EQ(harmonic_decay("b", factors), want);
    EXPECT_NEAR(want[2], 0.5f / 4.7f, 1e-6f); // the crest, at the third
    expect_prints("b", "AFAC[0] = 0.012532\nAFAC[1] = 0.097588\nAFAC[2] = 0.125000\n");
}

TEST_F(Decay, BellLawTellsOfEachEvaluationUnderDebugging) {
    dbp = 1;
    expect_prints("b", "New Bessel function evaluation\nAFAC[0] = 0.012532\n"
                       "New Bessel function evaluation\nAFAC[1] = 0.097588\n"
                       "New Bessel function evaluation\nAFAC[2] = 0.125000\n");
}

TEST_F(Decay, AnUnknownLawOfMultipliersFallsBack) {
    FactorTable afac = {};
    EXPECT_EQ(printed([&] { decay_of_multipliers("l", table_of({2.0f}), afac); }),
              "Invalid argument for f_decay (c, r, q, e, b)\n"
              "Fall-back value chosen: c\n"
              "AFAC = 1.000000\n");
    EXPECT_EQ(factors_of(afac), Floats{1.0f});
}

TEST_F(Decay, AnUnknownLawOfHarmonicsIsRefused) {
    for (const char *law : {"x", "", "cc", "C"}) {
        FactorTable afac = {};
        EXPECT_EQ(printed([&] { EXPECT_FALSE(decay_of_harmonics(law, table_of({2.0f}), afac)); }),
                  "Invalid argument for f_decay (c, l, r, q, e, b)\n");
        EXPECT_EQ(afac.count, 0);
    }
}

TEST_F(Decay, FactorsOutsideTheTableAreZero) {
    const FactorTable table = table_of(Floats(1024, 5.0f));
    EXPECT_EQ(factor_at(table, -1), 0.0f);
    EXPECT_EQ(factor_at(table, 0), 5.0f);
    EXPECT_EQ(factor_at(table, 1023), 5.0f);
    EXPECT_EQ(factor_at(table, 1024), 0.0f);
    EXPECT_EQ(factor_at(table, INT64_MAX), 0.0f);
}

TEST_F(Decay, FactorsBeyondTheTableAreDropped) {
    FactorTable table = table_of(Floats(1024, 5.0f));
    add_factor(table, 6.0f);
    EXPECT_EQ(table.count, 1024);
    EXPECT_EQ(table.values[1023], 5.0f);
}

// --- the line ----------------------------------------------------------------------------------

TEST_F(Multipliers, TheLastWordMayNameTheLaw) {
    for (const char *law : {"c", "r", "q", "e", "b"}) {
        const std::string line = std::string("2 3 ") + law + "\n";
        EXPECT_EQ(law_in(line), law);
        EXPECT_EQ(multipliers_in(line), (Floats{2.0f, 3.0f}));
    }
}

TEST_F(Multipliers, WithoutALetterTheLawIsConstant) {
    EXPECT_EQ(law_in("2 3\n"), "c");
    EXPECT_EQ(multipliers_in("2 3\n"), (Floats{2.0f, 3.0f}));
}

TEST_F(Multipliers, AnyOtherLetterIsANumberOfNought) {
    EXPECT_EQ(law_in("2 l\n"), "c");
    EXPECT_EQ(multipliers_in("2 l\n"), Floats{2.0f});
    EXPECT_EQ(law_in("2 qq\n"), "c");
    EXPECT_EQ(law_in("2 Q\n"), "c");
}

TEST_F(Multipliers, WordsAreRatioNotation) {
    EXPECT_EQ(multipliers_in("etP5 -etP8 3/2 0.7 c\n"),
              (Floats{static_cast<float>(std::exp2(7.0 / 12.0)), 0.5f, 1.5f, 0.7f}));
}

TEST_F(Multipliers, WordsOutOfRangeBecomeOneAndFallOut) {
    EXPECT_EQ(multipliers_in("5 2 c\n"), Floats{2.0f});
}

TEST_F(Multipliers, ALawLetterInFrontIsARatio) {
    EXPECT_EQ(law_in("q 2\n"), "c");
    EXPECT_EQ(multipliers_in("q 2\n"), Floats{2.0f});
}

TEST_F(Multipliers, TheLastWordIsAPlainNumber) {
    EXPECT_EQ(multipliers_in("2 7/2\n"), (Floats{2.0f, 7.0f}));
    EXPECT_EQ(multipliers_in("2 9.5\n"), (Floats{2.0f, 9.5f}));
    EXPECT_EQ(multipliers_in("2 etP5\n"), Floats{2.0f});
    EXPECT_EQ(multipliers_in("2 -3\n"), Floats{2.0f});
}

TEST_F(Multipliers, OnlyTheWordsInFrontAreParsedAloud) {
    EXPECT_EQ(printed([] { read_multipliers("2 3/2 etP5 3\n"); }), "len = 1\ti = 1\n"
                                                                   "len = 3\ti = 1\n"
                                                                   "num = 3\nlen1 = 1\nden = 2\n");
}

TEST_F(Multipliers, TheFilterDropsOnesAndSmallValues) {
    dbp = 1;
    EXPECT_EQ(printed([] {
                  EXPECT_EQ(factors_of(read_multipliers("1 2 0.0001\n").multipliers), Floats{2.0f});
              }),
              "len = 1\ti = 1\nlen = 1\ti = 1\nNonsense\nNonsense\n");
}

TEST_F(Multipliers, JustAboveTheLeastStays) {
    EXPECT_EQ(multipliers_in("2 0.00010001\n"), (Floats{2.0f, 0.00010001f}));
}

TEST_F(Multipliers, NotANumberIsDropped) {
    EXPECT_EQ(multipliers_in("2 nan\n"), Floats{2.0f});
}

TEST_F(Multipliers, TwoBadValuesInARowLeaveTheSecond) {
    EXPECT_EQ(multipliers_in("1 1 2 c\n"), (Floats{1.0f, 2.0f}));
}

TEST_F(Multipliers, AOneBeforeTheLetterLeavesTheLettersNought) {
    EXPECT_EQ(multipliers_in("2 1 q\n"), (Floats{2.0f, 0.0f}));
}

TEST_F(Multipliers, OneTwoTwoThreeDropsTheOneAndATwo) {
    EXPECT_EQ(multipliers_in("1 2 2 3 c\n"), (Floats{2.0f, 3.0f}));
}

TEST_F(Multipliers, DuplicatesAreToldUnderDebugging) {
    dbp = 1;
    EXPECT_EQ(printed([] { read_multipliers("2 3 2 c\n"); }),
              "len = 1\ti = 1\nlen = 1\ti = 1\nlen = 1\ti = 1\nNonsense\nDuplicate\n");
}

TEST_F(Multipliers, ThreeEqualOnesInARowLeaveTwo) {
    EXPECT_EQ(multipliers_in("2 2 2 c\n"), (Floats{2.0f, 2.0f}));
}

TEST_F(Multipliers, EqualOnesApartAllFallOut) {
    EXPECT_EQ(multipliers_in("2 3 2 4 2 c\n"), (Floats{2.0f, 3.0f, 4.0f}));
}

TEST_F(Multipliers, ALetterAloneHasNoFactors) {
    EXPECT_EQ(multipliers_in("q\n"), Floats{});
    EXPECT_EQ(law_in("q\n"), "q");
}

TEST_F(Multipliers, AnEmptyLineHasNoFactors) {
    EXPECT_EQ(multipliers_in("\n"), Floats{});
    EXPECT_EQ(multipliers_in(""), Floats{});
    EXPECT_EQ(law_in("\n"), "c");
}

TEST_F(Multipliers, ALineMayLackItsNewline) {
    EXPECT_EQ(multipliers_in("2 3 q"), (Floats{2.0f, 3.0f}));
    EXPECT_EQ(law_in("2 3 q"), "q");
}

TEST_F(Multipliers, NothingBehindTheNewlineIsRead) {
    EXPECT_EQ(multipliers_in("2 3\n4 5 q\n"), (Floats{2.0f, 3.0f}));
}

TEST_F(Multipliers, EachBlankEndsAWord) {
    EXPECT_EQ(printed([] { read_multipliers(" 2  3\n"); }),
              "len = 0\ti = 0\nBad value for transposition: 0.000000\n"
              "\tmust be within +-2 octaves\n"
              "len = 1\ti = 1\n"
              "len = 0\ti = 0\nBad value for transposition: 0.000000\n"
              "\tmust be within +-2 octaves\n");
    EXPECT_EQ(multipliers_in(" 2  3\n"), (Floats{2.0f, 3.0f}));
}

TEST_F(Multipliers, ABlankBeforeTheNewlineIsAnEmptyLastWord) {
    EXPECT_EQ(multipliers_in("2 3 \n"), (Floats{2.0f, 3.0f}));
    EXPECT_EQ(law_in("2 q \n"), "c");
}

TEST_F(Multipliers, WordsAreCutAtFifteenCharacters) {
    EXPECT_EQ(printed([] {
                  EXPECT_EQ(
                      factors_of(
                          read_multipliers("1.50000000000009 3.0000000000000099999\n").multipliers),
                      (Floats{1.5f, 3.0f}));
              }),
              "len = 15\ti = 15\n");
    // "2" and fourteen noughts behind the point; the tenth power is cut away.
    EXPECT_EQ(multipliers_in("2.0000000000000e10\n"), Floats{2.0f});
    EXPECT_EQ(multipliers_in(std::string(5000, '7') + "\n"), Floats{777777777777777.0f});
}

TEST_F(Multipliers, AThousandFactors) {
    std::string line;
    for (int32_t k = 0; k < 1000; ++k) {
        line += say("%.4f ", 1.5 + k * 0.002);
    }
    EXPECT_EQ(multipliers_in(line + "c\n").size(), 1000u);
}

TEST_F(Multipliers, WordsBeyondTheTableAreDroppedButTheLawIsRead) {
    std::string line;
    for (int32_t k = 0; k < 1100; ++k) {
        line += say("%.4f ", 1.5 + k * 0.002);
    }
    EXPECT_EQ(multipliers_in(line + "e\n").size(), 1024u);
    EXPECT_EQ(law_in(line + "e\n"), "e");
    EXPECT_EQ(multipliers_in(line + "77\n").back(), static_cast<float>(1.5 + 1023 * 0.002));
}
