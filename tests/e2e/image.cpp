#include "tests/e2e/image.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <ostream>

namespace {

int channel(double value) {
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255.0));
}

} // namespace

Rgb rgb(double red, double green, double blue) {
    return {channel(red), channel(green), channel(blue)};
}

bool near(const Rgb &a, const Rgb &b, int tolerance) {
    return std::abs(a.red - b.red) <= tolerance && std::abs(a.green - b.green) <= tolerance &&
           std::abs(a.blue - b.blue) <= tolerance;
}

std::ostream &operator<<(std::ostream &out, const Rgb &colour) {
    return out << '(' << colour.red << ", " << colour.green << ", " << colour.blue << ')';
}

Rgb Image::at(Spot spot) const {
    if (spot.x < 0 || spot.y < 0 || spot.x >= width || spot.y >= height) {
        return {-1, -1, -1};
    }
    return pixels[static_cast<size_t>(spot.y) * static_cast<size_t>(width) +
                  static_cast<size_t>(spot.x)];
}

bool Image::holds(Spot spot, const Rgb &colour, int reach) const {
    for (int y = spot.y - reach; y <= spot.y + reach; ++y) {
        for (int x = spot.x - reach; x <= spot.x + reach; ++x) {
            if (near(at({x, y}), colour)) {
                return true;
            }
        }
    }
    return false;
}

int Image::count(const Rgb &colour) const {
    return static_cast<int>(
        std::count_if(pixels.begin(), pixels.end(), [&](const Rgb &p) { return near(p, colour); }));
}

Image Image::part(Spot top_left, Spot bottom_right) const {
    Image cut;
    const int left = std::max(top_left.x, 0), top = std::max(top_left.y, 0);
    cut.width = std::max(std::min(bottom_right.x + 1, width) - left, 0);
    cut.height = std::max(std::min(bottom_right.y + 1, height) - top, 0);
    for (int y = top; y < top + cut.height; ++y) {
        for (int x = left; x < left + cut.width; ++x) {
            cut.pixels.push_back(at({x, y}));
        }
    }
    return cut;
}

bool Image::blank() const {
    return std::all_of(pixels.begin(), pixels.end(),
                       [this](const Rgb &p) { return p == pixels.front(); });
}

void Image::save(const std::string &path) const {
    std::ofstream file(path, std::ios::binary);
    file << "P6\n" << width << ' ' << height << "\n255\n";
    for (const Rgb &p : pixels) {
        for (const int value : {p.red, p.green, p.blue}) {
            file.put(static_cast<char>(value));
        }
    }
}
