#include "tests/support/list_reading.h"

#include "import/afile.h"
#include "store/evaluate.h"
#include "store/slots.h"

namespace {

int32_t run_passes(TokenFile &file) {
    int32_t kept = 0;
    visit_ptfile(file, &partials);
    const int32_t room = ptfile_room(file, partials);
    allocate_counts(room);
    allocate_index(room);
    if (revisit_ptfile(file, &partials, npoints, xarray, &kept) == -1) {
        partials = 0;
        return -1;
    }
    if (kept < partials) {
        partials = kept;
        trim_counts(partials);
    }
    rescan_ptfile(file, &partials, npoints);
    allocate_points();
    import_ptfile(file, &partials, npoints, &maxamp, &minfreq, &maxfreq);
    sanityCheck();
    return 0;
}

} // namespace

int32_t read_list(std::string_view text) {
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    free_store();
    reset_store_globals();
    const int32_t result = run_passes(file);
    close_tokens(file);
    return result;
}
