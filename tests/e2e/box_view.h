// tests/e2e/box_view.h -- where scene points lie in the window. The camera stands 15 units before
// the middle of the unit square and opens by the same angle both ways, whatever the window's
// proportions.
#pragma once

#include "tests/e2e/image.h"

#include <cmath>

/// What view drags change.
struct Pose {
    double right = 0.0, up = 0.0;        // the picture's shift, scene units
    double aperture = 5.0;               // degrees
    double about_x = 0.0, about_y = 0.0; // rotation, degrees
};

class BoxView {
  public:
    BoxView(int window_width, int window_height, const Pose &from = {})
        : width(window_width), height(window_height), pose(from) {}

    /// The pixel that holds a scene point.
    Spot spot(double x, double y, double z = 0.0) const {
        const double turn = pose.about_y * radian;
        const double tilt = pose.about_x * radian;
        // Seen from the pivot: to the right, up, and away from the camera; the last after the turn.
        const double right = (x - 0.5) * std::cos(turn) + z * std::sin(turn);
        const double behind = (x - 0.5) * std::sin(turn) - z * std::cos(turn);
        const double up = (y - 0.5) * std::cos(tilt) - behind * std::sin(tilt);
        const double away = (y - 0.5) * std::sin(tilt) + behind * std::cos(tilt);
        const double opening = 2.0 * (15.0 + away) * std::tan(pose.aperture * 0.5 * radian);
        return {static_cast<int>(std::floor(width * (0.5 + (right + pose.right) / opening))),
                static_cast<int>(std::floor(height * (0.5 - (up + pose.up) / opening)))};
    }

  private:
    static constexpr double radian = 0.0174532925; // a degree

    int width, height; // pixels
    Pose pose;
};
