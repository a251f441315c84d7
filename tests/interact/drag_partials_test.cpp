// Dragging everything selected: how far, where it stops, and what is derived anew in which view.
#include "interact/drags.h"

#include "display/view.h"
#include "interact/selection.h"
#include "store/phase.h"
#include "tests/interact/drag_support.h"
#include "tests/interact/log_places.h"

#include <cmath>
#include <cstdio>

namespace {

class DragPartials : public DragTest {
  protected:
    DragPartials() : DragTest(partialsTranslate) {}

    /// By the range as it stood before the event.
    float place(float freq) const {
        return place_between(old_min, old_max, freq);
    }

    /// Partials of many points, every third point of them unselected.
    void fill_with_long_partials() {
        std::vector<Partial> content(5);
        for (size_t i = 0; i < content.size(); ++i) {
            for (size_t j = 0; j < 700; ++j) {
                const float step = static_cast<float>(j);
                const float freq = 200.0f + 900.0f * static_cast<float>((i * 271 + j * 83) % 17);
                content[i].push_back({0.5f + 0.01f * step, freq, -20.0f});
            }
        }
        fill_store(content);
        open_edit_view();
        set_flags(std::vector<std::string>(5, long_flags()));
    }

    static std::string long_flags() {
        std::string text;
        for (int j = 0; j < 700; ++j) {
            text += j % 3 == 1 ? '0' : '1';
        }
        return text;
    }

    /// The points of the store, one partial after the other.
    static std::vector<Breakpoint> all_points() {
        std::vector<Breakpoint> points;
        for (int32_t i = 0; i < partials; ++i) {
            points.insert(points.end(), parray[i], parray[i] + npoints[i]);
        }
        return points;
    }

    static void expect_points(const std::vector<Breakpoint> &expected) {
        const std::vector<Breakpoint> points = all_points();
        ASSERT_EQ(points.size(), expected.size());
        for (size_t k = 0; k < points.size(); ++k) {
            ASSERT_EQ(points[k].freq, expected[k].freq) << k;
            ASSERT_EQ(points[k].time, expected[k].time) << k;
            ASSERT_EQ(points[k].logfreq, expected[k].logfreq) << k;
        }
    }
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
    EXPECT_EQ(parray[0][1].freq, static_cast<float>(freq_between(old_min, old_max, was + d)));
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
    const float now = was + -df() / beyond;
    EXPECT_EQ(parray[1][0].freq, static_cast<float>(freq_between(100.0f, beyond, now)));
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
    EXPECT_EQ(parray[1][0].freq, static_cast<float>(freq_between(100.0f, 4000.0f, place)));
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

TEST_F(DragPartials, EveryPointOfLongPartialsFollows) {
    fill_with_long_partials();
    X = 1;
    std::vector<Breakpoint> expected = all_points();
    drag(10, 20);
    for (Breakpoint &point : expected) {
        if (point.selected == 1) {
            point.freq -= df();
            point.time -= dt();
            point.logfreq = place(point.freq);
        }
    }
    expect_points(expected);
}

TEST_F(DragPartials, AStopLateInALongPartialKeepsWhatCameBefore) {
    fill_with_long_partials();
    parray[2][603].freq = 22040.0f;
    std::vector<Breakpoint> expected = all_points();
    drag(0, 20);
    for (size_t k = 0; k < 2 * 700 + 603; ++k) {
        if (expected[k].selected == 1) {
            expected[k].freq -= df();
            expected[k].logfreq = place(expected[k].freq);
        }
    }
    expect_points(expected);
}

TEST_F(DragPartials, InTheLogViewEveryPointOfLongPartialsFollows) {
    fill_with_long_partials();
    log_view();
    X = 1;
    std::vector<Breakpoint> expected = all_points();
    drag(10, 20);
    for (Breakpoint &point : expected) {
        if (point.selected == 1) {
            point.logfreq += -df() / old_max;
            point.time -= dt();
            point.freq = static_cast<float>(freq_between(old_min, old_max, point.logfreq));
        }
        point.logfreq = place(point.freq);
    }
    expect_points(expected);
}
