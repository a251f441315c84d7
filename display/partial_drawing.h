// display/partial_drawing.h -- one frame of the analysis in the unit box: axes, markers, dots,
// contours, pointer mark, sweep rectangle, staff, cursors, in an order that matters, since depth
// testing is on and of fragments at one depth the first one drawn stays. Window thread only.
#pragma once

#include "display/view.h"

/// Draws the frame; the matrices are the caller's. `pointer` is the pointer position in scene
/// units, of `camera` only the view size in pixels is used.
void show_partials(const float *pointer, const CameraRecord &camera);
