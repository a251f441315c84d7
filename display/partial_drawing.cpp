#include "display/partial_drawing.h"

#include "display/axes.h"
#include "display/cursors.h"
#include "display/frame_arrays.h"
#include "display/staff.h"
#include "interact/selection.h"
#include "live/live.h"
#include "live/shared.h"
#include "store/store.h"

#include <GL/freeglut.h>

namespace {

constexpr float pointer_mark_size = 4.0f; // pixels

/// Outside the flat view the marker's depth is the plain level in dB, far off the box.
void draw_marker(int32_t part, int32_t point) {
    if (!point_exists(part, point)) {
        return;
    }
    const Breakpoint &at = parray[part][point];
    const ContourVertex vertex = contour_vertex(at);
    glBegin(GL_POINTS);
    glVertex3f(vertex.x, vertex.y, flat == 1 ? 0.0f : at.amp);
    glEnd();
}

void draw_found_markers() {
    if (found == 0 || directSelect == 0) {
        return;
    }
    glColor3f(1.0f, 0.9f, 0.0f);
    glPointSize(static_cast<float>(ptsize + 1));
    if (foundSubscriptions.count == 2) {
        draw_marker(foundSubscriptions.part1, foundSubscriptions.point1);
    }
    if (foundSubscriptions.count > 0) {
        draw_marker(foundSubscriptions.part0, foundSubscriptions.point0);
    }
}

void draw_dots(const FrameArrays &arrays) {
    glColorPointer(3, GL_FLOAT, sizeof(DotColour), arrays.dots.data());
    glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(arrays.dots.size()));
}

void draw_contours(const FrameArrays &arrays) {
    glColorPointer(3, GL_FLOAT, sizeof(ContourVertex), &arrays.vertices.data()->red);
    glDrawElements(GL_LINES, static_cast<GLsizei>(arrays.segments.size()), GL_UNSIGNED_INT,
                   arrays.segments.data());
}

/// Dots come before contours, so that at equal depth they stay on top; a view drag leaves them
/// out.
void draw_breakpoints() {
    const bool with_dots = partials > 0 && dragging == 0 && edit_mode();
    const FrameArrays &arrays = frame_arrays(with_dots);
    if (arrays.vertices.empty()) {
        return;
    }
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(ContourVertex), arrays.vertices.data());
    if (with_dots) {
        draw_dots(arrays);
    }
    if (!arrays.segments.empty()) {
        draw_contours(arrays);
    }
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}

/// A rectangle given as the two X and then the two Y of its corners.
void draw_rectangle(const float *corners) {
    glBegin(GL_LINE_LOOP);
    glVertex3f(corners[0], corners[2], 0.0f);
    glVertex3f(corners[1], corners[2], 0.0f);
    glVertex3f(corners[1], corners[3], 0.0f);
    glVertex3f(corners[0], corners[3], 0.0f);
    glEnd();
}

void draw_marks(const float *pointer) {
    glColor3f(0.4f, 0.25f, 0.45f);
    glPointSize(pointer_mark_size);
    if (bps == 1 && flat == 1) {
        glBegin(GL_POINTS);
        glVertex3f(pointer[0], pointer[1], pointer[2]);
        glEnd();
    }
    if (selecting == 1) {
        draw_rectangle(swept_square().data());
    }
    if (peek(zgen.state) == 2) {
        draw_rectangle(ztfsquare);
    }
}

} // namespace

void show_partials(const float *pointer, const CameraRecord &camera) {
    GLint viewport[4];
    gr_sndlen = sndlen - sndstart;
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetDoublev(GL_MODELVIEW_MATRIX, mvmatrix);
    glGetDoublev(GL_PROJECTION_MATRIX, projmatrix);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (coord != 0) {
        draw_axes(camera);
    }
    draw_found_markers();
    glPointSize(static_cast<float>(ptsize));
    draw_breakpoints();
    draw_marks(pointer);
    draw_staff();
    draw_cursors(camera);
}
