#include "interact/modifiers.h"

#include <GL/freeglut.h>
#include <GL/glx.h>
#include <X11/Xlib.h>

int event_modifiers() {
    return glutGetModifiers() & (shift | ctrl | alt);
}

int menu_modifiers() {
    Display *display = glXGetCurrentDisplay();
    if (display == nullptr) {
        return event_modifiers();
    }
    Window root;
    Window child;
    int root_x, root_y, x, y;
    unsigned mask = 0;
    XQueryPointer(display, DefaultRootWindow(display), &root, &child, &root_x, &root_y, &x, &y,
                  &mask);
    return ((mask & ShiftMask) != 0 ? shift : 0) | ((mask & ControlMask) != 0 ? ctrl : 0) |
           ((mask & Mod1Mask) != 0 ? alt : 0);
}
