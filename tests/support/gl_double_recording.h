// tests/support/gl_double_recording.h -- what the parts of the GL double share among themselves.
#pragma once

#include <string>
#include <vector>

namespace gl_double {

/// Notes a misuse of GL or GLUT.
void complain(const std::string &what);

/// Complains when `name` is called between glBegin and glEnd.
void not_inside_begin(const char *name);

/// Appends to the calls.
void log_call(const char *name, std::vector<double> values);

/// One character of bitmap text at the raster position.
void write_character(void *font, int character);

/// The parts of reset().
void reset_matrices();
void reset_windowing();

} // namespace gl_double
