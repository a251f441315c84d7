// Octave notations and decibels, against formulas of their own.

#include "toolbox/auxmath3d.h"

#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

const std::vector<float> pitches = {16.35f,  27.5f,   55.0f,    100.7f,  261.6256f,
                                    277.2f,  300.0f,  440.0f,   441.3f,  1000.0f,
                                    4186.0f, 8000.0f, 15804.0f, 19999.5f};
const std::vector<float> tunings = {415.0f, 430.539032f, 440.0f, 442.0f, 466.2f};

long double octaves_of(float freq) {
    return std::log10(static_cast<long double>(freq)) * 3.3219283L;
}

long double shift_of(float tuning) {
    return std::log10(static_cast<long double>(tuning) / 430.539032L) * -0.398631396L;
}

float as_float(long double value) {
    return static_cast<float>(value);
}

float octc(std::string text) {
    return octc2oct(text.data());
}

// Octave.pitch-class

TEST(PitchClass, IsTheFractionOfAnOctaveInHundredths) {
    for (float freq : pitches) {
        for (float tuning : tunings) {
            const long double octaves = octaves_of(freq);
            const long double part = (octaves - std::floor(octaves)) * 0.12L + shift_of(tuning);
            EXPECT_NEAR(ftpc(freq, tuning), as_float(part), 1e-8) << freq << " " << tuning;
            EXPECT_FLOAT_EQ(ftopc(freq, tuning), as_float(std::floor(octaves) + part))
                << freq << " " << tuning;
        }
    }
}

TEST(PitchClass, AIsTheNinthSemitone) {
    EXPECT_NEAR(ftpc(440.0f, 440.0f), 0.09f, 1e-6);
    EXPECT_NEAR(ftopc(440.0f, 440.0f), 8.09f, 1e-6);
    EXPECT_NEAR(ftopc(880.0f, 440.0f), 9.09f, 1e-6);
    EXPECT_NEAR(ftpc(415.0f, 415.0f), 0.09f, 1e-6);
}

TEST(PitchClass, BackToHz) {
    for (float opc : {5.0f, 6.11f, 8.0f, 8.07f, 8.09f, 9.115f, -1.05f, 0.0f, 14.2f}) {
        for (float tuning : tunings) {
            const long double whole = std::floor(static_cast<long double>(opc));
            const long double within = std::pow(2.0L, (opc - whole) / 0.12L);
            const long double scale = tuning / 430.539032L;
            EXPECT_FLOAT_EQ(opctof(opc, tuning), as_float(std::pow(2.0L, whole) * scale * within));
            EXPECT_FLOAT_EQ(opctor(opc, tuning), as_float(within * scale));
        }
    }
    EXPECT_NEAR(opctof(8.09f, 440.0f), 440.0f, 0.01);
    EXPECT_NEAR(opctof(8.0f, 440.0f), 261.6256f, 0.01);
    EXPECT_NEAR(opctor(8.07f, 430.539032f), 1.4983f, 1e-4);
    EXPECT_NEAR(opctor(3.07f, 440.0f), opctor(8.07f, 440.0f), 1e-4) << "whatever the octave";
}

TEST(PitchClass, FourFortyThereAndBack) {
    EXPECT_NEAR(opctof(ftopc(440.0f, 440.0f), 440.0f), 440.0f, 0.01);
}

TEST(PitchClass, ThereAndBack) {
    for (float freq : pitches) {
        for (float tuning : tunings) {
            if (ftpc(freq, tuning) < 0.0f) {
                continue; // belongs to the octave below, see the next test
            }
            const float opc = ftopc(freq, tuning);
            EXPECT_NEAR(opctof(opc, tuning) / freq, 1.0f, 2e-5) << freq << " " << tuning;
        }
    }
}

TEST(PitchClass, JustAboveAnOctaveTheTuningTakesThePitchClassBelowZero) {
    EXPECT_LT(ftpc(257.0f, 440.0f), 0.0f);
    const float opc = ftopc(257.0f, 440.0f);
    EXPECT_LT(opc, 8.0f);
    EXPECT_GT(opctof(opc, 440.0f), 30000.0f); // the octave is then taken from below
}

TEST(PitchClass, NumbersWithoutAPitch) {
    EXPECT_TRUE(std::isnan(ftpc(-1.0f, 440.0f)));
    EXPECT_TRUE(std::isnan(ftopc(-1.0f, 440.0f)));
    EXPECT_FALSE(std::isfinite(ftopc(0.0f, 440.0f)));
}

// Linear octaves

TEST(LinearOctaves, CountFromOneAndALittle) {
    for (float cps : pitches) {
        const float ratio = static_cast<float>(static_cast<double>(cps) / 1.02197460938);
        EXPECT_EQ(octcps(cps), static_cast<float>(logf(ratio) / 0.69314718)) << cps;
        EXPECT_FLOAT_EQ(octcps(cps), as_float(std::log2(cps / 1.02197460938L))) << cps;
    }
    EXPECT_NEAR(octcps(1.02197460938f), 0.0f, 1e-7);
    EXPECT_NEAR(octcps(440.0f), 8.75f, 1e-5);
}

