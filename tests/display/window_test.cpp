// Creation of the one window and registration of its callbacks.
#include "store/window.h"

#include "display/scene.h"
#include "display/view.h"
#include "interact/selection.h"
#include "live/agnf.h"
#include "live/fbp.h"
#include "live/gestures.h"
#include "live/live.h"
#include "live/mixer.h"
#include "store/settings.h"
#include "synth/sound.h"
#include "tests/support/audio_double.h"
#include "tests/support/console.h"
#include "tests/support/drawing.h"

#include <cstdlib>
#include <cstring>

using namespace gl_double;

namespace {

class WindowTest : public DrawingTest {
  protected:
    void TearDown() override {
        std::free(title);
        title = nullptr;
        DrawingTest::TearDown();
    }
};

void select_everything() {
    for (int32_t i = 0; i < partials; ++i) {
        peval[i].selected = 1;
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].selected = 1;
        }
    }
    selected = sweepSelect = found = 1;
    directSelect = numfound = 1;
    selecting = 1;
    foundSubscriptions = {1, 2, 0, 1, 2};
}

/// Flags of value 1 among the partials and the points.
int selection_flags() {
    int count = 0;
    for (int32_t i = 0; i < partials; ++i) {
        count += peval[i].selected == 1;
        for (int32_t j = 0; j < npoints[i]; ++j) {
            count += parray[i][j].selected == 1;
        }
    }
    return count;
}

} // namespace

TEST_F(WindowTest, WindowIsDoubleBufferedWithAlphaAndDepth) {
    printed(open_window);
    const Window &window = recorder().window;
    EXPECT_EQ(window.display_mode, static_cast<unsigned>(GLUT_DOUBLE | GLUT_ALPHA | GLUT_DEPTH));
    EXPECT_EQ(window.x, 200);
    EXPECT_EQ(window.y, 50);
    EXPECT_EQ(window.width, 450);
    EXPECT_EQ(window.height, 450);
    EXPECT_EQ(window.title, "QuillGrove");
    EXPECT_EQ(gMainWindow, window.number);
    EXPECT_EQ(recorder().arguments, std::vector<std::string>{"Quillgrove"});
}

TEST_F(WindowTest, GraphicsReport) {
    EXPECT_EQ(printed(open_window), "Initializing graphics:\n"
                                    "        (overlay visuals not possible)\n\n"
                                    "max clip planes = 8\n");
}

TEST_F(WindowTest, GraphicsReportWithOverlaysAndOtherPlanes) {
    recorder().overlay_possible = 1;
    recorder().max_clip_planes = 6;
    EXPECT_EQ(printed(open_window), "Initializing graphics:\n"
                                    "        (overlay visuals possible)\n\n"
                                    "max clip planes = 6\n");
}

TEST_F(WindowTest, ReshapeAndDisplayAreRegisteredAndTheTimerFlagIsCleared) {
    tCallbackReg = 1;
    register_callbacks();
    EXPECT_EQ(recorder().callbacks.reshape, reshape);
    EXPECT_EQ(recorder().callbacks.display, maindisplay);
    EXPECT_EQ(tCallbackReg, 0);
    EXPECT_TRUE(recorder().enabled.contains(GL_DEPTH_TEST));
}

TEST_F(WindowTest, TitleNamesProgramAndFile) {
    fill_store(small_content());
    std::strcpy(afname, "sound.pt");
    show_title();
    EXPECT_EQ(recorder().window.title, "Quillgrove: sound.pt");
    EXPECT_STREQ(title, "Quillgrove: sound.pt");
}

TEST_F(WindowTest, TitleOfALongNameIsCut) {
    fill_store(small_content());
    std::memset(afname, 'n', 255);
    afname[255] = '\0';
    show_title();
    EXPECT_EQ(recorder().window.title, "Quillgrove: " + std::string(243, 'n'));
}

TEST_F(WindowTest, FlatStartsWithNothingSelected) {
    fill_store(small_content());
    flat = 1;
    select_everything();
    show_title();
    EXPECT_EQ(selection_flags(), 0);
    EXPECT_EQ(selected + found + sweepSelect + selecting, 0);
    EXPECT_EQ(directSelect, 0);
    EXPECT_EQ(numfound, 0);
    const FoundPoints none = {-1, -1, -1, -1, 0};
    EXPECT_EQ(std::memcmp(&foundSubscriptions, &none, sizeof none), 0);
}

TEST_F(WindowTest, PerspectiveClearsTheSweepAlone) {
    fill_store(small_content());
    select_everything();
    show_title();
    EXPECT_EQ(selection_flags(), 4 + 10);
    EXPECT_EQ(sweepSelect, 0);
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(foundSubscriptions.count, 2);
}

TEST_F(WindowTest, SparesOfTheSummariesAreCleared) {
    fill_store(small_content());
    peval[0].spare1 = peval[3].spare2 = 5.0f;
    show_title();
    EXPECT_EQ(peval[0].spare1, 0.0f);
    EXPECT_EQ(peval[3].spare2, 0.0f);
}

TEST_F(WindowTest, LivePlayHasItsStartValues) {
    AudioDouble audio;
    audio.rate = 48000.0;
    int32_t (*const kept)(float, int64_t) = play_rendered;
    STOP = 1;
    method = 3;
    live_gain = 0.9f;
    wgen.midi_started = 1;
    start_sound();
    EXPECT_EQ(STOP, 0);
    EXPECT_EQ(method, 0);
    EXPECT_EQ(live_gain, 0.2f);
    EXPECT_EQ(wgen.midi_started, 0);
    EXPECT_EQ(play_rendered, fbplay1);
    // The table follows the rate, which the units tell.
    EXPECT_EQ(R, 48000.0);
    EXPECT_EQ(Sin[12000], 1.0f);
    ASSERT_EQ(audio.units.size(), 3u);
    EXPECT_EQ(audio.units[0].callback.context, &wgen);
    EXPECT_EQ(audio.units[1].callback.context, &zgen);
    EXPECT_EQ(audio.units[2].callback.context, &fplayer);
    wgen.unit = zgen.unit = fplayer.unit = nullptr;
    R = 44100.0;
    play_rendered = kept;
    use_driver(nullptr);
}

TEST_F(WindowTest, TheFirstMotionIsAScrubs) {
    register_callbacks();
    EXPECT_EQ(recorder().callbacks.motion, pmotion);
}

TEST_F(WindowTest, WithoutAStoreTheTitleStays) {
    recorder().window.title = "QuillGrove";
    show_title();
    EXPECT_EQ(recorder().window.title, "QuillGrove");
}
