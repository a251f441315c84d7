#include "synth/render.h"

#include "live/shared.h"
#include "synth/sound.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>

int64_t render_frames = 0;

int64_t whole_rate_frames(float seconds) {
    const float frames = static_cast<float>(std::trunc(R)) * seconds;
    if (!(frames >= 1.0f)) {
        return 0;
    }
    return static_cast<int64_t>(std::fmin(frames, 0x1p40f)); // no memory holds more
}

namespace {

/// Asks for large pages, which spare a long sound most of its page faults. Only advice.
void prefer_large_pages(void *buffer, size_t size) {
    constexpr size_t page = 4096;
    const size_t head = (page - reinterpret_cast<uintptr_t>(buffer) % page) % page;
    madvise(static_cast<char *>(buffer) + head, (size - head) / page * page, MADV_HUGEPAGE);
}

} // namespace

float *silent_buffer(int64_t frames) {
    const size_t size = static_cast<size_t>(frames) + 1;
    float *buffer = static_cast<float *>(std::calloc(size, sizeof(float)));
    if (buffer == nullptr) {
        std::fprintf(stderr, "synthesis: %s\n", std::strerror(errno));
        return nullptr;
    }
    constexpr size_t large = 0x200000; // bytes
    if (size * sizeof(float) >= large) {
        prefer_large_pages(buffer, size * sizeof(float));
    }
    return buffer;
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
    float *sound = fBuffer;
    for (int64_t n = 0; n < frames; ++n) {
        poke(sound[n], sound[n] * factor);
    }
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
