#include "live/stall.h"

namespace {

constexpr auto longest_gap = std::chrono::seconds(2);
constexpr auto longest_absence = std::chrono::milliseconds(500);

} // namespace

void StallWatch::reset(Time now) {
    seen_at = looked_at = now;
}

bool StallWatch::stalled(uint64_t count, Time now) {
    if (count != seen_count || now - looked_at > longest_absence) {
        seen_count = count;
        seen_at = now;
    }
    looked_at = now;
    return now - seen_at > longest_gap;
}
