// The grand staff over the analysis, and the two clefs beside it.
#include "display/staff.h"

#include "display/clefs.h"
#include "display/scene.h"
#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "tests/support/drawing.h"

#include <algorithm>
#include <cmath>

using namespace gl_double;

namespace {

struct Range {
    double low, high;
};

struct Glyph {
    void (*draw)(float, float);
    size_t polygons, triangle_groups, vertices;
    Range x, y;
    double left, width; // translation and scale in X
};

const Glyph glyphs[] = {{bass_clef, 3, 11, 102, {-1, 15}, {-13, 6}, 0.02, 0.0055},
                        {treble_clef, 1, 23, 202, {-6, 6}, {-10, 19}, 0.05, 0.0064}};

class Staff : public DrawingTest {
  protected:
    void SetUp() override {
        DrawingTest::SetUp();
        show_range(50.0f, 1000.0f);
        gShowStaff = 1;
    }
    void TearDown() override {
        fplayer.state = 0;
        DrawingTest::TearDown();
    }
    static void show_range(float low, float high) {
        fill_store({{{0.0f, low, -10.0f}, {1.0f, high, -10.0f}}});
        gl_double::forget_drawing();
    }

    static std::vector<double> line_heights() {
        std::vector<double> heights;
        for (const DrawnLine &line : lines_of_colour(0.29, 0.27, 0.3)) {
            expect_vertex(line.from, 0.0, line.to.y, 0.0);
            EXPECT_EQ(line.to.x, 1.0);
            EXPECT_EQ(line.to.z, 0.0);
            expect_colour(line.from, 0.29, 0.27, 0.3, 0.55);
            heights.push_back(line.from.y);
        }
        return heights;
    }

    /// Polygons and triangles of the last frame.
    static std::vector<Primitive> filled() {
        std::vector<Primitive> all;
        for (const Primitive &primitive : recorder().primitives) {
            if (primitive.mode == GL_POLYGON || primitive.mode == GL_TRIANGLES) {
                all.push_back(primitive);
            }
        }
        return all;
    }

    /// Height in the scene of the origin of a primitive's grid.
    static double grid_height(const Primitive &primitive) {
        const auto scene = primitives_of(GL_LINES).at(0);
        const auto at = project(primitive.modelview, primitive.projection, 0, 0, 0);
        const auto foot = project(scene.modelview, scene.projection, 0, 0, 0);
        const auto top = project(scene.modelview, scene.projection, 0, 1, 0);
        return (at[1] - foot[1]) / (top[1] - foot[1]);
    }
};

const double hertz[] = {98.00,  123.47, 146.83, 174.61, 220.00,
                        329.63, 392.00, 493.88, 587.33, 698.46};

double log_height(double f) {
    return std::log(f / minfreq) / (logmaxfreq * 0.69314718);
}

std::vector<Vertex> row(const std::vector<std::pair<double, double>> &points) {
    std::vector<Vertex> vertices;
    for (const auto &[x, y] : points) {
        vertices.push_back({x, y, 0, 0, 0, 0, 0});
    }
    return vertices;
}

void expect_row(const Primitive &primitive, GLenum mode,
                const std::vector<std::pair<double, double>> &points) {
    EXPECT_EQ(primitive.mode, mode);
    const auto expected = row(points);
    ASSERT_EQ(primitive.vertices.size(), expected.size());
    for (size_t k = 0; k < expected.size(); ++k) {
        expect_vertex(primitive.vertices[k], expected[k].x, expected[k].y, 0.0);
    }
}

} // namespace

