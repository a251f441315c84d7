#include "tests/interact/drag_support.h"

#include "display/view.h"
#include "interact/selection.h"
#include "tests/support/console.h"

namespace {

double lagging_time(float position, float start, float end) {
    return (position * end + start) / 1.011;
}

} // namespace

void DragTest::SetUp() {
    PointerTest::SetUp();
    fill_store({{{0.5f, 200.0f, -10.0f}, {1.0f, 300.0f, -10.0f}, {1.5f, 250.0f, -10.0f}},
                {{0.75f, 1000.0f, -20.0f}, {1.75f, 900.0f, -20.0f}},
                {{1.0f, 100.0f, -30.0f}, {2.5f, 120.0f, -30.0f}}});
    open_edit_view();
    square[0] = square[2] = 225;
}

void DragTest::log_view() {
    logpos = 1;
    frame();
    gl_double::forget_drawing();
}

std::string DragTest::drag(int right, int up) {
    old_min = minfreq;
    old_max = maxfreq;
    old_start = sndstart;
    old_len = sndlen;
    const int x = square[0] + right;
    const int y = square[2] - up;
    return printed([&] { drag_motion(x, y); });
}

float DragTest::df() const {
    return old_max * tfsquare[3] - old_max * tfsquare[2];
}

float DragTest::dt() const {
    return static_cast<float>(lagging_time(tfsquare[1], old_start, old_len) -
                              lagging_time(tfsquare[0], old_start, old_len));
}
