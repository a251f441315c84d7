// tests/e2e/menu_test.h -- the fixture of tests that work through the pop-up menu: entries by
// their texts, replies on the console, the console's words of each command as a whole.
#pragma once

#include "tests/e2e/window_test.h"

#include <string>
#include <vector>

/// The coloured tag that opens a dialogue.
inline const std::string tag = "\033[31mQuillgrove> \033[0m";

// Colours of the scene.
inline const Rgb background = rgb(0.0, 0.0, 0.1);
inline const Rgb dot = rgb(0.7, 0.0, 0.3);
inline const Rgb green = rgb(0.0, 0.75, 0.0);
inline const Rgb loudest = rgb(0.42, 0.585, 0.56);
inline const Rgb sweep_colour = rgb(0.4, 0.25, 0.45);

/// Colour half way along a contour between two levels, in dB over the loudest point.
Rgb contour(double from, double to);

class MenuTest : public WindowTest {
  protected:
    /// Starts Quillgrove on tones.pt with these options; what it says from now on is examined.
    void begin(const std::string &options);

    /// The same on a file of this content.
    void begin_on(const std::string &content, const std::string &options);

    /// What the program says from now on is examined.
    void listen_from_now();

    /// Chooses an entry by the texts on the way to it: "Process/Shift/Gain...".
    void choose(const std::string &way, const std::vector<std::string> &modifiers = {});

    /// Waits for this text; all that was said since the last call.
    std::string said_until(const std::string &text);

    /// Waits for this text and compares it with all that was said since the last call.
    void expect_said(const std::string &text);

    /// Waits until all that was said since the last call begins and ends with these texts.
    void expect_said_around(const std::string &begin, const std::string &end);

    /// Chooses, replies and compares.
    void expect_dialogue(const std::string &way, const std::string &reply, const std::string &text);

    /// Waits until the scene point has this colour.
    void expect_colour(double x, double y, const Rgb &colour, int tolerance = 2);

    /// Waits until so many pixels have this colour.
    void expect_count(const Rgb &colour, int count);

    /// Waits until the window looks so again.
    void expect_picture(const Image &earlier);

    /// Sweeps a rectangle between two corners, in scene places.
    void sweep(double x0, double y0, double x1, double y1);

    /// Clicks with the left button at a scene place.
    void click(double x, double y);

    /// The window still draws: it follows a new size.
    void expect_alive();

  private:
    size_t heard = 0; // length of the console's text that has been compared
};
