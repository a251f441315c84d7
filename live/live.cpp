#include "live/live.h"

LiveCandidate *scandidates = nullptr;
LiveCandidate *pcandidates = nullptr;
LiveCandidate *qcandidates = nullptr;
int32_t candidate_room = 0;

LiveGenerator wgen = {};
LiveGenerator zgen = {};
FloatPlayer fplayer = {};

float live_gain = 0.2f;
int32_t liveSynth = 0;
uint8_t STOP = 0;
uint8_t W = 1;
uint8_t midi = 0;
uint8_t ran = 0;

void reset_live() {
    W = 1;
    midi = 0;
    ran = 0;
    liveSynth = 0;
}
