// The closing recomputations in one sweep against the separate ones, and those against their
// steps written out.
#include "store/recompute.h"

#include "store/phase.h"
#include "tests/support/fixture.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

/// All that a recomputation can change.
struct Snapshot {
    std::vector<Breakpoint> points;
    std::vector<float> summaries;
    std::vector<float> ranges;
};

/// Bit for bit, but that one value that is no number is as good as another: which of two lasts in
/// a sum is the compiler's choice.
bool same_bits(const std::vector<float> &a, const std::vector<float> &b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](float one, float other) {
        return std::bit_cast<uint32_t>(one) == std::bit_cast<uint32_t>(other) ||
               (std::isnan(one) && std::isnan(other));
    });
}

Snapshot snapshot() {
    Snapshot now;
    for (int32_t i = 0; i < partials; ++i) {
        now.points.insert(now.points.end(), parray[i], parray[i] + npoints[i]);
        const PartialEval &eval = peval[i];
        now.summaries.insert(now.summaries.end(), {eval.start, eval.dur, eval.avgfreq, eval.avgamp,
                                                   eval.spare1, eval.spare2});
    }
    now.ranges = {sndstart, sndlen, meant, minfreq, maxfreq, fspan, logmaxfreq, minamp, maxamp};
    return now;
}

void expect_same(const Snapshot &a, const Snapshot &b) {
    ASSERT_EQ(a.points.size(), b.points.size());
    EXPECT_TRUE(a.points.empty() || std::memcmp(a.points.data(), b.points.data(),
                                                a.points.size() * sizeof(Breakpoint)) == 0);
    EXPECT_TRUE(same_bits(a.summaries, b.summaries));
    EXPECT_TRUE(same_bits(a.ranges, b.ranges));
}

/// What a store of a kind is like.
struct Kind {
    uint32_t partials, longest;
    float first_time;  // seconds, the earliest that a partial starts
    uint32_t wild;     // one number in so many is out of all proportion; 0 for none
    uint32_t unmarked; // one partial in so many has no selected point
};

const float oddities[] = {std::numeric_limits<float>::infinity(),
                          -std::numeric_limits<float>::infinity(),
                          std::numeric_limits<float>::quiet_NaN(),
                          0.0f,
                          -0.0f,
                          -0.75f,
                          -1.5f,
                          3e9f,
                          -3e9f,
                          1e-40f};

void put_oddities(std::mt19937 &random, uint32_t one_in, Breakpoint &point) {
    if (one_in > 0 && random() % one_in == 0) {
        point.freq = oddities[random() % std::size(oddities)];
    }
    if (one_in > 0 && random() % one_in == 0) {
        point.time = oddities[random() % std::size(oddities)];
    }
}

/// A random store with stale ranges; the same for the same seed.
void build(const Kind &kind, uint32_t seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    std::vector<Partial> content(kind.partials);
    for (Partial &partial : content) {
        partial.assign(random() % (kind.longest + 1), {0.0f, 100.0f, -20.0f});
    }
    fill_store(content);
    for (int32_t i = 0; i < partials; ++i) {
        const bool marked = random() % kind.unmarked != 0;
        float time = kind.first_time + unit(random);
        for (int32_t j = 0; j < npoints[i]; ++j) {
            Breakpoint &point = parray[i][j];
            point.time = time += 0.02f * unit(random);
            point.freq = 100.3f + 9000.0f * unit(random);
            point.phase = 6.28f * unit(random);
            point.selected = marked && random() % 3 == 0 ? 1 : 0;
            put_oddities(random, kind.wild, point);
        }
    }
    minfreq = 77.0f;
    maxfreq = 888.0f;
}

const Kind kinds[] = {{0, 1, 0.5f, 0, 2},    {1, 200, 0.5f, 0, 9},     {33, 3, 0.5f, 0, 4},
                      {70, 150, 0.5f, 0, 5}, {70, 150, -0.7f, 0, 5},   {40, 90, 0.5f, 50, 5},
                      {40, 90, -0.3f, 5, 5}, {3, 2000, -0.2f, 900, 3}, {64, 1, 0.5f, 3, 1000}};

void close_separately(bool pitch) {
    recompute_all_phase();
    recompute_times();
    if (pitch) {
        recompute_all_pitch();
    }
    averages(partials, npoints, parray, peval);
}

void close_in_one_sweep(bool pitch) {
    ClosingSweep sweep;
    for (int32_t i = 0; i < partials; ++i) {
        close_partial(sweep, i);
    }
    finish_closing(sweep, pitch);
}

