// The oscillator bank, plain against best form, over the same partials in one run. Each row
// prints the ratio of the median times; the figures to reach stand beside the rows. The forms are
// compared by the processor time that they take, which a busy machine changes little, the numbers
// of workers by the time that passes.
#include "store/recompute.h"
#include "store/slots.h"
#include "store/store.h"
#include "synth/bank.h"
#include "synth/sound.h"
#include "synth/syn.h"
#include "synth/voice_kernels.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <hwy/highway.h>
#include <random>
#include <thread>
#include <vector>

namespace {

struct Material {
    const char *name;
    int32_t partials, points;
    double hop;     // seconds from point to point
    double stagger; // seconds between the starts of two partials
    std::function<float(int32_t)> freq;
    bool back = false;  // every third partial goes back in time
    bool twins = false; // every second point has the time of the one before
};

void build_store(const Material &material) {
    free_store();
    partials = material.partials;
    allocate_counts(partials);
    std::fill_n(npoints, partials, material.points);
    allocate_points();
    regrow_peval();
    std::mt19937 random(7);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            Breakpoint &point = parray[i][j];
            const int32_t step = material.twins ? j / 2 : j;
            point.time = static_cast<float>(material.stagger * i + material.hop * step);
            point.freq = material.freq(i) * (1.0f + 0.01f * unit(random));
            point.amp = -60.0f + 30.0f * unit(random);
            point.phase = 6.28f * unit(random);
        }
        if (material.back && i % 3 == 0 && npoints[i] > 3) {
            std::swap(parray[i][1].time, parray[i][2].time);
        }
    }
    recompute_times();
}

using Sound = std::vector<std::vector<float>>;

/// Processor time of all threads so far.
double busy_seconds() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// Processor time that the workers take for all partials, each into its own buffer.
double render(BankForm form, int32_t workers, Sound &sound) {
    for (std::vector<float> &buffer : sound) {
        std::fill(buffer.begin(), buffer.end(), 0.0f);
    }
    bank_form = form;
    const auto work = [&](int32_t k) {
        std::vector<float> &buffer = sound[static_cast<size_t>(k)];
        render_stripe(k, workers, buffer.data(), static_cast<int64_t>(buffer.size()));
    };
    const double start = busy_seconds();
    std::vector<std::thread> others;
    for (int32_t k = 1; k < workers; ++k) {
        others.emplace_back(work, k);
    }
    work(0);
    for (std::thread &other : others) {
        other.join();
    }
    return busy_seconds() - start;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

bool same_bits(const Sound &x, const Sound &y) {
    for (size_t k = 0; k < x.size(); ++k) {
        if (std::memcmp(x[k].data(), y[k].data(), x[k].size() * sizeof(float)) != 0) {
            return false;
        }
    }
    return true;
}

Sound silence(int32_t workers) {
    const size_t frames = static_cast<size_t>(static_cast<double>(sndlen) * R);
    return Sound(static_cast<size_t>(workers), std::vector<float>(frames));
}

double samples() {
    double sum = 0.0;
    for (int32_t i = 0; i < partials; ++i) {
        sum += (static_cast<double>(parray[i][npoints[i] - 1].time) - parray[i][0].time) * R;
    }
    return sum;
}

/// Times both forms in turn. `disabled` are kinds of vectors that may not be used.
void compare(benchmark::State &state, const Material &material, int32_t workers, int64_t disabled) {
    hwy::DisableTargets(disabled);
    build_store(material);
    Sound plain = silence(workers), best = silence(workers);
    render(BankForm::plain, workers, plain);
    render(BankForm::best, workers, best);
    if (!same_bits(plain, best)) {
        std::fprintf(stderr, "%s: the forms differ\n", material.name);
        std::exit(1);
    }
    std::vector<double> plain_times, best_times;
    for (auto _ : state) {
        plain_times.push_back(render(BankForm::plain, workers, plain));
        best_times.push_back(render(BankForm::best, workers, best));
        state.SetIterationTime(best_times.back());
    }
    state.counters["plain_ns"] = median(plain_times) / samples() * 1e9; // a sample
    state.counters["best_ns"] = median(best_times) / samples() * 1e9;
    state.counters["ratio"] = median(plain_times) / median(best_times);
    state.SetLabel(vector_kind());
    hwy::DisableTargets(0);
}

/// Seconds that a whole render takes, buffers, mix and normalisation with it.
double whole_render(int32_t workers) {
    static int32_t wanted;
    wanted = workers;
    worker_count = [] { return wanted; };
    const auto start = std::chrono::steady_clock::now();
    synssumWT(0, nullptr); // all points are selected; it prints nothing
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Two workers against one, best form.
void two_workers(benchmark::State &state, const Material &material) {
    build_store(material);
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].selected = 1;
        }
    }
    std::vector<double> one_times, two_times;
    for (auto _ : state) {
        one_times.push_back(whole_render(1));
        two_times.push_back(whole_render(2));
        state.SetIterationTime(two_times.back());
    }
    state.counters["ratio"] = median(one_times) / median(two_times);
}

