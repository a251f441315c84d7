// The mouse callback: its table of presses and releases, sweeps from press to release, and the
// state that each gesture leaves behind.
#include "interact/mouse.h"

#include "display/view.h"
#include "interact/clear.h"
#include "interact/drags.h"
#include "interact/selection.h"
#include "interact/unproject.h"
#include "interact/view_drags.h"
#include "live/live.h"
#include "tests/support/console.h"
#include "tests/support/pointer.h"

#include <ostream>

namespace {

using Flags = std::vector<std::string>;

constexpr int left = GLUT_LEFT_BUTTON;
constexpr int middle = GLUT_MIDDLE_BUTTON;
constexpr int right = GLUT_RIGHT_BUTTON;
constexpr int shift = GLUT_ACTIVE_SHIFT;
constexpr int ctrl = GLUT_ACTIVE_CTRL;
constexpr int alt = GLUT_ACTIVE_ALT;
constexpr int num_lock = 8;

/// Stands for whatever was registered before, so that a test can tell "none" from "kept".
void earlier_motion(int, int) {}

int redisplays() {
    return gl_double::recorder().redisplays;
}

/// One row of the table of presses: what a press does in a view, `selecting` and `dragging` set
/// before and an earlier motion callback registered.
struct PressRow {
    const char *name;
    int button, modifiers, flat, bps;
    MotionCallback motion;
    int selecting, dragging;
    const char *text;
};

std::ostream &operator<<(std::ostream &out, const PressRow &row) {
    return out << row.name;
}

const PressRow press_rows[] = {
    {"LeftShift", left, shift, 1, 1, mouseTranslate, 0, 1, ""},
    {"LeftShiftPerspective", left, shift, 0, 0, mouseTranslate, 0, 1, ""},
    {"LeftCtrl", left, ctrl, 1, 1, mouseScale, 0, 1, ""},
    {"LeftCtrlPerspective", left, ctrl, 0, 1, mouseScale, 0, 1, ""},
    {"LeftAltPerspective", left, alt, 0, 1, mouseRot, 0, 1, ""},
    {"LeftAltFlat", left, alt, 1, 1, testInput, 1, 1, ""},
    {"LeftAltFlatNoBreakpoints", left, alt, 1, 0, testInput, 1, 1, ""},
    {"LeftPlain", left, 0, 1, 1, testInput, 1, 1, ""},
    {"LeftPlainPerspective", left, 0, 0, 0, testInput, 1, 1, ""},
    {"LeftShiftCtrl", left, shift | ctrl, 1, 1, testInput, 1, 1, ""},
    {"LeftShiftAlt", left, shift | alt, 1, 1, testInput, 1, 1, ""},
    {"LeftCtrlAltPerspective", left, ctrl | alt, 0, 1, testInput, 1, 1, ""},
    {"LeftAllThree", left, shift | ctrl | alt, 0, 1, testInput, 1, 1, ""},
    {"LeftNumLock", left, num_lock, 1, 1, testInput, 1, 1, ""},
    {"LeftShiftNumLock", left, shift | num_lock, 1, 1, mouseTranslate, 0, 1, ""},
    {"LeftCtrlNumLock", left, ctrl | num_lock, 1, 1, mouseScale, 0, 1, ""},
    {"LeftAltNumLockPerspective", left, alt | num_lock, 0, 1, mouseRot, 0, 1, ""},
    {"MiddleShift", middle, shift, 1, 1, partialsTranslate, 0, 1, ""},
    {"MiddleShiftPerspective", middle, shift, 0, 0, partialsTranslate, 0, 1, ""},
    {"MiddleCtrl", middle, ctrl, 1, 1, partialsScale, 0, 1, "//\n"},
    {"MiddleCtrlPerspective", middle, ctrl, 0, 0, partialsScale, 0, 1, "//\n"},
    {"MiddleAltFlatNoBreakpoints", middle, alt, 1, 0, earlier_motion, 1, 1, ""},
    {"MiddleAltPerspective", middle, alt, 0, 1, earlier_motion, 0, 1, ""},
    {"MiddlePlainEditNothingFound", middle, 0, 1, 1, earlier_motion, 0, 0, ""},
    {"MiddleCombinedEditNothingFound", middle, shift | alt, 1, 1, earlier_motion, 0, 0, ""},
    {"MiddlePlainFlat", middle, 0, 1, 0, nullptr, 0, 0, ""},
    {"MiddlePlainPerspective", middle, 0, 0, 1, nullptr, 0, 0, ""},
    {"MiddleCombinedPerspective", middle, ctrl | alt, 0, 0, nullptr, 0, 0, ""},
    {"RightPlain", right, 0, 1, 1, earlier_motion, 1, 1, ""},
    {"RightShift", right, shift, 1, 1, earlier_motion, 0, 1, ""},
    {"RightCtrl", right, ctrl, 1, 1, earlier_motion, 0, 1, ""},
    {"RightAltPerspective", right, alt, 0, 1, earlier_motion, 0, 1, ""},
    {"RightAltFlat", right, alt, 1, 1, earlier_motion, 1, 1, ""},
};

class MouseTest : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        fill_store(ladder_content());
        open_edit_view();
        gl_double::recorder().callbacks.motion = earlier_motion;
    }
};

