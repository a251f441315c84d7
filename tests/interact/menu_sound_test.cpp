// The entries of "Synth" and "Play": which of them need a sweep, how the modifiers steer the
// render, the dialogue for the sound file's name.
#include "interact/menu.h"

#include "display/view.h"
#include "live/live.h"
#include "live/shared.h"
#include "store/settings.h"
#include "synth/sound.h"
#include "tests/interact/menu_support.h"
#include "tests/support/folder.h"

#include <cstring>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

constexpr int shift = GLUT_ACTIVE_SHIFT;
constexpr int ctrl = GLUT_ACTIVE_CTRL;
constexpr int alt = GLUT_ACTIVE_ALT;

const std::string ask = "Enter the audio file name (no extension): ";

/// Works in a folder of its own, where files of relative names go.
class MenuSound : public MenuTest {
  protected:
    void SetUp() override {
        MenuTest::SetUp();
        std::strcpy(afname, "/nonexistent/analysis");
        sweepSelect = 1;
        before = fs::current_path();
        fs::current_path(folder.path());
    }
    void TearDown() override {
        fs::current_path(before);
        MenuTest::TearDown();
    }

    fs::path before;
    Folder folder;
};

struct Row {
    int value;
    int modifiers;
    const char *told; // everything before the prompt for the name
    int param;
    bool can_cancel;
};

const std::string opened = std::string(prompt) + "Synth: All... ";

const std::vector<Row> &rows() {
    static const std::string all_ctrl =
        "CTRL\n" + opened + "Synthesize AIFF file all parts. debug mode: ";
    static const std::string all_shift =
        "SHIFT\n" + opened + "Synthesize AIFF file all parts. debug w. fp file: ";
    static const std::string all = opened + "Synthesize AIFF audio file from all partials: ";
    static const std::string all_alt = "ALT\n" + all;
    static const std::string some =
        "Synth: Selected...\t Synthesize AIFF audio file from select partials: ";
    static const std::string some_alt = "ALT\n" + some;
    static const std::vector<Row> table = {
        {27, ctrl, all_ctrl.c_str(), 881, true},
        {27, shift, all_shift.c_str(), 8, false},
        {27, 0, all.c_str(), 88, true},
        {27, alt, all_alt.c_str(), 88, true},
        {27, shift | ctrl, all.c_str(), 88, true},
        {28, ctrl,
         "CTRL\nSynth: Selected...\t Synth: All... Synthesize AIFF file select parts. debug mode: ",
         88, true},
        {28, shift,
         "SHIFT\nSynth: Selected...\t Synth: All... Synthesize AIFF file select parts. debug "
         "mode\npreserving floating point file: ",
         8, true},
        {28, 0, some.c_str(), 88, true},
        {28, alt, some_alt.c_str(), 88, true},
        {28, ctrl | alt, some.c_str(), 88, true},
    };
    return table;
}

/// What waits on the console for the row: the opening's line, where there is one, and a name.
std::string replies(const Row &row, const std::string &name) {
    return (row.value == 27 ? "\n" : "") + name;
}

TEST_F(MenuSound, SynthTellsItsRowAndAsksForTheName) {
    for (const Row &row : rows()) {
        menu_state.param = 0;
        const std::string text =
            command(row.value, replies(row, "/nonexistent/sound\n"), row.modifiers);
        EXPECT_TRUE(text.starts_with(row.told + ask)) << text;
        EXPECT_GT(text.size(), std::strlen(row.told) + ask.size()) << "the render speaks";
        EXPECT_EQ(menu_state.param, row.param) << row.told;
        EXPECT_EQ(gl_double::recorder().redisplays, 0);
    }
}

TEST_F(MenuSound, SynthCancelled) {
    for (const Row &row : rows()) {
        const std::string text = command(row.value, replies(row, "-c\n"), row.modifiers);
        EXPECT_EQ(fs::exists("-c.AIFF"), !row.can_cancel) << row.told;
        if (row.can_cancel) {
            EXPECT_EQ(text, row.told + ask + "Command cancelled\n");
        } else {
            EXPECT_TRUE(fs::remove("-c.AIFF"));
            EXPECT_TRUE(fs::remove("-c.fp"));
            EXPECT_EQ(text.find("Command cancelled"), std::string::npos) << "\"-c\" is the name";
            EXPECT_GT(text.size(), std::strlen(row.told) + ask.size());
        }
        EXPECT_EQ(gl_double::recorder().redisplays, 0);
    }
}

/// The files that a row leaves, their names one behind the other.
std::string files_in_folder() {
    std::string names;
    for (const char *name : {"tone.AIFF", "tone.fp"}) {
        names += fs::exists(name) ? std::string(name) + " " : "";
    }
    return names;
}

