#include "synth/bank.h"

#include "store/store.h"
#include "synth/fast_bank.h"
#include "synth/plain_bank.h"
#include "synth/sound.h"

#include <cstddef>

BankForm bank_form = BankForm::best;

namespace {

/// The partials of a stripe.
struct Stripe {
    int64_t index, count;

    /// Calls `work` for those with points among the stripe's members [from, to).
    template <typename Work> void each(int64_t from, int64_t to, Work work) const {
        for (int64_t p = index + from * count; p < partials && from < to; p += count, ++from) {
            if (npoints[p] > 0) {
                work(static_cast<int32_t>(p));
            }
        }
    }

    int64_t size() const {
        return partials > index ? (partials - index + count - 1) / count : 0;
    }
};

/// True when these members, by a few of them, are long enough to make up for listing them as
/// voices. A look at each would cost the shortest partials more than it could bring.
bool worth_listing(const Stripe &stripe, int64_t from, int64_t to) {
    constexpr double frames_a_voice = 48.0;
    constexpr int64_t apart = 13; // no usual pattern of partials repeats after so many
    double seconds = 0.0, voices = 0.0;
    const Stripe sample = {stripe.index + from * stripe.count, stripe.count * apart};
    sample.each(0, (to - from) / apart, [&](int32_t p) {
        const Breakpoint *point = parray[p];
        seconds += static_cast<double>(point[npoints[p] - 1].time) - point[0].time;
        voices += 1.0;
    });
    return seconds * R >= frames_a_voice * voices;
}

/// Points of all members, as many as there can be segments.
size_t points_of(const Stripe &stripe) {
    size_t points = 0;
    stripe.each(0, stripe.size(), [&](int32_t p) { points += static_cast<size_t>(npoints[p]); });
    return points;
}

/// Renders long orderly partials as voices and the others by the plain form in between, so that
/// all are added in their order.
template <typename Append, typename Plain>
void render_fast(const Stripe &stripe, Append append, Plain plain, float *out) {
    constexpr int64_t run = 64; // members weighed together
    FastBank bank(oscillator_rate(R).per_hz);
    VoiceList list;
    for (int64_t from = 0; from < stripe.size(); from += run) {
        const bool listed = worth_listing(stripe, from, from + run);
        if (listed && list.segments.capacity() == 0) {
            list.segments.reserve(points_of(stripe)); // untouched pages cost nothing
        }
        stripe.each(from, from + run, [&](int32_t p) {
            if (listed && orderly(p)) {
                append(list, p);
                return;
            }
            if (!list.voices.empty()) {
                bank.render(list, out);
            }
            plain(p);
        });
    }
    bank.render(list, out);
}

template <typename Append, typename Plain>
void render(const Stripe &stripe, Append append, Plain plain, float *out) {
    if (bank_form == BankForm::best && vectors_at_hand()) {
        render_fast(stripe, append, plain, out);
    } else {
        stripe.each(0, stripe.size(), plain);
    }
}

} // namespace

void render_stripe(int32_t index, int32_t count, float *out, int64_t frames) {
    render(
        {index, count}, [&](VoiceList &list, int32_t p) { append_partial(list, p, frames); },
        [&](int32_t p) { plain_partial(p, out, frames); }, out);
}

void render_selected_stripe(int32_t index, int32_t count, bool look_behind, float *out,
                            int64_t frames) {
    StretchFade fade = {false, look_behind};
    render(
        {index, count},
        [&](VoiceList &list, int32_t p) { append_stretches(list, p, fade, frames); },
        [&](int32_t p) { plain_stretches(p, fade, out, frames); }, out);
}
