// The text over the scene: every line with its words, place, colour and condition.
#include "display/text_layer.h"

#include "display/text.h"
#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "store/settings.h"
#include "tests/support/pointer.h"

#include <cmath>
#include <limits>

namespace {

using gl_double::Label;
using gl_double::recorder;

constexpr int width = 640;
constexpr int height = 480;

struct Colour {
    double r, g, b;
};
constexpr Colour information = {0.35, 0.4, 0.0};
constexpr Colour gesture = {0.46, 0.35, 0.06};
constexpr Colour playing = {0.1, 0.45, 0.3};
constexpr Colour help = {0.54, 0.4, 0.1};

class TextLayer : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        silence();
        gShowInfo = gShowHelp = 1;
        fill_store(small_content());
    }
    void TearDown() override {
        silence();
        PointerTest::TearDown();
    }
    static void silence() {
        zgen.playing = 0;
        wgen.select = 0;
        live_gain = 0.2f;
    }
};

/// Draws the layer alone.
void draw() {
    gl_double::forget_drawing();
    drawGLText(width, height);
}

/// The label at a place, a null pointer when nothing is written there.
const Label *label_at(double x, double y) {
    for (const Label &label : recorder().labels) {
        if (label.x == x && label.y == y) {
            return &label;
        }
    }
    return nullptr;
}

/// The text at a height, at the left edge; "(none)" when nothing is written there.
std::string line_at(int y) {
    draw();
    const Label *label = label_at(10, y);
    return label != nullptr ? label->text : "(none)";
}

std::string view_line() {
    return line_at(height - 19);
}

void expect_label(double x, double y, const std::string &text, const Colour &colour) {
    const Label *label = label_at(x, y);
    ASSERT_NE(label, nullptr) << text;
    EXPECT_EQ(label->text, text);
    EXPECT_NEAR(label->r, colour.r, 1e-6);
    EXPECT_NEAR(label->g, colour.g, 1e-6);
    EXPECT_NEAR(label->b, colour.b, 1e-6);
    EXPECT_EQ(label->font, GLUT_BITMAP_HELVETICA_10);
}

} // namespace

TEST_F(TextLayer, InformationLinesInPerspective) {
    draw();
    expect_label(10, height - 6,
                 "Partials:     4  Start: 0.00  Length:   0.60  f.max.=  1000.00  f.min= 100.00  "
                 "a.max= -6.000dB",
                 information);
    expect_label(10, height - 19, "Projection: perspective   Relative zoom:  1.00    ",
                 information);
}

TEST_F(TextLayer, LengthIsTheEndTime) {
    fill_store({{{3.0f, 100.0f, -1.5f}, {12.25f, 22000.5f, -2.0f}}});
    EXPECT_EQ(line_at(height - 6),
              "Partials:     1  Start: 3.00  Length:  12.25  f.max.= 22000.50  f.min= 100.00  "
              "a.max= -1.500dB");
}

TEST_F(TextLayer, ProjectionAndScale) {
    zoom = 12.345f;
    logpos = 1;
    EXPECT_EQ(view_line(), "Projection: perspective-log. frequency   Relative zoom: 12.35    ");
    flat = 1;
    EXPECT_EQ(view_line(), "Projection: flat-log. frequency   Relative zoom: 12.35    ");
    logpos = 0;
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom: 12.35    ");
}

TEST_F(TextLayer, FlatWithoutBreakpointsHasNoShiftDirectionAndNoFoundPoints) {
    flat = 1;
    foundSubscriptions = {0, 1, -1, -1, 1};
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00    ");
}

TEST_F(TextLayer, BreakpointsInPerspectiveHaveNoneEither) {
    bps = 1;
    foundSubscriptions = {0, 1, -1, -1, 1};
    EXPECT_EQ(view_line(), "Projection: perspective   Relative zoom:  1.00    ");
}

