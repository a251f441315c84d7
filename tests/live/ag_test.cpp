// The generator that computes each sine, the creation of output units and their closing.
#include "live/ag.h"
#include "live/cleanup.h"
#include "live/fbp.h"
#include "synth/sound.h"
#include "tests/support/audio_double.h"
#include "tests/support/child.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <array>
#include <cmath>

namespace {

using Samples = std::vector<float>;

/// A generator on a scripted output, with candidates of its own.
class SineGeneratorTest : public StoreTest {
  protected:
    void SetUp() override {
        StoreTest::SetUp();
        record = {};
        pcandidates = candidates.data();
        numbOfCands = 0;
        createAdditiveToneUnit(&record);
    }
    void TearDown() override {
        for (float *array :
             {record.freq_target, record.amp_target, record.freq_copy, record.amp_now,
              record.phase_now, record.spare1, record.step_now, record.spare2}) {
            std::free(array);
        }
        std::free(record.on);
        pcandidates = nullptr;
        numbOfCands = 0;
        R = 44100.0;
        StoreTest::TearDown();
    }

    void sound(float freq, float amp, uint8_t status = 1) {
        LiveCandidate &candidate = candidates.at(static_cast<size_t>(numbOfCands++));
        candidate.freq = freq;
        candidate.amp = amp;
        candidate.status = status;
    }

    Samples block(uint32_t frames = 512, float before = 0.0f) {
        Samples out(frames, before);
        AdditiveRenderProc1(&record, frames, out.data());
        return out;
    }

    AudioDouble audio;
    SineGenerator record = {};
    std::vector<LiveCandidate> candidates = std::vector<LiveCandidate>(3000);
};

/// One oscillator by its law, with what it keeps from block to block.
struct Law {
    float amp = 0.0f, phase = 0.0f, step = 0.0f;

    Samples block(float freq, float target, float radians_per_hz, uint32_t frames) {
        const float length = static_cast<float>(frames);
        const float d = (target - amp) / length;
        const float next_step = freq * radians_per_hz;
        const float delta = (next_step - step) / length;
        Samples samples;
        for (uint32_t k = 0; k < frames; k++) {
            const float amplitude = static_cast<float>(k) * d + amp;
            samples.push_back(sinf(phase) * amplitude);
            phase = delta * static_cast<float>(k) + phase + step;
            if (static_cast<double>(phase) > 6.2831855) {
                phase = static_cast<float>(static_cast<double>(phase) - 6.2831855);
            }
        }
        amp = target;
        step = next_step;
        return samples;
    }
};

} // namespace

TEST_F(SineGeneratorTest, CreationReadiesTheRecord) {
    EXPECT_EQ(audio.heard(), "find auou ahal appl\n"
                             "new\n"
                             "set 23 scope 1 element 0 size 16\n"
                             "get 2 scope 2 element 0 size 8\n"
                             "set 8 scope 1 element 0 size 40\n"
                             "initialize\n");
    EXPECT_EQ(audio.units[0].callback.procedure, AdditiveRenderProc1);
    EXPECT_EQ(audio.units[0].callback.context, &record);
    EXPECT_EQ(record.unit, &audio.units[0]);
    for (const float *array :
         {record.freq_target, record.amp_target, record.freq_copy, record.amp_now, record.phase_now,
          record.spare1, record.step_now, record.spare2}) {
        ASSERT_NE(array, nullptr);
        EXPECT_EQ(array[2047], 0.0f);
    }
    EXPECT_EQ(record.on[2047], 0);
    EXPECT_EQ(benddf, 2.0f);
    EXPECT_EQ(sampleRate, 44100.0);
    EXPECT_EQ(record.radians_per_hz, static_cast<float>(6.2831854820251465 / 44100.0));
}

