#include "live/idle.h"

#include "live/pause.h"
#include "store/settings.h"

#include <GL/freeglut.h>
#include <cstdint>
#include <cstdio>

namespace {

constexpr int short_time = 100;       // ms since the mark
constexpr int long_time = 1000;       // ms since the mark
constexpr uint32_t idle_pause = 5000; // microseconds

int mark = 0; // ms, time of the last drawing mark
bool drawn = false;

} // namespace

void Idle() {
    pace_idle();
    const int now = glutGet(GLUT_ELAPSED_TIME);
    const int d = now - mark;
    if (dbp != 0) {
        std::fputs("i", stdout);
    }
    if (d <= short_time) {
        glutPostRedisplay();
        drawn = false;
        return;
    }
    if (d <= long_time && drawn) {
        return;
    }
    drawn = false;
    if (dbp != 0) {
        std::fprintf(stderr, "ET = %d\n", now);
    }
    mark = now;
    glutPostRedisplay();
    drawn = true;
}

void pace_idle() {
    pause_for(idle_pause);
}
