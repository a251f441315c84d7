// The cursors of the three players.
#include "display/scene.h"

#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "tests/support/drawing.h"

#include <algorithm>

using namespace gl_double;

namespace {

/// A store from 1 s to 5 s.
class Cursors : public DrawingTest {
  protected:
    void SetUp() override {
        DrawingTest::SetUp();
        fill_store({{{1.0f, 100.0f, -10.0f}, {5.0f, 5000.0f, -40.0f}}});
    }
    void TearDown() override {
        zgen = {};
        fplayer = {};
        std::fill_n(tfsquare, 4, 0.0f);
        DrawingTest::TearDown();
    }
};

std::vector<DrawnLine> live_lines() {
    return lines_of_colour(0.1, 0.45, 0.3);
}
std::vector<DrawnLine> buffer_lines() {
    return lines_of_colour(0.18, 0.4, 0.2);
}
std::vector<DrawnLine> zone_lines() {
    return lines_of_colour(0.33, 0.4, 0.2);
}

void expect_line(const std::vector<DrawnLine> &lines, double x, double top_y) {
    ASSERT_EQ(lines.size(), 1u);
    expect_vertex(lines[0].from, x, 0.0, 0.0);
    expect_vertex(lines[0].to, x, top_y, 0.0);
}

void expect_curtain(double x, const Colour &near_edge, const Colour &far_edge) {
    const auto quads = primitives_of(GL_QUADS);
    ASSERT_EQ(quads.size(), 1u);
    EXPECT_EQ(quads[0].polygon_mode, static_cast<GLenum>(GL_FILL));
    const auto &v = quads[0].vertices;
    ASSERT_EQ(v.size(), 4u);
    expect_vertex(v[0], x, 0.0, 0.0);
    expect_vertex(v[1], x, 1.005, 0.0);
    expect_vertex(v[2], x, 1.005, -0.3);
    expect_vertex(v[3], x, 0.0, -0.3);
    for (size_t k = 0; k < 2; ++k) {
        expect_colour(v[k], near_edge.r, near_edge.g, near_edge.b, near_edge.a);
        expect_colour(v[k + 2], far_edge.r, far_edge.g, far_edge.b, far_edge.a);
    }
    EXPECT_EQ(recorder().polygon_mode, static_cast<GLenum>(GL_LINE));
}

void start_live(float at) {
    liveSynth = 1;
    tfsquare[0] = at;
}

void start_buffer(float seconds) {
    fplayer.state = 2;
    fplayer.seconds = seconds;
}

void start_zone(float seconds) {
    zgen.state = 2;
    zgen.time = seconds;
}

} // namespace

TEST_F(Cursors, NoneWhileNothingPlays) {
    frame();
    EXPECT_TRUE(live_lines().empty());
    EXPECT_TRUE(buffer_lines().empty());
    EXPECT_TRUE(zone_lines().empty());
    EXPECT_TRUE(primitives_of(GL_QUADS).empty());
}

TEST_F(Cursors, LiveCursorStandsAtThePointersTime) {
    start_live(0.375f);
    frame();
    expect_line(live_lines(), 0.375, 1.0);
    EXPECT_EQ(live_lines()[0].from.a, 1.0);
    EXPECT_TRUE(primitives_of(GL_QUADS).empty());
}

TEST_F(Cursors, LiveCursorNeedsTheFlagEqualToOne) {
    start_live(0.375f);
    liveSynth = 2;
    frame();
    EXPECT_TRUE(live_lines().empty());
}

TEST_F(Cursors, LiveCursorShowsStrictlyWithinTheBox) {
    for (const float at : {0.0f, 1.0f, -0.1f, 1.1f}) {
        start_live(at);
        frame();
        EXPECT_TRUE(live_lines().empty()) << at;
    }
    for (const float at : {0.0001f, 0.9999f}) {
        start_live(at);
        frame();
        EXPECT_EQ(live_lines().size(), 1u) << at;
    }
}

TEST_F(Cursors, LiveCurtainNeedsMidiAndPerspective) {
    start_live(0.25f);
    midi = 1;
    frame();
    expect_curtain(0.25, {0.06, 0.25, 0.3, 0.75}, {0.1, 0.45, 0.3, 0.0});
    flat = 1;
    frame();
    EXPECT_TRUE(primitives_of(GL_QUADS).empty());
    EXPECT_EQ(live_lines().size(), 1u);
}

TEST_F(Cursors, BufferCursorStandsAtTheTimePlayed) {
    start_buffer(2.0f);
    frame();
    expect_line(buffer_lines(), 0.25, 1.005);
    expect_curtain(0.25, {0.135, 0.3, 0.15, 0.75}, {0.18, 0.4, 0.2, 0.0});
}

