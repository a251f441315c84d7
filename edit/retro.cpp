#include "edit/retro.h"

#include "edit/selected.h"
#include "store/runs.h"
#include "store/store.h"

#include <cstdio>
#include <utility>

namespace {

bool starts_selected(int32_t i) {
    return npoints[i] > 0 && is_selected(parray[i][0]);
}

void exchange(Breakpoint &a, Breakpoint &b, bool times) {
    std::swap(a.freq, b.freq);
    std::swap(a.amp, b.amp);
    std::swap(a.logfreq, b.logfreq);
    if (times) {
        std::swap(a.time, b.time);
    }
}

/// Reverses each selected run end for end; a middle point meets itself.
void reverse_runs(bool times) {
    for (int32_t i = 0; i < partials; ++i) {
        SelectedRun run = {i, 0, -1};
        while (next_run(parray[i], npoints[i], i, run.last + 1, every_run, run)) {
            for (int32_t k = 0; k < (run_length(run) + 1) / 2; ++k) {
                std::printf("i = %d\tj = %d\tk = %d\n", i, run.first, k);
                exchange(parray[i][run.first + k], parray[i][run.last - k], times);
            }
        }
    }
}

/// Every partial that is selected from its first point on is selected to its end.
bool whole_partials_only() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 1; starts_selected(i) && j < npoints[i]; ++j) {
            if (!is_selected(parray[i][j])) {
                return false;
            }
        }
    }
    return true;
}

/// The centre of the span that the wholly selected partials share, in seconds.
float centre_of_span() {
    float mint = sndlen;
    float maxt = 0.0f;
    for (int32_t i = 0; i < partials; ++i) {
        if (starts_selected(i)) {
            const float first = parray[i][0].time;
            const float last = parray[i][npoints[i] - 1].time;
            mint = first < mint ? first : mint;
            maxt = last > maxt ? last : maxt;
        }
    }
    const float tau = (mint + maxt) * 0.5f;
    std::printf("MINT = %f\tMAXT = %f\tTAU = %f\n", mint, maxt, tau);
    return tau;
}

} // namespace

void retro() {
    std::printf("partials = %d\n", partials);
    reverse_runs(false);
}

void reverse() {
    std::printf("partials = %d\n", partials);
    if (!whole_partials_only()) {
        std::puts("Reverse can work only on selections");
        std::puts("\tmade of entire partials!");
        return;
    }
    const float tau = centre_of_span();
    reverse_runs(true);
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; starts_selected(i) && j < npoints[i]; ++j) {
            parray[i][j].time = 2.0f * tau - parray[i][j].time;
        }
    }
}

void swap_breakpoints() {}
