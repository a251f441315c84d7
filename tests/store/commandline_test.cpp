// The command line, the prompt for a file name, and the start values of a run.
#include "store/commandline.h"

#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "store/reading.h"
#include "store/settings.h"
#include "tests/support/child.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <cstdlib>
#include <unistd.h>

namespace {

class CommandLine : public StoreTest {};
class StartValues : public StoreTest {};
class Options : public StoreTest {};

const char *const prompt = "Quillgrove> Enter PTF name (no options):\nQuillgrove> ";

/// Applies the words in this process.
void apply(std::vector<std::string> words) {
    words.insert(words.begin(), "Quillgrove");
    std::vector<char *> argv;
    for (std::string &word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    read_command_line(static_cast<int>(words.size()), argv.data());
}

ChildResult apply_in_child(const std::vector<std::string> &words, const std::string &input = "") {
    return in_child(input, [&] {
        apply(words);
        std::puts("went on");
    });
}

std::string usage_text() {
    return in_child("", [] { apply({"--help"}); }).out;
}

TEST_F(StartValues, BannerOfTheArguments) {
    char name[] = "Quillgrove";
    char file[] = "a file.pt";
    char options[] = "-fb";
    char *argv[] = {name, file, options, nullptr};
    EXPECT_EQ(printed([&] { begin_run(3, argv); }),
              "argc = 3\nargv[0]: Quillgrove\nargv[1]: a file.pt\nargv[2]: -fb\n");
}

TEST_F(StartValues, EverySettingHasItsStartValue) {
    flat = clo = bps = verbose = logpos = dwbg = dbp = 9;
    ptsize = 4;
    floorAmp = 0.0f;
    thewidth = theheight = 10;
    zoom = scal[0] = scal[1] = scal[2] = 5.0f;
    X = Y = 7;
    W = midi = ran = 7;
    afname[0] = 'x';
    partials = 0;
    minfreq = maxfreq = maxamp = minamp = 9.0f;
    found = selected = sweepSelect = 1;
    numfound = directSelect = 1;
    selecting = 1;
    foundSubscriptions = {1, 2, 3, 4, 2};
    printed([] { begin_run(0, nullptr); });
    EXPECT_EQ(flat, 0);
    EXPECT_EQ(clo, 0);
    EXPECT_EQ(bps, 0);
    EXPECT_EQ(verbose, 0);
    EXPECT_EQ(logpos, 0);
    EXPECT_EQ(dwbg, 0);
    EXPECT_EQ(dbp, 0);
    EXPECT_EQ(ptsize, 1);
    EXPECT_EQ(floorAmp, -90.0f);
    EXPECT_EQ(thewidth, 450);
    EXPECT_EQ(theheight, 450);
    EXPECT_EQ(zoom, 1.0f);
    for (float s : scal) {
        EXPECT_EQ(s, 1.0f);
    }
    EXPECT_EQ(X, 0);
    EXPECT_EQ(Y, 1);
    EXPECT_EQ(W, 1);
    EXPECT_EQ(midi, 0);
    EXPECT_EQ(ran, 0);
    EXPECT_STREQ(afname, "");
    EXPECT_EQ(minfreq, 22050.0f);
    EXPECT_EQ(maxfreq, 1.0f);
    EXPECT_EQ(maxamp, -200.0f);
    EXPECT_EQ(minamp, 0.0f);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(numfound, 0);
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(foundSubscriptions.count, 0);
}

TEST_F(StartValues, NamesOfTheProgram) {
    EXPECT_STREQ(app_name, "Quillgrove");
    EXPECT_STREQ(version, "0.89b5");
}

TEST_F(Options, FSetsTheFlatViewAndItsCompanion) {
    apply_options("-f");
    EXPECT_EQ(flat, 1);
    EXPECT_EQ(clo, 1);
    EXPECT_EQ(bps + logpos + verbose + dwbg + dbp, 0);
}

TEST_F(Options, LSetsTheLogarithmicAxis) {
    apply_options("-l");
    EXPECT_EQ(logpos, 1);
    EXPECT_EQ(flat + clo + bps + verbose + dwbg + dbp, 0);
}

TEST_F(Options, BShowsBreakpoints) {
    apply_options("-b");
    EXPECT_EQ(bps, 1);
    EXPECT_EQ(flat + clo + logpos + verbose + dwbg + dbp, 0);
}

TEST_F(Options, VIsVerbose) {
    apply_options("-v");
    EXPECT_EQ(verbose, 1);
    EXPECT_EQ(flat + clo + logpos + bps + dwbg + dbp, 0);
}

TEST_F(Options, WSwitchesTheWindowsDebugPrinting) {
    apply_options("-w");
    EXPECT_EQ(dwbg, 1);
    EXPECT_EQ(flat + clo + logpos + bps + verbose + dbp, 0);
}

TEST_F(Options, DSwitchesTheImportsDebugPrinting) {
    apply_options("-d");
    EXPECT_EQ(dbp, 1);
    EXPECT_EQ(flat + clo + logpos + bps + verbose + dwbg, 0);
}

TEST_F(Options, LettersStandInAnyOrder) {
    apply_options("-vdblwf");
    EXPECT_EQ(flat + clo + logpos + bps + verbose + dwbg + dbp, 7);
}

TEST_F(Options, CapitalsAndOtherLettersAreNothing) {
    apply_options("-FLBVWDxyz");
    EXPECT_EQ(flat + clo + logpos + bps + verbose + dwbg + dbp, 0);
}

TEST_F(CommandLine, HelpPrintsUsageAndLeaves) {
    const ChildResult result = apply_in_child({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.find("went on"), std::string::npos);
    EXPECT_EQ(result.out.rfind("\nQuillgrove: USAGE\n\tQuillgrove [infile] -[options]\n", 0), 0u);
}

TEST_F(CommandLine, HelpInCapitals) {
    const ChildResult result = apply_in_child({"--HELP"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, usage_text());
}

TEST_F(CommandLine, CreditsInEitherCaseAndWithAnyEnding) {
    const std::string text = apply_in_child({"--c"}).out;
    EXPECT_NE(text, "");
    EXPECT_NE(text, usage_text());
    EXPECT_EQ(text.find("went on"), std::string::npos);
    for (const char *word : {"--C", "--credits", "--CREDITS", "--cello.pt"}) {
        const ChildResult result = apply_in_child({word});
        EXPECT_EQ(result.out, text) << word;
        EXPECT_EQ(result.status, 0) << word;
    }
}

TEST_F(CommandLine, ASecondWordWithoutADashPrintsUsage) {
    const ChildResult result = apply_in_child({"a.pt", "fb"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, usage_text());
}

TEST_F(CommandLine, TheFirstWordIsTheFile) {
    EXPECT_EQ(printed([] { apply({"dir/a.pt"}); }), "");
    EXPECT_STREQ(afname, "dir/a.pt");
    EXPECT_NE(thisarchinfo, nullptr);
}

TEST_F(CommandLine, ALongNameIsCut) {
    apply({std::string(300, 'n')});
    EXPECT_EQ(std::string(afname), std::string(255, 'n'));
}

TEST_F(CommandLine, TheDashMayStandAnywhere) {
    apply({"a.pt", "fb-"});
    EXPECT_EQ(flat, 1);
    EXPECT_EQ(bps, 1);
}

TEST_F(CommandLine, ADashAloneIsAnEmptySetOfOptions) {
    EXPECT_EQ(printed([] { apply({"a.pt", "-"}); }), "");
    EXPECT_EQ(flat + bps + logpos + verbose + dwbg + dbp, 0);
}

TEST_F(CommandLine, AThirdWordIsIgnored) {
    EXPECT_EQ(printed([] { apply({"a.pt", "-b", "-f"}); }), "");
    EXPECT_EQ(bps, 1);
    EXPECT_EQ(flat, 0);
}

TEST_F(CommandLine, AThirdWordWithoutADashIsIgnored) {
    EXPECT_EQ(apply_in_child({"a.pt", "-b", "f"}).out, "went on\n");
}

TEST_F(CommandLine, DebugModeIsAnnounced) {
    EXPECT_EQ(printed([] { apply({"a.pt", "-w"}); }), "debug mode = ON\n");
}

TEST_F(CommandLine, NoWordsAskForTheName) {
    EXPECT_EQ(conversation("my\\ file.pt\n", [] { apply({}); }),
              std::string(prompt) + "my file.pt\n");
    EXPECT_STREQ(afname, "my file.pt");
}

TEST_F(CommandLine, TheReplySetsNoOption) {
    conversation("a.pt -f\n", [] { apply({}); });
    EXPECT_STREQ(afname, "a.pt -f");
    EXPECT_EQ(flat, 0);
}

TEST_F(CommandLine, TheReplyMinusHPrintsUsageAndLeaves) {
    const ChildResult result = apply_in_child({}, "-h\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, prompt + usage_text());
}

TEST_F(CommandLine, EndOfInputAtThePromptLeavesTheNameEmpty) {
    EXPECT_EQ(conversation("", [] { apply({}); }), std::string(prompt) + "\n");
    EXPECT_STREQ(afname, "");
}

TEST_F(CommandLine, AnEmptyReplyFallsThroughToTheDefaultFile) {
    char folder[] = "/tmp/quillgrove-prompt-XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    const ChildResult result = in_child("\n", [&] {
        if (chdir(folder) != 0) {
            std::exit(9);
        }
        apply({});
        TokenFile file;
        open_analysis(file);
    });
    rmdir(folder);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, std::string(prompt) + "\n"
                                                "Quillgrove> No valid PTF file specified\n"
                                                "            Opening default PTF file...\n"
                                                "Quillgrove> Cannot open file \"partials.pt\"\n"
                                                "Quillgrove> Exiting...\n"
                                                "Quillgrove> Please confirm (enter): \n");
}

TEST_F(CommandLine, BannerUnderTheDebugSwitchTellsTheMachine) {
    dwbg = 1;
    const std::string text = printed(show_banner);
    const std::string head =
        std::string(chip.brand) + "\n" + std::to_string(chip.logical) + "\n\n_";
    EXPECT_EQ(text.rfind(head, 0), 0u) << text;
}

} // namespace
