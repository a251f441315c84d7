// tests/support/rendering.h -- renders under test: state put back after each, partials with
// phases and selections, and the law of the oscillator written down once more.
#pragma once

#include "tests/support/fixture.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Ends each test with no sound, 44100 Hz, the best form and the machine's worker count.
class SynthTest : public StoreTest {
  protected:
    void SetUp() override;
    void TearDown() override;
};

using Samples = std::vector<float>;

/// All samples of all partials, one after the other, straight from the law.
Samples law_of_all(int64_t frames);

/// The same for one partial's segment from point i: the frames it adds from the phase `ph`.
void add_law_segment(int32_t p, int32_t i, float a, float da, float &ph, Samples &out);

/// The amplitude slope a frame of the plain law.
float law_slope(float from_db, float to_db, float seconds);

/// Selects points by a text of "0" and "1" for each partial.
void select_points(const std::vector<std::string> &texts);

/// Phases of every point, by a rule that gives each its own between 0 and 2 pi.
void spread_phases();

/// Lets renders have this many workers.
void use_workers(int32_t count);

/// True when both hold the same bits; tells where they do not.
testing::AssertionResult same_bits(const Samples &x, const Samples &y);

/// Random partials of every awkward kind, reproducible: close points, equal times, one-frame
/// segments, negative phases, high and runaway frequencies, points that go back in time.
void fill_awkward_store(unsigned seed, int32_t count, float seconds);

/// Runs `work` on each kind of vectors that the processor has, from the widest down.
void on_each_kind(const std::function<void()> &work);
