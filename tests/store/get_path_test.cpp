// File names typed or dropped at the console.
#include "store/misc.h"

#include "tests/support/child.h"
#include "tests/support/console.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

/// The name that get_path makes of the input; `text` receives what it printed.
std::string path_of(const std::string &input, int quiet = 1, std::string *text = nullptr) {
    char buffer[path_size] = "left over";
    const std::string out = conversation(input, [&] { get_path(buffer, quiet); });
    if (text != nullptr) {
        *text = out;
    }
    return buffer;
}

TEST(GetPath, PlainName) {
    std::string text;
    EXPECT_EQ(path_of("sound.pt\n", 1, &text), "sound.pt");
    EXPECT_EQ(text, "");
}

TEST(GetPath, ZeroQuietPromptsFirst) {
    std::string text;
    EXPECT_EQ(path_of("sound.pt\n", 0, &text), "sound.pt");
    EXPECT_EQ(text, "Enter file name: ");
}

TEST(GetPath, EscapedInnerBlanksAndOneBlankAtTheEnd) {
    EXPECT_EQ(path_of("/a\\ b/my\\ long\\ name.pt \n"), "/a b/my long name.pt");
}

TEST(GetPath, PlainInnerBlanksStay) {
    EXPECT_EQ(path_of("my name.pt\n"), "my name.pt");
}

TEST(GetPath, OneBlankIsTakenOffTheEndAndNoMore) {
    EXPECT_EQ(path_of("name  \n"), "name ");
}

TEST(GetPath, AnEscapedBlankAtTheEndGoesToo) {
    EXPECT_EQ(path_of("name\\ \n"), "name");
}

TEST(GetPath, OtherBackslashesStay) {
    EXPECT_EQ(path_of("a\\b\\\\ c\\\n"), "a\\b\\ c\\");
}

TEST(GetPath, EmptyLinesAreReadOverWithoutAPrompt) {
    std::string text;
    EXPECT_EQ(path_of("\n\n\nname\n", 0, &text), "name");
    EXPECT_EQ(text, "Enter file name: ");
}

TEST(GetPath, ALoneBlankPromptsAnewWhateverQuietWas) {
    std::string text;
    EXPECT_EQ(path_of(" \nname\n", 1, &text), "name");
    EXPECT_EQ(text, "Enter file name: ");
}

TEST(GetPath, EachRefusedLinePromptsAnew) {
    std::string text;
    EXPECT_EQ(path_of(" \n\xEF\x9C\x80\n \n\nname\n", 0, &text), "name");
    EXPECT_EQ(text, "Enter file name: Enter file name: Enter file name: Enter file name: ");
}

TEST(GetPath, AFirstByteOfAFunctionKeyPromptsAnew) {
    std::string text;
    EXPECT_EQ(path_of("\xEFxyz\nname\n", 1, &text), "name");
    EXPECT_EQ(text, "Enter file name: ");
}

TEST(GetPath, TwoBlanksAreAName) {
    std::string text;
    EXPECT_EQ(path_of("  \nname\n", 1, &text), " ");
    EXPECT_EQ(text, "");
}

TEST(GetPath, AtMostNinetyNineCharacters) {
    EXPECT_EQ(path_of(std::string(150, 'x') + "\n"), std::string(99, 'x'));
}

TEST(GetPath, NinetyEightCharactersAndTheirNewlineFit) {
    EXPECT_EQ(path_of(std::string(98, 'x') + "\nnext\n"), std::string(98, 'x'));
}

TEST(GetPath, ALongLineLosesItsRestAndNothingMore) {
    char first[path_size];
    char second[path_size];
    conversation(std::string(500, 'x') + "\nnext\n", [&] {
        get_path(first, 1);
        get_path(second, 1);
    });
    EXPECT_EQ(std::string(first), std::string(99, 'x'));
    EXPECT_STREQ(second, "next");
}

