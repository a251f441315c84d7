// The block of the table oscillators: the plain form against the law written down once more with
// its two tables, and the form in vectors against the plain one, bit by bit.
#include "live/oscillators.h"

#include "tests/support/rendering.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr float inf = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct Bank {
    std::vector<float> freq, df, amp, da, table;
    std::vector<int32_t> phase;

    Bank(size_t count, int32_t size)
        : freq(count), df(count), amp(count), da(count), table(static_cast<size_t>(size)),
          phase(count) {
        for (size_t i = 0; i < table.size(); ++i) {
            table[i] = std::sin(static_cast<float>(static_cast<double>(i) * 6.283185307179586 /
                                                   static_cast<double>(size)));
        }
    }

    OscillatorBlock block() {
        return {freq.data(),  df.data(),
                amp.data(),   da.data(),
                phase.data(), static_cast<int32_t>(freq.size()),
                table.data(), static_cast<int32_t>(table.size())};
    }
};

/// The law with a row of steps and amplitudes per frame.
std::vector<float> law(Bank &bank, uint32_t frames) {
    const size_t count = bank.freq.size();
    std::vector<std::vector<int32_t>> dph(frames, std::vector<int32_t>(count));
    std::vector<std::vector<float>> amp(frames, std::vector<float>(count));
    for (uint32_t k = 0; k < frames; ++k) {
        for (size_t i = 0; i < count; ++i) {
            const float line = bank.da[i] * static_cast<float>(k);
            amp[k][i] = line + bank.amp[i];
            const float change = bank.df[i] * static_cast<float>(k);
            dph[k][i] = static_cast<int32_t>(std::trunc(change + bank.freq[i]));
        }
    }
    std::vector<float> out(frames);
    for (uint32_t k = 0; k < frames; ++k) {
        float sum = 0.0f;
        for (size_t i = 0; i < count; ++i) {
            bank.phase[i] += dph[k][i];
            const float sample =
                bank.table[static_cast<size_t>(bank.phase[i]) % bank.table.size()] * amp[k][i];
            sum = sum + sample;
        }
        out[k] = sum;
    }
    return out;
}

std::vector<float> sum_of(Bank &bank, uint32_t frames, OscillatorForm form) {
    std::vector<float> sum(frames + 16);
    oscillator_form = form;
    sum_block(bank.block(), frames, sum.data());
    oscillator_form = OscillatorForm::best;
    sum.resize(frames);
    return sum;
}

/// Frequencies from 0 to 22050 that move, some still, some silent.
Bank sane_bank(unsigned seed, size_t count, uint32_t frames, int32_t size = 44100) {
    Bank bank(count, size);
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> hertz(0.0f, 22050.0f), level(-0.1f, 0.3f);
    const float inv = 1.0f / static_cast<float>(std::max(frames, 1u));
    for (size_t i = 0; i < count; ++i) {
        const unsigned kind = random() % 8;
        bank.freq[i] = kind == 1 ? 0.0f : hertz(random);
        bank.df[i] = kind == 2 ? 0.0f : (hertz(random) - bank.freq[i]) * inv;
        bank.amp[i] = kind == 3 || kind == 4 ? 0.0f : level(random);
        bank.da[i] = kind == 4 ? 0.0f : (level(random) - bank.amp[i]) * inv;
        bank.phase[i] = static_cast<int32_t>(random() % static_cast<unsigned>(size + 1));
    }
    return bank;
}

/// The same with some oscillators of every kind that vectors cannot take.
Bank wild_bank(unsigned seed, size_t count, uint32_t frames, unsigned one_in = 12) {
    Bank bank = sane_bank(seed, count, frames);
    std::mt19937 random(seed + 1);
    const float oddities[] = {-440.0f, -22050.0f, 44100.0f, 44099.5f, 1e6f,  -1e6f, 3e9f,
                              1e30f,   inf,       -inf,     nan,      -0.5f, -0.0f, 524288.0f};
    for (size_t i = 0; i < count; ++i) {
        if (random() % one_in != 0) {
            continue;
        }
        const float odd = oddities[random() % std::size(oddities)];
        (random() % 2 != 0 ? bank.freq[i] : bank.df[i]) = odd;
        if (random() % 2 != 0) {
            bank.phase[i] = -bank.phase[i];
        }
    }
    return bank;
}

