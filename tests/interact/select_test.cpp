// The selection commands one by one: guards, effect, and which summary flags they touch. Stores
// are drawn as text, a row a partial, "x" a selected point.

#include "interact/select.h"

#include "display/view.h"
#include "interact/selection.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Rows = std::vector<std::string>;

class Select : public StoreTest {
  protected:
    /// A store with these flags in the flat view. Point j of every partial is at j tenths.
    void draw(const Rows &rows) {
        std::vector<Partial> content;
        for (const std::string &row : rows) {
            Partial partial;
            for (size_t j = 0; j < row.size(); ++j) {
                partial.push_back({0.1f * static_cast<float>(j), 100.0f, -20.0f});
            }
            content.push_back(partial);
        }
        fill_store(content);
        for (size_t i = 0; i < rows.size(); ++i) {
            for (size_t j = 0; j < rows[i].size(); ++j) {
                parray[i][j].selected = rows[i][j] == 'x' ? 1 : 0;
            }
        }
        flat = 1;
    }

    Rows drawn() {
        Rows rows;
        for (int32_t i = 0; i < partials; ++i) {
            std::string row;
            for (int32_t j = 0; j < npoints[i]; ++j) {
                row += parray[i][j].selected == 1 ? 'x' : '.';
            }
            rows.push_back(row);
        }
        return rows;
    }

    Rows after(const Rows &rows, void (*command)()) {
        draw(rows);
        EXPECT_EQ(printed(command), "");
        return drawn();
    }

    /// The command in each of the four views, from the same store.
    void expect_guard(void (*command)(), bool in_flat, bool in_bps, bool in_both, bool in_neither,
                      const Rows &before) {
        const bool acts[2][2] = {{in_neither, in_bps}, {in_flat, in_both}};
        for (int with_flat : {0, 1}) {
            for (int with_bps : {0, 1}) {
                reset_selection();
                draw(before);
                flat = with_flat;
                bps = with_bps;
                command();
                EXPECT_EQ(drawn() != before, acts[with_flat][with_bps])
                    << "flat " << with_flat << ", bps " << with_bps;
                if (!acts[with_flat][with_bps]) {
                    expect_flags("");
                }
            }
        }
    }

    void expect_soft_mode(void (*command)(), const Rows &before) {
        expect_guard(command, true, true, true, false, before);
    }

    /// Which of the summary flags are not at their start value.
    static std::string flags() {
        std::string text;
        text += selected != 0 ? "selected " : "";
        text += found != 0 ? "found " : "";
        text += sweepSelect != 0 ? "sweepSelect " : "";
        text += directSelect != 0 ? "directSelect " : "";
        text += numfound != 0 ? "numfound " : "";
        text += selecting != 0 ? "selecting " : "";
        text += foundSubscriptions.count != 0 || foundSubscriptions.part0 != -1 ||
                        foundSubscriptions.point0 != -1 || foundSubscriptions.part1 != -1 ||
                        foundSubscriptions.point1 != -1
                    ? "points "
                    : "";
        return text;
    }

    static void expect_flags(const std::string &expected) {
        EXPECT_EQ(flags(), expected);
    }

    static void set_all_flags() {
        selected = 1;
        found = 1;
        sweepSelect = 1;
        directSelect = 1;
        numfound = 2;
        selecting = 1;
        foundSubscriptions = {1, 2, 0, 1, 2};
    }
};

TEST_F(Select, SoftModeIsFlatOrBreakpoints) {
    EXPECT_FALSE(soft_mode());
    flat = 1;
    EXPECT_TRUE(soft_mode());
    flat = 0;
    bps = 2;
    EXPECT_TRUE(soft_mode());
}

// select_left

TEST_F(Select, LeftTakesEverythingBeforeTheFirst) {
    EXPECT_EQ(after({"...x.x.", ".x", ".....", "x..", "", "."}, select_left),
              (Rows{"xxxx.x.", "xx", ".....", "x..", "", "."}));
    expect_flags("selected found ");
}

