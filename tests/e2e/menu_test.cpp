#include "tests/e2e/menu_test.h"

#include "tests/e2e/expected.h"
#include "tests/e2e/menu_rows.h"

#include <algorithm>

namespace {

constexpr Spot menu_spot = {20, 20};
constexpr Duration patience(8000);
constexpr Duration surplus(30); // what comes unasked comes at once

double red(double level) {
    return level > -0.07 ? (level + 0.07) * 6.0 : 0.0;
}

double green_part(double level) {
    return level > -0.45 ? (level + 0.45) * 1.3 : 0.0;
}

} // namespace

Rgb contour(double from, double to) {
    const double a = from / 300.0;
    const double b = to / 300.0;
    return rgb((red(a) + red(b)) / 2.0, (green_part(a) + green_part(b)) / 2.0,
               ((a + 0.8) * 0.7 + (b + 0.8) * 0.7) / 2.0);
}

void MenuTest::begin(const std::string &options) {
    begin_on(tones_file(), options);
}

void MenuTest::begin_on(const std::string &content, const std::string &options) {
    folder.write("tones.pt", content);
    std::vector<std::string> arguments = {"tones.pt"};
    if (!options.empty()) {
        arguments.push_back(options);
    }
    start(arguments, "tones.pt");
    listen_from_now();
}

void MenuTest::listen_from_now() {
    program->listen(Duration(20));
    heard = program->output().size();
}

void MenuTest::choose(const std::string &way, const std::vector<std::string> &modifiers) {
    const std::vector<int> rows = rows_of(way);
    ASSERT_FALSE(rows.empty()) << way;
    ASSERT_TRUE(hands->choose(rows, menu_spot, modifiers)) << way;
}

std::string MenuTest::said_until(const std::string &text) {
    program->expect(text, patience);
    program->listen(surplus);
    const std::string all = program->output();
    const std::string said = all.substr(heard);
    heard = all.size();
    return said;
}

void MenuTest::expect_said(const std::string &text) {
    EXPECT_EQ(said_until(text), text);
}

void MenuTest::expect_said_around(const std::string &begin, const std::string &end) {
    program->expect(end, patience);
    program->listen(surplus);
    const std::string all = program->output();
    const std::string said = all.substr(heard);
    EXPECT_TRUE(said.starts_with(begin)) << said.substr(0, begin.size() + 80);
    EXPECT_TRUE(said.ends_with(end))
        << said.substr(said.size() - std::min(said.size(), size_t{200}));
    heard = all.size();
}

void MenuTest::expect_dialogue(const std::string &way, const std::string &reply,
                               const std::string &text) {
    choose(way);
    program->send(reply);
    expect_said(text);
}

void MenuTest::expect_colour(double x, double y, const Rgb &colour, int tolerance) {
    const Spot at = spot(x, y);
    picture = screen.wait_for(
        window, [&](const Image &image) { return near(image.at(at), colour, tolerance); },
        patience);
    EXPECT_TRUE(near(picture.at(at), colour, tolerance))
        << "at " << x << ", " << y << ": " << picture.at(at) << " instead of " << colour;
}

void MenuTest::expect_count(const Rgb &colour, int count) {
    picture = screen.wait_for(
        window, [&](const Image &image) { return image.count(colour) == count; }, patience);
    EXPECT_EQ(picture.count(colour), count) << colour;
}

void MenuTest::expect_picture(const Image &earlier) {
    picture = screen.wait_for(
        window, [&](const Image &image) { return image == earlier; }, patience);
    EXPECT_TRUE(picture == earlier);
}

void MenuTest::sweep(double x0, double y0, double x1, double y1) {
    ASSERT_TRUE(hands->drag(Button::left, spot(x0, y0), spot(x1, y1)));
    picture = screen.wait_for(
        window, [&](const Image &image) { return image.holds(spot(x1, y1), sweep_colour, 2); },
        patience);
}

void MenuTest::click(double x, double y) {
    ASSERT_TRUE(hands->click(Button::left, spot(x, y)));
}

void MenuTest::expect_alive() {
    const Frame before = screen.frame(window);
    ASSERT_TRUE(hands->resize(before.width + 150, before.height + 50));
    const auto axis_stands = [this] { return picture.holds(spot(0.0, 0.3), rgb(0.4, 0.32, 0.23)); };
    wait_until(patience, [&] {
        picture = screen.capture(window);
        return axis_stands();
    });
    ASSERT_EQ(picture.width, before.width + 150);
    EXPECT_TRUE(axis_stands()) << "no axis at its new place";
}
