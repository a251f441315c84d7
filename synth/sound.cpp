#include "synth/sound.h"

#include "live/shared.h"
#include "store/misc.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

int32_t no_player(float, int64_t) {
    wip();
    return 0;
}

std::atomic<uint64_t> readings_begun = 0;
std::atomic<uint64_t> readings_done = 0;

} // namespace

double R = 44100.0;
float *fBuffer = nullptr;
int64_t fbuffersize = 0;

float *fBuffL = nullptr;
float *fBuffR = nullptr;
float **fBuffW = nullptr;

int32_t (*play_rendered)(float start, int64_t frames) = no_player;

SoundReading::SoundReading() {
    readings_begun.fetch_add(1);
    // A count belongs to a buffer that was the sound before and after it was read. The buffer
    // changes at most once or twice meanwhile, as the window thread waits for blocks to end.
    const float *after = observe(fBuffer);
    do {
        samples = after;
        frames = observe(fbuffersize);
        after = observe(fBuffer);
    } while (after != samples);
}

SoundReading::~SoundReading() {
    readings_done.fetch_add(1);
}

void put_sound(float *buffer, int64_t frames) {
    if (buffer != nullptr) {
        publish(fbuffersize, std::min(fbuffersize, frames));
    }
    publish(fBuffer, buffer);
    const uint64_t begun = readings_begun.load();
    while (readings_done.load() < begun) {
        std::this_thread::yield();
    }
}
