// A partial seen at the times of another one, and the thinning of the store.

#include "store/slots.h"
#include "tests/support/child.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "toolbox/auxilliary3d.h"

#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace {

class Sampling : public StoreTest {
  protected:
    /// Partial 0 holds one point, at time t; partial 1 is the one that is sampled.
    void at(float t) {
        fill_store({{{t, 50.0f, -1.0f}},
                    {{1.0f, 100.0f, -20.0f},
                     {2.0f, 200.0f, -40.0f},
                     {3.0f, 400.0f, -60.0f},
                     {4.0f, 1000.0f, -150.0f}}});
    }
    float freq() {
        return linear_interpol(parray, npoints, 0, 0, 1);
    }
    float level() {
        return linear_interpol_a(parray, npoints, 0, 0, 1);
    }
    float amplitude() {
        return linear_interpol_al(parray, npoints, 0, 0, 1);
    }
};

TEST_F(Sampling, BetweenTwoPointsItInterpolates) {
    at(1.25f);
    EXPECT_FLOAT_EQ(freq(), 125.0f);
    EXPECT_FLOAT_EQ(level(), -25.0f);
    EXPECT_FLOAT_EQ(amplitude(), 0.1f + 0.25f * (0.01f - 0.1f));
    at(2.5f);
    EXPECT_FLOAT_EQ(freq(), 300.0f);
    EXPECT_FLOAT_EQ(level(), -50.0f);
    EXPECT_FLOAT_EQ(amplitude(), 0.0055f);
}

TEST_F(Sampling, OnAPointItIsThatPoint) {
    at(1.0f);
    EXPECT_EQ(freq(), 100.0f);
    EXPECT_EQ(level(), -20.0f);
    EXPECT_EQ(amplitude(), powf(10.0f, -20.0f / 20.0f));
    at(3.0f);
    EXPECT_EQ(freq(), 400.0f);
    EXPECT_EQ(level(), -60.0f);
    EXPECT_EQ(amplitude(), powf(10.0f, -60.0f / 20.0f));
    at(4.0f);
    EXPECT_EQ(freq(), 1000.0f);
    EXPECT_EQ(level(), -150.0f);
}

TEST_F(Sampling, BeforeTheFirstPointItIsTheFirst) {
    at(0.5f);
    EXPECT_EQ(freq(), 100.0f);
    EXPECT_EQ(level(), -20.0f);
    EXPECT_EQ(amplitude(), powf(10.0f, -20.0f / 20.0f));
}

TEST_F(Sampling, TheLastSegmentIsNotInterpolated) {
    at(3.25f);
    EXPECT_EQ(freq(), 1000.0f);
    EXPECT_EQ(level(), -150.0f);
    EXPECT_EQ(amplitude(), powf(10.0f, -140.0f / 20.0f)) << "silence is the floor";
}

TEST_F(Sampling, BehindTheLastPointItIsTheLast) {
    at(9.0f);
    EXPECT_EQ(freq(), 1000.0f);
    EXPECT_EQ(level(), -150.0f);
    EXPECT_EQ(amplitude(), powf(10.0f, -140.0f / 20.0f));
}

TEST_F(Sampling, ATimeThatComesTwiceIsTheFirstOfThem) {
    fill_store({{{2.0f, 50.0f, -1.0f}},
                {{1.0f, 100.0f, -20.0f},
                 {2.0f, 200.0f, -30.0f},
                 {2.0f, 300.0f, -40.0f},
                 {3.0f, 400.0f, -50.0f}}});
    EXPECT_EQ(freq(), 200.0f);
    EXPECT_EQ(level(), -30.0f);
}

TEST_F(Sampling, ShortPartialsHaveNoSegmentToInterpolate) {
    for (float t : {0.5f, 1.0f, 1.5f, 2.0f, 2.5f}) {
        fill_store({{{t, 50.0f, -1.0f}}, {{1.0f, 100.0f, -20.0f}, {2.0f, 200.0f, -40.0f}}});
        EXPECT_EQ(freq(), t <= 1.0f ? 100.0f : 200.0f) << t;
        fill_store({{{t, 50.0f, -1.0f}}, {{1.0f, 100.0f, -20.0f}}});
        EXPECT_EQ(freq(), 100.0f) << t;
        EXPECT_EQ(level(), -20.0f) << t;
    }
}

