// display/frame_arrays.h -- the breakpoints of the store as vertex arrays: one vertex a point,
// shared by dots and contours, and one index pair a contour segment. Built anew for each
// frame, but for frames of a view drag, in which only the camera moves. Window thread only.
#pragma once

#include "store/store.h"

#include <vector>

/// A point in the unit box with its contour colour, as GL takes it.
struct ContourVertex {
    float x, y, z;
    float red, green, blue;
};

struct DotColour {
    float red, green, blue;
};

/// The arrays of the last build. Contours are drawn by `segments`, dots in point order.
struct FrameArrays {
    std::vector<ContourVertex> vertices;
    std::vector<DotColour> dots; // empty where the frame shows none
    std::vector<uint32_t> segments;
};

/// Colour of a contour at the level `below` = (amp - maxamp) / 300.
DotColour contour_colour(float below);

/// The vertex law for one point: x over the time range, y linear or logarithmic, z by level in
/// perspective and 0 in the flat view.
ContourVertex contour_vertex(const Breakpoint &point);

/// Fills the arrays from the store, whatever they held.
void build_frame_arrays(FrameArrays &arrays, bool with_dots);

/// The arrays for this frame. During a view drag those of the drag's earlier frame serve as
/// long as no input event and no change of range or view came between.
const FrameArrays &frame_arrays(bool with_dots);
