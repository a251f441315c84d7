// display/text.h -- text in the window, in the one bitmap font. Window thread only.
#pragma once

/// Writes `text` at the scene position (x, y, z) in the current colour. A position that is not
/// finite or outside the view shows nothing.
void draw_label(double x, double y, double z, const char *text);