TEST_F(Select, LeftWithNothingSelectedChangesNothing) {
    const Rows rows = {"....", "...", "", "."};
    EXPECT_EQ(after(rows, select_left), rows);
    expect_flags("");
}

TEST_F(Select, LeftSetsTheFlagsThoughNothingIsLeftOfPointZero) {
    EXPECT_EQ(after({"x..."}, select_left), (Rows{"x..."}));
    expect_flags("selected found ");
}

TEST_F(Select, LeftNeedsSoftMode) {
    expect_soft_mode(select_left, {"..x."});
}

// select_right

TEST_F(Select, RightTakesEverythingAfterTheLast) {
    EXPECT_EQ(after({".x.x...", ".x", ".....", "x.x..", "", "x"}, select_right),
              (Rows{".x.xxxx", ".x", ".....", "x.xxx", "", "x"}));
    expect_flags("");
}

TEST_F(Select, RightDoesNotCountPointZeroAlone) {
    const Rows rows = {"x....", "x.", "x"};
    EXPECT_EQ(after(rows, select_right), rows);
}

TEST_F(Select, RightNeedsSoftMode) {
    expect_soft_mode(select_right, {".x.."});
}

// select_vertical

TEST_F(Select, VerticalTakesTheBandOfTimeAcrossAllPartials) {
    EXPECT_EQ(after({"..x.....", "........", "....x...", "...", "", "."}, select_vertical),
              (Rows{"..xxx...", "..xxx...", "..xxx...", "..x", "", "."}));
    expect_flags("selected found ");
}

TEST_F(Select, VerticalWithOnePointTakesItsMoment) {
    EXPECT_EQ(after({"....", ".x..", "...."}, select_vertical), (Rows{".x..", ".x..", ".x.."}));
}

TEST_F(Select, VerticalFromPointZeroAlone) {
    EXPECT_EQ(after({"x...", "....", "."}, select_vertical), (Rows{"x...", "x...", "x"}));
}

TEST_F(Select, VerticalWithNothingSelectedChangesNothing) {
    const Rows rows = {"....", "...."};
    EXPECT_EQ(after(rows, select_vertical), rows);
    expect_flags("");
}

TEST_F(Select, VerticalStartsFromTheEndOfTheSoundAndFromZero) {
    draw({"....", "...."});
    sndlen = 0.0f; // single-point partials alone leave it there
    select_vertical();
    EXPECT_EQ(drawn(), (Rows{"x...", "x..."}));
    expect_flags("selected found ");
}

TEST_F(Select, VerticalDoesNotReachBehindTheEndOfTheSound) {
    draw({"...x", "...."});
    sndlen = 0.15f; // lower than the selected time, so the band begins here
    select_vertical();
    EXPECT_EQ(drawn(), (Rows{"..xx", "..xx"}));
}

TEST_F(Select, VerticalClearsStaleFlagValues) {
    draw({".x..", "...."});
    parray[1][0].selected = 7;
    select_vertical();
    EXPECT_EQ(parray[1][0].selected, 0);
    EXPECT_EQ(parray[1][1].selected, 1);
}

TEST_F(Select, VerticalNeedsSoftMode) {
    expect_soft_mode(select_vertical, {".x..", "...."});
}

// select_partials

TEST_F(Select, PartialsWithASelectedPointAreTakenWhole) {
    EXPECT_EQ(after({"..x..", ".....", "x", ".", "", "...x"}, select_partials),
              (Rows{"xxxxx", ".....", "x", ".", "", "xxxx"}));
    expect_flags("selected ");
}

TEST_F(Select, PartialsWithNothingSelected) {
    const Rows rows = {"....", "."};
    EXPECT_EQ(after(rows, select_partials), rows);
    expect_flags("");
}

TEST_F(Select, PartialsNeedSoftMode) {
    expect_soft_mode(select_partials, {".x.."});
}

