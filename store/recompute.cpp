#include "store/recompute.h"

#include "live/shared.h"
#include "store/phase.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace {

double log2_of(float ratio) {
    return std::log(ratio) / ln_2;
}

/// Toward zero, clamped to the type, so that infinities have a result. NaN never gets here.
int32_t truncated(float value) {
    if (value >= 2147483648.0f) {
        return INT32_MAX;
    }
    if (value < -2147483648.0f) {
        return INT32_MIN;
    }
    return static_cast<int32_t>(value);
}

void set_span() {
    fspan = maxfreq / minfreq;
    logmaxfreq = static_cast<float>(log2_of(fspan));
}

/// Takes the points of a partial in: its intervals, its frequencies or both in one walk. Returns
/// the sum of its frequencies.
template <bool times, bool freqs> float walk(RangeSums &sums, const Breakpoint *points, int32_t n) {
    float sum = 0.0f;
    float intervals = sums.intervals;
    float low = sums.low;
    float high = sums.high;
    for (int32_t j = 0; j < n; ++j) {
        if constexpr (times) {
            if (j > 0) {
                intervals += points[j].time - points[j - 1].time;
            }
        }
        if constexpr (freqs) {
            const float freq = points[j].freq;
            sum += freq;
            low = freq < low ? freq : low;
            high = freq > high ? freq : high;
        }
    }
    sums.intervals = intervals;
    sums.low = low;
    sums.high = high;
    return sum;
}

/// Takes the ends of a partial in. A single point counts as a beginning alone.
void take_ends(RangeSums &sums, const Breakpoint *points, int32_t n) {
    if (n < 1) {
        return;
    }
    const float first = points[0].time;
    const float last = points[n - 1].time;
    sums.earliest = first < sums.earliest ? first : sums.earliest;
    if (n > 1) {
        sums.latest = last > sums.latest ? last : sums.latest;
        sums.interval_count += n - 1;
    }
}

float mean(float sum, int32_t n) {
    return sum / static_cast<float>(n);
}

/// Mean frequency of partial i, widening the range on the way.
float mean_freq_widening(int32_t i) {
    RangeSums sums;
    sums.low = minfreq;
    sums.high = maxfreq;
    const float sum = walk<false, true>(sums, parray[i], npoints[i]);
    minfreq = sums.low;
    maxfreq = sums.high;
    return mean(sum, npoints[i]);
}

void shift_to_zero(float earliest) {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            poke(parray[i][j].time, parray[i][j].time - earliest);
        }
    }
}

void set_times(const RangeSums &sums) {
    meant = sums.intervals / static_cast<float>(sums.interval_count);
    const bool early = sums.earliest < 0.0f;
    if (early) {
        shift_to_zero(sums.earliest);
    }
    poke(sndstart, early ? 0.0f : sums.earliest);
    poke(sndlen, early ? sums.latest - sums.earliest : sums.latest);
}

/// The range in whole numbers, then widened to what lies outside it. So the maximum ends exact,
/// and the minimum too where it is below 0.
void set_pitch(const RangeSums &sums) {
    if (partials < 1) {
        minfreq = 22050.0f;
        maxfreq = 0.0f;
        return;
    }
    minfreq = std::min(static_cast<float>(truncated(sums.low)), sums.low);
    maxfreq = std::max(static_cast<float>(truncated(sums.high)), sums.high);
    set_span();
}

void set_ends(PartialEval &eval, const Breakpoint *points, int32_t n) {
    eval.start = n > 0 ? points[0].time : 0.0f;
    eval.dur = n > 0 ? points[n - 1].time - points[0].time : 0.0f;
}

void chain_waiting(PhaseQueue &queue) {
    chain_side_by_side(queue.runs, queue.count);
    queue.count = 0;
}

