#include "edit/replicate.h"

#include "edit/candidates.h"
#include "interact/clear.h"
#include "interact/selection.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "store/store.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

bool starts_with(const char *word, const char *head) {
    return std::strncmp(word, head, std::strlen(head)) == 0;
}

/// Reads the time to paste at, in seconds. A text that is no number is a time of 0, refused; not
/// a number in floating point passes every test and gives copies without a time.
bool read_destination(const char *word, float &time) {
    const float end = sndlen + meant;
    time = starts_with(word, "-1") ? end : static_cast<float>(std::atof(word));
    if (time <= 0.0f && !starts_with(word, "0.")) {
        std::printf("Bad value for time: %s\n", word);
        return false;
    }
    if (time > end) {
        time = end;
    }
    return true;
}

float earliest_start(const Candidates &candidates) {
    float earliest = sndlen;
    for (const Candidate &candidate : candidates) {
        const float start = parray[candidate.ord_num][candidate.first_point].time;
        if (start < earliest) {
            earliest = start;
        }
    }
    return earliest;
}

/// The whole part of a log position, 1 for the highest frequency; outside the type's range, and
/// for what is no number, the nearest value that it has.
uint16_t whole_position(float logfreq) {
    if (!(logfreq >= 1.0f)) {
        return 0;
    }
    return logfreq < 65536.0f ? static_cast<uint16_t>(logfreq) : uint16_t{UINT16_MAX};
}

/// The unit switch takes the log position, a slip that nothing but the unit test notices.
Breakpoint pasted(const Breakpoint &source, float time, float earliest) {
    Breakpoint point = {};
    point.time = source.time + time - earliest;
    point.freq = source.freq;
    point.amp = source.amp;
    point.logfreq = source.logfreq;
    point.ampunits = whole_position(source.logfreq);
    point.selected = 1;
    return point;
}

void print_times(int32_t first) {
    for (int32_t m = first; m < partials; ++m) {
        for (int32_t j = 0; j < npoints[m]; ++j) {
            std::printf("time[%d][%d] = %f\n", m, j, parray[m][j].time - sndstart);
        }
        std::putchar('\n');
    }
}

/// Fills the partials from number `first` on, one for each candidate.
void paste(const Candidates &candidates, int32_t first, float time, float earliest) {
    int32_t m = first;
    for (const Candidate &candidate : candidates) {
        const Breakpoint *source = parray[candidate.ord_num] + candidate.first_point;
        for (int32_t j = 0; j < npoints[m]; ++j) {
            parray[m][j] = pasted(source[j], time, earliest);
        }
        ++m;
    }
}

} // namespace

void replicate_selections(const char *word) {
    std::printf("sndlen = %f\n", sndlen);
    float time;
    if (!read_destination(word, time)) {
        return;
    }
    std::printf("Paste replica @: %f secs.\n", time);
    const Candidates candidates = find_candidates();
    if (verbose != 0) {
        print_candidates(candidates);
    }
    if (!may_copy(candidates, 1)) {
        return;
    }
    const int32_t first = append_partials(candidates, 1, dbp != 0);
    const float earliest = earliest_start(candidates);
    if (dbp != 0) {
        std::printf("T = %f\n", earliest);
    }
    deselect_all();
    paste(candidates, first, time, earliest);
    declare_selected();
    recompute_times();
    recompute_all_pitch();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
    if (dbp != 0) {
        print_times(first);
    }
}
