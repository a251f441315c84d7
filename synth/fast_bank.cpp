#include "synth/fast_bank.h"

#include <algorithm>
#include <iterator>

namespace {

int64_t block_of(const Voice &voice) {
    return voice.first / block_frames;
}

} // namespace

FastBank::FastBank(float per_hz) : per_hz_(per_hz), scratch_(std::make_unique<LaneScratch>()) {}

void FastBank::order_by_start(const std::vector<Voice> &voices) {
    order_.resize(voices.size());
    for (size_t v = 0; v < voices.size(); ++v) {
        order_[v] = static_cast<int32_t>(v);
    }
    const auto earlier = [&](int32_t x, int32_t y) {
        return block_of(voices[static_cast<size_t>(x)]) < block_of(voices[static_cast<size_t>(y)]);
    };
    if (!std::is_sorted(order_.begin(), order_.end(), earlier)) {
        std::stable_sort(order_.begin(), order_.end(), earlier);
    }
}

void FastBank::enter(int64_t block, std::vector<Voice> &voices) {
    const size_t before = active_.size();
    for (; entered_ < order_.size(); ++entered_) {
        Voice &voice = voices[static_cast<size_t>(order_[entered_])];
        if (block_of(voice) > block) {
            break;
        }
        active_.push_back(&voice);
    }
    if (before > 0 && before < active_.size()) {
        const auto middle = active_.begin() + static_cast<std::ptrdiff_t>(before);
        merged_.clear();
        std::merge(active_.begin(), middle, middle, active_.end(), std::back_inserter(merged_));
        active_.swap(merged_);
    }
}

void FastBank::render_block(int64_t block, float *out) {
    const int64_t from = block * block_frames;
    int64_t to = from;
    for (const Voice *voice : active_) {
        to = std::max(to, voice->end);
    }
    to = std::min(to, from + block_frames);
    for (size_t v = 0; v < active_.size(); v += lane_count) {
        const size_t count = std::min<size_t>(lane_count, active_.size() - v);
        render_voices(active_.data() + v, static_cast<int32_t>(count), from, to, per_hz_, *scratch_,
                      out + from);
    }
    std::erase_if(active_, [to](const Voice *voice) { return voice->end <= to; });
}

void FastBank::render(VoiceList &list, float *out) {
    if (list.voices.empty()) {
        list.clear();
        return;
    }
    list.finish();
    order_by_start(list.voices);
    entered_ = 0;
    int64_t block = 0;
    while (entered_ < order_.size() || !active_.empty()) {
        if (active_.empty()) {
            block = block_of(list.voices[static_cast<size_t>(order_[entered_])]);
        }
        enter(block, list.voices);
        render_block(block, out);
        ++block;
    }
    list.clear();
}
