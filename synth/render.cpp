#include "synth/render.h"

#include "live/shared.h"
#include "synth/sound.h"

#include <cmath>
#include <cstdlib>

int64_t render_frames = 0;

int64_t whole_rate_frames(float seconds) {
    const float frames = static_cast<float>(std::trunc(R)) * seconds;
    if (!(frames >= 1.0f)) {
        return 0;
    }
    return static_cast<int64_t>(std::fmin(frames, 0x1p40f)); // no memory holds more
}

float *silent_buffer(int64_t frames) {
    return static_cast<float *>(std::calloc(static_cast<size_t>(frames) + 1, sizeof(float)));
}

int64_t new_sound(int64_t frames) {
    float *buffer = silent_buffer(frames);
    if (buffer == nullptr) {
        frames = 0;
        buffer = silent_buffer(frames);
    }
    put_sound(buffer, frames);
    return frames;
}

void *finished_flag() {
    int32_t *flag = static_cast<int32_t *>(std::malloc(sizeof(int32_t)));
    if (flag != nullptr) {
        *flag = 1;
    }
    return flag;
}

float factor_to_peak(float peak) {
    return peak > 0.0f ? static_cast<float>(0.7 / static_cast<double>(peak)) : 0.0f;
}

void scale_sound(float factor, int64_t frames) {
    for (int64_t n = 0; n < frames; ++n) {
        poke(fBuffer[n], fBuffer[n] * factor);
    }
}

float peak_with(float peak, float sample) {
    const float size = std::fabs(sample);
    return size > peak ? size : peak;
}

void RenderThread::start(void *(*body)(void *), void *argument) {
    started = pthread_create(&id, nullptr, body, argument) == 0;
    if (!started) {
        std::free(body(argument));
    }
}

void RenderThread::join() {
    void *result = nullptr;
    if (started && pthread_join(id, &result) == 0) {
        std::free(result);
    }
}
