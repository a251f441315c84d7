#include "edit/scale.h"

#include "edit/selected.h"
#include "store/misc.h"
#include "store/store.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr float least_stretch = 0.1f;

/// The earliest selected time, from which everything is stretched; marks what will move.
float reference_time() {
    float reft = sndlen;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            if (is_selected(parray[i][j])) {
                if (parray[i][j].time < reft) {
                    reft = parray[i][j].time;
                }
                peval[i].selected = 1;
            }
        }
    }
    return reft;
}

/// Rebuilds one partial from its first point forward. scratch holds the times as they would
/// stand if the whole partial had only moved with its first point.
void stretch_partial(Breakpoint *points, int32_t n, float reft, float stretch) {
    float d = 0.0f;
    if (is_selected(points[0])) {
        d = (points[0].time - reft) * stretch - (points[0].time - reft);
        points[0].time += d;
    }
    points[0].scratch = points[0].time;
    for (int32_t j = 1; j < n; ++j) {
        const Breakpoint &before = points[j - 1];
        const float t = points[j].time + d;
        points[j].scratch = t;
        if (is_selected(before)) {
            points[j].time = (t - before.scratch) * stretch + before.time;
        } else {
            points[j].time = (t + before.time) - before.scratch;
        }
    }
}

void stretch_times(float stretch) {
    const float reft = reference_time();
    std::printf("Reference time = %f\n", reft);
    for (int32_t i = 0; i < partials; ++i) {
        if (peval[i].selected == 1 && npoints[i] > 0) {
            stretch_partial(parray[i], npoints[i], reft, stretch);
        }
    }
}

/// Harmonic mean so far, closed at point k.
struct FrequencyMean {
    static float add(float acc, const Breakpoint *points, int32_t, int32_t k) {
        return static_cast<float>(acc + 1.0 / points[k].freq);
    }
    static float close(float acc, int32_t j, int32_t k) {
        return static_cast<float>(k - j) / acc;
    }
};

/// Level of a run. It adds the run's first level each time, so it is not the mean.
struct LevelMean {
    static float add(float acc, const Breakpoint *points, int32_t j, int32_t) {
        return acc + points[j].amp;
    }
    static float close(float acc, int32_t j, int32_t k) {
        return acc / static_cast<float>(k - j + 1);
    }
};

/// Leaves each point's mean in scratch, from the first selected point to the partial's end. The
/// value carries on behind a run, so a second run starts from the first one's.
template <typename Mean> void walk_means(Breakpoint *points, int32_t n) {
    int32_t j = 0;
    while (j < n && !is_selected(points[j])) {
        ++j;
    }
    float acc = 0.0f;
    for (int32_t k = j; k < n; ++k) {
        if (k < n - 1 && points[k].selected != 0) {
            acc = Mean::add(acc, points, j, k);
            continue;
        }
        acc = Mean::close(acc, j, k);
        for (; j < k; ++j) {
            points[j].scratch = acc;
        }
        points[k].scratch = acc;
    }
}

template <typename Mean> void all_means() {
    for (int32_t i = 0; i < partials; ++i) {
        walk_means<Mean>(parray[i], npoints[i]);
    }
}

void spread_frequencies(float exponent) {
    all_means<FrequencyMean>();
    for_selected([exponent](Breakpoint &point) {
        const float mean = point.scratch;
        point.freq = mean * std::pow(point.freq / mean, exponent);
    });
}

void compand_levels(float compand) {
    all_means<LevelMean>();
    const float factor = std::fabs(compand);
    for_selected([factor](Breakpoint &point) {
        const float mean = point.scratch;
        point.amp = (point.amp - mean) * factor + mean;
    });
}

void clear_scratch() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].scratch = 0.0f;
        }
    }
}

} // namespace

void newscale(float stretch, float exponent, float compand) {
    if (std::fabs(stretch) < least_stretch) {
        std::puts("Time-stretch must be > 0.1");
        return;
    }
    if (std::fabs(stretch) != 1.0f) {
        if (stretch < 0.0f) {
            wip();
        } else {
            stretch_times(stretch);
        }
    }
    if (exponent != 1.0f) {
        spread_frequencies(exponent);
    }
    if (compand != 1.0f) {
        compand_levels(compand);
    }
    clear_scratch();
}
