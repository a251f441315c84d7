// SDIF text of tracks, from text to store.
#include "import/afile.h"
#include "store/evaluate.h"
#include "store/phase.h"
#include "store/settings.h"
#include "tests/support/any_reading.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "tests/support/frame_text.h"

#include <cmath>

namespace {

class SdifTracks : public StoreTest {
  protected:
    static std::string read(const std::string &text, int32_t type = sdif_inharmonic,
                            int32_t result = -2) {
        const int32_t expected = result == -2 ? type : result;
        return printed([&] { EXPECT_EQ(read_as(type, text), expected); });
    }
    static std::vector<int> counts() {
        return {npoints, npoints + partials};
    }
};

const std::string zero_index = "File corrupt: Zero cardinal number\n";
const std::string passes = "SDFC\nENDC\nrevisiting SDIF File\nimporting SDIF File\n";

const std::string two_frames = sdif_frame("1TRC", "0.5", {"1 100.5 1 0.25", "3 300 0.1 0"}) +
                               sdif_frame("1TRC", "0.75", {"3 301 0 1.5", "1 101 10 2.5"});

TEST_F(SdifTracks, RowsGoToTheirPartials) {
    EXPECT_EQ(read(tracks_text("1TRC", two_frames)), passes);
    EXPECT_EQ(counts(), (std::vector<int>{2, 0, 2}));
    EXPECT_EQ(parray[0][0].time, 0.5f);
    EXPECT_EQ(parray[0][0].freq, 100.5f);
    EXPECT_EQ(parray[0][0].amp, 0.0f);
    EXPECT_EQ(parray[0][1].time, 0.75f);
    EXPECT_EQ(parray[0][1].amp, 20.0f);
    EXPECT_EQ(parray[2][1].freq, 301.0f);
    EXPECT_EQ(parray[2][1].amp, -140.0f);
    EXPECT_EQ(parray[2][1].ampunits, 1);
    EXPECT_EQ(parray[2][1].selected, 0);
    EXPECT_EQ(maxamp, 20.0f);
    EXPECT_EQ(xarray[0].index, 0);
    EXPECT_EQ(xarray[2].index, 2);
    EXPECT_EQ(xarray[1].index, 0); // no row of that track
}

TEST_F(SdifTracks, HarmonicTracksAreReadAlike) {
    std::string text = tracks_text("1HRM", two_frames);
    for (size_t at; (at = text.find("1TRC")) != std::string::npos;) {
        text.replace(at, 4, "1HRM");
    }
    EXPECT_EQ(read(text, sdif_harmonic), passes);
    EXPECT_EQ(counts(), (std::vector<int>{2, 0, 2}));
    EXPECT_EQ(parray[2][0].freq, 300.0f);
}

TEST_F(SdifTracks, TheFirstFrameGivesNoPoint) {
    const std::string text = "SDIF 1NVT { TableName SinusoidalTracks; } SDFC" + two_frames +
                             sdif_frame("1TRC", "1", {"2 200 1 0"}) + "ENDC ENDF";
    read(text);
    EXPECT_EQ(counts(), (std::vector<int>{1, 1, 1}));
    EXPECT_EQ(parray[0][0].time, 0.75f);
    EXPECT_EQ(parray[1][0].time, 1.0f);
}

TEST_F(SdifTracks, ThePhasesOfInharmonicTracksCount) {
    read(tracks_text("1TRC", two_frames));
    EXPECT_EQ(parray[0][0].phase, 0.0f); // whatever the file says
    const float cycles = (0.75f - 0.5f) * 100.5f;
    double whole;
    float turns = static_cast<float>(std::modf(cycles, &whole) + 2.5);
    ASSERT_GT(turns, 2.0f);
    turns -= 1.0f; // once only
    EXPECT_EQ(parray[0][1].phase, static_cast<float>(turns * 6.283185307179586));
}

TEST_F(SdifTracks, ThePhasesOfHarmonicTracksDoNot) {
    const std::string body =
        sdif_frame("1HRM", "0.5", {"1 100.5 1 9"}) + sdif_frame("1HRM", "0.75", {"1 101 1 2.5"});
    read(tracks_text("1HRM", body), sdif_harmonic);
    EXPECT_EQ(parray[0][0].phase, 0.0f);
    EXPECT_EQ(parray[0][1].phase, advance_phase(0.0f, (0.75f - 0.5f) * 100.5f));
}

TEST_F(SdifTracks, ThePartialCountIsTheHighestIndex) {
    read(tracks_text("1TRC", sdif_frame("1TRC", "0", {"7 100 1 0", "2 100 1 0"})));
    EXPECT_EQ(partials, 7);
    EXPECT_EQ(counts(), (std::vector<int>{0, 1, 0, 0, 0, 0, 1}));
}

TEST_F(SdifTracks, GapsAreReportedAndRemoved) {
    read(tracks_text("1TRC", two_frames));
    EXPECT_EQ(printed(check_import_sanity),
              "Corrupt partial[1] with 0 points\nAll corrupt partials removed\n");
    EXPECT_EQ(partials, 2); // the last partial goes in the stead of the empty one before it
}

TEST_F(SdifTracks, TheEndWithinARowStopsTheReading) {
    const std::string whole = sdif_frame("1TRC", "0.5", {"1 100 1 0", "2 200 1 0"});
    struct {
        const char *row;
        float freq, amp;
    } const cases[] = {{"2 ENDC", 0, -140}, {"2 201 ENDC", 201, -140}, {"2 201 10 ENDC", 201, 20}};
    for (const auto &cut : cases) {
        read(tracks_text("1TRC",
                         whole + sdif_frame("1TRC", "0.75", {"1 101 1 0", cut.row, "1 102 1 0"})));
        ASSERT_EQ(counts(), (std::vector<int>{2, 2})) << cut.row;
        EXPECT_EQ(parray[0][1].freq, 101.0f);
        EXPECT_EQ(parray[1][0].freq, 200.0f);
        EXPECT_EQ(parray[1][1].time, 0.75f) << cut.row;
        EXPECT_EQ(parray[1][1].freq, cut.freq) << cut.row;
        EXPECT_EQ(parray[1][1].amp, cut.amp) << cut.row;
    }
    read(tracks_text("1TRC", whole + sdif_frame("1TRC", "0.75", {"1 101 1 0", "ENDC 201 1 0"})));
    EXPECT_EQ(counts(), (std::vector<int>{2, 1}));
}

TEST_F(SdifTracks, TheEndBetweenAnyTwoWordsIsHarmless) {
    const std::string text = tracks_text("1TRC", two_frames);
    for (size_t at = 0; at <= text.size(); ++at) {
        for (const char *end : {"", " ENDC "}) {
            printed([&] {
                const int32_t type = read_as(sdif_inharmonic, text.substr(0, at) + end);
                EXPECT_EQ(type, sdif_inharmonic) << at;
            });
        }
    }
}

TEST_F(SdifTracks, AnIndexOfZeroEndsTheImport) {
    const std::string body = sdif_frame("1TRC", "0.5", {"1 100 1 0", "0 200 1 0", "2 200 1 0"}) +
                             sdif_frame("1TRC", "0.75", {"1 101 1 0"});
    EXPECT_EQ(read(tracks_text("1TRC", body)), passes + zero_index);
    ASSERT_EQ(counts(), (std::vector<int>{2, 1}));
    EXPECT_EQ(parray[0][0].freq, 100.0f);
    EXPECT_EQ(parray[0][1].freq, 0.0f); // unwritten, and silent
    EXPECT_EQ(parray[0][1].amp, -140.0f);
    EXPECT_EQ(parray[1][0].amp, -140.0f);
}

TEST_F(SdifTracks, AWordForAnIndexEndsTheImportToo) {
    for (const char *row : {"x 200 1 0", "-3 200 1 0", "nan 200 1 0"}) {
        const std::string body = sdif_frame("1TRC", "0.5", {"1 100 1 0", row});
        EXPECT_EQ(read(tracks_text("1TRC", body)), passes + zero_index) << row;
    }
}

TEST_F(SdifTracks, AnIndexOfZeroInHarmonicTracksIsRefusedAlike) {
    const std::string body = sdif_frame("1HRM", "0.5", {"1 100 1 0", "0 200 1 0", "1 101 1 0"});
    EXPECT_EQ(read(tracks_text("1HRM", body), sdif_harmonic), passes + zero_index);
    EXPECT_EQ(counts(), (std::vector<int>{2}));
    EXPECT_EQ(parray[0][1].amp, -140.0f);
}

TEST_F(SdifTracks, ExponentsAndNumbersThatAreNone) {
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"1 1.005e+02 4.2e-05 -nan"}) +
                                 sdif_frame("1TRC", "0.75", {"1 -nan 1e-3 -nan"}) +
                                 sdif_frame("1TRC", "1", {"1 101 1 0"})));
    ASSERT_EQ(counts(), (std::vector<int>{3}));
    EXPECT_EQ(parray[0][0].freq, 100.5f);
    EXPECT_EQ(parray[0][0].amp, static_cast<float>(20.0 * std::log10(4.2e-05)));
    EXPECT_EQ(parray[0][0].phase, 0.0f);
    EXPECT_TRUE(std::isnan(parray[0][1].freq));
    EXPECT_TRUE(std::isnan(parray[0][1].phase));
    printed([] {
        settle_tracks(&minfreq, &maxfreq);
        EXPECT_TRUE(derive_store());
    });
    EXPECT_EQ(maxfreq, 101.0f);
}

