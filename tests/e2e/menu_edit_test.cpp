// The entries of "Edit": partials split, joined, extended, merged and removed, and the picture
// of the store afterwards.

#include "tests/e2e/menu_test.h"

namespace {

constexpr double high = 0.8, middle = 0.48;

class MenuEdit : public MenuTest {
  protected:
    /// The selection is gone from the window.
    void expect_cleared() {
        expect_count(green, 0);
        EXPECT_EQ(picture.count(sweep_colour), 0);
        EXPECT_EQ(picture.count(rgb(1.0, 0.9, 0.0)), 0);
        EXPECT_EQ(picture.count(dot), 15);
    }

    void find(double x, double y, const std::string &text) {
        click(x, y);
        expect_said(text);
    }
};

const std::string extend_question =
    tag + "Edit:  Extend...\t numfound = 1\nQuillGrove > Enter additionl points:\n             ";

} // namespace

TEST_F(MenuEdit, SplitAndJoin) {
    begin("-fb");
    find(0.5, high, "##FOUND: 0  2\n");
    find(0.75, high, "##FOUND: 0  3\n##FOUN2: 0  2\n");
    choose("Edit/Split");
    expect_said("Edit:  Split\t Split\n");
    // -6, -18, -90 dB before the cut, -24, -90 behind it; -6 is the loudest now.
    expect_colour(0.625, high, background);
    expect_colour(0.125, high, contour(0.0, -12.0));
    expect_colour(0.375, high, contour(-12.0, -84.0));
    expect_colour(0.875, high, contour(-18.0, -84.0));
    expect_count(dot, 15);
    find(0.5, high, "##FOUND: 4  2\n");
    find(0.75, high, "##FOUND: 5  0\n##FOUN2: 4  2\n");
    choose("Edit/Join");
    expect_said("Edit:  Join\t \t Joining partials 5 and 4\n");
    // -6, -6, -12, -18, -90 dB.
    expect_colour(0.625, high, contour(-6.0, -12.0));
    expect_colour(0.125, high, contour(0.0, 0.0));
    expect_colour(0.375, high, contour(0.0, -6.0));
    expect_count(dot, 15);
    find(0.5, high, "##FOUND: 4  2\n");
}

TEST_F(MenuEdit, RefusedSplitsAndJoins) {
    begin("-fb");
    choose("Edit/Split");
    expect_said("Edit:  Split\t Unacceptable Selection for: Split\n");
    choose("Edit/Join"); // silent
    expect_said("Edit:  Join\t \t ");
    find(0.25, high, "##FOUND: 0  1\n");
    find(0.75, high, "##FOUND: 0  3\n##FOUN2: 0  1\n");
    look();
    const Image two_found = picture;
    choose("Edit/Split");
    expect_said("Edit:  Split\t Unacceptable Selection for: Split\n");
    choose("Edit/Join");
    expect_said("Edit:  Join\t \t INVALID SELECTION\n");
    expect_picture(two_found);
}

TEST_F(MenuEdit, ExtendByANumber) {
    begin("-fb");
    find(0.25, 0.1, "##FOUND: 4  1\n");
    expect_dialogue("Edit/Extend...", "\n2\n",
                    extend_question + "EXTEND3d: Implementation in progress\n"
                                      "Appending 2 new points to partial #4\n"
                                      "1\t2\t4\t0.500000\n"
                                      "3\t0.500000\t250.000000\t0.000000\t-45.000000\n\n"
                                      "--temp--> 0.000000\t250.000000\t-45.000000\t0.000000\n"
                                      "--temp--> 0.500000\t250.000000\t-45.000000\t0.000000\n"
                                      "--temp--> 1.000000\t250.000000\t-45.000000\t0.000000\n"
                                      "--temp--> 1.500000\t250.000000\t-120.000000\t0.000000\n");
    expect_count(dot, 17);
    expect_colour(0.5, 0.1, dot);
    expect_colour(0.75, 0.1, dot);
    expect_colour(0.375, 0.1, contour(-45.0, -45.0));
    expect_colour(0.625, 0.1, contour(-45.0, -120.0));
}

