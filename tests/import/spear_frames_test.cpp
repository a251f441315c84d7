// SPEAR's layout of frames, from text to store.
#include "import/afile.h"
#include "store/phase.h"
#include "store/settings.h"
#include "store/slots.h"
#include "tests/support/any_reading.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "tests/support/frame_text.h"

namespace {

class SpearFrames : public StoreTest {
  protected:
    static int32_t read(const std::string &text) {
        int32_t result = 0;
        printed([&] { result = read_as(spear_frames, text); });
        return result;
    }
};

const std::string three = spear_frames_text("3", "3",
                                            "0.0 2 2 440 0.1 0 220 1\n"
                                            "0.01 3 0 221 0.5 1 900 10 2 441 0.1\n"
                                            "0.02 1 2 442 0\n");

TEST_F(SpearFrames, PointsGoToTheirPartialsInFrameOrder) {
    ASSERT_EQ(read(three), 5);
    ASSERT_EQ(partials, 3);
    EXPECT_EQ(npoints[0], 2);
    EXPECT_EQ(npoints[1], 1);
    EXPECT_EQ(npoints[2], 3);
    const float freqs[] = {440, 441, 442};
    const float times[] = {0.0f, 0.01f, 0.02f};
    const float amps[] = {-20, -20, -140};
    for (int j = 0; j < 3; ++j) {
        EXPECT_EQ(parray[2][j].freq, freqs[j]);
        EXPECT_EQ(parray[2][j].time, times[j]);
        EXPECT_FLOAT_EQ(parray[2][j].amp, amps[j]);
        EXPECT_EQ(parray[2][j].selected, 0);
    }
    EXPECT_EQ(parray[1][0].amp, 20.0f);
    EXPECT_EQ(maxamp, 20.0f);
    EXPECT_EQ(minfreq, 220.0f);
    EXPECT_EQ(maxfreq, 900.0f);
}

TEST_F(SpearFrames, PhasesFollowTheRecursion) {
    read(three);
    EXPECT_EQ(parray[2][0].phase, 0.0f);
    EXPECT_EQ(parray[2][1].phase, advance_phase(0.0f, 0.01f * 440.0f));
    EXPECT_EQ(parray[2][2].phase, advance_phase(parray[2][1].phase, (0.02f - 0.01f) * 441.0f));
}

TEST_F(SpearFrames, TheCountOfFramesIsKept) {
    read(three);
    EXPECT_EQ(t_frames.count, 3);
    EXPECT_EQ(t_frames.second, 0);
    EXPECT_EQ(t_frames.third, 0);
}

TEST_F(SpearFrames, WhatThePassesPrint) {
    EXPECT_EQ(printed([] { read_as(spear_frames, three); }),
              "Partials: 3\nFrames  : 3\nSPEAR frames file imported\n");
}

TEST_F(SpearFrames, TheDebugSwitchTellsEachPoint) {
    dbp = 1;
    EXPECT_EQ(printed([] {
                  read_as(spear_frames,
                          spear_frames_text("1", "2", "0 2 0 100 1 7 5 1 0.5 1 0 101 1"));
              }),
              "Partials: 1\nFrames  : 2\n"
              "PrevPt[0] = -1\nCurrPt[0] = 0\n[0][0]\t 0.000000\t100.000000\t0.000000\n"
              "PrevPt[0] = 0\nCurrPt[0] = 1\n[0][1]\t 0.500000\t101.000000\t0.000000\n"
              "SPEAR frames file imported\n");
}

TEST_F(SpearFrames, AnIndexOutOfRangeOnlyMovesTheFrequencies) {
    ASSERT_EQ(read(spear_frames_text("2", "1", "0 4 0 440 0.1 2 9000 10 -1 3 10 1000000 50 10")),
              5);
    EXPECT_EQ(npoints[0], 1);
    EXPECT_EQ(npoints[1], 0);
    EXPECT_EQ(npoints[2], 0);
    EXPECT_EQ(maxfreq, 9000.0f);
    EXPECT_EQ(minfreq, 3.0f);
    EXPECT_FLOAT_EQ(maxamp, -20.0f);
}

TEST_F(SpearFrames, APartialOfNoFrameIsEmpty) {
    ASSERT_EQ(read(spear_frames_text("3", "2", "0 2 0 100 1 2 300 1 1 2 0 100 1 2 301 1")), 5);
    EXPECT_EQ(npoints[1], 0);
    ASSERT_NE(parray[1], nullptr);
    printed([] { EXPECT_TRUE(derive_store()); });
    EXPECT_EQ(sndlen, 1.0f);
    EXPECT_EQ(maxfreq, 301.0f);
}

TEST_F(SpearFrames, IndicesComeInAnyOrder) {
    ASSERT_EQ(
        read(spear_frames_text("3", "2", "0 3 2 30 1 0 10 1 1 20 1 1 3 1 21 1 2 31 1 0 11 1")), 5);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(parray[i][0].freq, 10.0f * static_cast<float>(i + 1));
        EXPECT_EQ(parray[i][1].freq, 10.0f * static_cast<float>(i + 1) + 1.0f);
    }
}

