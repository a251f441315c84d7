// Lines of the three axes: ticks and their lengths.
#include "display/axes.h"

#include "display/scene.h"
#include "display/view.h"
#include "store/store.h"
#include "tests/support/drawing.h"

#include <algorithm>
#include <cmath>

using namespace gl_double;

namespace {

using Axes = DrawingTest;

/// One partial from corner to corner of these ranges.
void fill_ranges(float start, float end, float low, float high, float quiet = -40.0f,
                 float loud = -10.0f) {
    fill_store({{{start, low, loud}, {end, high, quiet}}});
}

std::vector<DrawnLine> axis_lines() {
    return lines_of_colour(0.4, 0.32, 0.23);
}

std::vector<DrawnLine> frequency_ticks() {
    std::vector<DrawnLine> ticks;
    for (const DrawnLine &line : axis_lines()) {
        if (line.from.x < 0.0) {
            ticks.push_back(line);
        }
    }
    return ticks;
}

std::vector<DrawnLine> frequency_ticks(double length) {
    std::vector<DrawnLine> ticks = frequency_ticks();
    std::erase_if(ticks,
                  [=](const DrawnLine &line) { return std::fabs(line.from.x + length) > 1e-6; });
    return ticks;
}

std::vector<DrawnLine> time_ticks() {
    std::vector<DrawnLine> ticks;
    for (const DrawnLine &line : axis_lines()) {
        if (line.from.y < 0.0 && line.from.x == line.to.x && line.from.z == 0.0 &&
            line.from.x > 0.0) {
            ticks.push_back(line);
        }
    }
    return ticks;
}

/// X of the time ticks of this length, rounded to thousandths and sorted.
std::vector<double> time_ticks(double length) {
    std::vector<double> places;
    for (const DrawnLine &line : time_ticks()) {
        if (std::fabs(line.from.y + length) < 1e-6) {
            places.push_back(std::round(line.from.x * 1000) / 1000);
        }
    }
    std::sort(places.begin(), places.end());
    return places;
}

std::vector<DrawnLine> amplitude_ticks() {
    std::vector<DrawnLine> ticks;
    for (const DrawnLine &line : axis_lines()) {
        if (line.from.x == 0.0 && line.to.x == 0.0 && line.from.y < 0.0 && line.to.y == 0.0) {
            ticks.push_back(line);
        }
    }
    return ticks;
}

bool has_line(double x0, double y0, double z0, double x1, double y1, double z1) {
    const auto lines = axis_lines();
    return std::any_of(lines.begin(), lines.end(), [=](const DrawnLine &line) {
        const double distance = std::fabs(line.from.x - x0) + std::fabs(line.from.y - y0) +
                                std::fabs(line.from.z - z0) + std::fabs(line.to.x - x1) +
                                std::fabs(line.to.y - y1) + std::fabs(line.to.z - z1);
        return distance < 1e-6;
    });
}

/// Height of a tick in the log view.
double log_height(double f) {
    return std::log(f / minfreq) / (logmaxfreq * 0.69314718);
}

} // namespace

TEST_F(Axes, ThreeAxesInPerspective) {
    fill_ranges(0, 4, 100, 2000, -70, -10);
    frame();
    EXPECT_TRUE(has_line(0, 0, 0, 0, 0, -0.2));
    EXPECT_TRUE(has_line(0, 0, 0, 0, 1, 0));
    EXPECT_TRUE(has_line(0, 0, 0, 1, 0, 0));
}

TEST_F(Axes, NoAmplitudeAxisInTheFlatView) {
    fill_ranges(0, 4, 100, 2000, -70, -10);
    flat = 1;
    frame();
    EXPECT_FALSE(has_line(0, 0, 0, 0, 0, -0.2));
    EXPECT_TRUE(amplitude_ticks().empty());
    EXPECT_TRUE(has_line(0, 0, 0, 0, 1, 0));
    EXPECT_TRUE(has_line(0, 0, 0, 1, 0, 0));
}

TEST_F(Axes, OneAmplitudeTickStandsForFiveDecibels) {
    fill_ranges(0, 4, 100, 2000, -70, -10);
    frame();
    const auto ticks = amplitude_ticks();
    ASSERT_EQ(ticks.size(), 12u);
    for (size_t k = 0; k < ticks.size(); ++k) {
        const double z = -static_cast<double>(k) * 5.0 / 300.0;
        expect_vertex(ticks[k].from, 0, k % 2 == 0 ? -0.007 : -0.003, z);
        expect_vertex(ticks[k].to, 0, 0, z);
    }
}

TEST_F(Axes, AmplitudeTicksShareTheAxisEvenly) {
    fill_ranges(0, 4, 100, 2000, -24, -10); // 14 dB: two ticks of 7 dB
    frame();
    const auto ticks = amplitude_ticks();
    ASSERT_EQ(ticks.size(), 2u);
    EXPECT_NEAR(ticks[1].from.z, -7.0 / 300.0, 1e-6);
}

