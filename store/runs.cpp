#include "store/runs.h"

int32_t run_length(const SelectedRun &run) {
    return run.last - run.first + 1;
}

namespace {

bool goes_on(const Breakpoint &point, const RunRule &rule) {
    return point.selected == 1 || (point.selected != 0 && !rule.only_ones);
}

} // namespace

bool next_run(const Breakpoint *points, int32_t n, int32_t i, int32_t from, const RunRule &rule,
              SelectedRun &run) {
    int32_t j = from;
    while (j < n) {
        if (points[j].selected != 1) {
            ++j;
            continue;
        }
        const int32_t first = j;
        while (j < n && goes_on(points[j], rule)) {
            ++j;
        }
        const int32_t fewest = j == n ? rule.at_end : rule.inside;
        if (j - first >= fewest || (rule.single && n == 1)) {
            run = {i, first, j - 1};
            return true;
        }
    }
    return false;
}

std::vector<SelectedRun> selected_runs(Breakpoint *const *points, const int32_t *counts,
                                       int32_t count, const RunRule &rule) {
    std::vector<SelectedRun> runs;
    for (int32_t i = 0; i < count; ++i) {
        SelectedRun run = {i, 0, -1};
        while (next_run(points[i], counts[i], i, run.last + 1, rule, run)) {
            runs.push_back(run);
        }
    }
    return runs;
}
