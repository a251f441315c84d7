// Phase chains side by side against the same chains one by one.
#include "store/phase_kernels.h"

#include "store/phase.h"
#include "tests/support/rendering.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using Chain = std::vector<Breakpoint>;

/// Chains of 0 to `longest` points, reproducible.
std::vector<Chain> random_chains(int count, uint32_t longest) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> freq(20.0f, 12000.0f);
    std::uniform_real_distribution<float> hop(-0.001f, 0.03f);
    std::uniform_real_distribution<float> phase(0.0f, 6.2831855f);
    std::vector<Chain> chains(static_cast<size_t>(count));
    for (Chain &chain : chains) {
        chain.resize(random() % (longest + 1));
        float time = 0.0f;
        for (Breakpoint &point : chain) {
            point = {time += hop(random), freq(random), -20.0f, phase(random), 0.5f, 1, 1, 3.0f};
        }
    }
    return chains;
}

bool same_bits(const Chain &a, const Chain &b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Breakpoint)) == 0);
}

void expect_same_phases(std::vector<Chain> chains) {
    std::vector<Chain> expected = chains;
    for (Chain &chain : expected) {
        chain_phases(chain.data(), static_cast<int32_t>(chain.size()));
    }
    std::vector<PhaseRun> runs;
    runs.reserve(chains.size());
    for (Chain &chain : chains) {
        runs.push_back({chain.data(), static_cast<int32_t>(chain.size())});
    }
    chain_side_by_side(runs.data(), static_cast<int32_t>(runs.size()));
    for (size_t i = 0; i < chains.size(); ++i) {
        EXPECT_TRUE(same_bits(chains[i], expected[i])) << "chain " << i;
    }
}

} // namespace

TEST(PhaseKernels, GiveTheBitsOfOneChainAfterTheOther) {
    on_each_kind([] { expect_same_phases(random_chains(100, 300)); });
}

TEST(PhaseKernels, TakeAnyNumberOfChains) {
    on_each_kind([] {
        for (const int count : {0, 1, 2, 3, 15, 16, 17, 33}) {
            expect_same_phases(random_chains(count, 70));
        }
    });
}

TEST(PhaseKernels, TakeChainsOfNoAndFewPoints) {
    on_each_kind([] { expect_same_phases(random_chains(200, 3)); });
}

TEST(PhaseKernels, WholeCyclesKeepTheSignOfZero) {
    std::vector<Chain> chains(20, Chain(40));
    for (size_t i = 0; i < chains.size(); ++i) {
        for (size_t j = 0; j < chains[i].size(); ++j) {
            const float side = (i + j) % 3 == 0 ? -1.0f : 1.0f;
            chains[i][j] = {side * static_cast<float>(j), 8.0f, 0, 0, 0, 0, 0, 0};
        }
        chains[i][0].phase = i % 2 == 0 ? -0.0f : 0.0f;
    }
    on_each_kind([&] { expect_same_phases(chains); });
}

TEST(PhaseKernels, StandNumbersOutOfAllProportion) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const float wild[] = {infinity,   -infinity,  nan,         -nan,   3e38f, -3e38f,
                          8388607.5f, 8388608.0f, -8388609.0f, 1e-40f, -0.0f, 2e9f};
    std::mt19937 random(11);
    std::vector<Chain> chains = random_chains(64, 90);
    for (Chain &chain : chains) {
        for (Breakpoint &point : chain) {
            float *field[] = {&point.time, &point.freq, &point.phase};
            if (random() % 40 == 0) {
                *field[random() % 3] = wild[random() % std::size(wild)];
            }
        }
        if (!chain.empty() && random() % 3 == 0) {
            chain[0].phase = wild[random() % std::size(wild)];
        }
    }
    on_each_kind([&] { expect_same_phases(chains); });
}
