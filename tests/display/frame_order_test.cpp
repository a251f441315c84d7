// What show_partials draws between the axes and the cursors, and in which order.
#include "display/scene.h"

#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "tests/support/drawing.h"

#include <algorithm>

using namespace gl_double;

namespace {

class FrameOrder : public DrawingTest {
  protected:
    void SetUp() override {
        DrawingTest::SetUp();
        fill_store(small_content());
    }
    void TearDown() override {
        zgen.state = 0;
        fplayer.state = 0;
        std::fill_n(tfsquare, 4, 0.0f);
        std::fill_n(ztfsquare, 4, 0.0f);
        DrawingTest::TearDown();
    }
};

void show_breakpoints() {
    flat = 1;
    bps = 1;
}

void find_points(int32_t part0, int32_t point0) {
    found = 1;
    directSelect = 1;
    foundSubscriptions = {part0, point0, -1, -1, 1};
}

void find_points(int32_t part0, int32_t point0, int32_t part1, int32_t point1) {
    found = 1;
    directSelect = 1;
    foundSubscriptions = {part0, point0, part1, point1, 2};
}

/// Vertices of every GL_POINTS primitive in this colour, in order.
std::vector<Vertex> points_of_colour(double r, double g, double b) {
    std::vector<Vertex> points;
    for (const Primitive &primitive : primitives_of(GL_POINTS)) {
        for (const Vertex &v : primitive.vertices) {
            if (std::abs(v.r - r) + std::abs(v.g - g) + std::abs(v.b - b) < 1e-5) {
                points.push_back(v);
            }
        }
    }
    return points;
}

std::vector<Vertex> markers() {
    return points_of_colour(1.0, 0.9, 0.0);
}

std::vector<Vertex> dots() {
    std::vector<Vertex> all = points_of_colour(0.7, 0.0, 0.3);
    const std::vector<Vertex> green = points_of_colour(0.0, 0.75, 0.0);
    all.insert(all.end(), green.begin(), green.end());
    return all;
}

/// The lines that are contours: those drawn from arrays.
std::vector<DrawnLine> contours() {
    std::vector<DrawnLine> lines;
    for (const Primitive &primitive : primitives_of(GL_LINES)) {
        for (size_t i = 0; primitive.from_arrays && i + 1 < primitive.vertices.size(); i += 2) {
            lines.push_back({primitive.vertices[i], primitive.vertices[i + 1]});
        }
    }
    return lines;
}

double x_of(int i, int j) {
    return (parray[i][j].time - sndstart) / (sndlen - sndstart);
}

double y_of(int i, int j) {
    return parray[i][j].freq / maxfreq;
}

/// Place in the call list of the first primitive that meets a condition; fails when none does.
template <typename Condition> size_t place_of(Condition condition) {
    for (const size_t at : calls_of("primitive")) {
        const auto &primitive =
            recorder().primitives[static_cast<size_t>(recorder().calls[at].values[0])];
        if (!primitive.vertices.empty() && condition(primitive)) {
            return at;
        }
    }
    ADD_FAILURE() << "not drawn";
    return 0;
}

bool has_colour(const Primitive &primitive, double r, double g, double b) {
    const Vertex &v = primitive.vertices[0];
    return std::abs(v.r - r) + std::abs(v.g - g) + std::abs(v.b - b) < 1e-5;
}

} // namespace

TEST_F(FrameOrder, DurationShownIsEndMinusStart) {
    fill_store({{{2.0f, 100.0f, -10.0f}, {5.0f, 200.0f, -10.0f}}});
    frame();
    EXPECT_EQ(gr_sndlen, 3.0f);
}

