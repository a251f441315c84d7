// Conversions between linear amplitude and dB.
#include "toolbox/auxmath3d.h"

#include <cfloat>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(Level, ZeroAmplitudeIsSilence) {
    EXPECT_EQ(amp2db(0.0), -140.0);
}

TEST(Level, NegativeAmplitudeIsSilence) {
    EXPECT_EQ(amp2db(-0.25), -140.0);
}

TEST(Level, FullScaleIsZero) {
    EXPECT_EQ(amp2db(1.0), 0.0);
}

TEST(Level, AmplitudeToDecibelsInDouble) {
    for (double amp : {1e-9, 0.001, 0.1, 0.5, 0.7, 2.0, 123.456}) {
        EXPECT_EQ(amp2db(amp), 20.0 * log10(amp));
    }
}

TEST(Level, VerySmallAmplitudesFallBelowSilence) {
    EXPECT_EQ(amp2db(1e-20), 20.0 * log10(1e-20));
    EXPECT_LT(amp2db(1e-20), -140.0);
}

TEST(Level, BelowTheFloorEqualsTheFloor) {
    EXPECT_EQ(db2amp(-200.0f), db2amp(-140.0f));
    EXPECT_EQ(db2amp(-140.0f), powf(10.0f, -7.0f));
}

TEST(Level, DecibelsToAmplitudeInSinglePrecision) {
    for (float db : {-139.9f, -90.0f, -60.5f, -6.0f, -0.1f, 0.0f, 3.0f, 20.0f}) {
        EXPECT_EQ(db2amp(db), powf(10.0f, db / 20.0f)) << db;
    }
    EXPECT_EQ(db2amp(0.0f), 1.0f);
}

TEST(Level, InfinitiesHaveResults) {
    EXPECT_EQ(db2amp(-std::numeric_limits<float>::infinity()), db2amp(-140.0f));
    EXPECT_EQ(db2amp(std::numeric_limits<float>::infinity()),
              std::numeric_limits<float>::infinity());
    EXPECT_EQ(amp2db(std::numeric_limits<double>::infinity()),
              std::numeric_limits<double>::infinity());
}

TEST(Level, TheWayThereAndBack) {
    for (float db = -139.0f; db < 10.0f; db += 7.3f) {
        EXPECT_NEAR(amp2db(static_cast<double>(db2amp(db))), db, 1e-4);
    }
}

} // namespace
