#include "store/evaluate.h"

#include "store/phase.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "store/slots.h"
#include "toolbox/auxmath3d.h"

#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

namespace {

/// The counts of the amplitude tests; 16 bits wide, so they compare modulo 65536.
struct AmpCounts {
    uint16_t points;
    uint16_t not_negative;
};

AmpCounts count_amps(Breakpoint *const *points, const int32_t *counts, int32_t n) {
    AmpCounts result = {0, 0};
    for (int32_t i = 0; i < n; ++i) {
        for (int32_t j = 0; j < counts[i]; ++j) {
            ++result.points;
            if (points[i][j].amp >= 0.0f) {
                ++result.not_negative;
            }
        }
    }
    return result;
}

bool all_linear(AmpCounts counts) {
    return counts.points == counts.not_negative && counts.points != 0;
}

/// Mean amplitude as evalpart takes it: over all points but the last, for linear data raised to
/// an integer quotient that is 0 for any longer partial.
float mean_amp(const Breakpoint *points, int32_t n) {
    if (points[0].ampunits == 1) {
        float sum = 0.0f;
        for (int32_t j = 0; j < n - 1; ++j) {
            sum += points[j].amp;
        }
        return sum / static_cast<float>(n);
    }
    float product = 1.0f;
    for (int32_t j = 0; j < n - 1; ++j) {
        product *= points[j].amp;
    }
    return static_cast<float>(std::pow(product, 1 / n));
}

void convert_amps(Breakpoint *const *points, const int32_t *counts, int32_t n) {
    for (int32_t i = 0; i < n; ++i) {
        for (int32_t j = 0; j < counts[i]; ++j) {
            points[i][j].amp = static_cast<float>(amp2db(points[i][j].amp));
        }
    }
}

/// A partial on its way to its new place.
struct Survivor {
    int32_t source; // where it stood
    bool moved;     // its phases are derived anew
};

/// What is left of the store behind the partial that the walk from its end has reached, the last
/// partial first. Taking an empty partial out moves all but the last of them down one place; the
/// last is lost and the one before it stands twice. That costs the same for any number of them.
struct Tail {
    std::vector<Survivor> survivors;
    size_t moved = 0; // those from 1 up to here were moved

    void drop(int32_t k) {
        const size_t n = survivors.size();
        if (dbp) {
            std::printf("k = %d\n", k);
            for (size_t i = 0; i + 1 < n; ++i) {
                std::printf("Compacting partial # %4d\n", k + static_cast<int32_t>(i));
            }
        }
        if (n >= 2) {
            survivors[0] = {survivors[1].source, moved > 1};
            moved = n;
        } else if (n == 1) {
            survivors[0] = {k, false}; // no place to move to: the empty one stays
        }
    }
};

Tail walk_from_end() {
    Tail tail;
    for (int32_t k = partials - 1; k >= 0; --k) {
        if (npoints[k] < 1) {
            tail.drop(k);
        } else {
            tail.survivors.push_back({k, false});
        }
    }
    for (size_t i = 1; i < tail.moved; ++i) {
        tail.survivors[i].moved = true;
    }
    return tail;
}

/// Brings the store down to the survivors.
void settle(const std::vector<Survivor> &survivors) {
    const size_t n = survivors.size();
    std::vector<Breakpoint *> points(n);
    std::vector<int32_t> counts(n);
    for (size_t i = 0; i < n; ++i) {
        const int32_t source = survivors[i].source;
        const bool twice = i == 0 && n > 1 && survivors[1].source == source;
        const size_t place = n - 1 - i;
        counts[place] = npoints[source];
        points[place] = twice ? clone_points(parray[source], npoints[source]) : parray[source];
        parray[source] = twice ? parray[source] : nullptr;
        if (survivors[i].moved) {
            chain_phases(points[place], counts[place]);
        }
    }
    for (int32_t i = 0; i < partials; ++i) {
        const size_t place = static_cast<size_t>(i);
        free_points(parray[i]);
        parray[i] = place < n ? points[place] : nullptr;
        npoints[i] = place < n ? counts[place] : 0;
    }
    partials = static_cast<int32_t>(n);
}

} // namespace

