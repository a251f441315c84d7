// Retuning one found point. The range is kept up on the way, at the price of looking at one
// partial only when the outermost point moves inward.

#include "interact/choose.h"

#include "interact/selection.h"
#include "live/shared.h"
#include "store/store.h"

#include <cmath>

namespace {

constexpr double step_ratio = 1.00125; // about 2.2 cents
constexpr double octave = 0.6931472;

Breakpoint *single_found_point() {
    const FoundPoints &queue = foundSubscriptions;
    if (directSelect == 0 || queue.count != 1 || !point_exists(queue.part0, queue.point0)) {
        return nullptr;
    }
    return &parray[queue.part0][queue.point0];
}

/// Mean frequency of a partial; widens the range by its points.
void average_partial(int32_t i) {
    float sum = 0.0f;
    for (int32_t j = 0; j < npoints[i]; ++j) {
        const float freq = parray[i][j].freq;
        sum += freq;
        minfreq = freq < minfreq ? freq : minfreq;
        maxfreq = freq > maxfreq ? freq : maxfreq;
    }
    peval[i].avgfreq = sum / static_cast<float>(npoints[i]);
}

/// Every point's place in the range as it is now.
void refresh_log_positions(int32_t part) {
    average_partial(part);
    fspan = maxfreq / minfreq;
    logmaxfreq = static_cast<float>(std::log(static_cast<double>(fspan)) / octave);
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const double ratio = parray[i][j].freq / minfreq;
            parray[i][j].logfreq = static_cast<float>(std::log(ratio) / octave / logmaxfreq);
        }
    }
}

} // namespace

void upfreq() {
    Breakpoint *point = single_found_point();
    if (point == nullptr) {
        return;
    }
    const int32_t part = foundSubscriptions.part0;
    const bool lowest = point->freq <= minfreq;
    poke(point->freq, static_cast<float>(point->freq * step_ratio));
    maxfreq = point->freq > maxfreq ? point->freq : maxfreq;
    if (lowest) {
        minfreq = point->freq;
        for (int32_t j = 0; j < npoints[part]; ++j) {
            minfreq = parray[part][j].freq < minfreq ? parray[part][j].freq : minfreq;
        }
    }
    refresh_log_positions(part);
}

void downfreq() {
    Breakpoint *point = single_found_point();
    if (point == nullptr) {
        return;
    }
    const int32_t part = foundSubscriptions.part0;
    const bool highest = point->freq >= maxfreq;
    poke(point->freq, static_cast<float>(point->freq / step_ratio));
    minfreq = point->freq < minfreq ? point->freq : minfreq;
    if (highest) {
        maxfreq = point->freq;
        for (int32_t j = 0; j < npoints[part]; ++j) {
            maxfreq = parray[part][j].freq > maxfreq ? parray[part][j].freq : maxfreq;
        }
    }
    refresh_log_positions(part);
}
