// Dragging everything selected: how far, where it stops, and what is derived anew in which view.
#include "interact/drags.h"

#include "display/view.h"
#include "interact/selection.h"
#include "store/phase.h"
#include "tests/support/console.h"
#include "tests/support/pointer.h"

#include <cmath>
#include <cstdio>

namespace {

class DragPartials : public PointerTest {
  protected:
    void SetUp() override {
        PointerTest::SetUp();
        fill_store({{{0.5f, 200.0f, -10.0f}, {1.0f, 300.0f, -10.0f}, {1.5f, 250.0f, -10.0f}},
                    {{0.75f, 1000.0f, -20.0f}, {1.75f, 900.0f, -20.0f}},
                    {{1.0f, 100.0f, -30.0f}, {2.5f, 120.0f, -30.0f}}});
        open_edit_view();
        square[0] = square[2] = 225;
    }

    void log_view() {
        logpos = 1;
        frame();
        gl_double::forget_drawing();
    }

    /// One motion event by so many pixels to the right and up; what it prints.
    std::string drag(int right, int up) {
        old_min = minfreq;
        old_max = maxfreq;
        old_start = sndstart;
        old_len = sndlen;
        const int x = square[0] + right;
        const int y = square[2] - up;
        return printed([&] { partialsTranslate(x, y); });
    }

    float df() const {
        return old_max * tfsquare[3] - old_max * tfsquare[2];
    }

    float dt() const {
        const double press = (tfsquare[1] * old_len + old_start) / 1.011;
        const double now = (tfsquare[0] * old_len + old_start) / 1.011;
        return static_cast<float>(press - now);
    }

    /// By the range as it stood before the event.
    float place(float freq) const {
        const double point = freq / old_min;
        const double range = old_max / old_min;
        return static_cast<float>((std::log(point) / 0.6931472) / (std::log(range) / 0.6931472));
    }

    float old_min = 0, old_max = 0, old_start = 0, old_len = 0;
};

} // namespace