TEST_F(TextLayer, ShiftDirections) {
    flat = bps = 1;
    X = 0;
    Y = 1;
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00   Shift direction: Y     ");
    X = 1;
    Y = 0;
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00   Shift direction: X     ");
    X = 1;
    Y = 1;
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00   Shift directions: XY     ");
    X = 0;
    Y = 0;
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00   Shift direction:      ");
}

TEST_F(TextLayer, ShiftDirectionInTheLogarithmicView) {
    flat = bps = logpos = 1;
    EXPECT_EQ(view_line(),
              "Projection: flat-log. frequency   Relative zoom:  1.00   Shift direction: Y     ");
}

TEST_F(TextLayer, OneFoundPoint) {
    flat = bps = 1;
    foundSubscriptions = {1, 2, -1, -1, 1};
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00   Shift direction: Y     "
                           "@[1][2]:  0.40s  440.00Hz -18.00dB  ");
}

TEST_F(TextLayer, OneFoundPointIgnoresACopyInTheSecondSlot) {
    flat = bps = 1;
    foundSubscriptions = {1, 2, 1, 2, 1};
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00   Shift direction: Y     "
                           "@[1][2]:  0.40s  440.00Hz -18.00dB  ");
}

TEST_F(TextLayer, TwoFoundPointsShareTheLevelOfTheNewest) {
    flat = bps = 1;
    foundSubscriptions = {1, 2, 0, 1, 2};
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00   Shift direction: Y     "
                           "@[1][2]:  0.40s  440.00Hz -18.00dB   "
                           "@[0][1]:  0.10s  110.00Hz -18.00dB   ");
}

TEST_F(TextLayer, FoundPointsThatAnEditRemovedAreNotShown) {
    flat = bps = 1;
    const std::string empty = "Projection: flat   Relative zoom:  1.00   Shift direction: Y     ";
    for (const FoundPoints &stale : {FoundPoints{4, 0, -1, -1, 1}, FoundPoints{0, 4, -1, -1, 1},
                                     FoundPoints{-1, -1, -1, -1, 1}, FoundPoints{0, 1, 9, 9, 2},
                                     FoundPoints{9, 9, 0, 1, 2}, FoundPoints{0, 1, 0, 1, 0}}) {
        foundSubscriptions = stale;
        EXPECT_EQ(view_line(), empty);
    }
}

TEST_F(TextLayer, InformationCanBeSwitchedOff) {
    gShowInfo = 0;
    gShowMethod = 1;
    method = 1;
    liveSynth = 1;
    live_gain = 0.4f;
    tfsquare[0] = 2.0f;
    draw();
    EXPECT_EQ(label_texts().size(), 4u); // the help lines
    for (const Label &label : recorder().labels) {
        EXPECT_LT(label.y, 60.0);
    }
}

TEST_F(TextLayer, TheLastGesture) {
    gShowMethod = 1;
    increment = 0.5f;
    foundSubscriptions.part0 = 3;
    const std::pair<int, const char *> gestures[] = {
        {1, "Warp partial(s)\n"}, {-1, "Harmonize partial(s)\n"}, {2, "Amp: +0.5 dB\n"},
        {-2, "Amp: -0.5 dB\n"},   {-3, "Env. follow (3)\n"},      {3, "Env. stray  (3)\n"}};
    for (const auto &[number, text] : gestures) {
        method = number;
        draw();
        expect_label(10, height - 32, text, gesture);
    }
}

TEST_F(TextLayer, AnUnknownGestureHasNoText) {
    gShowMethod = 1;
    for (const int number : {0, 4, -4}) {
        method = number;
        EXPECT_EQ(line_at(height - 32), "(none)");
    }
}