TEST_F(Staff, FrequenciesOfTheLines) {
    const float a = 440.0f;
    float f[10];
    make_et_staff(&a, &f[0], &f[1], &f[2], &f[3], &f[4], &f[5], &f[6], &f[7], &f[8], &f[9]);
    for (int k = 0; k < 10; ++k) {
        EXPECT_NEAR(f[k], hertz[k], 0.005) << k;
    }
    EXPECT_EQ(f[0], static_cast<float>(440.0 * 0.25 / 1.122462048309373));
    EXPECT_EQ(f[1], static_cast<float>(440.0 * 0.5 / 1.7817974362806785));
    EXPECT_EQ(f[2], static_cast<float>(440.0 * 0.5 / 1.4983070768766815));
    EXPECT_EQ(f[3], static_cast<float>(440.0 * 0.5 / 1.2599210498948732));
    EXPECT_EQ(f[4], 220.0f);
    EXPECT_EQ(f[5], static_cast<float>(440.0 / 1.3348398541700344));
    EXPECT_EQ(f[6], static_cast<float>(440.0 / 1.122462048309373));
    EXPECT_EQ(f[7], static_cast<float>(440.0 * 1.122462048309373));
    EXPECT_EQ(f[8], static_cast<float>(440.0 * 1.3348398541700344));
    EXPECT_EQ(f[9], static_cast<float>(440.0 * 1.5874010519681996));
}

TEST_F(Staff, TheLawsTakeAnyReference) {
    const float a = 432.0f;
    float f[10];
    float fs;
    make_et_staff(&a, &f[0], &f[1], &f[2], &f[3], &f[4], &f[5], &f[6], &f[7], &f[8], &f[9]);
    make_fs(&a, &fs);
    for (int k = 0; k < 10; ++k) {
        EXPECT_NEAR(f[k], hertz[k] * 432.0 / 440.0, 0.005) << k;
    }
    EXPECT_EQ(fs, static_cast<float>(432.0 / 1.189207115002721));
}

TEST_F(Staff, TheTrebleClefStandsAtFSharp) {
    const float a = 440.0f;
    float fs;
    make_fs(&a, &fs);
    EXPECT_EQ(fs, static_cast<float>(440.0 / 1.189207115002721));
    EXPECT_NEAR(fs, 369.99, 0.005);
}

TEST_F(Staff, NoLinesWithoutTheFlag) {
    for (const int flag : {0, 2}) {
        gShowStaff = static_cast<uint8_t>(flag);
        frame();
        EXPECT_TRUE(line_heights().empty());
    }
}

TEST_F(Staff, TenLinesInTheLinearView) {
    frame();
    const auto heights = line_heights();
    ASSERT_EQ(heights.size(), 10u);
    for (size_t k = 0; k < 10; ++k) {
        EXPECT_NEAR(heights[k], hertz[k] / 1000.0, 1e-5) << k;
    }
}

TEST_F(Staff, TenLinesInTheLogView) {
    logpos = 1;
    frame();
    const auto heights = line_heights();
    ASSERT_EQ(heights.size(), 10u);
    for (size_t k = 0; k < 10; ++k) {
        EXPECT_NEAR(heights[k], log_height(hertz[k]), 2e-5) << k;
    }
}

TEST_F(Staff, UpTo300HertzTheFiveBassLines) {
    show_range(50.0f, 300.0f);
    frame();
    EXPECT_EQ(line_heights().size(), 5u);
    EXPECT_NEAR(line_heights().back(), 220.0 / 300.0, 1e-6);
}

TEST_F(Staff, ALineBelowTheRangeIsLeftOutInTheLogViewAlone) {
    show_range(130.0f, 1000.0f);
    frame();
    EXPECT_EQ(line_heights().size(), 10u);
    logpos = 1;
    frame();
    ASSERT_EQ(line_heights().size(), 8u);
    EXPECT_NEAR(line_heights()[0], log_height(hertz[2]), 2e-5);
}

TEST_F(Staff, ALineAtTheRangesEndIsNotDrawn) {
    show_range(50.0f, 220.0f);
    frame();
    EXPECT_EQ(line_heights().size(), 4u);
    logpos = 1;
    frame();
    EXPECT_EQ(line_heights().size(), 4u);
    show_range(220.0f, 1000.0f);
    frame();
    EXPECT_EQ(line_heights().size(), 5u);
}