TEST_F(Axes, NoAmplitudeTickBelowFiveDecibels) {
    fill_ranges(0, 4, 100, 2000, -14, -10);
    frame();
    EXPECT_TRUE(amplitude_ticks().empty());
    EXPECT_TRUE(has_line(0, 0, 0, 0, 0, -4.0 / 300.0));
}

TEST_F(Axes, LinearFrequencyTicks) {
    fill_ranges(0, 4, 100, 2500);
    frame();
    EXPECT_EQ(frequency_ticks(0.0035).size(), 8u + 8u + 4u);
    const auto halves = frequency_ticks(0.0065);
    ASSERT_EQ(halves.size(), 3u);
    EXPECT_NEAR(halves[0].from.y, 0.2, 1e-6);
    EXPECT_NEAR(halves[1].from.y, 0.6, 1e-6);
    EXPECT_NEAR(halves[2].from.y, 1.0, 1e-6); // exactly at the top still counts
    const auto thousands = frequency_ticks(0.008);
    ASSERT_EQ(thousands.size(), 3u);
    for (size_t k = 0; k < 3; ++k) {
        expect_vertex(thousands[k].from, -0.008, 0.4 * static_cast<double>(k), 0);
        expect_vertex(thousands[k].to, 0, 0.4 * static_cast<double>(k), 0);
    }
}

TEST_F(Axes, LowRangeHasTenthsUpToItsTop) {
    fill_ranges(0, 4, 100, 800);
    frame();
    EXPECT_EQ(frequency_ticks(0.0035).size(), 7u); // 100 to 400, 600 to 800
    EXPECT_EQ(frequency_ticks(0.0065).size(), 1u);
    EXPECT_EQ(frequency_ticks(0.008).size(), 1u); // 0 Hz
}

TEST_F(Axes, FrequencyMarksEndAtAThousandKilohertz) {
    for (const float high : {1999000.0f, 1e30f}) {
        fill_ranges(0, 4, 100, high);
        frame();
        EXPECT_EQ(frequency_ticks(0.008).size(), 1001u) << high;
        EXPECT_EQ(frequency_ticks(0.0035).size(), 8u * 1001u) << high;
        EXPECT_EQ(frequency_ticks(0.0065).size(), 1001u) << high;
    }
    fill_ranges(0, 4, 100, 999000);
    frame();
    EXPECT_EQ(frequency_ticks(0.008).size(), 1000u);
}

TEST_F(Axes, LogFrequencyTicks) {
    fill_ranges(0, 4, 100, 6400);
    logpos = 1;
    frame();
    const auto thousands = frequency_ticks(0.008);
    ASSERT_EQ(thousands.size(), 6u);
    for (size_t k = 0; k < 6; ++k) {
        EXPECT_NEAR(thousands[k].from.y, log_height(1000.0 * static_cast<double>(k + 1)), 1e-6);
    }
    EXPECT_NEAR(log_height(800.0), 0.5, 1e-6);
    const auto halves = frequency_ticks(0.0065);
    ASSERT_EQ(halves.size(), 6u);
    EXPECT_NEAR(halves[0].from.y, log_height(500.0), 1e-6);
    // 100 Hz is minfreq itself and stands at the foot.
    EXPECT_NEAR(frequency_ticks().at(0).from.y, 0.0, 1e-6);
}

TEST_F(Axes, LogTickOfZeroHertzIsNotDrawn) {
    fill_ranges(0, 4, 100, 6400);
    logpos = 1;
    frame();
    for (const DrawnLine &line : axis_lines()) {
        for (const Vertex &v : {line.from, line.to}) {
            EXPECT_TRUE(std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z));
            EXPECT_GE(v.y, -0.1);
        }
    }
}

TEST_F(Axes, FirstKilohertzSkipsTenthsBelowTheRange) {
    fill_ranges(0, 4, 350, 1900);
    logpos = 1;
    frame();
    std::vector<double> heights;
    for (const DrawnLine &tick : frequency_ticks()) {
        if (tick.from.x > -0.007 && tick.from.y < log_height(950.0)) {
            heights.push_back(tick.from.y);
        }
    }
    ASSERT_EQ(heights.size(), 6u); // 400 to 900
    EXPECT_NEAR(heights[0], log_height(400.0), 1e-6);
    EXPECT_NEAR(heights[5], log_height(900.0), 1e-6);
}

TEST_F(Axes, LinearViewSkipsNoTenths) {
    fill_ranges(0, 4, 350, 1900);
    frame();
    EXPECT_NEAR(frequency_ticks().at(0).from.y, 100.0 / 1900.0, 1e-6);
}

TEST_F(Axes, LaterKilohertzBelowTheRangeFallBelowTheAxis) {
    fill_ranges(0, 4, 2500, 10000);
    logpos = 1;
    frame();
    const auto ticks = frequency_ticks();
    const auto below =
        std::count_if(ticks.begin(), ticks.end(), [](const DrawnLine &t) { return t.from.y < 0; });
    // 1000 to 2000 in hundreds, and 2100 to 2400.
    EXPECT_EQ(below, 11 + 4);
    EXPECT_TRUE(std::any_of(ticks.begin(), ticks.end(), [](const DrawnLine &t) {
        return std::fabs(t.from.y - log_height(1500.0)) < 1e-6;
    }));
}

