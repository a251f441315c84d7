// The entries of "View" and the program's own: toggles, the texts that follow them, the entry
// that comes and goes with the flat view.
#include "interact/menu.h"

#include "display/view.h"
#include "store/settings.h"
#include "tests/interact/menu_support.h"

#include <algorithm>
#include <cstring>

namespace {

class MenuView : public MenuTest {
  protected:
    int redisplays() {
        return gl_double::recorder().redisplays;
    }
    /// The entries of "View", with a "|" behind each.
    std::string entries() {
        std::string text;
        for (const gl_double::MenuItem &item : gl_double::recorder().menus.at(menu_of(1)).items) {
            text += item.text + "|";
        }
        return text;
    }
    /// The texts with their values, those of the places.
    void expect_values_in_place() {
        int place = 0;
        for (const gl_double::MenuItem &item : gl_double::recorder().menus.at(menu_of(1)).items) {
            EXPECT_EQ(item.value, ++place);
        }
    }
};

TEST_F(MenuView, AboutTellsProgramAndMachine) {
    const ChipInfo kept = chip;
    chip = {};
    std::strcpy(chip.brand, "Some CPU");
    chip.physical = 4;
    chip.logical = 8;
    EXPECT_EQ(command(0), "---------------------------------------------\n"
                          "Quillgrove 0.89b5 on 4-phys. 8-log.CPU Some CPU\n"
                          "---------------------------------------------\n");
    chip = kept;
    EXPECT_EQ(redisplays(), 1);
}

TEST_F(MenuView, AxesToggle) {
    clo = 1;
    EXPECT_EQ(command(1), "View: Axes  ");
    EXPECT_EQ(coord, 0);
    EXPECT_EQ(clo, 0);
    EXPECT_EQ(redisplays(), 1);
    command(1);
    EXPECT_EQ(coord, 1);
    coord = 5;
    command(1);
    EXPECT_EQ(coord, 0);
}

TEST_F(MenuView, FlatOnAddsTheEntryAndKeepsTheRotation) {
    rot[0] = 12.5f;
    rot[1] = -33.25f;
    EXPECT_EQ(command(2), "View: Flat\n");
    EXPECT_EQ(flat, 1);
    EXPECT_EQ(std::vector<float>(rot, rot + 4), (std::vector<float>{0.0f, 0.0f, 12.5f, -33.25f}));
    EXPECT_EQ(entries(), "Axes|3-D|Log Freq|Breakpoints|");
    expect_values_in_place();
    EXPECT_EQ(redisplays(), 1);
}

TEST_F(MenuView, SecondFlatToggleRestoresTheRotationAndTakesTheEntryAway) {
    rot[0] = 0.1f;
    rot[1] = -1.0e-7f;
    command(2);
    EXPECT_EQ(command(2), "View: Perspective\n");
    EXPECT_EQ(flat, 0);
    EXPECT_EQ(std::vector<float>(rot, rot + 4), (std::vector<float>{0.1f, -1.0e-7f, 0.0f, 0.0f}));
    EXPECT_EQ(entries(), "Axes|Flat|Log Freq|");
    EXPECT_EQ(redisplays(), 2);
}

TEST_F(MenuView, FlatToggledManyTimes) {
    for (int k = 0; k < 20; ++k) {
        command(2);
        EXPECT_EQ(entries(), k % 2 == 0 ? "Axes|3-D|Log Freq|Breakpoints|" : "Axes|Flat|Log Freq|");
    }
}

TEST_F(MenuView, FlatAddsContoursWhileBreakpointsAreShown) {
    bps = 1;
    command(2);
    EXPECT_EQ(entries(), "Axes|3-D|Log Freq|Contours|");
}

TEST_F(MenuView, FlatFromTheCommandLineHasItsEntryAlready) {
    flat = clo = 1;
    rebuild_menu();
    EXPECT_EQ(entries(), "Axes|3-D|Log Freq|Breakpoints|");
    command(2);
    EXPECT_EQ(clo, 0);
    EXPECT_EQ(entries(), "Axes|Flat|Log Freq|");
    command(2);
    EXPECT_EQ(entries(), "Axes|3-D|Log Freq|Breakpoints|");
}

TEST_F(MenuView, FlatOnAddsNoEntryWhileTheCommandLinesFlagIsSet) {
    clo = 1;
    command(2);
    EXPECT_EQ(entries(), "Axes|3-D|Log Freq|");
    EXPECT_EQ(clo, 0);
}

TEST_F(MenuView, EachViewEntryClearsTheCommandLinesFlag) {
    for (int value = 1; value <= 4; ++value) {
        flat = clo = 1;
        rebuild_menu();
        command(value);
        EXPECT_EQ(clo, 0) << value;
    }
    flat = clo = 1;
    command(0);
    EXPECT_EQ(clo, 1);
}

TEST_F(MenuView, FlatDrawsAtOnceAndRefreshesTheReferencePoints) {
    frame();
    gl_double::forget_drawing();
    gl_double::recorder().viewport = {30, 40, 300, 200};
    std::fill(std::begin(zero), std::end(zero), -7.0);
    std::fill(std::begin(one), std::end(one), -7.0);
    std::fill(std::begin(mvmatrix), std::end(mvmatrix), -7.0);
    std::fill(std::begin(projmatrix), std::end(projmatrix), -7.0);
    trans[0] = 0.25f;
    trans[1] = 0.5f;
    command(2);
    const gl_double::Recorder &r = gl_double::recorder();
    EXPECT_EQ(r.viewport, (std::array<GLint, 4>{0, 0, 300, 200}));
    EXPECT_FALSE(r.primitives.empty());
    EXPECT_EQ(r.swaps, 0);
    const gl_double::Matrix &model = gl_double::top(GL_MODELVIEW);
    const gl_double::Matrix &projection = gl_double::top(GL_PROJECTION);
    EXPECT_TRUE(std::equal(model.begin(), model.end(), mvmatrix));
    EXPECT_TRUE(std::equal(projection.begin(), projection.end(), projmatrix));
    const auto want_zero = gl_double::project(model, projection, 0.25, -0.5, 0.0);
    const auto want_one = gl_double::project(model, projection, 1.25, 0.5, 0.0);
    for (size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(zero[axis], want_zero[axis], 1e-9);
        EXPECT_NEAR(one[axis], want_one[axis], 1e-9);
    }
}

TEST_F(MenuView, FlatClearsTheColoursAfterItPostedTheRedisplay) {
    command(2);
    const auto &calls = gl_double::recorder().calls;
    const auto at = [&calls](const gl_double::Call &call) {
        return std::find(calls.begin(), calls.end(), call) - calls.begin();
    };
    const auto posted = at({"glutPostRedisplay", {}});
    const auto cleared = at({"glClear", {static_cast<double>(GL_COLOR_BUFFER_BIT)}});
    const auto drawn =
        std::find_if(calls.begin(), calls.end(),
                     [](const gl_double::Call &call) { return call.name == "primitive"; }) -
        calls.begin();
    EXPECT_LT(posted, cleared);
    EXPECT_LT(cleared, drawn);
    EXPECT_LT(drawn, static_cast<std::ptrdiff_t>(calls.size()));
}

TEST_F(MenuView, LogFrequencyToggle) {
    clo = 1;
    EXPECT_EQ(command(3), "1\tView: Log Frequency\n");
    EXPECT_EQ(logpos, 1);
    EXPECT_EQ(text_of(3), "Lin Freq");
    EXPECT_EQ(clo, 0);
    EXPECT_EQ(command(3), "0\tView: Lin Frequency\n");
    EXPECT_EQ(logpos, 0);
    EXPECT_EQ(text_of(3), "Log Freq");
    EXPECT_EQ(redisplays(), 2);
    expect_values_in_place();
}

TEST_F(MenuView, BreakpointsToggleInTheFlatView) {
    flat = 1;
    rebuild_menu();
    EXPECT_EQ(command(4), "View: Breakpoints\t ");
    EXPECT_EQ(bps, 1);
    EXPECT_EQ(text_of(4), "Contours");
    EXPECT_EQ(command(4), "View: Breakpoints\t ");
    EXPECT_EQ(bps, 0);
    EXPECT_EQ(text_of(4), "Breakpoints");
    EXPECT_EQ(redisplays(), 2);
    expect_values_in_place();
}

TEST_F(MenuView, BreakpointsOutsideTheFlatViewRewriteTheEntryAlone) {
    flat = bps = 1;
    rebuild_menu();
    flat = 0; // as a key might leave it, the entry still there
    command(4);
    EXPECT_EQ(bps, 1);
    EXPECT_EQ(text_of(4), "Contours");
    bps = 0;
    EXPECT_EQ(command(4), "View: Breakpoints\t ");
    EXPECT_EQ(bps, 0);
    EXPECT_EQ(text_of(4), "Breakpoints");
    EXPECT_EQ(redisplays(), 2);
}

TEST_F(MenuView, BreakpointsWithoutTheirEntry) {
    bps = 1;
    EXPECT_EQ(command(4), "View: Breakpoints\t ");
    EXPECT_EQ(bps, 1);
    EXPECT_EQ(redisplays(), 1);
    EXPECT_EQ(gl_double::recorder().errors, std::vector<std::string>{"no such menu item"})
        << "the rewriting is asked for all the same; GLUT passes it over";
    gl_double::recorder().errors.clear();
}

TEST_F(MenuView, TogglesRunNoRefresh) {
    select_group({"1111", "111", "11", "1"});
    for (int value = 1; value <= 4; ++value) {
        flat = 1;
        rebuild_menu();
        spoil_derived();
        command(value);
        EXPECT_EQ(refreshed(), "redisplay") << value;
        EXPECT_EQ(selected, 1);
    }
}

} // namespace