TEST_F(TextLayer, TheGestureLineStaysUntilItsFlagIsCleared) {
    gShowMethod = 1;
    method = 1;
    EXPECT_EQ(line_at(height - 32), "Warp partial(s)\n");
    EXPECT_EQ(line_at(height - 32), "Warp partial(s)\n");
    EXPECT_EQ(gShowMethod, 1);
    gShowMethod = 0;
    EXPECT_EQ(line_at(height - 32), "(none)");
    gShowMethod = 2; // only 1 shows it
    EXPECT_EQ(line_at(height - 32), "(none)");
}

TEST_F(TextLayer, TheGainWhileAScrubSounds) {
    liveSynth = 1;
    live_gain = 0.4f;
    tfsquare[0] = 2.0f;
    draw();
    expect_label(10, height - 26, " 6.0[dB]\n", playing);
    live_gain = 0.02f;
    EXPECT_EQ(line_at(height - 26), "-20.0[dB]\n");
    live_gain = 0.0f;
    EXPECT_EQ(line_at(height - 26), "-140.0[dB]\n");
}

TEST_F(TextLayer, TheGainWhileAZonePlays) {
    zgen.playing = 1;
    live_gain = 0.1f;
    draw();
    expect_label(10, height - 26, "-6.0[dB]\n", playing);
}

TEST_F(TextLayer, TheGainStandsLowerBelowAGesture) {
    zgen.playing = 1;
    live_gain = 0.1f;
    gShowMethod = 1;
    method = 1;
    draw();
    expect_label(10, height - 39, "-6.0[dB]\n", playing);
    expect_label(10, height - 32, "Warp partial(s)\n", gesture);
    EXPECT_EQ(label_at(10, height - 26), nullptr);
}

TEST_F(TextLayer, NoGainInSilence) {
    live_gain = 0.1f;
    EXPECT_EQ(line_at(height - 26), "(none)");
}

TEST_F(TextLayer, NoGainAtTheDefaultHoweverItWasReached) {
    liveSynth = 1;
    tfsquare[0] = 2.0f;
    EXPECT_EQ(line_at(height - 26), "(none)");
    live_gain = 0.4f;
    live_gain *= 0.5f;
    EXPECT_EQ(line_at(height - 26), "(none)");
    live_gain = std::nextafter(0.2f, 1.0f);
    EXPECT_EQ(line_at(height - 26), " 0.0[dB]\n");
}

TEST_F(TextLayer, HelpLinesAtTheStart) {
    draw();
    expect_label(10, 19,
                 "Viewing controls: <Shift>L_mouse = move; <Ctrl>L_mouse = scale; "
                 "<Opt>L_mouse = rot.",
                 help);
    expect_label(10, 32, "Commands:  R_mouse: Menu", help);
    expect_label(10, 45, "H: help  I: info  S: staff C: coordinates off M: midi off \n", help);
    expect_label(10, 58, "  \n", help);
}

TEST_F(TextLayer, RotationHelpIsForPerspective) {
    flat = 1;
    EXPECT_EQ(line_at(19), "Viewing controls: <Shift>L_mouse = move; <Ctrl>L_mouse = scale; ");
}

TEST_F(TextLayer, EditingHelpIsForTheFlatViewWithBreakpoints) {
    flat = 1;
    EXPECT_EQ(line_at(32), "Commands:  R_mouse: Menu");
    bps = 1;
    EXPECT_EQ(line_at(32), "Commands: L_mouse: (sweep-)select; <Shift>M_mouse: move selected "
                           "partials; R_mouse: Menu");
    flat = 0;
    EXPECT_EQ(line_at(32), "Commands:  R_mouse: Menu");
}

TEST_F(TextLayer, CoordinatesSayWhatTheKeyWouldDoMidiWhatHolds) {
    coord = 0;
    midi = 1;
    EXPECT_EQ(line_at(45), "H: help  I: info  S: staff C: coordinates on M: midi on \n");
    coord = 1;
    EXPECT_EQ(line_at(45), "H: help  I: info  S: staff C: coordinates off M: midi on \n");
    midi = 0;
    EXPECT_EQ(line_at(45), "H: help  I: info  S: staff C: coordinates off M: midi off \n");
}

