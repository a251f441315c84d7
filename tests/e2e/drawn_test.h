// tests/e2e/drawn_test.h -- the fixture of tests that change the bundled examples through the
// menu and compare every breakpoint of the picture with a store of their own.
#pragma once

#include "tests/e2e/menu_test.h"

#include <string>
#include <vector>

/// A breakpoint as a partials list holds it.
struct DrawnPoint {
    double time, freq, level; // seconds, Hz, dB
    bool selected = false;
};
using DrawnPartial = std::vector<DrawnPoint>;

class DrawnTest : public MenuTest {
  protected:
    /// Opens an example of this build in the flat view with breakpoints; reads it into `model`.
    void open_example(const std::string &name);

    /// Waits until the picture shows the points of `model`, each in the colour of its flag and
    /// no dot anywhere else, and keeps it in PICTURES_DIR under this name.
    void expect_model(const std::string &name);

    /// Selects the points of the model in a rectangle, by a sweep over it in the window.
    void sweep_model(double from_time, double from_freq, double to_time, double to_freq);

    /// Selects every point by the menu.
    void select_everything();

    /// The last time and the highest frequency of the model: the far ends of the axes.
    double end() const;
    double top() const;

    std::vector<DrawnPartial> model;

  private:
    std::string differences() const;
};
