// What the diagnostic driver says, writes and leaves behind in each of its modes.

#include "live/live.h"
#include "store/settings.h"
#include "tests/support/child.h"
#include "tests/support/made_sound.h"
#include "tests/synth/synth33_support.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>

namespace {

class Synth33Talk : public Synth33 {
  protected:
    /// One partial of a steady 1 Hz over a second: eight frames, peak 1.
    void SetUp() override {
        Synth33::SetUp();
        fill_store({{{0.0f, 1.0f, 0.0f}, {1.0f, 1.0f, 0.0f}}});
    }
    void TearDown() override {
        play_rendered = kept;
        fplayer = {};
        Synth33::TearDown();
    }

    std::string head() {
        return "//Additive oscillator-bank synthesizer:" + path("tone") + "\n\n";
    }

    int32_t (*kept)(float, int64_t) = play_rendered;
};

const std::string eight_frames = "Audio length: 1.000000\n//Allocating 32 bytes buffer RAM\n.\n";
const std::string float_done = "\a\n//\tf_DONE!\n";
const std::string removing = "//Removing floating-point file...\n";
const std::string done = "//Deallocating buffers...\a\n//\ts_DONE!\n";

std::string converting(const std::string &name, const std::string &peak = "1.000000",
                       const std::string &factor = "32764.000000",
                       const std::string &length = " 1.000") {
    return "//Converting... max.amp = " + peak + "\n//Multiplying by          " + factor +
           "...\n//Opening file\t\t  \"" + name +
           ".AIFF\"\n//Writing header\t  length = " + length +
           "\trate =     8.00\n//Writing sound data...\n";
}

/// What the player's hook was given.
struct Played {
    float start;
    int64_t frames;
    int64_t size;
    std::vector<float> samples;
    float *buffer;
};
Played played;

int32_t remember(float start, int64_t frames) {
    played = {start, frames, fbuffersize, {fBuffer, fBuffer + frames}, fBuffer};
    return 17;
}

} // namespace

TEST_F(Synth33Talk, Mode8KeepsBothFiles) {
    EXPECT_EQ(run(8), head() + eight_frames + float_done + converting(path("tone")) + done);
    EXPECT_EQ(floats_of("tone.fp").size(), 8u);
    FileBytes header = plain_header(8);
    header[29] = 0x02; // 8 Hz
    header[30] = 0x80;
    header[31] = 0x00;
    const FileBytes bytes = bytes_of("tone.AIFF");
    ASSERT_EQ(bytes.size(), 54u + 16);
    EXPECT_EQ(FileBytes(bytes.begin(), bytes.begin() + 54), header);
    EXPECT_EQ(samples_in(bytes),
              (std::vector<int>{5791, 16382, 17375, 0, -23167, -32764, -23167, 0}));
}

TEST_F(Synth33Talk, Mode881KeepsBothFiles) {
    EXPECT_EQ(run(881), head() + eight_frames + float_done + converting(path("tone")) + done);
    EXPECT_TRUE(exists("tone.fp"));
    EXPECT_TRUE(exists("tone.AIFF"));
}

TEST_F(Synth33Talk, Mode80WritesTheFloatFileAlone) {
    EXPECT_EQ(run(80), head() + eight_frames + float_done + done);
    EXPECT_TRUE(exists("tone.fp"));
    EXPECT_FALSE(exists("tone.AIFF"));
}

TEST_F(Synth33Talk, Mode88RemovesTheFloatFile) {
    EXPECT_EQ(run(88),
              head() + eight_frames + float_done + removing + converting(path("tone")) + done);
    EXPECT_FALSE(exists("tone.fp"));
    EXPECT_EQ(bytes_of("tone.AIFF").size(), 70u);
}

