// The recompute family: ranges brought back from the points.
#include "store/recompute.h"

#include "tests/support/fixture.h"

#include <cmath>

namespace {

class RecomputeTimes : public StoreTest {};
class RecomputePitch : public StoreTest {};
class RecomputeLogfreq : public StoreTest {};
class RecomputeAmp : public StoreTest {};
class Averages : public StoreTest {};

/// log2 by the single-precision logarithm and a division in double.
double octaves_of(float ratio) {
    return static_cast<double>(logf(ratio)) / 0.69314718055994530942;
}

TEST_F(RecomputeTimes, StartIsTheEarliestFirstPointAndLengthAnEndTime) {
    fill_store({{{0.5f, 100, -1}, {0.9f, 100, -1}}, {{0.25f, 100, -1}, {0.75f, 100, -1}}});
    recompute_times();
    EXPECT_EQ(sndstart, 0.25f);
    EXPECT_EQ(sndlen, 0.9f);
}

TEST_F(RecomputeTimes, MeanIntervalIsOverAllPartials) {
    fill_store(
        {{{0.0f, 100, -1}, {0.25f, 100, -1}, {1.0f, 100, -1}}, {{0.0f, 100, -1}, {0.5f, 100, -1}}});
    recompute_times();
    EXPECT_EQ(meant, (0.25f + 0.75f + 0.5f) / 3.0f);
}

TEST_F(RecomputeTimes, ASinglePointAddsToTheStartOnly) {
    fill_store({{{0.5f, 100, -1}, {0.75f, 100, -1}}, {{0.125f, 100, -1}}, {{9.0f, 100, -1}}});
    recompute_times();
    EXPECT_EQ(sndstart, 0.125f);
    EXPECT_EQ(sndlen, 0.75f);
    EXPECT_EQ(meant, 0.25f);
}

TEST_F(RecomputeTimes, NegativeTimeShiftsTheWholeSoundToZero) {
    fill_store({{{0.5f, 100, -1}, {0.75f, 100, -1}}});
    parray[0][0].time = -0.25f;
    sndlen = 0.0f;
    recompute_times();
    EXPECT_EQ(parray[0][0].time, 0.0f);
    EXPECT_EQ(parray[0][1].time, 1.0f);
    EXPECT_EQ(sndstart, 0.0f);
}

TEST_F(RecomputeTimes, LengthGrowsByTheShift) {
    fill_store({{{0.0f, 100, -1}, {0.75f, 100, -1}}, {{0.0f, 100, -1}, {0.5f, 100, -1}}});
    parray[1][0].time = -0.25f;
    recompute_times();
    EXPECT_EQ(sndlen, 1.0f);
    EXPECT_EQ(parray[0][0].time, 0.25f);
    EXPECT_EQ(parray[0][1].time, 1.0f);
    EXPECT_EQ(parray[1][1].time, 0.75f);
}

TEST_F(RecomputeTimes, SummariesAreNotTouched) {
    fill_store({{{0.0f, 100, -1}, {0.75f, 100, -1}}});
    parray[0][0].time = -0.25f;
    recompute_times();
    EXPECT_EQ(peval[0].start, 0.0f);
    EXPECT_EQ(peval[0].dur, 0.75f);
}

TEST_F(RecomputeTimes, SinglePointsAloneGiveNoMeanAndNoLength) {
    fill_store({{{0.5f, 100, -1}}, {{0.75f, 100, -1}}});
    recompute_times();
    EXPECT_TRUE(std::isnan(meant));
    EXPECT_EQ(sndlen, 0.0f);
    EXPECT_EQ(sndstart, 0.5f);
}

TEST_F(RecomputeTimes, TheMinimumStartsAtAHundredThousand) {
    fill_store({{{200000.0f, 100, -1}, {200001.0f, 100, -1}}});
    recompute_times();
    EXPECT_EQ(sndstart, 100000.0f);
    EXPECT_EQ(sndlen, 200001.0f);
}

TEST_F(RecomputePitch, LowestIsAWholeNumberAndHighestExact) {
    fill_store({{{0, 100.7f, -1}, {1, 5000.3f, -1}}});
    recompute_all_pitch();
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 5000.3f);
}

