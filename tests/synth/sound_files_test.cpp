// AIFF and float files: the bytes of new ones, what an append makes of old ones, and files that
// cannot be written.

#include "synth/aiff.h"
#include "synth/sound.h"
#include "synth/sound_files.h"
#include "tests/support/child.h"
#include "tests/support/command_output.h"
#include "tests/support/console.h"
#include "tests/support/made_sound.h"
#include "tests/support/sound_folder.h"

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

class SoundFiles : public SoundTest {
  protected:
    /// fBuffer of so many frames, all `value`, and a sndlen that gives as many.
    void fill_level(int64_t frames, float value) {
        fill_sound(std::vector<float>(static_cast<size_t>(frames), value));
        sndlen = (static_cast<float>(frames) + 0.5f) / 44100.0f;
    }

    std::string write(int64_t frames, const std::string &file = "tone") {
        char *into = name(file);
        return printed([&] { EXPECT_EQ(write2soundfile(into, frames), 0); });
    }

    void write_floats(const std::vector<float> &floats) {
        EXPECT_EQ(printed([&] {
                      EXPECT_EQ(write2rawfloatfile(name(), floats.data(),
                                                   static_cast<int64_t>(floats.size())),
                                0);
                  }),
                  "");
    }
};

/// What write2soundfile prints for a sound of so many seconds at 44100 Hz.
std::string told(const std::string &name, const std::string &length) {
    return "//Opening file\t\t  \"" + name + ".AIFF\"\n//Writing header\t  length = " + length +
           "\trate = 44100.00\n//Writing sound data...\n//Deallocating buffers...\n//\ts_DONE!\n";
}

FileBytes with_samples(FileBytes bytes, const std::vector<int> &samples) {
    for (const int sample : samples) {
        bytes.push_back(static_cast<uint8_t>(sample >> 8));
        bytes.push_back(static_cast<uint8_t>(sample));
    }
    return bytes;
}

const float infinity = std::numeric_limits<float>::infinity();

} // namespace

TEST_F(SoundFiles, InitialHeader) {
    AiffHeader given{};
    std::memset(&given, 0x55, sizeof given);
    const AiffHeader header = initAiff_h(given);
    EXPECT_EQ(header.form_size, 46);
    EXPECT_EQ(header.comm_size, 18);
    EXPECT_EQ(header.channels, 1);
    EXPECT_EQ(header.frames, 0);
    EXPECT_EQ(header.sample_size, 16);
    EXPECT_EQ(std::memcmp(header.rate, "00000000\x55\x55", 10), 0);
    EXPECT_EQ(header.ssnd_size, 8);
    EXPECT_EQ(header.offset, 0);
    EXPECT_EQ(header.block_size, 0);
}

TEST_F(SoundFiles, NewFileByteForByte) {
    fill_sound({0.0f, 0.5f, -0.5f, 0.7f, -0.7f, 1.0f, -1.0f, 0.00001f});
    sndlen = 8.5f / 44100.0f;
    write(8);
    EXPECT_EQ(bytes_of("tone.AIFF"),
              with_samples(plain_header(8), {0, 16383, -16383, 22936, -22936, 32767, -32767, 0}));
}

TEST_F(SoundFiles, ThousandFramesGive2054Bytes) {
    fill_level(1000, 0.25f);
    write(1000);
    const FileBytes bytes = bytes_of("tone.AIFF");
    ASSERT_EQ(bytes.size(), 2054u);
    EXPECT_EQ(number_at(bytes, 4, 4), 2046);
    EXPECT_EQ(number_at(bytes, 22, 4), 1000);
    EXPECT_EQ(number_at(bytes, 42, 4), 2008);
}

TEST_F(SoundFiles, SamplesOfSeveralBlocksAllArrive) {
    std::vector<float> ramp(10000);
    for (size_t i = 0; i < ramp.size(); ++i) {
        ramp[i] = static_cast<float>(i) / 32767.0f;
    }
    fill_sound(ramp);
    sndlen = 10000.5f / 44100.0f;
    write(10000);
    const std::vector<int> samples = samples_in(bytes_of("tone.AIFF"));
    ASSERT_EQ(samples.size(), 10000u);
    for (size_t i = 0; i < samples.size(); ++i) {
        ASSERT_EQ(samples[i], static_cast<int>(ramp[i] * 32767.0f)) << i;
    }
}

