#include "interact/transport.h"

#include "store/misc.h"

#include <unistd.h>

namespace {

void no_render(int32_t, char *) {
    wip();
}

const float *no_sound() {
    return nullptr;
}

int64_t no_frames() {
    return 0;
}

int32_t no_play(float, int64_t) {
    wip();
    return 0;
}

void no_call() {
    wip();
}

void no_zone(const float *, const float *) {
    wip();
}

int32_t no_unit(void *) {
    wip();
    return 0;
}

void no_block_law(float) {}

void wait_for(uint32_t microseconds) {
    usleep(microseconds);
}

constexpr Transport unbuilt = {no_render, no_render, no_sound, no_frames, no_play,
                               no_call,   no_call,   no_zone,  no_unit,   no_block_law,
                               nullptr,   nullptr,   wait_for};

} // namespace

Transport transport = unbuilt;

Transport unbuilt_transport() {
    return unbuilt;
}
