// The four views of a small store: places and colours of contours, dots and axes.

#include "tests/e2e/expected.h"
#include "tests/e2e/window_test.h"

namespace {

const Rgb background = rgb(0.0, 0.0, 0.1);
const Rgb dot = rgb(0.7, 0.0, 0.3);
const Rgb axis = rgb(0.4, 0.32, 0.23);
const Rgb label = rgb(0.6, 0.1, 0.2);
const Rgb mark = rgb(0.4, 0.25, 0.45);

// Contour colours at the peak, 30 and 150 dB below it.
const Rgb loudest = rgb(0.42, 0.585, 0.56);
const Rgb below_30 = rgb(0.0, 0.455, 0.49);
const Rgb below_150 = rgb(0.0, 0.0, 0.21);

// Scene X: the middle of the stretch of level contours, and an instant between two breakpoints
// of falling level.
constexpr double level_time = 0.375;
constexpr double falling_time = 0.625;

// Scene Y of the three long partials: of 2500 Hz, and by octaves over 250 Hz.
constexpr double high = 0.8, middle = 0.48, low = 0.24;
const double log_high = std::log10(8.0), log_middle = std::log10(4.8), log_low = std::log10(2.4);

class Views : public WindowTest {
  protected:
    void expect_line(double x, double y, const Rgb &colour, double z = 0.0) {
        const Spot at = spot(x, y, z);
        EXPECT_TRUE(near(picture.at(at), colour))
            << "at " << at.x << ", " << at.y << ": " << picture.at(at);
        EXPECT_EQ(picture.at({at.x, at.y - 3}), background);
        EXPECT_EQ(picture.at({at.x, at.y + 3}), background);
    }

    void expect_level_lines(double y_high, double y_middle, double y_low, double depth) {
        expect_line(level_time, y_high, loudest);
        expect_line(level_time, y_middle, below_30, -0.1 * depth);
        expect_line(level_time, y_low, below_150, -0.5 * depth);
    }
};

} // namespace

TEST_F(Views, FlatLinear) {
    show("-f");
    EXPECT_EQ(picture.width, 450);
    EXPECT_EQ(picture.height, 450);
    expect_level_lines(high, middle, low, 0.0);
    EXPECT_EQ(picture.count(dot), 0);
}

TEST_F(Views, FlatLogarithmic) {
    show("-fl");
    expect_level_lines(log_high, log_middle, log_low, 0.0);
}

TEST_F(Views, PerspectiveLinear) {
    show("");
    expect_level_lines(high, middle, low, 1.0);
}

TEST_F(Views, PerspectiveLogarithmic) {
    show("-l");
    expect_level_lines(log_high, log_middle, log_low, 1.0);
}

TEST_F(Views, DepthMovesQuietLinesTowardTheMiddle) {
    show("");
    // The quiet partial ends 150 dB below the peak, half a unit behind the square.
    ASSERT_GT(spot(0.99, low).x, spot(0.999, low, -0.5).x);
    EXPECT_EQ(pixel(0.99, low), background);
    EXPECT_TRUE(near(pixel(0.999, low, -0.5), below_150)) << pixel(0.999, low, -0.5);
}

TEST_F(Views, ContoursBlendBetweenTheirPoints) {
    show("-f");
    // From -30 to -48 dB; the blend at the middle is the colour of -39 dB, as the law is linear.
    EXPECT_TRUE(near(pixel(falling_time, middle), rgb(0.0, 0.32 * 1.3, 0.67 * 0.7), 2))
        << pixel(falling_time, middle);
}

TEST_F(Views, DotsLieOverTheContours) {
    show("-fb");
    for (const double x : {0.25, 0.5, 0.75, 1.0}) {
        for (const double y : {high, middle, low}) {
            EXPECT_TRUE(near(pixel(x, y), dot)) << x << ", " << y << ' ' << pixel(x, y);
        }
    }
    EXPECT_TRUE(near(pixel(level_time, high), loudest));
    EXPECT_TRUE(near(pixel(0.75, 1.0), dot));
    EXPECT_TRUE(near(pixel(0.25, 0.1), dot));
    EXPECT_EQ(picture.count(dot), 15); // all but the four at time 0, where the axis came first
}

TEST_F(Views, DotsOfTheLogarithmicView) {
    show("-fbl");
    EXPECT_TRUE(near(pixel(0.5, log_high), dot));
    EXPECT_TRUE(near(pixel(0.5, log_middle), dot));
    EXPECT_TRUE(near(pixel(0.5, log_low), dot));
    EXPECT_TRUE(near(pixel(0.75, 1.0), dot));
}

TEST_F(Views, PerspectiveShowsNoDots) {
    show("-b");
    expect_level_lines(high, middle, low, 1.0);
    EXPECT_EQ(picture.count(dot), 0);
}

TEST_F(Views, PointerMarkStandsAtTheOriginWithBreakpoints) {
    show("-fb");
    EXPECT_TRUE(picture.holds(spot(0.0, 0.0), mark, 2));
}

TEST_F(Views, NoPointerMarkWithoutBreakpoints) {
    show("-f");
    EXPECT_EQ(picture.count(mark), 0);
}

TEST_F(Views, AxesAndLabels) {
    show("-f");
    EXPECT_TRUE(near(pixel(0.0, 0.3), axis)) << pixel(0.0, 0.3);
    EXPECT_TRUE(picture.holds(spot(0.33, 0.0), axis)) << pixel(0.33, 0.0);
    EXPECT_TRUE(picture.holds(spot(-0.007, 0.4), axis)); // the tick of 1 kHz
    EXPECT_TRUE(picture.holds(spot(0.5, -0.012), axis)); // the tick of 1 s
    EXPECT_GT(picture.count(label), 20);
}

TEST_F(Views, WindowTitleNamesProgramAndFile) {
    folder.write("two words.pt", tones_file());
    start({"two words.pt", "-f"}, "two words.pt");
    EXPECT_EQ(screen.windows("Quillgrove: two words.pt").size(), 1u);
    EXPECT_TRUE(screen.windows("QuillGrove").empty());
}

TEST_F(Views, WindowStandsAtItsStartPlace) {
    show("-f");
    const Frame place = screen.frame(window);
    EXPECT_EQ(place.x, 200);
    EXPECT_EQ(place.y, 50);
}

TEST_F(Views, ResizingStretchesThePicture) {
    show("-fb");
    ASSERT_TRUE(hands->resize(800, 500));
    look();
    ASSERT_EQ(picture.width, 800);
    ASSERT_EQ(picture.height, 500);
    expect_level_lines(high, middle, low, 0.0);
    EXPECT_TRUE(near(pixel(0.5, middle), dot));
    // Of one pixel still: r is the root of (800 / 450)^2 + (500 / 450)^2, about 2.1.
    const Spot at = spot(0.5, middle);
    EXPECT_FALSE(near(picture.at({at.x + 1, at.y}), dot));
    EXPECT_FALSE(near(picture.at({at.x - 1, at.y}), dot));
}

TEST_F(Views, PointsGrowWithTheWindow) {
    show("-fb");
    ASSERT_TRUE(hands->resize(1200, 1300)); // r is about 3.93: size 1
    look();
    const int small = picture.count(dot);
    ASSERT_TRUE(hands->resize(1250, 1300)); // r is about 4.01: size 2
    wait_until(Duration(10000), [&] {
        picture = screen.capture(window);
        return picture.count(dot) > 2 * small;
    });
    EXPECT_GT(picture.count(dot), 2 * small);
}
