#include "store/importers.h"

#include "import/afile.h"
#include "import/afile_interactive.h"
#include "live/cleanup.h"
#include "store/evaluate.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "store/slots.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

[[noreturn]] void give_up(TokenFile &file, const char *message, int status) {
    if (message != nullptr) {
        std::puts(message);
    }
    close_tokens(file);
    std::exit(status);
}

void import_list(TokenFile &file, int32_t) {
    int32_t kept = 0;
    visit_ptfile(file, &partials);
    const int32_t room = ptfile_room(file, partials);
    allocate_counts(room);
    allocate_index(room);
    if (revisit_ptfile(file, &partials, npoints, xarray, &kept) == -1) {
        cleanupAudioMIDI();
        std::exit(1);
    }
    if (kept < partials) {
        partials = kept;
        trim_counts(partials);
    }
    rescan_ptfile(file, &partials, npoints);
    allocate_points();
    import_ptfile(file, &partials, npoints, &maxamp, &minfreq, &maxfreq);
    sanityCheck();
}

void import_tracks(TokenFile &file, int32_t type) {
    if (visit_sdiffile(file, &partials, type) == -1) {
        std::exit(1);
    }
    std::printf("Num. Partials: %d\n", partials);
    allocate_counts(partials);
    allocate_index(partials);
    revisit_sdiffile(file, &partials, npoints, type);
    allocate_points();
    import_sdiffile(file, &partials, npoints, xarray, &maxamp, type);
    check_import_sanity();
    settle_tracks(&minfreq, &maxfreq);
    recompute_all_phase();
}

void import_curve(TokenFile &file, int32_t type) {
    std::puts("Proceeding with f0 SDIF file import");
    partials = 1;
    allocate_counts(partials);
    allocate_index(partials);
    if (revisit_sdiffile(file, &partials, npoints, type) == -1) {
        give_up(file, nullptr, 1);
    }
    std::printf("PARTIAL # %d   %d POINTS\n", 0, npoints[0]);
    allocate_points();
    if (import_sdiffile(file, &partials, npoints, xarray, &maxamp, type) == -1) {
        give_up(file, nullptr, 1);
    }
    for (int32_t j = 0; j < npoints[0]; ++j) {
        minfreq = std::min(minfreq, parray[0][j].freq);
        maxfreq = std::max(maxfreq, parray[0][j].freq);
    }
    recompute_all_phase();
}

void import_spear(TokenFile &file, int32_t) {
    std::printf("SPEAR partials file recognized: %s\n", afname);
    if (visit_spearfile(file, &partials) == -1) {
        give_up(file, "Quillgrove > file sub-type not recognized", -1);
    }
    allocate_counts(analysis_room(file, partials));
    if (revisit_spearfile(file, &partials, npoints) == -1) {
        give_up(file, "Quillgrove > SPEAR file corrupt\nExiting", -1);
    }
    std::puts("SPEAR file OK");
    allocate_points();
    if (import_spearfile(file, &partials, npoints, &minfreq, &maxfreq, &maxamp) == -1) {
        cleanupAudioMIDI();
        give_up(file, nullptr, -1);
    }
}

void import_spear_frames(TokenFile &file, int32_t) {
    std::printf("SPEAR frames file recognized: %s\n", afname);
    if (visit_spearrffile(file, &partials, &t_frames) == -1) {
        give_up(file, "Quillgrove > file sub-type not recognized", -1);
    }
    allocate_counts(analysis_room(file, partials));
    if (revisit_spearrffile(file, &partials, &t_frames, npoints) == -1) {
        give_up(file, "Quillgrove > SPEAR frames file corrupt\nExiting", -1);
    }
    std::puts("SPEAR frames file OK");
    allocate_points();
    if (import_spearrffile(file, &partials, &t_frames, npoints, &minfreq, &maxfreq, &maxamp) ==
        -1) {
        cleanupAudioMIDI();
        give_up(file, nullptr, -1);
    }
}

/// One kind of analysis: reads it whole, or ends the process.
struct Importer {
    int32_t type;
    void (*run)(TokenFile &file, int32_t type);
};

const Importer importers[] = {
    {lisp_list, import_list},       {sdif_inharmonic, import_tracks},
    {sdif_harmonic, import_tracks}, {sdif_fundamental, import_curve},
    {spear_partials, import_spear}, {spear_frames, import_spear_frames},
};

} // namespace

void run_importer(TokenFile &file, int32_t type) {
    for (const Importer &row : importers) {
        if (row.type == type) {
            row.run(file, type);
        }
    }
}

bool import_interactively(TokenFile &file) {
    std::vector<PhRecord> ph(most_records);
    partials = read_interactively(file, ph.data());
    if (partials < 1) {
        partials = 0;
        return false;
    }
    Envelope envelope = {};
    construct_data(&partials, &envelope.pps, &envelope.dur, &maxamp, &envelope.decay);
    return build_partials(ph.data(), envelope) == 0;
}
