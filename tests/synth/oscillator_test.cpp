// The law of the oscillator over all points of partials, in both forms.
#include "synth/bank.h"
#include "synth/sound.h"
#include "synth/syn.h"
#include "tests/support/rendering.h"

#include <cmath>
#include <limits>

namespace {

class BankLaw : public SynthTest, public testing::WithParamInterface<BankForm> {
  protected:
    void SetUp() override {
        SynthTest::SetUp();
        bank_form = GetParam();
    }
};

INSTANTIATE_TEST_SUITE_P(Forms, BankLaw, testing::Values(BankForm::plain, BankForm::best),
                         [](const auto &info) {
                             return info.param == BankForm::plain ? "plain" : "best";
                         });

Samples stripe(int32_t index, int32_t count, int64_t frames) {
    Samples out(static_cast<size_t>(frames));
    render_stripe(index, count, out.data(), frames);
    return out;
}

float largest(const Samples &samples) {
    float peak = 0.0f;
    for (float sample : samples) {
        peak = std::max(peak, std::fabs(sample));
    }
    return peak;
}

} // namespace

TEST_P(BankLaw, FollowsTheLaw) {
    fill_store(small_content());
    spread_phases();
    EXPECT_TRUE(same_bits(stripe(0, 1, 30870), law_of_all(30870)));
}

TEST_P(BankLaw, FollowsTheLawAtAnotherRate) {
    R = 48000.0;
    fill_store(small_content());
    spread_phases();
    EXPECT_TRUE(same_bits(stripe(0, 1, 33600), law_of_all(33600)));
}

// One segment at 0 dB whose frequency stands still: 441 Hz is a step of 0.0628 a frame.
TEST_P(BankLaw, FirstSamplesByHand) {
    fill_store({{{0.0f, 441.0f, 0.0f}, {1.0f, 441.0f, 0.0f}}});
    const Samples out = stripe(0, 1, 44100);
    double ph = 0.0;
    for (size_t n = 0; n < 49; ++n) {
        ph += 0.0628318548;
        EXPECT_NEAR(out[n], std::sin(ph) * ph / 3.14159265, 1e-5) << n;
    }
    for (size_t n = 51; n < 400; ++n) {
        EXPECT_NEAR(out[n], std::sin(0.0628318548 * static_cast<double>(n + 1)), 2e-4) << n;
    }
}

TEST_P(BankLaw, AmplitudeAndFrequencyMoveBeforeTheSampleIsTaken) {
    fill_store({{{0.0f, 0.0f, 0.0f}, {1.0f, 0.0f, -140.0f}}});
    parray[0][0].phase = parray[0][1].phase = 5.0f;
    const Samples out = stripe(0, 1, 44100);
    const float da = law_slope(0.0f, -140.0f, 1.0f);
    EXPECT_EQ(out[0], sinf(5.0f) * (1.0f + da));
}

TEST_P(BankLaw, PhaseDifferenceBendsTheFrequency) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    const Samples straight = stripe(0, 1, 44100);
    parray[0][1].phase = 3.0f;
    EXPECT_NE(straight, stripe(0, 1, 44100));
    EXPECT_TRUE(same_bits(stripe(0, 1, 44100), law_of_all(44100)));
}

TEST_P(BankLaw, NegativeStartPhaseInvertsTheFirstSamples) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    parray[0][0].phase = parray[0][1].phase = -1.0f;
    const Samples out = stripe(0, 1, 44100);
    EXPECT_GT(out[0], 0.0f); // a sine below zero times a factor below zero
    EXPECT_TRUE(same_bits(out, law_of_all(44100)));
}

TEST_P(BankLaw, SoftStartActsOnTheFirstHalfCycleAlone) {
    fill_store({{{0.0f, 1000.0f, 0.0f}, {1.0f, 1000.0f, 0.0f}}});
    const Samples out = stripe(0, 1, 44100);
    EXPECT_LT(std::fabs(out[5]), 0.3f * std::fabs(sinf(6.0f * 0.142475857f)) + 0.01f);
    EXPECT_GT(largest(Samples(out.begin() + 25, out.begin() + 120)), 0.99f);
    EXPECT_TRUE(same_bits(out, law_of_all(44100)));
}