class PressTable : public MouseTest, public testing::WithParamInterface<PressRow> {};

/// A whole sweep between two scene places; returns what it prints.
std::string sweep(double t0, double f0, double t1, double f1, int modifiers = 0) {
    return printed([&] {
        mouse_down(left, pixel_x(t0), pixel_y(f0), modifiers);
        mouse_move(pixel_x(t1), pixel_y(f1));
        mouse_up(left, pixel_x(t1), pixel_y(f1), modifiers);
    });
}

std::string click(double t, double f, int modifiers = 0) {
    return sweep(t, f, t, f, modifiers);
}

void expect_square(int x_press, int x_release, int y_press, int y_release) {
    EXPECT_EQ(square[0], x_press);
    EXPECT_EQ(square[1], x_release);
    EXPECT_EQ(square[2], y_press);
    EXPECT_EQ(square[3], y_release);
}

} // namespace

TEST_P(PressTable, Row) {
    const PressRow &row = GetParam();
    flat = row.flat;
    bps = row.bps;
    selecting = dragging = 1;
    square[1] = 71;
    square[3] = 73;
    EXPECT_EQ(printed([&] { mouse_down(row.button, 40, 50, row.modifiers); }), row.text);
    EXPECT_EQ(motion(), row.motion);
    EXPECT_EQ(selecting, row.selecting);
    EXPECT_EQ(dragging, row.dragging);
    EXPECT_EQ(redisplays(), 0);
    if (row.button == right) {
        expect_square(0, 71, 0, 73);
    } else {
        expect_square(40, 71, 50, 73);
    }
}

INSTANTIATE_TEST_SUITE_P(Presses, PressTable, testing::ValuesIn(press_rows),
                         [](const testing::TestParamInfo<PressRow> &row) {
                             return std::string(row.param.name);
                         });

TEST_F(MouseTest, MiddlePlainWithAFoundPointTakesADrag) {
    foundSubscriptions = {0, 1, -1, -1, 1};
    selecting = dragging = 1;
    EXPECT_EQ(printed([] { mouse_down(middle, 40, 50); }), "");
    EXPECT_EQ(motion(), breakpointsTranslate);
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(dragging, 0);
}

TEST_F(MouseTest, LeftReleaseEndsADrag) {
    selecting = 0;
    mouse_down(left, 40, 50, shift);
    mouse_move(40, 50);
    EXPECT_EQ(dragging, 1);
    gl_double::forget_drawing();
    mouse_up(left, 60, 80, shift);
    EXPECT_EQ(motion(), nullptr);
    EXPECT_EQ(dragging, 0);
    EXPECT_EQ(redisplays(), 1);
    EXPECT_EQ(sweepSelect, 0);
    expect_square(40, 60, 50, 80);
}

