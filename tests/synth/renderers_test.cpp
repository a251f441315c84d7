// The renderers around the bank: prints, buffers, modes, peak.
#include "live/live.h"
#include "store/settings.h"
#include "synth/bank.h"
#include "synth/sound.h"
#include "synth/syn.h"
#include "tests/support/child.h"
#include "tests/support/console.h"
#include "tests/support/rendering.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// What the player was asked to play, taken while the buffer was there.
struct Played {
    int32_t times;
    float start;
    Samples samples;
};
Played played;

int32_t note_play(float start, int64_t frames) {
    ++played.times;
    played.start = start;
    played.samples.assign(fBuffer, fBuffer + frames);
    return 0;
}

class Renderers : public SynthTest {
  protected:
    void SetUp() override {
        SynthTest::SetUp();
        played = {};
        play_rendered = note_play;
        folder_ = fs::temp_directory_path() / ("renderers_" + std::to_string(getpid()));
        fs::create_directory(folder_);
        fill_store(small_content());
        sndstart = 0.125f; // for the player alone; the samples stand where they are
        spread_phases();
        select_points({"0111", "110", "11", "1"});
    }
    void TearDown() override {
        fs::remove_all(folder_);
        SynthTest::TearDown();
    }

    /// A path in the form that the renderers take.
    char *path(const char *name) {
        std::snprintf(path_, sizeof path_, "%s", (folder_ / name).c_str());
        return path_;
    }

    fs::path folder_;
    char path_[256];
};

float peak_of(const Samples &samples) {
    float peak = 0.0f;
    for (float sample : samples) {
        peak = std::max(peak, std::fabs(sample));
    }
    return peak;
}

Samples sound() {
    return Samples(fBuffer, fBuffer + fbuffersize);
}

/// The samples brought to the peak of 0.7, sum by sum and factor as the drivers do.
Samples normalised(Samples samples) {
    const float peak = peak_of(samples);
    const float factor = peak > 0.0f ? static_cast<float>(0.7 / static_cast<double>(peak)) : 0.0f;
    for (float &sample : samples) {
        sample *= factor;
    }
    return samples;
}

std::string text(const char *format, double value) {
    char line[100];
    std::snprintf(line, sizeof line, format, value);
    return line;
}

/// The workers' buffers summed in their order.
Samples mixed(int32_t workers, bool selected, int64_t frames) {
    Samples sum(static_cast<size_t>(frames));
    for (int32_t k = 0; k < workers; ++k) {
        Samples one(static_cast<size_t>(frames));
        if (selected) {
            render_selected_stripe(k, workers, true, one.data(), frames);
        } else {
            render_stripe(k, workers, one.data(), frames);
        }
        for (size_t n = 0; n < one.size(); ++n) {
            sum[n] += one[n];
        }
    }
    return sum;
}

constexpr int64_t small_frames = 26460; // of small_content(), 0.6 s: one point has no length

} // namespace

TEST_F(Renderers, AllPartialsSayWhatTheyDo) {
    use_workers(1);
    const Samples raw = law_of_all(small_frames);
    const double factor =
        static_cast<double>(static_cast<float>(0.7 / static_cast<double>(peak_of(raw))));
    EXPECT_EQ(printed([] { synsumWT(0, nullptr); }),
              "partials: 4, 0.600000 s\n" + text("zgen.floatmax = %f\n", factor));
    EXPECT_EQ(static_cast<double>(zgen.floatmax), factor);
    EXPECT_TRUE(same_bits(sound(), normalised(raw)));
    EXPECT_EQ(fbuffersize, small_frames);
    EXPECT_EQ(fBuffW, nullptr);
    EXPECT_EQ(played.times, 0);
}

TEST_F(Renderers, SelectedStretchesSayNothing) {
    use_workers(2);
    zgen.floatmax = 5.0f;
    EXPECT_EQ(printed([] { synssumWT(0, nullptr); }), "");
    EXPECT_EQ(zgen.floatmax, 5.0f);
    EXPECT_TRUE(same_bits(sound(), normalised(mixed(2, true, small_frames))));
}

