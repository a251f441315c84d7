// SDIF text of tracks, inharmonic and harmonic. Its passes share one walk, so that they meet the
// same rows: each looks for the word of the frames and the data type behind it, and passes over
// whatever else stands there. The first data type is met before the first frame is looked for.

#include "import/afile.h"
#include "import/afile_fundamental.h"

#include "store/phase.h"
#include "store/settings.h"
#include "toolbox/auxmath3d.h"

#include <cstdio>
#include <vector>

namespace {

constexpr std::string_view floats = "0x0004"; // the data type of 32-bit floats
constexpr float silence = -140.0f;            // dB

bool ended(const TokenFile &file) {
    return file.ended || (token_begins(file.token, 'E') && token_is(file.token, "ENDC"));
}

bool next(TokenFile &file) {
    read_token(file);
    return !ended(file);
}

/// Reads three tokens and keeps the last.
bool next_three(TokenFile &file) {
    for (int32_t i = 0; i < 3; ++i) {
        if (!next(file)) {
            return false;
        }
    }
    return true;
}

bool next_up_to(TokenFile &file, std::string_view text) {
    do {
        if (!next(file)) {
            return false;
        }
    } while (!token_is(file.token, text));
    return true;
}

/// Where a walk over frames stands.
struct TrackWalk {
    TokenFile &file;
    std::string_view signature;
    float time = 0.0f; // seconds, of the frame
    int32_t rows = 0;
};

TrackWalk walk_of(TokenFile &file, int32_t type) {
    return {file, type == sdif_harmonic ? "1HRM" : "1TRC"};
}

/// Goes past the header, as far as the first data type; true where there is one.
bool enter_tracks(TokenFile &file, bool echo) {
    if (!next_up_to(file, "SDFC")) {
        return false;
    }
    if (echo) {
        echo_token(file.token);
    }
    return next_up_to(file, floats);
}

/// Goes to the rows of the next frame. Its signature may be the current token already.
bool enter_frame(TrackWalk &walk) {
    TokenFile &file = walk.file;
    if (!token_is(file.token, walk.signature) && !next_up_to(file, walk.signature)) {
        return false;
    }
    if (!next_three(file)) {
        return false;
    }
    walk.time = static_cast<float>(token_number(file.token));
    if (!next_up_to(file, floats) || !next(file)) {
        return false;
    }
    walk.rows = token_integer(file.token);
    return next(file); // the number of columns
}

bool read_index(TokenFile &file, int32_t &index) {
    index = read_whole(file);
    return !ended(file);
}

bool read_value(TokenFile &file, double &value) {
    value = read_number(file);
    return !ended(file);
}

bool visit_rows(TrackWalk &walk, int32_t &highest) {
    for (int32_t i = 0; i < walk.rows; ++i) {
        int32_t index;
        if (!read_index(walk.file, index)) {
            return false;
        }
        highest = index > highest ? index : highest;
        if (!next_three(walk.file)) {
            return false;
        }
    }
    return true;
}

/// Counts a row as soon as its index is read.
bool revisit_rows(TrackWalk &walk, int32_t total, int32_t *counts) {
    for (int32_t i = 0; i < walk.rows; ++i) {
        int32_t index;
        if (!read_index(walk.file, index)) {
            return false;
        }
        if (index >= 1 && index <= total) {
            ++counts[index - 1];
        }
        if (!next_three(walk.file)) {
            return false;
        }
    }
    return true;
}

/// The same, each row told on the console.
bool tell_rows(TrackWalk &walk, int32_t total, int32_t *counts) {
    std::printf("NUM = %d\n", walk.rows);
    for (int32_t i = 0; i < walk.rows; ++i) {
        int32_t index;
        double value;
        if (!read_index(walk.file, index)) {
            return false;
        }
        if (index >= 1 && index <= total) {
            ++counts[index - 1];
        }
        std::printf("PARTIAL #%d:\t", index);
        if (!read_value(walk.file, value)) {
            return false;
        }
        std::printf(" freq=%f\t ", value);
        if (!read_value(walk.file, value)) {
            return false;
        }
        std::printf(" amp=%f \n", value);
        if (!next(walk.file)) {
            return false;
        }
    }
    return true;
}

/// Where an import stands.
struct TrackImport {
    TrackWalk walk;
    int32_t type;
    int32_t total;
    const int32_t *counts;
    PartialIndexEntry *index;
    float *loudest;
    std::vector<int32_t> next; // the next free point of each partial
};

/// The phase of a point behind another. In inharmonic tracks the file's radians are added to
/// turns, undivided.
float phase_after(const Breakpoint &before, const Breakpoint &point, double radians, int32_t type) {
    const float cycles = (point.time - before.time) * before.freq;
    return type == sdif_inharmonic ? advance_phase_by(before.phase, cycles, radians)
                                   : advance_phase(before.phase, cycles);
}

bool import_row(TrackImport &in) {
    TokenFile &file = in.walk.file;
    int32_t index;
    if (!read_index(file, index)) {
        return false;
    }
    if (index < 1) {
        std::puts("File corrupt: Zero cardinal number");
        return false;
    }
    const int32_t part = index - 1;
    if (part >= in.total || in.next[static_cast<size_t>(part)] >= in.counts[part]) {
        return false; // the passes went over different texts
    }
    in.index[part] = {part, 0};
    const int32_t place = in.next[static_cast<size_t>(part)]++;
    Breakpoint &point = parray[part][place];
    point.time = in.walk.time;
    point.amp = silence;
    point.ampunits = 1;
    point.selected = 0;
    double freq;
    double amplitude;
    double radians;
    if (!read_value(file, freq)) {
        return false;
    }
    point.freq = static_cast<float>(freq);
    if (!read_value(file, amplitude)) {
        return false;
    }
    point.amp = static_cast<float>(amp2db(amplitude));
    *in.loudest = point.amp > *in.loudest ? point.amp : *in.loudest;
    if (!read_value(file, radians)) {
        return false;
    }
    point.phase = place > 0 ? phase_after(parray[part][place - 1], point, radians, in.type) : 0.0f;
    return true;
}

bool import_rows(TrackImport &in) {
    for (int32_t i = 0; i < in.walk.rows; ++i) {
        if (!import_row(in)) {
            return false;
        }
    }
    return true;
}

/// Points that were counted and never reached.
void silence_the_rest(const TrackImport &in) {
    for (int32_t i = 0; i < in.total; ++i) {
        for (int32_t j = in.next[static_cast<size_t>(i)]; j < in.counts[i]; ++j) {
            parray[i][j].amp = silence;
        }
    }
}

void import_tracks(TrackImport &in) {
    TokenFile &file = in.walk.file;
    bool more = enter_tracks(file, false);
    while (more && enter_frame(in.walk)) {
        more = import_rows(in) && next(file);
    }
    silence_the_rest(in);
}

/// The level of point j of n, shaped by its place.
float shaped(float amp, int32_t j, int32_t n) {
    if (j == n - 2) {
        return amp > -64.0f ? amp - 36.0f : amp;
    }
    if (j == n - 1) {
        return amp > -140.0f ? -140.0f : amp;
    }
    return j == 0 ? amp - 6.0f : amp;
}

} // namespace

