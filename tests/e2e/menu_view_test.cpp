// The entries of "View", "QuillGrove" and "Quit", and menus closed without a choice.

#include "tests/e2e/expected.h"
#include "tests/e2e/menu_rows.h"
#include "tests/e2e/menu_test.h"

namespace {

constexpr double level_time = 0.375; // between two points of one level
constexpr double high = 0.8, middle = 0.48, low = 0.24;

class MenuView : public MenuTest {
  protected:
    /// The picture of an open submenu.
    Image menu_picture(const std::string &way) {
        const WindowId menu = hands->open_menu(rows_of(way), {20, 20});
        EXPECT_NE(menu, 0u);
        const Image image = drawn(menu);
        EXPECT_TRUE(hands->close_menu({10, 10}));
        return image;
    }

    /// A picture of it may still be one of a moment before, on a busy machine.
    bool menu_shows(const std::string &way, const Image &wanted) {
        return wait_until(Duration(10000), [&] { return menu_picture(way) == wanted; });
    }

    /// A submenu is drawn when the pointer comes to another row, with the size of the drawing
    /// before; so its picture stands after a few of these moves.
    Image drawn(WindowId menu) {
        Image image;
        Image last;
        const bool stands = wait_until(Duration(8000), [&] {
            last = image;
            EXPECT_TRUE(hands->move_to_row(menu, 2) && hands->move_to_row(menu, 1));
            image = screen.capture(menu);
            return image == last && !image.blank();
        });
        EXPECT_TRUE(stands);
        return image;
    }

    /// The picture of the submenu "View" in a run that has just begun.
    Image start_picture(const std::string &options) {
        begin(options);
        return menu_picture("View");
    }

    static int rows(const Image &menu) {
        return (menu.height - 4) / 25;
    }
};

} // namespace

TEST_F(MenuView, FlatAndBackKeepsTheRotation) {
    begin("");
    const Image start = picture;
    ASSERT_TRUE(hands->drag(Button::left, {200, 200}, {260, 240}, {"alt"}));
    picture = screen.wait_for(window, [&](const Image &image) { return !(image == start); });
    look();
    const Image turned = picture;
    EXPECT_FALSE(turned == start);
    choose("View/Flat");
    expect_said("View: Flat\n");
    expect_colour(level_time, high, loudest);
    expect_colour(level_time, middle, contour(-30, -30));
    expect_colour(level_time, low, contour(-150, -150));
    choose("View/Flat");
    expect_said("View: Perspective\n");
    expect_picture(turned);
}

TEST_F(MenuView, EveryToggleTwice) {
    begin("-f");
    const Image start = picture;
    const Rgb axis = rgb(0.4, 0.32, 0.23);
    ASSERT_GT(start.count(axis), 300);
    choose("View/Axes");
    expect_said("View: Axes  ");
    expect_count(axis, 0);
    choose("View/Axes");
    expect_said("View: Axes  ");
    expect_picture(start);
    choose("View/Log Freq");
    expect_said("1\tView: Log Frequency\n");
    expect_colour(level_time, std::log10(8.0), loudest);
    expect_colour(level_time, std::log10(4.8), contour(-30, -30));
    expect_colour(level_time, high, background);
    choose("View/Log Freq");
    expect_said("0\tView: Lin Frequency\n");
    expect_picture(start);
    choose("View/Breakpoints");
    expect_said("View: Breakpoints\t ");
    expect_count(dot, 15);
    choose("View/Breakpoints");
    expect_said("View: Breakpoints\t ");
    expect_picture(start);
}

TEST_F(MenuView, EntryTextsFollowTheView) {
    const Image flat_lines = start_picture("-f");
    const Image flat_logarithmic_dots = start_picture("-fbl");
    choose("View/Flat");
    expect_said("View: Perspective\n");
    EXPECT_EQ(rows(menu_picture("View")), 3);
    choose("View/Flat");
    expect_said("View: Flat\n");
    EXPECT_TRUE(menu_shows("View", flat_logarithmic_dots));
    EXPECT_EQ(rows(flat_lines), 4);
    EXPECT_FALSE(flat_lines == flat_logarithmic_dots);
    begin("");
    choose("View/Flat");
    expect_said("View: Flat\n");
    EXPECT_TRUE(menu_shows("View", flat_lines));
    choose("View/Log Freq");
    choose("View/Breakpoints");
    expect_said("1\tView: Log Frequency\nView: Breakpoints\t ");
    EXPECT_TRUE(menu_shows("View", flat_logarithmic_dots));
}

TEST_F(MenuView, AboutTellsProgramAndMachine) {
    begin("-f");
    const Image start = picture;
    choose("QuillGrove");
    const std::string dashes = "---------------------------------------------\n";
    EXPECT_TRUE(wait_until(Duration(5000), [&] {
        program->listen(Duration(50));
        return program->output().ends_with("\n" + dashes);
    }));
    const std::string text = program->output();
    const size_t at = text.find("Quillgrove 0.89b5 on ");
    ASSERT_NE(at, std::string::npos) << text;
    int cores = 0;
    ASSERT_EQ(std::sscanf(text.c_str() + at, "Quillgrove 0.89b5 on %d-phys.", &cores), 1);
    EXPECT_GE(cores, 1);
    EXPECT_LE(cores, processor_count());
    expect_said(dashes + "Quillgrove 0.89b5 on " + std::to_string(cores) + "-phys. " +
                std::to_string(processor_count()) + "-log.CPU " + brand() + "\n" + dashes);
    expect_picture(start);
}

TEST_F(MenuView, QuitEndsWell) {
    begin("-f");
    choose("Quit");
    EXPECT_EQ(program->exit_status(), 0);
    expect_said("Quillgrove QUIT\n");
}

TEST_F(MenuView, ClosingWithoutAChoiceFindsNoPointAndEndsNoSweep) {
    begin("-fb");
    click(0.25, high);
    expect_said("##FOUND: 0  1\n");
    look();
    const Image one_found = picture;
    ASSERT_NE(hands->open_menu(rows_of("Process/Shift"), spot(0.6, 0.9)), 0u);
    ASSERT_TRUE(hands->close_menu(spot(0.5, middle)));
    expect_picture(one_found);
    expect_said("");
    sweep(0.45, 0.75, 0.8, 0.85);
    expect_count(green, 2);
    look();
    const Image swept = picture;
    ASSERT_NE(hands->open_menu({}, spot(0.6, 0.9)), 0u);
    ASSERT_TRUE(hands->close_menu(spot(0.5, middle))); // on a breakpoint, left of the menu
    expect_picture(swept);
    expect_said("");
    // The sweep after that is a whole one again.
    sweep(0.45, 0.2, 0.55, 0.28);
    expect_count(green, 3);
}

TEST_F(MenuView, ModifiersAreTold) {
    begin("-f");
    choose("View/Axes", {"shift"});
    expect_said("SHIFT\nView: Axes  ");
    choose("View/Axes", {"ctrl"});
    expect_said("CTRL\nView: Axes  ");
    choose("View/Axes", {"alt"});
    expect_said("ALT\nView: Axes  ");
    choose("View/Axes", {"ctrl", "shift"}); // a combination counts as none
    expect_said("View: Axes  ");
}
