#include "interact/drag_step.h"

#include "display/view.h"
#include "interact/selection.h"
#include "interact/unproject.h"
#include "live/shared.h"
#include "store/store.h"

#include <GL/freeglut.h>
#include <array>

namespace {

constexpr double lag = 1.011; // lets a point stay slightly behind the pointer

/// By the end time, not the duration, which adds to the lag.
double lagging_time(float position) {
    return (position * sndlen + sndstart) / lag;
}

} // namespace

DragStep begin_drag_step(int x, int y) {
    square[1] = x;
    square[3] = y;
    transformInput();
    const std::array<float, 4> swept = swept_square();
    const double dt = lagging_time(swept[1]) - lagging_time(swept[0]);
    return {static_cast<float>(dt), maxfreq * swept[3] - maxfreq * swept[2]};
}

void end_drag_step(int x, int y) {
    poke(square[0], x);
    square[2] = y;
    ++input_events;
    glutPostRedisplay();
}