TEST_F(DragPartials, NeedsTheFlatViewWithBreakpoints) {
    set_flags({"111", "11", "11"});
    for (const auto &[is_flat, shows] : {std::pair{0, 1}, {1, 0}, {0, 0}}) {
        flat = is_flat;
        bps = shows;
        EXPECT_EQ(drag(30, 30), "");
        EXPECT_EQ(parray[0][1].freq, 300.0f);
        EXPECT_EQ(square[0], 225);
    }
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(DragPartials, MovesWhatIsSelectedInFrequencyAtTheStart) {
    set_flags({"011", "00", "10"});
    parray[1][0].selected = 2; // selected only when equal to 1
    EXPECT_EQ(drag(30, 40), "");
    EXPECT_EQ(parray[0][0].freq, 200.0f);
    EXPECT_EQ(parray[0][1].freq, 300.0f - df());
    EXPECT_EQ(parray[0][2].freq, 250.0f - df());
    EXPECT_EQ(parray[1][0].freq, 1000.0f);
    EXPECT_EQ(parray[2][0].freq, 100.0f - df());
    EXPECT_GT(parray[2][0].freq, 150.0f);
    EXPECT_EQ(parray[0][1].time, 1.0f);
}

TEST_F(DragPartials, MovesInTimeAloneWithTheTogglesTurned) {
    set_flags({"011", "00", "10"});
    X = 1;
    Y = 0;
    drag(30, 40);
    EXPECT_EQ(parray[0][1].freq, 300.0f);
    EXPECT_EQ(parray[0][0].time, 0.5f);
    EXPECT_EQ(parray[0][1].time, 1.0f - dt());
    EXPECT_EQ(parray[0][2].time, 1.5f - dt());
    EXPECT_GT(parray[0][2].time, 1.6f);
}

TEST_F(DragPartials, NeighboursDoNotHoldARun) {
    set_flags({"010", "00", "00"});
    X = 1;
    Y = 0;
    drag(150, 0);
    EXPECT_GT(parray[0][1].time, parray[0][2].time);
}

TEST_F(DragPartials, ReachingTheTopStopsTheEventPartWay) {
    fill_store({{{0.0f, 500.0f, 0.0f}, {1.0f, 600.0f, 0.0f}},
                {{0.0f, 700.0f, 0.0f}, {0.5f, 22000.0f, 0.0f}, {1.0f, 800.0f, 0.0f}},
                {{0.0f, 900.0f, 0.0f}, {1.0f, 950.0f, 0.0f}}});
    frame();
    set_flags({"11", "111", "11"});
    X = 1;
    drag(10, 20);
    EXPECT_EQ(parray[0][1].freq, 600.0f - df());
    EXPECT_EQ(parray[1][0].freq, 700.0f - df());
    EXPECT_EQ(parray[1][1].freq, 22000.0f);
    EXPECT_EQ(parray[1][1].time, 0.5f);
    EXPECT_EQ(parray[1][2].freq, 800.0f);
    EXPECT_EQ(parray[2][0].freq, 900.0f);
    EXPECT_EQ(parray[2][0].time, 0.0f);
    // The closing steps follow.
    EXPECT_EQ(sndlen, 1.0f - dt());
    EXPECT_EQ(minfreq, 800.0f);
    EXPECT_EQ(maxfreq, 22000.0f);
    EXPECT_EQ(peval[0].avgfreq, (parray[0][0].freq + parray[0][1].freq) / 2.0f);
    EXPECT_EQ(square[0], 235);
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
}

TEST_F(DragPartials, ReachingZeroStopsTheEventPartWay) {
    set_flags({"111", "11", "11"});
    drag(0, -60);
    EXPECT_EQ(parray[1][1].freq, 900.0f - df());
    EXPECT_LT(parray[1][1].freq, 850.0f);
    EXPECT_EQ(parray[2][0].freq, 100.0f);
    EXPECT_EQ(parray[2][1].freq, 120.0f);
}

TEST_F(DragPartials, TheLimitsThemselvesAreNotAllowed) {
    Y = 1;
    fill_store({{{0.0f, 22050.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}});
    frame();
    set_flags({"11"});
    drag(0, 0); // a step of nothing, from a point at the limit
    EXPECT_EQ(parray[0][1].freq, 100.0f);
    X = 1;
    drag(10, 0);
    EXPECT_EQ(parray[0][0].time, 0.0f);
    parray[0][0].freq = std::nextafter(22050.0f, 0.0f);
    drag(10, 0);
    EXPECT_GT(parray[0][0].time, 0.0f);
}

TEST_F(DragPartials, LogPositionsGoByTheRangeBeforeTheEvent) {
    set_flags({"000", "11", "00"});
    const float unmoved = parray[0][1].logfreq;
    drag(0, 40);
    EXPECT_EQ(parray[1][0].logfreq, place(parray[1][0].freq));
    EXPECT_GT(parray[1][0].logfreq, 1.0f); // beyond the range as it was
    EXPECT_EQ(parray[0][1].logfreq, unmoved);
    EXPECT_GT(maxfreq, 1000.0f);
}

TEST_F(DragPartials, ATimeBelowZeroShiftsTheWholeSound) {
    set_flags({"000", "11", "00"});
    X = 1;
    Y = 0;
    drag(-200, 0);
    const float back = 0.75f - dt();
    ASSERT_LT(back, 0.0f);
    EXPECT_EQ(parray[1][0].time, 0.0f);
    EXPECT_EQ(parray[0][0].time, 0.5f - back);
    EXPECT_EQ(sndstart, 0.0f);
    EXPECT_EQ(sndlen, 2.5f - back);
    EXPECT_EQ(peval[0].start, 0.5f - back); // averages come last
    EXPECT_EQ(peval[1].start, 0.0f);
    EXPECT_EQ(peval[1].dur, parray[1][1].time);
}

TEST_F(DragPartials, PhasesAreDerivedBeforeTheSoundIsShifted) {
    set_flags({"000", "10", "00"});
    X = 1;
    Y = 0;
    parray[1][0].phase = 1.0f;
    drag(-200, 0);
    const float interval = 1.75f - (0.75f - dt());
    EXPECT_EQ(parray[1][1].phase, advance_phase(1.0f, interval * 1000.0f));
}

TEST_F(DragPartials, OnlyPartialsWithASelectedPointGetNewPhases) {
    set_flags({"010", "00", "00"});
    parray[0][2].phase = parray[1][1].phase = 9.0f;
    drag(0, 10);
    EXPECT_LT(parray[0][2].phase, 6.3f);
    EXPECT_EQ(parray[1][1].phase, 9.0f);
}

TEST_F(DragPartials, WithNothingSelectedTheClosingStepsStillRun) {
    maxfreq = 5000.0f;
    parray[1][0].time = 0.25f;
    drag(10, 10);
    EXPECT_EQ(maxfreq, 1000.0f);
    EXPECT_EQ(sndstart, 0.25f);
    EXPECT_EQ(peval[1].start, 0.25f);
    EXPECT_EQ(square[2], 215);
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
}

TEST_F(DragPartials, StepsAreRelativeToTheLastEvent) {
    set_flags({"111", "00", "00"});
    drag(0, 20);
    drag(0, -20);
    EXPECT_NEAR(parray[0][1].freq, 300.0f, 1e-3);
    const uint32_t before = input_events;
    drag(0, 20);
    EXPECT_EQ(input_events, before + 1);
}

// --- the logarithmic view ----------------------------------------------------------------------

TEST_F(DragPartials, InTheLogViewMovesThePlaceAndSaysTheStep) {
    log_view();
    set_flags({"011", "00", "00"});
    const float was = parray[0][1].logfreq;
    const std::string text = drag(0, 40);
    const float d = -df() / old_max;
    char expected[64];
    std::snprintf(expected, sizeof expected, "df = %f\n", d);
    EXPECT_EQ(text, expected);
    EXPECT_GT(d, 0.05f);
    EXPECT_LT(d, 0.2f); // after the division
    const double range = old_max / old_min;
    const double freq = std::exp(std::log2(range) * (was + d) * 0.69314718) * old_min;
    EXPECT_EQ(parray[0][1].freq, static_cast<float>(freq));
    EXPECT_EQ(parray[0][0].freq, 200.0f);
    EXPECT_EQ(parray[0][1].logfreq, place(parray[0][1].freq));
}

TEST_F(DragPartials, InTheLogViewTheStepIsSaidOnEveryEvent) {
    log_view();
    EXPECT_EQ(drag(5, 0), "df = -0.000000\n");
    set_flags({"111", "00", "00"});
    X = 1;
    Y = 0;
    EXPECT_EQ(drag(5, 0), "df = -0.000000\n");
    EXPECT_EQ(parray[0][0].time, 0.5f - dt());
}

TEST_F(DragPartials, InTheLogViewTheRangeIsWidenedFirstAndNotDerivedAnew) {
    log_view();
    set_flags({"000", "11", "00"});
    drag(0, 40);
    EXPECT_GT(parray[1][0].freq, 1100.0f);
    EXPECT_EQ(maxfreq, 1000.0f);
    const float span = logmaxfreq;
    const float beyond = parray[1][0].freq;
    const float was = parray[1][0].logfreq; // by the narrower range
    drag(0, -20);
    EXPECT_EQ(maxfreq, beyond);
    EXPECT_EQ(logmaxfreq, span);
    const double range = beyond / 100.0f;
    const float now = was + -df() / beyond;
    EXPECT_EQ(parray[1][0].freq,
              static_cast<float>(std::exp(std::log2(range) * now * 0.69314718) * 100.0f));
}

TEST_F(DragPartials, InTheLogViewTheStepIsDividedByTheWidenedRange) {
    log_view();
    set_flags({"000", "10", "00"});
    parray[0][1].freq = 4000.0f;
    parray[1][0].logfreq = 0.5f;
    char expected[64];
    const std::string text = drag(0, 40);
    std::snprintf(expected, sizeof expected, "df = %f\n", -df() / 4000.0f);
    EXPECT_EQ(text, expected);
    const float place = 0.5f + -df() / 4000.0f;
    const double freq = std::exp(std::log2(40.0) * place * 0.69314718) * 100.0f;
    EXPECT_EQ(parray[1][0].freq, static_cast<float>(freq));
}

TEST_F(DragPartials, InTheLogViewNothingBoundsTheFrequency) {
    log_view();
    set_flags({"000", "11", "00"});
    for (int i = 0; i < 3; ++i) {
        drag(0, 400);
    }
    EXPECT_GT(parray[1][0].freq, 22050.0f);
    EXPECT_GT(maxfreq, 22050.0f);
    fill_store({{{0.0f, 10.0f, 0.0f}, {1.0f, 20.0f, 0.0f}}});
    frame();
    set_flags({"10"});
    for (int i = 0; i < 2; ++i) {
        drag(0, -400);
    }
    EXPECT_LT(parray[0][0].freq, 1.0f);
    EXPECT_GT(parray[0][0].freq, 0.0f);
}

TEST_F(DragPartials, InTheLogViewTimesAreDerivedAnew) {
    log_view();
    set_flags({"000", "11", "00"});
    X = 1;
    drag(-200, 0);
    EXPECT_EQ(parray[1][0].time, 0.0f);
    EXPECT_EQ(sndstart, 0.0f);
    EXPECT_EQ(peval[1].start, 0.0f);
    EXPECT_EQ(peval[0].start, parray[0][0].time);
}

TEST_F(DragPartials, InTheLogViewAveragesFollow) {
    log_view();
    set_flags({"000", "11", "00"});
    drag(0, 30);
    EXPECT_EQ(peval[1].avgfreq, (parray[1][0].freq + parray[1][1].freq) / 2.0f);
}

TEST_F(DragPartials, InTheLogViewAFlagOfTwoIsLeftAlone) {
    log_view();
    parray[0][1].selected = 2;
    drag(0, 30);
    EXPECT_EQ(parray[0][1].freq, 300.0f);
}

// --- harmless outcomes -------------------------------------------------------------------------

TEST_F(DragPartials, StandsEmptyAndSmallStores) {
    for (const auto &content : {std::vector<Partial>{},
                                {{{0.0f, 100.0f, 0.0f}}},
                                {{{0.0f, 0.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}},
                                {{{1.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}}}}) {
        for (const int view : {0, 1}) {
            fill_store(content);
            logpos = view;
            X = 1;
            frame();
            for (int32_t i = 0; i < partials; ++i) {
                parray[i][0].selected = 1;
            }
            drag(10, 10);
            drag(-10, 300);
            drag(10, -10);
            frame();
        }
    }
}

TEST_F(DragPartials, StandsFrequenciesWithoutEnd) {
    log_view();
    set_flags({"000", "10", "00"});
    for (int i = 0; i < 12; ++i) {
        drag(0, 400);
    }
    EXPECT_TRUE(std::isinf(parray[1][0].freq) || std::isnan(parray[1][0].freq));
}
