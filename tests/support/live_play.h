// tests/support/live_play.h -- live play without a sound device: output units whose blocks a test
// asks for one by one, and pauses that let such blocks pass instead of sleeping.
#pragma once

#include "live/live.h"
#include "tests/support/audio_double.h"
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

/// The output that the units are on.
AudioDouble &output();

/// The unit of a generator.
AudioDouble::Unit &unit_of(const LiveGenerator &generator);

/// Starts and stops of units since the test began.
int starts();
int stops();

/// One block of a unit, whether it runs or not.
std::vector<float> block_of(const LiveGenerator &generator, uint32_t frames = 512);

/// Blocks of 512 frames that pass for all running units; their sum.
std::vector<float> run_blocks(int count);

/// What the generator gave since it was created.
const std::vector<float> &heard(const LiveGenerator &generator);

/// The pauses taken since the test began, in microseconds. Blocks pass in them.
const std::vector<uint32_t> &pauses();

/// Sets a candidate.
void set_candidate(LiveCandidate &candidate, float freq, float amp, uint8_t status = 1);
