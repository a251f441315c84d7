// tests/support/gl_double.h -- a recording double of GL, GLU and GLUT. It defines the functions
// that the library calls and is linked instead of the real ones: no window and no GL context is
// needed, the matrices are computed as GL would, and what was drawn, registered and posted can
// be read afterwards. One recorder for the process; reset() starts a test afresh.
#pragma once

#include <GL/freeglut.h>
#include <GL/glu.h>
#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace gl_double {

struct Colour {
    double r, g, b, a;
};

/// As the caller gave it, before any matrix; the colour is the one of this vertex.
struct Vertex {
    double x, y, z;
    double r, g, b, a;
};

using Matrix = std::array<double, 16>; // by columns

/// One glBegin/glEnd, glDrawArrays or glDrawElements; vertices in the order drawn.
struct Primitive {
    GLenum mode;
    std::vector<Vertex> vertices;
    float point_size;
    GLenum polygon_mode;
    Matrix modelview;
    Matrix projection;
    bool from_arrays;
};

/// The characters written from one raster position, in the colour that held when it was set.
struct Label {
    double x, y, z;
    double r, g, b, a;
    void *font;
    std::string text;
    Matrix modelview;
    Matrix projection;
};

/// A state call by its GL name, or "primitive" or "label" with the index of what was drawn.
struct Call {
    std::string name;
    std::vector<double> values;
    bool operator==(const Call &) const = default;
};

struct MenuItem {
    std::string text;
    int value;   // of an entry
    int submenu; // its number, 0 for an entry
};

struct Menu {
    void (*callback)(int);
    std::vector<MenuItem> items;
};

struct Timer {
    unsigned milliseconds;
    void (*callback)(int);
    int value;
};

struct Callbacks {
    void (*reshape)(int, int);
    void (*display)();
    void (*keyboard)(unsigned char, int, int);
    void (*special)(int, int, int);
    void (*mouse)(int, int, int, int);
    void (*motion)(int, int);
    void (*passive_motion)(int, int);
    void (*idle)();
    void (*close)();
    void (*menu_status)(int, int, int);
};

struct Window {
    int number; // 0 until created
    std::string title;
    int x, y;
    int width, height;
    unsigned display_mode;
};

struct Recorder {
    // What was drawn, and every call in order.
    std::vector<Primitive> primitives;
    std::vector<Label> labels;
    std::vector<Call> calls;
    std::vector<std::string> errors; // misuse that GL would answer with an error or worse

    // GL state.
    Colour colour = {1, 1, 1, 1};
    Colour clear_colour = {0, 0, 0, 0};
    float point_size = 1.0f;
    GLenum polygon_mode = GL_FILL;
    std::set<GLenum> enabled; // of glEnable and glEnableClientState
    GLenum matrix_mode = GL_MODELVIEW;
    std::map<GLenum, std::vector<Matrix>> stacks; // top at the back
    std::array<GLint, 4> viewport = {0, 0, 450, 450};

    // GLUT.
    Callbacks callbacks = {};
    std::vector<Timer> timers; // pending, in the order armed
    int redisplays = 0;
    int swaps = 0;
    int main_loops = 0;
    bool initialized = false;
    std::vector<std::string> arguments; // of glutInit
    Window window = {};
    std::map<int, Menu> menus;
    int current_menu = 0;
    std::map<int, int> attached; // menu number by mouse button
    int cursor = -1;

    // Answers, for a test to set.
    int modifiers = 0;
    int elapsed_time = 0; // milliseconds
    int overlay_possible = 0;
    GLint max_clip_planes = 8;
};

/// The one recorder.
Recorder &recorder();

/// Everything back to the state before a window exists, nothing recorded.
void reset();

/// Forgets what was drawn and called, keeping GL and GLUT state: before a second frame.
void forget_drawing();

/// The matrix on top of a stack.
const Matrix &top(GLenum stack);

/// Window coordinates of a scene point by the given matrices and the present viewport.
std::array<double, 3> project(const Matrix &modelview, const Matrix &projection, double x, double y,
                              double z);

/// Runs the pending timers once; what they arm anew stays pending.
void fire_timers();

/// A menu as text: one line an entry, submenus indented by two blanks below their own line.
std::string menu_text(int menu, int depth = 0);

/// Chooses the entry at the end of `path`, given by item texts from the menu of `button` down:
/// makes the menu that holds it the current one and calls that menu's callback with the
/// entry's value, as GLUT does. False when there is no such entry.
bool choose(const std::vector<std::string> &path, int button = GLUT_RIGHT_BUTTON);

} // namespace gl_double
