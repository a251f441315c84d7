#include "interact/amplitude_step.h"

#include "live/shared.h"
#include "store/store.h"

#include <cstdio>

namespace {

constexpr const char *no_step = "Amp: set the step value";

void step_point(int32_t part, int32_t point, float by) {
    if (point_exists(part, point) && parray[part][point].selected != 1) {
        poke(parray[part][point].amp, parray[part][point].amp + by);
    }
}

void step_found(float by, const FoundPoints &queue) {
    if (queue.count == 2) {
        step_point(queue.part1, queue.point1, by);
    }
    if (queue.count > 0 && point_exists(queue.part0, queue.point0)) {
        step_point(queue.part0, queue.point0, by);
        std::printf("parray[%d][%d].amp = %f\n", queue.part0, queue.point0,
                    parray[queue.part0][queue.point0].amp);
    }
    if (by == 0.0f) {
        std::puts(no_step);
    }
}

void step_all(float by) {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            if (parray[i][j].selected == 1) {
                poke(parray[i][j].amp, parray[i][j].amp + by);
            }
        }
    }
    if (by == 0.0f) {
        std::puts(no_step);
    }
}

/// Moves every level below the floor by this part of its distance.
void move_below(float floor, double part) {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            float &amp = parray[i][j].amp;
            if (amp < floor) {
                amp = static_cast<float>(amp + (floor - amp) * part);
            }
        }
    }
}

} // namespace

void amplify(float step, FoundPoints queue) {
    if (found != 0 && directSelect != 0) {
        step_found(step, queue);
    }
}

void attenuate(float step, FoundPoints queue) {
    if (found == 0) {
        std::puts("NOT FOUND");
    } else if (directSelect == 0) {
        std::puts("NOT DIRECT");
    } else {
        step_found(-step, queue);
    }
}

void amplifyAll(float step) {
    step_all(step);
}

void attenuateAll(float step) {
    step_all(-step);
}

void raise_floor(float floor) {
    move_below(floor, 0.5);
}

void lower_floor(float floor) {
    move_below(floor, -0.5);
}