TEST_F(TextLayer, SelectionHelpNeedsASelectionAndBreakpoints) {
    selected = 1;
    EXPECT_EQ(line_at(45), "H: help  I: info  S: staff C: coordinates off M: midi off \n");
    bps = 1;
    EXPECT_EQ(line_at(45), "H: help  I: info  S: staff C: coordinates off M: midi off "
                           "X,Y: shift direction; <Ctrl>delete: deselect\n");
    selected = 0;
    EXPECT_EQ(line_at(45), "H: help  I: info  S: staff C: coordinates off M: midi off \n");
}

TEST_F(TextLayer, WheelAndRandomWalkMarks) {
    ran = 1;
    EXPECT_EQ(line_at(58), " R\n");
    wgen.select = 1;
    EXPECT_EQ(line_at(58), " R\n"); // the wheel shows with MIDI on only
    midi = 1;
    EXPECT_EQ(line_at(58), "WR\n");
    ran = 0;
    EXPECT_EQ(line_at(58), "W \n");
    wgen.select = 0;
    EXPECT_EQ(line_at(58), "  \n");
}

TEST_F(TextLayer, HelpCanBeSwitchedOff) {
    gShowHelp = 0;
    draw();
    EXPECT_EQ(label_texts().size(), 2u); // the information lines
}

TEST_F(TextLayer, WithBothOffNothingIsWritten) {
    gShowHelp = gShowInfo = 0;
    draw();
    EXPECT_TRUE(recorder().labels.empty());
    EXPECT_TRUE(recorder().primitives.empty());
}

TEST_F(TextLayer, TimeBesideThePointer) {
    gShowHelp = gShowInfo = 0; // it depends on neither
    fill_store({{{1.0f, 100.0f, 0.0f}, {9.0f, 100.0f, 0.0f}}});
    liveSynth = 1;
    tfsquare[0] = 0.25f;
    square[0] = 100;
    square[2] = 200;
    W = 1;
    draw();
    expect_label(106, 200, " @  2.000 s", playing); // counted from the start of the sound
    W = 0;
    draw();
    expect_label(106, 200, "*@  2.000 s", playing);
}

TEST_F(TextLayer, TimeBesideThePointerInsideTheSoundOnly) {
    gShowHelp = gShowInfo = 0;
    liveSynth = 1;
    const std::pair<float, bool> places[] = {{0.0f, true},
                                             {1.0f, true},
                                             {-0.001f, false},
                                             {1.001f, false},
                                             {std::numeric_limits<float>::quiet_NaN(), false}};
    for (const auto &[t, shown] : places) {
        tfsquare[0] = t;
        draw();
        EXPECT_EQ(recorder().labels.size(), shown ? 1u : 0u) << t;
    }
    liveSynth = 0;
    tfsquare[0] = 0.5f;
    draw();
    EXPECT_TRUE(recorder().labels.empty());
}

TEST_F(TextLayer, FrameWhileMidiIsOn) {
    draw();
    EXPECT_TRUE(recorder().primitives.empty());
    midi = 1;
    draw();
    const auto loops = primitives_of(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 1u);
    ASSERT_EQ(loops[0].vertices.size(), 4u);
    expect_vertex(loops[0].vertices[0], 0, 2, 0);
    expect_vertex(loops[0].vertices[1], 0, height, 0);
    expect_vertex(loops[0].vertices[2], width - 1, height, 0);
    expect_vertex(loops[0].vertices[3], width - 1, 2, 0);
    expect_colour(loops[0].vertices[0], 0.0, 0.0, 0.7);
}

