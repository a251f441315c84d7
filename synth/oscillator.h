// synth/oscillator.h -- the law of one oscillator: how frames are counted, how a segment between
// two points starts, and what one frame does. Both forms of the bank are made of these.
#pragma once

#include "store/store.h"
#include "synth/slopes.h"
#include "toolbox/auxmath3d.h"

#include <cmath>
#include <cstdint>

/// What a sample rate means to an oscillator.
struct OscillatorRate {
    double hz;     // frames a second
    float per_sec; // the same in single precision: slopes are divided by it
    float per_hz;  // radians that 1 Hz turns in one frame
};

inline OscillatorRate oscillator_rate(double hz) {
    return {hz, static_cast<float>(hz), static_cast<float>(6.2831854820251465 / hz)};
}

/// The running values of one oscillator.
struct Oscillator {
    float a, da; // linear amplitude, its change a frame
    float f, df; // Hz, its change a frame
    float ph;    // radians, between 2 pi and 4 pi once it has run past 2 pi
};

/// The frame of a time, cut toward zero. No frame lies before the sound: a negative time, or one
/// that is no number, counts as 0. Bounded so that frames can be added without overflow.
inline int64_t frame_of(float seconds, double hz) {
    constexpr double most = 0x1p61;
    const double frame = static_cast<double>(seconds) * hz;
    if (!(frame > 0.0)) {
        return 0;
    }
    return static_cast<int64_t>(frame < most ? frame : most);
}

/// Moves on by one frame. A phase above 4 pi comes back by one turn, never by more.
inline void advance(Oscillator &o, float per_hz) {
    o.a += o.da;
    o.f += o.df;
    o.ph += o.f * per_hz;
    if (o.ph > 12.566371f) {
        o.ph = static_cast<float>(static_cast<double>(o.ph) - two_pi);
    }
}

/// The sample at phase `ph`. The first half cycle of a partial, which alone lies below pi, rises
/// softly; a negative phase turns its sign over.
inline float sample_at(float ph, float a) {
    float s = sinf(ph) * a;
    if (ph <= 3.1415927f) {
        s *= ph / 3.1415927f;
    }
    return s;
}
