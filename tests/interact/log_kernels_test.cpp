// Places and frequencies many at once against one by one.
#include "interact/log_kernels.h"

#include "store/store.h"
#include "tests/support/rendering.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using Values = std::vector<float>;

/// Every so many-th float there is, of both signs, subnormals, infinities and the rest included.
Values floats_by(uint32_t stride) {
    Values values;
    for (uint64_t bits = 0; bits <= 0xffffffffu; bits += stride) {
        values.push_back(std::bit_cast<float>(static_cast<uint32_t>(bits)));
    }
    return values;
}

/// Neighbours of `centre`.
Values around(float centre) {
    Values values;
    const uint32_t middle = std::bit_cast<uint32_t>(centre);
    for (uint32_t bits = middle - 1000; bits <= middle + 1000; ++bits) {
        values.push_back(std::bit_cast<float>(bits));
    }
    return values;
}

/// Frequencies and places as a store has them.
Values even_steps(float from, float to, int count) {
    Values values;
    for (int k = 0; k < count; ++k) {
        values.push_back(from + (to - from) * static_cast<float>(k) / static_cast<float>(count));
    }
    return values;
}

LogAxis axis_of(float low, float high) {
    minfreq = low;
    maxfreq = high;
    return log_axis();
}

std::vector<LogAxis> axes() {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    return {axis_of(100.0f, 5000.3f), axis_of(1.0f, 22050.0f),   axis_of(440.0f, 440.00003f),
            axis_of(440.0f, 440.0f),  axis_of(0.0f, 440.0f),     axis_of(440.0f, 0.0f),
            axis_of(-1.5f, 440.0f),   axis_of(880.0f, 440.0f),   axis_of(22050.0f, infinity),
            axis_of(1e-42f, 3e38f),   axis_of(-100.0f, -200.0f), axis_of(NAN, 100.0f)};
}

size_t differences(const Values &a, const Values &b) {
    size_t count = 0;
    for (size_t k = 0; k < a.size(); ++k) {
        count += std::bit_cast<uint32_t>(a[k]) != std::bit_cast<uint32_t>(b[k]) ? 1 : 0;
    }
    return count;
}

void compare_positions(const Values &freqs) {
    Values expected(freqs.size());
    Values got(freqs.size());
    for (const LogAxis &axis : axes()) {
        for (size_t k = 0; k < freqs.size(); ++k) {
            expected[k] = log_position(axis, freqs[k]);
        }
        log_positions(axis, freqs.data(), got.data(), static_cast<int32_t>(freqs.size()));
        EXPECT_EQ(differences(got, expected), 0u) << axis.lowest << " " << axis.octaves;
    }
}

void compare_frequencies(const Values &places) {
    Values expected(places.size());
    Values got(places.size());
    for (const LogAxis &axis : axes()) {
        for (size_t k = 0; k < places.size(); ++k) {
            expected[k] = static_cast<float>(freq_at_log_position(axis, places[k]));
        }
        freqs_at_log_positions(axis, places.data(), got.data(),
                               static_cast<int32_t>(places.size()));
        EXPECT_EQ(differences(got, expected), 0u) << axis.lowest << " " << axis.span;
    }
}

class LogKernels : public SynthTest {};

} // namespace

TEST_F(LogKernels, PlacesHaveTheBitsOfOneByOne) {
    on_each_kind([] {
        compare_positions(floats_by(99991));
        compare_positions(even_steps(20.0f, 22050.0f, 50000));
    });
}

TEST_F(LogKernels, PlacesNearTheLowestFrequencyToo) {
    on_each_kind([] {
        for (const float centre : {100.0f, 440.0f, 880.0f, 22050.0f}) {
            compare_positions(around(centre));
        }
    });
}

TEST_F(LogKernels, FrequenciesHaveTheBitsOfOneByOne) {
    on_each_kind([] {
        compare_frequencies(floats_by(99991));
        compare_frequencies(even_steps(-0.5f, 1.5f, 50000));
    });
}

TEST_F(LogKernels, AnyNumberOfThem) {
    on_each_kind([] {
        for (int count = 0; count < 20; ++count) {
            compare_positions(even_steps(100.0f, 5000.0f, count));
            compare_frequencies(even_steps(0.0f, 1.0f, count));
        }
    });
}

TEST_F(LogKernels, NothingIsWrittenBehindTheLast) {
    Values to(20, 7.0f);
    const Values from(20, 0.5f);
    freqs_at_log_positions(axis_of(100.0f, 200.0f), from.data(), to.data(), 13);
    EXPECT_EQ(to[13], 7.0f);
    log_positions(axis_of(100.0f, 200.0f), from.data(), to.data(), 5);
    EXPECT_EQ(to[5], static_cast<float>(freq_at_log_position(axis_of(100.0f, 200.0f), 0.5f)));
}
