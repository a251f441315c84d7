// SDIF text: the partials on a regular grid.
#include "export/export3d.h"

#include "live/live.h"
#include "live/oscillator_block.h"
#include "store/settings.h"
#include "store/slots.h"
#include "synth/sound.h"
#include "tests/export/export_support.h"
#include "tests/support/console.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>

namespace {

const std::string ask = "Enter file name: \n" + blanks;
const std::string ask_step = "Enter time step:\t";
const std::string tail = "\nENDC\nENDF\n";
const std::string nudged = "ascending time order error present";

std::string date_line(time_t at) {
    char text[100];
    tm local = {};
    localtime_r(&at, &local);
    // The C locale's names; the numbers come without leading zeros.
    std::strftime(text, sizeof text, "Date\t%a %b ", &local);
    return text + formatted("%d %d:%d:%d %d ;\n", local.tm_mday, local.tm_hour, local.tm_min,
                            local.tm_sec, local.tm_year + 1900);
}

std::string head(time_t at) {
    return "SDIF\n\n1NVT\n{\n" + date_line(at) +
           "TableName\tSinusoidalTracks;\n"
           "WrittenBy\tQuillgrove_Version_0.89b5;\n}\n\n\nSDFC\n";
}

class Sdif : public ExportTest {
  protected:
    void SetUp() override {
        ExportTest::SetUp();
        R = 44100.0;
        live_gain = 0.2f;
        drop_candidates();
    }
    void TearDown() override {
        drop_candidates();
        ExportTest::TearDown();
    }

    static void drop_candidates() {
        std::free(qcandidates);
        qcandidates = nullptr;
        numbOfCands = 0;
    }

    static void make_candidates() {
        qcandidates =
            static_cast<LiveCandidate *>(std::calloc(most_oscillators + 1, sizeof(LiveCandidate)));
    }

    /// The dialogue of an export to "out" with this step, which is there afterwards.
    std::string export_grid(const std::string &step, int32_t selection = 0) {
        before = std::time(nullptr);
        std::remove(path().c_str());
        return conversation(path() + "\n" + step + "\n", sdif_on_store(selection));
    }

    /// The file's frames: its text without head and end, which must be as they should.
    std::string frames() {
        const std::string text = text_of();
        for (time_t at = before; at <= std::time(nullptr); ++at) {
            const std::string start = head(at);
            if (text.starts_with(start) && text.ends_with(tail)) {
                return text.substr(start.size(), text.size() - start.size() - tail.size());
            }
        }
        return "no such head or end: " + text;
    }

    time_t before = 0;
};

/// One partial from 0 to 1 s, 100 to 200 Hz, 0 to -20 dB.
void fill_line() {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 200.0f, -20.0f}}});
    parray[0][1].phase = 1.0f;
}

std::string frame(double t, const std::vector<std::string> &rows) {
    std::string text =
        formatted("\n1TRC\t1\t0\t%f\n  1TRC\t0x0004\t%d\t4\n", t, static_cast<int>(rows.size()));
    for (const std::string &row : rows) {
        text += "\t" + row + "\n";
    }
    return text;
}

TEST_F(Sdif, WholeFileAndItsEcho) {
    fill_line();
    const std::string said = export_grid("0.25");
    EXPECT_EQ(frames(), frame(0.0, {"1\t100.000000\t0.200000\t0.000000"}) +
                            frame(0.25, {"1\t125.000000\t0.112468\t0.250000"}) +
                            frame(0.5, {"1\t150.000000\t0.063246\t0.500000"}) +
                            frame(0.75, {"1\t175.000000\t0.035566\t0.750000"}));
    EXPECT_EQ(said, "Quillgrove > Export all partials to SDIF file\n" + ask + ask_step + text_of());
}

TEST_F(Sdif, TwoActivePartialsMoveTheFrameOn) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 200.0f, 0.0f}},
                {{0.0f, 1000.0f, 0.0f}, {1.0f, 2000.0f, 0.0f}}});
    const std::string said = export_grid("0.25");
    const std::string first =
        frame(0.001, {"1\t100.000000\t0.200000\t0.000000", "2\t1001.000000\t0.200000\t0.000000"});
    EXPECT_TRUE(frames().starts_with(first)) << frames();
    EXPECT_TRUE(frames()
                    .substr(first.size())
                    .starts_with(frame(0.252, {"1\t125.099998\t0.200000\t0.000000",
                                               "2\t1252.000000\t0.200000\t0.000000"})))
        << frames();
    EXPECT_NE(said.find("SDFC\n" + nudged + first + nudged + "\n1TRC"), std::string::npos) << said;
}