// select_all

TEST_F(Select, AllTakesAll) {
    draw({"..x", ".", ""});
    bps = 1;
    select_all();
    EXPECT_EQ(drawn(), (Rows{"xxx", "x", ""}));
    expect_flags("selected ");
}

TEST_F(Select, AllNeedsTheFlatViewAndBreakpoints) {
    expect_guard(select_all, false, false, true, false, {".x.", "..."});
}

// select_inverted

TEST_F(Select, InvertedFlipsEveryPoint) {
    EXPECT_EQ(after({"x.x", "...", "xxx", "", "."}, select_inverted),
              (Rows{".x.", "xxx", "...", "", "x"}));
    expect_flags("selected ");
}

TEST_F(Select, InvertedWithNothingSelectedTakesAll) {
    EXPECT_EQ(after({"...", "."}, select_inverted), (Rows{"xxx", "x"}));
    expect_flags("selected ");
}

TEST_F(Select, InvertedSetsItsFlagEvenWhenNothingRemains) {
    EXPECT_EQ(after({"xxx"}, select_inverted), (Rows{"..."}));
    expect_flags("selected ");
}

TEST_F(Select, InvertedSelectsExactlyWhereTheFlagWasZero) {
    draw({"..."});
    parray[0][1].selected = 2;
    select_inverted();
    EXPECT_EQ(drawn(), (Rows{"x.x"}));
    EXPECT_EQ(parray[0][1].selected, 0);
}

TEST_F(Select, InvertedNeedsSoftMode) {
    expect_soft_mode(select_inverted, {".x."});
}

// select_p_inverted

TEST_F(Select, PInvertedFlipsWithinTouchedPartials) {
    EXPECT_EQ(after({"x.x", "...", "xxx", "", ".", "x"}, select_p_inverted),
              (Rows{".x.", "...", "...", "", ".", "."}));
    expect_flags("selected ");
}

TEST_F(Select, PInvertedWithNothingSelected) {
    const Rows rows = {"...", "."};
    EXPECT_EQ(after(rows, select_p_inverted), rows);
    expect_flags("");
}

TEST_F(Select, PInvertedNeedsSoftMode) {
    expect_soft_mode(select_p_inverted, {".x."});
}

// deselect_group, select_none

TEST_F(Select, DeselectGroupClearsTheGroupAlone) {
    draw({".xx", "x", "..."});
    peval[0].selected = 1;
    peval[2].selected = 1;
    set_all_flags();
    deselect_group();
    EXPECT_EQ(drawn(), (Rows{"...", ".", "..."}));
    EXPECT_EQ(peval[0].selected + peval[1].selected + peval[2].selected, 0);
    expect_flags("found sweepSelect directSelect numfound points ");
    EXPECT_EQ(foundSubscriptions.point0, 2);
    EXPECT_EQ(numfound, 2);
}

TEST_F(Select, NoneClearsEverything) {
    draw({".xx", "x", "..."});
    peval[0].selected = 1;
    peval[2].selected = 1;
    set_all_flags();
    select_none();
    EXPECT_EQ(drawn(), (Rows{"...", ".", "..."}));
    EXPECT_EQ(peval[0].selected + peval[1].selected + peval[2].selected, 0);
    expect_flags("");
}

TEST_F(Select, InPerspectiveNeitherClearsAnything) {
    for (void (*command)() : {deselect_group, select_none}) {
        draw({".xx", "x"});
        peval[0].selected = 1;
        set_all_flags();
        flat = 0;
        bps = 1;
        command();
        EXPECT_EQ(drawn(), (Rows{".xx", "x"}));
        EXPECT_EQ(peval[0].selected, 1);
        expect_flags("selected found sweepSelect directSelect numfound selecting points ");
    }
}

TEST_F(Select, ClearingNeedsTheFlatViewAlone) {
    expect_guard(deselect_group, true, false, true, false, {".x."});
    expect_guard(select_none, true, false, true, false, {".x."});
}

