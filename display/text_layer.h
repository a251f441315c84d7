// display/text_layer.h -- the flat text over the scene: information at the bottom, help at the
// top, the last gesture, the gain, the time at the pointer, the frame that tells MIDI is on.
// Reads state, changes none. Window thread only.
#pragma once

/// Draws the layer over a window of this size in pixels. Called at the end of every frame, and
/// by amplitude keys to mark what was done before the next one.
void drawGLText(int width, int height);
