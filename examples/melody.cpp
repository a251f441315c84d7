// A plucked phrase over two bass notes. Its points are thinned as a careful analyst would do it,
// dense at the onsets and sparse where a tone merely decays, so that each can be picked by hand.

#include "random.h"
#include "shape.h"

namespace {

constexpr int harmonics = 6;         // of each note
constexpr double sparse = 0.04;      // seconds between points of a decay
constexpr double stiffness = 0.0006; // stretches the harmonics of a string

struct Note {
    double number; // 69 is 440 Hz
    double start;  // seconds
    double length; // seconds
    double level;  // dB
};

const Note phrase[] = {
    {45, 0.00, 2.60, -14.0}, {69, 0.00, 0.75, -9.0},  {72, 0.35, 0.70, -10.0},
    {76, 0.70, 0.95, -7.0},  {74, 1.25, 0.60, -11.0}, {71, 1.60, 0.85, -9.0},
    {40, 2.20, 2.80, -13.0}, {67, 2.20, 0.80, -10.0}, {71, 2.60, 1.00, -8.0},
    {76, 3.10, 1.90, -6.0},
};

bool is_kept(int step, double t) {
    const int every = static_cast<int>(std::lround(sparse / hop));
    return t < 2.5 * hop || step % every == 0;
}

/// Leaves the first points as they are and of the others only the sparse ones and the last.
Partial thinned(const Partial &dense) {
    Partial kept;
    for (size_t j = 0; j < dense.size(); ++j) {
        const double t = dense[j].time - dense.front().time;
        if (is_kept(static_cast<int>(j), t) || j + 1 == dense.size()) {
            kept.push_back(dense[j]);
        }
    }
    return kept;
}

/// A harmonic of a plucked string: the higher, the weaker and the sooner gone. Long notes get a
/// vibrato once they have settled.
Partial harmonic(const Note &note_played, int k, Random &random) {
    const double tuning = 1.0 + random.between(-0.0015, 0.0015);
    const double freq = note(note_played.number) * k * std::sqrt(1.0 + stiffness * k * k) * tuning;
    const double length = std::round(note_played.length / (1.0 + 0.14 * (k - 1)) / hop) * hop;
    const double level = note_played.level - 4.5 * (k - 1) + random.between(-2.0, 2.0);
    const double fall = 45.0 / length;
    const bool melodic = note_played.number > 60 && note_played.length > 0.9;
    const Partial dense = trace(
        note_played.start + (k - 1) * 0.004, length,
        [=](double t) {
            const double pluck = 1.0 + 0.012 * std::exp(-t / 0.03);
            const double depth = melodic ? 0.009 * fade(t - 0.15, 0.6) : 0.0;
            return freq * pluck * (1.0 + depth * std::sin(2.0 * pi * 4.5 * t));
        },
        [=](double t) { return level - fall * t + decibels(window(t, length, 0.03, 0.12)); });
    return thinned(dense);
}

} // namespace

Sound melody() {
    Sound sound;
    Random random(5);
    for (const Note &played : phrase) {
        for (int k = 1; k <= harmonics; ++k) {
            sound.push_back(harmonic(played, k, random));
        }
    }
    return sound;
}
