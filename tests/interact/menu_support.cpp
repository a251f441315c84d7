#include "tests/interact/menu_support.h"

#include "display/view.h"
#include "tests/support/console.h"

#include <cstdio>

namespace {

constexpr float spoilt = -5.0f;
constexpr float spoilt_level = 12345.0f;
constexpr float spoilt_phase = 9.0f; // outside the range of a phase

std::string left_unread;

std::string rest_of_input() {
    std::string text;
    for (int c = std::getchar(); c != EOF; c = std::getchar()) {
        text += static_cast<char>(c);
    }
    return text;
}

std::string tree_below(int menu, size_t depth) {
    std::string text;
    for (const gl_double::MenuItem &item : gl_double::recorder().menus.at(menu).items) {
        text += std::string(2 * depth, ' ') + "\"" + item.text + "\"";
        text += item.submenu != 0 ? "\n" + tree_below(item.submenu, depth + 1)
                                  : " " + std::to_string(item.value) + "\n";
    }
    return text;
}

const gl_double::MenuItem *entry_of(int value) {
    for (const auto &[number, menu] : gl_double::recorder().menus) {
        for (const gl_double::MenuItem &item : menu.items) {
            if (item.submenu == 0 && item.value == value) {
                return &item;
            }
        }
    }
    return nullptr;
}

void spoil_points() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].logfreq = spoilt;
        }
        peval[i].start = spoilt;
    }
    parray[0][1].phase = spoilt_phase;
}

} // namespace

void MenuTest::SetUp() {
    PointerTest::SetUp();
    menu_state = {};
    fill_store(small_content());
    rebuild_menu();
}

void MenuTest::TearDown() {
    menu_state = {};
    PointerTest::TearDown();
}

void rebuild_menu() {
    gl_double::recorder().menus.clear();
    glutMenu();
    glutAttachMenu(GLUT_RIGHT_BUTTON);
}

std::string menu_tree() {
    return tree_below(gl_double::recorder().attached.at(GLUT_RIGHT_BUTTON), 0);
}

int menu_of(int value) {
    for (const auto &[number, menu] : gl_double::recorder().menus) {
        for (const gl_double::MenuItem &item : menu.items) {
            if (item.submenu == 0 && item.value == value) {
                return number;
            }
        }
    }
    return 0;
}

std::string text_of(int value) {
    const gl_double::MenuItem *entry = entry_of(value);
    return entry != nullptr ? entry->text : "none";
}

std::string command(int value, const std::string &replies, int modifiers) {
    gl_double::Recorder &r = gl_double::recorder();
    r.modifiers = modifiers;
    r.current_menu = menu_of(value) != 0 ? menu_of(value) : menu_of(1);
    const auto choose = r.menus.at(r.current_menu).callback;
    return conversation(replies, [=] {
        choose(value);
        left_unread = rest_of_input();
    });
}

const std::string &unread() {
    return left_unread;
}

void select_group(const std::vector<std::string> &texts) {
    set_flags(texts);
    selected = 1;
}

void spoil_derived() {
    maxamp = minamp = spoilt_level;
    meant = spoilt;
    fspan = spoilt;
    spoil_points();
    gl_double::recorder().redisplays = 0;
}

std::string refreshed() {
    std::string text;
    const auto add = [&text](bool was, const char *name) {
        if (was) {
            text += (text.empty() ? "" : " ") + std::string(name);
        }
    };
    add(maxamp != spoilt_level && minamp != spoilt_level, "amp");
    add(meant != spoilt, "times");
    add(fspan != spoilt, "pitch");
    add(parray[0][1].phase != spoilt_phase, "phase");
    add(parray[0][0].logfreq != spoilt, "logfreq");
    add(peval[0].start != spoilt, "averages");
    add(gl_double::recorder().redisplays == 1, "redisplay");
    add(gl_double::recorder().redisplays > 1, "redisplays");
    return text;
}

bool selection_cleared() {
    for (const std::string &partial : flags()) {
        if (partial.find('1') != std::string::npos) {
            return false;
        }
    }
    const FoundPoints &queue = foundSubscriptions;
    return selected == 0 && sweepSelect == 0 && found == 0 && numfound == 0 && selecting == 0 &&
           directSelect == 0 && queue.count == 0 && queue.part0 == -1 && queue.part1 == -1;
}

void find_points(int32_t part0, int32_t point0, int32_t part1, int32_t point1) {
    const int32_t count = (part0 != -1 ? 1 : 0) + (part1 != -1 ? 1 : 0);
    foundSubscriptions = {part0, point0, part1, point1, count};
    numfound = count;
    directSelect = 1;
    found = 1;
}

structure::Snapshot left_by(const std::function<void()> &prepare,
                            const std::function<void()> &work) {
    prepare();
    printed(work);
    return structure::snapshot();
}
