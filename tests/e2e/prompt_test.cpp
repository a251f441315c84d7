// The prompt of a start without arguments.

#include "tests/e2e/expected.h"
#include "tests/e2e/window_test.h"

namespace {

const std::string question = "Quillgrove> Enter PTF name (no options):\nQuillgrove> ";

class Prompt : public WindowTest {
  protected:
    void ask() {
        folder.write("tones.pt", tones_file());
        folder.write("partials.pt", tones_file());
        program = std::make_unique<Program>(Launch{{}, folder.path(), desktop.display(), true});
        ASSERT_TRUE(program->expect(question)) << program->output();
    }

    /// Waits for the window of this file and returns the console's text.
    std::string text_with_window(const std::string &name) {
        EXPECT_TRUE(program->expect("max clip planes = 8\n")) << program->output();
        EXPECT_NE(screen.find("Quillgrove: " + name), 0u);
        program->listen(Duration(300));
        return program->output();
    }

    std::string text_of_named(const std::string &name) {
        return arguments_text({}) + question + name + "\n" + banner() + "Opening: " + name + " \n" +
               tones_report() + folder_and_graphics(folder.path());
    }

    std::string text_of_default() {
        return arguments_text({}) + question + "\n" + banner() +
               "Quillgrove> No valid PTF file specified\n"
               "            Opening default PTF file...\n" +
               tones_report() + folder_and_graphics(folder.path());
    }
};

} // namespace

TEST_F(Prompt, AsksAndWaits) {
    ask();
    program->listen(Duration(1000));
    EXPECT_EQ(program->output(), arguments_text({}) + question);
}

TEST_F(Prompt, ReplyNamesTheFile) {
    ask();
    program->send("tones.pt\n");
    EXPECT_EQ(text_with_window("tones.pt"), text_of_named("tones.pt"));
}

TEST_F(Prompt, HelpReplyPrintsUsage) {
    ask();
    program->send("-h\n");
    EXPECT_EQ(program->exit_status(), 0);
    EXPECT_EQ(program->output(), arguments_text({}) + question + usage_text());
}

TEST_F(Prompt, EmptyLinesAreReadOver) {
    ask();
    program->send("\n\ntones.pt\n");
    EXPECT_EQ(text_with_window("tones.pt"), text_of_named("tones.pt"));
}

TEST_F(Prompt, LineOfOneBlankAsksForTheFile) {
    ask();
    program->send(" \n");
    ASSERT_TRUE(program->expect("Enter file name: "));
    program->send("tones.pt\n");
    EXPECT_EQ(text_with_window("tones.pt"),
              arguments_text({}) + question + "Enter file name: tones.pt\n" + banner() +
                  "Opening: tones.pt \n" + tones_report() + folder_and_graphics(folder.path()));
}

TEST_F(Prompt, EscapedBlanksAndABlankAtTheEnd) {
    ask();
    folder.write("two plain words.pt", tones_file());
    program->send("two\\ plain\\ words.pt \n");
    EXPECT_EQ(text_with_window("two plain words.pt"), text_of_named("two plain words.pt"));
}

TEST_F(Prompt, EmptyReplyOpensTheDefaultFile) {
    ask();
    program->send("\\ \n"); // a blank alone once its backslash is dropped, and then nothing
    EXPECT_EQ(text_with_window("partials.pt"), text_of_default());
}

TEST_F(Prompt, EndOfInputOpensTheDefaultFile) {
    ask();
    program->end_input();
    EXPECT_EQ(text_with_window("partials.pt"), text_of_default());
}

TEST_F(Prompt, OptionsInTheReplyArePartOfTheName) {
    ask();
    program->send("tones.pt -f\n");
    ASSERT_TRUE(program->expect("Quillgrove> Cannot open file \"tones.pt -f\"\n"))
        << program->output();
    program->send("\n");
    EXPECT_EQ(program->exit_status(), 1);
}
