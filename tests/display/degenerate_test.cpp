// Stores that no analysis should hold: a frame of one is bounded work and never a crash.
#include "display/scene.h"
#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "store/slots.h"
#include "tests/support/drawing.h"

#include <cmath>
#include <limits>

using namespace gl_double;

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
const float no_number = std::nanf("");

class Degenerate : public DrawingTest {
  protected:
    void TearDown() override {
        fplayer = {};
        zgen = {};
        std::fill_n(tfsquare, 4, 0.0f);
        DrawingTest::TearDown();
    }
};

/// Draws the store in every view, with everything shown; returns the most vertices of a frame.
size_t draw_in_every_view() {
    size_t most = 0;
    fplayer.state = 2;
    fplayer.loop = 1;
    fplayer.seconds = 1.0f;
    zgen.state = 2;
    liveSynth = 1;
    tfsquare[0] = 0.5f;
    found = 1;
    directSelect = 1;
    foundSubscriptions = {0, 0, partials - 1, 0, 2};
    for (int view = 0; view < 8; ++view) {
        flat = view & 1;
        bps = (view >> 1) & 1;
        logpos = (view >> 2) & 1;
        frame();
        size_t vertices = recorder().labels.size();
        for (const Primitive &primitive : recorder().primitives) {
            vertices += primitive.vertices.size();
        }
        most = std::max(most, vertices);
        EXPECT_EQ(recorder().swaps, 1);
        for (const Label &label : recorder().labels) {
            EXPECT_TRUE(std::isfinite(label.x) && std::isfinite(label.y));
        }
    }
    return most;
}

constexpr size_t few = 2000;
constexpr size_t bounded = 4000000;

} // namespace

TEST_F(Degenerate, EmptyStore) {
    EXPECT_LT(draw_in_every_view(), bounded);
    EXPECT_TRUE(primitives_of(GL_POINTS).size() <= 1);
}

TEST_F(Degenerate, PartialsWithoutPoints) {
    fill_store(small_content());
    resize_partial(1, 0);
    resize_partial(3, 0);
    EXPECT_LT(draw_in_every_view(), few);
    flat = bps = 1;
    frame();
    size_t dots = 0;
    for (const Primitive &primitive : primitives_of(GL_POINTS)) {
        dots += primitive.from_arrays ? primitive.vertices.size() : 0;
    }
    EXPECT_EQ(dots, 6u);
}

TEST_F(Degenerate, DurationOfZero) {
    fill_store({{{1.0f, 100.0f, -10.0f}, {1.0f, 200.0f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), few);
}

TEST_F(Degenerate, OnePointAlone) {
    fill_store({{{1.0f, 440.0f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), few);
}

TEST_F(Degenerate, OneFrequencyAlone) {
    fill_store({{{0.0f, 440.0f, -10.0f}, {1.0f, 440.0f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), few);
}

TEST_F(Degenerate, FrequencyOfZero) {
    fill_store({{{0.0f, 0.0f, -10.0f}, {1.0f, 440.0f, -20.0f}}});
    EXPECT_LT(draw_in_every_view(), few);
    fill_store({{{0.0f, 0.0f, -10.0f}, {1.0f, 0.0f, -20.0f}}});
    EXPECT_LT(draw_in_every_view(), few);
}

TEST_F(Degenerate, NegativeFrequency) {
    fill_store({{{0.0f, -50.0f, -10.0f}, {1.0f, 440.0f, -20.0f}}});
    EXPECT_LT(draw_in_every_view(), few);
}

TEST_F(Degenerate, NotANumberAnywhere) {
    fill_store({{{no_number, 100.0f, -10.0f}, {1.0f, 200.0f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), bounded);
    fill_store({{{0.0f, no_number, -10.0f}, {1.0f, no_number, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), bounded);
    fill_store({{{0.0f, 100.0f, no_number}, {1.0f, 200.0f, no_number}}});
    EXPECT_LT(draw_in_every_view(), bounded);
}

TEST_F(Degenerate, RangesThatAreNotNumbers) {
    fill_store(small_content());
    sndlen = no_number;
    EXPECT_LT(draw_in_every_view(), bounded);
    fill_store(small_content());
    maxfreq = minfreq = logmaxfreq = no_number;
    EXPECT_LT(draw_in_every_view(), bounded);
    fill_store(small_content());
    maxamp = minamp = no_number;
    EXPECT_LT(draw_in_every_view(), bounded);
}

TEST_F(Degenerate, InfiniteValues) {
    fill_store({{{0.0f, 100.0f, -10.0f}, {infinite, 200.0f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), bounded);
    fill_store({{{0.0f, 100.0f, -10.0f}, {1.0f, infinite, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), bounded);
    fill_store({{{0.0f, 100.0f, -10.0f}, {1.0f, 200.0f, -infinite}}});
    EXPECT_LT(draw_in_every_view(), bounded);
    fill_store({{{-infinite, -infinite, -infinite}, {infinite, infinite, infinite}}});
    EXPECT_LT(draw_in_every_view(), bounded);
}

TEST_F(Degenerate, HugeTimes) {
    fill_store({{{0.0f, 100.0f, -10.0f}, {1e30f, 200.0f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), bounded);
}

TEST_F(Degenerate, HugeFrequencies) {
    fill_store({{{0.0f, 100.0f, -10.0f}, {1.0f, 1e30f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), bounded);
}

TEST_F(Degenerate, HugeLevels) {
    fill_store({{{0.0f, 100.0f, -1e30f}, {1.0f, 200.0f, 1e30f}}});
    EXPECT_LT(draw_in_every_view(), bounded);
}

TEST_F(Degenerate, TinyDuration) {
    fill_store({{{0.0f, 100.0f, -10.0f}, {1e-30f, 200.0f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), few);
}

TEST_F(Degenerate, EndBeforeStart) {
    fill_store({{{5.0f, 100.0f, -10.0f}, {2.0f, 200.0f, -10.0f}}});
    EXPECT_LT(draw_in_every_view(), few);
}

TEST_F(Degenerate, WindowOfOnePixelOrNone) {
    fill_store(small_content());
    reshape(1, 1);
    EXPECT_LT(draw_in_every_view(), few);
    reshape(0, 0);
    EXPECT_LT(draw_in_every_view(), bounded);
}
