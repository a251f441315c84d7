#include "live/ag.h"

#include "live/audio_unit.h"
#include "live/pieces.h"
#include "live/shared.h"
#include "synth/sound.h"

#include <algorithm>
#include <cmath>

namespace {

// The limits of one block; a longer one is taken in pieces, further oscillators stay silent.
constexpr size_t most_oscillators = 1024;
constexpr uint32_t most_frames = 1024;

constexpr double full_turn = 6.2831855; // radians
constexpr float ceiling = 0.99f;

float ampf[most_oscillators][most_frames]; // amplitude at each frame
float ovampf[generator_size];              // envelope at each frame
float phasef[most_oscillators];            // phase in hand, radians
float phase_incrementf[most_oscillators];  // phase step at the end of the block
float deltaf[most_oscillators];            // change of the phase step per frame

size_t oscillators() {
    return std::min(static_cast<size_t>(std::max(peek(numbOfCands), 0)), most_oscillators);
}

/// Targets, lines and phases of one oscillator for the block.
void set_up(SineGenerator &record, size_t i, uint32_t frames) {
    const LiveCandidate &candidate = pcandidates[i];
    const float length = static_cast<float>(std::max(frames, 1u));
    record.on[i] = peek(candidate.status);
    record.amp_target[i] = record.on[i] != 0 ? peek(candidate.amp) : 0.0f;
    record.freq_target[i] = peek(candidate.freq);
    const float d = (record.amp_target[i] - record.amp_now[i]) / length;
    for (uint32_t k = 0; k < frames; k++) {
        ampf[i][k] = static_cast<float>(k) * d + record.amp_now[i];
    }
    phasef[i] = record.phase_now[i];
    phase_incrementf[i] = record.freq_target[i] * record.radians_per_hz;
    deltaf[i] = (phase_incrementf[i] - record.step_now[i]) / length;
}

/// The envelope of the block; returns the state behind it.
int32_t set_envelope(int32_t state, uint32_t frames) {
    const float length = static_cast<float>(frames);
    for (uint32_t k = 0; k < frames; k++) {
        const float place = static_cast<float>(k) / length;
        const float by_state[] = {0.0f, place, 1.0f, 1.0f - place};
        ovampf[k] = state >= 0 && state <= 3 ? by_state[state] : 0.0f;
    }
    constexpr int32_t next[] = {0, 2, 2, 0};
    return state >= 0 && state <= 3 ? next[state] : state;
}

/// One oscillator's sample; its phase goes on by a frame.
float step(size_t i, uint32_t k, float step_now) {
    const float sample = std::sin(phasef[i]) * ampf[i][k];
    phasef[i] = deltaf[i] * static_cast<float>(k) + phasef[i] + step_now;
    if (static_cast<double>(phasef[i]) > full_turn) {
        phasef[i] = static_cast<float>(static_cast<double>(phasef[i]) - full_turn);
    }
    return sample;
}

void keep(SineGenerator &record, size_t i, bool released) {
    record.phase_now[i] = phasef[i];
    record.step_now[i] = phase_incrementf[i];
    record.freq_copy[i] = record.freq_target[i];
    record.amp_now[i] = released ? 0.0f : record.amp_target[i];
}

void render_piece(SineGenerator &record, uint32_t frames, float *out) {
    const size_t count = oscillators();
    for (size_t i = 0; i < count; i++) {
        set_up(record, i, frames);
    }
    int32_t state = peek(record.state);
    const int32_t next = set_envelope(state, frames);
    for (uint32_t k = 0; k < frames; k++) {
        float sum = 0.0f;
        for (size_t i = 0; i < count; i++) {
            sum += step(i, k, record.step_now[i]);
        }
        out[k] = std::clamp(sum * ovampf[k], -ceiling, ceiling);
    }
    exchange(record.state, state, next); // a release that came in meanwhile stays
    for (size_t i = 0; i < count; i++) {
        keep(record, i, next == 0);
    }
}

} // namespace

void createAdditiveToneUnit(SineGenerator *record) {
    create_output_unit(&record->unit, AdditiveRenderProc1, record, generator_texts);
    for (float **array :
         {&record->freq_target, &record->amp_target, &record->freq_copy, &record->amp_now,
          &record->phase_now, &record->spare1, &record->step_now, &record->spare2}) {
        ready_array(*array);
    }
    ready_array(record->on);
    settle_generator(*record, R);
}

void AdditiveRenderProc1(void *context, uint32_t frames, float *out) {
    SineGenerator &record = *static_cast<SineGenerator *>(context);
    in_pieces(frames, most_frames, out,
              [&record](uint32_t length, float *piece) { render_piece(record, length, piece); });
}
