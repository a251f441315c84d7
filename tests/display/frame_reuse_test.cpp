// Frames of a view drag share their arrays, and no frame ever shows a store that was.
#include "display/frame_arrays.h"

#include "display/view.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "tests/support/drawing.h"

#include <functional>

using namespace gl_double;

namespace {

class FrameReuse : public DrawingTest {
  protected:
    void SetUp() override {
        DrawingTest::SetUp();
        fill_store(small_content());
        frame_arrays(false); // a frame outside a drag: what another test left is forgotten
    }
};

/// First vertex of the arrays of a frame now.
float first_y() {
    return frame_arrays(false).vertices.at(0).y;
}

/// Whether a frame in a drag builds anew after `change`.
bool rebuilds_after(const std::function<void()> &change) {
    frame_arrays(false);
    dragging = 1;
    frame_arrays(false);
    const float shown = first_y();
    parray[0][0].freq *= 2.0f; // without an event: only a rebuild can see it
    parray[0][0].logfreq += 0.25f;
    change();
    const bool rebuilt = first_y() != shown;
    dragging = 0;
    return rebuilt;
}

} // namespace

TEST_F(FrameReuse, FramesOfADragShareTheirArrays) {
    EXPECT_FALSE(rebuilds_after([] {}));
}

TEST_F(FrameReuse, FramesOutsideADragAreAlwaysBuilt) {
    const float shown = first_y();
    parray[0][0].freq *= 2.0f;
    EXPECT_EQ(first_y(), 2.0f * shown);
}

TEST_F(FrameReuse, FirstFrameOfADragIsBuilt) {
    const float shown = first_y();
    parray[0][0].freq *= 2.0f;
    dragging = 1;
    EXPECT_EQ(first_y(), 2.0f * shown);
}

TEST_F(FrameReuse, FrameAfterADragIsBuilt) {
    dragging = 1;
    const float shown = first_y();
    parray[0][0].freq *= 2.0f;
    EXPECT_EQ(first_y(), shown);
    dragging = 0;
    EXPECT_EQ(first_y(), 2.0f * shown);
}

TEST_F(FrameReuse, ArraysOfADragDoNotOutliveIt) {
    dragging = 1;
    const float shown = first_y();
    dragging = 0;
    first_y();
    parray[0][0].freq *= 2.0f;
    dragging = 1;
    EXPECT_EQ(first_y(), 2.0f * shown);
}

TEST_F(FrameReuse, InputEventEndsTheReuse) {
    EXPECT_TRUE(rebuilds_after([] { ++input_events; }));
}

TEST_F(FrameReuse, ReuseGoesOnAfterTheRebuild) {
    dragging = 1;
    first_y();
    ++input_events;
    const float shown = first_y();
    parray[0][0].freq *= 2.0f;
    EXPECT_EQ(first_y(), shown);
}

TEST_F(FrameReuse, ChangeOfViewEndsTheReuse) {
    EXPECT_TRUE(rebuilds_after([] { logpos = 1; }));
    EXPECT_TRUE(rebuilds_after([] { flat = 1; }));
}

TEST_F(FrameReuse, ChangeOfRangesEndsTheReuse) {
    EXPECT_TRUE(rebuilds_after([] { sndstart -= 0.5f; }));
    EXPECT_TRUE(rebuilds_after([] { sndlen += 0.5f; }));
    EXPECT_TRUE(rebuilds_after([] { maxfreq = 6000.0f; }));
    EXPECT_TRUE(rebuilds_after([] { minfreq = 10.0f; }));
    EXPECT_TRUE(rebuilds_after([] { maxamp = 0.0f; }));
}

TEST_F(FrameReuse, ChangeOfTheStoreEndsTheReuse) {
    EXPECT_TRUE(rebuilds_after([] { grow_slots(100000); }));
    EXPECT_TRUE(rebuilds_after([] {
        free_points(parray[partials - 1]);
        --partials;
    }));
}

TEST_F(FrameReuse, DotsAreNeverReused) {
    dragging = 1;
    frame_arrays(true);
    parray[0][0].selected = 1;
    EXPECT_EQ(frame_arrays(true).dots.at(0).green, 0.75f);
    parray[0][0].selected = 0;
    EXPECT_EQ(frame_arrays(true).dots.at(0).green, 0.0f);
}

TEST_F(FrameReuse, WholeFramesOfADragDrawTheSameLines) {
    dragging = 1;
    frame();
    const auto first = drawn_lines();
    rot[0] = 10.0f; // only the camera moves
    frame();
    const auto second = drawn_lines();
    ASSERT_EQ(first.size(), second.size());
    for (size_t k = 0; k < first.size(); ++k) {
        expect_vertex(second[k].from, first[k].from.x, first[k].from.y, first[k].from.z, 0.0);
    }
    const auto primitives = recorder().primitives;
    EXPECT_NE(primitives.back().modelview[5], 1.0);
}

TEST_F(FrameReuse, ArraysFitTheStore) {
    FrameArrays arrays;
    build_frame_arrays(arrays, true);
    EXPECT_EQ(arrays.vertices.size(), 10u);
    EXPECT_EQ(arrays.dots.size(), 10u);
    EXPECT_EQ(arrays.segments, (std::vector<uint32_t>{0, 1, 1, 2, 2, 3, 4, 5, 5, 6, 7, 8}));
    fill_store({{{0.0f, 100.0f, -10.0f}}});
    build_frame_arrays(arrays, false);
    EXPECT_EQ(arrays.vertices.size(), 1u);
    EXPECT_TRUE(arrays.dots.empty());
    EXPECT_TRUE(arrays.segments.empty());
}

TEST_F(FrameReuse, ArraysHoldTheVertexLaw) {
    logpos = 1;
    FrameArrays arrays;
    build_frame_arrays(arrays, false);
    size_t k = 0;
    for (int i = 0; i < partials; ++i) {
        for (int j = 0; j < npoints[i]; ++j, ++k) {
            const ContourVertex law = contour_vertex(parray[i][j]);
            EXPECT_EQ(arrays.vertices[k].x, law.x);
            EXPECT_EQ(arrays.vertices[k].y, law.y);
            EXPECT_EQ(arrays.vertices[k].z, law.z);
            EXPECT_EQ(arrays.vertices[k].red, law.red);
            EXPECT_EQ(arrays.vertices[k].green, law.green);
            EXPECT_EQ(arrays.vertices[k].blue, law.blue);
        }
    }
}
