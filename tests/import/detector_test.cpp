// File types by the first words, with what each prints.
#include "import/afile.h"

#include "tests/support/console.h"

#include <gtest/gtest.h>

namespace {

struct Detected {
    int32_t type;
    std::string text;
    bool at_head; // the next token is the first one again
};

Detected detect(const std::string &text) {
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    const std::string first(read_token(file));
    rewind_tokens(file);
    Detected result = {};
    result.text = printed([&] { result.type = detect_filetype(file); });
    result.at_head = read_token(file) == first;
    close_tokens(file);
    return result;
}

void expect_type(const std::string &text, int32_t type, const std::string &output) {
    const Detected got = detect(text);
    EXPECT_EQ(got.type, type) << text;
    EXPECT_EQ(got.text, output) << text;
    EXPECT_TRUE(got.at_head) << text;
}

const std::string inharmonic =
    "SDIF\n1NVT\n{\nTableName SinusoidalTracks;\nAuthor someone;\n}\nSDFC\n\n1TRC 3 0 0.0\n";

TEST(Detector, AListIsFoundWithoutAWord) {
    expect_type("( PARTIALS 1\n( POINTS 3\n", lisp_list, "");
}

TEST(Detector, LineEndsAndBlanksHaveNoMeaning) {
    expect_type("\r\n\t (\r\n\r\n PARTIALS", lisp_list, "");
}

TEST(Detector, AParenthesisGluedToTheKeywordMatchesNothing) {
    expect_type("(PARTIALS 1 ( POINTS 2", unknown_text, "");
}

TEST(Detector, AnotherWordInTheParenthesis) {
    expect_type("( POINTS 3", unknown_text, "");
}

TEST(Detector, KeywordsAreInCapitals) {
    expect_type("( partials 1", unknown_text, "");
}

TEST(Detector, AParenthesisBeforeSdifIsPassedOver) {
    expect_type("( SDIF x 1FQ0", sdif_fundamental, "SDIF\n1FQ0\nsuccess!\n");
}

TEST(Detector, SpearPartials) {
    expect_type("par-text-partials-format\npoint-type time frequency amplitude\n", spear_partials,
                "par-text-partials-format\npoint-type\nsuccess!\n");
}

TEST(Detector, SpearPartialsWithAnotherSecondWord) {
    expect_type("par-text-partials-format\npartials-count 5\n", unknown_text,
                "par-text-partials-format\npartials-count\n");
}

TEST(Detector, SpearFrames) {
    expect_type("par-text-frame-format\npoint-type index frequency amplitude\n", spear_frames,
                "par-text-frame-format\n5\npoint-type\nsuccess!\n");
}

TEST(Detector, SpearFramesWithAnotherSecondWord) {
    expect_type("par-text-frame-format frame-count", unknown_text,
                "par-text-frame-format\n5\nframe-count\n");
}

TEST(Detector, InharmonicTracks) {
    expect_type(inharmonic, sdif_inharmonic,
                "SDIF\nSDIF\n1NVT\nSinusoidalTracks;\nSDFC\n1TRC\nsuccess!\n");
}

TEST(Detector, HarmonicTracks) {
    expect_type("SDIF 1NVT { Author x; TableName HarmonicTracks; } SDFC 1HRM", sdif_harmonic,
                "SDIF\nSDIF\n1NVT\nHarmonicTracks;\nSDFC\n1HRM\nsuccess!\n");
}

TEST(Detector, InharmonicTableWithOtherFrames) {
    expect_type("SDIF 1NVT { TableName SinusoidalTracks; } SDFC 1HRM", unknown_text,
                "SDIF\nSDIF\n1NVT\nSinusoidalTracks;\nSDFC\n1HRM\n");
}

TEST(Detector, HarmonicTableWithOtherFrames) {
    expect_type("SDIF 1NVT { TableName HarmonicTracks; } SDFC 1TRC", unknown_text,
                "SDIF\nSDIF\n1NVT\nHarmonicTracks;\nSDFC\n1TRC\n");
}

TEST(Detector, FundamentalWithoutATable) {
    expect_type("SDIF SDFC 1FQ0 1 0 0.0", sdif_fundamental, "SDIF\nSDIF\n1FQ0\nsuccess!\n");
}

TEST(Detector, FundamentalWithATableThatDoesNotOpen) {
    expect_type("SDIF 1NVT SDFC 1FQ0", sdif_fundamental, "SDIF\nSDIF\n1NVT\n1FQ0\nsuccess!\n");
}

TEST(Detector, NoTableAndOtherFrames) {
    expect_type("SDIF SDFC 1TRC", unknown_text, "SDIF\nSDIF\n1TRC\n");
}

TEST(Detector, ATableOfAnotherNameGoesToTheListReader) {
    expect_type("SDIF 1NVT { TableName Whatever; } SDFC 1TRC", lisp_list,
                "SDIF\nSDIF\n1NVT\nWhatever;\nSDFC\n1TRC\nsuccess!\n");
}

TEST(Detector, TableNamesNeedTheirSemicolon) {
    expect_type("SDIF 1NVT { TableName SinusoidalTracks ; } SDFC 1TRC", lisp_list,
                "SDIF\nSDIF\n1NVT\nSinusoidalTracks\nSDFC\n1TRC\nsuccess!\n");
}

TEST(Detector, NoTableNameEndsWithTheFile) {
    expect_type("SDIF 1NVT { Author x; } SDFC 1TRC", unknown_text, "SDIF\nSDIF\n1NVT\n");
}

TEST(Detector, NoOpeningOfTheFramesEndsWithTheFile) {
    expect_type("SDIF 1NVT { TableName SinusoidalTracks; } 1TRC", unknown_text,
                "SDIF\nSDIF\n1NVT\nSinusoidalTracks;\n");
}

TEST(Detector, ATableNameReadAgainAtTheEndOpensNoFrames) {
    expect_type("SDIF 1NVT { TableName SDFC", unknown_text, "SDIF\nSDIF\n1NVT\nSDFC\n");
}

TEST(Detector, AnyOtherFirstWordIsEchoed) {
    expect_type("hello world", unknown_text, "hello\n");
}

TEST(Detector, AWordThatBeginsWithAParenthesisIsNotEchoed) {
    expect_type("(hello world", unknown_text, "");
}

TEST(Detector, AnEmptyText) {
    expect_type("", unknown_text, "\n");
}

TEST(Detector, WhiteSpaceAlone) {
    expect_type(" \n\t\r\n", unknown_text, "\n");
}

TEST(Detector, TextsThatStopAfterAnyWord) {
    const std::string words[] = {"SDIF",   "1NVT", "{",   "TableName", "SinusoidalTracks;",
                                 "Author", "SDFC", "1TRC"};
    std::string text;
    for (const std::string &word : words) {
        const int32_t expected = word == "1TRC" ? sdif_inharmonic : unknown_text;
        text += word + " ";
        EXPECT_EQ(detect(text).type, expected) << text;
    }
}

TEST(Detector, SpearTextThatStopsBehindItsName) {
    expect_type("par-text-partials-format", unknown_text,
                "par-text-partials-format\npar-text-partials-format\n");
    expect_type("par-text-frame-format", unknown_text,
                "par-text-frame-format\n5\npar-text-frame-format\n");
}

TEST(Detector, AParenthesisAlone) {
    expect_type("(", unknown_text, "");
}

TEST(Detector, NothingOfOneCallReachesTheNext) {
    detect(inharmonic);
    expect_type("SDIF 1NVT { TableName Whatever; } SDFC 1TRC", lisp_list,
                "SDIF\nSDIF\n1NVT\nWhatever;\nSDFC\n1TRC\nsuccess!\n");
}

} // namespace