TEST_F(SineGeneratorTest, SecondCreationKeepsTheArrays) {
    float *const kept = record.amp_now;
    record.amp_now[3] = 0.5f;
    record.playing = record.midi_started = 1;
    audio.rate = 48000.0;
    createAdditiveToneUnit(&record);
    EXPECT_EQ(record.amp_now, kept);
    EXPECT_EQ(record.amp_now[3], 0.5f);
    EXPECT_EQ(record.playing, 0);
    EXPECT_EQ(record.midi_started, 0);
    EXPECT_EQ(R, 48000.0);
    EXPECT_EQ(sampleRate, 48000.0);
    EXPECT_EQ(record.radians_per_hz, static_cast<float>(6.2831854820251465 / 48000.0));
}

TEST_F(SineGeneratorTest, StreamFormatIsPackedMonoFloat) {
    audio.rate = 48000.0;
    createAdditiveToneUnit(&record);
    const StreamFormat &format = audio.units[1].format;
    EXPECT_EQ(format.sample_rate, 48000.0);
    EXPECT_EQ(format.format, 0x6c70636du);
    EXPECT_EQ(format.flags, 0x29u);
    EXPECT_EQ(format.bytes_per_packet, 4u);
    EXPECT_EQ(format.frames_per_packet, 1u);
    EXPECT_EQ(format.bytes_per_frame, 4u);
    EXPECT_EQ(format.channels, 1u);
    EXPECT_EQ(format.bits_per_channel, 32u);
    EXPECT_EQ(streamFormat.sample_rate, 48000.0);
}

TEST_F(SineGeneratorTest, EnvelopeByState) {
    // A constant of 0.5: a quarter turn that stands still.
    sound(0.0f, 0.5f);
    record.amp_now[0] = 0.5f;
    record.phase_now[0] = 1.5707964f;
    record.state = 0;
    EXPECT_EQ(block(512, 0.7f), Samples(512, 0.0f));
    EXPECT_EQ(record.state, 0);
    const auto ready = [this](int32_t state) {
        record.state = state;
        record.amp_now[0] = 0.5f;
    };
    ready(1);
    Samples rising, falling;
    for (int k = 0; k < 512; k++) {
        rising.push_back(0.5f * (static_cast<float>(k) / 512.0f));
        falling.push_back(0.5f * (1.0f - static_cast<float>(k) / 512.0f));
    }
    EXPECT_EQ(block(), rising);
    EXPECT_EQ(rising[2], 0.5f * 2.0f / 512.0f);
    EXPECT_LT(rising[511], 0.5f);
    EXPECT_EQ(record.state, 2);
    EXPECT_EQ(block(), Samples(512, 0.5f));
    EXPECT_EQ(record.state, 2);
    ready(3);
    EXPECT_EQ(block(), falling);
    EXPECT_EQ(record.state, 0);
    EXPECT_EQ(record.amp_now[0], 0.0f); // the next start begins from silence
}

TEST_F(SineGeneratorTest, OscillatorsFollowTheirLawToTheBit) {
    for (const uint32_t frames : {1u, 511u, 512u, 1024u}) {
        numbOfCands = 0;
        sound(440.0f, 0.2f);
        sound(1234.5f, 0.1f);
        Law first, second;
        for (size_t i = 0; i < 2; i++) {
            record.amp_now[i] = record.phase_now[i] = record.step_now[i] = 0.0f;
        }
        record.state = 2;
        for (int n = 0; n < 4; n++) {
            candidates[0].freq += 100.0f;
            candidates[1].amp *= 0.5f;
            Samples expected =
                first.block(candidates[0].freq, candidates[0].amp, record.radians_per_hz, frames);
            const Samples other =
                second.block(candidates[1].freq, candidates[1].amp, record.radians_per_hz, frames);
            for (size_t k = 0; k < frames; k++) {
                expected[k] = (0.0f + expected[k] + other[k]) * 1.0f;
            }
            EXPECT_EQ(block(frames), expected) << frames << " " << n;
        }
        EXPECT_EQ(record.phase_now[0], first.phase);
        EXPECT_EQ(record.step_now[1], second.step);
        EXPECT_EQ(record.freq_copy[0], candidates[0].freq);
    }
}

