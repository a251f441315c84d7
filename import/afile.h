// import/afile.h -- finds out what kind of text an analysis is, by its first words alone, and
// reads the Lisp partials list. A reader goes over the file in passes: how many partials, how
// many points each, then the values. Window thread, before the window opens.
#pragma once

#include "import/tokens.h"
#include "store/store.h"

enum FileType : int32_t {
    unknown_text = -1,
    lisp_list = 0,
    sdif_inharmonic = 1,
    sdif_harmonic = 2,
    sdif_fundamental = 3,
    spear_partials = 4,
    spear_frames = 5,
};

/// The type of the text, with the words it was known by on the console; leaves the file at its
/// head. An SDIF text with a table of an unknown name counts as a list.
int32_t detect_filetype(TokenFile &file);

/// How many partials the file can hold of the `declared` ones: what npoints must have room for.
int32_t ptfile_room(const TokenFile &file, int32_t declared);

/// Stores the declared count of partials. Returns 0.
int32_t visit_ptfile(TokenFile &file, int32_t *partials);

/// Finds the points of each partial, dropping partials of fewer than 2. `partials` becomes the
/// declared count less the dropped ones, `count` the number of partials met and kept; npoints
/// and xarray have room for ptfile_room() and the spare elements. Returns 0, or -1 with a
/// message and the file closed when the structure is broken.
int32_t revisit_ptfile(TokenFile &file, int32_t *partials, int32_t *npoints,
                       PartialIndexEntry *xarray, int32_t *count);

/// Stores the point count of each of the first `partials` kept partials at its place.
void rescan_ptfile(TokenFile &file, const int32_t *partials, int32_t *npoints);

/// Reads the values into parray: frequencies held to 4 to 22050 Hz, the ends of each partial
/// shaped, phases derived with products in double precision. Follows maxamp (dB), minfreq and
/// maxfreq (Hz).
void import_ptfile(TokenFile &file, const int32_t *partials, const int32_t *npoints, float *maxamp,
                   float *minfreq, float *maxfreq);