TEST_P(BankLaw, PhaseCarriesOnOverSegmentsAndIsTakenOnce) {
    fill_store({{{0.0f, 300.0f, -6.0f}, {0.1f, 500.0f, -12.0f}, {0.3f, 100.0f, -3.0f}}});
    const Samples out = stripe(0, 1, 13230);
    spread_phases(); // the later points' phases count in the slopes alone
    EXPECT_TRUE(same_bits(stripe(0, 1, 13230), law_of_all(13230)));
    EXPECT_NE(out, stripe(0, 1, 13230));
}

TEST_P(BankLaw, NoPointsAndOnePointGiveNoSamples) {
    fill_store({{}, {{0.1f, 440.0f, 0.0f}}});
    EXPECT_EQ(largest(stripe(0, 1, 44100)), 0.0f);
}

TEST_P(BankLaw, NothingIsReadBehindTheLastPoint) {
    // The records stand in arrays of their own: the address sanitizer watches their ends.
    fill_store({{{0.0f, 440.0f, 0.0f}, {0.5f, 440.0f, 0.0f}}, {{0.2f, 1.0f, 0.0f}}});
    select_points({"11", "1"});
    Samples out(44100);
    render_selected_stripe(0, 1, true, out.data(), 44100);
    EXPECT_TRUE(same_bits(stripe(0, 1, 44100), law_of_all(44100)));
}

TEST_P(BankLaw, SegmentsShorterThanAFrameAreSkipped) {
    const float t = 1000.1f / 44100.0f;
    fill_store({{{0.0f, 440.0f, -3.0f},
                 {t, 900.0f, 0.0f},
                 {t + 2e-6f, 90.0f, -50.0f},
                 {t + 4e-6f, 700.0f, -9.0f},
                 {0.1f, 440.0f, -20.0f}}});
    spread_phases();
    const Samples out = stripe(0, 1, 4410);
    EXPECT_TRUE(same_bits(out, law_of_all(4410)));
    EXPECT_GT(std::fabs(out[1010]), 0.0f);
}

TEST_P(BankLaw, EqualTimesHaveNoFramesAndNoInfinity) {
    fill_store({{{0.0f, 440.0f, -3.0f},
                 {0.1f, 500.0f, -3.0f},
                 {0.1f, 900.0f, -30.0f},
                 {0.1f, 900.0f, -30.0f},
                 {0.2f, 440.0f, -3.0f},
                 {0.2f, 440.0f, -3.0f}}});
    const Samples out = stripe(0, 1, 8820);
    EXPECT_TRUE(std::isfinite(largest(out)));
    EXPECT_GT(largest(out), 0.1f);
    EXPECT_TRUE(same_bits(out, law_of_all(8820)));
}

TEST_P(BankLaw, StartsAtItsTimeWhateverTheSoundsStart) {
    fill_store({{{3.0f, 440.0f, 0.0f}, {3.5f, 440.0f, 0.0f}}});
    ASSERT_EQ(sndstart, 3.0f);
    const Samples out = stripe(0, 1, 154350);
    EXPECT_EQ(largest(Samples(out.begin(), out.begin() + 132300)), 0.0f);
    EXPECT_NE(out[132300], 0.0f);
}

TEST_P(BankLaw, NothingIsWrittenBehindTheBuffer) {
    fill_awkward_store(3, 60, 1.0f);
    for (const int64_t frames : {int64_t{0}, int64_t{1}, int64_t{255}, int64_t{10001}}) {
        Samples guarded(static_cast<size_t>(frames) + 600, 9.0f);
        std::fill_n(guarded.begin(), frames, 0.0f);
        render_stripe(0, 1, guarded.data(), frames);
        Samples selected = guarded;
        render_selected_stripe(0, 1, true, selected.data(), frames);
        for (size_t n = static_cast<size_t>(frames); n < guarded.size(); ++n) {
            ASSERT_EQ(guarded[n], 9.0f);
            ASSERT_EQ(selected[n], 9.0f);
        }
    }
}