void expect_same(const Bank &start, uint32_t frames) {
    Bank plain = start, best = start;
    const std::vector<float> by_law = sum_of(plain, frames, OscillatorForm::plain);
    const std::vector<float> in_vectors = sum_of(best, frames, OscillatorForm::best);
    EXPECT_TRUE(same_bits(in_vectors, by_law)) << frames << " frames of " << start.freq.size();
    EXPECT_EQ(best.phase, plain.phase);
}

const uint32_t lengths[] = {0, 1, 3, 7, 511, 512, 2048};
const size_t counts[] = {0, 1, 7, 8, 17, 40};

TEST(Oscillators, PlainFormIsTheLaw) {
    for (const uint32_t frames : lengths) {
        for (const size_t count : counts) {
            Bank plain = sane_bank(frames + 7, count, frames), twin = plain;
            EXPECT_TRUE(same_bits(sum_of(plain, frames, OscillatorForm::plain), law(twin, frames)));
            EXPECT_EQ(plain.phase, twin.phase);
        }
    }
}

TEST(Oscillators, VectorsGiveThePlainBits) {
    on_each_kind([] {
        for (const uint32_t frames : lengths) {
            for (const size_t count : counts) {
                expect_same(sane_bank(frames + 3, count, frames), frames);
                expect_same(wild_bank(frames + 5, count, frames), frames);
            }
        }
    });
}

TEST(Oscillators, VectorsGiveThePlainBitsOfManyOscillators) {
    on_each_kind([] {
        expect_same(sane_bank(1, 2047, 512), 512);
        expect_same(wild_bank(2, 2047, 511), 511);
        expect_same(wild_bank(3, 600, 511, 2), 511);
    });
}

TEST(Oscillators, VectorsGiveThePlainBitsOnOtherTables) {
    for (const int32_t size : {1, 2, 8000, 48000, 192000, 600000}) {
        expect_same(sane_bank(4, 33, 512, size), 512);
    }
}

TEST(Oscillators, ManyRandomBlocks) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        const uint32_t frames = static_cast<uint32_t>(random() % 100);
        const size_t count = random() % 40;
        expect_same(wild_bank(seed, count, frames), frames);
    }
}

TEST(Oscillators, BlocksThatFollowEachOtherStayEqual) {
    Bank plain = sane_bank(9, 50, 64), best = plain;
    for (int n = 0; n < 20; ++n) {
        EXPECT_TRUE(same_bits(sum_of(best, 64, OscillatorForm::best),
                              sum_of(plain, 64, OscillatorForm::plain)));
    }
    EXPECT_EQ(best.phase, plain.phase);
}

TEST(Oscillators, WholeHertz) {
    EXPECT_EQ(whole_hertz(440.7f), 440);
    EXPECT_EQ(whole_hertz(-440.7f), -440);
    EXPECT_EQ(whole_hertz(0.999f), 0);
    EXPECT_EQ(whole_hertz(524287.0f), 524287);
    for (const float far : {524288.0f, -524288.0f, 3e9f, 1e30f, inf, -inf, nan}) {
        EXPECT_EQ(whole_hertz(far), 0);
    }
}

TEST(Oscillators, TableIndexOfAnyPhase) {
    EXPECT_EQ(table_index(0, 100), 0);
    EXPECT_EQ(table_index(100, 100), 0);
    EXPECT_EQ(table_index(301, 100), 1);
    EXPECT_EQ(table_index(-1, 100), 99);
    EXPECT_EQ(table_index(-100, 100), 0);
    EXPECT_EQ(table_index(INT32_MIN, 44100), 44100 - 34148);
}

TEST(Oscillators, NegativeFrequencyRunsBackwards) {
    Bank up(1, 44100), down(1, 44100);
    up.freq[0] = 440.0f;
    down.freq[0] = -440.0f;
    up.amp[0] = down.amp[0] = 1.0f;
    const std::vector<float> forward = sum_of(up, 512, OscillatorForm::plain);
    const std::vector<float> backward = sum_of(down, 512, OscillatorForm::plain);
    for (size_t k = 0; k < 512; ++k) {
        EXPECT_NEAR(backward[k], -forward[k], 1e-6);
    }
}

TEST(Oscillators, AVectorFormIsInUse) {
    EXPECT_STRNE(oscillator_vectors(), "Scalar");
}

} // namespace
