#include "tests/e2e/hands.h"

#include "tests/e2e/process.h"

namespace {

constexpr const char *menu_name = "freeglut menu";
constexpr const char *rest = ".01";      // seconds between the steps of a gesture
constexpr const char *menu_rest = ".02"; // the same in menus
constexpr int row_height = 25;           // pixels
constexpr int menu_border = 2;           // pixels
constexpr int row_middle = 12;           // pixels from the top of a row
constexpr int drag_steps = 4;
constexpr Duration menu_timeout(5000);

std::string number_of(Button button) {
    return std::to_string(static_cast<int>(button));
}

void add(std::vector<std::string> &words, const std::vector<std::string> &more) {
    words.insert(words.end(), more.begin(), more.end());
}

void hold(std::vector<std::string> &words, const std::vector<std::string> &modifiers,
          const char *what) {
    for (const std::string &modifier : modifiers) {
        add(words, {what, modifier, "sleep", rest});
    }
}

std::vector<std::string> move_words(int x, int y, const char *pause = rest) {
    return {"mousemove", std::to_string(x), std::to_string(y), "sleep", pause};
}

/// A window notices the second motion in any case.
std::vector<std::string> arrive_words(int x, int y, const char *pause = rest) {
    std::vector<std::string> words = move_words(x - 1, y, pause);
    add(words, move_words(x, y, pause));
    return words;
}

/// Where a drag is after so many of its steps.
Spot step_of(Spot from, Spot to, int step) {
    return {from.x + (to.x - from.x) * step / drag_steps,
            from.y + (to.y - from.y) * step / drag_steps};
}

} // namespace

Hands::Hands(const DesktopView &on, const std::string &name, WindowId which)
    : screen(on), display(name), window(which) {}

bool Hands::act(const Words &words) const {
    Words command = {"xdotool"};
    add(command, words);
    return run_command(command, display) == 0;
}

bool Hands::move_on_desktop(int x, int y) const {
    return act(arrive_words(x, y));
}

bool Hands::move(Spot to) const {
    const Frame place = screen.frame(window);
    return move_on_desktop(place.x + to.x, place.y + to.y);
}

bool Hands::click(Button button, Spot at, const Words &modifiers) const {
    const Frame place = screen.frame(window);
    Words words = arrive_words(place.x + at.x, place.y + at.y);
    hold(words, modifiers, "keydown");
    add(words, {"mousedown", number_of(button), "sleep", rest, "mouseup", number_of(button)});
    add(words, {"sleep", rest});
    hold(words, modifiers, "keyup");
    return act(words);
}

bool Hands::drag(Button button, Spot from, Spot to, const Words &modifiers) const {
    return press(button, from, to, modifiers) && let_go(button, modifiers);
}

bool Hands::press(Button button, Spot from, Spot to, const Words &modifiers) const {
    const Frame place = screen.frame(window);
    Words words;
    hold(words, modifiers, "keydown");
    add(words, {"mousedown", number_of(button), "sleep", rest});
    for (int step = 1; step <= drag_steps; ++step) {
        const Spot at = step_of(from, to, step);
        add(words, move_words(place.x + at.x, place.y + at.y));
    }
    return move(from) && act(words);
}

bool Hands::let_go(Button button, const Words &modifiers) const {
    Words words = {"mouseup", number_of(button), "sleep", rest};
    hold(words, modifiers, "keyup");
    return act(words);
}

Spot Hands::first_step(Spot from, Spot to) {
    return step_of(from, to, 1);
}

bool Hands::key(const std::string &name, Spot at) const {
    return move(at) && act({"key", name});
}

size_t Hands::menus_on_view() const {
    return screen.windows(menu_name).size();
}

/// The menu whose top left is there on the desktop.
WindowId Hands::wait_for_menu(int x, int y) const {
    WindowId menu = 0;
    wait_until(menu_timeout, [&] {
        for (const WindowId shown : screen.windows(menu_name)) {
            const Frame place = screen.frame(shown);
            if (place.x == x && place.y == y) {
                menu = shown;
            }
        }
        return menu != 0;
    });
    return menu;
}

/// Straight there: a row on the way that has a submenu would open it.
Hands::Words Hands::way_to_row(WindowId menu, int row) const {
    const Frame place = screen.frame(menu);
    return arrive_words(place.x + place.width / 2,
                        place.y + menu_border + row_middle + row_height * (row - 1), menu_rest);
}

bool Hands::move_to_row(WindowId menu, int row) const {
    return act(way_to_row(menu, row));
}

WindowId Hands::open_menu(const std::vector<int> &rows, Spot at) const {
    const Frame place = screen.frame(window);
    Words press = arrive_words(place.x + at.x, place.y + at.y, menu_rest);
    add(press, {"mousedown", "3", "sleep", menu_rest, "mouseup", "3"});
    if (!act(press)) {
        return 0;
    }
    WindowId menu = wait_for_menu(place.x + at.x, place.y + at.y);
    for (const int row : rows) {
        if (menu == 0 || !move_to_row(menu, row)) {
            return 0;
        }
        const Frame above = screen.frame(menu);
        menu = wait_for_menu(above.x + above.width, above.y + row_height * (row - 1));
    }
    return menu;
}

bool Hands::close_menu(Spot beside) const {
    return click(Button::left, beside) &&
           wait_until(menu_timeout, [&] { return menus_on_view() == 0; });
}

bool Hands::choose(const std::vector<int> &rows, Spot at, const Words &modifiers) const {
    const WindowId menu = open_menu({rows.begin(), rows.end() - 1}, at);
    if (menu == 0) {
        return false;
    }
    Words words = way_to_row(menu, rows.back());
    hold(words, modifiers, "keydown");
    add(words, {"mousedown", "1", "sleep", menu_rest, "mouseup", "1"});
    const bool chosen =
        act(words) && wait_until(menu_timeout, [&] { return menus_on_view() == 0; });
    Words release;
    hold(release, modifiers, "keyup");
    return (release.empty() || act(release)) && chosen;
}

bool Hands::resize(int width, int height) const {
    return act({"windowsize", std::to_string(window), std::to_string(width),
                std::to_string(height)}) &&
           wait_until(menu_timeout, [&] {
               const Frame now = screen.frame(window);
               return now.width == width && now.height == height;
           });
}