TEST_F(Synth33Talk, Mode900PlaysAtAPeakOf07) {
    play_rendered = remember;
    sndlen = 1.0f;
    const std::string text =
        printed([] { EXPECT_EQ(synth33(0.25f, 900, nullptr, parray, npoints, partials, 0), 17); });
    EXPECT_EQ(text, "//Additive oscillator-bank synthesizer:\n\nAudio length: 1.000000\n"
                    "//Allocating 32 bytes buffer RAM\n\nSYNTH LIVE:\n");
    EXPECT_EQ(played.start, 0.25f);
    EXPECT_EQ(played.frames, 8);
    EXPECT_EQ(played.size, 8);
    EXPECT_NEAR(played.samples.at(5), -0.7, 1e-6);
    EXPECT_NEAR(played.samples.at(1), 0.35, 1e-6);
    EXPECT_EQ(fBuffer, nullptr);
    EXPECT_EQ(fbuffersize, 8);
    EXPECT_TRUE(std::filesystem::is_empty(path("")));
}

TEST_F(Synth33Talk, Mode900LeavesTheSoundToAPlayerThatRuns) {
    play_rendered = remember;
    fplayer.state = 2;
    run(0); // any other mode goes to files
    printed([] { synth33(0.0f, 900, nullptr, parray, npoints, partials, 0); });
    EXPECT_EQ(fBuffer, nullptr);
    EXPECT_NEAR(played.buffer[5], -0.7, 1e-6); // still there
    std::free(played.buffer);
}

TEST_F(Synth33Talk, WithoutAPlayerMode900SaysSo) {
    const std::string text =
        printed([] { synth33(0.0f, 900, nullptr, parray, npoints, partials, 0); });
    EXPECT_TRUE(text.ends_with("\nSYNTH LIVE:\nNot implemented yet...\n")) << text;
    EXPECT_EQ(fBuffer, nullptr);
}

TEST_F(Synth33Talk, OnlyTheLow16BitsOfModeAndSelectCount) {
    EXPECT_EQ(run(0x30000 + 80, 0x10000), head() + eight_frames + float_done + done);
    EXPECT_FALSE(exists("tone.AIFF"));
    const std::string text = run(80, 0x20001);
    EXPECT_NE(text.find("Number of candidates: 0\n"), std::string::npos);
}

TEST_F(Synth33Talk, VerboseNamesEachPartialWithPoints) {
    fill_store({{{0.0f, 1.0f, -6.5f}, {1.0f, 1.0f, 0.0f}}, {}, {{0.5f, 440.25f, -20.0f}}});
    sndlen = 1.0f;
    verbose = 1;
    EXPECT_EQ(run(80), head() + eight_frames +
                           "//... rendering partial#     0:\t1.000000\t-6.500000\n"
                           "//... rendering partial#     2:\t440.250000\t-20.000000\n" +
                           float_done + done);
}

TEST_F(Synth33Talk, BarHasADotForEach441Frames) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    for (const auto &[rate, bar] : std::vector<std::pair<double, std::string>>{
             {441.0, "."}, {442.0, ".."}, {882.0, ".."}, {883.0, "..."}}) {
        R = rate;
        EXPECT_NE(run(80).find("RAM\n" + bar + "\n\a"), std::string::npos) << rate;
    }
}

TEST_F(Synth33Talk, NothingSelected) {
    EXPECT_EQ(run(8, 1), head() +
                             "Number of candidates: 0\nAudio length: 0.000000\n"
                             "//Allocating 0 bytes buffer RAM\n\n" +
                             float_done + converting(path("tone"), "0.000000", "inf", " 0.000") +
                             done);
    EXPECT_EQ(bytes_of("tone.fp").size(), 0u);
    EXPECT_EQ(bytes_of("tone.AIFF").size(), 54u);
}