TEST_F(Staff, StandsBetweenTheMarksAndTheCursors) {
    selecting = 1;
    fplayer.state = 2;
    frame();
    const auto place_of = [](GLenum mode, double red) {
        const auto &all = recorder().primitives;
        const auto at = std::find_if(all.begin(), all.end(), [=](const Primitive &primitive) {
            return primitive.mode == mode && !primitive.vertices.empty() &&
                   std::abs(primitive.vertices[0].r - red) < 1e-6;
        });
        EXPECT_NE(at, all.end());
        return at - all.begin();
    };
    EXPECT_LT(place_of(GL_LINE_LOOP, 0.4), place_of(GL_LINES, 0.29));
    EXPECT_LT(place_of(GL_LINES, 0.29), place_of(GL_LINES, 0.18));
    selecting = 0;
}

TEST_F(Staff, TheColourIsSetWhateverTheFlags) {
    gShowStaff = 0;
    draw_scene(gCamera);
    EXPECT_NEAR(recorder().colour.r, 0.29, 1e-6);
    EXPECT_NEAR(recorder().colour.g, 0.27, 1e-6);
    EXPECT_NEAR(recorder().colour.b, 0.3, 1e-6);
    EXPECT_NEAR(recorder().colour.a, 0.55, 1e-6);
}

// --- clefs -------------------------------------------------------------------------------------

TEST_F(Staff, ClefsNeedTheirFlagTheStaffAndTheLogView) {
    for (int flags = 0; flags < 8; ++flags) {
        gShowStaff = flags & 1;
        gShowClef = (flags >> 1) & 1;
        logpos = flags >> 2;
        frame();
        EXPECT_EQ(filled().size(), flags == 7 ? 38u : 0u) << flags;
    }
    gShowClef = 5;
    frame();
    EXPECT_EQ(filled().size(), 38u);
}

TEST_F(Staff, ClefsStandAtTheirFrequenciesFilled) {
    logpos = 1;
    gShowClef = 1;
    frame();
    const auto all = filled();
    ASSERT_EQ(all.size(), 38u);
    EXPECT_NEAR(grid_height(all[0]), log_height(174.614), 1e-4);
    EXPECT_NEAR(grid_height(all[14]), log_height(369.994), 1e-4);
    for (const Primitive &primitive : all) {
        EXPECT_EQ(primitive.polygon_mode, static_cast<GLenum>(GL_FILL));
        expect_colour(primitive.vertices.at(0), 0.29, 0.27, 0.3, 0.55);
    }
    EXPECT_EQ(recorder().polygon_mode, static_cast<GLenum>(GL_LINE));
}

TEST_F(Staff, OutsideTheRangeTheBassClefStandsAtTheFoot) {
    logpos = 1;
    gShowClef = 1;
    show_range(200.0f, 1000.0f);
    frame();
    EXPECT_NEAR(grid_height(filled().at(0)), 0.0, 1e-6);
    show_range(20.0f, 170.0f);
    frame();
    EXPECT_NEAR(grid_height(filled().at(0)), 0.0, 1e-6);
}

TEST_F(Staff, OutsideTheRangeTheTrebleClefGoesOn) {
    logpos = 1;
    gShowClef = 1;
    show_range(20.0f, 170.0f);
    frame();
    EXPECT_NEAR(grid_height(filled().at(14)), log_height(369.994), 1e-4);
    EXPECT_GT(log_height(369.994), 1.3);
    show_range(400.0f, 1000.0f);
    frame();
    EXPECT_NEAR(grid_height(filled().at(14)), log_height(369.994), 1e-4);
    EXPECT_LT(log_height(369.994), -0.05);
}

TEST_F(Staff, StandsARangeFromZero) {
    logpos = 1;
    gShowClef = 1;
    show_range(0.0f, 1000.0f);
    frame();
    EXPECT_EQ(filled().size(), 38u);
}

