// export/pieces.h -- what an exporter writes out: every partial whole, or the selected runs. The
// writers take either as a list of stretches. Window thread only.
#pragma once

#include "export/new_file.h"
#include "store/runs.h"

#include <vector>

using Pieces = std::vector<SelectedRun>;

/// One stretch a partial, from end to end; of length 0 for a partial without points.
Pieces whole_partials(const int32_t *npoints, int32_t partials);

/// The selected runs, with their number told; where there is none, the two lines that say so.
Pieces exported_runs(Breakpoint *const *parray, const int32_t *npoints, int32_t partials);

/// Tells the fields of a run on the console.
void tell_run(const SelectedRun &run);

/// A stretch in memory.
struct Piece {
    const Breakpoint *points;
    int32_t n;
    float start; // seconds; 0 without points
    float end;   // seconds; 0 without points
    float phase; // radians, of the first point; 0 without points
};
Piece piece_of(Breakpoint *const *parray, const SelectedRun &run);

/// A line of the point's time (seconds), its frequency (Hz) and `level`, in the unit that the
/// format has, to three decimals each.
void write_point(NewFile &file, const Breakpoint &point, float level);
