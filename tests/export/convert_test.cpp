// Raw float files as AIFF.
#include "export/convert3d.h"

#include "store/settings.h"
#include "synth/sound.h"
#include "tests/export/export_support.h"
#include "tests/support/console.h"
#include "tests/support/sound_folder.h"

#include <filesystem>

namespace {

class Convert : public ExportTest {
  protected:
    void SetUp() override {
        ExportTest::SetUp();
        R = 44100.0;
        kept = std::filesystem::current_path();
        std::filesystem::current_path(path("."));
    }
    void TearDown() override {
        std::filesystem::current_path(kept);
        ExportTest::TearDown();
    }

    void make_floats(const std::string &file, const std::vector<float> &samples) {
        make(file,
             {reinterpret_cast<const char *>(samples.data()), samples.size() * sizeof(float)});
    }

    std::filesystem::path kept;
};

std::string header(int64_t frames) {
    const FileBytes bytes = plain_header(frames);
    return {bytes.begin(), bytes.end()};
}

std::string samples16(const std::vector<int> &samples) {
    std::string bytes;
    for (const int sample : samples) {
        bytes += static_cast<char>(sample >> 8);
        bytes += static_cast<char>(sample);
    }
    return bytes;
}

std::string converted(const std::string &name) {
    return printed([&name] { convert3(name.c_str()); });
}

TEST_F(Convert, ScalesToTheLargestValue) {
    make_floats("tone.fp", {0.0f, 0.25f, -0.5f, 0.1f});
    EXPECT_EQ(converted("tone"), "//Converting:\t\t0.500000\t65528.000000\n"
                                 "//Opening file: \t\"tone.AIFF\"\n"
                                 "//Writing header\t  length =  0.000\trate = 44100.00\n"
                                 "//Writing sound data:\n");
    EXPECT_EQ(text_of("tone.AIFF"), header(4) + samples16({0, 16382, -32764, 6552}));
}

TEST_F(Convert, GrowsWhatIsThere) {
    make_floats("tone.fp", {0.0f, 0.5f});
    converted("tone");
    const std::string once = text_of("tone.AIFF");
    make_floats("tone.fp", {-1.0f});
    converted("tone");
    const std::string twice = text_of("tone.AIFF");
    EXPECT_EQ(twice.size(), once.size() + 2);
    EXPECT_EQ(twice.substr(54), once.substr(54) + samples16({-32764}));
}

TEST_F(Convert, NameUpToTheFirstPoint) {
    make_floats("two.parts.fp", {1.0f});
    EXPECT_NE(converted("two.parts").find("\"two.AIFF\""), std::string::npos);
    EXPECT_NE(text_of("two.AIFF"), "none");
    const std::string longest(45, 'n');
    make_floats(longest + ".fp", {1.0f});
    converted(longest);
    EXPECT_NE(text_of(std::string(40, 'n') + ".AIFF"), "none");
}

TEST_F(Convert, TellsEvery17640Samples) {
    make_floats("tone.fp", std::vector<float>(40000, 0.5f));
    EXPECT_TRUE(converted("tone").starts_with("17640\t0.500000\n35280\t0.500000\n//Converting:"));
    EXPECT_EQ(text_of("tone.AIFF").size(), 54u + 80000u);
}

TEST_F(Convert, SilenceAndNoSamples) {
    make_floats("tone.fp", {0.0f, -0.0f});
    EXPECT_TRUE(converted("tone").starts_with("//Converting:\t\t0.000000\tinf\n"));
    EXPECT_EQ(text_of("tone.AIFF"), header(2) + samples16({0, 0}));
    make("none.fp", "abc"); // less than one
    converted("none");
    EXPECT_EQ(text_of("none.AIFF"), header(0));
}

TEST_F(Convert, DebugLine) {
    make_floats("tone.fp", {1.0f});
    dwbg = 1;
    EXPECT_TRUE(converted("tone").ends_with("//Writing sound data:\n"
                                            "//Deallocating buffers\a//s_DONE!\n"));
}

TEST_F(Convert, NoSuchFile) {
    std::string text;
    EXPECT_EQ(complained([&text] { text = converted("tone"); }),
              "Quillgrove: tone.fp: No such file or directory\n");
    EXPECT_EQ(text, "");
    EXPECT_TRUE(files().empty());
}

TEST_F(Convert, FullDisk) {
    make_floats("tone.fp", std::vector<float>(10000, 0.5f));
    const ShortOfRoom result = short_of_room(5000, "", [] { convert3("tone"); });
    EXPECT_EQ(result.err, "Quillgrove: tone.AIFF: File too large\n");
    EXPECT_EQ(files(), std::vector<std::string>{"tone.fp"});
}

} // namespace
