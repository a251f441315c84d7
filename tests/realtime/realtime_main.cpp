// Runs the render procedures through the mixer on a thread that must not wait. Built with
// -fsanitize=realtime, a lock, an allocation or a system call on it ends the program; the
// argument "faulty" makes one, to show that it does.
#include "live/ag.h"
#include "live/agnf.h"
#include "live/audio_unit.h"
#include "live/cleanup.h"
#include "live/fbp.h"
#include "live/mixer.h"
#include "live/requests.h"
#include "live/shared.h"
#include "synth/sound.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#if defined(__clang__) && __clang_major__ >= 20
#define NEVER_WAITS [[clang::nonblocking]]
#else
#define NEVER_WAITS
#endif

namespace {

constexpr uint32_t block_frames = 700;
constexpr int64_t sound_frames = 60000;

double open_by_hand() {
    return 44100.0;
}

void close_by_hand() {}

const Driver by_hand = {open_by_hand, close_by_hand};

std::array<float, 2 * block_frames> out;

void one_block() NEVER_WAITS {
    deliver(out.data(), block_frames, 2);
}

void faulty_block() NEVER_WAITS {
    void *volatile memory = std::malloc(64);
    std::free(memory);
}

/// Audio's own thread, for so many blocks.
void run_blocks(int count, bool faulty) {
    std::thread([count, faulty] {
        for (int i = 0; i < count; i++) {
            one_block();
        }
        if (faulty) {
            faulty_block();
        }
    }).join();
}

void set_up_generator() {
    static std::array<LiveCandidate, 64> candidates;
    for (size_t i = 0; i < candidates.size(); i++) {
        candidates[i].freq = 100.0f + 37.0f * static_cast<float>(i);
        candidates[i].amp = 0.01f;
        candidates[i].status = 1;
    }
    pcandidates = qcandidates = candidates.data();
    numbOfCands = static_cast<int32_t>(candidates.size());
    createAdditiveToneUnit(&gen);
    createAdditiveNFToneUnit(&wgen);
    createAdditiveNFToneUnit1(&zgen);
    makeSin(static_cast<int32_t>(R));
}

/// The player through all its states.
void play_through(bool faulty) {
    fbplay1(0.0f, fbuffersize);
    run_blocks(10, faulty);
    fbstop1();
    run_blocks(4, false);
    fbresume1();
    run_blocks(200, false);
    poke(fplayer.loop, uint8_t{1});
    fbplay1(0.0f, fbuffersize);
    run_blocks(300, false);
    float *sound = fBuffer;
    put_sound(nullptr, 0);
    run_blocks(3, false);
    put_sound(sound, fbuffersize);
    fbstop1();
    run_blocks(4, false);
    serve_requests();
}

/// A generator's start, its sound and its release.
template <typename Generator> void generate(Generator &generator) {
    for (const int32_t state : {1, 3}) {
        poke(generator.state, state);
        AudioOutputUnitStart(generator.unit);
        run_blocks(5, false);
        AudioOutputUnitStop(generator.unit);
    }
    serve_requests();
}

} // namespace

int main(int argc, char **argv) {
    const bool faulty = argc > 1 && std::strcmp(argv[1], "faulty") == 0;
    use_driver(&by_hand);
    CreateAndConnectFpOutputUnit1(&fplayer);
    put_sound(static_cast<float *>(std::calloc(sound_frames, sizeof(float))), sound_frames);
    publish(fbuffersize, sound_frames);
    set_up_generator();
    generate(gen);
    generate(wgen);
    generate(zgen);
    play_through(faulty);
    cleanupAudioMIDI();
    std::puts("the render procedures never waited");
    return 0;
}
