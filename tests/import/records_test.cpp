// From the records of interactive reading to partials.
#include "import/afile_interactive.h"
#include "store/phase.h"
#include "store/settings.h"
#include "store/slots.h"
#include "tests/support/any_reading.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "toolbox/auxmath3d.h"

#include <cmath>
#include <cstdio>

namespace {

class ValueRecords : public StoreTest {
  protected:
    void SetUp() override {
        StoreTest::SetUp();
        ph.assign(most_records, PhRecord());
        maxamp = -10.0f;
    }
    /// Adds a record of these letters; values in the order frequency, amplitude, duration.
    void add(const char *tag, float f, float a = 0.0f, float d = 0.0f) {
        PhRecord &record = ph[static_cast<size_t>(begun++)];
        record = {static_cast<int32_t>(std::string(tag).size()), {f, a, d}, ""};
        std::snprintf(record.tag, sizeof record.tag, "%s", tag);
        ++partials;
    }
    /// Builds the store, in place of one that was built before.
    std::string build(Envelope envelope, const std::string &input = "") {
        const int32_t count = partials;
        free_store();
        partials = count;
        return conversation(input, [&] { result = build_partials(ph.data(), envelope); });
    }
    std::vector<PhRecord> ph;
    int begun = 0;
    int32_t result = -2;
};

const Envelope second = {4, 1.0f, 8.0f}; // 4 points in a second, 8 dB/s

TEST_F(ValueRecords, FrequenciesAloneShareOneEnvelope) {
    add("f", 440);
    add("f", 660);
    EXPECT_EQ(build(second), "Num. Partials: 2\ndur = 4.000000\tfactor = 0.250000\n"
                             "npoints[0] = 4\nnpoints[1] = 4\n");
    ASSERT_EQ(result, 0);
    const float times[] = {0.0f, 0.25f, 0.5f, 0.75f};
    const float amps[] = {-16.0f, -12.0f, -72.0f, -100.0f};
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(npoints[i], 4);
        for (int j = 0; j < 4; ++j) {
            EXPECT_EQ(parray[i][j].time, times[j]);
            EXPECT_EQ(parray[i][j].freq, i == 0 ? 440.0f : 660.0f);
            EXPECT_EQ(parray[i][j].amp, amps[j]);
            EXPECT_EQ(parray[i][j].ampunits, 1);
            EXPECT_EQ(parray[i][j].selected, 0);
        }
        EXPECT_EQ(xarray[i].index, i);
    }
    EXPECT_EQ(xarray[101].index, 101);
    EXPECT_EQ(minfreq, 440.0f);
    EXPECT_EQ(maxfreq, 660.0f);
}

TEST_F(ValueRecords, PhasesFollowTheRecursion) {
    add("f", 441.3f);
    build(second);
    EXPECT_EQ(parray[0][0].phase, 0.0f);
    EXPECT_EQ(parray[0][1].phase, advance_phase(0.0f, 0.25f * 441.3f));
    EXPECT_EQ(parray[0][2].phase, advance_phase(parray[0][1].phase, (0.5f - 0.25f) * 441.3f));
}

TEST_F(ValueRecords, ALowestFrequencyOfTwelveIsAskedFor) {
    add("f", 24);
    add("f", 12);
    EXPECT_EQ(build(second, "110\n"), "Num. Partials: 2\ndur = 4.000000\tfactor = 0.250000\n"
                                      "Minimal detected frequency of 12.00 Hz is a subsonic\n"
                                      "frequency and probably represents only a harmonic ratio.\n"
                                      "Enter a desired lowest partial's frequency: 110.000000\n"
                                      "npoints[0] = 4\nnpoints[1] = 4\n");
    EXPECT_EQ(parray[0][0].freq, 220.0f);
    EXPECT_EQ(parray[1][0].freq, 110.0f);
}

TEST_F(ValueRecords, ALowestFrequencyOfSixteenIsNot) {
    add("f", 16);
    EXPECT_EQ(build(second).find("Minimal"), std::string::npos);
    EXPECT_EQ(parray[0][0].freq, 16.0f);
}

