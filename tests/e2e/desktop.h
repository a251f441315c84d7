// tests/e2e/desktop.h -- an X server without a screen, for one test.
#pragma once

#include <string>
#include <sys/types.h>

/// Starts Xvfb on a free display number and ends it again by its pid.
class Desktop {
  public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;

    /// The value for DISPLAY; empty when the server did not come up.
    const std::string &display() const {
        return name;
    }

  private:
    pid_t server = -1;
    std::string name;
};
