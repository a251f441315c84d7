// The Lisp partials list. Its passes share one walk, so that they meet the same partials: a
// closing parenthesis may be missing where the next partial opens, partials of fewer than two
// points are passed over, and the list may end early.

#include "import/afile.h"

#include "store/phase.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr size_t smallest_partial = 8; // bytes: "POINTS 2" and no values at all

enum class Met { partial, short_partial, list_end, broken };

/// Where a walk stands: `opened` when the opening of the next partial was read already.
struct ListWalk {
    TokenFile &file;
    bool opened = false;
};

/// Reads the three words before the first partial; the last is the declared count.
int32_t read_head(TokenFile &file) {
    skip_tokens(file, 2);
    return token_integer(read_token(file));
}

/// Goes to the values of the next partial; `n` is its point count.
Met enter_partial(ListWalk &walk, int32_t &n) {
    if (!walk.opened) {
        read_token(walk.file);
    }
    walk.opened = false;
    const std::string_view token = read_token(walk.file);
    if (token_is(token, ")")) {
        return Met::list_end;
    }
    if (!token_is(token, "POINTS")) {
        return Met::broken;
    }
    n = token_integer(read_token(walk.file));
    return n >= 2 ? Met::partial : Met::short_partial;
}

/// Looks at the word behind the values: the partial's end, or the opening of the next one.
void leave_partial(ListWalk &walk) {
    walk.opened = token_begins(read_token(walk.file), '(');
}

void pass_short_partial(ListWalk &walk, int32_t n) {
    if (n >= 0) {
        skip_tokens(walk.file, 3 * static_cast<int64_t>(n) + 1);
    }
}

/// A partial of more values than the file has bytes cannot be in it.
bool can_hold(const TokenFile &file, int32_t n) {
    return 3 * static_cast<uint64_t>(n) <= file.size;
}

/// The level of point j of n, shaped by its place: a fade at either end of the partial.
float shaped(float amp, int32_t j, int32_t n) {
    if (j == n - 2) {
        return amp > -32.0f ? amp - 18.0f : amp;
    }
    if (j == 0) {
        return amp - 6.0f;
    }
    if (j == n - 1) {
        return amp > -90.0f ? -90.0f : amp;
    }
    return amp;
}

float in_range(double freq) {
    if (freq < 4.0) {
        return 4.0f;
    }
    return freq > 22050.0 ? 22050.0f : static_cast<float>(freq);
}

/// Reads the values of one partial, leaving the token behind them as the current one.
void import_partial(TokenFile &file, Breakpoint *points, int32_t n, float *high, float *low,
                    float *loudest) {
    for (int32_t j = 0; j < n; ++j) {
        Breakpoint &point = points[j];
        point.time = static_cast<float>(read_number(file));
        point.freq = in_range(read_number(file));
        *high = point.freq > *high ? point.freq : *high;
        *low = point.freq < *low ? point.freq : *low;
        point.amp = shaped(static_cast<float>(read_number(file)), j, n);
        *loudest = point.amp > *loudest ? point.amp : *loudest;
        point.phase = 0.0f;
        if (j > 0) {
            const double interval = static_cast<double>(point.time) - points[j - 1].time;
            point.phase = advance_phase(points[j - 1].phase, interval * points[j - 1].freq);
        }
        point.ampunits = 1;
        point.selected = 0;
    }
}

} // namespace

int32_t ptfile_room(const TokenFile &file, int32_t declared) {
    const size_t most = file.size / smallest_partial + 1;
    return static_cast<int32_t>(std::min(static_cast<size_t>(std::max(declared, 0)), most));
}

int32_t visit_ptfile(TokenFile &file, int32_t *count) {
    *count = read_head(file);
    rewind_tokens(file);
    return 0;
}

int32_t revisit_ptfile(TokenFile &file, int32_t *total, int32_t *counts, PartialIndexEntry *index,
                       int32_t *count) {
    *total = read_head(file);
    *count = 0;
    const int32_t room = ptfile_room(file, *total) + spare_partials;
    ListWalk walk{file};
    int32_t i = 0;
    while (*total > i || walk.opened) {
        int32_t n = 0;
        const Met met = enter_partial(walk, n);
        if (met == Met::list_end) {
            rewind_tokens(file);
            return 0;
        }
        if (met == Met::broken || (n > 0 && !can_hold(file, n))) {
            return refuse_corrupt(file);
        }
        if (i < room) {
            counts[i] = n;
            index[i] = {i, 0};
        }
        if (met == Met::partial) {
            ++*count;
            skip_tokens(file, 3 * static_cast<int64_t>(n));
            leave_partial(walk);
            ++i;
            continue;
        }
        --*total;
        pass_short_partial(walk, n);
        if (file.ended) {
            *total = i; // the last word would be met again for each partial that is missing
        }
    }
    if (!token_is(read_token(file), ")")) {
        return refuse_corrupt(file);
    }
    rewind_tokens(file);
    return 0;
}

void rescan_ptfile(TokenFile &file, const int32_t *total, int32_t *counts) {
    read_head(file);
    ListWalk walk{file};
    for (int32_t i = 0; i < *total && !file.ended;) {
        int32_t n = 0;
        const Met met = enter_partial(walk, n);
        if (met == Met::partial) {
            counts[i++] = n;
            skip_tokens(file, 3 * static_cast<int64_t>(n));
            leave_partial(walk);
        } else if (met == Met::short_partial) {
            pass_short_partial(walk, n);
        } else {
            break;
        }
    }
    std::putchar('\n');
    rewind_tokens(file);
}

void import_ptfile(TokenFile &file, const int32_t *total, const int32_t *counts, float *loudest,
                   float *low, float *high) {
    std::printf("Importing %d partials\n", *total);
    read_head(file);
    ListWalk walk{file};
    for (int32_t i = 0; i < *total && !file.ended;) {
        int32_t n = 0;
        const Met met = enter_partial(walk, n);
        if (met == Met::partial) {
            import_partial(file, parray[i], counts[i], high, low, loudest);
            leave_partial(walk);
            ++i;
        } else if (met == Met::short_partial) {
            pass_short_partial(walk, n);
        } else {
            break;
        }
    }
    read_token(file);
    std::putchar('\n');
}
