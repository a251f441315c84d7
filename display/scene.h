// display/scene.h -- the window's scene: fixed GL state, camera, projection and the order of a
// frame. The scene is a unit box: time along X, frequency along Y, amplitude below 0 along Z.
// Window thread only; the callbacks are GLUT's.
#pragma once

#include "display/view.h"

/// Fixed GL state and the camera's defaults; once, after the window exists.
void initialize();

/// Sets camera and pan origin to their defaults; touches no GL state.
void gCameraReset();

/// GLUT reshape callback; sizes in pixels.
void reshape(int width, int height);

/// GLUT display callback: one whole frame.
void maindisplay();

/// The frame from the clear up to the reference points, for callers that have set up the
/// matrices themselves.
void draw_scene(const CameraRecord &camera);

/// Reads the matrices back and projects the two reference points of all picking into `zero`
/// and `one`. The viewport becomes (0, 0, its width, its height).
void refresh_reference_points();

/// Sets ptsize from the window's size in pixels and the zoom.
void apply_point_size_law(int width, int height);

/// Arms the repaint timer, unless it is armed already.
void arm_repaint_timer();

/// GLUT timer callback: repaints ten times a second while MIDI is on.
void timerCB(int value);

/// Posts a redisplay when `value` is not zero.
void update(int value);