TEST_F(RecomputePitch, FourHundredFortyPointNineGivesFourHundredForty) {
    fill_store({{{0, 440.9f, -1}, {1, 880.0f, -1}}});
    recompute_everything();
    EXPECT_EQ(minfreq, 440.0f);
    for (int j = 0; j < 2; ++j) {
        EXPECT_GT(parray[0][j].logfreq, 0.0f);
    }
}

TEST_F(RecomputePitch, AboveTwentyTwoThousandStillCounts) {
    fill_store({{{0, 30000.5f, -1}, {1, 40000.25f, -1}}});
    recompute_all_pitch();
    EXPECT_EQ(maxfreq, 40000.25f);
    EXPECT_EQ(minfreq, 22050.0f);
}

TEST_F(RecomputePitch, SpanAndItsOctaves) {
    fill_store({{{0, 100.0f, -1}, {1, 730.0f, -1}}});
    recompute_all_pitch();
    EXPECT_EQ(fspan, 730.0f / 100.0f);
    EXPECT_EQ(logmaxfreq, static_cast<float>(octaves_of(730.0f / 100.0f)));
}

TEST_F(RecomputePitch, MeanFrequencyOfEachPartial) {
    fill_store(small_content());
    peval[0].avgfreq = peval[1].avgfreq = 0.0f;
    recompute_all_pitch();
    EXPECT_EQ(peval[0].avgfreq, (100.0f + 110.0f + 120.0f + 110.0f) / 4.0f);
    EXPECT_EQ(peval[1].avgfreq, (400.0f + 420.0f + 440.0f) / 3.0f);
    EXPECT_EQ(peval[3].avgfreq, 1000.0f);
}

TEST_F(RecomputePitch, AnEmptyStoreResetsTheRange) {
    recompute_all_pitch();
    EXPECT_EQ(minfreq, 22050.0f);
    EXPECT_EQ(maxfreq, 0.0f);
}

TEST_F(RecomputePitch, APartialOfNoPointsHasNoMean) {
    fill_store({{{0, 100.0f, -1}, {1, 200.0f, -1}}, {}});
    recompute_all_pitch();
    EXPECT_TRUE(std::isnan(peval[1].avgfreq));
    EXPECT_EQ(peval[0].avgfreq, 150.0f);
}

TEST_F(RecomputePitch, NegativeFrequenciesTruncateTowardZero) {
    fill_store({{{0, -0.5f, -1}, {1, 200.0f, -1}}});
    recompute_all_pitch();
    EXPECT_EQ(minfreq, -0.5f); // truncated to 0, then lowered by the second pass
}

TEST_F(RecomputePitch, InfinitiesAreNoError) {
    fill_store({{{0, 100.0f, -1}, {1, 200.0f, -1}}});
    parray[0][1].freq = INFINITY;
    parray[0][0].freq = -INFINITY;
    recompute_all_pitch();
    EXPECT_EQ(maxfreq, INFINITY);
    EXPECT_EQ(minfreq, -INFINITY);
}

TEST_F(RecomputePitch, OnePartialWidensTheRangeAndNeverNarrowsIt) {
    fill_store(small_content());
    parray[1][0].freq = 50.5f;
    parray[1][1].freq = 2000.0f;
    recompute_pitch(1);
    EXPECT_EQ(minfreq, 50.5f);
    EXPECT_EQ(maxfreq, 2000.0f);
    EXPECT_EQ(peval[1].avgfreq, (50.5f + 2000.0f + 440.0f) / 3.0f);
    EXPECT_EQ(fspan, 2000.0f / 50.5f);
    EXPECT_EQ(logmaxfreq, static_cast<float>(octaves_of(2000.0f / 50.5f)));
    parray[1][0].freq = parray[1][1].freq = 440.0f;
    recompute_pitch(1);
    EXPECT_EQ(minfreq, 50.5f);
    EXPECT_EQ(maxfreq, 2000.0f);
}

