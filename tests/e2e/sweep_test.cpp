// Sweeps: rectangles drawn with the left button that select and deselect breakpoints.

#include "tests/e2e/breakpoints_test.h"

namespace {

class Sweep : public BreakpointsTest {};
ON_BOTH_AXES(Sweep);

// Frequencies between those of the partials, in Hz.
constexpr double above_high = 2250.0, above_middle = 1550.0, above_low = 850.0, above_none = 400.0;

const Rgb pointer_mark = rgb(0.4, 0.25, 0.45);
const Rgb selected_dot = rgb(0.0, 0.75, 0.0);

} // namespace

TEST_P(Sweep, SelectsWhatLiesInside) {
    open();
    const Image keys = keys_line(), view = view_line(), store = store_line();
    EXPECT_TRUE(picture.holds(spot(0.0, 0.0), pointer_mark, 2));
    const Spot from = at(0.8, above_high), to = at(1.7, above_low);
    sweep(from, to);
    expect_points({{0, 2}, {0, 3}, {1, 2}, {1, 3}});
    EXPECT_EQ(picture.count(selected_dot), 4);
    EXPECT_FALSE(picture.holds(spot(0.0, 0.0), pointer_mark, 2)) << "it goes far above the box";
    expect_rectangle(from, to);
    EXPECT_NE(keys_line(), keys) << "the keys for a selection are not shown";
    EXPECT_EQ(view_line(), view);
    EXPECT_EQ(store_line(), store);
    expect_said("");
}

TEST_P(Sweep, SweepsInAnyDirectionAddUp) {
    open();
    sweep(at(0.3, above_middle), at(0.7, above_low));
    expect_points({{1, 1}});
    sweep(at(1.7, above_none), at(1.3, above_low));
    expect_points({{1, 1}, {2, 3}});
    sweep(at(0.7, above_low), at(0.3, above_high)); // over a selected point again
    expect_points({{0, 1}, {1, 1}, {2, 3}});
    const Spot dot = at({1, 2});
    sweep({dot.x - 1, dot.y - 1}, {dot.x + 2, dot.y + 2}); // as small as this is no click
    expect_points({{0, 1}, {1, 1}, {1, 2}, {2, 3}});
    expect_said("");
}

TEST_P(Sweep, AltDeselects) {
    open();
    const Image keys = keys_line();
    sweep({4, 440}, {445, 15}); // from outside the box to outside it
    expect_points(all_points());
    const Image keys_for_selection = keys_line();
    EXPECT_NE(keys_for_selection, keys);

    sweep(at(0.8, above_high), at(1.7, above_none), {"alt"});
    expect_points({{0, 1}, {0, 4}, {1, 1}, {1, 4}, {2, 1}, {2, 4}, {3, 0}, {3, 1}});

    sweep({445, 15}, {4, 440}, {"alt"});
    expect_points({});
    EXPECT_EQ(picture.count(selected_dot), 0);
    EXPECT_EQ(keys_line(), keys_for_selection) << "the summary of a selection was cleared, too";
    sweep(at(0.8, above_middle), at(1.2, above_low)); // and the next sweep selects again
    expect_points({{1, 2}});
    expect_said("");
}

TEST_P(Sweep, OverEmptySpaceSelectsNothing) {
    open();
    const Image keys = keys_line();
    const Spot from = at(0.6, 1700), to = at(0.9, 1300);
    sweep(from, to);
    expect_rectangle(from, to);
    expect_points({});
    EXPECT_EQ(keys_line(), keys);
    sweep(from, at(1.1, above_low));
    expect_points({{1, 2}});
    expect_said("");
}

TEST_P(Sweep, RectangleStaysUntilTheViewIsDragged) {
    open();
    const Spot from = at(0.8, above_high), to = at(1.2, above_low);
    sweep(from, to);
    expect_rectangle(from, to);

    ASSERT_TRUE(hands->resize(540, 540));
    const auto grown = [](Spot spot) { return Spot{spot.x * 540 / 450, spot.y * 540 / 450}; };
    expect_rectangle(grown(from), grown(to));

    click(grown(to), {"shift"});
    expect_no_rectangle(grown(from), grown(to));
    expect_points({{0, 2}, {1, 2}});

    const Spot low_from = at(0.8, above_low), low_to = at(1.2, above_none);
    sweep(low_from, low_to);
    expect_rectangle(low_from, low_to);
    click(at({2, 3}), {"ctrl"});
    expect_no_rectangle(low_from, low_to);
    expect_points({{0, 2}, {1, 2}, {2, 2}});
    expect_said("");
}

TEST_P(Sweep, MapsANonSquareWindow) {
    open();
    stretch(800, 400);
    const Spot from = at(0.8, above_high), to = at(1.7, above_middle);
    sweep(from, to);
    expect_points({{0, 2}, {0, 3}});
    expect_rectangle(from, to);
    click(at({2, 4}));
    expect_points({{0, 2}, {0, 3}}, {{2, 4}});
    expect_said("##FOUND: 2  4\n");
}

TEST_P(Sweep, OtherButtonsSelectNothing) {
    open();
    const Spot from = at(0.8, above_high), to = at(1.2, above_low);
    ASSERT_TRUE(hands->click(Button::wheel_up, at({1, 1})));
    ASSERT_TRUE(hands->click(Button::wheel_down, at({1, 1})));
    ASSERT_TRUE(hands->drag(Button::middle, from, to));
    // Away from the menu that opens there: a pointer that races over its rows opens many submenus,
    // and some of them stay for ever.
    ASSERT_TRUE(hands->drag(Button::right, to, from));
    ASSERT_NE(screen.find("freeglut menu"), 0u);
    ASSERT_TRUE(hands->close_menu(at(0.25, above_low))); // away from all points
    sweep(at(1.3, above_low), at(1.7, above_none));
    expect_points({{2, 3}});
    EXPECT_EQ(picture.count(selected_dot), 1);
    expect_said("");
}