float harmonic(int32_t i) {
    return 110.0f * static_cast<float>(i % 80 + 1);
}

constexpr double short_hop = 44.0 / 44100.0;

// At least 4.0 on one worker and on two; 1.8 with SSE4 alone.
const Material offline = {"64_partials_30_s", 64, 1000, 30.0 / 999.0, 0.0, harmonic};
// At least 3.5.
const Material dense = {"500_partials_10_ms", 500, 1001, 0.01, 0.0, harmonic};
const Material brief = {"1000_partials_44_frames", 1000, 1000, short_hop, 0.0, harmonic};
const Material uneven = {"1000_partials_44_frames_uneven", 1000, 1000, short_hop, 1e-4, harmonic};
// Never below 1.
const Material pathological[] = {
    {"one_partial", 1, 1000, 0.01, 0.0, harmonic},
    {"two_partials", 2, 1000, 0.01, 0.0, harmonic},
    {"four_partials", 4, 1000, 0.01, 0.0, harmonic},
    {"five_partials", 5, 1000, 0.01, 0.0, harmonic},
    {"17_partials", 17, 1000, 0.01, 0.0, harmonic},
    {"one_frame_partials", 50000, 2, 1.1 / 44100.0, 1e-4, harmonic},
    {"16_frame_partials", 50000, 2, 16.0 / 44100.0, 1e-4, harmonic},
    {"50_frame_partials", 50000, 2, 50.0 / 44100.0, 1e-4, harmonic},
    {"100_frame_partials", 20000, 2, 100.0 / 44100.0, 1e-3, harmonic},
    {"50_frame_chord", 20000, 2, 50.0 / 44100.0, 0.0, harmonic},
    {"one_frame_segments", 64, 20000, 1.0 / 44100.0, 0.0, harmonic},
    {"ten_points_a_frame", 64, 20000, 0.1 / 44100.0, 0.0, harmonic},
    {"equal_times", 64, 2000, 0.01, 0.0, harmonic, false, true},
    {"back_in_time", 300, 100, 0.01, 0.0, harmonic, true},
    {"60_kHz", 64, 1000, 0.01, 0.0, [](int32_t) { return 60000.0f; }},
    {"70_kHz", 64, 1000, 0.01, 0.0, [](int32_t) { return 70000.0f; }},
    {"minus_100_Hz", 64, 1000, 0.01, 0.0, [](int32_t) { return -100.0f; }},
    {"half_wild", 64, 1000, 0.01, 0.0, [](int32_t i) { return i % 2 == 0 ? 80000.0f : 440.0f; }},
    {"0_Hz", 64, 1000, 0.01, 0.0, [](int32_t) { return 0.0f; }},
    {"silent_0_Hz_to_1_Hz", 64, 1000, 0.01, 0.0,
     [](int32_t i) { return i % 2 == 0 ? 1.0f : 0.0f; }},
};

void add(const Material &material, const char *kind, int32_t workers, int64_t disabled) {
    const std::string name = std::string(material.name) + "/" + kind;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [&material, workers, disabled](benchmark::State &state) {
                                     compare(state, material, workers, disabled);
                                 })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(0.5);
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    add(offline, "1_worker", 1, 0);
    add(offline, "2_workers", 2, 0);
#if HWY_ARCH_X86
    constexpr int64_t above_avx2 = HWY_AVX3 | HWY_AVX3_DL;
    add(offline, "1_worker_AVX2", 1, above_avx2);
    add(offline, "1_worker_SSE4", 1, above_avx2 | HWY_AVX2);
    add(dense, "1_worker_AVX2", 1, above_avx2);
    add(brief, "1_worker_AVX2", 1, above_avx2);
    add(uneven, "1_worker_AVX2", 1, above_avx2);
#endif
    add(dense, "1_worker", 1, 0);
    add(brief, "1_worker", 1, 0);
    add(uneven, "1_worker", 1, 0);
    for (const Material &material : pathological) {
        add(material, "1_worker", 1, 0);
    }
    // At least 1.8.
    benchmark::RegisterBenchmark("two_workers_to_one",
                                 [](benchmark::State &state) { two_workers(state, offline); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(0.5);
    benchmark::RunSpecifiedBenchmarks();
    free_store();
}
