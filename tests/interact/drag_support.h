// tests/interact/drag_support.h -- what the tests of both editing drags share: a store to move, one
// motion event at a time, and what such an event asks for, worked out from the range before it.
#pragma once

#include "tests/support/pointer.h"

#include <string>

/// Three partials from 100 to 1000 Hz over two seconds, the sound starting at 0.5 s, in the flat
/// view with breakpoints; the pointer stands in the middle of the window.
class DragTest : public PointerTest {
  protected:
    explicit DragTest(MotionCallback motion) : drag_motion(motion) {}

    void SetUp() override;

    static void log_view();

    /// One motion event by so many pixels to the right and up; what it prints.
    std::string drag(int right, int up);

    /// What the last event took off frequencies (Hz) and times (seconds).
    float df() const;
    float dt() const;

    /// The range before the last event.
    float old_min = 0, old_max = 0, old_start = 0, old_len = 0;

  private:
    MotionCallback drag_motion;
};
