// Dragging the one or two found points.

#include "display/view.h"
#include "interact/drag_step.h"
#include "interact/drags.h"
#include "interact/log_position.h"
#include "interact/selection.h"
#include "live/shared.h"
#include "store/recompute.h"
#include "store/store.h"

#include <utility>

namespace {

constexpr double distance = 0.004;       // seconds kept from a neighbour
constexpr float lowest_freq = 1.0f;      // Hz
constexpr float highest_freq = 22050.0f; // Hz

struct TimeBounds {
    float lo, hi; // seconds
};

TimeBounds between_neighbours(int32_t p, int32_t q) {
    const Breakpoint *points = parray[p];
    TimeBounds bounds = {sndstart, sndlen};
    if (q > 0) {
        bounds.lo = static_cast<float>(points[q - 1].time + distance);
    }
    if (q < npoints[p] - 1) {
        bounds.hi = static_cast<float>(points[q + 1].time - distance);
    }
    return bounds;
}

/// False where the point would leave the bounds; it then keeps its time.
bool move_time(Breakpoint &point, const TimeBounds &bounds, float dt) {
    if (X == 0) {
        return true;
    }
    const float t = point.time - dt;
    if (t > bounds.hi || t < bounds.lo) {
        return false;
    }
    poke(point.time, t);
    return true;
}

/// The range takes the frequency in before it is clamped, so it may hold a value beyond the
/// clamp until the event ends.
void move_freq(Breakpoint &point, float df) {
    if (Y == 0) {
        return;
    }
    poke(point.freq, point.freq - df);
    widen_range(point.freq);
    if (point.freq < lowest_freq) {
        poke(point.freq, lowest_freq);
    } else if (point.freq > highest_freq) {
        poke(point.freq, highest_freq);
    }
}

bool move_linear(int32_t p, int32_t q, const DragStep &step) {
    Breakpoint &point = parray[p][q];
    const TimeBounds bounds = between_neighbours(p, q);
    move_freq(point, step.df);
    if (!move_time(point, bounds, step.dt)) {
        return false;
    }
    point.logfreq = log_position(point.freq);
    return true;
}

/// A step that would not stay above 1 Hz is refused.
void move_position(Breakpoint &point, float df) {
    if (Y == 0) {
        return;
    }
    widen_range(point.freq);
    const float position = point.logfreq + -df / maxfreq;
    if (freq_at_log_position(position) > lowest_freq) {
        point.logfreq = position;
    }
}

/// In the log view a point may be dragged past its neighbours.
bool move_logarithmic(int32_t p, int32_t q, const DragStep &step) {
    Breakpoint &point = parray[p][q];
    move_position(point, step.df);
    if (!move_time(point, {sndstart, sndlen}, step.dt)) {
        return false;
    }
    poke(point.freq, static_cast<float>(freq_at_log_position(point.logfreq)));
    return true;
}

/// False where the event's moves end. A point that an edit has taken away is passed over.
bool move_point(int32_t p, int32_t q, const DragStep &step) {
    if (!point_exists(p, q)) {
        return true;
    }
    return logpos == 0 ? move_linear(p, q, step) : move_logarithmic(p, q, step);
}

/// Puts the earlier of two found points first.
void order_by_time(FoundPoints &pair) {
    if (point_exists(pair.part0, pair.point0) && point_exists(pair.part1, pair.point1) &&
        parray[pair.part0][pair.point0].time > parray[pair.part1][pair.point1].time) {
        std::swap(pair.part0, pair.part1);
        std::swap(pair.point0, pair.point1);
    }
}

void move_found_points(const DragStep &step) {
    FoundPoints &points = foundSubscriptions;
    if (points.count == 2) {
        order_by_time(points);
        if (!move_point(points.part1, points.point1, step)) {
            return;
        }
    }
    if (points.count > 0) {
        move_point(points.part0, points.point0, step);
    }
}

} // namespace

void breakpointsTranslate(int x, int y) {
    if (!drag_acts()) {
        return;
    }
    move_found_points(begin_drag_step(x, y));
    recompute_all_pitch();
    recompute_all_phase();
    if (logpos != 0) {
        recompute_times();
    }
    refresh_log_positions();
    end_drag_step(x, y);
}
