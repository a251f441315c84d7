// Dragging everything selected. Runs move as they are; order in time is kept only because
// their points move together.

#include "display/view.h"
#include "interact/drag_step.h"
#include "interact/drags.h"
#include "interact/log_position.h"
#include "live/shared.h"
#include "store/recompute.h"
#include "store/store.h"

#include <cstdio>

namespace {

constexpr float freq_limit = 22050.0f; // Hz, not reached

/// False at the point that would leave the range of frequencies.
bool move_linear(Breakpoint *points, int32_t n, const DragStep &step) {
    for (int32_t j = 0; j < n; ++j) {
        if (points[j].selected != 1) {
            continue;
        }
        if (Y != 0) {
            const float freq = points[j].freq - step.df;
            if (freq <= 0.0f || freq >= freq_limit) {
                return false;
            }
            poke(points[j].freq, freq);
        }
        if (X != 0) {
            poke(points[j].time, points[j].time - step.dt);
        }
        points[j].logfreq = log_position(points[j].freq);
    }
    return true;
}

void translate_linear(const DragStep &step) {
    for (int32_t i = 0; i < partials && move_linear(parray[i], npoints[i], step); ++i) {
    }
    recompute_all_phase();
    recompute_times();
    recompute_all_pitch();
}

void move_logarithmic(Breakpoint *points, int32_t n, float d, float dt) {
    for (int32_t j = 0; j < n; ++j) {
        if (points[j].selected != 1) {
            continue;
        }
        if (Y != 0) {
            points[j].logfreq += d;
        }
        if (X != 0) {
            poke(points[j].time, points[j].time - dt);
        }
        poke(points[j].freq, static_cast<float>(freq_at_log_position(points[j].logfreq)));
    }
}

void translate_logarithmic(const DragStep &step) {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            widen_range(parray[i][j].freq);
        }
    }
    const float d = -step.df / maxfreq;
    std::printf("df = %f\n", d);
    for (int32_t i = 0; i < partials; ++i) {
        move_logarithmic(parray[i], npoints[i], d, step.dt);
    }
    recompute_all_phase();
    recompute_times();
    refresh_log_positions();
}

} // namespace

void partialsTranslate(int x, int y) {
    if (!drag_acts()) {
        return;
    }
    const DragStep step = begin_drag_step(x, y);
    if (logpos == 0) {
        translate_linear(step);
    } else {
        translate_logarithmic(step);
    }
    averages(partials, npoints, parray, peval);
    end_drag_step(x, y);
}
