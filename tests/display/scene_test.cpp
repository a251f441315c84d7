// Camera, projection, point size, callbacks and the outer order of a frame.
#include "display/scene.h"

#include "display/view.h"
#include "live/live.h"
#include "tests/support/drawing.h"

#include <cmath>

using namespace gl_double;

namespace {

using SceneTest = DrawingTest;

constexpr double half_degree = 0.5 * 0.0174532925;
/// Half the side of the square that is seen at the distance of the scene plane.
const double seen = 15.0 * std::tan(5.0 * half_degree);

/// Window coordinates of a scene point by the matrices of the last frame.
std::array<double, 3> on_screen(double x, double y, double z) {
    GLint viewport[4] = {0, 0, gCamera.viewWidth, gCamera.viewHeight};
    std::array<double, 3> at = {};
    gluProject(x, y, z, mvmatrix, projmatrix, viewport, &at[0], &at[1], &at[2]);
    return at;
}

void expect_on_screen(double x, double y, double z, double pixel_x, double pixel_y) {
    const auto at = on_screen(x, y, z);
    EXPECT_NEAR(at[0], pixel_x, 1e-6);
    EXPECT_NEAR(at[1], pixel_y, 1e-6);
}

/// Depth value of a point at this distance from the camera, near 1 and far 20.
double depth_at(double distance) {
    return 0.5 * (21.0 / 19.0 - 40.0 / 19.0 / distance) + 0.5;
}

std::vector<double> frustum_of_frame() {
    frame();
    const auto places = calls_of("glFrustum");
    EXPECT_EQ(places.size(), 1u);
    return recorder().calls[places.at(0)].values;
}

int point_size_after(int width, int height, float at_zoom) {
    zoom = at_zoom;
    reshape(width, height);
    return ptsize;
}

} // namespace

TEST_F(SceneTest, ViewStartValues) {
    reset_view();
    EXPECT_EQ(flat, 0);
    EXPECT_EQ(clo, 0);
    EXPECT_EQ(bps, 0);
    EXPECT_EQ(logpos, 0);
    EXPECT_EQ(coord, 1);
    EXPECT_EQ(gShowHelp, 1);
    EXPECT_EQ(gShowInfo, 1);
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(gShowStaff, 0);
    EXPECT_EQ(gShowClef, 0);
    EXPECT_EQ(X, 0);
    EXPECT_EQ(Y, 1);
    EXPECT_EQ(zoom, 1.0f);
    EXPECT_EQ(ptsize, 1);
    EXPECT_EQ(dragging, 0);
    EXPECT_EQ(tCallbackReg, 0);
    EXPECT_EQ(thewidth, 450);
    EXPECT_EQ(theheight, 450);
    EXPECT_EQ(gShapeSize, 10.0f);
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(scal[axis], 1.0f);
        EXPECT_EQ(trans[axis], 0.0f);
        EXPECT_EQ(tuplet[axis], 0.0f);
        EXPECT_EQ(gOrigin[axis], 0.0);
    }
    for (const float angle : rot) {
        EXPECT_EQ(angle, 0.0f);
    }
    const float world[] = {180.0f, 0.0f, -1.0f, 0.0f};
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(gWorldRotation[k], world[k]);
    }
}