TEST_F(SdifTracks, MatricesOfNoRows) {
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.1", {}) + two_frames +
                                 sdif_frame("1TRC", "0.9", {}) + sdif_frame("1TRC", "1", {})));
    EXPECT_EQ(counts(), (std::vector<int>{2, 0, 2}));
}

TEST_F(SdifTracks, NothingButMatricesOfNoRows) {
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.1", {})));
    EXPECT_EQ(partials, 0);
}

TEST_F(SdifTracks, ANegativeTimeStandsUntilTheTimesAreDerived) {
    read(tracks_text("1TRC", sdif_frame("1TRC", "-0.5", {"1 100 1 0"}) +
                                 sdif_frame("1TRC", "0.25", {"1 100 1 0"})));
    EXPECT_EQ(parray[0][0].time, -0.5f);
    printed([] { derive_store(); });
    EXPECT_EQ(parray[0][0].time, 0.0f);
    EXPECT_EQ(parray[0][1].time, 0.75f);
}

TEST_F(SdifTracks, EqualTimesInSuccessiveFrames) {
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"1 100 1 0"}) +
                                 sdif_frame("1TRC", "0.5", {"1 101 1 0"})));
    ASSERT_EQ(counts(), (std::vector<int>{2}));
    EXPECT_EQ(parray[0][0].time, parray[0][1].time);
    EXPECT_EQ(parray[0][1].phase, 0.0f);
}

