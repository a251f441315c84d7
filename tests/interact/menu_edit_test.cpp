// The entries of "Edit" that change the structure of the store: what they refuse, with or
// without a word, which operation they run on which points, and the refresh behind it.
#include "interact/menu.h"

#include "display/view.h"
#include "edit/extend.h"
#include "edit/join.h"
#include "edit/merge.h"
#include "edit/remove.h"
#include "edit/split.h"
#include "tests/interact/menu_support.h"
#include "tests/support/console.h"

namespace {

using structure::same_points;
using structure::Snapshot;
using structure::snapshot;

constexpr const char *all_ranges = "amp times pitch logfreq averages redisplay";
constexpr const char *all_ranges_and_phases = "amp times pitch phase logfreq averages redisplay";

class MenuEdit : public MenuTest {
  protected:
    void SetUp() override {
        MenuTest::SetUp();
        bps = 1;
    }

    /// Expects the command to print `text`, to leave the store and the selection alone and to
    /// post no redisplay.
    void expect_refused(int value, const std::string &replies, const std::string &text) {
        const Snapshot before = snapshot();
        const uint16_t was_selected = selected;
        gl_double::recorder().redisplays = 0;
        EXPECT_EQ(command(value, replies), text);
        EXPECT_TRUE(same_points(before, snapshot()));
        EXPECT_EQ(selected, was_selected);
        EXPECT_EQ(gl_double::recorder().redisplays, 0);
    }
};

/// A fresh store in which partial 0, which no test moves, is flagged without a group selection.
void fresh() {
    fill_store(small_content());
    reset_selection();
    parray[0][1].selected = parray[0][2].selected = 1;
}

void found_pair() {
    fresh();
    find_points(1, 2, 1, 1);
}

TEST_F(MenuEdit, SplitCutsBetweenTheFoundPoints) {
    const Snapshot want = left_by(found_pair, [] {
        split3d(foundSubscriptions);
        structure::refresh();
    });
    found_pair();
    EXPECT_EQ(command(11, "reply\n"), "Edit:  Split\t Split\n");
    EXPECT_EQ(partials, 5);
    EXPECT_TRUE(same_points(want, snapshot()));
    EXPECT_EQ(unread(), "reply\n");
}

TEST_F(MenuEdit, SplitRefreshesEverything) {
    found_pair();
    spoil_derived();
    command(11);
    EXPECT_EQ(refreshed(), all_ranges_and_phases);
    EXPECT_EQ(foundSubscriptions.count, 2) << "outside the flat view a selection survives";
}

TEST_F(MenuEdit, FlatViewLosesItsSelectionAndSoThePhasesStay) {
    flat = 1;
    found_pair();
    spoil_derived();
    command(11);
    EXPECT_EQ(refreshed(), all_ranges);
    EXPECT_TRUE(selection_cleared());
}

TEST_F(MenuEdit, SplitRefusals) {
    const std::string refusal = "Edit:  Split\t Unacceptable Selection for: Split\n";
    fresh();
    expect_refused(11, "", refusal);
    found_pair();
    found = 0;
    expect_refused(11, "", refusal);
    found_pair();
    numfound = 1;
    expect_refused(11, "", refusal);
    find_points(0, 0, 0, 2);
    expect_refused(11, "", refusal);
    find_points(0, 1, 1, 2);
    expect_refused(11, "", refusal);
    find_points(0, 1, 0, 1);
    expect_refused(11, "", refusal);
    find_points(0, 1, 0, 2);
    foundSubscriptions.count = 1;
    expect_refused(11, "", refusal);
}

TEST_F(MenuEdit, SplitOfStalePointsDoesNothingButRefresh) {
    fresh();
    const Snapshot before = snapshot();
    for (const auto &[part, point] : {std::pair(9, 1),
                                      {4, 0},
                                      {2, 1},
                                      {1, 5},
                                      {-7, 3},
                                      {0, -1},
                                      {INT32_MAX, 0},
                                      {INT32_MIN, 0}}) {
        find_points(part, point, part, point + 1);
        EXPECT_EQ(command(11), "Edit:  Split\t Split\n");
        EXPECT_EQ(snapshot().size(), before.size());
    }
}

void joinable() {
    fresh();
    find_points(2, 0, 1, 2);
}

TEST_F(MenuEdit, JoinLinksTheFoundEnds) {
    std::string text;
    const Snapshot want = left_by(joinable, [&text] {
        text = printed([] { join3d(2, 1); });
        structure::refresh();
    });
    joinable();
    spoil_derived();
    EXPECT_EQ(command(12), "Edit:  Join\t \t Joining partials 2 and 1\n");
    EXPECT_EQ(text, "Joining partials 2 and 1\n");
    EXPECT_EQ(refreshed(), all_ranges_and_phases);
    EXPECT_EQ(partials, 3);
    EXPECT_EQ(want.size(), 3u);
    EXPECT_EQ(want.back().size(), 5u);
    joinable();
    command(12);
    EXPECT_TRUE(same_points(want, snapshot()));
}

TEST_F(MenuEdit, JoinReturnsSilentlyWithoutTwoFoundPoints) {
    fresh();
    expect_refused(12, "", "Edit:  Join\t \t ");
    find_points(1, 2);
    expect_refused(12, "", "Edit:  Join\t \t ");
    joinable();
    found = 0;
    expect_refused(12, "", "Edit:  Join\t \t ");
}

TEST_F(MenuEdit, JoinRefusesWhatIsNoEndAndStart) {
    const std::string refusal = "Edit:  Join\t \t INVALID SELECTION\n";
    fresh();
    find_points(0, 0, 1, 0);
    expect_refused(12, "", refusal);
    find_points(2, 1, 1, 2); // both are ends
    expect_refused(12, "", refusal);
    find_points(0, 3, 1, 0); // the start comes before the end
    expect_refused(12, "", refusal);
    for (const int32_t stale : {4, 77, -3, INT32_MAX}) {
        find_points(2, 0, stale, 2);
        foundSubscriptions.count = 2;
        expect_refused(12, "", refusal);
    }
}

TEST_F(MenuEdit, JoinOfEqualTimesIsRefused) {
    fill_store({{{0.0f, 100, -10}, {0.5f, 100, -10}}, {{0.5f, 200, -10}, {1.0f, 200, -10}}});
    find_points(0, 1, 1, 0);
    expect_refused(12, "", "Edit:  Join\t \t INVALID SELECTION\n");
}

void found_point() {
    fresh();
    find_points(1, 1);
}

TEST_F(MenuEdit, RemoveTakesTheFoundPoint) {
    const Snapshot want = left_by(found_point, [] {
        remove3d(1, 1, 0);
        structure::refresh();
    });
    found_point();
    EXPECT_EQ(command(13), "Edit:  Remove\t ");
    EXPECT_EQ(npoints[1], 2);
    EXPECT_TRUE(same_points(want, snapshot()));
    found_point();
    spoil_derived();
    command(13);
    EXPECT_EQ(refreshed(), all_ranges_and_phases);
}

TEST_F(MenuEdit, RemoveTakesThePartialsOfAGroupBeforeFoundPoints) {
    fresh();
    find_points(1, 1, 0, 0);
    select_group({"0000", "010", "01", "0"});
    EXPECT_EQ(command(13), "Edit:  Remove\t Removing multiple selections: \n"
                           "number of selections = 2\n");
    EXPECT_EQ(partials, 2);
    EXPECT_EQ(npoints[0], 4);
    EXPECT_EQ(npoints[1], 1);
}

TEST_F(MenuEdit, RemoveFromTheSecondSlotTakesThePointOfThePartialsNumber) {
    fresh();
    find_points(-1, -1, 1, 0);
    numfound = 1;
    EXPECT_EQ(command(13), "Edit:  Remove\t ");
    ASSERT_EQ(npoints[1], 2);
    EXPECT_EQ(parray[1][0].freq, 400.0f) << "point 1 went, not point 0";
    EXPECT_EQ(parray[1][1].freq, 440.0f);
}

TEST_F(MenuEdit, RemoveRefusals) {
    const std::string refusal = "Edit:  Remove\t Unacceptable Selection for: Remove\n";
    fresh();
    expect_refused(13, "", refusal);
    find_points(1, 1, 0, 2); // numfound is 2
    expect_refused(13, "", refusal);
    found_point();
    numfound = 0;
    expect_refused(13, "", refusal);
    found_point();
    foundSubscriptions = {-1, -1, -1, -1, 0};
    expect_refused(13, "", refusal);
}

TEST_F(MenuEdit, RemoveWithNothingFoundNeedsTheGroupFlagAlone) {
    fresh();
    set_flags({"0000", "000", "00", "0"});
    selected = 1;
    EXPECT_EQ(command(13), "Edit:  Remove\t Removing multiple selections: \n"
                           "number of selections = 0\n");
    EXPECT_EQ(partials, 4);
}

TEST_F(MenuEdit, RemoveOfStalePointsTakesNothingAway) {
    for (const auto &[part, point] : {std::pair(4, 0), {1, 3}, {1, -5}, {-2, 0}, {INT32_MAX, 0}}) {
        fresh();
        find_points(part, point);
        numfound = 1;
        EXPECT_EQ(command(13), "Edit:  Remove\t ");
        EXPECT_EQ(snapshot().size(), 4u);
        EXPECT_EQ(npoints[1], 3);
    }
}

TEST_F(MenuEdit, RemoveNeverTakesTheLastPartial) {
    fill_store({{{0.0f, 100, -10}, {0.5f, 100, -10}}});
    select_group({"11"});
    command(13);
    EXPECT_EQ(partials, 1);
    reset_selection();
    find_points(0, 1);
    command(13);
    EXPECT_EQ(partials, 1);
}

const std::string extend_ask = "Edit:  Extend...\t numfound = 1\n"
                               "QuillGrove > Enter additionl points:\n             ";

TEST_F(MenuEdit, ExtendAppendsPoints) {
    std::string text;
    const Snapshot want = left_by(found_point, [&text] {
        text = printed([] { extend3d(1, 3); });
        structure::refresh();
    });
    found_point();
    EXPECT_EQ(command(14, "\n3 4\n"), prompt + extend_ask + text);
    EXPECT_EQ(unread(), " 4\n");
    EXPECT_EQ(npoints[3], 6) << "the longer partial went to the end";
    EXPECT_TRUE(same_points(want, snapshot()));
    found_point();
    spoil_derived();
    command(14, "\n3\n");
    EXPECT_EQ(refreshed(), all_ranges_and_phases);
}

TEST_F(MenuEdit, ExtendTakesTextForNothing) {
    for (const std::string &reply : {std::string("abc"), std::string(10000, 'x'),
                                     std::string("\x01\xfe\x80"), std::string("0")}) {
        found_point();
        const std::string text = command(14, "\n" + reply + "\n");
        EXPECT_NE(text.find("Appending 0 new points to partial #1\n"), std::string::npos);
        EXPECT_EQ(npoints[3], 3);
        EXPECT_EQ(parray[3][2].amp, -120.0f);
        EXPECT_EQ(unread(), "\n");
    }
}

TEST_F(MenuEdit, ExtendByImpossibleCounts) {
    for (const char *reply : {"-5", "1000001", "99999999999999999999", "-99999999999999999999"}) {
        found_point();
        command(14, "\n" + std::string(reply) + "\n");
        EXPECT_EQ(partials, 4);
        int32_t points = 0;
        for (int32_t i = 0; i < partials; ++i) {
            points += npoints[i];
        }
        EXPECT_EQ(points, 10) << reply;
    }
}

TEST_F(MenuEdit, ExtendCancelledOrAtTheEndOfTheInput) {
    found_point();
    expect_refused(14, "\n-c\n", prompt + extend_ask + "Command cancelled\n");
    expect_refused(14, "\n", prompt + extend_ask);
    expect_refused(14, "", prompt + extend_ask);
}

TEST_F(MenuEdit, ExtendWithoutAFoundPointReturnsSilently) {
    fresh();
    expect_refused(14, "\n3\n", prompt + std::string("Edit:  Extend...\t "));
    EXPECT_EQ(unread(), "3\n");
}

TEST_F(MenuEdit, ExtendOfTwoFoundPointsIsRefusedAndClearsTheFlatView) {
    const std::string refusal =
        prompt + std::string("Edit:  Extend...\t numfound = 2\nInvalid selection\n");
    found_pair();
    expect_refused(14, "\n3\n", refusal);
    EXPECT_EQ(foundSubscriptions.count, 2);
    flat = 1;
    spoil_derived();
    EXPECT_EQ(command(14, "\n3\n"), refusal);
    EXPECT_TRUE(selection_cleared());
    EXPECT_EQ(refreshed(), "");
}

TEST_F(MenuEdit, ExtendOfAGroupAloneFindsNoPartial) {
    fresh();
    select_group({"1111", "000", "00", "0"});
    found = 1; // as selecting to the left leaves it
    const Snapshot before = snapshot();
    const std::string text = command(14, "\n3\n");
    EXPECT_NE(text.find("numfound = 0\n"), std::string::npos);
    EXPECT_NE(text.find("Critical Error: save your work,\nquit and relaunch the program\n"),
              std::string::npos);
    EXPECT_EQ(snapshot().size(), before.size());
}

TEST_F(MenuEdit, ExtendOfAStalePartialDoesNothing) {
    for (const int32_t part : {4, 5, 100, -2, INT32_MAX}) {
        fresh();
        find_points(part, 0);
        numfound = 1;
        command(14, "\n3\n");
        EXPECT_EQ(snapshot().size(), 4u);
        EXPECT_EQ(npoints[3], 1);
    }
}

void overlapping() {
    fill_store({{{0.0f, 100, -20}, {0.1f, 100, -20}, {0.2f, 100, -20}, {0.3f, 100, -20}},
                {{0.2f, 200, -20}, {0.3f, 200, -20}, {0.4f, 200, -20}}});
    reset_selection();
    select_group({"1000", "010"});
}

TEST_F(MenuEdit, MergeFusesTwoPartials) {
    std::string text;
    const Snapshot want = left_by(overlapping, [&text] {
        text = printed(merge3d);
        structure::refresh(false);
    });
    overlapping();
    EXPECT_EQ(command(15), std::string("Edit:  Merge\t ").append(text));
    EXPECT_EQ(partials, 1);
    EXPECT_TRUE(same_points(want, snapshot()));
}

TEST_F(MenuEdit, MergeRefreshesAllButPhases) {
    fresh();
    select_group({"0110", "000", "00", "0"});
    spoil_derived();
    EXPECT_EQ(command(15), "Edit:  Merge\t MERGE\nInsufficient selection\n");
    EXPECT_EQ(refreshed(), all_ranges);
    EXPECT_EQ(selected, 1);
    flat = 1;
    command(15);
    EXPECT_TRUE(selection_cleared()) << "refused merges lose the selection as well";
}

TEST_F(MenuEdit, MergeWithNothingSelectedReturnsWithoutARedisplay) {
    fresh();
    selected = 0;
    expect_refused(15, "", "Edit:  Merge\t Quillgrove> nothing selected\n");
}

} // namespace
