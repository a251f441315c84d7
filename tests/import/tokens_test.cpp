// The scanner that all readers share.
#include "import/tokens.h"

#include "tests/support/child.h"
#include "tests/support/console.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

/// The first `count` tokens of the text.
std::vector<std::string> tokens_of(const std::string &text, int count) {
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    std::vector<std::string> result;
    for (int i = 0; i < count; ++i) {
        result.emplace_back(read_token(file));
    }
    close_tokens(file);
    return result;
}

TEST(Tokens, WhiteSpaceOfEveryKindSetsTokensApart) {
    EXPECT_EQ(tokens_of(" a\tb\nc\rd\r\ne\vf\fg ", 7),
              (std::vector<std::string>{"a", "b", "c", "d", "e", "f", "g"}));
}

TEST(Tokens, AtTheEndTheLastOneStays) {
    EXPECT_EQ(tokens_of("a b", 4), (std::vector<std::string>{"a", "b", "b", "b"}));
}

TEST(Tokens, TheEndIsToldOnlyByAReadThatMeetsIt) {
    TokenFile file;
    open_tokens_from_memory(file, "a", 1);
    read_token(file);
    EXPECT_FALSE(file.ended);
    read_token(file);
    EXPECT_TRUE(file.ended);
    rewind_tokens(file);
    EXPECT_FALSE(file.ended);
    EXPECT_EQ(read_token(file), "a");
    close_tokens(file);
}

TEST(Tokens, AnEmptyTextGivesEmptyTokens) {
    EXPECT_EQ(tokens_of("", 2), (std::vector<std::string>{"", ""}));
    EXPECT_EQ(tokens_of(" \n", 1), (std::vector<std::string>{""}));
}

TEST(Tokens, ASkipKeepsTheLastAndStopsAtTheEnd) {
    TokenFile file;
    open_tokens_from_memory(file, "a b c d", 7);
    skip_tokens(file, 3);
    EXPECT_EQ(file.token, "c");
    skip_tokens(file, int64_t{3} * INT_MAX);
    EXPECT_EQ(file.token, "d");
    skip_tokens(file, -5);
    EXPECT_EQ(file.token, "d");
    close_tokens(file);
}

TEST(Tokens, ComparisonIsThatOfCStrings) {
    EXPECT_TRUE(token_is("PARTIALS", "PARTIALS"));
    EXPECT_FALSE(token_is("PARTIALS2", "PARTIALS"));
    EXPECT_FALSE(token_is("PARTIAL", "PARTIALS"));
    EXPECT_FALSE(token_is("partials", "PARTIALS"));
    EXPECT_TRUE(token_is(std::string_view("PARTIALS\0x", 10), "PARTIALS"));
    EXPECT_FALSE(token_is(std::string_view("PART\0IALS", 9), "PARTIALS"));
}

TEST(Tokens, NumbersAreThoseOfAtof) {
    for (const char *text : {"0",
                             "1",
                             "-1",
                             "+1",
                             "1.5",
                             "-.5",
                             ".",
                             "-",
                             "+",
                             "",
                             "-.",
                             "1e3",
                             "1E-3",
                             "1e",
                             "1e+",
                             "1.5abc",
                             "abc",
                             "0x10",
                             "-0x1p3",
                             "0X",
                             "00012",
                             "1e999",
                             "-1e999",
                             "1e-999",
                             "1e-310",
                             "inf",
                             "-inf",
                             "infinity",
                             "INF",
                             "1,5",
                             "--1",
                             "+-1",
                             "1.2.3",
                             "1e5.5",
                             ")",
                             "(5",
                             "123456789012345678901234567890",
                             "0.1",
                             "3.4028236e38",
                             "1.17549435e-38",
                             "-0"}) {
        const double expected = std::atof(text);
        const double got = token_number(text);
        EXPECT_EQ(got, expected) << text;
        EXPECT_EQ(std::signbit(got), std::signbit(expected)) << text;
    }
    for (const char *text : {"nan", "-nan", "NAN", "nan(5)"}) {
        EXPECT_TRUE(std::isnan(token_number(text))) << text;
    }
}

TEST(Tokens, ANumberEndsWithItsToken) {
    const std::string text = "12.5678";
    EXPECT_EQ(token_number(std::string_view(text).substr(0, 4)), 12.5);
    EXPECT_EQ(token_integer(std::string_view(text).substr(0, 1)), 1);
}

TEST(Tokens, ANumberEndsAtAZeroByte) {
    EXPECT_EQ(token_number(std::string_view("1\0002", 3)), 1.0);
    EXPECT_EQ(token_integer(std::string_view("1\0002", 3)), 1);
    EXPECT_EQ(token_number(std::string_view("\0001", 2)), 0.0);
}

TEST(Tokens, IntegersAreThoseOfAtoi) {
    EXPECT_EQ(token_integer("12"), 12);
    EXPECT_EQ(token_integer("-12"), -12);
    EXPECT_EQ(token_integer("+7"), 7);
    EXPECT_EQ(token_integer("12.9"), 12);
    EXPECT_EQ(token_integer("12)"), 12);
    EXPECT_EQ(token_integer("x12"), 0);
    EXPECT_EQ(token_integer("0x12"), 0);
    EXPECT_EQ(token_integer(""), 0);
}