TEST_F(FrameOrder, EverythingInItsOrder) {
    show_breakpoints();
    find_points(0, 1);
    selecting = 1;
    zgen.state = 2;
    liveSynth = 1;
    fplayer.state = 2;
    tfsquare[0] = 0.5f;
    ztfsquare[2] = ztfsquare[3] = -0.025f;
    frame();
    const size_t axis_labels = calls_of("label").at(0);
    const size_t axes = place_of(
        [](const Primitive &p) { return p.mode == GL_LINES && has_colour(p, 0.4, 0.32, 0.23); });
    const size_t marker = place_of(
        [](const Primitive &p) { return p.mode == GL_POINTS && has_colour(p, 1.0, 0.9, 0.0); });
    const size_t dot = place_of(
        [](const Primitive &p) { return p.mode == GL_POINTS && has_colour(p, 0.7, 0.0, 0.3); });
    const size_t contour =
        place_of([](const Primitive &p) { return p.mode == GL_LINES && p.from_arrays; });
    const size_t pointer = place_of(
        [](const Primitive &p) { return p.mode == GL_POINTS && has_colour(p, 0.4, 0.25, 0.45); });
    const size_t sweep = place_of(
        [](const Primitive &p) { return p.mode == GL_LINE_LOOP && p.vertices[0].y > -0.02; });
    const size_t zone = place_of(
        [](const Primitive &p) { return p.mode == GL_LINE_LOOP && p.vertices[0].y < -0.02; });
    const size_t live = place_of(
        [](const Primitive &p) { return p.mode == GL_LINES && has_colour(p, 0.1, 0.45, 0.3); });
    const size_t player = place_of(
        [](const Primitive &p) { return p.mode == GL_LINES && has_colour(p, 0.18, 0.4, 0.2); });
    const std::vector<size_t> order = {axis_labels, axes,  marker, dot,  contour,
                                       pointer,     sweep, zone,   live, player};
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    const std::vector<size_t> labels = calls_of("label");
    EXPECT_LT(labels[labels.size() - 2], axes);
    EXPECT_GT(labels.back(), player); // the time beside the pointer, of the text layer
}

TEST_F(FrameOrder, MatricesAreReadBeforeTheClearAndTheClearComesFirst) {
    show_breakpoints();
    frame();
    const size_t clear = calls_of("glClear").back();
    EXPECT_LT(calls_of("glGetDoublev").at(0), clear);
    EXPECT_LT(calls_of("glGetIntegerv").at(0), clear);
    EXPECT_LT(clear, calls_of("label").at(0));
}

TEST_F(FrameOrder, AxesAreDrawnOnlyWithTheirFlag) {
    coord = 0;
    thewidth = 1;
    frame();
    EXPECT_TRUE(recorder().labels.empty());
    EXPECT_TRUE(lines_of_colour(0.4, 0.32, 0.23).empty());
    EXPECT_FALSE(contours().empty());
    EXPECT_EQ(thewidth, 1);
    coord = 5;
    frame();
    EXPECT_FALSE(recorder().labels.empty());
    EXPECT_EQ(thewidth, 450);
}

// --- markers of found points -------------------------------------------------------------------

TEST_F(FrameOrder, OneFoundPointHasOneMarker) {
    show_breakpoints();
    find_points(1, 2);
    frame();
    ASSERT_EQ(markers().size(), 1u);
    expect_vertex(markers()[0], x_of(1, 2), y_of(1, 2), 0.0);
}

TEST_F(FrameOrder, OfTwoFoundPointsTheOlderIsDrawnFirst) {
    show_breakpoints();
    find_points(1, 2, 0, 1);
    frame();
    ASSERT_EQ(markers().size(), 2u);
    expect_vertex(markers()[0], x_of(0, 1), y_of(0, 1), 0.0);
    expect_vertex(markers()[1], x_of(1, 2), y_of(1, 2), 0.0);
}

TEST_F(FrameOrder, MarkersAreOnePixelLargerThanDots) {
    show_breakpoints();
    find_points(1, 2);
    ptsize = 3;
    frame();
    const auto points = primitives_of(GL_POINTS);
    ASSERT_GE(points.size(), 3u);
    EXPECT_EQ(points[0].point_size, 4.0f);
    EXPECT_EQ(points[1].point_size, 3.0f);
    EXPECT_EQ(points.back().point_size, 4.0f); // the pointer mark
}

TEST_F(FrameOrder, MarkersNeedBothFlagsAndACount) {
    show_breakpoints();
    find_points(1, 2);
    found = 0;
    frame();
    EXPECT_TRUE(markers().empty());
    find_points(1, 2);
    directSelect = 0;
    frame();
    EXPECT_TRUE(markers().empty());
    find_points(1, 2);
    foundSubscriptions.count = 0;
    frame();
    EXPECT_TRUE(markers().empty());
}

TEST_F(FrameOrder, MarkerInPerspectiveLiesAtThePlainLevel) {
    find_points(1, 1);
    frame();
    ASSERT_EQ(markers().size(), 1u);
    expect_vertex(markers()[0], x_of(1, 1), y_of(1, 1), -6.0);
}

TEST_F(FrameOrder, MarkerFollowsTheLogView) {
    show_breakpoints();
    logpos = 1;
    find_points(0, 3);
    frame();
    expect_vertex(markers().at(0), x_of(0, 3), parray[0][3].logfreq, 0.0);
}

TEST_F(FrameOrder, MarkersOfPointsThatAreGoneAreNotDrawn) {
    show_breakpoints();
    find_points(99, 0, 0, 99);
    frame();
    EXPECT_TRUE(markers().empty());
    find_points(-1, -1);
    frame();
    EXPECT_TRUE(markers().empty());
}

