#include "import/tokens.h"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

using namespace std::string_literals;

/// A file of tokens in memory, closed at the end of the test.
class Tokens {
  public:
    explicit Tokens(const std::string &text) {
        open_tokens_from_memory(file, text.data(), text.size());
    }
    ~Tokens() {
        close_tokens(file);
    }
    Tokens(const Tokens &) = delete;
    Tokens &operator=(const Tokens &) = delete;

    std::string read() {
        return std::string(read_token(file));
    }

    TokenFile file;
};

/// Both conversions give every bit that atof gives, sign of zero and payload of NaN included.
void expect_like_atof(const std::string &text) {
    const auto wanted = std::bit_cast<uint64_t>(std::atof(text.c_str()));
    EXPECT_EQ(std::bit_cast<uint64_t>(token_number(text)), wanted) << '"' << text << '"';
    if (text.empty()) {
        return;
    }
    for (const char *behind : {"", " 5", "\n"}) {
        Tokens tokens(text + behind);
        EXPECT_EQ(std::bit_cast<uint64_t>(read_number(tokens.file)), wanted) << '"' << text << '"';
        EXPECT_EQ(tokens.file.token, text);
    }
}

const std::string odd_texts[] = {
    "",
    "+1",
    "0x1p3",
    "-0x1p-3",
    "0X1P3",
    "+0x1.8p1",
    "nan",
    "-nan",
    "NAN",
    "nan(12)",
    "-nan(0x7)",
    "nan(",
    "inf",
    "-inf",
    "+inf",
    "infinity",
    "-INFINITY",
    "infinit",
    "1e999",
    "-1e999",
    "1e-400",
    "-1e-400",
    "4e-320",
    "5e-324",
    "2e-324",
    "3e-324",
    "1.2.3",
    "..1",
    "1..",
    "1e",
    "1e+",
    "1e-",
    "1e+5",
    "1E5",
    "1e5e5",
    "1e5.5",
    ".5",
    "5.",
    "-.5",
    "-5.",
    ".",
    "-.",
    "-",
    "+",
    "--1",
    "+-1",
    "-+1",
    "1,5",
    ",5",
    "1f",
    "1d5",
    "0x",
    "0xg",
    "-0x",
    "0x.",
    "0x.8",
    ".0x1",
    "00x1",
    "0",
    "-0",
    "0.0",
    "-0.0",
    "-0e5",
    "000123",
    "-000.5000",
    "1-2",
    "1+2",
    "(5",
    "5)",
    ")",
    "POINTS",
    "e5",
    ".e5",
    "-e5",
    "1_000",
    "1'000",
    // Fifteen digits and the first longer ones, either side of the short way.
    "123456789012345",
    "12345678901234.5",
    ".123456789012345",
    "-999999999999999",
    "0.00000000000001",
    "0.000000000000001",
    "1234567890123456",
    "999999999999999.9",
    // More digits than a 64-bit integer holds.
    "12345678901234567890",
    "18446744073709551615",
    "18446744073709551616",
    "0.12345678901234567890123456789",
    "99999999999999999999999999999999999999",
    // Roundings that need every digit.
    "9007199254740993",
    "9007199254740992.9999999999999999",
    "9007199254740993.00000000000000001",
    "9007199254740995",
    "2.2250738585072011e-308",
    "2.2250738585072012e-308",
    "2.2250738585072014e-308",
    "1.7976931348623157e308",
    "1.7976931348623158e308",
    "1.7976931348623159e308",
    "4.9406564584124654e-324",
    "2.4703282292062327e-324",
    "2.4703282292062328e-324",
    "6631236846766476e-316",
    "1.00000000000000011102230246251565404",
    "1.00000000000000011102230246251565405",
    "8.5e-5",
    "0.1",
    "0.3",
    "1e22",
    "1e23",
    "440.123",
};

} // namespace

TEST(TokenNumber, EqualsAtofOnOddTexts) {
    for (const std::string &text : odd_texts) {
        expect_like_atof(text);
    }
}

TEST(TokenNumber, EqualsAtofOnVeryLongTexts) {
    for (const size_t length : {20u, 100u, 800u, 5000u}) {
        const std::string digits(length, '7');
        expect_like_atof(digits);
        expect_like_atof("-" + digits);
        expect_like_atof("." + digits);
        expect_like_atof(digits + "." + digits);
        expect_like_atof(std::string(length, '0') + "1.5");
        expect_like_atof("0." + std::string(length, '0') + "12");
        expect_like_atof(digits + "e-" + std::to_string(length));
        expect_like_atof("1e" + digits);
    }
}