TEST_F(SdifTracks, NoTableOrTwoOfThem) {
    const std::string frames =
        sdif_frame("1TRC", "0", {}) + sdif_frame("1TRC", "0.5", {"1 100 1 0"}) + "ENDC ENDF";
    read("SDIF SDFC " + frames);
    EXPECT_EQ(counts(), (std::vector<int>{1}));
    read("SDIF 1NVT { TableName SinusoidalTracks; } 1NVT { TableName Other; } SDFC " + frames);
    EXPECT_EQ(counts(), (std::vector<int>{1}));
}

TEST_F(SdifTracks, SixColumnsAreReadAsFour) {
    // Of two rows of six words two times four are read; the rest is passed over.
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"1 100 1 0 5 6", "2 200 1 0 5 6"}, 6) +
                                 sdif_frame("1TRC", "0.75", {"1 101 1 0 5 6"}, 6)));
    ASSERT_EQ(partials, 5); // "5 6 2 200" for a row
    EXPECT_EQ(counts(), (std::vector<int>{2, 0, 0, 0, 1}));
    EXPECT_EQ(parray[4][0].freq, 6.0f);
    EXPECT_EQ(parray[0][1].freq, 101.0f);
}

TEST_F(SdifTracks, SevenColumnsAreReadAsFour) {
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"1 100 1 0 5 6 7"}, 7) +
                                 sdif_frame("1TRC", "0.75", {"1 101 1 0 5 6 7"}, 7)));
    EXPECT_EQ(counts(), (std::vector<int>{2}));
}

