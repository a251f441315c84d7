#include "synth/bank.h"

#include "store/store.h"
#include "synth/fast_bank.h"
#include "synth/plain_bank.h"
#include "synth/sound.h"

#include <algorithm>

BankForm bank_form = BankForm::best;

namespace {

/// The partials of a stripe.
struct Stripe {
    int32_t index, count;

    template <typename Work> void each(Work work) const {
        for (int64_t p = index; p < partials; p += count) {
            if (npoints[p] > 0) {
                work(static_cast<int32_t>(p));
            }
        }
    }
};

/// True when voices are long enough to make up for listing them.
bool worth_listing(const Stripe &stripe) {
    constexpr double frames_a_voice = 48.0;
    double frames = 0.0, voices = 0.0;
    stripe.each([&](int32_t p) {
        const Breakpoint *point = parray[p];
        frames += (static_cast<double>(point[npoints[p] - 1].time) - point[0].time) * R;
        voices += 1.0;
    });
    return frames >= frames_a_voice * voices;
}

bool fast_form(const Stripe &stripe) {
    return bank_form == BankForm::best && vectors_at_hand() && worth_listing(stripe);
}

/// Renders the orderly partials as voices and the others by the plain form in between, so that
/// all are added in their order.
template <typename Append, typename Plain>
void render_fast(const Stripe &stripe, Append append, Plain plain, float *out) {
    FastBank bank(oscillator_rate(R).per_hz);
    VoiceList list;
    stripe.each([&](int32_t p) {
        if (orderly(p)) {
            append(list, p);
            return;
        }
        bank.render(list, out);
        plain(p);
    });
    bank.render(list, out);
}

} // namespace

void render_stripe(int32_t index, int32_t count, float *out, int64_t frames) {
    const Stripe stripe = {index, count};
    const auto plain = [&](int32_t p) { plain_partial(p, out, frames); };
    if (!fast_form(stripe)) {
        stripe.each(plain);
        return;
    }
    render_fast(
        stripe, [&](VoiceList &list, int32_t p) { append_partial(list, p, frames); }, plain, out);
}

void render_selected_stripe(int32_t index, int32_t count, bool look_behind, float *out,
                            int64_t frames) {
    const Stripe stripe = {index, count};
    StretchFade fade = {false, look_behind};
    const auto plain = [&](int32_t p) { plain_stretches(p, fade, out, frames); };
    if (!fast_form(stripe)) {
        stripe.each(plain);
        return;
    }
    render_fast(
        stripe, [&](VoiceList &list, int32_t p) { append_stretches(list, p, fade, frames); }, plain,
        out);
}
