// Dragging the one or two found points: how far, within which bounds, and what is derived anew.
#include "interact/drags.h"

#include "display/view.h"
#include "interact/mouse.h"
#include "interact/selection.h"
#include "tests/interact/drag_support.h"
#include "tests/interact/log_places.h"

#include <cmath>

namespace {

constexpr int middle = GLUT_MIDDLE_BUTTON;

/// By the range as it stands.
float place(float freq) {
    return place_between(minfreq, maxfreq, freq);
}

double freq_of(float place) {
    return freq_between(minfreq, maxfreq, place);
}

void find(int part0, int point0, int part1 = -1, int point1 = -1) {
    foundSubscriptions = {part0, point0, part1, point1, part1 < 0 ? 1 : 2};
    directSelect = found = 1;
}

class DragPoints : public DragTest {
  protected:
    DragPoints() : DragTest(breakpointsTranslate) {}
};

} // namespace

TEST_F(DragPoints, NeedsTheFlatViewWithBreakpoints) {
    find(0, 1);
    for (const auto &[is_flat, shows] : {std::pair{0, 1}, {1, 0}, {0, 0}}) {
        flat = is_flat;
        bps = shows;
        drag(30, 30);
        EXPECT_EQ(parray[0][1].freq, 300.0f);
        EXPECT_EQ(square[0], 225);
        EXPECT_EQ(square[1], 0);
        EXPECT_EQ(gl_double::recorder().redisplays, 0);
    }
}

TEST_F(DragPoints, AtTheStartFrequencyAloneMoves) {
    find(0, 1);
    drag(30, 40);
    EXPECT_EQ(parray[0][1].freq, 300.0f - df());
    EXPECT_GT(parray[0][1].freq, 350.0f);
    EXPECT_EQ(parray[0][1].time, 1.0f);
    EXPECT_EQ(parray[0][0].freq, 200.0f);
}

TEST_F(DragPoints, WithTheTogglesTurnedTimeAloneMoves) {
    find(0, 1);
    X = 1;
    Y = 0;
    drag(30, 40);
    EXPECT_EQ(parray[0][1].freq, 300.0f);
    EXPECT_EQ(parray[0][1].time, 1.0f - dt());
    EXPECT_GT(parray[0][1].time, 1.1f);
}

TEST_F(DragPoints, TimeLagsBehindThePointer) {
    // By 1.011, and by the end time standing in for the duration.
    find(0, 1);
    X = 1;
    drag(-25, 0);
    const double way = scene_t(square[0]) - scene_t(square[0] + 25);
    EXPECT_NEAR(parray[0][1].time, 1.0 + way * 2.5 / 1.011, 1e-5);
}

TEST_F(DragPoints, FrequencyKeepsUpWithThePointer) {
    find(0, 1);
    drag(0, 25);
    const double way = scene_f(square[2]) - scene_f(square[2] + 25);
    EXPECT_NEAR(parray[0][1].freq, 300.0 + way * 1000.0, 2e-3);
}

TEST_F(DragPoints, EachStepCountsFromTheLastOne) {
    find(0, 1);
    drag(3, 20);
    EXPECT_EQ(square[0], 228);
    EXPECT_EQ(square[1], 228);
    EXPECT_EQ(square[2], 205);
    EXPECT_EQ(square[3], 205);
    const float after_one = parray[0][1].freq;
    drag(0, 0);
    EXPECT_EQ(parray[0][1].freq, after_one);
    drag(0, -20);
    EXPECT_NEAR(parray[0][1].freq, 300.0f, 1e-3);
    EXPECT_EQ(gl_double::recorder().redisplays, 3);
}

TEST_F(DragPoints, NeitherDirectionMovesNothing) {
    find(0, 1);
    X = Y = 0;
    drag(30, 30);
    EXPECT_EQ(parray[0][1].freq, 300.0f);
    EXPECT_EQ(parray[0][1].time, 1.0f);
    EXPECT_EQ(square[0], 255);
}

