// tests/e2e/recorded.h -- what can be told of a recording by its samples alone.
#pragma once

#include <vector>

using Samples = std::vector<float>;

constexpr double rate = 44100.0; // Hz, of recordings
constexpr double block = 512.0;  // frames of a fade

/// The stretch from the first sample that can be heard to the last.
Samples heard_part(const Samples &samples);

/// The largest difference between neighbours: a click stands out by it.
double largest_step(const Samples &samples);

/// How many seconds of it can be heard; pauses within do not count.
double heard_seconds(const Samples &samples);

/// The longest pause within the stretch that heard_part() gives, in seconds.
double longest_pause(const Samples &samples);
