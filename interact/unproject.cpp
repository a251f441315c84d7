#include "interact/unproject.h"

#include "display/view.h"
#include "interact/selection.h"
#include "live/shared.h"
#include "store/store.h"

#include <GL/freeglut.h>
#include <GL/glu.h>
#include <cstdio>

namespace {

constexpr float zone_mark_height = -0.025f; // scene Y of the line that marks the zone

struct ScenePoint {
    double x, y;
};

/// The point of the near plane behind a window position; matrices as GL holds them.
ScenePoint unproject(double window_x, double window_y) {
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetDoublev(GL_PROJECTION_MATRIX, projmatrix);
    glGetDoublev(GL_MODELVIEW_MATRIX, mvmatrix);
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    gluUnProject(window_x, window_y, 0.0, mvmatrix, projmatrix, viewport, &x, &y, &z);
    return {x, y};
}

/// From the near plane, one unit before the camera, to the scene plane.
float near_to_scene() {
    return static_cast<float>(gCamera.focalLength);
}

void point_at(const ScenePoint &at, const ScenePoint &origin) {
    tuplet[0] = static_cast<float>((at.x - origin.x) * near_to_scene() / scal[0]);
    // A form that suited a focal length of 1: it puts the mark far above the box.
    tuplet[1] = static_cast<float>((1.0 - (at.y - origin.y)) * near_to_scene() / scal[1]);
    tuplet[2] = 0.0f;
}

void take_view_size() {
    thewidth = gCamera.viewWidth;
    theheight = gCamera.viewHeight;
}

} // namespace

SceneOffset scene_offset(double window_x, double window_y) {
    const ScenePoint at = unproject(window_x, window_y);
    const ScenePoint origin = unproject(zero[0], zero[1]);
    const float scale = near_to_scene();
    return {scale * static_cast<float>(at.x - origin.x),
            scale * static_cast<float>(at.y - origin.y)};
}

int32_t viewport_height() {
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    return viewport[3];
}

void transformInput() {
    if (bps != 1) {
        return;
    }
    take_view_size();
    const int32_t height = viewport_height();
    const SceneOffset release = scene_offset(square[1], height - square[3]);
    const SceneOffset press = scene_offset(peek(square[0]), height - square[2]);
    poke(tfsquare[0], release.t);
    poke(tfsquare[1], press.t);
    tfsquare[2] = release.f;
    tfsquare[3] = press.f;
    const ScenePoint at = unproject(square[1], height - square[3]);
    point_at(at, unproject(zero[0], zero[1]));
    tuplet[0] = release.t / scal[0];
}

void testInput(int x, int y) {
    if (bps != 1) {
        return;
    }
    take_view_size();
    point_at(unproject(x, y), unproject(zero[0], zero[1]));
}

void order_columns(int32_t &first, int32_t &second) {
    const int32_t later = peek(first);
    if (second < later) {
        poke(first, second);
        second = later;
    }
}

void x2time(int32_t *first, int32_t *second, LiveGenerator *gen) {
    poke(square[0], peek(*first));
    order_columns(*first, *second);
    ztfsquare[0] = scene_offset(peek(*first), 0.0).t;
    ztfsquare[1] = scene_offset(*second, 0.0).t;
    ztfsquare[2] = zone_mark_height;
    ztfsquare[3] = zone_mark_height;
    const float start = sndstart + (sndlen - sndstart) * ztfsquare[0];
    const float end = sndstart + (sndlen - sndstart) * ztfsquare[1];
    poke(gen->starttime, start);
    poke(gen->time, start);
    poke(gen->endtime, end > sndlen ? sndlen : end);
    std::printf("->start_time: %fs\tend_time: %fs\n", gen->starttime, gen->endtime);
    if (end < start || end < sndstart) {
        std::puts("No zone selected");
    }
}
