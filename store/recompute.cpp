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

/// Mean frequency of partial i, widening the range on the way.
float mean_freq_widening(int32_t i) {
    float sum = 0.0f;
    const Breakpoint *points = parray[i];
    for (int32_t j = 0; j < npoints[i]; ++j) {
        const float freq = points[j].freq;
        sum += freq;
        if (freq < minfreq) {
            minfreq = freq;
        }
        if (freq > maxfreq) {
            maxfreq = freq;
        }
    }
    return sum / static_cast<float>(npoints[i]);
}

/// The whole-number range of all points: the first, coarse pass.
void integer_range(int32_t &low, int32_t &high) {
    high = 0;
    low = 22050;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const float freq = parray[i][j].freq;
            if (freq > static_cast<float>(high)) {
                high = truncated(freq);
            }
            if (freq < static_cast<float>(low)) {
                low = truncated(freq);
            }
        }
    }
}

constexpr int32_t chains = 4; // phase chains side by side

/// Each chain waits for its own last phase at every point; side by side they fill the waits.
void chain_together(const int32_t *group) {
    int32_t common = npoints[group[0]];
    for (int32_t k = 1; k < chains; ++k) {
        common = std::min(common, npoints[group[k]]);
    }
    for (int32_t j = 1; j < common; ++j) {
        for (int32_t k = 0; k < chains; ++k) {
            chain_phases(parray[group[k]] + j - 1, 2);
        }
    }
    for (int32_t k = 0; k < chains; ++k) {
        chain_phases(parray[group[k]] + common - 1, npoints[group[k]] - common + 1);
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
    meant = 0.0f;
    float earliest = 100000.0f;
    float latest = 0.0f;
    int64_t intervals = 0;
    for (int32_t i = 0; i < partials; ++i) {
        const Breakpoint *points = parray[i];
        const int32_t n = npoints[i];
        if (n < 1) {
            continue;
        }
        if (points[0].time < earliest) {
            earliest = points[0].time;
        }
        if (n > 1) {
            if (points[n - 1].time > latest) {
                latest = points[n - 1].time;
            }
            for (int32_t j = 1; j < n; ++j) {
                meant += points[j].time - points[j - 1].time;
            }
            intervals += n - 1;
        }
    }
    meant /= static_cast<float>(intervals);
    if (earliest < 0.0f) {
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                poke(parray[i][j].time, parray[i][j].time - earliest);
            }
        }
        latest -= earliest;
        earliest = 0.0f;
    }
    poke(sndstart, earliest);
    poke(sndlen, latest);
}

void recompute_all_pitch() {
    if (partials < 1) {
        minfreq = 22050.0f;
        maxfreq = 0.0f;
        return;
    }
    int32_t low;
    int32_t high;
    integer_range(low, high);
    minfreq = static_cast<float>(low);
    maxfreq = static_cast<float>(high);
    for (int32_t i = 0; i < partials; ++i) {
        peval[i].avgfreq = mean_freq_widening(i);
    }
    set_span();
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
    int32_t group[chains];
    int32_t waiting = 0;
    for (int32_t i = 0; i < partials; ++i) {
        if (has_selected_point(i)) {
            group[waiting++] = i;
        }
        if (waiting == chains) {
            chain_together(group);
            waiting = 0;
        }
    }
    for (int32_t k = 0; k < waiting; ++k) {
        chain_phases(parray[group[k]], npoints[group[k]]);
    }
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
    for (int32_t i = 0; i < n; ++i) {
        const int32_t count = counts[i];
        float sum = 0.0f;
        for (int32_t j = 0; j < count; ++j) {
            sum += points[i][j].freq;
        }
        evals[i].start = count > 0 ? points[i][0].time : 0.0f;
        evals[i].dur = count > 0 ? points[i][count - 1].time - points[i][0].time : 0.0f;
        evals[i].avgfreq = sum / static_cast<float>(count);
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
