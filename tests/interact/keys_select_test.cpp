// Keys that select and those that let go: every row with its modifiers, guards and texts.
#include "display/view.h"
#include "store/settings.h"
#include "tests/interact/keys_support.h"

#include <cmath>

namespace {

using Flags = std::vector<std::string>;

class KeysSelect : public KeysTest {
  protected:
    void SetUp() override {
        KeysTest::SetUp();
        select_group({"0110", "010", "00", "0"});
    }
    /// As a gesture leaves them.
    static void show_gesture() {
        method = -1;
        gShowMethod = 1;
    }
};

/// One stroke from the start selection: what it prints, its flags, one redisplay.
void expect_flags(unsigned char code, int modifiers, const std::string &text, const Flags &after) {
    set_flags({"0110", "010", "00", "0"});
    EXPECT_EQ(press(code, modifiers), text);
    EXPECT_EQ(flags(), after) << code << " with " << modifiers;
    EXPECT_EQ(posted(), 1) << code << " with " << modifiers;
}

TEST_F(KeysSelect, Left) {
    expect_flags('l', key_alt, "Select: Left\t ", {"1110", "110", "00", "0"});
}

TEST_F(KeysSelect, Right) {
    expect_flags('r', key_alt, "r\n4\nSelect: Right\t ", {"0111", "011", "00", "0"});
}

TEST_F(KeysSelect, TrailingLeft) {
    expect_flags('L', key_shift_alt, "Select: Trailing Left\t ", {"1000", "010", "00", "0"});
}

TEST_F(KeysSelect, Remainder) {
    expect_flags('R', key_shift_alt, "R\n5\nSelect: Remainder\t ", {"0001", "001", "00", "0"});
}

TEST_F(KeysSelect, PartialInverted) {
    expect_flags('m', key_alt, "Select: Inverted\t ", {"1001", "101", "00", "0"});
}

TEST_F(KeysSelect, AllInverted) {
    expect_flags('n', key_alt, "Select: All Inverted\t ", {"1001", "101", "11", "1"});
    expect_flags('N', key_alt, "Select: All Inverted\t ", {"1001", "101", "11", "1"});
}

TEST_F(KeysSelect, Partials) {
    expect_flags('p', key_alt, "Select: Partial(s)\t ", {"1111", "111", "00", "0"});
    expect_flags('P', key_alt, "Select: Partial(s)\t ", {"1111", "111", "00", "0"});
}

TEST_F(KeysSelect, SoftModeFailsInSilenceBehindTheText) {
    flat = bps = 0;
    const Flags kept = {"0110", "010", "00", "0"};
    expect_flags('l', key_alt, "Select: Left\t ", kept);
    expect_flags('r', key_alt, "r\n4\nSelect: Right\t ", kept);
    expect_flags('m', key_alt, "Select: Inverted\t ", kept);
    expect_flags('n', key_alt, "Select: All Inverted\t ", kept);
    expect_flags('p', key_alt, "Select: Partial(s)\t ", kept);
    expect_flags('R', key_shift_alt, "R\n5\nSelect: Remainder\t ", {"0001", "001", "00", "0"});
}

TEST_F(KeysSelect, RemainderAndRightTellTheirModifiersAnyway) {
    for (const int modifiers : all_modifiers_but({key_shift_alt})) {
        EXPECT_EQ(press('R', modifiers), "R\n" + std::to_string(modifiers) + "\n");
        EXPECT_EQ(posted(), 0);
    }
    for (const int modifiers : all_modifiers_but({key_alt})) {
        EXPECT_EQ(press('r', modifiers), "r\n" + std::to_string(modifiers) + "\n");
        EXPECT_EQ(posted(), 0);
    }
    EXPECT_EQ(flags(), (Flags{"0110", "010", "00", "0"}));
}

TEST_F(KeysSelect, UnbuiltCtrlL) {
    const std::string text = std::string("^l\t ") + not_built;
    EXPECT_EQ(press('l', key_ctrl), text);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(press(12, key_ctrl), text) << "as GLUT delivers it";
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(press(12, 0), "Pressed key : \f \n");
    EXPECT_EQ(posted(), 0);
}

TEST_F(KeysSelect, Vertical) {
    sweepSelect = 1;
    expect_flags('v', key_alt, "", {"0110", "110", "00", "0"});
    EXPECT_EQ(found, 1);
    sweepSelect = 0;
    expect_flags('V', key_alt, "", {"0110", "110", "00", "0"});
    selected = 0;
    sweepSelect = 1;
    expect_flags('V', key_alt, "", {"0110", "110", "00", "0"});
}

TEST_F(KeysSelect, VerticalNeedsASelection) {
    selected = 0;
    for (const unsigned char code : {'V', 'v'}) {
        EXPECT_EQ(press(code, key_alt), "No sweep-selection found\n");
        EXPECT_EQ(posted(), 0);
    }
    EXPECT_EQ(verbose, 0);
    EXPECT_EQ(flags(), (Flags{"0110", "010", "00", "0"}));
}

// --- the ends of the runs ----------------------------------------------------------------------

TEST_F(KeysSelect, BracketsMoveTheEnds) {
    for (const int modifiers : all_modifiers_but({key_alt})) {
        expect_flags('[', modifiers, "", {"1110", "110", "00", "0"});
        expect_flags(']', modifiers, "", {"0111", "011", "00", "0"});
    }
    expect_flags('[', key_alt, "", {"0010", "000", "00", "0"});
    expect_flags(']', key_alt, "", {"0100", "000", "00", "0"});
}

TEST_F(KeysSelect, BracketsBringBackTheLogPositions) {
    for (const unsigned char code : {'[', ']'}) {
        for (const int modifiers : {0, key_alt}) {
            parray[1][1].logfreq = -5.0f;
            press(code, modifiers);
            EXPECT_NEAR(parray[1][1].logfreq, std::log2(420.0 / 100.0) / std::log2(10.0), 1e-5);
        }
    }
}

TEST_F(KeysSelect, BracketsNeedModeAndSelection) {
    const auto expect_no_brackets = [] {
        for (const int modifiers : {0, key_alt, key_shift}) {
            expect_nothing('[', modifiers);
            expect_nothing(']', modifiers);
        }
    };
    selected = 0;
    expect_no_brackets();
    sweepSelect = 1;
    for (int view = 0; view < 3; ++view) {
        flat = view & 1;
        bps = view >> 1;
        expect_no_brackets();
    }
    flat = bps = 1;
    press('[');
    EXPECT_EQ(posted(), 1) << "a sweep alone is enough";
}

// --- all ---------------------------------------------------------------------------------------

TEST_F(KeysSelect, All) {
    sweepSelect = 0;
    expect_flags('a', key_alt, "<ctrl>a|A\nSelect All\na|A\n", {"1111", "111", "11", "1"});
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 1);
}

