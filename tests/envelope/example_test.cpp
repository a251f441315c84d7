// The bundled LPC file: what the readers find in it is what its generator put there.

#include "envelope/lpcf.h"

#include "tests/envelope/envelope_support.h"
#include "tests/support/console.h"

namespace {

const char *const example = EXAMPLES_DIR "/vowel.lpc.txt";
constexpr int32_t points = 128;
constexpr int frame_count = 37;

class LpcExample : public EnvelopeTest {
  protected:
    /// The next frame of the open file.
    LpcFrame next_frame() {
        LpcFrame frame = frame_of(std::vector<Pair>(static_cast<size_t>(points) + 1));
        printed([&] { lpcf_read(frame, points); });
        return frame;
    }
};

/// Hz of the frame's loudest point.
double peak_of(LpcFrame frame) {
    int32_t best = 1;
    for (int32_t i = 2; i <= points; ++i) {
        best = frame[i]->amp > frame[best]->amp ? i : best;
    }
    return frame[best]->freq;
}

TEST_F(LpcExample, HasItsFramesOverTheVowelsLength) {
    LpcSize size = {};
    printed([&] { size = lpcf_len(example); });
    EXPECT_EQ(size.frames, frame_count);
    EXPECT_FLOAT_EQ(size.duration, 3.6F);
}

TEST_F(LpcExample, EveryFrameHoldsItsGridOfFrequencies) {
    ASSERT_EQ(lpcf_open(example), points);
    for (int i = 0; i < frame_count; ++i) {
        LpcFrame frame = next_frame();
        ASSERT_NEAR(frame[0]->amp, 0.1 * i, 1e-9);
        ASSERT_EQ(frame[0]->freq, points);
        for (int32_t j = 1; j <= points; ++j) {
            ASSERT_EQ(frame[j]->freq, 50.0 + 100.0 * (j - 1)) << "frame " << i;
            ASSERT_GT(frame[j]->amp, 0.0) << "frame " << i;
            ASSERT_LT(frame[j]->amp, 2.0) << "frame " << i;
        }
    }
}

TEST_F(LpcExample, TheFirstFormantFallsFromAToO) {
    ASSERT_EQ(lpcf_open(example), points);
    LpcFrame first = next_frame();
    LpcFrame last = first;
    for (int i = 1; i < frame_count; ++i) {
        last = next_frame();
    }
    EXPECT_EQ(peak_of(first), 850.0);
    EXPECT_EQ(peak_of(last), 450.0);
}

} // namespace
