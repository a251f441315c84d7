#include "live/silent_clock.h"

#include "live/mixer.h"

#include <array>
#include <atomic>
#include <cmath>
#include <ctime>
#include <thread>

namespace {

std::thread clock_thread;
std::atomic<bool> ticking = false;

constexpr int64_t second = 1'000'000'000; // ns

/// One block a period, at points in time that do not drift.
void tick(int64_t period) {
    std::array<float, slice_frames> block;
    timespec next = {};
    clock_gettime(CLOCK_MONOTONIC, &next);
    while (ticking.load()) {
        deliver(block.data(), slice_frames, 1);
        const int64_t at = next.tv_nsec + period;
        next.tv_sec += at / second;
        next.tv_nsec = at % second;
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &next, nullptr);
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
