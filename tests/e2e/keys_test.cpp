// Real key strokes: what they say on the console and what the window shows of them.

#include "tests/e2e/menu_test.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

constexpr double high = 0.8;
constexpr Spot aside = {20, 60};
const Rgb gesture_text = rgb(0.46, 0.35, 0.06);
const Rgb marker = rgb(1.0, 0.9, 0.0);

/// A source at 600 Hz whose level dips twice, a target that swings about 1500 Hz at one level,
/// and two partials that set the range.
std::string gestures_file() {
    return "( PARTIALS 4\n"
           "( POINTS 2\n0.0 2500 0\n2.0 2500 0\n)\n"
           "( POINTS 5\n0.0 600 -20\n0.5 600 -80\n1.0 600 -20\n1.5 600 -80\n2.0 600 -20\n)\n"
           "( POINTS 5\n0.0 1500 -20\n0.5 1600 -20\n1.0 1400 -20\n1.5 1600 -20\n2.0 1400 -20\n)\n"
           "( POINTS 2\n0.0 250 -60\n0.5 250 -60\n)\n"
           ")\n";
}

std::string times(int count, const std::string &text) {
    std::string all;
    for (int k = 0; k < count; ++k) {
        all += text;
    }
    return all;
}

class Keys : public MenuTest {
  protected:
    /// Strokes one after the other, named as xdotool names them.
    void press(const std::vector<std::string> &names) {
        std::vector<std::string> command = {"xdotool", "key", "--delay", "5"};
        command.insert(command.end(), names.begin(), names.end());
        ASSERT_TRUE(hands->move(aside));
        ASSERT_EQ(run_command(command, desktop.display()), 0);
    }
    void repeat(const std::string &name, int count) {
        press(std::vector<std::string>(static_cast<size_t>(count), name));
    }

    /// Strokes after which the picture is another one, and strokes that bring the first one back.
    void expect_change(const std::vector<std::string> &there, const std::vector<std::string> &back,
                       const std::string &said_there = "", const std::string &said_back = "") {
        const Image start = screen.settled(window);
        press(there);
        expect_said(said_there);
        picture = screen.wait_for(window, [&](const Image &image) { return !(image == start); });
        EXPECT_FALSE(picture == start) << there.front();
        press(back);
        expect_said(said_back);
        expect_picture(start);
    }
};

} // namespace

TEST_F(Keys, ViewKeysChangeThePictureAndBack) {
    begin("-fb");
    expect_change({"c"}, {"shift+c"});
    expect_change({"h"}, {"shift+h"});
    expect_change({"i"}, {"shift+i"});
    expect_change({"x"}, {"x"});
    expect_change({"x", "y"}, {"y", "x"});
    expect_change({"greater"}, {"less"});
    expect_change({"d"}, {"d"}, "RAN\n");
    expect_change({"m"}, {"m"}, "MIDI: ON\n", "MIDI: OFF\n");
    press({"m"});
    expect_said("MIDI: ON\n");
    expect_change({"w"}, {"w"}, "mod.wheel->selection: ON\n", "mod.wheel->selection: OFF\n");
    press({"m", "v", "q", "ctrl+l", "o", "shift", "ctrl", "alt", "F5", "space"});
    expect_said("MIDI: OFF\nVerbose shell\nPressed key : q \n^l\t Not implemented yet...\n"
                "o|O\nNot implemented yet...\n");
}

TEST_F(Keys, SelectionAndAmplitudeStep) {
    begin("-fb");
    press({"alt+a"});
    expect_said("<ctrl>a|A\nSelect All\na|A\n");
    expect_count(green, 15);
    press({"ctrl+Delete"});
    expect_said("Deselect\n");
    expect_count(green, 0);

    sweep(0.2, 0.75, 0.3, 0.85);
    expect_count(green, 1);
    press({"minus"});
    expect_said("Amp: set the step value\n");
    press({"3", "minus"});
    expect_colour(0.375, high, contour(-3.0, 0.0));
    EXPECT_GT(picture.count(gesture_text), 20) << "the step is not told";
    repeat("minus", 9);
    expect_colour(0.375, high, contour(-30.0, 0.0));
    repeat("equal", 10);
    expect_colour(0.375, high, loudest);
    press({"0"});
    expect_count(gesture_text, 0);

    press({"alt+r", "alt+l"});
    expect_said("r\n4\nSelect: Right\t Select: Left\t ");
    expect_count(green, 4); // and the one at time 0, which the axis hides
    repeat("bracketright", 1);
    repeat("alt+bracketleft", 2);
    expect_count(green, 3);
    press({"shift+alt+r"});
    expect_said("R\n5\nSelect: Remainder\t ");
    expect_count(green, 0);
}

