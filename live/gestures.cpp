#include "live/gestures.h"

#include "interact/selection.h"
#include "interact/unproject.h"
#include "live/generator.h"
#include "live/live.h"
#include "live/moment.h"
#include "live/pause.h"
#include "live/shared.h"
#include "live/wheel.h"
#include "store/published.h"
#include "store/settings.h"
#include "store/store.h"
#include "synth/sound.h"

#include <GL/freeglut.h>
#include <cstdio>

namespace {

constexpr uint32_t edit_pause = 1000; // microseconds
constexpr int most_edit_pauses = 20;

/// The moment under a pixel column, in seconds.
float moment_under(int32_t x) {
    poke(square[0], x);
    const float fraction = scene_offset(x, 0.0).t;
    poke(tfsquare[0], fraction);
    return (sndlen - sndstart) * fraction + sndstart;
}

float sound_length() {
    return peek(sndlen) - peek(sndstart);
}

/// False while an edit is under way.
template <typename Work> bool with_store_now(Work work) {
    const StoreReader reader;
    if (reader.store() != nullptr) {
        work(*reader.store());
    }
    return reader.store() != nullptr;
}

/// The partials as MIDI may read them, once an edit that is under way is over. False where that
/// takes longer, with candidates, flags and pointer as they were.
template <typename Work> bool with_store(Work work) {
    bool done = with_store_now(work);
    for (int n = 0; !done && n < most_edit_pauses; ++n) {
        pause_for(edit_pause);
        done = with_store_now(work);
    }
    return done;
}

void play_from_midi() {
    const float time = peek(wgen.time);
    const float fraction = time / sound_length();
    if (dbp) {
        std::printf("wgen.time: %f\n", time);
        std::printf("tfsquare.tdn = %f\n", fraction);
    }
    const bool done = with_store([time, fraction](const PublishedStore &store) {
        poke(tfsquare[0], fraction);
        if (peek(wgen.select) != 0) {
            select_by_wheel(store, peek(mmif));
        }
        use_oscillators(store.count);
        sample_published(store, time, start_rule, pcandidates);
    });
    uncounted = done ? 0 : 1;
    if (W != 0 && peek(wgen.playing) == 0) {
        poke(wgen.midi_started, uint8_t{1});
    }
}

void play_under_pointer(int32_t x) {
    const float time = moment_under(x);
    use_oscillators(partials);
    sample_store(time, start_rule, pcandidates);
}

template <typename Generator> void stop_playing(Generator &generator) {
    if (generator.unit == nullptr || peek(generator.playing) == 0) {
        return;
    }
    halt_generator(generator);
    std::puts("Stop");
}

} // namespace

void pplay(int32_t x, uint8_t from_midi) {
    if (dbp) {
        std::printf("live_gain = %f\n", peek(live_gain));
    }
    double position = 0.0;
    if (from_midi != 0) {
        poke(square[0], x);
        play_from_midi();
        position = (peek(wgen.time) * peek(R)) / sound_length();
    } else {
        play_under_pointer(x);
    }
    if (W != 0) {
        start_generator(wgen, pcandidates, position, "WPlaying = %d\n");
    } else {
        start_generator(zgen, pcandidates, position, "ZPlaying = %d\n");
    }
}

void pmotion(int x, int) {
    const float time = moment_under(x);
    if (dbp && time >= sndstart && time <= sndlen) {
        std::printf("TIME:\t%f\n", time);
    }
    sample_store(time, motion_rule, pcandidates);
    glutPostRedisplay();
}

void mmotion() {
    const float time = peek(wgen.time);
    const float fraction = time / sound_length();
    const bool by_wheel = peek(wgen.select) != 0;
    with_store([time, fraction, by_wheel](const PublishedStore &store) {
        poke(tfsquare[0], fraction);
        poke(tfsquare[1], fraction);
        if (by_wheel) {
            select_by_wheel(store, peek(mmif));
        }
        if (uncounted != 0) {
            use_oscillators(store.count);
            uncounted = 0;
        }
        sample_published(store, time, by_wheel ? wheel_rule : motion_rule, pcandidates);
    });
    poke(changed, uint8_t{0});
    poke(wgen.prev_time, time);
}

void stop() {
    stop_playing(gen);
    stop_playing(wgen);
}

void zstop() {
    if (zgen.unit == nullptr || peek(zgen.playing) == 0) {
        return;
    }
    const float time = peek(zgen.time);
    halt_generator(zgen);
    std::printf("  Synthesis halted @ %fs, zgAU stopped\n", time);
}

void synthesizeSnapshot() {}

void sinusoid() {}
