#include "bench/plain_list.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

struct PlainFile {
    FILE *file;
    char word[256];
};

const char *next_word(PlainFile &in) {
    if (std::fscanf(in.file, "%255s", in.word) != 1) {
        std::clearerr(in.file); // the last word stays
    }
    return in.word;
}

void skip_words(PlainFile &in, int count) {
    for (int i = 0; i < count; ++i) {
        next_word(in);
    }
}

int read_head(PlainFile &in) {
    skip_words(in, 2);
    return std::atoi(next_word(in));
}

bool is_list(PlainFile &in) {
    const bool opened = std::strcmp(next_word(in), "(") == 0;
    const bool named = std::strcmp(next_word(in), "PARTIALS") == 0;
    std::rewind(in.file);
    return opened && named;
}

/// Stands before the values of a partial; its point count, or -1 at anything else.
int enter_partial(PlainFile &in, bool &opened) {
    if (!opened) {
        next_word(in);
    }
    opened = false;
    return std::strcmp(next_word(in), "POINTS") == 0 ? std::atoi(next_word(in)) : -1;
}

/// The revisit and the rescan: the walk that finds the point counts.
bool find_counts(PlainFile &in, int partials, int32_t *counts, PartialIndexEntry *index) {
    read_head(in);
    bool opened = false;
    for (int i = 0; i < partials; ++i) {
        counts[i] = enter_partial(in, opened);
        if (counts[i] < 2) {
            return false;
        }
        if (index != nullptr) {
            index[i] = {i, 0};
        }
        skip_words(in, 3 * counts[i]);
        opened = next_word(in)[0] == '(';
    }
    std::rewind(in.file);
    return true;
}

float shaped(float amp, int j, int n) {
    if (j == n - 2) {
        return amp > -32.0f ? amp - 18.0f : amp;
    }
    if (j == 0) {
        return amp - 6.0f;
    }
    return j == n - 1 && amp > -90.0f ? -90.0f : amp;
}

float phase_after(const Breakpoint &before, float time) {
    double whole;
    const double cycles = (static_cast<double>(time) - before.time) * before.freq;
    float position = static_cast<float>(before.phase / two_pi + std::modf(cycles, &whole));
    if (position >= 1.0f) {
        position -= 1.0f;
    }
    return static_cast<float>(position * two_pi);
}

void import_points(PlainFile &in, PlainStore &store, Breakpoint *points, int n) {
    for (int j = 0; j < n; ++j) {
        Breakpoint &point = points[j];
        point.time = static_cast<float>(std::atof(next_word(in)));
        point.freq = static_cast<float>(std::atof(next_word(in)));
        point.freq = point.freq < 4.0f ? 4.0f : point.freq > 22050.0f ? 22050.0f : point.freq;
        store.maxfreq = point.freq > store.maxfreq ? point.freq : store.maxfreq;
        store.minfreq = point.freq < store.minfreq ? point.freq : store.minfreq;
        point.amp = shaped(static_cast<float>(std::atof(next_word(in))), j, n);
        store.maxamp = point.amp > store.maxamp ? point.amp : store.maxamp;
        point.phase = j > 0 ? phase_after(points[j - 1], point.time) : 0.0f;
        point.ampunits = 1;
        point.selected = 0;
    }
}

void import_values(PlainFile &in, PlainStore &store) {
    read_head(in);
    bool opened = false;
    for (size_t i = 0; i < store.counts.size(); ++i) {
        const int n = enter_partial(in, opened);
        import_points(in, store, store.points[i], n);
        opened = next_word(in)[0] == '(';
    }
}

/// One pass of swaps of neighbouring times that run backwards.
void check_times(PlainStore &store) {
    for (size_t i = 0; i < store.counts.size(); ++i) {
        for (int j = 0; j + 1 < store.counts[i]; ++j) {
            Breakpoint *point = store.points[i] + j;
            if (point[1].time < point[0].time) {
                std::swap(point[0].time, point[1].time);
                std::putchar('*');
            }
        }
    }
}

bool load_passes(PlainFile &in, PlainStore &store) {
    if (!is_list(in)) {
        return false;
    }
    const int partials = read_head(in);
    std::rewind(in.file);
    store.counts.resize(static_cast<size_t>(partials));
    store.index.resize(static_cast<size_t>(partials));
    if (!find_counts(in, partials, store.counts.data(), store.index.data()) ||
        !find_counts(in, partials, store.counts.data(), nullptr)) {
        return false;
    }
    for (const int32_t n : store.counts) {
        store.points.push_back(
            static_cast<Breakpoint *>(std::calloc(static_cast<size_t>(n), sizeof(Breakpoint))));
    }
    import_values(in, store);
    check_times(store);
    return true;
}

} // namespace

bool load_plain(const char *name, PlainStore &store) {
    PlainFile in{std::fopen(name, "r"), ""};
    if (in.file == nullptr) {
        return false;
    }
    const bool loaded = load_passes(in, store);
    std::fclose(in.file);
    return loaded;
}

void free_plain(PlainStore &store) {
    for (Breakpoint *points : store.points) {
        std::free(points);
    }
    store = {};
}