TEST_F(Keys, GesturesAndRetuning) {
    begin_on(gestures_file(), "-fb");
    click(0.25, 0.24);
    click(0.75, 0.24);
    expect_said("##FOUND: 1  1\n##FOUND: 1  3\n##FOUN2: 1  1\n");
    press({"alt+Down"});
    expect_said("4\nTarget partial(s) must be selected\n");
    sweep(-0.03, 0.5, 1.03, 0.7);
    expect_colour(0.5, 1400.0 / 2500.0, green);

    repeat("ctrl+Down", 5);
    expect_said(times(5, "2\n"));
    expect_colour(0.5, (1500.0 - 100.0 * std::pow(0.92, 5)) / 2500.0, green);
    EXPECT_GT(picture.count(gesture_text), 20) << "the gesture is not told";
    repeat("ctrl+Down", 75);
    expect_said(times(75, "2\n"));
    for (const double x : {0.25, 0.5, 0.75}) {
        expect_colour(x, 1500.0 / 2500.0, green);
    }

    repeat("alt+Down", 60);
    expect_said(times(60, "4\ndirection = -3\n"));
    repeat("alt+Up", 1);
    expect_said("4\ndirection = 3\n");
    expect_count(gesture_text, 0);
    press({"Delete"});
    click(0.25, 0.6);
    press({"equal"});
    ASSERT_TRUE(program->expect("##FOUND: 2  1\n")) << program->output();
    ASSERT_TRUE(program->expect("parray[2][1].amp = "));
    ASSERT_TRUE(program->expect("\nAmp: set the step value\n"));
    const std::string said = program->output();
    const double level = std::stod(said.substr(said.rfind(" = ") + 3));
    const double dip = std::pow(10.0, -60.0 / 20.0);
    const double followed = dip + (1.0 - dip) * std::pow(0.98, 60);
    EXPECT_NEAR(level, -20.0 + 20.0 * std::log10(1.02 * followed - 0.02 * dip), 0.001);
}

TEST_F(Keys, ArrowsMoveAndRetuneAFoundPoint) {
    begin_on(gestures_file(), "-fb");
    click(0.25, 0.24);
    expect_said("##FOUND: 1  1\n");
    expect_colour(0.25, 0.24, marker);
    press({"Right", "Right", "Left"});
    expect_colour(0.5, 0.24, marker);
    repeat("Up", 150);
    expect_said(times(150, "0\n"));
    expect_colour(0.5, 0.24 * std::pow(1.00125, 150), marker);
    repeat("Down", 150);
    expect_said(times(150, "0\n"));
    expect_colour(0.5, 0.24, marker);
    press({"shift+Up"});
    expect_said("1\n");
    sweep(-0.03, 0.9, 1.03, 1.03);
    press({"shift+Up"});
    expect_said("1\nCurrent: [0]\tNext: [1]\n");
    expect_colour(0.75, 0.24, green);
}

TEST_F(Keys, ShellAndBack) {
    begin("-fb");
    press({"Escape"});
    expect_said("\nLaunch UNIX shell? Which? ");
    program->send("no\n");
    expect_said("Shell operation cancelled...\n");

    press({"Escape"});
    expect_said("\nLaunch UNIX shell? Which? ");
    program->send("sh\n");
    ASSERT_TRUE(program->expect("/bin/sh\n")) << program->output();
    program->send("echo answer $((6 * 7)); pwd\n");
    EXPECT_TRUE(program->expect("answer 42\n" + folder.path() + "\n")) << program->output();
    program->send("exit\n");
    EXPECT_TRUE(program->expect("Shell operation terminated...\n")) << program->output();
    press({"q"});
    EXPECT_TRUE(program->expect("Pressed key : q \n")) << program->output();
    expect_alive();
}
