// Compiled once for each kind of vector; see log_kernels.h.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "interact/log_kernels.cpp"
// As in the oscillator bank, so that all kernels run on the same kinds.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV | HWY_SSSE3)
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <hwy/contrib/math/math-inl.h>

#include "interact/log_kernels.h"
#include "interact/log_position.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

HWY_BEFORE_NAMESPACE();
namespace log_kernels {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using Doubles = hn::CappedTag<double, 8>;
using Floats = hn::Rebind<float, Doubles>;
using Wide = hn::Vec<Doubles>;
using Narrow = hn::Vec<Floats>;

// The logarithms and exponentials here, those of the C library and the few operations after them
// are each off by no more than some 2^-50 of their result. Where all numbers that lie so near
// round to one float, both ways lead to it; a float in two million is left to the plain way.
constexpr double doubt = 0x1p-45;

/// Rounds to floats. False if one of them is in doubt, or not a number.
HWY_INLINE bool RoundsSafely(Wide exact, Narrow &rounded) {
    const Doubles wide;
    const Floats d;
    const Narrow inner = hn::DemoteTo(d, hn::Mul(exact, hn::Set(wide, 1.0 - doubt)));
    rounded = hn::DemoteTo(d, hn::Mul(exact, hn::Set(wide, 1.0 + doubt)));
    return hn::AllTrue(d, hn::Eq(inner, rounded));
}

/// Positions by the axis of so many octaves, ordinary ones.
struct Positions {
    const LogAxis &axis;
    double scale; // positions in a natural logarithm of 1

    HWY_INLINE bool operator()(Narrow freq, Narrow &place) const {
        const Doubles wide;
        const Floats d;
        const Narrow ratio = hn::Div(freq, hn::Set(d, axis.lowest));
        const auto ordinary =
            hn::And(hn::Ge(ratio, hn::Set(d, FLT_MIN)), hn::Le(ratio, hn::Set(d, FLT_MAX)));
        if (!hn::AllTrue(d, ordinary)) {
            return false;
        }
        const Wide log = hn::Log(wide, hn::PromoteTo(wide, ratio));
        return RoundsSafely(hn::Mul(log, hn::Set(wide, scale)), place);
    }

    float plain(float freq) const {
        return log_position(axis, freq);
    }
};

struct Frequencies {
    const LogAxis &axis;

    HWY_INLINE bool operator()(Narrow place, Narrow &freq) const {
        const Doubles wide;
        const Wide octaves = hn::Mul(hn::Set(wide, axis.span), hn::PromoteTo(wide, place));
        const Wide exponent = hn::Mul(octaves, hn::Set(wide, freq_octave));
        if (!hn::AllTrue(wide, hn::Lt(hn::Abs(exponent), hn::Set(wide, 80.0)))) {
            return false;
        }
        const Wide factor = hn::Exp(wide, exponent);
        const double lowest = axis.lowest;
        return RoundsSafely(hn::Mul(factor, hn::Set(wide, lowest)), freq);
    }

    float plain(float place) const {
        return static_cast<float>(freq_at_log_position(axis, place));
    }
};

/// Vectors where `law` can answer by them, the plain form elsewhere.
template <class Law>
HWY_INLINE void MapAll(const Law &law, const float *from, float *to, size_t count) {
    const Floats d;
    constexpr size_t width = hn::MaxLanes(Floats());
    for (size_t n = 0; n < count; n += width) {
        Narrow result;
        if (n + width <= count && law(hn::LoadU(d, from + n), result)) {
            hn::StoreU(result, d, to + n);
            continue;
        }
        const size_t end = std::min(n + width, count);
        std::transform(from + n, from + end, to + n, [&](float each) { return law.plain(each); });
    }
}

/// An axis on which scaling once and dividing twice come to the same within the doubt.
bool Ordinary(double extent) {
    return std::fabs(extent) > 1e-9 && std::fabs(extent) < 1e9;
}

void LogPositions(const LogAxis &axis, const float *freqs, float *places, size_t count) {
    if (!Ordinary(axis.octaves)) {
        std::transform(freqs, freqs + count, places,
                       [&](float freq) { return log_position(axis, freq); });
        return;
    }
    MapAll(Positions{axis, 1.0 / (place_octave * axis.octaves)}, freqs, places, count);
}

void FreqsAtLogPositions(const LogAxis &axis, const float *places, float *freqs, size_t count) {
    MapAll(Frequencies{axis}, places, freqs, count);
}

} // namespace HWY_NAMESPACE
} // namespace log_kernels
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace log_kernels {
HWY_EXPORT(LogPositions);
HWY_EXPORT(FreqsAtLogPositions);
} // namespace log_kernels

void log_positions(const LogAxis &axis, const float *freqs, float *places, int32_t n) {
    using namespace log_kernels;
    HWY_DYNAMIC_DISPATCH(LogPositions)(axis, freqs, places, static_cast<size_t>(n));
}

void freqs_at_log_positions(const LogAxis &axis, const float *places, float *freqs, int32_t n) {
    using namespace log_kernels;
    HWY_DYNAMIC_DISPATCH(FreqsAtLogPositions)(axis, places, freqs, static_cast<size_t>(n));
}
#endif
