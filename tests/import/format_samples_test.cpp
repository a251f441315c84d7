// SPEAR and SDIF texts that other programs wrote, where the folder of samples stands beside the
// source tree. The numbers were found in the files by other means.
#include "import/afile.h"
#include "tests/support/any_reading.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <numeric>

namespace {

class FormatSamples : public StoreTest {
  protected:
    /// The text of a sample, empty where there is none.
    static std::string sample(const std::string &name) {
        std::ifstream file(std::string(SOURCE_DIR) + "/../shared/samples/" + name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void expect_point(int32_t i, int32_t j, double time, double freq, double amp) {
        ASSERT_TRUE(point_exists(i, j)) << i << " " << j;
        EXPECT_NEAR(parray[i][j].time, time, 1e-6) << i << " " << j;
        EXPECT_NEAR(parray[i][j].freq, freq, 1e-3) << i << " " << j;
        EXPECT_NEAR(parray[i][j].amp, amp, 1e-4) << i << " " << j;
    }
    static int32_t total() {
        return std::accumulate(npoints, npoints + partials, 0);
    }
    static void read(int32_t type, const std::string &text) {
        printed([&] { ASSERT_EQ(read_as(type, text), type); });
    }
};

TEST_F(FormatSamples, Bell) {
    const std::string text = sample("bell.spear-partials.txt");
    if (text.empty()) {
        GTEST_SKIP() << "no samples here";
    }
    read(spear_partials, text);
    ASSERT_EQ(partials, 82);
    EXPECT_EQ(total(), 1352);
    EXPECT_EQ(std::count(npoints, npoints + partials, 1), 1);
    EXPECT_EQ(std::vector<int>(npoints, npoints + 6), (std::vector<int>{39, 6, 33, 19, 82, 26}));
    expect_point(0, 0, 0.0, 2379.079102, -37.589838);
    expect_point(0, 5, 0.062472, 2377.377197, -32.125338);
    expect_point(40, npoints[40] - 1, 0.262381, 3385.670166, -140.0);
    expect_point(81, npoints[81] - 1, 0.987052, 1519.241333, -39.808433);
    EXPECT_NEAR(minfreq, 219.213928, 1e-3);
    EXPECT_NEAR(maxfreq, 4183.344727, 1e-3);
    EXPECT_NEAR(maxamp, -11.689549, 1e-4);
}

TEST_F(FormatSamples, Clarinet) {
    const std::string text = sample("clarinet.spear-frames.txt");
    if (text.empty()) {
        GTEST_SKIP() << "no samples here";
    }
    read(spear_frames, text);
    ASSERT_EQ(partials, 26);
    EXPECT_EQ(t_frames.count, 43);
    EXPECT_EQ(total(), 849);
    EXPECT_EQ(std::vector<int>(npoints + 20, npoints + 26),
              (std::vector<int>{28, 24, 6, 24, 15, 6}));
    expect_point(0, 0, 0.0, 5245.453125, -84.152166);
    expect_point(14, 1, 0.01, 264.990784, -30.688477);
    expect_point(25, 5, 0.4, 805.346130, -73.432408);
    expect_point(21, 0, 0.1, 1688.650757, -64.989832);
    EXPECT_NEAR(minfreq, 20.448446, 1e-3);
    EXPECT_NEAR(maxfreq, 5316.425293, 1e-3);
    EXPECT_NEAR(maxamp, -19.382017, 1e-4);
}

TEST_F(FormatSamples, Lick) {
    const std::string text = sample("lick.1TRC.sdif.txt");
    if (text.empty()) {
        GTEST_SKIP() << "no samples here";
    }
    // It has no table of names, so that its type is not found by itself.
    EXPECT_EQ(printed([&] { EXPECT_EQ(read_any(text), -1); }), "SDIF\nSDIF\n1TRC\n");
    read(sdif_inharmonic, text);
    ASSERT_EQ(partials, 81);
    EXPECT_EQ(total(), 12546); // of 181 frames the first gives none
    EXPECT_EQ(npoints[0], 180);
    EXPECT_EQ(npoints[66], 129);
    EXPECT_EQ(npoints[80], 6);
    expect_point(0, 0, 0.02, 269.63, -45.121969);
    expect_point(1, 3, 0.05, 551.92, -37.430722);
    expect_point(66, 128, 1.8246, 21938.3, -140.0);
    expect_point(80, 0, 0.02, 21694.1, -113.979400);
    EXPECT_NEAR(maxamp, -26.059251, 1e-4);
}

TEST_F(FormatSamples, TwoFrames) {
    const std::string text = sample("two-frames.1TRC.sdif.txt");
    if (text.empty()) {
        GTEST_SKIP() << "no samples here";
    }
    read(sdif_inharmonic, text);
    ASSERT_EQ(partials, 20);
    EXPECT_EQ(total(), 10);
    for (int32_t i = 1; i < 20; i += 2) {
        EXPECT_EQ(npoints[i - 1], 0);
        expect_point(i, 0, 1.0, 0.1 + 25 * (i + 1), i == 1 ? 1.583625 : parray[i][0].amp);
    }
    printed([&] { EXPECT_EQ(read_any(text), sdif_inharmonic); });
    ASSERT_EQ(partials, 10); // of 20 those with a point, and one lost for one that stands twice
    EXPECT_NEAR(parray[0][0].freq, 50.1, 1e-3);
}

TEST_F(FormatSamples, Voice) {
    const std::string text = sample("voice.1FQ0.sdif.txt");
    if (text.empty()) {
        GTEST_SKIP() << "no samples here";
    }
    read(sdif_fundamental, text);
    ASSERT_EQ(partials, 1);
    ASSERT_EQ(npoints[0], 178);                   // of 179 frames the first gives none
    expect_point(0, 0, 0.030023, 276.05, -140.0); // raised to the second's frequency
    expect_point(0, 1, 0.040045, 276.05, -92.0);
    expect_point(0, 89, 0.922041, 373.707, -140.0);
    expect_point(0, 176, 1.79401, 330.483, -122.0);
    expect_point(0, 177, 1.80404, 328.761, -140.0);
}

} // namespace