TEST_F(ValueRecords, WithoutAReplyTheRatiosStand) {
    add("f", 2);
    for (const std::string input : {"", "x\n"}) {
        EXPECT_NE(build(second, input).find("frequency: 2.000000\n"), std::string::npos);
        EXPECT_EQ(parray[0][0].freq, 2.0f);
    }
}

TEST_F(ValueRecords, LinearAmplitudesPeakAtTheLevel) {
    add("fa", 440, 2);
    add("fa", 660, 1);
    add("fa", 880, 0);
    build({100, 1.0f, 0.0f});
    EXPECT_NEAR(parray[0][1].amp, -10.0f, 1e-4f);
    EXPECT_NEAR(parray[1][1].amp, -10.0f - 20.0f * std::log10(2.0f), 1e-4f);
    EXPECT_EQ(parray[2][1].amp, -140.0f);
    EXPECT_EQ(parray[0][1].amp, static_cast<float>(amp2db(db2amp(-10.0f) / 2.0f * 2.0f)));
}

TEST_F(ValueRecords, ANegativeAmplitudeMakesThemAttenuations) {
    add("fa", 440, 3);
    add("fa", 660, -2);
    build({100, 1.0f, 0.0f});
    EXPECT_EQ(parray[0][1].amp, -13.0f);
    EXPECT_EQ(parray[1][1].amp, -8.0f);
}

TEST_F(ValueRecords, AmplitudesOfNothingAreSilence) {
    add("fa", 440, 0);
    build({100, 1.0f, 0.0f});
    EXPECT_EQ(parray[0][1].amp, -140.0f);
}

TEST_F(ValueRecords, DurationsAreScaledToTheLongest) {
    add("fd", 440, 0, 8);
    add("fd", 660, 0, 4);
    EXPECT_EQ(build({10, 2.0f, 0.0f}), "Num. Partials: 2\ndur = 20.000000\tfactor = 0.100000\n"
                                       "scaled dur.[0] = 2.000000\nscaled dur.[1] = 1.000000\n"
                                       "npoints[0] = 21\nnpoints[1] = 11\n");
    EXPECT_EQ(parray[0][20].time, 20.0f * 0.1f);
    EXPECT_EQ(parray[1][10].time, 10.0f * 0.1f);
    EXPECT_EQ(parray[1][5].amp, -10.0f);
}

TEST_F(ValueRecords, DurationsOutsideTheSequenceAreLeftAlone) {
    add("fa", 440, 1, 8);
    EXPECT_EQ(build({10, 2.0f, 0.0f}),
              "Num. Partials: 1\ndur = 20.000000\tfactor = 0.100000\nnpoints[0] = 20\n");
    EXPECT_EQ(ph[0].value[2], 8.0f);
}

TEST_F(ValueRecords, ADurationOfTooFewPointsIsLengthened) {
    add("fd", 440, 0, 2);
    add("fd", 660, 0, 0.1f);
    EXPECT_NE(build({10, 2.0f, 0.0f}).find("npoints[1] = 3\n"), std::string::npos);
    // One tenth of a second held 2 points: now it is half as long again.
    EXPECT_FLOAT_EQ(ph[1].value[2], 0.15f);
    EXPECT_EQ(parray[1][1].time, 0.1f);
    EXPECT_EQ(parray[1][2].time, 0.0f); // 0.2 s lies behind the duration: it keeps its time
    EXPECT_EQ(parray[1][2].amp, -100.0f);
}

TEST_F(ValueRecords, DurationsOfNothingHaveThreePoints) {
    add("fd", 440, 0, 0);
    EXPECT_EQ(build({10, 2.0f, 0.0f}),
              "Num. Partials: 1\ndur = 20.000000\tfactor = 0.100000\nnpoints[0] = 3\n");
}

TEST_F(ValueRecords, AFullDecayFallsStraightTowardsSilence) {
    add("fad", 440, 1, 2);
    add("fad", 660, 1, 1);
    build({10, 2.0f, -1.0f});
    for (int i = 0; i < 2; ++i) {
        const int n = npoints[i];
        for (int j = 1; j < n - 2; ++j) {
            EXPECT_NEAR(parray[i][j].amp, -10.0 - 90.0 * j / n, 1e-3) << i << " " << j;
        }
        EXPECT_NEAR(parray[i][0].amp, -16.0f, 1e-4f);
        EXPECT_LE(parray[i][n - 2].amp, -72.0f);
        EXPECT_EQ(parray[i][n - 1].amp, -100.0f);
    }
}