TEST_F(MouseTest, MiddleReleaseEndsADragWithoutARedisplay) {
    printed([] { mouse_down(middle, 40, 50, ctrl); });
    dragging = 1;
    mouse_up(middle, 60, 80);
    EXPECT_EQ(motion(), nullptr);
    EXPECT_EQ(dragging, 0);
    EXPECT_EQ(redisplays(), 0);
    expect_square(40, 60, 50, 80);
}

TEST_F(MouseTest, RightReleaseEndsADragAndKeepsThePixels) {
    mouse_down(right, 40, 50);
    dragging = 1;
    mouse_up(right, 60, 80);
    EXPECT_EQ(motion(), nullptr);
    EXPECT_EQ(dragging, 0);
    EXPECT_EQ(redisplays(), 0);
    expect_square(0, 0, 0, 0);
}

TEST_F(MouseTest, AReleaseWithoutAPressDoesNothing) {
    // A menu that closes sends one; a sweep on show must not end a second time.
    selecting = dragging = 1;
    for (const int button : {left, middle, right}) {
        for (const int modifiers : {0, shift, ctrl, alt}) {
            mouse_up(button, 60, 80, modifiers);
        }
    }
    EXPECT_EQ(motion(), earlier_motion);
    EXPECT_EQ(selecting, 1);
    EXPECT_EQ(dragging, 1);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(redisplays(), 0);
    expect_square(0, 0, 0, 0);
}

TEST_F(MouseTest, ASecondReleaseDoesNothing) {
    sweep(0.2, 0.2, 0.6, 0.3);
    clear_all();
    selecting = 1;
    mouse_up(left, 1, 1);
    EXPECT_EQ(sweepSelect, 0);
    expect_square(pixel_x(0.2), pixel_x(0.6), pixel_y(0.2), pixel_y(0.3));
}

TEST_F(MouseTest, AReleaseBelongsToItsOwnButton) {
    mouse_down(left, 40, 50);
    mouse_up(middle, 60, 80);
    EXPECT_EQ(motion(), testInput);
    EXPECT_EQ(selecting, 1);
    mouse_up(left, 60, 80);
    EXPECT_EQ(motion(), nullptr);
}

TEST_F(MouseTest, TheWheelDoesNothing) {
    selecting = dragging = 1;
    for (const int button : {3, 4, 5, -1, 1000}) {
        mouse_down(button, 40, 50, shift);
        mouse_up(button, 60, 80, ctrl);
    }
    EXPECT_EQ(motion(), earlier_motion);
    EXPECT_EQ(selecting, 1);
    EXPECT_EQ(dragging, 1);
    EXPECT_EQ(redisplays(), 0);
    expect_square(0, 0, 0, 0);
}

TEST_F(MouseTest, ASweepSelectsAndKeepsItsRectangle) {
    EXPECT_EQ(sweep(0.2, 0.2, 0.6, 0.3), "");
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
    EXPECT_EQ(selecting, 1);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(motion(), nullptr);
    EXPECT_EQ(redisplays(), 1);
    EXPECT_NEAR(tfsquare[0], scene_t(square[1]), 2e-6);
    EXPECT_NEAR(tfsquare[3], scene_f(square[2]), 2e-6);
}

TEST_F(MouseTest, ASweepFollowsThePointerWithoutARedisplay) {
    mouse_down(left, 40, 50);
    mouse_move(300, 120);
    EXPECT_NEAR(tuplet[0], scene_t(300), 2e-6);
    EXPECT_EQ(redisplays(), 0);
    EXPECT_EQ(dragging, 0);
    expect_square(40, 0, 50, 0);
}

TEST_F(MouseTest, SweepsInEveryDirection) {
    sweep(0.6, 0.3, 0.2, 0.2);
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
    sweep(0.7, 0.4, 0.8, 0.6);
    EXPECT_EQ(flags(), (Flags{"00110", "11", "0"}));
}

TEST_F(MouseTest, ASweepFromOutsideCoversThePointsInside) {
    sweep(-0.1, -0.1, 0.3, 0.13);
    EXPECT_EQ(flags(), (Flags{"11000", "00", "0"}));
}

