// examples/random.h -- pseudo-random numbers that are the same on every machine: a 64-bit
// linear congruential generator, of which the upper bits are used.
#pragma once

#include <cstdint>

class Random {
  public:
    explicit Random(uint64_t seed) : state(seed * 2 + 1) {}

    /// Evenly spread over 0 to 1, 1 not included.
    double unit() {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<double>(state >> 11) * 0x1p-53;
    }

    /// Evenly spread over low to high.
    double between(double low, double high) {
        return low + (high - low) * unit();
    }

  private:
    uint64_t state;
};