TEST_F(SceneTest, InitializeSetsTheFixedState) {
    initialize();
    EXPECT_TRUE(recorder().enabled.contains(GL_DEPTH_TEST));
    EXPECT_TRUE(recorder().enabled.contains(GL_BLEND));
    EXPECT_FALSE(recorder().enabled.contains(GL_POLYGON_OFFSET_FILL));
    const Call smooth = {"glShadeModel", {GL_SMOOTH}};
    const Call winding = {"glFrontFace", {GL_CCW}};
    const Call blend = {"glBlendFunc", {GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA}};
    const auto has = [](const Call &call) {
        for (const Call &made : recorder().calls) {
            if (made == call) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(has(smooth));
    EXPECT_TRUE(has(winding));
    EXPECT_TRUE(has(blend));
    const Colour &white = recorder().colour;
    EXPECT_EQ(white.r, 1.0);
    EXPECT_EQ(white.g, 1.0);
    EXPECT_EQ(white.b, 1.0);
    const Colour &clear = recorder().clear_colour;
    EXPECT_EQ(clear.r, 0.0);
    EXPECT_EQ(clear.g, 0.0);
    EXPECT_FLOAT_EQ(static_cast<float>(clear.b), 0.1f);
    EXPECT_EQ(clear.a, 1.0);
}

TEST_F(SceneTest, InitializePutsTheCameraAtItsDefaults) {
    gCamera = {};
    gCamera.aperture = 2.0;
    initialize();
    const double position[] = {0.0, 0.0, -15.0};
    const double direction[] = {0.0, 0.0, 15.0};
    const double up[] = {0.0, 1.0, 0.0};
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(gCamera.viewPos[axis], position[axis]);
        EXPECT_EQ(gCamera.viewDir[axis], direction[axis]);
        EXPECT_EQ(gCamera.viewUp[axis], up[axis]);
        EXPECT_EQ(gCamera.rotPoint[axis], gOrigin[axis]);
        EXPECT_EQ(mOrigin[axis], gOrigin[axis]);
    }
    EXPECT_TRUE(std::signbit(gCamera.viewDir[0]));
    EXPECT_TRUE(std::signbit(gCamera.viewDir[1]));
    EXPECT_EQ(gCamera.focalLength, 15.0);
    EXPECT_EQ(gCamera.aperture, 5.0);
    EXPECT_EQ(gCamera.viewWidth, 450);
    EXPECT_EQ(gCamera.viewHeight, 450);
}

TEST_F(SceneTest, CameraResetTouchesNoGlState) {
    gCamera.viewPos[0] = 3.0;
    gCamera.aperture = 1.0;
    mOrigin[1] = 4.0;
    gCameraReset();
    EXPECT_EQ(gCamera.viewPos[0], 0.0);
    EXPECT_EQ(gCamera.aperture, 5.0);
    EXPECT_EQ(mOrigin[1], 0.0);
    EXPECT_TRUE(recorder().calls.empty());
}

TEST_F(SceneTest, DefaultFrustumHasNearOneAndFarTwenty) {
    const auto frustum = frustum_of_frame();
    const double q = std::tan(5.0 * half_degree);
    EXPECT_EQ(frustum, (std::vector<double>{-q, q, -q, q, 1.0, 20.0}));
}

TEST_F(SceneTest, ApertureAloneNarrowsTheFrustum) {
    gCamera.aperture = 2.5;
    const auto frustum = frustum_of_frame();
    EXPECT_EQ(frustum[1], std::tan(2.5 * half_degree));
    EXPECT_EQ(frustum[4], 1.0);
    EXPECT_EQ(frustum[5], 20.0);
}

TEST_F(SceneTest, NearPlaneFollowsACameraCloserThanSix) {
    gCamera.viewPos[2] = -5.5;
    const auto frustum = frustum_of_frame();
    EXPECT_EQ(frustum[4], 0.5);
    EXPECT_EQ(frustum[5], 10.5);
    EXPECT_EQ(frustum[3], 0.5 * std::tan(5.0 * half_degree));
}

TEST_F(SceneTest, NearPlaneHasNoLowerBound) {
    gCamera.viewPos[2] = -4.0;
    EXPECT_EQ(frustum_of_frame()[4], -1.0);
    recorder().errors.clear(); // GL refuses such a frustum
}

TEST_F(SceneTest, PanningLeavesTheClippingPlanes) {
    gCamera.viewPos[0] = 0.3;
    gCamera.viewPos[1] = -0.2;
    const auto frustum = frustum_of_frame();
    EXPECT_EQ(frustum[4], 1.0);
    EXPECT_EQ(frustum[5], 20.0);
}

TEST_F(SceneTest, CameraLooksAtTheCentreOfTheSquare) {
    frame();
    const auto places = calls_of("gluLookAt");
    ASSERT_EQ(places.size(), 1u);
    EXPECT_EQ(recorder().calls[places[0]].values,
              (std::vector<double>{-0.5, 0.5, -15, -0.5, 0.5, 0, 0, 1, 0}));
    expect_on_screen(0.5, 0.5, 0.0, 225.0, 225.0);
}

TEST_F(SceneTest, LookAtMovesWithThePosition) {
    gCamera.viewPos[0] = 0.25;
    gCamera.viewPos[1] = -0.125;
    gCamera.viewDir[0] = 1.0;
    frame();
    EXPECT_EQ(recorder().calls[calls_of("gluLookAt").at(0)].values,
              (std::vector<double>{-0.25, 0.375, -15, 0.75, 0.375, 0, 0, 1, 0}));
}

TEST_F(SceneTest, UnitSquareStandsUprightInTheWindow) {
    frame();
    const double side = 225.0 * 0.5 / seen;
    expect_on_screen(0.0, 0.0, 0.0, 225.0 - side, 225.0 - side);
    expect_on_screen(1.0, 0.0, 0.0, 225.0 + side, 225.0 - side);
    expect_on_screen(0.0, 1.0, 0.0, 225.0 - side, 225.0 + side);
    expect_on_screen(1.0, 1.0, 0.0, 225.0 + side, 225.0 + side);
}

TEST_F(SceneTest, WeakAmplitudesLieAwayFromTheViewer) {
    frame();
    EXPECT_NEAR(on_screen(0.5, 0.5, 0.0)[2], depth_at(15.0), 1e-9);
    EXPECT_NEAR(on_screen(0.5, 0.5, -0.3)[2], depth_at(15.3), 1e-9);
    EXPECT_GT(depth_at(15.3), depth_at(15.0));
}

TEST_F(SceneTest, RotationAboutXTurnsAroundTheMiddleOfTheSquare) {
    rot[0] = 90.0f;
    frame();
    expect_on_screen(0.5, 0.5, 0.0, 225.0, 225.0);
    expect_on_screen(0.5, 1.0, 0.0, 225.0, 225.0);
    EXPECT_NEAR(on_screen(0.5, 1.0, 0.0)[2], depth_at(15.5), 1e-9);
}

TEST_F(SceneTest, RotationAboutYTurnsAroundTheMiddleOfTheSquare) {
    rot[1] = 90.0f;
    frame();
    expect_on_screen(0.5, 0.5, 0.0, 225.0, 225.0);
    expect_on_screen(1.0, 0.5, 0.0, 225.0, 225.0);
    EXPECT_NEAR(on_screen(1.0, 0.5, 0.0)[2], depth_at(15.5), 1e-9);
}

TEST_F(SceneTest, RotationAboutYActsBeforeRotationAboutX) {
    rot[0] = 90.0f;
    rot[1] = 90.0f;
    frame();
    expect_on_screen(1.0, 0.5, 0.0, 225.0, 225.0 - 225.0 * 0.5 / seen);
}

TEST_F(SceneTest, SecondPairOfAnglesOnlyKeepsThem) {
    rot[2] = 40.0f;
    rot[3] = 50.0f;
    frame();
    const double side = 225.0 * 0.5 / seen;
    expect_on_screen(1.0, 1.0, 0.0, 225.0 + side, 225.0 + side);
}

TEST_F(SceneTest, FrameLeavesTheReferencePixels) {
    frame();
    const double side = 225.0 * 0.5 / seen;
    for (int axis = 0; axis < 2; ++axis) {
        EXPECT_NEAR(zero[axis], 225.0 - side, 1e-6);
        EXPECT_NEAR(one[axis], 225.0 + side, 1e-6);
    }
    EXPECT_NEAR(zero[0], 53.2, 0.1);
    EXPECT_NEAR(one[0], 396.8, 0.1);
    EXPECT_NEAR(zero[2], depth_at(15.0), 1e-9);
    EXPECT_NEAR(one[2], depth_at(15.0), 1e-9);
}

TEST_F(SceneTest, ReferencePixelsFollowZoomAndPan) {
    gCamera.aperture = 2.5;
    gCamera.viewPos[0] = 0.1;
    frame();
    const double scale = 225.0 / (15.0 * std::tan(2.5 * half_degree));
    EXPECT_NEAR(zero[0], 225.0 + (-0.5 + 0.1) * scale, 1e-6);
    EXPECT_NEAR(one[0], 225.0 + (0.5 + 0.1) * scale, 1e-6);
    EXPECT_NEAR(zero[1], 225.0 - 0.5 * scale, 1e-6);
}

TEST_F(SceneTest, ReferencePointsMoveByTheOffset) {
    trans[0] = 0.25f;
    trans[1] = 0.125f;
    frame();
    const auto low = on_screen(0.25, -0.125, 0.0);
    const auto high = on_screen(1.25, 0.875, 0.0);
    for (size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(zero[axis], low[axis], 1e-9);
        EXPECT_NEAR(one[axis], high[axis], 1e-9);
    }
}

TEST_F(SceneTest, WindowThatIsNotSquareStretchesTheSquare) {
    reshape(900, 450);
    frame();
    const double side = 0.5 / seen;
    EXPECT_NEAR(zero[0], 450.0 - 450.0 * side, 1e-6);
    EXPECT_NEAR(one[0], 450.0 + 450.0 * side, 1e-6);
    EXPECT_NEAR(zero[1], 225.0 - 225.0 * side, 1e-6);
    EXPECT_NEAR(one[1], 225.0 + 225.0 * side, 1e-6);
    EXPECT_EQ(recorder().calls[calls_of("glFrustum").at(0)].values[1],
              recorder().calls[calls_of("glFrustum").at(0)].values[3]);
}

TEST_F(SceneTest, FrameKeepsTheMatricesItDrewWith) {
    rot[0] = 20.0f;
    frame();
    EXPECT_TRUE(std::equal(mvmatrix, mvmatrix + 16, top(GL_MODELVIEW).begin()));
    EXPECT_TRUE(std::equal(projmatrix, projmatrix + 16, top(GL_PROJECTION).begin()));
    EXPECT_EQ(recorder().matrix_mode, static_cast<GLenum>(GL_MODELVIEW));
}

TEST_F(SceneTest, OuterOrderOfAFrame) {
    fill_store(small_content());
    frame();
    const std::vector<Call> &calls = recorder().calls;
    const size_t frustum = calls_of("glFrustum").at(0);
    const size_t look = calls_of("gluLookAt").at(0);
    const auto clears = calls_of("glClear");
    const size_t first_drawn = std::min(calls_of("primitive").at(0), calls_of("label").at(0));
    const size_t last_drawn = std::max(calls_of("primitive").back(), calls_of("label").back());
    const auto viewports = calls_of("glViewport");
    const auto queries = calls_of("glGetDoublev");
    ASSERT_EQ(viewports.size(), 3u); // two more by the text layer: its own, and back
    ASSERT_GE(queries.size(), 2u);
    EXPECT_LT(frustum, look);
    EXPECT_LT(look, clears.front());
    EXPECT_LT(clears.back(), first_drawn);
    EXPECT_LT(last_drawn, viewports[0]);
    EXPECT_LT(viewports[0], queries[queries.size() - 2]);
    EXPECT_EQ(calls.back().name, "glutSwapBuffers");
    EXPECT_EQ(recorder().swaps, 1);
    EXPECT_EQ(calls[clears[0]].values[0], GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    const size_t background = calls_of("glClearColor").at(0);
    EXPECT_LT(background, clears[0]);
    EXPECT_EQ(calls[background].values, (std::vector<double>{0.0, 0.0, 0.1f, 1.0}));
}

TEST_F(SceneTest, FrameResetsTheViewportsCorner) {
    glViewport(7, 9, 300, 200);
    frame();
    EXPECT_EQ(recorder().viewport, (std::array<GLint, 4>{0, 0, 300, 200}));
    EXPECT_NEAR(zero[0], 150.0 - 150.0 * 0.5 / seen, 1e-6);
    EXPECT_NEAR(zero[1], 100.0 - 100.0 * 0.5 / seen, 1e-6);
}

TEST_F(SceneTest, FramePostsNoRedisplay) {
    fill_store(small_content());
    frame();
    EXPECT_EQ(recorder().redisplays, 0);
}

TEST_F(SceneTest, DrawSceneUsesTheCallersMatricesAndDoesNotSwap) {
    fill_store(small_content());
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(0.25f, 0.0f, 0.0f);
    forget_drawing();
    draw_scene(gCamera);
    EXPECT_TRUE(calls_of("glFrustum").empty());
    EXPECT_TRUE(calls_of("gluLookAt").empty());
    EXPECT_EQ(recorder().swaps, 0);
    EXPECT_EQ(mvmatrix[12], 0.25);
    EXPECT_NEAR(zero[0], 225.0 + 225.0 * 0.25, 1e-9);
    EXPECT_FALSE(recorder().primitives.empty());
}

TEST_F(SceneTest, ReshapeStoresTheSizeAndPostsARedisplay) {
    reshape(640, 480);
    EXPECT_EQ(recorder().viewport, (std::array<GLint, 4>{0, 0, 640, 480}));
    EXPECT_EQ(gCamera.viewWidth, 640);
    EXPECT_EQ(gCamera.viewHeight, 480);
    EXPECT_EQ(thewidth, 640);
    EXPECT_EQ(theheight, 480);
    EXPECT_EQ(recorder().redisplays, 1);
    EXPECT_TRUE(calls_of("glFrustum").empty());
}

TEST_F(SceneTest, PointSizeIsOneAtTheStart) {
    EXPECT_EQ(point_size_after(450, 450, 1.0f), 1); // r about 1.41
}

TEST_F(SceneTest, PointSizeOfALargeWindowByZoom) {
    EXPECT_EQ(point_size_after(900, 900, 1.0f), 1); // r about 2.83
    EXPECT_EQ(point_size_after(900, 900, 3.0f), 4); // r about 8.49
}

TEST_F(SceneTest, PointSizeStepsLieAtFourFiveAndAHalfAndEight) {
    // A window of 1800 by 1350 has r = 5 at zoom 1, without rounding.
    EXPECT_EQ(point_size_after(1800, 1350, 0.8f), 2); // the f32 0.8 lies above 0.8
    EXPECT_EQ(point_size_after(1800, 1350, 0.7999f), 1);
    EXPECT_EQ(point_size_after(1800, 1350, 1.0f), 2);
    EXPECT_EQ(point_size_after(1800, 1350, 1.0999f), 2);
    EXPECT_EQ(point_size_after(1800, 1350, 1.1001f), 3);
    EXPECT_EQ(point_size_after(1800, 1350, 1.5999f), 3);
    EXPECT_EQ(point_size_after(1800, 1350, 1.6001f), 4);
    EXPECT_EQ(point_size_after(1800, 1350, 100.0f), 4);
}

TEST_F(SceneTest, PointSizeBordersBelongToTheSmallerSize) {
    // 3 : 4 : 5 windows, at zooms that are exact in f32.
    EXPECT_EQ(point_size_after(1440, 1080, 1.0f), 1); // r = 4
    EXPECT_EQ(point_size_after(1980, 1485, 1.0f), 2); // r = 5.5
    EXPECT_EQ(point_size_after(2880, 2160, 1.0f), 3); // r = 8
}

TEST_F(SceneTest, ReshapeAppliesThePointSizeLawAgain) {
    ptsize = 4;
    reshape(450, 450);
    EXPECT_EQ(ptsize, 1);
}

TEST_F(SceneTest, TimerRepaintsAndArmsItselfWhileMidiIsOn) {
    midi = 1;
    tCallbackReg = 1;
    timerCB(100);
    EXPECT_EQ(recorder().redisplays, 1);
    ASSERT_EQ(recorder().timers.size(), 1u);
    EXPECT_EQ(recorder().timers[0].milliseconds, 100u);
    EXPECT_EQ(recorder().timers[0].callback, timerCB);
    EXPECT_EQ(recorder().timers[0].value, 100);
    EXPECT_EQ(tCallbackReg, 1);
}

TEST_F(SceneTest, TimerLapsesAtTheFirstExpiryAfterMidiGoesOff) {
    midi = 1;
    tCallbackReg = 1;
    glutTimerFunc(100, timerCB, 100);
    fire_timers();
    fire_timers();
    EXPECT_EQ(recorder().redisplays, 2);
    midi = 0;
    fire_timers();
    EXPECT_EQ(recorder().redisplays, 2);
    EXPECT_TRUE(recorder().timers.empty());
    EXPECT_EQ(tCallbackReg, 0);
}

TEST_F(SceneTest, UpdatePostsARedisplayForAnyValueButZero) {
    update(0);
    EXPECT_EQ(recorder().redisplays, 0);
    update(1);
    update(-3);
    EXPECT_EQ(recorder().redisplays, 2);
}
