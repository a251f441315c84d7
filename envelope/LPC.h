// envelope/LPC.h -- the spectral envelope of a sound: the one open analysis file, the last
// status of its readers and the form that a frame has in memory. Written by the operations of
// this room, on the window thread.
#pragma once

#include "import/tokens.h"

#include <cstddef>
#include <cstdint>

/// One point of an envelope. Element 0 of a frame holds its time and its count of points.
struct LpcRecord {
    double amp;  // linear, or dB when most of a file's are negative; seconds in element 0
    double freq; // Hz; the count of points in element 0
};

/// A frame of p points: p + 1 records, each allocated by itself, and a null pointer behind them
/// that bounds every walk.
using LpcFrame = LpcRecord **;

/// What a whole file holds.
struct LpcSize {
    int16_t frames;
    float duration; // seconds from the first frame to the last
};

// Values of Oerror; 0 and above is the count of points of a frame.
constexpr int16_t lpc_no_file = -1;   // the file cannot be opened
constexpr int16_t lpc_no_number = -4; // the first token does not begin with a digit
constexpr int16_t lpc_beyond = -9;    // a selection beyond the end of the file
constexpr int16_t lpc_null = -10;     // no frame given
constexpr int16_t lpc_ended = -11;    // the file ended in a frame

constexpr size_t lpc_text_room = 256; // characters of a token with its zero byte, cut beyond

extern TokenFile afPtr;          // the open file
extern char text[lpc_text_room]; // the last token read
extern int16_t Oerror;           // the last status
extern int32_t lpoints;          // points a frame, as source_filter found them
extern LpcSize lpcf_size;        // of the file that was last measured
extern double value;             // seconds, the last time result
extern double value2;            // seconds, the time of the first frame
extern uint8_t lpc_is;           // a first frame has been allocated
extern uint8_t lpc1_is;          // a second frame has been allocated

/// Start values; closes the file.
void reset_lpc();
