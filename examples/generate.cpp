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
    Sound (*make)();
    void (*write)(FILE *file, const Sound &sound);
};

const Example examples[] = {
    {"bell.pt", bell, write_list},
    {"glissando.pt", glissando, write_list},
    {"partials.pt", melody, write_list},
    {"tones.pt", tones, write_list},
    {"vowel.pt", vowel, write_list},
    {"bell.partials.txt", bell, write_spear_partials},
    {"tones.frames.txt", tones, write_spear_frames},
    {"tones.1TRC.txt", tones, write_sdif_tracks},
    {"vowel.1HRM.txt", vowel, write_sdif_harmonics},
    {"vowel.1FQ0.txt", vowel, write_sdif_fundamental},
    {"bell.peaks.txt", bell, write_peaks},
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
        const auto write = [&](FILE *file) { example.write(file, example.make()); };
        if (!write_file(folder / example.name, write)) {
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
