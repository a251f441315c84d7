// import/afile_interactive.h -- texts of no known format, read by hand: the numbers are shown one
// by one, the user says what each is, and each group of them becomes a partial with an envelope
// of few parameters. Asks on the console; window thread, before the window opens.
#pragma once

#include "import/tokens.h"

/// The most groups of values that are read.
constexpr int32_t most_records = 1024;

/// One group of values.
struct PhRecord {
    int32_t index;  // how many values the group has, 0 while it is empty
    float value[3]; // frequency (Hz or a ratio), amplitude (any unit), duration (any unit)
    char tag[4];    // the letters of the values in reading order, such as "fa"
};

/// What construct_data asks for, besides the level.
struct Envelope {
    int32_t pps; // points a second
    float dur;   // seconds
    float decay; // dB a second; below 0: each partial falls all the way
};

/// 1 for a text of digits, at most one point, and a blank only as its last character, else 0.
int32_t isDecimal(const char *text);

/// Reads groups of values from the file into `ph`, most_records zero records. Returns how many
/// hold values, or -1 where the user gives up or leaves out the frequency. A sequence of other
/// letters than f, a and d ends the process with status -1.
int32_t read_interactively(TokenFile &file, PhRecord *ph);

/// Asks for the envelope and the level in dB. What cannot be read, and all behind it, keeps its
/// value. Returns the count of partials, which it is given.
int32_t construct_data(const int32_t *partials, int32_t *pps, float *dur, float *maxamp,
                       float *decay);

/// Makes the store from the records that hold values, `partials` of them: asks for the lowest
/// frequency where theirs is no audible one, and follows minfreq and maxfreq. Changes the values
/// of the records. Returns 0, or -1 where the envelope gives too few points, or with a complaint
/// on standard error where it gives more than any memory should hold.
int32_t build_partials(PhRecord *ph, Envelope envelope);
