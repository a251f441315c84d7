#include "export/export3d.h"
#include "export/guard.h"
#include "export/pieces.h"
#include "store/settings.h"
#include "toolbox/auxmath3d.h"

#include <cstdio>

namespace {

const char *const spear_header = "par-text-partials-format\n"
                                 "point-type time frequency amplitude\n"
                                 "partials-count ";

/// Asks for the name and creates the file.
bool open_spear(NewFile &file, const GuardWords &words) {
    char name[path_size] = "";
    std::puts("Enter file name: ");
    std::fputs(name_prompt, stdout);
    return read_path(name, true) && pass_guard(file, name, words);
}

void write_head(NewFile &file, size_t count) {
    file.text.put(spear_header);
    file.text.print("%d\npartials-data\n", static_cast<int>(count));
}

/// The fourth field of the head is an end time in the format; the first phase goes there.
void write_partial(NewFile &file, size_t number, const Piece &piece, float ref) {
    file.text.print("%d %d %f %f\n", static_cast<int>(number), piece.n,
                    static_cast<double>(piece.start), static_cast<double>(piece.phase));
    for (int32_t j = 0; j < piece.n; ++j) {
        write_point(file, piece.points[j], db2amp(piece.points[j].amp) / ref);
    }
}

void finish_spear(NewFile &file) {
    if (file.finish()) {
        std::puts("Quillgrove > done");
    }
}

} // namespace

void spear(float, float, float reference, Breakpoint *const *points, const int32_t *counts,
           int32_t count) {
    std::puts("Quillgrove > Export all partials to SPEAR file");
    const float ref = db2amp(reference);
    NewFile file;
    if (!open_spear(file, plain_guard)) {
        return;
    }
    const Pieces pieces = whole_partials(counts, count);
    write_head(file, pieces.size());
    for (size_t i = 0; i < pieces.size(); ++i) {
        write_partial(file, i, piece_of(points, pieces[i]), ref);
    }
    finish_spear(file);
}

void spears(float, float, float reference, Breakpoint *const *points, const int32_t *counts,
            int32_t count) {
    std::puts("Quillgrove > Export select partials to SPEAR file");
    const Pieces candidates = exported_runs(points, counts, count);
    const float ref = db2amp(reference);
    NewFile file;
    if (candidates.empty() || !open_spear(file, selection_guard)) {
        return;
    }
    write_head(file, candidates.size());
    for (size_t r = 0; r < candidates.size(); ++r) {
        tell_run(candidates[r]);
        if (verbose) {
            std::putchar('.');
        }
        write_partial(file, r, piece_of(points, candidates[r]), ref);
        file.text.put("\n");
    }
    file.text.put("\n");
    finish_spear(file);
}