TEST_F(MenuEdit, ExtendCancelledAndRefused) {
    begin("-fb");
    expect_dialogue("Edit/Extend...", "\n", tag + "Edit:  Extend...\t "); // nothing found
    find(0.25, 0.1, "##FOUND: 4  1\n");
    look();
    const Image one_found = picture;
    expect_dialogue("Edit/Extend...", "\n-c\n", extend_question + "Command cancelled\n");
    expect_picture(one_found);
    find(0.5, middle, "##FOUND: 1  2\n##FOUN2: 4  1\n");
    // The end of the last reply's line is still to be dropped: no return is waited for.
    expect_dialogue("Edit/Extend...", "",
                    tag + "Edit:  Extend...\t numfound = 2\nInvalid selection\n");
    expect_cleared(); // the closing of the menu redraws
}

TEST_F(MenuEdit, MergeRefusedAndDone) {
    begin("-fb");
    choose("Edit/Merge");
    expect_said("Edit:  Merge\t Quillgrove> nothing selected\n");
    sweep(0.45, 0.75, 0.55, 0.85);
    expect_count(green, 1);
    choose("Edit/Merge");
    expect_said("Edit:  Merge\t MERGE\nInsufficient selection\n");
    expect_cleared(); // by the refresh
    sweep(0.45, 0.2, 0.55, 0.85);
    expect_count(green, 3);
    choose("Edit/Merge");
    expect_said("Edit:  Merge\t MERGE\nInvalid selection\n");
    expect_cleared();
    sweep(0.95, 0.75, 1.02, 1.02);
    expect_count(green, 2);
    choose("Edit/Merge");
    // -18 and -60 dB, then -90 and -90 dB, added as amplitudes.
    expect_said("Edit:  Merge\t MERGE\nOne: 3\tTwo: 0\n3: 1.500000\t2.000000\n"
                "0: 0.000000\t2.000000\nCommon: 1.500000\t2.000000\nMean time = 0.357143\n"
                "npone = 2;\tnptwo = 2\n1.500000\t2000.000000\t-17.931278\n"
                "2.000000\t2000.000000\t-83.979401\n");
    // 2500 Hz is gone, 2000 Hz is the top.
    expect_colour(0.375, 1.0, loudest);
    expect_colour(0.375, 0.6, contour(-30.0, -30.0));
    expect_count(dot, 13);
}

TEST_F(MenuEdit, RemoveTheSelectedPartials) {
    begin("-fb");
    sweep(0.95, 0.75, 1.02, 1.02);
    expect_count(green, 2);
    choose("Edit/Remove");
    expect_said("Edit:  Remove\t Removing multiple selections: \nnumber of selections = 2\n");
    // 1200 Hz is the top and the loudest, at -30 dB.
    expect_colour(0.375, 1.0, loudest);
    expect_colour(0.375, 0.5, contour(-120.0, -120.0));
    expect_count(dot, 9);
}

TEST_F(MenuEdit, RemoveOnePoint) {
    begin("-fb");
    choose("Edit/Remove");
    expect_said("Edit:  Remove\t Unacceptable Selection for: Remove\n");
    find(0.5, middle, "##FOUND: 1  2\n");
    choose("Edit/Remove");
    expect_said("Edit:  Remove\t ");
    expect_count(dot, 14);
    expect_colour(0.5, middle, contour(-30.0, -48.0)); // now the middle of one segment
}

TEST_F(MenuEdit, NeedsFlatOrBreakpoints) {
    begin("");
    const Image start = picture;
    choose("Edit/Split");
    expect_said("Edit:  Split\t Invalid Selection Mode for: Split\n");
    choose("Edit/Join");
    expect_said("Edit:  Join\t \t Invalid Selection Mode for: Join\n");
    choose("Edit/Remove");
    expect_said("Edit:  Remove\t Invalid Selection Mode for: Remove\n");
    choose("Edit/Merge");
    expect_said("Edit:  Merge\t Invalid Selection Mode for: Merge\n");
    expect_dialogue("Edit/Extend...", "\n",
                    tag + "Edit:  Extend...\t Invalid Selection Mode for: Extend\n");
    expect_picture(start);
}
