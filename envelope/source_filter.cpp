#include "envelope/source_filter.h"

#include "envelope/lpcf.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <span>

namespace {

/// Where a point lies between two frames: elements j and j + 1 around its frequency.
struct Place {
    const LpcRecord *a0, *a1; // of the earlier frame
    const LpcRecord *b0, *b1; // of the later one
    double u;                 // 0 at the earlier frame, 1 at the later
    double w;                 // share of the upper element
};

double between(double a, double b, double u) {
    return a + (b - a) * u;
}

/// 0 where nothing can be divided by.
double ratio(double a, double b) {
    return b == 0.0 ? 0.0 : a / b;
}

double linear_level(const Place &at, double amp, float power) {
    const double r0 = ratio(at.b0->amp, at.a0->amp);
    const double r1 = ratio(at.b1->amp, at.a1->amp);
    const double e0 = at.a0->amp * (r0 * at.u + 1);
    const double e1 = ratio((r1 * at.u + 1) * at.b1->amp, e0);
    return (at.w * e1 + 1) * powf(static_cast<float>(amp * 0.25), power) * e0;
}

double db_level(const Place &at, double amp, float power) {
    const double lowamp = between(at.a0->amp, at.b0->amp, at.u);
    const double highamp = between(at.a1->amp, at.b1->amp, at.u);
    return (highamp - lowamp) * at.w + lowamp + amp * power - 12.0;
}

void filter_point(Breakpoint &point, LpcFrame a, LpcFrame b, double u, bool in_db, float power) {
    const double f = point.freq;
    for (int32_t j = 1; j < lpoints; ++j) {
        const double lo = between(a[j]->freq, b[j]->freq, u);
        const double hi = between(a[j + 1]->freq, b[j + 1]->freq, u);
        if (!(lo <= f && f <= hi)) {
            continue;
        }
        const Place at = {a[j], a[j + 1], b[j], b[j + 1], u, (f / lo) / (hi / lo)};
        if (!in_db) {
            point.amp = static_cast<float>(linear_level(at, point.amp, power));
            return;
        }
        point.amp = static_cast<float>(db_level(at, point.amp, power));
    }
}

/// The count in element 0, held to the elements that both frames have behind it.
int32_t points_of(LpcFrame a, LpcFrame b) {
    const double most = std::min(lpc_records(a), lpc_records(b)) - 1;
    const double said = a[0]->freq;
    return said > 0.0 ? static_cast<int32_t>(std::min(said, most)) : 0;
}

bool overlaps(const PartialEval &partial, double t0, double t1) {
    return partial.start <= t1 && partial.start + partial.dur >= t0;
}

} // namespace

void source_filter(float scale, Breakpoint **parray, PartialEval *peval, LpcFrame frameA,
                   LpcFrame frameB, const int32_t *npoints, int32_t dbmode, float power) {
    if (lpc_records(frameA) == 0) {
        std::puts("NULL pointer 0");
    }
    if (lpc_records(frameB) == 0) {
        std::puts("NULL pointer 1");
    }
    const bool both = lpc_records(frameA) > 0 && lpc_records(frameB) > 0;
    lpoints = both ? points_of(frameA, frameB) : 0;
    const double t0 = both ? scale * frameA[0]->amp : 0.0;
    const double t1 = both ? scale * frameB[0]->amp : 0.0;
    for (int32_t i = 0; both && i < partials; ++i) {
        if (!overlaps(peval[i], t0, t1)) {
            continue;
        }
        for (Breakpoint &point : std::span(parray[i], static_cast<size_t>(npoints[i]))) {
            if (t0 <= point.time && point.time <= t1) {
                const double u = (point.time - t0) / (t1 - t0);
                filter_point(point, frameA, frameB, u, dbmode == 1, power);
            }
        }
    }
    std::puts("APPLYING SPECTRAL ENVELOPE...");
}
