// The time-varying pitch shift: each long enough run glides to a factor.

#include "edit/shifts.h"

#include "edit/selected.h"
#include "store/recompute.h"
#include "store/runs.h"
#include "store/settings.h"
#include "store/store.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

constexpr std::ptrdiff_t fewest_flagged = 3;

/// One run that glides, with what the debug lines tell of it.
struct Glide {
    int32_t partial;
    int32_t first;    // index of its first point
    int32_t last;     // index of its last point, inclusive
    float start;      // seconds, time of the first point
    float first_freq; // Hz
    float last_freq;  // Hz
    float mean;       // Hz, harmonic mean over the points
    float target;     // Hz, the mean times the ratio
    float end;        // seconds, time of the last point
    float ratio;      // factor reached at the end
};

bool glides(const SelectedRun &run) {
    const Breakpoint *points = parray[run.partial];
    return std::count_if(points + run.first, points + run.last + 1, is_selected) >= fewest_flagged;
}

float harmonic_mean(const SelectedRun &run) {
    float sum = 0.0f;
    for (int32_t j = run.first; j <= run.last; ++j) {
        sum += 1.0f / parray[run.partial][j].freq;
    }
    return static_cast<float>(run_length(run)) / sum;
}

Glide glide_of(const SelectedRun &run, float ratio) {
    const Breakpoint &first = parray[run.partial][run.first];
    const Breakpoint &last = parray[run.partial][run.last];
    const float mean = harmonic_mean(run);
    return {run.partial, run.first, run.last,     first.time, first.freq,
            last.freq,   mean,      mean * ratio, last.time,  ratio};
}

void apply(const Glide &glide) {
    if (dbp != 0) {
        std::printf("TANFR = %fx/s\n", glide.ratio);
    }
    const float duration = glide.end - glide.start;
    for (int32_t j = glide.first; j <= glide.last; ++j) {
        Breakpoint &point = parray[glide.partial][j];
        const float t = point.time - glide.start;
        const float place = t / duration;
        if (dbp != 0) {
            std::printf("t = %f dur = %f t/dur = %f\n", t, duration, place);
        }
        point.freq *= std::pow(glide.ratio, place);
    }
}

} // namespace

void va_pitch(float ratio) {
    std::vector<SelectedRun> runs = selected_runs(parray, npoints, partials, every_run);
    std::erase_if(runs, [](const SelectedRun &run) { return !glides(run); });
    if (verbose != 0) {
        std::puts("Time-varying pitch shift:");
        std::printf("number of candidates: %d\n", static_cast<int32_t>(runs.size()));
    }
    std::vector<Glide> cands;
    cands.reserve(runs.size());
    for (const SelectedRun &run : runs) {
        cands.push_back(glide_of(run, ratio));
    }
    int32_t number = 0;
    for (const Glide &glide : cands) {
        if (dbp != 0) {
            std::printf("cands[%d] @[%d]: %d-->%d (%f-->%f sec.) @%fHz\n", number++, glide.partial,
                        glide.first, glide.last, glide.start, glide.end, glide.mean);
        }
    }
    for (const Glide &glide : cands) {
        apply(glide);
    }
    recompute_all_pitch();
    recompute_logfreq();
    averages(partials, npoints, parray, peval);
}
