// Transposition ratios as words: interval names, fractions, numbers, and everything else that a
// console may hand over. What is printed is compared whole.

#include "tests/support/console.h"
#include "toolbox/auxmath3d.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct Row {
    std::vector<std::string> names;
    int semitones;
    const char *up;
    const char *down; // empty where there is no such word
};

const std::vector<Row> rows = {
    {{"etm2"}, 1, "1.0594631", "0.9438743"},
    {{"etM2"}, 2, "1.1224620", "0.8908987"},
    {{"etm3"}, 3, "1.1892071", "0.8408964"},
    {{"etM3"}, 4, "1.2599211", "0.7937005"},
    {{"etP4"}, 5, "1.3348398", "0.7491536"},
    {{"etA4", "etD5", "etd5", "etT"}, 6, "1.4142135", "0.7071068"},
    {{"etP5"}, 7, "1.4983071", "0.6674199"},
    {{"etm6"}, 8, "1.5874010", "0.6299605"},
    {{"etM6"}, 9, "1.6817929", "0.5946035"},
    {{"etm7"}, 10, "1.7817974", "0.5612310"},
    {{"etM7"}, 11, "1.8877486", ""},
    {{"etP8", "et8"}, 12, "2.0000000", "0.5000000"},
    {{"etm9"}, 13, "2.1189263", "0.4719371"},
    {{"etM9"}, 14, "2.2449241", "0.4454494"},
    {{"etm10"}, 15, "2.3784142", "0.4204482"},
    {{"etM10"}, 16, "2.5198421", "0.3968503"},
    {{"etP11"}, 17, "2.6696796", "0.3745768"},
    {{"etA11", "etd12"}, 18, "2.8284271", "0.3535534"},
    {{"etP12"}, 19, "2.9966142", "0.3337100"},
    {{"etm13"}, 20, "3.1748021", "0.3149803"},
    {{"etM13"}, 21, "3.3635857", "0.2973018"},
    {{"etm14"}, 22, "3.5635948", "0.2806155"},
    {{"etM14"}, 23, "3.7754972", "0.2648658"},
    {{"etP15", "et15", "et2xO"}, 24, "4.0000000", "0.2500000"},
};

struct Answer {
    float ratio;
    std::string text;
};

Answer ask(const std::string &word) {
    Answer answer{};
    answer.text = printed([&] { answer.ratio = string2ratio(word.c_str()); });
    return answer;
}

std::string seven_digits(float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.7f", value);
    return text;
}

std::string lengths(size_t length, size_t slash) {
    return "len = " + std::to_string(length) + "\ti = " + std::to_string(slash) + "\n";
}

std::string parts(const std::string &num, const std::string &den) {
    return "num = " + num + "\nlen1 = " + std::to_string(num.size()) + "\nden = " + den + "\n";
}

std::string refusal(const std::string &value) {
    return "Bad value for transposition: " + value + "\n\tmust be within +-2 octaves\n";
}

/// A word that is no interval name and reads as 0.
void expect_unknown(const std::string &word) {
    const Answer answer = ask(word);
    EXPECT_EQ(answer.ratio, 1.0f) << word;
    EXPECT_EQ(answer.text, lengths(word.size(), word.size()) + refusal("0.000000")) << word;
}

// Interval names

TEST(IntervalNames, WithoutASignAndWithPlus) {
    for (const Row &row : rows) {
        for (const std::string &name : row.names) {
            for (const std::string &word : {name, "+" + name}) {
                const Answer answer = ask(word);
                EXPECT_EQ(seven_digits(answer.ratio), row.up) << word;
                EXPECT_EQ(answer.ratio, static_cast<float>(std::pow(2.0, row.semitones / 12.0)))
                    << word;
                EXPECT_EQ(answer.text, "") << word;
            }
        }
    }
}

TEST(IntervalNames, WithMinus) {
    for (const Row &row : rows) {
        for (const std::string &name : row.names) {
            if (*row.down == '\0') {
                continue;
            }
            const Answer answer = ask("-" + name);
            EXPECT_EQ(seven_digits(answer.ratio), row.down) << name;
            EXPECT_FLOAT_EQ(answer.ratio, 1.0f / ask(name).ratio) << name;
            EXPECT_EQ(answer.text, "") << name;
        }
    }
}

