// A texture of 300 partials: two ruled surfaces of long glissandi that cross each other, in a
// cloud of short grains.

#include "random.h"
#include "shape.h"

namespace {

constexpr int lines = 60;   // of each surface
constexpr int grains = 180; // short tones

struct Edge {
    double time0, freq0; // of the first line, seconds and Hz
    double time1, freq1; // of the last line
};

/// Lines from one edge to the other, the first to the first and the last to the last.
void add_surface(Sound &sound, const Edge &from, const Edge &to, double level, Random &random) {
    for (int i = 0; i < lines; ++i) {
        const double place = i / (lines - 1.0);
        const double start = from.time0 + (from.time1 - from.time0) * place;
        const double end = to.time0 + (to.time1 - to.time0) * place;
        const double low = from.freq0 + (from.freq1 - from.freq0) * place;
        const double high = to.freq0 + (to.freq1 - to.freq0) * place;
        const double duration = std::round((end - start) / hop) * hop;
        const double own = level + random.between(-5.0, 0.0);
        sound.push_back(trace(
            std::round(start / hop) * hop, duration,
            [=](double t) { return low + (high - low) * t / duration; },
            [=](double t) {
                const double swell = std::sin(pi * t / duration);
                return own - 14.0 * (1.0 - swell) + decibels(window(t, duration, 0.15, 0.3));
            }));
    }
}

/// Grains that begin thin and low, gather over the crossing and thin out upward.
Partial grain(int number, Random &random) {
    const double place = (number + random.unit()) / grains;
    const double start = std::round((0.2 + 6.8 * place) / hop) * hop;
    const double centre = 300.0 + 3300.0 * place;
    const double freq = centre * std::exp2(random.between(-0.8, 0.8));
    const double duration = random.between(0.05, 0.22);
    const double bend = random.between(-0.03, 0.03);
    const double level = -12.0 - 26.0 * random.unit() - 10.0 * std::abs(2.0 * place - 1.0);
    return trace(
        start, duration, [=](double t) { return freq * (1.0 + bend * t / duration); },
        [=](double t) { return level + decibels(window(t, duration, 0.03, 0.05)); });
}

} // namespace

Sound glissando() {
    Sound sound;
    Random random(37);
    add_surface(sound, {0.0, 180.0, 2.4, 1300.0}, {4.2, 4200.0, 7.2, 700.0}, -16.0, random);
    add_surface(sound, {0.3, 4000.0, 1.8, 2200.0}, {5.0, 300.0, 7.4, 3000.0}, -22.0, random);
    for (int number = 0; number < grains; ++number) {
        sound.push_back(grain(number, random));
    }
    return sound;
}