TEST_F(MouseTest, ASweepStartsTheZoneAnew) {
    zgen.events = 5;
    sweep(0.2, 0.2, 0.6, 0.3);
    EXPECT_EQ(zgen.events, 0);
    zgen.events = 5;
    mouse_down(left, 1, 1, ctrl);
    mouse_up(left, 2, 2, ctrl);
    EXPECT_EQ(zgen.events, 5);
}

TEST_F(MouseTest, AnAltSweepDeselects) {
    sweep(-0.1, -0.1, 1.1, 1.1);
    EXPECT_EQ(flags(), (Flags{"11111", "11", "1"}));
    sweep(0.2, 0.2, 0.6, 0.3, alt);
    EXPECT_EQ(flags(), (Flags{"11011", "00", "1"}));
    EXPECT_EQ(selecting, 1);
    sweep(-0.1, -0.1, 1.1, 1.1, alt);
    EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(MouseTest, AnAltSweepIsADeselectionOnce) {
    sweep(0.2, 0.2, 0.6, 0.3, alt);
    sweep(0.2, 0.2, 0.6, 0.3);
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
}

TEST_F(MouseTest, AnUnfinishedDeselectionOutlivesAShiftPress) {
    sweep(-0.1, -0.1, 1.1, 1.1);
    mouse_down(left, 10, 10, alt);
    mouse_up(left, 200, 200, shift); // clears `selecting`: no sweep ends here
    EXPECT_EQ(flags(), (Flags{"11111", "11", "1"}));
    mouse_down(left, 10, 10, shift);
    mouse_up(left, 10, 10, shift);
    sweep(0.2, 0.2, 0.6, 0.3);
    EXPECT_EQ(flags(), (Flags{"11011", "00", "1"}));
    sweep(0.2, 0.2, 0.6, 0.3);
    EXPECT_EQ(flags(), (Flags{"11111", "11", "1"}));
}

TEST_F(MouseTest, ACtrlPressSetsNoSweep) {
    set_flags({"10000"});
    sweep(-0.1, -0.1, 1.1, 1.1, ctrl);
    EXPECT_EQ(flags(), (Flags{"10000", "00", "0"}));
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(selecting, 0);
}

TEST_F(MouseTest, ASweepOverEmptySpaceSetsSweepSelectAlone) {
    sweep(0.8, 0.1, 0.9, 0.2);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(selecting, 1);
}

TEST_F(MouseTest, AClickFindsThePointAndSetsSweepSelect) {
    EXPECT_EQ(click(0.25, 0.125), "##FOUND: 0  1\n");
    EXPECT_EQ(directSelect, 1);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(numfound, 1);
    EXPECT_EQ(foundSubscriptions.count, 1);
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(selecting, 1);
}

TEST_F(MouseTest, AClickExactlyOnAPointSelectsItToo) {
    // The press lies on the point when the point lies on the press.
    const int x = pixel_x(0.25);
    const int y = pixel_y(0.125);
    mouse_down(left, x, y);
    printed([&] { mouse_up(left, x, y); });
    clear_all();
    parray[0][1].time = tfsquare[1];
    parray[0][1].freq = maxfreq * tfsquare[3];
    EXPECT_EQ(click(0.25, 0.125), "##FOUND: 0  1\n");
    EXPECT_EQ(flags(), (Flags{"01000", "00", "0"}));
    EXPECT_EQ(selected, 1);
}

TEST_F(MouseTest, ClicksPair) {
    EXPECT_EQ(click(0.25, 0.125), "##FOUND: 0  1\n");
    EXPECT_EQ(click(1.0, 1.0), "##FOUND: 0  4\n##FOUN2: 0  1\n");
    EXPECT_EQ(foundSubscriptions.count, 2);
}

TEST_F(MouseTest, AClickWithVerticalMotionSweepsALineAndFindsAtThePress) {
    // From the height of 256 Hz up to 768 Hz.
    EXPECT_EQ(sweep(0.5, 0.25, 0.5, 0.75), "##FOUND: 0  2\n");
    clear_all();
    EXPECT_EQ(sweep(0.5, 0.75, 0.5, 0.25), "##FOUND: 2  0\n");
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(MouseTest, AClickWithHorizontalMotionOnlySweeps) {
    mouse_down(left, 100, 100);
    EXPECT_EQ(printed([] { mouse_up(left, 101, 100); }), "");
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(MouseTest, AnAltClickAlsoFinds) {
    EXPECT_EQ(click(0.25, 0.125, alt), "##FOUND: 0  1\n");
    EXPECT_EQ(directSelect, 1);
    EXPECT_EQ(sweepSelect, 0);
}

TEST_F(MouseTest, AClickThatHitsNothingSetsSweepSelectAlone) {
    EXPECT_EQ(click(0.9, 0.5), "");
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(found, 0);
}

TEST_F(MouseTest, AClickInTheFlatViewWithoutBreakpointsFindsNothing) {
    bps = 0;
    EXPECT_EQ(click(0.25, 0.125), "");
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(MouseTest, AClickInPerspectiveFindsNothing) {
    flat = 0;
    EXPECT_EQ(click(0.25, 0.125), "");
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(MouseTest, WithoutBreakpointsASweepSelectsByTheOldRectangle) {
    sweep(0.2, 0.2, 0.6, 0.3);
    clear_all();
    bps = 0;
    flat = 0;
    sweep(0.9, 0.9, 0.95, 0.95);
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
}

TEST_F(MouseTest, SweepsInTheLogarithmicView) {
    logpos = 1;
    sweep(0.2, 0.4, 0.8, 0.8);
    EXPECT_EQ(flags(), (Flags{"00110", "11", "0"}));
}

TEST_F(MouseTest, ShiftOrCtrlTakesTheRectangleAway) {
    for (const int modifiers : {shift, ctrl}) {
        sweep(0.2, 0.2, 0.6, 0.3);
        EXPECT_EQ(selecting, 1);
        mouse_down(left, 10, 10, modifiers);
        EXPECT_EQ(selecting, 0);
        mouse_up(left, 10, 10, modifiers);
        EXPECT_EQ(selecting, 0);
        EXPECT_EQ(selected, 1);
        EXPECT_EQ(sweepSelect, 1);
    }
}

TEST_F(MouseTest, AltInPerspectiveTakesTheRectangleAwayButNotInTheFlatView) {
    sweep(0.2, 0.2, 0.6, 0.3);
    mouse_down(right, 10, 10, alt);
    EXPECT_EQ(selecting, 1);
    flat = 0;
    mouse_down(right, 10, 10, alt);
    EXPECT_EQ(selecting, 0);
}

TEST_F(MouseTest, AModifierAtTheReleaseCallsTheSweepOff) {
    mouse_down(left, pixel_x(0.2), pixel_y(0.2));
    mouse_up(left, pixel_x(0.6), pixel_y(0.3), ctrl);
    EXPECT_EQ(flags(), (Flags{"00000", "00", "0"}));
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(redisplays(), 1);
}

TEST_F(MouseTest, CombinedModifiersAtTheReleaseCountAsNone) {
    mouse_down(left, pixel_x(0.2), pixel_y(0.2));
    mouse_up(left, pixel_x(0.6), pixel_y(0.3), shift | ctrl);
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
}

TEST_F(MouseTest, GestureFromIdleToIdle) {
    EXPECT_EQ(selecting, 0);
    mouse_down(left, pixel_x(0.2), pixel_y(0.2));
    EXPECT_EQ(selecting, 1); // sweeping
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(selected, 0);
    mouse_up(left, pixel_x(0.6), pixel_y(0.3));
    EXPECT_EQ(selecting, 1); // swept
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(directSelect, 0);
    click(0.25, 0.125);
    EXPECT_EQ(selecting, 1); // swept and direct side by side
    EXPECT_EQ(directSelect, 1);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
    mouse_down(left, 10, 10, shift);
    mouse_up(left, 30, 30, shift);
    EXPECT_EQ(selecting, 0); // the rectangle is gone, the selections stand
    EXPECT_EQ(directSelect, 1);
    EXPECT_EQ(foundSubscriptions.count, 1);
    EXPECT_EQ(selected, 1);
    clear_all();
    EXPECT_EQ(selecting, 0);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(foundSubscriptions.count, 0);
}

TEST_F(MouseTest, TheRectangleIsDrawnAfterTheReleaseNotBefore) {
    mouse_down(left, pixel_x(0.2), pixel_y(0.2));
    mouse_up(left, pixel_x(0.6), pixel_y(0.3));
    frame();
    const auto loops = primitives_of(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 1u);
    EXPECT_NEAR(loops[0].vertices[0].x, 0.6, 0.003);
    EXPECT_NEAR(loops[0].vertices[2].x, 0.2, 0.003);
    EXPECT_NEAR(loops[0].vertices[0].y, 0.3, 0.003);
    EXPECT_NEAR(loops[0].vertices[2].y, 0.2, 0.003);
}

TEST_F(MouseTest, APanDragsTheView) {
    mouse_down(left, 100, 100, shift);
    mouse_move(100, 100);
    mouse_move(145, 100);
    mouse_up(left, 145, 100, shift);
    EXPECT_FLOAT_EQ(static_cast<float>(gCamera.viewPos[0]), 0.1f);
    frame();
    sweep(0.2, 0.2, 0.6, 0.3); // pixels follow the pan
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
}

TEST_F(MouseTest, AZoomDragsTheApertureAndAClickStillHits) {
    mouse_down(left, 100, 100, ctrl);
    mouse_move(100, 100);
    mouse_move(500, 100);
    mouse_up(left, 500, 100, ctrl);
    EXPECT_LT(gCamera.aperture, 4.0);
    frame();
    EXPECT_EQ(click(0.5, 0.75), "##FOUND: 2  0\n");
}

TEST_F(MouseTest, SweepsInAWindowThatIsNotSquare) {
    gl_double::recorder().viewport = {0, 0, 800, 300};
    gCamera.viewWidth = 800;
    gCamera.viewHeight = 300;
    frame();
    sweep(0.2, 0.2, 0.6, 0.3);
    EXPECT_EQ(flags(), (Flags{"00100", "11", "0"}));
}

TEST_F(MouseTest, CountsPressesAndReleasesAsInput) {
    const uint32_t before = input_events;
    sweep(0.2, 0.2, 0.6, 0.3);
    EXPECT_EQ(input_events, before + 2);
}

TEST_F(MouseTest, StandsBeforeTheFirstFrame) {
    gl_double::reset();
    zero[0] = zero[1] = 0.0;
    for (const int modifiers : {0, shift, ctrl, alt}) {
        printed([&] {
            for (const int button : {left, middle, right}) {
                mouse_down(button, 10, 10, modifiers);
                mouse_move(10, 12);
                mouse_move(10, 14);
                mouse_up(button, 10, 14, modifiers);
            }
        });
    }
    EXPECT_EQ(sweepSelect, 1);
}

TEST_F(MouseTest, StandsAnEmptyStore) {
    fill_store({});
    EXPECT_EQ(click(0.5, 0.5), "");
    EXPECT_EQ(sweep(0.1, 0.1, 0.9, 0.9), "");
    EXPECT_EQ(sweep(0.1, 0.1, 0.9, 0.9, alt), "");
    EXPECT_EQ(sweepSelect, 1);
    EXPECT_EQ(selected, 0);
}

TEST_F(MouseTest, StandsASoundOfNoLength) {
    fill_store({{{1.0f, 100.0f, 0.0f}}, {{1.0f, 100.0f, 0.0f}}});
    frame();
    click(0.5, 0.5);
    sweep(0.1, 0.1, 0.9, 0.9);
    sweep(0.1, 0.1, 0.9, 0.9, alt);
    EXPECT_EQ(sweepSelect, 1);
}
