// synth/aiff.h -- the header of an AIFF file (AIFF 1.3): one FORM chunk with COMM and SSND.
#pragma once

#include <cstdint>
#include <cstdio>

/// In memory; passed by value.
struct AiffHeader {
    int64_t form_size;   // bytes of the FORM chunk: the file's length less 8
    int64_t comm_size;   // bytes of the COMM chunk; written as 18 whatever it holds
    int16_t channels;    // written as 1 whatever it holds
    int64_t frames;      // sample frames
    int16_t sample_size; // bits
    uint8_t rate[10];    // sample rate in Hz, 80-bit extended, big-endian
    int64_t ssnd_size;   // bytes of the SSND chunk
    int64_t offset;      // of the sound data
    int64_t block_size;  // of the sound data
};

/// A whole number toward zero, held to ±2^56 so that sizes made of it fit; 0 for not a number.
int64_t whole_frames(float frames);

/// The header of a new file without sound. The last two bytes of the rate stay as given.
AiffHeader initAiff_h(AiffHeader header);

/// Fills in what it finds at the file's position, up to the first thing that does not fit. It
/// passes over no COMM tag and takes every number as little-endian, so of a file written here it
/// gets neither the right sizes nor as far as the sound chunk.
AiffHeader rdAiff_h(FILE *file, AiffHeader header);

/// Writes the 54 bytes at the file's position, the counts of `header` grown by `length` seconds
/// of 16-bit mono at `rate` Hz; a null file only gets the line on the console. Returns the header
/// as written.
AiffHeader wrAiff_h3(float length, float rate, FILE *file, AiffHeader header);
