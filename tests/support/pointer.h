// tests/support/pointer.h -- mouse events as GLUT delivers them, and where pixels lie in the flat
// view, worked out from the geometry of the camera alone.
#pragma once

#include "tests/support/drawing.h"

#include <cstdint>
#include <string>
#include <vector>

/// Starts each test with no button down, nothing in `square`, `tfsquare` and `ztfsquare`.
class PointerTest : public DrawingTest {
  protected:
    void SetUp() override;
    void TearDown() override;
};

/// One mouse event each; `modifiers` as glutGetModifiers gives them.
void mouse_down(int button, int x, int y, int modifiers = 0);
void mouse_up(int button, int x, int y, int modifiers = 0);

/// Motion with a button down: goes to the registered callback, if there is one.
void mouse_move(int x, int y);

/// The motion callback that is registered now.
using MotionCallback = void (*)(int, int);
MotionCallback motion();

/// Shows the store flat with breakpoints, and draws a frame so that picking has its references.
void open_edit_view();

/// Scene place of a pixel (y counted downwards) in the flat view, and the other way round. By
/// similar triangles: eye 15 units before the scene, its axis through viewPos.
double scene_t(double x);
double scene_f(double y);
int pixel_x(double t);
int pixel_y(double f);

/// The selected flags, a text for each partial: "1" for selected.
std::vector<std::string> flags();

/// Sets the flags from such texts.
void set_flags(const std::vector<std::string> &texts);

/// The found points: partial and point of the newest, the same of the one before, their count.
using Slots = std::vector<int32_t>;
Slots slots();

/// Five points in octaves from 64 to 1024 Hz over one second, two at 256 Hz, one at 768 Hz. All
/// its normalised coordinates are exact.
std::vector<Partial> ladder_content();
