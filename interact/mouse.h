// interact/mouse.h -- GLUT's mouse callback: records the pixels of press and release, chooses
// the motion callback of a drag, ends sweeps. Window thread only.
#pragma once

/// A release without a press before it, as menus send them, and wheel buttons do nothing.
void mouse(int button, int state, int x, int y);

/// Forgets which buttons are down.
void reset_mouse();