// One point more, one point less

TEST_F(Select, OneMoreLeft) {
    EXPECT_EQ(after({"..xx.x", "x..x", "x...", ".x", "x", "", "...."}, oneMoreL),
              (Rows{".xxx.x", "x.xx", "x...", "xx", "x", "", "...."}));
    expect_flags("");
}

TEST_F(Select, OneMoreLeftScansFromPointOne) {
    EXPECT_EQ(after({"xx.x"}, oneMoreL), (Rows{"xx.x"}));
}

TEST_F(Select, OneLessLeft) {
    EXPECT_EQ(after({"..xx.x", "x..x", "x...", ".x", "x", "", "...."}, oneLessL),
              (Rows{"...x.x", "...x", "....", "..", "x", "", "...."}));
    expect_flags("");
}

TEST_F(Select, OneMoreRight) {
    EXPECT_EQ(
        after({"..xx.x..", ".x.x", "x...", ".x", "x.", ".x.", "x", "", "....", "...x"}, oneMoreR),
        (Rows{"..xx.xx.", ".xxx", "x...", ".x", "x.", ".xx", "x", "", "....", "...x"}));
    expect_flags("");
}

TEST_F(Select, OneLessRight) {
    EXPECT_EQ(after({"..xx.x..", ".x.x", "x...", ".x", "x", "", "....", "xx"}, oneLessR),
              (Rows{"..xx....", ".x..", "x...", "..", "x", "", "....", "x."}));
    expect_flags("");
}

TEST_F(Select, APartialWithOnlyPointZeroSelected) {
    const Rows rows = {"x....", "x."};
    EXPECT_EQ(after(rows, oneLessR), rows);
    EXPECT_EQ(after(rows, select_right), rows);
    EXPECT_EQ(after(rows, oneLessL), (Rows{".....", ".."}));
}

TEST_F(Select, OneMoreAndOneLessLeftCancelOut) {
    for (const Rows &rows : {Rows{"..xxx.", ".x....", ".....x"}, Rows{".x"}}) {
        draw(rows);
        oneMoreL();
        EXPECT_NE(drawn(), rows);
        oneLessL();
        EXPECT_EQ(drawn(), rows);
    }
}

TEST_F(Select, SteppingNeedsNoMode) {
    expect_guard(oneMoreL, true, true, true, true, {"..x."});
    expect_guard(oneLessL, true, true, true, true, {"..x."});
    expect_guard(oneMoreR, true, true, true, true, {"..x."});
    expect_guard(oneLessR, true, true, true, true, {"..x."});
    expect_guard(select_remainder, true, true, true, true, {"..x."});
    expect_guard(select_trailer, true, true, true, true, {"..x."});
}

// select_remainder

TEST_F(Select, RemainderIsWhatComesAfterTheLast) {
    EXPECT_EQ(after({"..xx..", "x.x...", ".x.x.x.", "....", "", "."}, select_remainder),
              (Rows{"....xx", "...xxx", "......x", "....", "", "."}));
    expect_flags("");
}

TEST_F(Select, RemainderOfARunThatReachesTheEndIsNothing) {
    EXPECT_EQ(after({"..xxx", "xx", "xxx"}, select_remainder), (Rows{".....", "..", "..."}));
}

TEST_F(Select, RemainderDoesNotExaminePointZero) {
    const Rows rows = {"x....", "x.", "x"};
    EXPECT_EQ(after(rows, select_remainder), rows);
}

// select_trailer

TEST_F(Select, TrailerIsWhatComesBeforeTheFirst) {
    EXPECT_EQ(after({"..xx.x.."}, select_trailer), (Rows{"xx......"}));
    expect_flags("");
}

TEST_F(Select, TrailerCountsFromPointOne) {
    EXPECT_EQ(after({"xx..."}, select_trailer), (Rows{"x...."}));
    EXPECT_EQ(after({"x...x."}, select_trailer), (Rows{"xxxx.."}));
}