TEST_F(SoundFiles, RateOf44100) {
    fill_level(1, 0.0f);
    write(1);
    const FileBytes bytes = bytes_of("tone.AIFF");
    EXPECT_EQ(FileBytes(bytes.begin() + 28, bytes.begin() + 38),
              (FileBytes{0x40, 0x0E, 0xAC, 0x44, 0, 0, 0, 0, 0, 0}));
}

TEST_F(SoundFiles, NoFramesStillMakeAHeader) {
    sndlen = 0.0f;
    write(0);
    EXPECT_EQ(bytes_of("tone.AIFF"), plain_header(0));
    EXPECT_EQ(plain_header(0).size(), 54u);
}

TEST_F(SoundFiles, NameEndsWithTheExtensionInTheCallersBuffer) {
    fill_level(2, 0.1f);
    char *into = name("my tone.x");
    printed([&] { write2soundfile(into, 2); });
    EXPECT_EQ(std::string(into), path("my tone.x.AIFF"));
    EXPECT_TRUE(exists("my tone.x.AIFF"));
}

TEST_F(SoundFiles, ConsoleOfANewFile) {
    fill_sound({0.0f});
    sndlen = 1.5f;
    EXPECT_EQ(write(1), told(path("tone"), " 1.500"));
}

TEST_F(SoundFiles, CountsComeFromTheLengthAndNotFromTheSamples) {
    fill_level(4, 0.5f);
    sndlen = 10.5f / 44100.0f;
    write(4);
    EXPECT_EQ(bytes_of("tone.AIFF"), with_samples(plain_header(10), {16383, 16383, 16383, 16383}));
}

TEST_F(SoundFiles, WriterGrowsTheCountsItIsGiven) {
    AiffHeader given = initAiff_h({});
    given.form_size = 1000;
    given.comm_size = 99;
    given.channels = 7;
    given.frames = 300;
    given.sample_size = 24;
    given.ssnd_size = 600;
    given.offset = 5;
    given.block_size = 6;
    FILE *file = std::fopen(path("h").c_str(), "wb");
    std::fputs("head", file);
    EXPECT_EQ(printed([&] { wrAiff_h3(2.0f, 10.25f, file, given); }),
              "//Writing header\t  length =  2.000\trate =    10.25\n");
    std::fclose(file);
    const FileBytes bytes = bytes_of("h");
    ASSERT_EQ(bytes.size(), 58u); // behind what stood there
    EXPECT_EQ(number_at(bytes, 4 + 4, 4), 1040);
    EXPECT_EQ(number_at(bytes, 4 + 16, 4), 18);
    EXPECT_EQ(number_at(bytes, 4 + 20, 2), 1);
    EXPECT_EQ(number_at(bytes, 4 + 22, 4), 320);
    EXPECT_EQ(number_at(bytes, 4 + 26, 2), 16);
    EXPECT_EQ(number_at(bytes, 4 + 28, 4), 0x4002A400); // 10.25 is 1.28125 times 8
    EXPECT_EQ(number_at(bytes, 4 + 42, 4), 640);
    EXPECT_EQ(number_at(bytes, 4 + 46, 8), 0);
}

TEST_F(SoundFiles, WriterCountsFramesInSinglePrecision) {
    ASSERT_LT(static_cast<double>(0.7f) * 10.0, 7.0);
    FILE *file = std::fopen(path("h").c_str(), "wb");
    printed([&] { EXPECT_EQ(wrAiff_h3(0.7f, 10.0f, file, initAiff_h({})).frames, 7); });
    std::fclose(file);
    EXPECT_EQ(number_at(bytes_of("h"), 22, 4), 7);
}

TEST_F(SoundFiles, RateIsTheOutputs) {
    fill_sound({0.0f});
    R = 48000.0;
    sndlen = 0.5f;
    const std::string text = write(1);
    EXPECT_NE(text.find("\trate = 48000.00\n"), std::string::npos) << text;
    const FileBytes bytes = bytes_of("tone.AIFF");
    EXPECT_EQ(number_at(bytes, 22, 4), 24000);
    EXPECT_EQ(number_at(bytes, 28, 4), 0x400EBB80);
}

TEST_F(SoundFiles, LengthsThatAreNoCountAreHarmless) {
    for (const float length : {std::nanf(""), infinity, -infinity, -1.0f, 1e30f}) {
        FILE *file = std::fopen(path("h").c_str(), "wb");
        printed([&] { wrAiff_h3(length, 44100.0f, file, initAiff_h({})); });
        std::fclose(file);
        EXPECT_EQ(bytes_of("h").size(), 54u) << length;
    }
    EXPECT_EQ(whole_frames(std::nanf("")), 0);
    EXPECT_EQ(whole_frames(-1.9f), -1);
    EXPECT_EQ(whole_frames(infinity), int64_t{1} << 56);
}

