// The menu as data. Values are positions nowhere but in "View", whose entries change at run
// time by place.

#include "interact/menu.h"

#include "display/view.h"

#include <GL/freeglut.h>
#include <span>

namespace {

/// An entry, or a submenu when it has children. A text that depends on the view is asked for
/// when the menu is built; an entry may be left out then.
struct MenuNode {
    const char *text;
    int value;
    std::span<const MenuNode> children = {};
    const char *(*live_text)() = nullptr;
    bool (*present)() = nullptr;
};

bool in_flat_view() {
    return flat != 0;
}

const MenuNode view_menu[] = {
    {"Axes", 1},
    {"Flat", 2, {}, flat_entry},
    {"Log Freq", 3, {}, logarithmic_entry},
    {"Breakpoints", 4, {}, breakpoints_entry, in_flat_view},
};
const MenuNode select_menu[] = {
    {"Left ", 5},          {"Right ", 6}, {"Partial ", 7},  {"All ", 8}, {"Partial Inverted ", 9},
    {"All Inverted ", 10}, {"None ", 30}, {"Pick...", 101},
};
const MenuNode generate_menu[] = {
    {"Replicate...", 81},
    {"Harmonics...", 80},
    {"Arbitrary...", 82},
};
const MenuNode edit_menu[] = {
    {"Select ", 0, select_menu},
    {"Split", 11},
    {"Join", 12},
    {"Remove", 13},
    {"Extend...", 14},
    {"Merge", 15},
    {"Generate", 0, generate_menu},
};
const MenuNode fade_menu[] = {{"In", 16}, {"Out", 17}};
const MenuNode shift_menu[] = {{"Gain...", 18}, {"Pitch...", 19}, {"Time...", 20}};
const MenuNode process_menu[] = {
    {"Fade", 0, fade_menu}, {"Shift", 0, shift_menu}, {"Scale...", 21},
    {"Mirror...", 22},      {"Retro...", 23},         {"Envelope...", 37},
};
const MenuNode list_menu[] = {{"All...", 24}, {"Selected...", 25}};
const MenuNode cmix_menu[] = {{"All...", 34}, {"Selected...", 35}};
const MenuNode spear_menu[] = {{"All...", 73}, {"Selected...", 74}};
const MenuNode sdif_menu[] = {{"All...", 83}, {"Selected...", 84}};
const MenuNode export_menu[] = {
    {"Partials", 0, list_menu},
    {"Cmix", 0, cmix_menu},
    {"SPEAR", 0, spear_menu},
    {"SDIF", 0, sdif_menu},
};
const MenuNode synth_menu[] = {{"All...", 27}, {"Selected...", 28}};
const MenuNode play_menu[] = {{"All", 71}, {"Selected", 72}, {"Zone", 75}};
const MenuNode top_menu[] = {
    {"QuillGrove", 0},          {"View", 0, view_menu},
    {"Edit", 0, edit_menu},     {"Process", 0, process_menu},
    {"Export", 0, export_menu}, {"Synth", 0, synth_menu},
    {"Play", 0, play_menu},     {"Quit", 29},
};

/// Builds the submenus first, so that the menu itself is current at the end; its GLUT number.
int build(std::span<const MenuNode> nodes) {
    constexpr size_t most_nodes = 16;
    int submenus[most_nodes] = {};
    for (size_t i = 0; i < nodes.size(); ++i) {
        submenus[i] = nodes[i].children.empty() ? 0 : build(nodes[i].children);
    }
    const int menu = glutCreateMenu(menu_select);
    for (size_t i = 0; i < nodes.size(); ++i) {
        const MenuNode &node = nodes[i];
        if (!node.children.empty()) {
            glutAddSubMenu(node.text, submenus[i]);
        } else if (node.present == nullptr || node.present()) {
            glutAddMenuEntry(node.live_text != nullptr ? node.live_text() : node.text, node.value);
        }
    }
    return menu;
}

} // namespace

const char *flat_entry() {
    return flat != 0 ? "3-D" : "Flat";
}

const char *logarithmic_entry() {
    return logpos != 0 ? "Lin Freq" : "Log Freq";
}

const char *breakpoints_entry() {
    return bps != 0 ? "Contours" : "Breakpoints";
}

void glutMenu() {
    build(top_menu);
    glutAttachMenu(GLUT_RIGHT_BUTTON);
    glutDetachMenu(GLUT_RIGHT_BUTTON);
}
