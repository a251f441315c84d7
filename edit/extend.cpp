#include "edit/extend.h"

#include "store/slots.h"
#include "store/store.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr float too_quiet = -80.0f;   // dB, what is below is lifted to the template's level
constexpr float end_level = -120.0f;  // dB, of the last point
constexpr float default_step = 0.01f; // seconds, where the store knows no mean interval

/// Mean spacing of n points, in seconds; that of the whole store for a single point.
float mean_step(const Breakpoint *points, int32_t n) {
    if (n > 1) {
        return (points[n - 1].time - points[0].time) / static_cast<float>(n - 1);
    }
    return std::isfinite(meant) && meant > 0.0f ? meant : default_step;
}

/// What the new points repeat: the last point, at the level of the one before it.
Breakpoint template_of(const Breakpoint *points, int32_t n) {
    Breakpoint model = {};
    model.time = points[n - 1].time;
    model.freq = points[n - 1].freq;
    model.logfreq = points[n - 1].logfreq;
    model.amp = points[std::max(n - 2, 0)].amp;
    return model;
}

void fill_extension(Breakpoint *points, int32_t n, int32_t total, Breakpoint model, float step) {
    for (int32_t j = 0; j < n; ++j) {
        if (points[j].amp < too_quiet) {
            points[j].amp = model.amp;
        }
    }
    for (int32_t j = n; j < total; ++j) {
        model.time += step;
        points[j] = model;
    }
    points[total - 1].amp = end_level;
}

void tell_points(const Breakpoint *points, int32_t n) {
    for (int32_t j = 0; j < n; ++j) {
        std::printf("--temp--> %f\t%f\t%f\t%f\n", points[j].time, points[j].freq, points[j].amp,
                    points[j].logfreq);
    }
}

/// Puts the longer partial into the last slot in place of partial `part`.
void replace_at_end(int32_t part, Breakpoint *points, int32_t n) {
    take_out_slot(part, false);
    trim_slots(partials);
    parray[partials - 1] = points;
    npoints[partials - 1] = n;
}

} // namespace

void extend3d(int32_t part, int32_t additional) {
    std::puts("EXTEND3d: Implementation in progress");
    if (part < 0 || part > partials) {
        std::puts("Critical Error: save your work,");
        std::puts("quit and relaunch the program");
        return;
    }
    if (additional > most_appended_points) {
        std::fprintf(stderr, "Quillgrove: cannot append %d points\n", additional);
        return;
    }
    std::printf("Appending %d new points to partial #%d\n", additional, part);
    if (part == partials || npoints[part] < 1) {
        return;
    }
    const int32_t n = npoints[part];
    const int32_t added = std::max(additional, 0);
    const int32_t total = n + added;
    const float step = mean_step(parray[part], n);
    std::printf("%d\t%d\t%d\t%f\n", n - 1, added, total, step);
    const Breakpoint model = template_of(parray[part], n);
    std::printf("%d\t%f\t%f\t%f\t%f\n\n", total - 1, model.time, model.freq, model.logfreq,
                model.amp);
    Breakpoint *longer = new_points(total);
    std::copy_n(parray[part], n, longer);
    fill_extension(longer, n, total, model, step);
    tell_points(longer, total);
    replace_at_end(part, longer, total);
}
