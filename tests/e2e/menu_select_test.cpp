// The entries of "Select": which dots turn green.

#include "tests/e2e/menu_test.h"

namespace {

constexpr double middle = 0.48, high = 0.8;

using MenuSelect = MenuTest;

const std::string pick_questions = "Pick partials:\nsize  [<|>]  num_points\n"
                                   "start [<|>|time0] time1\nendt  [<|>|time0] time1\n> ";

} // namespace

TEST_F(MenuSelect, AllAndNone) {
    begin("-fb");
    const Image start = picture;
    choose("Edit/Select/All");
    expect_said("Select: All\t Select All\n");
    expect_count(green, 15);
    EXPECT_EQ(picture.count(dot), 0);
    choose("Edit/Select/None");
    expect_said("Select: None     ");
    expect_picture(start);
}

TEST_F(MenuSelect, LeftRightPartialAndInverted) {
    begin("-fb");
    sweep(0.45, 0.4, 0.55, 0.55);
    expect_count(green, 1);
    choose("Edit/Select/Left");
    expect_said("Select: Left\t ");
    expect_count(green, 2); // and the one at time 0, which the axis hides
    expect_colour(0.25, middle, green);
    choose("Edit/Select/Right");
    expect_said("Select: Right\t ");
    expect_count(green, 4);
    expect_colour(1.0, middle, green);
    sweep(0.7, 0.75, 0.8, 0.85);
    expect_count(green, 5);
    choose("Edit/Select/Partial");
    expect_said("Select: Partial(s)\t ");
    expect_count(green, 8);
    EXPECT_EQ(picture.count(dot), 7);
    choose("Edit/Select/None");
    expect_said("Select: None     ");
    expect_count(green, 0);
    sweep(0.45, 0.4, 0.55, 0.55);
    expect_count(green, 1);
    choose("Edit/Select/Partial Inverted");
    expect_said("Select: Partial Inverted\t ");
    expect_count(green, 3);
    expect_colour(0.5, middle, dot);
    choose("Edit/Select/All Inverted");
    expect_said("Select: All Inverted\t ");
    expect_count(green, 12);
    expect_colour(0.5, middle, green);
    EXPECT_EQ(picture.count(dot), 3);
}

TEST_F(MenuSelect, PickByTimesAndSizes) {
    begin("-fb");
    expect_dialogue("Edit/Select/Pick...", "-c\n", pick_questions + "Command cancelled\n");
    expect_dialogue("Edit/Select/Pick...", "size > 1\n",
                    pick_questions + "Pick by: size > 1 points\n");
    expect_dialogue("Edit/Select/Pick...", "start > 10\n", pick_questions + "Bad value\n");
    expect_dialogue("Edit/Select/Pick...", "sound\n",
                    pick_questions + "No matching criteria recognized\n");
    look();
    EXPECT_EQ(picture.count(green), 0);
    expect_dialogue("Edit/Select/Pick...", "start 1 1.75\n",
                    pick_questions + "Pick by: 1.000000 < start < 1.750000\n");
    expect_count(green, 2);
    expect_colour(0.75, 1.0, green);
    expect_colour(1.0, 1.0, green);
    expect_dialogue("Edit/Select/Pick...", "size < 3\n",
                    pick_questions + "Pick by: size < 3 points\n");
    expect_count(green, 3);
    expect_colour(0.25, 0.1, green);
    expect_dialogue("Edit/Select/Pick...", "size > 4\n",
                    pick_questions + "Pick by: size > 4 points\n");
    expect_count(green, 15);
}

TEST_F(MenuSelect, NeedsTheEditingMode) {
    begin("");
    const Image start = picture;
    choose("Edit/Select/All");
    expect_said("Select: All\t Switch to Editing Mode\n");
    choose("Edit/Select/Pick...");
    expect_said("Switch to Editing Mode\n");
    choose("Edit/Select/Left"); // a silent refusal
    expect_said("Select: Left\t ");
    expect_picture(start);
}

TEST_F(MenuSelect, FlatViewWithoutBreakpointsSelectsUnseen) {
    begin("-f");
    choose("Edit/Select/All Inverted");
    expect_said("Select: All Inverted\t ");
    choose("View/Breakpoints");
    expect_said("View: Breakpoints\t ");
    expect_count(green, 15);
    expect_colour(0.5, high, green);
}
