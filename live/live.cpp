#include "live/live.h"

LiveCandidate *scandidates = nullptr;
LiveCandidate *pcandidates = nullptr;
LiveCandidate *qcandidates = nullptr;
int32_t candidate_room = 0;

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

float mmif = 0.0f;
uint8_t changed = 0;

void reset_live() {
    W = 1;
    midi = 0;
    ran = 0;
    zloop = 0;
    mmif = 0.0f;
    changed = 0;
    liveSynth = 0;
}
