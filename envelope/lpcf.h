// envelope/lpcf.h -- the text file of an LPC analysis: frames of (time, count) and as many pairs
// of amplitude and frequency, read one frame after another from the one open file. A file ends
// where a read finds no further token; its last token is then read again and again. Window thread.
#pragma once

#include "envelope/LPC.h"

/// Asks for the name of a file, into afname. False where the input ends.
bool ask_for_lpc_file();

/// Opens `filename` as afPtr and closes the one that was open. Returns Oerror: the count of
/// points, lpc_no_file or lpc_no_number. The file stands at its head.
int16_t lpcf_open(const char *filename);

/// Seconds of the frame before frame `n` plus those of the first frame; of the first frame for
/// an `n` of 0. Leaves the file at frame `n`. -1 beyond the end.
float lpcf_pos(int32_t n);

/// Opens `filename` and counts its frames; what it returns is kept in lpcf_size. Without such a
/// file 0 frames, and lpcf_size stays. Leaves the file at its head, and Oerror as it was.
LpcSize lpcf_len(const char *filename);

/// A frame of p points, all 0; one without a record for a p below 0; null where memory does not
/// hold the whole. `ignored` has no meaning.
LpcFrame lpc_initialize(int32_t ignored, int32_t p);

/// Reads the next frame and mends levels among its last 15 elements: one above 10, or one below
/// 0 where fewer than 3 of the first 12 are, becomes 0; else one above -10 where just 11 of the
/// first 12 are negative becomes -96. At the end of the file only prints a newline. Reads no
/// more elements than the frame has.
void lpcf_read(LpcFrame frame, int32_t p);

/// Frees the first `n` records, or as many as there are, and the array.
void clear_lpc(LpcFrame frame, int32_t n);

/// Copies the p + 1 records, or as many as both frames have. Returns `dst`.
LpcFrame copySpectra(LpcFrame dst, LpcFrame src, int32_t p);

/// Records of a frame, element 0 included; 0 for none.
int32_t lpc_records(LpcFrame frame);
