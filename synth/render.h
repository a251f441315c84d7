// synth/render.h -- what all renderers have in common around the bank: frame counts, silent
// buffers, the peak of 0.7, and the threads.
#pragma once

#include <cmath>
#include <cstdint>
#include <pthread.h>

/// Frames of a sound as the working renderers count them: the rate cut to an integer, the
/// product in single precision. At least 0.
int64_t whole_rate_frames(float seconds);

/// A zero-filled buffer from calloc, at least one float long. Null, with a line on standard error,
/// where there is no memory for it.
float *silent_buffer(int64_t frames);

/// Makes a silent buffer of this length the rendered sound. Returns its frames: 0 where there is
/// no memory for them.
int64_t new_sound(int64_t frames);

/// What the body of a thread leaves behind: a 32-bit 1 on the heap.
void *finished_flag();

/// The factor that brings this peak to 0.7; 0 where the peak is 0.
float factor_to_peak(float peak);

/// Multiplies fBuffer[0..frames), which the player may be reading.
void scale_sound(float factor, int64_t frames);

/// The larger of `peak` and the sample's size; what is no number leaves it alone.
inline float peak_with(float peak, float sample) {
    const float size = std::fabs(sample);
    return size > peak ? size : peak;
}

/// A thread of the render. Where none can be had, the work runs on the caller's.
struct RenderThread {
    pthread_t id;
    bool started;

    void start(void *(*body)(void *), void *argument);
    void join();
};

extern int64_t render_frames; // length of the workers' buffers, set before they start
