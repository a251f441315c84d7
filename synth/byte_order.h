// synth/byte_order.h -- numbers to bytes and back, by truncating division and remainder. Their
// oddities are part of the files they make: 255 in place of 256 for short values, and "swap"
// readers that are little-endian.
#pragma once

#include <cstdint>

/// The low 32 bits of x as four bytes, big-endian; of a negative x the parts are cut toward zero
/// one by one.
void clbytes_swap(int64_t x, uint8_t *out);

/// A short as two bytes, big-endian; right for small values only, as the divisor is 255.
void csbytes_swap(int16_t x, uint8_t *out);

/// Four bytes, little-endian, each taken as signed.
int64_t bytes2l_swap(const uint8_t *bytes);

/// Two bytes, little-endian, the low one taken as signed.
int16_t bytes2s_swap(const uint8_t *bytes);

/// The four bytes of x reversed.
int64_t lbytes_swap(int64_t x);

/// The bytes of x exchanged, with the divisor 255 again.
int16_t sbytes_swap(int16_t x);
