#include "display/text_layer.h"

#include "display/text.h"
#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "live/shared.h"
#include "store/settings.h"
#include "store/store.h"
#include "toolbox/auxmath3d.h"

#include <GL/freeglut.h>
#include <algorithm>
#include <cstdio>

namespace {

constexpr int line_size = 256; // characters, the end included
constexpr float left_edge = 10.0f;
constexpr float default_gain = 0.2f;

bool on(uint8_t flag) {
    return peek(flag) != 0;
}

void line_at(int y, const char *text) {
    drawGLString(left_edge, static_cast<float>(y), text);
}

void draw_store_line(int y) {
    char line[line_size] = "";
    std::snprintf(line, sizeof line,
                  "Partials:%6d  Start: %0.2f  Length:%7.2f  f.max.= %8.2f  f.min= %6.2f  "
                  "a.max= %6.3fdB",
                  partials, sndstart, sndlen, maxfreq, minfreq, maxamp);
    line_at(y, line);
}

/// The one or two found points. The second one shows the first one's level.
void describe_found(char *text, size_t size) {
    const FoundPoints &queue = foundSubscriptions;
    if (queue.count < 1 || !point_exists(queue.part0, queue.point0)) {
        return;
    }
    const Breakpoint &newest = parray[queue.part0][queue.point0];
    if (queue.count == 1) {
        std::snprintf(text, size, "@[%d][%d]: %5.2fs %7.2fHz %5.2fdB  ", queue.part0, queue.point0,
                      newest.time, newest.freq, newest.amp);
        return;
    }
    if (!point_exists(queue.part1, queue.point1)) {
        return;
    }
    const Breakpoint &older = parray[queue.part1][queue.point1];
    std::snprintf(text, size,
                  "@[%d][%d]: %5.2fs %7.2fHz %5.2fdB   @[%d][%d]: %5.2fs %7.2fHz %5.2fdB   ",
                  queue.part0, queue.point0, newest.time, newest.freq, newest.amp, queue.part1,
                  queue.point1, older.time, older.freq, newest.amp);
}

void draw_view_line(int y) {
    char line[line_size] = "";
    const char *projection = flat != 0 ? "flat" : "perspective";
    const char *logarithmic = logpos != 0 ? "-log. frequency" : "";
    if (!edit_mode()) {
        std::snprintf(line, sizeof line, "Projection: %s%s   Relative zoom: %5.2f  %s ", projection,
                      logarithmic, zoom, " ");
    } else {
        const int used = std::snprintf(
            line, sizeof line,
            "Projection: %s%s   Relative zoom: %5.2f   Shift direction%s %s%s     ", projection,
            logarithmic, zoom, X != 0 && Y != 0 ? "s:" : ":", X != 0 ? "X" : "", Y != 0 ? "Y" : "");
        const size_t start = std::min(static_cast<size_t>(used), sizeof line - 1);
        describe_found(line + start, sizeof line - start);
    }
    line_at(y, line);
}

/// The text of the last gesture; empty for none.
void describe_method(char *text, size_t size) {
    switch (method) {
    case 1:
        std::snprintf(text, size, "Warp partial(s)\n");
        break;
    case -1:
        std::snprintf(text, size, "Harmonize partial(s)\n");
        break;
    case 2:
        std::snprintf(text, size, "Amp: +%3.1f dB\n", increment);
        break;
    case -2:
        std::snprintf(text, size, "Amp: -%3.1f dB\n", increment);
        break;
    case 3:
        std::snprintf(text, size, "Env. stray  (%d)\n", foundSubscriptions.part0);
        break;
    case -3:
        std::snprintf(text, size, "Env. follow (%d)\n", foundSubscriptions.part0);
        break;
    default:
        break;
    }
}

void draw_method_line(int y) {
    char line[line_size] = "";
    glColor3f(0.46f, 0.35f, 0.06f);
    describe_method(line, sizeof line);
    line_at(y, line);
}

/// The offset from the default gain, while something plays live.
void draw_gain_line(int height) {
    const bool sounding = peek(liveSynth) == 1 || peek(zgen.playing) == 1;
    const float gain = peek(live_gain);
    if (!sounding || gain == default_gain) {
        return;
    }
    char line[line_size] = "";
    glColor3f(0.1f, 0.45f, 0.3f);
    std::snprintf(line, sizeof line, "%4.1f[dB]\n", amp2db(gain / 0.2));
    line_at(height - (gShowMethod == 1 ? 39 : 26), line);
}

void draw_information(int height) {
    glColor3f(0.35f, 0.4f, 0.0f);
    draw_store_line(height - 6);
    draw_view_line(height - 19);
    if (gShowMethod == 1) {
        draw_method_line(height - 32);
    }
    draw_gain_line(height);
}

void draw_help() {
    const bool editing = edit_mode();
    char line[line_size] = "";
    glColor3f(0.54f, 0.4f, 0.1f);
    std::snprintf(line, sizeof line,
                  "Viewing controls: <Shift>L_mouse = move; <Ctrl>L_mouse = scale; %s",
                  flat == 0 ? "<Opt>L_mouse = rot." : "");
    line_at(19, line);
    std::snprintf(line, sizeof line, "Commands: %s R_mouse: Menu",
                  editing ? "L_mouse: (sweep-)select; <Shift>M_mouse: move selected partials;"
                          : "");
    line_at(32, line);
    std::snprintf(line, sizeof line, "H: help  I: info  S: staff C: coordinates %s M: midi %s %s\n",
                  coord != 0 ? "off" : "on", on(midi) ? "on" : "off",
                  selected != 0 && bps != 0 ? "X,Y: shift direction; <Ctrl>delete: deselect" : "");
    line_at(45, line);
    std::snprintf(line, sizeof line, "%s%s\n", on(wgen.select) && on(midi) ? "W" : " ",
                  on(ran) ? "R" : " ");
    line_at(58, line);
}

void draw_pointer_time() {
    const float t = peek(tfsquare[0]);
    if (peek(liveSynth) != 1 || !(t >= 0.0f && t <= 1.0f)) {
        return;
    }
    char line[line_size] = "";
    glColor3f(0.1f, 0.45f, 0.3f);
    std::snprintf(line, sizeof line, "%c@ %6.3f s", W == 1 ? ' ' : '*', (sndlen - sndstart) * t);
    drawGLString(static_cast<float>(peek(square[0]) + 6), static_cast<float>(square[2]), line);
}

void draw_midi_frame(int width, int height) {
    glColor3f(0.0f, 0.0f, 0.7f);
    glBegin(GL_LINE_LOOP);
    glVertex2i(0, 2);
    glVertex2i(0, height);
    glVertex2i(width - 1, height);
    glVertex2i(width - 1, 2);
    glEnd();
}

/// One unit a pixel, the origin at the top left, y downwards.
void enter_pixel_space(int width, int height) {
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glScalef(2.0f / static_cast<float>(width), -2.0f / static_cast<float>(height), 1.0f);
    glTranslatef(static_cast<float>(-width) / 2.0f, static_cast<float>(-height) / 2.0f, 0.0f);
    glDisable(GL_LIGHTING);
}

} // namespace

void drawGLText(int width, int height) {
    GLint viewport[4];
    GLint matrix_mode;
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetIntegerv(GL_MATRIX_MODE, &matrix_mode);
    enter_pixel_space(width, height);
    if (gShowInfo != 0) {
        draw_information(height);
    }
    if (gShowHelp != 0) {
        draw_help();
    }
    draw_pointer_time();
    if (on(midi)) {
        draw_midi_frame(width, height);
    }
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glMatrixMode(static_cast<GLenum>(matrix_mode));
    glViewport(viewport[0], viewport[1], viewport[2], viewport[3]);
}
