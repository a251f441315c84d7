#include "display/frame_arrays.h"

#include "display/view.h"
#include "live/shared.h"

#include <stddef.h>

namespace {

constexpr float level_span = 300.0f; // dB, one unit of Z

constexpr DotColour plain_dot = {0.7f, 0.0f, 0.3f};
constexpr DotColour selected_dot = {0.0f, 0.75f, 0.0f};

/// Everything that the arrays depend on, apart from the points themselves, which change only
/// with an input event.
struct BuildKey {
    uint32_t events;
    int32_t flat, logpos, partials;
    const void *points;
    float sndstart, sndlen, maxfreq, minfreq, maxamp;
    bool operator==(const BuildKey &) const = default;
};

BuildKey present_key() {
    return {input_events, flat,   logpos,  partials, parray,
            sndstart,     sndlen, maxfreq, minfreq,  maxamp};
}

/// The ranges as locals: the loop below runs once a point.
struct VertexLaw {
    float start = sndstart;
    float duration = sndlen - sndstart;
    float high = maxfreq;
    float loudest = maxamp;
    bool logarithmic = logpos != 0;
    bool in_depth = flat != 1;

    ContourVertex operator()(const Breakpoint &point) const {
        const float below = (point.amp - loudest) / level_span;
        const DotColour colour = contour_colour(below);
        return {(point.time - start) / duration,
                logarithmic ? point.logfreq : point.freq / high,
                in_depth ? below : 0.0f,
                colour.red,
                colour.green,
                colour.blue};
    }
};

size_t count_points(size_t &segments) {
    size_t points = 0;
    segments = 0;
    for (int32_t i = 0; i < partials; ++i) {
        if (npoints[i] > 0) {
            points += static_cast<size_t>(npoints[i]);
            segments += static_cast<size_t>(npoints[i]) - 1;
        }
    }
    return points;
}

/// One index pair for each pair of neighbours in a run of n vertices from `first` on.
uint32_t *connect(uint32_t *pair, uint32_t first, int32_t n) {
    for (uint32_t at = first + 1; at < first + static_cast<uint32_t>(n); ++at) {
        *pair++ = at - 1;
        *pair++ = at;
    }
    return pair;
}

} // namespace

DotColour contour_colour(float below) {
    return {below > -0.07 ? static_cast<float>((below + 0.07) * 6) : 0.0f,
            below > -0.45 ? static_cast<float>((below + 0.45) * 1.3) : 0.0f,
            static_cast<float>((below + 0.8) * 0.7)};
}

ContourVertex contour_vertex(const Breakpoint &point) {
    return VertexLaw()(point);
}

void build_frame_arrays(FrameArrays &arrays, bool with_dots) {
    size_t segments;
    const size_t points = count_points(segments);
    arrays.vertices.resize(points);
    arrays.dots.resize(with_dots ? points : 0);
    arrays.segments.resize(2 * segments);
    const VertexLaw law;
    ContourVertex *vertex = arrays.vertices.data();
    DotColour *dot = arrays.dots.data();
    uint32_t *pair = arrays.segments.data();
    uint32_t first = 0;
    for (int32_t i = 0; i < partials; ++i) {
        const Breakpoint *run = parray[i];
        const int32_t n = npoints[i];
        if (n < 1) {
            continue;
        }
        for (int32_t j = 0; j < n; ++j) {
            *vertex++ = law(run[j]);
        }
        for (int32_t j = 0; with_dots && j < n; ++j) {
            *dot++ = peek(run[j].selected) == 1 ? selected_dot : plain_dot;
        }
        pair = connect(pair, first, n);
        first += static_cast<uint32_t>(n);
    }
    if (segments > 0) {
        // Single points behind the last contour have no colour in the frame.
        const ContourVertex &last = arrays.vertices[arrays.segments.back()];
        r1 = last.red;
        g1 = last.green;
        b1 = last.blue;
    }
}

const FrameArrays &frame_arrays(bool with_dots) {
    static FrameArrays arrays;
    static BuildKey built = {};
    static bool valid = false;
    const BuildKey key = present_key();
    // A drag's frames show no dots, so only the contours need to be still good.
    if (dragging == 0 || !valid || !(key == built) || with_dots) {
        build_frame_arrays(arrays, with_dots);
        built = key;
        valid = dragging != 0;
    }
    return arrays;
}
