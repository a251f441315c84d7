// The arrows with every state of the modifiers: found points, retuning, whole partials, the
// relative gestures with the line that the picture shows of them.
#include "display/view.h"
#include "interact/gestures.h"
#include "store/settings.h"
#include "tests/interact/keys_support.h"
#include "tests/support/console.h"

#include <cmath>

namespace {

using Flags = std::vector<std::string>;

constexpr int left = GLUT_KEY_LEFT;
constexpr int right = GLUT_KEY_RIGHT;
constexpr int up = GLUT_KEY_UP;
constexpr int down = GLUT_KEY_DOWN;
constexpr int shift_ctrl = key_shift | key_ctrl;

class Arrows : public KeysTest {
  protected:
    /// A source with its ends found, and a target off its ratio, swept.
    static void source_and_target() {
        fill_store({{{0.0f, 100.0f, -10.0f},
                     {0.5f, 200.0f, -20.0f},
                     {1.0f, 100.0f, -10.0f},
                     {1.5f, 100.0f, -10.0f}},
                    {{0.0f, 300.0f, -10.0f},
                     {0.5f, 300.0f, -10.0f},
                     {1.0f, 300.0f, -10.0f},
                     {1.5f, 300.0f, -10.0f}}});
        select_group({"0000", "1111"});
        sweepSelect = 1;
        peval[1].selected = 1;
        find_points(0, 3, 0, 0);
        gl_double::forget_drawing();
    }
    static bool drew(const std::string &line) {
        return label_of(line) != nullptr;
    }
};

// --- left and right ----------------------------------------------------------------------------

TEST_F(Arrows, LeftMovesFoundPoints) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        find_points(0, 2, 1, 2);
        EXPECT_EQ(press_special(left, modifiers), "");
        const int newest = modifiers == key_shift ? 2 : 1; // shift moves the older one alone
        const int older = modifiers == key_alt ? 2 : 1;    // alt the newest one alone
        EXPECT_EQ(slots(), (Slots{0, newest, 1, older, 2})) << modifiers;
        EXPECT_EQ(posted(), 1);
    }
}

TEST_F(Arrows, RightMovesFoundPoints) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        find_points(0, 1, 1, 1);
        EXPECT_EQ(press_special(right, modifiers), "");
        const int newest = modifiers == key_alt ? 1 : 2;
        const int older = modifiers == key_shift ? 1 : 2;
        EXPECT_EQ(slots(), (Slots{0, newest, 1, older, 2})) << modifiers;
        EXPECT_EQ(posted(), 1);
    }
}

// --- retuning ----------------------------------------------------------------------------------

TEST_F(Arrows, UpAndDownRetune) {
    for (const int modifiers : all_modifiers_but({key_shift, key_ctrl, shift_ctrl, key_alt})) {
        find_points(1, 1);
        const float before = parray[1][1].freq;
        const std::string told = std::to_string(modifiers) + "\n";
        gShowMethod = 1;
        EXPECT_EQ(press_special(up, modifiers), told);
        EXPECT_EQ(parray[1][1].freq, static_cast<float>(before * 1.00125));
        EXPECT_EQ(gShowMethod, 1) << "up leaves the line";
        EXPECT_EQ(posted(), 1);
        const float raised = parray[1][1].freq;
        EXPECT_EQ(press_special(down, modifiers), told);
        EXPECT_EQ(parray[1][1].freq, static_cast<float>(raised / 1.00125));
        EXPECT_EQ(gShowMethod, 0) << "down hides it";
        EXPECT_EQ(posted(), 1);
    }
}

// --- whole partials ----------------------------------------------------------------------------

TEST_F(Arrows, ShiftCyclesAWholePartial) {
    select_group({"0000", "111", "00", "0"});
    gShowMethod = 1;
    EXPECT_EQ(press_special(up, key_shift), "1\nCurrent: [1]\tNext: [2]\n");
    EXPECT_EQ(flags(), (Flags{"0000", "000", "11", "0"}));
    EXPECT_EQ(gShowMethod, 1);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(press_special(down, key_shift), "1\nCurrent: [2]\tNext: [1]\n");
    EXPECT_EQ(flags(), (Flags{"0000", "111", "00", "0"}));
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(posted(), 1);
}

TEST_F(Arrows, CyclingNeedsASelection) {
    set_flags({"0000", "111", "00", "0"});
    EXPECT_EQ(press_special(up, key_shift), "1\n");
    EXPECT_EQ(posted(), 1);
    gShowMethod = 1;
    EXPECT_EQ(press_special(down, key_shift), "1\n");
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(flags(), (Flags{"0000", "111", "00", "0"}));
}

TEST_F(Arrows, CyclingNeedsTheEditView) {
    select_group({"0000", "111", "00", "0"});
    for (const int code : {up, down}) {
        for (int view = 0; view < 3; ++view) {
            flat = view & 1;
            bps = view >> 1;
            gShowMethod = 1;
            EXPECT_EQ(press_special(code, key_shift),
                      bps == 0 ? "1\nShow breakpoints\n" : "1\nEnter Editing Mode\n");
            EXPECT_EQ(posted(), 0);
            EXPECT_EQ(gShowMethod, 1);
        }
    }
    EXPECT_EQ(flags(), (Flags{"0000", "111", "00", "0"}));
}

TEST_F(Arrows, ShiftCtrlIsNotBuilt) {
    gShowMethod = 1;
    for (const int code : {up, down}) {
        EXPECT_EQ(press_special(code, shift_ctrl), std::string("3\n") + not_built);
        EXPECT_EQ(posted(), 0);
        EXPECT_EQ(gShowMethod, 1);
    }
}

// --- gestures ----------------------------------------------------------------------------------

