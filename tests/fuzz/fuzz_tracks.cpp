// Any bytes behind the first words of SDIF tracks: every pass, and what is derived
// from the points.
#include "import/afile.h"
#include "store/evaluate.h"
#include "tests/fuzz/target.h"
#include "tests/support/any_reading.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    return run_quietly(data, size, [](std::string_view text) {
        for (const int32_t type : {sdif_inharmonic, sdif_harmonic}) {
            if (read_as(type, text) != -1) {
                check_import_sanity();
                settle_tracks(&minfreq, &maxfreq);
                derive_store();
            }
        }
    });
}
