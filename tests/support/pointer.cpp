#include "tests/support/pointer.h"

#include "display/view.h"
#include "interact/mouse.h"
#include "interact/selection.h"

#include <algorithm>
#include <cmath>

namespace {

void forget_pointer() {
    reset_mouse();
    std::fill(std::begin(square), std::end(square), 0);
    std::fill(std::begin(tfsquare), std::end(tfsquare), 0.0f);
    std::fill(std::begin(ztfsquare), std::end(ztfsquare), 0.0f);
}

/// Half of what the window shows of the scene plane, in scene units.
double half_view() {
    const double pi = 3.14159265358979;
    return 15.0 * std::tan(gCamera.aperture / 2.0 * pi / 180.0);
}

} // namespace

void PointerTest::SetUp() {
    DrawingTest::SetUp();
    forget_pointer();
}

void PointerTest::TearDown() {
    forget_pointer();
    DrawingTest::TearDown();
}

void mouse_down(int button, int x, int y, int modifiers) {
    gl_double::recorder().modifiers = modifiers;
    mouse(button, GLUT_DOWN, x, y);
}

void mouse_up(int button, int x, int y, int modifiers) {
    gl_double::recorder().modifiers = modifiers;
    mouse(button, GLUT_UP, x, y);
}

void mouse_move(int x, int y) {
    if (motion() != nullptr) {
        motion()(x, y);
    }
}

MotionCallback motion() {
    return gl_double::recorder().callbacks.motion;
}

void open_edit_view() {
    flat = bps = 1;
    frame();
    gl_double::forget_drawing();
}

double scene_t(double x) {
    return half_view() * (2.0 * x / gCamera.viewWidth - 1.0) - (gCamera.viewPos[0] - 0.5);
}

double scene_f(double y) {
    return half_view() * (1.0 - 2.0 * y / gCamera.viewHeight) + gCamera.viewPos[1] + 0.5;
}

int pixel_x(double t) {
    const double along = (t + gCamera.viewPos[0] - 0.5) / half_view();
    return static_cast<int>(std::lround((along + 1.0) * gCamera.viewWidth / 2.0));
}

int pixel_y(double f) {
    const double along = (f - gCamera.viewPos[1] - 0.5) / half_view();
    return static_cast<int>(std::lround((1.0 - along) * gCamera.viewHeight / 2.0));
}

std::vector<std::string> flags() {
    std::vector<std::string> texts;
    for (int32_t i = 0; i < partials; ++i) {
        texts.emplace_back();
        for (int32_t j = 0; j < npoints[i]; ++j) {
            texts.back() += parray[i][j].selected == 1 ? '1' : '0';
        }
    }
    return texts;
}

void set_flags(const std::vector<std::string> &texts) {
    for (size_t i = 0; i < texts.size(); ++i) {
        for (size_t j = 0; j < texts[i].size(); ++j) {
            parray[i][j].selected = texts[i][j] == '1' ? 1 : 0;
        }
    }
}

Slots slots() {
    const FoundPoints &queue = foundSubscriptions;
    return {queue.part0, queue.point0, queue.part1, queue.point1, queue.count};
}

std::vector<Partial> ladder_content() {
    return {{{0.0f, 64.0f, -20.0f},
             {0.25f, 128.0f, -20.0f},
             {0.5f, 256.0f, -20.0f},
             {0.75f, 512.0f, -20.0f},
             {1.0f, 1024.0f, -20.0f}},
            {{0.25f, 256.0f, -30.0f}, {0.5f, 256.0f, -30.0f}},
            {{0.5f, 768.0f, -40.0f}}};
}
