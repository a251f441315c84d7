// Drawing and state of the GL double: primitives, arrays, raster text, switches.
#include "tests/support/gl_double.h"

#include "tests/support/gl_double_recording.h"

#include <cstring>

using namespace gl_double;

namespace {

struct ArrayPointer {
    GLint size;
    GLenum type;
    GLsizei stride;
    const unsigned char *data;
};

bool inside_begin = false;
bool raster_open = false; // characters go to the last label
bool raster_set = false;
Label raster = {};
ArrayPointer vertex_array = {};
ArrayPointer colour_array = {};

void add_vertex(double x, double y, double z) {
    if (!inside_begin) {
        complain("vertex outside glBegin");
        return;
    }
    const Colour &c = recorder().colour;
    recorder().primitives.back().vertices.push_back({x, y, z, c.r, c.g, c.b, c.a});
}

void set_colour(double r, double g, double b, double a) {
    recorder().colour = {r, g, b, a};
}

void open_primitive(GLenum mode, bool from_arrays) {
    Recorder &r = recorder();
    log_call("primitive", {static_cast<double>(r.primitives.size())});
    r.primitives.push_back({mode,
                            {},
                            r.point_size,
                            r.polygon_mode,
                            top(GL_MODELVIEW),
                            top(GL_PROJECTION),
                            from_arrays});
}

void set_raster(double x, double y, double z) {
    not_inside_begin("glRasterPos");
    const Colour &c = recorder().colour;
    raster = {x, y, z, c.r, c.g, c.b, c.a, nullptr, "", top(GL_MODELVIEW), top(GL_PROJECTION)};
    raster_open = false;
    raster_set = true;
}

size_t type_size(GLenum type) {
    switch (type) {
    case GL_FLOAT:
    case GL_INT:
        return 4;
    case GL_DOUBLE:
        return 8;
    case GL_UNSIGNED_BYTE:
        return 1;
    default:
        complain("array type");
        return 4;
    }
}

/// Component k of element i, as a number; missing ones are `otherwise`.
double component(const ArrayPointer &array, size_t i, GLint k, double otherwise) {
    if (k >= array.size) {
        return otherwise;
    }
    const size_t width = type_size(array.type);
    const size_t stride = array.stride != 0 ? static_cast<size_t>(array.stride)
                                            : width * static_cast<size_t>(array.size);
    const unsigned char *at = array.data + i * stride + static_cast<size_t>(k) * width;
    if (array.type == GL_FLOAT) {
        float value;
        std::memcpy(&value, at, sizeof value);
        return value;
    }
    if (array.type == GL_DOUBLE) {
        double value;
        std::memcpy(&value, at, sizeof value);
        return value;
    }
    if (array.type == GL_INT) {
        GLint value;
        std::memcpy(&value, at, sizeof value);
        return value;
    }
    return *at / 255.0;
}

void add_element(size_t i) {
    const Recorder &r = recorder();
    Colour c = r.colour;
    if (r.enabled.contains(GL_COLOR_ARRAY)) {
        c = {component(colour_array, i, 0, 0), component(colour_array, i, 1, 0),
             component(colour_array, i, 2, 0), component(colour_array, i, 3, 1)};
    }
    recorder().primitives.back().vertices.push_back(
        {component(vertex_array, i, 0, 0), component(vertex_array, i, 1, 0),
         component(vertex_array, i, 2, 0), c.r, c.g, c.b, c.a});
}

bool arrays_ready() {
    not_inside_begin("glDraw");
    const bool ready = recorder().enabled.contains(GL_VERTEX_ARRAY) && vertex_array.data != nullptr;
    if (!ready) {
        complain("drawing without a vertex array");
    }
    return ready;
}

size_t index_at(GLenum type, const void *indices, size_t i) {
    switch (type) {
    case GL_UNSIGNED_INT:
        return static_cast<const GLuint *>(indices)[i];
    case GL_UNSIGNED_SHORT:
        return static_cast<const GLushort *>(indices)[i];
    case GL_UNSIGNED_BYTE:
        return static_cast<const GLubyte *>(indices)[i];
    default:
        complain("index type");
        return 0;
    }
}

void set_enabled(const char *name, GLenum what, bool on) {
    not_inside_begin(name);
    log_call(name, {static_cast<double>(what)});
    if (on) {
        recorder().enabled.insert(what);
    } else {
        recorder().enabled.erase(what);
    }
}

} // namespace

namespace gl_double {

Recorder &recorder() {
    static Recorder one;
    return one;
}

void complain(const std::string &what) {
    recorder().errors.push_back(what);
}

void log_call(const char *name, std::vector<double> values) {
    recorder().calls.push_back({name, std::move(values)});
}

void not_inside_begin(const char *name) {
    if (inside_begin) {
        complain(std::string(name) + " between glBegin and glEnd");
    }
}

void reset() {
    recorder() = Recorder();
    inside_begin = raster_open = raster_set = false;
    vertex_array = colour_array = {};
    reset_matrices();
    reset_windowing();
}

void forget_drawing() {
    Recorder &r = recorder();
    r.primitives.clear();
    r.labels.clear();
    r.calls.clear();
    r.swaps = 0;
    r.redisplays = 0;
    raster_open = false;
}

void write_character(void *font, int character) {
    Recorder &r = recorder();
    not_inside_begin("glutBitmapCharacter");
    if (!raster_set) {
        complain("character without a raster position");
    }
    if (!raster_open || r.labels.back().font != font) {
        log_call("label", {static_cast<double>(r.labels.size())});
        r.labels.push_back(raster);
        r.labels.back().font = font;
        raster_open = true;
    }
    r.labels.back().text += static_cast<char>(character);
}

} // namespace gl_double

