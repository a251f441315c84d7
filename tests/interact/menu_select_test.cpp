// The entries of "Select ": each announces itself and does what its operation does; a failed
// gate is silent but for two of them, and nearly all end in a redisplay.
#include "interact/menu.h"

#include "display/view.h"
#include "interact/select.h"
#include "store/settings.h"
#include "tests/interact/menu_support.h"

namespace {

using Flags = std::vector<std::string>;

const Flags some = {"0110", "010", "00", "1"};
const Flags whole = {"1111", "111", "11", "1"};
const Flags nothing = {"0000", "000", "00", "0"};

class MenuSelect : public MenuTest {
  protected:
    void show(int flat_view, int breakpoints) {
        flat = flat_view;
        bps = breakpoints;
    }
    int redisplays() {
        return gl_double::recorder().redisplays;
    }
};

struct Row {
    int value;
    const char *announce;
    Flags after; // of the flags in `some`
    void (*operation)();
};

const Row rows[] = {
    {5, "Select: Left\t ", {"1110", "110", "00", "1"}, select_left},
    {6, "Select: Right\t ", {"0111", "011", "00", "1"}, select_right},
    {7, "Select: Partial(s)\t ", {"1111", "111", "00", "1"}, select_partials},
    {9, "Select: Partial Inverted\t ", {"1001", "101", "00", "0"}, select_p_inverted},
    {10, "Select: All Inverted\t ", {"1001", "101", "11", "0"}, select_inverted},
};

TEST_F(MenuSelect, OperationsInSoftMode) {
    for (const Row &row : rows) {
        for (const int state : {1, 2, 3}) {
            show(state & 1, state >> 1);
            select_group(some);
            spoil_derived();
            EXPECT_EQ(command(row.value, "reply\n"), row.announce);
            EXPECT_EQ(flags(), row.after) << row.announce;
            EXPECT_EQ(refreshed(), "redisplay") << row.announce;
            EXPECT_EQ(unread(), "reply\n");
        }
    }
}

TEST_F(MenuSelect, OperationsOutsideSoftModeDoNothingWithoutAWord) {
    for (const Row &row : rows) {
        select_group(some);
        spoil_derived();
        EXPECT_EQ(command(row.value), row.announce);
        EXPECT_EQ(flags(), some) << row.announce;
        EXPECT_EQ(refreshed(), "redisplay") << row.announce;
    }
}

TEST_F(MenuSelect, SummaryFlagsFollowTheOperations) {
    for (const Row &row : rows) {
        show(1, 1);
        reset_selection();
        set_flags(some);
        row.operation();
        const auto want = std::pair(selected, found);
        reset_selection();
        set_flags(some);
        command(row.value);
        EXPECT_EQ(std::pair(selected, found), want) << row.announce;
        EXPECT_EQ(sweepSelect, 0) << row.announce;
    }
}

TEST_F(MenuSelect, AllSetsTheSweepFlag) {
    show(1, 1);
    EXPECT_EQ(command(8), "Select: All\t Select All\n");
    EXPECT_EQ(flags(), whole);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(redisplays(), 1);
}

TEST_F(MenuSelect, AllWithOneViewFlagSelectsNothingButSetsTheSweepFlag) {
    for (const int state : {1, 2}) {
        show(state & 1, state >> 1);
        reset_selection();
        EXPECT_EQ(command(8), "Select: All\t Select All\n");
        EXPECT_EQ(flags(), nothing);
        EXPECT_EQ(selected, 0);
        EXPECT_EQ(sweepSelect, 1);
    }
    EXPECT_EQ(redisplays(), 2);
}

TEST_F(MenuSelect, AllOutsideSoftModeAsksToSwitch) {
    EXPECT_EQ(command(8), "Select: All\t Switch to Editing Mode\n");
    EXPECT_EQ(flags(), nothing);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(redisplays(), 0);
}

TEST_F(MenuSelect, NoneClearsEverythingInTheFlatView) {
    show(1, 0);
    select_group(some);
    find_points(0, 1, 1, 1);
    sweepSelect = 1;
    method = 3;
    gShowMethod = 1;
    EXPECT_EQ(command(30), "Select: None     ");
    EXPECT_TRUE(selection_cleared());
    EXPECT_EQ(method, 0);
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(redisplays(), 1);
}

TEST_F(MenuSelect, NoneOutsideTheFlatViewClearsThreeFlagsAlone) {
    show(0, 1);
    select_group(some);
    find_points(0, 1, 1, 1);
    sweepSelect = 1;
    method = 3;
    gShowMethod = 1;
    EXPECT_EQ(command(30), "Select: None     ");
    EXPECT_EQ(flags(), some);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(foundSubscriptions.count, 2);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(method, 0);
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(redisplays(), 1);
}

const std::string pick_prompt = "Pick partials:\n"
                                "size  [<|>]  num_points\n"
                                "start [<|>|time0] time1\n"
                                "endt  [<|>|time0] time1\n"
                                "> ";

TEST_F(MenuSelect, PickHoldsItsDialogue) {
    show(0, 1);
    EXPECT_EQ(command(101, "size > 2\nnext\n"), pick_prompt + "Pick by: size > 2 points\n");
    EXPECT_EQ(flags(), (Flags{"1111", "111", "00", "0"}));
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(redisplays(), 1);
    EXPECT_EQ(unread(), "\nnext\n");
}

TEST_F(MenuSelect, PickCancelledOrNotUnderstood) {
    show(1, 0);
    EXPECT_EQ(command(101, "-c\n"), pick_prompt + "Command cancelled\n");
    EXPECT_EQ(command(101, "none\n"), pick_prompt + "No matching criteria recognized\n");
    EXPECT_EQ(command(101, std::string(10000, 'x') + " 3\n"),
              pick_prompt + "No matching criteria recognized\n");
    EXPECT_EQ(unread(), " 3\n");
    EXPECT_EQ(flags(), nothing);
}

TEST_F(MenuSelect, PickAtTheEndOfTheInput) {
    show(1, 1);
    for (const char *replies : {"", "size", "size >", "start", "start >", "endt 0.1"}) {
        command(101, replies);
        EXPECT_EQ(flags(), nothing) << replies;
        EXPECT_EQ(selected, 0);
    }
}

TEST_F(MenuSelect, PickTakesLongWordsInEveryPlace) {
    show(1, 1);
    const std::string word(10000, '9');
    command(101, "size " + word + " 1\n");
    command(101, "size > " + word + "\n");
    EXPECT_EQ(unread(), "\n");
    command(101, "start " + word + " 1\n");
    command(101, "endt > " + word + "\n");
    EXPECT_EQ(flags(), nothing);
}

TEST_F(MenuSelect, PickOutsideSoftModeAsksToSwitch) {
    EXPECT_EQ(command(101, "odd\n"), "Switch to Editing Mode\n");
    EXPECT_EQ(flags(), nothing);
    EXPECT_EQ(unread(), "odd\n");
    EXPECT_EQ(redisplays(), 0);
}

} // namespace
