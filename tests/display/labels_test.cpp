// Labels of the frequency and the time axis.
#include "display/scene.h"
#include "display/text.h"
#include "display/view.h"
#include "store/store.h"
#include "tests/support/drawing.h"

#include <cmath>
#include <limits>

using namespace gl_double;

namespace {

using Labels = DrawingTest;
using Texts = std::vector<std::string>;

void fill_ranges(float start, float end, float low, float high) {
    fill_store({{{start, low, -10.0f}, {end, high, -40.0f}}});
}

bool is_time_label(const Label &label) {
    return label.y < -0.015;
}

/// Texts of the labels of one axis, in order.
Texts texts_of(bool of_time) {
    Texts texts;
    for (const Label &label : recorder().labels) {
        if (is_time_label(label) == of_time) {
            texts.push_back(label.text);
        }
    }
    return texts;
}

Texts time_texts() {
    return texts_of(true);
}
Texts frequency_texts() {
    return texts_of(false);
}

const Label &found_label(const std::string &text, bool of_time) {
    static const Label none = {};
    for (const Label &label : recorder().labels) {
        if (label.text == text && is_time_label(label) == of_time) {
            return label;
        }
    }
    ADD_FAILURE() << "no label " << text;
    return none;
}

void expect_frequency_label(const std::string &text, double x, double y) {
    const Label &label = found_label(text, false);
    EXPECT_NEAR(label.x, x, 1e-6) << text;
    EXPECT_NEAR(label.y, y, 1e-6) << text;
    EXPECT_EQ(label.z, 0.0);
}

void expect_time_label(const std::string &text, double x, double y) {
    const Label &label = found_label(text, true);
    EXPECT_NEAR(label.x, x, 1e-6) << text;
    EXPECT_NEAR(label.y, y, 1e-6) << text;
    EXPECT_EQ(label.z, 0.0);
}

/// Height of a label in the log view.
double log_height(double f) {
    return std::log(f / minfreq) / (logmaxfreq * 0.7000786518);
}

} // namespace

TEST_F(Labels, FontAndColour) {
    fill_ranges(0, 10, 100, 5000);
    frame();
    ASSERT_FALSE(recorder().labels.empty());
    for (const Label &label : recorder().labels) {
        EXPECT_EQ(label.font, GLUT_BITMAP_HELVETICA_10);
        EXPECT_NEAR(label.r, 0.6, 1e-6);
        EXPECT_NEAR(label.g, 0.1, 1e-6);
        EXPECT_NEAR(label.b, 0.2, 1e-6);
        EXPECT_LE(label.text.size(), 4u);
    }
}

TEST_F(Labels, WholeKilohertzAbove1000) {
    fill_ranges(0, 10, 100, 5000); // trunc(4.95): kilohertz 0 to 3
    frame();
    EXPECT_EQ(frequency_texts(), (Texts{" 0", " 1", " 2", " 3", " 4"}));
    expect_frequency_label(" 0", -0.05, -0.01);
    expect_frequency_label(" 1", -0.05, 900.0 / 5000.0 + 0.01);
    expect_frequency_label(" 4", -0.05, 3900.0 / 5000.0 + 0.01);
}

TEST_F(Labels, LastKilohertzJustBelowTheTop) {
    fill_ranges(0, 10, 100, 5100); // trunc(5.049)
    frame();
    EXPECT_EQ(frequency_texts(), (Texts{" 0", " 1", " 2", " 3", " 4", " 5"}));
}

TEST_F(Labels, TwoDigitKilohertz) {
    fill_ranges(0, 10, 100, 12000);
    frame();
    EXPECT_EQ(frequency_texts().back(), "11");
    expect_frequency_label("11", -0.05, 10900.0 / 12000.0 + 0.01);
}

TEST_F(Labels, KilohertzEndAtAThousand) {
    fill_ranges(0, 10, 100, 1e30f);
    frame();
    EXPECT_EQ(frequency_texts().size(), 1001u);
    EXPECT_EQ(frequency_texts().back(), "1000");
}

TEST_F(Labels, DecimalsBelow1000) {
    fill_ranges(0, 10, 100, 800);
    frame();
    EXPECT_EQ(frequency_texts(),
              (Texts{" 0", "0.1", "0.2", "0.3", "0.4", "0.5", "0.6", "0.7", "0.8"}));
    expect_frequency_label("0.1", -0.05, 0.125);
    expect_frequency_label("0.5", -0.05, 0.625);
}

TEST_F(Labels, DecimalsEndWithTheKilohertzWhenAllTenthsFit) {
    fill_ranges(0, 10, 100, 950);
    frame();
    EXPECT_EQ(frequency_texts(),
              (Texts{" 0", "0.1", "0.2", "0.3", "0.4", "0.5", "0.6", "0.7", "0.8", "0.9", " 1"}));
    expect_frequency_label(" 1", -0.05, 900.0 / 950.0 + 0.01);
}

TEST_F(Labels, NoDecimalsAtExactly1000) {
    fill_ranges(0, 10, 100, 1000);
    frame();
    EXPECT_EQ(frequency_texts(), (Texts{" 0", " 1"}));
}

TEST_F(Labels, FrequencyLabelsKeepTheirDistanceUnderZoom) {
    fill_ranges(0, 10, 100, 5000);
    zoom = 4.0f;
    gCamera.viewWidth = 900;
    gCamera.viewHeight = 225;
    frame();
    expect_frequency_label(" 1", -0.05 / 8.0, 0.19);
    // The offset of the zero below the axis does not follow the zoom.
    expect_time_label(" 0", -0.05 / 8.0, -0.01 / 0.5);
}

