#include "live/sound_output.h"

#include "live/rt_output.h"
#include "live/silent_clock.h"

#include <chrono>
#include <cstdlib>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double silent_rate = 44100.0; // Hz
constexpr auto longest_gap = std::chrono::seconds(2);
constexpr auto longest_absence = std::chrono::milliseconds(500); // between two looks

double rate = 0.0; // Hz, 0 while closed
bool on_device = false;
uint64_t seen_blocks = 0;
Clock::time_point seen_at;
Clock::time_point looked_at;

void close() {
    if (on_device) {
        close_rt_output();
    } else {
        stop_silent_clock();
    }
    on_device = false;
    rate = 0.0;
}

double open() {
    // No way out of the program leaves a stream behind that would call into it.
    static const bool registered = std::atexit(close) == 0;
    static_cast<void>(registered);
    rate = open_rt_output();
    on_device = rate > 0.0;
    if (!on_device) {
        rate = silent_rate;
        start_silent_clock(rate);
    }
    seen_at = Clock::now();
    return rate;
}

/// A look after a long absence starts the count anew: a process that was held at its terminal
/// finds its device as it left it.
bool stands_still() {
    const uint64_t blocks = deliveries();
    const Clock::time_point now = Clock::now();
    const bool was_away = now - looked_at > longest_absence;
    looked_at = now;
    if (blocks != seen_blocks || was_away) {
        seen_blocks = blocks;
        seen_at = now;
    }
    return now - seen_at > longest_gap;
}

} // namespace

const Driver sound_output = {open, close};

void watch_sound_output() {
    if (on_device && (rt_output_failed() || stands_still())) {
        abandon_rt_output();
        on_device = false;
        start_silent_clock(rate);
    }
}
