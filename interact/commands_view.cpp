#include "interact/command.h"

#include "display/partial_drawing.h"
#include "display/scene.h"
#include "display/view.h"
#include "interact/menu.h"
#include "store/settings.h"

#include <GL/freeglut.h>
#include <cstdio>

namespace {

// Entries of "View" stand at the place that equals their value.
constexpr int flat_place = 2;
constexpr int logarithmic_place = 3;
constexpr int breakpoints_place = 4;

bool about(int) {
    const char *const dashes = "---------------------------------------------";
    std::puts(dashes);
    std::printf("%s %s ", app_name, version);
    std::printf("on %d-phys.", chip.physical);
    std::printf(" %d-log.CPU", chip.logical);
    std::printf(" %s", chip.brand);
    std::putchar('\n');
    std::puts(dashes);
    return true;
}

bool toggle_axes(int) {
    coord = coord != 0 ? 0 : 1;
    clo = 0;
    return true;
}

/// A flat view has no rotation; the angles wait in the second pair.
void enter_flat_view() {
    for (int axis = 0; axis < 2; ++axis) {
        rot[axis + 2] = rot[axis];
        rot[axis] = 0.0f;
    }
    glutChangeToMenuEntry(flat_place, flat_entry(), flat_place);
    if (clo == 0) {
        glutAddMenuEntry(breakpoints_entry(), breakpoints_place);
    }
}

void leave_flat_view() {
    for (int axis = 0; axis < 2; ++axis) {
        rot[axis] = rot[axis + 2];
        rot[axis + 2] = 0.0f;
    }
    glutChangeToMenuEntry(flat_place, flat_entry(), flat_place);
    glutRemoveMenuItem(breakpoints_place);
}

/// Draws at once, so that the reference points match the view before the next mouse event.
bool toggle_flat(int) {
    flat = flat != 0 ? 0 : 1;
    if (flat != 0) {
        enter_flat_view();
    } else {
        leave_flat_view();
    }
    clo = 0;
    glutPostRedisplay();
    glClear(GL_COLOR_BUFFER_BIT);
    const CameraRecord camera = gCamera;
    show_partials(tuplet, camera);
    refresh_reference_points();
    std::printf("View: %s\n", flat != 0 ? "Flat" : "Perspective");
    return false;
}

bool toggle_logarithmic(int) {
    logpos = logpos != 0 ? 0 : 1;
    std::printf("%d\t", logpos);
    std::printf("View: %s Frequency\n", logpos != 0 ? "Log" : "Lin");
    glutChangeToMenuEntry(logarithmic_place, logarithmic_entry(), logarithmic_place);
    clo = 0;
    return true;
}

bool toggle_breakpoints(int) {
    if (flat != 0) {
        bps = bps != 0 ? 0 : 1;
    }
    glutChangeToMenuEntry(breakpoints_place, breakpoints_entry(), breakpoints_place);
    clo = 0;
    return true;
}

const Command rows[] = {
    {0, false, "", nullptr, nullptr, about, finish_redisplay},
    {1, false, "View: Axes  ", nullptr, nullptr, toggle_axes, finish_redisplay},
    {2, false, "", nullptr, nullptr, toggle_flat, nullptr},
    {3, false, "", nullptr, nullptr, toggle_logarithmic, finish_redisplay},
    {4, false, "View: Breakpoints\t ", nullptr, nullptr, toggle_breakpoints, finish_redisplay},
};

} // namespace

std::span<const Command> view_commands() {
    return rows;
}
