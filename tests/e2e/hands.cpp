#include "tests/e2e/hands.h"

#include "tests/e2e/process.h"

namespace {

constexpr const char *menu_name = "freeglut menu";
constexpr const char *rest = ".01"; // seconds between the steps of a gesture
constexpr int row_height = 25;      // pixels
constexpr int menu_border = 2;      // pixels
constexpr int row_middle = 12;      // pixels from the top of a row
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

std::vector<std::string> move_words(int x, int y) {
    return {"mousemove", std::to_string(x), std::to_string(y), "sleep", rest};
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
    Words words = move_words(x - 1, y); // a window notices the second motion in any case
    add(words, move_words(x, y));
    return act(words);
}

bool Hands::move(Spot to) const {
    const Frame place = screen.frame(window);
    return move_on_desktop(place.x + to.x, place.y + to.y);
}

bool Hands::click(Button button, Spot at, const Words &modifiers) const {
    Words words;
    hold(words, modifiers, "keydown");
    add(words, {"mousedown", number_of(button), "sleep", rest, "mouseup", number_of(button)});
    add(words, {"sleep", rest});
    hold(words, modifiers, "keyup");
    return move(at) && act(words);
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

bool Hands::choose(const std::vector<int> &rows, Spot at, const Words &modifiers) const {
    if (!click(Button::right, at)) {
        return false;
    }
    const Frame place = screen.frame(window);
    Frame menu = {place.x + at.x, place.y + at.y, 0, 0};
    for (size_t level = 0; level < rows.size(); ++level) {
        if (!wait_until(menu_timeout, [&] { return menus_on_view() > level; })) {
            return false;
        }
        for (const WindowId shown : screen.windows(menu_name)) {
            const Frame candidate = screen.frame(shown);
            if (candidate.x == menu.x && candidate.y == menu.y) {
                menu.width = candidate.width;
            }
        }
        const int row = row_height * (rows[level] - 1);
        const int x = menu.x + menu.width / 2;
        // Sideways first, then down: a slanted way would cross other rows' submenus.
        if (menu.width == 0 || !move_on_desktop(x, menu.y + menu_border + row_middle) ||
            !move_on_desktop(x, menu.y + menu_border + row + row_middle)) {
            return false;
        }
        menu = {menu.x + menu.width, menu.y + row, 0, 0};
    }
    Words words;
    hold(words, modifiers, "keydown");
    add(words, {"mousedown", "1", "sleep", rest, "mouseup", "1", "sleep", rest});
    hold(words, modifiers, "keyup");
    return act(words) && wait_until(menu_timeout, [&] { return menus_on_view() == 0; });
}

bool Hands::resize(int width, int height) const {
    return act({"windowsize", std::to_string(window), std::to_string(width),
                std::to_string(height)}) &&
           wait_until(menu_timeout, [&] {
               const Frame now = screen.frame(window);
               return now.width == width && now.height == height;
           });
}
