#include "material.h"
#include "random.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr size_t fewest_points = 2; // a shorter partial is dropped on reading

bool worth_writing(const Partial &partial) {
    return partial.size() >= fewest_points;
}

void write_point(FILE *file, const Point &point) {
    std::fprintf(file, "%8.3f %9.3f %8.3f\n", point.time, point.freq, point.level);
}

} // namespace

void write_list(FILE *file, const Sound &sound) {
    std::fprintf(file, "( PARTIALS %td\n",
                 std::count_if(sound.begin(), sound.end(), worth_writing));
    for (const Partial &partial : sound) {
        if (!worth_writing(partial)) {
            continue;
        }
        std::fprintf(file, "( POINTS %zu\n", partial.size());
        for (const Point &point : partial) {
            write_point(file, point);
        }
        std::fputs(")\n", file);
    }
    std::fputs(")\n", file);
}

void write_large_list(FILE *file, int partials, int points) {
    Random random(7);
    std::fprintf(file, "( PARTIALS %d\n", partials);
    for (int i = 0; i < partials; ++i) {
        const double start = random.between(0.0, 60.0);
        const double freq = 40.0 * std::exp2(random.between(0.0, 8.5));
        const double level = random.between(-60.0, -10.0);
        std::fprintf(file, "( POINTS %d\n", points);
        for (int j = 0; j < points; ++j) {
            write_point(file, {start + j * hop, freq * random.between(0.98, 1.02),
                               level + random.between(-6.0, 6.0)});
        }
        std::fputs(")\n", file);
    }
    std::fputs(")\n", file);
}
