// Retuning one found point. The range is kept up on the way, at the price of looking at one
// partial only when the outermost point moves inward.

#include "interact/choose.h"

#include "interact/log_refresh.h"
#include "interact/selection.h"
#include "store/recompute.h"
#include "store/store.h"

#include <cmath>

namespace {

constexpr double step_ratio = 1.00125; // about 2.2 cents

Breakpoint *single_found_point() {
    const FoundPoints &queue = foundSubscriptions;
    if (directSelect == 0 || queue.count != 1 || !point_exists(queue.part0, queue.point0)) {
        return nullptr;
    }
    return &parray[queue.part0][queue.point0];
}

/// The partial's mean, the range that it widens, and every point's place in that range. The
/// octave is the short one here.
void refresh_after_retune(int32_t part) {
    recompute_pitch(part);
    logmaxfreq = static_cast<float>(std::log(static_cast<double>(fspan)) / place_octave);
    refresh_log_positions(LogAxis{minfreq, logmaxfreq, 0.0});
}

} // namespace

void upfreq() {
    Breakpoint *point = single_found_point();
    if (point == nullptr) {
        return;
    }
    const int32_t part = foundSubscriptions.part0;
    const bool lowest = point->freq <= minfreq;
    point->freq = static_cast<float>(point->freq * step_ratio);
    maxfreq = point->freq > maxfreq ? point->freq : maxfreq;
    if (lowest) {
        minfreq = point->freq;
        for (int32_t j = 0; j < npoints[part]; ++j) {
            minfreq = parray[part][j].freq < minfreq ? parray[part][j].freq : minfreq;
        }
    }
    refresh_after_retune(part);
}

void downfreq() {
    Breakpoint *point = single_found_point();
    if (point == nullptr) {
        return;
    }
    const int32_t part = foundSubscriptions.part0;
    const bool highest = point->freq >= maxfreq;
    point->freq = static_cast<float>(point->freq / step_ratio);
    minfreq = point->freq < minfreq ? point->freq : minfreq;
    if (highest) {
        maxfreq = point->freq;
        for (int32_t j = 0; j < npoints[part]; ++j) {
            maxfreq = parray[part][j].freq > maxfreq ? parray[part][j].freq : maxfreq;
        }
    }
    refresh_after_retune(part);
}
