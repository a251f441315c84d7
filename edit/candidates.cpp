#include "edit/candidates.h"

#include "store/runs.h"
#include "store/slots.h"

#include <algorithm>
#include <cstdio>

namespace {

void set_counts(const Candidates &candidates, int32_t copies, int32_t first) {
    int32_t m = first;
    for (const Candidate &candidate : candidates) {
        for (int32_t l = 0; l < copies; ++l) {
            npoints[m++] = candidate_length(candidate);
        }
    }
}

} // namespace

Candidates find_candidates() {
    Candidates candidates;
    for (const SelectedRun &run : selected_runs(parray, npoints, partials, generating_run)) {
        candidates.push_back({run.partial, run.first, run.last});
    }
    std::printf("%d source candidates\n", count_of(candidates));
    return candidates;
}

void print_candidates(const Candidates &candidates) {
    for (int32_t k = 0; k < count_of(candidates); ++k) {
        const Candidate &candidate = candidates[static_cast<size_t>(k)];
        std::printf("Candidate [%d]:\t ord_num =%d\tfirst_point =%d\tlast_point =%d\n", k,
                    candidate.ord_num, candidate.first_point, candidate.last_point);
    }
}

int32_t count_of(const Candidates &candidates) {
    return static_cast<int32_t>(candidates.size());
}

int32_t candidate_length(const Candidate &candidate) {
    return candidate.last_point - candidate.first_point + 1;
}

bool may_copy(const Candidates &candidates, int32_t copies) {
    int64_t points = 0;
    for (const Candidate &candidate : candidates) {
        points += int64_t{candidate_length(candidate)} * copies;
    }
    if (points > most_new_points) {
        std::fprintf(stderr, "Quillgrove: %lld new points exceed the limit of %lld\n",
                     static_cast<long long>(points), static_cast<long long>(most_new_points));
        return false;
    }
    return true;
}

int32_t append_partials(const Candidates &candidates, int32_t copies, bool trace) {
    const int32_t first = partials;
    const int32_t extra = count_of(candidates) * copies;
    grow_slots(extra);
    set_counts(candidates, copies, first);
    partials += extra;
    for (int32_t i = 0; trace && i < partials; ++i) {
        std::printf("npoints[%d] = %d\n", i, npoints[i]);
    }
    for (int32_t m = first; m < partials; ++m) {
        parray[m] = new_points(npoints[m]);
        if (trace) {
            std::printf("m = %d\tnpoints[%d] = %d\n", m, m, npoints[m]);
        }
    }
    // Clearing a selection and the range of pitch both write a summary for every partial, so
    // the records come with the partials. Spare ones may hold what a dropped partial left.
    regrow_peval();
    std::fill(peval + first, peval + partials, PartialEval{});
    return first;
}
