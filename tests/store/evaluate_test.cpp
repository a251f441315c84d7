// Judging imported data: ranges at import, order of times, units of amplitude.
#include "store/evaluate.h"

#include "store/recompute.h"
#include "store/slots.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "toolbox/auxmath3d.h"

#include <cmath>

namespace {

class GlobalParameters : public StoreTest {
  protected:
    static int32_t call(const int32_t *count = &partials) {
        return global_parameters(&parray, count, &npoints, &sndstart, &sndlen, &maxfreq, &minfreq,
                                 &logmaxfreq, &fspan, &nlogmaxfreq, &maxamp, &sndstart, &meant,
                                 &oldmaxfreq, &oldminfreq);
    }
    /// A store as an importer leaves it: the range of frequencies known, nothing else derived.
    static void imported(const std::vector<Partial> &content, float low, float high, float loud) {
        fill_store(content);
        minfreq = low;
        maxfreq = high;
        maxamp = loud;
    }
};
class SanityCheck : public StoreTest {};
class AmpUnits : public StoreTest {};
class EvalPart : public StoreTest {};

/// `count` partials of one linear point, `negative` of them below zero.
void many_points(int32_t count, int32_t negative) {
    std::vector<Partial> content(1);
    for (int32_t i = 0; i < count; ++i) {
        content[0].push_back({static_cast<float>(i), 100.0f, i < negative ? -0.5f : 0.5f});
    }
    fill_store(content);
}

TEST_F(GlobalParameters, ReportOfTheRanges) {
    imported({{{0.5f, 100, -20}, {1.0f, 200, -10}, {2.0f, 400, -30}}}, 100.0f, 400.0f, -10.0f);
    int32_t result = -5;
    EXPECT_EQ(printed([&] { result = call(); }), "snd. start = 0.500000\tsnd.length =   2.000\n"
                                                 "max. freq. =   400.00\tmin. freq. =   100.00\n"
                                                 "max. amp.  =  -10.000 dB\n"
                                                 "Mean time interval between points = 0.750000\n");
    EXPECT_EQ(result, 0);
}

TEST_F(GlobalParameters, StartAndEndOverAllPartialsSinglePointsToo) {
    imported({{{0.5f, 100, -20}, {1.0f, 200, -10}}, {{0.25f, 100, -1}}, {{7.0f, 100, -1}}}, 100,
             200, -1);
    printed([] { call(); });
    EXPECT_EQ(sndstart, 0.25f);
    EXPECT_EQ(sndlen, 7.0f);
}

TEST_F(GlobalParameters, PartialsOfNoPointsArePassedOver) {
    imported({{}, {{0.5f, 100, -20}, {1.0f, 200, -10}}, {}, {{0.25f, 100, -1}, {7.25f, 100, -1}}},
             100, 200, -1);
    printed([] { call(); });
    EXPECT_EQ(sndstart, 0.25f);
    EXPECT_EQ(sndlen, 7.25f);
    EXPECT_EQ(meant, (0.5f + 7.0f) / 0.0f); // 4 points less 4 partials
}

TEST_F(GlobalParameters, ANegativeStartStands) {
    imported({{{0.5f, 100, -20}, {1.0f, 200, -10}}}, 100, 200, -10);
    parray[0][0].time = -3.0f;
    parray[0][1].time = -1.0f;
    printed([] { call(); });
    EXPECT_EQ(sndstart, -3.0f);
    EXPECT_EQ(sndlen, -1.0f);
}

TEST_F(GlobalParameters, SpanAndTheRangeAtImport) {
    imported({{{0, 110.5f, -20}, {1, 987.25f, -10}}}, 110.5f, 987.25f, -10);
    printed([] { call(); });
    EXPECT_EQ(fspan, 987.25f / 110.5f);
    EXPECT_EQ(oldmaxfreq, 987.25f);
    EXPECT_EQ(oldminfreq, 110.5f);
    EXPECT_EQ(nlogmaxfreq, logf(987.25f / 110.5f));
    EXPECT_EQ(logmaxfreq, static_cast<float>(static_cast<double>(nlogmaxfreq) / std::log(2.0)));
}

TEST_F(GlobalParameters, TheRangeAtImportOutlivesLaterChanges) {
    imported({{{0, 110.5f, -20}, {1, 987.25f, -10}}}, 110.5f, 987.25f, -10);
    printed([] { call(); });
    parray[0][1].freq = 5000.0f;
    recompute_everything();
    EXPECT_EQ(oldmaxfreq, 987.25f);
    EXPECT_EQ(oldminfreq, 110.5f);
    EXPECT_EQ(nlogmaxfreq, logf(987.25f / 110.5f));
}

TEST_F(GlobalParameters, PositionsOfAllPoints) {
    imported({{{0, 110.5f, -20}, {1, 400.0f, -5}, {2, 987.25f, -10}}}, 110.5f, 987.25f, -10);
    for (int j = 0; j < 3; ++j) {
        parray[0][j].logfreq = 77.0f;
    }
    printed([] { call(); });
    for (int j = 0; j < 3; ++j) {
        const double inner = static_cast<double>(logf(parray[0][j].freq / 110.5f)) / std::log(2.0);
        EXPECT_EQ(parray[0][j].logfreq, static_cast<float>(inner) / logmaxfreq);
    }
}

TEST_F(GlobalParameters, MeanIntervalDividesByPointsLessPartials) {
    imported({{{0, 100, -1}, {0.5f, 200, -1}}, {{0, 100, -1}, {0.25f, 100, -1}, {1, 100, -1}}}, 100,
             200, -1);
    meant = 55.0f;
    printed([] { call(); });
    EXPECT_EQ(meant, (0.5f + 0.25f + 0.75f) / 3.0f);
}

TEST_F(GlobalParameters, ANullCountIsAFailure) {
    imported(small_content(), 100, 1000, -6);
    int32_t result = 0;
    EXPECT_EQ(printed([&] { result = call(nullptr); }),
              "No valid partials to import: quitting program\n");
    EXPECT_EQ(result, -1);
}

TEST_F(GlobalParameters, NoPartialsAreAFailure) {
    int32_t result = 0;
    EXPECT_EQ(printed([&] { result = call(); }), "No valid partials to import: quitting program\n");
    EXPECT_EQ(result, -1);
}

TEST_F(SanityCheck, AscendingTimesStand) {
    fill_store(small_content());
    EXPECT_EQ(printed(sanityCheck), "\n");
    EXPECT_EQ(parray[0][1].time, 0.1f);
}

TEST_F(SanityCheck, SwapLeavesFrequencyAndLevelOnTheirPoints) {
    fill_store({{{0.0f, 100, -1}, {0.3f, 200, -2}, {0.2f, 300, -3}, {0.4f, 400, -4}}});
    EXPECT_EQ(printed(sanityCheck), "*\n");
    EXPECT_EQ(parray[0][1].time, 0.2f);
    EXPECT_EQ(parray[0][2].time, 0.3f);
    EXPECT_EQ(parray[0][1].freq, 200.0f);
    EXPECT_EQ(parray[0][1].amp, -2.0f);
    EXPECT_EQ(parray[0][2].freq, 300.0f);
    EXPECT_EQ(parray[0][2].amp, -3.0f);
}

TEST_F(SanityCheck, OnePassIsNotASort) {
    fill_store({{{3, 100, -1}, {2, 100, -1}, {1, 100, -1}}});
    EXPECT_EQ(printed(sanityCheck), "**\n");
    EXPECT_EQ(parray[0][0].time, 2.0f);
    EXPECT_EQ(parray[0][1].time, 1.0f);
    EXPECT_EQ(parray[0][2].time, 3.0f);
}

TEST_F(SanityCheck, EqualTimesAreNotSwapped) {
    fill_store({{{1, 100, -1}, {1, 200, -1}}});
    EXPECT_EQ(printed(sanityCheck), "\n");
}

TEST_F(SanityCheck, MarksOfAllPartialsStandOnOneLine) {
    fill_store({{{1, 100, -1}, {0, 200, -1}}, {{5, 100, -1}}, {{3, 100, -1}, {2, 200, -1}}, {}});
    EXPECT_EQ(printed(sanityCheck), "**\n");
}

TEST_F(AmpUnits, NoNegativeAmplitudeMeansLinear) {
    fill_store({{{0, 100, 0.5f}, {1, 100, 0.25f}}});
    EXPECT_EQ(ampcheck(parray, npoints, partials), 0);
    EXPECT_EQ(parray[0][0].ampunits, 0);
    EXPECT_EQ(parray[0][1].ampunits, 0);
}

TEST_F(AmpUnits, TheUnitsOfAllPartialsAreSet) {
    fill_store({{{0, 100, 0.5f}}, {}, {{0, 100, 0.25f}, {1, 100, 0.0f}}, {{0, 100, -1}}});
    EXPECT_EQ(ampcheck(parray, npoints, 3), 0);
    EXPECT_EQ(parray[0][0].ampunits, 0);
    EXPECT_EQ(parray[2][1].ampunits, 0);
    EXPECT_EQ(parray[3][0].ampunits, 1); // behind the first three
    EXPECT_EQ(ampcheck(parray, npoints, 4), 1);
    EXPECT_EQ(parray[0][0].ampunits, 1);
    EXPECT_EQ(parray[2][1].ampunits, 1);
}

TEST_F(AmpUnits, EveryAmplitudeExactlyZeroIsLinear) {
    fill_store({{{0, 100, 0.0f}, {1, 100, 0.0f}}});
    EXPECT_EQ(ampcheck(parray, npoints, partials), 0);
}

TEST_F(AmpUnits, OneNegativeAmplitudeMeansDecibels) {
    fill_store({{{0, 100, 0.5f}, {1, 100, -0.25f}}});
    parray[0][0].ampunits = 0;
    EXPECT_EQ(ampcheck(parray, npoints, partials), 1);
    EXPECT_EQ(parray[0][0].ampunits, 1);
    EXPECT_EQ(parray[0][1].ampunits, 1);
}

TEST_F(AmpUnits, AnEmptyStoreReportsDecibelsAndTouchesNothing) {
    fill_store({{{0, 100, 0.5f}}});
    parray[0][0].ampunits = 7;
    EXPECT_EQ(ampcheck(parray, npoints, 0), 1);
    EXPECT_EQ(parray[0][0].ampunits, 7);
}

TEST_F(AmpUnits, PartialsWithoutPointsReportDecibels) {
    fill_store({{}, {}});
    EXPECT_EQ(ampcheck(parray, npoints, partials), 1);
}

TEST_F(AmpUnits, CountersOfSixteenBitsWrapAroundAlike) {
    many_points(65537, 0);
    EXPECT_EQ(ampcheck(parray, npoints, partials), 0);
}

TEST_F(AmpUnits, A65536thPointBringsTheCountersToZero) {
    many_points(65536, 0);
    EXPECT_EQ(ampcheck(parray, npoints, partials), 1);
}

TEST_F(AmpUnits, NegativesThatFillTheCounterGoUnseen) {
    many_points(65536 + 10, 65536);
    EXPECT_EQ(ampcheck(parray, npoints, partials), 0);
}

TEST_F(AmpUnits, NegativesShortOfTheCounterAreSeen) {
    many_points(65536 + 10, 65535);
    EXPECT_EQ(ampcheck(parray, npoints, partials), 1);
}

TEST_F(AmpUnits, ConversionOfLinearData) {
    fill_store({{{0, 100, 0.5f}, {1, 100, 0.0f}}, {{0, 100, 1.0f}}});
    parray[0][0].ampunits = parray[0][1].ampunits = parray[1][0].ampunits = 0;
    ampconvert(parray, npoints, partials);
    EXPECT_EQ(parray[0][0].amp, static_cast<float>(20.0 * std::log10(0.5)));
    EXPECT_EQ(parray[0][1].amp, -140.0f);
    EXPECT_EQ(parray[1][0].amp, 0.0f);
    EXPECT_EQ(parray[0][0].ampunits, 1);
    EXPECT_EQ(parray[1][0].ampunits, 1);
}

TEST_F(AmpUnits, ConversionLeavesDecibelsAlone) {
    fill_store({{{0, 100, 0.5f}, {1, 100, -20.0f}}});
    parray[0][0].ampunits = 0;
    ampconvert(parray, npoints, partials);
    EXPECT_EQ(parray[0][0].amp, 0.5f);
    EXPECT_EQ(parray[0][1].amp, -20.0f);
    EXPECT_EQ(parray[0][0].ampunits, 0);
}

TEST_F(EvalPart, AnnouncesItself) {
    fill_store(small_content());
    EXPECT_EQ(printed([] { evalpart(parray, npoints); }), "//EVALUATION OF PARTIALS' PARAMETERS\n");
}

TEST_F(EvalPart, SummaryOfDecibelData) {
    fill_store(small_content());
    printed([] { evalpart(parray, npoints); });
    EXPECT_EQ(peval[1].start, 0.1f);
    EXPECT_EQ(peval[1].dur, 0.4f - 0.1f);
    EXPECT_EQ(peval[1].avgfreq, 1260.0f / 3.0f);
    EXPECT_EQ(peval[1].avgamp, (-12.0f - 6.0f) / 3.0f); // all but the last, over all
    EXPECT_EQ(peval[0].avgamp, (-20.0f - 10.0f - 15.0f) / 4.0f);
    EXPECT_EQ(peval[3].avgamp, 0.0f);
    for (int i = 0; i < partials; ++i) {
        EXPECT_EQ(peval[i].reserved1, 0);
        EXPECT_EQ(peval[i].reserved2, 0u);
        EXPECT_EQ(peval[i].spare1, static_cast<float>(i));
        EXPECT_EQ(peval[i].spare2, 0.0f);
    }
}

TEST_F(EvalPart, FiveLinearPointsAverageToOneWhateverTheAmplitudes) {
    fill_store({{{0, 100, 0.5f}, {1, 100, 0.1f}, {2, 100, 0.2f}, {3, 100, 0.9f}, {4, 100, 0.0f}}});
    printed([] { evalpart(parray, npoints); });
    EXPECT_EQ(peval[0].avgamp, 1.0f);
}

TEST_F(EvalPart, OneLinearPointAveragesToTheEmptyProduct) {
    fill_store({{{0, 100, 0.5f}}});
    printed([] { evalpart(parray, npoints); });
    EXPECT_EQ(peval[0].avgamp, 1.0f);
}

TEST_F(EvalPart, LinearDataBecomeDecibels) {
    fill_store({{{0, 100, 0.5f}, {1, 100, 0.25f}}});
    printed([] { evalpart(parray, npoints); });
    EXPECT_EQ(parray[0][0].amp, static_cast<float>(amp2db(0.5)));
    EXPECT_EQ(parray[0][1].amp, static_cast<float>(amp2db(0.25)));
    EXPECT_EQ(parray[0][0].ampunits, 0);
}

TEST_F(EvalPart, MeanFrequencyOfOnePartial) {
    fill_store(small_content());
    EXPECT_EQ(average(parray, npoints, 0), 440.0f / 4.0f);
    EXPECT_EQ(average(parray, npoints, 1), 420.0f);
    EXPECT_EQ(average(parray, npoints, 3), 1000.0f);
}

} // namespace
