#include "store/reading.h"

#include "import/afile.h"
#include "live/cleanup.h"
#include "live/live.h"
#include "live/oscillators.h"
#include "store/console.h"
#include "store/evaluate.h"
#include "store/misc.h"
#include "store/progress.h"
#include "store/published.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "store/slots.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

const char *const default_file = "partials.pt";

/// One kind of analysis: reads it whole, or ends the process. Null where this build has none.
struct Importer {
    int32_t type;
    void (*run)(TokenFile &file);
};

void import_list(TokenFile &file) {
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

const Importer importers[] = {
    {lisp_list, import_list},
};

/// Asks whether to read an unknown text by hand; 'n' or the end of input mean no.
bool wants_interactive_reading() {
    std::puts("Quillgrove> Cannot recognize file type");
    std::puts("Quillgrove> Try to read interactively?");
    char word[256] = "";
    while (word[0] != 'y' && word[0] != 'n') {
        std::fputs("Quillgrove> ", stdout);
        if (!read_word(word, sizeof word)) {
            return false;
        }
    }
    return word[0] == 'y';
}

/// As many as oscillators can ask for, however many partials are added later: the array never
/// moves under a callback that reads it.
LiveCandidate *new_candidates() {
    const size_t count = static_cast<size_t>(std::max(partials + spare_partials, most_oscillators + 1));
    return static_cast<LiveCandidate *>(std::calloc(count, sizeof(LiveCandidate)));
}

} // namespace

void open_analysis(TokenFile &file) {
    if (afname[0] == '\0') {
        std::puts("Quillgrove> No valid PTF file specified");
        std::puts("            Opening default PTF file...");
        std::snprintf(afname, sizeof afname, "%s", default_file);
    } else {
        std::printf("Opening: %s \n", afname);
    }
    if (open_tokens(file, afname)) {
        return;
    }
    std::printf("Quillgrove> Cannot open file \"%s\"\n", afname);
    std::puts("Quillgrove> Exiting...");
    std::fputs("Quillgrove> Please confirm (enter): ", stdout);
    std::fflush(stdout);
    std::getchar();
    std::putchar('\n');
    cleanupAudioMIDI();
    std::exit(1);
}

void import_analysis(TokenFile &file) {
    const int32_t type = detect_filetype(file);
    if (type < 0) {
        if (wants_interactive_reading()) {
            wip();
        }
        closing_dialogue(file);
    }
    const auto importer = std::find_if(std::begin(importers), std::end(importers),
                                       [type](const Importer &row) { return row.type == type; });
    if (importer == std::end(importers)) {
        wip();
    } else {
        Progress progress("Reading", file.size);
        file.progress = &progress;
        importer->run(file);
        file.progress = nullptr;
    }
    close_tokens(file);
}

void complete_store() {
    if (global_parameters(&parray, &partials, &npoints, &sndstart, &sndlen, &maxfreq, &minfreq,
                          &logmaxfreq, &fspan, &nlogmaxfreq, &maxamp, &sndstart, &meant,
                          &oldmaxfreq, &oldminfreq) == -1) {
        std::puts("No valid partials imported: quitting program");
        std::exit(-1);
    }
    regrow_peval();
    scandidates = new_candidates();
    pcandidates = new_candidates();
    qcandidates = new_candidates();
    averages(partials, npoints, parray, peval);
    recompute_everything();
    publish_store();
    if (dbp) {
        print_by_ref(&parray, &npoints, &partials);
    }
    std::puts("Current working folder is:");
    std::fflush(stdout);
    if (std::system("pwd") != 0) {
        std::perror("pwd");
    }
}

void closing_dialogue(TokenFile &file) {
    std::puts("Quillgrove> Close the file and exit?");
    char word[256] = "";
    while (word[0] != 'y') {
        std::fputs("Quillgrove> Please confirm (enter y): ", stdout);
        if (!read_word(word, sizeof word)) {
            break;
        }
    }
    free_store();
    close_tokens(file);
    std::printf("Quillgrove> Closing \"%s\" and exiting...\n\n", afname);
    cleanupAudioMIDI();
    std::exit(1);
}
