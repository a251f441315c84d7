// Pan, rotation and zoom by mouse, with their figures.
#include "interact/view_drags.h"

#include "display/scene.h"
#include "display/view.h"
#include "tests/support/console.h"
#include "tests/support/pointer.h"

#include <cmath>

namespace {

class ViewDrags : public PointerTest {
  protected:
    static int redisplays() {
        return gl_double::recorder().redisplays;
    }
};

} // namespace

TEST_F(ViewDrags, PanOnlyStoresAtTheFirstEvent) {
    mouseTranslate(1000, 2000);
    EXPECT_EQ(gCamera.viewPos[0], 0.0);
    EXPECT_EQ(gCamera.viewPos[1], 0.0);
    EXPECT_EQ(dragging, 1);
    EXPECT_EQ(redisplays(), 1);
}

TEST_F(ViewDrags, PanMovesByPartsOfTheWindow) {
    mouseTranslate(100, 100);
    mouseTranslate(145, 100);
    EXPECT_EQ(gCamera.viewPos[0], static_cast<double>(45.0f / 450.0f));
    EXPECT_EQ(gCamera.viewPos[1], 0.0);
    mouseTranslate(145, 190);
    EXPECT_EQ(gCamera.viewPos[1], static_cast<double>(90.0f / 450.0f)); // down adds
    EXPECT_EQ(gCamera.viewPos[2], -15.0);
    EXPECT_EQ(mOrigin[0], gCamera.viewPos[0]);
    EXPECT_EQ(mOrigin[1], gCamera.viewPos[1]);
    EXPECT_EQ(redisplays(), 3);
}

TEST_F(ViewDrags, PanTakesWidthAndHeightApart) {
    reshape(900, 300);
    mouseTranslate(0, 0);
    mouseTranslate(90, 90);
    EXPECT_FLOAT_EQ(static_cast<float>(gCamera.viewPos[0]), 0.1f);
    EXPECT_FLOAT_EQ(static_cast<float>(gCamera.viewPos[1]), 0.3f);
}

TEST_F(ViewDrags, PanMovesThePictureAlongInX) {
    fill_store(ladder_content());
    open_edit_view();
    const double before = zero[0];
    mouseTranslate(0, 0);
    mouseTranslate(45, 0);
    frame();
    EXPECT_GT(zero[0], before);
    EXPECT_EQ(gCamera.viewPos[2], -15.0); // the clipping planes stay
}

TEST_F(ViewDrags, ANewDragStartsFromItsOwnPlace) {
    mouseTranslate(0, 0);
    mouseTranslate(45, 0);
    dragging = 0;
    mouseTranslate(400, 400);
    EXPECT_FLOAT_EQ(static_cast<float>(gCamera.viewPos[0]), 0.1f);
    EXPECT_EQ(gCamera.viewPos[1], 0.0);
}

TEST_F(ViewDrags, RotationOnlyStoresAtTheFirstEvent) {
    mouseRot(300, 300);
    EXPECT_EQ(rot[0], 0.0f);
    EXPECT_EQ(rot[1], 0.0f);
    EXPECT_EQ(dragging, 1);
    EXPECT_EQ(redisplays(), 0);
}

TEST_F(ViewDrags, RotationTurnsByThirtySixHundredthsOfADegreeAPixel) {
    mouseRot(100, 100);
    mouseRot(101, 100);
    EXPECT_FLOAT_EQ(rot[1], 0.36f);
    EXPECT_EQ(rot[0], 0.0f);
    mouseRot(101, 150);
    EXPECT_FLOAT_EQ(rot[0], -18.0f);
    EXPECT_FLOAT_EQ(rot[1], 0.36f);
    EXPECT_EQ(redisplays(), 2);
}

TEST_F(ViewDrags, RotationRoundsTheWholeTurnOnce) {
    mouseRot(0, 0);
    mouseRot(5, 9);
    EXPECT_EQ(rot[1], 1.8f);
    EXPECT_EQ(rot[0], -3.24f);
}

TEST_F(ViewDrags, RotationPast360WrapsByOneTurn) {
    mouseRot(0, 0);
    mouseRot(1050, 0); // 378 degrees
    EXPECT_NEAR(rot[1], 18.0, 1e-4);
    mouseRot(0, 0);
    EXPECT_NEAR(rot[1], -360.0, 1e-4);
}

TEST_F(ViewDrags, RotationBelowMinus360WrapsByOneTurn) {
    mouseRot(0, 0);
    mouseRot(0, 1050);
    EXPECT_NEAR(rot[0], -18.0, 1e-4);
}

TEST_F(ViewDrags, RotationWrapsOneTurnAnEvent) {
    mouseRot(0, 0);
    mouseRot(2200, 0); // 792 degrees
    EXPECT_NEAR(rot[1], 432.0, 1e-3);
    mouseRot(2200, 0);
    EXPECT_NEAR(rot[1], 72.0, 1e-3);
}

TEST_F(ViewDrags, ExactlyOneTurnStays) {
    rot[0] = 360.0f;
    rot[1] = -360.0f;
    mouseRot(0, 0);
    mouseRot(0, 0);
    EXPECT_EQ(rot[0], 360.0f);
    EXPECT_EQ(rot[1], -360.0f);
}

