// The records of the store: types, widths and the order of their fields.
#include "store/store.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <type_traits>

namespace {

/// Each offset is above the one before it.
template <size_t count> bool ascending(const size_t (&offsets)[count]) {
    for (size_t i = 1; i < count; ++i) {
        if (offsets[i] <= offsets[i - 1]) {
            return false;
        }
    }
    return true;
}

template <typename Field, typename Wanted> constexpr bool same = std::is_same_v<Field, Wanted>;

TEST(Records, BreakpointFieldsInOrder) {
    EXPECT_TRUE(ascending({offsetof(Breakpoint, time), offsetof(Breakpoint, freq),
                           offsetof(Breakpoint, amp), offsetof(Breakpoint, phase),
                           offsetof(Breakpoint, logfreq), offsetof(Breakpoint, ampunits),
                           offsetof(Breakpoint, selected), offsetof(Breakpoint, scratch)}));
}

TEST(Records, PartialEvalFieldsInOrder) {
    EXPECT_TRUE(ascending({offsetof(PartialEval, start), offsetof(PartialEval, dur),
                           offsetof(PartialEval, avgfreq), offsetof(PartialEval, avgamp),
                           offsetof(PartialEval, reserved1), offsetof(PartialEval, reserved2),
                           offsetof(PartialEval, spare1), offsetof(PartialEval, spare2),
                           offsetof(PartialEval, selected)}));
}

TEST(Records, Widths) {
    EXPECT_TRUE((same<decltype(Breakpoint::time), float>));
    EXPECT_TRUE((same<decltype(Breakpoint::logfreq), float>));
    EXPECT_TRUE((same<decltype(Breakpoint::ampunits), uint16_t>));
    EXPECT_TRUE((same<decltype(Breakpoint::selected), uint16_t>));
    EXPECT_TRUE((same<decltype(Breakpoint::scratch), float>));
    EXPECT_TRUE((same<decltype(PartialEval::avgfreq), float>));
    EXPECT_TRUE((same<decltype(PartialEval::reserved1), uint16_t>));
    EXPECT_TRUE((same<decltype(PartialEval::reserved2), uint64_t>));
    EXPECT_TRUE((same<decltype(PartialEval::selected), int16_t>));
    EXPECT_EQ(sizeof(PartialIndexEntry), 8u);
}

} // namespace
