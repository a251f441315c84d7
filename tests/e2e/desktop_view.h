// tests/e2e/desktop_view.h -- windows of a Desktop as Xlib sees them.
#pragma once

#include "tests/e2e/image.h"
#include "tests/e2e/process.h"

#include <functional>
#include <string>
#include <vector>

struct _XDisplay;

using WindowId = unsigned long; // 0: none

/// Place on the desktop and size of a window, in pixels.
struct Frame {
    int x, y, width, height;
};

class DesktopView {
  public:
    explicit DesktopView(const std::string &display);
    ~DesktopView();
    DesktopView(const DesktopView &) = delete;
    DesktopView &operator=(const DesktopView &) = delete;

    /// The windows of this name that are on view now, in stacking order.
    std::vector<WindowId> windows(const std::string &name) const;

    /// Waits for a window of this name.
    WindowId find(const std::string &name, Duration timeout = Duration(20000)) const;

    Frame frame(WindowId window) const;

    Image capture(WindowId window) const;

    /// Waits until the picture is not blank and stands still, and returns it.
    Image settled(WindowId window, Duration timeout = Duration(20000)) const;

    /// Captures until `condition` holds for the picture; the last one when it never does.
    Image wait_for(WindowId window, const std::function<bool(const Image &)> &condition,
                   Duration timeout = Duration(20000)) const;

  private:
    _XDisplay *connection;
};
