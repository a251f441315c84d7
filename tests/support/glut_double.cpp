// The GLUT side of the GL double: window, callbacks, timers, menus, bitmap text.
#include "tests/support/gl_double.h"
#include "tests/support/gl_double_recording.h"

#include <GL/glx.h>
#include <algorithm>

using namespace gl_double;

namespace {

int next_menu = 1;

Menu *current() {
    const auto at = recorder().menus.find(recorder().current_menu);
    if (at == recorder().menus.end()) {
        complain("no current menu");
        return nullptr;
    }
    return &at->second;
}

/// The item of the current menu with this number, counted from 1; complains if there is none.
MenuItem *numbered_item(int item) {
    Menu *menu = current();
    if (menu == nullptr) {
        return nullptr;
    }
    if (item < 1 || static_cast<size_t>(item) > menu->items.size()) {
        complain("no such menu item");
        return nullptr;
    }
    return &menu->items[static_cast<size_t>(item) - 1];
}

} // namespace

namespace gl_double {

void reset_windowing() {
    next_menu = 1;
}

void fire_timers() {
    std::vector<Timer> due;
    due.swap(recorder().timers);
    for (const Timer &timer : due) {
        timer.callback(timer.value);
    }
}

std::string menu_text(int menu, int depth) {
    std::string text;
    for (const MenuItem &item : recorder().menus.at(menu).items) {
        text += std::string(2 * static_cast<size_t>(depth), ' ') + item.text + "\n";
        if (item.submenu != 0) {
            text += menu_text(item.submenu, depth + 1);
        }
    }
    return text;
}

bool choose(const std::vector<std::string> &path, int button) {
    Recorder &r = recorder();
    int number = r.attached.contains(button) ? r.attached[button] : 0;
    for (size_t i = 0; i < path.size() && r.menus.contains(number); ++i) {
        const Menu &menu = r.menus[number];
        const auto item =
            std::find_if(menu.items.begin(), menu.items.end(),
                         [&](const MenuItem &candidate) { return candidate.text == path[i]; });
        if (item == menu.items.end()) {
            return false;
        }
        if (item->submenu != 0) {
            number = item->submenu;
            continue;
        }
        if (i + 1 != path.size() || menu.callback == nullptr) {
            return false;
        }
        r.current_menu = number;
        menu.callback(item->value);
        return true;
    }
    return false;
}

} // namespace gl_double

// The fonts are known by the addresses of these.
void *glutBitmap9By15;
void *glutBitmap8By13;
void *glutBitmapTimesRoman10;
void *glutBitmapTimesRoman24;
void *glutBitmapHelvetica10;
void *glutBitmapHelvetica12;
void *glutBitmapHelvetica18;

void glutInit(int *argc, char **argv) {
    Recorder &r = recorder();
    r.initialized = true;
    r.arguments.assign(argv, argv + *argc);
}
void glutInitDisplayMode(unsigned int mode) {
    recorder().window.display_mode = mode;
}
void glutInitWindowPosition(int x, int y) {
    recorder().window.x = x;
    recorder().window.y = y;
}
void glutInitWindowSize(int width, int height) {
    recorder().window.width = width;
    recorder().window.height = height;
}
int glutCreateWindow(const char *title) {
    Recorder &r = recorder();
    if (!r.initialized) {
        complain("glutCreateWindow before glutInit");
    }
    r.window.number = 1;
    r.window.title = title;
    r.viewport = {0, 0, r.window.width, r.window.height};
    return 1;
}
void glutDestroyWindow(int) {
    recorder().window.number = 0;
}
void glutSetWindow(int) {}
int glutGetWindow() {
    return recorder().window.number;
}
void glutSetWindowTitle(const char *title) {
    recorder().window.title = title;
}
void glutReshapeWindow(int width, int height) {
    recorder().window.width = width;
    recorder().window.height = height;
}
void glutPositionWindow(int x, int y) {
    recorder().window.x = x;
    recorder().window.y = y;
}
void glutSetCursor(int cursor) {
    recorder().cursor = cursor;
}
void glutIgnoreKeyRepeat(int ignore) {
    log_call("glutIgnoreKeyRepeat", {static_cast<double>(ignore)});
}
void glutSetKeyRepeat(int mode) {
    log_call("glutSetKeyRepeat", {static_cast<double>(mode)});
}
void glutSetOption(GLenum what, int value) {
    log_call("glutSetOption", {static_cast<double>(what), static_cast<double>(value)});
}

void glutMainLoop() {
    ++recorder().main_loops;
}
void glutMainLoopEvent() {
    ++recorder().main_loops;
}
void glutLeaveMainLoop() {
    log_call("glutLeaveMainLoop", {});
}
void glutPostRedisplay() {
    ++recorder().redisplays;
    log_call("glutPostRedisplay", {});
}
void glutSwapBuffers() {
    not_inside_begin("glutSwapBuffers");
    ++recorder().swaps;
    log_call("glutSwapBuffers", {});
}

