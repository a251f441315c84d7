// The earlier renderers: on the caller's thread, or split between even and odd partials. They
// free the sound right behind the start of its playing.
#include "live/shared.h"
#include "store/store.h"
#include "synth/bank.h"
#include "synth/oscillator.h"
#include "synth/render.h"
#include "synth/sound.h"
#include "synth/syn.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

int64_t exact_frames(float seconds) {
    return std::min(frame_of(seconds, R), int64_t{1} << 40);
}

float peak_of_sound(int64_t frames) {
    float peak = 0.0f;
    for (int64_t n = 0; n < frames; ++n) {
        peak = peak_with(peak, fBuffer[n]);
    }
    return peak;
}

/// Brings the peak to 0.7, plays the sound and frees it.
void play_once(float start, float peak, int64_t frames, const char *title) {
    scale_sound(factor_to_peak(peak), frames);
    std::puts(title);
    std::free(fBuffL);
    std::free(fBuffR);
    fBuffL = fBuffR = nullptr;
    publish(fbuffersize, frames);
    play_rendered(start, frames);
    float *sound = fBuffer;
    put_sound(nullptr, 0);
    std::free(sound);
}

/// Silent buffers for the sum and its two halves. Returns their frames: 0 without memory.
int64_t allocate_halves(int64_t frames) {
    frames = new_sound(frames);
    fBuffR = silent_buffer(frames);
    fBuffL = silent_buffer(frames);
    render_frames = fBuffR != nullptr && fBuffL != nullptr ? frames : 0;
    return render_frames;
}

/// Sums the halves into fBuffer. Returns the peak.
float sum_halves(int64_t frames) {
    float peak = 0.0f;
    for (int64_t n = 0; n < frames; ++n) {
        const float sum = fBuffL[n] + fBuffR[n];
        poke(fBuffer[n], sum);
        peak = peak_with(peak, sum);
    }
    return peak;
}

} // namespace

void syn(float start, float seconds) {
    int64_t frames = exact_frames(seconds);
    std::printf("Num. samples = %ld\n", static_cast<long>(frames));
    frames = new_sound(frames);
    render_stripe(0, 1, fBuffer, frames);
    const float peak = peak_of_sound(frames);
    std::printf("floatmax = %f\n", static_cast<double>(peak));
    play_once(start, peak, frames, "SYNTH LIVE:");
}

void syns(float start, float seconds) {
    const int64_t frames = new_sound(exact_frames(seconds));
    render_selected_stripe(0, 1, false, fBuffer, frames);
    play_once(start, peak_of_sound(frames), frames, "SYNTH Selections LIVE:");
}

void synch() {
    const int64_t frames = new_sound(exact_frames(sndlen));
    render_stripe(0, 1, fBuffer, frames);
    play_once(sndstart, peak_of_sound(frames), frames, "SYNTH LIVE:");
}

void synL(float *buffer, int64_t frames) {
    render_stripe(0, 2, buffer, frames);
}

void synR(float *buffer, int64_t frames) {
    if (partials < 2) {
        return;
    }
    render_stripe(1, 2, buffer, frames);
}

void *synLT(void *) {
    synL(fBuffL, render_frames);
    return finished_flag();
}

void *synRT(void *) {
    synR(fBuffR, render_frames);
    return finished_flag();
}

void synsum(float start, float seconds) {
    const int64_t frames = allocate_halves(whole_rate_frames(seconds));
    synL(fBuffL, frames);
    synR(fBuffR, frames);
    play_once(start, sum_halves(frames), frames, "SYNTH LIVE:");
}

void synsumT() {
    const int64_t frames = allocate_halves(whole_rate_frames(sndlen));
    RenderThread even, odd;
    even.start(synLT, nullptr);
    odd.start(synRT, nullptr);
    even.join();
    odd.join();
    play_once(sndstart, sum_halves(frames), frames, "SYNTH LIVE:");
}
