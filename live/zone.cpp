#include "live/zone.h"

#include "interact/selection.h"
#include "interact/unproject.h"
#include "live/generator.h"
#include "live/idle.h"
#include "live/live.h"
#include "live/moment.h"
#include "live/shared.h"
#include "store/settings.h"
#include "store/store.h"
#include "synth/sound.h"
#include "toolbox/auxilliary3d.h"

#include <GL/freeglut.h>
#include <cstdio>

float zone::times[2048] = {};

namespace {

constexpr float stopped_N = 1000.0f;

/// The moment that a fraction of the time axis stands for, in seconds.
float moment_of(float fraction) {
    return (sndlen - sndstart) * fraction + sndstart;
}

bool in_sound(float time) {
    return time >= sndstart && time <= sndlen;
}

/// Raises the times of all partials to that of the zone; one that comes near the end jumps.
void walk(float time, double last) {
    const int32_t count = peek(numbOfCands);
    for (int32_t i = 0; i < count; ++i) {
        if (times[i] < time) {
            times[i] = time;
        }
        if (times[i] > last) {
            const float start = peek(zgen.starttime);
            times[i] = (peek(zgen.endtime) - start) * randf() + start;
        }
    }
}

void sample_zone(float time, double last) {
    const MomentRule &rule = peek(zgen.select) != 0 ? selected_zone_rule : motion_rule;
    if (peek(ran) != 0) {
        walk(time, last);
        sample_store_at(times, rule, qcandidates);
    } else {
        sample_store(time, rule, qcandidates);
    }
}

void end_zone() {
    halt_generator(zgen);
    poke(zgen.time, peek(zgen.starttime));
    poke(N, stopped_N);
    std::puts("  Synthesis completed, zgAU stopped");
    if (dbp) {
        std::printf("  zgen.endtime = %f\n", peek(zgen.endtime));
    }
    glutIdleFunc(peek(fplayer.state) != 0 ? Idle : nullptr);
}

} // namespace

void qplay(int32_t *x0, int32_t *x1) {
    order_columns(*x0, *x1);
    if (dbp) {
        std::printf("live_gain = %f\n", peek(live_gain));
    }
    const float from = scene_offset(peek(*x0), 0.0).t;
    const float to = scene_offset(*x1, 0.0).t;
    poke(tfsquare[0], from);
    poke(tfsquare[1], to);
    const float start = moment_of(from);
    const float end = moment_of(to);
    poke(zgen.time, start);
    poke(zgen.endtime, sndlen < end ? sndlen : end);
    std::printf("->start_time: %fs\tend_time: %fs\n", start, peek(zgen.endtime));
    if (end < start || end < sndstart) {
        std::puts("No zone selected");
        return;
    }
    use_oscillators(partials);
    sample_store(start, start_rule, pcandidates);
    start_generator(zgen, pcandidates, 0.0, "WPlaying");
}

void tqplay(const float *start, const float *end) {
    use_oscillators(partials);
    std::printf("|->start_time: %fs\tend_time: %fs\n", *start, *end);
    sample_store(*start, peek(zgen.select) != 0 ? selected_zone_rule : start_rule, qcandidates);
    start_generator(zgen, qcandidates, 0.0, "ZPlaying");
}

void qmotion() {
    const float time = peek(zgen.time);
    const double last = peek(zgen.endtime) - peek(zgen.frames) / R;
    if (dbp) {
        if (in_sound(time)) {
            std::printf("TIME:\t%F\n", time);
        }
        std::putchar('q');
    }
    sample_zone(time, last);
    glutPostRedisplay();
    if (peek(zgen.playing) != 0 && peek(zgen.time) >= last) {
        if (peek(zloop) != 0) {
            poke(zgen.time, peek(zgen.starttime));
        } else {
            end_zone();
        }
    }
    pace_idle();
}
