// What the diagnostic driver renders, frame by frame.

#include "tests/synth/synth33_support.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double pi = 3.141592653589793;
constexpr float infinity = std::numeric_limits<float>::infinity();

} // namespace

// --- all partials ------------------------------------------------------------------------------

TEST_F(Synth33, SteadyToneFadesInOverItsFirstHalfCycle) {
    fill_store({{{0.0f, 1.0f, 0.0f}, {1.0f, 1.0f, 0.0f}}});
    const double root = std::sqrt(0.5);
    // The last frame is left out: the partial stops one before its end.
    expect_samples(rendered(), {root / 4, 0.5, root * 3 / 4, 0, -root, -1, -root, 0});
}

TEST_F(Synth33, AmplitudeRunsStraightInLinearTerms) {
    fill_store({{{0.0f, 2.0f, 0.0f}, {1.0f, 2.0f, -20.0f}}});
    expect_samples(rendered(), {0.44375, 0, -0.6625, 0, 0.4375, 0, -0.2125, 0});
}

TEST_F(Synth33, FrequencyTakesThePhaseDifferenceInCycles) {
    fill_store({{{0.0f, 1.0f, 0.0f}, {1.0f, 1.5f, 0.0f}}});
    parray[0][1].phase = 3.1415927f;
    std::vector<double> expected;
    double phi = 0.0;
    for (int k = 1; k < 8; ++k) {
        phi += 2.0 * pi / 8.0 * (1.0 + k * (0.5 + 0.5) / 8.0);
        expected.push_back(std::sin(phi) * (phi <= pi ? phi / pi : 1.0));
    }
    expected.push_back(0.0);
    expect_samples(rendered(), expected);
}

TEST_F(Synth33, StartPhaseOfThePointIsNotUsed) {
    fill_store({even(3)});
    const std::vector<float> plain = rendered();
    for (int j = 0; j < 3; ++j) {
        parray[0][j].phase = 1.0f;
    }
    EXPECT_EQ(rendered(), plain);
}

TEST_F(Synth33, NextPointIsTakenOneFrameAfterItsOwn) {
    // A partial falls to a tenth by frame 4 and rises again; the fall goes on through frame 4.
    fill_store({{{0.0f, 2.0f, 0.0f}, {0.5f, 2.0f, -20.0f}, {1.0f, 2.0f, 0.0f}}});
    expect_samples(rendered(), {0.775 / 2, 0, -0.325, 0, -0.125, 0, -0.55, 0});
}

TEST_F(Synth33, TwoPointsOnOneFrameAreBridgedWithoutSubtraction) {
    fill_store(
        {{{0.0f, 2.0f, 0.0f}, {0.25f, 2.0f, 0.0f}, {0.3f, 2.0f, 0.0f}, {1.0f, 2.0f, -20.0f}}});
    // From frame 3 on the amplitude rises although the next point is lower.
    const double rise = 0.1 / 0.75 / 8.0;
    expect_samples(rendered(), {0.5, 0, -1, 0, 1 + 2 * rise, 0, -(1 + 4 * rise), 0});
}

TEST_F(Synth33, PointsLessThanAFrameApartAreBridgedAcrossTwoFramesToo) {
    // Frames 1 and 2; half a frame lies between them. What counts is the distance.
    fill_store(
        {{{0.0f, 2.0f, 0.0f}, {0.2f, 2.0f, 0.0f}, {0.26f, 2.0f, 0.0f}, {1.0f, 2.0f, -20.0f}}});
    const double rise = 0.1 / 0.8 / 8.0;
    expect_samples(rendered(), {0.5, 0, -(1 + rise), 0, 1 + 3 * rise, 0, -(1 + 5 * rise), 0});
}

