// Pulling frequency tracks towards a constant ratio to a source partial, and pushing them away.
#include "interact/gestures.h"

#include "display/view.h"
#include "interact/selection.h"
#include "tests/interact/gesture_support.h"
#include "tests/interact/log_places.h"
#include "tests/support/console.h"
#include "toolbox/auxilliary3d.h"

#include <cmath>

namespace {

using structure::freqs;

const char *const no_pair = "Harmonize: Select both breakpoints from the source partial\n";
const char *const no_target = "Harmonize: No target selected\n";
const char *const illegitimate = "illegitimate selection\n";

constexpr double shrink = 0.9200000017881393;
constexpr double grow = 1.0399999991059303;

float moved(float freq, float target, double w) {
    const float dev = freq - target;
    return (freq - dev) + static_cast<float>(dev * w);
}

class Harmonize : public PointerTest {
  protected:
    /// A gliding source, a target with a run in its middle, and a partial that stays out.
    void SetUp() override {
        PointerTest::SetUp();
        fill_store({{{0.0f, 200.0f, -10.0f},
                     {0.25f, 210.0f, -10.0f},
                     {0.5f, 230.0f, -10.0f},
                     {0.75f, 220.0f, -10.0f},
                     {1.0f, 205.0f, -10.0f}},
                    {{0.125f, 330.0f, -20.0f},
                     {0.375f, 300.0f, -20.0f},
                     {0.625f, 360.0f, -20.0f},
                     {0.75f, 310.0f, -20.0f}},
                    {{0.0f, 700.0f, -30.0f}, {1.0f, 710.0f, -30.0f}}});
        flat = bps = 1;
        foundSubscriptions = {0, 1, 0, 3, 2};
        sweepSelect = 1;
        choose(1, {"00000", "0110", "00"});
    }

    static std::string press(int direction) {
        return printed([=] { partialsHarmonize(direction); });
    }
};

} // namespace