int32_t visit_sdiffile(TokenFile &file, int32_t *total, int32_t type) {
    TrackWalk walk = walk_of(file, type);
    int32_t highest = 0;
    bool more = enter_tracks(file, true);
    while (more && enter_frame(walk)) {
        more = visit_rows(walk, highest) && next(file);
    }
    if (highest > analysis_room(file, highest)) {
        return refuse_corrupt(file);
    }
    *total = highest;
    const std::string_view last = file.token;
    rewind_tokens(file);
    echo_token(last);
    return type;
}

int32_t revisit_sdiffile(TokenFile &file, const int32_t *total, int32_t *counts, int32_t type) {
    std::puts("revisiting SDIF File");
    if (type == sdif_fundamental) {
        return revisit_fundamental(file, counts);
    }
    TrackWalk walk = walk_of(file, type);
    bool more = enter_tracks(file, false);
    while (more && enter_frame(walk)) {
        more = (dbp ? tell_rows(walk, *total, counts) : revisit_rows(walk, *total, counts)) &&
               next(file);
    }
    rewind_tokens(file);
    return type;
}

int32_t import_sdiffile(TokenFile &file, const int32_t *total, const int32_t *counts,
                        PartialIndexEntry *index, float *loudest, int32_t type) {
    std::puts("importing SDIF File");
    if (type == sdif_fundamental) {
        return import_fundamental(file, counts, loudest);
    }
    const size_t room = static_cast<size_t>(*total) + static_cast<size_t>(spare_partials);
    TrackImport in{walk_of(file, type),       type, *total, counts, index, loudest,
                   std::vector<int32_t>(room)};
    import_tracks(in);
    rewind_tokens(file);
    return type;
}

void settle_tracks(float *low, float *high) {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            Breakpoint &point = parray[i][j];
            if (point.freq < 4.0f) {
                point.freq = 4.0f;
            } else if (point.freq > 22050.0f) {
                point.freq = 22050.0f;
            }
            *high = point.freq > *high ? point.freq : *high;
            *low = point.freq < *low ? point.freq : *low;
            point.amp = shaped(point.amp, j, npoints[i]);
        }
    }
}
