// The passes over a Lisp partials list: counts, short partials, lists that end early.
#include "import/afile.h"

#include "store/slots.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "tests/support/list_reading.h"

namespace {

const char *const corrupt_text = "Error: Analysis file corrupt! Exiting...\n";

/// One list held open, with room for its counts.
class ListPasses : public StoreTest {
  protected:
    void TearDown() override {
        close_tokens(file);
        StoreTest::TearDown();
    }
    void open_text(const std::string &text) {
        open_tokens_from_memory(file, text.data(), text.size());
        printed([&] { EXPECT_EQ(visit_ptfile(file, &partials), 0); });
        declared = partials;
        allocate_counts(ptfile_room(file, partials));
        allocate_index(ptfile_room(file, partials));
    }
    /// Runs the structure pass; what it prints is kept in `output`.
    int32_t revisit() {
        int32_t result = 5;
        output = printed([&] { result = revisit_ptfile(file, &partials, npoints, xarray, &kept); });
        return result;
    }
    TokenFile file;
    int32_t declared = 0;
    int32_t kept = -1;
    std::string output;
};

/// A partial of n points on one line.
std::string partial(int n, const std::string &closing = " )\n") {
    std::string text = "( POINTS " + std::to_string(n);
    for (int j = 0; j < n; ++j) {
        text += " 0." + std::to_string(j) + " 440 -30";
    }
    return text + closing;
}

std::string list(int count, const std::string &partials_text) {
    return "( PARTIALS " + std::to_string(count) + "\n" + partials_text + ")\n";
}

TEST_F(ListPasses, TheVisitStoresTheDeclaredCountAndRewinds) {
    open_text("( PARTIALS 46 ( POINTS");
    EXPECT_EQ(partials, 46);
    EXPECT_EQ(read_token(file), "(");
}

TEST_F(ListPasses, RoomIsNeverMoreThanTheTextCouldHold) {
    open_text("( PARTIALS 2147483647 " + partial(2) + ")");
    EXPECT_LT(ptfile_room(file, 2147483647), 20);
    EXPECT_GE(ptfile_room(file, 2147483647), 1);
    EXPECT_EQ(ptfile_room(file, 3), 3);
    EXPECT_EQ(ptfile_room(file, -1), 0);
}

TEST_F(ListPasses, CountsOfEachPartial) {
    open_text(list(3, partial(3) + partial(2) + partial(5)));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(output, "");
    EXPECT_EQ(partials, 3);
    EXPECT_EQ(kept, 3);
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(npoints[1], 2);
    EXPECT_EQ(npoints[2], 5);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(xarray[i].index, i);
        EXPECT_EQ(xarray[i].second, 0);
    }
    EXPECT_EQ(read_token(file), "(");
}

TEST_F(ListPasses, MorePartialsDeclaredThanHeldEndsTheListEarly) {
    open_text(list(46, partial(3) + partial(2)));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(output, "");
    EXPECT_EQ(partials, 46);
    EXPECT_EQ(kept, 2);
    EXPECT_EQ(read_token(file), "(");
}

TEST_F(ListPasses, FewerPartialsDeclaredThanHeldIsBroken) {
    open_text(list(1, partial(3) + partial(2)));
    EXPECT_EQ(revisit(), -1);
    EXPECT_EQ(output, corrupt_text);
    EXPECT_EQ(file.data, nullptr);
}

TEST_F(ListPasses, ShortPartialsAreDroppedAndLaterOnesMoveUp) {
    open_text(list(5, partial(0) + partial(3) + partial(1) + partial(4) + partial(1)));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(partials, 2);
    EXPECT_EQ(kept, 2);
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(npoints[1], 4);
    EXPECT_EQ(xarray[1].index, 1);
}

TEST_F(ListPasses, ANegativeCountSkipsNoTokensAndIsNotCounted) {
    open_text(list(2, "( POINTS -3 " + partial(2)));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(partials, 1);
    EXPECT_EQ(kept, 1);
    EXPECT_EQ(npoints[0], 2);
}

TEST_F(ListPasses, ANegativeCountWithAClosingParenthesisIsBroken) {
    open_text(list(2, "( POINTS -3 ) " + partial(2)));
    EXPECT_EQ(revisit(), -1);
    EXPECT_EQ(output, corrupt_text);
}

TEST_F(ListPasses, AClosingParenthesisMayBeMissing) {
    open_text(list(3, partial(3, "\n") + partial(2, "\n") + partial(4)));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(partials, 3);
    EXPECT_EQ(kept, 3);
    EXPECT_EQ(npoints[2], 4);
}

TEST_F(ListPasses, AnOpeningGluedToTheKeywordIsStillAnOpening) {
    open_text(list(2, partial(3, " (x POINTS 2 0 440 -30 1 440 -30 )\n")));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(kept, 2);
}

TEST_F(ListPasses, WithoutTheClosingOnesMorePartialsThanDeclaredAreMet) {
    open_text(list(1, partial(3, "\n") + partial(2)));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(partials, 1);
    EXPECT_EQ(kept, 2);
}

