// The mixer of the output units: slices and odd blocks, start and stop from inside and outside,
// and whole plays through it without a click.
#include "live/mixer.h"

#include "live/audio_unit.h"
#include "live/shared.h"
#include "live/sound_output.h"
#include "tests/live/player_support.h"

#include <atomic>
#include <cmath>
#include <string>
#include <thread>

namespace {

double opened_rate = 48000.0;
int opened = 0;
int closed = 0;

double open_stream() {
    opened++;
    return opened_rate;
}

void close_stream() {
    closed++;
}

const Driver by_hand = {open_stream, close_stream};

/// A procedure's context: what it is to add, and what it saw.
struct Tone {
    void *unit = nullptr;
    float value = 0.0f;
    int blocks = 0;
    uint32_t frames = 0;
    void (*within)(Tone &tone) = nullptr;
};

void render_tone(void *context, uint32_t frames, float *out) {
    Tone &tone = *static_cast<Tone *>(context);
    tone.blocks++;
    tone.frames = frames;
    for (uint32_t k = 0; k < frames; k++) {
        out[k] += tone.value;
    }
    if (tone.within != nullptr) {
        tone.within(tone);
    }
}

/// Brings the stream to the beginning of a slice.
void finish_slice() {
    float sample = 0.0f;
    Tone probe;
    create_output_unit(&probe.unit, render_tone, &probe, generator_texts);
    AudioOutputUnitStart(probe.unit);
    while (probe.blocks == 0) {
        deliver(&sample, 1, 1);
    }
    close_output_unit(&probe.unit);
    for (int k = 0; k < 511; k++) {
        deliver(&sample, 1, 1);
    }
}

class MixerTest : public testing::Test {
  protected:
    void SetUp() override {
        use_driver(&by_hand);
        add(keeper);
        finish_slice();
        opened = closed = 0;
    }
    void TearDown() override {
        for (Tone *tone : tones) {
            close_output_unit(&tone->unit);
        }
        use_driver(nullptr);
        R = 44100.0;
    }

    void add(Tone &tone, float value = 0.0f) {
        tone.value = value;
        create_output_unit(&tone.unit, render_tone, &tone, generator_texts);
        tones.push_back(&tone);
    }

    static Samples blocks_of(uint32_t frames, uint32_t channels = 1) {
        Samples out(size_t{frames} * channels, -9.0f);
        deliver(out.data(), frames, channels);
        return out;
    }

    Tone keeper; // holds the stream open
    std::vector<Tone *> tones;
};

} // namespace

TEST_F(MixerTest, OneStreamServesAllUnits) {
    Tone first, second;
    add(first);
    add(second);
    EXPECT_EQ(opened, 0); // it is open already
    EXPECT_EQ(R, 48000.0);
    for (Tone *tone : tones) {
        close_output_unit(&tone->unit);
    }
    EXPECT_EQ(closed, 1);
    add(first);
    EXPECT_EQ(opened, 1);
}

TEST_F(MixerTest, StartedUnitsAddUpInEveryChannel) {
    Tone first, second, third;
    add(first, 0.25f);
    add(second, 0.5f);
    add(third, 100.0f);
    EXPECT_EQ(blocks_of(512), Samples(512, 0.0f));
    AudioOutputUnitStart(first.unit);
    EXPECT_EQ(blocks_of(512), Samples(512, 0.25f));
    AudioOutputUnitStart(second.unit);
    EXPECT_EQ(blocks_of(512, 2), Samples(1024, 0.75f));
    AudioOutputUnitStop(first.unit);
    EXPECT_EQ(blocks_of(512, 5), Samples(5 * 512, 0.5f));
    EXPECT_EQ(third.blocks, 0);
}

TEST_F(MixerTest, ProceduresAlwaysGetSlicesOf512) {
    Tone tone;
    add(tone, 1.0f);
    AudioOutputUnitStart(tone.unit);
    uint64_t delivered = 0;
    for (const uint32_t frames : {1u, 511u, 512u, 4096u, 0u, 100u, 1000u}) {
        EXPECT_EQ(blocks_of(frames), Samples(frames, 1.0f)) << frames;
        delivered += frames;
        EXPECT_EQ(tone.frames, 512u);
        EXPECT_EQ(static_cast<uint64_t>(tone.blocks), (delivered + 511) / 512) << frames;
    }
}

