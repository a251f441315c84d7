#include "live/oscillator_block.h"

#include <cmath>

namespace {
constexpr float freq_limit = 524288.0f; // Hz; 2048 steps of it fit an int32 beside a phase
}

int32_t whole_hertz(float freq) {
    return std::fabs(freq) < freq_limit ? static_cast<int32_t>(freq) : 0;
}

int32_t table_index(int32_t phase, int32_t size) {
    const int32_t index = phase % size;
    return index < 0 ? index + size : index;
}

void sum_block_plain(const OscillatorBlock &block, uint32_t frames, float *sum) {
    for (uint32_t n = 0; n < frames; ++n) {
        const float k = static_cast<float>(n);
        float total = 0.0f;
        for (int32_t i = 0; i < block.count; ++i) {
            block.phase[i] += whole_hertz(block.df[i] * k + block.freq[i]);
            total += block.table[table_index(block.phase[i], block.size)] *
                     (block.da[i] * k + block.amp[i]);
        }
        sum[n] = total;
    }
}