// --- reading a header --------------------------------------------------------------------------

namespace {

AiffHeader header_in(const std::string &path) {
    AiffHeader given;
    std::memset(&given, 0x11, sizeof given);
    FILE *file = std::fopen(path.c_str(), "r");
    const AiffHeader header = rdAiff_h(file, given);
    std::fclose(file);
    return header;
}

constexpr int64_t untouched = 0x1111111111111111;

} // namespace

TEST_F(SoundFiles, ReaderOfOurOwnHeaderIsMisalignedAndStopsBeforeTheSound) {
    fill_level(1000, 0.0f);
    write(1000);
    const AiffHeader header = header_in(path("tone.AIFF"));
    // 2046 is 00 00 07 FE; the bytes are signed.
    EXPECT_EQ(header.form_size, -2 * 0x1000000 + 7 * 0x10000);
    EXPECT_EQ(header.comm_size, 0x4D4D4F43); // "COMM"
    EXPECT_EQ(header.channels, 0);
    EXPECT_EQ(header.frames, 0x01001200);
    EXPECT_EQ(header.sample_size, 0);
    const uint8_t rate[10] = {0x03, 0xE8, 0, 16, 0x40, 0x0E, 0xAC, 0x44, 0, 0};
    EXPECT_EQ(std::memcmp(header.rate, rate, 10), 0);
    EXPECT_EQ(header.ssnd_size, untouched);
    EXPECT_EQ(header.offset, untouched);
    EXPECT_EQ(header.block_size, untouched);
}

TEST_F(SoundFiles, ReaderTakesAFileInItsOwnOrderWhole) {
    std::ofstream(path("own"), std::ios::binary)
        << "FORM" << std::string("\1\2\3\4", 4) << "AIFF" << std::string("\5\0\0\0", 4)
        << std::string("\6\0", 2) << std::string("\7\1\0\0", 4) << std::string("\x8\0", 2)
        << "0123456789"
        << "SSND" << std::string("\x9\0\0\0\xA\0\0\0\xB\0\0\0", 12);
    const AiffHeader header = header_in(path("own"));
    EXPECT_EQ(header.form_size, 0x04030201);
    EXPECT_EQ(header.comm_size, 5);
    EXPECT_EQ(header.channels, 6);
    EXPECT_EQ(header.frames, 263);
    EXPECT_EQ(header.sample_size, 8);
    EXPECT_EQ(std::memcmp(header.rate, "0123456789", 10), 0);
    EXPECT_EQ(header.ssnd_size, 9);
    EXPECT_EQ(header.offset, 10);
    EXPECT_EQ(header.block_size, 11);
}

TEST_F(SoundFiles, ReaderStopsAtAWrongTagOrAtTheEnd) {
    std::ofstream(path("a")) << "RIFFabcdAIFF";
    EXPECT_EQ(header_in(path("a")).form_size, untouched);
    std::ofstream(path("b")) << "FORM" << std::string("\1\0\0\0", 4) << "AIFC";
    EXPECT_EQ(header_in(path("b")).form_size, 1);
    EXPECT_EQ(header_in(path("b")).comm_size, untouched);
    std::ofstream(path("c")) << "FORM" << std::string("\1\0\0\0", 4) << "AIFF"
                             << "COM";
    EXPECT_EQ(header_in(path("c")).comm_size, untouched);
    std::ofstream(path("d"));
    EXPECT_EQ(header_in(path("d")).form_size, untouched);
}

// --- appending ---------------------------------------------------------------------------------

TEST_F(SoundFiles, SecondSoundGoesBehindTheFirst) {
    fill_level(3, 0.5f);
    write(3);
    fill_level(2, -0.25f);
    EXPECT_EQ(write(2), told(path("tone"), " 0.000"));
    const FileBytes bytes = bytes_of("tone.AIFF");
    ASSERT_EQ(bytes.size(), 54u + 2 * 5);
    EXPECT_EQ(samples_in(bytes), (std::vector<int>{16383, 16383, 16383, -8191, -8191}));
}

