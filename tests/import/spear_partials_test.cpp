// SPEAR's layout of partials, from text to store.
#include "import/afile.h"
#include "store/phase.h"
#include "tests/support/any_reading.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "tests/support/frame_text.h"

#include <cmath>

namespace {

class SpearPartials : public StoreTest {
  protected:
    static int32_t read(const std::string &text) {
        int32_t result = 0;
        printed([&] { result = read_as(spear_partials, text); });
        return result;
    }
    static void expect_point(int32_t i, int32_t j, float time, float freq, float amp) {
        ASSERT_TRUE(point_exists(i, j)) << i << " " << j;
        EXPECT_EQ(parray[i][j].time, time) << i << " " << j;
        EXPECT_EQ(parray[i][j].freq, freq) << i << " " << j;
        EXPECT_FLOAT_EQ(parray[i][j].amp, amp) << i << " " << j;
    }
};

const std::string two = spear_text("2", "0 3 0.0 0.2\n0.0 440.5 0.1 0.1 441 1 0.2 442 0.5\n"
                                        "1 2 0.1 0.2\n0.1 880 0.01 0.2 881 0\n");

TEST_F(SpearPartials, PointsOfEveryPartial) {
    ASSERT_EQ(read(two), 4);
    ASSERT_EQ(partials, 2);
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(npoints[1], 2);
    expect_point(0, 0, 0.0f, 440.5f, -20.0f);
    expect_point(0, 1, 0.1f, 441.0f, 0.0f);
    expect_point(0, 2, 0.2f, 442.0f, -6.0205999f);
    expect_point(1, 0, 0.1f, 880.0f, -40.0f);
    EXPECT_EQ(minfreq, 440.5f);
    EXPECT_EQ(maxfreq, 881.0f);
    EXPECT_EQ(maxamp, 0.0f);
}

TEST_F(SpearPartials, AnAmplitudeOfZeroIsSilence) {
    read(two);
    EXPECT_EQ(parray[1][1].amp, -140.0f);
    read(spear_text("1", "0 2 0 1 0 440 -0.5 1 440 0.0"));
    EXPECT_EQ(parray[0][0].amp, -140.0f);
}

TEST_F(SpearPartials, EndsAreNotShaped) {
    read(spear_text("1", "0 3 0 2 0 440 1 1 440 1 2 440 1"));
    for (int j = 0; j < 3; ++j) {
        EXPECT_EQ(parray[0][j].amp, 0.0f);
    }
}

TEST_F(SpearPartials, FrequenciesAreNotClamped) {
    read(spear_text("1", "0 2 0 1 0 25000 1 1 0.5 1"));
    EXPECT_EQ(parray[0][0].freq, 25000.0f);
    EXPECT_EQ(maxfreq, 25000.0f);
    EXPECT_EQ(minfreq, 0.5f);
}

TEST_F(SpearPartials, PhasesFollowTheRecursion) {
    read(spear_text("1", "0 3 0 2 0 440.3 1 0.1 331.7 1 0.25 440 1"));
    EXPECT_EQ(parray[0][0].phase, 0.0f);
    const float first = advance_phase(0.0f, 0.1f * 440.3f);
    EXPECT_EQ(parray[0][1].phase, first);
    EXPECT_EQ(parray[0][2].phase, advance_phase(first, (0.25f - 0.1f) * 331.7f));
    EXPECT_GT(first, 0.0f);
}

TEST_F(SpearPartials, RangesStartAfresh) {
    read(spear_text("1", "0 1 0 0 0 100 0"));
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 100.0f);
    EXPECT_EQ(maxamp, -120.0f); // silence does not reach the start value
    read(spear_text("0", ""));
    EXPECT_EQ(minfreq, 24000.0f);
    EXPECT_EQ(maxfreq, 0.0f);
}

TEST_F(SpearPartials, UnitsAndSelectionAreClear) {
    read(two);
    EXPECT_EQ(parray[0][1].ampunits, 0);
    EXPECT_EQ(parray[0][1].selected, 0);
    EXPECT_EQ(parray[0][1].scratch, 0.0f);
}

