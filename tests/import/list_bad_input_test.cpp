// Texts that no analysis program wrote: each ends in its message and status or in a store.
#include "tests/support/analysis_file.h"
#include "tests/support/fixture.h"
#include "tests/support/plain_list.h"

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

class ListBadInput : public StoreTest {};

const std::string corrupt = "Error: Analysis file corrupt! Exiting...\n";
const std::string none_valid = "No valid partials imported: quitting program\n";
const std::string closing = "Quillgrove> Closing \"a.pt\" and exiting...\n\n";

bool ends_with(const std::string &text, const std::string &ending) {
    return text.size() >= ending.size() && text.ends_with(ending);
}

std::string dump_of(const ChildResult &result) {
    const size_t at = result.out.find("STORE\n");
    return at == std::string::npos ? "no store" : result.out.substr(at + 6);
}

/// One pass over each partial that swaps neighbouring times; then no time is below 0.
void check_and_shift_times(PlainList &list) {
    float earliest = 100000.0f;
    for (std::vector<PlainPoint> &points : list.points) {
        for (size_t j = 0; j + 1 < points.size(); ++j) {
            if (points[j + 1].time < points[j].time) {
                std::swap(points[j + 1].time, points[j].time);
            }
        }
        earliest = points[0].time < earliest ? points[0].time : earliest;
    }
    for (std::vector<PlainPoint> &points : list.points) {
        for (PlainPoint &point : points) {
            point.time -= earliest < 0.0f ? earliest : 0.0f;
        }
    }
}

/// What the dump of the plain reading looks like.
std::string plain_dump(PlainList list) {
    check_and_shift_times(list);
    std::string text;
    for (size_t i = 0; i < list.points.size(); ++i) {
        for (size_t j = 0; j < list.points[i].size(); ++j) {
            const PlainPoint &point = list.points[i][j];
            char line[160];
            std::snprintf(line, sizeof line, "[%zu][%zu]\t %f\t%f\t%f\n", i, j,
                          static_cast<double>(point.time), static_cast<double>(point.freq),
                          static_cast<double>(point.amp));
            text += line;
        }
        text += "\n";
    }
    return text;
}

/// The text ends as the plain reading says: broken, without partials, or in that store.
void expect_plain_outcome(const std::string &text) {
    const ChildResult result = start_on(text, "");
    const std::vector<std::string> words = words_of(text);
    if (words.size() < 2 || words[0] != "(" || words[1] != "PARTIALS") {
        EXPECT_EQ(result.status, 1) << text;
        EXPECT_TRUE(ends_with(result.out, closing)) << text << result.out;
        return;
    }
    const PlainList expected = plain_list(text);
    if (expected.result == -1) {
        EXPECT_EQ(result.status, 1) << text;
        EXPECT_TRUE(ends_with(result.out, corrupt)) << text << result.out;
    } else if (expected.partials < 1) {
        EXPECT_EQ(result.status, 255) << text;
        EXPECT_TRUE(ends_with(result.out, none_valid)) << text << result.out;
    } else {
        EXPECT_EQ(result.status, 0) << text << result.out;
        EXPECT_EQ(dump_of(result), plain_dump(expected)) << text;
    }
}

/// A sound list with one word put in place of another.
std::string list_with(const std::string &partial_count, const std::string &point_count,
                      const std::string &value = "441") {
    return "( PARTIALS " + partial_count + " ( POINTS " + point_count + " 0.0 440 -30 0.1 " +
           value + " -31 0.2 442 -60 ) ( POINTS 2 0.5 100 -20 0.6 101 -21 ) )\n";
}

TEST_F(ListBadInput, AnEmptyFile) {
    const ChildResult result = start_on("", "");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(ends_with(result.out, closing)) << result.out;
}

TEST_F(ListBadInput, ATableOfAnotherNameReachesTheListReader) {
    const ChildResult result =
        start_on("SDIF 1NVT { TableName Whatever; } SDFC 1TRC 3 1 0 0.0", "");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
              "Opening: a.pt \nSDIF\nSDIF\n1NVT\nWhatever;\nSDFC\n1TRC\nsuccess!\n" + corrupt);
}

TEST_F(ListBadInput, AFolder) {
    const ChildResult result = start_on_path("/tmp", "\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Opening: /tmp \nQuillgrove> Cannot open file \"/tmp\"\n"
                          "Quillgrove> Exiting...\nQuillgrove> Please confirm (enter): \n");
    EXPECT_EQ(result.err, "Quillgrove: /tmp: Is a directory\n");
}

