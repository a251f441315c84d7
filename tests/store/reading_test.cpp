// From a file's name to a live store, and every way that ends before it.
#include "store/reading.h"

#include "live/live.h"
#include "store/published.h"
#include "store/settings.h"
#include "tests/support/analysis_file.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

class Reading : public StoreTest {};

const char *const confirm = "Quillgrove> Please confirm (enter y): ";
const std::string unknown = "Opening: a.pt \nhello\n"
                            "Quillgrove> Cannot recognize file type\n"
                            "Quillgrove> Try to read interactively?\n";
const std::string close_and_exit = "Quillgrove> Close the file and exit?\n";
const std::string closed = "Quillgrove> Closing \"a.pt\" and exiting...\n\n";

std::string here() {
    char folder[PATH_MAX];
    return getcwd(folder, sizeof folder) != nullptr ? folder : "";
}

TEST_F(Reading, AWholeListFromFileToStore) {
    const ChildResult result = start_on("( PARTIALS 1\n( POINTS 3\n0.000 440.0 -30.0\n"
                                        "0.010 441.0 -28.0\n0.020 442.0 -60.0\n)\n)\n",
                                        "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Opening: a.pt \n"
                          "\n"
                          "Importing 1 partials\n\n"
                          "\n"
                          "snd. start = 0.000000\tsnd.length =   0.020\n"
                          "max. freq. =   442.00\tmin. freq. =   440.00\n"
                          "max. amp.  =  -36.000 dB\n"
                          "Mean time interval between points = 0.010000\n"
                          "Current working folder is:\n" +
                              here() +
                              "\nSTORE\n"
                              "[0][0]\t 0.000000\t440.000000\t-36.000000\n"
                              "[0][1]\t 0.010000\t441.000000\t-46.000000\n"
                              "[0][2]\t 0.020000\t442.000000\t-90.000000\n\n");
}

TEST_F(Reading, TheDebugSwitchDumpsTheStore) {
    const ChildResult result = in_child("", [] {
        fill_store({{{0.5f, 440, -6}, {1, 441.5f, -7.25f}}});
        dbp = 1;
        complete_store();
    });
    EXPECT_NE(result.out.find("[0][0]\t 0.500000\t440.000000\t-6.000000\n"
                              "[0][1]\t 1.000000\t441.500000\t-7.250000\n\n"
                              "Current working folder is:\n"),
              std::string::npos)
        << result.out;
}

TEST_F(Reading, SummariesAndCandidatesHaveSpareElementsOfZero) {
    const ChildResult result = in_child("", [] {
        fill_store(small_content());
        complete_store();
        bool zero = true;
        for (int i = 0; i < partials + 100; ++i) {
            for (const LiveCandidate *list : {scandidates, pcandidates, qcandidates}) {
                zero = zero && list[i].freq == 0.0f && list[i].amp == 0.0f && list[i].status == 0;
            }
            zero = zero && (i < partials || peval[i].dur == 0.0f);
        }
        std::exit(zero ? 7 : 8);
    });
    EXPECT_EQ(result.status, 7);
}

TEST_F(Reading, TheStoreIsShownToItsReaders) {
    const ChildResult result = in_child("", [] {
        fill_store(small_content());
        complete_store();
        std::exit(store_is_published() ? 7 : 8);
    });
    EXPECT_EQ(result.status, 7);
}

TEST_F(Reading, ANegativeTimeInAListShiftsTheSound) {
    const ChildResult result =
        start_on("( PARTIALS 1 ( POINTS 2 -0.5 440 -30 0.25 440 -30 ) )", "");
    EXPECT_NE(result.out.find("snd. start = -0.500000\tsnd.length =   0.250\n"), std::string::npos);
    EXPECT_NE(result.out.find("STORE\n[0][0]\t 0.000000\t440.000000\t-48.000000\n"
                              "[0][1]\t 0.750000\t440.000000\t-90.000000\n"),
              std::string::npos)
        << result.out;
}

TEST_F(Reading, AFileThatCannotBeOpened) {
    const ChildResult result = start_on_path("/nowhere/at all.pt", "\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Opening: /nowhere/at all.pt \n"
                          "Quillgrove> Cannot open file \"/nowhere/at all.pt\"\n"
                          "Quillgrove> Exiting...\n"
                          "Quillgrove> Please confirm (enter): \n");
}