TEST_F(MixerTest, TheRestOfASliceIsKept) {
    Tone tone;
    add(tone, 1.0f);
    AudioOutputUnitStart(tone.unit);
    blocks_of(300);
    AudioOutputUnitStop(tone.unit);
    Samples expected(512, 0.0f);
    std::fill_n(expected.begin(), 212, 1.0f);
    EXPECT_EQ(blocks_of(512), expected);
}

TEST_F(MixerTest, AUnitStopsFromInsideItsProcedure) {
    Tone tone;
    add(tone, 1.0f);
    tone.within = [](Tone &inner) { AudioOutputUnitStop(inner.unit); };
    AudioOutputUnitStart(tone.unit);
    Samples expected(1024, 0.0f);
    std::fill_n(expected.begin(), 512, 1.0f);
    EXPECT_EQ(blocks_of(1024), expected);
    EXPECT_EQ(tone.blocks, 1);
}

TEST_F(MixerTest, AStartDuringTheBlockOutlastsTheStopFromInside) {
    Tone tone;
    add(tone, 1.0f);
    tone.within = [](Tone &inner) {
        AudioOutputUnitStart(inner.unit); // as another thread would meanwhile
        AudioOutputUnitStop(inner.unit);
        inner.within = nullptr;
    };
    AudioOutputUnitStart(tone.unit);
    EXPECT_EQ(blocks_of(1536), Samples(1536, 1.0f));
    AudioOutputUnitStop(tone.unit);
    AudioOutputUnitStop(tone.unit);
    EXPECT_EQ(blocks_of(512), Samples(512, 0.0f));
}

TEST_F(MixerTest, AClosedUnitIsNotCalled) {
    Tone tone;
    add(tone, 1.0f);
    AudioOutputUnitStart(tone.unit);
    blocks_of(512);
    close_output_unit(&tone.unit);
    EXPECT_EQ(tone.unit, nullptr);
    EXPECT_EQ(blocks_of(512), Samples(512, 0.0f));
    EXPECT_EQ(tone.blocks, 1);
}

TEST_F(MixerTest, WhatCannotBeIsRefused) {
    void *unit = nullptr;
    const ComponentDescription any = {1, 2, 3};
    void *component = AudioComponentFindNext(nullptr, &any);
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(AudioComponentFindNext(component, &any), nullptr);
    std::vector<void *> filled;
    while (AudioComponentInstanceNew(component, &unit) == 0) {
        filled.push_back(unit);
    }
    EXPECT_EQ(filled.size(), 7u);
    EXPECT_NE(AudioOutputUnitStart(filled[0]), 0); // not initialised
    EXPECT_NE(AudioUnitInitialize(filled[0]), 0);  // no procedure
    int nothing = 0;
    uint32_t size = sizeof nothing;
    EXPECT_NE(AudioUnitSetProperty(filled[0], 99, scope_input, 0, &nothing, size), 0);
    EXPECT_NE(AudioUnitSetProperty(filled[0], property_callback, scope_input, 0, &nothing, size),
              0);
    EXPECT_NE(
        AudioUnitGetProperty(filled[0], property_sample_rate, scope_output, 0, &nothing, &size), 0);
    for (void *each : filled) {
        AudioComponentInstanceDispose(each);
    }
    use_driver(nullptr);
    EXPECT_EQ(AudioComponentFindNext(nullptr, &any), nullptr);
    use_driver(&by_hand);
}

TEST_F(MixerTest, UnitsComeAndGoWhileTheStreamRuns) {
    std::atomic<bool> streaming = true;
    std::thread stream([&streaming] {
        float block[2 * 700];
        while (streaming) {
            deliver(block, 700, 2);
        }
    });
    for (int round = 0; round < 200; round++) {
        Tone tone;
        create_output_unit(&tone.unit, render_tone, &tone, generator_texts);
        AudioOutputUnitStart(tone.unit);
        AudioOutputUnitStop(tone.unit);
        AudioOutputUnitStart(tone.unit);
        close_output_unit(&tone.unit);
        const int blocks = tone.blocks; // nobody writes it any more
        std::this_thread::yield();
        EXPECT_EQ(tone.blocks, blocks);
    }
    streaming = false;
    stream.join();
}

// --- whole plays -------------------------------------------------------------------------------

