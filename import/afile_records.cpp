// From the records of interactive reading to the store: frequencies by ratio from the lowest,
// levels and durations scaled to the envelope's, one curve of level for each partial.

#include "import/afile_interactive.h"

#include "store/console.h"
#include "store/phase.h"
#include "store/settings.h"
#include "store/slots.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

constexpr int64_t most_points = 1 << 23; // 235 MB of points

/// The records with what the whole of them shares.
struct Plan {
    PhRecord *ph;
    Envelope envelope;
    int32_t pts;       // points of a partial that lasts for the whole duration
    float step;        // seconds between two points
    float ratio;       // of the store's frequencies to the records'
    PhRecord *pattern; // the first record that holds values; null for none
};

bool has(const PhRecord &record, char letter) {
    return std::memchr(record.tag, letter, strnlen(record.tag, sizeof record.tag)) != nullptr;
}

/// Calls `work` with the number of each record that holds values and with the record.
template <class Work> void for_each_filled(PhRecord *ph, const Work &work) {
    for (int32_t i = 0; i < most_records; ++i) {
        if (ph[i].index > 0) {
            work(i, ph[i]);
        }
    }
}

/// The largest of one value over the records of several values, at least 0.
float largest_value(PhRecord *ph, int value) {
    float largest = 0.0f;
    for_each_filled(ph, [&](int32_t, const PhRecord &record) {
        if (record.index > 1 && record.value[value] > largest) {
            largest = record.value[value];
        }
    });
    return largest;
}

/// How many points there are in so many seconds: toward zero, held far within the type. The
/// product is of single precision, so that 0.7 seconds of 10 points each are 7.
int32_t points_in(const Envelope &envelope, float seconds) {
    constexpr float limit = 2e9f;
    const float points = static_cast<float>(envelope.pps) * seconds;
    return std::isnan(points) ? 0 : static_cast<int32_t>(std::clamp(points, -limit, limit));
}

/// What the records' frequencies are multiplied by: asks for the lowest one where theirs can
/// only be a ratio.
float ask_ratio(PhRecord *ph) {
    constexpr float lowest_audible = 16.0f; // Hz
    float low = 22050.0f;
    for_each_filled(ph, [&](int32_t, const PhRecord &record) {
        low = record.value[0] < low ? record.value[0] : low;
    });
    float target = low;
    if (low < lowest_audible) {
        std::printf("Minimal detected frequency of %4.2f Hz is a subsonic\n", low);
        std::puts("frequency and probably represents only a harmonic ratio.");
        std::fputs("Enter a desired lowest partial's frequency: ", stdout);
        static_cast<void>(read_float(target));
        std::printf("%f\n", target);
    }
    return target / low;
}

void scale_durations(const Plan &plan) {
    const float longest = largest_value(plan.ph, 2);
    if (longest <= 0.0f) {
        return; // they stay 0
    }
    for_each_filled(plan.ph, [&](int32_t i, PhRecord &record) {
        if (record.index > 1) {
            record.value[2] = record.value[2] * plan.envelope.dur / longest;
            std::printf("scaled dur.[%d] = %f\n", i, record.value[2]);
        }
    });
}

/// Levels in dB: below `maxamp` where any is negative, else from linear ones with the peak there.
void scale_levels(const Plan &plan) {
    bool attenuations = false;
    for_each_filled(plan.ph, [&](int32_t, const PhRecord &record) {
        attenuations = attenuations || (record.index > 1 && record.value[1] < 0.0f);
    });
    const float largest = largest_value(plan.ph, 1);
    for_each_filled(plan.ph, [&](int32_t, PhRecord &record) {
        if (attenuations) {
            record.value[1] = maxamp - record.value[1];
        } else if (record.index > 1) {
            record.value[1] =
                static_cast<float>(amp2db(db2amp(maxamp) / largest * record.value[1]));
        }
    });
}

/// The point count of a record. A duration of too few points is lengthened.
int32_t points_of(const Plan &plan, PhRecord &record) {
    constexpr int32_t fewest = 3;
    if (!has(*plan.pattern, 'd')) {
        return plan.pts;
    }
    const int32_t n = points_in(plan.envelope, record.value[2]) + 1;
    if (n >= fewest) {
        return n;
    }
    record.value[2] = static_cast<float>(record.value[2] * 3.0 / n);
    return fewest;
}