TEST_F(Cursors, BufferCursorShowsInEveryStateButStopped) {
    for (const int state : {1, 2, 3, 7}) {
        start_buffer(2.0f);
        fplayer.state = state;
        frame();
        EXPECT_EQ(buffer_lines().size(), 1u) << state;
    }
}

TEST_F(Cursors, BufferCursorHasNoCurtainInTheFlatView) {
    start_buffer(2.0f);
    flat = 1;
    frame();
    EXPECT_EQ(buffer_lines().size(), 1u);
    EXPECT_TRUE(primitives_of(GL_QUADS).empty());
}

TEST_F(Cursors, BufferCursorMayStandOutsideTheBox) {
    start_buffer(0.0f);
    frame();
    expect_line(buffer_lines(), -0.25, 1.005);
}

TEST_F(Cursors, LoopingBufferCarriesItsLabel) {
    start_buffer(2.0f);
    flat = 1;
    frame();
    EXPECT_EQ(label_of("L"), nullptr);
    fplayer.loop = 1;
    frame();
    const Label *label = label_of("L");
    ASSERT_NE(label, nullptr);
    EXPECT_NEAR(label->x, 0.25 - 0.015, 1e-6);
    EXPECT_NEAR(label->y, -0.06, 1e-6);
    EXPECT_EQ(label->z, 0.0);
    EXPECT_EQ(label->font, GLUT_BITMAP_HELVETICA_10);
    EXPECT_NEAR(label->g, 0.4, 1e-6);
}

TEST_F(Cursors, LoopLabelKeepsItsDistanceUnderZoom) {
    start_buffer(2.0f);
    fplayer.loop = 1;
    zoom = 3.0f;
    gCamera.viewWidth = 900;
    frame();
    const Label *label = label_of("L");
    ASSERT_NE(label, nullptr);
    EXPECT_NEAR(label->x, 0.25 - 0.015 / 6.0, 1e-6);
    EXPECT_NEAR(label->y, -0.06 / 3.0, 1e-6);
}

TEST_F(Cursors, LoopLabelShowsInPerspectiveToo) {
    start_buffer(2.0f);
    fplayer.loop = 1;
    frame();
    const Label *label = label_of("L");
    ASSERT_NE(label, nullptr);
    EXPECT_NEAR(label->r, 0.18, 1e-6);
    EXPECT_EQ(label->a, 1.0); // not the curtain's last colour, which blends to nothing
}

TEST_F(Cursors, LoopLabelNeedsARunningPlayer) {
    fplayer.loop = 1;
    frame();
    EXPECT_EQ(label_of("L"), nullptr);
}

TEST_F(Cursors, LoopLabelDoesNotNeedTheAxes) {
    coord = 0;
    start_buffer(2.0f);
    fplayer.loop = 1;
    frame();
    EXPECT_EQ(label_texts(), std::vector<std::string>{"L"});
}

TEST_F(Cursors, ZoneCursorStandsAtTheGeneratorsTime) {
    start_zone(4.0f);
    frame();
    expect_line(zone_lines(), 0.75, 1.005);
    expect_curtain(0.75, {0.225, 0.3, 0.15, 0.75}, {0.33, 0.4, 0.2, 0.0});
}

TEST_F(Cursors, ZoneCursorHasNoCurtainInTheFlatView) {
    start_zone(4.0f);
    flat = 1;
    frame();
    EXPECT_EQ(zone_lines().size(), 1u);
    EXPECT_TRUE(primitives_of(GL_QUADS).empty());
}

TEST_F(Cursors, ZoneCursorShowsWhileSustainingAndNotDuringASweep) {
    for (const int state : {0, 1, 3}) {
        start_zone(4.0f);
        zgen.state = state;
        frame();
        EXPECT_TRUE(zone_lines().empty()) << state;
    }
    start_zone(4.0f);
    selecting = 1;
    frame();
    EXPECT_TRUE(zone_lines().empty());
}

TEST_F(Cursors, AllThreeComeInTheOrderLiveBufferZone) {
    start_live(0.5f);
    start_buffer(2.0f);
    start_zone(4.0f);
    midi = 1;
    frame();
    const auto quads = primitives_of(GL_QUADS);
    ASSERT_EQ(quads.size(), 3u);
    EXPECT_NEAR(quads[0].vertices[0].x, 0.5, 1e-6);
    EXPECT_NEAR(quads[1].vertices[0].x, 0.25, 1e-6);
    EXPECT_NEAR(quads[2].vertices[0].x, 0.75, 1e-6);
}
