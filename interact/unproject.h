// interact/unproject.h -- from pixels to normalised (time, frequency), through the matrices of
// the last frame. Exact in the flat, unrotated view, which is why editing asks for it. The one
// mapping for sweeps, scrubs and zones. Window thread only.
#pragma once

#include "live/live.h"

#include <cstdint>

/// A place in the scene as seen from the scene's origin: 0 to 1 over the time range and up to
/// maxfreq, not clamped.
struct SceneOffset {
    float t;
    float f;
};

/// The scene place of a window position in GL's coordinates (pixels, y upwards).
SceneOffset scene_offset(double window_x, double window_y);

/// The viewport's height in pixels, by which mouse coordinates are turned over.
int32_t viewport_height();

/// Maps `square` to `tfsquare` and the pointer position `tuplet`. Only while bps is 1.
void transformInput();

/// Motion callback of a sweep: follows the pointer in `tuplet`. Only while bps is 1.
void testInput(int x, int y);

/// Puts two pixel columns in ascending order. The first may be square[0].
void order_columns(int32_t &first, int32_t &second);

/// Turns two pixel columns, put in ascending order in place, into the play zone of `gen`, in
/// seconds, and reports it.
void x2time(int32_t *first, int32_t *second, LiveGenerator *gen);
