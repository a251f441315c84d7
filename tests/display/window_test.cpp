// Creation of the one window and registration of its callbacks.
#include "store/window.h"

#include "display/scene.h"
#include "display/view.h"
#include "store/settings.h"
#include "tests/support/console.h"
#include "tests/support/drawing.h"

#include <cstdlib>
#include <cstring>

using namespace gl_double;

namespace {
using WindowTest = DrawingTest;
}

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
    std::free(title);
    title = nullptr;
}

TEST_F(WindowTest, WithoutAStoreTheTitleStays) {
    recorder().window.title = "QuillGrove";
    show_title();
    EXPECT_EQ(recorder().window.title, "QuillGrove");
}
