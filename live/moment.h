// live/moment.h -- the store at one moment: what frequency and level each partial has then, into
// the candidates that the oscillators follow.
#pragma once

#include "live/live.h"
#include "store/published.h"

#include <cstdint>

/// How a gesture samples.
struct MomentRule {
    float freq_limit;   // Hz, at most this
    bool selected_only; // segments that begin or end with a selected point
    float edge_level;   // dB, where such a segment begins with an unselected point
};

constexpr MomentRule start_rule = {22050.0f, false, 0.0f};
constexpr MomentRule motion_rule = {20000.0f, false, 0.0f};
constexpr MomentRule wheel_rule = {22050.0f, true, 0.0f};
constexpr MomentRule selected_zone_rule = {22050.0f, true, -100.0f};

/// Oscillators in use from now on: one a partial, as many as there can be. Returns the number.
int32_t use_oscillators(int32_t partial_count);

/// Samples a partial of n points at `time` (seconds). Where no segment fits, the candidate falls
/// silent and keeps its values.
void sample_partial(const Breakpoint *points, int32_t n, float time, const MomentRule &rule,
                    LiveCandidate &candidate);

/// Samples all partials that have an oscillator; further oscillators fall silent. Window thread.
void sample_store(float time, const MomentRule &rule, LiveCandidate *candidates);

/// The same, partial i at times[i].
void sample_store_at(const float *times, const MomentRule &rule, LiveCandidate *candidates);

/// The same from what is published; any thread that holds a StoreReader.
void sample_published(const PublishedStore &store, float time, const MomentRule &rule,
                      LiveCandidate *candidates);