TEST(IntervalNames, TheMajorSeventhHasNoWayDown) {
    EXPECT_EQ(seven_digits(ask("etM7").ratio), "1.8877486");
    EXPECT_EQ(seven_digits(ask("+etM7").ratio), "1.8877486");
    const Answer answer = ask("-etM7");
    EXPECT_EQ(answer.ratio, 1.0f);
    EXPECT_EQ(answer.text, "len = 5\ti = 5\n" + refusal("0.000000"));
}

TEST(IntervalNames, TheTritoneInSmallLettersNeedsASign) {
    EXPECT_EQ(seven_digits(ask("+eta4").ratio), "1.4142135");
    EXPECT_EQ(seven_digits(ask("-eta4").ratio), "0.7071068");
    EXPECT_EQ(seven_digits(ask("et44").ratio), "1.4142135");
    EXPECT_EQ(ask("+eta4").text + ask("-eta4").text + ask("et44").text, "");
    expect_unknown("eta4");
}

TEST(IntervalNames, MatchingIsExact) {
    for (const char *word :
         {"et",    "etm",    "etm1",  "etM1",   "etP1",   "etP6",   "etm4",   "etm5",
          "etm8",  "etm11",  "etm12", "etM11",  "etM12",  "etm15",  "etP13",  "et7",
          "et9",   "et2x",   "et2xo", "et2XO",  "ETm2",   "etp5",   "etp8",   "ett",
          "eta11", "etD12",  "etd4",  "++etm2", "--etm2", "+-etm2", "-+etm2", " etm2",
          "etm2 ", "+ etm2", "etm2+", "+",      "-",      "etc1"}) {
        expect_unknown(word);
    }
}

TEST(IntervalNames, AWalkOverQualitiesAndNumbersMeetsNoOther) {
    const std::string signs[] = {"", "+", "-"};
    size_t known = 0;
    for (const std::string &sign : signs) {
        for (const char *quality : {"", "m", "M", "P", "A", "a", "D", "d", "T"}) {
            for (int number = 1; number <= 17; ++number) {
                const Answer answer = ask(sign + "et" + quality + std::to_string(number));
                known += answer.text.empty() ? 1 : 0;
            }
        }
    }
    // etT and et2xO are out of the walk's reach, et44 is in no row; etM7 lacks one word of three,
    // and eta4 adds two.
    size_t names = 0;
    for (const Row &row : rows) {
        names += row.names.size();
    }
    EXPECT_EQ(known, 3 * (names - 2) - 1 + 2);
}

// Fractions and numbers

TEST(Ratios, AFractionIsPrintedInItsParts) {
    const Answer answer = ask("3/2");
    EXPECT_EQ(answer.ratio, 1.5f);
    EXPECT_EQ(answer.text, "len = 3\ti = 1\nnum = 3\nlen1 = 1\nden = 2\n");
    EXPECT_EQ(ask("5/4").ratio, 1.25f);
}

TEST(Ratios, ANumberIsReadAsItIs) {
    const Answer answer = ask("1.5");
    EXPECT_EQ(answer.ratio, 1.5f);
    EXPECT_EQ(answer.text, "len = 3\ti = 3\n");
}

TEST(Ratios, ASlashAtTheEndIsPassedOver) {
    const Answer answer = ask("3/");
    EXPECT_EQ(answer.ratio, 3.0f);
    EXPECT_EQ(answer.text, "len = 2\ti = 1\n");
    EXPECT_EQ(ask("1/").ratio, 1.0f);
    EXPECT_EQ(ask("1/").text, "len = 2\ti = 1\n");
}

TEST(Ratios, ADenominatorHasOneDigit) {
    const Answer answer = ask("3/12");
    EXPECT_EQ(answer.ratio, 1.5f);
    EXPECT_EQ(answer.text, "len = 4\ti = 1\nnum = 3\nlen1 = 1\nden = 2\n");
}

