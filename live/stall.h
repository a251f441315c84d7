// live/stall.h -- tells that a device has stopped asking for blocks, from looks at their count a
// few milliseconds apart. One thread.
#pragma once

#include <chrono>
#include <cstdint>

class StallWatch {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// Begins anew.
    void reset(Time now);

    /// True when the count has stood for more than two seconds of looking. A look after a long
    /// absence begins anew: a process that was held at its terminal finds its device as it left
    /// it.
    bool stalled(uint64_t count, Time now);

  private:
    uint64_t seen_count = 0;
    Time seen_at;
    Time looked_at;
};