TEST_F(Axes, TimeTicksOfTenSeconds) {
    fill_ranges(0, 10, 100, 2000); // a second is 0.1 wide
    frame();
    EXPECT_EQ(time_ticks(0.015),
              (std::vector<double>{0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 1.0}));
    EXPECT_EQ(time_ticks(0.012),
              (std::vector<double>{0.05, 0.15, 0.25, 0.35, 0.45, 0.55, 0.65, 0.75, 0.85, 0.95}));
    EXPECT_EQ(time_ticks(0.006).size(), 80u);
    for (const DrawnLine &line : time_ticks()) {
        EXPECT_EQ(line.to.y, 0.0);
        EXPECT_LE(line.from.x, 1.0);
    }
}

TEST_F(Axes, FortySecondsHaveNoTenths) {
    fill_ranges(0, 40, 100, 2000); // a second is 0.025 wide
    frame();
    EXPECT_FLOAT_EQ(axis_scale(gCamera).tick, 0.025f);
    EXPECT_EQ(time_ticks(0.015).size(), 40u);
    EXPECT_EQ(time_ticks().size(), 40u);
}

TEST_F(Axes, TenthsNeedASecondWiderThanFourHundredths) {
    fill_ranges(0, 25.1f, 100, 2000);
    frame();
    EXPECT_TRUE(time_ticks(0.006).empty());
    fill_ranges(0, 24.9f, 100, 2000);
    frame();
    EXPECT_FALSE(time_ticks(0.006).empty());
    EXPECT_FALSE(time_ticks(0.012).empty());
}

TEST_F(Axes, ZoomWidensTheSecondAndShortensTheTicks) {
    fill_ranges(0, 40, 100, 2000);
    zoom = 2.0f; // a second is 0.05 wide
    frame();
    EXPECT_FLOAT_EQ(axis_scale(gCamera).tick, 0.05f);
    EXPECT_EQ(time_ticks(0.0075).size(), 40u);
    EXPECT_EQ(time_ticks(0.006).size(), 40u); // the halves, 0.012 / 2
    EXPECT_EQ(time_ticks(0.003).size(), 320u);
}

TEST_F(Axes, ZoomBelowOneCountsForTicksToo) {
    fill_ranges(0, 10, 100, 2000);
    zoom = 0.5f;
    frame();
    EXPECT_EQ(time_ticks(0.03).size(), 10u);
}

TEST_F(Axes, TickLengthTakesBothSidesOfTheWindow) {
    fill_ranges(0, 10, 100, 2000);
    gCamera.viewWidth = 1800;
    gCamera.viewHeight = 450;
    frame();
    EXPECT_EQ(time_ticks(0.0075).size(), 10u); // q = sqrt(4 * 1)
    EXPECT_EQ(thewidth, 1800);
    EXPECT_EQ(theheight, 450);
}

TEST_F(Axes, ShorterThanASecondHasTenthsUpToTheEnd) {
    fill_ranges(0, 0.5f, 100, 2000);
    frame();
    EXPECT_TRUE(time_ticks(0.015).empty());
    EXPECT_EQ(time_ticks(0.006), (std::vector<double>{0.2, 0.4, 0.6, 0.8}));
    EXPECT_EQ(time_ticks(0.012), (std::vector<double>{1.0}));
}

TEST_F(Axes, TimeCountsFromTheAnalysisStart) {
    fill_ranges(3, 8, 100, 2000);
    frame();
    EXPECT_EQ(time_ticks(0.015), (std::vector<double>{0.2, 0.4, 0.6, 0.8, 1.0}));
}

TEST_F(Axes, ScaleOfAFrame) {
    fill_ranges(0, 10, 100, 2000);
    gCamera.viewWidth = 900;
    gCamera.viewHeight = 225;
    frame();
    AxisScale scale = axis_scale(gCamera);
    EXPECT_EQ(scale.Hratio, 2.0f);
    EXPECT_EQ(scale.Vratio, 0.5f);
    EXPECT_EQ(scale.hz, 2.0f);
    EXPECT_EQ(scale.vz, 0.5f);
    EXPECT_FLOAT_EQ(scale.tick, 0.2f);
    zoom = 3.0f;
    scale = axis_scale(gCamera);
    EXPECT_EQ(scale.hz, 6.0f);
    EXPECT_EQ(scale.vz, 1.5f);
    EXPECT_FLOAT_EQ(scale.tick, 0.6f);
    zoom = 0.5f;
    scale = axis_scale(gCamera);
    EXPECT_EQ(scale.hz, 2.0f);
    EXPECT_EQ(scale.vz, 0.5f);
    EXPECT_FLOAT_EQ(scale.tick, 0.1f);
}
