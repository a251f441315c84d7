#include "live/moment.h"

#include "live/oscillators.h"
#include "live/shared.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <cmath>

namespace {

bool counts(const Breakpoint &from, const Breakpoint &to, const MomentRule &rule) {
    return !rule.selected_only || peek(to.selected) != 0 || peek(from.selected) == 1;
}

/// The first segment that holds `time` and counts; -1 when there is none.
int32_t segment_at(const Breakpoint *points, int32_t n, float time, const MomentRule &rule) {
    for (int32_t j = 0; j + 1 < n; ++j) {
        if (peek(points[j].time) <= time && time < peek(points[j + 1].time) &&
            counts(points[j], points[j + 1], rule)) {
            return j;
        }
    }
    return -1;
}

float within(float freq, float limit) {
    const float positive = freq < 0.0f ? std::fabs(freq) : freq;
    return positive > limit ? limit : positive;
}

/// Calls `sample` for each partial with an oscillator and silences the rest.
template <typename Sample>
void sample_all(int32_t partial_count, LiveCandidate *candidates, Sample sample) {
    if (candidates == nullptr) {
        return; // before start-up has allocated them
    }
    const int32_t count = std::clamp(peek(numbOfCands), 0, most_oscillators);
    for (int32_t i = 0; i < count; ++i) {
        if (i < partial_count) {
            sample(i);
        } else {
            poke(candidates[i].status, uint8_t{0});
        }
    }
}

} // namespace

int32_t use_oscillators(int32_t partial_count) {
    const int32_t count = std::min(partial_count, most_oscillators);
    poke(numbOfCands, count);
    return count;
}

void sample_partial(const Breakpoint *points, int32_t n, float time, const MomentRule &rule,
                    LiveCandidate &candidate) {
    const int32_t j = segment_at(points, n, time, rule);
    if (j < 0) {
        poke(candidate.status, uint8_t{0});
        return;
    }
    const Breakpoint &from = points[j];
    const Breakpoint &to = points[j + 1];
    const float t0 = peek(from.time);
    const float t1 = peek(to.time);
    const bool from_edge = rule.selected_only && peek(from.selected) == 0;
    const float level = from_edge ? rule.edge_level : peek(from.amp);
    const float freq = linear_interpolation(time, t1, t0, peek(to.freq), peek(from.freq));
    const float db = linear_interpolation(time, t1, t0, peek(to.amp), level);
    poke(candidate.time, time);
    poke(candidate.freq, within(freq, rule.freq_limit));
    poke(candidate.amp, db2amp(db) * peek(live_gain));
    poke(candidate.status, uint8_t{1});
}

void sample_store(float time, const MomentRule &rule, LiveCandidate *candidates) {
    sample_all(partials, candidates, [&](int32_t i) {
        sample_partial(parray[i], npoints[i], time, rule, candidates[i]);
    });
}

void sample_store_at(const float *times, const MomentRule &rule, LiveCandidate *candidates) {
    sample_all(partials, candidates, [&](int32_t i) {
        sample_partial(parray[i], npoints[i], times[i], rule, candidates[i]);
    });
}

void sample_published(const PublishedStore &store, float time, const MomentRule &rule,
                      LiveCandidate *candidates) {
    sample_all(store.count, candidates, [&](int32_t i) {
        const PublishedPartial &partial = store.partials[i];
        sample_partial(partial.points, partial.count, time, rule, candidates[i]);
    });
}