TEST(LinearOctaves, WithATuning) {
    for (float cps : pitches) {
        for (float tuning : tunings) {
            const double base = static_cast<double>(tuning) * 1.02197460938;
            const float ratio = static_cast<float>(cps / base);
            EXPECT_EQ(octcpstu(cps, tuning), static_cast<float>(logf(ratio) / 0.69314718));
            EXPECT_NEAR(octcpstu(cps, tuning), std::log2(cps / base), 1e-5);
        }
    }
    EXPECT_NEAR(octcpstu(880.0f * 1.02197460938f, 440.0f), 1.0f, 1e-6);
}

TEST(LinearOctaves, BackToCyclesOnABase) {
    EXPECT_EQ(cpsoct(0.0f, 440.0f), 440.0f);
    EXPECT_EQ(cpsoct(1.0f, 440.0f), 880.0f);
    EXPECT_EQ(cpsoct(-2.0f, 440.0f), 110.0f);
    for (float oct : {0.1f, 1.5f, 3.25f, 8.75f, -0.6f}) {
        EXPECT_EQ(cpsoct(oct, 1.02197461f), exp2f(oct) * 1.02197461f);
    }
    for (float cps : pitches) {
        EXPECT_NEAR(cpsoct(octcps(cps), 1.02197461f) / cps, 1.0f, 5e-6);
    }
}

TEST(LinearOctaves, OctaveAndCents) {
    EXPECT_EQ(octc("8*50"), static_cast<float>(8.0 + 50.0 / 1200.0));
    EXPECT_EQ(octc("7.5*-100"), static_cast<float>(7.5 - 100.0 / 1200.0));
    EXPECT_EQ(octc("8*1200"), 9.0f);
}

TEST(LinearOctaves, OctaveWithoutCents) {
    EXPECT_EQ(octc("8"), 8.0f);
    EXPECT_EQ(octc("8*"), 8.0f);
    EXPECT_EQ(octc("8.25"), 8.25f);
}

TEST(LinearOctaves, TextWithoutAnOctave) {
    EXPECT_EQ(octc(""), 0.0f);
    EXPECT_EQ(octc("*"), 0.0f);
    EXPECT_EQ(octc("***"), 0.0f);
    EXPECT_EQ(octc("word"), 0.0f);
    EXPECT_EQ(octc("*50"), 50.0f) << "leading stars count for nothing";
    EXPECT_EQ(octc("8**50"), static_cast<float>(8.0 + 50.0 / 1200.0));
    EXPECT_EQ(octc("8*50*7"), static_cast<float>(8.0 + 50.0 / 1200.0));
}

TEST(LinearOctaves, TheTextIsCutInPlace) {
    char text[] = "8*50";
    octc2oct(text);
    EXPECT_STREQ(text, "8");
    EXPECT_STREQ(text + 2, "50");
}

// Level

TEST(Level, DecibelsOfAnAmplitude) {
    EXPECT_EQ(amp2db(1.0), 0.0);
    EXPECT_EQ(amp2db(10.0), 20.0);
    EXPECT_EQ(amp2db(0.1), -20.0);
    EXPECT_NEAR(amp2db(0.5), -6.020599913279624, 1e-12);
    EXPECT_NEAR(amp2db(0.7), -3.0980391997148637, 1e-12);
}

TEST(Level, SilenceIsMinusAHundredAndForty) {
    EXPECT_EQ(amp2db(0.0), -140.0);
    EXPECT_EQ(amp2db(-0.0), -140.0);
    EXPECT_EQ(amp2db(-1.0), -140.0);
    EXPECT_EQ(amp2db(-HUGE_VAL), -140.0);
}

TEST(Level, AVerySmallAmplitudeLiesBelowSilence) {
    EXPECT_NEAR(amp2db(1e-8), -160.0, 1e-10);
    EXPECT_NEAR(amp2db(1e-300), -6000.0, 1e-8);
    EXPECT_LT(amp2db(DBL_TRUE_MIN), -6000.0);
}

TEST(Level, AmplitudesWithoutALevel) {
    EXPECT_EQ(amp2db(HUGE_VAL), HUGE_VAL);
    EXPECT_EQ(amp2db(std::nan("")), -140.0);
}

TEST(Level, AmplitudeOfDecibels) {
    for (float db : {0.0f, 20.0f, 6.02f, -3.0f, -6.0206f, -60.0f, -90.0f, -139.99f, -140.0f}) {
        EXPECT_EQ(db2amp(db), powf(10.0f, db / 20.0f)) << db;
    }
    EXPECT_EQ(db2amp(0.0f), 1.0f);
    EXPECT_EQ(db2amp(20.0f), 10.0f);
    EXPECT_FLOAT_EQ(db2amp(-140.0f), 1e-7f);
}

TEST(Level, BelowSilenceIsSilence) {
    EXPECT_EQ(db2amp(-200.0f), db2amp(-140.0f));
    EXPECT_EQ(db2amp(-140.001f), db2amp(-140.0f));
    EXPECT_EQ(db2amp(-HUGE_VALF), db2amp(-140.0f));
    EXPECT_GT(db2amp(-139.0f), db2amp(-140.0f));
    EXPECT_EQ(db2amp(std::nanf("")), db2amp(-140.0f));
}

TEST(Level, ThereAndBack) {
    for (float db : {-120.0f, -60.0f, -12.5f, 0.0f, 3.0f}) {
        EXPECT_NEAR(amp2db(static_cast<double>(db2amp(db))), db, 1e-5);
    }
}

} // namespace
