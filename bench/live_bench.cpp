// The block of the table oscillators over the same blocks in one run: as the law is written down,
// with a table of steps and one of amplitudes, a row a frame; plain, without the tables; and in
// the best form. Each row prints the ratios of the median times and the best form's share of the
// time that the block sounds; the figures to reach stand beside the rows.
#include "live/oscillators.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <hwy/highway.h>
#include <random>
#include <vector>

namespace {

constexpr uint32_t frames = 512;
constexpr int32_t rate = 44100;

int32_t dph[most_block_frames][most_oscillators + 1]; // phase steps, a row per frame
float amp[most_block_frames][most_oscillators + 1];   // amplitudes, a row per frame

/// The law: first the two tables, then the sums along their rows.
void sum_block_by_tables(const OscillatorBlock &block, uint32_t length, float *sum) {
    for (uint32_t n = 0; n < length; ++n) {
        const float k = static_cast<float>(n);
        for (int32_t i = 0; i < block.count; ++i) {
            amp[n][i] = block.da[i] * k + block.amp[i];
            dph[n][i] = static_cast<int32_t>(block.df[i] * k + block.freq[i]);
        }
    }
    for (uint32_t n = 0; n < length; ++n) {
        sum[n] = 0.0f;
        for (int32_t i = 0; i < block.count; ++i) {
            block.phase[i] += dph[n][i];
            sum[n] += block.table[table_index(block.phase[i], block.size)] * amp[n][i];
        }
    }
}

double processor_time() {
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void sum_block_in_form(OscillatorForm form, const OscillatorBlock &block, float *sum) {
    oscillator_form = form;
    sum_block(block, frames, sum);
}

void by_tables(const OscillatorBlock &block, float *sum) {
    sum_block_by_tables(block, frames, sum);
}
void plainly(const OscillatorBlock &block, float *sum) {
    sum_block_in_form(OscillatorForm::plain, block, sum);
}
void at_best(const OscillatorBlock &block, float *sum) {
    sum_block_in_form(OscillatorForm::best, block, sum);
}

struct Material {
    const char *name;
    int32_t oscillators;
    std::function<float(std::mt19937 &)> freq; // Hz, at both ends of the block
    float sounding = 1.0f;                     // share of the oscillators
};

struct Bank {
    std::vector<float> freq, df, amp, da, table, sum;
    std::vector<int32_t> phase;

    explicit Bank(const Material &material) : table(rate), sum(frames + 16) {
        std::mt19937 random(3);
        std::uniform_real_distribution<float> unit(0.0f, 1.0f);
        for (int32_t i = 0; i < material.oscillators; ++i) {
            const float from = material.freq(random), to = material.freq(random);
            const bool sounds = unit(random) < material.sounding;
            freq.push_back(from);
            df.push_back((to - from) / frames);
            amp.push_back(sounds ? unit(random) : 0.0f);
            da.push_back(sounds ? (unit(random) - amp.back()) / frames : 0.0f);
            phase.push_back(static_cast<int32_t>(unit(random) * rate));
        }
        for (size_t i = 0; i < table.size(); ++i) {
            table[i] =
                std::sin(static_cast<float>(static_cast<double>(i) * 6.283185307179586 / rate));
        }
    }

    /// Seconds of processor time that a block takes; others' work on the machine is not in it.
    double run(void (*form)(const OscillatorBlock &block, float *sum)) {
        const OscillatorBlock block = {freq.data(),  df.data(),
                                       amp.data(),   da.data(),
                                       phase.data(), static_cast<int32_t>(freq.size()),
                                       table.data(), rate};
        const auto start = processor_time();
        form(block, sum.data());
        const auto end = processor_time();
        for (int32_t &each : phase) {
            each = table_index(each, rate);
        }
        return end - start;
    }
};

bool same_bits(const Bank &a, const Bank &b) {
    return std::memcmp(a.sum.data(), b.sum.data(), frames * sizeof(float)) == 0 &&
           a.phase == b.phase;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void compare(benchmark::State &state, const Material &material, int64_t disabled) {
    hwy::DisableTargets(disabled);
    Bank tables(material), plain(material), best(material);
    for (int n = 0; n < 4; ++n) {
        tables.run(by_tables);
        plain.run(plainly);
        best.run(at_best);
        if (!same_bits(tables, best) || !same_bits(plain, best)) {
            std::fprintf(stderr, "%s: the forms differ\n", material.name);
            std::exit(1);
        }
    }
    std::vector<double> table_times, plain_times, best_times;
    for (auto _ : state) {
        table_times.push_back(tables.run(by_tables));
        plain_times.push_back(plain.run(plainly));
        best_times.push_back(best.run(at_best));
        state.SetIterationTime(best_times.back());
    }
    const double block = static_cast<double>(frames) / rate;
    const double best_time = median(best_times);
    state.counters["law_ms"] = median(table_times) * 1e3;
    state.counters["plain_ms"] = median(plain_times) * 1e3;
    state.counters["best_ms"] = best_time * 1e3;
    state.counters["law_ratio"] = median(table_times) / best_time;
    state.counters["plain_ratio"] = median(plain_times) / best_time;
    state.counters["share"] = best_time / block;
    state.SetLabel(oscillator_vectors());
    hwy::DisableTargets(0);
}

float audible(std::mt19937 &random) {
    return std::uniform_real_distribution<float>(30.0f, 10000.0f)(random);
}

// At least 4.0 times faster than the law, at most a share of 0.10.
const Material full = {"2047_oscillators", 2047, audible};
// Against the plain form, never below 1.
const Material others[] = {
    {"500_oscillators", 500, audible},
    {"8_oscillators", 8, audible},
    {"1_oscillator", 1, audible},
    {"2047_of_which_a_tenth_sounds", 2047, audible, 0.1f},
    {"2047_silent", 2047, audible, 0.0f},
    {"2047_backwards", 2047, [](std::mt19937 &random) { return -audible(random); }},
};

void add(const Material &material, const char *kind, int64_t disabled) {
    const std::string name = std::string(material.name) + kind;
    benchmark::RegisterBenchmark(
        name.c_str(),
        [&material, disabled](benchmark::State &state) { compare(state, material, disabled); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(0.3);
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    add(full, "", 0);
#if HWY_ARCH_X86
    constexpr int64_t above_avx2 = HWY_AVX3 | HWY_AVX3_DL;
    add(full, "/AVX2", above_avx2);
    add(full, "/SSE4", above_avx2 | HWY_AVX2);
#endif
    for (const Material &material : others) {
        add(material, "", 0);
    }
    benchmark::RunSpecifiedBenchmarks();
}
