#include "bench/plain_formats.h"

#include "import/afile.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Words {
    FILE *file;
    char word[256];

    bool next() {
        return std::fscanf(file, "%255s", word) == 1;
    }
    void skip(int count) {
        for (int i = 0; i < count; ++i) {
            next();
        }
    }
    bool is(const char *text) const {
        return std::strcmp(word, text) == 0;
    }
    int integer() {
        next();
        return std::atoi(word);
    }
    double number() {
        next();
        return std::atof(word);
    }
    bool up_to(const char *text) {
        while (next()) {
            if (is(text)) {
                return true;
            }
            if (is("ENDC")) {
                return false;
            }
        }
        return false;
    }
};

float decibels(double amplitude) {
    return static_cast<float>(amplitude > 0.0 ? 20.0 * std::log10(amplitude) : -140.0);
}

float phase_after(const Breakpoint &before, float time, double turns) {
    double whole;
    const float cycles = (time - before.time) * before.freq;
    float position = static_cast<float>(before.phase / two_pi + std::modf(cycles, &whole) + turns);
    if (position >= 1.0f) {
        position -= 1.0f;
    }
    return static_cast<float>(position * two_pi);
}

void follow_freq(PlainStore &store, float freq) {
    store.minfreq = freq < store.minfreq ? freq : store.minfreq;
    store.maxfreq = freq > store.maxfreq ? freq : store.maxfreq;
}

void follow_amp(PlainStore &store, float amp) {
    store.maxamp = amp > store.maxamp ? amp : store.maxamp;
}

void make_room(PlainStore &store) {
    for (const int32_t n : store.counts) {
        store.points.push_back(static_cast<Breakpoint *>(
            std::calloc(static_cast<size_t>(n > 0 ? n : 1), sizeof(Breakpoint))));
    }
}

void chain(PlainStore &store) {
    for (size_t i = 0; i < store.counts.size(); ++i) {
        for (int j = 1; j < store.counts[i]; ++j) {
            Breakpoint *point = store.points[i] + j;
            point->phase = phase_after(point[-1], point->time, 0.0);
        }
    }
}

bool load_spear(Words &in, PlainStore &store) {
    in.skip(6);
    store.counts.resize(static_cast<size_t>(in.integer()));
    std::rewind(in.file);
    in.skip(8);
    for (int32_t &n : store.counts) {
        in.next();
        n = in.integer();
        in.skip(2 + 3 * n);
    }
    make_room(store);
    std::rewind(in.file);
    in.skip(8);
    store.minfreq = 24000.0f;
    store.maxfreq = 0.0f;
    store.maxamp = -120.0f;
    for (size_t i = 0; i < store.counts.size(); ++i) {
        in.skip(4);
        for (int j = 0; j < store.counts[i]; ++j) {
            Breakpoint &point = store.points[i][j];
            point.time = static_cast<float>(in.number());
            point.freq = static_cast<float>(in.number());
            point.amp = decibels(in.number());
            follow_freq(store, point.freq);
            follow_amp(store, point.amp);
        }
    }
    chain(store);
    return true;
}

bool load_spear_frames(Words &in, PlainStore &store) {
    in.skip(6);
    store.counts.resize(static_cast<size_t>(in.integer()));
    in.next();
    const int frames = in.integer();
    std::rewind(in.file);
    in.skip(10);
    for (int i = 0; i < frames; ++i) {
        in.next();
        for (int left = in.integer(); left > 0; --left) {
            ++store.counts[static_cast<size_t>(in.integer())];
            in.skip(2);
        }
    }
    make_room(store);
    std::rewind(in.file);
    in.skip(10);
    std::vector<int> last(store.counts.size(), -1);
    for (int i = 0; i < frames; ++i) {
        const float time = static_cast<float>(in.number());
        for (int left = in.integer(); left > 0; --left) {
            const size_t index = static_cast<size_t>(in.integer());
            Breakpoint &point = store.points[index][++last[index]];
            point.time = time;
            point.freq = static_cast<float>(in.number());
            point.amp = decibels(in.number());
            follow_freq(store, point.freq);
            follow_amp(store, point.amp);
        }
    }
    chain(store);
    return true;
}

/// Goes to the rows of the next frame; their number, or -1 at the end of the data.
int enter_rows(Words &in, const char *signature, float &time) {
    if (!in.is(signature) && !in.up_to(signature)) {
        return -1;
    }
    in.skip(2);
    time = static_cast<float>(in.number());
    if (!in.up_to("0x0004")) {
        return -1;
    }
    const int rows = in.integer();
    in.next();
    return rows;
}

