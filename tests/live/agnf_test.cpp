// The working generators as their units see them: the sine table, the envelope by state, the
// lines over a block, the zone's clock and gain.
#include "live/agnf.h"

#include "live/requests.h"
#include "live/shared.h"
#include "store/settings.h"
#include "synth/sound.h"
#include "tests/support/console.h"
#include "tests/support/live_play.h"
#include "tests/support/rendering.h"

#include <cmath>
#include <limits>

namespace {

/// The table's entry of a phase, times an amplitude.
float sample(int64_t phase, float amp) {
    return Sin[phase % 44100] * amp;
}

class Generators : public LivePlayTest {
  protected:
    void SetUp() override {
        LivePlayTest::SetUp();
        fill_store(small_content()); // ends at 0.7 s
        numbOfCands = 1;
        zgen.time = -100.0f; // far from the end
    }

    /// The generator sounds one steady oscillator.
    static void sustain(LiveGenerator &generator, float freq, float amp) {
        set_candidate(&generator == &wgen ? pcandidates[0] : qcandidates[0], freq, amp);
        generator.freq_now[0] = freq;
        generator.amp_now[0] = amp;
        generator.state = 2;
    }
};

/// Positive zero crossings.
int cycles(const std::vector<float> &sound) {
    int count = 0;
    for (size_t k = 1; k < sound.size(); ++k) {
        count += sound[k - 1] < 0.0f && sound[k] >= 0.0f ? 1 : 0;
    }
    return count;
}

TEST_F(Generators, SineTable) {
    EXPECT_EQ(makeSin(48000), Sin);
    for (const int i : {0, 1, 12000, 24000, 36000, 47999}) {
        EXPECT_EQ(Sin[i], std::sin(static_cast<float>(i * 6.283185307179586 / 48000)));
    }
    EXPECT_EQ(Sin[0], 0.0f);
    EXPECT_EQ(Sin[12000], 1.0f);
}

TEST_F(Generators, CreationReadiesTheRecords) {
    EXPECT_EQ(R, 44100.0);
    EXPECT_EQ(sampleRate, 44100.0);
    EXPECT_EQ(unit_of(wgen).callback.procedure, AdditiveNFRenderProc);
    EXPECT_EQ(unit_of(zgen).callback.procedure, AdditiveNFRenderProc1);
    EXPECT_EQ(unit_of(wgen).callback.context, &wgen);
    for (const LiveGenerator *generator : {&wgen, &zgen}) {
        EXPECT_EQ(generator->radians_per_hz, static_cast<float>(6.2831854820251465 / 44100.0));
        EXPECT_EQ(generator->playing, 0);
        EXPECT_EQ(generator->state, 0);
        EXPECT_EQ(generator->phase[2047], 0);
        EXPECT_EQ(generator->on[2047], 0);
    }
    EXPECT_EQ(zgen.floatmax, 1.0f);
    EXPECT_EQ(wgen.floatmax, 0.0f);
}

TEST_F(Generators, SecondCreationKeepsTheArraysAndSetsTheZoneBack) {
    float *before = zgen.amp_now;
    zgen.events = 3;
    zgen.select = 1;
    zgen.floatmax = 0.5f;
    output().rate = 48000.0;
    createAdditiveNFToneUnit1(&zgen);
    EXPECT_EQ(zgen.amp_now, before);
    EXPECT_EQ(zgen.events, 0);
    EXPECT_EQ(zgen.select, 0);
    EXPECT_EQ(zgen.floatmax, 1.0f);
    EXPECT_EQ(R, 48000.0);
}

TEST_F(Generators, EnvelopeAndNextStateOfEachState) {
    const float inv = 1.0f / 512.0f;
    for (LiveGenerator *generator : {&wgen, &zgen}) {
        for (const int32_t state : {0, 1, 2, 3}) {
            sustain(*generator, 440.0f, 0.25f);
            generator->phase[0] = 0;
            generator->state = state;
            const std::vector<float> out = block_of(*generator);
            for (uint32_t n = 0; n < 512; ++n) {
                const float k = static_cast<float>(n);
                const float envelope[] = {0.0f, k * inv, 1.0f, 1.0f - k * inv};
                ASSERT_EQ(out[n], sample(440 * (n + 1), 0.25f) * envelope[state]);
            }
            const int32_t next[] = {0, 2, 2, 0};
            EXPECT_EQ(generator->state, next[state]);
        }
    }
}

TEST_F(Generators, AStartBeginsWithASilentSample) {
    for (const float freq : {11025.0f, 440.0f, 22050.0f}) {
        sustain(wgen, freq, 1.0f);
        wgen.phase[0] = 11025 - 440;
        wgen.state = 1;
        EXPECT_EQ(block_of(wgen)[0], 0.0f);
    }
}

TEST_F(Generators, FrequenciesAreWholeHertz) {
    sustain(wgen, 440.7f, 1.0f);
    std::vector<float> second;
    for (int n = 0; n < 44100; n += 512) {
        const std::vector<float> block = block_of(wgen);
        second.insert(second.end(), block.begin(), block.end());
    }
    second.resize(44101);
    EXPECT_EQ(cycles(second), 440);
    EXPECT_EQ(second[44099], sample(440 * 44100, 1.0f));
}

TEST_F(Generators, ARampOfOneHertzStaysBelowItsEnd) {
    sustain(wgen, 100.0f, 1.0f);
    wgen.phase[0] = 0;
    pcandidates[0].freq = 101.0f;
    block_of(wgen);
    EXPECT_EQ(wgen.phase[0], 512 * 100 - 44100);
    block_of(wgen);
    EXPECT_EQ(wgen.phase[0], 512 * 201 - 2 * 44100);
}

TEST_F(Generators, ASilencedCandidateFadesAndItsFrequencyFollows) {
    sustain(wgen, 440.0f, 0.5f);
    set_candidate(pcandidates[0], 880.0f, 0.9f, 0);
    const std::vector<float> out = block_of(wgen);
    int64_t phase = 0;
    for (uint32_t n = 0; n < 512; ++n) {
        const float k = static_cast<float>(n);
        phase += static_cast<int32_t>(440.0f * (1.0f / 512.0f) * k + 440.0f);
        ASSERT_EQ(out[n], sample(phase, -0.5f * (1.0f / 512.0f) * k + 0.5f));
    }
    EXPECT_EQ(wgen.on[0], 0);
    EXPECT_EQ(wgen.amp_target[0], 0.0f);
    EXPECT_EQ(wgen.amp_now[0], 0.0f);
    EXPECT_EQ(wgen.freq_now[0], 880.0f);
    const int32_t before = wgen.phase[0];
    for (const float silent : block_of(wgen)) {
        EXPECT_EQ(silent, 0.0f);
    }
    EXPECT_EQ(wgen.phase[0], (before + 512 * 880) % 44100) << "the phase runs on";
}

TEST_F(Generators, NoOscillatorsAreSilenceAndTheStateMovesOn) {
    for (const int32_t count : {0, -5}) {
        numbOfCands = count;
        wgen.state = 1;
        EXPECT_EQ(block_of(wgen), std::vector<float>(512, 0.0f));
        EXPECT_EQ(wgen.state, 2);
        wgen.state = 3;
        block_of(wgen);
        EXPECT_EQ(wgen.state, 0);
    }
}

TEST_F(Generators, AnEmptyBlockMovesTheStateOn) {
    sustain(wgen, 440.0f, 0.5f);
    wgen.state = 1;
    wgen.position = 7.0;
    EXPECT_TRUE(block_of(wgen, 0).empty());
    EXPECT_EQ(wgen.state, 2);
    EXPECT_EQ(wgen.position, 7.0);
    EXPECT_EQ(wgen.freq_now[0], 440.0f);
}

TEST_F(Generators, PhaseAtExactlyTheRateStays) {
    sustain(wgen, 100.0f, 0.5f);
    wgen.phase[0] = 44100 - 512 * 100 + 44100;
    block_of(wgen);
    EXPECT_EQ(wgen.phase[0], 0) << "twice the rate";
    wgen.phase[0] = 44100 - 100 * 2;
    block_of(wgen, 2);
    EXPECT_EQ(wgen.phase[0], 44100);
}

TEST_F(Generators, PositionStaysBelowASecond) {
    wgen.position = 44000.25;
    block_of(wgen);
    EXPECT_EQ(wgen.position, 412.25);
    wgen.position = 44100.0 - 512.0;
    block_of(wgen);
    EXPECT_EQ(wgen.position, 44100.0) << "not above the rate";
}

TEST_F(Generators, OnlyTheScrubTellsOddBlocks) {
    block_of(wgen, 512);
    block_of(wgen, 511);
    block_of(zgen, 64);
    block_of(wgen, 0);
    EXPECT_EQ(printed(serve_requests), "INNF = 511\nINNF = 0\n");
}

TEST_F(Generators, LongBlocksAreSplit) {
    sustain(wgen, 440.0f, 0.5f);
    wgen.state = 1;
    const std::vector<float> out = block_of(wgen, 4096);
    EXPECT_EQ(out[0], 0.0f);
    EXPECT_EQ(out[1024], sample(440 * 1025, 0.5f) * 0.5f);
    EXPECT_EQ(out[3000], sample(440 * 3001, 0.5f));
    EXPECT_EQ(printed(serve_requests), "INNF = 2048\nINNF = 2048\n");
}

TEST_F(Generators, TheZoneHasAGain) {
    sustain(zgen, 440.0f, 0.25f);
    zgen.floatmax = 3.0f;
    const float inv = 1.0f / 512.0f;
    for (const int32_t state : {1, 2, 3}) {
        zgen.phase[0] = 0;
        zgen.state = state;
        const std::vector<float> out = block_of(zgen);
        for (uint32_t n = 0; n < 512; ++n) {
            const float k = static_cast<float>(n);
            const float envelope[] = {0.0f, k * inv * 3.0f, 3.0f, (1.0f - k * inv) * 3.0f};
            ASSERT_EQ(out[n], sample(440 * (n + 1), 0.25f) * envelope[state]);
        }
    }
}

TEST_F(Generators, TheZoneFollowsItsOwnCandidates) {
    sustain(zgen, 440.0f, 0.25f);
    set_candidate(pcandidates[0], 1000.0f, 1.0f);
    block_of(zgen);
    EXPECT_EQ(zgen.freq_now[0], 440.0f);
    EXPECT_EQ(zgen.frames, 512u);
    EXPECT_EQ(wgen.frames, 0u);
}

TEST_F(Generators, TheZonesClockRunsWhileItSounds) {
    const float step = static_cast<float>(512 / 44100.0);
    zgen.time = 0.25f;
    zgen.state = 1;
    block_of(zgen);
    EXPECT_EQ(zgen.time, 0.25f + step);
    block_of(zgen);
    EXPECT_EQ(zgen.time, 0.25f + step + step);
    zgen.state = 3;
    block_of(zgen);
    EXPECT_EQ(zgen.time, 0.25f + step + step) << "not at the block when the state reaches 0";
    block_of(zgen);
    EXPECT_EQ(zgen.time, 0.25f + step + step);
    wgen.time = 0.25f;
    wgen.state = 2;
    block_of(wgen);
    EXPECT_EQ(wgen.time, 0.25f);
}

TEST_F(Generators, TheZonesClockIsToldInDebugMode) {
    dbp = 1;
    zgen.state = 2;
    zgen.time = 0.0f;
    block_of(zgen);
    zgen.state = 0;
    block_of(zgen);
    EXPECT_EQ(printed(serve_requests), "Time: 0.011610\n");
}

TEST_F(Generators, TheZoneReleasesItselfAtTheEndOfTheSound) {
    const float step = static_cast<float>(512 / 44100.0);
    zgen.state = 2;
    zgen.playing = 1;
    zgen.time = sndlen - 4.0f * step;
    block_of(zgen);
    EXPECT_EQ(zgen.state, 2);
    zgen.time = sndlen - step - step;
    block_of(zgen);
    EXPECT_EQ(zgen.state, 3);
    EXPECT_EQ(zgen.playing, 1);
    block_of(zgen);
    EXPECT_EQ(zgen.state, 0);
    EXPECT_EQ(zgen.playing, 0);
    block_of(zgen);
    EXPECT_EQ(zgen.state, 0) << "silence does not begin a release";
}

TEST_F(Generators, TheScrubKeepsPlayingWhenSilent) {
    wgen.playing = 1;
    wgen.state = 3;
    block_of(wgen);
    EXPECT_EQ(wgen.state, 0);
    EXPECT_EQ(wgen.playing, 1);
}

TEST_F(Generators, NoRateOrNoTableIsSilence) {
    sustain(wgen, 440.0f, 0.5f);
    const double rates[] = {0.0, -1.0, 0.5};
    for (const double rate : rates) {
        R = rate;
        sustain(wgen, 440.0f, 0.5f);
        EXPECT_EQ(block_of(wgen), std::vector<float>(512, 0.0f)) << rate;
        sustain(zgen, 440.0f, 0.5f);
        block_of(zgen);
    }
    R = 44100.0;
    makeSin(0);
    sustain(wgen, 440.0f, 0.5f);
    wgen.state = 1;
    EXPECT_EQ(block_of(wgen), std::vector<float>(512, 0.0f));
    EXPECT_EQ(wgen.state, 2);
}

TEST_F(Generators, ARateThatGrewKeepsToTheTable) {
    R = 48000.0;
    sustain(wgen, 20000.0f, 1.0f);
    for (int n = 0; n < 20; ++n) {
        for (const float each : block_of(wgen)) {
            ASSERT_LE(std::fabs(each), 1.0f);
        }
        ASSERT_LE(wgen.phase[0], 44100);
    }
}

TEST_F(Generators, OddFrequenciesHarmNothing) {
    const float odd[] = {-440.0f,
                         -22050.0f,
                         1e9f,
                         -1e30f,
                         std::numeric_limits<float>::infinity(),
                         std::numeric_limits<float>::quiet_NaN(),
                         440.0f};
    wgen.state = 2;
    for (const float freq : odd) {
        set_candidate(pcandidates[0], freq, 0.5f);
        for (int n = 0; n < 100; ++n) {
            for (const float each : block_of(wgen, 2048)) {
                ASSERT_LE(std::fabs(each), 0.5f);
            }
            ASSERT_LE(std::abs(wgen.phase[0]), 44100);
        }
    }
}

TEST_F(Generators, UnitsSoundAsManyOscillatorsAsThereCanBe) {
    numbOfCands = 100000;
    set_candidate(pcandidates[2046], 441.0f, 0.5f);
    set_candidate(pcandidates[2047], 441.0f, 0.5f);
    wgen.state = 2;
    block_of(wgen);
    EXPECT_EQ(wgen.amp_now[2046], 0.5f);
    EXPECT_EQ(wgen.amp_now[2047], 0.0f);
}

TEST_F(Generators, OscillatorsAddUpInTheirOrder) {
    numbOfCands = 3;
    const float amps[] = {0.7f, 1e-4f, -0.3f};
    const int32_t freqs[] = {440, 1234, 9000};
    for (size_t i = 0; i < 3; ++i) {
        set_candidate(pcandidates[i], static_cast<float>(freqs[i]), amps[i]);
        wgen.freq_now[i] = static_cast<float>(freqs[i]);
        wgen.amp_now[i] = amps[i];
    }
    wgen.state = 2;
    const std::vector<float> out = block_of(wgen);
    for (int32_t n = 0; n < 512; ++n) {
        float sum = 0.0f;
        for (size_t i = 0; i < 3; ++i) {
            sum += sample(int64_t{freqs[i]} * (n + 1), amps[i]);
        }
        ASSERT_EQ(out[static_cast<size_t>(n)], sum);
    }
}

} // namespace