TEST_F(Synth33, BridgeTakesTheFrequencyOfBothSegmentsAndNoPhase) {
    fill_store({{{0.0f, 2.0f, 0.0f}, {0.25f, 2.0f, 0.0f}, {0.3f, 9.0f, 0.0f}, {1.0f, 0.5f, 0.0f}}});
    parray[0][1].phase = 2.0f; // the first segment alone feels it
    const std::vector<float> samples = rendered();
    double phi = 0.0;
    double f = 2.0;
    for (int k = 1; k <= 3; ++k) {
        f += (2.0 / (2.0 * pi)) / 0.25 / 8.0;
        phi += 2.0 * pi / 8.0 * f;
    }
    f = 2.0;
    const double rise = 1.0 / 0.75 / 8.0; // of the amplitude
    for (int k = 1; k <= 4; ++k) {
        f += -1.5 / 0.75 / 8.0;
        phi += 2.0 * pi / 8.0 * f;
        const auto n = static_cast<size_t>(2 + k);
        EXPECT_NEAR(samples[n], std::sin(phi) * (1 + k * rise), 2e-6) << n;
    }
}

TEST_F(Synth33, BridgeGoesOnBehindBothPoints) {
    // Five points; behind the pair at frame 2 the point at frame 4 counts again.
    fill_store({{{0.0f, 2.0f, 0.0f},
                 {0.25f, 2.0f, 0.0f},
                 {0.3f, 2.0f, 0.0f},
                 {0.5f, 2.0f, -20.0f},
                 {1.0f, 2.0f, -20.0f}}});
    const double rise = 0.1 / 0.25 / 8.0;
    expect_samples(rendered(), {0.5, 0, -1, 0, 1 + 2 * rise, 0, -0.1, 0});
}

TEST_F(Synth33, PhaseIsWrappedByAComparisonInDouble) {
    // One frame of 16 Hz comes to the single-precision value next to 4 pi, which lies above it.
    fill_store({{{0.0f, 16.0f, 0.0f}, {1.0f, 16.0f, 0.0f}}});
    const std::vector<float> samples = rendered();
    EXPECT_EQ(samples.at(0), sinf(6.2831855f));
    EXPECT_NE(samples.at(0), sinf(12.566371f));
}

TEST_F(Synth33, PhaseIsWrappedOnceAFrame) {
    fill_store({{{0.0f, 41.0f, 0.0f}, {1.0f, 41.0f, 0.0f}}});
    const float step = (6.2831855f / 8.0f) * 41.0f;
    const float wrapped = static_cast<float>(static_cast<double>(step) - 6.283185307179586);
    EXPECT_EQ(rendered().at(0), sinf(wrapped));
}

TEST_F(Synth33, NegativeFrequencyFadesItsFirstSamplesNegatively) {
    fill_store({{{0.0f, 2.0f, 0.0f}, {1.0f, 2.0f, 0.0f}}});
    parray[0][0].freq = parray[0][1].freq = -2.0f;
    // sin(-pi/2) times -1/2 is above 0; the phase runs down and every frame is scaled.
    const std::vector<float> samples = rendered();
    EXPECT_NEAR(samples.at(0), 0.5, 1e-6);
    EXPECT_NEAR(samples.at(2), -1.5, 1e-6);
}

TEST_F(Synth33, PartialsAddUpAndStartAtTheirOwnTime) {
    fill_store({even(3), {{0.5f, 2.0f, -20.0f}, {1.5f, 2.0f, -20.0f}}});
    expect_samples(rendered(), {0.5, 0, -1, 0, 1 + 0.05, 0, -1 - 0.1, 0, 0.1, 0, -0.1, 0});
}

TEST_F(Synth33, PartialsOfOneAndOfNoPointAreSilent) {
    fill_store({{}, {{0.25f, 2.0f, 0.0f}}, {{0.5f, 2.0f, 0.0f}, {0.6f, 2.0f, 0.0f}}});
    sndlen = 1.0f;
    expect_samples(rendered(), std::vector<double>(8, 0.0));
}