TEST_F(SpearFrames, AFrameOnOneLongLine) {
    constexpr int points = 3000;
    std::string line = "0.5 " + std::to_string(points);
    for (int i = points; i-- > 0;) { // the last index first
        line += " " + std::to_string(i) + " " + std::to_string(100 + i) + ".250000 0.500000";
    }
    ASSERT_GT(line.size(), 70000u);
    ASSERT_EQ(read(spear_frames_text(std::to_string(points + 5), "1", line + "\n")), 5);
    EXPECT_EQ(partials, points + 5);
    for (const int i : {0, 1, 1234, points - 1}) {
        ASSERT_EQ(npoints[i], 1);
        EXPECT_EQ(parray[i][0].freq, static_cast<float>(i) + 100.25f);
        EXPECT_EQ(parray[i][0].time, 0.5f);
    }
    EXPECT_EQ(npoints[points], 0);
}

TEST_F(SpearFrames, AmplitudesAboveOneAreAboveZeroDecibels) {
    ASSERT_EQ(read(spear_frames_text("1", "1", "0 1 0 100 100")), 5);
    EXPECT_EQ(parray[0][0].amp, 40.0f);
    EXPECT_EQ(maxamp, 40.0f);
}

TEST_F(SpearFrames, AnIndexTwiceInAFrameGivesTwoPoints) {
    ASSERT_EQ(read(spear_frames_text("1", "1", "0.5 2 0 30 1 0 31 1")), 5);
    ASSERT_EQ(npoints[0], 2);
    EXPECT_EQ(parray[0][0].time, parray[0][1].time);
    EXPECT_EQ(parray[0][1].freq, 31.0f);
}

TEST_F(SpearFrames, FrequenciesAreNotClampedAndRangesGoOn) {
    read(spear_frames_text("1", "1", "0 1 0 25000 1"));
    EXPECT_EQ(maxfreq, 25000.0f);
    EXPECT_EQ(minfreq, 22050.0f); // the start value, which no frequency was below
}

TEST_F(SpearFrames, KeywordsUpToTheCountMayBeMissing) {
    const std::string data = "partials-count 1 frame-count 1 frame-data 0 1 0 100 1";
    for (const char *head : {"", "par-text-frame-format ", "point-type index amplitude "}) {
        EXPECT_EQ(read(head + data), 5) << head;
    }
}

TEST_F(SpearFrames, TheCountsAndTheDataMayNotBeMissing) {
    EXPECT_EQ(read("par-text-frame-format frame-count 1 frame-data 0 1 0 100 1"), -1);
    EXPECT_EQ(read("par-text-frame-format partials-count 1 frame-data 0 1 0 100 1"), -1);
    EXPECT_EQ(read("par-text-frame-format partials-count 1 frame-count 1 0 1 0 100 1"), -1);
    EXPECT_EQ(read(""), -1);
}

TEST_F(SpearFrames, LaterPassesRefuseOtherCounts) {
    TokenFile file;
    open_tokens_from_memory(file, three.data(), three.size());
    int32_t counts[200] = {};
    float range[3] = {};
    for (const auto &[total, frames] : {std::pair(2, 3), std::pair(3, 4)}) {
        const FrameCount count = {frames, 0, 0};
        rewind_tokens(file);
        EXPECT_EQ(revisit_spearrffile(file, &total, &count, counts), -1);
        rewind_tokens(file);
        EXPECT_EQ(import_spearrffile(file, &total, &count, counts, range, range + 1, range + 2),
                  -1);
    }
    close_tokens(file);
}

TEST_F(SpearFrames, EveryPassRewinds) {
    TokenFile file;
    open_tokens_from_memory(file, three.data(), three.size());
    printed([&] {
        visit_spearrffile(file, &partials, &t_frames);
        EXPECT_EQ(read_token(file), "par-text-frame-format");
        rewind_tokens(file);
        allocate_counts(partials);
        revisit_spearrffile(file, &partials, &t_frames, npoints);
        EXPECT_EQ(read_token(file), "par-text-frame-format");
        rewind_tokens(file);
        allocate_points();
        EXPECT_EQ(
            import_spearrffile(file, &partials, &t_frames, npoints, &minfreq, &maxfreq, &maxamp),
            5);
        EXPECT_EQ(read_token(file), "par-text-frame-format");
    });
    close_tokens(file);
}

TEST_F(SpearFrames, CountsThatTheFileCannotHold) {
    EXPECT_EQ(read(spear_frames_text("2147483647", "1", "0 1 0 100 1")), -1);
    EXPECT_EQ(read(spear_frames_text("1", "1", "0 2147483647 0 100 1")), -1);
    EXPECT_EQ(read(spear_frames_text("1", "1", "0 2 0 100 1")), -1);
    EXPECT_EQ(read(spear_frames_text("1", "2147483647", "0 1 0 100 0.5")), 5); // frames of nothing
    EXPECT_EQ(npoints[0], 1);
    EXPECT_EQ(read(spear_frames_text("1", "2147483647", "0 1 0 100 3")), -1); // frames of three
    EXPECT_EQ(read(spear_frames_text("1", "-2", "0 1 0 100 3")), 5);
    EXPECT_EQ(npoints[0], 0);
    EXPECT_EQ(read(spear_frames_text("1", "2", "0 -5 1 1 0 100 3")), 5);
    EXPECT_EQ(npoints[0], 1);
}

TEST_F(SpearFrames, ATextCutAfterEveryByteIsReadOrRefused) {
    for (size_t size = 0; size < three.size(); ++size) {
        const int32_t result = read(three.substr(0, size));
        EXPECT_TRUE(result == 5 || result == -1) << size;
    }
}

} // namespace