TEST_F(DragPoints, WithNothingFoundOnlyTheRangesAreDerivedAnew) {
    maxfreq = 5000.0f;
    drag(30, 30);
    EXPECT_EQ(maxfreq, 1000.0f);
    EXPECT_EQ(parray[0][1].freq, 300.0f);
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
}

TEST_F(DragPoints, StopsFourMillisecondsFromTheNextPoint) {
    find(0, 1);
    X = 1;
    Y = 0;
    parray[0][2].time = 1.06f;
    drag(5, 0);
    const float once = parray[0][1].time;
    EXPECT_GT(once, 1.0f);
    EXPECT_LT(once, 1.056f);
    drag(30, 0);
    EXPECT_EQ(parray[0][1].time, once); // not to the bound: the step is dropped
}

TEST_F(DragPoints, StopsFourMillisecondsFromThePointBefore) {
    find(0, 1);
    X = 1;
    Y = 0;
    parray[0][0].time = 0.98f;
    drag(-10, 0);
    EXPECT_EQ(parray[0][1].time, 1.0f);
    drag(-2, 0);
    EXPECT_EQ(parray[0][1].time, 1.0f - dt());
    EXPECT_LT(parray[0][1].time, 1.0f);
}

TEST_F(DragPoints, ABoundItselfMayBeReached) {
    find(0, 1);
    X = 1;
    parray[0][2].time = 1.004f;
    const float hi = static_cast<float>(1.004f - 0.004);
    parray[0][1].time = hi;
    drag(0, 10); // no way in time
    EXPECT_EQ(parray[0][1].time, hi);
    EXPECT_GT(parray[0][1].freq, 300.0f);
    parray[0][1].time = std::nextafter(hi, 2.0f);
    const float before = parray[0][1].freq;
    drag(0, 10);
    EXPECT_EQ(parray[0][1].freq, before - df()); // moved before the stop
}

TEST_F(DragPoints, EndPointsAreHeldWithinTheSound) {
    X = 1;
    Y = 0;
    find(0, 0);
    drag(-3, 0);
    EXPECT_EQ(parray[0][0].time, 0.5f);
    drag(5, 0);
    EXPECT_GT(parray[0][0].time, 0.5f);
    find(2, 1);
    drag(1, 0);
    EXPECT_EQ(parray[2][1].time, 2.5f);
    drag(-5, 0);
    EXPECT_LT(parray[2][1].time, 2.5f);
}

TEST_F(DragPoints, ASinglePointIsHeldByTheSoundAlone) {
    fill_store({{{0.5f, 200.0f, 0.0f}}, {{0.0f, 100.0f, 0.0f}, {2.0f, 1000.0f, 0.0f}}});
    frame();
    find(0, 0);
    X = 1;
    drag(20, 20);
    EXPECT_EQ(parray[0][0].time, 0.5f - dt());
    EXPECT_EQ(parray[0][0].freq, 200.0f - df());
    drag(-150, 0);
    EXPECT_GT(parray[0][0].time, 0.5f);
}

TEST_F(DragPoints, BelowOneHertzItStaysAtOneInTheLinearView) {
    find(0, 1);
    drag(0, -200);
    EXPECT_EQ(parray[0][1].freq, 1.0f);
    EXPECT_EQ(minfreq, 1.0f); // the range held a negative value on the way
    EXPECT_EQ(maxfreq, 1000.0f);
}

TEST_F(DragPoints, AboveTheTopItStaysAt22050InTheLinearView) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 22000.0f, 0.0f}}});
    frame();
    find(0, 1);
    drag(0, 100);
    EXPECT_EQ(parray[0][1].freq, 22050.0f);
    EXPECT_EQ(maxfreq, 22050.0f);
}

TEST_F(DragPoints, TwoFoundPointsMoveTogether) {
    find(0, 1, 2, 0);
    X = 1;
    drag(10, 20);
    EXPECT_EQ(parray[0][1].freq, 300.0f - df());
    EXPECT_EQ(parray[2][0].freq, 100.0f - df());
    EXPECT_EQ(parray[0][1].time, 1.0f - dt());
    EXPECT_EQ(parray[2][0].time, 1.0f - dt());
}

