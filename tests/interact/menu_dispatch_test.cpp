// How a menu value reaches its command: modifier lines, free values, the console opening, the
// announcement, the mode gate and its order with the requirements.
#include "interact/menu.h"

#include "display/view.h"
#include "tests/interact/menu_support.h"
#include "tests/support/child.h"

#include <climits>
#include <set>

namespace {

constexpr int shift = GLUT_ACTIVE_SHIFT;
constexpr int ctrl = GLUT_ACTIVE_CTRL;
constexpr int alt = GLUT_ACTIVE_ALT;
constexpr int num_lock = 8;

using MenuDispatch = MenuTest;

TEST_F(MenuDispatch, SingleModifiersAreTold) {
    EXPECT_EQ(command(26, "", 0), "default\n");
    EXPECT_EQ(command(26, "", shift), "SHIFT\ndefault\n");
    EXPECT_EQ(command(26, "", ctrl), "CTRL\ndefault\n");
    EXPECT_EQ(command(26, "", alt), "ALT\ndefault\n");
    EXPECT_EQ(command(1, "", alt), "ALT\nView: Axes  ");
}

TEST_F(MenuDispatch, CombinationsOfModifiersTellNothing) {
    for (const int keys : {shift | ctrl, shift | alt, ctrl | alt, shift | ctrl | alt}) {
        EXPECT_EQ(command(26, "", keys), "default\n") << keys;
    }
}

TEST_F(MenuDispatch, LocksAreNoModifiers) {
    EXPECT_EQ(command(26, "", num_lock), "default\n");
    EXPECT_EQ(command(26, "", num_lock | ctrl), "CTRL\ndefault\n");
}

TEST_F(MenuDispatch, FreeValuesDoNothing) {
    std::vector<int> free = {26, 31,  32,  33,   36,      76, 77, 78,
                             79, 102, 103, 1000, INT_MAX, -1, -2, INT_MIN};
    for (int value = 38; value <= 70; ++value) {
        free.push_back(value);
    }
    for (int value = 85; value <= 100; ++value) {
        free.push_back(value);
    }
    bps = 1;
    select_group({"1111", "000", "00", "0"});
    const structure::Snapshot before = structure::snapshot();
    for (const int value : free) {
        spoil_derived();
        EXPECT_EQ(command(value, "reply\n"), "default\n") << value;
        EXPECT_EQ(refreshed(), "") << value;
        EXPECT_EQ(unread(), "reply\n") << value;
    }
    fill_store(small_content());
    select_group({"1111", "000", "00", "0"});
    EXPECT_TRUE(structure::same_points(before, structure::snapshot()));
}

/// Every value that has a command, with its opening and what it prints first. In perspective
/// without breakpoints and with nothing selected, no reply waiting behind the opening.
struct Row {
    int value;
    bool open;
    const char *first; // what is printed, whole, up to a refusal
};

const Row refused_rows[] = {
    {8, false, "Select: All\t Switch to Editing Mode\n"},
    {101, false, "Switch to Editing Mode\n"},
    {11, false, "Edit:  Split\t Invalid Selection Mode for: Split\n"},
    {12, false, "Edit:  Join\t \t Invalid Selection Mode for: Join\n"},
    {13, false, "Edit:  Remove\t Invalid Selection Mode for: Remove\n"},
    {14, true, "Edit:  Extend...\t Invalid Selection Mode for: Extend\n"},
    {15, false, "Edit:  Merge\t Invalid Selection Mode for: Merge\n"},
    {16, false, "Process: Fade: In\t Invalid Selection Mode for: Fade In\n"},
    {17, false, "Process: Fade: Out\t Invalid Selection Mode for: Fade Out\n"},
    {18, true, "Process: Shift:\tGain\t Invalid Selection Mode for: Gain Shift\n"},
    {19, true, "Process: Shift:  Pitch\t Invalid Selection Mode for: Pitch Shift\n"},
    {20, true, "Process: Shift: Time\tInvalid Selection Mode for: Time Shift\n"},
    {21, true, "Process: Scale...  Invalid Selection Mode for: Scale\n"},
    {22, true, "Invalid Selection Mode for: Mirror\n"},
    {23, true, "Process: Retrogression \t Invalid Selection Mode for: Retro\n"},
};

std::string opened(const Row &row) {
    return (row.open ? prompt : "") + std::string(row.first);
}

TEST_F(MenuDispatch, GateRefusesOutsideSoftMode) {
    select_group({"1111", "111", "11", "1"}); // the selection plays no part
    find_points(0, 1);
    const structure::Snapshot before = structure::snapshot();
    for (const Row &row : refused_rows) {
        gl_double::recorder().redisplays = 0;
        EXPECT_EQ(command(row.value, "rest\n7 7 7\n"), opened(row));
        EXPECT_EQ(gl_double::recorder().redisplays, 0) << row.value;
        EXPECT_EQ(unread(), row.open ? "7 7 7\n" : "rest\n7 7 7\n") << row.value;
    }
    EXPECT_TRUE(structure::same_points(before, structure::snapshot()));
}

TEST_F(MenuDispatch, GateComesBeforeTheSelection) {
    for (const Row &row : refused_rows) {
        EXPECT_EQ(command(row.value, "\n"), opened(row)) << "nothing is selected or found";
    }
}

TEST_F(MenuDispatch, EitherViewFlagOpensTheGate) {
    for (const Row &row : refused_rows) {
        for (int state = 1; state < 4; ++state) {
            fill_store(small_content());
            reset_selection();
            flat = state & 1;
            bps = state >> 1 & 1;
            const std::string text = command(row.value, "\n");
            EXPECT_EQ(text.find("Invalid Selection Mode"), std::string::npos) << row.value;
            EXPECT_EQ(text.find("Switch to Editing"), std::string::npos) << row.value;
        }
    }
}

TEST_F(MenuDispatch, OpenRowsDropTheRestOfTheLineOnly) {
    const std::set<int> open = {14, 80, 81, 82, 18, 19, 20, 21, 22, 23,
                                37, 24, 25, 34, 35, 73, 74, 83, 84, 27};
    for (int value = 0; value <= 101; ++value) {
        if (value == 29) {
            continue; // quits
        }
        fill_store(small_content());
        reset_view();
        reset_selection();
        flat = 1;
        rebuild_menu();
        const std::string text = command(value, "\n");
        EXPECT_EQ(text.starts_with(prompt), open.contains(value)) << value;
    }
}

TEST_F(MenuDispatch, OpeningTakesALongLeftoverWhole) {
    bps = 1;
    select_group({"1111", "000", "00", "0"});
    command(18, std::string(10000, 'x') + " 1 2\n6\nnext\n");
    EXPECT_EQ(parray[0][0].amp, -14.0f);
    EXPECT_EQ(unread(), "\nnext\n");
}

TEST_F(MenuDispatch, OpeningTakesZeroBytes) {
    bps = 1;
    select_group({"1111", "000", "00", "0"});
    command(18, std::string("a\0b\xff\n6\n", 7));
    EXPECT_EQ(parray[0][0].amp, -14.0f);
}

TEST_F(MenuDispatch, SecondCommandDropsTheEndOfTheFirstOnesLine) {
    bps = 1;
    select_group({"1111", "000", "00", "0"});
    command(18, "\n6 spare words\n3\n");
    EXPECT_EQ(unread(), " spare words\n3\n");
    command(18, unread());
    EXPECT_EQ(parray[0][0].amp, -11.0f);
}

TEST_F(MenuDispatch, QuitEndsTheProgram) {
    const ChildResult result = in_child("", [] { menu_select(29); });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "Quillgrove QUIT\n");
    const ChildResult fell_through = in_child("", [] {
        menu_select(29);
        _exit(7);
    });
    EXPECT_EQ(fell_through.status, 0);
}

TEST_F(MenuDispatch, EveryChoiceCountsAsAnInputEvent) {
    const uint32_t before = input_events;
    command(26);
    EXPECT_EQ(input_events, before + 1);
}

} // namespace
