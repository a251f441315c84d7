// Replies from the terminal: words, lines, and the end of input.
#include "store/console.h"

#include "tests/support/console.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(Console, AWordEndsAtWhiteSpace) {
    char word[16] = "";
    char second[16] = "";
    conversation(" \t\n one two\n", [&] {
        EXPECT_TRUE(read_word(word, sizeof word));
        EXPECT_TRUE(read_word(second, sizeof second));
    });
    EXPECT_STREQ(word, "one");
    EXPECT_STREQ(second, "two");
}

TEST(Console, AtTheEndOfInputTheWordStands) {
    char word[16] = "old";
    conversation(" \n ", [&] { EXPECT_FALSE(read_word(word, sizeof word)); });
    EXPECT_STREQ(word, "old");
}

TEST(Console, ALongWordLosesItsRest) {
    char word[4] = "";
    char second[4] = "";
    conversation("abcdef gh", [&] {
        EXPECT_TRUE(read_word(word, sizeof word));
        EXPECT_TRUE(read_word(second, sizeof second));
    });
    EXPECT_STREQ(word, "abc");
    EXPECT_STREQ(second, "gh");
}

TEST(Console, AWordLeavesItsNewline) {
    char word[16] = "";
    char line[16] = "";
    conversation("one\ntwo\n", [&] {
        EXPECT_TRUE(read_word(word, sizeof word));
        EXPECT_TRUE(read_line(line, sizeof line));
    });
    EXPECT_STREQ(line, "\n");
}

TEST(Console, ALineKeepsItsNewline) {
    char line[16] = "";
    conversation("a b\nc", [&] { EXPECT_TRUE(read_line(line, sizeof line)); });
    EXPECT_STREQ(line, "a b\n");
}

TEST(Console, TheLastLineNeedsNoNewline) {
    char line[16] = "";
    conversation("abc", [&] { EXPECT_TRUE(read_line(line, sizeof line)); });
    EXPECT_STREQ(line, "abc");
}

TEST(Console, ALongLineLosesItsRestAndNothingMore) {
    char line[5] = "";
    char second[8] = "";
    conversation("abcdefgh\nnext\n", [&] {
        EXPECT_TRUE(read_line(line, sizeof line));
        EXPECT_TRUE(read_line(second, sizeof second));
    });
    EXPECT_STREQ(line, "abcd");
    EXPECT_STREQ(second, "next\n");
}

TEST(Console, ALineThatJustFitsTakesNothingOfTheNext) {
    char line[5] = "";
    char second[8] = "";
    conversation("abc\nnext\n", [&] {
        EXPECT_TRUE(read_line(line, sizeof line));
        EXPECT_TRUE(read_line(second, sizeof second));
    });
    EXPECT_STREQ(line, "abc\n");
    EXPECT_STREQ(second, "next\n");
}

TEST(Console, ALineWhoseNewlineAloneDoesNotFit) {
    char line[5] = "";
    char second[8] = "";
    conversation("abcd\nnext\n", [&] {
        EXPECT_TRUE(read_line(line, sizeof line));
        EXPECT_TRUE(read_line(second, sizeof second));
    });
    EXPECT_STREQ(line, "abcd");
    EXPECT_STREQ(second, "next\n");
}

TEST(Console, AtTheEndOfInputTheLineStands) {
    char line[16] = "old";
    conversation("", [&] { EXPECT_FALSE(read_line(line, sizeof line)); });
    EXPECT_STREQ(line, "old");
}

TEST(Console, ALineOfAZeroByteIsNoError) {
    char line[4] = "";
    char second[8] = "";
    conversation(std::string("\0bc\nnext\n", 9), [&] {
        EXPECT_TRUE(read_line(line, sizeof line));
        EXPECT_TRUE(read_line(second, sizeof second));
    });
    EXPECT_STREQ(line, "");
}

TEST(Console, ADroppedLineEndsWithItsNewline) {
    char line[16] = "";
    conversation("rest of it\nnext\n", [&] {
        drop_line();
        EXPECT_TRUE(read_line(line, sizeof line));
        drop_line();
    });
    EXPECT_STREQ(line, "next\n");
}

} // namespace
