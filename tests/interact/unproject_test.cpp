// From pixels to scene coordinates, against the geometry of the camera worked out by hand.
#include "interact/unproject.h"

#include "display/scene.h"
#include "display/view.h"
#include "interact/selection.h"
#include "interact/view_drags.h"
#include "live/live.h"
#include "tests/support/console.h"
#include "tests/support/pointer.h"

#include <cmath>

namespace {

constexpr double near_enough = 2e-6;

class Mapping : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        fill_store(ladder_content());
        open_edit_view();
    }
};

void set_square(int x_press, int x_release, int y_press, int y_release) {
    square[0] = x_press;
    square[1] = x_release;
    square[2] = y_press;
    square[3] = y_release;
}

/// Compares tfsquare for a few rectangles with the hand-made mapping of the present camera.
void expect_mapping() {
    frame();
    const int w = gCamera.viewWidth;
    const int h = gCamera.viewHeight;
    const int rectangles[][4] = {{w / 2, w / 2, h / 2, h / 2},
                                 {10, w - 20, 30, h - 40},
                                 {w - 1, 0, 0, h - 1},
                                 {-50, w + 70, h + 90, -110}};
    for (const auto &r : rectangles) {
        set_square(r[0], r[1], r[2], r[3]);
        transformInput();
        EXPECT_NEAR(tfsquare[0], scene_t(r[1]), near_enough);
        EXPECT_NEAR(tfsquare[1], scene_t(r[0]), near_enough);
        EXPECT_NEAR(tfsquare[2], scene_f(r[3]), near_enough);
        EXPECT_NEAR(tfsquare[3], scene_f(r[2]), near_enough);
    }
}

void zoom_by(int pixels) {
    dragging = 0;
    mouseScale(0, 0);
    mouseScale(pixels, 0);
    dragging = 0;
}

void pan_by(int dx, int dy) {
    dragging = 0;
    mouseTranslate(0, 0);
    mouseTranslate(dx, dy);
    dragging = 0;
}

std::string zone(int first, int second) {
    set_square(first, second, 0, 0);
    return printed([] { x2time(&square[0], &square[1], &zgen); });
}

std::string zone_line(double start, double end) {
    char text[100];
    std::snprintf(text, sizeof text, "->start_time: %fs\tend_time: %fs\n", start, end);
    return text;
}

} // namespace

TEST_F(Mapping, TheMiddleOfTheWindowIsTheMiddleOfTheBox) {
    set_square(225, 225, 225, 225);
    transformInput();
    for (const float at : tfsquare) {
        EXPECT_NEAR(at, 0.5, near_enough);
    }
}

TEST_F(Mapping, OriginAndFarCornerAreTheReferencePoints) {
    EXPECT_NEAR(scene_t(zero[0]), 0.0, 1e-6);
    EXPECT_NEAR(scene_f(450.0 - zero[1]), 0.0, 1e-6);
    EXPECT_NEAR(scene_t(one[0]), 1.0, 1e-6);
    EXPECT_NEAR(scene_f(450.0 - one[1]), 1.0, 1e-6);
}

TEST_F(Mapping, FollowsTheDefaultCamera) {
    expect_mapping();
}

TEST_F(Mapping, FollowsPans) {
    pan_by(120, -45);
    EXPECT_NE(gCamera.viewPos[0], 0.0);
    expect_mapping();
}

TEST_F(Mapping, FollowsZooms) {
    zoom_by(800);
    EXPECT_LT(gCamera.aperture, 2.0);
    expect_mapping();
}

TEST_F(Mapping, FollowsPansAndZoomsInWindowsThatAreNotSquare) {
    reshape(900, 300);
    expect_mapping();
    pan_by(-200, 77);
    zoom_by(1500);
    expect_mapping();
    reshape(320, 1000);
    expect_mapping();
}

TEST_F(Mapping, FollowsAnInvertedPicture) {
    zoom_by(1575); // takes the aperture from 5 to -2
    EXPECT_NEAR(gCamera.aperture, -2.0, 1e-6);
    expect_mapping();
}

TEST_F(Mapping, IsNotClamped) {
    set_square(0, 449, 449, 0);
    transformInput();
    EXPECT_LT(tfsquare[1], 0.0f);
    EXPECT_GT(tfsquare[0], 1.0f);
    EXPECT_LT(tfsquare[3], 0.0f);
    EXPECT_GT(tfsquare[2], 1.0f);
}

TEST_F(Mapping, ScalesByTheFocalLengthInSinglePrecision) {
    set_square(100, 300, 200, 50);
    transformInput();
    const float before[] = {tfsquare[0], tfsquare[1], tfsquare[2], tfsquare[3]};
    gCamera.focalLength = 30.0;
    transformInput();
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(tfsquare[k], 2.0f * before[k]);
    }
}

TEST_F(Mapping, IsTheSameForScrubs) {
    set_square(100, 300, 200, 50);
    transformInput();
    const SceneOffset release = scene_offset(300, viewport_height() - 50);
    EXPECT_EQ(release.t, tfsquare[0]);
    EXPECT_EQ(release.f, tfsquare[2]);
}

TEST_F(Mapping, WorksOnlyWhileBreakpointsAreExactlyOne) {
    for (const int value : {0, 2, -1}) {
        bps = value;
        thewidth = 7;
        tfsquare[0] = 9.0f;
        tuplet[0] = 11.0f;
        set_square(100, 300, 200, 50);
        transformInput();
        testInput(20, 20);
        EXPECT_EQ(tfsquare[0], 9.0f);
        EXPECT_EQ(tuplet[0], 11.0f);
        EXPECT_EQ(thewidth, 7);
    }
}

