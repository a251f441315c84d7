// Both forms of the bank give the same bits, whatever the partials and the vectors.
#include "synth/bank.h"
#include "synth/sound.h"
#include "synth/syn.h"
#include "tests/support/child.h"
#include "tests/support/rendering.h"

#include <cmath>
#include <limits>

namespace {

class Forms : public SynthTest {};

Samples render(BankForm form, bool selected, int32_t index, int32_t count, int64_t frames) {
    bank_form = form;
    Samples out(static_cast<size_t>(frames));
    if (selected) {
        render_selected_stripe(index, count, true, out.data(), frames);
    } else {
        render_stripe(index, count, out.data(), frames);
    }
    return out;
}

/// Compares both forms for both kinds of workers and several stripes.
void expect_same_forms(int64_t frames) {
    for (const bool selected : {false, true}) {
        for (const int32_t count : {1, 2, 3, 16}) {
            for (int32_t index = 0; index < count; index += 5) {
                SCOPED_TRACE(testing::Message() << index << " of " << count << " " << selected);
                EXPECT_TRUE(same_bits(render(BankForm::plain, selected, index, count, frames),
                                      render(BankForm::best, selected, index, count, frames)));
            }
        }
    }
}

/// Partials that glide as an analysis has them: a point each 10 ms, some late, some short.
void fill_musical_store(int32_t count, float seconds) {
    std::vector<Partial> content;
    for (int32_t p = 0; p < count; ++p) {
        Partial partial;
        const float begin = 0.013f * static_cast<float>(p % 7);
        for (int32_t i = 0; begin + 0.01f * static_cast<float>(i) < seconds; ++i) {
            const float x = static_cast<float>(i);
            partial.push_back({begin + 0.01f * x,
                               110.0f * static_cast<float>(p + 1) + 3.0f * sinf(0.3f * x),
                               -20.0f - 0.5f * static_cast<float>(p) - 0.1f * x});
        }
        partial.resize(std::max<size_t>(partial.size() / static_cast<size_t>(p % 3 + 1), 2));
        content.push_back(partial);
    }
    fill_store(content);
    spread_phases();
    for (int32_t p = 0; p < partials; ++p) {
        for (int32_t i = 0; i < npoints[p]; ++i) {
            parray[p][i].selected = (p + i / 9) % 4 != 0 ? 1 : 0;
        }
    }
}

} // namespace

// The kernels run some fifty times slower under the sanitizers, which look for other faults.
TEST_F(Forms, AgreeOnMusic) {
    fill_musical_store(70, sanitized() ? 0.2f : 1.0f);
    on_each_kind([] { expect_same_forms(sanitized() ? 8820 : 44100); });
}

TEST_F(Forms, AgreeOnAnyNumberOfPartials) {
    for (int32_t count = 0; count < 40; count += sanitized() ? 3 : 1) {
        fill_musical_store(count, 0.2f);
        SCOPED_TRACE(count);
        EXPECT_TRUE(same_bits(render(BankForm::plain, false, 0, 1, 8820),
                              render(BankForm::best, false, 0, 1, 8820)));
    }
}

TEST_F(Forms, AgreeWithTheLaw) {
    fill_musical_store(40, 0.5f);
    EXPECT_TRUE(same_bits(render(BankForm::best, false, 0, 1, 22050), law_of_all(22050)));
}

TEST_F(Forms, AgreeOnAwkwardPartials) {
    const unsigned rounds = sanitized() ? 2 : 12;
    for (unsigned seed = 1; seed <= rounds; ++seed) {
        fill_awkward_store(seed, seed % 2 == 0 ? 150 : 23, 0.5f);
        SCOPED_TRACE(seed);
        on_each_kind([] { expect_same_forms(sanitized() ? 5003 : 20011); });
    }
}

TEST_F(Forms, AgreeOnManyShortPartials) {
    std::vector<Partial> content;
    for (int32_t p = 0; p < 3000; ++p) {
        const float t = 1e-4f * static_cast<float>(p % 1000);
        const float frames = static_cast<float>(p / 64 % 4 == 0 ? 3 : 20 + p % 90);
        content.push_back({{t, 900.0f, -20.0f}, {t + frames / 44100.0f, 950.0f, -25.0f}});
    }
    fill_store(content);
    EXPECT_TRUE(same_bits(render(BankForm::plain, false, 0, 1, 6000),
                          render(BankForm::best, false, 0, 1, 6000)));
}

TEST_F(Forms, AgreeOnInfinitiesAndOnWhatIsNoNumber) {
    const float inf = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    fill_musical_store(40, 0.3f);
    parray[3][5].freq = inf;
    parray[9][2].freq = nan;
    parray[11][0].phase = nan;
    parray[17][3].phase = -inf;
    parray[20][1].freq = 3e38f;
    const float good = parray[21][4].amp;
    expect_same_forms(13230);
    parray[21][4].amp = inf;
    expect_same_forms(13230);
    parray[21][4].amp = nan;
    expect_same_forms(13230);
    EXPECT_LT(good, 0.0f);
}

TEST_F(Forms, AgreeOnPhasesAroundTheGuard) {
    std::vector<Partial> content;
    for (int32_t p = 0; p < 48; ++p) {
        const float f =
            p % 3 == 0 ? -200.0f * static_cast<float>(p) : 1500.0f * static_cast<float>(p);
        content.push_back({{0.0f, f, -20.0f}, {0.2f, -f * 0.5f, -25.0f}, {0.4f, f, -25.0f}});
    }
    fill_store(content);
    for (int32_t p = 0; p < partials; ++p) {
        parray[p][0].phase = -26.0f + static_cast<float>(p);
    }
    on_each_kind([] { expect_same_forms(17640); });
}

TEST_F(Forms, AgreeInWholeRenders) {
    fill_awkward_store(77, 120, 0.5f);
    for (const int32_t workers : {1, 2, 3, 16}) {
        use_workers(workers);
        Samples sound[2];
        for (const BankForm form : {BankForm::plain, BankForm::best}) {
            bank_form = form;
            synssumWT(0, nullptr);
            sound[form == BankForm::best].assign(fBuffer, fBuffer + fbuffersize);
        }
        EXPECT_TRUE(same_bits(sound[0], sound[1])) << workers;
        EXPECT_GT(sound[0].size(), 10000u);
    }
}
