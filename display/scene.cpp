#include "display/scene.h"

#include "display/partial_drawing.h"
#include "display/text_layer.h"
#include "live/live.h"
#include "live/shared.h"

#include <GL/freeglut.h>
#include <GL/glu.h>
#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned repaint_interval = 100; // milliseconds, while MIDI is on
constexpr double half_degree = 0.5 * 0.0174532925;

void set_projection() {
    const double depth = gCamera.viewPos[2];
    const double half_shape = gShapeSize * 0.5;
    const double far_plane = half_shape - depth;
    const double near_plane = std::min(-depth - half_shape, 1.0);
    const double q = near_plane * std::tan(gCamera.aperture * half_degree);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glFrustum(-q, q, -q, q, near_plane, far_plane);
}

/// Looks at the centre of the time-frequency square, which is also the pivot of rotations.
void set_model_view() {
    const double *eye = gCamera.viewPos;
    const double *direction = gCamera.viewDir;
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    gluLookAt(eye[0] - 0.5, eye[1] + 0.5, eye[2], eye[0] + direction[0] - 0.5,
              eye[1] + direction[1] + 0.5, eye[2] + direction[2], gCamera.viewUp[0],
              gCamera.viewUp[1], gCamera.viewUp[2]);
    glTranslatef(-0.5f, 0.5f, 0.0f);
    glRotatef(rot[0], 1.0f, 0.0f, 0.0f);
    glRotatef(rot[1], 0.0f, 1.0f, 0.0f);
    glTranslatef(0.5f, -0.5f, 0.0f);
    glRotatef(gWorldRotation[0], gWorldRotation[1], gWorldRotation[2], gWorldRotation[3]);
}

} // namespace

void gCameraReset() {
    gCamera.viewPos[0] = 0.0;
    gCamera.viewPos[1] = 0.0;
    gCamera.viewPos[2] = -15.0;
    gCamera.viewDir[0] = -0.0;
    gCamera.viewDir[1] = -0.0;
    gCamera.viewDir[2] = 15.0;
    gCamera.viewUp[0] = 0.0;
    gCamera.viewUp[1] = 1.0;
    gCamera.viewUp[2] = 0.0;
    for (int axis = 0; axis < 3; ++axis) {
        gCamera.rotPoint[axis] = gOrigin[axis];
        mOrigin[axis] = gOrigin[axis];
    }
    gCamera.focalLength = 15.0;
    gCamera.aperture = 5.0;
    gCamera.viewWidth = thewidth;
    gCamera.viewHeight = theheight;
}

void initialize() {
    glEnable(GL_DEPTH_TEST);
    glShadeModel(GL_SMOOTH);
    glFrontFace(GL_CCW);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor3f(1.0f, 1.0f, 1.0f);
    glClearColor(0.0f, 0.0f, 0.1f, 1.0f);
    gCameraReset();
}

void apply_point_size_law(int width, int height) {
    const double vertical = static_cast<double>(height) / design_size;
    const double horizontal = static_cast<double>(width) / design_size;
    const double r = std::sqrt(vertical * vertical + horizontal * horizontal) * zoom;
    ptsize = r > 8.0 ? 4 : r > 5.5 ? 3 : r > 4.0 ? 2 : 1;
}

void reshape(int width, int height) {
    glViewport(0, 0, width, height);
    apply_point_size_law(width, height);
    gCamera.viewWidth = width;
    gCamera.viewHeight = height;
    thewidth = width;
    theheight = height;
    glutPostRedisplay();
}

void refresh_reference_points() {
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    viewport[0] = 0;
    viewport[1] = 0;
    glViewport(0, 0, viewport[2], viewport[3]);
    glGetDoublev(GL_MODELVIEW_MATRIX, mvmatrix);
    glGetDoublev(GL_PROJECTION_MATRIX, projmatrix);
    gluProject(trans[0], -trans[1], 0.0, mvmatrix, projmatrix, viewport, &zero[0], &zero[1],
               &zero[2]);
    gluProject(trans[0] + 1.0f, 1.0f - trans[1], 0.0, mvmatrix, projmatrix, viewport, &one[0],
               &one[1], &one[2]);
}

void draw_scene(const CameraRecord &camera) {
    glClearColor(0.0f, 0.0f, 0.1f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    show_partials(tuplet, camera);
    refresh_reference_points();
}

void maindisplay() {
    set_projection();
    set_model_view();
    draw_scene(gCamera);
    drawGLText(gCamera.viewWidth, gCamera.viewHeight);
    glutSwapBuffers();
}

void arm_repaint_timer() {
    if (tCallbackReg != 1) {
        glutTimerFunc(repaint_interval, timerCB, static_cast<int>(repaint_interval));
        tCallbackReg = 1;
    }
}

void timerCB(int) {
    if (peek(midi) != 0) {
        glutPostRedisplay();
        glutTimerFunc(repaint_interval, timerCB, static_cast<int>(repaint_interval));
    } else {
        tCallbackReg = 0;
    }
}

void update(int value) {
    if (value != 0) {
        glutPostRedisplay();
    }
}
