#include "live/live.h"

#include <algorithm>

LiveCandidate *scandidates = nullptr;
LiveCandidate *pcandidates = nullptr;
LiveCandidate *qcandidates = nullptr;

int32_t numbOfCands = 0;

SineGenerator gen = {};
LiveGenerator wgen = {};
LiveGenerator zgen = {};
FloatPlayer fplayer = {};

double sampleRate = 0.0;
StreamFormat streamFormat = {};
float benddf = 0.0f;

int64_t totalFrames = 0;
int64_t totalfFrames = 0;
float N = 0.0f;

float live_gain = 0.2f;
int32_t liveSynth = 0;
uint8_t STOP = 0;
uint8_t W = 1;
uint8_t midi = 0;
uint8_t ran = 0;
uint8_t zloop = 0;

int32_t omni = 0;
uint8_t channel = 0;

int32_t hold = 0;
int32_t prev_hold = 0;
uint8_t n[note_room] = {};
int32_t unkept = 0;
uint8_t uncounted = 0;
float pitchf = 0.0f;
float bendf = 0.0f;
uint8_t bmi = 0;
float mmif = 0.0f;
float mxpf = 0.0f;
float amplitudef = 0.0f;
uint8_t changed = 0;
uint8_t changex = 0;

namespace {

void reset_notes() {
    omni = 0;
    channel = 0;
    hold = 0;
    prev_hold = 0;
    std::fill_n(n, note_room, uint8_t{0});
    unkept = 0;
    uncounted = 0;
    pitchf = 0.0f;
    bendf = 0.0f;
    bmi = 0;
    mmif = 0.0f;
    mxpf = 0.0f;
    amplitudef = 0.0f;
    changed = 0;
    changex = 0;
}

} // namespace

void reset_live() {
    W = 1;
    midi = 0;
    ran = 0;
    zloop = 0;
    reset_notes();
    liveSynth = 0;
}