TEST_F(SoundFiles, SecondSoundRaisesWhatTheReaderMadeOfTheHeader) {
    fill_level(3, 0.5f);
    write(3);
    fill_level(2, -0.25f);
    write(2);
    const FileBytes bytes = bytes_of("tone.AIFF");
    FileBytes expected = plain_header(0);
    // 52 is 00 00 00 34, read as 0x34000000; 2 frames more are 4 bytes.
    const uint8_t form[] = {0x34, 0, 0, 4};
    const uint8_t count[] = {0x01, 0x00, 0x12, 0x02};
    const uint8_t sound[] = {0, 0, 0, 12}; // started from 8
    std::copy(form, form + 4, expected.begin() + 4);
    std::copy(count, count + 4, expected.begin() + 22);
    std::copy(sound, sound + 4, expected.begin() + 42);
    EXPECT_EQ(FileBytes(bytes.begin(), bytes.begin() + 54), expected);
}

TEST_F(SoundFiles, OtherFileGetsTheHeaderOverItsStartAndTheSoundAtItsEnd) {
    std::ofstream(path("tone.AIFF")) << std::string(60, 'x');
    fill_level(2, 0.5f);
    write(2);
    FileBytes expected = plain_header(2);
    expected.resize(60, 'x');
    EXPECT_EQ(bytes_of("tone.AIFF"), with_samples(expected, {16383, 16383}));
}

TEST_F(SoundFiles, RawFloatsHaveNoHeader) {
    write_floats({0.5f, -0.25f, infinity});
    EXPECT_EQ(floats_of("tone.fp"), (std::vector<float>{0.5f, -0.25f, infinity}));
    EXPECT_EQ(bytes_of("tone.fp").size(), 12u);
}

TEST_F(SoundFiles, RawFloatsTwiceMakeOneFileOfTwiceTheLength) {
    write_floats({0.5f, -0.25f});
    write_floats({1.0f, 2.0f});
    EXPECT_EQ(floats_of("tone.fp"), (std::vector<float>{0.5f, -0.25f, 1.0f, 2.0f}));
}

TEST_F(SoundFiles, RawFloatWriterLeavesTheCallersNameAlone) {
    char *into = name();
    const float one = 1.0f;
    write2rawfloatfile(into, &one, 1);
    EXPECT_EQ(std::string(into), path("tone"));
    write2rawfloatfile(into, &one, -3);
    EXPECT_EQ(floats_of("tone.fp").size(), 1u);
}

// --- values and names at the edge --------------------------------------------------------------

TEST_F(SoundFiles, SamplesAreCutTowardZeroAndHeldToTheRange) {
    EXPECT_EQ(sample16(1.99f), 1);
    EXPECT_EQ(sample16(-1.99f), -1);
    EXPECT_EQ(sample16(32767.9f), 32767);
    EXPECT_EQ(sample16(1e9f), 32767);
    EXPECT_EQ(sample16(-1e9f), -32768);
    EXPECT_EQ(sample16(infinity), 32767);
    EXPECT_EQ(sample16(-infinity), -32768);
    EXPECT_EQ(sample16(std::nanf("")), 0);
}

TEST_F(SoundFiles, WithoutASoundOnlyTheHeaderIsWritten) {
    sndlen = 1.0f;
    write(44100);
    EXPECT_EQ(bytes_of("tone.AIFF"), plain_header(44100));
    fill_level(2, 0.5f);
    write(-2, "other");
    EXPECT_EQ(bytes_of("other.AIFF"), plain_header(2));
}

TEST_F(SoundFiles, NameOf99CharactersTakesItsExtension) {
    fill_level(1, 0.0f);
    const std::string file(99 - path("").size(), 'n');
    ASSERT_EQ(path(file).size(), 99u);
    write(1, file);
    EXPECT_TRUE(exists(file + ".AIFF"));
    write2rawfloatfile(path(file).c_str(), fBuffer, 1);
    EXPECT_TRUE(exists(file + ".fp"));
}

TEST_F(SoundFiles, NameThatLeavesNoRoomForTheExtensionIsRefused) {
    const ChildResult result = in_child("", [] {
        char buffer[sound_path_room];
        std::memset(buffer, 'n', sizeof buffer);
        buffer[251] = '\0';
        write2soundfile(buffer, 0);
        std::printf("%zu\n", std::strlen(buffer));
        buffer[251] = 'n';
        buffer[253] = '\0';
        write2rawfloatfile(buffer, nullptr, 0);
    });
    const std::string n = std::string(251, 'n');
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "//Opening file\t\t  \"" + n +
                              "\"\n//Writing header\t  length =  0.000\trate = 44100.00\n"
                              "//Writing sound data...\n//Deallocating buffers...\n//\ts_DONE!\n"
                              "251\n");
    EXPECT_EQ(result.err, n + ": File name too long\n" + n + "nn: File name too long\n");
}

