// tests/e2e/breakpoints_test.h -- the fixture of tests that pick breakpoints in the flat view, on
// a linear and on a logarithmic frequency axis. The store is the one of tones_file().
#pragma once

#include "tests/e2e/window_test.h"

#include <string>
#include <vector>

enum class FrequencyAxis { linear, logarithmic };

/// A breakpoint by its partial and its place in it.
struct PointName {
    int partial, point;
    bool operator==(const PointName &) const = default;
};
using Points = std::vector<PointName>;

class BreakpointsTest : public WindowTest, public testing::WithParamInterface<FrequencyAxis> {
  protected:
    using Modifiers = std::vector<std::string>;

    /// Opens the flat view with breakpoints, on the axis that the test is about.
    void open();

    /// Gives the window this size and waits until the points stand at their new places.
    void stretch(int width, int height);

    /// Pixels in the present pose: of seconds and Hz, and of a point's dot.
    Spot at(double seconds, double hertz) const;
    Spot at(PointName name) const;

    /// Every point of the store but those that the axes cover.
    static const Points &all_points();

    void sweep(Spot from, Spot to, const Modifiers &modifiers = {});
    void click(Spot where, const Modifiers &modifiers = {});

    /// Drags the view by the left button and keeps `pose` up.
    void pan(Spot from, Spot to);
    void zoom(Spot from, Spot to);

    /// Waits for a picture in which exactly these points are selected and found, all others
    /// plain; of a found point only its marker is seen.
    void expect_points(const Points &selected, const Points &found = {});

    /// The sweep's rectangle is on show between these two pixels, or none at all.
    void expect_rectangle(Spot from, Spot to);
    void expect_no_rectangle(Spot from, Spot to);

    /// All that was printed since the window stood is this.
    void expect_said(const std::string &text);

    /// Cut out of the last picture, clear of the scene: the two information lines, and the
    /// help line that tells of keys for a selection.
    Image store_line() const;
    Image view_line() const;
    Image keys_line() const;

  private:
    Rgb colour_of(PointName name, const Points &selected, const Points &found) const;
    bool shows(const Points &selected, const Points &found) const;
    int rectangle_spots(Spot from, Spot to) const;
    Image line(int baseline) const;

    size_t told = 0; // length of the console text when the window stood
};

std::string axis_name(const testing::TestParamInfo<FrequencyAxis> &info);

/// Runs a suite's tests on both axes.
#define ON_BOTH_AXES(suite)                                                                        \
    INSTANTIATE_TEST_SUITE_P(Flat, suite,                                                          \
                             testing::Values(FrequencyAxis::linear, FrequencyAxis::logarithmic),   \
                             axis_name)