TEST_F(Select, TrailerDoesNotLookAtPointZeroAlone) {
    const Rows rows = {"x....", "x.", "x", ""};
    EXPECT_EQ(after(rows, select_trailer), rows);
}

TEST_F(Select, TrailerDoesNotSeeEarlierPointsOfTheNextPartial) {
    EXPECT_EQ(after({".....x....", "...x......"}, select_trailer),
              (Rows{"xxxxx.....", "...x......"}));
}

TEST_F(Select, TrailerSeesLaterPointsOfTheNextPartial) {
    EXPECT_EQ(after({".....x....", "...x...x.."}, select_trailer),
              (Rows{"xxxxx.....", "xxxxxxx..."}));
    EXPECT_EQ(after({".....x....", "......x..."}, select_trailer),
              (Rows{"xxxxx.....", "xxxxxx...."}));
    EXPECT_EQ(after({".....x....", ".....x...."}, select_trailer),
              (Rows{"xxxxx.....", ".....x...."}))
        << "the scan goes on at the point behind";
}

TEST_F(Select, TrailerPassesOverAShortNextPartial) {
    EXPECT_EQ(after({".....x....", ".....x", ".x.."}, select_trailer),
              (Rows{"xxxxx.....", ".....x", "x..."}));
    EXPECT_EQ(after({".....x....", "", ".x.."}, select_trailer), (Rows{"xxxxx.....", "", "x..."}));
}

TEST_F(Select, TrailerStartsOverBehindAPartialWithoutAHit) {
    EXPECT_EQ(after({".....x....", "..........", ".x.."}, select_trailer),
              (Rows{"xxxxx.....", "..........", "x..."}));
}

TEST_F(Select, TrailerRunsOnThroughSeveralPartials) {
    EXPECT_EQ(after({".x......", "..x.....", "...x....", ".x......"}, select_trailer),
              (Rows{"x.......", "xx......", "xxx.....", ".x......"}));
}

TEST_F(Select, TrailerEndsWithTheLastPartial) {
    EXPECT_EQ(after({"....", "...x"}, select_trailer), (Rows{"....", "xxx."}));
    EXPECT_EQ(after({".x"}, select_trailer), (Rows{"x."}));
}

// The rest

TEST_F(Select, UpAndDownSayThatTheyAreNotThere) {
    const Rows rows = {".x.", "..."};
    for (void (*command)() : {select_up, select_down}) {
        draw(rows);
        EXPECT_EQ(printed(command), "Not implemented yet...\n");
        flat = 0;
        EXPECT_EQ(printed(command), "Not implemented yet...\n");
        EXPECT_EQ(drawn(), rows);
        expect_flags("");
    }
}

TEST_F(Select, APartialsOwnMarkStaysThroughEverythingButClearing) {
    for (void (*command)() : {select_left, select_right, select_vertical, select_partials,
                              select_all, select_inverted, select_p_inverted, oneMoreL, oneLessL,
                              oneMoreR, oneLessR, select_remainder, select_trailer}) {
        for (int16_t mark : {int16_t{0}, int16_t{1}}) {
            draw({"..x..", "....."});
            bps = 1;
            peval[0].selected = mark;
            peval[1].selected = mark;
            command();
            EXPECT_EQ(peval[0].selected, mark);
            EXPECT_EQ(peval[1].selected, mark);
        }
    }
}

TEST_F(Select, AnEmptyStore) {
    fill_store({});
    flat = 1;
    bps = 1;
    for (void (*command)() : {select_left, select_right, select_vertical, select_partials,
                              select_p_inverted, oneMoreL, oneLessL, oneMoreR, oneLessR,
                              select_remainder, select_trailer, deselect_group, select_none}) {
        command();
        expect_flags("");
    }
    select_all();
    expect_flags("selected ");
    selected = 0;
    select_inverted();
    expect_flags("selected ");
}

} // namespace
