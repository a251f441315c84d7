// The small numeric functions with their oddities, against published values and formulas of
// their own.

#include "toolbox/auxilliary3d.h"

#include "store/settings.h"
#include "tests/support/console.h"

#include <climits>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double infinity = std::numeric_limits<double>::infinity();

// round_off

TEST(RoundOff, GoesByTheFirstDecimal) {
    EXPECT_EQ(round_off(2.5), 3);
    EXPECT_EQ(round_off(2.4), 2);
    EXPECT_EQ(round_off(2.4999), 2);
    EXPECT_EQ(round_off(2.0), 2);
    EXPECT_EQ(round_off(2.05), 2);
    EXPECT_EQ(round_off(2.96), 3);
    EXPECT_EQ(round_off(0.0), 0);
    EXPECT_EQ(round_off(0.5), 1);
    EXPECT_EQ(round_off(0.49), 0);
    EXPECT_EQ(round_off(31999.5), 32000);
}

TEST(RoundOff, ANegativeNumberGoesDown) {
    EXPECT_EQ(round_off(-2.5), -3);
    EXPECT_EQ(round_off(-2.1), -3);
    EXPECT_EQ(round_off(-2.9), -3);
    EXPECT_EQ(round_off(-2.0), -2);
    EXPECT_EQ(round_off(-0.001), -1);
}

TEST(RoundOff, HoldsToTheRangeOfItsType) {
    EXPECT_EQ(round_off(32767.4), 32767);
    EXPECT_EQ(round_off(32767.5), 32767);
    EXPECT_EQ(round_off(32768.0), 32767);
    EXPECT_EQ(round_off(-32768.0), -32768);
    EXPECT_EQ(round_off(-32768.1), -32768);
    EXPECT_EQ(round_off(1e300), 32767);
    EXPECT_EQ(round_off(-1e300), -32768);
    EXPECT_EQ(round_off(infinity), 32767);
    EXPECT_EQ(round_off(-infinity), -32768);
    EXPECT_EQ(round_off(std::nan("")), 0);
}

// Windows

TEST(Windows, Hamming) {
    EXPECT_DOUBLE_EQ(hamming(0, 63), 1.0);
    EXPECT_NEAR(hamming(32, 63), 0.08, 1e-15);
    EXPECT_NEAR(hamming(16, 63), 0.54, 1e-15);
    EXPECT_NEAR(hamming(1, 3), 0.54, 1e-15);
    for (int i = -40; i <= 40; ++i) {
        EXPECT_NEAR(hamming(i, 40), 0.54 + 0.46 * std::cos(2.0 * pi * i / 41.0), 1e-14) << i;
        EXPECT_DOUBLE_EQ(hamming(i, 40), hamming(-i, 40)) << i;
    }
}

TEST(Windows, Kaiser) {
    const int n = 65;
    for (double beta : {0.5, 2.0, 6.0, 8.6}) {
        for (int i = -32; i <= 32; ++i) {
            const double place = 2.0 * i / (n - 1);
            const double edge = beta * std::sqrt(1.0 - place * place);
            const double expected = std::cyl_bessel_i(0.0, edge) / std::cyl_bessel_i(0.0, beta);
            EXPECT_NEAR(kaiser(i, n, static_cast<float>(beta)), expected, 1e-6) << beta << " " << i;
        }
    }
}

TEST(Windows, KaiserIsOneInTheMiddleAndLeastAtTheEdges) {
    EXPECT_EQ(kaiser(0, 65, 5.0f), 1.0f);
    EXPECT_NEAR(kaiser(32, 65, 5.0f), 1.0 / 27.2398718236, 1e-7);
    EXPECT_EQ(kaiser(-32, 65, 5.0f), kaiser(32, 65, 5.0f));
    EXPECT_EQ(kaiser(7, 65, 0.0f), 1.0f);
}

TEST(Windows, KaiserHasNoValueBeyondItsEdges) {
    EXPECT_TRUE(std::isnan(kaiser(33, 65, 5.0f)));
    EXPECT_TRUE(std::isnan(kaiser(0, 1, 5.0f)));
    EXPECT_TRUE(std::isnan(kaiser(INT_MAX, 2, 5.0f)));
}

// Bessel functions

