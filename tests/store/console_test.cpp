// Replies from the terminal: words, lines, and the end of input.
#include "store/console.h"

#include "tests/support/console.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

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

/// What read_integer makes of an input, 77 before it, and what it leaves unread.
struct Reading {
    bool matched;
    int32_t value;
    std::string rest;
    bool operator==(const Reading &) const = default;
};

Reading integer_of(const std::string &input) {
    Reading reading = {false, 77, ""};
    char rest[64] = "";
    conversation(input, [&] {
        reading.matched = read_integer(reading.value);
        read_line(rest, sizeof rest);
    });
    reading.rest = rest;
    return reading;
}

TEST(Console, AWholeNumberEndsWhereItsDigitsEnd) {
    EXPECT_EQ(integer_of(" \n 12 next"), (Reading{true, 12, " next"}));
    EXPECT_EQ(integer_of("-12.5"), (Reading{true, -12, ".5"}));
    EXPECT_EQ(integer_of("+3x"), (Reading{true, 3, "x"}));
    EXPECT_EQ(integer_of("007\n"), (Reading{true, 7, "\n"}));
}

TEST(Console, WithoutDigitsTheWholeNumberStands) {
    EXPECT_EQ(integer_of("abc"), (Reading{false, 77, "abc"}));
    EXPECT_EQ(integer_of("-x"), (Reading{false, 77, "x"}));
    EXPECT_EQ(integer_of("  "), (Reading{false, 77, ""}));
}

TEST(Console, AWholeNumberOutOfRangeIsHeld) {
    EXPECT_EQ(integer_of("2147483648"), (Reading{true, INT32_MAX, ""}));
    EXPECT_EQ(integer_of("-2147483648"), (Reading{true, INT32_MIN, ""}));
    EXPECT_EQ(integer_of("-99999999999999999999999"), (Reading{true, INT32_MIN, ""}));
}

TEST(Console, AFloatStandsUnlessANumberComes) {
    float value = 1.5f;
    char word[16] = "";
    conversation("x -2.5e1y", [&] {
        EXPECT_FALSE(read_float(value));
        EXPECT_EQ(value, 1.5f);
        EXPECT_TRUE(read_word(word, sizeof word));
        EXPECT_TRUE(read_float(value));
        EXPECT_EQ(value, -25.0f);
        EXPECT_TRUE(read_word(word, sizeof word));
        EXPECT_FALSE(read_float(value));
    });
    EXPECT_STREQ(word, "y");
    EXPECT_EQ(value, -25.0f);
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

TEST(Console, ATextIsALineOfItsOwnUnlessItsEndSaysOtherwise) {
    EXPECT_EQ(printed([] { say("Done"); }), "Done\n");
    EXPECT_EQ(printed([] { say("Done:"); }), "Done:\n");
    EXPECT_EQ(printed([] { say("Number: "); }), "Number: ");
    EXPECT_EQ(printed([] { say("Number:\t"); }), "Number:\t");
    EXPECT_EQ(printed([] { say("Quillgrove> "); }), "Quillgrove> ");
    EXPECT_EQ(printed([] { say("Done\n"); }), "Done\n");
    EXPECT_EQ(printed([] { say(" \tx"); }), " \tx\n");
    EXPECT_EQ(printed([] { say(""); }), "");
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