TEST(Ratios, TwelveOverElevenIsTwelve) {
    const Answer answer = ask("12/11");
    EXPECT_EQ(answer.ratio, 1.0f);
    EXPECT_EQ(answer.text, "len = 5\ti = 2\nnum = 12\nlen1 = 2\nden = 1\n" + refusal("12.000000"));
}

TEST(Ratios, TheRangeIncludesBothItsEnds) {
    EXPECT_EQ(ask("4").ratio, 4.0f);
    EXPECT_EQ(ask("4").text, "len = 1\ti = 1\n");
    EXPECT_EQ(ask("0.25").ratio, 0.25f);
    EXPECT_EQ(ask("0.25").text, "len = 4\ti = 4\n");
    EXPECT_EQ(ask("1/4").ratio, 0.25f);
    EXPECT_EQ(ask("8/2").ratio, 4.0f);
}

TEST(Ratios, OutsideTheRangeIsRefused) {
    EXPECT_EQ(ask("4.5").ratio, 1.0f);
    EXPECT_EQ(ask("4.5").text, "len = 3\ti = 3\n" + refusal("4.500000"));
    EXPECT_EQ(ask("0.249").ratio, 1.0f);
    EXPECT_EQ(ask("0.249").text, "len = 5\ti = 5\n" + refusal("0.249000"));
    EXPECT_EQ(ask("1/5").ratio, 1.0f);
    EXPECT_EQ(ask("1/5").text, "len = 3\ti = 1\n" + parts("1", "5") + refusal("0.200000"));
    EXPECT_EQ(ask("-3/2").ratio, 1.0f);
    EXPECT_EQ(ask("-3/2").text, "len = 4\ti = 2\n" + parts("-3", "2") + refusal("-1.500000"));
}

TEST(Ratios, ADecimalNumeratorCounts) {
    EXPECT_EQ(ask("1.5/2").ratio, 0.75f);
    EXPECT_EQ(ask("1.5/2").text, "len = 5\ti = 3\n" + parts("1.5", "2"));
}

TEST(Ratios, TheFirstSlashAndTheLastCharacterDecide) {
    EXPECT_EQ(ask("3/7/2").ratio, 1.5f);
    EXPECT_EQ(ask("3/7/2").text, "len = 5\ti = 1\n" + parts("3", "2"));
    EXPECT_EQ(ask("3/2/").ratio, 1.0f);
    EXPECT_EQ(ask("3/2/").text, "len = 4\ti = 1\n" + parts("3", "/") + refusal("inf"));
}

TEST(Ratios, AnIntervalNameInAFractionIsNoNumber) {
    EXPECT_EQ(ask("etP5/2").ratio, 1.0f);
    EXPECT_EQ(ask("etP5/2").text, "len = 6\ti = 4\n" + parts("etP5", "2") + refusal("0.000000"));
}

// Input that means nothing

TEST(Ratios, EmptyText) {
    const Answer answer = ask("");
    EXPECT_EQ(answer.ratio, 1.0f);
    EXPECT_EQ(answer.text, "len = 0\ti = 0\n" + refusal("0.000000"));
}

TEST(Ratios, ASlashAlone) {
    const Answer answer = ask("/");
    EXPECT_EQ(answer.ratio, 1.0f);
    EXPECT_EQ(answer.text, "len = 1\ti = 0\n" + refusal("0.000000"));
}

TEST(Ratios, AFractionWithoutANumerator) {
    const Answer answer = ask("/2");
    EXPECT_EQ(answer.ratio, 1.0f);
    EXPECT_EQ(answer.text, "len = 2\ti = 0\nnum = \nlen1 = 0\nden = 2\n" + refusal("0.000000"));
}

TEST(Ratios, ADenominatorOfNothing) {
    EXPECT_EQ(ask("1/0").ratio, 1.0f);
    EXPECT_EQ(ask("1/0").text, "len = 3\ti = 1\n" + parts("1", "0") + refusal("inf"));
    EXPECT_EQ(ask("3/x").ratio, 1.0f);
    EXPECT_EQ(ask("3/x").text, "len = 3\ti = 1\n" + parts("3", "x") + refusal("inf"));
    EXPECT_EQ(ask("-1/0").text, "len = 4\ti = 2\n" + parts("-1", "0") + refusal("-inf"));
    EXPECT_EQ(ask("0/0").ratio, 1.0f);
}