TEST(Bessel, ModifiedOfOrderZeroAsPublished) {
    EXPECT_EQ(bessel_0(0.0f), 1.0f);
    EXPECT_FLOAT_EQ(bessel_0(1.0f), 1.2660658f);
    EXPECT_FLOAT_EQ(bessel_0(2.0f), 2.2795853f);
    EXPECT_FLOAT_EQ(bessel_0(5.0f), 27.239872f);
    EXPECT_FLOAT_EQ(bessel_0(10.0f), 2815.7166f);
    EXPECT_EQ(bessel_0(-3.0f), bessel_0(3.0f));
}

TEST(Bessel, ModifiedOfOrderZeroAgainstItsIntegral) {
    for (float x = 0.0f; x <= 12.0f; x += 0.37f) {
        const int steps = 200; // of the trapezium rule, exact to double for a periodic function
        double sum = 0.0;
        for (int i = 0; i < steps; ++i) {
            sum += std::exp(x * std::cos(2.0 * pi * i / steps));
        }
        EXPECT_NEAR(bessel_0(x) / (sum / steps), 1.0, 2e-7) << x;
    }
}

TEST(Bessel, ModifiedOfOrderZeroEndsAfterTwentyFiveTerms) {
    long double sum = 1.0L;
    long double root = 1.0L;
    for (int k = 1; k <= 25; ++k) {
        root = root * 50.0L / k;
        sum += root * root;
    }
    EXPECT_FLOAT_EQ(bessel_0(100.0f), static_cast<float>(sum));
    EXPECT_LT(sum, 1e36L) << "far below the true 1.07e42";
    EXPECT_EQ(bessel_0(HUGE_VALF), HUGE_VALF);
    EXPECT_TRUE(std::isnan(bessel_0(std::nanf(""))));
}

TEST(Bessel, FirstKindOfOrderZeroAsPublished) {
    EXPECT_NEAR(bessj0(0.0), 1.0, 1e-8);
    EXPECT_NEAR(bessj0(1.0), 0.7651976866, 1e-8);
    EXPECT_NEAR(bessj0(2.0), 0.2238907791, 1e-8);
    EXPECT_NEAR(bessj0(5.0), -0.1775967713, 1e-8);
    EXPECT_NEAR(bessj0(10.0), -0.2459357645, 1e-8);
    EXPECT_NEAR(bessj0(50.0), 0.0558123277, 1e-8);
    EXPECT_NEAR(bessj0(2.404825557695773), 0.0, 1e-8) << "its first zero";
}

TEST(Bessel, FirstKindOfOrderZeroOnBothSidesOfEight) {
    const double published = 0.1716508071; // at 8
    const double below = std::nextafter(8.0, 0.0);
    EXPECT_NEAR(bessj0(below), published, 1e-8);
    EXPECT_NEAR(bessj0(8.0), published, 1e-8);
    EXPECT_NEAR(bessj0(-8.0), published, 1e-8);
    EXPECT_NE(bessj0(below), bessj0(8.0)) << "two approximations meet here";
}

TEST(Bessel, FirstKindOfOrderZeroIsEven) {
    for (double x = 0.0; x < 60.0; x += 0.173) {
        EXPECT_NEAR(bessj0(x), std::cyl_bessel_j(0.0, x), 5e-8) << x;
        EXPECT_EQ(bessj0(-x), bessj0(x)) << x;
    }
}

/// The two approximations of Numerical Recipes in powers, lowest first.
double near_zero(double x) {
    const double above[] = {57568490574.0, -13362590354.0, 651619640.7,
                            -11214424.18,  77392.33017,    -184.9052456};
    const double below[] = {57568490411.0, 1029532985.0, 9494680.718,
                            59272.64853,   267.8532712,  1.0};
    double p = 0.0;
    double q = 0.0;
    for (int k = 5; k >= 0; --k) {
        p += above[k] * std::pow(x, 2 * k);
        q += below[k] * std::pow(x, 2 * k);
    }
    return p / q;
}

double far_out(double x) {
    const double cosine[] = {1.0, -0.1098628627e-2, 0.2734510407e-4, -0.2073370639e-5,
                             0.2093887211e-6};
    const double sine[] = {-0.1562499995e-1, 0.1430488765e-3, -0.6911147651e-5, 0.7621095161e-6,
                           -0.934935152e-7};
    double p = 0.0;
    double q = 0.0;
    for (int k = 4; k >= 0; --k) {
        p += cosine[k] * std::pow(8.0 / x, 2 * k);
        q += sine[k] * std::pow(8.0 / x, 2 * k + 1);
    }
    const double angle = x - 0.785398164;
    return std::sqrt(0.636619772 / x) * (std::cos(angle) * p - std::sin(angle) * q);
}

