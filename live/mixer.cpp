#include "live/mixer.h"

#include "live/live.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <thread>

namespace {

constexpr int32_t bad_argument = -50; // wrong property, scope or size
constexpr int32_t no_room = -108;     // every place is taken
constexpr int32_t not_ready = -10;    // start of a unit that was not initialised
constexpr size_t most_units = 8;

/// A unit's place. `run` is odd while the unit is started; each start gives a new number.
struct OutputUnit {
    bool taken = false;       // main thread
    bool initialized = false; // main thread
    RenderCallback callback = {};
    StreamFormat format = {};
    std::atomic<uint32_t> run = 0;
};

std::array<OutputUnit, most_units> units;
const Driver *driver = nullptr;
double rate = 0.0; // Hz, 0 while the stream is closed

std::atomic<uint64_t> slices_begun = 0;
std::atomic<uint64_t> slices_done = 0;
std::atomic<uint64_t> blocks = 0;

// The slice in hand; audio thread.
std::array<float, slice_frames> slice;
uint32_t slice_used = slice_frames;

/// The unit whose procedure this thread is in, and the number of its run.
thread_local const OutputUnit *inside = nullptr;
thread_local uint32_t inside_run = 0;

bool is_started(uint32_t run) {
    return (run & 1u) != 0;
}

void add_unit(OutputUnit &unit) {
    const uint32_t run = unit.run.load();
    if (!is_started(run)) {
        return;
    }
    std::array<float, slice_frames> samples{};
    inside = &unit;
    inside_run = run;
    unit.callback.procedure(unit.callback.context, slice_frames, samples.data());
    inside = nullptr;
    for (size_t k = 0; k < slice_frames; k++) {
        slice[k] += samples[k];
    }
}

void mix_slice() {
    slices_begun.fetch_add(1);
    slice.fill(0.0f);
    for (OutputUnit &unit : units) {
        add_unit(unit);
    }
    slices_done.fetch_add(1);
}

/// Waits until a slice that may still see the old state of a unit is over.
void await_slice() {
    const uint64_t begun = slices_begun.load();
    while (slices_done.load() < begun) {
        std::this_thread::yield();
    }
}

OutputUnit &as_unit(void *unit) {
    return *static_cast<OutputUnit *>(unit);
}

void *find_next(void *after, const ComponentDescription *) {
    // There is one component at most, and nothing behind it.
    return after == nullptr && driver != nullptr ? &units : nullptr;
}

int32_t instance_new(void *, void **unit) {
    const auto free = std::find_if(units.begin(), units.end(),
                                   [](const OutputUnit &place) { return !place.taken; });
    if (free == units.end()) {
        return no_room;
    }
    free->taken = true;
    if (rate == 0.0) {
        slice_used = slice_frames; // what an earlier stream left is over
        rate = driver->open();
    }
    *unit = &*free;
    return 0;
}

int32_t set_property(void *unit, uint32_t property, uint32_t, uint32_t, const void *data,
                     uint32_t size) {
    if (property == property_callback && size == sizeof(RenderCallback)) {
        std::memcpy(&as_unit(unit).callback, data, size);
        return 0;
    }
    if (property == property_stream_format && size == sizeof(StreamFormat)) {
        std::memcpy(&as_unit(unit).format, data, size);
        return 0;
    }
    return bad_argument;
}

int32_t get_property(void *, uint32_t property, uint32_t, uint32_t, void *data, uint32_t *size) {
    if (property != property_sample_rate || *size < sizeof rate || rate == 0.0) {
        return bad_argument;
    }
    std::memcpy(data, &rate, sizeof rate);
    *size = sizeof rate;
    return 0;
}

int32_t initialize(void *unit) {
    as_unit(unit).initialized = as_unit(unit).callback.procedure != nullptr;
    return as_unit(unit).initialized ? 0 : not_ready;
}

int32_t start(void *unit) {
    if (!as_unit(unit).initialized) {
        return not_ready;
    }
    std::atomic<uint32_t> &run = as_unit(unit).run;
    uint32_t now = run.load();
    while (!run.compare_exchange_weak(now, is_started(now) ? now + 2 : now + 1)) {
    }
    return 0;
}

int32_t stop(void *unit) {
    std::atomic<uint32_t> &run = as_unit(unit).run;
    uint32_t now = inside == unit ? inside_run : run.load();
    if (inside == unit) {
        run.compare_exchange_strong(now, now + 1);
        return 0;
    }
    while (is_started(now) && !run.compare_exchange_weak(now, now + 1)) {
    }
    return 0;
}

int32_t uninitialize(void *unit) {
    stop(unit);
    await_slice();
    as_unit(unit).initialized = false;
    return 0;
}

int32_t dispose(void *unit) {
    uninitialize(unit);
    as_unit(unit).callback = {};
    as_unit(unit).taken = false;
    if (std::none_of(units.begin(), units.end(),
                     [](const OutputUnit &place) { return place.taken; })) {
        driver->close();
        rate = 0.0;
    }
    return 0;
}

} // namespace

const BackEnd mixing_back_end = {find_next,    instance_new, set_property, get_property, initialize,
                                 uninitialize, dispose,      start,        stop};

void use_driver(const Driver *chosen) {
    driver = chosen;
}

void deliver(float *out, uint32_t frames, uint32_t channels) {
    blocks.fetch_add(1, std::memory_order_relaxed);
    for (uint32_t k = 0; k < frames; k++) {
        if (slice_used == slice_frames) {
            mix_slice();
            slice_used = 0;
        }
        std::fill_n(out + size_t{k} * channels, channels, slice[slice_used]);
        slice_used++;
    }
}

uint64_t deliveries() {
    return blocks.load(std::memory_order_relaxed);
}