void plain_phases() {
    for (int32_t i = 0; i < partials; ++i) {
        bool selected = false;
        for (int32_t j = 0; j < npoints[i]; ++j) {
            selected = selected || parray[i][j].selected == 1;
        }
        if (selected) {
            chain_phases(parray[i], npoints[i]);
        }
    }
}

void plain_times() {
    meant = 0.0f;
    sndstart = 100000.0f;
    sndlen = 0.0f;
    int64_t count = 0;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            if (j == 0 && parray[i][j].time < sndstart) {
                sndstart = parray[i][j].time;
            }
            if (j > 0 && j == npoints[i] - 1 && parray[i][j].time > sndlen) {
                sndlen = parray[i][j].time;
            }
            if (j > 0) {
                meant += parray[i][j].time - parray[i][j - 1].time;
                ++count;
            }
        }
    }
    meant /= static_cast<float>(count);
    if (sndstart < 0.0f) {
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                parray[i][j].time -= sndstart;
            }
        }
        sndlen -= sndstart;
        sndstart = 0.0f;
    }
}

int32_t whole(float freq) {
    return static_cast<int32_t>(
        std::fmax(-2147483648.0, std::fmin(2147483647.0, static_cast<double>(freq))));
}

void plain_whole_range() {
    int32_t low = 22050;
    int32_t high = 0;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const float freq = parray[i][j].freq;
            if (freq > static_cast<float>(high)) {
                high = whole(freq);
            }
            if (freq < static_cast<float>(low)) {
                low = whole(freq);
            }
        }
    }
    minfreq = static_cast<float>(low);
    maxfreq = static_cast<float>(high);
}

void plain_pitch() {
    if (partials < 1) {
        minfreq = 22050.0f;
        maxfreq = 0.0f;
        return;
    }
    plain_whole_range();
    for (int32_t i = 0; i < partials; ++i) {
        float sum = 0.0f;
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const float freq = parray[i][j].freq;
            sum += freq;
            if (freq < minfreq) {
                minfreq = freq;
            }
            if (freq > maxfreq) {
                maxfreq = freq;
            }
        }
        peval[i].avgfreq = sum / static_cast<float>(npoints[i]);
    }
    fspan = maxfreq / minfreq;
    logmaxfreq = static_cast<float>(logf(fspan) / 0.69314718055994530942);
}

void plain_averages() {
    for (int32_t i = 0; i < partials; ++i) {
        const int32_t n = npoints[i];
        float sum = 0.0f;
        for (int32_t j = 0; j < n; ++j) {
            sum += parray[i][j].freq;
        }
        peval[i].start = n > 0 ? parray[i][0].time : 0.0f;
        peval[i].dur = n > 0 ? parray[i][n - 1].time - parray[i][0].time : 0.0f;
        peval[i].avgfreq = sum / static_cast<float>(n);
    }
}

class Closing : public StoreTest {
  protected:
    /// Runs two ways of the same over equal stores of every kind.
    static void compare(const std::function<void()> &one, const std::function<void()> &other) {
        for (size_t k = 0; k < std::size(kinds); ++k) {
            for (uint32_t seed = 1; seed <= 3; ++seed) {
                SCOPED_TRACE(testing::Message() << "kind " << k << " seed " << seed);
                build(kinds[k], seed);
                one();
                const Snapshot expected = snapshot();
                build(kinds[k], seed);
                other();
                expect_same(snapshot(), expected);
            }
        }
    }
};

} // namespace

TEST_F(Closing, OneSweepGivesWhatTheSeparateStepsGive) {
    for (const bool pitch : {true, false}) {
        compare([&] { close_separately(pitch); }, [&] { close_in_one_sweep(pitch); });
    }
}

TEST_F(Closing, TimesFollowTheirSteps) {
    compare(plain_times, recompute_times);
}

TEST_F(Closing, PitchFollowsItsSteps) {
    compare(plain_pitch, recompute_all_pitch);
}

TEST_F(Closing, PhasesFollowTheirSteps) {
    compare(plain_phases, recompute_all_phase);
}

TEST_F(Closing, AveragesFollowTheirSteps) {
    compare(plain_averages, [] { averages(partials, npoints, parray, peval); });
}

TEST_F(Closing, NoRangeChangesBeforeTheEnd) {
    build(kinds[4], 1);
    const std::vector<float> before = snapshot().ranges;
    ClosingSweep sweep;
    for (int32_t i = 0; i < partials; ++i) {
        close_partial(sweep, i);
    }
    EXPECT_TRUE(same_bits(snapshot().ranges, before));
    finish_closing(sweep, true);
    EXPECT_FALSE(same_bits(snapshot().ranges, before));
}
