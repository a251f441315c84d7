// One span of the source filter: which points it takes and what it makes of their levels.

#include "envelope/source_filter.h"

#include "tests/envelope/envelope_support.h"
#include "tests/support/console.h"

#include <cmath>
#include <limits>

namespace {

constexpr const char *applied = "APPLYING SPECTRAL ENVELOPE...\n";

class SourceFilter : public EnvelopeTest {
  protected:
    /// Two partials of three points from 0 to 2 s, at 200 and 600 Hz.
    void SetUp() override {
        EnvelopeTest::SetUp();
        fill_store({{{0, 200, -10}, {1, 200, -20}, {2, 200, -30}},
                    {{0, 600, -40}, {1, 600, -50}, {2, 600, -60}}});
    }

    std::string filter(LpcFrame a, LpcFrame b, int32_t dbmode, float power, float scale = 1) {
        return printed([&] { source_filter(scale, parray, peval, a, b, npoints, dbmode, power); });
    }

    std::vector<float> levels(int32_t partial) const {
        std::vector<float> all;
        for (int32_t j = 0; j < npoints[partial]; ++j) {
            all.push_back(parray[partial][j].amp);
        }
        return all;
    }
};

using Levels = std::vector<float>;

TEST_F(SourceFilter, DecibelsAreAddedOnTheLineBetweenTwoElements) {
    LpcFrame a = frame_of({{0, 2}, {-10, 100}, {-20, 400}});
    LpcFrame b = frame_of({{2, 2}, {-30, 100}, {-40, 400}});
    EXPECT_EQ(filter(a, b, 1, 1), applied);
    EXPECT_EQ(lpoints, 2);
    const double w = (200.0 / 100.0) / (400.0 / 100.0);
    const auto at = [&](double low, double high, double own) {
        return static_cast<float>((high - low) * w + low + own * 1.0f - 12.0);
    };
    EXPECT_EQ(levels(0), (Levels{at(-10, -20, -10), at(-20, -30, -20), at(-30, -40, -30)}));
    EXPECT_EQ(levels(1), (Levels{-40, -50, -60})); // above the envelope's range
}

TEST_F(SourceFilter, PowerZeroDiscardsThePointsOwnDecibels) {
    LpcFrame a = frame_of({{0, 2}, {-10, 100}, {-10, 400}});
    LpcFrame b = frame_of({{2, 2}, {-10, 100}, {-10, 400}});
    filter(a, b, 1, 0);
    EXPECT_EQ(levels(0), (Levels{-22, -22, -22}));
}

TEST_F(SourceFilter, EveryFittingSegmentActsInDecibels) {
    LpcFrame a = frame_of({{0, 3}, {-10, 100}, {-10, 200}, {-10, 300}});
    LpcFrame b = frame_of({{2, 3}, {-10, 100}, {-10, 200}, {-10, 300}});
    filter(a, b, 1, 1);
    EXPECT_EQ(levels(0), (Levels{-10 - 44, -20 - 44, -30 - 44})); // 200 Hz ends one, begins one
}

TEST_F(SourceFilter, LinearLevelsByTheLaw) {
    LpcFrame a = frame_of({{0, 2}, {0.5, 100}, {0.25, 400}});
    LpcFrame b = frame_of({{2, 2}, {0.75, 120}, {0.125, 440}});
    for (int32_t j = 0; j < 3; ++j) {
        parray[0][j].amp = 0.5f;
    }
    EXPECT_EQ(filter(a, b, 0, 1), applied);
    Levels expected;
    for (const double u : {0.0, 0.5, 1.0}) {
        const double lo = 100 + 20 * u;
        const double hi = 400 + 40 * u;
        const double w = (200 / lo) / (hi / lo);
        const double e0 = 0.5 * (0.75 / 0.5 * u + 1);
        const double e1 = (0.125 / 0.25 * u + 1) * 0.125 / e0;
        const float own = powf(static_cast<float>(0.5f * 0.25), 1.0f);
        expected.push_back(static_cast<float>((w * e1 + 1) * own * e0));
    }
    EXPECT_EQ(levels(0), expected);
}

TEST_F(SourceFilter, PowerZeroDiscardsThePointsOwnLinearLevel) {
    LpcFrame a = frame_of({{0, 2}, {0.5, 100}, {0.5, 400}});
    LpcFrame b = frame_of({{2, 2}, {0.0, 100}, {0.0, 400}});
    filter(a, b, 0, 0);
    EXPECT_EQ(levels(0), (Levels{0.5, 0.5, 0.5}));
}

TEST_F(SourceFilter, OnlyTheFirstFittingSegmentActsOnLinearLevels) {
    LpcFrame a = frame_of({{0, 3}, {0.5, 100}, {0.5, 200}, {8.0, 300}});
    LpcFrame b = frame_of({{2, 3}, {0, 100}, {0, 200}, {0, 300}});
    filter(a, b, 0, 0);
    EXPECT_EQ(levels(0), (Levels{0.5, 0.5, 0.5}));
}

TEST_F(SourceFilter, SilentElementsDivideNothing) {
    LpcFrame a = frame_of({{0, 2}, {0, 100}, {0, 400}});
    LpcFrame b = frame_of({{2, 2}, {0.5, 100}, {0.5, 400}});
    filter(a, b, 0, 1);
    EXPECT_EQ(levels(0), (Levels{-0.0f, -0.0f, -0.0f}));
}

TEST_F(SourceFilter, ASegmentFromZeroHertzHasNoShare) {
    // Both quotients of its share are infinite.
    LpcFrame a = frame_of({{0, 3}, {-10, 0}, {-20, 400}, {-30, 800}});
    LpcFrame b = frame_of({{2, 3}, {-10, 0}, {-20, 400}, {-30, 800}});
    filter(a, b, 1, 0);
    for (const float level : levels(0)) {
        EXPECT_TRUE(std::isnan(level));
    }
    EXPECT_EQ(levels(1), (Levels{-39.5, -39.5, -39.5})); // three quarters of the way
}

TEST_F(SourceFilter, PointsOutsideTheSpanStay) {
    LpcFrame a = frame_of({{0.25, 2}, {-10, 100}, {-10, 400}});
    LpcFrame b = frame_of({{0.75, 2}, {-10, 100}, {-10, 400}});
    filter(a, b, 1, 0, 2.0f); // 0.5 to 1.5 s
    EXPECT_EQ(levels(0), (Levels{-10, -22, -30}));
}

TEST_F(SourceFilter, TheEndsOfTheSpanBelongToIt) {
    LpcFrame a = frame_of({{1, 2}, {-10, 100}, {-10, 400}});
    LpcFrame b = frame_of({{2, 2}, {-10, 100}, {-10, 400}});
    filter(a, b, 1, 0);
    EXPECT_EQ(levels(0), (Levels{-10, -22, -22}));
}

TEST_F(SourceFilter, APartialOutsideTheSpanStays) {
    LpcFrame a = frame_of({{3, 2}, {-10, 100}, {-10, 400}});
    LpcFrame b = frame_of({{4, 2}, {-10, 100}, {-10, 400}});
    filter(a, b, 1, 0);
    EXPECT_EQ(levels(0), (Levels{-10, -20, -30}));
}

TEST_F(SourceFilter, ThePartialsSummaryDecidesWhetherItOverlaps) {
    peval[0].start = 5.0f;
    LpcFrame a = frame_of({{0, 2}, {-10, 100}, {-10, 400}});
    LpcFrame b = frame_of({{2, 2}, {-10, 100}, {-10, 400}});
    filter(a, b, 1, 0);
    EXPECT_EQ(levels(0), (Levels{-10, -20, -30}));
}

TEST_F(SourceFilter, FramesOfOnePointShapeNothing) {
    LpcFrame a = frame_of({{0, 1}, {-10, 100}});
    LpcFrame b = frame_of({{2, 1}, {-10, 400}});
    EXPECT_EQ(filter(a, b, 1, 0), applied);
    EXPECT_EQ(lpoints, 1);
    EXPECT_EQ(levels(0), (Levels{-10, -20, -30}));
}

TEST_F(SourceFilter, FramesAtOneTimeShapeNothing) {
    LpcFrame a = frame_of({{1, 2}, {-10, 100}, {-10, 400}});
    EXPECT_EQ(filter(a, a, 1, 0), applied);
    EXPECT_EQ(levels(0), (Levels{-10, -20, -30}));
}

TEST_F(SourceFilter, MissingFramesAreReported) {
    LpcFrame a = frame_of({{0, 2}, {-10, 100}, {-10, 400}});
    EXPECT_EQ(filter(nullptr, a, 1, 0), std::string("NULL pointer 0\n") + applied);
    EXPECT_EQ(filter(a, nullptr, 1, 0), std::string("NULL pointer 1\n") + applied);
    EXPECT_EQ(filter(nullptr, nullptr, 1, 0),
              std::string("NULL pointer 0\nNULL pointer 1\n") + applied);
    EXPECT_EQ(levels(0), (Levels{-10, -20, -30}));
}

TEST_F(SourceFilter, ACountAboveTheFramesReadsNothingBehindThem) {
    LpcFrame a = frame_of({{0, 1e300}, {-10, 100}, {-10, 400}});
    LpcFrame b = frame_of({{2, 2}, {-10, 100}, {-10, 400}});
    filter(a, b, 1, 0);
    EXPECT_EQ(lpoints, 2);
    EXPECT_EQ(levels(0), (Levels{-22, -22, -22}));
}

TEST_F(SourceFilter, ACountThatIsNoNumberIsNone) {
    LpcFrame a = frame_of({{0, std::numeric_limits<double>::quiet_NaN()}, {-10, 100}, {-10, 400}});
    filter(a, a, 1, 0);
    EXPECT_EQ(lpoints, 0);
    *a[0] = {0, -3};
    filter(a, a, 1, 0);
    EXPECT_EQ(lpoints, 0);
}

TEST_F(SourceFilter, FramesOfDifferentSizesShareTheSmaller) {
    LpcFrame a = frame_of({{0, 3}, {-10, 100}, {-10, 300}, {-10, 900}});
    LpcFrame b = frame_of({{2, 2}, {-10, 100}, {-10, 300}});
    filter(a, b, 1, 0);
    EXPECT_EQ(levels(0), (Levels{-22, -22, -22}));
    EXPECT_EQ(levels(1), (Levels{-40, -50, -60}));
}

} // namespace
