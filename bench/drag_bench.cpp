// One motion event of a drag of everything selected, on a store of 1,000,000 points, beside a
// plain read of the same records. Times are per point: every figure is one event divided by its
// points. Built a second time with no_logarithms.cpp, where no logarithm and no power is taken.
#include "display/view.h"
#include "interact/drags.h"
#include "interact/log_refresh.h"
#include "interact/selection.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "store/store.h"

#include <GL/freeglut.h>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <random>
#include <unistd.h>

namespace {

constexpr int32_t partial_count = 2000;
constexpr int32_t point_count = 500; // of each partial
constexpr int64_t all_points = int64_t{partial_count} * point_count;
constexpr float hop = 0.01f; // seconds from point to point

void build_store() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> freq(50.0f, 5000.0f);
    partials = partial_count;
    allocate_counts(partials);
    for (int32_t i = 0; i < partials; ++i) {
        npoints[i] = point_count;
    }
    allocate_points();
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < point_count; ++j) {
            Breakpoint &point = parray[i][j];
            point.time = 1.0f + static_cast<float>(j) * hop;
            point.freq = freq(random);
            point.amp = -20.0f;
            point.selected = 1;
        }
    }
    regrow_peval();
    recompute_everything();
    averages(partials, npoints, parray, peval);
}

void open_store() {
    if (partials == 0) {
        build_store();
    }
    flat = 1;
    bps = 2; // the pointer's way is given, not looked up through a window
    X = Y = 1;
}

void per_point(benchmark::State &state) {
    state.counters["ns_a_point"] = benchmark::Counter(
        static_cast<double>(all_points) * 1e-9,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void plain_read(benchmark::State &state) {
    open_store();
    for (auto _ : state) {
        float sum = 0.0f;
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                sum += parray[i][j].freq;
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    per_point(state);
}

void event(benchmark::State &state) {
    open_store();
    logpos = static_cast<int32_t>(state.range(0));
    float way = 0.001f;
    for (auto _ : state) {
        tfsquare[0] = tfsquare[2] = 0.5f + way;
        tfsquare[1] = tfsquare[3] = 0.5f;
        way = -way;
        partialsTranslate(0, 0);
    }
    per_point(state);
}

void log_positions(benchmark::State &state) {
    open_store();
    for (auto _ : state) {
        refresh_log_positions(log_axis());
    }
    per_point(state);
}

BENCHMARK(plain_read);
BENCHMARK(event)->ArgName("log")->Arg(0)->Arg(1);
BENCHMARK(log_positions);

} // namespace

// The window is not there: the one call that the drag makes to it has nothing to do.
void glutPostRedisplay() {}

BENCHMARK_MAIN();
