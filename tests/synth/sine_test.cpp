// The vector sine against sinf, for every kind of vectors that this processor has.
#include "synth/voice_kernels.h"
#include "tests/support/child.h"
#include "tests/support/rendering.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <vector>

namespace {

constexpr float range = 22.3f; // the bank's phases end at 22

float float_of(uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

uint32_t bits_of(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// Compares every `step`th float of the range. Zero compares by value: its sign adds nothing.
void compare_sines(uint32_t step) {
    std::vector<float> x, sine;
    uint64_t differing = 0;
    const auto flush = [&] {
        sine.resize(x.size());
        vector_sine(x.data(), sine.data(), x.size());
        for (size_t i = 0; i < x.size(); ++i) {
            const float expected = sinf(x[i]);
            if (bits_of(expected) != bits_of(sine[i]) && expected + sine[i] != 0.0f) {
                ++differing;
            }
        }
        x.clear();
    };
    for (uint64_t bits = 0; bits <= bits_of(range); bits += step) {
        x.push_back(float_of(static_cast<uint32_t>(bits)));
        x.push_back(-x.back());
        if (x.size() >= 4096) {
            flush();
        }
    }
    flush();
    EXPECT_EQ(differing, 0u);
}

} // namespace

TEST(VectorSine, IsSinfOnEvery997thFloat) {
    on_each_kind([] { compare_sines(sanitized() ? 9973 : 997); });
}

TEST(VectorSine, IsSinfOnEveryFloat) {
    if (std::getenv("QUILLGROVE_EVERY_FLOAT") == nullptr) {
        GTEST_SKIP() << "takes minutes; set QUILLGROVE_EVERY_FLOAT to run it";
    }
    on_each_kind([] { compare_sines(1); });
}

TEST(VectorSine, TakesAnyCount) {
    for (size_t count = 0; count < 40; ++count) {
        std::vector<float> x(count), sine(count + 1, 7.0f);
        for (size_t i = 0; i < count; ++i) {
            x[i] = 0.37f * static_cast<float>(i) - 3.0f;
        }
        vector_sine(x.data(), sine.data(), count);
        for (size_t i = 0; i < count; ++i) {
            EXPECT_EQ(sine[i], sinf(x[i]));
        }
        EXPECT_EQ(sine[count], 7.0f);
    }
}

// The lanes take off 2 pi in two single-precision steps.
TEST(VectorSine, WrapInTwoStepsEqualsTheWrapInDoublePrecision) {
    uint64_t differing = 0;
    for (uint32_t bits = bits_of(12.566371f) + 1; bits <= bits_of(22.28f); ++bits) {
        const float ph = float_of(bits);
        const float wrapped = (ph - 0x1.921fb4p+2f) - 0x1.4442d2p-22f;
        if (wrapped != static_cast<float>(static_cast<double>(ph) - 6.283185307179586)) {
            ++differing;
        }
    }
    EXPECT_EQ(differing, 0u);
}

TEST(VectorSine, TheWidestVectorsAreChosenAndNoneWhereThereAreNone) {
    const int64_t widest = hwy::SupportedAndGeneratedTargets().front();
    if (vectors_at_hand()) {
        EXPECT_STREQ(vector_kind(), hwy::TargetName(widest));
    }
    hwy::DisableTargets(~int64_t{0});
    EXPECT_FALSE(vectors_at_hand());
    hwy::DisableTargets(0);
}
