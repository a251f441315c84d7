// The double itself: its mathematics and its bookkeeping must be right before any test of the
// drawing means something.
#include "tests/support/drawing.h"

#include <cstdint>

using namespace gl_double;

namespace {

using GlDouble = DrawingTest;

int last_choice = 0;
int menu_at_choice = 0;

void note_choice(int value) {
    last_choice = value;
    menu_at_choice = glutGetMenu();
}

void note_other(int value) {
    last_choice = -value;
}

std::array<double, 16> modelview() {
    std::array<double, 16> m;
    glGetDoublev(GL_MODELVIEW_MATRIX, m.data());
    return m;
}

} // namespace

TEST_F(GlDouble, LaterTransformationsActFirstOnAPoint) {
    glTranslatef(10, 0, 0);
    glRotatef(90, 0, 0, 1);
    glScalef(2, 3, 4);
    const auto m = modelview();
    // (1, 0, 0) is scaled to 2, turned to the Y axis, then moved.
    EXPECT_NEAR(m[0] + m[12], 10.0, 1e-12);
    EXPECT_NEAR(m[1] + m[13], 2.0, 1e-12);
    // (0, 1, 0) is scaled to 3, turned to -X, then moved.
    EXPECT_NEAR(m[4] + m[12], 7.0, 1e-12);
    EXPECT_NEAR(m[5] + m[13], 0.0, 1e-12);
}

TEST_F(GlDouble, RotationFollowsTheRightHandAndTakesAxesOfAnyLength) {
    glRotatef(90, 3, 0, 0);
    const auto m = modelview();
    EXPECT_NEAR(m[6], 1.0, 1e-12); // Y goes to Z
    EXPECT_NEAR(m[9], -1.0, 1e-12);
    EXPECT_NEAR(m[0], 1.0, 1e-12);
}

TEST_F(GlDouble, StacksAreSeparateAndPopRestores) {
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glTranslatef(1, 2, 3);
    glMatrixMode(GL_MODELVIEW);
    EXPECT_EQ(modelview()[12], 0.0);
    glMatrixMode(GL_PROJECTION);
    EXPECT_EQ(top(GL_PROJECTION)[13], 2.0);
    glPopMatrix();
    EXPECT_EQ(top(GL_PROJECTION)[13], 0.0);
    GLint mode = 0;
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    EXPECT_EQ(mode, GL_PROJECTION);
}

TEST_F(GlDouble, StackUnderflowIsAnError) {
    glPopMatrix();
    EXPECT_EQ(recorder().errors.size(), 1u);
    recorder().errors.clear();
}

TEST_F(GlDouble, LookAtFromTheOriginsFrontLeavesTheAxes) {
    gluLookAt(0, 0, 5, 0, 0, 0, 0, 1, 0);
    const auto m = modelview();
    EXPECT_NEAR(m[0], 1.0, 1e-12);
    EXPECT_NEAR(m[5], 1.0, 1e-12);
    EXPECT_NEAR(m[10], 1.0, 1e-12);
    EXPECT_NEAR(m[14], -5.0, 1e-12);
}

TEST_F(GlDouble, OrthographicPixelsLandOnThemselves) {
    glMatrixMode(GL_PROJECTION);
    gluOrtho2D(0, 450, 0, 450);
    const auto at = project(top(GL_MODELVIEW), top(GL_PROJECTION), 100, 200, 0);
    EXPECT_NEAR(at[0], 100.0, 1e-9);
    EXPECT_NEAR(at[1], 200.0, 1e-9);
}

TEST_F(GlDouble, FrustumMapsTheNearCornerToTheWindowsCorner) {
    glMatrixMode(GL_PROJECTION);
    glFrustum(-1, 2, -3, 4, 5, 50);
    const auto corner = project(top(GL_MODELVIEW), top(GL_PROJECTION), 2, 4, -5);
    EXPECT_NEAR(corner[0], 450.0, 1e-9);
    EXPECT_NEAR(corner[1], 450.0, 1e-9);
    EXPECT_NEAR(corner[2], 0.0, 1e-12);
    const auto far_corner = project(top(GL_MODELVIEW), top(GL_PROJECTION), -10, -30, -50);
    EXPECT_NEAR(far_corner[0], 0.0, 1e-9);
    EXPECT_NEAR(far_corner[1], 0.0, 1e-9);
    EXPECT_NEAR(far_corner[2], 1.0, 1e-12);
}

TEST_F(GlDouble, UnProjectUndoesProject) {
    glMatrixMode(GL_PROJECTION);
    glFrustum(-0.04, 0.04, -0.04, 0.04, 1, 20);
    glMatrixMode(GL_MODELVIEW);
    gluLookAt(-0.5, 0.5, -15, -0.5, 0.5, 0, 0, 1, 0);
    glRotatef(33, 1, 2, 3);
    const Matrix &m = top(GL_MODELVIEW);
    const Matrix &p = top(GL_PROJECTION);
    const auto at = project(m, p, 0.3, 0.7, -0.2);
    double x, y, z;
    ASSERT_EQ(gluUnProject(at[0], at[1], at[2], m.data(), p.data(), recorder().viewport.data(), &x,
                           &y, &z),
              GL_TRUE);
    EXPECT_NEAR(x, 0.3, 1e-9);
    EXPECT_NEAR(y, 0.7, 1e-9);
    EXPECT_NEAR(z, -0.2, 1e-9);
}

