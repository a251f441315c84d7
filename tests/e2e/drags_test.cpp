// The editing drags of the middle button, and the staff with its clefs over the analysis.

#include "tests/e2e/breakpoints_test.h"

#include <cmath>

namespace {

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
};
ON_BOTH_AXES(Drags);

const Rgb marker = rgb(1.0, 0.9, 0.0);
const Rgb selected_dot = rgb(0.0, 0.75, 0.0);

constexpr int up = 30; // pixels

/// The staff's colour over the background.
Rgb staff_colour() {
    const auto over = [](double front, double back) { return 0.55 * front + 0.45 * back; };
    return rgb(over(0.29, 0.0), over(0.27, 0.0), over(0.3, 0.1));
}

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
    expect_colour(at(1.13, 440.0 * 1.5874010519681996), staff_colour());
    const Image staff = picture;
    ASSERT_TRUE(hands->key("shift+s", {200, 200}));
    if (GetParam() == FrequencyAxis::logarithmic) {
        expect_change(staff);
        const Spot fs = at(0.1, 440.0 / 1.189207115002721);
        EXPECT_TRUE(picture.holds({fs.x + 8, fs.y}, staff_colour(), 3)); // the bowl's right side
    }
    ASSERT_TRUE(hands->key("s", {200, 200}));
    picture = screen.wait_for(window, [&](const Image &image) { return image == plain; });
    EXPECT_EQ(picture, plain); // without the staff no clefs
}