TEST_F(ViewDrags, RotationDoesNothingInTheFlatView) {
    flat = 1;
    mouseRot(0, 0);
    mouseRot(100, 100);
    EXPECT_EQ(rot[0], 0.0f);
    EXPECT_EQ(rot[1], 0.0f);
    EXPECT_EQ(dragging, 0);
    EXPECT_EQ(redisplays(), 0);
}

TEST_F(ViewDrags, ZoomOnlyStoresAtTheFirstEvent) {
    mouseScale(300, 100);
    EXPECT_EQ(gCamera.aperture, 5.0);
    EXPECT_EQ(zoom, 1.0f);
    EXPECT_EQ(dragging, 1);
    EXPECT_EQ(redisplays(), 0);
}

TEST_F(ViewDrags, ZoomInToTheRightAndUp) {
    mouseScale(100, 100);
    mouseScale(145, 100);
    EXPECT_DOUBLE_EQ(gCamera.aperture, 5.0 - static_cast<double>(90.0f / 450.0f));
    EXPECT_FLOAT_EQ(zoom, 1.1f);
    mouseScale(145, 55);
    EXPECT_FLOAT_EQ(static_cast<float>(gCamera.aperture), 4.6f);
    EXPECT_FLOAT_EQ(zoom, 1.2f);
    EXPECT_EQ(redisplays(), 2);
}

TEST_F(ViewDrags, ZoomCancelsAcrossTheDiagonal) {
    gCamera.aperture = 3.0;
    mouseScale(100, 100);
    mouseScale(150, 150);
    EXPECT_EQ(gCamera.aperture, 3.0);
    EXPECT_EQ(zoom, 2.0f);
}

TEST_F(ViewDrags, ZoomGoesByTheWidthAlone) {
    reshape(900, 300);
    mouseScale(0, 0);
    mouseScale(0, -90);
    EXPECT_FLOAT_EQ(static_cast<float>(gCamera.aperture), 4.8f);
}

TEST_F(ViewDrags, ZoomOutStopsAtFiveDegreesOnTheSameEvent) {
    gCamera.aperture = 4.9;
    mouseScale(450, 0);
    mouseScale(0, 0);
    EXPECT_EQ(gCamera.aperture, 5.0);
    EXPECT_EQ(zoom, 1.0f);
}

TEST_F(ViewDrags, AnApertureAboveFiveIsLeftAlone) {
    gCamera.aperture = 6.0;
    zoom = 3.0f;
    mouseScale(0, 0);
    mouseScale(450, 0);
    EXPECT_EQ(gCamera.aperture, 6.0);
    EXPECT_EQ(zoom, 3.0f);
    EXPECT_EQ(redisplays(), 0);
}

TEST_F(ViewDrags, ApertureHasNoLowerLimit) {
    mouseScale(0, 0);
    mouseScale(1125, 0);
    EXPECT_EQ(gCamera.aperture, 0.0);
    EXPECT_FLOAT_EQ(zoom, 3.5f);
    mouseScale(2250, 0);
    EXPECT_EQ(gCamera.aperture, -5.0);
    EXPECT_EQ(zoom, 6.0f);
}

TEST_F(ViewDrags, ZoomAppliesThePointSizeLaw) {
    reshape(900, 900);
    EXPECT_EQ(ptsize, 1); // r is 2.83
    mouseScale(0, 0);
    mouseScale(1800, 0); // aperture 1, zoom 3, r is 8.49
    EXPECT_FLOAT_EQ(zoom, 3.0f);
    EXPECT_EQ(ptsize, 4);
    mouseScale(900, 0); // zoom 2, r is 5.66
    EXPECT_EQ(ptsize, 3);
    mouseScale(450, 0); // zoom 1.5, r is 4.24
    EXPECT_EQ(ptsize, 2);
    mouseScale(0, 0);
    EXPECT_EQ(ptsize, 1);
}

TEST_F(ViewDrags, ZoomReplacesAPointSizeSetByKey) {
    ptsize = 4;
    mouseScale(0, 0);
    EXPECT_EQ(ptsize, 4);
    mouseScale(0, 0);
    EXPECT_EQ(ptsize, 1);
}

TEST_F(ViewDrags, EachDragKeepsItsOwnPlace) {
    mouseTranslate(0, 0);
    mouseScale(100, 100);
    mouseRot(200, 200);
    mouseTranslate(45, 0);
    EXPECT_FLOAT_EQ(static_cast<float>(gCamera.viewPos[0]), 0.1f);
    const double before = gCamera.aperture;
    mouseScale(100, 100);
    EXPECT_EQ(gCamera.aperture, before);
}

TEST_F(ViewDrags, PlaceholdersWriteACharacterInTheFlatLinearBreakpointView) {
    flat = bps = 1;
    EXPECT_EQ(printed([] { partialsScale(1, 2); }), "*");
    EXPECT_EQ(printed([] { partialsRot(1, 2); }), "@");
}

TEST_F(ViewDrags, PlaceholdersWriteNothingElsewhere) {
    const int views[][3] = {{0, 1, 0}, {1, 0, 0}, {1, 1, 1}, {0, 0, 0}};
    for (const auto &view : views) {
        flat = view[0];
        bps = view[1];
        logpos = view[2];
        EXPECT_EQ(printed([] {
                      partialsScale(1, 2);
                      partialsRot(1, 2);
                  }),
                  "");
    }
}