TEST_F(Labels, ZoomBelowOneLeavesTheOffsets) {
    fill_ranges(0, 10, 100, 5000);
    zoom = 0.5f;
    frame();
    expect_frequency_label(" 1", -0.05, 0.19);
}

TEST_F(Labels, LogLabelsStandALittleBelowTheirTicks) {
    fill_ranges(0, 10, 100, 6400);
    logpos = 1;
    frame();
    EXPECT_EQ(frequency_texts(), (Texts{" 1", " 2", " 3", " 4", " 5", " 6"}));
    expect_frequency_label(" 1", -0.05, log_height(900.0) + 0.01);
    expect_frequency_label(" 6", -0.05, log_height(5900.0) + 0.01);
    EXPECT_NEAR(log_height(6400.0), 0.69314718 / 0.7000786518, 1e-6);
    EXPECT_NEAR(log_height(6400.0), 1.0 / 1.01, 1e-6);
}

TEST_F(Labels, LogDecimalsStartAtTheRange) {
    fill_ranges(0, 10, 250, 800);
    logpos = 1;
    frame();
    EXPECT_EQ(frequency_texts(), (Texts{"0.3", "0.4", "0.5", "0.6", "0.7", "0.8"}));
    expect_frequency_label("0.3", -0.05, log_height(300.0));
    expect_frequency_label("0.8", -0.05, log_height(800.0));
}

TEST_F(Labels, LinearDecimalsIgnoreTheLowEnd) {
    fill_ranges(0, 10, 650, 800);
    frame();
    EXPECT_EQ(frequency_texts().at(1), "0.1");
}

TEST_F(Labels, EverySecondWhereASecondIsWide) {
    fill_ranges(0, 10, 100, 5000);
    frame();
    EXPECT_EQ(time_texts(), (Texts{" 1", " 2", " 3", " 4", " 5", " 6", " 7", " 8", " 9", "10"}));
    expect_time_label(" 1", 0.1 - 0.015, -0.06);
    expect_time_label("10", 1.0 - 0.015, -0.06);
}

TEST_F(Labels, EvenSecondsWhereASecondIsNarrow) {
    fill_ranges(0, 20, 100, 5000);
    frame();
    EXPECT_EQ(time_texts(), (Texts{" 2", " 4", " 6", " 8", "10", "12", "14", "16", "18", "20"}));
}

TEST_F(Labels, EveryFifthSecondOfFortySeconds) {
    fill_ranges(0, 40, 100, 5000); // a second is 0.025 wide
    frame();
    EXPECT_EQ(time_texts(), (Texts{" 5", "10", "15", "20", "25", "30", "35", "40"}));
    expect_time_label("15", 15.0 / 40.0 - 0.015, -0.06);
}

TEST_F(Labels, ThinningChangesAt35And70Thousandths) {
    fill_ranges(0, 14.2f, 100, 5000); // 0.0704
    frame();
    EXPECT_EQ(time_texts().at(0), " 1");
    fill_ranges(0, 14.3f, 100, 5000); // 0.0699
    frame();
    EXPECT_EQ(time_texts().at(0), " 2");
    fill_ranges(0, 28.5f, 100, 5000); // 0.0351
    frame();
    EXPECT_EQ(time_texts().at(0), " 2");
    fill_ranges(0, 28.6f, 100, 5000); // 0.0349
    frame();
    EXPECT_EQ(time_texts().at(0), " 5");
}

TEST_F(Labels, ZoomBringsBackThinnedSeconds) {
    fill_ranges(0, 40, 100, 5000);
    zoom = 2.0f; // 0.05
    frame();
    EXPECT_EQ(time_texts().at(0), " 2");
    expect_time_label(" 2", 2.0 / 40.0 - 0.015 / 2.0, -0.03);
    zoom = 3.0f; // 0.075
    frame();
    EXPECT_EQ(time_texts().at(0), " 1");
}

TEST_F(Labels, WiderWindowBringsBackThinnedSeconds) {
    fill_ranges(0, 40, 100, 5000);
    gCamera.viewWidth = 900;
    gCamera.viewHeight = 900;
    frame();
    EXPECT_EQ(time_texts().at(0), " 2");
    expect_time_label(" 2", 2.0 / 40.0 - 0.015 / 2.0, -0.03);
}

TEST_F(Labels, TenthsWhereTheAnalysisIsShorterThanASecond) {
    fill_ranges(0, 0.5f, 100, 5000);
    frame();
    EXPECT_EQ(time_texts(), (Texts{"0.1", "0.2", "0.3", "0.4", "0.5"}));
    expect_time_label("0.1", 0.2 - 0.015, -0.06);
    expect_time_label("0.4", 0.8 - 0.015, -0.06);
}

TEST_F(Labels, NoTenthsAtExactlyOneSecond) {
    fill_ranges(0, 1.0f, 100, 5000);
    frame();
    EXPECT_EQ(time_texts(), (Texts{" 1"}));
    expect_time_label(" 1", 1.0 - 0.015, -0.06);
}

TEST_F(Labels, TimeLabelsCountFromTheAnalysisStart) {
    fill_ranges(2, 12, 100, 5000);
    frame();
    EXPECT_EQ(time_texts().at(0), " 1");
    expect_time_label(" 1", 0.1 - 0.015, -0.06);
}

TEST_F(Labels, PositionThatIsNotFiniteShowsNothing) {
    draw_label(0.0, -std::numeric_limits<double>::infinity(), 0.0, "x");
    draw_label(std::nan(""), 0.0, 0.0, "x");
    draw_label(0.0, 0.0, std::numeric_limits<double>::infinity(), "x");
    EXPECT_TRUE(recorder().labels.empty());
    draw_label(0.0, 0.0, 0.0, "x");
    EXPECT_EQ(label_texts(), (Texts{"x"}));
}
