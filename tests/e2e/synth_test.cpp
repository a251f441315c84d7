// The entries of "Synth" from the menu, and what other programs find in the sounds that they leave.

#include "tests/e2e/menu_test.h"
#include "tests/support/command_output.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <regex>

namespace {

namespace fs = std::filesystem;

constexpr int64_t two_seconds = 88200; // frames of the whole sound

/// Two steady tones over 2 s: 440 Hz alone is heard, 220 Hz lies at the edge of silence. Whole
/// cycles between the points keep the frequencies where they are.
std::string pair_file() {
    return "( PARTIALS 2\n"
           "( POINTS 5\n0.0 440 0\n0.5 440 0\n1.0 440 0\n1.5 440 0\n2.0 440 0\n)\n"
           "( POINTS 5\n0.0 220 -140\n0.5 220 -140\n1.0 220 -140\n1.5 220 -140\n2.0 220 -140\n)\n"
           ")\n";
}

/// The number behind the colon of one of sox's lines.
double statistic(const std::string &statistics, const std::string &line) {
    std::smatch match;
    const std::regex number(line + ":\\s+(-?[0-9.]+)");
    return std::regex_search(statistics, match, number) ? std::strtod(match.str(1).c_str(), nullptr)
                                                        : -1.0;
}

/// The peak before the scaling is no round number.
std::string masked(const std::string &text) {
    static const std::regex figures(
        "(floatmax = |max.amp = |Multiplying by          )[0-9]+\\.[0-9]+");
    return std::regex_replace(text, figures, "$01*");
}

const std::string ask_name = "Enter the audio file name (no extension): ";
const std::string all_open = "Synth: All... ";
const std::string some_open = "Synth: Selected...\t ";

/// What the AIFF writer says.
std::string writing(const std::string &name, const std::string &length = " 2.000") {
    return "//Opening file\t\t  \"" + name + ".AIFF\"\n//Writing header\t  length = " + length +
           "\trate = 44100.00\n//Writing sound data...\n";
}

const std::string working_end = "//Deallocating buffers...\n//\ts_DONE!\n";

/// What the diagnostic driver says of a sound of 2 s; `before` stands ahead of the length,
/// `within` behind the bar, `removing` with the float file's end.
std::string diagnosis(const std::string &name, const std::string &before, const std::string &within,
                      const std::string &removing) {
    return "//Additive oscillator-bank synthesizer:" + name + "\n\n" + before +
           "Audio length: 2.000000\n//Allocating 352800 bytes buffer RAM\n" +
           std::string(200, '.') + "\n" + within + "\a\n//\tf_DONE!\n" + removing +
           "//Converting... max.amp = *\n//Multiplying by          *...\n" + writing(name) +
           "//Deallocating buffers...\a\n//\ts_DONE!\n";
}

const std::string removing_floats = "//Removing floating-point file...\n";

class Synth : public MenuTest {
  protected:
    /// Chooses, replies and compares what is said up to the render's end.
    void expect_render(const std::string &way, const std::vector<std::string> &modifiers,
                       const std::string &reply, const std::string &text) {
        choose(way, modifiers);
        program->send(reply);
        EXPECT_EQ(masked(said_until("s_DONE!\n")), text);
    }

    std::string file(const std::string &name) {
        return folder.path() + "/" + name;
    }

    /// Length and rate by two readers; one steady tone of this frequency and peak.
    void expect_tone(const std::string &name, double hertz, double peak) {
        const std::string path = file(name);
        EXPECT_EQ(output_of("soxi -s " + path), std::to_string(two_seconds) + "\n");
        EXPECT_EQ(output_of("soxi -r " + path), "44100\n");
        EXPECT_EQ(output_of("soxi -c " + path), "1\n");
        EXPECT_EQ(output_of("soxi -b " + path), "16\n");
        const std::string info = output_of("sndfile-info " + path);
        EXPECT_NE(info.find("Sample Rate : 44100\n"), std::string::npos) << info;
        EXPECT_NE(info.find("Frames      : 88200\n"), std::string::npos) << info;
        const std::string found = output_of("sox " + path + " -n stat 2>&1");
        EXPECT_NEAR(statistic(found, "Rough   frequency"), hertz, 1.0) << found;
        const double highest = statistic(found, "Maximum amplitude");
        const double lowest = -statistic(found, "Minimum amplitude");
        EXPECT_NEAR(std::max(highest, lowest), peak, 1e-4) << found;
    }

    size_t size_of(const std::string &name) {
        return fs::exists(file(name)) ? fs::file_size(file(name)) : 0;
    }
};

constexpr size_t float_bytes = 4 * two_seconds;
constexpr size_t sound_bytes = 2 * two_seconds;

} // namespace

