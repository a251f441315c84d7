// Keys that change what the window shows, and those about the terminal.
#include "display/view.h"
#include "store/settings.h"
#include "tests/interact/keys_support.h"

namespace {

using KeysView = KeysTest;

/// Each character with every state of the modifiers turns the flag over and posts a redisplay.
template <typename T> void expect_toggle(const std::string &codes, T &flag) {
    for (const char code : codes) {
        for (int modifiers = 0; modifiers < key_states; ++modifiers) {
            flag = 1;
            EXPECT_EQ(press(static_cast<unsigned char>(code), modifiers), "");
            EXPECT_EQ(flag, 0) << code << " with " << modifiers;
            EXPECT_EQ(posted(), 1) << code << " with " << modifiers;
            press(static_cast<unsigned char>(code), modifiers);
            EXPECT_EQ(flag, 1) << code << " with " << modifiers;
            flag = 5;
            press(static_cast<unsigned char>(code), modifiers);
            EXPECT_EQ(flag, 0) << code << " with " << modifiers;
        }
    }
}

TEST_F(KeysView, Axes) {
    clo = 1;
    expect_toggle("Cc", coord);
    EXPECT_EQ(clo, 1) << "only the menu's entry clears it";
}

TEST_F(KeysView, Help) {
    expect_toggle("Hh", gShowHelp);
}

TEST_F(KeysView, Information) {
    expect_toggle("Ii", gShowInfo);
}

TEST_F(KeysView, Staff) {
    expect_toggle("s", gShowStaff);
    logpos = 1;
    expect_toggle("s", gShowStaff);
    EXPECT_EQ(gShowClef, 0);
}

TEST_F(KeysView, ClefInTheLogView) {
    logpos = 1;
    expect_toggle("S", gShowClef);
    EXPECT_EQ(gShowStaff, 0);
}

TEST_F(KeysView, ClefOutsideTheLogViewDoesNothing) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        expect_nothing('S', modifiers);
        EXPECT_EQ(gShowClef, 0);
        EXPECT_EQ(gShowStaff, 0);
    }
}

TEST_F(KeysView, TimeShiftNeedsTheOtherDirection) {
    Y = 1;
    expect_toggle("Xx", X);
    X = 1;
    Y = 0;
    expect_nothing('X', 0);
    expect_nothing('x', key_shift);
    EXPECT_EQ(X, 1) << "one direction always stays on";
}

TEST_F(KeysView, FrequencyShiftNeedsTheOtherDirection) {
    X = 1;
    expect_toggle("Yy", Y);
    X = 0;
    Y = 1;
    expect_nothing('Y', 0);
    expect_nothing('y', key_alt);
    EXPECT_EQ(Y, 1) << "one direction always stays on";
}

TEST_F(KeysView, PointSizeStaysBetweenOneAndFour) {
    ptsize = 2;
    for (const int expected : {3, 4, 4}) {
        EXPECT_EQ(press('>'), "");
        EXPECT_EQ(ptsize, expected);
        EXPECT_EQ(posted(), 1);
    }
    for (const int expected : {3, 2, 1, 1}) {
        EXPECT_EQ(press('<', key_shift), "");
        EXPECT_EQ(ptsize, expected);
        EXPECT_EQ(posted(), 1);
    }
}

TEST_F(KeysView, PointSizeNeedsTheEditView) {
    ptsize = 2;
    for (int view = 0; view < 3; ++view) {
        flat = view & 1;
        bps = view >> 1;
        expect_nothing('<', 0);
        expect_nothing('>', key_shift);
    }
    EXPECT_EQ(ptsize, 2);
}

TEST_F(KeysView, VerboseShell) {
    for (const unsigned char code : {'V', 'v'}) {
        for (const int modifiers : all_modifiers_but({key_alt})) {
            EXPECT_EQ(press(code, modifiers), "Verbose shell\n");
            EXPECT_EQ(verbose, 1);
            EXPECT_EQ(posted(), 0);
            EXPECT_EQ(press(code, modifiers), "Non-verbose shell\n");
            EXPECT_EQ(verbose, 0);
            EXPECT_EQ(posted(), 0);
        }
    }
}

TEST_F(KeysView, UnbuiltO) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        EXPECT_EQ(press('o', modifiers), std::string("o|O\n") + not_built);
        EXPECT_EQ(press('O', modifiers), std::string("o|O\n") + not_built);
        EXPECT_EQ(posted(), 0);
    }
}

} // namespace
