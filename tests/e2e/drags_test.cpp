// The editing drags of the middle button, and the staff with its clefs over the analysis.

#include "tests/e2e/breakpoints_test.h"

#include <cmath>
#include <vector>

namespace {

constexpr int up = 30;             // pixels
constexpr double lowest = 250.0;   // Hz, of the tones
constexpr double highest = 2500.0; // Hz

constexpr double staff[] = {97.999,  123.471, 146.832, 174.614, 220.0,
                            329.628, 391.995, 493.883, 587.330, 698.456}; // Hz
constexpr double treble_anchor = 369.994;                                 // Hz

/// The staff's colour over the background.
Rgb staff_colour() {
    const auto over = [](double front, double back) { return 0.55 * front + 0.45 * back; };
    return rgb(over(0.29, 0.0), over(0.27, 0.0), over(0.3, 0.1));
}

class Drags : public BreakpointsTest {
  protected:
    /// A drag of the middle button; the first step already moves the points.
    void drag(Spot from, Spot to, const Modifiers &modifiers = {}) {
        ASSERT_TRUE(hands->drag(Button::middle, from, to, modifiers));
    }

    /// Waits until the pixel has this colour.
    void expect_colour(Spot where, const Rgb &colour, int reach = 1) {
        const bool shown = wait_until(Duration(5000), [&] {
            picture = screen.capture(window);
            return picture.holds(where, colour, reach);
        });
        EXPECT_TRUE(shown) << where.x << ", " << where.y << ": " << picture.at(where);
    }

    /// Waits until the window has stopped looking like this.
    void expect_change(const Image &earlier) {
        picture = screen.wait_for(window, [&](const Image &image) { return !(image == earlier); });
        EXPECT_FALSE(picture == earlier);
    }

    /// Every staff line that this view shows stands at its height, and no other does. Looks down
    /// a column that neither points, ticks nor clefs touch.
    void expect_staff_lines() const {
        std::vector<int> rows;
        for (const double line : staff) {
            if (GetParam() == FrequencyAxis::linear || line > lowest) {
                rows.push_back(at(1.13, line).y);
            }
        }
        std::vector<int> shown;
        for (int y = picture.height - 1; y >= 0; --y) {
            if (near(picture.at({at(1.13, lowest).x, y}), staff_colour())) {
                shown.push_back(y);
            }
        }
        ASSERT_EQ(shown.size(), rows.size());
        for (size_t k = 0; k < rows.size(); ++k) {
            EXPECT_NEAR(shown[k], rows[k], 1) << staff[k];
        }
    }

    /// The staff's colour at a place of a clef's grid, given the grid's unit and origin in the
    /// scene.
    bool inked(double x, double y, double unit, double left, double foot) const {
        return picture.holds(spot(left + x * unit, foot + y * 0.008), staff_colour(), 0);
    }
};
ON_BOTH_AXES(Drags);

const Rgb marker = rgb(1.0, 0.9, 0.0);
const Rgb selected_dot = rgb(0.0, 0.75, 0.0);

} // namespace

TEST_P(Drags, AFoundPointThenASelection) {
    open();
    const PointName point = {1, 2};
    click(at(point));
    expect_points({}, {point});
    const Image told = view_line();
    drag(at(point), {at(point).x, at(point).y - up});
    expect_colour({at(point).x, at(point).y - up}, marker);
    EXPECT_FALSE(picture.holds(at(point), marker));
    EXPECT_NE(view_line(), told) << "the found point's values are told";
    // Time does not move, however far the pointer goes aside.
    drag({100, 200}, {180, 200});
    expect_colour({at(point).x, at(point).y - up}, marker);

    const PointName other = {2, 3};
    sweep({at(other).x - 9, at(other).y - 9}, {at(other).x + 9, at(other).y + 9});
    expect_colour(at(other), selected_dot);
    drag(at(other), {at(other).x, at(other).y - up}, {"shift"});
    expect_colour({at(other).x, at(other).y - up}, selected_dot, 3);
    EXPECT_FALSE(picture.holds(at(other), selected_dot));
    if (GetParam() == FrequencyAxis::logarithmic) {
        EXPECT_TRUE(program->expect("df = 0.0")); // each event says its step
    } else {
        expect_said("##FOUND: 1  2\n");
    }
}

TEST_P(Drags, StaffAndClefsByTheirKeys) {
    open();
    const Image plain = picture;
    ASSERT_TRUE(hands->key("s", {200, 200}));
    expect_change(plain);
    expect_colour(at(1.13, staff[9]), staff_colour());
    expect_staff_lines();
    const Image lines = picture;
    ASSERT_TRUE(hands->key("shift+s", {200, 200}));
    if (GetParam() == FrequencyAxis::logarithmic) {
        expect_change(lines);
        expect_staff_lines();
        // Both sides of the treble clef's bowl, and nothing beside it or in the middle.
        const double fs = std::log(treble_anchor / lowest) / std::log(highest / lowest);
        EXPECT_TRUE(inked(4.7, 0.8, 0.0064, 0.05, fs));
        EXPECT_TRUE(inked(-4.8, -0.2, 0.0064, 0.05, fs));
        EXPECT_FALSE(inked(8.0, 0.8, 0.0064, 0.05, fs));
        EXPECT_FALSE(inked(-2.6, -0.2, 0.0064, 0.05, fs));
        // The dots of the bass clef, whose line is not on show, about the foot of the axis.
        EXPECT_TRUE(inked(13.5, 2.5, 0.0055, 0.02, 0.0));
        EXPECT_TRUE(inked(13.5, -2.5, 0.0055, 0.02, 0.0));
        EXPECT_FALSE(inked(18.0, 2.5, 0.0055, 0.02, 0.0));
    }
    ASSERT_TRUE(hands->key("s", {200, 200}));
    picture = screen.wait_for(window, [&](const Image &image) { return image == plain; });
    EXPECT_EQ(picture, plain); // without the staff no clefs
    ASSERT_TRUE(hands->key("s", {200, 200}));
    expect_change(plain);
    // In the linear view the clefs' key has done nothing; in the log view they come back.
    EXPECT_EQ(picture == lines, GetParam() == FrequencyAxis::linear);
}