TEST(TokenNumber, EqualsAtofOnRandomTexts) {
    constexpr std::string_view letters =
        "0123456789012345678901234567890123456789...---+eEexnaif(,";
    std::mt19937 random(1);
    for (int i = 0; i < 200000 && !HasFailure(); ++i) {
        std::string text(random() % 24, ' ');
        for (char &c : text) {
            c = letters[random() % letters.size()];
        }
        expect_like_atof(text);
    }
}

TEST(TokenNumber, EqualsAtofOnRandomNumbers) {
    std::mt19937_64 random(2);
    const char *const formats[] = {"%.3f", "%.17g", "%g", "%.15g", "%e", "%a", "%.20g"};
    char text[512];
    for (int i = 0; i < 70000 && !HasFailure(); ++i) {
        const double value =
            i % 2 == 0 ? std::bit_cast<double>(random())
                       : static_cast<double>(static_cast<int64_t>(random()) >> (i % 60)) / 1000.0;
        std::snprintf(text, sizeof text, formats[i % std::size(formats)], value);
        expect_like_atof(text);
    }
}

TEST(TokenNumber, StopsAtAZeroByte) {
    EXPECT_EQ(token_number("12\0"
                           "34"s),
              12.0);
    Tokens tokens("12\0"
                  "34 5"s);
    EXPECT_EQ(read_number(tokens.file), 12.0);
    EXPECT_EQ(read_number(tokens.file), 5.0);
}

TEST(TokenInteger, EqualsAtoiWithinTheType) {
    for (const char *text : {"0", "12", "-7", "+3", "12abc", "abc", "", "-", "0x10", "1e3", "2.9",
                             "2147483647", "-2147483648"}) {
        EXPECT_EQ(token_integer(text), std::atoi(text)) << text;
    }
}

TEST(TokenInteger, IsClampedToTheType) {
    EXPECT_EQ(token_integer("2147483648"), INT32_MAX);
    EXPECT_EQ(token_integer("-2147483649"), INT32_MIN);
    EXPECT_EQ(token_integer("99999999999999999999"), INT32_MAX);
}

TEST(TokenIs, ComparesAsCStrings) {
    EXPECT_TRUE(token_is("POINTS", "POINTS"));
    EXPECT_FALSE(token_is("POINTS2", "POINTS"));
    EXPECT_FALSE(token_is("POINT", "POINTS"));
    EXPECT_FALSE(token_is("", "POINTS"));
    EXPECT_TRUE(token_is("POINTS\0rest"s, "POINTS"));
    EXPECT_FALSE(token_is("POI\0NTS"s, "POINTS"));
    EXPECT_FALSE(token_is("\0POINTS"s, "POINTS"));
}

TEST(ReadToken, SplitsAtEveryWhiteSpace) {
    Tokens tokens("  a\tb\nc\vd\fe\rf  \n");
    for (const char *wanted : {"a", "b", "c", "d", "e", "f"}) {
        EXPECT_EQ(tokens.read(), wanted);
        EXPECT_FALSE(tokens.file.ended);
    }
}

TEST(ReadToken, TakesOtherControlAndHighBytesAsText) {
    const std::string text = "\x01\x08\x0e\x1f\x7f\x80\x85\xa0\xff!"s;
    Tokens tokens(text + " b");
    EXPECT_EQ(tokens.read(), text);
    EXPECT_EQ(tokens.read(), "b");
}

TEST(ReadToken, RepeatsTheLastTokenAtTheEnd) {
    for (const char *text : {"a last", "a last \n"}) {
        Tokens tokens(text);
        tokens.read();
        EXPECT_EQ(tokens.read(), "last");
        EXPECT_FALSE(tokens.file.ended);
        EXPECT_EQ(tokens.read(), "last");
        EXPECT_TRUE(tokens.file.ended);
        EXPECT_EQ(tokens.read(), "last");
    }
}

TEST(ReadToken, IsEmptyInAnEmptyFile) {
    for (const char *text : {"", " \n\t"}) {
        Tokens tokens(text);
        EXPECT_EQ(tokens.read(), "");
        EXPECT_TRUE(tokens.file.ended);
        EXPECT_EQ(read_number(tokens.file), 0.0);
    }
}

