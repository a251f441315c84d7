#include "tests/e2e/breakpoints_test.h"

#include "tests/e2e/expected.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

const Rgb plain_dot = rgb(0.7, 0.0, 0.3);
const Rgb selected_dot = rgb(0.0, 0.75, 0.0);
const Rgb marker = rgb(1.0, 0.9, 0.0);
const Rgb sweep_line = rgb(0.4, 0.25, 0.45);

constexpr Duration patience(5000);
constexpr double length = 2.0;   // seconds
constexpr double lowest = 250.0; // Hz
constexpr double highest = 2500.0;
constexpr double grid = 0.5; // seconds between points

// Of each partial: its frequency, the time of its first point, how many points.
struct Tone {
    double hertz, start;
    int points;
};
constexpr std::array<Tone, 5> tones = {
    {{2000.0, 0.0, 5}, {1200.0, 0.0, 5}, {600.0, 0.0, 5}, {2500.0, 1.5, 2}, {250.0, 0.0, 2}}};

const Tone &tone_of(PointName name) {
    return tones[static_cast<size_t>(name.partial)];
}

double time_of(PointName name) {
    return tone_of(name).start + grid * name.point;
}

bool among(PointName name, const Points &points) {
    return std::find(points.begin(), points.end(), name) != points.end();
}

double share(double of, double whole) {
    return of / whole;
}

} // namespace

std::string axis_name(const testing::TestParamInfo<FrequencyAxis> &info) {
    return info.param == FrequencyAxis::linear ? "Linear" : "Logarithmic";
}

void BreakpointsTest::open() {
    folder.write("tones.pt", tones_file());
    const std::string options = GetParam() == FrequencyAxis::linear ? "-fb" : "-fbl";
    ASSERT_NO_FATAL_FAILURE(launch({"tones.pt", options}, "tones.pt"));
    expect_points({});
    ASSERT_TRUE(program->expect("\n"));
    told = program->output().size();
}

void BreakpointsTest::stretch(int width, int height) {
    ASSERT_TRUE(hands->resize(width, height));
    expect_points({});
}

Spot BreakpointsTest::at(double seconds, double hertz) const {
    const bool linear = GetParam() == FrequencyAxis::linear;
    return spot(seconds / length,
                linear ? hertz / highest : std::log(hertz / lowest) / std::log(highest / lowest));
}

Spot BreakpointsTest::at(PointName name) const {
    return at(time_of(name), tone_of(name).hertz);
}

const Points &BreakpointsTest::all_points() {
    static const Points points = [] {
        Points list;
        for (int i = 0; i < static_cast<int>(tones.size()); ++i) {
            for (int j = 0; j < tones[static_cast<size_t>(i)].points; ++j) {
                // The frequency axis hides what stands at time 0, the time axis the lowest.
                if (time_of({i, j}) > 0.0 && tone_of({i, j}).hertz > lowest) {
                    list.push_back({i, j});
                }
            }
        }
        return list;
    }();
    return points;
}

void BreakpointsTest::sweep(Spot from, Spot to, const Modifiers &modifiers) {
    ASSERT_TRUE(hands->drag(Button::left, from, to, modifiers));
}

void BreakpointsTest::click(Spot where, const Modifiers &modifiers) {
    ASSERT_TRUE(hands->click(Button::left, where, modifiers));
}

void BreakpointsTest::pan(Spot from, Spot to) {
    const Spot first = Hands::first_step(from, to);
    ASSERT_TRUE(hands->drag(Button::left, from, to, {"shift"}));
    pose.right += share(to.x - first.x, picture.width);
    pose.up -= share(to.y - first.y, picture.height);
}

void BreakpointsTest::zoom(Spot from, Spot to) {
    const Spot first = Hands::first_step(from, to);
    ASSERT_TRUE(hands->drag(Button::left, from, to, {"ctrl"}));
    pose.aperture -= 2.0 * share((to.x - first.x) - (to.y - first.y), picture.width);
    pose.aperture = std::min(pose.aperture, 5.0);
}

Rgb BreakpointsTest::colour_of(PointName name, const Points &selected, const Points &found) const {
    if (among(name, found)) {
        return marker;
    }
    return among(name, selected) ? selected_dot : plain_dot;
}

bool BreakpointsTest::shows(const Points &selected, const Points &found) const {
    const Points &all = all_points();
    return std::all_of(all.begin(), all.end(), [&](PointName name) {
        return near(picture.at(at(name)), colour_of(name, selected, found));
    });
}

void BreakpointsTest::expect_points(const Points &selected, const Points &found) {
    wait_until(patience, [&] {
        picture = screen.capture(window);
        return shows(selected, found);
    });
    for (const PointName name : all_points()) {
        const Rgb colour = colour_of(name, selected, found);
        EXPECT_TRUE(near(picture.at(at(name)), colour))
            << '[' << name.partial << "][" << name.point << "] at " << at(name).x << ", "
            << at(name).y << ": " << picture.at(at(name)) << " instead of " << colour;
    }
}

/// How many of eight places of the rectangle, its corners and the middles of its sides, show it.
int BreakpointsTest::rectangle_spots(Spot from, Spot to) const {
    const Spot middle = {(from.x + to.x) / 2, (from.y + to.y) / 2};
    int count = 0;
    for (const int x : {from.x, middle.x, to.x}) {
        for (const int y : {from.y, middle.y, to.y}) {
            const bool inside = x == middle.x && y == middle.y;
            count += !inside && picture.holds({x, y}, sweep_line) ? 1 : 0;
        }
    }
    return count;
}

void BreakpointsTest::expect_rectangle(Spot from, Spot to) {
    wait_until(patience, [&] {
        picture = screen.capture(window);
        return rectangle_spots(from, to) == 8;
    });
    EXPECT_EQ(rectangle_spots(from, to), 8);
}

void BreakpointsTest::expect_no_rectangle(Spot from, Spot to) {
    wait_until(patience, [&] {
        picture = screen.capture(window);
        return rectangle_spots(from, to) == 0;
    });
    EXPECT_EQ(rectangle_spots(from, to), 0);
}

void BreakpointsTest::expect_said(const std::string &text) {
    wait_until(patience, [&] {
        program->listen(Duration(20));
        return program->output().size() - told >= text.size();
    });
    EXPECT_EQ(program->output().substr(told), text);
}

Image BreakpointsTest::line(int baseline) const {
    return picture.part({10, baseline - 8}, {picture.width - 11, baseline + 2});
}

Image BreakpointsTest::store_line() const {
    return line(picture.height - 6);
}

Image BreakpointsTest::view_line() const {
    return line(picture.height - 19);
}

Image BreakpointsTest::keys_line() const {
    return line(45);
}