TEST_F(Mapping, TakesTheViewsSizeOver) {
    thewidth = theheight = 7;
    transformInput();
    EXPECT_EQ(thewidth, 450);
    EXPECT_EQ(theheight, 450);
    thewidth = theheight = 7;
    testInput(1, 1);
    EXPECT_EQ(thewidth, 450);
    EXPECT_EQ(theheight, 450);
}

TEST_F(Mapping, PutsThePointerMarkFarAboveTheBox) {
    set_square(100, 300, 200, 50);
    transformInput();
    EXPECT_EQ(tuplet[0], tfsquare[0]);
    EXPECT_NEAR(tuplet[1], 15.0 - scene_f(50), 1e-5);
    EXPECT_EQ(tuplet[2], 0.0f);
}

TEST_F(Mapping, DividesThePointerMarkByTheScale) {
    scal[0] = 2.0f;
    scal[1] = 4.0f;
    set_square(100, 300, 200, 50);
    transformInput();
    EXPECT_EQ(tuplet[0], tfsquare[0] / 2.0f);
    EXPECT_NEAR(tuplet[1], (15.0 - scene_f(50)) / 4.0, 1e-5);
    testInput(300, 400);
    EXPECT_NEAR(tuplet[0], scene_t(300) / 2.0, near_enough);
    EXPECT_NEAR(tuplet[1], (15.0 - scene_f(50)) / 4.0, 1e-5);
}

TEST_F(Mapping, ASweepsMotionDoesNotTurnTheHeightOver) {
    tuplet[2] = 5.0f;
    testInput(300, 120);
    EXPECT_NEAR(tuplet[0], scene_t(300), near_enough);
    EXPECT_NEAR(tuplet[1], 15.0 - scene_f(450 - 120), 1e-5);
    EXPECT_EQ(tuplet[2], 0.0f);
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(Mapping, LeavesTheMatrixStacksAsTheyWere) {
    const auto stacks = gl_double::recorder().stacks;
    const GLenum mode = gl_double::recorder().matrix_mode;
    transformInput();
    testInput(3, 4);
    zone(100, 200);
    EXPECT_EQ(gl_double::recorder().stacks, stacks);
    EXPECT_EQ(gl_double::recorder().matrix_mode, mode);
}

TEST_F(Mapping, StandsBeforeTheFirstFrame) {
    gl_double::reset();
    zero[0] = zero[1] = 0.0;
    set_square(100, 300, 200, 50);
    transformInput();
    for (const float at : tfsquare) {
        EXPECT_TRUE(std::isfinite(at));
    }
    testInput(3, 4);
    zone(1, 2);
}

TEST_F(Mapping, ZoneRunsFromTheSmallerToTheLargerColumn) {
    const std::string text = zone(120, 300);
    EXPECT_NEAR(zgen.starttime, scene_t(120), near_enough);
    EXPECT_NEAR(zgen.endtime, scene_t(300), near_enough);
    EXPECT_EQ(zgen.time, zgen.starttime);
    EXPECT_EQ(text, zone_line(zgen.starttime, zgen.endtime));
    EXPECT_NEAR(ztfsquare[0], scene_t(120), near_enough);
    EXPECT_NEAR(ztfsquare[1], scene_t(300), near_enough);
    EXPECT_EQ(ztfsquare[2], -0.025f);
    EXPECT_EQ(ztfsquare[3], -0.025f);
}

TEST_F(Mapping, ZonePutsTheColumnsInOrder) {
    const std::string text = zone(300, 120);
    EXPECT_EQ(square[0], 120);
    EXPECT_EQ(square[1], 300);
    EXPECT_EQ(text, zone_line(zgen.starttime, zgen.endtime));
    EXPECT_LT(zgen.starttime, zgen.endtime);
}

TEST_F(Mapping, ZoneOfOtherColumnsPutsTheFirstIntoTheSquare) {
    int32_t first = 250;
    int32_t second = 200;
    square[0] = square[1] = 1;
    printed([&] { x2time(&first, &second, &zgen); });
    EXPECT_EQ(square[0], 250);
    EXPECT_EQ(square[1], 1);
    EXPECT_EQ(first, 200);
    EXPECT_EQ(second, 250);
}

TEST_F(Mapping, ZoneCountsFromTheStartOfTheSound) {
    fill_store({{{1.0f, 100.0f, 0.0f}, {5.0f, 200.0f, 0.0f}}});
    open_edit_view();
    zone(120, 300);
    EXPECT_NEAR(zgen.starttime, 1.0 + 4.0 * scene_t(120), 1e-5);
    EXPECT_NEAR(zgen.endtime, 1.0 + 4.0 * scene_t(300), 1e-5);
}

TEST_F(Mapping, ZoneEndsAtTheEndOfTheSound) {
    const std::string text = zone(120, 449);
    EXPECT_EQ(zgen.endtime, 1.0f);
    EXPECT_EQ(text, zone_line(zgen.starttime, 1.0));
    EXPECT_GT(ztfsquare[1], 1.0f);
}

TEST_F(Mapping, ZoneBeforeTheSoundIsNone) {
    const std::string text = zone(5, 20);
    EXPECT_EQ(text, zone_line(zgen.starttime, zgen.endtime) + "No zone selected\n");
    EXPECT_LT(zgen.endtime, 0.0f);
}

TEST_F(Mapping, ZoneInAnInvertedPictureIsNone) {
    zoom_by(1575);
    frame();
    const std::string text = zone(220, 230);
    EXPECT_GT(zgen.starttime, zgen.endtime);
    EXPECT_EQ(text, zone_line(zgen.starttime, zgen.endtime) + "No zone selected\n");
}

TEST_F(Mapping, ZoneNeedsNoBreakpoints) {
    bps = 0;
    zone(120, 300);
    EXPECT_NEAR(zgen.starttime, scene_t(120), near_enough);
}
