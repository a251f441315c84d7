#include "tests/support/made_sound.h"

#include "synth/sound.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

float value(int64_t n) {
    return 0.5f + 0.4f * std::sin(static_cast<float>(n) * 0.37f);
}

void fill_sound(const Samples &samples) {
    drop_sound();
    fBuffer = static_cast<float *>(std::calloc(samples.size() + 1, sizeof(float)));
    std::copy(samples.begin(), samples.end(), fBuffer);
    fbuffersize = static_cast<int64_t>(samples.size());
}

void give_sound(int64_t frames) {
    fill_sound(level(0, static_cast<uint32_t>(frames)));
}

Samples rising(int64_t from, uint32_t frames) {
    Samples samples(frames);
    for (uint32_t k = 0; k < frames; k++) {
        samples[k] = static_cast<float>(k) * value(from + k) / static_cast<float>(frames);
    }
    return samples;
}

Samples level(int64_t from, uint32_t frames) {
    Samples samples(frames);
    for (uint32_t k = 0; k < frames; k++) {
        samples[k] = value(from + k);
    }
    return samples;
}

Samples falling(int64_t from, uint32_t frames) {
    Samples samples(frames);
    for (uint32_t k = 0; k < frames; k++) {
        samples[k] = static_cast<float>(frames - k) * value(from + k) / static_cast<float>(frames);
    }
    return samples;
}

void drop_sound() {
    std::free(fBuffer);
    fBuffer = nullptr;
    fbuffersize = 0;
}
