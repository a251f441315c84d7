// store/runs.h -- stretches of selected points: the unit of fades, reversals, new partials and
// exports of a selection. Pure; reads the point arrays that it is given and nothing else.
#pragma once

#include "store/store.h"

#include <vector>

/// One stretch of one partial. It begins at a point whose flag equals 1 and goes on through
/// every following point whose flag is not 0, or equals 1 where the rule asks for that.
struct SelectedRun {
    int32_t partial; // number of the partial
    int32_t first;   // index of its first point
    int32_t last;    // index of its last point, inclusive
};

/// How many points a run must have to count, and what ends it.
struct RunRule {
    int32_t inside;         // of a run that ends before the partial's last point
    int32_t at_end;         // of a run that reaches the partial's last point
    bool only_ones = false; // a flag other than 0 and 1 ends a run too
    bool single = false;    // the point of a partial that has no other counts, whatever `at_end`
};

constexpr RunRule every_run = {1, 1};
constexpr RunRule generating_run = {3, 3, true};      // sources of new partials
constexpr RunRule exported_run = {3, 2, false, true}; // exports of a selection

/// Number of points of a run.
int32_t run_length(const SelectedRun &run);

/// The first run of partial `i`, of `n` points, that starts at index `from` or behind it and
/// that the rule accepts. False when there is none, with `run` left as it was. The search for
/// the following run starts at run.last + 1.
bool next_run(const Breakpoint *points, int32_t n, int32_t i, int32_t from, const RunRule &rule,
              SelectedRun &run);

/// Every accepted run of the first `count` partials, in the order of partials and points.
std::vector<SelectedRun> selected_runs(Breakpoint *const *parray, const int32_t *npoints,
                                       int32_t count, const RunRule &rule);