/// Fills npoints; false where they come to too many.
bool count_points(const Plan &plan) {
    int32_t part = 0;
    int64_t total = 0;
    for_each_filled(plan.ph, [&](int32_t, PhRecord &record) {
        npoints[part] = points_of(plan, record);
        total += npoints[part];
        std::printf("npoints[%d] = %d\n", part, npoints[part]);
        ++part;
    });
    if (total > most_points) {
        std::fputs("Quillgrove: too many points\n", stderr);
        std::fill_n(npoints, partials, 0);
        return false;
    }
    return true;
}

void allocate_silence() {
    allocate_index(partials);
    for (int32_t i = 0; i < partials + spare_partials; ++i) {
        xarray[i] = {i, 0};
    }
    allocate_points();
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].amp = -140.0f;
        }
    }
}

/// The level of point j of n, shaped at the partial's ends.
float level_at(const Plan &plan, const PhRecord &record, int32_t j, int32_t n) {
    const float base = has(record, 'a') ? record.value[1] : maxamp;
    const float decay = plan.envelope.decay;
    float amp = base - static_cast<float>(j) * decay * plan.step;
    if (has(record, 'd') && decay < 0.0f) {
        amp = static_cast<float>(base - (base + 100.0) * j / n);
    }
    if (j == 0) {
        return amp - 6.0f;
    }
    if (j == n - 2 && amp > -72.0f) {
        return -72.0f;
    }
    return j == n - 1 ? -100.0f : amp;
}

void fill_partial(const Plan &plan, const PhRecord &record, int32_t part) {
    Breakpoint *points = parray[part];
    const int32_t n = npoints[part];
    for (int32_t j = 0; j < n; ++j) {
        Breakpoint &point = points[j];
        const float time = static_cast<float>(j) * plan.step;
        if (!has(record, 'd') || time <= record.value[2]) {
            point.time = time;
        }
        point.freq = plan.ratio * record.value[0];
        minfreq = point.freq < minfreq ? point.freq : minfreq;
        maxfreq = point.freq > maxfreq ? point.freq : maxfreq;
        point.amp = level_at(plan, record, j, n);
        point.ampunits = 1;
        point.selected = 0;
    }
    chain_phases(points, n);
}

void tell_plan(const Plan &plan) {
    std::printf("#%d, pps=%d, pts = %d, dur=%5.2f, a=%5.2f", partials, plan.envelope.pps, plan.pts,
                plan.envelope.dur, maxamp);
    if (plan.envelope.decay < 0.0f) {
        std::puts(" full decay");
    } else {
        std::printf(" %4.1f\n", plan.envelope.decay);
    }
}

Plan plan_of(PhRecord *ph, const Envelope &envelope) {
    Plan plan = {};
    plan.ph = ph;
    plan.envelope = envelope;
    plan.pts = points_in(envelope, envelope.dur);
    plan.step = envelope.dur / static_cast<float>(plan.pts);
    plan.pattern = std::find_if(ph, ph + most_records,
                                [](const PhRecord &record) { return record.index > 0; });
    return plan;
}

} // namespace

int32_t build_partials(PhRecord *ph, Envelope envelope) {
    constexpr int32_t too_few = 2;
    Plan plan = plan_of(ph, envelope);
    std::printf("Num. Partials: %d\n", partials);
    allocate_counts(partials);
    std::printf("dur = %f\tfactor = %f\n", static_cast<double>(plan.pts), plan.step);
    plan.ratio = ask_ratio(ph);
    if (plan.pattern->index > 1 && has(*plan.pattern, 'd')) {
        scale_durations(plan);
    }
    if (plan.pattern->index > 1 && has(*plan.pattern, 'a')) {
        scale_levels(plan);
    }
    if (dbp) {
        tell_plan(plan);
    }
    if (plan.pts <= too_few) {
        std::puts("Not enough points - min. 3 per partial");
        return -1;
    }
    if (!count_points(plan)) {
        return -1;
    }
    allocate_silence();
    int32_t part = 0;
    for_each_filled(ph,
                    [&](int32_t, const PhRecord &record) { fill_partial(plan, record, part++); });
    return 0;
}
