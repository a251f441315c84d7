#include "synth/IEEE80.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr int all_ones = 0x7FFF; // exponent of infinity
constexpr int sign_bit = 0x8000;

void put(uint32_t number, int size, uint8_t *bytes) {
    for (int i = 0; i < size; ++i) {
        bytes[i] = static_cast<uint8_t>(number >> (8 * (size - 1 - i)));
    }
}

uint32_t get(const uint8_t *bytes, int size) {
    uint32_t number = 0;
    for (int i = 0; i < size; ++i) {
        number = number << 8 | bytes[i];
    }
    return number;
}

} // namespace

void ConvertToIeeeExtended(double value, uint8_t *bytes) {
    std::memset(bytes, 0, 10);
    if (value == 0.0) {
        return;
    }
    const int sign = value < 0.0 ? sign_bit : 0;
    int exponent = 0;
    double mantissa = std::frexp(std::fabs(value), &exponent);
    if (exponent > 16384 || !(mantissa < 1.0)) {
        put(static_cast<uint32_t>(sign | all_ones), 2, bytes);
        return;
    }
    exponent += 16382;
    if (exponent < 0) {
        mantissa = std::ldexp(mantissa, exponent);
        exponent = 0;
    }
    mantissa = std::ldexp(mantissa, 32);
    const double upper = std::floor(mantissa);
    const double lower = std::floor(std::ldexp(mantissa - upper, 32));
    put(static_cast<uint32_t>(sign | exponent), 2, bytes);
    put(static_cast<uint32_t>(upper), 4, bytes + 2);
    put(static_cast<uint32_t>(lower), 4, bytes + 6);
}

double ConvertFromIeeeExtended(const uint8_t *bytes) {
    const int exponent = static_cast<int>(get(bytes, 2)) & all_ones;
    const uint32_t upper = get(bytes + 2, 4);
    const uint32_t lower = get(bytes + 6, 4);
    double value;
    if (exponent == 0 && upper == 0 && lower == 0) {
        value = 0.0;
    } else if (exponent == all_ones) {
        value = std::numeric_limits<double>::infinity();
    } else {
        value = std::ldexp(upper, exponent - 16414) + std::ldexp(lower, exponent - 16446);
    }
    return (bytes[0] & 0x80) != 0 ? -value : value;
}
