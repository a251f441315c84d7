// examples/shape.h -- what the sounds have in common: levels, fades and laws traced in points.
#pragma once

#include "material.h"

#include <algorithm>
#include <cmath>

constexpr double pi = 3.141592653589793;
constexpr double silent = -80.0; // dB, where a partial begins and ends

/// A linear amplitude in dB, no lower than silence.
inline double decibels(double amplitude) {
    return 20.0 * std::log10(std::max(amplitude, 1e-4));
}

/// Amplitude of a raised cosine from 0 to 1 over `length` seconds.
inline double fade(double seconds, double length) {
    const double place = std::clamp(seconds / length, 0.0, 1.0);
    return 0.5 - 0.5 * std::cos(pi * place);
}

/// Amplitude of a fade-in and a fade-out around a sound of `duration` seconds.
inline double window(double seconds, double duration, double attack, double release) {
    return fade(seconds, attack) * fade(duration - seconds, release);
}

/// Where `place` (0 to 1) lies between two pitches, in Hz, in equal musical steps.
inline double between_pitches(double from, double to, double place) {
    return from * std::pow(to / from, place);
}

/// Frequency of a note by its number, 69 being 440 Hz.
inline double note(double number) {
    return 440.0 * std::exp2((number - 69.0) / 12.0);
}

/// Follows freq(t) in Hz and level(t) in dB from `start` on, t counting from 0 to `duration`
/// seconds; levels are held above silence.
template <class Freq, class Level>
Partial trace(double start, double duration, Freq freq, Level level) {
    Partial partial;
    const int steps = static_cast<int>(std::lround(duration / hop));
    for (int j = 0; j <= steps; ++j) {
        const double t = j * hop;
        partial.push_back({start + t, freq(t), std::max(level(t), silent)});
    }
    return partial;
}
