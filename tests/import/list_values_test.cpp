// Values of a Lisp partials list as they reach the store.
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "tests/support/list_reading.h"
#include "tests/support/plain_list.h"

#include <cmath>
#include <cstring>

namespace {

class ListValues : public StoreTest {
  protected:
    /// Reads a list of one partial of these points.
    static void read_partial(const std::vector<Point> &points) {
        std::string text = "( PARTIALS 1 ( POINTS " + std::to_string(points.size());
        for (const Point &p : points) {
            char line[128];
            std::snprintf(line, sizeof line, "\n%.9g %.9g %.9g", p.time, p.freq, p.amp);
            text += line;
        }
        printed([&] { ASSERT_EQ(read_list(text + " ) )"), 0); });
    }
    /// The level stored for the point at `place` of a partial of n, read as `amp`.
    static float stored_amp(int place, int n, float amp) {
        std::vector<Point> points;
        for (int j = 0; j < n; ++j) {
            points.push_back({static_cast<float>(j), 440.0f, j == place ? amp : -50.0f});
        }
        read_partial(points);
        return parray[0][place].amp;
    }
    static float stored_freq(float freq) {
        read_partial({{0, freq, -30}, {1, 440, -30}});
        return parray[0][0].freq;
    }
};

TEST_F(ListValues, OnePartialOfThreePoints) {
    printed([] {
        ASSERT_EQ(read_list("( PARTIALS 1\n( POINTS 3\n0.000 440.0 -30.0\n0.010 441.0 -28.0\n"
                            "0.020 442.0 -60.0\n)\n)\n"),
                  0);
    });
    ASSERT_EQ(partials, 1);
    ASSERT_EQ(npoints[0], 3);
    const float times[] = {0.0f, 0.01f, 0.02f};
    const float freqs[] = {440.0f, 441.0f, 442.0f};
    const float amps[] = {-36.0f, -46.0f, -90.0f};
    for (int j = 0; j < 3; ++j) {
        EXPECT_EQ(parray[0][j].time, times[j]);
        EXPECT_EQ(parray[0][j].freq, freqs[j]);
        EXPECT_EQ(parray[0][j].amp, amps[j]);
        EXPECT_EQ(parray[0][j].ampunits, 1);
        EXPECT_EQ(parray[0][j].selected, 0);
        EXPECT_EQ(parray[0][j].scratch, 0.0f);
    }
    EXPECT_EQ(maxamp, -36.0f);
    EXPECT_EQ(minfreq, 440.0f);
    EXPECT_EQ(maxfreq, 442.0f);
    EXPECT_EQ(parray[0][0].phase, 0.0f);
    EXPECT_NEAR(parray[0][1].phase, 0.4 * 6.283185307179586, 1e-4);
    EXPECT_NEAR(parray[0][2].phase, 0.81 * 6.283185307179586, 1e-4);
}

TEST_F(ListValues, TwoHertzReadAsFour) {
    EXPECT_EQ(stored_freq(2.0f), 4.0f);
    EXPECT_EQ(minfreq, 4.0f);
}

TEST_F(ListValues, ThirtyThousandHertzReadAsTheUpperLimit) {
    EXPECT_EQ(stored_freq(30000.0f), 22050.0f);
    EXPECT_EQ(maxfreq, 22050.0f);
}

TEST_F(ListValues, TheLimitsThemselvesStand) {
    EXPECT_EQ(stored_freq(4.0f), 4.0f);
    EXPECT_EQ(stored_freq(4.25f), 4.25f);
    EXPECT_EQ(stored_freq(22050.0f), 22050.0f);
    EXPECT_EQ(stored_freq(22049.5f), 22049.5f);
    EXPECT_EQ(stored_freq(22050.5f), 22050.0f);
    EXPECT_EQ(stored_freq(3.75f), 4.0f);
    EXPECT_EQ(stored_freq(-440.0f), 4.0f);
}

TEST_F(ListValues, LastPointAboveMinusNinetyBecomesMinusNinety) {
    EXPECT_EQ(stored_amp(3, 4, -20.0f), -90.0f);
}

TEST_F(ListValues, LastPointBelowMinusNinetyStays) {
    EXPECT_EQ(stored_amp(3, 4, -120.0f), -120.0f);
    EXPECT_EQ(stored_amp(3, 4, -90.0f), -90.0f);
}

TEST_F(ListValues, LastButOneAtMinusThirtyOneLosesEighteen) {
    EXPECT_EQ(stored_amp(2, 4, -31.0f), -49.0f);
}

TEST_F(ListValues, LastButOneAtMinusThirtyTwoExactlyStays) {
    EXPECT_EQ(stored_amp(2, 4, -32.0f), -32.0f);
}

TEST_F(ListValues, FirstPointLosesSix) {
    EXPECT_EQ(stored_amp(0, 4, -31.0f), -37.0f);
    EXPECT_EQ(stored_amp(0, 4, 0.0f), -6.0f);
}

TEST_F(ListValues, InnerPointsStand) {
    EXPECT_EQ(stored_amp(1, 4, -3.25f), -3.25f);
    EXPECT_EQ(stored_amp(2, 5, -3.25f), -3.25f);
}

TEST_F(ListValues, OfTwoPointsTheFirstIsLastButOne) {
    EXPECT_EQ(stored_amp(0, 2, -31.0f), -49.0f);
    EXPECT_EQ(stored_amp(0, 2, -32.0f), -32.0f);
    EXPECT_EQ(stored_amp(1, 2, -31.0f), -90.0f);
}

TEST_F(ListValues, OfThreePointsEachHasItsRule) {
    EXPECT_EQ(stored_amp(0, 3, -10.0f), -16.0f);
    EXPECT_EQ(stored_amp(1, 3, -10.0f), -28.0f);
    EXPECT_EQ(stored_amp(2, 3, -10.0f), -90.0f);
}

TEST_F(ListValues, TheLoudestIsOfTheAdjustedValues) {
    read_partial({{0, 440, -10}, {1, 440, -20}, {2, 440, -5}, {3, 440, -1}});
    EXPECT_EQ(maxamp, -16.0f);
}

TEST_F(ListValues, DifferenceAndProductOfThePhaseAreInDouble) {
    read_partial({{1.1f, 12345.679f, -10}, {7.3f, 440, -20}, {8, 440, -20}});
    const double wide =
        (static_cast<double>(7.3f) - static_cast<double>(1.1f)) * static_cast<double>(12345.679f);
    double whole;
    const float x = static_cast<float>(std::modf(wide, &whole));
    EXPECT_EQ(parray[0][1].phase, static_cast<float>(x * 6.283185307179586));
    const float narrow = (7.3f - 1.1f) * 12345.679f;
    const float y = static_cast<float>(std::modf(static_cast<double>(narrow), &whole));
    EXPECT_NE(parray[0][1].phase, static_cast<float>(y * 6.283185307179586));
}

TEST_F(ListValues, ThePhaseTakesTheClampedFrequency) {
    read_partial({{0, 1, -10}, {0.0625f, 440, -20}});
    EXPECT_EQ(parray[0][1].phase, static_cast<float>(0.25 * 6.283185307179586));
}

TEST_F(ListValues, PhasesComeBeforeTheTimeCheck) {
    read_partial({{0.5f, 101, -10}, {0.25f, 440, -20}});
    EXPECT_EQ(parray[0][0].time, 0.25f);
    EXPECT_EQ(parray[0][1].phase, static_cast<float>(-0.25f * 6.283185307179586));
}

TEST_F(ListValues, WordsThatAreNoNumbersReadAsZero) {
    printed([] {
        ASSERT_EQ(read_list("( PARTIALS 1 ( POINTS 3 x 440 y z 441 -1e1 2s 442 -60dB ) )"), 0);
    });
    EXPECT_EQ(parray[0][0].time, 0.0f);
    EXPECT_EQ(parray[0][0].amp, -6.0f);
    EXPECT_EQ(parray[0][1].amp, -28.0f);
    EXPECT_EQ(parray[0][2].time, 2.0f);
}

TEST_F(ListValues, ExponentsAndSignsAreNumbers) {
    printed(
        [] { ASSERT_EQ(read_list("( PARTIALS 1 ( POINTS 2 +1e-1 4.4e2 -6E1 2 .5e3 -95 ) )"), 0); });
    EXPECT_EQ(parray[0][0].time, 0.1f);
    EXPECT_EQ(parray[0][0].freq, 440.0f);
    EXPECT_EQ(parray[0][0].amp, -60.0f);
    EXPECT_EQ(parray[0][1].freq, 500.0f);
}

TEST_F(ListValues, ALargeListEqualsThePlainReading) {
    std::string text = "( PARTIALS 40\n";
    unsigned seed = 12345;
    const auto next = [&seed](double scale) {
        seed = seed * 1103515245u + 12345u;
        return scale * static_cast<double>(seed >> 8) / 16777216.0;
    };
    for (int i = 0; i < 40; ++i) {
        const int n = static_cast<int>(next(20.0));
        text += "( POINTS " + std::to_string(n) + "\n";
        double time = next(5.0);
        for (int j = 0; j < n; ++j) {
            char line[128];
            time += next(0.02);
            std::snprintf(line, sizeof line, "%.4f %.3f %.3f\n", time, next(24000.0), -next(130.0));
            text += line;
        }
        text += ")\n";
    }
    text += ")\n";
    const PlainList expected = plain_list(text);
    ASSERT_EQ(expected.result, 0);
    ASSERT_GT(expected.partials, 20);
    printed([&] { ASSERT_EQ(read_list(text), 0); });
    ASSERT_EQ(partials, expected.partials);
    EXPECT_EQ(maxamp, expected.maxamp);
    EXPECT_EQ(minfreq, expected.minfreq);
    EXPECT_EQ(maxfreq, expected.maxfreq);
    for (int i = 0; i < partials; ++i) {
        ASSERT_EQ(npoints[i], expected.counts[static_cast<size_t>(i)]);
        for (int j = 0; j < npoints[i]; ++j) {
            const PlainPoint &point =
                expected.points[static_cast<size_t>(i)][static_cast<size_t>(j)];
            EXPECT_EQ(parray[i][j].time, point.time);
            EXPECT_EQ(parray[i][j].freq, point.freq);
            EXPECT_EQ(parray[i][j].amp, point.amp);
            EXPECT_EQ(parray[i][j].phase, point.phase);
        }
    }
}

} // namespace