TEST_F(ValueRecords, ANegativeDecayWithoutDurationsRises) {
    add("f", 440);
    build({10, 1.0f, -5.0f});
    EXPECT_FLOAT_EQ(parray[0][4].amp, -8.0f);
}

TEST_F(ValueRecords, TheLastButOneIsLoweredOnlyFromAbove) {
    add("f", 440);
    build({4, 1.0f, 200.0f});
    EXPECT_EQ(parray[0][2].amp, -110.0f);
    EXPECT_EQ(parray[0][3].amp, -100.0f);
}

TEST_F(ValueRecords, PointsOfDecimalDurations) {
    add("f", 440);
    EXPECT_EQ(build({10, 0.7f, 0.0f}), "Num. Partials: 1\ndur = 7.000000\tfactor = 0.100000\n"
                                       "npoints[0] = 7\n");
    free_store();
    ph.assign(most_records, PhRecord());
    begun = partials = 0;
    add("fd", 440, 0, 2);
    add("fd", 660, 0, 0.7f);
    EXPECT_NE(build({10, 2.0f, 0.0f}).find("npoints[1] = 8\n"), std::string::npos);
}

TEST_F(ValueRecords, TwoPointsAreNotEnough) {
    add("f", 440);
    EXPECT_EQ(build({2, 1.0f, 0.0f}), "Num. Partials: 1\ndur = 2.000000\tfactor = 0.500000\n"
                                      "Not enough points - min. 3 per partial\n");
    EXPECT_EQ(result, -1);
    EXPECT_EQ(parray, nullptr);
    build({3, 1.0f, 0.0f});
    EXPECT_EQ(result, 0);
}

TEST_F(ValueRecords, EnvelopesOfNothing) {
    add("fad", 440, 1, 1);
    for (const Envelope &envelope : {Envelope{0, 0.0f, 0.0f}, Envelope{100, 0.0f, 0.0f},
                                     Envelope{-5, 1.0f, 0.0f}, Envelope{5, NAN, 0.0f}}) {
        build(envelope);
        EXPECT_EQ(result, -1);
    }
}

TEST_F(ValueRecords, TooManyPointsAreComplainedOf) {
    add("f", 440);
    std::string out;
    EXPECT_EQ(complained([&] {
                  out = build({INT32_MAX, 1e9f, 0.0f});
              }),
              "Quillgrove: too many points\n");
    EXPECT_EQ(result, -1);
    EXPECT_EQ(parray, nullptr);
}

TEST_F(ValueRecords, EmptyRecordsMakeNoPartial) {
    add("f", 440);
    ++begun;
    add("f", 660);
    build(second);
    ASSERT_EQ(partials, 2);
    EXPECT_EQ(parray[1][0].freq, 660.0f);
}

TEST_F(ValueRecords, AFrequencyOfZeroIsHarmless) {
    add("fa", 0, 1);
    add("fa", 440, 1);
    build(second, "100\n");
    EXPECT_EQ(result, 0);
    EXPECT_TRUE(std::isnan(parray[0][0].freq));
    printed([] { EXPECT_TRUE(derive_store()); });
}

TEST_F(ValueRecords, TheDebugSwitchTellsThePlan) {
    dbp = 1;
    add("f", 440);
    EXPECT_NE(build(second).find("#1, pps=4, pts = 4, dur= 1.00, a=-10.00  8.0\n"),
              std::string::npos);
    EXPECT_NE(build({4, 1.0f, -1.0f}).find("#1, pps=4, pts = 4, dur= 1.00, a=-10.00 full decay\n"),
              std::string::npos);
    EXPECT_NE(build({4, 1.0f, 0.0f}).find("#1, pps=4, pts = 4, dur= 1.00, a=-10.00  0.0\n"),
              std::string::npos);
}

} // namespace
