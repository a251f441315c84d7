// Numbers as bytes, and the rate's 80-bit form.

#include "synth/IEEE80.h"
#include "synth/byte_order.h"

#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <vector>

namespace {

using Bytes = std::vector<int>;

Bytes of_long(int64_t x) {
    uint8_t out[4];
    clbytes_swap(x, out);
    return {out, out + 4};
}

Bytes of_short(int16_t x) {
    uint8_t out[2];
    csbytes_swap(x, out);
    return {out, out + 2};
}

int64_t long_of(std::vector<uint8_t> bytes) {
    return bytes2l_swap(bytes.data());
}

int16_t short_of(std::vector<uint8_t> bytes) {
    return bytes2s_swap(bytes.data());
}

Bytes extended(double value) {
    uint8_t out[10];
    ConvertToIeeeExtended(value, out);
    return {out, out + 10};
}

double back(double value) {
    uint8_t out[10];
    ConvertToIeeeExtended(value, out);
    return ConvertFromIeeeExtended(out);
}

const double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(ByteOrder, LongIsBigEndian) {
    EXPECT_EQ(of_long(0x01020304), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(of_long(0xFFEEDDCC), (Bytes{0xFF, 0xEE, 0xDD, 0xCC}));
    EXPECT_EQ(of_long(0x5'01020304), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(of_long(0), (Bytes{0, 0, 0, 0}));
}

TEST(ByteOrder, PartsOfANegativeLongAreCutTowardZero) {
    EXPECT_EQ(of_long(-1), (Bytes{0, 0, 0, 0xFF}));
    EXPECT_EQ(of_long(-0x100), (Bytes{0, 0, 0xFF, 0}));
}

TEST(ByteOrder, ShortDividesBy255) {
    EXPECT_EQ(of_short(16), (Bytes{0, 16}));
    EXPECT_EQ(of_short(254), (Bytes{0, 254}));
    EXPECT_EQ(of_short(255), (Bytes{1, 255}));
    EXPECT_EQ(of_short(510), (Bytes{2, 254}));
    EXPECT_EQ(of_short(-255), (Bytes{255, 1}));
}

TEST(ByteOrder, LongFromBytesIsLittleEndianAndSigned) {
    EXPECT_EQ(long_of({1, 2, 3, 4}), 0x04030201);
    EXPECT_EQ(long_of({0xFF, 0, 0, 0}), -1);
    EXPECT_EQ(long_of({0, 0x80, 0, 1}), 0x1000000 - 0x8000);
    EXPECT_EQ(long_of({0x80, 0x80, 0x80, 0x80}), -128 * int64_t{0x1010101});
}

TEST(ByteOrder, ShortFromBytesTakesTheLowOneAsSigned) {
    EXPECT_EQ(short_of({1, 2}), 0x0201);
    EXPECT_EQ(short_of({0xFF, 1}), 0x00FF);
    EXPECT_EQ(short_of({0x10, 0xFF}), -240);
    EXPECT_EQ(short_of({0xFF, 0x80}), 0x7FFF);
}

TEST(ByteOrder, LongReversed) {
    EXPECT_EQ(lbytes_swap(0x01020304), 0x04030201);
    EXPECT_EQ(lbytes_swap(0x000000FF), 0xFF000000);
    EXPECT_EQ(lbytes_swap(-1), -0x1000000);
}

TEST(ByteOrder, ShortExchangedWithThe255) {
    EXPECT_EQ(sbytes_swap(16), 0x1000);
    EXPECT_EQ(sbytes_swap(510), static_cast<int16_t>(0xFE00 + 2));
    EXPECT_EQ(sbytes_swap(-1), -256);
}

TEST(Extended, Rate44100) {
    EXPECT_EQ(extended(44100.0), (Bytes{0x40, 0x0E, 0xAC, 0x44, 0, 0, 0, 0, 0, 0}));
}

TEST(Extended, OneMinusTwoAndAFraction) {
    EXPECT_EQ(extended(1.0), (Bytes{0x3F, 0xFF, 0x80, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(extended(-2.0), (Bytes{0xC0, 0x00, 0x80, 0, 0, 0, 0, 0, 0, 0}));
    // 1 + 2^-40 + 2^-52 reaches the lower half.
    EXPECT_EQ(extended(1.0 + 0x1p-40 + 0x1p-52),
              (Bytes{0x3F, 0xFF, 0x80, 0, 0, 0, 0, 0x80, 0x08, 0}));
}

TEST(Extended, ZeroOfEitherSignIsTenZeroBytes) {
    EXPECT_EQ(extended(0.0), Bytes(10, 0));
    EXPECT_EQ(extended(-0.0), Bytes(10, 0));
    EXPECT_EQ(back(0.0), 0.0);
}

TEST(Extended, InfinityAndNotANumberAreTheInfinityPattern) {
    const Bytes pattern = {0x7F, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(extended(infinity), pattern);
    EXPECT_EQ(extended(std::numeric_limits<double>::quiet_NaN()), pattern);
    EXPECT_EQ(extended(-infinity)[0], 0xFF);
    EXPECT_EQ(back(infinity), infinity);
    EXPECT_EQ(back(-infinity), -infinity);
}

TEST(Extended, InverseGivesTheSameNumber) {
    for (const double value : {44100.0, 48000.0, 0.1, -0.3, 1e-308, 4.9e-324, 1.7e308, -1e100}) {
        EXPECT_EQ(back(value), value) << value;
    }
}

TEST(Extended, MatchesTheMachinesLongDouble) {
    static_assert(std::numeric_limits<long double>::digits == 64);
    for (const double value : {44100.0, 96000.0, 0.1, -3.25, 4.9e-324}) {
        const auto wide = static_cast<long double>(value);
        uint8_t machine[sizeof wide];
        std::memcpy(machine, &wide, sizeof wide);
        EXPECT_EQ(extended(value), Bytes(std::make_reverse_iterator(machine + 10),
                                         std::make_reverse_iterator(machine)));
    }
}
