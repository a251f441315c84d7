// tests/support/fixture.h -- small stores made by hand, which most unit tests start from.
#pragma once

#include "store/store.h"

#include <gtest/gtest.h>
#include <vector>

struct Point {
    float time, freq, amp;
};
using Partial = std::vector<Point>;

/// Replaces the store by these partials, in dB, unselected, phases 0, ranges derived as after
/// an import. View and selection state stay as they are.
void fill_store(const std::vector<Partial> &content);

/// Four partials: two long ones that overlap, a two-point one and a single point.
std::vector<Partial> small_content();

/// Ends each test with an empty store and every global at its start value.
class StoreTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;
};
