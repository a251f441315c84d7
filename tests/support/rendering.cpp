#include "tests/support/rendering.h"

#include "live/live.h"
#include "store/machine.h"
#include "store/recompute.h"
#include "synth/bank.h"
#include "synth/sound.h"
#include "synth/syn.h"
#include "synth/voice_kernels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <hwy/highway.h>
#include <random>
#include <set>

namespace {

int32_t (*const no_player)(float, int64_t) = play_rendered;
int32_t wanted_workers = 1;

int64_t law_frame(float seconds) {
    return static_cast<int64_t>(static_cast<double>(seconds) * R);
}

float law_amp(float db) {
    return powf(10.0f, std::max(db, -140.0f) / 20.0f);
}

void clean() {
    std::free(fBuffer);
    fBuffer = nullptr;
    fbuffersize = 0;
    R = 44100.0;
    bank_form = BankForm::best;
    worker_count = getCPUnum;
    play_rendered = no_player;
    zgen = {};
    fplayer = {};
}

} // namespace

void SynthTest::SetUp() {
    StoreTest::SetUp();
    clean();
}
void SynthTest::TearDown() {
    clean();
    StoreTest::TearDown();
}

float law_slope(float from_db, float to_db, float seconds) {
    return ((law_amp(to_db) - law_amp(from_db)) / seconds) / static_cast<float>(R);
}

void add_law_segment(int32_t p, int32_t i, float a, float da, float &ph, Samples &out) {
    const Breakpoint *point = parray[p];
    const int64_t end = law_frame(point[npoints[p] - 1].time);
    const float k = static_cast<float>(6.2831854820251465 / R);
    float f = point[i].freq;
    const float slope =
        ((point[i + 1].freq - point[i].freq) + (point[i + 1].phase - point[i].phase) / 6.2831855f) /
        (point[i + 1].time - point[i].time);
    const float df = slope / static_cast<float>(R);
    for (int64_t n = law_frame(point[i].time); n < end; ++n) {
        if (law_frame(point[i + 1].time) <= n) {
            break;
        }
        a += da;
        f += df;
        const float step = f * k;
        ph += step;
        if (ph > 12.566371f) {
            ph = static_cast<float>(static_cast<double>(ph) - 6.283185307179586);
        }
        float s = sinf(ph) * a;
        if (ph <= 3.1415927f) {
            s *= ph / 3.1415927f;
        }
        if (n >= 0 && n < static_cast<int64_t>(out.size())) {
            out[static_cast<size_t>(n)] += s;
        }
    }
}

Samples law_of_all(int64_t frames) {
    Samples out(static_cast<size_t>(frames));
    for (int32_t p = 0; p < partials; ++p) {
        const Breakpoint *point = parray[p];
        float ph = npoints[p] > 0 ? point[0].phase : 0.0f;
        for (int32_t i = 0; i + 1 < npoints[p]; ++i) {
            const float slope =
                law_slope(point[i].amp, point[i + 1].amp, point[i + 1].time - point[i].time);
            add_law_segment(p, i, law_amp(point[i].amp), slope, ph, out);
        }
    }
    return out;
}

void select_points(const std::vector<std::string> &texts) {
    for (size_t p = 0; p < texts.size(); ++p) {
        for (size_t i = 0; i < texts[p].size(); ++i) {
            parray[p][i].selected = static_cast<uint16_t>(texts[p][i] - '0');
        }
    }
}

void spread_phases() {
    for (int32_t p = 0; p < partials; ++p) {
        for (int32_t i = 0; i < npoints[p]; ++i) {
            parray[p][i].phase = static_cast<float>(std::fmod(0.3 + 1.7 * p + 2.3 * i, 6.283));
        }
    }
}

void use_workers(int32_t count) {
    wanted_workers = count;
    worker_count = [] { return wanted_workers; };
}

testing::AssertionResult same_bits(const Samples &x, const Samples &y) {
    if (x.size() != y.size()) {
        return testing::AssertionFailure() << x.size() << " and " << y.size() << " samples";
    }
    for (size_t n = 0; n < x.size(); ++n) {
        // The sign and payload of what is no number are the machine's own.
        if (std::memcmp(&x[n], &y[n], sizeof(float)) != 0 &&
            !(std::isnan(x[n]) && std::isnan(y[n]))) {
            return testing::AssertionFailure() << "frame " << n << ": " << x[n] << " and " << y[n];
        }
    }
    return testing::AssertionSuccess();
}

void fill_awkward_store(unsigned seed, int32_t count, float seconds) {
    std::mt19937 random(seed);
    const auto unit = [&] { return static_cast<float>(random() >> 8) * 0x1p-24f; };
    std::vector<Partial> content;
    for (int32_t p = 0; p < count; ++p) {
        const float hops[] = {0.0f, 0.4f / 44100, 1.0f / 44100, 3e-4f, 0.003f, 0.03f, 0.2f};
        const float tops[] = {0.0f, 3.0f, 500.0f, 5000.0f, 30000.0f, 30000.0f, 70000.0f, -300.0f};
        const float top = tops[random() % (p % 5 == 0 ? 8 : 6)];
        const bool mixed = random() % 2 == 0;
        float hop = hops[1 + random() % 6];
        Partial partial;
        for (float t = unit() * seconds * 0.8f; t < seconds && partial.size() < 300;) {
            partial.push_back({t, top * (0.5f + 0.5f * unit()), -150.0f * unit()});
            hop = mixed ? hops[random() % 7] : hop;
            t += hop;
        }
        if (p % 11 == 3 && partial.size() > 4) {
            std::swap(partial[1].time, partial[3].time);
        }
        content.push_back(partial);
    }
    fill_store(content);
    for (int32_t p = 0; p < partials; ++p) {
        for (int32_t i = 0; i < npoints[p]; ++i) {
            parray[p][i].phase = (random() % 7 == 0 ? -12.0f : 6.28f) * unit();
            const uint32_t choice = random() % 8;
            parray[p][i].selected = choice < 5 ? 1 : 0;
        }
    }
}

void on_each_kind(const std::function<void()> &work) {
    int64_t disabled = 0;
    std::set<std::string> done;
    for (int64_t target : hwy::SupportedAndGeneratedTargets()) {
        hwy::DisableTargets(disabled);
        disabled |= target;
        if (vectors_at_hand() && done.insert(vector_kind()).second) {
            SCOPED_TRACE(vector_kind());
            work();
        }
    }
    hwy::DisableTargets(0);
    EXPECT_EQ(done.count(vector_kind()), vectors_at_hand() ? 1u : 0u);
}