TEST_F(Synth33, FrameIndexIsInSinglePrecision) {
    // 0.7f is a little below 0.7: its product with 10 is 7 in single precision alone.
    R = 10.0;
    fill_store({{{0.7f, 2.5f, 0.0f}, {1.2f, 2.5f, 0.0f}}});
    const std::vector<float> samples = rendered();
    ASSERT_EQ(samples.size(), 12u);
    ASSERT_LT(static_cast<double>(0.7f) * 10.0, 7.0);
    EXPECT_EQ(samples[6], 0.0f);
    EXPECT_NEAR(samples[7], 0.5, 1e-6);
}

TEST_F(Synth33, PartialsBeyondTheBufferAreCutThere) {
    fill_store({even(9)});
    sndlen = 0.5f;
    expect_samples(rendered(), {0.5, 0, -1, 0});
}

TEST_F(Synth33, FramesBeforeTheBufferAreRunButNotWritten) {
    fill_store({even(3)});
    parray[0][0].time = -0.25f;
    const std::vector<float> samples = rendered();
    ASSERT_EQ(samples.size(), 8u);
    EXPECT_NEAR(samples[0], -1.0, 1e-6); // the third of the voice's frames
}

TEST_F(Synth33, TimesFarOutsideTheSoundTakeNoTime) {
    for (const float time : {-1e30f, -infinity}) {
        fill_store({even(4)});
        parray[0][0].time = time;
        select(0, 0, 3);
        sndlen = 1.5f;
        EXPECT_EQ(rendered().size(), 12u) << time;
        EXPECT_EQ(rendered(1).size(), 12u) << time;
    }
    // A lone last point counts from the partial's first one.
    for (const float time : {1e30f, infinity}) {
        fill_store({even(4)});
        parray[0][0].time = time;
        select(0, 3, 3);
        EXPECT_EQ(rendered(1).size(), 12u) << time;
    }
    fill_store({even(4)});
    parray[0][3].time = 1e30f;
    sndlen = 1.5f;
    EXPECT_EQ(rendered().size(), 12u);
}

TEST_F(Synth33, NegativeLengthRendersNothing) {
    fill_store({even(3)});
    sndlen = -1.0f;
    EXPECT_EQ(rendered(), std::vector<float>{});
}

TEST_F(Synth33, EqualAndUnorderedTimesAreHarmless) {
    for (const float time : {0.5f, 0.0f, 1.0f, 0.9f, std::nanf(""), infinity, -infinity}) {
        SCOPED_TRACE(time);
        fill_store({even(4)});
        parray[0][2].time = time;
        sndlen = 1.5f;
        EXPECT_EQ(rendered().size(), 12u);
        select(0, 0, 3);
        if (time == infinity) {
            parray[0][2].selected = 0; // else the sound is as long as the memory
        }
        EXPECT_EQ(rendered(1).size(), 12u);
        if (time == infinity) {
            continue;
        }
        parray[0][3].time = time;
        EXPECT_EQ(rendered().size(), 12u);
        const float longest = std::fmax(0.5f, time);
        EXPECT_EQ(rendered(1).size(), static_cast<size_t>(longest * 8.0f));
    }
}

// --- selected stretches ------------------------------------------------------------------------

TEST_F(Synth33, StretchInMidPartialFadesInOverOneSegmentAndSoftlyOverACycle) {
    fill_store({even(5)});
    select(0, 1, 3);
    // Frame 12 would be the last one, just behind the buffer.
    expect_samples(rendered(1), {0, 0, 0, 0, 0.25 * 0.25, 0, -0.75 * 0.75, 0, 1, 0, -1, 0});
}

TEST_F(Synth33, StretchFromThePartialsStartHasItsOwnLevelAtOnce) {
    fill_store({even(5)});
    select(0, 0, 2);
    expect_samples(rendered(1), {0.25, 0, -0.75, 0, 1, 0, -1, 0});
}

TEST_F(Synth33, StretchStartsAtThePhaseOfItsFirstPoint) {
    fill_store({even(5)});
    select(0, 0, 2);
    for (int j = 0; j < 5; ++j) {
        parray[0][j].phase = 1.5707964f;
    }
    expect_samples(rendered(1), {0, -0.75, 0, 1, 0, -1, 0, 1});
}