TEST_F(Sdif, GainOfLivePlay) {
    fill_line();
    live_gain = 1.0f;
    export_grid("1");
    EXPECT_TRUE(frames().starts_with(frame(0.0, {"1\t100.000000\t1.000000\t0.000000"})));
}

TEST_F(Sdif, StepsOutsideTheLimits) {
    fill_line();
    export_grid("10"); // a quarter of the sound
    EXPECT_EQ(frames().substr(frames().rfind("1TRC\t1\t")).substr(0, 16), "1TRC\t1\t0\t0.75000");
    for (const char *step : {"0", "-3", "0.0009", "none"}) {
        export_grid(step);
        EXPECT_NE(frames().find("\n1TRC\t1\t0\t0.011610\n"), std::string::npos) << step;
    }
    R = 48000.0;
    export_grid("0");
    EXPECT_NE(frames().find("\n1TRC\t1\t0\t0.010667\n"), std::string::npos);
    export_grid("0.001");
    EXPECT_NE(frames().find("\n1TRC\t1\t0\t0.001000\n"), std::string::npos);
}

TEST_F(Sdif, FourSecondsAtMostOneSecondSteps) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {4.0f, 100.0f, 0.0f}}});
    export_grid("10");
    std::string expected;
    for (int t = 0; t < 4; ++t) {
        expected += frame(t, {"1\t100.000000\t0.200000\t0.000000"});
    }
    EXPECT_EQ(frames(), expected);
}

TEST_F(Sdif, StartsAtTheEarliestPoint) {
    fill_store({{{2.0f, 100.0f, 0.0f}, {4.0f, 100.0f, 0.0f}}});
    export_grid("1");
    EXPECT_EQ(frames(), frame(2.0, {"1\t100.000000\t0.200000\t0.000000"}) +
                            frame(3.0, {"1\t100.000000\t0.200000\t0.000000"}));
}

TEST_F(Sdif, FramesWithoutRowsAndSinglePoints) {
    fill_store({{{0.0f, 100.0f, 0.0f}},
                {},
                {{0.0f, 100.0f, 0.0f}, {0.25f, 100.0f, 0.0f}},
                {{1.0f, 100.0f, 0.0f}, {2.0f, 100.0f, 0.0f}}});
    free_points(parray[1]);
    parray[1] = nullptr;
    export_grid("0.5");
    EXPECT_EQ(frames(), frame(0.001, {"3\t100.000000\t0.200000\t0.000000"}) + frame(0.501, {}) +
                            frame(1.002, {"4\t100.000000\t0.200000\t0.000000"}) +
                            frame(1.503, {"4\t100.000000\t0.200000\t0.000000"}))
        << "partial 2 of no points and partial 1 of one are in no frame";
}

TEST_F(Sdif, FrequenciesAreHeld) {
    fill_store({{{0.0f, 30000.0f, 0.0f}, {1.0f, 30000.0f, 0.0f}}});
    export_grid("1");
    EXPECT_TRUE(frames().starts_with(frame(0.0, {"1\t20000.000000\t0.200000\t0.000000"})));
    mark(0, 0, 1);
    export_grid("1", 1);
    EXPECT_TRUE(frames().starts_with(frame(0.0, {"1\t22050.000000\t0.200000\t0.000000"})));
    parray[0][0].freq = parray[0][1].freq = -50.0f;
    export_grid("1");
    EXPECT_TRUE(frames().starts_with(frame(0.0, {"1\t50.000000\t0.200000\t0.000000"})));
}

TEST_F(Sdif, TheFirst2047Partials) {
    fill_store(std::vector<Partial>(3000, {{0.0f, 100.0f, 0.0f}, {100.0f, 100.0f, 0.0f}}));
    mark(2046, 0, 1);
    mark(2047, 0, 1);
    export_grid("25", 1);
    const std::string row = "2047\t100.000000\t0.200000\t0.000000";
    EXPECT_EQ(frames(),
              frame(0.0, {row}) + frame(25.0, {row}) + frame(50.0, {row}) + frame(75.0, {row}));
    EXPECT_EQ(numbOfCands, 2047);
    export_grid("25");
    EXPECT_NE(frames().find("  1TRC\t0x0004\t2047\t4\n"), std::string::npos);
}

