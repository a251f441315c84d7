// edit/candidates.h -- sources of new partials: the stretches of a selection that commands copy,
// and the slots behind the store that the copies go to. Window thread only.
#pragma once

#include "store/store.h"

#include <vector>

/// One source: at least three consecutive points of one partial, all flagged 1.
struct Candidate {
    int32_t ord_num;     // number of the partial
    int32_t first_point; // index of its first point
    int32_t last_point;  // index of its last point, inclusive
};

/// As many as the store holds, in the order of partials and points.
using Candidates = std::vector<Candidate>;

/// The most points that one command adds; 3.2 GB.
constexpr int64_t most_new_points = 100'000'000;

/// Finds the candidates of the selection and prints their number. Shorter runs are none,
/// wherever they stand.
Candidates find_candidates();

/// One line a candidate.
void print_candidates(const Candidates &candidates);

/// Number of candidates, as printed.
int32_t count_of(const Candidates &candidates);

int32_t candidate_length(const Candidate &candidate);

/// Whether `copies` partials for each candidate stay within most_new_points. Tells on standard
/// error when they don't.
bool may_copy(const Candidates &candidates, int32_t copies);

/// Appends `copies` partials of zero points for each candidate, candidate by candidate, each as
/// long as its source, with summaries to match; raises `partials`. Returns the number of the
/// first. `trace` prints every count of the store and every new array.
int32_t append_partials(const Candidates &candidates, int32_t copies, bool trace);
