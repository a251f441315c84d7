#include "live/sound_output.h"

#include "live/rt_output.h"
#include "live/silent_clock.h"
#include "live/stall.h"

#include <chrono>
#include <cstdlib>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double silent_rate = 44100.0; // Hz

double rate = 0.0; // Hz, 0 while closed
bool on_device = false;
StallWatch watch;

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
    watch.reset(Clock::now());
    return rate;
}

} // namespace

const Driver sound_output = {open, close};

void watch_sound_output() {
    if (on_device && (rt_output_failed() || watch.stalled(deliveries(), Clock::now()))) {
        abandon_rt_output();
        on_device = false;
        start_silent_clock(rate);
    }
}
