// tests/e2e/box_view.h -- where scene points lie in the window under the start camera: 15 units
// before the middle of the unit square, opened by 5 degrees both ways, whatever the window's
// proportions.
#pragma once

#include "tests/e2e/image.h"

#include <cmath>

class BoxView {
  public:
    BoxView(int window_width, int window_height) : width(window_width), height(window_height) {}

    /// Window coordinates of a scene point, in pixels from the left and from the top.
    double across(double x, double z = 0.0) const {
        return width * (0.5 + (x - 0.5) / opening(z));
    }
    double down(double y, double z = 0.0) const {
        return height * (0.5 - (y - 0.5) / opening(z));
    }

    /// The pixel that holds a scene point.
    Spot spot(double x, double y, double z = 0.0) const {
        return {static_cast<int>(std::floor(across(x, z))),
                static_cast<int>(std::floor(down(y, z)))};
    }

    /// The other way, at Z 0: scene place of the middle of a pixel.
    double x_of(int pixel) const {
        return 0.5 + ((pixel + 0.5) / width - 0.5) * opening(0.0);
    }
    double y_of(int pixel) const {
        return 0.5 - ((pixel + 0.5) / height - 0.5) * opening(0.0);
    }

  private:
    /// Scene units that the window shows across at this depth.
    static double opening(double z) {
        return 2.0 * (15.0 - z) * std::tan(5.0 * 0.5 * 0.0174532925);
    }

    int width, height; // pixels
};
