// Frequencies and intervals upside down.

#include "edit/mirror.h"

#include "tests/edit/edit_support.h"

namespace {

using MirrorFrequency = StoreTest;
using MirrorPitch = StoreTest;

/// A range of 100 to 1000 Hz, with points to mirror in between.
void fill_range() {
    fill_store({{{0.0f, 100.0f, 0.0f}, {0.1f, 250.0f, 0.0f}, {0.2f, 400.0f, 0.0f}},
                {{0.0f, 700.0f, 0.0f}, {0.1f, 1000.0f, 0.0f}}});
    ASSERT_EQ(minfreq, 100.0f);
    ASSERT_EQ(maxfreq, 1000.0f);
}

std::string at(float freq) {
    return printed([freq] { mirror3d(freq); });
}

std::string pitch_at(float freq) {
    return printed([freq] { mirror_pitch(freq); });
}

} // namespace

TEST_F(MirrorFrequency, LaysEachBandOntoTheOther) {
    fill_range();
    flag_everything();
    EXPECT_EQ(at(400.0f), "Mirroring frequencies @400.000000\n");
    EXPECT_EQ(parray[0][0].freq, 1000.0f); // the lowest becomes the highest
    EXPECT_EQ(parray[0][1].freq, 700.0f);
    EXPECT_EQ(parray[0][2].freq, 400.0f); // at the mirror
    EXPECT_EQ(parray[1][0].freq, 250.0f);
    EXPECT_EQ(parray[1][1].freq, 100.0f); // and the other way about
}

TEST_F(MirrorFrequency, OnlySelectedPointsChange) {
    fill_range();
    flag(1, 0, 0);
    Points expected = all_points();
    expected[1][0].freq = 250.0f;
    at(400.0f);
    expect_points(expected);
    EXPECT_EQ(minfreq, 100.0f);
    EXPECT_EQ(maxfreq, 1000.0f);
}

TEST_F(MirrorFrequency, MatchesItsFormulaOnEveryPoint) {
    for (const float mirror : {123.4f, 333.3f, 612.7f, 899.9f}) {
        fill_with_runs();
        Points expected = all_points();
        const float up = maxfreq - mirror;
        const float down = mirror - minfreq;
        for_flagged(expected, [=](Breakpoint &point) {
            if (point.freq >= mirror) {
                const float scale = down / up;
                const float above = (maxfreq - point.freq) * scale;
                point.freq = above + minfreq;
            } else {
                const float scale = up / down;
                const float below = (point.freq - minfreq) * scale;
                point.freq = maxfreq - below;
            }
        });
        at(mirror);
        expect_points(expected);
    }
}

TEST_F(MirrorFrequency, AMirrorAtOrBelowTheLowestMovesABitAboveIt) {
    for (const float freq : {100.0f, 99.0f, 1e-30f, -5.0f, -inf_f}) {
        fill_range();
        flag(1, 1, 1);
        EXPECT_EQ(at(freq), "Closest acceptable mirror frequency = 105.000000 (Hz)\n"
                            "Mirroring frequencies @105.000000\n");
        EXPECT_EQ(parray[1][1].freq, 100.0f);
    }
}

TEST_F(MirrorFrequency, AMirrorAtOrAboveTheHighestMovesABitBelowIt) {
    for (const float freq : {1000.0f, 1001.0f, 3e38f, inf_f}) {
        fill_range();
        flag(0, 0, 0);
        EXPECT_EQ(at(freq), "Closest acceptable mirror frequency = 950.000000 (Hz)\n"
                            "Mirroring frequencies @950.000000\n");
        EXPECT_EQ(parray[0][0].freq, 1000.0f);
    }
}

TEST_F(MirrorFrequency, TheFactorsWorkInDoublePrecision) {
    // In single precision 333 * 1.05 would come out otherwise.
    fill_store({{{0.0f, 333.0f, 0.0f}, {0.1f, 40000.0f, 0.0f}}});
    bool low_differs = false;
    bool high_differs = false;
    for (int32_t k = 0; k < 50; ++k) {
        minfreq = 333.0f + static_cast<float>(k) * 1.7f;
        maxfreq = 3333.0f + static_cast<float>(k) * 1.7f;
        const float low = static_cast<float>(static_cast<double>(minfreq) * 1.05);
        const float high = static_cast<float>(static_cast<double>(maxfreq) * 0.95);
        low_differs = low_differs || low != minfreq * 1.05f;
        high_differs = high_differs || high != maxfreq * 0.95f;
        // Selected points at the mirror stay there only with that very mirror.
        parray[0][0] = {0.0f, low, 0.0f, 0.0f, 0.0f, 1, 1, 0.0f};
        pitch_at(1.0f);
        EXPECT_EQ(parray[0][0].freq, low);
        parray[0][0].freq = high;
        pitch_at(50000.0f);
        EXPECT_EQ(parray[0][0].freq, high);
    }
    EXPECT_TRUE(low_differs);
    EXPECT_TRUE(high_differs);
}

