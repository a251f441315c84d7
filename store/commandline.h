// store/commandline.h -- the first steps of a run: start values, the command line or the
// prompt for a file name, the banner. Main thread, once.
#pragma once

/// Sets every process-wide setting to its start value and echoes the arguments.
void begin_run(int argc, char **argv);

/// Applies the command line, or asks for a file name where there is none. Ends the process
/// with status 0 after the usage or credits text.
void read_command_line(int argc, char **argv);

/// Sets the view and debug switches whose letters stand anywhere in `text`.
void apply_options(const char *text);

/// Finds out about the machine and prints the banner.
void show_banner();
