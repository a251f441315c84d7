#include "live/fbp.h"

#include "live/audio_unit.h"
#include "live/idle.h"
#include "live/requests.h"
#include "live/shared.h"
#include "store/settings.h"
#include "store/store.h"
#include "synth/sound.h"

#include <GL/freeglut.h>
#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

/// What `state` of the record means.
enum State { stopped, fading_in, playing_on, stopping, ending = 7 };

const UnitTexts player_texts = {"Couldn't open component for outputUnit",
                                "AudioUnitSetProperty failed", "AudioUnitGetProperty failed",
                                "Couldn't set StreamFormat on input scope / bus 0",
                                "Couldn't initialize output unit"};

/// Toward zero; what no 64-bit number holds stays at the nearest one.
int64_t truncated(double value) {
    constexpr double limit = 0x1p62;
    return value == value ? static_cast<int64_t>(std::clamp(value, -limit, limit)) : 0;
}

/// One block: what it found at its start, and where it stands.
struct Block {
    uint32_t frames;
    const SoundReading &sound;
    bool loop;
    int32_t entry_state;
    double entry_position;
    int64_t entry_count;

    int32_t state;
    double position;
    int64_t count; // frames delivered in this play
    bool used_up;
    float peak;
    float squares;
};

/// The sample of a frame by the state; `unchanged` for a state that does not sound.
float shaped(const Block &block, uint32_t k, float sample, float unchanged) {
    const auto length = static_cast<float>(block.frames);
    switch (block.state) {
    case stopped:
        return 0.0f;
    case fading_in:
        return static_cast<float>(k) * sample / length;
    case playing_on:
        return sample;
    case stopping:
    case ending:
        return static_cast<float>(block.frames - k) * sample / length;
    default:
        return unchanged;
    }
}

void measure(Block &block, float sample) {
    if (std::fabs(sample) > std::fabs(block.peak)) {
        block.peak = sample;
    }
    block.squares += sample * sample;
}

/// Fills the block. Where the sound is used up, `state` falls to 0, or to 1 in a loop.
void fill(Block &block, float *out) {
    int64_t l = truncated(block.position);
    for (uint32_t k = 0; k < block.frames; k++) {
        if (block.count >= block.sound.frames - 1) {
            block.used_up = true;
            block.state = block.loop ? fading_in : stopped;
            out[k] = block.loop ? out[k] : 0.0f;
        } else {
            const bool there = l >= 0 && l < block.sound.frames;
            out[k] = shaped(block, k, there ? peek(block.sound.samples[l]) : 0.0f, out[k]);
            measure(block, out[k]);
        }
        block.position += 1.0;
        block.count += 1;
        l += 1;
    }
}

void note_level(FloatPlayer &record, const Block &block) {
    float level = block.peak;
    if (peek(record.metering) != 0 && block.frames > 0) {
        const float mean = block.squares / static_cast<float>(block.frames);
        level = static_cast<float>(std::sqrt(static_cast<double>(mean)) * 1.414);
    }
    poke(record.prev_level, peek(record.level));
    poke(record.level, level);
}

void note_time(FloatPlayer &record, uint32_t frames) {
    const uint32_t played = static_cast<uint32_t>(peek(record.frames_played)) + frames;
    poke(record.blocks, static_cast<int32_t>(static_cast<uint32_t>(peek(record.blocks)) + 1u));
    poke(record.frames_played, static_cast<int32_t>(played));
    poke(record.seconds,
         static_cast<float>(static_cast<int32_t>(played)) / static_cast<float>(peek(R)));
}

// The fields behind a block. Each keeps what the interface has written during the block.

void keep_place(FloatPlayer &record, const Block &block) {
    exchange(record.position, block.entry_position, block.position);
    exchange(totalfFrames, block.entry_count, block.count);
}

void rewind(FloatPlayer &record, const Block &block) {
    exchange(record.position, block.entry_position, 0.0);
    exchange(totalfFrames, block.entry_count, int64_t{0});
}

// What to do behind a block, by the state; each returns whether the play has ended.

/// Behind a silent block, and where the sound is used up.
bool finish_stopped(FloatPlayer &record, const Block &block) {
    if (!exchange(record.state, block.entry_state, int32_t{stopped})) {
        return false; // started anew, or a fade asked for: the next block sees to it
    }
    const auto rest = static_cast<double>(block.sound.frames - block.frames);
    if (block.entry_position >= rest) {
        rewind(record, block);
    } else {
        exchange(totalfFrames, block.entry_count, block.count);
    }
    AudioOutputUnitStop(record.unit);
    if (peek(zgen.state) == 0) {
        ask_idle_off();
    }
    ask_print(Said::stopped);
    return true;
}

bool finish_fade_in(FloatPlayer &record, const Block &block) {
    // A sound of less than two blocks has to fade out at once.
    const bool is_short = block.sound.frames < int64_t{2} * block.frames;
    exchange(record.state, block.entry_state, int32_t{is_short ? ending : playing_on});
    poke(record.frames_played, static_cast<int32_t>(truncated(block.position)));
    keep_place(record, block);
    return false;
}

