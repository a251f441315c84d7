// Matrices, queries and the GLU mathematics of the GL double.
#include "tests/support/gl_double.h"
#include "tests/support/gl_double_recording.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>

using namespace gl_double;

namespace {

constexpr double degree = 3.14159265358979323846 / 180.0;
constexpr Matrix identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr size_t deepest_modelview = 32;
constexpr size_t deepest_projection = 4; // GL promises no more than 2

using Column = std::array<double, 4>;

Matrix product(const Matrix &a, const Matrix &b) {
    Matrix result = {};
    for (size_t column = 0; column < 4; ++column) {
        for (size_t row = 0; row < 4; ++row) {
            for (size_t k = 0; k < 4; ++k) {
                result[4 * column + row] += a[4 * k + row] * b[4 * column + k];
            }
        }
    }
    return result;
}

Column transformed(const Matrix &m, const Column &v) {
    Column result = {};
    for (size_t row = 0; row < 4; ++row) {
        for (size_t k = 0; k < 4; ++k) {
            result[row] += m[4 * k + row] * v[k];
        }
    }
    return result;
}

/// Gauss-Jordan with partial pivoting; false when the matrix has no inverse.
bool inverse(Matrix m, Matrix &result) {
    result = identity;
    for (size_t k = 0; k < 4; ++k) {
        size_t pivot = k;
        for (size_t row = k + 1; row < 4; ++row) {
            if (std::fabs(m[4 * k + row]) > std::fabs(m[4 * k + pivot])) {
                pivot = row;
            }
        }
        if (m[4 * k + pivot] == 0.0) {
            return false;
        }
        for (size_t column = 0; column < 4; ++column) {
            std::swap(m[4 * column + k], m[4 * column + pivot]);
            std::swap(result[4 * column + k], result[4 * column + pivot]);
        }
        const double scale = 1.0 / m[4 * k + k];
        for (size_t column = 0; column < 4; ++column) {
            m[4 * column + k] *= scale;
            result[4 * column + k] *= scale;
        }
        for (size_t row = 0; row < 4; ++row) {
            const double factor = m[4 * k + row];
            for (size_t column = 0; row != k && column < 4; ++column) {
                m[4 * column + row] -= factor * m[4 * column + k];
                result[4 * column + row] -= factor * result[4 * column + k];
            }
        }
    }
    return true;
}

std::vector<Matrix> &stack_of(GLenum mode) {
    std::vector<Matrix> &stack = recorder().stacks[mode];
    if (stack.empty()) {
        stack.push_back(identity);
    }
    return stack;
}

Matrix &current() {
    not_inside_begin("a matrix call");
    return stack_of(recorder().matrix_mode).back();
}

void multiply(const Matrix &by) {
    Matrix &matrix = current();
    matrix = product(matrix, by);
}

std::array<double, 3> crossed(const std::array<double, 3> &a, const std::array<double, 3> &b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

std::array<double, 3> unit(const std::array<double, 3> &v) {
    const double length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    return {v[0] / length, v[1] / length, v[2] / length};
}

Matrix from(const GLdouble *values) {
    Matrix matrix;
    std::copy_n(values, 16, matrix.begin());
    return matrix;
}

/// What a query of one or more numbers gives; empty for one that the double does not know.
std::vector<double> answer(GLenum what) {
    const Recorder &r = recorder();
    const auto listed = [](const auto &values) {
        return std::vector<double>(values.begin(), values.end());
    };
    switch (what) {
    case GL_MODELVIEW_MATRIX:
        return listed(top(GL_MODELVIEW));
    case GL_PROJECTION_MATRIX:
        return listed(top(GL_PROJECTION));
    case GL_VIEWPORT:
        return listed(r.viewport);
    case GL_MATRIX_MODE:
        return {static_cast<double>(r.matrix_mode)};
    case GL_MAX_CLIP_PLANES:
        return {static_cast<double>(r.max_clip_planes)};
    case GL_POINT_SIZE:
        return {r.point_size};
    case GL_POLYGON_MODE:
        return {static_cast<double>(r.polygon_mode), static_cast<double>(r.polygon_mode)};
    case GL_CURRENT_COLOR:
        return {r.colour.r, r.colour.g, r.colour.b, r.colour.a};
    case GL_COLOR_CLEAR_VALUE:
        return {r.clear_colour.r, r.clear_colour.g, r.clear_colour.b, r.clear_colour.a};
    case GL_MODELVIEW_STACK_DEPTH:
        return {static_cast<double>(stack_of(GL_MODELVIEW).size())};
    case GL_PROJECTION_STACK_DEPTH:
        return {static_cast<double>(stack_of(GL_PROJECTION).size())};
    default:
        complain("a query that the double does not know");
        return {};
    }
}

template <typename T> void give(const char *name, GLenum what, T *to) {
    not_inside_begin(name);
    log_call(name, {static_cast<double>(what)});
    for (const double value : answer(what)) {
        *to++ = static_cast<T>(value);
    }
}

} // namespace

namespace gl_double {

void reset_matrices() {
    for (const GLenum mode : {GLenum{GL_MODELVIEW}, GLenum{GL_PROJECTION}, GLenum{GL_TEXTURE}}) {
        stack_of(mode).assign(1, identity);
    }
}

const Matrix &top(GLenum stack) {
    return stack_of(stack).back();
}

std::array<double, 3> project(const Matrix &modelview, const Matrix &projection, double x, double y,
                              double z) {
    std::array<double, 3> window = {};
    gluProject(x, y, z, modelview.data(), projection.data(), recorder().viewport.data(), &window[0],
               &window[1], &window[2]);
    return window;
}

} // namespace gl_double

void glMatrixMode(GLenum mode) {
    not_inside_begin("glMatrixMode");
    if (mode != GL_MODELVIEW && mode != GL_PROJECTION && mode != GL_TEXTURE) {
        complain("matrix mode");
        return;
    }
    log_call("glMatrixMode", {static_cast<double>(mode)});
    recorder().matrix_mode = mode;
}

void glLoadIdentity() {
    log_call("glLoadIdentity", {});
    current() = identity;
}
void glLoadMatrixd(const GLdouble *values) {
    current() = from(values);
}
void glMultMatrixd(const GLdouble *values) {
    multiply(from(values));
}

void glPushMatrix() {
    const Matrix copy = current();
    const GLenum mode = recorder().matrix_mode;
    std::vector<Matrix> &stack = stack_of(mode);
    if (stack.size() >= (mode == GL_MODELVIEW ? deepest_modelview : deepest_projection)) {
        complain("matrix stack overflow");
        return;
    }
    stack.push_back(copy);
}

void glPopMatrix() {
    not_inside_begin("glPopMatrix");
    std::vector<Matrix> &stack = stack_of(recorder().matrix_mode);
    if (stack.size() < 2) {
        complain("matrix stack underflow");
        return;
    }
    stack.pop_back();
}

void glFrustum(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top_, GLdouble near_plane,
               GLdouble far_plane) {
    log_call("glFrustum", {left, right, bottom, top_, near_plane, far_plane});
    if (near_plane <= 0.0 || far_plane <= 0.0 || left == right || bottom == top_ ||
        near_plane == far_plane) {
        complain("frustum");
        return;
    }
    Matrix m = {};
    m[0] = 2 * near_plane / (right - left);
    m[5] = 2 * near_plane / (top_ - bottom);
    m[8] = (right + left) / (right - left);
    m[9] = (top_ + bottom) / (top_ - bottom);
    m[10] = -(far_plane + near_plane) / (far_plane - near_plane);
    m[11] = -1;
    m[14] = -2 * far_plane * near_plane / (far_plane - near_plane);
    multiply(m);
}

void glOrtho(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top_, GLdouble near_plane,
             GLdouble far_plane) {
    log_call("glOrtho", {left, right, bottom, top_, near_plane, far_plane});
    if (left == right || bottom == top_ || near_plane == far_plane) {
        complain("orthographic volume");
        return;
    }
    Matrix m = identity;
    m[0] = 2 / (right - left);
    m[5] = 2 / (top_ - bottom);
    m[10] = -2 / (far_plane - near_plane);
    m[12] = -(right + left) / (right - left);
    m[13] = -(top_ + bottom) / (top_ - bottom);
    m[14] = -(far_plane + near_plane) / (far_plane - near_plane);
    multiply(m);
}

void glTranslated(GLdouble x, GLdouble y, GLdouble z) {
    Matrix m = identity;
    m[12] = x;
    m[13] = y;
    m[14] = z;
    log_call("glTranslate", {x, y, z});
    multiply(m);
}
void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    glTranslated(x, y, z);
}

