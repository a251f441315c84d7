// A render runs in a block of its own, which becomes fBuffer only to be played: the player's
// callback must not meet a block that is being filled or is about to be freed.
#include "synth/synth3d.h"

#include "live/live.h"
#include "live/shared.h"
#include "store/settings.h"
#include "synth/aiff.h"
#include "synth/render.h"
#include "synth/slopes.h"
#include "synth/sound.h"
#include "synth/sound_files.h"
#include "synth/stretches.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

enum Mode : int16_t { float_file_only = 80, aiff_file_only = 88, play = 900 };

constexpr float pi_f = 3.1415927f;
constexpr double four_pi = 12.566370614359172;

struct Render {
    float *samples; // null when there are none
    int64_t frames;
    float length; // seconds
    float rate;   // Hz
    int16_t mode;
    Breakpoint *const *array;
    const int32_t *counts;
    int32_t number; // partials

    /// Frame at a time, in single precision.
    int64_t frame(float time) const {
        return whole_frames(time * rate);
    }

    /// The frame at which a voice of this start begins to run. Frames before the sound are run
    /// but not heard, at most as many as the sound has.
    int64_t run_in(float start) const {
        return std::max(frame(start), -frames);
    }
};

/// One oscillator on its way along a partial.
struct Voice {
    int32_t part;
    int32_t j;    // the point behind it
    int64_t gap;  // frames from the next point to the one after
    float a, f;   // linear amplitude, Hz
    float dA, dF; // their change a frame
    float phi;    // radians
};

Voice voice_at(const Render &render, int32_t part, int32_t point, float phase) {
    const Breakpoint &from = render.array[part][point];
    return {part, point, 1, db2amp(from.amp), from.freq, 0.0f, 0.0f, phase};
}

/// Whether the partial has a point of this number.
bool has_point(const Render &render, const Voice &voice, int32_t point) {
    return point < render.counts[voice.part];
}

/// Frames from point j + 1 to the one after; the last gap where there is none.
int64_t next_gap(const Render &render, const Voice &voice) {
    const Breakpoint *points = render.array[voice.part];
    return has_point(render, voice, voice.j + 2)
               ? render.frame(points[voice.j + 2].time - points[voice.j + 1].time)
               : voice.gap;
}

/// Takes over the values of point j + 1. Where the next segment would end behind the partial's
/// last point the slopes are 0; only a last frame can come from there.
void reach_point(const Render &render, Voice &voice) {
    const Breakpoint &point = render.array[voice.part][voice.j + 1];
    voice.gap = next_gap(render, voice);
    voice.a = db2amp(point.amp);
    voice.f = point.freq;
    voice.dA = 0.0f;
    voice.dF = 0.0f;
}

/// The two points after j + 1 lie on one frame: a line over both segments.
void bridge_gap(const Render &render, Voice &voice) {
    const int32_t j = voice.j + 1;
    if (has_point(render, voice, j + 2)) {
        const Breakpoint *points = render.array[voice.part];
        voice.dA = lin_bug_tanamp(voice.part, j) / render.rate;
        voice.dF = ((points[j + 2].freq - points[j].freq) / (points[j + 2].time - points[j].time)) /
                   render.rate;
    }
    voice.j += 2;
}

/// The segment from point j + 1 on, with the amplitude slope of `slope`.
void next_segment(const Render &render, Voice &voice, float (*slope)(int32_t, int32_t)) {
    const int32_t j = voice.j + 1;
    if (has_point(render, voice, j + 1)) {
        voice.dA = slope(voice.part, j) / render.rate;
        voice.dF = find_tanfreq(voice.part, j) / render.rate;
    }
    voice.j = j;
}

/// One frame on. A phase up to `limit` radians fades in, as its share of `soft`, the same limit in
/// single precision.
float step(Voice &voice, float radians_per_hz, double limit, float soft) {
    voice.f += voice.dF;
    voice.phi += radians_per_hz * voice.f;
    voice.a += voice.dA;
    if (static_cast<double>(voice.phi) > four_pi) {
        voice.phi = static_cast<float>(static_cast<double>(voice.phi) - two_pi);
    }
    float s = std::sin(voice.phi) * voice.a;
    if (static_cast<double>(voice.phi) <= limit) {
        s *= voice.phi / soft;
    }
    return s;
}

void add(const Render &render, int64_t n, float sample) {
    if (n >= 0 && n < render.frames) {
        render.samples[n] += sample;
    }
}