TEST(Bessel, FirstKindOfOrderZeroByItsCoefficients) {
    for (double x = 0.0; x < 8.0; x += 0.31) {
        EXPECT_NEAR(bessj0(x), near_zero(x), 1e-13) << x;
    }
    for (double x = 8.0; x < 40.0; x += 0.73) {
        EXPECT_NEAR(bessj0(x), far_out(x), 1e-14) << x;
    }
}

TEST(Bessel, FirstKindSaysSoUnderTheDebugSwitch) {
    reset_settings();
    double quiet = 0.0;
    double loud = 0.0;
    EXPECT_EQ(printed([&] { quiet = bessj0(3.0); }), "");
    dbp = 1;
    EXPECT_EQ(printed([&] { loud = bessj0(3.0); }), "New Bessel function evaluation\n");
    reset_settings();
    EXPECT_EQ(quiet, loud);
}

// Whole numbers

TEST(WholeNumbers, OneCountsAsEvenAndZeroDoesNot) {
    EXPECT_EQ(is_it_even(0), 0);
    EXPECT_EQ(is_it_even(1), 1);
    EXPECT_EQ(is_it_even(2), 1);
    EXPECT_EQ(is_it_even(3), 0);
    EXPECT_EQ(is_it_even(-1), 0);
    EXPECT_EQ(is_it_even(-2), 1);
    EXPECT_EQ(is_it_even(INT_MAX), 0);
    EXPECT_EQ(is_it_even(INT_MIN), 1);
}

TEST(WholeNumbers, Odd) {
    EXPECT_EQ(is_it_odd(0), 0);
    EXPECT_EQ(is_it_odd(1), 1);
    EXPECT_EQ(is_it_odd(2), 0);
    EXPECT_EQ(is_it_odd(-3), 1);
    EXPECT_EQ(is_it_odd(INT_MAX), 1);
    EXPECT_EQ(is_it_odd(INT_MIN), 0);
}

TEST(WholeNumbers, FourCountsAsPrime) {
    EXPECT_EQ(is_it_prime(4), 1);
    EXPECT_EQ(is_it_prime(9), 0);
}

TEST(WholeNumbers, PrimesAgainstEveryDivisorFromThree) {
    for (int n = -3; n <= 3000; ++n) {
        int expected = n >= 1 ? 1 : 0;
        for (int divisor = 3; divisor <= n - 1; ++divisor) {
            if (n % divisor == 0) {
                expected = 0;
            }
        }
        EXPECT_EQ(is_it_prime(n), expected) << n;
    }
}

TEST(WholeNumbers, TheLargestPrimesComeAtOnce) {
    const std::clock_t start = std::clock(); // processor time, which other work does not lengthen
    EXPECT_EQ(is_it_prime(2147483647), 1);
    EXPECT_EQ(is_it_prime(2147483646), 0);
    EXPECT_EQ(is_it_prime(2147483629), 1);
    EXPECT_EQ(is_it_prime(2147117569), 0) << "46337 squared";
    EXPECT_EQ(is_it_prime(INT_MIN), 0);
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 2);
}

TEST(WholeNumbers, TheTableOfPrimesThatAreNotAllPrimes) {
    const std::vector<int> table = {1,  3,  5,  7,  11,  13,  17,  19,  23,  29,  31,
                                    37, 41, 43, 47, 49,  53,  59,  61,  67,  71,  73,
                                    79, 83, 89, 97, 101, 103, 107, 109, 113, 127, 131};
    ASSERT_EQ(table.size(), 33u);
    for (size_t k = 0; k < table.size(); ++k) {
        EXPECT_EQ(prime(static_cast<int>(k)), table[k]) << k;
    }
    EXPECT_EQ(prime(15), 49);
}

TEST(WholeNumbers, OutsideTheTableOfPrimesIsZero) {
    EXPECT_EQ(prime(33), 0);
    EXPECT_EQ(prime(-1), 0);
    EXPECT_EQ(prime(INT_MAX), 0);
    EXPECT_EQ(prime(INT_MIN), 0);
}

// The rest

TEST(Numbers, GaussIsABellOfTheGivenWidth) {
    EXPECT_EQ(gauss(0.0f, 8.0f), 1.0f);
    EXPECT_NEAR(gauss(1.0f, 8.0f), std::exp(1.0 / (64.0 * -0.0313)), 1e-6);
    EXPECT_NEAR(gauss(1.0f, 8.0f), 0.6070153, 1e-6);
    for (float x = -3.9f; x < 4.0f; x += 0.31f) {
        EXPECT_NEAR(gauss(x, 8.0f), std::exp(x * x / (64.0 * -0.0313)), 1e-6) << x;
        EXPECT_EQ(gauss(x, 8.0f), gauss(-x, 8.0f)) << x;
    }
}