TEST_F(Synth33Talk, StretchesInWords) {
    fill_store({even(6), even(3)});
    select(0, 1, 4);
    select(1, 0, 2);
    verbose = 1;
    EXPECT_EQ(run(80, 1), head() +
                              "Number of candidates: 2\nAudio length: 2.000000\n"
                              "//Allocating 64 bytes buffer RAM\n.\n"
                              "x1= 0\ty1= 1\tx1= 0\ty1= 4\n"
                              "//... rendering partial#     0:\t2.000000\t0.000000\n"
                              "*\n"
                              "@2: candidate[0] = [0]:1 -> 4\n"
                              "candidate #: 0 of 2\n"
                              "x1= 1\ty1= 0\tx1= 1\ty1= 2\n"
                              "//... rendering partial#     1:\t2.000000\t0.000000\n"
                              "candidate #: 1 of 2\n" +
                              float_done + done);
}

TEST_F(Synth33Talk, StretchesInEachFileMode) {
    fill_store({even(5)});
    select(0, 1, 3);
    const std::string stretch = "Number of candidates: 1\nAudio length: 1.500000\n"
                                "//Allocating 48 bytes buffer RAM\n.\n"
                                "x1= 0\ty1= 1\tx1= 0\ty1= 3\n*\ncandidate #: 0 of 1\n";
    const std::string aiff = converting(path("tone"), "1.000000", "32764.000000", " 1.500");
    EXPECT_EQ(run(88, 1), head() + stretch + float_done + removing + aiff + done);
    EXPECT_FALSE(exists("tone.fp"));
    EXPECT_EQ(bytes_of("tone.AIFF").size(), 54u + 24);
    EXPECT_EQ(run(8, 1), head() + stretch + float_done + aiff + done);
    EXPECT_EQ(run(881, 1), head() + stretch + float_done + aiff + done);
    EXPECT_EQ(run(80, 1), head() + stretch + float_done + done);
    EXPECT_EQ(floats_of("tone.fp").size(), 36u);
}

TEST_F(Synth33Talk, StretchesPlayedSayLess) {
    fill_store({even(6)});
    select(0, 1, 4);
    play_rendered = remember;
    const std::string text =
        printed([] { synth33(0.0f, 900, nullptr, parray, npoints, partials, 1); });
    EXPECT_EQ(text, "//Additive oscillator-bank synthesizer:\n\nNumber of candidates: 1\n"
                    "Audio length: 2.000000\n//Allocating 64 bytes buffer RAM\n\n*\n"
                    "@2: candidate[0] = [0]:1 -> 4\nSYNTH LIVE:\n");
    EXPECT_EQ(played.frames, 16);
}

TEST_F(Synth33Talk, CountIsToldBeforeItShrinks) {
    fill_store({even(5), even(4)});
    select(0, 1, 3);
    select(1, 1, 1);
    EXPECT_EQ(run(80, 1), head() +
                              "Number of candidates: 1\nAudio length: 1.500000\n"
                              "//Allocating 48 bytes buffer RAM\n.\n" +
                              float_done + done);
}

TEST_F(Synth33Talk, LoneLastPointIsListed) {
    fill_store({even(4)});
    select(0, 3, 3);
    const std::string text = run(80, 1);
    EXPECT_NE(text.find("x1= 0\ty1= 3\tx1= 0\ty1= 0\n*\ncandidate #: 0 of 1\n"), std::string::npos)
        << text;
}

TEST_F(Synth33Talk, AnswerMinusCIsAFileName) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(path(""));
    char buffer[256] = "-c";
    printed([&] { synth33(0.0f, 8, buffer, parray, npoints, partials, 0); });
    std::filesystem::current_path(before);
    EXPECT_TRUE(exists("-c.fp"));
    EXPECT_TRUE(exists("-c.AIFF"));
    EXPECT_EQ(std::string(buffer), "-c.AIFF");
}

TEST_F(Synth33Talk, FloatFileOfMode88IsThereUntilItsLine) {
    // What was in it goes with it, an earlier render's floats too.
    run(80);
    EXPECT_EQ(floats_of("tone.fp").size(), 8u);
    run(8);
    EXPECT_EQ(floats_of("tone.fp").size(), 16u);
    run(88);
    EXPECT_FALSE(exists("tone.fp"));
}

