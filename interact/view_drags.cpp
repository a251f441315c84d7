#include "interact/view_drags.h"

#include "display/scene.h"
#include "display/view.h"

#include <GL/freeglut.h>
#include <cstdio>

namespace {

constexpr double widest_aperture = 5.0; // degrees

/// Degrees that a drag over so many pixels turns: half a turn on 500.
float turn_of(int pixels) {
    return static_cast<float>(pixels) * 180.0f / 500.0f;
}

/// Brings an angle in degrees back by one turn.
float within_a_turn(float angle) {
    if (angle > 360.0f) {
        return angle - 360.0f;
    }
    return angle < -360.0f ? angle + 360.0f : angle;
}

void print_in_edit_view(char c) {
    if (edit_mode() && logpos == 0) {
        std::putchar(c);
        std::fflush(stdout);
    }
}

} // namespace

void mouseTranslate(int x, int y) {
    static int prev_x = 0;
    static int prev_y = 0;
    if (dragging == 1) {
        const int dx = x - prev_x;
        const int dy = y - prev_y;
        const float fx = static_cast<float>(dx) / static_cast<float>(thewidth);
        const float fy = static_cast<float>(-dy) / static_cast<float>(theheight);
        mOrigin[0] += fx;
        gCamera.viewPos[0] += fx;
        mOrigin[1] -= fy;
        gCamera.viewPos[1] -= fy;
    }
    glutPostRedisplay();
    prev_x = x;
    prev_y = y;
    dragging = 1;
}

void mouseRot(int x, int y) {
    static int prev_x = 0;
    static int prev_y = 0;
    if (flat != 0) {
        return;
    }
    if (dragging == 1) {
        rot[0] = within_a_turn(rot[0] - turn_of(y - prev_y));
        rot[1] = within_a_turn(rot[1] + turn_of(x - prev_x));
        glutPostRedisplay();
    }
    dragging = 1;
    prev_x = x;
    prev_y = y;
}

void mouseScale(int x, int y) {
    static int prev_x = 0;
    static int prev_y = 0;
    if (dragging == 1 && gCamera.aperture <= widest_aperture) {
        const int along = (x - prev_x) - y + prev_y;
        gCamera.aperture -= static_cast<float>(along * 2) / static_cast<float>(thewidth);
        if (gCamera.aperture > widest_aperture) {
            gCamera.aperture = widest_aperture;
        }
        zoom = static_cast<float>((widest_aperture - gCamera.aperture) * 0.5 + 1.0);
        apply_point_size_law(thewidth, theheight);
        glutPostRedisplay();
    }
    prev_x = x;
    prev_y = y;
    dragging = 1;
}

void partialsScale(int, int) {
    print_in_edit_view('*');
}

void partialsRot(int, int) {
    print_in_edit_view('@');
}
