#include "edit/shifts.h"

#include "edit/selected.h"
#include "store/recompute.h"
#include "store/runs.h"
#include "store/store.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr int32_t fade_depth = 96; // dB from one end of a fade to the other

void fade_in(const SelectedRun &run) {
    const float span = static_cast<float>(run.last - run.first);
    Breakpoint *points = parray[run.partial];
    for (int32_t j = run.first; j <= run.last; ++j) {
        const float place = static_cast<float>(j - run.first) / span;
        points[j].amp -= (1.0f - place) * static_cast<float>(fade_depth);
    }
}

void fade_out(const SelectedRun &run) {
    const float span = static_cast<float>(run.last - run.first);
    Breakpoint *points = parray[run.partial];
    for (int32_t j = run.first; j <= run.last; ++j) {
        const int64_t loss = static_cast<int64_t>(j - run.first) * -fade_depth;
        points[j].amp += static_cast<float>(loss) / span;
    }
}

/// Multiplies one frequency, taking the ends of the range along.
void shift_tracking(float &freq, float ratio) {
    if (freq == minfreq) {
        minfreq *= ratio;
    }
    if (freq == maxfreq) {
        maxfreq *= ratio;
    }
    freq *= ratio;
    if (freq < minfreq) {
        minfreq = freq;
    }
    if (freq > maxfreq) {
        maxfreq = freq;
    }
}

/// No partial that moves as a whole may start before 0.
float limit_to_start(float shift) {
    for (int32_t i = 0; i < partials; ++i) {
        if (npoints[i] > 0 && is_selected(parray[i][0]) && shift + parray[i][0].time < 0.0f) {
            shift = -parray[i][0].time;
        }
    }
    return shift;
}

/// No selected run may reach the point before it; the first such run of a partial decides.
float limit_to_gaps(float shift) {
    for (int32_t i = 0; i < partials; ++i) {
        const Breakpoint *points = parray[i];
        for (int32_t j = 1; j < npoints[i]; ++j) {
            if (is_selected(points[j]) && !is_selected(points[j - 1]) &&
                shift + points[j].time <= points[j - 1].time) {
                shift = (points[j].time - points[j - 1].time) * -0.5f;
                break;
            }
        }
    }
    return shift;
}

} // namespace

void fade(int32_t mode) {
    for (int32_t i = 0; i < partials; ++i) {
        SelectedRun run = {i, 0, -1};
        while (next_run(parray[i], npoints[i], i, run.last + 1, every_run, run)) {
            if (mode == 1) {
                fade_in(run);
            } else {
                fade_out(run);
            }
        }
    }
}

void gain(float decibels) {
    for_selected([decibels](Breakpoint &point) { point.amp += decibels; });
}

void pitch(float ratio) {
    for_selected([ratio](Breakpoint &point) { shift_tracking(point.freq, ratio); });
    logmaxfreq = static_cast<float>(std::log(maxfreq / minfreq) / ln_2);
}

void timesh(float seconds) {
    if (seconds == 0.0f) {
        return;
    }
    float shift = seconds;
    if (shift < 0.0f) {
        shift = limit_to_gaps(limit_to_start(shift));
        if (shift != seconds) {
            std::printf("Closest acceptable time shift value: %f sec.\n", shift);
        }
    }
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = first_selected_point(i); j < npoints[i]; ++j) {
            parray[i][j].time += shift;
        }
    }
    recompute_times();
    std::printf("TIME SHIFTING by %f\n", shift);
}