TEST_F(SpearPartials, WhatEachPassPrints) {
    EXPECT_EQ(printed([] { read_as(spear_partials, two); }), "Partials: 2\n");
}

TEST_F(SpearPartials, KeywordsUpToTheCountMayBeMissing) {
    const std::string data = "partials-count 1 partials-data 0 2 0 1 0 100 1 1 101 1";
    for (const char *head :
         {"", "par-text-partials-format ", "point-type ", "time frequency amplitude ",
          "par-text-partials-format point-type amplitude ",
          "par-text-partials-format point-type time amplitude "}) {
        EXPECT_EQ(read(head + data), 4) << head;
        EXPECT_EQ(npoints[0], 2) << head;
    }
}

TEST_F(SpearPartials, KeywordsOutOfOrderHideTheCount) {
    EXPECT_EQ(read("par-text-partials-format point-type frequency time amplitude "
                   "partials-count 1 partials-data 0 1 0 1 0 100 1"),
              -1);
}

TEST_F(SpearPartials, TheCountAndTheDataMayNotBeMissing) {
    EXPECT_EQ(read("par-text-partials-format point-type time frequency amplitude 1"), -1);
    EXPECT_EQ(read("par-text-partials-format point-type partials-count 1 0 1 0 1 0 100 1"), -1);
    EXPECT_EQ(read("par-text-partials-format point-type partials-count"), -1);
    EXPECT_EQ(read(""), -1);
}

TEST_F(SpearPartials, AVisitWithoutACountPrintsNothing) {
    EXPECT_EQ(printed([] { read_as(spear_partials, "par-text-partials-format point-type"); }), "");
}

TEST_F(SpearPartials, TheRevisitRefusesAnotherCount) {
    TokenFile file;
    open_tokens_from_memory(file, two.data(), two.size());
    int32_t count = 3;
    int32_t counts[200] = {};
    EXPECT_EQ(revisit_spearfile(file, &count, counts), -1);
    float range[3] = {};
    EXPECT_EQ(import_spearfile(file, &count, counts, range, range + 1, range + 2), -1);
    close_tokens(file);
}

TEST_F(SpearPartials, VisitAndRevisitRewind) {
    TokenFile file;
    open_tokens_from_memory(file, two.data(), two.size());
    int32_t count = 0;
    int32_t counts[200] = {};
    printed([&] { EXPECT_EQ(visit_spearfile(file, &count), 0); });
    EXPECT_EQ(count, 2);
    EXPECT_EQ(read_token(file), "par-text-partials-format");
    rewind_tokens(file);
    EXPECT_EQ(revisit_spearfile(file, &count, counts), 0);
    EXPECT_EQ(read_token(file), "par-text-partials-format");
    close_tokens(file);
}

TEST_F(SpearPartials, APartialOnOneLongLine) {
    constexpr int points = 3000;
    std::string line;
    for (int j = 0; j < points; ++j) {
        line += std::to_string(j) + ".000000 " + std::to_string(200 + j) + ".250000 0.500000 ";
    }
    ASSERT_GT(line.size(), 70000u);
    ASSERT_EQ(read(spear_text("2", "0 3000 0 2999\n" + line + "\n1 1 5 5\n5 99 1\n")), 4);
    EXPECT_EQ(npoints[0], points);
    expect_point(0, 2999, 2999.0f, 3199.25f, -6.0205999f);
    expect_point(1, 0, 5.0f, 99.0f, 0.0f);
}

TEST_F(SpearPartials, OnePointPartials) {
    ASSERT_EQ(read(spear_text("3", "0 1 0 0 0 100 1 1 1 1 1 1 200 1 2 1 2 2 2 300 1")), 4);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(npoints[i], 1);
        EXPECT_EQ(parray[i][0].phase, 0.0f);
    }
    printed([] { EXPECT_TRUE(derive_store()); });
    EXPECT_EQ(sndlen, 0.0f);
}

