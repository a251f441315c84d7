#include "export/pieces.h"

#include <cstdio>

Pieces whole_partials(const int32_t *counts, int32_t count) {
    Pieces pieces;
    for (int32_t i = 0; i < count; ++i) {
        pieces.push_back({i, 0, counts[i] - 1});
    }
    return pieces;
}

Pieces exported_runs(Breakpoint *const *points, const int32_t *counts, int32_t count) {
    Pieces runs = selected_runs(points, counts, count, exported_run);
    std::printf("Number of candidates: %d\n", static_cast<int>(runs.size()));
    if (runs.empty()) {
        std::puts("Selection doesn't meet criteria");
        std::puts("Program found nothing to export");
    }
    return runs;
}

void tell_run(const SelectedRun &run) {
    std::printf("x1= %d\treturned= %d\ty0= %d\ty1= %d\n", run.partial, run.partial, run.first,
                run.last);
}

Piece piece_of(Breakpoint *const *points, const SelectedRun &run) {
    const int32_t n = run_length(run);
    if (n < 1) {
        return {nullptr, 0, 0.0f, 0.0f, 0.0f};
    }
    const Breakpoint *first = points[run.partial] + run.first;
    return {first, n, first->time, first[n - 1].time, first->phase};
}

void write_point(NewFile &file, const Breakpoint &point, float level) {
    file.text.fixed(point.time, 9, 3);
    file.text.put("\t");
    file.text.fixed(point.freq, 9, 3);
    file.text.put("\t");
    file.text.fixed(level, 9, 3);
    file.text.put("\n");
    file.drain();
}
