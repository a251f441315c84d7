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

/// How far an event moves the points.
struct Way {
    float up;   // Hz in the linear view, places in the log view
    float back; // seconds
};

// In either view one of two values moves, as far as it may, and the other is derived from it.

struct LinearView {
    static constexpr float Breakpoint::*moves = &Breakpoint::freq;
    static constexpr float Breakpoint::*follows = &Breakpoint::logfreq;
    static constexpr auto derive = log_positions;

    static bool allows(float freq) {
        return !(freq <= 0.0f || freq >= freq_limit);
    }
};

struct LogView {
    static constexpr float Breakpoint::*moves = &Breakpoint::logfreq;
    static constexpr float Breakpoint::*follows = &Breakpoint::freq;
    static constexpr auto derive = freqs_at_log_positions;

    static bool allows(float) {
        return true;
    }
};

/// Points that have been moved and still lack what follows by logarithm.
struct Moved {
    Breakpoint *points[block];
    float from[block]; // values that moved
    float to[block];   // values that follow
    int32_t count = 0;
};

/// Moves up to a block of points. False at the point that would go where the view does not allow.
template <class View> bool move_block(Breakpoint *points, int32_t n, const Way &way, Moved &moved) {
    const bool in_freq = Y != 0;
    const bool in_time = X != 0;
    for (int32_t j = 0; j < n; ++j) {
        Breakpoint &point = points[j];
        if (point.selected != 1) {
            continue;
        }
        if (in_freq) {
            const float value = point.*View::moves + way.up;
            if (!View::allows(value)) {
                return false;
            }
            point.*View::moves = value;
        }
        if (in_time) {
            point.time -= way.back;
        }
        moved.points[moved.count] = &point;
        moved.from[moved.count++] = point.*View::moves;
    }
    return true;
}

/// False where the moves of the whole event end.
template <class View> bool move_partial(int32_t i, const Way &way, const LogAxis &axis) {
    bool inside = true;
    for (int32_t from = 0; inside && from < npoints[i]; from += block) {
        Moved moved;
        inside = move_block<View>(parray[i] + from, std::min(block, npoints[i] - from), way, moved);
        View::derive(axis, moved.from, moved.to, moved.count);
        for (int32_t k = 0; k < moved.count; ++k) {
            moved.points[k]->*View::follows = moved.to[k];
        }
    }
    return inside;
}

void translate_linear(const DragStep &step) {
    const LogAxis axis = log_axis();
    const Way way = {-step.df, step.dt};
    ClosingSweep sweep;
    bool inside = true;
    for (int32_t i = 0; i < partials; ++i) {
        inside = inside && move_partial<LinearView>(i, way, axis);
        close_partial(sweep, i);
    }
    finish_closing(sweep, true);
}

/// The range takes all points in before the event, and then stands still.
void translate_logarithmic(const DragStep &step) {
    widen_range_to_all();
    const Way way = {-step.df / maxfreq, step.dt};
    std::printf("df = %f\n", way.up);
    const LogAxis axis = log_axis();
    ClosingSweep sweep;
    for (int32_t i = 0; i < partials; ++i) {
        move_partial<LogView>(i, way, axis);
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