void glutReshapeFunc(void (*callback)(int, int)) {
    recorder().callbacks.reshape = callback;
}
void glutDisplayFunc(void (*callback)()) {
    recorder().callbacks.display = callback;
}
void glutKeyboardFunc(void (*callback)(unsigned char, int, int)) {
    recorder().callbacks.keyboard = callback;
}
void glutSpecialFunc(void (*callback)(int, int, int)) {
    recorder().callbacks.special = callback;
}
void glutMouseFunc(void (*callback)(int, int, int, int)) {
    recorder().callbacks.mouse = callback;
}
void glutMotionFunc(void (*callback)(int, int)) {
    recorder().callbacks.motion = callback;
}
void glutPassiveMotionFunc(void (*callback)(int, int)) {
    recorder().callbacks.passive_motion = callback;
}
void glutIdleFunc(void (*callback)()) {
    recorder().callbacks.idle = callback;
}
void glutCloseFunc(void (*callback)()) {
    recorder().callbacks.close = callback;
}
void glutMenuStatusFunc(void (*callback)(int, int, int)) {
    recorder().callbacks.menu_status = callback;
}
void glutTimerFunc(unsigned int milliseconds, void (*callback)(int), int value) {
    recorder().timers.push_back({milliseconds, callback, value});
}

/// No display: what would ask it for the modifier keys falls back on glutGetModifiers.
Display *glXGetCurrentDisplay() {
    return nullptr;
}
int glutGetModifiers() {
    return recorder().modifiers;
}
int glutLayerGet(GLenum what) {
    if (what != GLUT_OVERLAY_POSSIBLE) {
        complain("glutLayerGet");
        return 0;
    }
    return recorder().overlay_possible;
}
int glutGet(GLenum what) {
    const Recorder &r = recorder();
    switch (what) {
    case GLUT_ELAPSED_TIME:
        return r.elapsed_time;
    case GLUT_WINDOW_WIDTH:
        return r.window.width;
    case GLUT_WINDOW_HEIGHT:
        return r.window.height;
    case GLUT_WINDOW_X:
        return r.window.x;
    case GLUT_WINDOW_Y:
        return r.window.y;
    case GLUT_INIT_STATE:
        return r.initialized ? 1 : 0;
    case GLUT_MENU_NUM_ITEMS:
        return current() != nullptr ? static_cast<int>(current()->items.size()) : 0;
    default:
        complain("a glutGet that the double does not know");
        return 0;
    }
}

int glutCreateMenu(void (*callback)(int)) {
    recorder().menus[next_menu] = {callback, {}};
    recorder().current_menu = next_menu;
    return next_menu++;
}
void glutDestroyMenu(int menu) {
    Recorder &r = recorder();
    if (r.menus.erase(menu) == 0) {
        complain("no such menu");
    }
    if (r.current_menu == menu) {
        r.current_menu = 0;
    }
}
int glutGetMenu() {
    return recorder().current_menu;
}
void glutSetMenu(int menu) {
    if (!recorder().menus.contains(menu)) {
        complain("no such menu");
        return;
    }
    recorder().current_menu = menu;
}
void glutAddMenuEntry(const char *text, int value) {
    if (Menu *menu = current()) {
        menu->items.push_back({text, value, 0});
    }
}
void glutAddSubMenu(const char *text, int submenu) {
    if (!recorder().menus.contains(submenu)) {
        complain("no such submenu");
    }
    if (Menu *menu = current()) {
        menu->items.push_back({text, 0, submenu});
    }
}
void glutChangeToMenuEntry(int item, const char *text, int value) {
    if (MenuItem *at = numbered_item(item)) {
        *at = {text, value, 0};
    }
}
void glutChangeToSubMenu(int item, const char *text, int submenu) {
    if (MenuItem *at = numbered_item(item)) {
        *at = {text, 0, submenu};
    }
}
void glutRemoveMenuItem(int item) {
    if (numbered_item(item) != nullptr) {
        current()->items.erase(current()->items.begin() + (item - 1));
    }
}
void glutAttachMenu(int button) {
    if (current() != nullptr) {
        recorder().attached[button] = recorder().current_menu;
    }
}
void glutDetachMenu(int button) {
    recorder().attached.erase(button);
}

void glutBitmapCharacter(void *font, int character) {
    write_character(font, character);
}
void glutBitmapString(void *font, const unsigned char *text) {
    for (; *text != '\0'; ++text) {
        write_character(font, *text);
    }
}
int glutBitmapWidth(void *, int) {
    return 6; // pixels, of a middling letter
}
