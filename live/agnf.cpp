#include "live/agnf.h"

#include "live/ag.h"
#include "live/audio_unit.h"
#include "live/oscillators.h"
#include "live/pieces.h"
#include "live/requests.h"
#include "live/shared.h"
#include "store/settings.h"
#include "store/store.h"
#include "synth/sound.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

float *Sin = nullptr;

namespace {

constexpr uint32_t usual_block = 512; // frames

int32_t table_size = 0; // entries of Sin

/// One block's work; each procedure has its own.
struct Scratch {
    float ovampf[most_block_frames];   // envelope at each frame
    float da[most_oscillators + 1];    // change of the amplitude per frame
    float df[most_oscillators + 1];    // change of the frequency per frame
    float amp[most_oscillators + 1];   // at the block's start
    float freq[most_oscillators + 1];  // at the block's start
    float sum[most_block_frames + 16]; // of all oscillators
};

/// What tells the two procedures apart.
struct Procedure {
    LiveCandidate *const &candidates;
    Scratch &scratch;
    bool is_zone; // keeps the frames of a block and a clock, has a gain, ends by itself
};

Scratch scrub_scratch;
Scratch zone_scratch;
const Procedure scrub = {pcandidates, scrub_scratch, false};
const Procedure zone = {qcandidates, zone_scratch, true};

/// Entries that phases run through: the table's, should the rate have grown since it was made.
int32_t cycle() {
    const double rate = peek(R);
    return rate < table_size ? static_cast<int32_t>(std::max(rate, 0.0)) : table_size;
}

int32_t oscillators(const Procedure &procedure) {
    return procedure.candidates != nullptr ? std::clamp(peek(numbOfCands), 0, most_oscillators) : 0;
}

/// Targets and lines of the oscillators for the block.
void set_up(const Procedure &procedure, LiveGenerator &record, int32_t count, float inv) {
    Scratch &scratch = procedure.scratch;
    for (int32_t i = 0; i < count; ++i) {
        const LiveCandidate &candidate = procedure.candidates[i];
        const uint8_t on = peek(candidate.status);
        const float amp = on != 0 ? peek(candidate.amp) : 0.0f;
        const float freq = peek(candidate.freq);
        poke(record.on[i], on);
        poke(record.amp_target[i], amp);
        poke(record.freq_target[i], freq);
        scratch.amp[i] = peek(record.amp_now[i]);
        scratch.freq[i] = peek(record.freq_now[i]);
        scratch.df[i] = (freq - scratch.freq[i]) * inv;
        scratch.da[i] = (amp - scratch.amp[i]) * inv;
    }
}

/// Returns the state behind the block.
int32_t set_envelope(int32_t state, uint32_t frames, float inv, float gain, float *envelope) {
    for (uint32_t n = 0; n < frames; ++n) {
        const float k = static_cast<float>(n);
        const float by_state[] = {0.0f, k * inv * gain, gain, (1.0f - k * inv) * gain};
        envelope[n] = state >= 0 && state <= 3 ? by_state[state] : 0.0f;
    }
    constexpr int32_t next[] = {0, 2, 2, 0};
    return state >= 0 && state <= 3 ? next[state] : state;
}

/// Sums the oscillators under the envelope; silence where there is no table.
void sound(const Procedure &procedure, LiveGenerator &record, int32_t count, uint32_t frames,
           float *out) {
    Scratch &scratch = procedure.scratch;
    const int32_t size = cycle();
    if (size < 1) {
        std::fill_n(out, frames, 0.0f);
        return;
    }
    sum_block({scratch.freq, scratch.df, scratch.amp, scratch.da, record.phase, count, Sin, size},
              frames, scratch.sum);
    for (uint32_t n = 0; n < frames; ++n) {
        out[n] = scratch.sum[n] * scratch.ovampf[n];
    }
    for (int32_t i = 0; i < count; ++i) {
        if (record.phase[i] > size || record.phase[i] < -size) {
            record.phase[i] %= size;
        }
    }
}

/// One step a frame, so that fractions round as they do one by one.
void advance_position(LiveGenerator &record, uint32_t frames) {
    const double before = peek(record.position);
    double position = before;
    for (uint32_t n = 0; n < frames; ++n) {
        position += 1.0;
    }
    const double rate = peek(R);
    exchange(record.position, before, position > rate ? position - rate : position);
}

/// The zone's clock; at the end of the sound it begins the release. A time or state that the
/// interface thread has set meanwhile stays.
void advance_time(LiveGenerator &record, uint32_t frames) {
    const int32_t state = peek(record.state);
    if (state == 0) {
        return;
    }
    const float length = static_cast<float>(frames / peek(R));
    const float before = peek(record.time);
    exchange(record.time, before, before + length);
    const float time = peek(record.time);
    if (peek(dbp) != 0) {
        ask_print(Said::zone_time, time);
    }
    if (peek(sndlen) - length <= time) {
        exchange(record.state, state, 3);
    }
}

void keep_targets(LiveGenerator &record, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
        poke(record.freq_now[i], peek(record.freq_target[i]));
        poke(record.amp_now[i], peek(record.amp_target[i]));
    }
}