TEST_F(Renderers, DebugLinesOfOneWorker) {
    use_workers(1);
    dbp = 1;
    const std::string said = printed([] { synsumWT(0, nullptr); });
    EXPECT_EQ(said, "partials: 4, 0.600000 s\nThread#: 0\nNumCPU = 1\nJOINED\n" +
                        text("zgen.floatmax = %f\n", static_cast<double>(zgen.floatmax)) +
                        "SYNTH LIVE:\n");
    EXPECT_EQ(printed([] { synssumWT(0, nullptr); }),
              "Thread#: 0\nNumCPU = 1\nJOINED\nSYNTH LIVE:\n");
}

TEST_F(Renderers, WorkersAreSummedInTheirOrder) {
    for (const int32_t workers : {1, 2, 3, 16}) {
        use_workers(workers);
        synsumWT(0, nullptr);
        EXPECT_TRUE(same_bits(sound(), normalised(mixed(workers, false, small_frames)))) << workers;
        synssumWT(0, nullptr);
        EXPECT_TRUE(same_bits(sound(), normalised(mixed(workers, true, small_frames)))) << workers;
    }
}

TEST_F(Renderers, MoreWorkersThanFrames) {
    fill_store({{{0.0f, 440.0f, 0.0f}, {3.0f / 44100.0f, 440.0f, 0.0f}}});
    use_workers(40);
    synsumWT(0, nullptr);
    EXPECT_NEAR(peak_of(sound()), 0.7f, 1e-6f);
}

TEST_F(Renderers, PeakIsSevenTenths) {
    for (const float level : {0.0f, -40.0f, -139.0f}) {
        fill_store({{{0.0f, 440.0f, level}, {1.0f, 440.0f, level}},
                    {{0.0f, 450.0f, level}, {1.0f, 450.0f, level}}});
        synsumWT(0, nullptr);
        EXPECT_NEAR(peak_of(sound()), 0.7f, 1e-6f) << level;
    }
}

TEST_F(Renderers, NoPartialsGiveSilenceAndAFactorOfZero) {
    fill_store({});
    sndlen = 0.1f;
    zgen.floatmax = 3.0f;
    EXPECT_EQ(printed([] { synsumWT(0, nullptr); }),
              "partials: 0, 0.100000 s\nzgen.floatmax = 0.000000\n");
    EXPECT_EQ(zgen.floatmax, 0.0f);
    EXPECT_EQ(sound(), Samples(4410, 0.0f));
}

TEST_F(Renderers, NoFramesGiveAFactorOfZero) {
    for (const float end : {0.0f, -1.0f, std::nanf("")}) {
        sndlen = end;
        zgen.floatmax = 3.0f;
        synsumWT(0, nullptr);
        EXPECT_EQ(zgen.floatmax, 0.0f);
        EXPECT_EQ(fbuffersize, 0);
        EXPECT_NE(fBuffer, nullptr);
    }
}

TEST_F(Renderers, NoWorkersGiveSilence) {
    use_workers(0);
    synsumWT(0, nullptr);
    EXPECT_EQ(peak_of(sound()), 0.0f);
    EXPECT_EQ(fbuffersize, small_frames);
}

// 22050.5 Hz counts as 22050; the product with 400.00003 s rounds in single precision.
TEST_F(Renderers, FramesAreCountedInSinglePrecision) {
    R = 22050.5;
    sndlen = 10.0f;
    synsumWT(0, nullptr);
    EXPECT_EQ(fbuffersize, 220500);
    R = 44100.0;
    fill_store({});
    sndlen = 400.00003f;
    synsumWT(0, nullptr);
    EXPECT_EQ(fbuffersize, static_cast<int64_t>(44100.0f * 400.00003f));
    EXPECT_NE(fbuffersize, static_cast<int64_t>(44100.0 * static_cast<double>(400.00003f)));
}