TEST_F(Synth33, FadeOutCoversTheThirdLastSegmentAndJumpsBack) {
    fill_store({even(6)});
    select(0, 1, 4);
    expect_samples(rendered(1),
                   {0, 0, 0, 0, 0.0625, 0, -0.5625, 0, 0.75, 0, -0.25, 0, 1, 0, -1, 0});
}

// It takes a last point for one in the middle.
TEST_F(Synth33, FadeOutComesInAStretchUpToThePartialsEndToo) {
    fill_store({even(5)});
    select(0, 1, 4);
    expect_samples(rendered(1),
                   {0, 0, 0, 0, 0.0625, 0, -0.5625, 0, 0.75, 0, -0.25, 0, 1, 0, -1, 0});
}

TEST_F(Synth33, PointIsReachedOnItsOwnFrame) {
    fill_store({{{0.0f, 2.0f, 0.0f}, {0.5f, 2.0f, -20.0f}, {1.0f, 2.0f, 0.0f}}});
    select(0, 0, 2);
    // At frame 4 the rise starts from 0.1.
    expect_samples(rendered(1), {0.775 * 0.25, 0, -0.325 * 0.75, 0, 0.325, 0, -0.775, 0});
}

TEST_F(Synth33, TwoPointsOnOneFrameAreBridgedInAStretch) {
    fill_store({{{0.0f, 2.0f, 0.0f},
                 {0.25f, 2.0f, 0.0f},
                 {0.3f, 2.0f, 0.0f},
                 {1.0f, 2.0f, -20.0f},
                 {1.25f, 2.0f, -20.0f}}});
    select(0, 0, 4);
    const double rise = 0.1 / 0.75 / 8.0;
    expect_samples(rendered(1),
                   {0.25, 0, -(1 + rise) * 0.75, 0, 1 + 3 * rise, 0, -(1 + 5 * rise), 0, 0.1, 0});
}

TEST_F(Synth33, LastFrameOfAPartialHoldsItsLastPoint) {
    // The second stretch makes the sound long enough for the first one's last frame.
    fill_store({{{0.0f, 2.0f, 0.0f}, {0.5f, 2.0f, 0.0f}, {1.0f, 2.0f, -20.0f}}, even(3, 1.0f)});
    select(0, 0, 2);
    select(1, 1, 2);
    const std::vector<float> samples = rendered(1);
    ASSERT_EQ(samples.size(), 16u);
    EXPECT_NEAR(samples[8], 0.1, 1e-6);
    EXPECT_EQ(samples[9], 0.0f);
}

TEST_F(Synth33, LengthIsThatOfTheLatestSelectedPoint) {
    fill_store({even(5), even(3)});
    select(0, 3, 3); // too short to sound
    select(1, 0, 2);
    const std::vector<float> samples = rendered(1);
    EXPECT_EQ(samples.size(), 12u);
}

TEST_F(Synth33, LoneLastPointIsSilent) {
    fill_store({even(4)});
    select(0, 3, 3);
    expect_samples(rendered(1), std::vector<double>(12, 0.0));
}

TEST_F(Synth33, LonePointAtTheVeryStartSoundsForOneFrame) {
    fill_store({{{0.0f, 2.0f, 0.0f}}, even(3)});
    select(0, 0, 0);
    select(1, 1, 2);
    const std::vector<float> samples = rendered(1);
    ASSERT_EQ(samples.size(), 8u);
    EXPECT_NEAR(samples[0], 0.25, 1e-6);
    EXPECT_EQ(samples[1], 0.0f);
}

TEST_F(Synth33, StretchThatTheCountLeavesOutIsSilent) {
    fill_store({even(4), {{0.0f, 2.0f, 0.0f}, {1.5f, 2.0f, 0.0f}}});
    select(0, 0, 2);
    select(1, 0, 0);
    expect_samples(rendered(1), std::vector<double>(8, 0.0));
}
