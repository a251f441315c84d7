#include "store/published.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

std::atomic<const PublishedStore *> published = nullptr;
std::atomic<int32_t> readers = 0;

constexpr std::chrono::milliseconds longest_wait(250); // for readers; they take a few

// The window thread's own.
bool alone = true; // withdrawn, and no reader is left that came before
std::vector<void *> retired;
const PublishedStore *withdrawn = nullptr; // the last list while none is shown
int32_t edits = 0;                         // StoreEdits that live
bool shown_before = false;                 // the outermost one

/// Changes of `readers` have one order for all threads: a reader that came before this one is
/// counted, and one that comes after it sees the withdrawal that stands before it.
bool no_reader_inside() {
    return readers.fetch_add(0, std::memory_order_acq_rel) == 0;
}

void release_retired() {
    for (void *memory : retired) {
        std::free(memory);
    }
    retired.clear();
}

/// List and rows in one block, so that it is released like any other.
PublishedStore *new_list() {
    const size_t count = static_cast<size_t>(std::max(partials, 0));
    void *memory = std::malloc(sizeof(PublishedStore) + count * sizeof(PublishedPartial));
    if (memory == nullptr) {
        return nullptr;
    }
    auto *list = static_cast<PublishedStore *>(memory);
    auto *rows = reinterpret_cast<PublishedPartial *>(list + 1);
    for (size_t i = 0; i < count; ++i) {
        rows[i] = {parray[i], parray[i] != nullptr ? std::max(npoints[i], 0) : 0};
    }
    *list = {static_cast<int32_t>(count), rows};
    return list;
}

/// Whether a list is what new_list would make.
bool shows_store(const PublishedStore &list) {
    if (list.count != std::max(partials, 0)) {
        return false;
    }
    for (int32_t i = 0; i < list.count; ++i) {
        const PublishedPartial &row = list.partials[i];
        if (row.points != parray[i] ||
            row.count != (parray[i] != nullptr ? std::max(npoints[i], 0) : 0)) {
            return false;
        }
    }
    return true;
}

void drop(const PublishedStore *list) {
    void *memory = const_cast<PublishedStore *>(list);
    if (alone) {
        std::free(memory);
    } else {
        retired.push_back(memory);
    }
}

void wait_for_readers() {
    const auto begin = std::chrono::steady_clock::now();
    while (!withdraw_store() && std::chrono::steady_clock::now() - begin < longest_wait) {
        std::this_thread::yield();
    }
}

} // namespace

StoreReader::StoreReader() {
    readers.fetch_add(1, std::memory_order_acq_rel);
    store_ = published.load(std::memory_order_acquire);
}

StoreReader::~StoreReader() {
    readers.fetch_sub(1, std::memory_order_release);
}

bool store_is_published() {
    return published.load(std::memory_order_relaxed) != nullptr;
}

bool withdraw_store() {
    if (alone) {
        return true;
    }
    const PublishedStore *list = published.exchange(nullptr, std::memory_order_acq_rel);
    if (list != nullptr) {
        withdrawn = list;
    }
    alone = no_reader_inside();
    if (alone) {
        release_retired();
    }
    return alone;
}

void publish_store() {
    withdraw_store();
    if (withdrawn != nullptr && !shows_store(*withdrawn)) {
        drop(withdrawn);
        withdrawn = nullptr;
    }
    published.store(withdrawn != nullptr ? withdrawn : new_list(), std::memory_order_release);
    withdrawn = nullptr;
    alone = false;
}

void retire(void *memory) {
    if (memory == nullptr) {
        return;
    }
    if (withdraw_store()) {
        std::free(memory);
    } else {
        retired.push_back(memory);
    }
}

int32_t retired_blocks() {
    return static_cast<int32_t>(retired.size()) + (withdrawn != nullptr && !alone ? 1 : 0);
}

StoreEdit::StoreEdit() {
    if (edits++ == 0) {
        shown_before = store_is_published();
        wait_for_readers();
    }
}

StoreEdit::~StoreEdit() {
    if (--edits == 0 && shown_before) {
        publish_store();
    }
}

StoreEditPause::StoreEditPause()
    : shown_(edits > 0 && shown_before && withdrawn != nullptr && shows_store(*withdrawn)) {
    if (shown_) {
        publish_store();
    }
}

StoreEditPause::~StoreEditPause() {
    if (shown_) {
        wait_for_readers();
    }
}
