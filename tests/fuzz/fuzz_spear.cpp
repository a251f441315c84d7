// Any bytes behind the first words of SPEAR's partials layout: every pass, and what is derived
// from the points.
#include "import/afile.h"
#include "tests/fuzz/target.h"
#include "tests/support/any_reading.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    return run_quietly(data, size, [](std::string_view text) {
        if (read_as(spear_partials, text) != -1) {
            derive_store();
        }
    });
}
