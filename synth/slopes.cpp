#include "synth/slopes.h"

#include "store/store.h"
#include "synth/sound.h"
#include "toolbox/auxmath3d.h"

namespace {

constexpr float ramp_frames = 2000.0f;
constexpr double last_block = 512.0; // frames kept free at the end of the sound

/// Seconds from point j to `ahead` points later.
float span(const Breakpoint *points, int32_t j, int32_t ahead) {
    return points[j + ahead].time - points[j].time;
}

/// dB from point j to `ahead` points later.
float rise(const Breakpoint *points, int32_t j, int32_t ahead) {
    return points[j + ahead].amp - points[j].amp;
}

} // namespace

float find_tanfreq(int32_t p, int32_t j) {
    const Breakpoint *points = parray[p];
    const float hertz = points[j + 1].freq - points[j].freq;
    const float radians = points[j + 1].phase - points[j].phase;
    return (hertz + radians / TWOPI_F) / span(points, j, 1);
}

float bug_tanfreq(int32_t p, int32_t j) {
    const Breakpoint *points = parray[p];
    return (points[j + 2].freq - points[j].freq) / span(points, j, 2);
}

float find_tanamp(int32_t p, int32_t j) {
    return rise(parray[p], j, 1) / span(parray[p], j, 1);
}

float bug_tanamp(int32_t p, int32_t j) {
    return rise(parray[p], j, 2) / span(parray[p], j, 2);
}

float hack_tanamp(int32_t p, int32_t j) {
    return (rise(parray[p], j, 1) + 100.0f) / span(parray[p], j, 1);
}

float hack_e_tanamp(int32_t p, int32_t j) {
    return (rise(parray[p], j, 1) - 100.0f) / span(parray[p], j, 1);
}

float lin_tanamp(int32_t p, int32_t j) {
    const Breakpoint *points = parray[p];
    return (db2amp(points[j + 1].amp) - db2amp(points[j].amp)) / span(points, j, 1);
}

float lins_tanamp(int32_t p, int32_t j) {
    return db2amp(parray[p][j + 1].amp) / span(parray[p], j, 1);
}

float linh_tanamp(int32_t p, int32_t j) {
    return (0.0f - db2amp(parray[p][j].amp)) / span(parray[p], j, 1);
}

float lin_bug_tanamp(int32_t p, int32_t j) {
    return db2amp(parray[p][j + 2].amp) / span(parray[p], j, 2);
}

float nramp(float x) {
    if (x >= ramp_frames) {
        return 1.0f;
    }
    return x <= 0.0f ? 0.0f : static_cast<float>(x * 0.0005);
}

float kramp(float x) {
    return nramp(x);
}

float note2time(float x, float t0, int32_t lo, int32_t hi) {
    const float end = sndlen + static_cast<float>(-last_block / R);
    if (x >= static_cast<float>(hi)) {
        return end;
    }
    // Through the unsigned type: a range wider than the type wraps.
    const auto notes = static_cast<int32_t>(static_cast<uint32_t>(hi) - static_cast<uint32_t>(lo));
    return ((x - static_cast<float>(lo)) * (end - t0)) / static_cast<float>(notes) + t0;
}