TEST_F(Sampling, TheReferenceMayBeAnyPointOfAnyPartial) {
    fill_store(small_content());
    EXPECT_EQ(linear_interpol(parray, npoints, 1, 0, 0), 110.0f) << "a partial at its own time";
    EXPECT_EQ(linear_interpol(parray, npoints, 2, 0, 1), 420.0f);
    EXPECT_EQ(linear_interpol(parray, npoints, 2, 1, 0), 110.0f) << "behind the end";
    EXPECT_EQ(linear_interpol_a(parray, npoints, 0, 3, 2), -50.0f);
}

// Thinning

class Thinning : public StoreTest {
  protected:
    /// `count` partials; partial i starts at i / 4 s, has i + 1 points and a mark on its summary.
    void fill(int count) {
        std::vector<Partial> content;
        for (int i = 0; i < count; ++i) {
            Partial partial;
            for (int j = 0; j <= i; ++j) {
                const float start = 0.25f * static_cast<float>(i);
                partial.push_back({start + 0.1f * static_cast<float>(j),
                                   100.0f * static_cast<float>(i + 1) + static_cast<float>(j),
                                   -10.0f - static_cast<float>(j)});
            }
            content.push_back(partial);
        }
        fill_store(content);
        for (int i = 0; i < count; ++i) {
            peval[i].spare1 = static_cast<float>(i);
            peval[i].selected = 1;
            parray[i][0].selected = 1;
            parray[i][0].scratch = static_cast<float>(i);
        }
    }
    std::string thin() {
        return printed([] { EXPECT_EQ(func1(&parray, &npoints, &partials, &peval), 0); });
    }
    void expect_kept(int place, int before) {
        EXPECT_EQ(npoints[place], before + 1);
        EXPECT_EQ(peval[place].spare1, static_cast<float>(before));
        EXPECT_EQ(peval[place].start, 0.25f * static_cast<float>(before));
        EXPECT_EQ(peval[place].selected, 1);
        EXPECT_EQ(parray[place][0].selected, 1);
        EXPECT_EQ(parray[place][0].scratch, static_cast<float>(before));
        for (int j = 0; j <= before; ++j) {
            EXPECT_EQ(parray[place][j].freq,
                      100.0f * static_cast<float>(before + 1) + static_cast<float>(j));
            EXPECT_EQ(parray[place][j].amp, -10.0f - static_cast<float>(j));
        }
    }
    void expect_zero_summaries(int from, int to) {
        const PartialEval none = {};
        for (int i = from; i < to; ++i) {
            EXPECT_EQ(std::memcmp(&peval[i].start, &none.start, sizeof none.start), 0) << i;
            EXPECT_EQ(peval[i].dur, 0.0f) << i;
            EXPECT_EQ(peval[i].avgfreq, 0.0f) << i;
            EXPECT_EQ(peval[i].spare1, 0.0f) << i;
            EXPECT_EQ(peval[i].selected, 0) << i;
        }
    }
};

TEST_F(Thinning, OfFivePartialsThreeStay) {
    fill(5);
    thin();
    ASSERT_EQ(partials, 3);
    expect_kept(0, 0);
    expect_kept(1, 2);
    expect_kept(2, 4);
}

TEST_F(Thinning, OfFourPartialsTwoStay) {
    fill(4);
    thin();
    ASSERT_EQ(partials, 2);
    expect_kept(0, 0);
    expect_kept(1, 2);
}

TEST_F(Thinning, OnePartialStays) {
    fill(1);
    EXPECT_EQ(thin(), "[0]: 0.000000\n");
    ASSERT_EQ(partials, 1);
    expect_kept(0, 0);
}

TEST_F(Thinning, AnEmptyStoreStaysEmpty) {
    fill(0);
    EXPECT_EQ(thin(), "");
    EXPECT_EQ(partials, 0);
}

TEST_F(Thinning, TheStartsOfWhatStaysArePrinted) {
    fill(5);
    EXPECT_EQ(thin(), "[0]: 0.000000\n[2]: 0.500000\n[4]: 1.000000\n");
}