TEST_F(MenuSound, SynthRendersAsItsRowSays) {
    const std::string driver = "//Additive oscillator-bank synthesizer:tone\n";
    for (const Row &row : rows()) {
        const bool some = row.value == 28;
        select_group({some ? "1111" : "0000"});
        const std::string text = command(row.value, replies(row, "tone\n"), row.modifiers);
        const std::string speech = text.substr(std::strlen(row.told) + ask.size());
        const bool diagnostic = row.modifiers == ctrl || row.modifiers == shift;
        EXPECT_EQ(speech.starts_with(driver), diagnostic) << text;
        EXPECT_EQ(speech.find("Number of candidates: 1\n") != std::string::npos, diagnostic && some)
            << text;
        EXPECT_EQ(speech.starts_with("partials: 4, "), !diagnostic && !some) << text;
        EXPECT_EQ(files_in_folder(), row.param == 88 ? "tone.AIFF " : "tone.AIFF tone.fp ") << text;
        EXPECT_EQ(fBuffer == nullptr, diagnostic) << "only the working renderers leave it";
        fs::remove("tone.AIFF");
        fs::remove("tone.fp");
    }
}

TEST_F(MenuSound, SynthAtTheEndOfTheInputRendersNothing) {
    for (const Row &row : rows()) {
        EXPECT_EQ(command(row.value, replies(row, ""), row.modifiers), row.told + ask);
        EXPECT_EQ(command(row.value, "", row.modifiers), row.told + ask);
        EXPECT_EQ(command(row.value, replies(row, "\n\n"), row.modifiers), row.told + ask);
    }
}

TEST_F(MenuSound, SynthTakesAnEmptyNameForTheAnalysisFiles) {
    std::strcpy(afname, "analysis.pt");
    for (const Row &row : rows()) {
        const std::string text = command(row.value, replies(row, "\\ \nmore\n"), row.modifiers);
        EXPECT_TRUE(fs::remove("analysis.pt.AIFF")) << text;
        EXPECT_EQ(fs::remove("analysis.pt.fp"), row.param != 88) << text;
        EXPECT_EQ(text.find("Command cancelled"), std::string::npos);
        EXPECT_EQ(unread(), "more\n");
    }
}

TEST_F(MenuSound, SynthTakesAnyName) {
    for (const Row &row : rows()) {
        for (const std::string &name :
             {"/nonexistent/" + std::string(10000, 'x'), std::string("/nonexistent/\x01\xff"),
              std::string("/nonexistent/a b c")}) {
            const std::string text =
                command(row.value, replies(row, name + "\nmore\n"), row.modifiers);
            EXPECT_TRUE(text.starts_with(row.told + ask));
            EXPECT_EQ(unread(), "more\n");
        }
    }
}

TEST_F(MenuSound, SelectedNeedsASweep) {
    sweepSelect = 0;
    select_group({"1111", "111", "11", "1"});
    EXPECT_EQ(command(28, "name\n"), "Invalid Selection Mode for: Synth\n");
    EXPECT_EQ(command(28, "name\n", ctrl), "CTRL\nInvalid Selection Mode for: Synth\n");
    EXPECT_EQ(command(28, "name\n", shift), "SHIFT\nInvalid Selection Mode for: Synth\n");
    EXPECT_EQ(unread(), "name\n");
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
    EXPECT_TRUE(command(27, "\n/nonexistent/x\n").starts_with(opened)) << "all needs none";
}

TEST_F(MenuSound, PlayAll) {
    EXPECT_TRUE(command(71, "reply\n").starts_with("Play All Partials "));
    EXPECT_EQ(menu_state.param, 900);
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    EXPECT_EQ(unread(), "reply\n");
}

TEST_F(MenuSound, PlaySelected) {
    EXPECT_TRUE(command(72, "reply\n").starts_with("Play select partials: "));
    EXPECT_EQ(menu_state.param, 900);
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    EXPECT_EQ(unread(), "reply\n");
}

TEST_F(MenuSound, PlaySelectedNeedsASweep) {
    sweepSelect = 0;
    EXPECT_EQ(command(72), "Invalid Selection Mode for: Play Selected\n");
    EXPECT_EQ(menu_state.param, 0);
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(MenuSound, PlayZoneWhileItPlays) {
    zgen.playing = 1;
    selecting = 1;
    liveSynth = 1;
    EXPECT_EQ(command(75), "Play zone: ");
    EXPECT_EQ(selecting, 1);
    EXPECT_EQ(peek(liveSynth), 1);
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    zgen.playing = 0;
}

TEST_F(MenuSound, SoundLeavesStoreAndSelectionAlone) {
    select_group({"1111", "000", "00", "0"});
    const structure::Snapshot before = structure::snapshot();
    for (const Row &row : rows()) {
        command(row.value, replies(row, "/nonexistent/sound\n"), row.modifiers);
    }
    command(71);
    command(72);
    EXPECT_TRUE(structure::same_points(before, structure::snapshot()));
    EXPECT_EQ(selected, 1);
}

} // namespace
