// Selected stretches: where they start and end, and how they fade.
#include "synth/bank.h"
#include "synth/sound.h"
#include "tests/support/rendering.h"
#include "toolbox/auxmath3d.h"

#include <cmath>

namespace {

class Stretches : public SynthTest, public testing::WithParamInterface<BankForm> {
  protected:
    void SetUp() override {
        SynthTest::SetUp();
        bank_form = GetParam();
    }
};

INSTANTIATE_TEST_SUITE_P(Forms, Stretches, testing::Values(BankForm::plain, BankForm::best),
                         [](const auto &info) {
                             return info.param == BankForm::plain ? "plain" : "best";
                         });

constexpr size_t tenth = 4410; // frames from point to point

/// Six points each 0.1 s.
Partial six_points(float start, float freq, float amp) {
    Partial partial;
    for (int32_t i = 0; i < 6; ++i) {
        const float x = static_cast<float>(i);
        partial.push_back({start + 0.1f * x, freq + 10.0f * x, amp - 2.0f * x});
    }
    return partial;
}

Samples rendered(bool look_behind = true, size_t frames = 26460) {
    Samples out(frames);
    render_selected_stripe(0, 1, look_behind, out.data(), static_cast<int64_t>(frames));
    return out;
}

/// The slopes of a segment that starts from or runs down to silence.
float fade_in(int32_t p, int32_t i) {
    const Breakpoint *at = parray[p] + i;
    return (db2amp(at[1].amp) / (at[1].time - at[0].time)) / 44100.0f;
}
float fade_out(int32_t p, int32_t i) {
    const Breakpoint *at = parray[p] + i;
    return ((0.0f - db2amp(at[0].amp)) / (at[1].time - at[0].time)) / 44100.0f;
}
float straight(int32_t p, int32_t i) {
    const Breakpoint *at = parray[p] + i;
    return law_slope(at[0].amp, at[1].amp, at[1].time - at[0].time);
}

/// Adds segment i from its own level.
void add_straight(int32_t i, float &ph, Samples &out) {
    add_law_segment(0, i, db2amp(parray[0][i].amp), straight(0, i), ph, out);
}

float largest(const Samples &samples, size_t from, size_t to) {
    float peak = 0.0f;
    for (size_t n = from; n < to; ++n) {
        peak = std::max(peak, std::fabs(samples[n]));
    }
    return peak;
}

} // namespace

TEST_P(Stretches, AllPointsSelectedAreTheWholePartial) {
    fill_store({six_points(0.0f, 300.0f, -3.0f)});
    spread_phases();
    select_points({"111111"});
    EXPECT_TRUE(same_bits(rendered(), law_of_all(26460)));
}

TEST_P(Stretches, NothingSelectedIsSilence) {
    fill_store({six_points(0.0f, 300.0f, -3.0f)});
    EXPECT_EQ(largest(rendered(), 0, 26460), 0.0f);
}

TEST_P(Stretches, AStretchInsideFadesAtBothEdges) {
    fill_store({six_points(0.0f, 300.0f, -3.0f)});
    spread_phases();
    select_points({"011100"});
    Samples expected(26460);
    float ph = parray[0][1].phase; // the stretch starts at its analysed phase
    add_law_segment(0, 1, 0.0f, fade_in(0, 1), ph, expected);
    add_straight(2, ph, expected);
    add_law_segment(0, 3, db2amp(parray[0][3].amp), fade_out(0, 3), ph, expected);
    const Samples out = rendered();
    EXPECT_TRUE(same_bits(out, expected));
    EXPECT_EQ(largest(out, 0, tenth), 0.0f);
    EXPECT_EQ(largest(out, 4 * tenth + 1, 26460), 0.0f);
}

TEST_P(Stretches, ASinglePointIsARampDownFromSilence) {
    fill_store({six_points(0.0f, 300.0f, -3.0f)});
    spread_phases();
    select_points({"001000"});
    Samples expected(26460);
    float ph = parray[0][2].phase;
    add_law_segment(0, 2, 0.0f, fade_out(0, 2), ph, expected);
    const Samples out = rendered();
    EXPECT_TRUE(same_bits(out, expected));
    EXPECT_GT(largest(out, 0, 26460), 0.4f);
}

TEST_P(Stretches, EachStretchStartsAtItsOwnPhase) {
    fill_store({six_points(0.0f, 300.0f, -3.0f)});
    spread_phases();
    select_points({"110011"});
    Samples expected(26460);
    float ph = parray[0][0].phase;
    add_straight(0, ph, expected);
    add_law_segment(0, 1, db2amp(parray[0][1].amp), fade_out(0, 1), ph, expected);
    ph = parray[0][4].phase;
    add_law_segment(0, 4, 0.0f, fade_in(0, 4), ph, expected);
    EXPECT_TRUE(same_bits(rendered(), expected));
}