void glScaled(GLdouble x, GLdouble y, GLdouble z) {
    Matrix m = identity;
    m[0] = x;
    m[5] = y;
    m[10] = z;
    log_call("glScale", {x, y, z});
    multiply(m);
}
void glScalef(GLfloat x, GLfloat y, GLfloat z) {
    glScaled(x, y, z);
}

void glRotated(GLdouble angle, GLdouble ax, GLdouble ay, GLdouble az) {
    log_call("glRotate", {angle, ax, ay, az});
    const auto [x, y, z] = unit({ax, ay, az});
    const double c = std::cos(angle * degree);
    const double s = std::sin(angle * degree);
    const double d = 1 - c;
    multiply({x * x * d + c, y * x * d + z * s, x * z * d - y * s, 0, //
              x * y * d - z * s, y * y * d + c, y * z * d + x * s, 0, //
              x * z * d + y * s, y * z * d - x * s, z * z * d + c, 0, //
              0, 0, 0, 1});
}
void glRotatef(GLfloat angle, GLfloat x, GLfloat y, GLfloat z) {
    glRotated(angle, x, y, z);
}

void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    not_inside_begin("glViewport");
    log_call("glViewport", {static_cast<double>(x), static_cast<double>(y),
                            static_cast<double>(width), static_cast<double>(height)});
    if (width < 0 || height < 0) {
        complain("viewport of negative size");
        return;
    }
    recorder().viewport = {x, y, width, height};
}