TEST_F(SdifTracks, ThreeColumnsRunIntoTheNextFrame) {
    // The row takes the signature of the frame behind it, and that frame's matrix is met as one:
    // its columns are the time. The third frame's row ends with the data.
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"1 100 1"}, 3) +
                                 sdif_frame("1TRC", "0.75", {"2 101 1"}, 3) +
                                 sdif_frame("1TRC", "1", {"3 102 1"}, 3)));
    ASSERT_EQ(counts(), (std::vector<int>{1, 0, 1}));
    EXPECT_EQ(parray[0][0].time, 0.5f);
    EXPECT_EQ(parray[0][0].freq, 100.0f);
    EXPECT_EQ(parray[2][0].time, 3.0f);
    EXPECT_EQ(parray[2][0].freq, 102.0f);
}

TEST_F(SdifTracks, SeveralStreamsShareTheirIndices) {
    std::string second = sdif_frame("1TRC", "0.5", {"1 500 1 0"});
    second.replace(second.find("\t0\t"), 3, "\t1\t");
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"1 100 1 0"}) + second));
    EXPECT_EQ(counts(), (std::vector<int>{2}));
    EXPECT_EQ(parray[0][1].freq, 500.0f);
}

TEST_F(SdifTracks, ADecimalDataTypeIsPassedOver) {
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"1 100 1 0"}, 4, "4")));
    EXPECT_EQ(partials, 0);
    // The frame's time then stands at the floats of the next frame.
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"1 100 1 0"}, 4, "4") +
                                 sdif_frame("1TRC", "0.75", {"2 100 1 0"})));
    ASSERT_EQ(counts(), (std::vector<int>{0, 1}));
    EXPECT_EQ(parray[1][0].time, 0.5f);
}

TEST_F(SdifTracks, OtherFramesInBetween) {
    read(tracks_text("1TRC", sdif_frame("1STF", "0.1", {"9 9 9 9"}) + two_frames +
                                 sdif_frame("1GB4", "0.8", {"8 8 8 8"}) +
                                 sdif_frame("1TRC", "1", {"2 200 1 0"})));
    EXPECT_EQ(counts(), (std::vector<int>{2, 1, 2}));
    EXPECT_EQ(parray[1][0].time, 1.0f);
}

TEST_F(SdifTracks, AnIndexThatTheFileCannotHoldIsCorrupt) {
    for (const char *index : {"2147483647", "99999999999999999999", "65537"}) {
        const std::string row = std::string(index) + " 100 1 0";
        EXPECT_EQ(read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {row})), sdif_inharmonic, -1),
                  "SDFC\nError: Analysis file corrupt! Exiting...\n");
        EXPECT_EQ(partials, 0);
    }
    read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {"65536 100 1 0"})));
    EXPECT_EQ(partials, 65536);
}

TEST_F(SdifTracks, MoreRowsThanTheFileHasAreReadAsFarAsTheyGo) {
    read("SDIF SDFC " + sdif_frame("1TRC", "0", {}) +
         "1TRC 1 0 0.5 1TRC 0x0004 2147483647 4 1 100 1 0 2 200 1 0");
    EXPECT_EQ(counts(), (std::vector<int>{1, 1}));
    read("SDIF SDFC " + sdif_frame("1TRC", "0", {}) + "1TRC 1 0 0.5 1TRC 0x0004 -5 4 1 100 1 0");
    EXPECT_EQ(partials, 0);
}

TEST_F(SdifTracks, AFileThatEndsEarlyTellsItsLastWord) {
    EXPECT_EQ(read("SDIF SDFC 1TRC 1 0 0"), "SDFC\n0\nrevisiting SDIF File\nimporting SDIF File\n");
    EXPECT_EQ(read(""), "\nrevisiting SDIF File\nimporting SDIF File\n");
}

TEST_F(SdifTracks, EveryPassRewinds) {
    const std::string text = tracks_text("1TRC", two_frames);
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    printed([&] {
        int32_t total = 0;
        int32_t counts[200] = {};
        visit_sdiffile(file, &total, sdif_inharmonic);
        EXPECT_EQ(total, 3);
        EXPECT_EQ(read_token(file), "SDIF");
        rewind_tokens(file);
        revisit_sdiffile(file, &total, counts, sdif_inharmonic);
        EXPECT_EQ(read_token(file), "SDIF");
        const int32_t none[200] = {}; // the first row has no place, and the pass ends there
        PartialIndexEntry index[200] = {};
        EXPECT_EQ(import_sdiffile(file, &total, none, index, &maxamp, sdif_inharmonic),
                  sdif_inharmonic);
        EXPECT_EQ(read_token(file), "SDIF");
    });
    close_tokens(file);
}

