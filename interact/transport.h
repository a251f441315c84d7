// interact/transport.h -- what the keys ask of renderers, players and the zone generator, as
// calls that those put in at start-up. Until then a call says that it is not built, and there is
// neither a rendered sound nor an idle function. Window thread only.
#pragma once

#include <cstdint>

/// Each member is the function of that name; where it is not one, it says so.
struct Transport {
    // Renders and acts on `mode`; the name may be null where nothing is written.
    void (*synsumWT)(int32_t mode, char *name);
    void (*synssumWT)(int32_t mode, char *name);

    const float *(*rendered_sound)(); // fBuffer, null before the first render
    int64_t (*rendered_frames)();     // fbuffersize

    // The player of the rendered sound; `start` in seconds.
    int32_t (*fbplay1)(float start, int64_t frames);
    void (*fbstop1)();
    void (*fbresume1)();

    // The zone generator; start and end in seconds.
    void (*tqplay)(const float *start, const float *end);
    int32_t (*AudioOutputUnitStop)(void *unit);
    void (*set_N)(float value); // N, which nothing reads

    // Idle functions, null for none.
    void (*qmotion)();
    void (*Idle)();

    void (*wait)(uint32_t microseconds); // for the audio thread to end a release
};

extern Transport transport;

/// As it is before anything is put in.
Transport unbuilt_transport();
