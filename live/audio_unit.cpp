#include "live/audio_unit.h"

#include "live/live.h"
#include "live/mixer.h"
#include "synth/sound.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int32_t no_unit = -50;

const BackEnd *back_end = &mixing_back_end;

} // namespace

const UnitTexts generator_texts = {
    "Couldn't get audio unit instance", "Error setting callback: ", "Couldn't get sample rate",
    "Couldn't set StreamFormat on input scope / bus 0", "Error initializing unit:"};

void use_back_end(const BackEnd *chosen) {
    back_end = chosen != nullptr ? chosen : &mixing_back_end;
}

void *AudioComponentFindNext(void *after, const ComponentDescription *wanted) {
    return back_end->find_next(after, wanted);
}

int32_t AudioComponentInstanceNew(void *component, void **unit) {
    return back_end->instance_new(component, unit);
}

int32_t AudioComponentInstanceDispose(void *unit) {
    return back_end->dispose(unit);
}

int32_t AudioUnitSetProperty(void *unit, uint32_t property, uint32_t scope, uint32_t element,
                             const void *data, uint32_t size) {
    return back_end->set_property(unit, property, scope, element, data, size);
}

int32_t AudioUnitGetProperty(void *unit, uint32_t property, uint32_t scope, uint32_t element,
                             void *data, uint32_t *size) {
    return back_end->get_property(unit, property, scope, element, data, size);
}

int32_t AudioUnitInitialize(void *unit) {
    return back_end->initialize(unit);
}

int32_t AudioUnitUninitialize(void *unit) {
    return back_end->uninitialize(unit);
}

int32_t AudioOutputUnitStart(void *unit) {
    return unit != nullptr ? back_end->start(unit) : no_unit;
}

int32_t AudioOutputUnitStop(void *unit) {
    return unit != nullptr ? back_end->stop(unit) : no_unit;
}

void CheckError(int32_t error, const char *operation) {
    if (error == 0) {
        return;
    }
    char code[16];
    const auto bits = static_cast<uint32_t>(error);
    const auto byte = [bits](int k) { return static_cast<int>(bits >> (24 - 8 * k) & 0xffu); };
    if (std::isprint(byte(0)) != 0 && std::isprint(byte(1)) != 0 && std::isprint(byte(2)) != 0 &&
        std::isprint(byte(3)) != 0) {
        std::snprintf(code, sizeof code, "'%c%c%c%c'", byte(0), byte(1), byte(2), byte(3));
    } else {
        std::snprintf(code, sizeof code, "%d", error);
    }
    std::printf("Error: %s (%s)\n", operation, code);
    std::exit(-1);
}

void create_output_unit(void **unit, RenderProc procedure, void *context, const UnitTexts &texts) {
    const ComponentDescription wanted = {four_characters("auou"), four_characters("ahal"),
                                         four_characters("appl")};
    void *component = AudioComponentFindNext(nullptr, &wanted);
    if (component == nullptr) {
        std::puts("can't get output unit");
        std::exit(-1);
    }
    CheckError(AudioComponentInstanceNew(component, unit), texts.instance);
    const RenderCallback callback = {procedure, context};
    CheckError(
        AudioUnitSetProperty(*unit, property_callback, scope_input, 0, &callback, sizeof callback),
        texts.callback);
    uint32_t size = sizeof R;
    CheckError(AudioUnitGetProperty(*unit, property_sample_rate, scope_output, 0, &R, &size),
               texts.rate);
    streamFormat = {R, four_characters("lpcm"), 0x29, 4, 1, 4, 1, 32};
    CheckError(AudioUnitSetProperty(*unit, property_stream_format, scope_input, 0, &streamFormat,
                                    sizeof streamFormat),
               texts.format);
    CheckError(AudioUnitInitialize(*unit), texts.initialize);
}

void close_output_unit(void **unit) {
    if (*unit != nullptr) {
        AudioUnitUninitialize(*unit);
        AudioComponentInstanceDispose(*unit);
        *unit = nullptr;
    }
}
