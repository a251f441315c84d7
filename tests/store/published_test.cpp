// The store as other threads read it: what is kept while a reader is inside, and edits on one
// thread while another samples.
#include "store/published.h"

#include "live/moment.h"
#include "store/slots.h"
#include "tests/support/fixture.h"

#include <atomic>
#include <cstdlib>
#include <optional>
#include <thread>

namespace {

using Published = StoreTest;

TEST_F(Published, ShowsTheStoreAsItWas) {
    fill_store(small_content());
    const StoreReader reader;
    ASSERT_NE(reader.store(), nullptr);
    ASSERT_EQ(reader.store()->count, 4);
    for (int32_t i = 0; i < 4; ++i) {
        EXPECT_EQ(reader.store()->partials[i].points, parray[i]);
        EXPECT_EQ(reader.store()->partials[i].count, npoints[i]);
    }
}

TEST_F(Published, EmptySlotsAndNegativeCountsHaveNoPoints) {
    fill_store(small_content());
    withdraw_store();
    Breakpoint *kept = parray[1];
    parray[1] = nullptr;
    const int32_t count = npoints[0];
    npoints[0] = -3;
    publish_store();
    {
        const StoreReader reader;
        EXPECT_EQ(reader.store()->partials[0].count, 0);
        EXPECT_EQ(reader.store()->partials[1].count, 0);
    }
    parray[1] = kept;
    npoints[0] = count;
}

TEST_F(Published, AReleaseWithdrawsTheStore) {
    fill_store(small_content());
    EXPECT_TRUE(store_is_published());
    retire(std::malloc(8));
    EXPECT_FALSE(store_is_published());
    EXPECT_EQ(retired_blocks(), 0);
    EXPECT_EQ(StoreReader().store(), nullptr);
    publish_store();
    EXPECT_NE(StoreReader().store(), nullptr);
}

TEST_F(Published, NothingIsReleasedUnderAReader) {
    fill_store(small_content());
    std::optional<StoreReader> reader;
    reader.emplace();
    const Breakpoint *points = reader->store()->partials[1].points;
    free_points(parray[1]);
    parray[1] = new_points(2);
    npoints[1] = 2;
    EXPECT_EQ(retired_blocks(), 2) << "the points and the list";
    EXPECT_EQ(points[2].freq, 440.0f) << "still there";
    EXPECT_FALSE(withdraw_store());
    publish_store();
    EXPECT_EQ(reader->store()->partials[1].count, 3) << "a reader keeps what it found";
    EXPECT_EQ(StoreReader().store()->partials[1].count, 2);
    reader.reset();
    EXPECT_TRUE(withdraw_store());
    EXPECT_EQ(retired_blocks(), 0);
}

TEST_F(Published, AResizeLeavesTheReaderItsArray) {
    fill_store(small_content());
    for (const int32_t n : {7, 1}) {
        publish_store();
        const StoreReader reader;
        const PublishedPartial before = reader.store()->partials[0];
        const float last = before.points[before.count - 1].freq;
        resize_partial(0, n);
        EXPECT_NE(parray[0], before.points);
        EXPECT_EQ(parray[0][0].freq, 100.0f);
        EXPECT_EQ(before.points[before.count - 1].freq, last);
        EXPECT_EQ(npoints[0], n);
    }
}

TEST_F(Published, RetiringNothingWithdrawsNothing) {
    fill_store(small_content());
    free_points(nullptr);
    EXPECT_TRUE(store_is_published());
}

const PublishedStore *shown() {
    return StoreReader().store();
}

TEST_F(Published, AnEditWithdrawsTheStoreAndShowsItAgain) {
    fill_store(small_content());
    const PublishedStore *before = shown();
    {
        const StoreEdit outer;
        EXPECT_EQ(shown(), nullptr);
        {
            const StoreEdit inner;
            EXPECT_EQ(shown(), nullptr);
        }
        EXPECT_EQ(shown(), nullptr);
        parray[0][0].freq = 1.0f;
    }
    EXPECT_EQ(shown(), before) << "its structure is the same";
    EXPECT_EQ(shown()->partials[0].points[0].freq, 1.0f);
}

TEST_F(Published, AnEditOfTheStructureShowsTheNewOne) {
    fill_store(small_content());
    {
        const StoreEdit edit;
        resize_partial(1, 7);
    }
    EXPECT_EQ(shown()->partials[1].points, parray[1]);
    EXPECT_EQ(shown()->partials[1].count, 7);
    {
        const StoreEdit edit;
        --npoints[1];
    }
    EXPECT_EQ(shown()->partials[1].count, 6);
    {
        const StoreEdit edit;
        grow_slots(1);
        parray[partials] = clone_points(parray[0], npoints[0]);
        npoints[partials] = npoints[0];
        ++partials;
    }
    EXPECT_EQ(shown()->count, 5);
    withdraw_store();
    EXPECT_EQ(retired_blocks(), 0);
}

TEST_F(Published, AnEditOfWhatIsNotShownShowsNothing) {
    fill_store(small_content());
    withdraw_store();
    { const StoreEdit edit; }
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(Published, AnEditLendsTheStoreWhileItAsks) {
    fill_store(small_content());
    const StoreEdit edit;
    {
        const StoreEditPause pause;
        EXPECT_NE(shown(), nullptr);
    }
    EXPECT_EQ(shown(), nullptr);
    resize_partial(0, 9);
    {
        const StoreEditPause pause;
        EXPECT_EQ(shown(), nullptr) << "half an edit";
    }
}

TEST_F(Published, APauseWithoutAnEditDoesNothing) {
    fill_store(small_content());
    {
        const StoreEditPause pause;
        EXPECT_TRUE(store_is_published());
    }
    EXPECT_TRUE(store_is_published());
}

TEST_F(Published, AnEditWaitsForReaders) {
    fill_store(small_content());
    std::atomic<bool> inside = false;
    std::atomic<bool> left = false;
    std::thread other([&] {
        const StoreReader reader;
        inside = true;
        for (int n = 0; n < 3; ++n) {
            std::this_thread::yield();
        }
        left = true;
    });
    while (!inside) {
        std::this_thread::yield();
    }
    {
        const StoreEdit edit;
        EXPECT_TRUE(left);
    }
    other.join();
}

TEST_F(Published, AReaderThatStaysIsNotWaitedForForEver) {
    fill_store(small_content());
    const StoreReader reader;
    const StoreEdit edit;
    EXPECT_EQ(StoreReader().store(), nullptr);
}

/// Partials of a few points each, all over the same second.
std::vector<Partial> many_partials() {
    std::vector<Partial> content;
    for (int i = 0; i < 24; ++i) {
        Partial partial;
        for (int j = 0; j < 12; ++j) {
            partial.push_back(
                {static_cast<float>(j) * 0.09f, 100.0f + static_cast<float>(10 * i + j), -20.0f});
        }
        content.push_back(partial);
    }
    return content;
}

/// One structural edit each, by turns.
void edit_structure(int turn) {
    const int32_t victim = turn % partials;
    switch (turn % 5) {
    case 0:
        resize_partial(victim, 6 + turn % 9);
        break;
    case 1:
        grow_slots(1);
        parray[partials] = clone_points(parray[victim], npoints[victim]);
        npoints[partials] = npoints[victim];
        ++partials;
        cover_by_peval();
        break;
    case 2:
    case 3:
        if (partials > 4) {
            take_out_slot(victim, false);
            --partials;
            trim_counts(partials);
        }
        break;
    default:
        free_points(parray[victim]);
        parray[victim] = new_points(12);
        npoints[victim] = 12;
        break;
    }
}

TEST_F(Published, EditsWhileAnotherThreadSamples) {
    fill_store(many_partials());
    std::vector<LiveCandidate> candidates(2048);
    use_oscillators(2047);
    std::atomic<bool> over = false;
    std::atomic<int> samplings = 0;
    std::thread midi([&] {
        float time = 0.0f;
        while (!over.load()) {
            const StoreReader reader;
            if (reader.store() != nullptr) {
                sample_published(*reader.store(), time, motion_rule, candidates.data());
                samplings.fetch_add(1);
            }
            time = time > 1.0f ? 0.0f : time + 0.01f;
        }
    });
    int published = 0;
    for (int turn = 0; turn < 20000 && (turn < 1000 || samplings.load() < 50); ++turn) {
        edit_structure(turn);
        if (turn % 3 == 0) {
            publish_store();
            ++published;
            std::this_thread::yield();
        }
    }
    over = true;
    midi.join();
    EXPECT_GE(samplings.load(), 50);
    EXPECT_GE(published, 300);
    withdraw_store();
    EXPECT_EQ(retired_blocks(), 0);
    numbOfCands = 0;
}

} // namespace
