#include "synth/sound.h"

#include "store/misc.h"

namespace {

int32_t no_player(float, int64_t) {
    wip();
    return 0;
}

} // namespace

double R = 44100.0;
float *fBuffer = nullptr;
int64_t fbuffersize = 0;

float *fBuffL = nullptr;
float *fBuffR = nullptr;
float **fBuffW = nullptr;

int32_t (*play_rendered)(float start, int64_t frames) = no_player;
