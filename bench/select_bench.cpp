// Sweeps and clicks on a store of 1,000,000 points, each beside a plain read of the same records.
// Times are per point: every figure is one pass over the store divided by its points.
#include "bench/allocations.h"
#include "bench/large_store.h"
#include "display/view.h"
#include "interact/clear.h"
#include "interact/find.h"
#include "interact/selection.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "store/store.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// The normalised frequency that has half of the points below it.
float middle() {
    const float hz = 0.5f * (50.0f + 5000.0f);
    return logpos != 0 ? std::log2(hz / minfreq) / logmaxfreq : hz / maxfreq;
}

struct Sweep {
    float corners[4];
};

Sweep left_half() {
    return {{0.4999f, -0.1f, 1.1f, -0.1f}};
}
Sweep lower_half() {
    return {{1.1f, -0.1f, middle(), -0.1f}};
}

int64_t count_selected() {
    int64_t count = 0;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            count += parray[i][j].selected == 1 ? 1 : 0;
        }
    }
    return count;
}

/// Ends the run when a sweep does not hit about half, or a search allocates more than it may.
void require(bool holds, const char *what) {
    if (!holds) {
        std::fprintf(stderr, "select_bench: %s\n", what);
        std::exit(1);
    }
}

void report_per_point(benchmark::State &state) {
    const double points = static_cast<double>(state.iterations()) * static_cast<double>(all_points);
    state.counters["s_per_point"] =
        benchmark::Counter(points, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// Every word of every record, in store order: what memory alone costs.
void plain_read(benchmark::State &state) {
    for (auto _ : state) {
        uint64_t sum = 0;
        for (int32_t i = 0; i < partials; ++i) {
            const char *at = reinterpret_cast<const char *>(parray[i]);
            const size_t bytes = static_cast<size_t>(npoints[i]) * sizeof(Breakpoint);
            for (size_t k = 0; k < bytes; k += sizeof(uint64_t)) {
                uint64_t word;
                std::memcpy(&word, at + k, sizeof word);
                sum += word;
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    report_per_point(state);
}

void sweep(benchmark::State &state, bool logarithmic, Sweep (*half)()) {
    logpos = logarithmic ? 1 : 0;
    flat = bps = 1;
    clear_all();
    const Sweep over = half();
    const int64_t before = allocations();
    findBreakpoints(over.corners, gCamera);
    require(allocations() == before, "a sweep allocates");
    const double share = static_cast<double>(count_selected()) / static_cast<double>(all_points);
    require(share > 0.49 && share < 0.51, "a sweep does not hit half");
    clear_all();
    for (auto _ : state) {
        findBreakpoints(over.corners, gCamera);
        benchmark::ClobberMemory();
    }
    report_per_point(state);
}

void deselect(benchmark::State &state, bool logarithmic, Sweep (*half)()) {
    logpos = logarithmic ? 1 : 0;
    flat = bps = 1;
    const Sweep all = {{1.1f, -0.1f, 1.1f, -0.1f}};
    const Sweep over = half();
    for (auto _ : state) {
        state.PauseTiming();
        findBreakpoints(all.corners, gCamera);
        state.ResumeTiming();
        deselectBreakpoints(over.corners, gCamera);
        benchmark::ClobberMemory();
    }
    report_per_point(state);
}

/// The search speaks on the console for each click: its words go to /dev/null meanwhile.
void click(benchmark::State &state, bool logarithmic) {
    logpos = logarithmic ? 1 : 0;
    flat = bps = 1;
    clear_all();
    square[0] = square[1] = 225;
    // A tenth of a hop after a point: halfway between two would find nothing.
    const float t = 250.1f / static_cast<float>(point_count - 1);
    const Sweep at = {{t, t, 0.5f, 0.5f}};
    std::fflush(stdout);
    const int console = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    findSingleBreakpoint(at.corners, gCamera);
    const int64_t before = allocations();
    findSingleBreakpoint(at.corners, gCamera);
    require(allocations() == before + 1, "a click allocates more than its candidates");
    require(foundSubscriptions.count == 1, "a click finds nothing");
    for (auto _ : state) {
        findSingleBreakpoint(at.corners, gCamera);
        benchmark::ClobberMemory();
    }
    std::fflush(stdout);
    dup2(console, STDOUT_FILENO);
    close(console);
    close(nowhere);
    report_per_point(state);
}

BENCHMARK(plain_read)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sweep, left_half_linear, false, left_half)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sweep, left_half_log, true, left_half)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sweep, scattered_half_linear, false, lower_half)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sweep, scattered_half_log, true, lower_half)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deselect, scattered_half_linear, false, lower_half)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deselect, scattered_half_log, true, lower_half)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(click, linear, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(click, log, true)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv) {
    build_store(0.0f, false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