// --- all partials ------------------------------------------------------------------------------

void render_partial(const Render &render, int32_t p) {
    const Breakpoint *points = render.array[p];
    // What lies behind the buffer is not heard, so it need not be run through.
    const int64_t end =
        std::min(render.frame(points[render.counts[p] - 1].time) - 1, render.frames);
    int64_t n = render.run_in(points[0].time);
    if (verbose != 0) {
        std::printf("//... rendering partial# %5d:\t%f\t%f\n", p, points[0].freq, points[0].amp);
    }
    if (n >= end) {
        return;
    }
    Voice voice = voice_at(render, p, 0, 0.0f);
    voice.dA = lin_tanamp(p, 0) / render.rate;
    voice.dF = find_tanfreq(p, 0) / render.rate;
    const float radians_per_hz = TWOPI_F / render.rate;
    for (; n < end; ++n) {
        if (has_point(render, voice, voice.j + 1) && n > render.frame(points[voice.j + 1].time)) {
            reach_point(render, voice);
            if (voice.gap != 0) {
                next_segment(render, voice, lin_tanamp);
            } else {
                bridge_gap(render, voice);
            }
        }
        add(render, n, step(voice, radians_per_hz, pi_f, pi_f));
    }
}

void render_all(const Render &render) {
    for (int32_t p = 0; p < render.number; ++p) {
        if (render.counts[p] > 0) {
            render_partial(render, p);
        }
    }
}

// --- selected stretches ------------------------------------------------------------------------

/// The latest time of a selected point, seconds.
float selected_length(Breakpoint *const *array, const int32_t *counts, int32_t number) {
    float length = 0.0f;
    for (int32_t p = 0; p < number; ++p) {
        for (int32_t i = 0; i < counts[p]; ++i) {
            if (peek(array[p][i].selected) == 1) {
                length = std::max(length, array[p][i].time);
            }
        }
    }
    return length;
}

/// The voice at a stretch's first point: from its own level at the start of the partial, else
/// from silence.
Voice start_stretch(const Render &render, const SynthStretch &stretch) {
    const int32_t p = stretch.part;
    const int32_t first = stretch.first;
    Voice voice = voice_at(render, p, first, render.array[p][first].phase);
    const bool more = has_point(render, voice, first + 1);
    if (first != 0) {
        std::puts("*");
        voice.a = 0.0f;
    }
    if (more) {
        voice.dA = (first == 0 ? lin_tanamp(p, 0) : lins_tanamp(p, first)) / render.rate;
        voice.dF = find_tanfreq(p, first) / render.rate;
    }
    return voice;
}

/// Takes the voice of the stretch numbered `index` past a point that it has reached.
void pass_point(const Render &render, const SynthStretch &stretch, int64_t index, Voice &voice) {
    reach_point(render, voice);
    if (voice.gap == 0) {
        bridge_gap(render, voice);
    } else if (voice.j + 1 == stretch.last - 2 && stretch.last != render.counts[stretch.part]) {
        std::printf("@%d: candidate[%ld] = [%d]:%d -> %d\n", stretch.last - 2,
                    static_cast<long>(index), stretch.part, stretch.first, stretch.last);
        next_segment(render, voice, linh_tanamp);
    } else {
        next_segment(render, voice, lin_tanamp);
    }
}

void render_stretch(const Render &render, const SynthStretch &stretch, int64_t index) {
    const Breakpoint *points = render.array[stretch.part];
    int64_t n = render.run_in(points[stretch.first].time);
    // The last frame may be the one behind the buffer; what lies farther away is not heard.
    const int64_t stop = std::min(render.frame(points[stretch.last].time), render.frames);
    if (verbose != 0) {
        std::printf("//... rendering partial# %5ld:\t%f\t%f\n", static_cast<long>(index),
                    points[stretch.first].freq, points[stretch.first].amp);
    }
    Voice voice = start_stretch(render, stretch);
    const float radians_per_hz = TWOPI_F / render.rate;
    for (; n <= stop; ++n) {
        if (has_point(render, voice, voice.j + 1) && n >= render.frame(points[voice.j + 1].time)) {
            pass_point(render, stretch, index, voice);
        }
        add(render, n, step(voice, radians_per_hz, two_pi, TWOPI_F));
    }
}

