// store/misc.h -- small console helpers that the whole program shares: prompt, file names,
// usage, dumps of the store.
#pragma once

#include "store/store.h"

/// The most that a file name typed at the console may hold, its end included.
constexpr int path_size = 100;

/// Prints the prompt "Quillgrove> " in red.
void m();

/// Prints what stands in for a command that has no body.
void wip();

/// Prints how the program is started and which formats it reads.
void usage();

/// Prints the acknowledgements.
void credits();

/// Reads one file name from the console into `buf`, of at least path_size characters. A
/// non-zero `quiet` leaves the prompt out. Takes out backslashes before blanks, a newline and
/// one blank at the end, and expands a leading tilde. At end of input keeps what there is.
void get_path(char *buf, int quiet);

/// Reads the name of a file to be written by get_path, behind the caller's own prompt. False at
/// the end of input and, with `can_cancel` set, for "-c", which prints the cancelling line.
bool read_path(char *buf, bool can_cancel);

/// A newly allocated copy of `path`, the caller's to free, cut at the last `dot`; whole when
/// there is none, or when `sep` is not 0 and the last `sep` stands behind it. Null for null.
char *remove_ext(const char *path, char dot, char sep);

/// Dumps the store, a line a point, an empty line after each partial.
void print_by_ref(Breakpoint *const *const *parray, const int32_t *const *npoints,
                  const int32_t *partials);
void print_members(Breakpoint *const *parray, const int32_t *npoints, int32_t n);
