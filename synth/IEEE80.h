// synth/IEEE80.h -- the 80-bit extended format of IEEE 754 in which AIFF keeps the sample rate:
// sign, 15-bit exponent biased by 16383, 64-bit mantissa with its leading 1 written out.
// Big-endian.
#pragma once

#include <cstdint>

/// Writes ten bytes. Not-a-number becomes infinity.
void ConvertToIeeeExtended(double value, uint8_t *bytes);

/// Reads ten bytes. Any value with the exponent 0x7FFF is infinity.
double ConvertFromIeeeExtended(const uint8_t *bytes);
