#include "live/idle.h"

#include "store/settings.h"

#include <GL/freeglut.h>
#include <cstdio>
#include <unistd.h>

namespace {

constexpr int short_time = 100;         // ms since the mark
constexpr int long_time = 1000;         // ms since the mark
constexpr useconds_t idle_pause = 5000; // us

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
    usleep(idle_pause);
}