TEST_F(RecomputeLogfreq, LogarithmAndOuterDivisionAtTheirWidths) {
    fill_store(small_content());
    recompute_logfreq();
    for (int i = 0; i < partials; ++i) {
        for (int j = 0; j < npoints[i]; ++j) {
            const float inner = static_cast<float>(octaves_of(parray[i][j].freq / minfreq));
            EXPECT_EQ(parray[i][j].logfreq, inner / logmaxfreq);
        }
    }
}

TEST_F(RecomputeLogfreq, EndsOfTheRangeAreZeroAndOne) {
    fill_store({{{0, 100.0f, -1}, {1, 300.0f, -1}, {2, 1000.0f, -1}}});
    EXPECT_EQ(parray[0][0].logfreq, 0.0f);
    EXPECT_EQ(parray[0][2].logfreq, 1.0f);
    EXPECT_NEAR(parray[0][1].logfreq, std::log(3.0) / std::log(10.0), 1e-6);
}

TEST_F(RecomputeLogfreq, PositionsAreWithinTheRangeAfterAFullRefresh) {
    fill_store({{{0, 440.9f, -1}, {1, 523.25f, -1}}, {{0, 21999.9f, -1}, {1, 441.5f, -1}}});
    recompute_everything();
    for (int i = 0; i < partials; ++i) {
        for (int j = 0; j < npoints[i]; ++j) {
            EXPECT_GE(parray[i][j].logfreq, 0.0f);
            EXPECT_LE(parray[i][j].logfreq, 1.0f);
        }
    }
}

TEST_F(RecomputeLogfreq, PositionToFrequency) {
    EXPECT_EQ(logfreq2freq(0.0f, 1600.0f, 100.0f), 100.0f);
    EXPECT_NEAR(logfreq2freq(1.0f, 1600.0f, 100.0f), 1600.0f, 1e-3);
    EXPECT_NEAR(logfreq2freq(0.5f, 1600.0f, 100.0f), 400.0f, 1e-3);
}

TEST_F(RecomputeLogfreq, FrequencyToPosition) {
    minfreq = 100.0f;
    EXPECT_NEAR(freq2logfreq(400.0f, 1600.0f, 100.0f), 0.5f, 1e-6);
    EXPECT_NEAR(freq2logfreq(1600.0f, 1600.0f, 100.0f), 1.0f, 1e-6);
}

TEST_F(RecomputeLogfreq, TheNumeratorTakesTheStoresLowestFrequency) {
    minfreq = 200.0f;
    EXPECT_NEAR(freq2logfreq(400.0f, 1600.0f, 100.0f), 0.25f, 1e-6);
}

TEST_F(RecomputeLogfreq, PositionAndFrequencyAreInverse) {
    minfreq = 55.0f;
    for (float freq = 60.0f; freq < 9000.0f; freq *= 1.7f) {
        const float position = freq2logfreq(freq, 9000.0f, 55.0f);
        EXPECT_NEAR(logfreq2freq(position, 9000.0f, 55.0f), freq, freq * 1e-5);
    }
}

TEST_F(RecomputeLogfreq, BothConversionsRunInSinglePrecision) {
    minfreq = 27.5f;
    const float octaves = static_cast<float>(octaves_of(9000.0f / 27.5f));
    for (float freq = 30.0f; freq < 9000.0f; freq *= 1.013f) {
        const float position = freq2logfreq(freq, 9000.0f, 27.5f);
        EXPECT_EQ(position, static_cast<float>(octaves_of(freq / 27.5f)) / octaves);
        const float exponent = static_cast<float>(position * octaves * 0.69314718055994530942);
        EXPECT_EQ(logfreq2freq(position, 9000.0f, 27.5f), 27.5f * expf(exponent));
    }
}