TEST_F(SpearPartials, AmplitudesAboveOneAreAboveZeroDecibels) {
    read(spear_text("1", "0 1 0 0 0 100 10"));
    EXPECT_EQ(parray[0][0].amp, 20.0f);
    EXPECT_EQ(maxamp, 20.0f);
}

TEST_F(SpearPartials, IndicesAreIgnored) {
    ASSERT_EQ(read(spear_text("2", "99 1 0 0 0 100 1 99 1 1 1 1 200 1")), 4);
    EXPECT_EQ(parray[1][0].freq, 200.0f);
}

TEST_F(SpearPartials, ACountAboveThePartialsLeavesTheRestEmpty) {
    ASSERT_EQ(read(spear_text("5", "0 2 0 1 0 100 0.5 1 101 0.25\n")), 4);
    ASSERT_EQ(partials, 5);
    EXPECT_EQ(npoints[0], 2);
    for (int i = 1; i < 5; ++i) {
        EXPECT_EQ(npoints[i], 0);
    }
    printed([] { EXPECT_TRUE(derive_store()); });
    EXPECT_EQ(sndlen, 1.0f);
}

TEST_F(SpearPartials, ACountAboveThePartialsBehindALoudPointIsCorrupt) {
    EXPECT_EQ(read(spear_text("5", "0 2 0 1 0 100 0.5 1 101 2\n")), -1);
}

TEST_F(SpearPartials, CountsThatTheFileCannotHold) {
    const std::string point = " 0 0 0 100 1";
    EXPECT_EQ(read(spear_text("2147483647", "0 1" + point)), -1);
    EXPECT_EQ(read(spear_text("70000", "0 1" + point)), -1);
    EXPECT_EQ(read(spear_text("99999999999999999999", "0 1" + point)), -1);
    EXPECT_EQ(read(spear_text("1", "0 2147483647" + point)), -1);
    EXPECT_EQ(read(spear_text("1", "0 2" + point)), -1);
    EXPECT_EQ(read(spear_text("1", "0 -1" + point)), -1);
    EXPECT_EQ(read(spear_text("-7", "0 1" + point)), 4);
    EXPECT_LT(partials, 1);
    partials = 0;
}

TEST_F(SpearPartials, ATextCutAfterEveryByteIsReadOrRefused) {
    for (size_t size = 0; size < two.size(); ++size) {
        const int32_t result = read(two.substr(0, size));
        EXPECT_TRUE(result == 4 || result == -1) << size;
        if (result == 4) {
            EXPECT_EQ(partials, 2) << size;
        }
    }
}

TEST_F(SpearPartials, WordsThatAreNoNumbers) {
    ASSERT_EQ(read(spear_text("1", "x 2 y 1 zero -nan nan inf -inf 1e999")), 4);
    EXPECT_EQ(parray[0][0].time, 0.0f);
    EXPECT_TRUE(std::isnan(parray[0][0].freq));
    EXPECT_EQ(parray[0][0].amp, -140.0f);
    EXPECT_TRUE(std::isinf(parray[0][1].time));
    EXPECT_TRUE(std::isinf(parray[0][1].amp));
    printed([] { EXPECT_TRUE(derive_store()); });
}

TEST_F(SpearPartials, AnEndTimeIsReadAsFarAsItIsANumber) {
    // "1x": the number is taken and the letter is read as the first time; all later values shift.
    ASSERT_EQ(read(spear_text("1", "0 2 0 1x 5 100 1 6 101 1")), 4);
    expect_point(0, 0, 0.0f, 5.0f, 40.0f);
    expect_point(0, 1, 1.0f, 6.0f, 20.0f * std::log10(101.0f));
    // A word that is no number at all stays for the first time.
    ASSERT_EQ(read(spear_text("1", "0 1 0 end 5 100 1")), 4);
    expect_point(0, 0, 0.0f, 5.0f, 40.0f);
}

} // namespace
