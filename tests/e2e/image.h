// tests/e2e/image.h -- a captured picture.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

struct Rgb {
    int red, green, blue; // 0 to 255
    bool operator==(const Rgb &) const = default;
};

/// Colours as GL takes them, 0 to 1; what lies outside is clamped.
Rgb rgb(double red, double green, double blue);

/// Every channel differs by `tolerance` at most.
bool near(const Rgb &a, const Rgb &b, int tolerance = 1);

std::ostream &operator<<(std::ostream &out, const Rgb &colour);

/// A place in a window: pixels from the left and from the top.
struct Spot {
    int x, y;
};

struct Image {
    int width = 0, height = 0;
    std::vector<Rgb> pixels;

    /// The pixel there; what lies outside is (-1, -1, -1).
    Rgb at(Spot spot) const;

    /// A pixel of about this colour lies within `reach` pixels of the spot.
    bool holds(Spot spot, const Rgb &colour, int reach = 1) const;

    /// How many pixels have about this colour.
    int count(const Rgb &colour) const;

    /// The part from one corner to the other, both included, as far as it lies in the picture.
    Image part(Spot top_left, Spot bottom_right) const;

    /// All pixels are the same, or there are none.
    bool blank() const;

    /// Writes a portable pixmap.
    void save(const std::string &path) const;

    bool operator==(const Image &) const = default;
};
