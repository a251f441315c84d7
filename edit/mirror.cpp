#include "edit/mirror.h"

#include "edit/selected.h"
#include "store/store.h"

#include <cstdio>

namespace {

constexpr double above_lowest = 1.05;
constexpr double below_highest = 0.95;

/// The mirror frequency that the range allows. A request that is no number counts as too low.
float settled(float freq) {
    const float low = static_cast<float>(minfreq * above_lowest);
    const float high = static_cast<float>(maxfreq * below_highest);
    if (!(freq > minfreq)) {
        return low < maxfreq ? low : high;
    }
    return freq < maxfreq ? freq : high;
}

float settle_mirror(float freq) {
    const float mirror = settled(freq);
    if (mirror != freq) {
        std::printf("Closest acceptable mirror frequency = %f (Hz)\n", mirror);
    }
    return mirror;
}

} // namespace

void mirror3d(float freq) {
    const float mirror = settle_mirror(freq);
    const float up = maxfreq - mirror;
    const float down = mirror - minfreq;
    for_selected([mirror, up, down](Breakpoint &point) {
        const float f = point.freq;
        point.freq = f >= mirror ? (maxfreq - f) * (down / up) + minfreq
                                 : maxfreq - (f - minfreq) * (up / down);
    });
    std::printf("Mirroring frequencies @%f\n", mirror);
}

void mirror_pitch(float freq) {
    const float mirror = settle_mirror(freq);
    for_selected(
        [mirror](Breakpoint &point) { point.freq = (1.0f / (point.freq / mirror)) * mirror; });
    std::printf("Mirroring pitch intervals @%f\n", mirror);
}