TEST_F(Harmonize, SilentOutsideTheFlatViewWithBreakpoints) {
    foundSubscriptions.count = 0;
    for (const auto &[is_flat, shows] : {std::pair{0, 1}, {1, 0}, {0, 0}}) {
        flat = is_flat;
        bps = shows;
        EXPECT_EQ(press(-1), "");
    }
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(Harmonize, AsksForAPairBeforeAnythingElse) {
    sweepSelect = 0;
    for (const int count : {0, 1}) {
        foundSubscriptions.count = count;
        EXPECT_EQ(press(-1), no_pair);
    }
}

TEST_F(Harmonize, APairOnTwoPartialsReturnsWithoutAMessage) {
    foundSubscriptions = {0, 1, 2, 0, 2};
    sweepSelect = 0;
    const auto before = freqs(1);
    EXPECT_EQ(press(-1), "");
    EXPECT_EQ(freqs(1), before);
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(Harmonize, AsksForATarget) {
    sweepSelect = 0;
    const auto before = freqs(1);
    EXPECT_EQ(press(1), no_target);
    EXPECT_EQ(freqs(1), before);
}

TEST_F(Harmonize, TheSourceCannotBeATarget) {
    parray[0][4].selected = 1;
    const auto before = freqs(1);
    EXPECT_EQ(press(-1), illegitimate);
    EXPECT_EQ(freqs(1), before);
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(Harmonize, OneStepToTheLetter) {
    // Mean from the first selected point to the partial's end, beyond the run: 300, 360, 310.
    const float mean = (300.0f + 360.0f + 310.0f) / 3.0f;
    // The source from 0.5 s on, while below 0.75 s less 0.4 of a mean hop: two points.
    const float fsrc = (230.0f + 220.0f) / 2.0f;
    const float ratio = mean / fsrc;
    const float target1 = ratio * linear_interpol(parray, npoints, 1, 1, 0);
    const float target2 = ratio * linear_interpol(parray, npoints, 2, 1, 0);
    EXPECT_EQ(press(-1), "");
    EXPECT_EQ(peval[1].spare2, ratio);
    EXPECT_EQ(freqs(1), (std::vector<float>{330.0f, moved(300.0f, target1, shrink),
                                            moved(360.0f, target2, shrink), 310.0f}));
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    EXPECT_EQ(freqs(0), (std::vector<float>{200.0f, 210.0f, 230.0f, 220.0f, 205.0f}));
    EXPECT_EQ(freqs(2), (std::vector<float>{700.0f, 710.0f}));
}

TEST_F(Harmonize, WarpingPushesAway) {
    const float ratio = ((300.0f + 360.0f + 310.0f) / 3.0f) / 225.0f;
    const float target = ratio * linear_interpol(parray, npoints, 1, 1, 0);
    press(1);
    EXPECT_EQ(parray[1][1].freq, moved(300.0f, target, grow));
    EXPECT_LT(parray[1][1].freq, 300.0f);
}

TEST_F(Harmonize, AnyOtherDirectionIsAStepOfNothing) {
    const auto before = freqs(1);
    for (const int direction : {0, 2, -2, 100}) {
        press(direction);
        for (size_t j = 0; j < before.size(); ++j) {
            EXPECT_FLOAT_EQ(freqs(1)[j], before[j]);
        }
    }
    EXPECT_EQ(gl_double::recorder().redisplays, 4);
}

TEST_F(Harmonize, TheSourcesStretchEndsFourTenthsOfAHopEarly) {
    // Whether the point at 0.5 s is still followed by one: the target's end against its time.
    set_flags({"00000", "0110", "00"});
    meant = 0.25f;
    parray[1][3].time = 0.65f; // up to 0.55 s: 0.5 s is below it, so 0.75 s counts
    press(0);
    EXPECT_EQ(peval[1].spare2, ((300.0f + 360.0f + 310.0f) / 3.0f) / ((230.0f + 220.0f) / 2.0f));
    SetUp();
    meant = 0.25f;
    parray[1][3].time = 0.59f; // up to 0.49 s: the source's mean is its point at 0.5 s
    press(0);
    EXPECT_EQ(peval[1].spare2, ((300.0f + 360.0f + 310.0f) / 3.0f) / 230.0f);
}

TEST_F(Harmonize, TheSourcesStretchEndsWithTheSource) {
    parray[1][3].time = 9.0f;
    press(0);
    const float fsrc = (230.0f + 220.0f + 205.0f) / 3.0f;
    EXPECT_EQ(peval[1].spare2, ((300.0f + 360.0f + 310.0f) / 3.0f) / fsrc);
}

TEST_F(Harmonize, ATargetBehindTheSourcesEndGoesByItsLastPoint) {
    for (int j = 0; j < 4; ++j) {
        parray[1][j].time += 5.0f;
    }
    const float ratio = ((300.0f + 360.0f + 310.0f) / 3.0f) / 205.0f;
    press(-1);
    EXPECT_EQ(peval[1].spare2, ratio);
    EXPECT_EQ(parray[1][1].freq, moved(300.0f, ratio * 205.0f, shrink));
}

TEST_F(Harmonize, ASourceOfOnePoint) {
    fill_store({{{0.5f, 100.0f, 0.0f}}, {{0.0f, 210.0f, 0.0f}, {1.0f, 190.0f, 0.0f}}});
    foundSubscriptions = {0, 0, 0, 0, 2};
    choose(1, {"0", "11"});
    press(-1);
    EXPECT_EQ(peval[1].spare2, 2.0f);
    EXPECT_EQ(freqs(1),
              (std::vector<float>{moved(210.0f, 200.0f, shrink), moved(190.0f, 200.0f, shrink)}));
}

TEST_F(Harmonize, ATargetOfOnePointIsAlreadyParallel) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 120.0f, 0.0f}}, {{0.0f, 210.0f, 0.0f}}});
    foundSubscriptions = {0, 0, 0, 1, 2};
    choose(1, {"00", "1"});
    press(1);
    EXPECT_FLOAT_EQ(parray[1][0].freq, 210.0f);
    EXPECT_EQ(peval[1].spare2, 210.0f / 100.0f);
}

TEST_F(Harmonize, ARunToThePartialsEndStopsThere) {
    choose(1, {"00000", "0011", "00"});
    press(-1);
    EXPECT_EQ(parray[1][1].freq, 300.0f);
    EXPECT_NE(parray[1][3].freq, 310.0f);
}

TEST_F(Harmonize, TheRunGoesOnThroughEveryFlagButZero) {
    parray[1][2].selected = 2;
    parray[1][0].selected = 2; // but starts at a flag of 1
    press(-1);
    EXPECT_NE(parray[1][2].freq, 360.0f);
    EXPECT_EQ(parray[1][0].freq, 330.0f);
}

TEST_F(Harmonize, OnlyTheFirstRunMoves) {
    choose(1, {"00000", "1011", "00"});
    press(-1);
    EXPECT_NE(parray[1][0].freq, 330.0f);
    EXPECT_EQ(parray[1][2].freq, 360.0f);
    EXPECT_EQ(parray[1][3].freq, 310.0f);
}

