// tests/live/audio_thread.h -- what tests of several threads share: a chord to play, and a thread
// that renders both table generators.
#pragma once

#include "live/agnf.h"
#include "tests/support/live_play.h"

#include <atomic>
#include <cmath>
#include <thread>
#include <vector>

/// Partials over the same two seconds.
inline std::vector<Partial> chord(int count) {
    std::vector<Partial> content;
    for (int i = 0; i < count; ++i) {
        const float freq = 100.0f + 37.0f * static_cast<float>(i);
        content.push_back({{0.0f, freq, -20.0f}, {1.0f, freq, -10.0f}, {2.0f, freq, -20.0f}});
    }
    return content;
}

constexpr int partial_count = 20;

/// Renders blocks of both generators until told to end; the largest sample.
class AudioThread {
  public:
    AudioThread() : thread([this] { render(); }) {}
    ~AudioThread() {
        over = true;
        thread.join();
    }
    int rendered() const {
        return blocks;
    }
    float largest() const {
        return peak;
    }

  private:
    void render() {
        std::vector<float> out(512);
        while (!over) {
            AdditiveNFRenderProc(&wgen, 512, out.data());
            note(out);
            AdditiveNFRenderProc1(&zgen, 512, out.data());
            note(out);
            ++blocks;
        }
    }
    void note(const std::vector<float> &out) {
        for (const float each : out) {
            peak = std::max(peak.load(), std::fabs(each));
        }
    }

    std::atomic<bool> over = false;
    std::atomic<int> blocks = 0;
    std::atomic<float> peak = 0.0f;
    std::thread thread;
};