void enter_tracks(Words &in) {
    std::rewind(in.file);
    in.up_to("SDFC");
    in.up_to("0x0004");
}

bool load_tracks(Words &in, PlainStore &store, const char *signature, bool radians) {
    float time;
    int highest = 0;
    enter_tracks(in);
    for (int rows; (rows = enter_rows(in, signature, time)) >= 0; in.next()) {
        for (; rows > 0; --rows) {
            const int index = in.integer();
            highest = index > highest ? index : highest;
            in.skip(3);
        }
    }
    store.counts.resize(static_cast<size_t>(highest));
    store.index.resize(static_cast<size_t>(highest));
    enter_tracks(in);
    for (int rows; (rows = enter_rows(in, signature, time)) >= 0; in.next()) {
        for (; rows > 0; --rows) {
            ++store.counts[static_cast<size_t>(in.integer() - 1)];
            in.skip(3);
        }
    }
    make_room(store);
    std::vector<int> next(store.counts.size());
    enter_tracks(in);
    for (int rows; (rows = enter_rows(in, signature, time)) >= 0; in.next()) {
        for (; rows > 0; --rows) {
            const size_t part = static_cast<size_t>(in.integer() - 1);
            store.index[part] = {static_cast<int32_t>(part), 0};
            const int place = next[part]++;
            Breakpoint &point = store.points[part][place];
            point.time = time;
            point.freq = static_cast<float>(in.number());
            point.amp = decibels(in.number());
            follow_amp(store, point.amp);
            const double phase = in.number();
            point.phase =
                place > 0 ? phase_after(store.points[part][place - 1], time, radians ? phase : 0.0)
                          : 0.0f;
            point.ampunits = 1;
        }
    }
    return true;
}

bool enter_curve(Words &in) {
    std::rewind(in.file);
    in.skip(3);
    return in.is("1FQ0");
}

/// Reads a frame of the curve; true where another follows.
bool read_frame(Words &in, Breakpoint &point) {
    in.skip(2);
    point.time = static_cast<float>(in.number());
    in.skip(4);
    point.freq = static_cast<float>(in.number());
    point.amp = -140.0f;
    for (int i = 0; i < 3; ++i) {
        in.next();
        if (in.is("1FQ0") || in.is("ENDC")) {
            return in.is("1FQ0");
        }
    }
    point.amp = decibels(std::atof(in.word));
    in.next();
    return !in.is("ENDC");
}

bool load_curve(Words &in, PlainStore &store) {
    Breakpoint frame = {};
    store.counts.resize(1);
    if (!enter_curve(in) || !read_frame(in, frame)) {
        return false;
    }
    bool more = true;
    while (more) {
        more = read_frame(in, frame);
        ++store.counts[0];
    }
    make_room(store);
    enter_curve(in);
    read_frame(in, frame);
    const int n = store.counts[0];
    Breakpoint *points = store.points[0];
    for (int j = 0; j < n; ++j) {
        read_frame(in, points[j]);
        points[j].phase = j > 0 ? phase_after(points[j - 1], points[j].time, 0.0) : 0.0f;
        points[j].ampunits = 1;
        std::printf("PARRAY[0][%d]: %f  %f  %f\n", j, points[j].time, points[j].freq,
                    points[j].amp);
    }
    store.maxamp = -10.0f;
    points[0].amp = -140.0f;
    points[1].amp = -92.0f;
    points[n - 1].amp = -140.0f;
    points[n - 2].amp = -122.0f;
    points[0].freq = points[1].freq > points[0].freq ? points[1].freq : points[0].freq;
    return true;
}

bool load_words(Words &in, int type, PlainStore &store) {
    switch (type) {
    case spear_partials:
        return load_spear(in, store);
    case spear_frames:
        return load_spear_frames(in, store);
    case sdif_inharmonic:
        return load_tracks(in, store, "1TRC", true);
    case sdif_harmonic:
        return load_tracks(in, store, "1HRM", false);
    default:
        return load_curve(in, store);
    }
}

} // namespace

bool load_plain_format(const char *name, int type, PlainStore &store) {
    Words in{std::fopen(name, "r"), ""};
    if (in.file == nullptr) {
        return false;
    }
    const bool loaded = load_words(in, type, store);
    std::fclose(in.file);
    return loaded;
}
