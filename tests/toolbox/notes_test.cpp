// The note names of the console, against a listing of their own: which words there are, and
// what each is worth to the last printed digit.

#include "toolbox/auxmath3d.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace {

struct Row {
    const char *lower;
    const char *upper;
    const char *freq; // Hz in register 1, digits enough for one single-precision number
};

const std::vector<Row> rows = {
    {"c", "C", "261.6255798"},   {"c#", "C#", "369.9944152"}, {"db", "Db", "369.9944152"},
    {"d", "D", "391.9954224"},   {"d#", "D#", "415.3046875"}, {"eb", "Eb", "415.3046875"},
    {"f", "F", "466.1637573"},   {"f#", "F#", "493.8833008"}, {"gb", "Gb", "493.8833008"},
    {"g#", "G#", "415.3046875"}, {"ab", "Ab", "415.3046875"}, {"a", "A", "440.0000000"},
    {"a#", "A#", "783.9908447"}, {"bb", "Bb", "783.9908447"}, {"bn", "Bn", "830.6093750"},
    {"b", "B", "783.9908447"},   {"h", "H", "830.6093750"},
};

/// The nine words of a row, lowest register first.
std::vector<std::string> words_of(const Row &row) {
    const std::string low = row.lower;
    const std::string high = row.upper;
    return {"et2" + high,     "et1" + high,     "et" + high,      "et" + low,      "et" + low + "1",
            "et" + low + "2", "et" + low + "3", "et" + low + "4", "et" + low + "5"};
}

/// All words with what they are worth, the fifth of each row being register 1.
std::map<std::string, float> all_words() {
    std::map<std::string, float> words;
    for (const Row &row : rows) {
        const float base = std::strtof(row.freq, nullptr);
        int power = -4;
        for (const std::string &word : words_of(row)) {
            words[word] = std::ldexp(base, power++);
        }
    }
    return words;
}

TEST(Notes, ThereAreAHundredAndFiftyThreeWords) {
    EXPECT_EQ(all_words().size(), 153u);
}

TEST(Notes, RegisterOneIsTheTableToTheLastDigit) {
    for (const Row &row : rows) {
        const std::string word = std::string("et") + row.lower + "1";
        EXPECT_EQ(string2freq(word.c_str()), std::strtof(row.freq, nullptr)) << word;
    }
}

TEST(Notes, TheNineRegistersOfC) {
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"et2C", "16.3515987"},   {"et1C", "32.7031975"},   {"etC", "65.4063949"},
        {"etc", "130.8127900"},   {"etc1", "261.6255798"},  {"etc2", "523.2511597"},
        {"etc3", "1046.5023193"}, {"etc4", "2093.0046387"}, {"etc5", "4186.0092773"}};
    for (const auto &[word, freq] : expected) {
        EXPECT_EQ(string2freq(word.c_str()), std::strtof(freq.c_str(), nullptr)) << word;
    }
}

TEST(Notes, EveryWordIsRegisterOneTimesAPowerOfTwo) {
    for (const auto &[word, freq] : all_words()) {
        EXPECT_EQ(string2freq(word.c_str()), freq) << word;
    }
}

TEST(Notes, CSharpOneIsNotTheNoteItSpells) {
    EXPECT_EQ(string2freq("etc#1"), 369.9944152f);
    EXPECT_EQ(string2freq("etc1"), 261.6255798f);
}

TEST(Notes, NaturalEAndGAreUnknownInEveryRegister) {
    for (const Row &row : {Row{"e", "E", ""}, Row{"g", "G", ""}, Row{"en", "En", ""},
                           Row{"e#", "E#", ""}, Row{"gn", "Gn", ""}}) {
        for (const std::string &word : words_of(row)) {
            EXPECT_EQ(string2freq(word.c_str()), 0.0f) << word;
        }
    }
}

TEST(Notes, NoOtherSpellingIsAWord) {
    const std::map<std::string, float> known = all_words();
    const std::string letters = "abcdefghiABCDEFGHI";
    size_t met = 0;
    for (const char *before :
         {"et", "et0", "et1", "et2", "et3", "et4", "et5", "Et", "ET", "eT", ""}) {
        for (char letter : letters) {
            for (const char *sign : {"", "#", "b", "n", "B", "N", "s", "##"}) {
                for (const char *after : {"", "0", "1", "2", "3", "4", "5", "6", "-1", "11"}) {
                    const std::string word = before + std::string(1, letter) + sign + after;
                    const auto at = known.find(word);
                    met += at != known.end() ? 1 : 0;
                    EXPECT_EQ(string2freq(word.c_str()), at != known.end() ? at->second : 0.0f)
                        << word;
                }
            }
        }
    }
    EXPECT_EQ(met, known.size()) << "the walk passes through every word";
}

TEST(Notes, MatchingIsExact) {
    const std::vector<std::string> others = {"",
                                             "e",
                                             "et",
                                             "et1",
                                             "et2",
                                             "c1",
                                             " etc1",
                                             "etc1 ",
                                             "etc1\n",
                                             "etc 1",
                                             "+etc1",
                                             "-etc1",
                                             "ETC1",
                                             "etC1",
                                             "et1c",
                                             "et2c",
                                             "et1C1",
                                             "et2C#2",
                                             "440",
                                             "etD5",
                                             "etm2",
                                             "etP8",
                                             "etC##",
                                             "et2CC",
                                             "etBN",
                                             "etDB",
                                             "et2DB",
                                             std::string(10000, 'e'),
                                             "etc1" + std::string(300, '1')};
    for (const std::string &word : others) {
        EXPECT_EQ(string2freq(word.c_str()), 0.0f) << word;
    }
}

TEST(Notes, SomeWordsAreIntervalsToo) {
    EXPECT_EQ(string2freq("etd5"), 16.0f * 391.9954224f);
    EXPECT_FLOAT_EQ(string2ratio("etd5"), 1.4142135f);
}

} // namespace
