// display/text.h -- text in the window, in the one bitmap font. Window thread only.
#pragma once

/// Writes `text` at the scene position (x, y, z) in the current colour. A position that is not
/// finite or outside the view shows nothing.
void draw_label(double x, double y, double z, const char *text);

/// Writes `s` from the position (x, y) on.
void drawGLString(float x, float y, const char *s);

/// Write at the current raster position: a text, a number as "%2d" or "%3.1f", these two held
/// to 4 characters.
void printString(const char *s);
void printInt(int v);
void printFloat(float v);
