// live/back_end.h -- what an output unit consists of, and the operations on units as a back end
// offers them.
#pragma once

#include <cstdint>

/// Fills `frames` mono samples at `out`, which come in as zeroes. Called on the audio thread.
using RenderProc = void (*)(void *context, uint32_t frames, float *out);

/// The procedure of a unit, the data of property_callback.
struct RenderCallback {
    RenderProc procedure;
    void *context;
};

/// What kind of component is wanted; four characters each.
struct ComponentDescription {
    uint32_t type, subtype, maker;
};

/// Four characters as one number, the first in the highest byte.
constexpr uint32_t four_characters(const char (&text)[5]) {
    uint32_t code = 0;
    for (int i = 0; i < 4; i++) {
        code = code << 8 | static_cast<uint8_t>(text[i]);
    }
    return code;
}

constexpr uint32_t property_sample_rate = 2;   // double, Hz
constexpr uint32_t property_stream_format = 8; // StreamFormat
constexpr uint32_t property_callback = 23;     // RenderCallback
constexpr uint32_t scope_input = 1;
constexpr uint32_t scope_output = 2;

/// The operations as a back end offers them.
struct BackEnd {
    void *(*find_next)(void *after, const ComponentDescription *wanted);
    int32_t (*instance_new)(void *component, void **unit);
    int32_t (*set_property)(void *unit, uint32_t property, uint32_t scope, uint32_t element,
                            const void *data, uint32_t size);
    int32_t (*get_property)(void *unit, uint32_t property, uint32_t scope, uint32_t element,
                            void *data, uint32_t *size);
    int32_t (*initialize)(void *unit);
    int32_t (*uninitialize)(void *unit);
    int32_t (*dispose)(void *unit);
    int32_t (*start)(void *unit);
    int32_t (*stop)(void *unit);
};
