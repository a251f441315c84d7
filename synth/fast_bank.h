// synth/fast_bank.h -- sums a list of voices block by block: all voices of one block of frames,
// then the next, so that the output stays in the first cache. Frame by frame the voices are
// added in the order of the list, as the plain form does.
#pragma once

#include "synth/voice_kernels.h"

#include <cstdint>
#include <memory>
#include <vector>

class FastBank {
  public:
    explicit FastBank(float per_hz);

    /// Adds the voices to `out`; none of them reaches behind its end. The list is used up.
    void render(VoiceList &list, float *out);

  private:
    void order_by_start(const std::vector<Voice> &voices);
    void enter(int64_t block, std::vector<Voice> &voices);
    void render_block(int64_t block, float *out);

    float per_hz_;
    std::unique_ptr<LaneScratch> scratch_;
    std::vector<int32_t> order_; // voices by the block they start in, then by number
    size_t entered_ = 0;         // how many of them have started
    std::vector<Voice *> active_, merged_;
};