TEST_F(Sdif, SelectionFadesOut) {
    fill_store({{{0.0f, 100.0f, 0.0f},
                 {1.0f, 100.0f, 0.0f},
                 {2.0f, 100.0f, 0.0f},
                 {3.0f, 100.0f, 0.0f},
                 {4.0f, 100.0f, 0.0f}},
                {{0.0f, 100.0f, 0.0f}, {4.0f, 100.0f, 0.0f}}});
    mark(0, 2, 2);
    const std::string said = export_grid("0.5", 1);
    EXPECT_TRUE(said.starts_with("Quillgrove > Export selected partials to SDIF file\n"));
    EXPECT_EQ(said.find(nudged), std::string::npos);
    const std::string full = "1\t100.000000\t0.200000\t0.000000";
    EXPECT_EQ(frames(), frame(0.0, {}) + frame(0.5, {}) + frame(1.0, {full}) + frame(1.5, {full}) +
                            frame(2.0, {full}) + frame(2.5, {"1\t100.000000\t0.000632\t0.000000"}) +
                            frame(3.0, {}) + frame(3.5, {}));
    EXPECT_EQ(said,
              "Quillgrove > Export selected partials to SDIF file\n" + ask + ask_step + text_of());
}

TEST_F(Sdif, NothingSelectedGivesEmptyFrames) {
    fill_line();
    export_grid("0.5", 1);
    EXPECT_EQ(frames(), frame(0.0, {}) + frame(0.25, {}) + frame(0.5, {}) + frame(0.75, {}));
}