TEST_F(FrameOrder, SelectedPointThatIsFoundHasMarkerAndDot) {
    show_breakpoints();
    parray[1][2].selected = 1;
    find_points(1, 2);
    frame();
    const auto points = primitives_of(GL_POINTS);
    expect_vertex(points[0].vertices.at(0), x_of(1, 2), y_of(1, 2), 0.0);
    EXPECT_EQ(points[0].point_size, points[1].point_size + 1.0f);
    const auto green = points_of_colour(0.0, 0.75, 0.0);
    ASSERT_EQ(green.size(), 1u);
    expect_vertex(green[0], x_of(1, 2), y_of(1, 2), 0.0);
}

// --- dots --------------------------------------------------------------------------------------

TEST_F(FrameOrder, EveryPointIsADotInTheFlatBreakpointView) {
    show_breakpoints();
    frame();
    const auto all = dots();
    ASSERT_EQ(all.size(), 10u);
    size_t k = 0;
    for (int i = 0; i < partials; ++i) {
        for (int j = 0; j < npoints[i]; ++j, ++k) {
            expect_vertex(all[k], x_of(i, j), y_of(i, j), 0.0);
            expect_colour(all[k], 0.7, 0.0, 0.3);
        }
    }
}

TEST_F(FrameOrder, SelectedDotsAreGreen) {
    show_breakpoints();
    parray[0][2].selected = 1;
    parray[2][0].selected = 1;
    parray[3][0].selected = 2; // counts as selected only when equal to 1
    frame();
    const auto green = points_of_colour(0.0, 0.75, 0.0);
    ASSERT_EQ(green.size(), 2u);
    expect_vertex(green[0], x_of(0, 2), y_of(0, 2), 0.0);
    expect_vertex(green[1], x_of(2, 0), y_of(2, 0), 0.0);
    EXPECT_EQ(points_of_colour(0.7, 0.0, 0.3).size(), 8u);
}

TEST_F(FrameOrder, NoDotsInPerspectiveAndTheSelectionIsNotSeen) {
    bps = 1;
    const auto before = frame().primitives;
    EXPECT_TRUE(dots().empty());
    for (int j = 0; j < 4; ++j) {
        parray[0][j].selected = 1;
    }
    ++input_events;
    const auto after = frame().primitives;
    ASSERT_EQ(before.size(), after.size());
    for (size_t p = 0; p < before.size(); ++p) {
        ASSERT_EQ(before[p].vertices.size(), after[p].vertices.size());
        for (size_t k = 0; k < before[p].vertices.size(); ++k) {
            const Vertex &v = before[p].vertices[k];
            expect_colour(after[p].vertices[k], v.r, v.g, v.b, v.a);
        }
    }
}

TEST_F(FrameOrder, NoDotsWithoutTheBreakpointView) {
    flat = 1;
    frame();
    EXPECT_TRUE(dots().empty());
    EXPECT_FALSE(contours().empty());
}

TEST_F(FrameOrder, DotsVanishDuringAViewDragAndReappearAtRelease) {
    show_breakpoints();
    frame();
    EXPECT_EQ(dots().size(), 10u);
    dragging = 1;
    frame();
    EXPECT_TRUE(dots().empty());
    EXPECT_EQ(contours().size(), 6u);
    dragging = 0;
    frame();
    EXPECT_EQ(dots().size(), 10u);
}

TEST_F(FrameOrder, DotsHaveTheViewsPointSize) {
    show_breakpoints();
    ptsize = 2;
    frame();
    EXPECT_EQ(primitives_of(GL_POINTS).at(0).point_size, 2.0f);
}

// --- contours ----------------------------------------------------------------------------------

TEST_F(FrameOrder, ContoursJoinNeighboursWithinEachPartial) {
    flat = 1;
    frame();
    const auto lines = contours();
    ASSERT_EQ(lines.size(), 6u); // 3 + 2 + 1, none for the single point
    size_t k = 0;
    for (int i = 0; i < partials; ++i) {
        for (int j = 1; j < npoints[i]; ++j, ++k) {
            expect_vertex(lines[k].from, x_of(i, j - 1), y_of(i, j - 1), 0.0);
            expect_vertex(lines[k].to, x_of(i, j), y_of(i, j), 0.0);
        }
    }
}