TEST_F(KeysSelect, AllInOneHalfOfTheEditViewSelectsNothing) {
    flat = 0;
    expect_flags('a', key_alt, "<ctrl>a|A\nSelect All\na|A\n", {"0110", "010", "00", "0"});
    EXPECT_EQ(sweepSelect, 1);
    flat = 1;
    bps = 0;
    expect_flags('a', key_alt, "<ctrl>a|A\nSelect All\na|A\n", {"0110", "010", "00", "0"});
}

TEST_F(KeysSelect, AllNeedsSoftMode) {
    flat = bps = 0;
    EXPECT_EQ(press('a', key_alt), "<ctrl>a|A\nSwitch to Editing Mode\n");
    EXPECT_EQ(posted(), 0);
    EXPECT_EQ(sweepSelect, 0);
}

TEST_F(KeysSelect, PlainAOnlyTellsItself) {
    for (const int modifiers : all_modifiers_but({key_alt})) {
        EXPECT_EQ(press('a', modifiers), "a|A\n");
        EXPECT_EQ(posted(), 0);
    }
    EXPECT_EQ(flags(), (Flags{"0110", "010", "00", "0"}));
}

// --- letting go --------------------------------------------------------------------------------

TEST_F(KeysSelect, ShiftDeleteDropsTheNewestPoint) {
    find_points(0, 1, 1, 2);
    show_gesture();
    peval[2].spare1 = peval[2].spare2 = 3.0f;
    EXPECT_EQ(press(key_delete, key_shift), "");
    EXPECT_EQ(slots(), (Slots{1, 2, 0, 0, 1}));
    EXPECT_EQ(method, 0);
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(peval[2].spare1, 0.0f);
    EXPECT_EQ(peval[2].spare2, 0.0f);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(directSelect, 1);
}