// The last frames of a partial can lie behind the buffer: they are left out.
TEST_F(Renderers, FramesBehindTheBufferAreLeftOut) {
    float end = 400.0f;
    while (static_cast<int64_t>(44100.0f * end) >=
           static_cast<int64_t>(static_cast<double>(end) * 44100.0)) {
        end = std::nextafterf(end, 1000.0f);
    }
    fill_store({{{399.9f, 440.0f, 0.0f}, {end, 440.0f, 0.0f}}});
    use_workers(2);
    synsumWT(0, nullptr);
    EXPECT_LT(fbuffersize, static_cast<int64_t>(static_cast<double>(end) * 44100.0));
    EXPECT_NEAR(peak_of(sound()), 0.7f, 1e-6f);
}

TEST_F(Renderers, TheBufferStaysForTheNextReplay) {
    synsumWT(900, nullptr);
    EXPECT_EQ(played.times, 1);
    EXPECT_EQ(played.start, sndstart);
    EXPECT_TRUE(same_bits(played.samples, sound()));
    synssumWT(900, nullptr);
    EXPECT_EQ(played.times, 2);
    EXPECT_TRUE(same_bits(played.samples, sound()));
}

TEST_F(Renderers, ABufferThatPlaysIsForgottenNotFreed) {
    synsumWT(0, nullptr);
    float *playing = fBuffer;
    const Samples before = sound();
    fplayer.state = 2;
    synssumWT(0, nullptr);
    EXPECT_NE(fBuffer, playing);
    EXPECT_TRUE(same_bits(Samples(playing, playing + small_frames), before));
    std::free(playing);
}

TEST_F(Renderers, OnlyTheLowSixteenBitsOfTheModeCount) {
    synsumWT(0x70000 + 900, nullptr);
    EXPECT_EQ(played.times, 1);
    synsumWT(901, nullptr);
    EXPECT_EQ(played.times, 1);
}

TEST_F(Renderers, Mode88WritesASoundFile) {
    printed([this] { synsumWT(88, path("sound")); });
    EXPECT_EQ(path_, (folder_ / "sound.AIFF").string());
    EXPECT_EQ(fs::file_size(folder_ / "sound.AIFF"), 54u + 2u * small_frames);
    EXPECT_FALSE(fs::exists(folder_ / "sound.fp"));
    EXPECT_NE(fBuffer, nullptr);
}

TEST_F(Renderers, Mode881WritesFloatsToo) {
    printed([this] { synssumWT(881, path("sound")); });
    EXPECT_EQ(fs::file_size(folder_ / "sound.AIFF"), 54u + 2u * small_frames);
    EXPECT_EQ(fs::file_size(folder_ / "sound.fp"), 4u * small_frames);
    FILE *file = std::fopen((folder_ / "sound.fp").c_str(), "rb");
    Samples written(small_frames);
    EXPECT_EQ(std::fread(written.data(), 4, small_frames, file), static_cast<size_t>(small_frames));
    std::fclose(file);
    EXPECT_TRUE(same_bits(written, sound()));
}

// --- files that cannot be written, and files that are there ------------------------------------

namespace {

/// What a render of the small content into `file` says behind its first lines.
std::string writing(const std::string &file) {
    return "//Opening file\t\t  \"" + file +
           "\"\n//Writing header\t  length =  0.600\trate = 44100.00\n"
           "//Writing sound data...\n//Deallocating buffers...\n//\ts_DONE!\n";
}

} // namespace

