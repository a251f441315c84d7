// tests/support/live_play.h -- live play without a sound device: output units whose blocks a test
// asks for one by one, and pauses that let such blocks pass instead of sleeping.
#pragma once

#include "live/live.h"
#include "tests/support/pointer.h"

#include <cstdint>
#include <string>
#include <vector>

/// Starts each test with both table generators created on scripted units, 44100 Hz, a sine table
/// and cleared candidates; ends it with all of that gone.
class LivePlayTest : public PointerTest {
  protected:
    void SetUp() override;
    void TearDown() override;
};

/// What a scripted unit has seen.
struct ScriptedUnit {
    void (*procedure)(void *context, uint32_t frames, float *out);
    void *context;
    bool running;
    int starts, stops;
};

/// The unit of a generator.
ScriptedUnit &unit_of(const LiveGenerator &generator);

/// Lets starts fail with this code; 0 lets them work.
void fail_starts_with(int32_t error);

/// The rate in Hz that units report from now on.
void report_rate(double rate);

/// One block of a unit, whether it runs or not.
std::vector<float> block_of(const LiveGenerator &generator, uint32_t frames = 512);

/// Blocks of 512 frames that pass for all running units; what the first `count` gave, summed.
std::vector<float> run_blocks(int count);

/// What the generator gave since it was created.
const std::vector<float> &heard(const LiveGenerator &generator);

/// The pauses taken since the test began, in microseconds. Blocks pass in them.
const std::vector<uint32_t> &pauses();

/// Sets a candidate.
void set_candidate(LiveCandidate &candidate, float freq, float amp, uint8_t status = 1);
