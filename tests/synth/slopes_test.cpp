// The laws of the straight lines, each by hand-computed figures.

#include "synth/slopes.h"
#include "synth/sound.h"
#include "tests/support/fixture.h"
#include "toolbox/auxmath3d.h"

#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

class Slopes : public StoreTest {
  protected:
    void SetUp() override {
        StoreTest::SetUp();
        fill_store({{{0.0f, 50.0f, -1.0f}},
                    {{1.0f, 100.0f, -20.0f},
                     {1.5f, 110.0f, -40.0f},
                     {3.0f, 140.0f, -60.0f},
                     {4.0f, 140.0f, -60.0f}}});
    }
    void TearDown() override {
        R = 44100.0;
        StoreTest::TearDown();
    }
};

const float infinity = std::numeric_limits<float>::infinity();

} // namespace

TEST_F(Slopes, FrequencyAddsThePhaseDifferenceInCycles) {
    parray[1][0].phase = 1.0f;
    parray[1][1].phase = 1.0f + 3.1415927f;
    EXPECT_FLOAT_EQ(find_tanfreq(1, 0), (10.0f + 0.5f) / 0.5f);
    parray[1][1].phase = 1.0f;
    EXPECT_FLOAT_EQ(find_tanfreq(1, 0), 20.0f);
}

TEST_F(Slopes, FrequencyIsInSinglePrecisionInTheOrderOfTheLaw) {
    parray[1][0] = {0.1f, 440.123f, 0, 0.7f, 0, 1, 0, 0};
    parray[1][1] = {0.37f, 441.7f, 0, 5.9f, 0, 1, 0, 0};
    volatile float hertz = 441.7f - 440.123f;
    volatile float radians = 5.9f - 0.7f;
    volatile float cycles = radians / 6.2831855f;
    volatile float sum = hertz + cycles;
    volatile float seconds = 0.37f - 0.1f;
    EXPECT_EQ(find_tanfreq(1, 0), sum / seconds);
}

TEST_F(Slopes, EqualFrequenciesWithUnequalPhasesStillSlope) {
    parray[1][3].phase = 6.2831855f;
    EXPECT_FLOAT_EQ(find_tanfreq(1, 2), 1.0f);
}

TEST_F(Slopes, TwoSegmentFrequencyLeavesThePhaseOut) {
    parray[1][2].phase = 3.0f;
    EXPECT_FLOAT_EQ(bug_tanfreq(1, 0), 40.0f / 2.0f);
}

TEST_F(Slopes, DecibelFamily) {
    EXPECT_FLOAT_EQ(find_tanamp(1, 0), -20.0f / 0.5f);
    EXPECT_FLOAT_EQ(bug_tanamp(1, 0), -40.0f / 2.0f);
    EXPECT_FLOAT_EQ(hack_tanamp(1, 0), 80.0f / 0.5f);
    EXPECT_FLOAT_EQ(hack_e_tanamp(1, 0), -120.0f / 0.5f);
}

TEST_F(Slopes, HackOfEqualAmplitudesIsNotZero) {
    EXPECT_FLOAT_EQ(hack_tanamp(1, 2), 100.0f);
    EXPECT_FLOAT_EQ(hack_e_tanamp(1, 2), -100.0f);
}

TEST_F(Slopes, LinearFamily) {
    EXPECT_FLOAT_EQ(lin_tanamp(1, 0), (0.01f - 0.1f) / 0.5f);
    EXPECT_FLOAT_EQ(lins_tanamp(1, 0), 0.01f / 0.5f);
    EXPECT_FLOAT_EQ(linh_tanamp(1, 0), -0.1f / 0.5f);
}

TEST_F(Slopes, TwoSegmentAmplitudeSubtractsNothing) {
    EXPECT_FLOAT_EQ(lin_bug_tanamp(1, 0), 0.001f / 2.0f);
    parray[1][0].amp = 0.0f;
    EXPECT_FLOAT_EQ(lin_bug_tanamp(1, 0), 0.001f / 2.0f);
}