/// A silent zone plays no more. A start sets the state first, so the flag that it sets while this
/// runs is never taken for one of the play before.
void note_silence(LiveGenerator &record) {
    const uint8_t playing = observe(record.playing);
    if (observe(record.state) == 0) {
        exchange(record.playing, playing, uint8_t{0});
    }
}

void render_block(const Procedure &procedure, LiveGenerator &record, uint32_t frames, float *out) {
    if (procedure.is_zone) {
        poke(record.frames, frames);
    } else if (frames != usual_block) {
        ask_print(Said::odd_block, frames);
    }
    const float inv = 1.0f / static_cast<float>(frames);
    const int32_t count = oscillators(procedure);
    set_up(procedure, record, count, inv);
    const int32_t state = peek(record.state);
    const float gain = procedure.is_zone ? peek(record.floatmax) : 1.0f;
    const int32_t next = set_envelope(state, frames, inv, gain, procedure.scratch.ovampf);
    sound(procedure, record, count, frames, out);
    advance_position(record, frames);
    exchange(record.state, state, next); // what the interface thread asked meanwhile stays
    if (procedure.is_zone) {
        advance_time(record, frames);
    }
    keep_targets(record, count);
    if (procedure.is_zone) {
        note_silence(record);
    }
}

void render(const Procedure &procedure, void *context, uint32_t frames, float *out) {
    LiveGenerator &record = *static_cast<LiveGenerator *>(context);
    in_pieces(frames, most_block_frames, out, [&](uint32_t length, float *piece) {
        render_block(procedure, record, length, piece);
    });
}

void create(LiveGenerator &record, RenderProc procedure) {
    create_output_unit(&record.unit, procedure, &record, generator_texts);
    for (float **array : {&record.amp_target, &record.freq_target, &record.amp_now,
                          &record.freq_now, &record.spare1, &record.spare2}) {
        ready_array(*array);
    }
    ready_array(record.phase);
    ready_array(record.on);
    settle_generator(record, R);
    oscillator_vectors(); // settles the choice before the first block
}

} // namespace

float *makeSin(int32_t size) {
    std::free(Sin);
    table_size = std::max(size, 0);
    Sin = static_cast<float *>(
        std::calloc(static_cast<size_t>(std::max(table_size, 1)), sizeof(float)));
    for (int32_t i = 0; i < table_size; ++i) {
        Sin[i] = std::sin(static_cast<float>(i * two_pi / size));
    }
    return Sin;
}

void createAdditiveNFToneUnit(LiveGenerator *record) {
    create(*record, AdditiveNFRenderProc);
}

void createAdditiveNFToneUnit1(LiveGenerator *record) {
    create(*record, AdditiveNFRenderProc1);
    record->events = 0;
    record->select = 0;
    record->floatmax = 1.0f;
}

void AdditiveNFRenderProc(void *context, uint32_t frames, float *out) {
    render(scrub, context, frames, out);
}

void AdditiveNFRenderProc1(void *context, uint32_t frames, float *out) {
    render(zone, context, frames, out);
}
