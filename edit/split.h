// edit/split.h -- cuts a partial in two between neighbouring breakpoints. The caller brings the
// derived values back. Window thread only.
#pragma once

#include "interact/selection.h"

/// Whether two neighbouring points of one partial are found.
bool split_precheck(FoundPoints found);

/// Cuts partial part0 before the later one of its two found points. The pieces become the last
/// two partials, the others close up. The first piece ends in a short fade, the second starts 6
/// dB lower and at phase 0. Points that cannot be cut between leave the store alone.
void split3d(FoundPoints found);
