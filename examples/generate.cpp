// Writes the example analyses into a folder, or one large list to measure with:
//   generate FOLDER
//   generate --large FILE PARTIALS POINTS

#include "material.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>

namespace {

struct Example {
    const char *name;
    void (*write)(FILE *file);
};

const Example examples[] = {
    {"bell.pt", [](FILE *file) { write_list(file, bell()); }},
    {"glissando.pt", [](FILE *file) { write_list(file, glissando()); }},
    {"partials.pt", [](FILE *file) { write_list(file, melody()); }},
    {"tones.pt", [](FILE *file) { write_list(file, tones()); }},
    {"vowel.pt", [](FILE *file) { write_list(file, vowel()); }},
    {"bell.partials.txt", [](FILE *file) { write_spear_partials(file, bell()); }},
    {"tones.frames.txt", [](FILE *file) { write_spear_frames(file, tones()); }},
    {"tones.1TRC.txt", [](FILE *file) { write_sdif_tracks(file, tones()); }},
    {"vowel.1HRM.txt", [](FILE *file) { write_sdif_harmonics(file, vowel()); }},
    {"vowel.1FQ0.txt", [](FILE *file) { write_sdif_fundamental(file, vowel()); }},
    {"vowel.lpc.txt", [](FILE *file) { write_lpc(file, vowel_envelope()); }},
    {"bell.peaks.txt", [](FILE *file) { write_peaks(file, bell()); }},
};

/// Opens the file, has it written and tells whether all of it went out.
bool write_file(const std::string &name, const std::function<void(FILE *)> &write) {
    FILE *file = std::fopen(name.c_str(), "w");
    if (file == nullptr) {
        std::perror(name.c_str());
        return false;
    }
    write(file);
    const bool failed = std::ferror(file) != 0;
    if (std::fclose(file) != 0 || failed) {
        std::perror(name.c_str());
        return false;
    }
    return true;
}

bool write_examples(const std::filesystem::path &folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    for (const Example &example : examples) {
        if (!write_file(folder / example.name, example.write)) {
            return false;
        }
    }
    return true;
}

bool write_large(const char *name, int partials, int points) {
    return write_file(name, [=](FILE *file) { write_large_list(file, partials, points); });
}

} // namespace

int main(int argc, char **argv) {
    bool written = false;
    if (argc == 5 && std::strcmp(argv[1], "--large") == 0) {
        written = write_large(argv[2], std::atoi(argv[3]), std::atoi(argv[4]));
    } else if (argc == 2 && argv[1][0] != '-') {
        written = write_examples(argv[1]);
    } else {
        std::fputs("Usage: generate FOLDER\n"
                   "       generate --large FILE PARTIALS POINTS\n",
                   stderr);
    }
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