TEST_P(BankLaw, ShorterBuffersHoldTheHeadOfTheSound) {
    fill_store(small_content());
    spread_phases();
    const Samples whole = stripe(0, 1, 30870);
    EXPECT_TRUE(same_bits(stripe(0, 1, 9001), Samples(whole.begin(), whole.begin() + 9001)));
}

// The partial is done where it reaches the time of its last point, heard or not: what goes back
// in time behind that is not rendered.
TEST_P(BankLaw, APartialThatGoesBackInTimeEndsAtItsEndInShorterBuffersToo) {
    fill_store(
        {{{0.0f, 440.0f, 0.0f}, {1.0f, 440.0f, 0.0f}, {0.01f, 90.0f, 0.0f}, {0.5f, 99.0f, 0.0f}}});
    const Samples whole = stripe(0, 1, 22050);
    EXPECT_TRUE(same_bits(stripe(0, 1, 11025), Samples(whole.begin(), whole.begin() + 11025)));
    parray[0][2].time = 0.7f;
    EXPECT_TRUE(same_bits(stripe(0, 1, 22050), whole));
}

TEST_P(BankLaw, TimesOutOfRangeAreBounded) {
    const float huge = std::numeric_limits<float>::max();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float last : {huge, std::numeric_limits<float>::infinity()}) {
        fill_store({{{0.0f, 440.0f, 0.0f}, {1.0f, 440.0f, 0.0f}}});
        parray[0][1].time = last;
        EXPECT_GT(largest(stripe(0, 1, 44100)), 0.9f);
    }
    for (const float first : {-1.0f, -huge}) { // no frame lies before the sound
        fill_store({{{0.0f, 440.0f, 0.0f}, {1.0f, 440.0f, 0.0f}}});
        parray[0][0].time = first;
        EXPECT_GT(largest(stripe(0, 1, 44100)), 0.9f);
    }
    fill_store({{{0.0f, 440.0f, 0.0f}, {1.0f, 440.0f, 0.0f}}});
    parray[0][1].time = nan;
    select_points({"11"});
    Samples selected(44100);
    render_selected_stripe(0, 1, true, selected.data(), 44100);
    EXPECT_EQ(largest(stripe(0, 1, 44100)), 0.0f);
    EXPECT_EQ(largest(selected), 0.0f);
}

TEST_P(BankLaw, StripesTakeEveryCountthPartial) {
    std::vector<Partial> content;
    for (int32_t p = 0; p < 10; ++p) {
        const float t = 0.1f * static_cast<float>(p);
        content.push_back({{t, 1000.0f, 0.0f}, {t + 0.09f, 1000.0f, 0.0f}});
    }
    fill_store(content);
    const std::vector<std::vector<int32_t>> members = {{0, 4, 8}, {1, 5, 9}, {2, 6}, {3, 7}};
    for (int32_t k = 0; k < 4; ++k) {
        const Samples out = stripe(k, 4, 44100);
        std::vector<int32_t> heard;
        for (int32_t p = 0; p < 10; ++p) {
            const auto from = out.begin() + 4410 * p;
            if (largest(Samples(from, from + 4400)) > 0.0f) {
                heard.push_back(p);
            }
        }
        EXPECT_EQ(heard, members[static_cast<size_t>(k)]);
    }
    EXPECT_EQ(largest(stripe(10, 11, 44100)), 0.0f);
    EXPECT_EQ(largest(stripe(2000000000, 2000000001, 44100)), 0.0f);
}

TEST_P(BankLaw, WrapIsTestedOnceAFrame) {
    // 60 kHz turns by more than 2 pi a frame: the phase runs away.
    fill_store({{{0.0f, 60000.0f, 0.0f}, {0.5f, 60000.0f, 0.0f}}});
    EXPECT_TRUE(same_bits(stripe(0, 1, 22050), law_of_all(22050)));
}
