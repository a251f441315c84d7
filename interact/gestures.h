// interact/gestures.h -- the relative gestures: a pair of found points names a source partial,
// and every partial with selected points is pulled a little towards it, or pushed away from it.
// One small step a call, so that the user stops when the result sounds right. They set no
// method for the text layer, and there is no undo. Window thread only.
#pragma once

/// Frequency tracks against a constant ratio to the source: -1 harmonizes (the deviation shrinks
/// by 8 percent), 1 warps (it grows by 4); any other direction moves nothing. Flat view with
/// breakpoints. Derives range and phases anew and posts a redisplay.
void partialsHarmonize(int direction);

/// Level envelopes against the source's: a negative direction (-3) follows it by 2 percent, any
/// other (3) strays from it. Breakpoints shown. Level range and redisplay are the caller's.
void partialsFollow2(int direction);
