#include "tests/e2e/desktop_view.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <bit>

namespace {

constexpr Duration between_looks(120); // two frames of a slow machine

std::string name_of(Display *connection, Window window) {
    char *text = nullptr;
    if (XFetchName(connection, window, &text) == 0 || text == nullptr) {
        return "";
    }
    const std::string name = text;
    XFree(text);
    return name;
}

bool on_view(Display *connection, Window window) {
    XWindowAttributes attributes;
    return XGetWindowAttributes(connection, window, &attributes) != 0 &&
           attributes.map_state == IsViewable;
}

/// One colour of a pixel.
class Channel {
  public:
    explicit Channel(unsigned long bits) : mask(bits), shift(std::countr_zero(bits)) {}
    int of(unsigned long pixel) const {
        return static_cast<int>((pixel & mask) >> shift);
    }

  private:
    unsigned long mask;
    int shift;
};

/// A window may be gone by the time it is asked about.
int ignore_error(Display *, XErrorEvent *) {
    return 0;
}

} // namespace

DesktopView::DesktopView(const std::string &display) : connection(XOpenDisplay(display.c_str())) {
    XSetErrorHandler(ignore_error);
}

DesktopView::~DesktopView() {
    if (connection != nullptr) {
        XCloseDisplay(connection);
    }
}

std::vector<WindowId> DesktopView::windows(const std::string &name) const {
    std::vector<WindowId> matches;
    Window root = 0, parent = 0, *children = nullptr;
    unsigned count = 0;
    if (connection == nullptr || XQueryTree(connection, XDefaultRootWindow(connection), &root,
                                            &parent, &children, &count) == 0) {
        return matches;
    }
    for (unsigned i = 0; i < count; ++i) {
        if (on_view(connection, children[i]) && name_of(connection, children[i]) == name) {
            matches.push_back(children[i]);
        }
    }
    XFree(children);
    return matches;
}

WindowId DesktopView::find(const std::string &name, Duration timeout) const {
    std::vector<WindowId> matches;
    wait_until(timeout, [&] { return !(matches = windows(name)).empty(); });
    return matches.empty() ? 0 : matches.front();
}

Frame DesktopView::frame(WindowId window) const {
    XWindowAttributes attributes = {};
    if (XGetWindowAttributes(connection, window, &attributes) == 0) {
        return {0, 0, 0, 0};
    }
    return {attributes.x, attributes.y, attributes.width, attributes.height};
}

Image DesktopView::capture(WindowId window) const {
    Image image;
    const Frame size = frame(window);
    XImage *taken = XGetImage(connection, window, 0, 0, static_cast<unsigned>(size.width),
                              static_cast<unsigned>(size.height), AllPlanes, ZPixmap);
    if (taken == nullptr) {
        return image;
    }
    image.width = size.width;
    image.height = size.height;
    image.pixels.reserve(static_cast<size_t>(size.width) * static_cast<size_t>(size.height));
    const Channel red(taken->red_mask), green(taken->green_mask), blue(taken->blue_mask);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const unsigned long pixel = XGetPixel(taken, x, y);
            image.pixels.push_back({red.of(pixel), green.of(pixel), blue.of(pixel)});
        }
    }
    XDestroyImage(taken);
    return image;
}

Image DesktopView::settled(WindowId window, Duration timeout) const {
    Image last;
    return wait_for(
        window,
        [&](const Image &image) {
            const bool drawn = !image.blank();
            const bool still = drawn && image == last;
            last = image;
            pause_for(still || !drawn ? Duration(0) : between_looks);
            return still;
        },
        timeout);
}

Image DesktopView::wait_for(WindowId window, const std::function<bool(const Image &)> &condition,
                            Duration timeout) const {
    Image image;
    wait_until(timeout, [&] { return condition(image = capture(window)); });
    return image;
}
