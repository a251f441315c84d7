#include "edit/generate.h"

#include "edit/candidates.h"
#include "edit/decay.h"
#include "edit/multipliers.h"
#include "interact/clear.h"
#include "interact/selection.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "store/store.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr int32_t most_harmonics = 511;
constexpr int32_t most_primes = 20;

/// Where the new partials of each candidate take their factors.
struct Voices {
    const FactorTable *freq; // the one of voice l is element l + freq_shift
    int64_t freq_shift;      //
    float order;             // divisor of its frequency
    const FactorTable *afac; // the one of voice l is element l + afac_shift
    int64_t afac_shift;      //
    int32_t count;           // new partials per candidate
};

// --- making ------------------------------------------------------------------------------------

/// Fills partial m, as long as its source, as voice l of the candidate.
void fill_voice(const Candidate &candidate, const Voices &voices, int32_t l, int32_t m) {
    const float times = factor_at(*voices.freq, l + voices.freq_shift);
    const float afac = factor_at(*voices.afac, l + voices.afac_shift);
    std::printf("m = %d\n", m);
    std::printf("l = %d\t r = %d\tafac = %f\n", l, voices.count, afac);
    const double level = amp2db(afac);
    const Breakpoint *source = parray[candidate.ord_num] + candidate.first_point;
    for (int32_t j = 0; j < npoints[m]; ++j) {
        parray[m][j].time = source[j].time;
        parray[m][j].freq = source[j].freq * times / voices.order;
        parray[m][j].amp = static_cast<float>(source[j].amp + level);
    }
}

/// Appends the partials and fills them; returns the number of the first.
int32_t make_partials(const Candidates &candidates, const Voices &voices) {
    const int32_t made = count_of(candidates) * voices.count;
    std::printf("%d source candidates\n", count_of(candidates));
    std::printf("%d new partials per candidate\n", voices.count);
    std::printf("Old partials: %d\tNew partials: %d\n", partials, made);
    const int32_t first = append_partials(candidates, voices.count, true);
    std::printf("OLD: %d\tGENERATED: %d\tNEW: %d\n", first, made, partials);
    int32_t m = first;
    for (const Candidate &candidate : candidates) {
        for (int32_t l = 0; l < voices.count; ++l) {
            fill_voice(candidate, voices, l, m++);
        }
    }
    return first;
}

/// The new partials, from number `first` on, become the selection; in the flat view alone.
void select_made(int32_t first) {
    deselect_all();
    for (int32_t m = first; m < partials; ++m) {
        for (int32_t j = 0; j < npoints[m]; ++j) {
            parray[m][j].selected = 1;
            if (dbp != 0) {
                std::printf("freq[%d][%d] = %f\n", m, j, parray[m][j].freq);
            }
        }
    }
    declare_selected();
}

void refresh() {
    recompute_all_pitch();
    recompute_logfreq();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
}

// --- series ------------------------------------------------------------------------------------

int32_t any_order(int32_t) {
    return 1;
}

int32_t harmonic(int32_t k) {
    return k + 1;
}

int32_t even_harmonic(int32_t k) {
    return 2 * (k + 1);
}

int32_t odd_harmonic(int32_t k) {
    return 2 * k + 1;
}

/// One kind of series.
struct Series {
    char type;
    int32_t (*accepts)(int32_t order);
    const char *refusal;
    int32_t (*member)(int32_t k);
    bool of_primes; // short, and its members are printed
};

const Series all_series[] = {
    {'a', any_order, "", harmonic, false},
    {'e', is_it_even, "Source partial's order isn't an even number", even_harmonic, false},
    {'o', is_it_odd, "Source partial's order isn't an odd number", odd_harmonic, false},
    {'p', is_it_prime, "Source partial's order isn't a prime number", prime, true},
};

const Series *series_of(const char *type) {
    for (const Series &series : all_series) {
        if (type[0] == series.type && type[1] == '\0') {
            return &series;
        }
    }
    return nullptr;
}

/// Members 0 to number + order - 1, as far as the table goes.
void fill_series(const Series &series, int32_t number, int32_t order, FactorTable &ffac) {
    const int64_t members = std::min<int64_t>(int64_t{number} + order, factor_room);
    for (int32_t k = 0; k < members; ++k) {
        const float factor = static_cast<float>(series.member(k));
        add_factor(ffac, factor);
        if (series.of_primes) {
            std::printf("ffac[%d] = %f\n", k, factor);
        }
    }
}

/// Fills both tables for this series; false with a message when an argument is refused.
bool fill_tables(const char *type, int32_t order, const char *decay, int32_t &number,
                 FactorTable &ffac, FactorTable &afac) {
    const Series *series = series_of(type);
    if (series == nullptr) {
        std::puts("Order must be a non-zero positive integer");
        return false;
    }
    number = series->of_primes ? std::clamp(number, 1, most_primes) : std::max(number, 0);
    if (series->accepts(order) == 0) {
        std::puts(series->refusal);
        return false;
    }
    fill_series(*series, number, order, ffac);
    return decay_of_harmonics(decay, ffac, afac);
}

} // namespace

void arbitrary_partials(const char *line) {
    if (dbp != 0) {
        std::printf("received: %s\n", line);
    }
    const MultiplierLine read = read_multipliers(line);
    const FactorTable &multipliers = read.multipliers;
    std::printf("New partials per candidate: %d\n", multipliers.count);
    if (verbose != 0) {
        for (int32_t k = 0; k < multipliers.count; ++k) {
            std::printf("Freq. multiplyer%d = %f\n", k + 1, multipliers.values[k]);
        }
        std::printf("amp. envelope = %s\n", read.law);
    }
    FactorTable afac = {};
    decay_of_multipliers(read.law, multipliers, afac);
    std::putchar('\n');
    const Candidates candidates = find_candidates();
    print_candidates(candidates);
    if (!may_copy(candidates, multipliers.count)) {
        return;
    }
    const int32_t first =
        make_partials(candidates, {&multipliers, 0, 1.0f, &afac, 0, multipliers.count});
    // Selected before the refresh, which derives phases for selected partials alone.
    select_made(first);
    refresh();
    for (int32_t i = 0; dbp != 0 && i < partials; ++i) {
        std::printf("#[%d]:\t%d points\n", i, npoints[i]);
    }
}

void artificial_harmonics(const int32_t *number, const char *type, const int32_t *order,
                          const char *decay) {
    if (*number > most_harmonics) {
        std::puts("Maximum of 511 new harmonics exceeded!");
        return;
    }
    const Candidates candidates = find_candidates();
    print_candidates(candidates);
    int32_t count = *number;
    FactorTable ffac = {};
    FactorTable afac = {};
    if (!fill_tables(type, *order, decay, count, ffac, afac) || !may_copy(candidates, count)) {
        return;
    }
    std::putchar('\n');
    const int64_t shift = *order;
    const int32_t first = make_partials(
        candidates, {&ffac, shift, static_cast<float>(*order), &afac, shift - 1, count});
    // Selected after the refresh: the new partials keep their phases of 0, and the sources, still
    // selected, have theirs derived.
    refresh();
    select_made(first);
}

void clear_string(char *s, int32_t n) {
    if (n > 0) {
        std::memset(s, 0, static_cast<size_t>(n));
    }
}
