// Drags of the left button with a modifier key: pan, zoom and rotation, and picking afterwards.

#include "tests/e2e/breakpoints_test.h"

namespace {

class ViewDrag : public BreakpointsTest {};
ON_BOTH_AXES(ViewDrag);

class LongZoom : public BreakpointsTest {};
INSTANTIATE_TEST_SUITE_P(Flat, LongZoom, testing::Values(FrequencyAxis::linear), axis_name);

const Rgb dot = rgb(0.7, 0.0, 0.3);
const Rgb selected_dot = rgb(0.0, 0.75, 0.0);

// Contour colours at the peak, 30 and 150 dB below it.
const Rgb loudest = rgb(0.42, 0.585, 0.56);
const Rgb below_30 = rgb(0.0, 0.455, 0.49);
const Rgb below_150 = rgb(0.0, 0.0, 0.21);

/// Runs without a choice of axis.
class Perspective : public WindowTest {
  protected:
    /// The stretches of one level of the three long partials, at their depths, in this pose.
    bool lines_stand() const {
        return picture.holds(spot(0.375, 0.8), loudest) &&
               picture.holds(spot(0.375, 0.48, -0.1), below_30) &&
               picture.holds(spot(0.375, 0.24, -0.5), below_150);
    }

    void expect_lines() {
        wait_until(Duration(5000), [&] {
            picture = screen.capture(window);
            return lines_stand();
        });
        EXPECT_TRUE(lines_stand());
    }

    void rotate(Spot from, Spot to) {
        const Spot first = Hands::first_step(from, to);
        ASSERT_TRUE(hands->drag(Button::left, from, to, {"alt"}));
        pose.about_x -= (to.y - first.y) * 180.0 / 500.0;
        pose.about_y += (to.x - first.x) * 180.0 / 500.0;
    }

    /// The help line that tells of keys for a selection.
    Image keys_line() const {
        return picture.part({10, 37}, {440, 47});
    }
};

} // namespace

TEST_P(ViewDrag, PanMovesThePictureAndKeepsTheSelection) {
    open();
    const Spot from = at(0.8, 2250), to = at(1.2, 850);
    sweep(from, to);
    expect_points({{0, 2}, {1, 2}});
    const Image view = view_line(), store = store_line();
    pan({150, 200}, {230, 240});
    expect_points({{0, 2}, {1, 2}});
    pan({230, 240}, {150, 200});
    EXPECT_NEAR(pose.right, 0.0, 1e-9);
    expect_points({{0, 2}, {1, 2}});
    expect_no_rectangle(from, to);
    EXPECT_EQ(view_line(), view);
    EXPECT_EQ(store_line(), store);
    expect_said("");
}

TEST_P(ViewDrag, ZoomGoesInToTheRightAndUpAndOutNoFurtherThanTheStart) {
    open();
    const Image view = view_line();
    zoom({100, 200}, {160, 200});
    expect_points({});
    EXPECT_NE(view_line(), view) << "the zoom that is shown did not change";
    zoom({100, 200}, {100, 180});
    EXPECT_NEAR(pose.aperture, 5.0 - 120.0 / 450.0, 1e-9);
    expect_points({});
    zoom({300, 100}, {100, 300}); // much further out than it was
    EXPECT_EQ(pose.aperture, 5.0);
    expect_points({});
    EXPECT_EQ(view_line(), view);
    zoom({100, 200}, {140, 180}); // in again, from the limit on
    expect_points({});
    expect_said("");
}

TEST_P(ViewDrag, SweepsAndClicksFollowPanAndZoom) {
    open();
    pan({200, 200}, {160, 260});
    zoom({100, 200}, {180, 180});
    expect_points({});
    sweep(at(1.3, 2250), at(2.1, 850));
    expect_points({{0, 3}, {0, 4}, {1, 3}, {1, 4}});
    click(at({2, 2}));
    expect_points({{0, 3}, {0, 4}, {1, 3}, {1, 4}}, {{2, 2}});
    sweep(at(1.8, 2250), at(2.1, 1550), {"alt"});
    expect_points({{0, 3}, {1, 3}, {1, 4}}, {{2, 2}});
    expect_said("##FOUND: 2  2\n");
}

TEST_P(ViewDrag, SweepsAndClicksFollowInANonSquareWindow) {
    open();
    stretch(800, 480);
    pan({200, 200}, {160, 260});
    zoom({100, 200}, {180, 180});
    expect_points({});
    const Spot from = at(0.3, 2250), to = at(1.1, 1550);
    sweep(from, to);
    expect_points({{0, 1}, {0, 2}});
    expect_rectangle(from, to);
    click(at({1, 4}));
    expect_points({{0, 1}, {0, 2}}, {{1, 4}});
    expect_said("##FOUND: 1  4\n");
}

