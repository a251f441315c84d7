// tests/fuzz/target.h -- what the fuzz targets share: a run with the console's output thrown away.
#pragma once

#include "store/slots.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/// Calls `work` with the bytes as text, nothing printed, and releases the store behind it.
template <class Work> int run_quietly(const uint8_t *data, size_t size, const Work &work) {
    static FILE *nowhere = std::fopen("/dev/null", "w");
    FILE *kept = stdout;
    if (nowhere != nullptr) {
        stdout = nowhere;
    }
    work(std::string_view(reinterpret_cast<const char *>(data), size));
    stdout = kept;
    free_store();
    return 0;
}