TEST_F(Harmonize, OnlyMarkedPartialsAreTargets) {
    choose(2, {"00000", "0110", "00"});
    const auto before = freqs(1);
    press(-1);
    EXPECT_EQ(freqs(1), before);
    EXPECT_EQ(freqs(2), (std::vector<float>{700.0f, 710.0f})); // marked, but nothing selected
    EXPECT_EQ(peval[2].spare2, 0.0f);
    peval[1].selected = 2;
    press(-1);
    EXPECT_EQ(freqs(1), before);
}

TEST_F(Harmonize, FrequenciesEndAt22050) {
    parray[1][1].freq = 21900.0f;
    parray[1][2].freq = 21900.0f;
    for (int i = 0; i < 40; ++i) {
        press(1);
    }
    EXPECT_EQ(std::max(parray[1][1].freq, parray[1][2].freq), 22050.0f);
}

TEST_F(Harmonize, LogPositionsGoByTheRangeOfTheMoment) {
    parray[1][1].freq = 900.0f; // beyond the range as derived before
    press(-1);
    const float freq = parray[1][1].freq;
    EXPECT_GT(freq, 710.0f);
    // This point itself widened the range: minfreq 200, maxfreq its own frequency.
    EXPECT_FLOAT_EQ(parray[1][1].logfreq, 1.0f);
    EXPECT_EQ(parray[1][2].logfreq, place_between(200.0f, freq, parray[1][2].freq));
}

TEST_F(Harmonize, DerivesRangeAndPhasesAnewButNoOtherLogPositions) {
    parray[1][3].phase = parray[2][1].phase = 9.0f;
    parray[2][0].logfreq = 0.123f;
    maxfreq = 5000.0f;
    press(-1);
    EXPECT_EQ(maxfreq, 710.0f);
    EXPECT_EQ(fspan, maxfreq / minfreq);
    EXPECT_LT(parray[1][3].phase, 6.3f);
    EXPECT_EQ(parray[2][1].phase, 9.0f);
    EXPECT_EQ(parray[2][0].logfreq, 0.123f);
}

TEST_F(Harmonize, AMeanLeftFromElsewhereServesOnceAndIsCleared) {
    peval[1].spare1 = 450.0f;
    peval[2].spare1 = 7.0f;
    press(0);
    EXPECT_EQ(peval[1].spare2, 450.0f / 225.0f);
    EXPECT_EQ(peval[1].spare1, 0.0f);
    EXPECT_EQ(peval[2].spare1, 0.0f);
    press(0);
    EXPECT_EQ(peval[1].spare2, ((300.0f + 360.0f + 310.0f) / 3.0f) / 225.0f);
}

TEST_F(Harmonize, ATargetWithoutFrequencyKeepsItsRatio) {
    for (int j = 0; j < 4; ++j) {
        parray[1][j].freq = 0.0f;
    }
    peval[1].spare2 = 1.5f;
    press(-1);
    EXPECT_EQ(peval[1].spare2, 1.5f);
}

TEST_F(Harmonize, ManyPressesBringTheTrackToTheRatio) {
    // At the source's own times, where both means weigh the same points.
    for (int32_t j = 0; j < 4; ++j) {
        parray[1][j].time = parray[0][j].time;
    }
    choose(1, {"00000", "1111", "00"});
    std::vector<float> worst;
    for (int i = 0; i < 200; ++i) {
        press(-1);
        worst.push_back(0.0f);
        for (int32_t j = 0; j < npoints[1]; ++j) {
            const float target = peval[1].spare2 * linear_interpol(parray, npoints, j, 1, 0);
            worst.back() = std::max(worst.back(), std::abs(parray[1][j].freq - target));
        }
    }
    EXPECT_GT(worst[0], 10.0f);
    EXPECT_LT(worst[20], worst[0] / 3);
    EXPECT_LT(worst.back(), 1e-3f);
}

TEST_F(Harmonize, StandsPairsThatAreGoneAndEmptyPartials) {
    for (const FoundPoints &pair : {FoundPoints{9, 0, 9, 1, 2}, {-1, -1, -1, -1, 2}}) {
        foundSubscriptions = pair;
        EXPECT_EQ(press(-1), "");
    }
    fill_store({{}, {{0.0f, 100.0f, 0.0f}}});
    foundSubscriptions = {0, 0, 0, 1, 2};
    choose(1, {"", "1"});
    EXPECT_EQ(press(-1), "");
    foundSubscriptions = {1, 0, 1, 0, 2};
    choose(0, {"", "0"});
    EXPECT_EQ(press(-1), "");
}
