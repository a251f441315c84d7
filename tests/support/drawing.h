// tests/support/drawing.h -- what tests of the display have in common: a recorder that starts
// empty, whole frames, and searches in what they drew.
#pragma once

#include "tests/support/fixture.h"
#include "tests/support/gl_double.h"

#include <string>
#include <vector>

/// A drawn line from one vertex to the next, ends in drawing order.
struct DrawnLine {
    gl_double::Vertex from, to;
};

/// Starts each test with the recorder reset; fails it when GL or GLUT was misused.
class DrawingTest : public StoreTest {
  protected:
    void SetUp() override;
    void TearDown() override;
};

/// Draws one whole frame, forgetting earlier ones.
const gl_double::Recorder &frame();

/// All lines of GL_LINES primitives, in order.
std::vector<DrawnLine> drawn_lines();

/// Lines whose first end has this colour, within 1e-6.
std::vector<DrawnLine> lines_of_colour(double r, double g, double b);

/// Primitives of this mode, in order.
std::vector<gl_double::Primitive> primitives_of(GLenum mode);

/// The labels' texts, in order.
std::vector<std::string> label_texts();

/// The first label with this text, or a null pointer.
const gl_double::Label *label_of(const std::string &text);

/// Positions in the call list of the calls of this name.
std::vector<size_t> calls_of(const std::string &name);

/// Asserts place and colour.
void expect_vertex(const gl_double::Vertex &vertex, double x, double y, double z,
                   double tolerance = 1e-6);
void expect_colour(const gl_double::Vertex &vertex, double r, double g, double b, double a = 1.0);
