// The entries of "Generate": their dialogues, refusals and what they keep between calls.
#include "interact/menu.h"

#include "display/view.h"
#include "store/settings.h"
#include "tests/interact/menu_support.h"
#include "tests/support/child.h"

namespace {

using structure::same_points;
using structure::Snapshot;
using structure::snapshot;

class MenuGenerate : public MenuTest {
  protected:
    void SetUp() override {
        MenuTest::SetUp();
        select_group({"1111", "000", "00", "0"});
    }
    /// What the command prints once its dialogue is through.
    std::string run(int value, const std::string &replies) {
        gl_double::recorder().redisplays = 0;
        return command(value, "\n" + replies);
    }
    /// The dialogue ended in its middle: nothing happened but the prompts.
    void expect_no_finish(int value, const std::string &replies, const std::string &text) {
        const Snapshot before = snapshot();
        EXPECT_EQ(run(value, replies), text) << replies;
        EXPECT_EQ(gl_double::recorder().redisplays, 0);
        EXPECT_TRUE(same_points(before, snapshot()));
    }
};

TEST_F(MenuGenerate, NothingSelected) {
    selected = 0;
    expect_no_finish(80, "3 i 1 l\n",
                     prompt + std::string("Generate artificial harmonics...\t nothing selected\n"));
    EXPECT_EQ(unread(), "3 i 1 l\n");
    expect_no_finish(81, "1\n",
                     prompt + std::string("Replicate selected partials...\t nothing selected\n"));
    expect_no_finish(82, "1 2\n",
                     prompt + std::string("\nGenerate arbitrary partials...\t nothing selected\n"));
}

TEST_F(MenuGenerate, NoGateStandsBeforeThem) {
    ASSERT_TRUE(flat == 0 && bps == 0);
    for (const int value : {80, 81, 82}) {
        run(value, "1 h 1 l\n");
        EXPECT_EQ(gl_double::recorder().redisplays, 1) << value;
    }
}

TEST_F(MenuGenerate, HarmonicsTakeFourWords) {
    const std::string text = run(80, "3 h 2 l rest\n");
    EXPECT_TRUE(text.starts_with(harmonics_ask)) << text;
    EXPECT_EQ(menu_state.iarg0, 3);
    EXPECT_STREQ(menu_state.carg0, "h");
    EXPECT_EQ(menu_state.iarg1, 2);
    EXPECT_STREQ(menu_state.carg1, "l");
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    EXPECT_EQ(unread(), " rest\n");
}

TEST_F(MenuGenerate, HarmonicsOnSeveralLines) {
    run(80, "  3\n\n h\t\n2\n\n\nl\n");
    EXPECT_EQ(menu_state.iarg0, 3);
    EXPECT_STREQ(menu_state.carg1, "l");
}

TEST_F(MenuGenerate, HarmonicsCancelledByTheFirstWordAlone) {
    expect_no_finish(80, "-c h 2 l\n", harmonics_ask + "Command cancelled\n");
    EXPECT_EQ(unread(), " h 2 l\n");
}

TEST_F(MenuGenerate, HarmonicsWordsThatAreNoNumbersCountAsZero) {
    run(80, std::string(10000, 'x') + " h " + std::string(10000, 'y') + " l\n");
    EXPECT_EQ(menu_state.iarg0, 0);
    EXPECT_EQ(menu_state.iarg1, 0);
    run(80, "\x02\xff h \xfe l\n");
    EXPECT_EQ(menu_state.iarg0, 0);
    EXPECT_EQ(menu_state.iarg1, 0);
    EXPECT_STREQ(menu_state.carg0, "h");
}

TEST_F(MenuGenerate, HarmonicsAtTheEndOfTheInput) {
    for (const char *replies : {"", "3", "3 h", "3 h 2"}) {
        expect_no_finish(80, replies, harmonics_ask);
    }
    const Snapshot before = snapshot();
    EXPECT_EQ(command(80, ""), harmonics_ask) << "the opening meets it";
    EXPECT_TRUE(same_points(before, snapshot()));
}

TEST_F(MenuGenerate, HarmonicsLetterOfTwoEndsTheProgram) {
    for (const char *replies : {"\n3 hh 2 l\n", "\n3 h 2 ll\n", "\n3 -c 2 l\n"}) {
        const ChildResult result = in_child(replies, [] { menu_select(80); });
        EXPECT_EQ(result.status, 255) << replies;
        EXPECT_EQ(result.out, harmonics_ask);
        EXPECT_TRUE(result.err.starts_with("Quillgrove: ")) << result.err;
        EXPECT_TRUE(result.err.ends_with("\n"));
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << "one line";
    }
    const ChildResult endless =
        in_child("\n3 " + std::string(10000, 'h') + " 2 l\n", [] { menu_select(80); });
    EXPECT_EQ(endless.status, 255);
    EXPECT_EQ(endless.signal, 0);
}

TEST_F(MenuGenerate, ReplicateTakesOneWord) {
    EXPECT_TRUE(run(81, "1.5 rest\n").starts_with(replicate_ask));
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    EXPECT_EQ(unread(), " rest\n");
    run(81, std::string(10000, 'x') + "\n");
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    EXPECT_EQ(unread(), "\n");
}

TEST_F(MenuGenerate, ReplicateCancelledOrAtTheEndOfTheInput) {
    expect_no_finish(81, "-c\n", replicate_ask + "Command cancelled\n");
    expect_no_finish(81, "", replicate_ask);
}

TEST_F(MenuGenerate, ArbitraryEchoesItsLine) {
    EXPECT_TRUE(run(82, "1.5 2 c\nnext\n").starts_with(arbitrary_ask + "1.5 2 c\n\n"));
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
    EXPECT_EQ(unread(), "next\n");
}

TEST_F(MenuGenerate, ArbitrarySkipsEmptyLines) {
    EXPECT_TRUE(run(82, "\n\n\n1.5\n").starts_with(arbitrary_ask + "1.5\n\n"));
    EXPECT_TRUE(run(82, " \n1.5\n").starts_with(arbitrary_ask + " \n\n")) << "a blank is a line";
    EXPECT_EQ(unread(), "1.5\n");
}

TEST_F(MenuGenerate, ArbitraryCountsCharactersForDebugging) {
    dbp = 1;
    EXPECT_TRUE(
        run(82, "1.5 2 c\n").starts_with(arbitrary_ask + "num_chars = 8\n" + "1.5 2 c\n\n"));
}

TEST_F(MenuGenerate, ArbitraryCancelledByTheWholeLineAlone) {
    expect_no_finish(82, "-c\n", arbitrary_ask + "Command cancelled\n");
    expect_no_finish(82, "\n-c\n", arbitrary_ask + "Command cancelled\n");
    EXPECT_TRUE(run(82, "-c \n").starts_with(arbitrary_ask + "-c \n\n"));
    EXPECT_TRUE(run(82, "-c").starts_with(arbitrary_ask + "-c\n")) << "without its newline";
}

TEST_F(MenuGenerate, ArbitraryAtTheEndOfTheInput) {
    expect_no_finish(82, "", arbitrary_ask);
    expect_no_finish(82, "\n\n", arbitrary_ask);
}

TEST_F(MenuGenerate, ArbitraryTakesNinetyNineCharactersOfALine) {
    const std::string line(10000, '2');
    EXPECT_TRUE(run(82, line + "\n").starts_with(arbitrary_ask + line.substr(0, 99) + "\n"));
    EXPECT_EQ(unread(), line.substr(99) + "\n");
    EXPECT_TRUE(run(82, std::string(98, '3') + "\n1\n")
                    .starts_with(arbitrary_ask + std::string(98, '3') + "\n\n"));
    EXPECT_EQ(unread(), "1\n");
}

TEST_F(MenuGenerate, ArbitraryTakesAnyBytes) {
    run(82, std::string("\0\n", 2) + "1\n");
    EXPECT_EQ(unread(), "1\n");
    EXPECT_TRUE(run(82, "\x01\xff\x80 2\n").starts_with(arbitrary_ask + "\x01\xff\x80 2\n\n"));
}

} // namespace
