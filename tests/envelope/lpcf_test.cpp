// The LPC file: its statuses, the walk over its frames, and what a frame reads as.

#include "envelope/lpcf.h"

#include "tests/envelope/envelope_support.h"
#include "tests/support/child.h"
#include "tests/support/console.h"

#include <cstdint>
#include <cstdio>

namespace {

using Lpcf = EnvelopeTest;

const char *const three_frames =
    "0.5 2\n1 100\n2 200\n1.25 2\n3 110\n4 210\n2.75 2\n5 120\n6 220\n";

std::string read_frame(int32_t p) {
    LpcFrame frame = lpc_initialize(0, p);
    printed([&] { lpcf_read(frame, p); });
    std::string records = records_of(frame);
    clear_lpc(frame, p + 1);
    return records;
}

/// A frame of `p` points at time 0, all of level 0.5 and 100 Hz.
std::vector<Pair> plain_frame(int p) {
    std::vector<Pair> records(static_cast<size_t>(p) + 1, Pair{0.5, 100});
    records[0] = {0, static_cast<double>(p)};
    return records;
}

std::string text_of(const std::vector<Pair> &records) {
    std::string content;
    for (const Pair &record : records) {
        content += std::to_string(record.amp) + " " + std::to_string(record.freq) + "\n";
    }
    return content;
}

TEST_F(Lpcf, OpenGivesTheCountOfPoints) {
    EXPECT_EQ(lpcf_open(file_of(three_frames).c_str()), 2);
    EXPECT_EQ(Oerror, 2);
    EXPECT_EQ(read_frame(2), "0.5 2, 1 100, 2 200");
}

TEST_F(Lpcf, AFileThatBeginsWithAWordIsNone) {
    EXPECT_EQ(lpcf_open(file_of("frames 0.5 2 1 100").c_str()), -4);
    EXPECT_EQ(Oerror, -4);
}

TEST_F(Lpcf, AFileThatBeginsWithASignIsNone) {
    EXPECT_EQ(lpcf_open(file_of("-0.5 2 1 100").c_str()), -4);
}

TEST_F(Lpcf, AnEmptyFileIsNone) {
    lpcf_open(file_of(three_frames).c_str());
    EXPECT_EQ(lpcf_open(file_of("", "empty").c_str()), -4);
}

TEST_F(Lpcf, AMissingFileIsReportedByTheStatus) {
    EXPECT_EQ(lpcf_open((folder + "/none").c_str()), -1);
    EXPECT_EQ(Oerror, -1);
}

TEST_F(Lpcf, AFolderIsNoFile) {
    EXPECT_NE(complained([&] { lpcf_open(folder.c_str()); }), "");
    EXPECT_EQ(Oerror, -1);
}

TEST_F(Lpcf, ACountBeyondTheStatusIsTheNearest) {
    EXPECT_EQ(lpcf_open(file_of("0 70000").c_str()), 32767);
    EXPECT_EQ(lpcf_open(file_of("0 -70000").c_str()), -32768);
}

TEST_F(Lpcf, ATokenOfTenThousandCharactersIsCut) {
    EXPECT_EQ(lpcf_open(file_of("0" + std::string(10000, '0') + " 7").c_str()), 7);
    EXPECT_EQ(lpcf_pos(0), 0.0f);
}

TEST_F(Lpcf, PositionOfTheFirstFrameIsTheFirstToken) {
    lpcf_open(file_of(three_frames).c_str());
    EXPECT_EQ(lpcf_pos(0), 0.5f);
    EXPECT_EQ(value, 0.5);
    EXPECT_EQ(value2, 0.5);
    EXPECT_EQ(read_frame(2), "0.5 2, 1 100, 2 200");
}

TEST_F(Lpcf, PositionCountsOneFrameLate) {
    lpcf_open(file_of(three_frames).c_str());
    EXPECT_EQ(lpcf_pos(1), 1.0f);
    EXPECT_EQ(read_frame(2), "1.25 2, 3 110, 4 210");
    EXPECT_EQ(lpcf_pos(2), 1.75f);
    EXPECT_EQ(value, 1.75);
    EXPECT_EQ(read_frame(2), "2.75 2, 5 120, 6 220");
}

TEST_F(Lpcf, PositionBeyondTheEnd) {
    lpcf_open(file_of(three_frames).c_str());
    EXPECT_EQ(lpcf_pos(3), -1.0f);
    EXPECT_EQ(lpcf_pos(2147483647), -1.0f);
    EXPECT_EQ(lpcf_pos(-1), -1.0f);
    EXPECT_EQ(lpcf_pos(INT32_MIN), -1.0f);
}

TEST_F(Lpcf, PositionWalksNothingForACountBelowZero) {
    lpcf_open(file_of("0.5 -1 1 100").c_str());
    EXPECT_EQ(lpcf_pos(1), -1.0f);
    EXPECT_EQ(lpcf_pos(0), 0.5f);
}

TEST_F(Lpcf, PositionInAFileOfHugeCountsEnds) {
    lpcf_open(file_of("0.5 2147483647 1 100").c_str());
    EXPECT_EQ(lpcf_pos(2), -1.0f);
}

TEST_F(Lpcf, PositionWithoutAFile) {
    EXPECT_EQ(lpcf_pos(0), 0.0f);
    EXPECT_EQ(lpcf_pos(1), -1.0f);
}

TEST_F(Lpcf, LengthCountsFramesFromTheFirstTime) {
    const std::string name = file_of(three_frames);
    LpcSize size = {};
    EXPECT_EQ(printed([&] { size = lpcf_len(name.c_str()); }), "\n");
    EXPECT_EQ(size.frames, 3);
    EXPECT_EQ(size.duration, 2.25f);
    EXPECT_EQ(lpcf_size.frames, 3);
    EXPECT_EQ(lpcf_size.duration, 2.25f);
    EXPECT_EQ(read_frame(2), "0.5 2, 1 100, 2 200");
}

TEST_F(Lpcf, LengthOfAMissingFileIsNothing) {
    lpcf_size = {7, 7.0f};
    const LpcSize size = lpcf_len((folder + "/none").c_str());
    EXPECT_EQ(size.frames, 0);
    EXPECT_EQ(size.duration, 0.0f);
    EXPECT_EQ(lpcf_size.frames, 7);
}

TEST_F(Lpcf, LengthPrintsAMarkAfterEverySixteenFrames) {
    const std::string name = file_of(two_point_file(33, 0.5));
    EXPECT_EQ(printed([&] { EXPECT_EQ(lpcf_len(name.c_str()).frames, 33); }), "||\n");
    EXPECT_EQ(lpcf_size.duration, 32.0f);
}

TEST_F(Lpcf, LengthCountsAFrameThatIsCut) {
    const std::string name = file_of("0 2\n1 100\n2 200\n4 2\n1");
    EXPECT_EQ(printed([&] { EXPECT_EQ(lpcf_len(name.c_str()).frames, 2); }), "\n");
    EXPECT_EQ(lpcf_size.duration, 4.0f);
}

TEST_F(Lpcf, LengthOfACountBelowZeroIsNoFrame) {
    const std::string name = file_of("0.5 -1 1 100");
    EXPECT_EQ(printed([&] { EXPECT_EQ(lpcf_len(name.c_str()).frames, 0); }), "\n");
}

TEST_F(Lpcf, LengthHoldsMoreFramesThanItCanTell) {
    std::string content;
    for (int i = 0; i < 40000; ++i) {
        content += "0.5 0\n";
    }
    const std::string name = file_of(content);
    printed([&] { EXPECT_EQ(lpcf_len(name.c_str()).frames, 32767); });
}

TEST_F(Lpcf, FramesWithoutPoints) {
    lpcf_open(file_of("0.5 0 1.5 0\n").c_str());
    EXPECT_EQ(Oerror, 0);
    EXPECT_EQ(lpcf_pos(1), 1.0f);
    EXPECT_EQ(read_frame(0), "1.5 0");
}

TEST_F(Lpcf, FramesOfOnePoint) {
    lpcf_open(file_of("0.5 1 2 200 1.5 1 3 300").c_str());
    EXPECT_EQ(read_frame(1), "0.5 1, 2 200");
    EXPECT_EQ(read_frame(1), "1.5 1, 3 300");
}

TEST_F(Lpcf, AFreshFrameHoldsZeros) {
    LpcFrame frame = lpc_initialize(9, 2);
    EXPECT_EQ(records_of(frame), "0 0, 0 0, 0 0");
    clear_lpc(frame, 3);
}

TEST_F(Lpcf, AFrameOfACountBelowZeroHasNoRecord) {
    LpcFrame frame = lpc_initialize(0, -5);
    EXPECT_EQ(lpc_records(frame), 0);
    clear_lpc(frame, 1);
    clear_lpc(nullptr, 3);
}

TEST_F(Lpcf, AFrameThatMemoryDoesNotHoldIsNone) {
    if (sanitized()) {
        GTEST_SKIP() << "the allocator does not keep to the process's limit";
    }
    const ChildResult child =
        in_child("", [] { std::printf("%d", lpc_initialize(0, INT32_MAX) == nullptr); },
                 {.address_space = size_t{4} << 30, .seconds = 60});
    EXPECT_EQ(child.signal, 0);
    EXPECT_EQ(child.out, "1");
}

TEST_F(Lpcf, CopyTakesTheRecordsUpToP) {
    LpcFrame from = frame_of({{1, 2}, {3, 4}, {5, 6}});
    LpcFrame to = frame_of({{0, 0}, {0, 0}, {0, 0}});
    EXPECT_EQ(copySpectra(to, from, 1), to);
    EXPECT_EQ(records_of(to), "1 2, 3 4, 0 0");
    copySpectra(to, from, 99);
    EXPECT_EQ(records_of(to), "1 2, 3 4, 5 6");
}

TEST_F(Lpcf, ALevelAboveTenAmongTheLastFifteenIsZero) {
    std::vector<Pair> records = plain_frame(20);
    records[5].amp = 12.0; // not above 20 - 15
    records[6].amp = 12.0;
    records[7].amp = 10.0;
    lpcf_open(file_of(text_of(records)).c_str());
    records[6].amp = 0.0;
    EXPECT_EQ(read_frame(20), records_of(frame_of(records)));
}

TEST_F(Lpcf, TheTimeOfAShortFrameIsMendedToo) {
    lpcf_open(file_of("12.5 1 0.5 100").c_str());
    EXPECT_EQ(read_frame(1), "0 1, 0.5 100");
}

TEST_F(Lpcf, ANegativeLevelAmongPositiveOnesIsZero) {
    std::vector<Pair> records = plain_frame(20);
    records[2].amp = -1.0;
    records[3].amp = -1.0;
    records[15].amp = -0.5;
    lpcf_open(file_of(text_of(records)).c_str());
    records[15].amp = 0.0;
    EXPECT_EQ(read_frame(20), records_of(frame_of(records)));
}

TEST_F(Lpcf, ANegativeLevelBehindThreeOthersStays) {
    std::vector<Pair> records = plain_frame(20);
    for (size_t i = 2; i < 5; ++i) {
        records[i].amp = -1.0;
    }
    records[15].amp = -0.5;
    lpcf_open(file_of(text_of(records)).c_str());
    EXPECT_EQ(read_frame(20), records_of(frame_of(records)));
}

TEST_F(Lpcf, WithElevenNegativesALevelNearZeroIsMinusNinetySix) {
    std::vector<Pair> records = plain_frame(30);
    for (size_t i = 1; i < records.size(); ++i) {
        records[i].amp = -20.0;
    }
    records[15].amp = -5.0; // not above 30 - 15
    records[16].amp = -5.0;
    records[17].amp = -10.0;
    records[18].amp = 0.5;
    lpcf_open(file_of(text_of(records)).c_str());
    records[16].amp = -96.0;
    records[18].amp = -96.0;
    EXPECT_EQ(read_frame(30), records_of(frame_of(records)));
}

TEST_F(Lpcf, WithTwelveNegativesItStays) {
    std::vector<Pair> records = plain_frame(30);
    for (Pair &record : records) {
        record.amp = -20.0;
    }
    records[16].amp = -5.0;
    const std::string name = file_of("0 " + text_of(records));
    lpcf_open(name.c_str());
    printed([] { read_token(afPtr); });
    EXPECT_EQ(read_frame(30), records_of(frame_of(records)));
}

TEST_F(Lpcf, ReadingPrintsADotAfterEach128Elements) {
    const std::string name = file_of(text_of(plain_frame(300)));
    lpcf_open(name.c_str());
    LpcFrame frame = lpc_initialize(0, 300);
    EXPECT_EQ(printed([&] { lpcf_read(frame, 300); }), "..\n");
    clear_lpc(frame, 301);
}

TEST_F(Lpcf, ReadingPrintsANewlineAfterEightyDots) {
    constexpr int32_t p = 128 * 81 - 1;
    const std::string name = file_of(text_of(plain_frame(p)));
    lpcf_open(name.c_str());
    LpcFrame frame = lpc_initialize(0, p);
    EXPECT_EQ(printed([&] { lpcf_read(frame, p); }), std::string(80, '.') + "\n.\n");
    clear_lpc(frame, p + 1);
}

TEST_F(Lpcf, TheLastTokenOfAFrameIsKept) {
    lpcf_open(file_of(three_frames).c_str());
    read_frame(2);
    EXPECT_EQ(value, 200.0);
}

TEST_F(Lpcf, ReadingAtTheEndOnlyPrintsANewline) {
    lpcf_open(file_of("0.5 1 2 200\n").c_str());
    read_frame(1);
    read_token(afPtr);
    value = 3.0;
    LpcFrame frame = lpc_initialize(0, 1);
    EXPECT_EQ(printed([&] { lpcf_read(frame, 1); }), "\n");
    EXPECT_EQ(records_of(frame), "0 0, 0 0");
    EXPECT_EQ(value, 3.0);
    clear_lpc(frame, 2);
}

TEST_F(Lpcf, AFrameThatIsCutRepeatsTheLastToken) {
    value = 3.0;
    lpcf_open(file_of("0.5 2 1 100 2\n").c_str());
    EXPECT_EQ(read_frame(2), "0.5 2, 1 100, 2 2");
    EXPECT_EQ(value, 3.0);
}

TEST_F(Lpcf, ReadingNeverWritesBehindTheFrame) {
    lpcf_open(file_of(three_frames).c_str());
    LpcFrame frame = lpc_initialize(0, 1);
    EXPECT_EQ(printed([&] { lpcf_read(frame, 2); }), "\n");
    EXPECT_EQ(records_of(frame), "0.5 2, 1 100");
    clear_lpc(frame, 2);
    EXPECT_EQ(printed([] { lpcf_read(nullptr, 2); }), "\n");
}

} // namespace
