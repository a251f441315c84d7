// Compiled once for each kind of vector; see voice_kernels.h.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "synth/voice_kernels.cpp"
// Vectors of unknown length cannot be kept in arrays; with no more than SSSE3 a choice by the sign
// of doubles goes wrong.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV | HWY_SSSE3)
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "synth/voice_kernels.h"

#include <algorithm>
#include <climits>

HWY_BEFORE_NAMESPACE();
namespace synth_kernels {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

// No vectors: the plain law. The bank does not come here, since vectors_at_hand() says so.
void RenderVoices(Voice *const *voices, int32_t count, int64_t from, int64_t to, float per_hz,
                  LaneScratch &, float *out) {
    for (int32_t l = 0; l < count; ++l) {
        plain_voice(*voices[l], from, to, per_hz, out);
    }
}

void VectorSine(const float *x, float *sine, size_t count) {
    std::transform(x, x + count, sine, [](float each) { return sinf(each); });
}

#else

using Floats = hn::CappedTag<float, lane_count>;
using Vector = hn::Vec<Floats>;
constexpr size_t width = hn::MaxLanes(Floats()); // 4, 8 or 16
constexpr size_t parts = lane_count / width;     // vectors for all lanes

// The phase's range in which the single-precision wrap and the vector sine are exact.
constexpr float tame = 22.0f;

constexpr float four_pi_f = 12.566371f;
constexpr float pi_f = 3.1415927f;
// Two pi in two single-precision parts: taking them off one after the other equals the wrap in
// double precision for every float from 4 pi to 22.28.
constexpr float two_pi_head = 0x1.921fb4p+2f;
constexpr float two_pi_rest = 0x1.4442d2p-22f;

/// Sine of doubles, good for a rounding to single precision: the nearest multiple of pi/2 is
/// taken off, then the polynomial of sine or cosine runs with the coefficients of the usual
/// single-precision library sine, whose results it shares. Both polynomials go through the same
/// operations: r + r r^2 (s1 + ...) and 1 + r^2 (c1 + ...).
template <class D> HWY_INLINE hn::Vec<D> SineOfDoubles(D d, hn::Vec<D> x) {
    const hn::RebindToUnsigned<D> du;
    using V = hn::Vec<D>;
    const V whole = hn::Set(d, 0x1.8p52); // adding it rounds to an integer in the low bits
    const V shifted = hn::MulAdd(x, hn::Set(d, 0x1.45F306DC9C883p-1), whole);
    const V turns = hn::Sub(shifted, whole);
    const V r = hn::NegMulAdd(turns, hn::Set(d, 0x1.921FB54442D18p0), x);
    const auto bits = hn::BitCast(du, shifted);
    const V odd = hn::BitCast(d, hn::ShiftLeft<63>(bits)); // negative where cosine is due
    const auto sign = hn::And(hn::ShiftLeft<62>(bits), hn::Set(du, uint64_t{1} << 63));
    const auto either = [&](double cosine, double sine) HWY_ATTR {
        return hn::IfNegativeThenElse(odd, hn::Set(d, cosine), hn::Set(d, sine));
    };
    const V r2 = hn::Mul(r, r);
    const V base = hn::IfNegativeThenElse(odd, hn::Set(d, 1.0), r);
    V sum = either(0x1.99343027bf8c3p-16, 0.0);
    sum = hn::MulAdd(sum, r2, either(-0x1.6c087e89a359dp-10, -0x1.994eb3774cf24p-13));
    sum = hn::MulAdd(sum, r2, either(0x1.55553e1068f19p-5, 0x1.1107605230bc4p-7));
    sum = hn::MulAdd(sum, r2, either(-0x1.ffffffd0c621cp-2, -0x1.555545995a603p-3));
    return hn::Xor(hn::MulAdd(hn::Mul(base, r2), sum, base), hn::BitCast(d, sign));
}

HWY_INLINE Vector Sine(Vector x) {
    const Floats d;
    const hn::Half<Floats> half;
    const hn::RepartitionToWide<Floats> wide;
    const auto low = SineOfDoubles(wide, hn::PromoteTo(wide, hn::LowerHalf(half, x)));
    const auto high = SineOfDoubles(wide, hn::PromoteTo(wide, hn::UpperHalf(half, x)));
    return hn::Combine(d, hn::DemoteTo(half, high), hn::DemoteTo(half, low));
}

/// The sample at these phases; `soft` where one of them may lie below pi.
template <bool soft> HWY_INLINE Vector Sample(Vector ph, Vector a) {
    const Floats d;
    Vector s = hn::Mul(Sine(ph), a);
    if constexpr (soft) {
        const Vector pi = hn::Set(d, pi_f);
        s = hn::IfThenElse(hn::Le(ph, pi), hn::Mul(s, hn::Div(ph, pi)), s);
    }
    return s;
}

/// The running values of the lanes.
struct Lanes {
    alignas(64) float a[lane_count];
    alignas(64) float da[lane_count];
    alignas(64) float f[lane_count];
    alignas(64) float df[lane_count];
    alignas(64) float ph[lane_count];
    alignas(64) float low[lane_count];  // least phase of the block
    alignas(64) float high[lane_count]; // greatest, before the wrap
    int32_t event[lane_count];          // frame of the block at which the lane changes slopes
    const Segment *next[lane_count];
};

/// Runs all lanes over `frames` frames. Their chains of operations, each waiting for the one
/// before, overlap.
HWY_INLINE void Advance(Lanes &lanes, float per_hz, float *ph_out, float *a_out, size_t frames) {
    const Floats d;
    const Vector k = hn::Set(d, per_hz), limit = hn::Set(d, four_pi_f);
    const Vector head = hn::Set(d, two_pi_head), rest = hn::Set(d, two_pi_rest);
    Vector a[parts], da[parts], f[parts], df[parts], ph[parts], low[parts], high[parts];
    for (size_t m = 0; m < parts; ++m) {
        const size_t at = m * width;
        a[m] = hn::Load(d, lanes.a + at);
        da[m] = hn::Load(d, lanes.da + at);
        f[m] = hn::Load(d, lanes.f + at);
        df[m] = hn::Load(d, lanes.df + at);
        ph[m] = hn::Load(d, lanes.ph + at);
        low[m] = hn::Load(d, lanes.low + at);
        high[m] = hn::Load(d, lanes.high + at);
    }
    for (size_t n = 0; n < frames; ++n) {
        for (size_t m = 0; m < parts; ++m) {
            a[m] = hn::Add(a[m], da[m]);
            f[m] = hn::Add(f[m], df[m]);
            const Vector ahead = hn::Add(ph[m], hn::Mul(f[m], k));
            const Vector wrapped = hn::Sub(hn::Sub(ahead, head), rest);
            low[m] = hn::Min(low[m], ahead);
            high[m] = hn::Max(high[m], ahead);
            ph[m] = hn::IfThenElse(hn::Gt(ahead, limit), wrapped, ahead);
            hn::Store(ph[m], d, ph_out + n * lane_count + m * width);
            hn::Store(a[m], d, a_out + n * lane_count + m * width);
        }
    }
    for (size_t m = 0; m < parts; ++m) {
        const size_t at = m * width;
        hn::Store(a[m], d, lanes.a + at);
        hn::Store(f[m], d, lanes.f + at);
        hn::Store(ph[m], d, lanes.ph + at);
        hn::Store(low[m], d, lanes.low + at);
        hn::Store(high[m], d, lanes.high + at);
    }
}

/// Stores the quarters of a vector, each four frames of one lane, to rows four lanes apart.
template <class D> HWY_INLINE void StoreQuads(D d, hn::Vec<D> v, float *row) {
    if constexpr (hn::MaxLanes(D()) == 4) {
        hn::Store(v, d, row);
    } else {
        const hn::Half<D> half;
        StoreQuads(half, hn::LowerHalf(half, v), row);
        StoreQuads(half, hn::UpperHalf(half, v), row + hn::MaxLanes(half) * row_stride);
    }
}

/// Turns phases and amplitudes, frame by frame, into samples, lane by lane.
template <bool soft>
HWY_INLINE void SoundRows(const float *ph, const float *a, size_t frames, float *row) {
    const Floats d;
    const hn::RepartitionToWide<Floats> pairs;
    for (size_t n = 0; n < frames; n += 4) {
        for (size_t m = 0; m < parts; ++m) {
            Vector s[4];
            for (size_t r = 0; r < 4; ++r) {
                const size_t at = (n + r) * lane_count + m * width;
                s[r] = Sample<soft>(hn::Load(d, ph + at), hn::Load(d, a + at));
            }
            const auto low01 = hn::BitCast(pairs, hn::InterleaveLower(d, s[0], s[1]));
            const auto low23 = hn::BitCast(pairs, hn::InterleaveLower(d, s[2], s[3]));
            const auto high01 = hn::BitCast(pairs, hn::InterleaveUpper(d, s[0], s[1]));
            const auto high23 = hn::BitCast(pairs, hn::InterleaveUpper(d, s[2], s[3]));
            float *to = row + m * width * row_stride + n;
            StoreQuads(d, hn::BitCast(d, hn::InterleaveLower(pairs, low01, low23)), to);
            StoreQuads(d, hn::BitCast(d, hn::InterleaveUpper(pairs, low01, low23)),
                       to + row_stride);
            StoreQuads(d, hn::BitCast(d, hn::InterleaveLower(pairs, high01, high23)),
                       to + 2 * row_stride);
            StoreQuads(d, hn::BitCast(d, hn::InterleaveUpper(pairs, high01, high23)),
                       to + 3 * row_stride);
        }
    }
}

/// Adds the rows to the output, each frame's lanes in their order.
HWY_INLINE void AddRows(const float *row, int32_t count, size_t frames, float *out) {
    const Floats d;
    size_t n = 0;
    for (; n + 4 * width <= frames; n += 4 * width) {
        Vector sum[4];
        for (size_t r = 0; r < 4; ++r) {
            sum[r] = hn::LoadU(d, out + n + r * width);
        }
        for (int32_t l = 0; l < count; ++l) {
            const float *from = row + static_cast<size_t>(l) * row_stride + n;
            for (size_t r = 0; r < 4; ++r) {
                sum[r] = hn::Add(sum[r], hn::Load(d, from + r * width));
            }
        }
        for (size_t r = 0; r < 4; ++r) {
            hn::StoreU(sum[r], d, out + n + r * width);
        }
    }
    for (; n < frames; ++n) {
        float sum = out[n];
        for (int32_t l = 0; l < count; ++l) {
            sum += row[static_cast<size_t>(l) * row_stride + n];
        }
        out[n] = sum;
    }
}

/// The frame of the block that `frame` is, or far behind it.
int32_t LocalFrame(int64_t frame, int64_t from) {
    return static_cast<int32_t>(std::min<int64_t>(frame - from, INT_MAX));
}

/// Silences a lane until its next event. The phase lies where nothing special happens.
void Idle(Lanes &lanes, size_t l) {
    lanes.a[l] = lanes.da[l] = lanes.f[l] = lanes.df[l] = 0.0f;
    lanes.ph[l] = 4.0f;
}

void EnterLane(Lanes &lanes, size_t l, const Voice &voice, int64_t from) {
    Idle(lanes, l);
    lanes.low[l] = lanes.high[l] = 4.0f;
    lanes.event[l] = LocalFrame(voice.stop, from);
    lanes.next[l] = voice.next;
    if (voice.first < from) {
        lanes.a[l] = voice.o.a;
        lanes.da[l] = voice.o.da;
        lanes.f[l] = voice.o.f;
        lanes.df[l] = voice.o.df;
        lanes.ph[l] = voice.o.ph;
    }
}

/// Takes up the segment that starts at the lane's event.
void StartSegment(Lanes &lanes, size_t l, const Voice &voice, int64_t from) {
    if (lanes.event[l] == voice.first - from) {
        lanes.ph[l] = voice.o.ph;
    }
    if (lanes.next[l] == voice.behind) {
        const float ph = lanes.ph[l];
        Idle(lanes, l);
        lanes.ph[l] = ph; // not a number stays to be seen
        lanes.event[l] = INT_MAX;
        return;
    }
    const Segment &segment = *lanes.next[l]++;
    lanes.a[l] = segment.a;
    lanes.da[l] = segment.da;
    lanes.f[l] = segment.f;
    lanes.df[l] = segment.df;
    lanes.event[l] = LocalFrame(segment.stop, from);
}

void LeaveLane(const Lanes &lanes, size_t l, Voice &voice, int64_t from) {
    voice.o = {lanes.a[l], lanes.da[l], lanes.f[l], lanes.df[l], lanes.ph[l]};
    voice.next = lanes.next[l];
    voice.stop = lanes.event[l] == INT_MAX ? voice.next[-1].stop : from + lanes.event[l];
}

/// A voice rendered by the plain law because its phase runs away. It is tried again while that
/// has not happened often.
void RenderWild(Voice &voice, int64_t from, int64_t to, float per_hz, float *out) {
    constexpr uint8_t most_strikes = 4;
    plain_voice(voice, from, to, per_hz, out);
    voice.wild = voice.strikes >= most_strikes || !(voice.o.ph >= -tame && voice.o.ph <= tame);
}

void Strike(Voice &voice) {
    voice.wild = true;
    ++voice.strikes;
}

/// Runs a voice, whose values the caller keeps, over `frames` frames. Returns whether its phase
/// stayed where the vector sine is exact.
bool AdvanceVoice(Voice &voice, int64_t from, size_t frames, float per_hz, float *ph_out,
                  float *a_out) {
    float low = 4.0f, high = 4.0f;
    size_t n = 0;
    while (n < frames) {
        if (from + static_cast<int64_t>(n) == voice.stop) {
            start_next_segment(voice);
        }
        const size_t stop =
            static_cast<size_t>(std::min(voice.stop - from, static_cast<int64_t>(frames)));
        Oscillator o = voice.o;
        for (; n < stop; ++n) {
            o.a += o.da;
            o.f += o.df;
            o.ph += o.f * per_hz;
            low = o.ph < low ? o.ph : low;
            high = o.ph > high ? o.ph : high;
            if (o.ph > four_pi_f) {
                o.ph = (o.ph - two_pi_head) - two_pi_rest;
            }
            ph_out[n] = o.ph;
            a_out[n] = o.a;
        }
        voice.o = o;
    }
    return low >= -tame && high <= tame && voice.o.ph == voice.o.ph;
}

/// One voice by itself: scalar recurrence, then the sine in vectors.
void RenderOne(Voice &voice, int64_t from, int64_t to, float per_hz, LaneScratch &scratch,
               float *out) {
    constexpr int64_t worth = 16; // frames
    const int64_t first = std::max(from, voice.first), end = std::min(to, voice.end);
    if (end - first < worth) {
        plain_voice(voice, from, to, per_hz, out);
        return;
    }
    if (voice.wild) {
        RenderWild(voice, from, to, per_hz, out);
        return;
    }
    const size_t frames = static_cast<size_t>(end - first);
    Voice ahead = voice;
    if (!AdvanceVoice(ahead, first, frames, per_hz, scratch.ph, scratch.a)) {
        Strike(voice);
        RenderWild(voice, from, to, per_hz, out);
        return;
    }
    voice = ahead;
    const Floats d;
    float *to_add = out + (first - from);
    float *samples = scratch.row;
    for (size_t n = 0; n < frames; n += width) {
        const Vector ph = hn::Load(d, scratch.ph + n), a = hn::Load(d, scratch.a + n);
        hn::Store(Sample<true>(ph, a), d, samples + n);
    }
    AddRows(samples, 1, frames, to_add);
}

/// Runs the lanes over a chunk, split wherever a lane changes its slopes.
HWY_INLINE void AdvanceChunk(Lanes &lanes, Voice *const *voices, int64_t from, int32_t chunk,
                             int32_t frames, float per_hz, LaneScratch &scratch) {
    int32_t n = chunk;
    while (n < chunk + frames) {
        int32_t stop = chunk + frames;
        for (size_t l = 0; l < lane_count; ++l) {
            if (lanes.event[l] == n) {
                StartSegment(lanes, l, *voices[l], from);
            }
            stop = std::min(stop, lanes.event[l]);
        }
        const size_t at = static_cast<size_t>(n - chunk) * lane_count;
        Advance(lanes, per_hz, scratch.ph + at, scratch.a + at, static_cast<size_t>(stop - n));
        n = stop;
    }
}

/// Minus zero changes no sum, so it stands where a lane has no frames.
void ClearRow(float *row, int64_t first, int64_t end) {
    std::fill(row + first, row + end, -0.0f);
}

/// Puts a lane's frames right: plain where the vectors could not, nothing outside the voice.
void SettleRow(const Lanes &lanes, size_t l, Voice &voice, int64_t from, int64_t to, float per_hz,
               float *row) {
    const bool exact = lanes.low[l] >= -tame && lanes.high[l] <= tame && lanes.ph[l] == lanes.ph[l];
    if (!voice.wild && exact) {
        ClearRow(row, 0, std::max<int64_t>(voice.first - from, 0));
        ClearRow(row, std::min(voice.end, to) - from, to - from);
        LeaveLane(lanes, l, voice, from);
        return;
    }
    if (!voice.wild) {
        Strike(voice);
    }
    ClearRow(row, 0, to - from);
    RenderWild(voice, from, to, per_hz, row);
}

void RenderLanes(Voice *const *voices, int32_t count, int64_t from, int64_t to, float per_hz,
                 LaneScratch &scratch, float *out) {
    Lanes lanes;
    for (int32_t i = 0; i < lane_count; ++i) {
        const size_t l = static_cast<size_t>(i);
        if (i < count && !voices[l]->wild) {
            EnterLane(lanes, l, *voices[l], from);
        } else {
            Idle(lanes, l);
            lanes.low[l] = lanes.high[l] = 4.0f;
            lanes.event[l] = INT_MAX;
        }
    }
    const int32_t frames = static_cast<int32_t>(to - from);
    for (int32_t chunk = 0; chunk < frames; chunk += chunk_frames) {
        const int32_t here = std::min(chunk_frames, frames - chunk);
        AdvanceChunk(lanes, voices, from, chunk, here, per_hz, scratch);
        const bool soft = *std::min_element(lanes.low, lanes.low + lane_count) <= pi_f;
        const auto sound = soft ? SoundRows<true> : SoundRows<false>;
        sound(scratch.ph, scratch.a, static_cast<size_t>(here), scratch.row + chunk);
    }
    for (size_t l = 0; l < static_cast<size_t>(count); ++l) {
        SettleRow(lanes, l, *voices[l], from, to, per_hz, scratch.row + l * row_stride);
    }
    AddRows(scratch.row, count, static_cast<size_t>(frames), out);
}

void RenderVoices(Voice *const *voices, int32_t count, int64_t from, int64_t to, float per_hz,
                  LaneScratch &scratch, float *out) {
    int64_t first = to, end = from, busy = 0;
    int32_t in_lanes = 0;
    for (int32_t l = 0; l < count; ++l) {
        const Voice &voice = *voices[l];
        const int64_t begin = std::max(voice.first, from), stop = std::min(voice.end, to);
        first = std::min(first, begin);
        end = std::max(end, stop);
        if (!voice.wild) {
            busy += stop - begin;
            ++in_lanes;
        }
    }
    // All lanes cost as much as some voices one by one, over the same frames.
    constexpr int64_t voices_worth = 6;
    if (in_lanes > 4 && busy >= voices_worth * (end - first)) {
        RenderLanes(voices, count, first, end, per_hz, scratch, out + (first - from));
        return;
    }
    for (int32_t l = 0; l < count; ++l) {
        RenderOne(*voices[l], from, to, per_hz, scratch, out);
    }
}

void VectorSine(const float *x, float *sine, size_t count) {
    const Floats d;
    size_t n = 0;
    for (; n + width <= count; n += width) {
        hn::StoreU(Sine(hn::LoadU(d, x + n)), d, sine + n);
    }
    alignas(64) float rest[width] = {};
    std::copy(x + n, x + count, rest);
    hn::Store(Sine(hn::Load(d, rest)), d, rest);
    std::copy(rest, rest + (count - n), sine + n);
}

#endif

bool HasVectors() {
    return HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128;
}

const char *VectorKind() {
    return hwy::TargetName(HWY_TARGET);
}

} // namespace HWY_NAMESPACE
} // namespace synth_kernels
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace synth_kernels {
HWY_EXPORT(RenderVoices);
HWY_EXPORT(VectorSine);
HWY_EXPORT(HasVectors);
HWY_EXPORT(VectorKind);
} // namespace synth_kernels

