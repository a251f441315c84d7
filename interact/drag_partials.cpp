// Dragging everything selected. Runs move as they are; order in time is kept only because
// their points move together.

#include "display/view.h"
#include "interact/drag_step.h"
#include "interact/drags.h"
#include "interact/log_kernels.h"
#include "interact/log_position.h"
#include "interact/log_refresh.h"
#include "store/published.h"
#include "store/recompute.h"
#include "store/store.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr float freq_limit = 22050.0f; // Hz, not reached
constexpr int32_t block = 256;         // points whose logarithms are taken together

/// Points that have been moved and still lack what follows by logarithm.
struct Moved {
    Breakpoint *points[block];
    float from[block]; // frequencies in the linear view, places in the log view
    float to[block];   // the other
    int32_t count = 0;
};

/// Moves up to a block of points. False at the point that would leave the range of frequencies.
bool move_linear(Breakpoint *points, int32_t n, const DragStep &step, Moved &moved) {
    const bool in_freq = Y != 0;
    const bool in_time = X != 0;
    for (int32_t j = 0; j < n; ++j) {
        Breakpoint &point = points[j];
        if (point.selected != 1) {
            continue;
        }
        if (in_freq) {
            const float freq = point.freq - step.df;
            if (freq <= 0.0f || freq >= freq_limit) {
                return false;
            }
            point.freq = freq;
        }
        if (in_time) {
            point.time -= step.dt;
        }
        moved.points[moved.count] = &point;
        moved.from[moved.count++] = point.freq;
    }
    return true;
}

/// False where the moves of the whole event end.
bool move_partial_linear(int32_t i, const DragStep &step, const LogAxis &axis) {
    bool inside = true;
    for (int32_t from = 0; inside && from < npoints[i]; from += block) {
        Moved moved;
        inside = move_linear(parray[i] + from, std::min(block, npoints[i] - from), step, moved);
        log_positions(axis, moved.from, moved.to, moved.count);
        for (int32_t k = 0; k < moved.count; ++k) {
            moved.points[k]->logfreq = moved.to[k];
        }
    }
    return inside;
}

void translate_linear(const DragStep &step) {
    const LogAxis axis = log_axis();
    ClosingSweep sweep;
    bool inside = true;
    for (int32_t i = 0; i < partials; ++i) {
        inside = inside && move_partial_linear(i, step, axis);
        close_partial(sweep, i);
    }
    finish_closing(sweep, true);
}

/// Moves up to a block of points in place and time.
void move_logarithmic(Breakpoint *points, int32_t n, float d, float dt, Moved &moved) {
    const bool in_freq = Y != 0;
    const bool in_time = X != 0;
    for (int32_t j = 0; j < n; ++j) {
        Breakpoint &point = points[j];
        if (point.selected != 1) {
            continue;
        }
        if (in_freq) {
            point.logfreq += d;
        }
        if (in_time) {
            point.time -= dt;
        }
        moved.points[moved.count] = &point;
        moved.from[moved.count++] = point.logfreq;
    }
}

void move_partial_logarithmic(int32_t i, float d, float dt, const LogAxis &axis) {
    for (int32_t from = 0; from < npoints[i]; from += block) {
        Moved moved;
        move_logarithmic(parray[i] + from, std::min(block, npoints[i] - from), d, dt, moved);
        freqs_at_log_positions(axis, moved.from, moved.to, moved.count);
        for (int32_t k = 0; k < moved.count; ++k) {
            moved.points[k]->freq = moved.to[k];
        }
    }
}

/// The range takes all points in before the event, and then stands still.
void translate_logarithmic(const DragStep &step) {
    widen_range_to_all();
    const float d = -step.df / maxfreq;
    std::printf("df = %f\n", d);
    const LogAxis axis = log_axis();
    ClosingSweep sweep;
    for (int32_t i = 0; i < partials; ++i) {
        move_partial_logarithmic(i, d, step.dt, axis);
        close_partial(sweep, i);
        refresh_log_positions(axis, i);
    }
    finish_closing(sweep, false);
}

} // namespace

void partialsTranslate(int x, int y) {
    if (!edit_mode()) {
        return;
    }
    const StoreEdit edit;
    const DragStep step = begin_drag_step(x, y);
    if (logpos == 0) {
        translate_linear(step);
    } else {
        translate_logarithmic(step);
    }
    end_drag_step(x, y);
}