TEST_F(SineGeneratorTest, ASilentCandidateFadesAndItsPhaseRunsOn) {
    sound(440.0f, 0.5f, 0);
    record.state = 2;
    record.amp_now[0] = 0.5f;
    record.step_now[0] = 440.0f * record.radians_per_hz;
    Law law{0.5f, 0.0f, record.step_now[0]};
    EXPECT_EQ(block(), law.block(440.0f, 0.0f, record.radians_per_hz, 512));
    EXPECT_EQ(record.amp_now[0], 0.0f);
    EXPECT_EQ(record.on[0], 0);
    EXPECT_EQ(record.freq_target[0], 440.0f);
    const float phase = record.phase_now[0];
    block();
    EXPECT_NE(record.phase_now[0], phase);
}

TEST_F(SineGeneratorTest, AnEmptyBlockMovesTheStateOn) {
    sound(440.0f, 0.5f);
    record.state = 1;
    EXPECT_EQ(block(0), Samples());
    EXPECT_EQ(record.state, 2);
    EXPECT_EQ(record.amp_now[0], 0.5f);
    EXPECT_EQ(record.phase_now[0], 0.0f);
    record.state = 3;
    block(0);
    EXPECT_EQ(record.state, 0);
    EXPECT_EQ(record.amp_now[0], 0.0f);
}

TEST_F(SineGeneratorTest, WithoutOscillatorsThereIsSilence) {
    record.state = 1;
    EXPECT_EQ(block(512, 0.7f), Samples(512, 0.0f));
    EXPECT_EQ(record.state, 2);
    numbOfCands = -5;
    EXPECT_EQ(block(512, 0.7f), Samples(512, 0.0f));
}

TEST_F(SineGeneratorTest, OutputIsLimited) {
    for (int i = 0; i < 10; i++) {
        sound(100.0f + static_cast<float>(i), 1.0f);
        record.amp_now[i] = 1.0f;
    }
    record.state = 2;
    float highest = 0.0f, lowest = 0.0f;
    for (int n = 0; n < 4; n++) {
        for (const float sample : block()) {
            highest = std::max(highest, sample);
            lowest = std::min(lowest, sample);
        }
    }
    EXPECT_EQ(highest, 0.99f);
    EXPECT_EQ(lowest, -0.99f);
}

TEST_F(SineGeneratorTest, OscillatorsBeyondTheScratchStaySilent) {
    for (int i = 0; i < 2047; i++) {
        sound(0.0f, 0.0f);
        record.phase_now[i] = 1.5707964f;
    }
    candidates[1023].amp = record.amp_now[1023] = 0.25f;
    candidates[1024].amp = record.amp_now[1024] = 0.5f;
    record.state = 2;
    EXPECT_EQ(block(64), Samples(64, 0.25f));
}

TEST_F(SineGeneratorTest, ALongBlockIsTakenInPieces) {
    sound(0.0f, 0.5f);
    record.amp_now[0] = 0.5f;
    record.phase_now[0] = 1.5707964f;
    record.state = 1;
    const Samples samples = block(4096);
    EXPECT_EQ(samples[512], 0.25f);
    EXPECT_EQ(samples[1023], 0.5f * (1023.0f / 1024.0f));
    EXPECT_EQ(Samples(samples.begin() + 1024, samples.end()), Samples(3072, 0.5f));
    EXPECT_EQ(record.state, 2);
}

// --- failures ----------------------------------------------------------------------------------

