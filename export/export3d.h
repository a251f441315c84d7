// export/export3d.h -- writes the store, or the points selected in it, as files for other
// programs: partials lists, scores, SPEAR and SDIF text. Every operation holds its own dialogue
// on the console, tells there why it ends early, and leaves the store and existing files alone.
// End of input ends a dialogue without a file. A file that cannot be written whole costs one line
// on standard error and is removed. Window thread only.
#pragma once

#include "store/misc.h"
#include "store/store.h"

/// Room for the name of a partials list, its ending included.
constexpr int list_path_size = path_size + 3;

// Lisp partials lists: seconds, Hz, dB.

/// Asks for a name and writes all partials to it plus ".pt". `name`, of list_path_size
/// characters, gets the final name, or is empty where nothing was written.
void audiosculpt3d(Breakpoint *const *parray, const int32_t *npoints, int32_t partials, char *name);

/// Writes all partials; false when the file cannot be made.
bool audiosculpt3d_c(Breakpoint *const *parray, const int32_t *npoints, const char *filename,
                     int32_t partials);

/// The same for the selected runs; the second returns how many it wrote.
void audiosculpt3ds(Breakpoint *const *parray, const int32_t *npoints, int32_t partials);
int32_t audiosculpt3ds_c(Breakpoint *const *parray, const int32_t *npoints, const char *filename,
                         int32_t partials);

// Scores: a note a partial, driven by tables of its frequency (Hz) and level.

/// "WAVETABLE" score of all partials. `sndlen` is the end of the sound in seconds, `maxamp` the
/// level in dB that reaches the score's amplitude.
void wavetable(float sndstart, float sndlen, float maxamp, Breakpoint *const *parray,
               const int32_t *npoints, int32_t partials);

/// The same for the selected runs, whose loudest point reaches the amplitude.
void wavetables(float sndstart, float sndlen, float maxamp, Breakpoint *const *parray,
                const int32_t *npoints, int32_t partials);

/// "SCULPT" score of all partials, and of those that hold a selected point. No command reaches
/// these two.
void sculpt3d(Breakpoint *const *parray, const int32_t *npoints, int32_t partials);
void sculpt3ds(Breakpoint *const *parray, const int32_t *npoints, int32_t partials);

// SPEAR partials: seconds, Hz, linear amplitude relative to `maxamp` (dB).

/// All partials. `sndstart` and `sndlen` are not read.
void spear(float sndstart, float sndlen, float maxamp, Breakpoint *const *parray,
           const int32_t *npoints, int32_t partials);

/// The selected runs, in their places in time.
void spears(float sndstart, float sndlen, float maxamp, Breakpoint *const *parray,
            const int32_t *npoints, int32_t partials);

// SDIF text: frames of 1TRC on a regular grid, echoed on the console.

/// The first partials, as many as there are oscillators; `selection` other than 0 takes the
/// selected segments alone. Seconds, Hz, linear amplitude with live_gain applied, radians.
/// `maxamp` has no effect.
void sdif(float sndstart, float sndlen, float maxamp, Breakpoint *const *parray,
          const int32_t *npoints, int32_t partials, int32_t selection);