TEST_F(FrameOrder, EachEndOfAContourHasItsOwnColour) {
    frame();
    const auto lines = contours();
    size_t k = 0;
    for (int i = 0; i < partials; ++i) {
        for (int j = 1; j < npoints[i]; ++j, ++k) {
            for (const auto &[end, at] :
                 {std::pair{lines[k].from, j - 1}, std::pair{lines[k].to, j}}) {
                const double a = (parray[i][at].amp - maxamp) / 300.0;
                EXPECT_NEAR(end.z, a, 1e-6);
                expect_colour(end, a > -0.07 ? (a + 0.07) * 6 : 0, (a + 0.45) * 1.3,
                              (a + 0.8) * 0.7);
            }
        }
    }
}

TEST_F(FrameOrder, PartialOfOnePointIsADotWithoutAContour) {
    fill_store({{{0.5f, 300.0f, -10.0f}}, {{0.0f, 100.0f, -10.0f}, {1.0f, 200.0f, -10.0f}}});
    show_breakpoints();
    frame();
    EXPECT_EQ(contours().size(), 1u);
    ASSERT_EQ(dots().size(), 3u);
    expect_vertex(dots()[0], 0.5, 1.0, 0.0);
}

TEST_F(FrameOrder, ContoursAreDrawnInEveryMode) {
    for (int mode = 0; mode < 16; ++mode) {
        flat = mode & 1;
        bps = (mode >> 1) & 1;
        logpos = (mode >> 2) & 1;
        dragging = static_cast<uint8_t>(mode >> 3);
        frame();
        EXPECT_EQ(contours().size(), 6u) << "mode " << mode;
    }
}

// --- pointer mark, rectangles ------------------------------------------------------------------

TEST_F(FrameOrder, PointerMarkStandsAtThePointer) {
    show_breakpoints();
    tuplet[0] = 0.25f;
    tuplet[1] = 0.75f;
    tuplet[2] = 0.125f;
    frame();
    const auto mark = points_of_colour(0.4, 0.25, 0.45);
    ASSERT_EQ(mark.size(), 1u);
    expect_vertex(mark[0], 0.25, 0.75, 0.125);
    EXPECT_EQ(primitives_of(GL_POINTS).back().point_size, 4.0f);
}

TEST_F(FrameOrder, PointerMarkNeedsBothViewsEqualToOne) {
    for (const auto &[is_flat, shows] : {std::pair{0, 1}, {1, 0}, {1, 2}, {0, 0}}) {
        flat = is_flat;
        bps = shows;
        frame();
        EXPECT_TRUE(points_of_colour(0.4, 0.25, 0.45).empty()) << is_flat << shows;
    }
}

TEST_F(FrameOrder, SweepRectangleGoesRoundItsCorners) {
    selecting = 1;
    const float corners[] = {0.1f, 0.4f, 0.2f, 0.8f};
    std::copy_n(corners, 4, tfsquare);
    frame();
    const auto loops = primitives_of(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 1u);
    const auto &v = loops[0].vertices;
    ASSERT_EQ(v.size(), 4u);
    expect_vertex(v[0], 0.1, 0.2, 0.0);
    expect_vertex(v[1], 0.4, 0.2, 0.0);
    expect_vertex(v[2], 0.4, 0.8, 0.0);
    expect_vertex(v[3], 0.1, 0.8, 0.0);
    expect_colour(v[0], 0.4, 0.25, 0.45);
}

TEST_F(FrameOrder, SweepRectangleStaysUntilTheSweepIsCleared) {
    selecting = 1;
    frame();
    frame();
    EXPECT_EQ(primitives_of(GL_LINE_LOOP).size(), 1u);
    selecting = 2;
    frame();
    EXPECT_TRUE(primitives_of(GL_LINE_LOOP).empty());
    selecting = 0;
    frame();
    EXPECT_TRUE(primitives_of(GL_LINE_LOOP).empty());
}

TEST_F(FrameOrder, ZoneMarkIsALineBelowTheTimeAxis) {
    zgen.state = 2;
    const float corners[] = {0.3f, 0.6f, -0.025f, -0.025f};
    std::copy_n(corners, 4, ztfsquare);
    frame();
    const auto loops = primitives_of(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 1u);
    const auto &v = loops[0].vertices;
    ASSERT_EQ(v.size(), 4u);
    expect_vertex(v[0], 0.3, -0.025, 0.0);
    expect_vertex(v[1], 0.6, -0.025, 0.0);
    expect_vertex(v[2], 0.6, -0.025, 0.0);
    expect_vertex(v[3], 0.3, -0.025, 0.0);
    expect_colour(v[0], 0.4, 0.25, 0.45);
}

TEST_F(FrameOrder, ZoneMarkShowsInTheSustainingStateOnly) {
    for (const int state : {0, 1, 3}) {
        zgen.state = state;
        frame();
        EXPECT_TRUE(primitives_of(GL_LINE_LOOP).empty()) << state;
    }
}
