// Cost of the vertex arrays of one frame: the full build that each frame makes, and the look
// that a frame of a view drag takes instead. 2,000 partials of 500 points.
#include "display/frame_arrays.h"
#include "display/view.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "store/store.h"

#include <benchmark/benchmark.h>
#include <cmath>

namespace {

constexpr int32_t partial_count = 2000;
constexpr int32_t points_each = 500;
constexpr double point_count = static_cast<double>(partial_count) * points_each;

/// Partials that start over the whole of a minute, sweep and fade, with some points selected.
void fill_large_store() {
    partials = partial_count;
    allocate_counts(partials);
    for (int32_t i = 0; i < partials; ++i) {
        npoints[i] = points_each;
    }
    allocate_points();
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < points_each; ++j) {
            Breakpoint &point = parray[i][j];
            point.time = 0.03f * static_cast<float>(i) + 0.01f * static_cast<float>(j);
            point.freq =
                50.0f + 5.0f * static_cast<float>(i) + std::sin(0.1f * static_cast<float>(j));
            point.amp = -0.2f * static_cast<float>(j) - 0.01f * static_cast<float>(i);
            point.ampunits = 1;
            point.selected = j % 7 == 0 ? 1 : 0;
        }
    }
    regrow_peval();
    recompute_amp(&maxamp, &minamp);
    recompute_times();
    recompute_all_pitch();
    recompute_logfreq();
}

void report(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(point_count));
    state.counters["per_point"] =
        benchmark::Counter(point_count * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// Arguments: flat, logpos, with dots.
void build(benchmark::State &state) {
    flat = static_cast<int32_t>(state.range(0));
    logpos = static_cast<int32_t>(state.range(1));
    FrameArrays arrays;
    build_frame_arrays(arrays, state.range(2) != 0); // the room is taken once, as in the program
    for (auto _ : state) {
        build_frame_arrays(arrays, state.range(2) != 0);
        benchmark::DoNotOptimize(arrays.vertices.data());
        benchmark::ClobberMemory();
    }
    report(state);
}

void reuse(benchmark::State &state) {
    dragging = 1;
    frame_arrays(false);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&frame_arrays(false));
        benchmark::ClobberMemory();
    }
    dragging = 0;
}

} // namespace

BENCHMARK(build)
    ->ArgNames({"flat", "log", "dots"})
    ->Args({0, 0, 0})
    ->Args({0, 1, 0})
    ->Args({1, 0, 1})
    ->Args({1, 1, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(reuse);

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    fill_large_store();
    benchmark::RunSpecifiedBenchmarks();
    free_store();
    return 0;
}
