// The menu's tree: every entry in its place with its text and value, what the view flags change
// in it, how it is built and attached.
#include "interact/menu.h"

#include "display/view.h"
#include "store/window.h"
#include "tests/interact/menu_support.h"
#include "tests/support/console.h"

#include <set>

namespace {

const std::string head = "\"QuillGrove\" 0\n"
                         "\"View\"\n"
                         "  \"Axes\" 1\n";

const std::string tail = "\"Edit\"\n"
                         "  \"Select \"\n"
                         "    \"Left \" 5\n"
                         "    \"Right \" 6\n"
                         "    \"Partial \" 7\n"
                         "    \"All \" 8\n"
                         "    \"Partial Inverted \" 9\n"
                         "    \"All Inverted \" 10\n"
                         "    \"None \" 30\n"
                         "    \"Pick...\" 101\n"
                         "  \"Split\" 11\n"
                         "  \"Join\" 12\n"
                         "  \"Remove\" 13\n"
                         "  \"Extend...\" 14\n"
                         "  \"Merge\" 15\n"
                         "  \"Generate\"\n"
                         "    \"Replicate...\" 81\n"
                         "    \"Harmonics...\" 80\n"
                         "    \"Arbitrary...\" 82\n"
                         "\"Process\"\n"
                         "  \"Fade\"\n"
                         "    \"In\" 16\n"
                         "    \"Out\" 17\n"
                         "  \"Shift\"\n"
                         "    \"Gain...\" 18\n"
                         "    \"Pitch...\" 19\n"
                         "    \"Time...\" 20\n"
                         "  \"Scale...\" 21\n"
                         "  \"Mirror...\" 22\n"
                         "  \"Retro...\" 23\n"
                         "  \"Envelope...\" 37\n"
                         "\"Export\"\n"
                         "  \"Partials\"\n"
                         "    \"All...\" 24\n"
                         "    \"Selected...\" 25\n"
                         "  \"Cmix\"\n"
                         "    \"All...\" 34\n"
                         "    \"Selected...\" 35\n"
                         "  \"SPEAR\"\n"
                         "    \"All...\" 73\n"
                         "    \"Selected...\" 74\n"
                         "  \"SDIF\"\n"
                         "    \"All...\" 83\n"
                         "    \"Selected...\" 84\n"
                         "\"Synth\"\n"
                         "  \"All...\" 27\n"
                         "  \"Selected...\" 28\n"
                         "\"Play\"\n"
                         "  \"All\" 71\n"
                         "  \"Selected\" 72\n"
                         "  \"Zone\" 75\n"
                         "\"Quit\" 29\n";

using MenuTree = MenuTest;

TEST_F(MenuTree, Perspective) {
    EXPECT_EQ(menu_tree(), head + "  \"Flat\" 2\n  \"Log Freq\" 3\n" + tail);
}

TEST_F(MenuTree, EveryViewFlag) {
    for (int state = 0; state < 8; ++state) {
        flat = state & 1;
        logpos = state >> 1 & 1;
        bps = state >> 2 & 1;
        rebuild_menu();
        std::string view = flat != 0 ? "  \"3-D\" 2\n" : "  \"Flat\" 2\n";
        view += logpos != 0 ? "  \"Lin Freq\" 3\n" : "  \"Log Freq\" 3\n";
        if (flat != 0) {
            view += bps != 0 ? "  \"Contours\" 4\n" : "  \"Breakpoints\" 4\n";
        }
        EXPECT_EQ(menu_tree(), head + view + tail) << state;
    }
}

TEST_F(MenuTree, FlagsOfAnyValueCountAsSet) {
    flat = logpos = bps = 7;
    rebuild_menu();
    EXPECT_EQ(menu_tree(), head + "  \"3-D\" 2\n  \"Lin Freq\" 3\n  \"Contours\" 4\n" + tail);
}

TEST_F(MenuTree, ViewEntriesStandAtThePlaceOfTheirValue) {
    flat = 1;
    rebuild_menu();
    const auto &items = gl_double::recorder().menus.at(menu_of(1)).items;
    ASSERT_EQ(items.size(), 4u);
    for (int place = 1; place <= 4; ++place) {
        EXPECT_EQ(items[static_cast<size_t>(place) - 1].value, place);
    }
}

TEST_F(MenuTree, OneCallbackForEveryMenu) {
    const auto &menus = gl_double::recorder().menus;
    EXPECT_EQ(menus.size(), 15u);
    for (const auto &[number, menu] : menus) {
        EXPECT_EQ(menu.callback, menu_select);
    }
}

TEST_F(MenuTree, BuiltFromTheInnermostOutWithTheTopMenuLast) {
    std::set<int> built;
    int last = 0;
    for (const auto &[number, menu] : gl_double::recorder().menus) {
        for (const gl_double::MenuItem &item : menu.items) {
            EXPECT_TRUE(item.submenu == 0 || built.contains(item.submenu)) << item.text;
        }
        built.insert(number);
        last = number;
    }
    EXPECT_EQ(last, gl_double::recorder().attached.at(GLUT_RIGHT_BUTTON));
}

TEST_F(MenuTree, BuiltInTheOrderOfTheTree) {
    std::vector<std::string> first_entries;
    for (const auto &[number, menu] : gl_double::recorder().menus) {
        const gl_double::MenuItem *first = &menu.items.at(0);
        while (first->submenu != 0) {
            first = &gl_double::recorder().menus.at(first->submenu).items.at(0);
        }
        first_entries.push_back(first->text);
    }
    const std::vector<std::string> want = {
        "Axes",   "Left ",  "Replicate...", "Left ",  "In",     "Gain...", "In",        "All...",
        "All...", "All...", "All...",       "All...", "All...", "All",     "QuillGrove"};
    EXPECT_EQ(first_entries, want);
}

TEST_F(MenuTree, TopMenuIsCurrentAndAttachedToNothing) {
    gl_double::Recorder &r = gl_double::recorder();
    r.menus.clear();
    r.attached.clear();
    glutMenu();
    EXPECT_TRUE(r.attached.empty());
    ASSERT_TRUE(r.menus.contains(r.current_menu));
    EXPECT_EQ(r.menus.at(r.current_menu).items.at(0).text, "QuillGrove");
    EXPECT_EQ(r.menus.at(r.current_menu).items.back().text, "Quit");
}

TEST_F(MenuTree, StartUpAttachesItToTheRightButton) {
    gl_double::Recorder &r = gl_double::recorder();
    r.menus.clear();
    r.attached.clear();
    register_callbacks();
    ASSERT_EQ(r.attached.size(), 1u);
    EXPECT_EQ(menu_tree(), head + "  \"Flat\" 2\n  \"Log Freq\" 3\n" + tail);
}

TEST_F(MenuTree, EntriesReachTheirCommandsThroughTheTree) {
    bps = 1;
    const std::string text = printed([] {
        EXPECT_TRUE(gl_double::choose({"View", "Axes"}));
        EXPECT_TRUE(gl_double::choose({"Edit", "Select ", "All Inverted "}));
        EXPECT_TRUE(gl_double::choose({"Process", "Fade", "Out"}));
        EXPECT_FALSE(gl_double::choose({"View", "Breakpoints"}));
    });
    EXPECT_EQ(text,
              "View: Axes  Select: All Inverted\t Process: Fade: Out\t Quillgrove > Fade Out\n");
    EXPECT_EQ(flags(), (std::vector<std::string>{"1111", "111", "11", "1"}));
}

TEST_F(MenuTree, UnusedCallbackTellsItsName) {
    EXPECT_EQ(printed(null_select), "null_select\n");
}

} // namespace
