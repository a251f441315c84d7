// synth/synth3d.h -- the diagnostic driver: renders one partial after another on the caller's
// thread, tells much on the console, and writes float and AIFF files or plays. Its oscillator
// differs in details from the renderers'.
#pragma once

#include "store/store.h"

/// Renders the first `number` partials of `array`, which are the store's, or with `select` 1 their
/// selected stretches. The low 16 bits of `mode` and `select` count: 8 and 881 write `name`.fp and
/// `name`.AIFF, 80 the first alone, 88 takes it away again, 900 plays from `start` (seconds).
/// `name` is a buffer of 256 bytes, with ".AIFF" behind it afterwards; null for 900. fBuffer is
/// null afterwards, and whatever it held before is no longer known to anyone. Returns the player's
/// result, or 0. Window thread only; changes nothing in the store.
int32_t synth33(float start, int32_t mode, char *name, Breakpoint **array, int32_t *counts,
                int32_t number, int32_t select);