bool finish_playing(FloatPlayer &record, const Block &block) {
    keep_place(record, block);
    if (block.sound.frames - block.count < int64_t{2} * block.frames) {
        exchange(record.state, block.entry_state, int32_t{ending});
    }
    return false;
}

/// Behind a fade-out, which no second request repeats. The unit runs on for a silent block.
bool finish_fade_out(FloatPlayer &record, const Block &block) {
    keep_place(record, block);
    poke(record.state, int32_t{stopped});
    return true;
}

/// At the end of the sound in a loop, unless a stop was asked for meanwhile.
bool finish_round(FloatPlayer &record, const Block &block) {
    if (!exchange(record.state, block.entry_state, int32_t{fading_in})) {
        return finish_fade_out(record, block);
    }
    rewind(record, block);
    return false;
}

bool finish(FloatPlayer &record, const Block &block) {
    if (block.loop && (block.used_up || block.state == ending)) {
        return finish_round(record, block);
    }
    switch (block.state) {
    case stopped:
        return finish_stopped(record, block);
    case fading_in:
        return finish_fade_in(record, block);
    case playing_on:
        return finish_playing(record, block);
    case stopping:
    case ending:
        return finish_fade_out(record, block);
    default:
        exchange(totalfFrames, block.entry_count, block.count);
        return false;
    }
}

/// The start that play and resume share, with all fields ready. The state goes first: a unit
/// calls back at once.
void start_unit() {
    poke(fplayer.state, int32_t{fading_in});
    poke(fplayer.playing, uint8_t{1});
    CheckError(AudioOutputUnitStart(fplayer.unit), "Couldn't start output unit");
    if (peek(zgen.state) == 0) {
        glutIdleFunc(Idle);
    }
    std::printf("zgen.state = %d\n", peek(zgen.state));
    glutPostRedisplay();
}

/// Says what there is to play; false when there is nothing.
bool tell_sound() {
    N = 2000.0f;
    std::printf("FBP1: %ld\t frames\n", static_cast<long>(fbuffersize));
    if (fBuffer == nullptr) {
        std::puts("NULL Buffer!");
        return false;
    }
    return true;
}

} // namespace

void CreateAndConnectFpOutputUnit1(FloatPlayer *record) {
    create_output_unit(&record->unit, FloatBufRenderProc1, record, player_texts);
}

int32_t fbplay1(float start, int64_t frames) {
    if (peek(fplayer.playing) != 0) {
        return 0;
    }
    serve_requests();
    if (dbp != 0) {
        std::printf("FBP1: %ld\t size\n", static_cast<long>(frames));
    }
    if (!tell_sound()) {
        return 0;
    }
    poke(totalfFrames, int64_t{0});
    fplayer.buffer = fBuffer;
    poke(fplayer.position, 0.0);
    poke(fplayer.frames_played, int32_t{0});
    poke(fplayer.blocks, int32_t{0});
    poke(fplayer.seconds, start);
    start_unit();
    std::puts("_____________________________________________");
    std::puts("");
    return 0;
}

void fbstop1() {
    if (fplayer.unit != nullptr && peek(fplayer.playing) != 0) {
        poke(fplayer.state, int32_t{stopping});
    }
}

void fbresume1() {
    const bool runs = peek(fplayer.playing) != 0;
    if (runs || fBuffer == nullptr) {
        exchange(fplayer.state, int32_t{stopped}, int32_t{fading_in});
    }
    if (dbp != 0) {
        std::puts("resuming");
    }
    if (runs) {
        return;
    }
    serve_requests();
    if (!tell_sound()) {
        return;
    }
    const double position = peek(fplayer.position);
    poke(totalfFrames, truncated(position));
    fplayer.buffer = fBuffer;
    poke(fplayer.frames_played, static_cast<int32_t>(truncated(position - 1.0)));
    poke(fplayer.seconds, static_cast<float>(position / R) + sndstart);
    start_unit();
}

void FloatBufRenderProc1(void *context, uint32_t frames, float *out) {
    FloatPlayer &record = *static_cast<FloatPlayer *>(context);
    const SoundReading sound;
    if (sound.samples == nullptr) {
        ask_print(Said::no_buffer);
        return;
    }
    const int32_t state = peek(record.state);
    const double position = peek(record.position);
    const int64_t count = peek(totalfFrames);
    Block block = {frames, sound,    peek(record.loop) != 0,
                   state,  position, count,
                   state,  position, count,
                   false,  0.0f,     0.0f};
    if (peek(dbp) != 0) {
        ask_print(Said::read_position, static_cast<double>(truncated(position)));
    }
    fill(block, out);
    note_level(record, block);
    const bool ended = finish(record, block);
    note_time(record, frames);
    if (ended && peek(record.playing) != 0) {
        poke(record.playing, uint8_t{0}); // last: the interface may start anew from here on
    }
}