void glGetDoublev(GLenum what, GLdouble *to) {
    give("glGetDoublev", what, to);
}
void glGetFloatv(GLenum what, GLfloat *to) {
    give("glGetFloatv", what, to);
}
void glGetIntegerv(GLenum what, GLint *to) {
    give("glGetIntegerv", what, to);
}

void gluLookAt(GLdouble eye_x, GLdouble eye_y, GLdouble eye_z, GLdouble x, GLdouble y, GLdouble z,
               GLdouble up_x, GLdouble up_y, GLdouble up_z) {
    log_call("gluLookAt", {eye_x, eye_y, eye_z, x, y, z, up_x, up_y, up_z});
    const auto forward = unit({x - eye_x, y - eye_y, z - eye_z});
    const auto side = unit(crossed(forward, {up_x, up_y, up_z}));
    const auto up = crossed(side, forward);
    multiply({side[0], up[0], -forward[0], 0, //
              side[1], up[1], -forward[1], 0, //
              side[2], up[2], -forward[2], 0, //
              0, 0, 0, 1});
    Matrix m = identity;
    m[12] = -eye_x;
    m[13] = -eye_y;
    m[14] = -eye_z;
    multiply(m);
}

void gluOrtho2D(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top_) {
    glOrtho(left, right, bottom, top_, -1, 1);
}

GLint gluProject(GLdouble x, GLdouble y, GLdouble z, const GLdouble *modelview,
                 const GLdouble *projection, const GLint *view, GLdouble *window_x,
                 GLdouble *window_y, GLdouble *window_z) {
    Column v = transformed(from(projection), transformed(from(modelview), {x, y, z, 1}));
    if (v[3] == 0.0) {
        return GL_FALSE;
    }
    *window_x = view[0] + view[2] * (v[0] / v[3] * 0.5 + 0.5);
    *window_y = view[1] + view[3] * (v[1] / v[3] * 0.5 + 0.5);
    *window_z = v[2] / v[3] * 0.5 + 0.5;
    return GL_TRUE;
}

GLint gluUnProject(GLdouble window_x, GLdouble window_y, GLdouble window_z,
                   const GLdouble *modelview, const GLdouble *projection, const GLint *view,
                   GLdouble *x, GLdouble *y, GLdouble *z) {
    Matrix back;
    if (!inverse(product(from(projection), from(modelview)), back)) {
        return GL_FALSE;
    }
    const Column v =
        transformed(back, {(window_x - view[0]) / view[2] * 2 - 1,
                           (window_y - view[1]) / view[3] * 2 - 1, window_z * 2 - 1, 1});
    if (v[3] == 0.0) {
        return GL_FALSE;
    }
    *x = v[0] / v[3];
    *y = v[1] / v[3];
    *z = v[2] / v[3];
    return GL_TRUE;
}