TEST_F(Staff, GlyphsHaveTheirPrimitivesAndFillTheirGrids) {
    for (const Glyph &glyph : glyphs) {
        forget_drawing();
        glyph.draw(7.0f, 0.25f);
        size_t vertices = 0;
        Range x = {99, -99}, y = {99, -99};
        for (const Primitive &primitive : filled()) {
            vertices += primitive.vertices.size();
            for (const Vertex &v : primitive.vertices) {
                x = {std::min(x.low, v.x), std::max(x.high, v.x)};
                y = {std::min(y.low, v.y), std::max(y.high, v.y)};
            }
        }
        EXPECT_EQ(primitives_of(GL_POLYGON).size(), glyph.polygons);
        EXPECT_EQ(primitives_of(GL_TRIANGLES).size(), glyph.triangle_groups);
        EXPECT_EQ(recorder().primitives.size(), glyph.polygons + glyph.triangle_groups);
        EXPECT_EQ(vertices, glyph.vertices);
        EXPECT_EQ(x.low, glyph.x.low);
        EXPECT_EQ(x.high, glyph.x.high);
        EXPECT_EQ(y.low, glyph.y.low);
        EXPECT_EQ(y.high, glyph.y.high);
    }
}

TEST_F(Staff, EachGroupOfTrianglesHoldsTwoOrThree) {
    bass_clef(0.0f, 0.0f);
    treble_clef(0.0f, 0.0f);
    for (const Primitive &primitive : primitives_of(GL_TRIANGLES)) {
        EXPECT_EQ(primitive.vertices.size() % 3, 0u);
        EXPECT_GE(primitive.vertices.size(), 6u);
        EXPECT_LE(primitive.vertices.size(), 9u);
    }
}

TEST_F(Staff, GlyphsStandInTheirGridsAndLeaveNothingBehind) {
    for (const Glyph &glyph : glyphs) {
        const Matrix before = top(GL_MODELVIEW);
        forget_drawing();
        glyph.draw(7.0f, 0.25f);
        const Matrix &grid = recorder().primitives.at(0).modelview;
        EXPECT_FLOAT_EQ(static_cast<float>(grid[0]), static_cast<float>(glyph.width));
        EXPECT_FLOAT_EQ(static_cast<float>(grid[5]), 0.008f);
        EXPECT_EQ(grid[10], 1.0);
        EXPECT_FLOAT_EQ(static_cast<float>(grid[12]), static_cast<float>(glyph.left));
        EXPECT_EQ(grid[13], 0.25);
        EXPECT_EQ(top(GL_MODELVIEW), before);
        EXPECT_EQ(calls_of("glEnable").size(), 1u);
        EXPECT_EQ(calls_of("glDisable").size(), 1u);
        EXPECT_LT(calls_of("glEnable")[0], calls_of("primitive").front());
        EXPECT_GT(calls_of("glDisable")[0], calls_of("primitive").back());
        EXPECT_EQ(recorder().enabled.count(GL_POLYGON_SMOOTH), 0u);
        EXPECT_EQ(recorder().calls[calls_of("glEnable")[0]].values[0], GL_POLYGON_SMOOTH);
    }
}

TEST_F(Staff, RowsOfTheBassClef) {
    bass_clef(0.0f, 0.0f);
    const auto &all = recorder().primitives;
    expect_row(all.at(0), GL_POLYGON,
               {{0, 0}, {1, 1}, {2, 1}, {3, 0}, {3, -1}, {2, -2}, {1, -2}, {0, -1}});
    expect_row(all.at(1), GL_TRIANGLES, {{0, 0}, {0, 1}, {-1, 1}, {-1, 1}, {0, -1}, {0, 0}});
    expect_row(all.at(12), GL_POLYGON,
               {{12, 2}, {12, 3}, {13, 4}, {14, 4}, {15, 3}, {15, 2}, {14, 1}, {13, 1}});
    expect_row(all.at(13), GL_POLYGON,
               {{12, -3}, {12, -2}, {13, -1}, {14, -1}, {15, -2}, {15, -3}, {14, -4}, {13, -4}});
}

TEST_F(Staff, RowsOfTheTrebleClef) {
    treble_clef(0.0f, 0.0f);
    const auto &all = recorder().primitives;
    expect_row(all.at(0), GL_TRIANGLES, {{0, 0}, {-1, 1}, {-1, 2}, {-1, 2}, {-1, 1}, {-1.6, 2}});
    expect_row(all.at(23), GL_POLYGON,
               {{2, -9}, {1, -10}, {0, -10}, {-1, -9}, {-1, -8}, {0, -7}, {1, -8}});
}
