// tests/synth/synth33_support.h -- the diagnostic driver at eight frames a second, where sines
// can be computed by hand.
#pragma once

#include "synth/sound.h"
#include "synth/synth3d.h"
#include "tests/support/console.h"
#include "tests/support/sound_folder.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

class Synth33 : public SoundTest {
  protected:
    void SetUp() override {
        SoundTest::SetUp();
        R = 8.0;
    }

    /// Runs the driver on the whole store; what it prints.
    std::string run(int32_t mode, int32_t select = 0) {
        char *into = name();
        return printed([&] {
            EXPECT_EQ(synth33(sndstart, mode, into, parray, npoints, partials, select), 0);
        });
    }

    /// The floats of one render; those of an earlier one are gone.
    std::vector<float> rendered(int32_t select = 0) {
        std::remove(path("tone.fp").c_str());
        run(80, select);
        return floats_of("tone.fp");
    }

    /// Marks points first to last of a partial.
    static void select(int32_t part, int32_t first, int32_t last) {
        for (int32_t j = first; j <= last; ++j) {
            parray[part][j].selected = 1;
        }
    }

    /// Compares within 1e-6; single precision over a few frames.
    static void expect_samples(const std::vector<float> &samples,
                               const std::vector<double> &expected) {
        ASSERT_EQ(samples.size(), expected.size());
        for (size_t n = 0; n < samples.size(); ++n) {
            EXPECT_NEAR(static_cast<double>(samples[n]), expected[n], 2e-6) << n;
        }
    }

    /// Points every half second, 2 Hz, 0 dB: at eight frames a second a quarter cycle a frame.
    static Partial even(int32_t count, float start = 0.0f) {
        Partial partial;
        for (int32_t j = 0; j < count; ++j) {
            partial.push_back({start + 0.5f * static_cast<float>(j), 2.0f, 0.0f});
        }
        return partial;
    }
};
