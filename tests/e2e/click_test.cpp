// Clicks: presses of the left button without horizontal motion, which find single breakpoints.

#include "tests/e2e/breakpoints_test.h"

namespace {

class Click : public BreakpointsTest {
  protected:
    /// A pixel some way off a point's dot.
    Spot near_to(PointName name, int right, int down) const {
        const Spot dot = at(name);
        return {dot.x + right, dot.y + down};
    }
};
ON_BOTH_AXES(Click);

class ClickAtOneScale : public BreakpointsTest {};
INSTANTIATE_TEST_SUITE_P(Flat, ClickAtOneScale, testing::Values(FrequencyAxis::linear), axis_name);

const Rgb marker = rgb(1.0, 0.9, 0.0);
const Rgb selected_dot = rgb(0.0, 0.75, 0.0);

constexpr int marker_area = 4; // pixels: one more than the dot's size, both ways

// Sweeps and clicks reach 0.04 s here, 2 % of the end time: 6.9 pixels.
constexpr int within_reach = 5, out_of_reach = 9;

} // namespace

TEST_P(Click, FindsAPoint) {
    open();
    const Image keys = keys_line(), view = view_line(), store = store_line();
    click(near_to({1, 2}, 3, 6));
    expect_points({}, {{1, 2}});
    expect_said("##FOUND: 1  2\n");
    EXPECT_EQ(picture.count(marker), marker_area);
    EXPECT_EQ(picture.count(selected_dot), 0);
    EXPECT_NE(view_line(), view) << "the found point is not described";
    EXPECT_EQ(keys_line(), keys);
    EXPECT_EQ(store_line(), store);
}

TEST_P(Click, FindsAPairAndKeepsTheLastTwo) {
    open();
    click(at({0, 2}));
    expect_points({}, {{0, 2}});
    const Image one_point = view_line();
    click(at({1, 3}));
    expect_points({}, {{1, 3}, {0, 2}});
    EXPECT_EQ(picture.count(marker), 2 * marker_area);
    EXPECT_NE(view_line(), one_point);
    expect_said("##FOUND: 0  2\n##FOUND: 1  3\n##FOUN2: 0  2\n");
    click(at({2, 1}));
    expect_points({}, {{2, 1}, {1, 3}});
    EXPECT_EQ(picture.count(marker), 2 * marker_area);
    expect_said("##FOUND: 0  2\n"
                "##FOUND: 1  3\n##FOUN2: 0  2\n"
                "##FOUND: 2  1\n##FOUN2: 1  3\n");
}

TEST_P(ClickAtOneScale, DescribesBothPoints) {
    open();
    stretch(900, 450);
    click(at({1, 2}));
    expect_points({}, {{1, 2}});
    const Image of_one = view_line();
    // As in a window of twice the width, what tells of a pair goes far beyond one point's text.
    const Spot right_half_top = {600, 0}, corner = {900, 20};
    click(at({1, 3}));
    expect_points({}, {{1, 3}, {1, 2}});
    EXPECT_TRUE(of_one.part(right_half_top, corner).blank());
    EXPECT_FALSE(view_line().part(right_half_top, corner).blank());
}

TEST_P(Click, OnTheSamePointAgainMakesNoPair) {
    open();
    click(at({1, 2}));
    click(near_to({1, 2}, -2, 3));
    expect_said("##FOUND: 1  2\n##FOUND: 1  2\n");
    expect_points({}, {{1, 2}});
    EXPECT_EQ(picture.count(marker), marker_area);
    click(at({0, 3}));
    expect_points({}, {{0, 3}, {1, 2}});
    expect_said("##FOUND: 1  2\n##FOUND: 1  2\n##FOUND: 0  3\n##FOUN2: 1  2\n");
}

TEST_P(Click, FindsNothingFarInTimeOrWithShiftOrCtrl) {
    open();
    click(at({0, 2}), {"shift"});
    click(at({1, 2}), {"ctrl"});
    click(at(0.75, 1200));
    click(near_to({1, 2}, out_of_reach, 0));
    click(near_to({1, 2}, -out_of_reach, 0));
    click(near_to({1, 3}, within_reach, 0));
    expect_points({}, {{1, 3}});
    expect_said("##FOUND: 1  3\n");
}

TEST_P(Click, TakesTheNearestInFrequencyHoweverFar) {
    open();
    click(at(1.0, 270)); // far below the lowest partial there
    expect_points({}, {{2, 2}});
    click(near_to({0, 4}, 0, -4)); // between two partials of that time, nearer to the lower one
    expect_points({}, {{0, 4}, {2, 2}});
    expect_said("##FOUND: 2  2\n##FOUND: 0  4\n##FOUN2: 2  2\n");
}

TEST_P(Click, MayMoveUpAndDown) {
    open();
    sweep(near_to({2, 1}, 2, 0), near_to({0, 1}, 2, 0));
    expect_points({}, {{2, 1}}); // the place of the press counts
    EXPECT_EQ(picture.count(selected_dot), 0);
    expect_said("##FOUND: 2  1\n");
}

TEST_P(Click, LeavesASelectionAlone) {
    open();
    sweep(at(0.8, 2250), at(1.2, 850));
    expect_points({{0, 2}, {1, 2}});
    click(near_to({1, 2}, 2, 2));
    expect_points({{0, 2}, {1, 2}}, {{1, 2}});
    click(near_to({2, 3}, 2, 2), {"alt"}); // deselects in a rectangle of no width, and finds
    expect_points({{0, 2}, {1, 2}}, {{2, 3}, {1, 2}});
    sweep(at(0.3, 2250), at(0.7, 850)); // an ordinary sweep again
    expect_points({{0, 1}, {0, 2}, {1, 1}, {1, 2}}, {{2, 3}, {1, 2}});
    expect_said("##FOUND: 1  2\n##FOUND: 2  3\n##FOUN2: 1  2\n");
}
