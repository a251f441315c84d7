// Arguments, options and the console text of a run up to its window.

#include "tests/e2e/expected.h"
#include "tests/e2e/window_test.h"

namespace {

/// Runs that end by themselves and need no window.
class Arguments : public testing::Test {
  protected:
    int run(const std::vector<std::string> &arguments) {
        Program program({arguments, folder.path(), "", true});
        const int status = program.exit_status();
        text = program.output();
        return status;
    }
    Folder folder;
    std::string text;
};

class StartUp : public WindowTest {
  protected:
    /// The console's text once the window shows.
    std::string text_of(const std::vector<std::string> &arguments) {
        start(arguments, arguments[0]);
        program->listen(Duration(300));
        return program->output();
    }
};

} // namespace

TEST_F(Arguments, HelpPrintsUsage) {
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_EQ(text, arguments_text({"--help"}) + usage_text());
}

TEST_F(Arguments, HelpInCapitalsPrintsUsage) {
    EXPECT_EQ(run({"--HELP"}), 0);
    EXPECT_EQ(text, arguments_text({"--HELP"}) + usage_text());
}

TEST_F(Arguments, UsageKeepsTheDebugLettersToItself) {
    run({"--help"});
    EXPECT_EQ(text.find("\t\tw"), std::string::npos);
    EXPECT_EQ(text.find("\t\td"), std::string::npos);
}

TEST_F(Arguments, CreditsByAnyWordThatBeginsSo) {
    for (const std::string word : {"--credits", "--c", "--CREDITS", "--chord.pt"}) {
        folder.write(word, tones_file());
        EXPECT_EQ(run({word}), 0) << word;
        EXPECT_EQ(text.rfind(arguments_text({word}), 0), 0u) << text;
        EXPECT_NE(text.find("With thanks to"), std::string::npos) << text;
        EXPECT_EQ(text.find("Opening"), std::string::npos) << text;
    }
}

TEST_F(Arguments, SecondWordWithoutDashPrintsUsage) {
    folder.write("tones.pt", tones_file());
    EXPECT_EQ(run({"tones.pt", "fb"}), 0);
    EXPECT_EQ(text, arguments_text({"tones.pt", "fb"}) + usage_text());
}

TEST_F(StartUp, WholeTextOfAList) {
    folder.write("tones.pt", tones_file());
    EXPECT_EQ(text_of({"tones.pt", "-fb"}), arguments_text({"tones.pt", "-fb"}) + banner() +
                                                "Opening: tones.pt \n" + tones_report() +
                                                folder_and_graphics(folder.path()));
}

TEST_F(StartUp, ThirdArgumentIsIgnored) {
    folder.write("tones.pt", tones_file());
    EXPECT_EQ(text_of({"tones.pt", "-f", "-bw"}),
              arguments_text({"tones.pt", "-f", "-bw"}) + banner() + "Opening: tones.pt \n" +
                  tones_report() + folder_and_graphics(folder.path()));
    EXPECT_EQ(picture.count(rgb(0.7, 0.0, 0.3)), 0) << "the third word turned the dots on";
}

TEST_F(StartUp, OptionLettersInAnyOrderAndPlace) {
    folder.write("tones.pt", tones_file());
    text_of({"tones.pt", "b-f"});
    EXPECT_GT(picture.count(rgb(0.7, 0.0, 0.3)), 10);
}

TEST_F(StartUp, HiddenLetterShowsTheMachineFirst) {
    folder.write("tones.pt", tones_file());
    EXPECT_EQ(text_of({"tones.pt", "-w"}),
              arguments_text({"tones.pt", "-w"}) + "debug mode = ON\n" + brand() + "\n" +
                  std::to_string(processor_count()) + "\n" + banner() + "Opening: tones.pt \n" +
                  tones_report() + folder_and_graphics(folder.path()));
}

TEST_F(StartUp, HiddenLetterDumpsTheStore) {
    folder.write("pair.pt", "( PARTIALS 2 ( POINTS 2 0 440 -60 1 440 -60 ) "
                            "( POINTS 3 0 100 -10 1 110 -20 2 120 -95 ) )");
    EXPECT_EQ(text_of({"pair.pt", "-d"}), arguments_text({"pair.pt", "-d"}) + banner() +
                                              "Opening: pair.pt \n" +
                                              "\nImporting 2 partials\n\n\n"
                                              "snd. start = 0.000000\tsnd.length =   2.000\n"
                                              "max. freq. =   440.00\tmin. freq. =   100.00\n"
                                              "max. amp.  =  -16.000 dB\n"
                                              "Mean time interval between points = 1.000000\n"
                                              "[0][0]\t 0.000000\t440.000000\t-60.000000\n"
                                              "[0][1]\t 1.000000\t440.000000\t-90.000000\n\n"
                                              "[1][0]\t 0.000000\t100.000000\t-16.000000\n"
                                              "[1][1]\t 1.000000\t110.000000\t-38.000000\n"
                                              "[1][2]\t 2.000000\t120.000000\t-95.000000\n\n" +
                                              folder_and_graphics(folder.path()));
}

TEST_F(StartUp, OnPipesStandardOutputHoldsTheSameText) {
    folder.write("tones.pt", tones_file());
    Program piped({{"tones.pt", "-f"}, folder.path(), desktop.display(), false});
    ASSERT_TRUE(piped.expect("max clip planes = "));
    ASSERT_NE(screen.find("Quillgrove: tones.pt"), 0u);
    piped.listen(Duration(300));
    EXPECT_EQ(piped.output(), arguments_text({"tones.pt", "-f"}) + banner() +
                                  "Opening: tones.pt \n" + tones_report() +
                                  folder_and_graphics(folder.path()));
    EXPECT_EQ(piped.errors(), "");
}
