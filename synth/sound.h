// synth/sound.h -- the rendered sound and the one sample rate. Renderers write it on the window
// thread; the player's audio callback reads it, through live/shared.h.
#pragma once

#include <cstdint>

extern double R;            // Hz, the one sample rate; the audio output's once a unit exists
extern float *fBuffer;      // the rendered mono sound, null before the first render
extern int64_t fbuffersize; // frames in fBuffer

/// The sound as one block of audio finds it: `samples`, null without a sound, hold `frames` floats
/// as long as this lives. Audio thread, one at a time; never waits.
class SoundReading {
  public:
    SoundReading();
    ~SoundReading();
    SoundReading(const SoundReading &) = delete;
    SoundReading &operator=(const SoundReading &) = delete;

    const float *samples;
    int64_t frames;
};

/// Makes a buffer of this length, or null, the sound; the former buffer is no longer read when
/// this returns. No block sees a buffer with a frame count that it does not hold: fbuffersize
/// falls to `frames` here, but never grows. Window thread.
void put_sound(float *buffer, int64_t frames);

// The halves of the older two-way split, alive during a render.
extern float *fBuffL;
extern float *fBuffR;

extern float **fBuffW; // one private buffer per worker, alive during a render

/// Plays fBuffer from `start` (seconds) on; `frames` is its length. Set by the player's room,
/// which ranks above this one; says that playing is not there until then. Returns 0.
extern int32_t (*play_rendered)(float start, int64_t frames);
