// The formats beside the Lisp partials list. Those that hold frames group points by their time
// to the nearest hop; a partial's number is its place in the sound.

#include "material.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

double amplitude(const Point &point) {
    return std::pow(10.0, point.level / 20.0);
}

struct Row {
    size_t index;
    Point point;
};

/// Rows by the number of their frame.
std::map<long, std::vector<Row>> frames_of(const Sound &sound) {
    std::map<long, std::vector<Row>> frames;
    for (size_t i = 0; i < sound.size(); ++i) {
        for (const Point &point : sound[i]) {
            frames[std::lround(point.time / hop)].push_back({i, point});
        }
    }
    return frames;
}

void write_sdif_head(FILE *file, const char *table) {
    std::fputs("SDIF\n\n", file);
    if (table != nullptr) {
        std::fprintf(file, "1NVT\n{\nTableName\t%s;\nWrittenBy\tgenerate;\n}\n\n", table);
    }
    std::fputs("\nSDFC\n", file);
}

void write_sdif_frame(FILE *file, const char *signature, double time, size_t rows, int columns) {
    std::fprintf(file, "\n%s\t1\t0\t%f\n  %s\t0x0004\t%zu\t%d\n", signature, time, signature, rows,
                 columns);
}

void write_tracks(FILE *file, const Sound &sound, const char *signature, const char *table) {
    write_sdif_head(file, table);
    write_sdif_frame(file, signature, 0.0, 0, 4); // readers pass over the first frame
    for (const auto &[number, rows] : frames_of(sound)) {
        write_sdif_frame(file, signature, static_cast<double>(number) * hop, rows.size(), 4);
        for (const Row &row : rows) {
            std::fprintf(file, "\t%zu\t%f\t%f\t%f\n", row.index + 1, row.point.freq,
                         amplitude(row.point), 0.0);
        }
    }
    std::fputs("\nENDC\nENDF\n", file);
}

} // namespace

void write_spear_partials(FILE *file, const Sound &sound) {
    std::fprintf(file,
                 "par-text-partials-format\npoint-type time frequency amplitude\n"
                 "partials-count %zu\npartials-data\n",
                 sound.size());
    for (size_t i = 0; i < sound.size(); ++i) {
        const Partial &partial = sound[i];
        std::fprintf(file, "%zu %zu %f %f\n", i, partial.size(), partial.front().time,
                     partial.back().time);
        for (const Point &point : partial) {
            std::fprintf(file, "%f %f %f ", point.time, point.freq, amplitude(point));
        }
        std::fputc('\n', file);
    }
}

void write_spear_frames(FILE *file, const Sound &sound) {
    const auto frames = frames_of(sound);
    std::fprintf(file,
                 "par-text-frame-format\npoint-type index frequency amplitude\n"
                 "partials-count %zu\nframe-count %zu\nframe-data\n",
                 sound.size(), frames.size());
    for (const auto &[number, rows] : frames) {
        std::fprintf(file, "%f %zu", static_cast<double>(number) * hop, rows.size());
        for (const Row &row : rows) {
            std::fprintf(file, " %zu %f %f", row.index, row.point.freq, amplitude(row.point));
        }
        std::fputc('\n', file);
    }
}

void write_sdif_tracks(FILE *file, const Sound &sound) {
    write_tracks(file, sound, "1TRC", "SinusoidalTracks");
}

void write_sdif_harmonics(FILE *file, const Sound &sound) {
    write_tracks(file, sound, "1HRM", "HarmonicTracks");
}

void write_sdif_fundamental(FILE *file, const Sound &sound) {
    write_sdif_head(file, nullptr);
    const Partial &curve = sound.front();
    for (size_t j = 0; j <= curve.size(); ++j) { // the first twice: readers pass over the first
        const Point &point = curve[j > 0 ? j - 1 : 0];
        write_sdif_frame(file, "1FQ0", point.time, 1, 4);
        std::fprintf(file, "\t%f\t%f\t%f\t%f\n", point.freq, 1.0, 1.0, amplitude(point));
    }
    std::fputs("\nENDC\nENDF\n", file);
}

void write_peaks(FILE *file, const Sound &sound) {
    std::fputs("Peaks: frequency (Hz), amplitude, duration (s)\n\n", file);
    for (const Partial &partial : sound) {
        const auto loudest =
            std::max_element(partial.begin(), partial.end(),
                             [](const Point &a, const Point &b) { return a.level < b.level; });
        std::fprintf(file, "%.2f, %.4f, %.2f\n", loudest->freq, amplitude(*loudest),
                     partial.back().time - partial.front().time);
    }
}

Sound large_sound(int partials, int points) {
    Sound sound(static_cast<size_t>(partials));
    for (int i = 0; i < partials; ++i) {
        for (int j = 0; j < points; ++j) {
            const double freq = 60.0 + 8.0 * i + std::sin(0.1 * j + i);
            sound[static_cast<size_t>(i)].push_back(
                {j * hop, freq, -30.0 - 20.0 * std::sin(0.37 * i + 0.01 * j)});
        }
    }
    return sound;
}

void write_lpc(FILE *file, const Envelope &envelope) {
    for (const EnvelopeFrame &frame : envelope) {
        std::fprintf(file, "%.3f %zu\n", frame.time, frame.points.size());
        for (const EnvelopePoint &point : frame.points) {
            std::fprintf(file, "%.6f %.1f\n", point.amplitude, point.freq);
        }
    }
}
