// The harmonic series of one low tone, its first ten members entering one after another and
// ending together.

#include "shape.h"

namespace {

constexpr int members = 10;
constexpr double lowest = 110.0; // Hz
constexpr double apart = 0.2;    // seconds between two entries
constexpr double duration = 3.0; // seconds

} // namespace

Sound tones() {
    Sound sound;
    for (int k = 1; k <= members; ++k) {
        const double start = (k - 1) * apart;
        const double length = duration - start;
        sound.push_back(trace(
            start, length, [=](double) { return lowest * k; },
            [=](double t) {
                return -8.0 - 1.5 * k - 4.0 * t + decibels(window(t, length, 0.06, 0.5));
            }));
    }
    return sound;
}
