#include "interact/find.h"

#include "interact/selection.h"
#include "live/shared.h"
#include "store/store.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

namespace {

/// A search rectangle in the units of the points: seconds, and Hz or logfreq.
struct SearchBox {
    float t_low, t_high;
    float f_low, f_high;
    float Breakpoint::*position; // what counts as a point's frequency

    explicit SearchBox(const float *corners)
        : t_low(sndstart + (sndlen - sndstart) * corners[0]),
          t_high(sndstart + (sndlen - sndstart) * corners[1]), f_low(maxfreq * corners[2]),
          f_high(maxfreq * corners[3]),
          position(logpos != 0 ? &Breakpoint::logfreq : &Breakpoint::freq) {
        if (t_low > t_high) {
            std::swap(t_low, t_high);
        }
        if (f_low > f_high) {
            std::swap(f_low, f_high);
        }
        if (logpos != 0) {
            f_low /= maxfreq;
            f_high /= maxfreq;
        }
    }

    bool holds(const Breakpoint &point) const {
        const float f = point.*position;
        return (point.time >= t_low) & (point.time <= t_high) & (f >= f_low) & (f <= f_high);
    }
};

/// A stretch of a partial, short enough to stay in the first cache between two looks at it.
constexpr int32_t stretch = 256;

/// The points inside the box, of the first n (at most `stretch`) from `points` on: how many, and
/// their places in `hits`. Without a branch on the outcome, which in dense data would be guessed
/// wrong half of the time and cost more than the search.
int32_t find_hits(const SearchBox &wanted, const Breakpoint *points, int32_t n, int32_t *hits) {
    const SearchBox box = wanted;
    int32_t count = 0;
    for (int32_t j = 0; j < n; ++j) {
        hits[count] = j;
        count += box.holds(points[j]) ? 1 : 0;
    }
    return count;
}

/// Selects what of one partial lies in the box; true when anything does.
bool select_hits(const SearchBox &box, Breakpoint *points, int32_t n) {
    int32_t hits[stretch];
    bool any = false;
    for (int32_t from = 0; from < n; from += stretch) {
        const int32_t count = find_hits(box, points + from, std::min(stretch, n - from), hits);
        for (int32_t k = 0; k < count; ++k) {
            points[from + hits[k]].selected = 1;
        }
        any = any || count > 0;
    }
    return any;
}

/// Deselects what of one partial lies in the box; true when a selected point remains.
bool deselect_hits(const SearchBox &box, Breakpoint *points, int32_t n) {
    int32_t hits[stretch];
    bool remains = false;
    for (int32_t from = 0; from < n; from += stretch) {
        const int32_t length = std::min(stretch, n - from);
        const int32_t count = find_hits(box, points + from, length, hits);
        for (int32_t k = 0; k < count; ++k) {
            uint16_t &flag = points[from + hits[k]].selected;
            flag = flag == 1 ? 0 : flag;
        }
        for (int32_t j = 0; !remains && j < length; ++j) {
            remains = points[from + j].selected == 1;
        }
    }
    return remains;
}

/// The place in a partial of the point nearest to t in time, -1 when none is near enough.
int32_t nearest_in_time(const Breakpoint *points, int32_t n, float t) {
    double bound = sndlen * 0.02;
    int32_t nearest = -1;
    for (int32_t j = 0; j < n; ++j) {
        const float distance = std::fabs(t - points[j].time);
        if (distance < bound) {
            bound = distance;
            nearest = j;
        }
    }
    if (nearest >= 0 && std::fabs(points[nearest].time - t) > meant * 0.45) {
        return -1;
    }
    return nearest;
}

/// The partial whose candidate is nearest to f (Hz) in frequency; -1 when there is none.
int32_t nearest_in_frequency(const std::vector<int32_t> &candidates, float f) {
    float bound = logpos != 0 ? 1.0f : maxfreq;
    int32_t nearest = -1;
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t j = candidates[static_cast<size_t>(i)];
        if (j < 0) {
            continue;
        }
        const Breakpoint &point = parray[i][j];
        const float distance =
            logpos != 0 ? std::fabs(f / maxfreq - point.logfreq) : std::fabs(f - point.freq);
        if (distance < bound) {
            bound = distance;
            nearest = i;
        }
    }
    return nearest;
}

/// Puts a point at the head of the queue. The same point twice in a row does not make a pair.
void push_found(int32_t part, int32_t point) {
    FoundPoints &queue = foundSubscriptions;
    const bool same = queue.part0 == part && queue.point0 == point;
    queue.count = same || queue.count < 1 ? 1 : 2;
    queue.part1 = queue.part0;
    queue.point1 = queue.point0;
    directSelect = 1;
    found = 1;
    queue.part0 = part;
    queue.point0 = point;
    numfound = queue.count;
    std::printf("##FOUND: %d  %d\n", part, point);
    if (queue.count == 2) {
        std::printf("##FOUN2: %d  %d\n", queue.part1, queue.point1);
    }
}

} // namespace

void findBreakpoints(const float *corners, const CameraRecord &) {
    const SearchBox box(corners);
    bool hit = false;
    for (int32_t i = 0; i < partials; ++i) {
        if (select_hits(box, parray[i], npoints[i])) {
            peval[i].selected = 1;
            hit = true;
        }
    }
    sweepSelect = 1;
    if (hit) {
        selected = 1;
    }
}

void deselectBreakpoints(const float *corners, const CameraRecord &) {
    const SearchBox box(corners);
    bool marked = false;
    for (int32_t i = 0; i < partials; ++i) {
        if (!deselect_hits(box, parray[i], npoints[i])) {
            peval[i].selected = 0;
        }
        marked = marked || peval[i].selected == 1;
    }
    if (marked) {
        declare_selected();
    }
}

void findSingleBreakpoint(const float *corners, const CameraRecord &) {
    if (square[1] != peek(square[0])) {
        return;
    }
    const float t = sndstart + (sndlen - sndstart) * corners[1];
    const float f = maxfreq * corners[3];
    std::vector<int32_t> candidates(static_cast<size_t>(partials), -1);
    for (int32_t i = 0; i < partials; ++i) {
        candidates[static_cast<size_t>(i)] = nearest_in_time(parray[i], npoints[i], t);
    }
    const int32_t part = nearest_in_frequency(candidates, f);
    if (part < 0) {
        return;
    }
    const int32_t point = candidates[static_cast<size_t>(part)];
    if (std::fabs(t - parray[part][point].time) <= sndlen * 0.02) {
        push_found(part, point);
    }
}