TEST_F(Sdif, RowsStandInTheCandidates) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 200.0f, 0.0f}},
                {{0.0f, 100.0f, 0.0f}, {0.1f, 100.0f, 0.0f}},
                {{0.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    make_candidates();
    export_grid("0.25");
    EXPECT_EQ(qcandidates[0].status, 1);
    EXPECT_FLOAT_EQ(qcandidates[0].freq, 175.4f);
    EXPECT_FLOAT_EQ(qcandidates[0].time, 0.754f);
    EXPECT_FLOAT_EQ(qcandidates[0].amp, 0.2f);
    EXPECT_EQ(qcandidates[1].status, 0);
    EXPECT_FLOAT_EQ(qcandidates[1].time, 0.001f);
    EXPECT_EQ(qcandidates[2].status, 1);
    EXPECT_FLOAT_EQ(qcandidates[2].freq, 100.0f);
    EXPECT_EQ(numbOfCands, 3) << "one for each partial that is exported";
}

TEST_F(Sdif, DialogueEnds) {
    fill_line();
    const std::string opening = "Quillgrove > Export all partials to SDIF file\n" + ask;
    const std::function<void()> work = sdif_on_store(0);
    EXPECT_EQ(conversation("-c\n", work), opening + "Command cancelled\n");
    EXPECT_EQ(conversation("", work), opening);
    EXPECT_EQ(conversation(path() + "\n", work), opening + ask_step);
    const std::string nowhere = path("no/where");
    EXPECT_EQ(conversation(nowhere + "\n1\n", work),
              opening + ask_step + "Cannot create file " + nowhere + "\n");
    EXPECT_EQ(conversation("/dev/full\n1\n", work), opening + ask_step + "File /dev/full exists\n");
    EXPECT_TRUE(files().empty());
    make("out", "kept");
    EXPECT_EQ(conversation(path() + "\n1\n", work),
              opening + ask_step + "File " + path() + " exists\n");
    EXPECT_EQ(text_of(), "kept");
}

TEST_F(Sdif, FullDisk) {
    fill_store(std::vector<Partial>(20, {{0.0f, 100.0f, 0.0f}, {1.0f, 200.0f, 0.0f}}));
    mark(0, 0, 1);
    const ShortOfRoom result = short_of_room(300000, path() + "\n0.0002\n", [] {
        // Standard output would grow too large itself.
        conversation("", [] {});
        FILE *kept = stdout;
        stdout = std::fopen("/dev/null", "w");
        R = 44100.0 * 512.0;
        sdif(0.0f, 100.0f, 0.0f, parray, npoints, partials, 1);
        std::fclose(stdout);
        stdout = kept;
    });
    EXPECT_EQ(result.err, "Quillgrove: " + path() + ": File too large\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(Sdif, AStepLostInTheWidthEndsTheGrid) {
    fill_store({{{1e7f, 100.0f, 0.0f}, {2e7f, 100.0f, 0.0f}}});
    before = std::time(nullptr);
    conversation(path() + "\n0.01\n", [] { sdif(1e7f, 2e7f, 0.0f, parray, npoints, partials, 0); });
    EXPECT_EQ(frames(), frame(1e7, {"1\t100.000000\t0.200000\t0.000000"}));
}

TEST_F(Sdif, NoSoundNoFrames) {
    fill_store({{{0.0f, 100.0f, 0.0f}}});
    export_grid("1");
    EXPECT_EQ(frames(), "");
}

// --- against a walk that restarts at each partial's head ---------------------------------------

struct Row {
    bool active = false;
    float freq, amp, phase;
};

Row row_between(const Breakpoint &a, const Breakpoint &b, float right_amp, float ceiling, float t) {
    float freq = linear_interpolation(t, b.time, a.time, b.freq, a.freq);
    freq = freq > ceiling ? ceiling : freq;
    freq = freq < 0.0f ? -freq : freq;
    const float amp = db2amp(linear_interpolation(t, b.time, a.time, right_amp, a.amp));
    return {true, freq, amp * live_gain, linear_interpolation(t, b.time, a.time, b.phase, a.phase)};
}

Row plain_whole(int32_t i, float &t) {
    const Breakpoint *p = parray[i];
    const int32_t n = npoints[i];
    if (n < 2 || t < p[0].time || t > p[n - 1].time) {
        return {};
    }
    for (int32_t k = 1; k < n; ++k) {
        if (p[k].time > t) {
            if (i != 0) {
                t = static_cast<float>(t + 0.001);
            }
            return row_between(p[k - 1], p[k], p[k].amp, 20000.0f, t);
        }
    }
    return {};
}

Row plain_selected(int32_t i, float t) {
    const Breakpoint *p = parray[i];
    Row row;
    for (int32_t j = 0; j + 1 < npoints[i]; ++j) {
        if ((p[j + 1].selected != 0 || p[j].selected == 1) && p[j].time <= t && t < p[j + 1].time) {
            row = row_between(p[j], p[j + 1], p[j + 1].selected != 0 ? p[j + 1].amp : -100.0f,
                              22050.0f, t);
        }
    }
    return row;
}

std::string plain_frames(float step, bool selection) {
    std::string text;
    for (float t = sndstart; t < sndlen; t += step) {
        std::vector<std::string> rows;
        for (int32_t i = 0; i < partials; ++i) {
            const Row row = selection ? plain_selected(i, t) : plain_whole(i, t);
            if (row.active) {
                rows.push_back(formatted("%d\t%f\t%f\t%f", i + 1, static_cast<double>(row.freq),
                                         static_cast<double>(row.amp),
                                         static_cast<double>(row.phase)));
            }
        }
        text += frame(static_cast<double>(t), rows);
    }
    return text;
}

TEST_F(Sdif, EqualsThePlainWalk) {
    std::mt19937 random(7);
    const auto number = [&random](float from, float to) {
        return std::uniform_real_distribution<float>(from, to)(random);
    };
    for (int round = 0; round < 60; ++round) {
        std::vector<Partial> content(1 + random() % 12);
        for (Partial &partial : content) {
            float t = number(0.0f, 1.0f);
            for (size_t k = 1 + random() % 20; k > 0; --k) {
                partial.push_back({t, number(0.0f, 24000.0f), number(-150.0f, 3.0f)});
                // Now and then times stand still or, in some stores, run back.
                t += random() % 8 == 0 ? 0.0f : number(round % 3 == 0 ? -0.05f : 0.0f, 0.2f);
            }
        }
        fill_store(content);
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                parray[i][j].phase = number(0.0f, 6.28f);
                parray[i][j].selected = static_cast<uint16_t>(random() % 3);
            }
        }
        const float step = std::min(0.0137f, sndlen * 0.25f);
        for (const bool selection : {false, true}) {
            export_grid(formatted("%.9g", static_cast<double>(step)), selection ? 1 : 0);
            ASSERT_EQ(frames(), plain_frames(step, selection)) << round;
        }
    }
}

} // namespace
