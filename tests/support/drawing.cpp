#include "tests/support/drawing.h"

#include "display/scene.h"
#include "display/view.h"

#include <cmath>

using namespace gl_double;

void DrawingTest::SetUp() {
    reset();
    StoreTest::SetUp();
    gShowInfo = gShowHelp = 0; // the text over the scene has tests of its own
}

void DrawingTest::TearDown() {
    EXPECT_EQ(recorder().errors, std::vector<std::string>());
    StoreTest::TearDown();
    reset();
}

const Recorder &frame() {
    forget_drawing();
    maindisplay();
    return recorder();
}

std::vector<DrawnLine> drawn_lines() {
    std::vector<DrawnLine> lines;
    for (const Primitive &primitive : recorder().primitives) {
        if (primitive.mode != GL_LINES) {
            continue;
        }
        for (size_t i = 0; i + 1 < primitive.vertices.size(); i += 2) {
            lines.push_back({primitive.vertices[i], primitive.vertices[i + 1]});
        }
    }
    return lines;
}

std::vector<DrawnLine> lines_of_colour(double r, double g, double b) {
    std::vector<DrawnLine> lines;
    for (const DrawnLine &line : drawn_lines()) {
        if (std::fabs(line.from.r - r) < 1e-6 && std::fabs(line.from.g - g) < 1e-6 &&
            std::fabs(line.from.b - b) < 1e-6) {
            lines.push_back(line);
        }
    }
    return lines;
}

std::vector<Primitive> primitives_of(GLenum mode) {
    std::vector<Primitive> found_ones;
    for (const Primitive &primitive : recorder().primitives) {
        if (primitive.mode == mode) {
            found_ones.push_back(primitive);
        }
    }
    return found_ones;
}

std::vector<std::string> label_texts() {
    std::vector<std::string> texts;
    for (const Label &label : recorder().labels) {
        texts.push_back(label.text);
    }
    return texts;
}

const Label *label_of(const std::string &text) {
    for (const Label &label : recorder().labels) {
        if (label.text == text) {
            return &label;
        }
    }
    return nullptr;
}

std::vector<size_t> calls_of(const std::string &name) {
    std::vector<size_t> places;
    for (size_t i = 0; i < recorder().calls.size(); ++i) {
        if (recorder().calls[i].name == name) {
            places.push_back(i);
        }
    }
    return places;
}

void expect_vertex(const Vertex &vertex, double x, double y, double z, double tolerance) {
    EXPECT_NEAR(vertex.x, x, tolerance);
    EXPECT_NEAR(vertex.y, y, tolerance);
    EXPECT_NEAR(vertex.z, z, tolerance);
}

void expect_colour(const Vertex &vertex, double r, double g, double b, double a) {
    EXPECT_NEAR(vertex.r, r, 1e-6);
    EXPECT_NEAR(vertex.g, g, 1e-6);
    EXPECT_NEAR(vertex.b, b, 1e-6);
    EXPECT_NEAR(vertex.a, a, 1e-6);
}