void render_stretches(const Render &render, const SynthStretch *stretches, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
        const SynthStretch &stretch = stretches[i];
        if (render.mode != play) {
            std::printf("x1= %d\ty1= %d\tx1= %d\ty1= %d\n", stretch.part, stretch.first,
                        stretch.part2, stretch.last);
        }
        render_stretch(render, stretch, i);
        if (render.mode != play) {
            std::printf("candidate #: %ld of %d\n", static_cast<long>(i), count);
        }
    }
}

// --- before and after --------------------------------------------------------------------------

/// Allocates the samples, silent. Without memory there are none, and nothing is rendered.
void allocate_samples(Render &render) {
    std::printf("Audio length: %f\n", render.length);
    render.frames = render.frame(render.length);
    std::printf("//Allocating %ld bytes buffer RAM\n", static_cast<long>(render.frames * 4));
    render.frames = std::max<int64_t>(render.frames, 0);
    render.samples = silent_buffer(render.frames);
    if (render.samples == nullptr) {
        render.frames = 0;
        render.number = 0;
    }
}

/// A dot for each hundredth of a second at 44100 Hz.
void print_bar(const Render &render) {
    if (render.mode != play) {
        for (int64_t n = 0; n < render.frames; n += 441) {
            std::putchar('.');
        }
    }
    std::putchar('\n');
}

double peak_of(const Render &render) {
    double peak = 0.0;
    for (int64_t n = 0; n < render.frames; ++n) {
        peak = std::max(peak, static_cast<double>(std::fabs(render.samples[n])));
    }
    return peak;
}

void write_aiff(const Render &render, char *name, double peak) {
    const float factor = 32764.0f / static_cast<float>(peak);
    std::printf("//Converting... max.amp = %f\n", peak);
    std::printf("//Multiplying by          %f...\n", factor);
    append_aiff(name, render.samples, render.frames, factor, render.length, render.rate);
}

void finish_by_file(const Render &render, char *name) {
    char float_path[sound_path_room];
    const bool fits = sound_path(float_path, name, ".fp");
    const double peak = peak_of(render);
    write2rawfloatfile(name, render.samples, render.frames);
    std::puts("\a\n//\tf_DONE!");
    if (render.mode == aiff_file_only) {
        if (fits) {
            std::remove(float_path);
        }
        std::puts("//Removing floating-point file...");
    }
    if (render.mode != float_file_only) {
        write_aiff(render, name, peak);
    }
    std::free(render.samples);
    std::puts("//Deallocating buffers...\a\n//\ts_DONE!");
}

/// Silence becomes not-a-number here: the factor is infinite.
int32_t finish_by_playing(const Render &render, float start) {
    const auto factor = static_cast<float>(0.7 / peak_of(render));
    for (int64_t n = 0; n < render.frames; ++n) {
        render.samples[n] *= factor;
    }
    std::puts("SYNTH LIVE:");
    put_sound(render.samples, render.frames);
    publish(fbuffersize, render.frames);
    const int32_t result = play_rendered(start, render.frames);
    put_sound(nullptr, 0);
    // A player that runs may be in the middle of it: then it is left alone.
    if (peek(fplayer.state) == 0) {
        std::free(render.samples);
    }
    return result;
}

} // namespace

int32_t synth33(float start, int32_t mode, char *name, Breakpoint **array, int32_t *counts,
                int32_t number, int32_t select) {
    put_sound(nullptr, 0);
    std::printf("//Additive oscillator-bank synthesizer:%s\n\n", name != nullptr ? name : "");
    Render render = {nullptr, 0,      sndlen, static_cast<float>(R), static_cast<int16_t>(mode),
                     array,   counts, number};
    const bool selected_only = static_cast<int16_t>(select) == 1;
    SynthStretch *stretches = nullptr;
    int32_t count = 0;
    if (selected_only) {
        count = count_stretches(array, counts, number);
        std::printf("Number of candidates: %d\n", count);
        stretches = static_cast<SynthStretch *>(
            std::calloc(static_cast<size_t>(count) + 1, sizeof(SynthStretch)));
        fill_stretches(array, counts, number, stretches, count);
        render.length = selected_length(array, counts, number);
    }
    allocate_samples(render);
    print_bar(render);
    if (selected_only) {
        render_stretches(render, stretches, render.samples != nullptr ? count : 0);
        std::free(stretches);
    } else {
        render_all(render);
    }
    if (render.mode == play) {
        return finish_by_playing(render, start);
    }
    finish_by_file(render, name);
    return 0;
}
