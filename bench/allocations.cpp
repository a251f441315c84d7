#include "bench/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<int64_t> count = 0;
}

int64_t allocations() {
    return count;
}

void *operator new(size_t size) {
    ++count;
    void *memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        std::abort();
    }
    return memory;
}

void operator delete(void *memory) noexcept {
    std::free(memory);
}

void operator delete(void *memory, size_t) noexcept {
    std::free(memory);
}
