// tests/e2e/hands.h -- pointer and keyboard on a Desktop, by xdotool. No window manager runs:
// keys go to the window under the pointer.
#pragma once

#include "tests/e2e/desktop_view.h"
#include "tests/e2e/image.h"

#include <string>
#include <vector>

enum class Button { left = 1, middle = 2, right = 3, wheel_up = 4, wheel_down = 5 };

class Hands {
  public:
    /// Works on the window; all spots are pixels of it.
    Hands(const DesktopView &screen, const std::string &display, WindowId window);

    bool move(Spot to) const;

    /// Clicks with these modifier keys held: "shift", "ctrl", "alt".
    bool click(Button button, Spot at, const std::vector<std::string> &modifiers = {}) const;

    /// Presses at `from`, moves in a few steps to `to` and releases there.
    bool drag(Button button, Spot from, Spot to,
              const std::vector<std::string> &modifiers = {}) const;

    /// The two halves of a drag: up to the place where the button is still down, and its release.
    bool press(Button button, Spot from, Spot to,
               const std::vector<std::string> &modifiers = {}) const;
    bool let_go(Button button, const std::vector<std::string> &modifiers = {}) const;

    /// The step at which a drag arrives first: a view drag takes only what comes after it.
    static Spot first_step(Spot from, Spot to);

    /// One stroke of a key, as xdotool names it: "a", "ctrl+l", "shift+alt+Left".
    bool key(const std::string &name, Spot at) const;

    /// Opens the pop-up menu at the spot and goes down by these rows, counted from 1, each of
    /// which opens a submenu. The last menu's window, 0 when a menu did not show.
    WindowId open_menu(const std::vector<int> &rows, Spot at) const;

    /// Moves the pointer onto a row of an open menu, counted from 1.
    bool move_to_row(WindowId menu, int row) const;

    /// Closes the menus by a click beside them; false when they stay.
    bool close_menu(Spot beside) const;

    /// Opens the pop-up menu at the spot and chooses an entry: the row in each menu on the way,
    /// counted from 1. `modifiers` are held until the choice is taken. False when a menu did
    /// not show.
    bool choose(const std::vector<int> &rows, Spot at,
                const std::vector<std::string> &modifiers = {}) const;

    /// Gives the window a new size; without a window manager it takes it as it is.
    bool resize(int width, int height) const;

  private:
    using Words = std::vector<std::string>;
    bool act(const Words &words) const;
    bool move_on_desktop(int x, int y) const;
    Words way_to_row(WindowId menu, int row) const;
    size_t menus_on_view() const;
    WindowId wait_for_menu(int x, int y) const;

    const DesktopView &screen;
    std::string display;
    WindowId window;
};
