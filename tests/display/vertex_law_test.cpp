// Where a breakpoint stands in the unit box, and in which colour its contour is drawn.
#include "display/frame_arrays.h"

#include "display/view.h"
#include "store/recompute.h"
#include "tests/support/fixture.h"

#include <cmath>

namespace {

using VertexLaw = StoreTest;

/// A store from 2 s to 6 s, 100 Hz to 1600 Hz, -12 dB at the loudest.
void fill_range() {
    fill_store({{{2.0f, 100.0f, -12.0f}, {3.0f, 400.0f, -102.0f}, {6.0f, 1600.0f, -162.0f}}});
}

void expect_contour(float level, double red, double green, double blue) {
    fill_store({{{0.0f, 100.0f, -10.0f}, {1.0f, 200.0f, -10.0f + level}}});
    const ContourVertex vertex = contour_vertex(parray[0][1]);
    EXPECT_NEAR(vertex.red, red, 2e-6);
    EXPECT_NEAR(vertex.green, green, 1e-6);
    EXPECT_NEAR(vertex.blue, blue, 1e-6);
}

} // namespace

TEST_F(VertexLaw, TimeFillsZeroToOne) {
    fill_range();
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][0]).x, 0.0f);
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][1]).x, 0.25f);
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][2]).x, 1.0f);
}

TEST_F(VertexLaw, LinearFrequencyStartsAtZeroHertz) {
    fill_range();
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][0]).y, 100.0f / 1600.0f);
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][1]).y, 0.25f);
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][2]).y, 1.0f);
}

TEST_F(VertexLaw, LogFrequencyIsTheStoredPlace) {
    fill_range();
    logpos = 1;
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][0]).y, 0.0f);
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][1]).y, 0.5f);
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][2]).y, 1.0f);
    parray[0][1].logfreq = 0.875f;
    EXPECT_EQ(contour_vertex(parray[0][1]).y, 0.875f);
    logpos = 2;
    EXPECT_EQ(contour_vertex(parray[0][1]).y, 0.875f);
}

TEST_F(VertexLaw, DepthIsTheLevelInPerspective) {
    fill_range();
    EXPECT_EQ(contour_vertex(parray[0][0]).z, 0.0f);
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][1]).z, -0.3f); // 90 dB below the loudest
    EXPECT_FLOAT_EQ(contour_vertex(parray[0][2]).z, -0.5f);
}

TEST_F(VertexLaw, DepthIsZeroInTheFlatView) {
    fill_range();
    flat = 1;
    for (int j = 0; j < 3; ++j) {
        EXPECT_EQ(contour_vertex(parray[0][j]).z, 0.0f);
    }
}

TEST_F(VertexLaw, ColourFollowsTheLevelInBothViews) {
    fill_range();
    const ContourVertex deep = contour_vertex(parray[0][1]);
    flat = 1;
    const ContourVertex level = contour_vertex(parray[0][1]);
    EXPECT_EQ(deep.red, level.red);
    EXPECT_EQ(deep.green, level.green);
    EXPECT_EQ(deep.blue, level.blue);
    EXPECT_NEAR(level.green, (-0.3 + 0.45) * 1.3, 1e-6);
}

TEST_F(VertexLaw, PeakIsAPaleGreyGreen) {
    expect_contour(0.0f, 0.42, 0.585, 0.56);
    EXPECT_EQ(contour_colour(0.0f).red, static_cast<float>((0.0 + 0.07) * 6));
    EXPECT_EQ(contour_colour(0.0f).green, static_cast<float>((0.0 + 0.45) * 1.3));
    EXPECT_EQ(contour_colour(0.0f).blue, static_cast<float>((0.0 + 0.8) * 0.7));
}

TEST_F(VertexLaw, SumsOfTheColourRunInDoublePrecision) {
    const float a = -0.0123f;
    EXPECT_EQ(contour_colour(a).red, static_cast<float>((static_cast<double>(a) + 0.07) * 6));
    EXPECT_EQ(contour_colour(a).green, static_cast<float>((static_cast<double>(a) + 0.45) * 1.3));
    EXPECT_EQ(contour_colour(a).blue, static_cast<float>((static_cast<double>(a) + 0.8) * 0.7));
}

TEST_F(VertexLaw, RedFadesOut21DecibelsBelowThePeak) {
    expect_contour(-18.0f, 0.06, 0.507, 0.518);
    expect_contour(-20.0f, 0.02, 0.49833333, 0.51333333);
    expect_contour(-21.0f, 0.0, 0.494, 0.511);
    expect_contour(-24.0f, 0.0, 0.481, 0.504);
}

TEST_F(VertexLaw, GreenFadesOutAt135Decibels) {
    expect_contour(-132.0f, 0.0, 0.013, 0.252);
    expect_contour(-135.0f, 0.0, 0.0, 0.245);
    expect_contour(-138.0f, 0.0, 0.0, 0.238);
}

TEST_F(VertexLaw, BlueFadesOutAt240DecibelsAndRunsOnBelowZero) {
    expect_contour(-237.0f, 0.0, 0.0, 0.007);
    expect_contour(-240.0f, 0.0, 0.0, 0.0);
    expect_contour(-300.0f, 0.0, 0.0, -0.14);
}

TEST_F(VertexLaw, LastContourColourIsKept) {
    fill_range();
    FrameArrays arrays;
    build_frame_arrays(arrays, false);
    EXPECT_EQ(r1, 0.0f);
    EXPECT_EQ(g1, 0.0f);
    EXPECT_NEAR(b1, (-0.5 + 0.8) * 0.7, 1e-6);
}

TEST_F(VertexLaw, APartialOfOnePointLeavesTheLastContourColour) {
    fill_store({{{0.0f, 100.0f, -10.0f}, {1.0f, 200.0f, -40.0f}}, {{0.5f, 300.0f, -10.0f}}});
    FrameArrays arrays;
    build_frame_arrays(arrays, true);
    EXPECT_EQ(r1, 0.0f);
    EXPECT_NEAR(b1, (-0.1 + 0.8) * 0.7, 1e-6);
}