TEST_F(Slopes, SilenceIsSevenDecadesDownAndNotZero) {
    const float silence = powf(10.0f, -7.0f);
    parray[1][0].amp = -140.0f;
    parray[1][1].amp = -300.0f;
    EXPECT_EQ(lin_tanamp(1, 0), 0.0f);
    EXPECT_EQ(lins_tanamp(1, 0), silence / 0.5f);
    EXPECT_EQ(linh_tanamp(1, 0), -silence / 0.5f);
    parray[1][1].amp = -20.0f;
    EXPECT_EQ(lin_tanamp(1, 0), (db2amp(-20.0f) - silence) / 0.5f);
}

TEST_F(Slopes, EqualTimesGiveInfinityOfEitherSign) {
    parray[1][1].time = 1.0f;
    EXPECT_EQ(find_tanfreq(1, 0), infinity);
    EXPECT_EQ(find_tanamp(1, 0), -infinity);
    EXPECT_EQ(hack_tanamp(1, 0), infinity);
    EXPECT_EQ(hack_e_tanamp(1, 0), -infinity);
    EXPECT_EQ(lin_tanamp(1, 0), -infinity);
    EXPECT_EQ(lins_tanamp(1, 0), infinity);
    EXPECT_EQ(linh_tanamp(1, 0), -infinity);
    parray[1][2].time = 1.0f;
    EXPECT_EQ(bug_tanfreq(1, 0), infinity);
    EXPECT_EQ(bug_tanamp(1, 0), -infinity);
    EXPECT_EQ(lin_bug_tanamp(1, 0), infinity);
}

TEST_F(Slopes, EqualTimesAndValuesGiveNotANumber) {
    parray[1][3].time = 3.0f;
    EXPECT_TRUE(std::isnan(find_tanfreq(1, 2)));
    EXPECT_TRUE(std::isnan(find_tanamp(1, 2)));
    EXPECT_TRUE(std::isnan(lin_tanamp(1, 2)));
}

TEST(Ramps, FromSilenceToFullLevelIn2000Frames) {
    for (float (*ramp)(float) : {nramp, kramp}) {
        EXPECT_EQ(ramp(2000.0f), 1.0f);
        EXPECT_EQ(ramp(2001.0f), 1.0f);
        EXPECT_EQ(ramp(0.0f), 0.0f);
        EXPECT_EQ(ramp(-1.0f), 0.0f);
        EXPECT_EQ(ramp(1000.0f), 0.5f);
    }
}

TEST(Ramps, ProductIsInDouble) {
    int different = 0;
    for (int i = 1; i < 2000; ++i) {
        const auto x = static_cast<float>(i);
        EXPECT_EQ(nramp(x), static_cast<float>(static_cast<double>(x) * 0.0005));
        EXPECT_EQ(kramp(x), nramp(x));
        different += nramp(x) != x * 0.0005f ? 1 : 0;
    }
    EXPECT_GT(different, 0); // a product in single precision would show
}

TEST_F(Slopes, NoteAtTheLowEndIsTheStartTime) {
    sndlen = 4.0f;
    EXPECT_EQ(note2time(36.0f, 0.25f, 36, 96), 0.25f);
}

TEST_F(Slopes, NoteAtOrAboveTheHighEndIsTheEndLess512Frames) {
    sndlen = 4.0f;
    R = 1024.0;
    for (const float start : {0.0f, 1.0f, 9.0f, 1e9f}) { // the law would lose the end in the last
        EXPECT_EQ(note2time(96.0f, start, 36, 96), 3.5f);
        EXPECT_EQ(note2time(127.0f, start, 36, 96), 3.5f);
    }
}

TEST_F(Slopes, NotesSpreadLinearlyBetween) {
    sndlen = 4.0f;
    R = 1024.0;
    EXPECT_EQ(note2time(66.0f, 0.5f, 36, 96), 2.0f);
    EXPECT_EQ(note2time(6.0f, 0.5f, 36, 96), -1.0f);
}

TEST_F(Slopes, NoteRangesThatAreEmptyOrTooWideAreHarmless) {
    EXPECT_EQ(note2time(59.0f, 0.0f, 60, 60), -infinity);
    EXPECT_FALSE(std::isnan(note2time(0.0f, 0.0f, INT_MIN, INT_MAX)));
}
