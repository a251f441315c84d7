#include "synth/byte_order.h"

void clbytes_swap(int64_t x, uint8_t *out) {
    out[0] = static_cast<uint8_t>(x / 0x1000000);
    out[1] = static_cast<uint8_t>((x % 0x1000000) / 0x10000);
    out[2] = static_cast<uint8_t>((x % 0x10000) / 0x100);
    out[3] = static_cast<uint8_t>(x);
}

void csbytes_swap(int16_t x, uint8_t *out) {
    out[0] = static_cast<uint8_t>(x / 255);
    out[1] = static_cast<uint8_t>(x);
}

int64_t bytes2l_swap(const uint8_t *bytes) {
    int64_t sum = 0;
    for (int i = 3; i >= 0; --i) {
        sum = sum * 0x100 + static_cast<int8_t>(bytes[i]);
    }
    return sum;
}

int16_t bytes2s_swap(const uint8_t *bytes) {
    return static_cast<int16_t>(bytes[1] * 0x100 + static_cast<int8_t>(bytes[0]));
}

int64_t lbytes_swap(int64_t x) {
    return (x % 0x100) * 0x1000000 + ((x % 0x10000) / 0x100) * 0x10000 +
           ((x % 0x1000000) / 0x10000) * 0x100 + x / 0x1000000;
}

int16_t sbytes_swap(int16_t x) {
    return static_cast<int16_t>((x << 8) + x / 255);
}
