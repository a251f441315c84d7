// tests/support/audio_double.h -- a back end of the output units under the test's hand: it notes
// the operations, fails where it is told to, and calls the render procedures block by block.
#pragma once

#include "live/audio_unit.h"
#include "live/live.h"

#include <deque>
#include <string>
#include <vector>

/// Takes the place of the back end while it lives. One at a time.
class AudioDouble {
  public:
    AudioDouble();
    ~AudioDouble();
    AudioDouble(const AudioDouble &) = delete;
    AudioDouble &operator=(const AudioDouble &) = delete;

    struct Unit {
        RenderCallback callback = {};
        StreamFormat format = {};
        bool initialized = false;
        bool started = false;
        bool disposed = false;
    };

    /// Calls every started unit for a block whose samples all come in as `before`; their sum.
    std::vector<float> pump(uint32_t frames, float before = 0.0f);

    /// The operations since the last call of this, one a line.
    std::string heard();

    bool component = true; // there is an output component
    double rate = 44100.0; // Hz
    std::string failing;   // the operation, as heard() tells it, that fails
    int32_t code = 0;      // with this
    std::deque<Unit> units;

    /// Notes an operation; its result.
    int32_t note(const std::string &operation);

  private:
    std::string notes;
};