TEST_F(Renderers, FolderThatIsMissingCostsOneLineAndKeepsTheSound) {
    use_workers(2);
    const Samples expected = normalised(mixed(2, true, small_frames));
    const std::vector<Breakpoint> points(parray[0], parray[0] + npoints[0]);
    const ChildResult result = in_child("", [&] {
        synssumWT(88, path("no/sound"));
        const bool same_points =
            std::memcmp(points.data(), parray[0], points.size() * sizeof(Breakpoint)) == 0;
        std::printf("%d %d %d\n", static_cast<bool>(same_bits(sound(), expected)), same_points,
                    partials);
    });
    const std::string file = (folder_ / "no/sound.AIFF").string();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, writing(file) + "1 1 4\n");
    EXPECT_EQ(result.err, file + ": No such file or directory\n");
}

TEST_F(Renderers, FullDiskCostsOneLineAFileAndKeepsTheSound) {
    use_workers(2);
    const Samples expected = normalised(mixed(2, true, small_frames));
    fs::create_symlink("/dev/full", folder_ / "sound.AIFF");
    fs::create_symlink("/dev/full", folder_ / "sound.fp");
    const ChildResult result = in_child("", [&] {
        synssumWT(881, path("sound"));
        std::printf("%d\n", static_cast<bool>(same_bits(sound(), expected)));
    });
    const std::string file = (folder_ / "sound").string();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, writing(file + ".AIFF") + "1\n");
    EXPECT_EQ(result.err,
              file + ".fp: No space left on device\n" + file + ".AIFF: No space left on device\n");
}

TEST_F(Renderers, SecondRenderIntoTheSameNameGoesBehindTheFirst) {
    use_workers(2);
    const std::string first = printed([this] { synssumWT(881, path("sound")); });
    EXPECT_EQ(first, writing(path_));
    EXPECT_EQ(printed([this] { synssumWT(881, path("sound")); }), first);
    EXPECT_EQ(fs::file_size(folder_ / "sound.AIFF"), 54u + 4u * small_frames);
    EXPECT_EQ(fs::file_size(folder_ / "sound.fp"), 8u * small_frames);
    EXPECT_EQ(fbuffersize, small_frames);
}

TEST_F(Renderers, SoundTooLongForMemoryIsEmptyAndCostsOneLine) {
    if (sanitized()) {
        GTEST_SKIP() << "the sanitizers end the process at such an allocation";
    }
    sndlen = 1e12f;
    const ChildResult result = in_child("", [this] {
        synssumWT(88, path("sound"));
        std::printf("%ld\n", static_cast<long>(fbuffersize));
    });
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.ends_with("//\ts_DONE!\n0\n")) << result.out;
    EXPECT_EQ(result.err, "synthesis: Cannot allocate memory\n");
}

// --- the older ones ----------------------------------------------------------------------------

TEST_F(Renderers, SynsumWTCFreesItsBufferAndLeavesAnEarlierOne) {
    use_workers(2);
    const Samples expected = normalised(mixed(2, false, small_frames));
    float *earlier = fBuffer = static_cast<float *>(std::calloc(4, sizeof(float)));
    const std::string said = printed([] { synsumWTC(900, nullptr); });
    EXPECT_EQ(said, text("zgen.floatmax = %f\n", static_cast<double>(zgen.floatmax)));
    EXPECT_TRUE(same_bits(played.samples, expected));
    EXPECT_EQ(fBuffer, nullptr);
    EXPECT_EQ(earlier[3], 0.0f);
    std::free(earlier);
}

TEST_F(Renderers, WorkersReturnAOne) {
    Samples buffer(44100);
    float *slots[1] = {buffer.data()};
    for (void *(*body)(void *) : {synWT, synsWT, synWTC}) {
        fBuffW = slots;
        WorkerArgument argument = {0, 1};
        void *result = body(&argument);
        EXPECT_EQ(*static_cast<int32_t *>(result), 1);
        std::free(result);
    }
    fBuffL = fBuffR = buffer.data();
    for (void *(*body)(void *) : {synLT, synRT}) {
        void *result = body(nullptr);
        EXPECT_EQ(*static_cast<int32_t *>(result), 1);
        std::free(result);
    }
    fBuffW = nullptr;
    fBuffL = fBuffR = nullptr;
}