TEST(Ratios, WordsThatReadAsNoFiniteNumber) {
    EXPECT_EQ(ask("nan").ratio, 1.0f);
    EXPECT_EQ(ask("nan").text, "len = 3\ti = 3\n" + refusal("nan"));
    EXPECT_EQ(ask("-nan").ratio, 1.0f);
    EXPECT_EQ(ask("-nan").text, "len = 4\ti = 4\n" + refusal("-nan"));
    EXPECT_EQ(ask("inf").ratio, 1.0f);
    EXPECT_EQ(ask("inf").text, "len = 3\ti = 3\n" + refusal("inf"));
    EXPECT_EQ(ask("1e9").ratio, 1.0f);
    EXPECT_EQ(ask("1e9").text, "len = 3\ti = 3\n" + refusal("1000000000.000000"));
    EXPECT_EQ(ask("1e999").text, "len = 5\ti = 5\n" + refusal("inf"));
}

TEST(Ratios, ALongNumber) {
    const std::string ones(300, '1'); // 1.1e299, beyond single precision
    EXPECT_EQ(ask(ones).ratio, 1.0f);
    EXPECT_EQ(ask(ones).text, "len = 300\ti = 300\n" + refusal("inf"));
    const std::string digits = "1." + std::string(298, '5');
    EXPECT_EQ(ask(digits).ratio, static_cast<float>(1.0 + 5.0 / 9.0));
    EXPECT_EQ(ask(digits).text, "len = 300\ti = 300\n");
}

TEST(Ratios, ALongNumberWithASlashAtTheEnd) {
    const std::string digits = "1." + std::string(297, '5') + "/";
    EXPECT_EQ(ask(digits).ratio, static_cast<float>(1.0 + 5.0 / 9.0));
    EXPECT_EQ(ask(digits).text, "len = 300\ti = 299\n");
}

TEST(Ratios, ALongFractionIsRefused) {
    const std::string halves = std::string(150, '1') + "/" + std::string(149, '2');
    Answer answer{};
    EXPECT_EQ(complained([&] { answer = ask(halves); }),
              "Quillgrove: a numerator of 150 characters exceeds the limit of 15\n");
    EXPECT_EQ(answer.ratio, 1.0f);
    EXPECT_EQ(answer.text, "len = 300\ti = 150\n");
}

TEST(Ratios, ANumeratorOfFifteenCharactersIsTheLongest) {
    const std::string fifteen = "1.0000000000000";
    ASSERT_EQ(fifteen.size(), 15u);
    Answer answer{};
    EXPECT_EQ(complained([&] { answer = ask(fifteen + "/2"); }), "");
    EXPECT_EQ(answer.ratio, 0.5f);
    EXPECT_EQ(answer.text, "len = 17\ti = 15\n" + parts(fifteen, "2"));
    EXPECT_EQ(complained([&] { answer = ask(fifteen + "0/2"); }),
              "Quillgrove: a numerator of 16 characters exceeds the limit of 15\n");
    EXPECT_EQ(answer.ratio, 1.0f);
    EXPECT_EQ(answer.text, "len = 18\ti = 16\n");
}

TEST(Ratios, ALongDenominatorStillCountsByItsLastCharacter) {
    const std::string word = "3/" + std::string(297, '9') + "2";
    EXPECT_EQ(ask(word).ratio, 1.5f);
    EXPECT_EQ(ask(word).text, "len = 300\ti = 1\n" + parts("3", "2"));
}

TEST(Ratios, NothingIsLeftOverFromTheQuestionBefore) {
    ask("3.14159265358/2");
    EXPECT_EQ(ask("3/2").text, "len = 3\ti = 1\n" + parts("3", "2"));
    EXPECT_EQ(ask("3/2").ratio, 1.5f);
}

} // namespace
