#include "tests/support/any_reading.h"

#include "import/afile.h"
#include "import/afile_interactive.h"
#include "store/evaluate.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "tests/support/list_reading.h"

#include <vector>

namespace {

int32_t read_spear(TokenFile &file) {
    if (visit_spearfile(file, &partials) == -1) {
        return -1;
    }
    allocate_counts(analysis_room(file, partials));
    if (revisit_spearfile(file, &partials, npoints) == -1) {
        return -1;
    }
    allocate_points();
    return import_spearfile(file, &partials, npoints, &minfreq, &maxfreq, &maxamp);
}

int32_t read_spear_frames(TokenFile &file) {
    if (visit_spearrffile(file, &partials, &t_frames) == -1) {
        return -1;
    }
    allocate_counts(analysis_room(file, partials));
    if (revisit_spearrffile(file, &partials, &t_frames, npoints) == -1) {
        return -1;
    }
    allocate_points();
    return import_spearrffile(file, &partials, &t_frames, npoints, &minfreq, &maxfreq, &maxamp);
}

int32_t read_sdif(TokenFile &file, int32_t type) {
    partials = 1;
    if (type != sdif_fundamental && visit_sdiffile(file, &partials, type) == -1) {
        return -1;
    }
    allocate_counts(partials);
    allocate_index(partials);
    if (revisit_sdiffile(file, &partials, npoints, type) == -1) {
        return -1;
    }
    allocate_points();
    return import_sdiffile(file, &partials, npoints, xarray, &maxamp, type);
}

int32_t read_file_as(TokenFile &file, int32_t type) {
    switch (type) {
    case spear_partials:
        return read_spear(file);
    case spear_frames:
        return read_spear_frames(file);
    default:
        return read_sdif(file, type);
    }
}

} // namespace

int32_t read_as(int32_t type, std::string_view text) {
    if (type == lisp_list) {
        return read_list(text) == 0 ? type : -1;
    }
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    free_store();
    reset_store_globals();
    const int32_t result = read_file_as(file, type);
    if (result == -1) {
        partials = 0; // it may say more than the arrays hold
    }
    close_tokens(file);
    return result;
}

bool derive_store() {
    if (global_parameters(&parray, &partials, &npoints, &sndstart, &sndlen, &maxfreq, &minfreq,
                          &logmaxfreq, &fspan, &nlogmaxfreq, &maxamp, &sndstart, &meant,
                          &oldmaxfreq, &oldminfreq) != 0) {
        return false;
    }
    regrow_peval();
    averages(partials, npoints, parray, peval);
    recompute_everything();
    return true;
}

int32_t read_any(std::string_view text) {
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    int32_t type = detect_filetype(file);
    close_tokens(file);
    if (type == unknown_text || read_as(type, text) == -1) {
        return -1;
    }
    if (type == sdif_inharmonic || type == sdif_harmonic) {
        check_import_sanity();
        settle_tracks(&minfreq, &maxfreq);
    }
    return derive_store() ? type : -1;
}

int32_t read_by_hand(std::string_view text) {
    TokenFile file;
    open_tokens_from_memory(file, text.data(), text.size());
    free_store();
    reset_store_globals();
    std::vector<PhRecord> ph(most_records);
    partials = read_interactively(file, ph.data());
    close_tokens(file);
    if (partials < 1) {
        partials = 0;
        return -1;
    }
    Envelope envelope = {};
    construct_data(&partials, &envelope.pps, &envelope.dur, &maxamp, &envelope.decay);
    const int32_t result = build_partials(ph.data(), envelope);
    partials = result == 0 ? partials : 0;
    return result;
}