TEST_F(Synth33Talk, SecondRenderIntoTheSameNameGoesBehindTheFirst) {
    run(88);
    run(88);
    const std::vector<int> once = {5791, 16382, 17375, 0, -23167, -32764, -23167, 0};
    std::vector<int> twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(samples_in(bytes_of("tone.AIFF")), twice);
}

TEST_F(Synth33Talk, SilenceBecomesZeroSamples) {
    fill_store({{{0.25f, 1.0f, 0.0f}}});
    sndlen = 1.0f;
    EXPECT_EQ(run(8), head() + eight_frames + float_done +
                          converting(path("tone"), "0.000000", "inf") + done);
    EXPECT_EQ(samples_in(bytes_of("tone.AIFF")), std::vector<int>(8, 0));
}

TEST_F(Synth33Talk, EarlierSoundIsDroppedAndNothingIsLeftToReplay) {
    fill_sound({0.25f});
    float *earlier = fBuffer;
    run(8);
    EXPECT_EQ(fBuffer, nullptr);
    EXPECT_EQ(fbuffersize, 1);
    EXPECT_EQ(earlier[0], 0.25f); // not freed
    std::free(earlier);
}

TEST_F(Synth33Talk, StoreStaysAsItWas) {
    fill_store({even(6), {}, even(3)});
    select(0, 1, 4);
    const std::vector<Breakpoint> before(parray[0], parray[0] + 6);
    run(8, 1);
    run(8, 0);
    EXPECT_EQ(partials, 3);
    for (size_t j = 0; j < before.size(); ++j) {
        EXPECT_EQ(std::memcmp(&before[j], &parray[0][j], sizeof(Breakpoint)), 0) << j;
    }
}

TEST_F(Synth33Talk, NameOf99CharactersTakesBothExtensions) {
    const std::string file(99 - path("").size(), 'n');
    char *into = name(file);
    ASSERT_EQ(std::string(into).size(), 99u);
    printed([&] { synth33(0.0f, 8, into, parray, npoints, partials, 0); });
    EXPECT_TRUE(exists(file + ".fp"));
    EXPECT_TRUE(exists(file + ".AIFF"));
}

TEST_F(Synth33Talk, FilesThatCannotBeWrittenCostOneLineEach) {
    char *into = name("no/tone");
    const ChildResult result = in_child("", [&] {
        synth33(0.0f, 88, into, parray, npoints, partials, 0);
        std::printf("%d\n", fBuffer == nullptr);
    });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "//Additive oscillator-bank synthesizer:" + path("no/tone") + "\n\n" +
                              eight_frames + float_done + removing + converting(path("no/tone")) +
                              done + "1\n");
    EXPECT_EQ(result.err, path("no/tone.fp") + ": No such file or directory\n" +
                              path("no/tone.AIFF") + ": No such file or directory\n");
}

TEST_F(Synth33Talk, FullDiskCostsOneLineAFile) {
    std::filesystem::create_symlink("/dev/full", path("tone.AIFF"));
    std::filesystem::create_symlink("/dev/full", path("tone.fp"));
    char *into = name();
    const ChildResult result =
        in_child("", [&] { synth33(0.0f, 8, into, parray, npoints, partials, 0); });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, head() + eight_frames + float_done + converting(path("tone")) + done);
    EXPECT_EQ(result.err, path("tone.fp") + ": No space left on device\n" + path("tone.AIFF") +
                              ": No space left on device\n");
}

TEST_F(Synth33Talk, SoundTooLongForMemoryCostsOneLine) {
    if (sanitized()) {
        GTEST_SKIP() << "the sanitizers end the process at such an allocation";
    }
    sndlen = std::numeric_limits<float>::infinity();
    char *into = name();
    const ChildResult result =
        in_child("", [&] { synth33(0.0f, 80, into, parray, npoints, partials, 0); });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, head() +
                              "Audio length: inf\n"
                              "//Allocating 288230376151711744 bytes buffer RAM\n\n" +
                              float_done + done);
    EXPECT_EQ(result.err, "synthesis: Cannot allocate memory\n");
}