TEST_F(Thinning, AHundredSummariesAreSpare) {
    fill(5);
    thin();
    expect_zero_summaries(3, 3 + spare_partials);
}

TEST_F(Thinning, TheStoreGrowsFromThereAsBefore) {
    fill(5);
    thin();
    const int extra = 300;
    grow_slots(extra);
    for (int i = partials; i < partials + extra; ++i) {
        parray[i] = new_points(2);
        npoints[i] = 2;
    }
    partials += extra;
    regrow_peval();
    expect_kept(2, 4);
    expect_zero_summaries(3, partials + spare_partials);
    resize_partial(1, 9);
    EXPECT_EQ(parray[1][8].freq, 0.0f);
}

TEST_F(Thinning, ASmallStoreAfterALargeOneStartsFromZeroAgain) {
    fill(40);
    thin();
    thin();
    thin();
    ASSERT_EQ(partials, 5);
    expect_kept(4, 32);
    const int extra = 37; // within the room that the first store had
    grow_slots(extra);
    for (int i = partials; i < partials + extra; ++i) {
        parray[i] = new_points(1);
        npoints[i] = 1;
    }
    partials += extra;
    regrow_peval();
    expect_zero_summaries(5, partials + spare_partials);
}

// What func1 reports when memory runs short. The limit holds for a child process alone; an
// instrumented build brings an allocator of its own.
void leave_only(size_t room) {
    FILE *sizes = std::fopen("/proc/self/statm", "r");
    long pages = 0;
    if (sizes == nullptr || std::fscanf(sizes, "%ld", &pages) != 1) {
        std::_Exit(98);
    }
    std::fclose(sizes);
    const size_t used = static_cast<size_t>(pages) * static_cast<size_t>(sysconf(_SC_PAGESIZE));
    rlimit limit = {used + room, used + room};
    if (setrlimit(RLIMIT_AS, &limit) != 0) {
        std::_Exit(99);
    }
}

/// Exits with func1's result, or with 97 when it touched what it was given.
[[noreturn]] void thin_within(size_t room, int32_t count, int32_t first_count) {
    const size_t slots = static_cast<size_t>(count);
    auto *counts = static_cast<int32_t *>(std::calloc(slots, sizeof(int32_t)));
    auto *points = static_cast<Breakpoint **>(std::calloc(slots, sizeof(Breakpoint *)));
    auto *evals = static_cast<PartialEval *>(std::calloc(slots, sizeof(PartialEval)));
    counts[0] = first_count;
    int32_t number = count;
    int32_t *const counts_before = counts;
    Breakpoint **const points_before = points;
    PartialEval *const evals_before = evals;
    leave_only(room);
    const int32_t result = func1(&points, &counts, &number, &evals);
    const bool untouched = number == count && counts == counts_before && points == points_before &&
                           evals == evals_before;
    std::_Exit(result != 0 && !untouched ? 97 : result);
}

constexpr size_t megabyte = 1 << 20;

class ThinningWithoutMemory : public StoreTest {
  protected:
    void SetUp() override {
        if (sanitized()) {
            GTEST_SKIP() << "the allocator does not keep to the process's limit";
        }
        // A process begun anew holds no memory that earlier tests have freed.
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        StoreTest::SetUp();
    }
};

// Half a hundred million counts take 200 MB, as many slots 400 MB.
TEST_F(ThinningWithoutMemory, ForTheCounts) {
    EXPECT_EXIT(thin_within(100 * megabyte, 100000000, 0), testing::ExitedWithCode(1), "");
}

TEST_F(ThinningWithoutMemory, ForTheSlots) {
    EXPECT_EXIT(thin_within(300 * megabyte, 100000000, 0), testing::ExitedWithCode(2), "");
}

TEST_F(ThinningWithoutMemory, ForAPointArray) {
    EXPECT_EXIT(thin_within(100 * megabyte, 9, INT_MAX), testing::ExitedWithCode(3), "");
}

// Two hundred thousand partials: 0.8 MB, 1.6 MB, 9.6 MB of points, and 10 MB of summaries.
TEST_F(ThinningWithoutMemory, ForTheSummaries) {
    EXPECT_EXIT(thin_within(16 * megabyte, 400000, 0), testing::ExitedWithCode(4), "");
}

} // namespace