TEST_F(Synth, AllPartialsInItsThreeModes) {
    begin_on(pair_file(), "-fb");
    const std::string line = "Synthesize AIFF audio file from all partials: ";
    const std::string told =
        all_open + line + ask_name + "partials: 2, 2.000000 s\nzgen.floatmax = *\n";
    expect_render("Synth/All...", {}, "\nplain\n", tag + told + writing("plain") + working_end);
    expect_tone("plain.AIFF", 440.0, 0.7);
    EXPECT_EQ(size_of("plain.fp"), 0u);
    expect_render("Synth/All...", {"ctrl"}, "\ndebug\n",
                  "CTRL\n" + tag + all_open + "Synthesize AIFF file all parts. debug mode: " +
                      ask_name + diagnosis("debug", "", "", ""));
    expect_tone("debug.AIFF", 440.0, 32764.0 / 32768.0);
    EXPECT_EQ(size_of("debug.fp"), float_bytes);
    expect_render("Synth/All...", {"shift"}, "\n-c\n",
                  "SHIFT\n" + tag + all_open +
                      "Synthesize AIFF file all parts. debug w. fp file: " + ask_name +
                      diagnosis("-c", "", "", ""));
    fs::rename(file("-c.AIFF"), file("dash.AIFF"));
    expect_tone("dash.AIFF", 440.0, 32764.0 / 32768.0);
    EXPECT_EQ(size_of("-c.fp"), float_bytes);
    expect_dialogue("Synth/All...", "\n-c\n",
                    tag + all_open + line + ask_name + "Command cancelled\n");
    expect_alive();
}

TEST_F(Synth, SelectedStretchesInItsThreeModes) {
    begin_on(pair_file(), "-fb");
    choose("Synth/Selected...");
    expect_said("Invalid Selection Mode for: Synth\n");
    sweep(-0.02, 0.45, 1.02, 0.55);
    expect_count(green, 4); // the first of five hides behind the axis
    const std::string line = "Synthesize AIFF audio file from select partials: ";
    expect_render("Synth/Selected...", {}, "plain\n",
                  some_open + line + ask_name + writing("plain") + working_end);
    expect_tone("plain.AIFF", 220.0, 0.7);
    const std::string counted = "Number of candidates: 1\n";
    const std::string listed =
        "x1= 1\ty1= 0\tx1= 1\ty1= 4\n@2: candidate[0] = [1]:0 -> 4\ncandidate #: 0 of 1\n";
    expect_render("Synth/Selected...", {"ctrl"}, "debug\n",
                  "CTRL\n" + some_open + all_open +
                      "Synthesize AIFF file select parts. debug mode: " + ask_name +
                      diagnosis("debug", counted, listed, removing_floats));
    expect_tone("debug.AIFF", 220.0, 32764.0 / 32768.0);
    EXPECT_EQ(size_of("debug.fp"), 0u);
    expect_render("Synth/Selected...", {"shift"}, "floats\n",
                  "SHIFT\n" + some_open + all_open +
                      "Synthesize AIFF file select parts. debug mode\n"
                      "preserving floating point file: " +
                      ask_name + diagnosis("floats", counted, listed, ""));
    expect_tone("floats.AIFF", 220.0, 32764.0 / 32768.0);
    EXPECT_EQ(size_of("floats.fp"), float_bytes);
    expect_count(green, 4); // the selection stays
}

TEST_F(Synth, NamesThatAreTakenOrCannotBeWritten) {
    begin_on(pair_file(), "-fb");
    fs::create_symlink("/dev/full", file("full.AIFF"));
    const std::string told = tag + all_open +
                             "Synthesize AIFF audio file from all partials: " + ask_name +
                             "partials: 2, 2.000000 s\nzgen.floatmax = *\n";
    const std::string render = told + writing("twice") + working_end;
    expect_render("Synth/All...", {}, "\ntwice\n", render);
    expect_render("Synth/All...", {}, "\ntwice\n", render);
    EXPECT_EQ(size_of("twice.AIFF"), 54 + 2 * sound_bytes);
    expect_render("Synth/All...", {}, "\nmissing/sound\n",
                  told + "missing/sound.AIFF: No such file or directory\n" +
                      writing("missing/sound") + working_end);
    // The header is the first thing that does not fit.
    std::string full = told + writing("full") + working_end;
    full.insert(full.find("//Writing sound"), "full.AIFF: No space left on device\n");
    expect_render("Synth/All...", {}, "\nfull\n", full);
    expect_render("Synth/All...", {}, "\nafter\n", told + writing("after") + working_end);
    expect_tone("after.AIFF", 440.0, 0.7);
    expect_alive();
}