namespace {

constexpr int64_t long_sound = 40000; // frames
constexpr double step_of_tone = 0.06; // radians a frame

class MixedPlayer : public PlayerTest {
  protected:
    void SetUp() override {
        PlayerTest::SetUp();
        use_back_end(nullptr);
        use_driver(&by_hand);
        CreateAndConnectFpOutputUnit1(&fplayer);
        give_sound(long_sound);
        for (int64_t n = 0; n < long_sound; n++) {
            fBuffer[n] = static_cast<float>(0.7 * std::cos(static_cast<double>(n) * step_of_tone));
        }
    }
    void TearDown() override {
        close_output_unit(&fplayer.unit);
        use_driver(nullptr);
        PlayerTest::TearDown();
    }

    void hear(uint32_t frames, uint32_t block) {
        for (uint32_t n = 0; n < frames; n += block) {
            Samples out(block);
            deliver(out.data(), block, 1);
            heard.insert(heard.end(), out.begin(), out.end());
        }
    }

    double largest_step() const {
        double largest = 0.0;
        for (size_t k = 1; k < heard.size(); k++) {
            largest = std::max(largest, static_cast<double>(std::fabs(heard[k] - heard[k - 1])));
        }
        return largest;
    }

    Samples heard;
};

} // namespace

TEST_F(MixedPlayer, PausesAndEndsMakeNoClick) {
    for (const uint32_t frames : {1u, 64u, 511u, 512u, 1024u, 4096u}) {
        heard.assign(1, 0.0f);
        play();
        hear(10000, frames);
        fbstop1();
        hear(4096, frames);
        EXPECT_EQ(served(), "fpAU:Stopped!\n") << frames;
        EXPECT_EQ(heard.back(), 0.0f);
        resume();
        hear(60000, frames);
        EXPECT_EQ(served(), "fpAU:Stopped!\n") << frames;
        EXPECT_EQ(fplayer.playing, 0);
        EXPECT_GT(largest_step(), 0.7 * step_of_tone * 0.99) << frames;
        EXPECT_LT(largest_step(), 0.7 * (step_of_tone + 1.0 / 512)) << frames;
    }
}

TEST_F(MixedPlayer, APressOnEveryBlockMakesNoClick) {
    heard.assign(1, 0.0f);
    play();
    for (int i = 0; i < 40; i++) {
        hear(512, 512);
        if (fplayer.playing != 0) {
            fbstop1();
        } else {
            resume();
        }
    }
    EXPECT_LT(largest_step(), 0.7 * (step_of_tone + 1.0 / 512));
}

TEST_F(MixedPlayer, KeysAndRendersMayComeAtAnyMoment) {
    std::atomic<bool> streaming = true;
    std::thread stream([&streaming] {
        float block[300];
        while (streaming) {
            deliver(block, 300, 1);
            std::this_thread::yield();
        }
    });
    for (int round = 0; round < 300; round++) {
        printed([] { serve_requests(); });
        play();
        float *former = fBuffer;
        const int64_t frames = round % 2 == 0 ? 600 : long_sound;
        put_sound(static_cast<float *>(std::calloc(static_cast<size_t>(frames), sizeof(float))),
                  frames);
        std::free(former); // a read of it from now on is a fault
        publish(fbuffersize, frames);
        if (round % 3 == 0) {
            fbstop1();
        } else {
            resume();
        }
    }
    streaming = false;
    stream.join();
}

// --- the machine's output ----------------------------------------------------------------------

TEST(SoundOutput, WithoutADeviceAClockRunsTheUnits) {
    setenv("PULSE_SERVER", "unix:/nowhere", 1);
    setenv("JACK_DEFAULT_SERVER", "quillgrove_none", 1);
    use_driver(&sound_output);
    Tone tone;
    static std::atomic<int> blocks;
    blocks = 0;
    tone.within = [](Tone &) { blocks++; };
    create_output_unit(&tone.unit, render_tone, &tone, generator_texts);
    EXPECT_GT(R, 0.0);
    AudioOutputUnitStart(tone.unit);
    const auto start = std::chrono::steady_clock::now();
    while (blocks < 5 && std::chrono::steady_clock::now() - start < std::chrono::seconds(10)) {
        watch_sound_output();
        std::this_thread::yield();
    }
    EXPECT_GE(blocks, 5);
    close_output_unit(&tone.unit);
    const int last = blocks;
    std::this_thread::yield();
    EXPECT_EQ(blocks, last);
    use_driver(nullptr);
    R = 44100.0;
}