TEST_F(Renderers, SynPlaysAllPartialsOnce) {
    const Samples raw = law_of_all(22050);
    EXPECT_EQ(printed([] { syn(0.25f, 0.5f); }),
              "Num. samples = 22050\n" +
                  text("floatmax = %f\n", static_cast<double>(peak_of(raw))) + "SYNTH LIVE:\n");
    EXPECT_EQ(played.start, 0.25f);
    EXPECT_TRUE(same_bits(played.samples, normalised(raw)));
    EXPECT_EQ(fBuffer, nullptr);
    EXPECT_EQ(fbuffersize, 22050);
}

TEST_F(Renderers, SynsPlaysStretchesWithoutLookingBehind) {
    Samples raw(30870);
    render_selected_stripe(0, 1, false, raw.data(), 30870);
    EXPECT_EQ(printed([] { syns(0.5f, 0.7f); }), "SYNTH Selections LIVE:\n");
    EXPECT_EQ(played.start, 0.5f);
    raw.resize(played.samples.size());
    EXPECT_TRUE(same_bits(played.samples, normalised(raw)));
    Samples looking(raw.size());
    render_selected_stripe(0, 1, true, looking.data(), static_cast<int64_t>(looking.size()));
    EXPECT_NE(raw, looking);
    EXPECT_EQ(fBuffer, nullptr);
}

TEST_F(Renderers, SynchPlaysTheWholeSound) {
    EXPECT_EQ(printed([] { synch(); }), "SYNTH LIVE:\n");
    EXPECT_EQ(played.start, sndstart);
    const int64_t frames = static_cast<int64_t>(static_cast<double>(sndlen) * R);
    EXPECT_TRUE(same_bits(played.samples, normalised(law_of_all(frames))));
    EXPECT_EQ(fBuffer, nullptr);
}

TEST_F(Renderers, EvenAndOddPartialsAreSummed) {
    const Samples expected = normalised(mixed(2, false, small_frames));
    EXPECT_EQ(printed([] { synsum(0.5f, 0.6f); }), "SYNTH LIVE:\n");
    EXPECT_EQ(played.start, 0.5f);
    EXPECT_TRUE(same_bits(played.samples, expected));
    EXPECT_EQ(printed([] { synsumT(); }), "SYNTH LIVE:\n");
    EXPECT_EQ(played.start, sndstart);
    EXPECT_EQ(played.times, 2);
    EXPECT_TRUE(same_bits(played.samples, expected));
    EXPECT_EQ(fBuffL, nullptr);
    EXPECT_EQ(fBuffR, nullptr);
    EXPECT_EQ(fBuffer, nullptr);
    EXPECT_EQ(fbuffersize, small_frames);
}

// At 22050.5 Hz ten seconds are 220505 frames, or 220500 where the rate is cut first.
TEST_F(Renderers, TheSplitRendersAloneCutTheRate) {
    R = 22050.5;
    sndlen = 10.0f;
    std::vector<size_t> lengths;
    for (void (*render)() : {+[] { syn(0.0f, 10.0f); }, +[] { syns(0.0f, 10.0f); }, synch,
                             +[] { synsum(0.0f, 10.0f); }, synsumT}) {
        printed(render);
        lengths.push_back(played.samples.size());
    }
    EXPECT_EQ(lengths, (std::vector<size_t>{220505, 220505, 220505, 220500, 220500}));
}

TEST_F(Renderers, OddPartialsOfOneAreNone) {
    fill_store({{{0.0f, 440.0f, 0.0f}, {0.1f, 440.0f, 0.0f}}});
    Samples even(4410), odd(4410);
    synL(even.data(), 4410);
    synR(odd.data(), 4410);
    EXPECT_GT(peak_of(even), 0.9f);
    EXPECT_EQ(peak_of(odd), 0.0f);
    fill_store({});
    synR(odd.data(), 4410);
    EXPECT_EQ(peak_of(odd), 0.0f);
}
