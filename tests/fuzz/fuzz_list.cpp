// Any bytes as an analysis file: type, every pass of the list reader, everything derived.
#include "store/slots.h"
#include "tests/support/list_reading.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static FILE *nowhere = std::fopen("/dev/null", "w");
    FILE *kept = stdout;
    if (nowhere != nullptr) {
        stdout = nowhere;
    }
    read_any(std::string_view(reinterpret_cast<const char *>(data), size));
    stdout = kept;
    free_store();
    return 0;
}
