// The store at one moment: which segment is taken, what it gives, and the rules of each gesture.
#include "live/moment.h"

#include "live/shared.h"
#include "tests/support/fixture.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <limits>
#include <vector>

namespace {

class Moment : public StoreTest {
  protected:
    void SetUp() override {
        StoreTest::SetUp();
        live_gain = 0.2f;
        candidates.assign(2048, {});
    }
    void TearDown() override {
        numbOfCands = 0;
        StoreTest::TearDown();
    }

    /// Samples with as many oscillators as partials.
    void sample(float time, const MomentRule &rule = start_rule) {
        use_oscillators(partials);
        sample_store(time, rule, candidates.data());
    }

    std::vector<LiveCandidate> candidates;
};

const std::vector<Partial> glide = {{{0.0f, 100.0f, -20.0f}, {1.0f, 200.0f, -40.0f}}};

TEST_F(Moment, BetweenTwoPoints) {
    fill_store(glide);
    sample(0.3f);
    EXPECT_EQ(candidates[0].time, 0.3f);
    EXPECT_EQ(candidates[0].freq, linear_interpolation(0.3f, 1.0f, 0.0f, 200.0f, 100.0f));
    EXPECT_EQ(candidates[0].amp,
              db2amp(linear_interpolation(0.3f, 1.0f, 0.0f, -40.0f, -20.0f)) * 0.2f);
    EXPECT_EQ(candidates[0].status, 1);
    EXPECT_NEAR(candidates[0].freq, 130.0f, 1e-4);
    EXPECT_NEAR(candidates[0].amp, 0.2 * 0.0501187, 1e-6);
}

TEST_F(Moment, TheGainIsTheLiveOne) {
    fill_store(glide);
    live_gain = 1.0f;
    sample(0.0f);
    EXPECT_EQ(candidates[0].amp, db2amp(-20.0f));
}

TEST_F(Moment, OnAPointTheLaterSegmentOnTheLastNone) {
    fill_store({{{0.0f, 100.0f, -6.0f}, {0.5f, 200.0f, -12.0f}, {1.0f, 50.0f, -18.0f}}});
    sample(0.5f);
    EXPECT_EQ(candidates[0].freq, 200.0f);
    EXPECT_EQ(candidates[0].amp, db2amp(-12.0f) * 0.2f);
    sample(1.0f);
    EXPECT_EQ(candidates[0].status, 0);
    EXPECT_EQ(candidates[0].freq, 200.0f) << "the rest stands";
    EXPECT_EQ(candidates[0].time, 0.5f);
}

TEST_F(Moment, OutsideThePartialNothing) {
    fill_store(glide);
    for (const float time : {-0.001f, 1.001f, std::numeric_limits<float>::quiet_NaN()}) {
        candidates[0].status = 1;
        sample(time);
        EXPECT_EQ(candidates[0].status, 0);
    }
}

TEST_F(Moment, ASinglePointNeverSounds) {
    fill_store({{{0.5f, 100.0f, -6.0f}}});
    sample(0.5f);
    EXPECT_EQ(candidates[0].status, 0);
}

TEST_F(Moment, NegativeFrequencyTurnsPositive) {
    fill_store({{{0.0f, -10.0f, -6.0f}, {1.0f, 0.0f, -6.0f}}});
    sample(0.5f);
    EXPECT_EQ(candidates[0].freq, 5.0f);
}

TEST_F(Moment, LimitOfTheFrequency) {
    fill_store({{{0.0f, 21000.0f, -6.0f}, {1.0f, 21000.0f, -6.0f}},
                {{0.0f, 30000.0f, -6.0f}, {1.0f, 30000.0f, -6.0f}},
                {{0.0f, -30000.0f, -6.0f}, {1.0f, -30000.0f, -6.0f}}});
    sample(0.5f, start_rule);
    EXPECT_EQ(candidates[0].freq, 21000.0f);
    EXPECT_EQ(candidates[1].freq, 22050.0f);
    EXPECT_EQ(candidates[2].freq, 22050.0f);
    sample(0.5f, motion_rule);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(candidates[static_cast<size_t>(i)].freq, 20000.0f);
    }
}