namespace {

struct FailureRow {
    const char *operation;
    const char *of_generator;
    const char *of_player;
};

const FailureRow failures[] = {
    {"new", "Couldn't get audio unit instance", "Couldn't open component for outputUnit"},
    {"set 23 scope 1 element 0 size 16", "Error setting callback: ", "AudioUnitSetProperty failed"},
    {"get 2 scope 2 element 0 size 8", "Couldn't get sample rate", "AudioUnitGetProperty failed"},
    {"set 8 scope 1 element 0 size 40", "Couldn't set StreamFormat on input scope / bus 0",
     "Couldn't set StreamFormat on input scope / bus 0"},
    {"initialize", "Error initializing unit:", "Couldn't initialize output unit"},
};

/// What a program says that ends over the creation of both kinds of units.
void expect_end(const std::string &operation, int32_t code, const std::string &generator,
                const std::string &player) {
    for (const bool of_player : {false, true}) {
        const ChildResult result = in_child("", [&] {
            AudioDouble audio;
            audio.component = operation != "none";
            audio.failing = operation;
            audio.code = code;
            SineGenerator record = {};
            FloatPlayer fresh = {};
            if (of_player) {
                CreateAndConnectFpOutputUnit1(&fresh);
            } else {
                createAdditiveToneUnit(&record);
            }
        });
        EXPECT_EQ(result.status, 255) << operation;
        EXPECT_EQ(result.out, of_player ? player : generator);
    }
}

} // namespace

TEST(OutputUnit, EachFailedStepEndsTheProgram) {
    for (const FailureRow &row : failures) {
        expect_end(row.operation, -10875, std::string("Error: ") + row.of_generator + " (-10875)\n",
                   std::string("Error: ") + row.of_player + " (-10875)\n");
    }
}

TEST(OutputUnit, NoComponentEndsTheProgram) {
    expect_end("none", 0, "can't get output unit\n", "can't get output unit\n");
}

TEST(OutputUnit, AFailedStartEndsTheProgram) {
    const ChildResult result = in_child("", [] {
        AudioDouble audio;
        CreateAndConnectFpOutputUnit1(&fplayer);
        float samples[10] = {};
        fBuffer = samples;
        fbuffersize = 10;
        audio.failing = "start";
        audio.code = 7;
        fbplay1(0.0f, 10);
    });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, "FBP1: 10\t frames\nError: Couldn't start output unit (7)\n");
}

TEST(OutputUnit, ErrorCodesThatCanBeReadAreText) {
    const std::pair<int32_t, const char *> rows[] = {
        {static_cast<int32_t>(four_characters("fmt?")), "'fmt?'"},
        {static_cast<int32_t>(four_characters("    ")), "'    '"},
        {0x61626319, "1633837849"}, // the last byte is none
        {0x19616263, "425812579"},
        {0x6162637f, "1633837951"},
        {static_cast<int32_t>(0xe1626364u), "-513645724"},
        {-1, "-1"},
    };
    for (const auto &[code, text] : rows) {
        const ChildResult result = in_child("", [code = code] { CheckError(code, "Step"); });
        EXPECT_EQ(result.out, std::string("Error: Step (") + text + ")\n");
        EXPECT_EQ(result.status, 255);
    }
    EXPECT_EQ(printed([] { CheckError(0, "Step"); }), "");
}

// --- closing -----------------------------------------------------------------------------------

TEST(OutputUnit, CleaningUpClosesWhatIsThere) {
    AudioDouble audio;
    cleanupAudioMIDI();
    EXPECT_EQ(audio.heard(), "");
    void *order[4];
    void **const units[] = {&fplayer.unit, &gen.unit, &wgen.unit, &zgen.unit};
    for (size_t i = 0; i < 4; i++) {
        *units[i] = order[i] = &audio.units.emplace_back();
    }
    cleanupAudioMIDI();
    EXPECT_EQ(audio.heard(), "uninitialize\ndispose\nuninitialize\ndispose\n"
                             "uninitialize\ndispose\nuninitialize\ndispose\n");
    for (size_t i = 0; i < 4; i++) {
        EXPECT_EQ(*units[i], nullptr);
        EXPECT_TRUE(audio.units[i].disposed);
    }
    cleanupAudioMIDI();
    EXPECT_EQ(audio.heard(), "");
}

TEST(OutputUnit, WithoutAUnitNothingStarts) {
    EXPECT_NE(AudioOutputUnitStart(nullptr), 0);
    EXPECT_NE(AudioOutputUnitStop(nullptr), 0);
}
