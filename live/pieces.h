// live/pieces.h -- blocks longer than a render procedure's scratch, taken in pieces.
#pragma once

#include <algorithm>
#include <cstdint>

/// Calls block(length, out) for pieces of at most `limit` frames; once for no frames at all.
template <typename Block>
void in_pieces(uint32_t frames, uint32_t limit, float *out, const Block &block) {
    do {
        const uint32_t length = std::min(frames, limit);
        block(length, out);
        out += length;
        frames -= length;
    } while (frames > 0);
}