TEST_F(Moment, SelectedSegments) {
    fill_store({{{0.0f, 100.0f, -20.0f}, {1.0f, 200.0f, -40.0f}}});
    const struct {
        uint16_t from, to;
        bool sounds, from_edge;
    } rows[] = {{0, 0, false, false}, {1, 0, true, false}, {0, 1, true, true}, {1, 1, true, false},
                {2, 0, false, false}, {0, 2, true, true},  {2, 1, true, false}};
    for (const auto &row : rows) {
        parray[0][0].selected = row.from;
        parray[0][1].selected = row.to;
        for (const MomentRule &rule : {wheel_rule, selected_zone_rule}) {
            sample(0.5f, rule);
            ASSERT_EQ(candidates[0].status, row.sounds ? 1 : 0) << row.from << row.to;
            if (row.sounds) {
                const float level = row.from_edge ? rule.edge_level : -20.0f;
                EXPECT_EQ(candidates[0].amp,
                          db2amp(linear_interpolation(0.5f, 1.0f, 0.0f, -40.0f, level)) * 0.2f);
            }
        }
    }
    EXPECT_EQ(wheel_rule.edge_level, 0.0f);
    EXPECT_EQ(selected_zone_rule.edge_level, -100.0f);
    EXPECT_EQ(wheel_rule.freq_limit, 22050.0f);
    EXPECT_EQ(selected_zone_rule.freq_limit, 22050.0f);
}

TEST_F(Moment, AsManyOscillatorsAsThereCanBe) {
    EXPECT_EQ(use_oscillators(0), 0);
    EXPECT_EQ(use_oscillators(2046), 2046);
    EXPECT_EQ(use_oscillators(2047), 2047);
    EXPECT_EQ(use_oscillators(2048), 2047);
    EXPECT_EQ(use_oscillators(3000), 2047);
    EXPECT_EQ(numbOfCands, 2047);
}

TEST_F(Moment, OfThreeThousandPartialsTheFirst2047Sound) {
    fill_store(std::vector<Partial>(3000, glide[0]));
    sample(0.5f);
    EXPECT_EQ(candidates[2046].status, 1);
    EXPECT_EQ(candidates[2047].status, 0);
}

TEST_F(Moment, OscillatorsWithoutAPartialFallSilent) {
    fill_store({glide[0], glide[0]});
    sample(0.5f);
    fill_store(glide);
    sample_store(0.5f, motion_rule, candidates.data());
    EXPECT_EQ(candidates[0].status, 1);
    EXPECT_EQ(candidates[1].status, 0);
}

TEST_F(Moment, EachPartialAtItsOwnTime) {
    fill_store({glide[0], glide[0]});
    use_oscillators(2);
    const float moments[] = {0.25f, 0.75f};
    sample_store_at(moments, motion_rule, candidates.data());
    EXPECT_EQ(candidates[0].freq, 125.0f);
    EXPECT_EQ(candidates[1].freq, 175.0f);
}

TEST_F(Moment, ThePublishedStoreGivesTheSame) {
    fill_store(small_content());
    sample(0.15f, motion_rule);
    std::vector<LiveCandidate> others(2048);
    const StoreReader reader;
    ASSERT_NE(reader.store(), nullptr);
    sample_published(*reader.store(), 0.15f, motion_rule, others.data());
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(others[i].freq, candidates[i].freq);
        EXPECT_EQ(others[i].amp, candidates[i].amp);
        EXPECT_EQ(others[i].status, candidates[i].status);
    }
}

TEST_F(Moment, TimesThatGoBackTakeTheFirstFit) {
    fill_store({{{0.0f, 100.0f, -6.0f},
                 {0.5f, 100.0f, -6.0f},
                 {0.2f, 300.0f, -6.0f},
                 {1.0f, 300.0f, -6.0f}}});
    sample(0.4f);
    EXPECT_EQ(candidates[0].freq, 100.0f);
    sample(0.6f);
    EXPECT_EQ(candidates[0].freq, 300.0f);
}

} // namespace