TEST_F(TextLayer, OneUnitIsOnePixelFromTheTopLeft) {
    draw();
    recorder().viewport = {0, 0, width, height};
    const Label &label = recorder().labels.front();
    const auto corner = gl_double::project(label.modelview, label.projection, 0, 0, 0);
    EXPECT_NEAR(corner[0], 0.0, 1e-3);
    EXPECT_NEAR(corner[1], height, 1e-3);
    const auto place = gl_double::project(label.modelview, label.projection, 100, 30, 0);
    EXPECT_NEAR(place[0], 100.0, 1e-3);
    EXPECT_NEAR(place[1], height - 30.0, 1e-3);
}

TEST_F(TextLayer, LeavesGLAsItWas) {
    recorder().viewport = {3, 4, 50, 60};
    glMatrixMode(GL_PROJECTION);
    glTranslatef(1.0f, 2.0f, 3.0f);
    recorder().enabled.insert(GL_LIGHTING);
    const auto stacks = recorder().stacks;
    draw();
    EXPECT_EQ(recorder().stacks, stacks);
    EXPECT_EQ(recorder().matrix_mode, static_cast<GLenum>(GL_PROJECTION));
    EXPECT_EQ(recorder().viewport, (std::array<GLint, 4>{3, 4, 50, 60}));
    EXPECT_FALSE(recorder().enabled.contains(GL_LIGHTING));
    const auto viewports = calls_of("glViewport");
    ASSERT_EQ(viewports.size(), 2u);
    EXPECT_EQ(recorder().calls[viewports[0]].values, (std::vector<double>{0, 0, width, height}));
}

TEST_F(TextLayer, ChangesNoState) {
    flat = bps = 1;
    gShowMethod = 1;
    method = 2;
    liveSynth = 1;
    midi = 1;
    foundSubscriptions = {1, 2, 0, 1, 2};
    draw();
    EXPECT_EQ(gShowMethod, 1);
    EXPECT_EQ(method, 2);
    EXPECT_EQ(foundSubscriptions.count, 2);
    EXPECT_EQ(recorder().redisplays, 0);
    EXPECT_EQ(recorder().swaps, 0);
}

TEST_F(TextLayer, ClosesEachFrame) {
    frame();
    EXPECT_NE(label_of("Commands:  R_mouse: Menu"), nullptr);
    EXPECT_GT(calls_of("glutSwapBuffers").front(), calls_of("label").back());
}

TEST_F(TextLayer, StandsEnormousNumbers) {
    fill_store({{{0.0f, 100.0f, 3.4e38f}, {3.4e38f, 3.4e38f, 3.4e38f}}});
    flat = bps = 1;
    foundSubscriptions = {0, 1, 0, 0, 2};
    draw();
    for (const std::string &text : label_texts()) {
        EXPECT_LT(text.size(), 256u);
    }
}

TEST_F(TextLayer, StandsAnEmptyStore) {
    fill_store({});
    flat = bps = 1;
    foundSubscriptions = {0, 0, 0, 0, 2};
    EXPECT_EQ(line_at(height - 6).substr(0, 17), "Partials:     0  ");
    EXPECT_EQ(view_line(), "Projection: flat   Relative zoom:  1.00   Shift direction: Y     ");
}

TEST_F(TextLayer, SmallWritersHoldNumbersToFourCharacters) {
    glRasterPos2i(0, 0);
    printInt(7);
    EXPECT_EQ(recorder().labels.back().text, " 7");
    glRasterPos2i(0, 0);
    printInt(-123456);
    EXPECT_EQ(recorder().labels.back().text, "-123");
    glRasterPos2i(0, 0);
    printFloat(0.25f);
    EXPECT_EQ(recorder().labels.back().text, "0.2");
    glRasterPos2i(0, 0);
    printFloat(3.4e38f);
    EXPECT_EQ(recorder().labels.back().text, "3399");
    drawGLString(3.0f, 4.0f, "both");
    EXPECT_EQ(recorder().labels.back().text, "both");
    EXPECT_EQ(recorder().labels.back().x, 3.0);
    EXPECT_EQ(recorder().labels.back().y, 4.0);
}