TEST_F(DragPoints, TheEarlierOfTwoGoesIntoTheFirstSlotForGood) {
    find(0, 2, 0, 0);
    drag(0, 0);
    EXPECT_EQ(foundSubscriptions.point0, 0);
    EXPECT_EQ(foundSubscriptions.point1, 2);
    EXPECT_EQ(foundSubscriptions.count, 2);
    find(0, 1, 2, 0); // at the same time: as they are
    drag(0, 0);
    EXPECT_EQ(foundSubscriptions.part0, 0);
    EXPECT_EQ(foundSubscriptions.part1, 2);
}

TEST_F(DragPoints, NeighboursFoundTogetherDoNotHoldEachOther) {
    // To the right the later one goes first and makes room.
    parray[0][1].time = 0.506f;
    find(0, 0, 0, 1);
    X = 1;
    Y = 0;
    drag(10, 0);
    EXPECT_EQ(parray[0][1].time, 0.506f - dt());
    EXPECT_EQ(parray[0][0].time, 0.5f - dt());
}

TEST_F(DragPoints, AStopEndsTheEventForTheOtherPointToo) {
    find(0, 1, 2, 1); // the second slot is the last point of the sound
    X = 1;
    drag(10, 20);
    EXPECT_EQ(parray[2][1].time, 2.5f);
    EXPECT_EQ(parray[2][1].freq, 120.0f - df()); // before the stop
    EXPECT_EQ(parray[0][1].time, 1.0f);
    EXPECT_EQ(parray[0][1].freq, 300.0f);
    EXPECT_EQ(square[0], 235); // the closing steps follow
    EXPECT_EQ(parray[2][1].logfreq, place(parray[2][1].freq));
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
}

TEST_F(DragPoints, ClosingStepsOfTheLinearView) {
    find(1, 0);
    parray[2][0].selected = 1;
    parray[2][1].phase = 9.0f;
    parray[0][1].phase = 9.0f;
    X = 1;
    drag(10, 20);
    EXPECT_EQ(maxfreq, parray[1][0].freq);
    EXPECT_EQ(fspan, maxfreq / minfreq);
    EXPECT_EQ(peval[1].avgfreq, (parray[1][0].freq + 900.0f) / 2.0f);
    EXPECT_LT(parray[2][1].phase, 6.3f); // a partial with a selected point
    EXPECT_EQ(parray[0][1].phase, 9.0f); // one without
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            EXPECT_EQ(parray[i][j].logfreq, place(parray[i][j].freq)) << i << " " << j;
        }
    }
}

TEST_F(DragPoints, TheLinearViewLeavesTheSoundsEnds) {
    find(0, 0);
    X = 1;
    drag(40, 0);
    EXPECT_GT(parray[0][0].time, 0.6f);
    EXPECT_EQ(sndstart, 0.5f);
}

// --- the logarithmic view ----------------------------------------------------------------------

TEST_F(DragPoints, MovesTheLogPosition) {
    log_view();
    find(0, 1);
    const float expected_place_before = parray[0][1].logfreq;
    drag(0, 40);
    const float moved = expected_place_before + -df() / old_max;
    EXPECT_GT(moved, expected_place_before + 0.05f);
    EXPECT_EQ(parray[0][1].freq, static_cast<float>(freq_of(moved)));
    EXPECT_EQ(parray[0][1].logfreq, place(parray[0][1].freq));
    EXPECT_NEAR(parray[0][1].logfreq, moved, 1e-6);
}

TEST_F(DragPoints, InTheLogViewAPointPassesItsNeighbours) {
    log_view();
    find(0, 1);
    X = 1;
    Y = 0;
    drag(160, 0);
    EXPECT_EQ(parray[0][1].time, 1.0f - dt());
    EXPECT_GT(parray[0][1].time, parray[0][2].time);
}