TEST_F(ListPasses, ChainsOfPartialsBeyondTheDeclaredCountStayInTheirRoom) {
    std::string chain;
    for (int i = 0; i < 500; ++i) {
        chain += partial(2, "\n");
    }
    open_text(list(1, chain + partial(2)));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(kept, 501);
    EXPECT_EQ(partials, 1);
}

TEST_F(ListPasses, AWordInPlaceOfTheKeywordIsBroken) {
    open_text(list(1, "( POINT 2 0 440 -30 1 440 -30 )"));
    EXPECT_EQ(revisit(), -1);
    EXPECT_EQ(output, corrupt_text);
    EXPECT_EQ(file.data, nullptr);
}

TEST_F(ListPasses, ValuesTooManyAreBroken) {
    open_text(list(1, "( POINTS 2 0 440 -30 1 440 -30 2 440 -30 )"));
    EXPECT_EQ(revisit(), -1);
    EXPECT_EQ(output, corrupt_text);
}

TEST_F(ListPasses, ValuesTooFewAreBroken) {
    open_text(list(1, "( POINTS 3 0 440 -30 1 440 )") + "tail");
    EXPECT_EQ(revisit(), -1);
    EXPECT_EQ(output, corrupt_text);
}

TEST_F(ListPasses, TheListsOwnClosingIsTheLastWordThere) {
    open_text("( PARTIALS 1 " + partial(2) + "x");
    EXPECT_EQ(revisit(), -1);
    EXPECT_EQ(output, corrupt_text);
}

TEST_F(ListPasses, WordsBehindTheListDoNotMatter) {
    open_text(list(1, partial(2)) + "( PARTIALS 1 more");
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(kept, 1);
}

TEST_F(ListPasses, AListWithoutItsLastParenthesisHasTheOneBeforeReadAgain) {
    open_text("( PARTIALS 1 " + partial(2));
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(kept, 1);
}

TEST_F(ListPasses, NoPartialsDeclared) {
    open_text("( PARTIALS 0 )");
    EXPECT_EQ(revisit(), 0);
    EXPECT_EQ(partials, 0);
    EXPECT_EQ(kept, 0);
}

TEST_F(ListPasses, TheRescanStoresCountsAtTheirCompactPlaces) {
    open_text(list(4, partial(0) + partial(3) + partial(1) + partial(4)));
    ASSERT_EQ(revisit(), 0);
    npoints[0] = npoints[1] = 99;
    EXPECT_EQ(printed([&] { rescan_ptfile(file, &partials, npoints); }), "\n");
    EXPECT_EQ(npoints[0], 3);
    EXPECT_EQ(npoints[1], 4);
    EXPECT_EQ(read_token(file), "(");
}

TEST_F(ListPasses, TheImportAnnouncesItsPartials) {
    open_text(list(2, partial(3) + partial(2)));
    ASSERT_EQ(revisit(), 0);
    allocate_points();
    EXPECT_EQ(
        printed([&] { import_ptfile(file, &partials, npoints, &maxamp, &minfreq, &maxfreq); }),
        "Importing 2 partials\n\n");
}

TEST_F(ListPasses, AllPassesTogetherPrintTheirLines) {
    const std::string text = list(2, partial(1) + partial(3));
    EXPECT_EQ(printed([&] { EXPECT_EQ(read_list(text), 0); }), "\nImporting 1 partials\n\n\n");
}

TEST_F(ListPasses, SwappedTimesAreMarkedBehindTheImport) {
    const std::string text = "( PARTIALS 1 ( POINTS 3 0.2 440 -30 0.1 441 -31 0.3 442 -32 ) )";
    EXPECT_EQ(printed([&] { EXPECT_EQ(read_list(text), 0); }), "\nImporting 1 partials\n\n*\n");
    EXPECT_EQ(parray[0][0].time, 0.1f);
    EXPECT_EQ(parray[0][1].time, 0.2f);
    EXPECT_EQ(parray[0][0].freq, 440.0f);
}

TEST_F(ListPasses, CarriageReturnsAreWhiteSpace) {
    std::string text = list(1, "( POINTS 3\n0.0 440 -30\n0.1 441 -28\n0.2 442 -60\n)\n");
    std::string crlf;
    std::string cr;
    for (char c : text) {
        crlf += c == '\n' ? "\r\n" : std::string(1, c);
        cr += c == '\n' ? '\r' : c;
    }
    for (const std::string &variant : {crlf, cr}) {
        printed([&] { EXPECT_EQ(read_list(variant), 0); });
        ASSERT_EQ(partials, 1);
        EXPECT_EQ(npoints[0], 3);
        EXPECT_EQ(parray[0][2].time, 0.2f);
        EXPECT_EQ(parray[0][2].freq, 442.0f);
    }
}

TEST_F(ListPasses, SpareElementsStandBehindTheCounts) {
    open_text(list(2, partial(3) + partial(2)));
    ASSERT_EQ(revisit(), 0);
    for (int i = 2; i < 102; ++i) {
        EXPECT_EQ(npoints[i], 0);
        EXPECT_EQ(xarray[i].index, 0);
    }
}

} // namespace
