#include "live/pause.h"

#include <unistd.h>

namespace {

void sleep_for(uint32_t microseconds) {
    usleep(microseconds);
}

} // namespace

void (*pause_for)(uint32_t microseconds) = sleep_for;