bool vectors_at_hand() {
    // Asking SupportedTargets() here would undo DisableTargets() for the dispatch.
    using namespace synth_kernels;
    return HWY_DYNAMIC_DISPATCH(HasVectors)();
}

void render_voices(Voice *const *voices, int32_t count, int64_t from, int64_t to, float per_hz,
                   LaneScratch &scratch, float *out) {
    using namespace synth_kernels;
    HWY_DYNAMIC_DISPATCH(RenderVoices)(voices, count, from, to, per_hz, scratch, out);
}

void vector_sine(const float *x, float *sine, size_t count) {
    using namespace synth_kernels;
    HWY_DYNAMIC_DISPATCH(VectorSine)(x, sine, count);
}

const char *vector_kind() {
    using namespace synth_kernels;
    return HWY_DYNAMIC_DISPATCH(VectorKind)();
}

void plain_voice(Voice &voice, int64_t from, int64_t to, float per_hz, float *out) {
    int64_t n = std::max(from, voice.first);
    const int64_t end = std::min(to, voice.end);
    while (n < end) {
        if (n == voice.stop) {
            start_next_segment(voice);
        }
        Oscillator o = voice.o;
        for (const int64_t stop = std::min(voice.stop, end); n < stop; ++n) {
            advance(o, per_hz);
            out[n - from] += sample_at(o.ph, o.a);
        }
        voice.o = o;
    }
}
#endif
