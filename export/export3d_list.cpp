#include "export/export3d.h"
#include "export/guard.h"
#include "export/pieces.h"
#include "store/console.h"
#include "store/settings.h"

#include <cstdio>
#include <cstring>

namespace {

const char *const ending = ".pt";

/// Names that the dialogue passes over without a word: of one character, and short ones that
/// begin with a point.
bool too_short(const char *name) {
    const size_t length = std::strlen(name);
    return length < 2 || (name[0] == '.' && length <= 3);
}

/// Asks for the name and makes it the whole one, of a file that is not there yet.
bool read_list_name(char *name, const char *prompt) {
    say(prompt);
    if (!read_path(name, true) || too_short(name)) {
        return false;
    }
    std::strncat(name, ending, list_path_size - std::strlen(name) - 1);
    return !refuse_existing(name, list_guard);
}

void write_head(NewFile &file, size_t count) {
    file.text.print("( PARTIALS\t%d\n", static_cast<int>(count));
}

void write_partial(NewFile &file, const Piece &piece) {
    file.text.print("( POINTS\t%d\n", piece.n);
    for (int32_t j = 0; j < piece.n; ++j) {
        write_point(file, piece.points[j], piece.points[j].amp);
    }
    file.text.put(")\n");
}

bool finish_list(NewFile &file) {
    file.text.put(")\n");
    return file.finish();
}

} // namespace

void audiosculpt3d(Breakpoint *const *points, const int32_t *counts, int32_t count, char *name) {
    if (!read_list_name(name, "Enter file name (w/o extension): ")) {
        name[0] = '\0';
        return;
    }
    std::printf("Exporting %d partials to: %s\n", count, name);
    if (!audiosculpt3d_c(points, counts, name, count)) {
        name[0] = '\0';
    }
    std::puts("\tdone");
}

bool audiosculpt3d_c(Breakpoint *const *points, const int32_t *counts, const char *filename,
                     int32_t count) {
    NewFile file;
    if (!create_or_refuse(file, filename, list_guard)) {
        return false;
    }
    const Pieces pieces = whole_partials(counts, count);
    write_head(file, pieces.size());
    for (const SelectedRun &whole : pieces) {
        write_partial(file, piece_of(points, whole));
        if (verbose) {
            std::putchar('.');
        }
    }
    return finish_list(file);
}

void audiosculpt3ds(Breakpoint *const *points, const int32_t *counts, int32_t count) {
    char name[list_path_size] = "";
    if (!read_list_name(name, "Enter file name (w/o sufix): ")) {
        return;
    }
    std::printf("Exporting selections to: %s\n", name);
    const int32_t wrote = audiosculpt3ds_c(points, counts, name, count);
    if (wrote > 0) {
        std::printf("Exporting %d selection%c to: %s\n", wrote, wrote == 1 ? ' ' : 's', name);
    }
    std::puts("\tdone");
}

int32_t audiosculpt3ds_c(Breakpoint *const *points, const int32_t *counts, const char *filename,
                         int32_t count) {
    const Pieces runs = exported_runs(points, counts, count);
    NewFile file;
    if (runs.empty() || !create_or_refuse(file, filename, list_guard)) {
        return 0;
    }
    write_head(file, runs.size());
    for (const SelectedRun &run : runs) {
        tell_run(run);
        write_partial(file, piece_of(points, run));
    }
    return finish_list(file) ? static_cast<int32_t>(runs.size()) : 0;
}