TEST_F(ListBadInput, AnUnreadableFile) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permission bits do not bind this user";
    }
    char name[] = "/tmp/quillgrove-closed-XXXXXX";
    const int fd = mkstemp(name);
    ASSERT_GE(fd, 0);
    close(fd);
    chmod(name, 0);
    const ChildResult result = start_on_path(name, "\n");
    unlink(name);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("Cannot open file"), std::string::npos);
}

TEST_F(ListBadInput, APicture) {
    const unsigned char png[] = {0x89, 'P', 'N', 'G',  0x0D, 0x0A, 0x1A, 0x0A, 0,    0, 0, 0x0D,
                                 'I',  'H', 'D', 'R',  0,    0,    0,    1,    0,    0, 0, 1,
                                 8,    6,   0,   0,    0,    0x1F, 0x15, 0xC4, 0x89, 0, 0, 0,
                                 0x0A, 'I', 'D', 'A',  'T',  0x78, 0x9C, 0x63, 0,    1, 0, 0,
                                 5,    0,   1,   0x0D, 0x0A, 0x2D, 0xB4, 0,    0,    0, 0, 'I',
                                 'E',  'N', 'D', 0xAE, 0x42, 0x60, 0x82};
    const ChildResult result =
        start_on(std::string(reinterpret_cast<const char *>(png), sizeof png), "n\ny\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(ends_with(result.out, closing)) << result.out;
}

TEST_F(ListBadInput, AListCutAfterEveryWord) {
    const std::vector<std::string> words = words_of(list_with("2", "3"));
    std::string text;
    for (const std::string &word : words) {
        text += word + "\n";
        expect_plain_outcome(text);
    }
}

TEST_F(ListBadInput, AListWithEachWordLeftOut) {
    const std::vector<std::string> words = words_of(list_with("2", "3"));
    for (size_t left_out = 0; left_out < words.size(); ++left_out) {
        std::string text;
        for (size_t i = 0; i < words.size(); ++i) {
            text += i == left_out ? "" : words[i] + " ";
        }
        expect_plain_outcome(text);
    }
}

TEST_F(ListBadInput, AListWithEachWordDoubled) {
    const std::vector<std::string> words = words_of(list_with("2", "3"));
    for (size_t doubled = 0; doubled < words.size(); ++doubled) {
        std::string text;
        for (size_t i = 0; i < words.size(); ++i) {
            text += words[i] + " " + (i == doubled ? words[i] + " " : "");
        }
        expect_plain_outcome(text);
    }
}

TEST_F(ListBadInput, OddCountsOfPartials) {
    for (const char *count :
         {"-1", "0", "1", "2", "3", "2147483647", "99999999999999999999", "x", "-2147483648"}) {
        expect_plain_outcome(list_with(count, "3"));
    }
}

TEST_F(ListBadInput, OddCountsOfPoints) {
    for (const char *count : {"-1", "0", "1", "2", "3", "4", "5", "20", "2147483647",
                              "99999999999999999999", "x", "-2147483648"}) {
        expect_plain_outcome(list_with("2", count));
        expect_plain_outcome(list_with("99999999999999999999", count));
    }
}

TEST_F(ListBadInput, ACountTooLargeForTheFileIsBroken) {
    const ChildResult result = start_on(list_with("2", "2147483647"), "");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Opening: a.pt \n" + corrupt);
}

TEST_F(ListBadInput, HugeCountsOfPartialsTakeNoMemory) {
    const ChildResult small = start_on(list_with("2", "3"), "");
    for (const char *count : {"2147483647", "99999999999999999999", "100000000"}) {
        const ChildResult result = start_on(list_with(count, "3"), "");
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(dump_of(result), dump_of(small));
        EXPECT_LT(result.peak, small.peak + 4096) << count;
    }
}

TEST_F(ListBadInput, HugeCountsFitALimitedAddressSpace) {
    if (sanitized()) {
        GTEST_SKIP() << "the sanitizer's own memory exceeds any limit";
    }
    ChildLimits limits;
    limits.address_space = size_t{256} << 20;
    EXPECT_EQ(start_on(list_with("2147483647", "3"), "", limits).status, 0);
    EXPECT_EQ(start_on(list_with("2", "2147483647"), "", limits).status, 1);
    EXPECT_EQ(
        start_on(list_with("99999999999999999999", "99999999999999999999"), "", limits).status, 1);
}

TEST_F(ListBadInput, OneWordOfTenMegabytes) {
    const std::string word(10 << 20, 'x');
    ChildResult result = start_on(word, "n\ny\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(ends_with(result.out, closing));
    EXPECT_LT(result.out.size(), 1000u);
    result = start_on("( PARTIALS 1 ( POINTS 2 0 440 -30 1 " + word + " -30 ) )", "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(dump_of(result), "[0][0]\t 0.000000\t440.000000\t-48.000000\n"
                               "[0][1]\t 1.000000\t4.000000\t-90.000000\n\n");
}

TEST_F(ListBadInput, TenMegabytesOfDigits) {
    const std::string digits(10 << 20, '9');
    const ChildResult result =
        start_on("( PARTIALS " + digits + " ( POINTS 2 0 " + digits + " -30 1 440 -30 ) )", "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(dump_of(result), "[0][0]\t 0.000000\t22050.000000\t-48.000000\n"
                               "[0][1]\t 1.000000\t440.000000\t-90.000000\n\n");
}

TEST_F(ListBadInput, CarriageReturnsAlone) {
    std::string text = list_with("2", "3");
    for (char &c : text) {
        c = c == ' ' ? '\r' : c;
    }
    expect_plain_outcome(text);
    EXPECT_EQ(start_on(text, "").status, 0);
}

TEST_F(ListBadInput, NotANumberAndInfinitiesInEachColumn) {
    for (const char *value : {"nan", "-nan", "inf", "-inf", "1e999", "-1e999", "1e-999", "1e38"}) {
        const std::string v = value;
        for (const std::string &point :
             {v + " 441 -31", "0.1 " + v + " -31", "0.1 441 " + v, v + " " + v + " " + v}) {
            for (int place = 0; place < 3; ++place) {
                std::string text = "( PARTIALS 1 ( POINTS 3";
                for (int j = 0; j < 3; ++j) {
                    text += j == place ? " " + point : " 0." + std::to_string(j) + " 440 -30";
                }
                const ChildResult result = start_on(text + " ) )", "");
                EXPECT_EQ(result.status, 0) << text;
                EXPECT_EQ(result.err, "") << text;
                EXPECT_NE(dump_of(result), "no store") << text;
            }
        }
    }
}

TEST_F(ListBadInput, AnInfiniteFrequencyIsHeldToTheRange) {
    EXPECT_NE(dump_of(start_on(list_with("2", "3", "inf"), "")).find("22050.000000"),
              std::string::npos);
    EXPECT_NE(dump_of(start_on(list_with("2", "3", "-1e999"), "")).find("\t4.000000"),
              std::string::npos);
}

TEST_F(ListBadInput, OnePartialOfOnePoint) {
    const ChildResult result = start_on("( PARTIALS 1 ( POINTS 1 0 440 -30 ) )", "");
    EXPECT_EQ(result.status, 255);
    EXPECT_TRUE(ends_with(result.out, none_valid));
}

TEST_F(ListBadInput, TimesThatDescend) {
    expect_plain_outcome("( PARTIALS 1 ( POINTS 4 4 440 -30 3 441 -31 2 442 -32 1 443 -33 ) )");
    const ChildResult result =
        start_on("( PARTIALS 1 ( POINTS 4 4 440 -30 3 441 -31 2 442 -32 1 443 -33 ) )", "");
    EXPECT_NE(result.out.find("\n***\n"), std::string::npos);
}

TEST_F(ListBadInput, EqualTimesAndOneFrequency) {
    const ChildResult result = start_on("( PARTIALS 1 ( POINTS 2 0 440 -30 0 440 -30 ) )", "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
}

TEST_F(ListBadInput, ZeroBytesInWords) {
    std::string text = list_with("2", "3");
    for (size_t at = 0; at < text.size(); ++at) {
        std::string broken = text;
        broken.insert(at, 1, '\0');
        const ChildResult result = start_on(broken, "");
        EXPECT_EQ(result.signal, 0) << at;
        EXPECT_TRUE(result.status == 0 || result.status == 1 || result.status == 255) << at;
    }
}

TEST_F(ListBadInput, AZeroByteEndsAWordAsItEndsAString) {
    const char bytes[] = "( PARTIALS\0x 1 ( POINTS\0y 2 0 44\0000 -30 1 440 -30 )\0z )\0";
    const std::string text(bytes, sizeof bytes - 1);
    const ChildResult result = start_on(text, "");
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(dump_of(result), "[0][0]\t 0.000000\t44.000000\t-48.000000\n"
                               "[0][1]\t 1.000000\t440.000000\t-90.000000\n\n");
}

TEST_F(ListBadInput, ZeroBytesAlone) {
    EXPECT_EQ(start_on(std::string(5000, '\0'), "").status, 1);
}

} // namespace
