// The block of the table oscillators, plain against best form, over the same blocks in one run.
// Each row prints the ratio of the median times and the best form's share of the time that the
// block sounds; the figures to reach stand beside the rows.
#include "live/oscillators.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <hwy/highway.h>
#include <random>
#include <vector>

namespace {

constexpr uint32_t frames = 512;
constexpr int32_t rate = 44100;

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

    /// Seconds that a block takes.
    double run(OscillatorForm form) {
        oscillator_form = form;
        const OscillatorBlock block = {freq.data(),  df.data(),
                                       amp.data(),   da.data(),
                                       phase.data(), static_cast<int32_t>(freq.size()),
                                       table.data(), rate};
        const auto start = std::chrono::steady_clock::now();
        sum_block(block, frames, sum.data());
        const auto end = std::chrono::steady_clock::now();
        for (int32_t &each : phase) {
            each = table_index(each, rate);
        }
        return std::chrono::duration<double>(end - start).count();
    }
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void compare(benchmark::State &state, const Material &material, int64_t disabled) {
    hwy::DisableTargets(disabled);
    Bank plain(material), best(material);
    for (int n = 0; n < 4; ++n) {
        plain.run(OscillatorForm::plain);
        best.run(OscillatorForm::best);
        if (std::memcmp(plain.sum.data(), best.sum.data(), frames * sizeof(float)) != 0 ||
            plain.phase != best.phase) {
            std::fprintf(stderr, "%s: the forms differ\n", material.name);
            std::exit(1);
        }
    }
    std::vector<double> plain_times, best_times;
    for (auto _ : state) {
        plain_times.push_back(plain.run(OscillatorForm::plain));
        best_times.push_back(best.run(OscillatorForm::best));
        state.SetIterationTime(best_times.back());
    }
    const double block = static_cast<double>(frames) / rate;
    state.counters["plain_ms"] = median(plain_times) * 1e3;
    state.counters["best_ms"] = median(best_times) * 1e3;
    state.counters["ratio"] = median(plain_times) / median(best_times);
    state.counters["share"] = median(best_times) / block;
    state.SetLabel(oscillator_vectors());
    hwy::DisableTargets(0);
}

float audible(std::mt19937 &random) {
    return std::uniform_real_distribution<float>(30.0f, 10000.0f)(random);
}

// At least 4.0 times, at most a share of 0.10.
const Material full = {"2047_oscillators", 2047, audible};
// Never below 1.
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