TEST_F(SdifTracks, AnEndBeforeTheFramesEndsThePass) {
    const std::string frames = sdif_frame("1TRC", "0", {}) + two_frames;
    EXPECT_EQ(read("SDIF ENDC SDFC" + frames), "ENDC\nrevisiting SDIF File\nimporting SDIF File\n");
    EXPECT_EQ(partials, 0);
    EXPECT_EQ(read("SDIF SDFC ENDC" + frames), passes);
    EXPECT_EQ(partials, 0);
}

TEST_F(SdifTracks, TheDebugSwitchTellsEachRow) {
    dbp = 1;
    EXPECT_EQ(read(tracks_text("1TRC", two_frames)),
              "SDFC\nENDC\nrevisiting SDIF File\n"
              "NUM = 2\n"
              "PARTIAL #1:\t freq=100.500000\t  amp=1.000000 \n"
              "PARTIAL #3:\t freq=300.000000\t  amp=0.100000 \n"
              "NUM = 2\n"
              "PARTIAL #3:\t freq=301.000000\t  amp=0.000000 \n"
              "PARTIAL #1:\t freq=101.000000\t  amp=10.000000 \n"
              "importing SDIF File\n");
    EXPECT_EQ(counts(), (std::vector<int>{2, 0, 2}));
}

TEST_F(SdifTracks, WhatIsToldEndsWithTheData) {
    dbp = 1;
    struct {
        const char *row;
        const char *told;
        int count;
    } const cases[] = {{"ENDC 5 6 7", "", 0},
                       {"1 ENDC 6 7", "PARTIAL #1:\t", 1},
                       {"1 5 ENDC 7", "PARTIAL #1:\t freq=5.000000\t ", 1},
                       {"1 5 6 ENDC", "PARTIAL #1:\t freq=5.000000\t  amp=6.000000 \n", 1}};
    for (const auto &cut : cases) {
        EXPECT_EQ(read(tracks_text("1TRC", sdif_frame("1TRC", "0.5", {cut.row, "1 200 1 0"}))),
                  std::string("SDFC\nENDC\nrevisiting SDIF File\nNUM = 2\n") + cut.told +
                      "importing SDIF File\n");
        EXPECT_EQ(counts(), std::vector<int>(static_cast<size_t>(cut.count), 1)) << cut.row;
    }
}

/// The level of the point at `place` of n after the normalisation.
float settled_amp(int place, int n, float amp) {
    Partial content;
    for (int j = 0; j < n; ++j) {
        content.push_back({static_cast<float>(j), 440.0f, j == place ? amp : -50.0f});
    }
    fill_store({content});
    settle_tracks(&minfreq, &maxfreq);
    return parray[0][place].amp;
}

TEST_F(SdifTracks, LevelsAreShapedByTheirPlace) {
    EXPECT_EQ(settled_amp(0, 4, -10.0f), -16.0f);
    EXPECT_EQ(settled_amp(1, 4, -10.0f), -10.0f);
    EXPECT_EQ(settled_amp(2, 4, -63.5f), -99.5f);
    EXPECT_EQ(settled_amp(2, 4, -64.0f), -64.0f);
    EXPECT_EQ(settled_amp(3, 4, -10.0f), -140.0f);
    EXPECT_EQ(settled_amp(3, 4, -150.0f), -150.0f);
    EXPECT_EQ(settled_amp(0, 2, -10.0f), -46.0f); // last but one before first
    EXPECT_EQ(settled_amp(0, 1, -10.0f), -140.0f);
}

TEST_F(SdifTracks, FrequenciesAreHeldToTheRange) {
    fill_store({{{0, 2, -10}, {1, 30000, -10}, {2, 440, -10}}, {}});
    minfreq = 22050.0f;
    maxfreq = 1.0f;
    settle_tracks(&minfreq, &maxfreq);
    EXPECT_EQ(parray[0][0].freq, 4.0f);
    EXPECT_EQ(parray[0][1].freq, 22050.0f);
    EXPECT_EQ(minfreq, 4.0f);
    EXPECT_EQ(maxfreq, 22050.0f);
}

} // namespace
