#include "store/published.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <vector>

namespace {

std::atomic<const PublishedStore *> published = nullptr;
std::atomic<int32_t> readers = 0;

// The window thread's own.
bool alone = true; // withdrawn, and no reader is left that came before
std::vector<void *> retired;

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
        retired.push_back(const_cast<PublishedStore *>(list));
    }
    alone = no_reader_inside();
    if (alone) {
        release_retired();
    }
    return alone;
}

void publish_store() {
    withdraw_store();
    published.store(new_list(), std::memory_order_release);
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
    return static_cast<int32_t>(retired.size());
}