TEST_F(MirrorFrequency, ANarrowRangeFallsBackToTheHighest) {
    // 1.05 times the lowest is beyond the highest, so 0.95 times the highest serves.
    fill_store({{{0.0f, 100.0f, 0.0f}, {0.1f, 104.0f, 0.0f}}});
    flag_everything();
    const float mirror = static_cast<float>(104.0 * 0.95);
    EXPECT_EQ(at(50.0f), "Closest acceptable mirror frequency = 98.800003 (Hz)\n"
                         "Mirroring frequencies @98.800003\n");
    const float scale = (mirror - 100.0f) / (104.0f - mirror);
    EXPECT_EQ(parray[0][0].freq, (104.0f - 100.0f) * scale + 100.0f);
    EXPECT_EQ(parray[0][1].freq, 100.0f);
}

TEST_F(MirrorFrequency, ALowestThatReachesTheHighestExactlyFallsBackToo) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {0.1f, 105.0f, 0.0f}}});
    EXPECT_EQ(at(100.0f), "Closest acceptable mirror frequency = 99.750000 (Hz)\n"
                          "Mirroring frequencies @99.750000\n");
}

TEST_F(MirrorFrequency, ARangeOfOneFrequencyFollowsTheArithmetic) {
    fill_store({{{0.0f, 400.0f, 0.0f}}});
    flag(0, 0, 0);
    EXPECT_EQ(at(400.0f), "Closest acceptable mirror frequency = 380.000000 (Hz)\n"
                          "Mirroring frequencies @380.000000\n");
    EXPECT_EQ(parray[0][0].freq, 400.0f);
    finish_pitch();
}

TEST_F(MirrorFrequency, ABandOfNoHeightIsNotGuarded) {
    fill_store({{{0.0f, 0.0f, 0.0f}, {0.1f, 100.0f, 0.0f}, {0.2f, 0.0f, 0.0f}}});
    flag_everything();
    ASSERT_EQ(minfreq, 0.0f);
    EXPECT_EQ(at(-1.0f), "Closest acceptable mirror frequency = 0.000000 (Hz)\n"
                         "Mirroring frequencies @0.000000\n");
    EXPECT_EQ(parray[0][1].freq, 0.0f);
    EXPECT_EQ(parray[0][0].freq, 0.0f);
    finish_pitch();
}

TEST_F(MirrorFrequency, ARequestThatIsNoNumberCountsAsTooLow) {
    fill_range();
    flag(1, 1, 1);
    EXPECT_EQ(at(nan_f), "Closest acceptable mirror frequency = 105.000000 (Hz)\n"
                         "Mirroring frequencies @105.000000\n");
}

TEST_F(MirrorFrequency, NothingSelectedChangesNothingButSpeaks) {
    fill_range();
    const Points before = all_points();
    EXPECT_EQ(at(400.0f), "Mirroring frequencies @400.000000\n");
    EXPECT_EQ(pitch_at(400.0f), "Mirroring pitch intervals @400.000000\n");
    expect_points(before);
}

TEST_F(MirrorPitch, AnOctaveAboveBecomesAnOctaveBelow) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {0.1f, 880.0f, 0.0f}, {0.2f, 1000.0f, 0.0f}}});
    flag(0, 1, 1);
    EXPECT_EQ(pitch_at(440.0f), "Mirroring pitch intervals @440.000000\n");
    EXPECT_EQ(parray[0][1].freq, 220.0f);
}

TEST_F(MirrorPitch, MatchesItsFormulaOnEveryPoint) {
    for (const float mirror : {123.4f, 333.3f, 612.7f, 899.9f}) {
        fill_with_runs();
        Points expected = all_points();
        for_flagged(expected, [mirror](Breakpoint &point) {
            const float interval = point.freq / mirror;
            const float inverse = 1.0f / interval;
            point.freq = inverse * mirror;
        });
        pitch_at(mirror);
        expect_points(expected);
    }
}

TEST_F(MirrorPitch, ResultsMayLeaveTheRangeUntilTheRefresh) {
    fill_range();
    flag(0, 0, 0);
    pitch_at(400.0f);
    EXPECT_EQ(parray[0][0].freq, 1600.0f);
    EXPECT_EQ(maxfreq, 1000.0f);
    finish_pitch();
    EXPECT_EQ(maxfreq, 1600.0f);
    EXPECT_EQ(minfreq, 250.0f);
}

TEST_F(MirrorPitch, TheMirrorIsHeldInsideTheRange) {
    fill_range();
    EXPECT_EQ(pitch_at(5000.0f), "Closest acceptable mirror frequency = 950.000000 (Hz)\n"
                                 "Mirroring pitch intervals @950.000000\n");
    EXPECT_EQ(pitch_at(5.0f), "Closest acceptable mirror frequency = 105.000000 (Hz)\n"
                              "Mirroring pitch intervals @105.000000\n");
}

TEST_F(MirrorPitch, SilentFrequenciesFollowTheArithmetic) {
    fill_range();
    parray[0][0].freq = 0.0f;
    parray[0][1].freq = nan_f;
    flag(0, 0, 1);
    pitch_at(400.0f);
    EXPECT_EQ(parray[0][0].freq, inf_f);
    EXPECT_TRUE(std::isnan(parray[0][1].freq));
    finish_pitch();
}

TEST_F(MirrorPitch, AnEmptyStoreHasOnlyTheMessages) {
    minfreq = 100.0f;
    maxfreq = 1000.0f;
    EXPECT_EQ(pitch_at(400.0f), "Mirroring pitch intervals @400.000000\n");
    EXPECT_EQ(at(400.0f), "Mirroring frequencies @400.000000\n");
}
