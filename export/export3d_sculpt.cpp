#include "export/export3d.h"
#include "export/guard.h"
#include "export/pieces.h"
#include "export/score.h"
#include "store/console.h"
#include "store/settings.h"

#include <cstdio>
#include <cstring>

namespace {

const char *const sculptInfo =
    "/* SCULPT: instrument for tracking linear partial data placed in makegens\n"
    "*\n"
    "*  p0 = start time\n"
    "*  p1 = duration of each point\n"
    "*  p2 = overall amplitude\n"
    "*  p3 = number of points\n"
    "*  p4 = stereo spread (0-1) <optional>\n"
    "*  function slot 1 is Gen24 =overall amp envelope (slot#, 24, <time, value>, ... )\n"
    "*  function slot 2 is Gen10 =waveform (slot#, 10, <1th_harmonic_amp>[0-1], ... "
    "<nth_harmonic_amp>[0-1])\n"
    "*  function slot 3 is Gen2  =listing of frequency points =(slot#, 2, <num_members>, where?) "
    "0= next line\n"
    "*  function slot 4 is Gen2  =listing of amplitude points\n"
    "*/\n";

/// How the two operations differ.
struct Dialect {
    const char *note;       // format of a note
    bool notices_rendering; // says something when a sound file is named
};

const Dialect of_all = {"\n\n%s(%6.3f, %6.3f,%d, %d )\n\n", false};
const Dialect of_selected = {"\n\n%s(%6.3f, %6.3f, %d, %d )\n\n", true};

bool is_real_time(const char *sound) {
    return std::strcmp(sound, ".") == 0;
}

void write_head(NewFile &file, const char *sound) {
    file.text.print("%s\n", sculptInfo);
    if (is_real_time(sound)) {
        file.text.put("\nrtsetparams(44100, 2) \n\nload(\"SCULPT\") \n");
    } else {
        file.text.print("\nload(\"sculpt\") \n\noutput(\"%s\") \n", sound);
    }
}

void write_partial(ExportText &text, const Piece &piece, const char *note, const char *instrument,
                   const ScoreParameters &with) {
    text.print("makegen(3, 2, %d, 0)\n", piece.n);
    for (int32_t j = 0; j < piece.n; ++j) {
        text.fixed(piece.points[j].freq, 8, 1);
    }
    text.print("\nmakegen(4, 2, %d, 0)\n", piece.n);
    for (int32_t j = 0; j < piece.n; ++j) {
        text.fixed(piece.points[j].amp, 7, 1);
    }
    text.print(note, instrument, static_cast<double>(with.offset + piece.start * with.stretch),
               static_cast<double>((piece.end - piece.start) * with.stretch),
               whole_part(with.amplitude), piece.n);
}

/// Everything behind the two names; `file` was just made.
void export_score(NewFile &file, const char *name, const char *sound, const Dialect &dialect,
                  Breakpoint *const *points, const Pieces &pieces) {
    const bool real_time = is_real_time(sound);
    if (!real_time && dialect.notices_rendering) {
        std::puts("Quillgrove: Generating real-time score");
    }
    write_head(file, sound);
    ScoreParameters with = {};
    if (!read_score_parameters(with, "SCULPT", "sculpt")) {
        return;
    }
    tell_score(real_time ? "RT" : "", name);
    ExportText &text = file.text;
    text.put("\nmakegen(1, 24, 1000, 0, 1, 1, 1)\nmakegen(2, 10, 1000, 1)\n");
    for (const SelectedRun &run : pieces) {
        write_partial(text, piece_of(points, run), dialect.note, real_time ? "SCULPT" : "sculpt",
                      with);
    }
    text.put("\n");
    if (verbose) {
        const std::string_view whole = text.since(0);
        std::fwrite(whole.data(), 1, whole.size(), stdout);
    }
    if (file.finish()) {
        std::puts("\tdone");
    }
}

/// The partials that hold a selected point, whole, each told.
Pieces partials_with_selection(Breakpoint *const *points, const int32_t *counts, int32_t count) {
    Pieces pieces;
    for (const SelectedRun &whole : whole_partials(counts, count)) {
        SelectedRun run;
        if (next_run(points[whole.partial], counts[whole.partial], whole.partial, 0, every_run,
                     run)) {
            pieces.push_back(whole);
        }
    }
    std::printf("Candidates: %d\n", static_cast<int>(pieces.size()));
    for (const SelectedRun &whole : pieces) {
        std::printf("Partial# %d \n", whole.partial);
    }
    return pieces;
}

} // namespace

void sculpt3d(Breakpoint *const *points, const int32_t *counts, int32_t count) {
    char name[path_size] = "";
    char sound[path_size] = "";
    std::printf("Score file name: %s", name_prompt);
    NewFile file;
    if (!read_path(name, false) || !pass_guard(file, name, plain_guard)) {
        return;
    }
    std::printf("Sound file name ( . if RT ): %s", name_prompt);
    if (read_path(sound, false)) {
        export_score(file, name, sound, of_all, points, whole_partials(counts, count));
    }
}

void sculpt3ds(Breakpoint *const *points, const int32_t *counts, int32_t count) {
    const Pieces pieces = partials_with_selection(points, counts, count);
    if (pieces.empty()) {
        std::puts("nothing selected");
        return;
    }
    std::puts("Quillgrove> Enter CMIX score file parameters");
    m();
    std::puts(" Enter CMIX score file parameters");
    constexpr size_t word_room = 256;
    char name[word_room];
    char sound[word_room];
    say("Score file name: ");
    NewFile file;
    if (!read_word(name, sizeof name) || !pass_guard(file, name, plain_guard)) {
        return;
    }
    say("Sound file name: ");
    if (read_word(sound, sizeof sound)) {
        export_score(file, name, sound, of_selected, points, pieces);
    }
}
