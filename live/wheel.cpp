#include "live/wheel.h"

#include "live/shared.h"
#include "store/settings.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

/// Partials A to B - 1.
struct Band {
    int32_t a, b;
};

Band band_of(float wheel, int32_t count) {
    if (wheel >= 0.5f) {
        const double from = (wheel - 0.5 + wheel - 0.5) * count;
        return {static_cast<int32_t>(std::clamp(from, 0.0, static_cast<double>(count))), count};
    }
    const float to = (wheel + wheel) * static_cast<float>(count);
    // What is not a number chooses nothing.
    return {0, to > 0.0f ? std::min(static_cast<int32_t>(to), count) : 0};
}

} // namespace

void select_by_wheel(const PublishedStore &store, float wheel) {
    const Band band = band_of(wheel, store.count);
    if (dbp) {
        std::printf("A = %d\nB = %d\n\n", band.a, band.b);
    }
    for (int32_t i = 0; i < store.count; ++i) {
        const uint16_t chosen = i >= band.a && i < band.b ? 1 : 0;
        for (int32_t j = 0; j < store.partials[i].count; ++j) {
            poke(store.partials[i].points[j].selected, chosen);
        }
    }
}