TEST_F(DragPoints, InTheLogViewTheSoundsEndsHold) {
    log_view();
    find(0, 1);
    X = 1;
    drag(300, 40);
    EXPECT_EQ(parray[0][1].time, 1.0f);
    EXPECT_EQ(parray[0][1].freq, 300.0f); // the place had moved, the frequency not yet
    EXPECT_EQ(parray[0][1].logfreq, place(300.0f));
    drag(-150, 40);
    EXPECT_EQ(parray[0][1].time, 1.0f);
}

TEST_F(DragPoints, BelowOneHertzTheStepIsRefusedInTheLogView) {
    log_view();
    find(2, 0);
    const float before = parray[2][0].freq;
    for (int i = 0; i < 3; ++i) {
        drag(0, -400); // by more than a whole range, three decades below 100 Hz at the least
    }
    EXPECT_GT(parray[2][0].freq, 1.0f);
    EXPECT_LT(parray[2][0].freq, before);
    const float held = parray[2][0].freq;
    drag(0, -400);
    EXPECT_NEAR(parray[2][0].freq, held, held * 1e-5);
}

TEST_F(DragPoints, ThePresentFrequencyWidensTheRangeBeforeTheMove) {
    log_view();
    find(0, 1);
    parray[0][1].freq = 2000.0f;
    parray[0][1].logfreq = 0.5f;
    drag(0, 40);
    // df goes by the range as it was, the position by the wider one.
    const float moved = 0.5f + -df() / 2000.0f;
    EXPECT_EQ(parray[0][1].freq, static_cast<float>(freq_between(100.0f, 2000.0f, moved)));
}

TEST_F(DragPoints, ClosingStepsOfTheLogView) {
    log_view();
    find(0, 0);
    parray[0][0].selected = 1;
    X = 1;
    drag(40, 20);
    EXPECT_GT(parray[0][0].time, 0.75f);
    EXPECT_EQ(sndstart, 0.75f); // times too
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            EXPECT_EQ(parray[i][j].logfreq, place(parray[i][j].freq)) << i << " " << j;
        }
    }
}

TEST_F(DragPoints, WithoutYTheFrequencyIsThatOfThePlace) {
    log_view();
    find(0, 1);
    Y = 0;
    parray[0][1].logfreq = 0.25f;
    drag(10, 10);
    EXPECT_EQ(parray[0][1].freq, static_cast<float>(freq_of(0.25f)));
}

// --- harmless outcomes -------------------------------------------------------------------------

TEST_F(DragPoints, PointsThatAreGoneArePassedOver) {
    find(9, 0, 0, 99);
    X = 1;
    drag(10, 10);
    log_view();
    drag(10, 10);
    EXPECT_EQ(foundSubscriptions.part0, 9);
    find(9, 0, 0, 1);
    logpos = 0;
    X = 0;
    drag(0, 10);
    EXPECT_EQ(parray[0][1].freq, 300.0f - df());
    foundSubscriptions = {-1, -1, -1, -1, 2};
    drag(10, 10);
}

TEST_F(DragPoints, StandsAnEmptyStore) {
    fill_store({});
    find(0, 0, 0, 1);
    drag(10, 10);
    log_view();
    drag(10, 10);
    EXPECT_EQ(maxfreq, 0.0f);
}

TEST_F(DragPoints, StandsARangeOfNoWidth) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    frame();
    find(0, 1);
    X = 1;
    drag(-10, 10);
    EXPECT_GT(parray[0][1].freq, 100.0f);
    log_view();
    drag(-10, 10);
    drag(-10, -400);
}

TEST_F(DragPoints, FromPressToRelease) {
    find(0, 1);
    mouse_down(middle, 200, 200);
    EXPECT_EQ(motion(), breakpointsTranslate);
    const uint32_t before = input_events;
    mouse_move(200, 180);
    EXPECT_EQ(input_events, before + 1); // the next frame is built anew
    EXPECT_GT(parray[0][1].freq, 320.0f);
    const float moved = parray[0][1].freq;
    mouse_up(middle, 200, 170);
    EXPECT_EQ(parray[0][1].freq, moved);
    mouse_move(200, 100);
    EXPECT_EQ(parray[0][1].freq, moved);
}