TEST_F(SoundFiles, LongestNameThatFitsIsTaken) {
    char with_extension[sound_path_room];
    EXPECT_TRUE(sound_path(with_extension, std::string(250, 'n').c_str(), ".AIFF"));
    EXPECT_EQ(std::string(with_extension), std::string(250, 'n') + ".AIFF");
    EXPECT_FALSE(sound_path(with_extension, std::string(251, 'n').c_str(), ".AIFF"));
    EXPECT_EQ(std::string(with_extension), "");
}

// --- files that cannot be written --------------------------------------------------------------

TEST_F(SoundFiles, FolderThatIsMissingCostsOneLine) {
    fill_level(3, 0.5f);
    const float *kept = fBuffer;
    char *into = name("no/tone");
    const ChildResult result = in_child("", [&] {
        write2soundfile(into, 3);
        write2rawfloatfile(path("no/raw").c_str(), fBuffer, 3);
        std::printf("%d %g\n", fBuffer == kept, static_cast<double>(fBuffer[2]));
    });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, told(path("no/tone"), " 0.000") + "1 0.5\n");
    EXPECT_EQ(result.err, path("no/tone.AIFF") + ": No such file or directory\n" +
                              path("no/raw.fp") + ": No such file or directory\n");
}

TEST_F(SoundFiles, FullDiskCostsOneLine) {
    fill_level(20000, 0.5f);
    std::filesystem::create_symlink("/dev/full", path("tone.AIFF"));
    std::filesystem::create_symlink("/dev/full", path("tone.fp"));
    char *into = name();
    const ChildResult result = in_child("", [&] {
        write2rawfloatfile(into, fBuffer, 20000);
        write2soundfile(into, 20000);
    });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, told(path("tone"), " 0.454"));
    EXPECT_EQ(result.err, path("tone.fp") + ": No space left on device\n" + path("tone.AIFF") +
                              ": No space left on device\n");
}

TEST_F(SoundFiles, FolderInPlaceOfTheFileCostsOneLine) {
    std::filesystem::create_directory(path("tone.AIFF"));
    char *into = name();
    const ChildResult result = in_child("", [&] { write2soundfile(into, 0); });
    EXPECT_EQ(result.out, told(path("tone"), " 0.000"));
    EXPECT_EQ(result.err, path("tone.AIFF") + ": Is a directory\n");
}

// --- other readers -----------------------------------------------------------------------------

namespace {

bool has_program(const std::string &program) {
    return !output_of("command -v " + program).empty();
}

} // namespace

class OtherReaders : public SoundFiles {
  protected:
    /// Half a second of a sine, peak 0.7.
    void write_tone() {
        std::vector<float> tone(22050);
        for (size_t i = 0; i < tone.size(); ++i) {
            tone[i] = 0.7f * std::sin(static_cast<float>(i) * 2.0f * 3.1415927f / 100.0f);
        }
        fill_sound(tone);
        sndlen = 0.5f;
        write(22050);
    }
};

TEST_F(OtherReaders, SoxFindsLengthRateAndPeak) {
    if (!has_program("sox")) {
        GTEST_SKIP() << "sox is not installed";
    }
    write_tone();
    const std::string file = path("tone.AIFF");
    EXPECT_EQ(output_of("soxi -s " + file), "22050\n");
    EXPECT_EQ(output_of("soxi -r " + file), "44100\n");
    EXPECT_EQ(output_of("soxi -c " + file), "1\n");
    EXPECT_EQ(output_of("soxi -b " + file), "16\n");
    const std::string statistics = output_of("sox " + file + " -n stat 2>&1");
    // 22936 of 32768
    EXPECT_NE(statistics.find("Maximum amplitude:     0.699951"), std::string::npos) << statistics;
    EXPECT_NE(statistics.find("Minimum amplitude:    -0.699951"), std::string::npos) << statistics;
}

TEST_F(OtherReaders, SndfileFindsLengthRateAndPeak) {
    if (!has_program("sndfile-info")) {
        GTEST_SKIP() << "sndfile-info is not installed";
    }
    write_tone();
    const std::string info = output_of("sndfile-info " + path("tone.AIFF"));
    EXPECT_NE(info.find("Sample Rate : 44100\n"), std::string::npos) << info;
    EXPECT_NE(info.find("Frames      : 22050\n"), std::string::npos) << info;
    EXPECT_NE(info.find("Channels    : 1\n"), std::string::npos) << info;
    EXPECT_NE(info.find("Signal Max  : 22936 "), std::string::npos) << info;
}