TEST(GetPath, NothingIsLostOfTextThroughAPipe) {
    const ChildResult result = in_child("one\ntwo\nthree\n", [] {
        for (int i = 0; i < 3; ++i) {
            char name[path_size];
            get_path(name, 1);
            std::printf("[%s]", name);
        }
    });
    EXPECT_EQ(result.out, "[one][two][three]");
}

TEST(GetPath, AtTheEndOfInputItKeepsWhatThereIs) {
    EXPECT_EQ(path_of("partial name"), "partial name");
}

TEST(GetPath, ABlankIsNoName) {
    EXPECT_EQ(path_of("\\ \n"), "");
    EXPECT_EQ(path_of(" "), ""); // at the end of input
}

/// What read_path makes of the input: its answer and the name, then what it printed.
std::string reply_to(const std::string &input, bool can_cancel) {
    char name[path_size] = "";
    bool goes_on = false;
    const std::string text = conversation(input, [&] { goes_on = read_path(name, can_cancel); });
    return std::string(goes_on ? "yes " : "no ") + name + "|" + text;
}

TEST(ReadPath, ANameGoesOn) {
    EXPECT_EQ(reply_to("a\n", true), "yes a|");
    EXPECT_EQ(reply_to("a", true), "yes a|"); // at the end of input
    EXPECT_EQ(reply_to("\\ \n", true), "yes |");
}

TEST(ReadPath, ACancellationIsTold) {
    EXPECT_EQ(reply_to("-c\n", true), "no -c|Command cancelled\n");
    EXPECT_EQ(reply_to("-c\n", false), "yes -c|");
    EXPECT_EQ(reply_to("-cx\n", true), "yes -cx|");
}

TEST(ReadPath, TheEndOfInputEndsTheCommand) {
    EXPECT_EQ(reply_to("", true), "no |");
    EXPECT_EQ(reply_to("", false), "no |");
}

TEST(GetPath, NoInputGivesAnEmptyName) {
    EXPECT_EQ(path_of(""), "");
    EXPECT_EQ(path_of("\n\n"), "");
    EXPECT_EQ(path_of(" \n"), "");
}

class GetPathHome : public testing::Test {
  protected:
    void SetUp() override {
        const char *home = std::getenv("HOME");
        before = home != nullptr ? home : "";
        setenv("HOME", "/home/of someone", 1);
    }
    void TearDown() override {
        setenv("HOME", before.c_str(), 1);
    }
    std::string before;
};

TEST_F(GetPathHome, ATildeIsExpanded) {
    setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(path_of("~/x.pt\n"), "/home/someone/x.pt");
}

TEST_F(GetPathHome, WordsAreRejoinedWithSingleBlanks) {
    setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(path_of("~/my   file.pt\n"), "/home/someone/my file.pt");
}

TEST_F(GetPathHome, TheExpansionIsHeldToTheBuffer) {
    const std::string home = "/" + std::string(200, 'h');
    setenv("HOME", home.c_str(), 1);
    EXPECT_EQ(path_of("~/x y z\n"), home.substr(0, 99));
}

TEST_F(GetPathHome, ManyWordsAreHeldToTheBuffer) {
    setenv("HOME", ("/" + std::string(90, 'h')).c_str(), 1);
    EXPECT_EQ(path_of("~ a b c d e f g h\n"), "/" + std::string(90, 'h') + " a b c d");
}

TEST_F(GetPathHome, ACommandInANameIsNotRun) {
    std::string text;
    EXPECT_EQ(path_of("~/$(echo x)\n", 1, &text), "~/$(echo x)");
}

TEST_F(GetPathHome, ANameThatCannotBeExpandedStays) {
    EXPECT_EQ(path_of("~/a|b\n"), "~/a|b");
}

TEST_F(GetPathHome, ATildeFurtherInIsPlain) {
    EXPECT_EQ(path_of("x~/y\n"), "x~/y");
}

} // namespace
