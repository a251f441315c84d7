#include "tests/support/audio_double.h"

#include "live/shared.h"

#include <cstring>

namespace {

AudioDouble *present = nullptr;

std::string characters(uint32_t code) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text += static_cast<char>(code >> shift & 0xffu);
    }
    return text;
}

std::string property_text(const char *verb, uint32_t property, uint32_t scope, uint32_t element,
                          uint32_t size) {
    return std::string(verb) + " " + std::to_string(property) + " scope " + std::to_string(scope) +
           " element " + std::to_string(element) + " size " + std::to_string(size);
}

AudioDouble::Unit &as_unit(void *unit) {
    return *static_cast<AudioDouble::Unit *>(unit);
}

void *find_next(void *after, const ComponentDescription *wanted) {
    present->note("find " + characters(wanted->type) + " " + characters(wanted->subtype) + " " +
                  characters(wanted->maker));
    return after == nullptr && present->component ? present : nullptr;
}

int32_t instance_new(void *, void **unit) {
    const int32_t result = present->note("new");
    if (result == 0) {
        *unit = &present->units.emplace_back();
    }
    return result;
}

int32_t set_property(void *unit, uint32_t property, uint32_t scope, uint32_t element,
                     const void *data, uint32_t size) {
    const int32_t result = present->note(property_text("set", property, scope, element, size));
    if (result == 0 && property == property_callback) {
        std::memcpy(&as_unit(unit).callback, data, sizeof(RenderCallback));
    }
    if (result == 0 && property == property_stream_format) {
        std::memcpy(&as_unit(unit).format, data, sizeof(StreamFormat));
    }
    return result;
}

int32_t get_property(void *, uint32_t property, uint32_t scope, uint32_t element, void *data,
                     uint32_t *size) {
    const int32_t result = present->note(property_text("get", property, scope, element, *size));
    if (result == 0) {
        std::memcpy(data, &present->rate, sizeof present->rate);
    }
    return result;
}

int32_t initialize(void *unit) {
    as_unit(unit).initialized = true;
    return present->note("initialize");
}

int32_t uninitialize(void *unit) {
    as_unit(unit).initialized = false;
    return present->note("uninitialize");
}

int32_t dispose(void *unit) {
    as_unit(unit).disposed = true;
    poke(as_unit(unit).started, false);
    return present->note("dispose");
}

int32_t start(void *unit) {
    const int32_t result = present->note("start");
    poke(as_unit(unit).started, result == 0);
    return result;
}

int32_t stop(void *unit) {
    poke(as_unit(unit).started, false);
    return present->note("stop");
}

const BackEnd back_end = {find_next,    instance_new, set_property, get_property, initialize,
                          uninitialize, dispose,      start,        stop};

} // namespace

AudioDouble::AudioDouble() {
    present = this;
    use_back_end(&back_end);
}

AudioDouble::~AudioDouble() {
    use_back_end(nullptr);
    present = nullptr;
}

std::vector<float> AudioDouble::pump(uint32_t frames, float before) {
    std::vector<float> sum(frames);
    for (Unit &unit : units) {
        if (!peek(unit.started)) {
            continue;
        }
        std::vector<float> block(frames, before);
        unit.callback.procedure(unit.callback.context, frames, block.data());
        for (size_t k = 0; k < frames; k++) {
            sum[k] += block[k];
        }
    }
    return sum;
}

std::string AudioDouble::heard() {
    std::string text;
    text.swap(notes);
    return text;
}

int32_t AudioDouble::note(const std::string &operation) {
    notes += operation + "\n";
    return operation == failing ? code : 0;
}
