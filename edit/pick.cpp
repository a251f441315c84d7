#include "edit/pick.h"

#include "interact/selection.h"
#include "store/console.h"
#include "store/misc.h"
#include "store/store.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr size_t word_size = 256; // of a word typed at the console, its end included

struct Bounds {
    float low;  // seconds, exclusive
    float high; // seconds, exclusive
};

bool same(const char *a, const char *b) {
    return std::strcmp(a, b) == 0;
}

void mark_points(int32_t i, uint16_t flag) {
    for (int32_t j = 0; j < npoints[i]; ++j) {
        parray[i][j].selected = flag;
    }
}

void pick_partial(int32_t i) {
    mark_points(i, 1);
    declare_selected();
}

/// An operator or a lower bound, then a number: narrows the widest range of times to the one
/// that they ask for. False when the input ends before both are there.
bool read_bounds(Bounds &bounds) {
    char word[word_size] = "";
    if (!read_word(word, sizeof word)) {
        return false;
    }
    const Bounds widest = bounds;
    const bool below = same(word, "<");
    const bool above = same(word, ">");
    if (!below && !above) {
        bounds.low = static_cast<float>(std::atof(word));
    }
    if (!read_float(bounds.high) && std::feof(stdin)) {
        return false;
    }
    if (above) {
        bounds = {bounds.high, widest.high};
    }
    return true;
}

/// Reads the bounds and picks by them; does nothing when the input ends.
void pick_by_times(Bounds widest, void (*pick_between)(float, float)) {
    Bounds bounds = widest;
    if (read_bounds(bounds)) {
        pick_between(bounds.low, bounds.high);
    }
}

void read_size() {
    char op[word_size] = "";
    int32_t n = 0;
    read_word(op, sizeof op);
    read_integer(n);
    std::printf("Pick by: %s %s %d points\n", "size", op, n);
    if ((same(op, "<") || same(op, ">")) && n > 1) {
        pick_by_size(op, n);
    }
}

bool within(float time, Bounds bounds) {
    return time >= bounds.low && time <= bounds.high;
}

bool strictly_within(float time, Bounds bounds) {
    return time > bounds.low && time < bounds.high;
}

/// "Bad value" and false unless both ends of `asked` are allowed.
bool bounds_allowed(Bounds asked, Bounds allowed) {
    if (within(asked.low, allowed) && within(asked.high, allowed)) {
        return true;
    }
    std::puts("Bad value");
    return false;
}

} // namespace

void pick() {
    std::puts("size  [<|>]  num_points");
    std::puts("start [<|>|time0] time1");
    std::puts("endt  [<|>|time0] time1");
    std::fputs("> ", stdout);
    char word[word_size] = "";
    read_word(word, sizeof word);
    if (same(word, "-c")) {
        std::puts("Command cancelled");
    } else if (same(word, "size")) {
        read_size();
    } else if (same(word, "start")) {
        pick_by_times({0.0f, sndlen}, pick_by_startTime);
    } else if (same(word, "endt")) {
        pick_by_times({sndstart, sndstart + sndlen}, pick_by_endTime);
    } else if (same(word, "bad") || same(word, "amp") || same(word, "harm")) {
        wip();
    } else if (same(word, "odd")) {
        pick_odd();
    } else {
        std::puts("No matching criteria recognized");
    }
}

void pick_by_size(const char *op, int32_t n) {
    int32_t longest = 0;
    for (int32_t i = 0; i < partials; ++i) {
        longest = std::max(longest, npoints[i]);
    }
    if (n >= longest) {
        return;
    }
    const bool fewer = same(op, "<");
    const bool more = same(op, ">");
    for (int32_t i = 0; i < partials; ++i) {
        if ((fewer && npoints[i] < n) || (more && npoints[i] > n)) {
            pick_partial(i);
        }
    }
}

void pick_by_startTime(float t0, float t1) {
    if (!bounds_allowed({t0, t1}, {0.0f, sndlen})) {
        return;
    }
    std::printf("Pick by: %f < start < %f\n", t0, t1);
    for (int32_t i = 0; i < partials; ++i) {
        if (npoints[i] > 0 && strictly_within(parray[i][0].time, {t0, t1})) {
            pick_partial(i);
        }
    }
}

void pick_by_endTime(float t0, float t1) {
    if (!bounds_allowed({t0, t1}, {sndstart, sndstart + sndlen})) {
        return;
    }
    std::printf("Pick by: %f < endt < %f\n", t0, t1);
    for (int32_t i = 0; i < partials; ++i) {
        if (npoints[i] > 0 && strictly_within(parray[i][npoints[i] - 1].time, {t0, t1})) {
            pick_partial(i);
        }
    }
}

void pick_odd() {
    wip();
    for (int32_t i = 0; i < partials; ++i) {
        const bool odd = (i + 1) % 2 == 1;
        mark_points(i, odd ? 1 : 0);
        peval[0].selected = odd ? 1 : 0;
    }
    if (partials > 0) {
        declare_selected();
    }
}