TEST_F(RecomputeAmp, LargestAndSmallestOfAllPoints) {
    fill_store(small_content());
    float high = 0.0f;
    float low = 0.0f;
    recompute_amp(&high, &low);
    EXPECT_EQ(high, -6.0f);
    EXPECT_EQ(low, -60.0f);
}

TEST_F(RecomputeAmp, TheyMayStandAnywhere) {
    for (int place = 0; place < 4; ++place) {
        fill_store({{{0, 100, -20}, {1, 100, -20}}, {}, {{0, 100, -20}, {1, 100, -20}}});
        float high = 0.0f;
        float low = 0.0f;
        float &amp = parray[place < 2 ? 0 : 2][place % 2].amp;
        amp = -90.0f;
        recompute_amp(&high, &low);
        EXPECT_EQ(high, -20.0f) << place;
        EXPECT_EQ(low, -90.0f) << place;
        amp = 3.0f;
        recompute_amp(&high, &low);
        EXPECT_EQ(high, 3.0f) << place;
        EXPECT_EQ(low, -20.0f) << place;
    }
}

TEST_F(RecomputeAmp, AnEmptyStoreGivesTheStartValues) {
    float high = 0.0f;
    float low = 0.0f;
    recompute_amp(&high, &low);
    EXPECT_EQ(high, -10000.0f);
    EXPECT_EQ(low, 10000.0f);
}

TEST_F(RecomputeAmp, TheFullRefreshWritesTheStoresRange) {
    fill_store(small_content());
    parray[0][0].amp = 3.5f;
    parray[3][0].amp = -120.0f;
    recompute_everything();
    EXPECT_EQ(maxamp, 3.5f);
    EXPECT_EQ(minamp, -120.0f);
}

TEST_F(Averages, StartDurationAndMean) {
    fill_store(small_content());
    for (int i = 0; i < partials; ++i) {
        peval[i] = {};
    }
    averages(partials, npoints, parray, peval);
    EXPECT_EQ(peval[1].start, 0.1f);
    EXPECT_EQ(peval[1].dur, 0.4f - 0.1f);
    EXPECT_EQ(peval[1].avgfreq, (400.0f + 420.0f + 440.0f) / 3.0f);
}

TEST_F(Averages, OnePointHasNoDuration) {
    fill_store(small_content());
    averages(partials, npoints, parray, peval);
    EXPECT_EQ(peval[3].start, 0.7f);
    EXPECT_EQ(peval[3].dur, 0.0f);
    EXPECT_EQ(peval[3].avgfreq, 1000.0f);
}

TEST_F(Averages, OnlyTheFirstPartialsAreWritten) {
    fill_store(small_content());
    peval[2].start = 99.0f;
    averages(2, npoints, parray, peval);
    EXPECT_EQ(peval[2].start, 99.0f);
}

TEST_F(Averages, SparesAreClearedAndNothingElse) {
    fill_store(small_content());
    for (int i = 0; i < 5; ++i) {
        peval[i].spare1 = peval[i].spare2 = 7.0f;
        peval[i].avgamp = 5.0f;
    }
    reset_peval_spares(peval, &partials);
    for (int i = 0; i < partials; ++i) {
        EXPECT_EQ(peval[i].spare1, 0.0f);
        EXPECT_EQ(peval[i].spare2, 0.0f);
        EXPECT_EQ(peval[i].avgamp, 5.0f);
    }
    EXPECT_EQ(peval[4].spare1, 7.0f);
}

TEST_F(Averages, TheFullRefreshRunsPitchBeforePositions) {
    fill_store(small_content());
    parray[2][1].freq = 4000.0f;
    recompute_everything();
    EXPECT_EQ(maxfreq, 4000.0f);
    EXPECT_EQ(parray[2][1].logfreq, 1.0f);
}

} // namespace
