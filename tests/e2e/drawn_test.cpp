#include "tests/e2e/drawn_test.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

constexpr Duration patience(8000);
constexpr int reach = 1;          // pixels that a dot may lie beside its computed place
constexpr double hidden = 0.005;  // share of points that others, the axes and texts may cover
constexpr size_t few_missing = 4; // the same for small stores

std::vector<DrawnPartial> read_list(const std::string &path) {
    std::ifstream file(path);
    std::vector<DrawnPartial> list;
    std::string bracket, word;
    size_t count = 0;
    file >> bracket >> word >> count; // ( PARTIALS n
    while (file >> bracket >> word >> count && word == "POINTS") {
        DrawnPartial partial(count);
        for (DrawnPoint &point : partial) {
            file >> point.time >> point.freq >> point.level;
        }
        file >> bracket;
        list.push_back(partial);
    }
    return list;
}

} // namespace

void DrawnTest::open_example(const std::string &name) {
    const std::string example = std::string(EXAMPLES_DIR "/") + name;
    std::filesystem::copy_file(example, folder.path() + "/" + name);
    model = read_list(example);
    ASSERT_FALSE(model.empty());
    ASSERT_NO_FATAL_FAILURE(start({name, "-fb"}, name));
    listen_from_now();
}

double DrawnTest::end() const {
    double last = 0.0;
    for (const DrawnPartial &partial : model) {
        for (const DrawnPoint &point : partial) {
            last = std::max(last, point.time);
        }
    }
    return last;
}

double DrawnTest::top() const {
    double highest = 0.0;
    for (const DrawnPartial &partial : model) {
        for (const DrawnPoint &point : partial) {
            highest = std::max(highest, point.freq);
        }
    }
    return highest;
}

void DrawnTest::sweep_model(double from_time, double from_freq, double to_time, double to_freq) {
    const double across = end(), up = top();
    sweep(from_time / across, from_freq / up, to_time / across, to_freq / up);
    for (DrawnPartial &partial : model) {
        for (DrawnPoint &point : partial) {
            if (point.time > from_time && point.time < to_time && point.freq > from_freq &&
                point.freq < to_freq) {
                point.selected = true;
            }
        }
    }
}

void DrawnTest::select_everything() {
    choose("Edit/Select/All");
    expect_said("Select: All\t Select All\n");
    for (DrawnPartial &partial : model) {
        for (DrawnPoint &point : partial) {
            point.selected = true;
        }
    }
}

/// What is wrong with the last picture; empty when it shows the model.
std::string DrawnTest::differences() const {
    const double across = end(), up = top();
    std::vector<bool> expected(picture.pixels.size());
    size_t points = 0, missing = 0;
    for (const DrawnPartial &partial : model) {
        for (const DrawnPoint &point : partial) {
            const Spot at = spot(point.time / across, point.freq / up);
            ++points;
            missing += picture.holds(at, point.selected ? green : dot, reach) ? 0 : 1;
            for (int y = at.y - reach; y <= at.y + reach; ++y) {
                for (int x = at.x - reach; x <= at.x + reach; ++x) {
                    if (x >= 0 && y >= 0 && x < picture.width && y < picture.height) {
                        expected[static_cast<size_t>(y * picture.width + x)] = true;
                    }
                }
            }
        }
    }
    size_t stray = 0;
    for (size_t k = 0; k < picture.pixels.size(); ++k) {
        const Rgb &pixel = picture.pixels[k];
        stray += !expected[k] && (near(pixel, dot) || near(pixel, green)) ? 1 : 0;
    }
    const size_t allowed = few_missing + static_cast<size_t>(hidden * static_cast<double>(points));
    if (missing <= allowed && stray == 0) {
        return "";
    }
    return std::to_string(missing) + " of " + std::to_string(points) + " points missing, " +
           std::to_string(stray) + " dots elsewhere";
}

void DrawnTest::expect_model(const std::string &name) {
    wait_until(patience, [&] {
        picture = screen.capture(window);
        return differences().empty();
    });
    EXPECT_EQ(differences(), "") << name;
    std::filesystem::create_directories(PICTURES_DIR);
    picture.save(std::string(PICTURES_DIR "/") + name + ".ppm");
}
