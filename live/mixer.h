// live/mixer.h -- the back end of the output units: mixes them into the one stream of a driver,
// in slices of fixed length, whatever blocks the driver asks for. Start, stop and the mixing
// itself take no lock; they meet in one number per unit.
#pragma once

#include "live/back_end.h"

#include <cstdint>

constexpr uint32_t slice_frames = 512;

/// Where the mixed sound goes. A driver calls deliver() on a thread of its own between open and
/// close.
struct Driver {
    double (*open)(); // starts the stream; its rate in Hz, or 0 when there is none
    void (*close)();  // deliver() does not run any more when it returns
};

extern const BackEnd mixing_back_end;

/// Takes this driver; with null, as at the start, there is no output component. Before any unit
/// exists.
void use_driver(const Driver *chosen);

/// Fills a driver's block of interleaved frames, the same sample in every channel. Audio
/// thread, one at a time.
void deliver(float *out, uint32_t frames, uint32_t channels);

/// Blocks asked for since the start; stands still when a driver has died. Any thread.
uint64_t deliveries();
