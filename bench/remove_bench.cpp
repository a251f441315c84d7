// Removing every second one of 2,000 partials of 500 points: under 50 ms. Beside it the plain
// form, which copies the records of each moved partial and chains its phases at every move.
#include "edit/remove.h"
#include "store/phase.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "store/store.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int32_t partial_count = 2000;
constexpr int32_t point_count = 500; // of each partial
constexpr float hop = 0.01f;         // seconds from point to point

bool wanted(int32_t i) {
    return i % 2 == 0;
}

void build_store(int32_t count) {
    free_store();
    partials = count;
    allocate_counts(partials);
    for (int32_t i = 0; i < partials; ++i) {
        npoints[i] = point_count;
    }
    allocate_points();
    regrow_peval();
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < point_count; ++j) {
            Breakpoint &point = parray[i][j];
            point.time = static_cast<float>(j) * hop;
            point.freq = 100.3f + static_cast<float>(i);
            point.amp = -20.0f;
            point.selected = wanted(i) ? 1 : 0;
        }
    }
}

void remove_plainly() {
    for (int32_t i = partials - 1; i >= 0; --i) {
        if (!has_selected_point(i)) {
            continue;
        }
        for (int32_t k = i; k <= partials - 2; ++k) {
            free_points(parray[k]);
            npoints[k] = npoints[k + 1];
            parray[k] = clone_points(parray[k + 1], npoints[k]);
            chain_phases(parray[k], npoints[k]);
        }
        free_points(parray[partials - 1]);
        parray[partials - 1] = nullptr;
        --partials;
    }
}

/// The words on the console go to /dev/null meanwhile.
void remove_as_built() {
    static FILE *const nowhere = std::fopen("/dev/null", "w");
    FILE *const console = stdout;
    stdout = nowhere;
    remove3d(-1, -1, 1);
    stdout = console;
}

double checksum() {
    double sum = partials;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            sum += double{parray[i][j].freq} * (i + 1) + parray[i][j].phase;
        }
    }
    return sum;
}

/// Both forms leave the same store, on a small one that the plain form can cope with.
void check_agreement() {
    build_store(100);
    remove_plainly();
    const double plain = checksum();
    build_store(100);
    remove_as_built();
    if (checksum() != plain || partials != 50) {
        std::fputs("the two removals disagree\n", stderr);
        std::exit(1);
    }
}

void remove_half(benchmark::State &state, void (*remove)()) {
    for (auto _ : state) {
        state.PauseTiming();
        build_store(partial_count);
        state.ResumeTiming();
        remove();
        benchmark::ClobberMemory();
    }
}

BENCHMARK_CAPTURE(remove_half, as_built, remove_as_built)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(remove_half, plain, remove_plainly)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char **argv) {
    check_agreement();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
