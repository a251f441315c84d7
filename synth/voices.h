// synth/voices.h -- partials as the fast form of the bank takes them: voices that run from one
// frame to another over segments whose slopes are computed already. One voice is a partial or a
// selected stretch of it.
#pragma once

#include "synth/oscillator.h"
#include "synth/plain_bank.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// A stretch of frames with constant slopes, from the end of the one before.
struct Segment {
    float a, da;  // linear amplitude, its change a frame
    float f, df;  // Hz, its change a frame
    int64_t stop; // first frame behind it
};

/// A voice and how far it has come.
struct Voice {
    Oscillator o;          // before the first frame only the phase counts
    const Segment *next;   // the segment that starts at `stop`
    const Segment *behind; // end of its segments
    int64_t first, end;    // frames of the whole voice
    int64_t stop;          // where the running segment ends; `first` before the start
    bool wild;             // its phase leaves the range of the vector sine
    uint8_t strikes;       // how often it has
};

/// Voices in the order in which they are summed.
struct VoiceList {
    std::vector<Segment> segments;
    std::vector<Voice> voices; // `next` and `behind` hold once finish() has run

    void clear();
    void finish();

    std::vector<size_t> ends_; // number of segments up to each voice's end
};

/// Takes up the next segment of a voice.
inline void start_next_segment(Voice &voice) {
    const Segment &segment = *voice.next++;
    voice.o.a = segment.a;
    voice.o.da = segment.da;
    voice.o.f = segment.f;
    voice.o.df = segment.df;
    voice.stop = segment.stop;
}

/// True when the partial's frames never go back and its points are selected or not: only then
/// is it made of voices.
bool orderly(int32_t p);

/// Appends partial p, which is orderly, up to frame `frames`.
void append_partial(VoiceList &list, int32_t p, int64_t frames);

/// Appends its selected stretches.
void append_stretches(VoiceList &list, int32_t p, StretchFade &fade, int64_t frames);
