#include "live/silent_clock.h"

#include "live/mixer.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <ctime>
#include <thread>

namespace {

std::thread clock_thread;
std::atomic<bool> ticking = false;

constexpr int64_t second = 1'000'000'000; // ns
constexpr int64_t longest_delay = second; // ns, that is made up for

int64_t now_ns() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * second + now.tv_nsec;
}

/// One block a period, at points in time that do not drift. What a process misses that is held
/// at its terminal is not made up for.
void tick(int64_t period) {
    std::array<float, slice_frames> block;
    int64_t next = now_ns();
    while (ticking.load()) {
        deliver(block.data(), slice_frames, 1);
        next = std::max(next + period, now_ns() - longest_delay);
        const timespec at = {next / second, next % second};
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &at, nullptr);
    }
}

} // namespace

void start_silent_clock(double rate) {
    ticking = true;
    const double period = slice_frames / rate * static_cast<double>(second);
    clock_thread = std::thread(tick, static_cast<int64_t>(std::lround(period)));
}

void stop_silent_clock() {
    ticking = false;
    if (clock_thread.joinable()) {
        clock_thread.join();
    }
}
