// One motion event of a drag of everything selected, on a store of 1,000,000 points, beside a
// plain read of the same records. Times are per point: every figure is one event divided by its
// points. Built a second time with no_logarithms.cpp, where no logarithm and no power is taken.
#include "bench/large_store.h"
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
#include <unistd.h>

namespace {

void open_store() {
    if (partials == 0) {
        build_store(1.0f, true);
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
