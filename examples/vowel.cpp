// A sung vowel that turns from "a" to "o" while the voice slides up a fourth: harmonics of one
// moving fundamental under an envelope of five formants.

#include "random.h"
#include "shape.h"

namespace {

constexpr int harmonics = 40;
constexpr double duration = 3.6;       // seconds
constexpr double slide_begins = 1.5;   // seconds
constexpr double slide = 0.35;         // seconds
constexpr double vibrato_rate = 5.5;   // Hz
constexpr double vibrato_depth = 40.0; // cents to either side, when full
constexpr double breath = 0.3;         // seconds until the voice is clear
constexpr double tilt = -4.0;          // dB an octave above the fundamental

constexpr int envelope_points = 128;
constexpr double envelope_lowest = 50.0; // Hz
constexpr double envelope_grid = 100.0;  // Hz between two points
constexpr double envelope_hop = 0.1;     // seconds between two frames

struct Formant {
    double freq;  // Hz
    double level; // dB
    double width; // Hz
};

const Formant sung_a[] = {{800.0, 0.0, 130.0},
                          {1200.0, -4.0, 150.0},
                          {2850.0, -10.0, 220.0},
                          {3600.0, -14.0, 260.0},
                          {4950.0, -28.0, 300.0}};
const Formant sung_o[] = {{430.0, 0.0, 110.0},
                          {780.0, -8.0, 130.0},
                          {2700.0, -16.0, 220.0},
                          {3500.0, -20.0, 260.0},
                          {4800.0, -34.0, 300.0}};

double mix(double a, double b, double share) {
    return a + (b - a) * share;
}

/// How far the mouth has moved from "a" (0) to "o" (1); it closes a little after the slide.
double mouth(double t) {
    return fade(t - slide_begins - 0.1, 0.6);
}

/// The vibrato sets in after the attack and grows to the end.
double vibrato(double t) {
    const double depth = vibrato_depth * fade(t - 0.3, duration - 0.6);
    return std::exp2(depth / 1200.0 * std::sin(2.0 * pi * vibrato_rate * t));
}

double fundamental(double t) {
    const double scoop = 1.0 - 0.04 * std::exp(-t / 0.08); // the voice comes in from below
    const double pitch = between_pitches(note(57), note(62), fade(t - slide_begins, slide));
    return pitch * scoop * vibrato(t);
}

double formant_level(double freq, double t) {
    double sum = 0.0;
    for (size_t k = 0; k < std::size(sung_a); ++k) {
        const double share = mouth(t);
        const double centre = mix(sung_a[k].freq, sung_o[k].freq, share);
        const double width = mix(sung_a[k].width, sung_o[k].width, share);
        const double level = mix(sung_a[k].level, sung_o[k].level, share);
        const double off = (freq - centre) / width;
        sum += std::pow(10.0, level / 20.0) / std::pow(1.0 + off * off, 0.7);
    }
    return decibels(sum);
}

/// The harmonics enter from the lowest up, unsteady in pitch and level while there is breath.
Partial harmonic(int number, Random &random) {
    const double start = std::round(0.4 * number) * hop;
    const double length = duration - start - 0.003 * number;
    const auto unsteady = [&random](double t) {
        return random.between(-1.0, 1.0) * std::exp(-t / (breath / 3.0));
    };
    const auto freq = [&](double t) {
        return number * fundamental(start + t) * (1.0 + 0.012 * unsteady(t));
    };
    const auto level = [&](double t) {
        const double clear = number * fundamental(start + t);
        const double source = tilt * std::log2(static_cast<double>(number));
        return -3.0 + source + formant_level(clear, start + t) + 7.0 * unsteady(t) +
               decibels(window(t, length, 0.12 + 0.004 * number, 0.25));
    };
    return trace(start, length, freq, level);
}

} // namespace

Sound vowel() {
    Sound sound;
    Random random(23);
    for (int number = 1; number <= harmonics; ++number) {
        sound.push_back(harmonic(number, random));
    }
    return sound;
}

Envelope vowel_envelope() {
    Envelope envelope;
    const int frames = static_cast<int>(std::lround(duration / envelope_hop)) + 1;
    for (int i = 0; i < frames; ++i) {
        EnvelopeFrame frame = {i * envelope_hop, {}};
        for (int j = 0; j < envelope_points; ++j) {
            const double freq = envelope_lowest + j * envelope_grid;
            frame.points.push_back({std::pow(10.0, formant_level(freq, frame.time) / 20.0), freq});
        }
        envelope.push_back(frame);
    }
    return envelope;
}