TEST_F(KeysSelect, AltDeleteDropsTheOlderPoint) {
    find_points(0, 1, 1, 2);
    show_gesture();
    peval[2].spare1 = 3.0f;
    EXPECT_EQ(press(key_delete, key_alt), "");
    EXPECT_EQ(slots(), (Slots{0, 1, 0, 0, 1}));
    EXPECT_EQ(method, 0);
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(peval[2].spare1, 3.0f);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSelect, DeleteOfOnePointNeedsTwo) {
    show_gesture();
    for (int count = 0; count < 2; ++count) {
        find_points(0, 1);
        foundSubscriptions.count = count;
        expect_nothing(key_delete, key_shift);
        expect_nothing(key_delete, key_alt);
    }
    EXPECT_EQ(method, -1);
    EXPECT_EQ(gShowMethod, 1);
}

TEST_F(KeysSelect, CtrlDeleteClearsEverything) {
    find_points(0, 1, 1, 2);
    sweepSelect = 1;
    show_gesture();
    peval[1].spare2 = 3.0f;
    peval[1].selected = 1;
    EXPECT_EQ(press(key_delete, key_ctrl), "Deselect\n");
    EXPECT_TRUE(selection_cleared());
    EXPECT_EQ(peval[1].selected, 0);
    EXPECT_EQ(peval[1].spare2, 0.0f);
    EXPECT_EQ(method, 0);
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSelect, CtrlDeleteOutsideTheFlatViewKeepsTheSelection) {
    flat = 0;
    find_points(0, 1, 1, 2);
    sweepSelect = 1;
    show_gesture();
    peval[1].spare2 = 3.0f;
    EXPECT_EQ(press(key_delete, key_ctrl), "Deselect\n");
    EXPECT_EQ(flags(), (Flags{"0110", "010", "00", "0"}));
    EXPECT_EQ(slots(), (Slots{0, 1, 1, 2, 2}));
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(peval[1].spare2, 0.0f);
    EXPECT_EQ(method, 0);
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysSelect, DeleteDropsTheFoundPoints) {
    for (const int modifiers : all_modifiers_but({key_shift, key_ctrl, key_alt})) {
        for (int count = 1; count <= 2; ++count) {
            find_points(0, 1, 1, 2);
            foundSubscriptions.count = count;
            show_gesture();
            EXPECT_EQ(press(key_delete, modifiers), "");
            EXPECT_EQ(slots(), (Slots{0, 0, 0, 0, 0})) << "the slots hold 0, not -1";
            EXPECT_EQ(directSelect, 0);
            EXPECT_EQ(found, 0);
            EXPECT_EQ(method, 0);
            EXPECT_EQ(gShowMethod, 0);
            EXPECT_EQ(posted(), 1);
        }
    }
    EXPECT_EQ(flags(), (Flags{"0110", "010", "00", "0"}));
}

TEST_F(KeysSelect, DeleteWithNothingFoundKeepsTheGesture) {
    directSelect = found = 1;
    show_gesture();
    EXPECT_EQ(press(key_delete), "");
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(method, -1);
    EXPECT_EQ(gShowMethod, 1);
    EXPECT_EQ(slots(), (Slots{-1, -1, -1, -1, 0}));
    EXPECT_EQ(posted(), 1);
}

} // namespace