// The fade-in that the end of a stretch makes due waits for the next partial of the worker.
TEST_P(Stretches, TheFadeOutlivesThePartial) {
    fill_store({six_points(0.0f, 300.0f, -3.0f), six_points(0.0f, 700.0f, -3.0f)});
    spread_phases();
    select_points({"110000", "111111"});
    Samples expected(26460);
    float ph = parray[0][0].phase;
    add_straight(0, ph, expected);
    add_law_segment(0, 1, db2amp(parray[0][1].amp), fade_out(0, 1), ph, expected);
    ph = parray[1][0].phase;
    add_law_segment(1, 0, 0.0f, fade_in(1, 0), ph, expected);
    for (int32_t i = 1; i < 5; ++i) {
        add_law_segment(1, i, db2amp(parray[1][i].amp), straight(1, i), ph, expected);
    }
    EXPECT_TRUE(same_bits(rendered(), expected));
}

TEST_P(Stretches, AnotherWorkerHasAFadeOfItsOwn) {
    fill_store({six_points(0.0f, 300.0f, -3.0f), six_points(0.0f, 700.0f, -3.0f)});
    spread_phases();
    select_points({"110000", "111111"});
    Samples out(26460), expected(26460);
    render_selected_stripe(1, 2, true, out.data(), 26460);
    float ph = parray[1][0].phase;
    for (int32_t i = 0; i < 5; ++i) {
        add_law_segment(1, i, db2amp(parray[1][i].amp), straight(1, i), ph, expected);
    }
    EXPECT_TRUE(same_bits(out, expected));
}

// A selected last point uses up a fade that is due.
TEST_P(Stretches, ALonelyLastPointIsSilentAndUsesUpTheFade) {
    fill_store({six_points(0.0f, 300.0f, -3.0f), six_points(0.0f, 700.0f, -3.0f)});
    spread_phases();
    select_points({"110001", "111111"});
    Samples expected(26460);
    float ph = parray[0][0].phase;
    add_straight(0, ph, expected);
    add_law_segment(0, 1, db2amp(parray[0][1].amp), fade_out(0, 1), ph, expected);
    ph = parray[1][0].phase;
    for (int32_t i = 0; i < 5; ++i) {
        add_law_segment(1, i, db2amp(parray[1][i].amp), straight(1, i), ph, expected);
    }
    EXPECT_TRUE(same_bits(rendered(), expected));
}

TEST_P(Stretches, WithoutTheLookBehindOnlyAnEndedStretchMakesTheNextFadeIn) {
    fill_store({six_points(0.0f, 300.0f, -3.0f)});
    spread_phases();
    select_points({"011011"});
    Samples expected(26460);
    float ph = parray[0][1].phase;
    add_straight(1, ph, expected); // follows an unselected point, but starts at its level
    add_law_segment(0, 2, db2amp(parray[0][2].amp), fade_out(0, 2), ph, expected);
    ph = parray[0][4].phase;
    add_law_segment(0, 4, 0.0f, fade_in(0, 4), ph, expected);
    EXPECT_TRUE(same_bits(rendered(false), expected));
}

// A point whose flag is neither 0 nor 1 does not end the stretch: the old slopes run on.
TEST_P(Stretches, AnyOtherFlagLetsTheOldSlopesRunOn) {
    fill_store({six_points(0.0f, 300.0f, -3.0f)});
    select_points({"121111"});
    const Samples out = rendered();
    parray[0][0].amp = -3.0f;
    // Over two tenths the slopes of the first; frame by frame as a segment twice as long.
    Samples expected(26460);
    Breakpoint second = parray[0][1];
    const float da = straight(0, 0);
    const float df =
        ((second.freq - parray[0][0].freq) / (second.time - parray[0][0].time)) / 44100.0f;
    float a = db2amp(-3.0f), f = 300.0f, ph = 0.0f;
    for (size_t n = 0; n < 2 * tenth; ++n) {
        a += da;
        f += df;
        ph += f * static_cast<float>(6.2831854820251465 / 44100.0);
        if (ph > 12.566371f) {
            ph = static_cast<float>(static_cast<double>(ph) - 6.283185307179586);
        }
        expected[n] = sinf(ph) * a * (ph <= 3.1415927f ? ph / 3.1415927f : 1.0f);
    }
    EXPECT_TRUE(same_bits(Samples(out.begin(), out.begin() + 2 * tenth - 1),
                          Samples(expected.begin(), expected.begin() + 2 * tenth - 1)));
}

TEST_P(Stretches, OnlyAnUnselectedPointBeforeAStretchMakesItFadeIn) {
    fill_store({six_points(0.0f, 300.0f, -3.0f)});
    spread_phases();
    select_points({"211111"});
    Samples expected(26460);
    float ph = parray[0][1].phase;
    for (int32_t i = 1; i < 5; ++i) {
        add_straight(i, ph, expected);
    }
    EXPECT_TRUE(same_bits(rendered(), expected));
}

// The partial is done where it reaches the time of its last point: what goes back in time behind
// that is not rendered.
TEST_P(Stretches, APartialThatGoesBackInTimeEndsAtItsEnd) {
    fill_store(
        {{{0.0f, 440.0f, 0.0f}, {1.0f, 440.0f, 0.0f}, {0.01f, 90.0f, 0.0f}, {0.5f, 99.0f, 0.0f}}});
    select_points({"1111"});
    const Samples out = rendered();
    parray[0][2].time = 0.7f;
    EXPECT_TRUE(same_bits(rendered(), out));
    EXPECT_GT(largest(out, 0, 22050), 0.9f);
    EXPECT_EQ(largest(out, 22050, 26460), 0.0f);
}