TEST_F(Reading, AFileThatCannotBeOpenedAtTheEndOfInput) {
    EXPECT_EQ(start_on_path("/nowhere/at all.pt", "").status, 1);
}

TEST_F(Reading, NoNameOpensTheDefaultFile) {
    char folder[] = "/tmp/quillgrove-default-XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    const ChildResult result = in_child("\n", [&] {
        if (chdir(folder) != 0) {
            std::exit(9);
        }
        TokenFile file;
        open_analysis(file);
    });
    rmdir(folder);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Quillgrove> No valid PTF file specified\n"
                          "            Opening default PTF file...\n"
                          "Quillgrove> Cannot open file \"partials.pt\"\n"
                          "Quillgrove> Exiting...\n"
                          "Quillgrove> Please confirm (enter): \n");
}

TEST_F(Reading, TheDefaultFileGivesTheRunItsName) {
    char folder[] = "/tmp/quillgrove-default-XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    const ChildResult result = in_child("", [&] {
        if (chdir(folder) != 0) {
            std::exit(9);
        }
        FILE *made = std::fopen("partials.pt", "w");
        std::fputs("( PARTIALS 1 ( POINTS 2 0 440 -30 1 440 -30 ) )", made);
        std::fclose(made);
        TokenFile file;
        open_analysis(file);
        unlink("partials.pt");
        import_analysis(file);
        std::printf("%s %d\n", afname, partials);
    });
    rmdir(folder);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "Quillgrove> No valid PTF file specified\n"
                          "            Opening default PTF file...\n"
                          "\nImporting 1 partials\n\n\npartials.pt 1\n");
}

TEST_F(Reading, UnknownTextThatIsNotToBeReadByHand) {
    const ChildResult result = start_on("hello", "n\ny\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, unknown + "Quillgrove> " + close_and_exit + confirm + closed);
}

TEST_F(Reading, EachQuestionIsAskedUntilItsReply) {
    const ChildResult result = start_on("hello", "what\nYes\nno\nn\nN\nq\nyes\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, unknown + "Quillgrove> Quillgrove> Quillgrove> " + close_and_exit +
                              confirm + confirm + confirm + confirm + closed);
}

TEST_F(Reading, EndOfInputAtTheFirstQuestion) {
    const ChildResult result = start_on("hello", "");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, unknown + "Quillgrove> " + close_and_exit + confirm + closed);
}

TEST_F(Reading, EndOfInputAtTheLastQuestion) {
    const ChildResult result = start_on("hello", "n\nx\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, unknown + "Quillgrove> " + close_and_exit + confirm + confirm + closed);
}

TEST_F(Reading, ABrokenListEndsTheRun) {
    const ChildResult result = start_on("( PARTIALS 1 ( POINT 2 0 440 -30 1 440 -30 ) )", "");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Opening: a.pt \nError: Analysis file corrupt! Exiting...\n");
}

TEST_F(Reading, AListWhereEveryPartialIsTooShort) {
    const ChildResult result = start_on("( PARTIALS 2 ( POINTS 1 0 440 -30 ) ( POINTS 0 ) )", "");
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, "Opening: a.pt \n\nImporting 0 partials\n\n\n"
                          "No valid partials to import: quitting program\n"
                          "No valid partials imported: quitting program\n");
}

TEST_F(Reading, AListOfNoPartials) {
    const ChildResult result = start_on("( PARTIALS 0 )", "");
    EXPECT_EQ(result.status, 255);
    EXPECT_NE(result.out.find("No valid partials imported: quitting program\n"), std::string::npos);
}

TEST_F(Reading, ASelectionNeverStandsAfterTheImport) {
    const std::string text = "( PARTIALS 1 ( POINTS 2 0 440 -30 1 440 -30 ) )";
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    printed([&] { import_analysis(file); });
    ASSERT_EQ(partials, 1);
    EXPECT_EQ(file.data, nullptr);
    EXPECT_EQ(parray[0][0].selected, 0);
    EXPECT_EQ(parray[0][1].selected, 0);
}

} // namespace