/// The store as a gesture leaves it.
template <typename Gesture>
structure::Snapshot after(void (*prepare)(), Gesture gesture, int direction) {
    return left_by(prepare, [=] { gesture(direction); });
}

TEST_F(Arrows, CtrlDownHarmonizes) {
    const auto expected = after(source_and_target, partialsHarmonize, -1);
    source_and_target();
    EXPECT_EQ(press_special(down, key_ctrl), "2\n");
    EXPECT_TRUE(structure::same_points(structure::snapshot(), expected));
    EXPECT_NE(parray[1][1].freq, 300.0f);
    EXPECT_EQ(method, -1);
    EXPECT_EQ(gShowMethod, 1);
    EXPECT_TRUE(drew("Harmonize partial(s)\n"));
    EXPECT_GE(posted(), 1);
}

TEST_F(Arrows, CtrlUpWarps) {
    const auto expected = after(source_and_target, partialsHarmonize, 1);
    source_and_target();
    EXPECT_EQ(press_special(up, key_ctrl), "2\n");
    EXPECT_TRUE(structure::same_points(structure::snapshot(), expected));
    EXPECT_NE(parray[1][1].freq, 300.0f);
    EXPECT_EQ(method, 1);
    EXPECT_EQ(gShowMethod, 1);
    EXPECT_TRUE(drew("Warp partial(s)\n"));
    EXPECT_GE(posted(), 1);
}

TEST_F(Arrows, HarmonizeConvergesToAConstantRatio) {
    source_and_target();
    for (int k = 0; k < 300; ++k) {
        press_special(down, key_ctrl);
    }
    const float ratio = parray[1][0].freq / 100.0f;
    EXPECT_NEAR(parray[1][1].freq / 200.0f, ratio, 1e-3);
    EXPECT_NEAR(parray[1][2].freq / 100.0f, ratio, 1e-3);
    EXPECT_GT(ratio, 1.0f);
}

TEST_F(Arrows, HarmonizeRefusalShowsItsLineAllTheSame) {
    foundSubscriptions.count = 1;
    gl_double::forget_drawing();
    EXPECT_EQ(press_special(down, key_ctrl),
              "2\nHarmonize: Select both breakpoints from the source partial\n");
    EXPECT_EQ(method, -1);
    EXPECT_EQ(gShowMethod, 1);
    EXPECT_TRUE(drew("Harmonize partial(s)\n"));
    EXPECT_EQ(posted(), 1);
}

TEST_F(Arrows, AltDownFollows) {
    const auto expected = after(source_and_target, partialsFollow2, -3);
    source_and_target();
    EXPECT_EQ(press_special(down, key_alt), "4\ndirection = -3\n");
    EXPECT_TRUE(structure::same_points(structure::snapshot(), expected));
    EXPECT_LT(parray[1][1].amp, -10.0f) << "towards the source's dip";
    EXPECT_EQ(method, -3);
    EXPECT_EQ(gShowMethod, 1);
    EXPECT_TRUE(drew("Env. follow (0)\n"));
    EXPECT_EQ(posted(), 1);
}

TEST_F(Arrows, AltUpStraysAndHidesTheLine) {
    const auto expected = after(source_and_target, partialsFollow2, 3);
    source_and_target();
    method = 2;
    gShowMethod = 1;
    EXPECT_EQ(press_special(up, key_alt), "4\ndirection = 3\n");
    EXPECT_TRUE(structure::same_points(structure::snapshot(), expected));
    EXPECT_GT(parray[1][1].amp, -10.0f);
    EXPECT_EQ(method, 0);
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_TRUE(gl_double::recorder().labels.empty()) << "nothing is drawn before the next frame";
    EXPECT_EQ(posted(), 1);
}

TEST_F(Arrows, FollowIsRefused) {
    const auto refused = [](const std::string &line) {
        method = 2;
        gShowMethod = 1;
        EXPECT_EQ(press_special(down, key_alt), "4\n" + line + "\n");
        EXPECT_EQ(gShowMethod, 0);
        EXPECT_EQ(method, 2);
        EXPECT_EQ(posted(), 0);
    };
    source_and_target();
    const structure::Snapshot before = structure::snapshot();
    selected = 0;
    refused("Target partial(s) must be selected");
    foundSubscriptions.count = 1;
    refused("Two source points must be selected");
    foundSubscriptions.part1 = 1;
    refused("Both source points must belong to the same partial");
    EXPECT_TRUE(structure::same_points(structure::snapshot(), before));
}

TEST_F(Arrows, TwoSourcesAreRefusedByFollowAlone) {
    source_and_target();
    find_points(0, 2, 1, 0);
    EXPECT_EQ(press_special(down, key_ctrl), "2\n") << "harmonizing says nothing";
    EXPECT_EQ(press_special(up, key_alt), "4\n") << "nor does straying";
    EXPECT_EQ(press_special(down, key_alt),
              "4\nBoth source points must belong to the same partial\n");
}

// --- the rest ----------------------------------------------------------------------------------

TEST_F(Arrows, OtherSpecialKeysDoNothing) {
    select_group({"1111", "111", "11", "1"});
    find_points(0, 1, 1, 1);
    const structure::Snapshot before = structure::snapshot();
    for (int code = 0; code < 256; ++code) {
        if (code >= left && code <= down) {
            continue;
        }
        for (int modifiers = 0; modifiers < key_states; ++modifiers) {
            ASSERT_EQ(press_special(code, modifiers), "") << code;
            ASSERT_EQ(posted(), 0) << code;
        }
    }
    EXPECT_TRUE(structure::same_points(structure::snapshot(), before));
    EXPECT_EQ(slots(), (Slots{0, 1, 1, 1, 2}));
}

} // namespace
