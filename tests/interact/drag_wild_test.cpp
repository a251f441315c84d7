// Drags that go on and on in the logarithmic view, which bounds nothing: frequencies become
// infinite, zero or no numbers at all. Whatever stands in the store then, every later event, frame
// and stroke is bounded work with a defined outcome.
#include "interact/drags.h"

#include "display/view.h"
#include "interact/mouse.h"
#include "interact/selection.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "tests/interact/keys_support.h"
#include "tests/support/console.h"

#include <cmath>
#include <limits>

namespace {

constexpr size_t most_work = 200000; // vertices and labels of a frame, as the axes cap them
constexpr int far_away = 1000000;    // pixels
constexpr int outermost = 32767;     // pixels, as far as a pointer gets
constexpr float infinite = std::numeric_limits<float>::infinity();

class DragWild : public KeysTest {
  protected:
    void SetUp() override {
        KeysTest::SetUp();
        open_edit_view();
        logpos = 1;
        frame();
        select_group({"1111", "111", "00", "0"});
        sweepSelect = 1;
        find_points(0, 1, 2, 1);
        gShowStaff = gShowClef = 1;
        X = Y = 1;
        square[0] = square[2] = 225;
    }

    static void drag(void (*motion)(int, int), int right, int up) {
        printed([=] { motion(square[0] + right, square[2] - up); });
    }

    /// So many events each way, far beyond what a window's height allows.
    static void drag_far(void (*motion)(int, int), int up) {
        for (int k = 0; k < 60; ++k) {
            drag(motion, 0, up);
        }
    }

    /// Every view of the store as it is now: bounded work, labels in places that are numbers.
    static void expect_frames_are_bounded() {
        for (int view = 0; view < 8; ++view) {
            flat = view & 1;
            bps = (view >> 1) & 1;
            logpos = (view >> 2) & 1;
            const gl_double::Recorder &drawn = frame();
            size_t work = drawn.labels.size();
            for (const gl_double::Primitive &primitive : drawn.primitives) {
                work += primitive.vertices.size();
            }
            EXPECT_LT(work, most_work) << view;
            for (const gl_double::Label &label : drawn.labels) {
                EXPECT_TRUE(std::isfinite(label.x) && std::isfinite(label.y)) << label.text;
            }
        }
        flat = bps = logpos = 1;
    }

    /// What a user may do next: sweep and click about, press the keys that go over the points.
    static void expect_hands_are_safe() {
        for (const int y : {40, 225, 420}) {
            printed([=] {
                mouse_down(GLUT_LEFT_BUTTON, 60, y);
                mouse_up(GLUT_LEFT_BUTTON, 400, 430 - y);
                mouse_down(GLUT_LEFT_BUTTON, 225, y);
                mouse_up(GLUT_LEFT_BUTTON, 225, y);
            });
        }
        increment = 1.0f;
        for (const unsigned char code : {'(', ')', '=', '-', '[', ']', 'v'}) {
            press(code, code == 'v' ? key_alt : 0);
        }
        for (const int code : {GLUT_KEY_UP, GLUT_KEY_DOWN, GLUT_KEY_LEFT, GLUT_KEY_RIGHT}) {
            for (const int modifiers : {0, key_shift, key_ctrl, key_alt}) {
                press_special(code, modifiers);
            }
        }
    }

    /// Afterwards the linear view, with the same store, and both drags once more.
    static void expect_all_goes_on() {
        expect_frames_are_bounded();
        expect_hands_are_safe();
        for (const int view : {1, 0}) {
            logpos = view;
            drag(partialsTranslate, 10, 10);
            drag(breakpointsTranslate, 10, -10);
            recompute_everything();
            expect_frames_are_bounded();
        }
    }
};

} // namespace

TEST_F(DragWild, GroupUpwards) {
    drag_far(partialsTranslate, 400);
    EXPECT_FALSE(std::isfinite(parray[0][0].freq));
    EXPECT_FALSE(std::isfinite(maxfreq));
    expect_all_goes_on();
}

TEST_F(DragWild, GroupDownwards) {
    drag_far(partialsTranslate, -400);
    EXPECT_FALSE(parray[0][0].freq > 0.0f);
    expect_all_goes_on();
}

TEST_F(DragWild, GroupUpAndDownAgain) {
    drag_far(partialsTranslate, 400);
    drag_far(partialsTranslate, -400);
    EXPECT_FALSE(std::isfinite(parray[0][0].freq)) << "there is no way back";
    expect_all_goes_on();
}

TEST_F(DragWild, FoundPointsUpwards) {
    drag_far(breakpointsTranslate, 400);
    EXPECT_FALSE(std::isfinite(parray[0][1].freq));
    EXPECT_EQ(parray[0][0].freq, 100.0f);
    expect_all_goes_on();
}

TEST_F(DragWild, FoundPointsDownwards) {
    drag_far(breakpointsTranslate, -400);
    EXPECT_GT(parray[0][1].freq, 1.0f);
    EXPECT_GT(minfreq, 0.0f);
    expect_all_goes_on();
}

TEST_F(DragWild, PlacesFarBeyondTheWindow) {
    for (void (*motion)(int, int) : {partialsTranslate, breakpointsTranslate}) {
        for (const int way : {far_away, -far_away, far_away}) {
            drag(motion, way, way);
            drag(motion, -way, way);
        }
        expect_all_goes_on();
    }
}

TEST_F(DragWild, TheOutermostPixels) {
    for (const int view : {0, 1}) {
        logpos = view;
        for (void (*motion)(int, int) : {partialsTranslate, breakpointsTranslate}) {
            printed([=] { motion(outermost, -outermost); });
            printed([=] { motion(-outermost, outermost); });
            expect_frames_are_bounded();
            logpos = view;
        }
    }
}

TEST_F(DragWild, FromWhatIsAlreadyNoNumber) {
    for (const float wrong : {infinite, -infinite, std::nanf(""), 0.0f, -100.0f, 1e-45f, 3e38f}) {
        for (void (*motion)(int, int) : {partialsTranslate, breakpointsTranslate}) {
            for (const int view : {0, 1}) {
                fill_store(small_content());
                select_group({"1111", "111", "00", "0"});
                find_points(0, 1, 2, 1);
                logpos = view;
                parray[0][1].freq = parray[0][2].logfreq = wrong;
                drag(motion, 3, 30);
                parray[0][1].time = wrong;
                drag(motion, 3, -30);
                expect_all_goes_on();
            }
        }
    }
}
