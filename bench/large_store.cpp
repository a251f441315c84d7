#include "bench/large_store.h"

#include "store/recompute.h"
#include "store/slots.h"
#include "store/store.h"

#include <random>

void build_store(float start, bool selected) {
    constexpr float hop = 0.01f; // seconds from point to point
    std::mt19937 random(1);
    std::uniform_real_distribution<float> freq(50.0f, 5000.0f);
    partials = partial_count;
    allocate_counts(partials);
    for (int32_t i = 0; i < partials; ++i) {
        npoints[i] = point_count;
    }
    allocate_points();
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < point_count; ++j) {
            Breakpoint &point = parray[i][j];
            point.time = start + static_cast<float>(j) * hop;
            point.freq = freq(random);
            point.amp = -20.0f;
            point.ampunits = 1;
            point.selected = selected ? 1 : 0;
        }
    }
    regrow_peval();
    recompute_everything();
    averages(partials, npoints, parray, peval);
}
