// Any bytes as an analysis file: type, every pass of that type's reader, everything derived.
#include "tests/fuzz/target.h"
#include "tests/support/any_reading.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    return run_quietly(data, size, [](std::string_view text) { read_any(text); });
}
