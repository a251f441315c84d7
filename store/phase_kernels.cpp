// Compiled once for each kind of vector; see phase_kernels.h.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "store/phase_kernels.cpp"
// Vectors of unknown length cannot be kept in arrays. SSSE3 is left out as in the oscillator bank,
// so that all kernels run on the same kinds.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV | HWY_SSSE3)
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "store/phase.h"
#include "store/phase_kernels.h"

#include <algorithm>
#include <cmath>

HWY_BEFORE_NAMESPACE();
namespace phase_kernels {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

constexpr int32_t lane_count = 16; // chains side by side
constexpr int32_t chunk = 32;      // steps of all chains in one go
constexpr int32_t worth = 3;       // with fewer chains than this the lanes do not pay

using Doubles = hn::CappedTag<double, 8>;
using Floats = hn::Rebind<float, Doubles>;
constexpr size_t width = hn::MaxLanes(Doubles());
constexpr size_t parts = lane_count / width;

/// The chains that run now. A lane of none has nothing left.
struct Lanes {
    Breakpoint *at[lane_count]; // the last point that has its phase
    int32_t left[lane_count];   // points that have none yet
    alignas(64) float phase[lane_count];
    alignas(64) float steps[chunk * lane_count]; // cycles of each segment, then phases
};

/// What std::modf leaves of a float, sign of zero included: exact in single precision.
HWY_INLINE hn::Vec<Floats> FractionOf(hn::Vec<Floats> cycles) {
    const Floats d;
    const auto all_whole = hn::Set(d, 8388608.0f); // from here on a float has no fraction
    const auto rest = hn::Sub(cycles, hn::Trunc(cycles));
    const auto whole = hn::Ge(hn::Abs(cycles), all_whole);
    return hn::CopySign(hn::IfThenZeroElse(whole, rest), cycles);
}

/// One step from the phase `before`; the widths are those of advance_phase.
HWY_INLINE hn::Vec<Floats> Advance(hn::Vec<Floats> before, hn::Vec<Floats> cycles) {
    const Doubles wide;
    const Floats d;
    const auto turn = hn::Set(wide, two_pi), part = hn::PromoteTo(wide, FractionOf(cycles));
    const auto turns = hn::Add(hn::Div(hn::PromoteTo(wide, before), turn), part);
    const auto position = hn::DemoteTo(d, turns), one = hn::Set(d, 1.0f);
    const auto wrapped = hn::IfThenElse(hn::Ge(position, one), hn::Sub(position, one), position);
    return hn::DemoteTo(d, hn::Mul(hn::PromoteTo(wide, wrapped), turn));
}

HWY_INLINE void AdvanceAll(Lanes &lanes, int32_t count) {
    const Floats d;
    hn::Vec<Floats> phase[parts];
    for (size_t m = 0; m < parts; ++m) {
        phase[m] = hn::Load(d, lanes.phase + m * width);
    }
    float *step = lanes.steps;
    for (int32_t n = 0; n < count; ++n) {
        for (size_t m = 0; m < parts; ++m, step += width) {
            phase[m] = Advance(phase[m], hn::Load(d, step));
            hn::Store(phase[m], d, step);
        }
    }
    for (size_t m = 0; m < parts; ++m) {
        hn::Store(phase[m], d, lanes.phase + m * width);
    }
}

/// The cycles of the next segments of lane k.
HWY_INLINE void ReadLane(Lanes &lanes, size_t k, int32_t count) {
    const Breakpoint *points = lanes.at[k];
    float *step = lanes.steps + k;
    for (int32_t n = 0; n < count; ++n, step += lane_count) {
        *step = lanes.left[k] > 0 ? segment_cycles(points + n) : 0.0f;
    }
}

HWY_INLINE void WriteLane(Lanes &lanes, size_t k, int32_t count) {
    if (lanes.left[k] == 0) {
        return;
    }
    Breakpoint *points = lanes.at[k];
    if (std::isnan(lanes.phase[k])) {
        // Which of two such numbers lasts is the plain law's choice.
        chain_phases(points, count + 1);
        lanes.phase[k] = points[count].phase;
    } else {
        const float *step = lanes.steps + k;
        for (int32_t n = 1; n <= count; ++n, step += lane_count) {
            points[n].phase = *step;
        }
    }
    lanes.at[k] += count;
    lanes.left[k] -= count;
}

/// Puts waiting runs into the lanes that have nothing left; how many lanes then run.
int32_t FillLanes(Lanes &lanes, const PhaseRun *&run, const PhaseRun *end) {
    int32_t running = 0;
    for (size_t k = 0; k < lane_count; ++k) {
        for (; lanes.left[k] == 0 && run != end; ++run) {
            if (run->n > 1) {
                lanes.at[k] = run->points;
                lanes.left[k] = run->n - 1;
                lanes.phase[k] = run->points->phase;
            }
        }
        running += lanes.left[k] > 0 ? 1 : 0;
    }
    return running;
}

/// The longest stretch over which no lane ends.
int32_t CommonSteps(const Lanes &lanes) {
    int32_t count = chunk;
    for (const int32_t left : lanes.left) {
        count = left > 0 ? std::min(count, left) : count;
    }
    return count;
}

void ChainRuns(const PhaseRun *run, int32_t runs) {
    const PhaseRun *end = run + runs;
    Lanes lanes = {};
    while (FillLanes(lanes, run, end) >= worth) {
        const int32_t count = CommonSteps(lanes);
        for (size_t k = 0; k < lane_count; ++k) {
            ReadLane(lanes, k, count);
        }
        AdvanceAll(lanes, count);
        for (size_t k = 0; k < lane_count; ++k) {
            WriteLane(lanes, k, count);
        }
    }
    for (size_t k = 0; k < lane_count; ++k) {
        if (lanes.left[k] > 0) {
            chain_phases(lanes.at[k], lanes.left[k] + 1);
        }
    }
}

} // namespace HWY_NAMESPACE
} // namespace phase_kernels
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace phase_kernels {
HWY_EXPORT(ChainRuns);
} // namespace phase_kernels

void chain_side_by_side(const PhaseRun *runs, int32_t count) {
    using namespace phase_kernels;
    HWY_DYNAMIC_DISPATCH(ChainRuns)(runs, count);
}
#endif
