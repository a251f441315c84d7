#include "display/cursors.h"

#include "display/axes.h"
#include "interact/selection.h"
#include "live/live.h"
#include "live/shared.h"
#include "store/store.h"

#include <GL/freeglut.h>

namespace {

struct Rgba {
    float red, green, blue, alpha;
};

struct CursorLook {
    Rgba line;
    float top;      // scene Y where the line ends
    Rgba near_edge; // of the curtain, in the plane of the time axis
    Rgba far_edge;
};

constexpr float curtain_top = 1.005f;
constexpr float curtain_depth = -0.3f; // 90 dB below the loudest point

constexpr CursorLook live_look = {
    {0.1f, 0.45f, 0.3f, 1.0f}, 1.0f, {0.06f, 0.25f, 0.3f, 0.75f}, {0.1f, 0.45f, 0.3f, 0.0f}};
constexpr CursorLook buffer_look = {{0.18f, 0.4f, 0.2f, 1.0f},
                                    curtain_top,
                                    {0.135f, 0.3f, 0.15f, 0.75f},
                                    {0.18f, 0.4f, 0.2f, 0.0f}};
constexpr CursorLook zone_look = {{0.33f, 0.4f, 0.2f, 1.0f},
                                  curtain_top,
                                  {0.225f, 0.3f, 0.15f, 0.75f},
                                  {0.33f, 0.4f, 0.2f, 0.0f}};

void set_colour(const Rgba &colour) {
    glColor4f(colour.red, colour.green, colour.blue, colour.alpha);
}

void draw_curtain(float c, const CursorLook &look) {
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glBegin(GL_QUADS);
    set_colour(look.near_edge);
    glVertex3f(c, 0.0f, 0.0f);
    glVertex3f(c, curtain_top, 0.0f);
    set_colour(look.far_edge);
    glVertex3f(c, curtain_top, curtain_depth);
    glVertex3f(c, 0.0f, curtain_depth);
    glEnd();
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
}

float time_position(float seconds) {
    return (seconds - sndstart) / (sndlen - sndstart);
}

void draw_line(float c, const CursorLook &look) {
    set_colour(look.line);
    glBegin(GL_LINES);
    glVertex3f(c, 0.0f, 0.0f);
    glVertex3f(c, look.top, 0.0f);
    glEnd();
}

void draw_cursor(float c, const CursorLook &look, bool with_curtain) {
    draw_line(c, look);
    if (with_curtain) {
        draw_curtain(c, look);
    }
}

/// The label has the line's colour: it comes before the curtain, which ends transparent.
void draw_buffer_cursor(const CameraRecord &camera) {
    const float c = time_position(peek(fplayer.seconds));
    draw_line(c, buffer_look);
    if (peek(fplayer.loop) != 0) {
        draw_time_label(c, axis_scale(camera), "L");
    }
    if (flat == 0) {
        draw_curtain(c, buffer_look);
    }
}

} // namespace

void draw_cursors(const CameraRecord &camera) {
    const float live = peek(tfsquare[0]);
    if (peek(liveSynth) == 1 && live > 0.0f && live < 1.0f) {
        draw_cursor(live, live_look, peek(midi) != 0 && flat == 0);
    }
    if (peek(fplayer.state) != 0) {
        draw_buffer_cursor(camera);
    }
    if (peek(zgen.state) == 2 && selecting == 0) {
        draw_cursor(time_position(peek(zgen.time)), zone_look, flat == 0);
    }
}
