// SDIF text of a fundamental, from text to the one partial.
#include "import/afile.h"
#include "store/phase.h"
#include "tests/support/any_reading.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "tests/support/frame_text.h"

#include <cmath>
#include <cstdio>

namespace {

class SdifCurve : public StoreTest {
  protected:
    static std::string read(const std::string &text, int32_t result = sdif_fundamental) {
        return printed([&] { EXPECT_EQ(read_as(sdif_fundamental, text), result); });
    }
    /// One field of all points.
    static std::vector<float> each(float Breakpoint::*field) {
        std::vector<float> result;
        for (int j = 0; j < npoints[0]; ++j) {
            result.push_back(parray[0][j].*field);
        }
        return result;
    }
    static std::vector<float> amps() {
        return each(&Breakpoint::amp);
    }
    static std::vector<float> times() {
        return each(&Breakpoint::time);
    }
    static std::vector<float> freqs() {
        return each(&Breakpoint::freq);
    }
};

/// Frames of these rows, 10 ms apart from 0.5 s on.
std::string frames_of(const std::vector<std::string> &rows) {
    std::string text;
    for (size_t j = 0; j < rows.size(); ++j) {
        text += sdif_frame("1FQ0", "0.5" + std::to_string(j), {rows[j]}, 0);
    }
    return text;
}

const std::string first_lines = "revisiting SDIF File\nSDIF\nimporting SDIF File\n";

TEST_F(SdifCurve, FourColumnsHoldTheAmplitude) {
    EXPECT_EQ(read(curve_text(frames_of({"200 1 1 1", "201 1 1 0.1", "202 1 1 10", "203 1 1 0",
                                         "204 1 1 0.5", "205 1 1 1"}))),
              first_lines + "PARRAY[0][0]: 0.500000  200.000000  0.000000\n"
                            "PARRAY[0][1]: 0.510000  201.000000  -20.000000\n"
                            "PARRAY[0][2]: 0.520000  202.000000  20.000000\n"
                            "PARRAY[0][3]: 0.530000  203.000000  -140.000000\n"
                            "PARRAY[0][4]: 0.540000  204.000000  -6.020600\n"
                            "PARRAY[0][5]: 0.550000  205.000000  0.000000\n");
    EXPECT_EQ(amps(), (std::vector<float>{-140, -92, 20, -140, -122, -140}));
    EXPECT_EQ(maxamp, -10.0f);
}

TEST_F(SdifCurve, TheFirstFrameIsPassedOver) {
    read(curve_text(frames_of({"200 1", "201 1", "202 1"})));
    ASSERT_EQ(partials, 1);
    ASSERT_EQ(npoints[0], 3);
    EXPECT_EQ(parray[0][0].time, 0.5f);
    EXPECT_EQ(parray[0][2].freq, 202.0f);
}

TEST_F(SdifCurve, OneTwoAndThreeColumnsHaveNoAmplitude) {
    for (const std::string further : {"", " 9", " 9 8"}) {
        read(curve_text(frames_of({"200" + further, "201" + further, "202" + further,
                                   "203" + further, "204" + further})));
        EXPECT_EQ(amps(), (std::vector<float>{-140, -92, -140, -122, -140})) << further;
        EXPECT_EQ(parray[0][2].freq, 202.0f) << further;
        EXPECT_EQ(parray[0][4].time, 0.54f) << further;
    }
}

TEST_F(SdifCurve, TheLastPointIsSilentWhateverTheFileSays) {
    read(curve_text(frames_of({"200 1 1 1", "201 1 1 1", "202 1 1 1"})));
    EXPECT_EQ(parray[0][2].amp, -140.0f);
}

TEST_F(SdifCurve, CurvesOfFewPoints) {
    read(curve_text(""));
    EXPECT_EQ(npoints[0], 0);
    read(curve_text(frames_of({"200 1 1 1"})));
    EXPECT_EQ(amps(), (std::vector<float>{-140}));
    EXPECT_EQ(maxamp, -10.0f);
    read(curve_text(frames_of({"200 1", "190 1"})));
    EXPECT_EQ(amps(), (std::vector<float>{-122, -140}));
    EXPECT_EQ(parray[0][0].freq, 200.0f);
    read(curve_text(frames_of({"200 1", "201 1", "202 1"})));
    EXPECT_EQ(amps(), (std::vector<float>{-140, -122, -140}));
}

TEST_F(SdifCurve, AFirstFrequencyBelowTheSecondTakesItsPlace) {
    read(curve_text(frames_of({"100 1", "201 1", "202 1"})));
    EXPECT_EQ(parray[0][0].freq, 201.0f);
    read(curve_text(frames_of({"300 1", "201 1", "202 1"})));
    EXPECT_EQ(parray[0][0].freq, 300.0f);
}

TEST_F(SdifCurve, PhasesFollowTheRecursion) {
    read(curve_text(frames_of({"201.5 1", "203.25 1", "202 1"})));
    EXPECT_EQ(parray[0][0].phase, 0.0f);
    const float first = advance_phase(0.0f, (0.51f - 0.5f) * 201.5f); // as read, not as shaped
    EXPECT_EQ(parray[0][1].phase, first);
    EXPECT_EQ(parray[0][2].phase, advance_phase(first, (0.52f - 0.51f) * 203.25f));
    EXPECT_EQ(parray[0][1].ampunits, 1);
}

TEST_F(SdifCurve, AWrongThirdWordIsToldAndRefused) {
    EXPECT_EQ(read("SDIF SDFC 1TRC 1FQ0", -1), "revisiting SDIF File\nSDIF\n1TRC\n");
    EXPECT_EQ(read("", -1), "revisiting SDIF File\n\n\n");
    const std::string text = "SDIF SDFC x";
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    int32_t counts[1] = {};
    EXPECT_EQ(printed([&] {
                  EXPECT_EQ(
                      import_sdiffile(file, counts, counts, nullptr, nullptr, sdif_fundamental),
                      -1);
              }),
              "importing SDIF File\nx\n");
    EXPECT_EQ(read_token(file), "SDIF");
    close_tokens(file);
}

TEST_F(SdifCurve, EachPassStartsAtTheHeadAndEndsThere) {
    const std::string text = curve_text(frames_of({"200 1", "201 1"}));
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    skip_tokens(file, 5);
    int32_t counts[1] = {};
    printed([&] {
        EXPECT_EQ(revisit_sdiffile(file, &partials, counts, sdif_fundamental), sdif_fundamental);
    });
    EXPECT_EQ(counts[0], 2);
    EXPECT_EQ(read_token(file), "SDIF");
    skip_tokens(file, 5);
    const int32_t none[1] = {};
    fill_store({{}});
    printed([&] {
        EXPECT_EQ(import_sdiffile(file, &partials, none, nullptr, &maxamp, sdif_fundamental),
                  sdif_fundamental);
    });
    EXPECT_EQ(read_token(file), "SDIF");
    close_tokens(file);
}

TEST_F(SdifCurve, EitherEndWordEndsTheData) {
    for (const std::string end : {"ENDC", "ENDF", "ENDC ENDF", ""}) {
        read("SDIF SDFC" + frames_of({"1 1", "200 1", "201 1"}) + end +
             (end.empty() ? "" : frames_of({"300 1"})));
        EXPECT_EQ(npoints[0], 2) << end;
    }
}

TEST_F(SdifCurve, AnEndWithinAFrameKeepsWhatHasAFrequency) {
    const std::string head = "SDIF SDFC" + frames_of({"1 1", "200 1"});
    const std::string behind = " 7 7 7 7 7 7" + frames_of({"8 1"});
    for (const std::string begun :
         {"1FQ0", "1FQ0 1", "1FQ0 1 1", "1FQ0 1 1 0.6", "1FQ0 1 1 0.6 1FQ0",
          "1FQ0 1 1 0.6 1FQ0 0x0004 1", "1FQ0 1 1 0.6 1FQ0 0x0004 1 4"}) {
        read(head + begun + " ENDC" + behind);
        EXPECT_EQ(npoints[0], 1) << begun;
    }
    for (const std::string row : {"300", "300 1", "300 1 1", "300 1 1 1"}) {
        read(head + "1FQ0 1 1 0.6 1FQ0 0x0004 1 4 " + row + " ENDC" + behind);
        EXPECT_EQ(times(), (std::vector<float>{0.51f, 0.6f})) << row;
        EXPECT_EQ(freqs(), (std::vector<float>{300, 300})) << row; // the first takes the second's
    }
}

TEST_F(SdifCurve, ATextCutAfterEveryByteIsHarmless) {
    const std::string text = curve_text(frames_of({"200 1 1 1", "201 1 1 1"}));
    for (size_t size = 0; size < text.size(); ++size) {
        printed([&] {
            const int32_t type = read_as(sdif_fundamental, text.substr(0, size));
            EXPECT_TRUE(type == sdif_fundamental || type == -1) << size;
        });
    }
}

TEST_F(SdifCurve, ExponentsAndNumbersThatAreNone) {
    EXPECT_EQ(read(curve_text(frames_of({"2e2 1 1 4.2e-05", "-nan 1 1 -nan", "inf 1 1 1"}))),
              first_lines + "PARRAY[0][0]: 0.500000  200.000000  -87.535011\n"
                            "PARRAY[0][1]: 0.510000  -nan  -140.000000\n"
                            "PARRAY[0][2]: 0.520000  inf  0.000000\n");
    EXPECT_TRUE(std::isnan(parray[0][1].freq));
    printed([] { EXPECT_TRUE(derive_store()); });
}

TEST_F(SdifCurve, LinesOfPointsAreAsPrintfHasThem) {
    std::vector<std::string> rows;
    std::string expected = first_lines;
    for (int j = 0; j < 2000; ++j) { // more than one block of lines
        const float freq = 100.0f + 1.37f * static_cast<float>(j);
        char row[64];
        std::snprintf(row, sizeof row, "%.9g", static_cast<double>(freq));
        rows.push_back(row);
    }
    const std::string text = curve_text(frames_of(rows));
    const std::string got = read(text);
    ASSERT_EQ(npoints[0], 2000);
    for (int j = 0; j < 2000; ++j) {
        char line[128];
        const float freq = 100.0f + 1.37f * static_cast<float>(j);
        std::snprintf(line, sizeof line, "PARRAY[0][%d]: %f  %f  %f\n", j,
                      static_cast<double>(parray[0][j].time), static_cast<double>(freq), -140.0);
        expected += line;
    }
    EXPECT_EQ(got, expected);
}

TEST_F(SdifCurve, NumbersOfEverySizeAreAsPrintfHasThem) {
    const float values[] = {0.0f,        -0.0f,         -1e-9f,        4e-7f,        5e-7f,
                            -0.0000005f, 0.0000015f,    0.9999995f,    -123.4567f,   999999.5f,
                            1e9f,        -999999936.0f, 16777217.0f,   3.402823e38f, -1e30f,
                            1.17e-38f,   0.0078125f,    0.00048828125f};
    std::vector<std::string> rows;
    for (const float value : values) {
        char row[64];
        std::snprintf(row, sizeof row, "%.9g 1 1 1", static_cast<double>(value));
        rows.push_back(row);
    }
    const std::string got = read(curve_text(frames_of(rows)));
    for (const float value : values) {
        char text[128];
        std::snprintf(text, sizeof text, "  %f  0.000000\n", static_cast<double>(value));
        EXPECT_NE(got.find(text), std::string::npos) << text;
    }
}

TEST_F(SdifCurve, FiveColumnsShiftTheWalk) {
    // The fifth is taken for the signature of the next frame, so that each frame begins one word
    // further off; "1FQ0" is a time of 1 and "0x0004" a frequency of 4 then.
    read(curve_text(frames_of({"200 1 1 1 5", "201 1 1 1 5", "202 1 1 1 5", "203 1 1 1 5"})));
    EXPECT_EQ(times(), (std::vector<float>{0.5f, 0, 1, 1}));
    EXPECT_EQ(freqs(), (std::vector<float>{200, 0, 1, 4}));
}

TEST_F(SdifCurve, OtherFramesInBetweenShiftTheWalkUntilTheNextSignature) {
    read(curve_text(frames_of({"200 1"}) + sdif_frame("1TRC", "0.505", {"1 2 3 4"}) +
                    frames_of({"201 1", "202 1"})));
    EXPECT_EQ(times(), (std::vector<float>{0.5f, 4, 0.5f, 0.51f}));
    EXPECT_EQ(freqs(), (std::vector<float>{200, 3, 201, 202}));
}

} // namespace
