// live/sound_output.h -- the machine's own sound: a sound server or device where one is found,
// a silent clock of the same pace where not, or once it is lost. Main thread.
#pragma once

#include "live/mixer.h"

extern const Driver sound_output;

/// Goes over to the silent clock when the device has died. Called every few milliseconds.
void watch_sound_output();
