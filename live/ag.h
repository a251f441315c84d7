// live/ag.h -- what the live generators share on creation, the generator that computes each
// sine. Main thread, but for the render procedure.
#pragma once

#include "live/live.h"

#include <cstdint>
#include <cstdlib>
#include <initializer_list>

/// Creates the unit of a generator that computes each sine and readies its arrays. Any failure
/// ends the program.
void createAdditiveToneUnit(SineGenerator *record);

/// Render procedure of that generator; the context is its record. Audio thread.
void AdditiveRenderProc1(void *context, uint32_t frames, float *out);

constexpr size_t generator_size = 2048; // elements of a generator's array

/// Allocates the array, cleared, where it is still null.
template <typename Element> void ready_array(Element *&array) {
    if (array == nullptr) {
        array = static_cast<Element *>(std::calloc(generator_size, sizeof(Element)));
    }
}

/// The settings that end the creation of a generator.
template <typename Record> void settle_generator(Record &record, double rate) {
    benddf = 2.0f;
    sampleRate = rate;
    record.radians_per_hz = static_cast<float>(6.2831854820251465 / rate);
    record.playing = 0;
    record.midi_started = 0;
}