TEST(ReadNumber, RepeatsTheLastTokenAtTheEnd) {
    Tokens tokens("1 2.5");
    EXPECT_EQ(read_number(tokens.file), 1.0);
    EXPECT_EQ(read_number(tokens.file), 2.5);
    EXPECT_FALSE(tokens.file.ended);
    EXPECT_EQ(read_number(tokens.file), 2.5);
    EXPECT_TRUE(tokens.file.ended);
}

TEST(RewindTokens, StartsOverWithNoToken) {
    Tokens tokens("a b");
    skip_tokens(tokens.file, 5);
    EXPECT_TRUE(tokens.file.ended);
    rewind_tokens(tokens.file);
    EXPECT_FALSE(tokens.file.ended);
    EXPECT_EQ(tokens.file.token, "");
    EXPECT_EQ(tokens.read(), "a");
}

TEST(SkipTokens, KeepsTheLastOne) {
    Tokens tokens("a b c d");
    skip_tokens(tokens.file, 0);
    EXPECT_EQ(tokens.file.token, "");
    skip_tokens(tokens.file, 3);
    EXPECT_EQ(tokens.file.token, "c");
    EXPECT_EQ(tokens.read(), "d");
}

TEST(SkipTokens, StopsAtTheEndWithTheLastToken) {
    for (const char *text : {"a b last", "a b last   \n                        "}) {
        Tokens tokens(text);
        skip_tokens(tokens.file, 1000000000000);
        EXPECT_TRUE(tokens.file.ended);
        EXPECT_EQ(tokens.file.token, "last");
    }
}

TEST(SkipTokens, EqualsReadingOneByOne) {
    std::mt19937 random(3);
    constexpr std::string_view letters = "ab1.-\x09\x0a\x0d\x0e\x08\x1f\x21\xa0\x89\xff      \n\t";
    for (int round = 0; round < 3000 && !HasFailure(); ++round) {
        std::string text(random() % 400, ' ');
        for (char &c : text) {
            c = letters[random() % letters.size()];
        }
        Tokens skipped(text);
        Tokens read(text);
        while (!read.file.ended) {
            const int count = static_cast<int>(random() % 40);
            skip_tokens(skipped.file, count);
            for (int i = 0; i < count && !read.file.ended; ++i) {
                read_token(read.file);
            }
            ASSERT_EQ(skipped.file.token, read.file.token);
            ASSERT_EQ(skipped.file.next, read.file.next);
            ASSERT_EQ(skipped.file.ended, read.file.ended);
        }
    }
}
/// What read_whole makes of a text, and what it makes of the same token in two steps.
void expect_whole(std::string_view text, int32_t value) {
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    EXPECT_EQ(read_whole(file), value) << text;
    const std::string token(file.token);
    rewind_tokens(file);
    EXPECT_EQ(token_integer(read_token(file)), value) << text;
    EXPECT_EQ(file.token, token) << text;
    close_tokens(file);
}

TEST(Tokens, WholeNumbersReadInOneWalkAreThoseOfTheToken) {
    expect_whole("0", 0);
    expect_whole("  42 7", 42);
    expect_whole("999999999 x", 999999999);
    expect_whole("2147483647", 2147483647);
    expect_whole("99999999999", 2147483647);
    expect_whole("-5", -5);
    expect_whole("12.9", 12);
    expect_whole("7x", 7);
    expect_whole("x7", 0);
    expect_whole(std::string_view("3\0004", 3), 3);
    expect_whole("", 0);
}

TEST(Tokens, AFloatIsPassedAsFarAsItGoes) {
    const struct {
        const char *text;
        const char *next;
    } cases[] = {{"1.5 a", "a"}, {" -2e3x b", "x"}, {"word b", "word"}, {"nan b", "b"}};
    for (const auto &row : cases) {
        TokenFile file;
        open_tokens_from_memory(file, row.text, std::char_traits<char>::length(row.text));
        pass_float(file);
        EXPECT_FALSE(file.ended);
        EXPECT_EQ(read_token(file), row.next) << row.text;
        close_tokens(file);
    }
    TokenFile file;
    open_tokens_from_memory(file, "  ", 2);
    pass_float(file);
    EXPECT_TRUE(file.ended);
    close_tokens(file);
}