int32_t global_parameters(Breakpoint ***points, const int32_t *count, int32_t **counts,
                          float *start, float *end, float *high, float *low, float *octaves,
                          float *span, float *nepers, float *loudest, float *, float *interval,
                          float *oldhigh, float *oldlow) {
    if (count == nullptr || *count < 1) {
        std::puts("No valid partials to import: quitting program");
        return -1;
    }
    int64_t total = 0;
    bool first = true;
    for (int32_t i = 0; i < *count; ++i) {
        const int32_t n = (*counts)[i];
        if (n < 1) {
            continue;
        }
        const float head = (*points)[i][0].time;
        const float tail = (*points)[i][n - 1].time;
        *start = first || head < *start ? head : *start;
        *end = first || tail > *end ? tail : *end;
        first = false;
        total += n;
    }
    *span = *high / *low;
    *oldhigh = *high;
    *oldlow = *low;
    std::printf("snd. start = %f\tsnd.length = %7.3f\n", *start, *end);
    std::printf("max. freq. = %8.2f\tmin. freq. = %8.2f\n", *high, *low);
    std::printf("max. amp.  = %8.3f dB\n", *loudest);
    *nepers = std::log(*high / *low);
    *octaves = static_cast<float>(*nepers / ln_2);
    recompute_logfreq();
    *interval = 0.0f;
    for (int32_t i = 0; i < *count; ++i) {
        for (int32_t j = 1; j < (*counts)[i]; ++j) {
            *interval += (*points)[i][j].time - (*points)[i][j - 1].time;
        }
    }
    *interval /= static_cast<float>(total - *count);
    std::printf("Mean time interval between points = %f\n", *interval);
    return 0;
}

void check_import_sanity() {
    for (int32_t k = partials - 1; k >= 0; --k) {
        if (npoints[k] < 1) {
            std::printf("Corrupt partial[%d] with %d points\n", k, npoints[k]);
        }
    }
    settle(walk_from_end().survivors);
    std::puts("All corrupt partials removed");
}

void sanityCheck() {
    for (int32_t i = 0; i < partials; ++i) {
        Breakpoint *points = parray[i];
        for (int32_t j = 0; j <= npoints[i] - 2; ++j) {
            if (points[j + 1].time < points[j].time) {
                std::swap(points[j + 1].time, points[j].time);
                std::putchar('*');
            }
        }
    }
    std::putchar('\n');
}

int32_t ampcheck(Breakpoint **points, const int32_t *counts, int32_t n) {
    if (n < 1) {
        return 1;
    }
    const bool linear = all_linear(count_amps(points, counts, n));
    for (int32_t i = 0; i < n; ++i) {
        for (int32_t j = 0; j < counts[i]; ++j) {
            points[i][j].ampunits = linear ? 0 : 1;
        }
    }
    return linear ? 0 : 1;
}

void ampconvert(Breakpoint **points, const int32_t *counts, int32_t n) {
    if (!all_linear(count_amps(points, counts, n))) {
        return;
    }
    convert_amps(points, counts, n);
    for (int32_t i = 0; i < n; ++i) {
        for (int32_t j = 0; j < counts[i]; ++j) {
            points[i][j].ampunits = 1;
        }
    }
}

void evalpart(Breakpoint **points, const int32_t *counts) {
    std::puts("//EVALUATION OF PARTIALS' PARAMETERS");
    if (ampcheck(points, counts, partials) == 0) {
        // The units stay 0 here: mean_amp tells by them that the file's data were linear.
        convert_amps(points, counts, partials);
    }
    allocate_peval_exactly();
    averages(partials, counts, points, peval);
    for (int32_t i = 0; i < partials; ++i) {
        peval[i].avgamp = counts[i] > 0 ? mean_amp(points[i], counts[i]) : 0.0f;
        peval[i].reserved1 = 0;
        peval[i].reserved2 = 0;
        peval[i].spare1 = static_cast<float>(i);
        peval[i].spare2 = 0.0f;
    }
}

float average(Breakpoint *const *points, const int32_t *counts, int32_t i) {
    float sum = 0.0f;
    for (int32_t j = 0; j < counts[i]; ++j) {
        sum += points[i][j].freq;
    }
    return sum / static_cast<float>(counts[i]);
}
