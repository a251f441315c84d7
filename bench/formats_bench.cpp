// Loading 1,000,000 points of each SPEAR and SDIF format: the reader of the program against the
// plain way, side by side, the best of three of either. Ends with status 1 when two stores differ
// or a reader takes more than a fifth of the plain time.

#include "bench/plain_formats.h"
#include "examples/material.h"
#include "import/afile.h"
#include "store/progress.h"
#include "store/slots.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace {

constexpr double wanted_ratio = 5.0;
constexpr int repetitions = 3;

struct Format {
    const char *name;
    int32_t type;
    void (*write)(FILE *file, const Sound &sound);
    int partials;
    int points; // each
};

const Format formats[] = {
    {"SPEAR partials", spear_partials, write_spear_partials, 2000, 500},
    {"SPEAR frames", spear_frames, write_spear_frames, 2000, 500},
    {"SDIF 1TRC", sdif_inharmonic, write_sdif_tracks, 2000, 500},
    {"SDIF 1HRM", sdif_harmonic, write_sdif_harmonics, 2000, 500},
    {"SDIF 1FQ0", sdif_fundamental, write_sdif_fundamental, 1, 1000000},
};

void load_spear_passes(TokenFile &file) {
    visit_spearfile(file, &partials);
    allocate_counts(partials);
    revisit_spearfile(file, &partials, npoints);
    allocate_points();
    import_spearfile(file, &partials, npoints, &minfreq, &maxfreq, &maxamp);
}

void load_frames_passes(TokenFile &file) {
    visit_spearrffile(file, &partials, &t_frames);
    allocate_counts(partials);
    revisit_spearrffile(file, &partials, &t_frames, npoints);
    allocate_points();
    import_spearrffile(file, &partials, &t_frames, npoints, &minfreq, &maxfreq, &maxamp);
}

void load_sdif_passes(TokenFile &file, int32_t type) {
    partials = 1;
    if (type != sdif_fundamental) {
        visit_sdiffile(file, &partials, type);
    }
    allocate_counts(partials);
    allocate_index(partials);
    revisit_sdiffile(file, &partials, npoints, type);
    allocate_points();
    import_sdiffile(file, &partials, npoints, xarray, &maxamp, type);
}

/// The passes as the program runs them at its start.
void load_ours(const char *name, int32_t type) {
    TokenFile file;
    open_tokens(file, name);
    detect_filetype(file);
    Progress progress("Reading", file.size);
    file.progress = &progress;
    if (type == spear_partials) {
        load_spear_passes(file);
    } else if (type == spear_frames) {
        load_frames_passes(file);
    } else {
        load_sdif_passes(file, type);
    }
    close_tokens(file);
}

bool equal_stores(const PlainStore &plain) {
    if (static_cast<size_t>(partials) != plain.counts.size() || maxamp != plain.maxamp ||
        minfreq != plain.minfreq || maxfreq != plain.maxfreq) {
        return false;
    }
    for (int32_t i = 0; i < partials; ++i) {
        const size_t at = static_cast<size_t>(i);
        const size_t bytes = static_cast<size_t>(npoints[i]) * sizeof(Breakpoint);
        if (npoints[i] != plain.counts[at] ||
            (!plain.index.empty() && xarray[i].index != plain.index[at].index) ||
            std::memcmp(parray[i], plain.points[at], bytes) != 0) {
            return false;
        }
    }
    return true;
}

double milliseconds(const std::function<void()> &work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

/// Loads the file both ways; true where the stores agree and ours is as fast as wanted.
bool compare(const Format &format, const char *name, FILE *report) {
    double plain_time = 1e9;
    double our_time = 1e9;
    bool agree = true;
    for (int i = 0; i < repetitions; ++i) {
        PlainStore plain;
        plain_time = std::min(plain_time,
                              milliseconds([&] { load_plain_format(name, format.type, plain); }));
        reset_store_globals();
        our_time = std::min(our_time, milliseconds([&] { load_ours(name, format.type); }));
        agree = agree && equal_stores(plain);
        free_store();
        free_plain(plain);
    }
    const double ratio = plain_time / our_time;
    std::fprintf(report, "%-15s plain %7.1f ms, ours %6.1f ms, plain / ours = %.1f%s\n",
                 format.name, plain_time, our_time, ratio, agree ? "" : ", THE STORES DIFFER");
    return agree && ratio >= wanted_ratio;
}

bool measure(const Format &format, FILE *report) {
    char name[] = "/tmp/quillgrove-formats-XXXXXX";
    FILE *file = fdopen(mkstemp(name), "w");
    format.write(file, large_sound(format.partials, format.points));
    std::fclose(file);
    const bool fine = compare(format, name, report);
    unlink(name);
    return fine;
}

} // namespace

int main() {
    // The passes print on standard output: the report takes its place, and it goes nowhere.
    FILE *report = fdopen(dup(STDOUT_FILENO), "w");
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    bool fine = true;
    for (const Format &format : formats) {
        fine = measure(format, report) && fine;
        std::fflush(report);
    }
    std::fprintf(report, "at least %.1f wanted\n", wanted_ratio);
    std::fclose(report);
    return fine ? EXIT_SUCCESS : EXIT_FAILURE;
}
