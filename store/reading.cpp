#include "store/reading.h"

#include "import/afile.h"
#include "live/cleanup.h"
#include "live/live.h"
#include "live/oscillators.h"
#include "store/console.h"
#include "store/evaluate.h"
#include "store/importers.h"
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
    const int32_t count = std::max(partials + spare_partials, most_oscillators + 1);
    return static_cast<LiveCandidate *>(
        std::calloc(static_cast<size_t>(count), sizeof(LiveCandidate)));
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
        if (!wants_interactive_reading() || !import_interactively(file)) {
            closing_dialogue(file);
        }
    } else {
        Progress progress("Reading", file.size);
        file.progress = &progress;
        run_importer(file, type);
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
