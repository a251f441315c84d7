// live/live.h -- what the interface, MIDI and the audio callbacks share: the candidates that
// the oscillators should sound, the generators' and the player's records. Fields that two
// threads touch are read and written through live/shared.h.
#pragma once

#include <cstdint>

/// What one oscillator should sound now; one element per partial.
struct LiveCandidate {
    int32_t ord_num; // not read by live play
    float time;      // seconds
    float freq;      // Hz
    float amp;       // linear, live_gain applied
    float phase;     // radians, read by the SDIF export alone
    uint8_t status;  // 1 while the partial sounds at that time
};

/// The state of a live oscillator bank. Arrays hold 2048 elements.
struct LiveGenerator {
    void *unit;           // output unit, null until created
    double position;      // frames played, kept below one second's worth
    uint8_t playing;      // 1 while the unit runs
    float radians_per_hz; // phase step per frame for 1 Hz
    int32_t state;        // 0 silent, 1 starting, 2 sustaining, 3 releasing
    uint8_t midi_started; // 1 when a note started it
    float *amp_target;    // linear, at the end of this block
    float *freq_target;   // Hz, at the end of this block
    int32_t *phase;       // table index
    float *amp_now;       // linear, at the end of the last block
    float *freq_now;      // Hz, at the end of the last block
    float *spare1;        //
    uint8_t *on;          // copy of each candidate's status
    float *spare2;        //
    uint32_t midi_client; //
    uint32_t midi_port;   //
    float starttime;      // seconds, start of a zone
    float time;           // seconds, current time
    float prev_time;      // seconds, time of the last MIDI move
    float endtime;        // seconds, end of a zone
    uint32_t frames;      // frames of the last block
    int32_t events;       // zone plays since the last new zone
    uint8_t select;       // play selected points only; for MIDI, the wheel chooses them
    float floatmax;       // output gain
};

/// The state of the oscillator bank that computes each sine. Arrays hold 2048 elements.
struct SineGenerator {
    void *unit;           // output unit, null until created
    double position;      // frames played, kept below one second's worth
    uint8_t playing;      // 1 while the unit runs
    float radians_per_hz; // phase step per frame for 1 Hz
    int32_t state;        // 0 silent, 1 starting, 2 sustaining, 3 releasing
    uint8_t midi_started; // 1 when a note started it
    float *freq_target;   // Hz, at the end of this block
    float *amp_target;    // linear, at the end of this block
    float *freq_copy;     // Hz, at the end of the last block
    float *amp_now;       // linear, at the end of the last block
    float *phase_now;     // radians
    float *spare1;        //
    float *step_now;      // radians per frame, at the end of the last block
    float *spare2;        //
    uint8_t *on;          // copy of each candidate's status
    uint32_t midi_client; //
    uint32_t midi_port;   //
};

/// The form of the samples that a render procedure delivers.
struct StreamFormat {
    double sample_rate;        // Hz
    uint32_t format;           // four characters, the first in the highest byte
    uint32_t flags;            // 0x29: float, packed, non-interleaved
    uint32_t bytes_per_packet; //
    uint32_t frames_per_packet;
    uint32_t bytes_per_frame;
    uint32_t channels;
    uint32_t bits_per_channel;
};

/// The player of a rendered buffer.
struct FloatPlayer {
    void *unit;            // output unit
    double position;       // next frame to play
    int32_t state;         // 0 stopped, 1 fading in, 2 playing, 3 stopping, 7 ending
    uint8_t playing;       // 1 from a start until the callback has finished the stop
    float *buffer;         // fBuffer at the start
    uint8_t metering;      // set: level is a root mean square
    float level;           // of the last block
    float prev_level;      // of the block before
    float seconds;         // time played, for the play head
    int32_t frames_played; // counted by blocks
    int32_t blocks;        // callbacks since the start
    uint8_t loop;          // the sound repeats without end
};

// Allocated at start-up, an element for each oscillator at the least; they never move.
extern LiveCandidate *scandidates; // not used
extern LiveCandidate *pcandidates; // what wgen should sound
extern LiveCandidate *qcandidates; // what zgen should sound

extern int32_t numbOfCands; // oscillators in use: `partials`, at most 2047

extern SineGenerator gen;   // set up by nothing: `stop` and the clean-up find it empty
extern LiveGenerator wgen;  // follows the mouse and MIDI
extern LiveGenerator zgen;  // plays a zone
extern FloatPlayer fplayer; // plays a rendered buffer

// Audio settings, written at the creation of a unit.
extern double sampleRate;         // Hz, copy of R
extern StreamFormat streamFormat; // of the program's render procedures
extern float benddf;              // 2 from then on; nothing reads it

extern int64_t totalFrames;  // 0 at each start of a generator
extern int64_t totalfFrames; // frames that the player has delivered in this play
extern float N;              // 2000 at a start of the player, 1000 at a stop; nothing reads it

extern float live_gain;   // gain of live play, 0.2 at the start
extern int32_t liveSynth; // 1 during a scrub or a note
extern uint8_t STOP;      // set when a scrub ends
extern uint8_t W;         // 1: scrubbing uses wgen
extern uint8_t midi;      // MIDI control is on
extern uint8_t ran;       // partials walk through a zone each by itself
extern uint8_t zloop;     // a zone plays in a loop

// Written by the interface; the MIDI thread reads them.
extern int32_t omni;    // every channel is taken; 1 from the connection of the sources on
extern uint8_t channel; // the one that is taken where omni is 0

// Written by the MIDI thread.
constexpr int32_t note_room = 16;
extern int32_t hold;         // notes held, at most note_room - 1
extern int32_t prev_hold;    // hold before the last note
extern uint8_t n[note_room]; // notes held, n[1] to n[hold], the newest last; n[0] stays 0
extern int32_t unkept;       // notes held that found no room in n
extern uint8_t uncounted;    // a note began during an edit, which kept partials from being counted
extern float pitchf;         // note number in force
extern float bendf;          // pitch bend in notes, -1 to just below 1
extern uint8_t bmi;          // last value of a controller taken
extern float mmif;           // mod wheel, 0 to 1
extern float mxpf;           // expression, 1 to 4; nothing reads it
extern float amplitudef;     // 0.67 while a note is held, else 0; nothing reads it
extern uint8_t changed;      // the wheel moved since the last move of the live sound
extern uint8_t changex;      // expression moved

/// Start values of the switches.
void reset_live();
