// Every way in which a start ends before the window: texts and exit statuses.

#include "tests/e2e/expected.h"
#include "tests/e2e/program.h"
#include "tests/support/folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>

namespace {

class Failures : public testing::Test {
  protected:
    void start(const std::string &name) {
        argument = name;
        program = std::make_unique<Program>(Launch{{name}, folder.path(), "", true});
    }

    /// The run's text behind the banner and the line "Opening".
    std::string text_after_opening() {
        const std::string head =
            arguments_text({argument}) + banner() + "Opening: " + argument + " \n";
        const std::string text = program->output();
        EXPECT_EQ(text.substr(0, head.size()), head);
        return text.size() < head.size() ? "" : text.substr(head.size());
    }

    std::string cannot_open() const {
        return "Quillgrove> Cannot open file \"" + argument +
               "\"\nQuillgrove> Exiting...\nQuillgrove> Please confirm (enter): ";
    }

    std::string closing() const {
        return "Quillgrove> Closing \"" + argument + "\" and exiting...\n\n";
    }

    Folder folder;
    std::string argument;
    std::unique_ptr<Program> program;
};

const std::string unknown =
    "Quillgrove> Cannot recognize file type\nQuillgrove> Try to read interactively?\n";
const std::string close_question = "Quillgrove> Close the file and exit?\n";
const std::string confirm = "Quillgrove> Please confirm (enter y): ";

} // namespace

TEST_F(Failures, MissingFileWaitsForACharacter) {
    start("missing.pt");
    ASSERT_TRUE(program->expect("Please confirm (enter): ")) << program->output();
    EXPECT_EQ(program->exit_status(Duration(500)), -1) << "it did not wait";
    program->send("\n");
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_EQ(text_after_opening(), cannot_open() + "\n");
}

TEST_F(Failures, MissingFileTakesTheEndOfInputForTheCharacter) {
    start("missing.pt");
    ASSERT_TRUE(program->expect("Please confirm (enter): "));
    program->end_input();
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_EQ(text_after_opening(), cannot_open() + "\n");
}

TEST_F(Failures, FolderCannotBeOpened) {
    std::filesystem::create_directory(folder.path() + "/inner");
    start("inner");
    ASSERT_TRUE(program->expect("Please confirm (enter): ")) << program->output();
    program->send("\n");
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_NE(text_after_opening().find(cannot_open() + "\n"), std::string::npos);
}

TEST_F(Failures, MissingDefaultFile) {
    program = std::make_unique<Program>(Launch{{}, folder.path(), "", true});
    ASSERT_TRUE(program->expect("Quillgrove> Enter PTF name (no options):\nQuillgrove> "));
    program->end_input();
    ASSERT_TRUE(program->expect("Quillgrove> Cannot open file \"partials.pt\"\n"))
        << program->output();
    EXPECT_EQ(program->exit_status(), 1);
}

TEST_F(Failures, UnknownTypeDeclinedAndConfirmed) {
    folder.write("words.txt", "nothing of the kind\n");
    start("words.txt");
    ASSERT_TRUE(program->expect("Try to read interactively?\nQuillgrove> ")) << program->output();
    program->send("n\n");
    ASSERT_TRUE(program->expect(confirm));
    program->send("y\n");
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_EQ(text_after_opening(),
              "nothing\n" + unknown + "Quillgrove> " + close_question + confirm + closing());
}

TEST_F(Failures, UnknownTypeAsksUntilTheReplyIsYesOrNo) {
    folder.write("words.txt", "nothing of the kind\n");
    start("words.txt");
    ASSERT_TRUE(program->expect("Try to read interactively?\nQuillgrove> "));
    program->send("maybe\n");
    ASSERT_TRUE(program->expect("Quillgrove> "));
    program->send("Y\n"); // only small letters count
    ASSERT_TRUE(program->expect("Quillgrove> "));
    program->send("no\n");
    ASSERT_TRUE(program->expect(confirm));
    program->send("no\n");
    ASSERT_TRUE(program->expect(confirm));
    program->send("yes\n");
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_EQ(text_after_opening(), "nothing\n" + unknown + "Quillgrove> Quillgrove> Quillgrove> " +
                                        close_question + confirm + confirm + closing());
}

TEST_F(Failures, EndOfInputAtTheTypeQuestion) {
    folder.write("words.txt", "nothing of the kind\n");
    start("words.txt");
    ASSERT_TRUE(program->expect("Try to read interactively?\nQuillgrove> "));
    program->end_input();
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_EQ(text_after_opening(),
              "nothing\n" + unknown + "Quillgrove> " + close_question + confirm + closing());
}

TEST_F(Failures, EndOfInputAtTheConfirmation) {
    folder.write("words.txt", "nothing of the kind\n");
    start("words.txt");
    ASSERT_TRUE(program->expect("Try to read interactively?\nQuillgrove> "));
    program->send("n\n");
    ASSERT_TRUE(program->expect(confirm));
    program->end_input();
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_EQ(text_after_opening(),
              "nothing\n" + unknown + "Quillgrove> " + close_question + confirm + closing());
}

TEST_F(Failures, GluedParenthesisIsUnknown) {
    folder.write("glued.pt", "(PARTIALS 1\n( POINTS 2\n0 440 -30\n1 440 -30\n)\n)\n");
    start("glued.pt");
    ASSERT_TRUE(program->expect(unknown)) << program->output();
    program->end_input();
    EXPECT_EQ(program->exit_status(), 1);
}

TEST_F(Failures, EmptyFileIsUnknown) {
    folder.write("empty.pt", "");
    start("empty.pt");
    ASSERT_TRUE(program->expect(unknown)) << program->output();
    program->end_input();
    EXPECT_EQ(program->exit_status(), 1);
}

TEST_F(Failures, BinaryFileIsUnknown) {
    std::string bytes;
    for (int i = 0; i < 70000; ++i) {
        bytes += static_cast<char>((i * 7 + i / 256) % 256);
    }
    folder.write("noise.bin", bytes);
    start("noise.bin");
    ASSERT_TRUE(program->expect(unknown)) << program->output();
    program->send("n\ny\n");
    EXPECT_EQ(program->exit_status(), 1);
}

TEST_F(Failures, CorruptList) {
    folder.write("corrupt.pt", "( PARTIALS 1\n( POINT 2\n0 440 -30\n1 440 -30\n)\n)\n");
    start("corrupt.pt");
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_EQ(text_after_opening(), "Error: Analysis file corrupt! Exiting...\n");
}

TEST_F(Failures, ListWithoutItsLastParenthesis) {
    folder.write("open.pt", "( PARTIALS 1\n( POINTS 2\n0 440 -30\n1 440 -30\n)\n7\n");
    start("open.pt");
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_EQ(text_after_opening(), "Error: Analysis file corrupt! Exiting...\n");
}

TEST_F(Failures, ListWithoutValidPartials) {
    folder.write("short.pt", "( PARTIALS 2\n( POINTS 1\n0 440 -30\n)\n( POINTS 0\n)\n)\n");
    start("short.pt");
    EXPECT_EQ(program->exit_status(), 255);
    EXPECT_EQ(text_after_opening(), "\nImporting 0 partials\n\n\n"
                                    "No valid partials to import: quitting program\n"
                                    "No valid partials imported: quitting program\n");
}

TEST_F(Failures, NoDisplay) {
    folder.write("tones.pt", tones_file());
    start("tones.pt");
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_NE(program->output().find(tones_report()), std::string::npos) << program->output();
}
