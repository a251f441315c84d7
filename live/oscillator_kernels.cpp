// Compiled once for each kind of vector; see oscillator_kernels.h.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "live/oscillator_kernels.cpp"
// Vectors of unknown length cannot be kept in arrays.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV | HWY_SSSE3)
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "live/oscillator_kernels.h"

#include <algorithm>
#include <cmath>

HWY_BEFORE_NAMESPACE();
namespace oscillator_kernels {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

void SumBlock(const OscillatorBlock &block, uint32_t frames, float *sum) {
    sum_block_plain(block, frames, sum);
}

#else

using Floats = hn::CappedTag<float, 16>;
using Ints = hn::Rebind<int32_t, Floats>;
using Unsigned = hn::Rebind<uint32_t, Floats>;
using Vector = hn::Vec<Floats>;
using IntVector = hn::Vec<Ints>;
constexpr size_t width = hn::MaxLanes(Floats()); // 4, 8 or 16 oscillators side by side

/// The lanes of one group. Unused ones stay silent at index 0.
struct Lanes {
    alignas(64) float freq[width];
    alignas(64) float df[width];
    alignas(64) float amp[width];
    alignas(64) float da[width];
    alignas(64) int32_t index[width]; // phase within the table
    alignas(64) int32_t steps[width]; // sum of the steps over the block
    int32_t number[width];            // which oscillator
    size_t count;
};

/// True where the remainder of a phase is a conditional subtraction throughout the block: the
/// line of the frequency is monotonic, so its ends tell.
bool Steady(const OscillatorBlock &block, int32_t i, uint32_t frames) {
    const float first = block.df[i] * 0.0f + block.freq[i];
    const float last = block.df[i] * static_cast<float>(frames - 1) + block.freq[i];
    const float size = static_cast<float>(block.size);
    return first >= 0.0f && last >= 0.0f && first < size && last < size && block.phase[i] >= 0 &&
           block.size <= 1 << 19;
}

/// Nothing that such an oscillator adds changes a bit of the sum.
bool Silent(const OscillatorBlock &block, int32_t i) {
    return block.amp[i] == 0.0f && block.da[i] == 0.0f;
}

/// The next phase index of all lanes: one step may lead past the table's end once.
HWY_INLINE IntVector Wrapped(IntVector index, IntVector size) {
    const Unsigned du;
    const auto ahead = hn::BitCast(du, index);
    const auto behind = hn::BitCast(du, hn::Sub(index, size)); // vast where it is negative
    return hn::BitCast(Ints(), hn::Min(ahead, behind));
}

/// Adds, for four frames, quads of lanes 0, 4, 8, ... of `v0`, then of `v1` and so on.
template <class D>
HWY_INLINE hn::Vec<hn::FixedTag<float, 4>> AddQuads(D, hn::Vec<hn::FixedTag<float, 4>> sum,
                                                    hn::Vec<D> v0, hn::Vec<D> v1, hn::Vec<D> v2,
                                                    hn::Vec<D> v3) {
    if constexpr (hn::MaxLanes(D()) == 4) {
        return hn::Add(hn::Add(hn::Add(hn::Add(sum, v0), v1), v2), v3);
    } else {
        const hn::Half<D> half;
        sum = AddQuads(half, sum, hn::LowerHalf(half, v0), hn::LowerHalf(half, v1),
                       hn::LowerHalf(half, v2), hn::LowerHalf(half, v3));
        return AddQuads(half, sum, hn::UpperHalf(half, v0), hn::UpperHalf(half, v1),
                        hn::UpperHalf(half, v2), hn::UpperHalf(half, v3));
    }
}

/// Turns four frames of all lanes over and adds them to sum[0..4), the lanes in their order.
HWY_INLINE void AddFourFrames(const Vector *s, float *sum) {
    const Floats d;
    const hn::FixedTag<float, 4> quad;
    const hn::RepartitionToWide<Floats> pairs;
    const auto low01 = hn::BitCast(pairs, hn::InterleaveLower(d, s[0], s[1]));
    const auto low23 = hn::BitCast(pairs, hn::InterleaveLower(d, s[2], s[3]));
    const auto high01 = hn::BitCast(pairs, hn::InterleaveUpper(d, s[0], s[1]));
    const auto high23 = hn::BitCast(pairs, hn::InterleaveUpper(d, s[2], s[3]));
    const auto added =
        AddQuads(d, hn::LoadU(quad, sum), hn::BitCast(d, hn::InterleaveLower(pairs, low01, low23)),
                 hn::BitCast(d, hn::InterleaveUpper(pairs, low01, low23)),
                 hn::BitCast(d, hn::InterleaveLower(pairs, high01, high23)),
                 hn::BitCast(d, hn::InterleaveUpper(pairs, high01, high23)));
    hn::StoreU(added, quad, sum);
}

/// Adds a group to the sums. Frames come by four; the last ones may lie behind the block, where
/// no phase moves and the sums are not used.
void AddGroup(Lanes &lanes, const float *table, int32_t table_size, uint32_t frames, float *sum) {
    const Floats d;
    const Ints di;
    const Vector freq = hn::Load(d, lanes.freq), df = hn::Load(d, lanes.df);
    const Vector amp = hn::Load(d, lanes.amp), da = hn::Load(d, lanes.da);
    const IntVector size = hn::Set(di, table_size);
    IntVector index = hn::Load(di, lanes.index), steps = hn::Zero(di);
    const auto frame = [&](uint32_t n) HWY_ATTR {
        const Vector k = hn::Set(d, static_cast<float>(n));
        const IntVector step = hn::ConvertTo(di, hn::Add(hn::Mul(df, k), freq));
        steps = hn::Add(steps, step);
        index = Wrapped(hn::Add(index, step), size);
        return hn::Mul(hn::GatherIndex(d, table, index), hn::Add(hn::Mul(da, k), amp));
    };
    uint32_t n = 0;
    Vector s[4];
    for (; n + 4 <= frames; n += 4) {
        for (uint32_t r = 0; r < 4; ++r) {
            s[r] = frame(n + r);
        }
        AddFourFrames(s, sum + n);
    }
    if (n < frames) {
        for (uint32_t r = 0; r < 4; ++r) {
            s[r] = n + r < frames ? frame(n + r) : hn::Zero(d);
        }
        AddFourFrames(s, sum + n);
    }
    hn::Store(steps, di, lanes.steps);
}

void Clear(Lanes &lanes) {
    std::fill_n(lanes.freq, width, 0.0f);
    std::fill_n(lanes.df, width, 0.0f);
    std::fill_n(lanes.amp, width, 0.0f);
    std::fill_n(lanes.da, width, 0.0f);
    std::fill_n(lanes.index, width, 0);
    lanes.count = 0;
}

void Enter(Lanes &lanes, const OscillatorBlock &block, int32_t i) {
    const size_t l = lanes.count++;
    lanes.freq[l] = block.freq[i];
    lanes.df[l] = block.df[i];
    lanes.amp[l] = block.amp[i];
    lanes.da[l] = block.da[i];
    lanes.index[l] = block.phase[i] % block.size;
    lanes.number[l] = i;
}

/// Sums what has been gathered and writes the phases back.
void Flush(Lanes &lanes, const OscillatorBlock &block, uint32_t frames, float *sum) {
    if (lanes.count == 0) {
        return;
    }
    AddGroup(lanes, block.table, block.size, frames, sum);
    for (size_t l = 0; l < lanes.count; ++l) {
        block.phase[lanes.number[l]] += lanes.steps[l];
    }
    Clear(lanes);
}

/// One oscillator by the plain law, added to the sums.
void AddOne(const OscillatorBlock &block, int32_t i, uint32_t frames, float *sum) {
    int32_t phase = block.phase[i];
    for (uint32_t n = 0; n < frames; ++n) {
        const float k = static_cast<float>(n);
        phase += whole_hertz(block.df[i] * k + block.freq[i]);
        sum[n] += block.table[table_index(phase, block.size)] * (block.da[i] * k + block.amp[i]);
    }
    block.phase[i] = phase;
}

/// The phase of an oscillator that is not heard runs on.
void AdvanceSilently(const OscillatorBlock &block, int32_t i, uint32_t frames) {
    if (block.df[i] == 0.0f) {
        block.phase[i] += static_cast<int32_t>(frames) * whole_hertz(block.freq[i]);
        return;
    }
    uint32_t n = 0;
    if (Steady(block, i, frames)) {
        const Floats d;
        const Ints di;
        const Vector freq = hn::Set(d, block.freq[i]), df = hn::Set(d, block.df[i]);
        Vector k = hn::Iota(d, 0.0f);
        IntVector steps = hn::Zero(di);
        for (; n + width <= frames; n += static_cast<uint32_t>(width)) {
            steps = hn::Add(steps, hn::ConvertTo(di, hn::Add(hn::Mul(df, k), freq)));
            k = hn::Add(k, hn::Set(d, static_cast<float>(width)));
        }
        block.phase[i] += hn::GetLane(hn::SumOfLanes(di, steps));
    }
    for (; n < frames; ++n) {
        block.phase[i] += whole_hertz(block.df[i] * static_cast<float>(n) + block.freq[i]);
    }
}

/// Whether groups are worth their trouble: they cost as much as a few oscillators one by one,
/// and those that are not steady gain nothing.
bool WorthVectors(const OscillatorBlock &block, uint32_t frames) {
    constexpr int32_t few = 6;
    if (frames == 0 || block.count < few) {
        return false;
    }
    int32_t wild = 0;
    for (int32_t i = 0; i < block.count; ++i) {
        wild += Steady(block, i, frames) ? 0 : 1;
    }
    return wild <= block.count / 8;
}

void SumBlock(const OscillatorBlock &block, uint32_t frames, float *sum) {
    if (!WorthVectors(block, frames)) {
        sum_block_plain(block, frames, sum);
        return;
    }
    std::fill_n(sum, frames, 0.0f);
    Lanes lanes;
    Clear(lanes);
    for (int32_t i = 0; i < block.count; ++i) {
        if (Silent(block, i)) {
            AdvanceSilently(block, i, frames);
        } else if (Steady(block, i, frames)) {
            Enter(lanes, block, i);
        } else {
            Flush(lanes, block, frames, sum);
            AddOne(block, i, frames, sum);
        }
        if (lanes.count == width) {
            Flush(lanes, block, frames, sum);
        }
    }
    Flush(lanes, block, frames, sum);
}

#endif

bool HasVectors() {
    return HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128;
}

const char *VectorKind() {
    return hwy::TargetName(HWY_TARGET);
}

} // namespace HWY_NAMESPACE
} // namespace oscillator_kernels
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace oscillator_kernels {
HWY_EXPORT(SumBlock);
HWY_EXPORT(HasVectors);
HWY_EXPORT(VectorKind);
} // namespace oscillator_kernels

bool oscillators_have_vectors() {
    using namespace oscillator_kernels;
    return HWY_DYNAMIC_DISPATCH(HasVectors)();
}

const char *oscillator_vector_kind() {
    using namespace oscillator_kernels;
    return HWY_DYNAMIC_DISPATCH(VectorKind)();
}

void sum_block_in_vectors(const OscillatorBlock &block, uint32_t frames, float *sum) {
    using namespace oscillator_kernels;
    HWY_DYNAMIC_DISPATCH(SumBlock)(block, frames, sum);
}
#endif