TEST_P(ViewDrag, DotsReturnAtItsEnd) {
    open();
    sweep(at(0.8, 2250), at(1.2, 850));
    expect_points({{0, 2}, {1, 2}});
    ASSERT_TRUE(hands->press(Button::left, {150, 200}, {150, 240}, {"shift"}));
    wait_until(Duration(5000), [&] {
        picture = screen.capture(window);
        return picture.count(dot) + picture.count(selected_dot) == 0;
    });
    EXPECT_EQ(picture.count(dot), 0);
    EXPECT_EQ(picture.count(selected_dot), 0);
    ASSERT_TRUE(hands->let_go(Button::left, {"shift"}));
    pose.up = -30.0 / 450.0;
    expect_points({{0, 2}, {1, 2}});
}

TEST_P(LongZoom, GoesThroughZeroAndThePictureInverts) {
    open();
    zoom({10, 200}, {1134, 200}); // the pointer leaves the window, the drag goes on
    zoom({10, 200}, {1134, 200});
    ASSERT_LT(pose.aperture, -2.0);
    ASSERT_GT(at(0.5, 1200).x, at(1.5, 1200).x);
    // The box is twice as wide as the window now: what lies in its middle is in the picture.
    const auto shown = [&] {
        picture = screen.capture(window);
        return picture.holds(at({1, 2}), dot, 0);
    };
    EXPECT_TRUE(wait_until(Duration(5000), shown));
    const Spot middle = at({1, 2});
    sweep({middle.x - 30, middle.y - 30}, {middle.x + 30, middle.y + 30});
    const auto selected = [&] {
        picture = screen.capture(window);
        return picture.holds(at({1, 2}), selected_dot, 0);
    };
    EXPECT_TRUE(wait_until(Duration(5000), selected));
}

TEST_F(Perspective, AltRotatesAboutTheMiddle) {
    show("");
    expect_lines();
    const Image start = picture;
    rotate({200, 200}, {280, 160});
    ASSERT_FALSE(lines_stand()) << "the places hardly differ";
    expect_lines();
    rotate({200, 200}, {40, 320});
    expect_lines();
    rotate({200, 200}, {280, 120}); // and back
    wait_until(Duration(5000), [&] { return (picture = screen.capture(window)) == start; });
    EXPECT_EQ(picture, start);
}

TEST_F(Perspective, RotatesByMoreThanATurn) {
    show("");
    rotate({10, 200}, {1354, 200}); // 363 degrees, brought back to 3
    EXPECT_GT(pose.about_y, 360.0);
    expect_lines();
}

TEST_F(Perspective, PanAndZoomKeepTheRotation) {
    show("");
    rotate({200, 200}, {280, 160});
    expect_lines();
    ASSERT_TRUE(hands->drag(Button::left, {200, 200}, {240, 220}, {"shift"}));
    pose.right = 30.0 / 450.0;
    pose.up = -15.0 / 450.0;
    expect_lines();
    ASSERT_TRUE(hands->drag(Button::left, {200, 200}, {240, 200}, {"ctrl"}));
    pose.aperture = 5.0 - 60.0 / 450.0;
    expect_lines();
}

TEST_F(Perspective, ASweepSelectsUnseenWithBreakpoints) {
    show("-b");
    const Image keys = keys_line();
    const size_t told = program->output().size();
    ASSERT_TRUE(hands->click(Button::left, spot(0.5, 0.48))); // finds in the flat view only
    ASSERT_TRUE(hands->drag(Button::left, spot(0.4, 0.6), spot(0.6, 0.4)));
    wait_until(Duration(5000), [&] {
        picture = screen.capture(window);
        return keys_line() != keys;
    });
    EXPECT_NE(keys_line(), keys);
    EXPECT_EQ(picture.count(selected_dot), 0);
    EXPECT_EQ(program->output().substr(told), "");
}

TEST_F(Perspective, WithoutBreakpointsASweepShowsNothing) {
    show("-f");
    const Image start = picture;
    ASSERT_TRUE(hands->drag(Button::left, spot(0.4, 0.9), spot(0.6, 0.4)));
    ASSERT_TRUE(hands->click(Button::left, spot(0.5, 0.48)));
    // There and back, so that a frame was drawn after the sweep.
    ASSERT_TRUE(hands->drag(Button::left, {200, 200}, {280, 200}, {"shift"}));
    wait_until(Duration(5000), [&] { return (picture = screen.capture(window)) != start; });
    EXPECT_NE(picture, start);
    ASSERT_TRUE(hands->drag(Button::left, {280, 200}, {200, 200}, {"shift"}));
    wait_until(Duration(5000), [&] { return (picture = screen.capture(window)) == start; });
    EXPECT_EQ(picture, start);
}
