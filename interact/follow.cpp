// Level envelopes of the selected partials against the source's.

#include "display/view.h"
#include "interact/gesture_source.h"
#include "interact/gestures.h"
#include "live/shared.h"
#include "store/store.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <cstdio>

namespace {

constexpr GestureTexts texts = {"Follower: Select both breakpoints from the source partial",
                                "Follower: No target selected"};

constexpr float follow_weight = 0.02f; // share of the source's relative envelope, a call

/// The point that envelopes are compared to, the first of the run; it does not move itself.
struct Anchor {
    float own;    // linear amplitude
    float source; // linear amplitude of the source at that time
};

/// The level, in dB, that a point of amplitude `a` gets where the source has `s`.
float followed_level(float a, float s, const Anchor &anchor, float w) {
    const double mix = (1.0 - w) * (a / anchor.own) + w * (s / anchor.source);
    const float amplitude = static_cast<float>(mix * anchor.own);
    return static_cast<float>(amp2db(amplitude < 0.0f ? 0.0f : amplitude));
}

/// Carries the run's change of level over to the points behind it.
void shift_tail(int32_t i, int32_t from, float last, float first) {
    for (int32_t j = from; j < npoints[i]; ++j) {
        poke(parray[i][j].amp, (parray[i][j].amp + last) - first);
    }
}

void follow_target(int32_t i, int32_t source, float w) {
    Breakpoint *points = parray[i];
    const int32_t n = npoints[i];
    const int32_t start = first_selected_point(i);
    if (start == n) {
        return;
    }
    const Anchor anchor = {db2amp(points[start].amp),
                           linear_interpol_al(parray, npoints, start, i, source)};
    const float first = points[start].amp;
    float last = first;
    for (int32_t j = start + 1; j < n; ++j) {
        if (points[j].selected != 1) {
            shift_tail(i, j, last, first);
            return;
        }
        const float s = linear_interpol_al(parray, npoints, j, i, source);
        const float level = followed_level(db2amp(points[j].amp), s, anchor, w);
        const bool at_the_end = j >= n - 2; // a fade-out may only fall
        if (!(at_the_end && points[j].amp < level)) {
            poke(points[j].amp, level);
        }
        last = level;
    }
}

} // namespace

void partialsFollow2(int direction) {
    if (bps == 0) {
        return;
    }
    const int32_t source = gesture_source(texts);
    if (source < 0) {
        return;
    }
    std::printf("direction = %d\n", direction);
    if (source_is_target(source)) {
        return;
    }
    const float w = direction < 0 ? follow_weight : -follow_weight;
    for (int32_t i = 0; i < partials; ++i) {
        if (i != source && peval[i].selected == 1) {
            follow_target(i, source, w);
        }
    }
}