TEST_F(GlDouble, UnProjectOfASingularMatrixFails) {
    const Matrix flat_one = {};
    double x = 7, y, z;
    EXPECT_EQ(gluUnProject(1, 1, 0, flat_one.data(), flat_one.data(), recorder().viewport.data(),
                           &x, &y, &z),
              GL_FALSE);
    EXPECT_EQ(x, 7.0);
}

TEST_F(GlDouble, ArraysAndImmediateModeRecordAlike) {
    const float packed[] = {1, 2, 3, 0.1f, 0.2f, 0.3f, 4, 5, 6, 0.4f, 0.5f, 0.6f};
    const uint32_t order[] = {1, 0};
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, 6 * sizeof(float), packed);
    glColorPointer(3, GL_FLOAT, 6 * sizeof(float), packed + 3);
    glDrawElements(GL_LINES, 2, GL_UNSIGNED_INT, order);
    glDrawArrays(GL_POINTS, 1, 1);
    glBegin(GL_LINES);
    glColor3f(0.4f, 0.5f, 0.6f);
    glVertex3f(4, 5, 6);
    glEnd();
    const auto &primitives = recorder().primitives;
    ASSERT_EQ(primitives.size(), 3u);
    ASSERT_EQ(primitives[0].vertices.size(), 2u);
    expect_vertex(primitives[0].vertices[1], 1, 2, 3);
    for (const Primitive &primitive : primitives) {
        expect_vertex(primitive.vertices[0], 4, 5, 6);
        expect_colour(primitive.vertices[0], 0.4, 0.5, 0.6);
    }
}

TEST_F(GlDouble, MisuseIsNoted) {
    glVertex3f(0, 0, 0);
    glBegin(GL_POINTS);
    glPointSize(2);
    glEnd();
    glEnd();
    glDrawArrays(GL_POINTS, 0, 1);
    EXPECT_EQ(recorder().errors.size(), 4u);
    recorder().errors.clear();
}

TEST_F(GlDouble, TextGathersByRasterPositionInTheColourOfThatMoment) {
    glColor3f(0.1f, 0.2f, 0.3f);
    glRasterPos2f(5, 6);
    glColor3f(0.9f, 0.9f, 0.9f);
    glutBitmapCharacter(GLUT_BITMAP_HELVETICA_10, 'a');
    glutBitmapCharacter(GLUT_BITMAP_HELVETICA_10, 'b');
    glRasterPos3f(1, 2, 3);
    glutBitmapCharacter(GLUT_BITMAP_HELVETICA_10, 'c');
    ASSERT_EQ(label_texts(), (std::vector<std::string>{"ab", "c"}));
    const Label &first = recorder().labels[0];
    EXPECT_EQ(first.x, 5.0);
    EXPECT_EQ(first.y, 6.0);
    EXPECT_FLOAT_EQ(static_cast<float>(first.g), 0.2f);
    EXPECT_EQ(first.font, GLUT_BITMAP_HELVETICA_10);
    EXPECT_EQ(recorder().labels[1].z, 3.0);
    EXPECT_EQ(calls_of("label").size(), 2u);
}

TEST_F(GlDouble, MenusFormATree) {
    const int sub = glutCreateMenu(note_other);
    glutAddMenuEntry("Deep", 7);
    glutAddMenuEntry("Gone", 8);
    const int root = glutCreateMenu(note_choice);
    glutAddMenuEntry("First", 1);
    glutAddSubMenu("More", sub);
    glutAttachMenu(GLUT_RIGHT_BUTTON);
    EXPECT_EQ(menu_text(root), "First\nMore\n  Deep\n  Gone\n");

    glutSetMenu(sub);
    glutChangeToMenuEntry(1, "Deeper", 9);
    glutRemoveMenuItem(2);
    EXPECT_EQ(glutGetMenu(), sub);
    EXPECT_EQ(glutGet(GLUT_MENU_NUM_ITEMS), 1);
    EXPECT_EQ(menu_text(root), "First\nMore\n  Deeper\n");

    EXPECT_TRUE(choose({"First"}));
    EXPECT_EQ(last_choice, 1);
    EXPECT_EQ(menu_at_choice, root);
    EXPECT_TRUE(choose({"More", "Deeper"}));
    EXPECT_EQ(last_choice, -9);
    EXPECT_EQ(glutGetMenu(), sub);
    EXPECT_FALSE(choose({"More", "Gone"}));
    EXPECT_FALSE(choose({"More"}));
    glutDetachMenu(GLUT_RIGHT_BUTTON);
    EXPECT_FALSE(choose({"First"}));
}

TEST_F(GlDouble, MenuItemsOutOfRangeAreErrors) {
    glutCreateMenu(note_choice);
    glutRemoveMenuItem(1);
    glutChangeToMenuEntry(0, "x", 1);
    glutAddSubMenu("x", 99);
    EXPECT_EQ(recorder().errors.size(), 3u);
    recorder().errors.clear();
}

TEST_F(GlDouble, AnswersAreTheTestsToSet) {
    recorder().modifiers = GLUT_ACTIVE_ALT;
    recorder().elapsed_time = 1234;
    recorder().overlay_possible = 1;
    EXPECT_EQ(glutGetModifiers(), 4);
    EXPECT_EQ(glutGet(GLUT_ELAPSED_TIME), 1234);
    EXPECT_EQ(glutLayerGet(GLUT_OVERLAY_POSSIBLE), 1);
}