void glBegin(GLenum mode) {
    not_inside_begin("glBegin");
    open_primitive(mode, false);
    inside_begin = true;
}

void glEnd() {
    if (!inside_begin) {
        complain("glEnd without glBegin");
    }
    inside_begin = false;
}

void glVertex2d(GLdouble x, GLdouble y) {
    add_vertex(x, y, 0);
}
void glVertex2f(GLfloat x, GLfloat y) {
    add_vertex(x, y, 0);
}
void glVertex2i(GLint x, GLint y) {
    add_vertex(x, y, 0);
}
void glVertex3d(GLdouble x, GLdouble y, GLdouble z) {
    add_vertex(x, y, z);
}
void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    add_vertex(x, y, z);
}
void glVertex3i(GLint x, GLint y, GLint z) {
    add_vertex(x, y, z);
}
void glVertex2fv(const GLfloat *v) {
    add_vertex(v[0], v[1], 0);
}
void glVertex3fv(const GLfloat *v) {
    add_vertex(v[0], v[1], v[2]);
}
void glVertex3dv(const GLdouble *v) {
    add_vertex(v[0], v[1], v[2]);
}

void glColor3f(GLfloat r, GLfloat g, GLfloat b) {
    set_colour(r, g, b, 1);
}
void glColor3d(GLdouble r, GLdouble g, GLdouble b) {
    set_colour(r, g, b, 1);
}
void glColor4f(GLfloat r, GLfloat g, GLfloat b, GLfloat a) {
    set_colour(r, g, b, a);
}
void glColor4d(GLdouble r, GLdouble g, GLdouble b, GLdouble a) {
    set_colour(r, g, b, a);
}
void glColor3fv(const GLfloat *v) {
    set_colour(v[0], v[1], v[2], 1);
}
void glColor4fv(const GLfloat *v) {
    set_colour(v[0], v[1], v[2], v[3]);
}

void glRasterPos2f(GLfloat x, GLfloat y) {
    set_raster(x, y, 0);
}
void glRasterPos2d(GLdouble x, GLdouble y) {
    set_raster(x, y, 0);
}
void glRasterPos2i(GLint x, GLint y) {
    set_raster(x, y, 0);
}
void glRasterPos3f(GLfloat x, GLfloat y, GLfloat z) {
    set_raster(x, y, z);
}
void glRasterPos3d(GLdouble x, GLdouble y, GLdouble z) {
    set_raster(x, y, z);
}

void glVertexPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *data) {
    vertex_array = {size, type, stride, static_cast<const unsigned char *>(data)};
}
void glColorPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *data) {
    colour_array = {size, type, stride, static_cast<const unsigned char *>(data)};
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    if (!arrays_ready()) {
        return;
    }
    open_primitive(mode, true);
    for (GLsizei i = 0; i < count; ++i) {
        add_element(static_cast<size_t>(first + i));
    }
}

void glDrawElements(GLenum mode, GLsizei count, GLenum type, const GLvoid *indices) {
    if (!arrays_ready()) {
        return;
    }
    open_primitive(mode, true);
    for (GLsizei i = 0; i < count; ++i) {
        add_element(index_at(type, indices, static_cast<size_t>(i)));
    }
}

void glEnable(GLenum what) {
    set_enabled("glEnable", what, true);
}
void glDisable(GLenum what) {
    set_enabled("glDisable", what, false);
}
void glEnableClientState(GLenum what) {
    set_enabled("glEnableClientState", what, true);
}
void glDisableClientState(GLenum what) {
    set_enabled("glDisableClientState", what, false);
}
GLboolean glIsEnabled(GLenum what) {
    return recorder().enabled.contains(what) ? GL_TRUE : GL_FALSE;
}

void glPointSize(GLfloat size) {
    not_inside_begin("glPointSize");
    if (!(size > 0.0f)) {
        complain("point size");
    }
    log_call("glPointSize", {size});
    recorder().point_size = size;
}

void glPolygonMode(GLenum face, GLenum mode) {
    not_inside_begin("glPolygonMode");
    log_call("glPolygonMode", {static_cast<double>(face), static_cast<double>(mode)});
    recorder().polygon_mode = mode;
}

void glClear(GLbitfield mask) {
    not_inside_begin("glClear");
    log_call("glClear", {static_cast<double>(mask)});
}

void glClearColor(GLclampf r, GLclampf g, GLclampf b, GLclampf a) {
    log_call("glClearColor", {r, g, b, a});
    recorder().clear_colour = {r, g, b, a};
}

void glShadeModel(GLenum mode) {
    log_call("glShadeModel", {static_cast<double>(mode)});
}
void glFrontFace(GLenum mode) {
    log_call("glFrontFace", {static_cast<double>(mode)});
}
void glBlendFunc(GLenum source, GLenum destination) {
    log_call("glBlendFunc", {static_cast<double>(source), static_cast<double>(destination)});
}
void glDepthFunc(GLenum function) {
    log_call("glDepthFunc", {static_cast<double>(function)});
}
void glLineWidth(GLfloat width) {
    log_call("glLineWidth", {width});
}
void glHint(GLenum target, GLenum mode) {
    log_call("glHint", {static_cast<double>(target), static_cast<double>(mode)});
}
void glPolygonOffset(GLfloat factor, GLfloat units) {
    log_call("glPolygonOffset", {factor, units});
}
void glFlush() {
    log_call("glFlush", {});
}
void glFinish() {
    log_call("glFinish", {});
}
GLenum glGetError() {
    return GL_NO_ERROR;
}
