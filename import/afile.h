// import/afile.h -- finds out what kind of text an analysis is, by its first words alone, and
// reads each. A reader goes over the file in passes: how many partials, how many points each,
// then the values; between them the caller makes room. Window thread, before the window opens.
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

/// Tells that the analysis is corrupt and closes the file. Returns -1.
int32_t refuse_corrupt(TokenFile &file);

/// How many partials a SPEAR or SDIF text may declare or name, as far as `declared` goes: gaps
/// between them cost memory that the file's size has to justify.
int32_t analysis_room(const TokenFile &file, int32_t declared);

// --- Lisp partials list

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

// --- SPEAR text. All passes return -1 where the head is not as it must be, the revisits also
// where the points are not there: negative counts, more partials than analysis_room() has, more
// points than the file holds. The file stays open.

/// Frames of a SPEAR frames file; the first field is the count.
struct FrameCount {
    int32_t count;
    int32_t second; // 0
    int32_t third;  // 0
};
extern FrameCount t_frames;

/// Stores the declared count of partials and tells it. Returns 0.
int32_t visit_spearfile(TokenFile &file, int32_t *partials);

/// Stores the point count of each partial; npoints has room for them all. Behind the end of the
/// file partials are empty. Returns 0.
int32_t revisit_spearfile(TokenFile &file, const int32_t *partials, int32_t *npoints);

/// Reads the values into parray: amplitudes as dB, frequencies as they are, phases derived.
/// Starts the ranges (Hz, dB) afresh. Returns the type.
int32_t import_spearfile(TokenFile &file, const int32_t *partials, const int32_t *npoints,
                         float *minfreq, float *maxfreq, float *maxamp);

/// The same three for the frames layout. A point of a partial out of range is not stored, but
/// its frequency counts for the range; the ranges go on from what they hold.
int32_t visit_spearrffile(TokenFile &file, int32_t *partials, FrameCount *frames);
int32_t revisit_spearrffile(TokenFile &file, const int32_t *partials, const FrameCount *frames,
                            int32_t *npoints);
int32_t import_spearrffile(TokenFile &file, const int32_t *partials, const FrameCount *frames,
                           const int32_t *npoints, float *minfreq, float *maxfreq, float *maxamp);

// --- SDIF text, as its converter prints it. `type` is one of the three SDIF types. "ENDC", or
// the end of the file, ends a pass wherever it stands. The first frame gives no point.

/// Stores the highest track index as the count. Tracks only. Returns the type, or -1 with a
/// message and the file closed when the indices exceed analysis_room().
int32_t visit_sdiffile(TokenFile &file, int32_t *partials, int32_t type);

/// Adds the points to npoints. Returns the type, or -1 for a fundamental whose third word is
/// wrong.
int32_t revisit_sdiffile(TokenFile &file, const int32_t *partials, int32_t *npoints, int32_t type);

/// Reads the values into parray: amplitudes as dB, frequencies as they are. What is counted but
/// not read is silent. A fundamental is shaped at its ends, its points told on the console.
/// Follows maxamp (dB). Returns as the revisit does.
int32_t import_sdiffile(TokenFile &file, const int32_t *partials, const int32_t *npoints,
                        PartialIndexEntry *xarray, float *maxamp, int32_t type);

/// Holds the frequencies of all tracks to 4 to 22050 Hz, with the ranges (Hz) following them,
/// and shapes the ends of each.
void settle_tracks(float *minfreq, float *maxfreq);
