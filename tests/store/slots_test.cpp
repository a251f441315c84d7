// Ownership: point arrays of exact length, per-partial arrays with spare elements.
#include "store/slots.h"

#include "store/settings.h"

#include "store/phase.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <malloc.h>

namespace {

class Slots : public StoreTest {};

bool all_zero(const void *data, size_t size) {
    const unsigned char *bytes = static_cast<const unsigned char *>(data);
    return std::all_of(bytes, bytes + size, [](unsigned char b) { return b == 0; });
}

/// Leaves blocks of old content behind for the allocator to hand out again.
void dirty_heap() {
    for (size_t size : {64u, 256u, 500u, 1000u, 4000u, 8000u}) {
        void *block = std::malloc(size);
        std::memset(block, 0xA5, size);
        std::free(block);
    }
}

TEST_F(Slots, StartValuesOfTheStore) {
    EXPECT_EQ(partials, 0);
    EXPECT_EQ(minfreq, 22050.0f);
    EXPECT_EQ(maxfreq, 1.0f);
    EXPECT_EQ(maxamp, -200.0f);
    EXPECT_EQ(minamp, 0.0f);
}

TEST_F(Slots, NewPointsAreZero) {
    dirty_heap();
    Breakpoint *points = new_points(20);
    EXPECT_TRUE(all_zero(points, 20 * sizeof(Breakpoint)));
    free_points(points);
}

TEST_F(Slots, ACopyStandsByItself) {
    Breakpoint *points = new_points(3);
    points[2].freq = 5.0f;
    Breakpoint *copy = clone_points(points, 3);
    points[2].freq = 6.0f;
    EXPECT_EQ(copy[2].freq, 5.0f);
    free_points(points);
    free_points(copy);
}

TEST_F(Slots, CountsHaveAHundredZeroedSpareElements) {
    dirty_heap();
    allocate_counts(7);
    EXPECT_GE(malloc_usable_size(npoints), 107 * sizeof(int32_t));
    EXPECT_TRUE(all_zero(npoints, 107 * sizeof(int32_t)));
}

TEST_F(Slots, IndexHasAHundredZeroedSpareElements) {
    dirty_heap();
    allocate_index(7);
    EXPECT_GE(malloc_usable_size(xarray), 107 * sizeof(PartialIndexEntry));
    EXPECT_TRUE(all_zero(xarray, 107 * sizeof(PartialIndexEntry)));
}

TEST_F(Slots, SummariesHaveAHundredZeroedSpareElements) {
    dirty_heap();
    partials = 3;
    regrow_peval();
    EXPECT_GE(malloc_usable_size(peval), 103 * sizeof(PartialEval));
    EXPECT_TRUE(all_zero(peval, 103 * sizeof(PartialEval)));
    partials = 0;
}

TEST_F(Slots, RegrownSummariesKeepTheOldAndZeroTheNew) {
    fill_store(small_content());
    peval[0].spare1 = 3.0f;
    grow_slots(200);
    partials += 200;
    for (int32_t i = 4; i < partials; ++i) {
        parray[i] = new_points(1);
        npoints[i] = 1;
    }
    regrow_peval();
    EXPECT_EQ(peval[0].spare1, 3.0f);
    EXPECT_TRUE(all_zero(peval + 104, 200 * sizeof(PartialEval)));
}

TEST_F(Slots, ARegrowAfterAShrinkZeroesWhatComesBack) {
    fill_store(small_content());
    partials = 0;
    regrow_peval();
    partials = 4;
    peval[99].spare1 = 8.0f;
    regrow_peval();
    EXPECT_EQ(peval[99].spare1, 8.0f);
    EXPECT_TRUE(all_zero(peval + 100, 4 * sizeof(PartialEval)));
}

TEST_F(Slots, ExactSummariesAreZero) {
    fill_store(small_content());
    peval[0].spare1 = 8.0f;
    allocate_peval_exactly();
    EXPECT_TRUE(all_zero(peval, 4 * sizeof(PartialEval)));
}

TEST_F(Slots, PointArraysHoldExactlyTheirCounts) {
    partials = 2;
    allocate_counts(2);
    npoints[0] = 5;
    npoints[1] = 1;
    dirty_heap();
    allocate_points();
    EXPECT_TRUE(all_zero(parray[0], 5 * sizeof(Breakpoint)));
    EXPECT_TRUE(all_zero(parray[1], sizeof(Breakpoint)));
}

TEST_F(Slots, LongerPartialKeepsItsHeadAndZeroesTheRest) {
    fill_store(small_content());
    dirty_heap();
    resize_partial(1, 40);
    EXPECT_EQ(npoints[1], 40);
    EXPECT_EQ(parray[1][2].freq, 440.0f);
    EXPECT_TRUE(all_zero(parray[1] + 3, 37 * sizeof(Breakpoint)));
}

TEST_F(Slots, ShorterPartialKeepsItsHead) {
    fill_store(small_content());
    resize_partial(0, 2);
    EXPECT_EQ(npoints[0], 2);
    EXPECT_EQ(parray[0][1].freq, 110.0f);
}

TEST_F(Slots, APartialShortenedToNothingGrowsAgain) {
    fill_store(small_content());
    resize_partial(0, 0);
    EXPECT_EQ(npoints[0], 0);
    resize_partial(0, 2);
    EXPECT_TRUE(all_zero(parray[0], 2 * sizeof(Breakpoint)));
}

TEST_F(Slots, GrownSlotsAreEmptyAndTheCountIsTheCallers) {
    fill_store(small_content());
    grow_slots(3);
    EXPECT_EQ(partials, 4);
    for (int32_t i = 4; i < 7; ++i) {
        EXPECT_EQ(parray[i], nullptr);
        EXPECT_EQ(npoints[i], 0);
    }
    EXPECT_EQ(parray[3][0].freq, 1000.0f);
}

TEST_F(Slots, AMovedSlotHandsItsPointsDown) {
    fill_store(small_content());
    Breakpoint *moved = parray[1];
    EXPECT_EQ(printed([] { move_slot_down(0, false); }), "");
    EXPECT_EQ(parray[0], moved);
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(parray[1], nullptr);
}

TEST_F(Slots, AMovedSlotTellsUnderTheSwitch) {
    fill_store(small_content());
    EXPECT_EQ(printed([] { move_slot_down(2, true); }), "Compacting partial #    2\n");
}

TEST_F(Slots, APartialTakenOutLeavesTheLastSlotEmpty) {
    fill_store(small_content());
    const Breakpoint *last = parray[3];
    EXPECT_EQ(printed([] { take_out_slot(1, true); }), "");
    EXPECT_EQ(npoints[0], 4);
    EXPECT_EQ(npoints[1], 2);
    EXPECT_EQ(parray[2], last);
    EXPECT_EQ(npoints[2], 1);
    EXPECT_EQ(parray[3], nullptr);
    EXPECT_EQ(npoints[3], 0);
    EXPECT_EQ(partials, 4);
}

TEST_F(Slots, TakingOutTellsTheMoves) {
    verbose = 1;
    dbp = 1;
    fill_store(small_content());
    EXPECT_EQ(printed([] { take_out_slot(2, true); }), "k = 2\nCompacting partial #    2\n");
    fill_store(small_content());
    EXPECT_EQ(printed([] { take_out_slot(2, false); }), "Compacting partial #    2\n");
    fill_store(small_content());
    EXPECT_EQ(printed([] { take_out_slot(3, true); }), "");
    EXPECT_EQ(parray[3], nullptr);
}

TEST_F(Slots, SummariesGrowOnceTheSpareOnesAreUsedUp) {
    fill_store(small_content());
    grow_slots(101);
    partials += 100;
    peval[103].spare1 = 2.0f;
    const size_t size = malloc_usable_size(peval);
    cover_by_peval();
    EXPECT_EQ(malloc_usable_size(peval), size);
    ++partials;
    cover_by_peval();
    EXPECT_GE(malloc_usable_size(peval), 205 * sizeof(PartialEval));
    EXPECT_EQ(peval[103].spare1, 2.0f);
    EXPECT_TRUE(all_zero(peval + 104, 101 * sizeof(PartialEval)));
}

TEST_F(Slots, TrimmedSlotsKeepTheirHead) {
    fill_store(small_content());
    const Breakpoint *head = parray[0];
    take_out_slot(3, false);
    partials = 3;
    trim_slots(3);
    EXPECT_EQ(parray[0], head);
    EXPECT_EQ(npoints[2], 2);
}

TEST_F(Slots, AMovedSlotKeepsItsPhases) {
    fill_store(small_content());
    parray[1][0].phase = 1.0f;
    parray[1][1].phase = parray[1][2].phase = 5.0f;
    move_slot_down(0, false);
    EXPECT_EQ(parray[0][0].phase, 1.0f);
    EXPECT_EQ(parray[0][1].phase, 5.0f);
    EXPECT_EQ(parray[0][2].phase, 5.0f);
}

TEST_F(Slots, AnEmptySlotMovesToo) {
    fill_store({{{0, 100, -1}, {1, 100, -1}}, {}, {{0, 300, -1}}});
    move_slot_down(0, false);
    EXPECT_EQ(npoints[0], 0);
    EXPECT_EQ(parray[1], nullptr);
}

TEST_F(Slots, APartialOfNegativeCountGrowsFromNothing) {
    fill_store(small_content());
    npoints[1] = -4;
    resize_partial(1, 6);
    EXPECT_EQ(npoints[1], 6);
    EXPECT_TRUE(all_zero(parray[1], 6 * sizeof(Breakpoint)));
}

TEST_F(Slots, TrimmedCountsKeepTheirHead) {
    fill_store(small_content());
    trim_counts(2);
    EXPECT_EQ(npoints[0], 4);
    EXPECT_EQ(npoints[1], 3);
}

TEST_F(Slots, AFreedStoreIsEmptyAndCanBeFreedAgain) {
    fill_store(small_content());
    free_store();
    EXPECT_EQ(partials, 0);
    EXPECT_EQ(parray, nullptr);
    EXPECT_EQ(npoints, nullptr);
    EXPECT_EQ(peval, nullptr);
    EXPECT_EQ(xarray, nullptr);
    free_store();
}

TEST_F(Slots, NothingIsSelectedInAFreshStore) {
    fill_store(small_content());
    for (int32_t i = 0; i < partials; ++i) {
        EXPECT_EQ(peval[i].selected, 0);
        for (int32_t j = 0; j < npoints[i]; ++j) {
            EXPECT_EQ(parray[i][j].selected, 0);
            EXPECT_EQ(parray[i][j].scratch, 0.0f);
        }
    }
}

} // namespace
