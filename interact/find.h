// interact/find.h -- finds breakpoints for the mouse: all in a rectangle, or the one nearest
// to a click. Coordinates are normalised scene ones, in the order of tfsquare. One pass over
// the store each, no logarithm. Window thread only.
#pragma once

#include "display/view.h"

/// Selects every point in the rectangle, edges included, and marks its partial. Always sets
/// sweepSelect; selected only when something was hit.
void findBreakpoints(const float *tfsquare, const CameraRecord &camera);

/// Deselects the selected points in the rectangle, and unmarks partials that keep none.
void deselectBreakpoints(const float *tfsquare, const CameraRecord &camera);

/// For a click without horizontal motion: pushes the nearest point into the queue of found
/// ones. Nearness in time is bounded by 45 % of the mean interval and by 2 % of the end time, in
/// frequency by the height of the axis.
void findSingleBreakpoint(const float *tfsquare, const CameraRecord &camera);