void queue_phases(PhaseQueue &queue, int32_t i) {
    if (!has_selected_point(i)) {
        return;
    }
    queue.runs[queue.count++] = {parray[i], npoints[i]};
    if (queue.count == PhaseQueue::room) {
        chain_waiting(queue);
    }
}

} // namespace

float logfreq2freq(float logfreq, float maxf, float minf) {
    const float octaves = static_cast<float>(log2_of(maxf / minf));
    return minf * std::exp(static_cast<float>(logfreq * octaves * ln_2));
}

float freq2logfreq(float freq, float maxf, float minf) {
    const float octaves = static_cast<float>(log2_of(freq / minfreq));
    return octaves / static_cast<float>(log2_of(maxf / minf));
}

void recompute_times() {
    RangeSums sums;
    for (int32_t i = 0; i < partials; ++i) {
        take_ends(sums, parray[i], npoints[i]);
        walk<true, false>(sums, parray[i], npoints[i]);
    }
    set_times(sums);
}

void recompute_all_pitch() {
    RangeSums sums;
    for (int32_t i = 0; i < partials; ++i) {
        peval[i].avgfreq = mean(walk<false, true>(sums, parray[i], npoints[i]), npoints[i]);
    }
    set_pitch(sums);
}

void recompute_pitch(int32_t i) {
    peval[i].avgfreq = mean_freq_widening(i);
    set_span();
}

int32_t first_selected_point(int32_t i, int32_t from) {
    int32_t j = from;
    while (j < npoints[i] && parray[i][j].selected != 1) {
        ++j;
    }
    return j;
}

bool has_selected_point(int32_t i) {
    return first_selected_point(i) < npoints[i];
}

void recompute_all_phase() {
    PhaseQueue queue;
    for (int32_t i = 0; i < partials; ++i) {
        queue_phases(queue, i);
    }
    chain_waiting(queue);
}

void recompute_phase(float phase0, int32_t i) {
    if (npoints[i] < 1) {
        return;
    }
    parray[i][0].phase = phase0;
    chain_phases(parray[i], npoints[i]);
}

void recompute_logfreq() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            Breakpoint &point = parray[i][j];
            point.logfreq = static_cast<float>(log2_of(point.freq / minfreq)) / logmaxfreq;
        }
    }
}

void recompute_amp(float *max, float *min) {
    float high = -10000.0f;
    float low = 10000.0f;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const float amp = parray[i][j].amp;
            if (amp > high) {
                high = amp;
            }
            if (amp < low) {
                low = amp;
            }
        }
    }
    *max = high;
    *min = low;
}

void averages(int32_t n, const int32_t *counts, Breakpoint *const *points, PartialEval *evals) {
    RangeSums sums;
    for (int32_t i = 0; i < n; ++i) {
        evals[i].avgfreq = mean(walk<false, true>(sums, points[i], counts[i]), counts[i]);
        set_ends(evals[i], points[i], counts[i]);
    }
}

void close_partial(ClosingSweep &sweep, int32_t i) {
    queue_phases(sweep.phases, i);
    take_ends(sweep.sums, parray[i], npoints[i]);
    peval[i].avgfreq = mean(walk<true, true>(sweep.sums, parray[i], npoints[i]), npoints[i]);
}

void finish_closing(ClosingSweep &sweep, bool pitch) {
    chain_waiting(sweep.phases);
    set_times(sweep.sums);
    if (pitch) {
        set_pitch(sweep.sums);
    }
    for (int32_t i = 0; i < partials; ++i) {
        set_ends(peval[i], parray[i], npoints[i]);
    }
}

void reset_peval_spares(PartialEval *evals, const int32_t *count) {
    for (int32_t i = 0; i < *count; ++i) {
        evals[i].spare1 = 0.0f;
        evals[i].spare2 = 0.0f;
    }
}

void recompute_everything() {
    recompute_amp(&maxamp, &minamp);
    recompute_times();
    recompute_all_pitch();
    recompute_all_phase();
    recompute_logfreq();
}