TEST(Numbers, GaussEndsAtHalfItsWidth) {
    EXPECT_NEAR(gauss(-4.0f, 8.0f), std::exp(0.25 / -0.0313), 1e-8);
    EXPECT_GT(gauss(-4.0f, 8.0f), 0.0f);
    EXPECT_EQ(gauss(4.0f, 8.0f), 0.0f);
    EXPECT_EQ(gauss(-4.1f, 8.0f), 0.0f);
    EXPECT_EQ(gauss(0.0f, 0.0f), 0.0f);
    EXPECT_EQ(gauss(std::nanf(""), 8.0f), 0.0f);
}

TEST(Numbers, RandomNumbersFollowTheGenerator) {
    std::srand(4711);
    std::vector<int> raw;
    for (int i = 0; i < 100; ++i) {
        raw.push_back(std::rand());
    }
    std::srand(4711);
    for (int number : raw) {
        const float value = randf();
        EXPECT_EQ(value, static_cast<float>(number * 4.656613e-10));
        EXPECT_TRUE(value >= 0.0f && value <= 1.0f);
    }
}

TEST(Numbers, InsideACircle) {
    EXPECT_EQ(inside_circle(1.0f, 1.0f, 1.0f, 1.0f, 0.0f), 1);
    EXPECT_EQ(inside_circle(4.0f, 5.0f, 1.0f, 1.0f, 5.0f), 1) << "on its edge";
    EXPECT_EQ(inside_circle(4.0f, 5.001f, 1.0f, 1.0f, 5.0f), 0);
    EXPECT_EQ(inside_circle(-2.0f, -3.0f, 1.0f, 1.0f, -5.0f), 1) << "the radius is squared";
    EXPECT_EQ(inside_circle(std::nanf(""), 0.0f, 0.0f, 0.0f, 1.0f), 0);
}

TEST(Numbers, LinearInterpolation) {
    EXPECT_EQ(linear_interpolation(1.0f, 3.0f, 1.0f, 30.0f, 10.0f), 10.0f);
    EXPECT_EQ(linear_interpolation(3.0f, 3.0f, 1.0f, 30.0f, 10.0f), 30.0f);
    EXPECT_EQ(linear_interpolation(2.0f, 3.0f, 1.0f, 30.0f, 10.0f), 20.0f);
    EXPECT_EQ(linear_interpolation(5.0f, 3.0f, 1.0f, 30.0f, 10.0f), 50.0f);
    EXPECT_EQ(linear_interpolation(0.0f, 3.0f, 1.0f, 30.0f, 10.0f), 0.0f);
    EXPECT_FALSE(std::isfinite(linear_interpolation(2.0f, 1.0f, 1.0f, 30.0f, 10.0f)));
}

// Waiting input

/// Puts a pipe in the place of standard input.
class Kbhit : public testing::Test {
  protected:
    void SetUp() override {
        kept = dup(STDIN_FILENO);
        ASSERT_EQ(pipe(ends), 0);
        ASSERT_EQ(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
    }
    void TearDown() override {
        close(ends[0]);
        close_writer();
        if (kept >= 0) {
            dup2(kept, STDIN_FILENO);
            close(kept);
        }
    }
    void close_writer() {
        if (ends[1] >= 0) {
            close(std::exchange(ends[1], -1));
        }
    }
    int kept = -1;
    int ends[2] = {-1, -1};
};

TEST_F(Kbhit, NothingWaits) {
    EXPECT_EQ(kbhit(), 0);
}

TEST_F(Kbhit, AByteWaitsUntilItIsRead) {
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    EXPECT_EQ(kbhit(), 1);
    EXPECT_EQ(kbhit(), 1);
    char byte = 0;
    ASSERT_EQ(read(STDIN_FILENO, &byte, 1), 1);
    EXPECT_EQ(byte, 'x');
    EXPECT_EQ(kbhit(), 0);
}

TEST_F(Kbhit, TheEndOfInputCounts) {
    close_writer();
    EXPECT_EQ(kbhit(), 1);
}

TEST_F(Kbhit, WithoutStandardInputNothingWaits) {
    close(STDIN_FILENO);
    EXPECT_EQ(kbhit(), 0);
}

} // namespace
