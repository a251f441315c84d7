// envelope/mutate.h -- imposes the spectral envelope of an LPC file on the partials of the
// store: one frame on the whole sound, or all frames along it. Both hold their dialogue on the
// console; no command calls them. Where the input ends they stop there. Window thread.
#pragma once

#include "envelope/LPC.h"
#include "store/store.h"

/// Gives each partial the level of the envelope above its mean frequency (in spare2), and on the
/// reply "1" moves its points by the difference from its mean level. A frame of the caller's is
/// taken as it is; without one it is chosen from a file that the user names. Returns Oerror.
int16_t mutstat(Breakpoint **parray, PartialEval *peval, LpcFrame envelope);

/// Filters the sound, `duration` seconds long, by each pair of neighbouring frames of a file
/// that the user names, then lowers the ends of the partials. `mode` 4 offers a residual, a flat
/// shape saved as a list, to be filtered in place of the partials' own levels; 41 takes the flat
/// shape, 44 saves it too. Frames passed in are taken over and freed where the file has points;
/// where it has none they are used and stay the caller's. Returns Oerror.
int16_t mutdyn(float duration, Breakpoint **parray, PartialEval *peval, LpcFrame frameA,
               LpcFrame frameB, const int32_t *npoints, int32_t mode);