TEST(Tokens, IntegersTooLargeAreHeldToTheType) {
    EXPECT_EQ(token_integer("2147483647"), INT_MAX);
    EXPECT_EQ(token_integer("2147483648"), INT_MAX);
    EXPECT_EQ(token_integer("99999999999999999999"), INT_MAX);
    EXPECT_EQ(token_integer("-99999999999999999999"), INT_MIN);
}

TEST(Tokens, AnEchoIsALineOfItsOwn) {
    EXPECT_EQ(printed([] { echo_token("SDIF"); }), "SDIF\n");
    EXPECT_EQ(printed([] { echo_token({}); }), "\n");
    EXPECT_EQ(printed([] { echo_token(std::string_view("ab\0cd", 5)); }), "ab\n");
}

TEST(Tokens, ALongEchoIsCut) {
    EXPECT_EQ(printed([] { echo_token(std::string(100000, 'x')); }), std::string(255, 'x') + "\n");
}

TEST(Tokens, APercentSignIsPlainText) {
    EXPECT_EQ(printed([] { echo_token("%s%n%d"); }), "%s%n%d\n");
}

class TokenFiles : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_NE(mkdtemp(folder), nullptr);
    }
    void TearDown() override {
        unlink(path().c_str());
        rmdir(folder);
    }
    std::string path() const {
        return std::string(folder) + "/list";
    }
    void write_text(const std::string &text) const {
        FILE *file = std::fopen(path().c_str(), "wb");
        ASSERT_NE(file, nullptr);
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
    char folder[64] = "/tmp/quillgrove-tokens-XXXXXX";
};

TEST_F(TokenFiles, ARegularFile) {
    write_text("one two");
    TokenFile file;
    ASSERT_TRUE(open_tokens(file, path().c_str()));
    EXPECT_EQ(file.size, 7u);
    EXPECT_EQ(read_token(file), "one");
    EXPECT_EQ(read_token(file), "two");
    close_tokens(file);
}

TEST_F(TokenFiles, AnEmptyFile) {
    write_text("");
    TokenFile file;
    ASSERT_TRUE(open_tokens(file, path().c_str()));
    EXPECT_EQ(read_token(file), "");
    close_tokens(file);
}

TEST_F(TokenFiles, AFileOfSeveralMegabytesIsReadWhole) {
    std::string text;
    for (int i = 0; i < 500000; ++i) {
        text += std::to_string(i) + " ";
    }
    write_text(text);
    TokenFile file;
    ASSERT_TRUE(open_tokens(file, path().c_str()));
    skip_tokens(file, 500000);
    EXPECT_EQ(file.token, "499999");
    EXPECT_FALSE(file.ended);
    close_tokens(file);
}

TEST_F(TokenFiles, AFileThatIsNotThere) {
    TokenFile file;
    EXPECT_FALSE(open_tokens(file, path().c_str()));
    EXPECT_EQ(file.data, nullptr);
}

TEST_F(TokenFiles, AFolderGivesTheSystemsReason) {
    const std::string name = folder;
    const ChildResult result = in_child("", [&] {
        TokenFile file;
        std::printf("%d", open_tokens(file, name.c_str()));
    });
    EXPECT_EQ(result.out, "0");
    EXPECT_EQ(result.err, "Quillgrove: " + name + ": Is a directory\n");
}

TEST_F(TokenFiles, ADeviceIsRefused) {
    const ChildResult result = in_child("", [] {
        TokenFile file;
        std::printf("%d", open_tokens(file, "/dev/zero"));
    });
    EXPECT_EQ(result.out, "0");
    EXPECT_EQ(result.err, "Quillgrove: /dev/zero: Invalid argument\n");
}

TEST_F(TokenFiles, AFileWithoutPermission) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permission bits do not bind this user";
    }
    write_text("one");
    chmod(path().c_str(), 0);
    TokenFile file;
    EXPECT_FALSE(open_tokens(file, path().c_str()));
}

TEST_F(TokenFiles, APipeIsReadToItsEnd) {
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    std::string text;
    for (int i = 0; i < 50000; ++i) {
        text += std::to_string(i) + "\n";
    }
    std::thread writer([&] { write_text(text); });
    TokenFile file;
    const bool opened = open_tokens(file, path().c_str());
    writer.join();
    ASSERT_TRUE(opened);
    EXPECT_EQ(file.size, text.size());
    skip_tokens(file, 50000);
    EXPECT_EQ(file.token, "49999");
    close_tokens(file);
}

TEST_F(TokenFiles, AClosedFileGivesEmptyTokens) {
    TokenFile file;
    open_tokens_from_memory(file, "one", 3);
    read_token(file);
    close_tokens(file);
    EXPECT_EQ(read_token(file), "");
    EXPECT_EQ(file.size, 0u);
}

} // namespace
