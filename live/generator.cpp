#include "live/generator.h"

#include "live/oscillators.h"
#include "live/pause.h"
#include "store/settings.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr uint32_t release_pause = 20000; // microseconds
constexpr uint32_t further_pause = 10000; // microseconds
constexpr int further_pauses = 10;

/// Takes over a candidate's values, so that the first block need not glide.
void take_up(LiveGenerator &generator, int32_t i, const LiveCandidate &candidate) {
    const uint8_t status = peek(candidate.status);
    poke(generator.on[i], status);
    if (status != 1) {
        poke(generator.amp_now[i], 0.0f);
        poke(generator.amp_target[i], 0.0f);
        return;
    }
    const float freq = peek(candidate.freq);
    const float amp = peek(candidate.amp);
    poke(generator.freq_now[i], freq);
    poke(generator.freq_target[i], freq);
    poke(generator.amp_now[i], amp);
    poke(generator.amp_target[i], amp);
    if (dbp) {
        std::printf("%d\t%f\t%f\n", i, freq, amp);
    }
}

} // namespace

void start_generator(LiveGenerator &generator, const LiveCandidate *candidates, double position,
                     const char *tell) {
    if (generator.unit == nullptr || peek(generator.playing) != 0) {
        return;
    }
    poke(generator.position, position);
    poke(totalFrames, int64_t{0});
    const int32_t count = std::clamp(peek(numbOfCands), 0, most_oscillators);
    for (int32_t i = 0; i < count; ++i) {
        take_up(generator, i, candidates[i]);
    }
    publish(generator.state, 1); // last: the unit may still be running, silently
    if (AudioOutputUnitStart(generator.unit) == 0) {
        publish(generator.playing, uint8_t{1});
        if (dbp) {
            std::printf(tell, 1);
        }
    }
}

void await_release(const int32_t &state, bool running) {
    pause_for(release_pause);
    for (int n = 0; running && n < further_pauses && peek(state) == 3; ++n) {
        pause_for(further_pause);
    }
}
