// tests/envelope/envelope_support.h -- LPC files and frames made by hand.
#pragma once

#include "envelope/LPC.h"
#include "tests/support/fixture.h"

#include <string>
#include <vector>

/// Time or amplitude, count or frequency.
using Pair = LpcRecord;

/// Every file lies in a folder that is gone afterwards; the room's globals start afresh.
class EnvelopeTest : public StoreTest {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Writes the text and returns the file's path.
    std::string file_of(const std::string &text, const std::string &name = "voice.lpc");

    /// A frame with these records, freed at the end of the test.
    LpcFrame frame_of(const std::vector<Pair> &records);

    std::string folder;

  private:
    std::vector<LpcFrame> frames;
};

/// The records of a frame as text: "amp freq" each, set apart by ", ".
std::string records_of(LpcFrame frame);

/// A file of `count` frames at times 0, 1, 2 ... with the points (level, 100), (level, 1000).
std::string two_point_file(int count, double level);
