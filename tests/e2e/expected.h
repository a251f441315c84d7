// tests/e2e/expected.h -- what a run prints, put together from the machine and the files that
// the tests write.
#pragma once

#include <string>
#include <vector>

/// Five partials over 2 s. Between 0.5 and 1 s three of them hold one level: 2000 Hz at 0 dB,
/// 1200 Hz at -30 dB and 600 Hz at -150 dB. 2500 Hz and 250 Hz, of two points each, set the range.
std::string tones_file();

/// What importing that file prints, from the reader up to the mean interval.
std::string tones_report();

/// "argc = ..." and the arguments.
std::string arguments_text(const std::vector<std::string> &arguments);

/// The banner on this machine.
std::string banner();

/// The processor's name as the banner shows it.
std::string brand();

int processor_count();

/// The working folder and the lines of the window's set-up.
std::string folder_and_graphics(const std::string &folder);

std::string usage_text();
