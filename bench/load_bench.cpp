// Loading a partials list of 1,000,000 points: the reader of the program against the plain way,
// both from the file on disk with the page cache warm. Ends with status 1 when the stores differ
// or the reader takes more than a fifth of the plain time.

#include "bench/plain_list.h"
#include "examples/material.h"
#include "import/afile.h"
#include "store/evaluate.h"
#include "store/progress.h"
#include "store/slots.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

constexpr int list_partials = 2000;
constexpr int list_points = 500; // each
constexpr double wanted_ratio = 5.0;
constexpr int repetitions = 3; // the best one counts, as other work may disturb one

std::string list_name;

/// Sends standard output to nowhere for as long as it lives: the passes print.
class Silence {
  public:
    Silence() : kept(dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~Silence() {
        std::fflush(stdout);
        dup2(kept, STDOUT_FILENO);
        close(kept);
    }
    Silence(const Silence &) = delete;
    Silence &operator=(const Silence &) = delete;

  private:
    int kept;
};

void write_material() {
    char name[] = "/tmp/quillgrove-load-XXXXXX";
    FILE *file = fdopen(mkstemp(name), "w");
    write_large_list(file, list_partials, list_points);
    std::fclose(file);
    list_name = name;
}

/// The passes as the program runs them at its start.
bool load_ours(const char *name) {
    TokenFile file;
    if (!open_tokens(file, name) || detect_filetype(file) != lisp_list) {
        return false;
    }
    Progress progress("Reading", file.size);
    file.progress = &progress;
    int32_t kept = 0;
    visit_ptfile(file, &partials);
    const int32_t room = ptfile_room(file, partials);
    allocate_counts(room);
    allocate_index(room);
    if (revisit_ptfile(file, &partials, npoints, xarray, &kept) == -1) {
        return false;
    }
    rescan_ptfile(file, &partials, npoints);
    allocate_points();
    import_ptfile(file, &partials, npoints, &maxamp, &minfreq, &maxfreq);
    sanityCheck();
    close_tokens(file);
    return true;
}

void free_ours() {
    free_store();
    reset_store_globals();
}

bool equal_stores(const PlainStore &plain) {
    if (static_cast<size_t>(partials) != plain.counts.size() || maxamp != plain.maxamp ||
        minfreq != plain.minfreq || maxfreq != plain.maxfreq) {
        return false;
    }
    for (int32_t i = 0; i < partials; ++i) {
        const size_t at = static_cast<size_t>(i);
        if (npoints[i] != plain.counts[at] || xarray[i].index != plain.index[at].index ||
            std::memcmp(parray[i], plain.points[at],
                        static_cast<size_t>(npoints[i]) * sizeof(Breakpoint)) != 0) {
            return false;
        }
    }
    return true;
}

bool both_agree() {
    const Silence silence;
    reset_store_globals();
    PlainStore plain;
    const bool agree =
        load_ours(list_name.c_str()) && load_plain(list_name.c_str(), plain) && equal_stores(plain);
    free_ours();
    free_plain(plain);
    return agree;
}

void plain_load(benchmark::State &state) {
    const Silence silence;
    for (auto _ : state) {
        PlainStore store;
        load_plain(list_name.c_str(), store);
        state.PauseTiming();
        free_plain(store);
        state.ResumeTiming();
    }
}
BENCHMARK(plain_load)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(repetitions);

void our_load(benchmark::State &state) {
    const Silence silence;
    for (auto _ : state) {
        load_ours(list_name.c_str());
        state.PauseTiming();
        free_ours();
        state.ResumeTiming();
    }
}
BENCHMARK(our_load)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(repetitions);

/// Keeps the best time of either side as it reports them.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run> &runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                const bool plain = run.benchmark_name().starts_with("plain");
                keep(plain ? plain_time : our_time, run.GetAdjustedRealTime());
            }
        }
    }

    double plain_time = 0.0; // 0 until it is known
    double our_time = 0.0;

  private:
    static void keep(double &best, double time) {
        best = best == 0.0 ? time : std::min(best, time);
    }
};

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    write_material();
    if (!both_agree()) {
        std::fputs("The two stores differ.\n", stderr);
        unlink(list_name.c_str());
        return EXIT_FAILURE;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    unlink(list_name.c_str());
    if (reporter.our_time == 0.0 || reporter.plain_time == 0.0) {
        return EXIT_SUCCESS; // one side was filtered out
    }
    const double ratio = reporter.plain_time / reporter.our_time;
    std::printf("plain / ours = %.1f, at least %.1f wanted\n", ratio, wanted_ratio);
    return ratio >= wanted_ratio ? EXIT_SUCCESS : EXIT_FAILURE;
}
