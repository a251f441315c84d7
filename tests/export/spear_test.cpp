// SPEAR partials, of the whole store and of the selection.
#include "export/export3d.h"

#include "store/settings.h"
#include "tests/export/export_support.h"
#include "tests/support/console.h"

#include <sys/stat.h>

namespace {

const std::string header = "par-text-partials-format\n"
                           "point-type time frequency amplitude\n"
                           "partials-count ";
const std::string all = "Quillgrove > Export all partials to SPEAR file\n";
const std::string select = "Quillgrove > Export select partials to SPEAR file\n";
const std::string ask = "Enter file name: \n" + blanks;
const std::string done = "Quillgrove > done\n";

class Spear : public ExportTest {
  protected:
    void SetUp() override {
        ExportTest::SetUp();
        fill_store(two_partials());
        parray[0][0].phase = 1.5f;
    }

    std::string export_all(const std::string &replies) {
        return conversation(replies, on_store(spear));
    }
    std::string export_selected(const std::string &replies) {
        return conversation(replies, on_store(spears));
    }
};

TEST_F(Spear, WholeFile) {
    EXPECT_EQ(export_all(path() + "\n"), all + ask + done);
    EXPECT_EQ(text_of(), header + "2\npartials-data\n"
                                  "0 3 0.000000 1.500000\n"
                                  "    0.000\t  440.000\t    1.000\n"
                                  "    0.500\t  441.123\t    0.100\n"
                                  "    1.001\t  442.000\t    0.010\n"
                                  "1 2 0.250000 0.000000\n"
                                  "    0.250\t  880.000\t    0.501\n"
                                  "    2.000\t12345.678\t    0.000\n");
}

TEST_F(Spear, AmplitudesAreRelativeToTheLoudest) {
    fill_store({{{0.0f, 440.0f, -20.0f}, {0.5f, 440.0f, -40.0f}, {1.0f, 440.0f, -86.1f}}});
    export_all(path() + "\n");
    EXPECT_EQ(text_of(), header + "1\npartials-data\n"
                                  "0 3 0.000000 0.000000\n"
                                  "    0.000\t  440.000\t    1.000\n"
                                  "    0.500\t  440.000\t    0.100\n"
                                  "    1.000\t  440.000\t    0.000\n");
}

TEST_F(Spear, ExistingFileIsLeftAlone) {
    make("out", "kept");
    EXPECT_EQ(export_all(path() + "\n"), all + ask + "File " + path() + " exists\n");
    EXPECT_EQ(text_of(), "kept");
    mark(0, 0, 2);
    EXPECT_EQ(export_selected(path() + "\n"),
              select + "Number of candidates: 1\n" + ask + "File " + path() + " exists\n");
    EXPECT_EQ(text_of(), "kept");
}

TEST_F(Spear, Cancelled) {
    EXPECT_EQ(export_all("-c\n"), all + ask + "Command cancelled\n");
    mark(0, 0, 2);
    EXPECT_EQ(export_selected("-c\n"),
              select + "Number of candidates: 1\n" + ask + "Command cancelled\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(Spear, EndOfInput) {
    EXPECT_EQ(export_all(""), all + ask);
    EXPECT_EQ(export_all("\n\n"), all + ask);
    mark(0, 0, 2);
    EXPECT_EQ(export_selected(""), select + "Number of candidates: 1\n" + ask);
}

TEST_F(Spear, ANameCutOffByTheEndOfInputCounts) {
    EXPECT_EQ(export_all(path()), all + ask + done);
    EXPECT_EQ(files(), std::vector<std::string>{"out"});
}

TEST_F(Spear, CannotBeCreated) {
    const std::string name = path("no/where");
    EXPECT_EQ(export_all(name + "\n"), all + ask + "Cannot create file " + name + "\n");
    mark(0, 0, 2);
    EXPECT_EQ(export_selected(name + "\n"), select + "Number of candidates: 1\n" + ask +
                                                "Error: Can't create file \"" + name + "\"\n");
}

TEST_F(Spear, ADeviceExists) {
    EXPECT_EQ(export_all("/dev/full\n"), all + ask + "File /dev/full exists\n");
}

TEST_F(Spear, FullDisk) {
    const ShortOfRoom result = short_of_room(200, path() + "\n", on_store(spear));
    EXPECT_EQ(result.out, all + ask);
    EXPECT_EQ(result.err, "Quillgrove: " + path() + ": File too large\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(Spear, NothingSelected) {
    EXPECT_EQ(export_selected(path() + "\n"), select + "Number of candidates: 0\n"
                                                       "Selection doesn't meet criteria\n"
                                                       "Program found nothing to export\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(Spear, SelectedRuns) {
    fill_store({{{0.5f, 100.0f, -20.0f},
                 {1.0f, 110.0f, -20.0f},
                 {1.5f, 120.0f, -20.0f},
                 {2.0f, 130.0f, -20.0f},
                 {2.5f, 140.0f, -20.0f},
                 {3.0f, 150.0f, 0.0f},
                 {3.5f, 160.0f, -20.0f}},
                {{4.0f, 200.0f, -20.0f}, {4.5f, 210.0f, -40.0f}}});
    mark(0, 1, 3);
    mark(0, 5, 6);
    mark(1, 0, 1);
    parray[0][1].phase = 0.25f;
    EXPECT_EQ(export_selected(path() + "\n"), select + "Number of candidates: 3\n" + ask +
                                                  "x1= 0\treturned= 0\ty0= 1\ty1= 3\n"
                                                  "x1= 0\treturned= 0\ty0= 5\ty1= 6\n"
                                                  "x1= 1\treturned= 1\ty0= 0\ty1= 1\n" +
                                                  done);
    EXPECT_EQ(text_of(), header + "3\npartials-data\n"
                                  "0 3 1.000000 0.250000\n"
                                  "    1.000\t  110.000\t    0.100\n"
                                  "    1.500\t  120.000\t    0.100\n"
                                  "    2.000\t  130.000\t    0.100\n"
                                  "\n"
                                  "1 2 3.000000 0.000000\n"
                                  "    3.000\t  150.000\t    1.000\n"
                                  "    3.500\t  160.000\t    0.100\n"
                                  "\n"
                                  "2 2 4.000000 0.000000\n"
                                  "    4.000\t  200.000\t    0.100\n"
                                  "    4.500\t  210.000\t    0.010\n"
                                  "\n"
                                  "\n");
}

TEST_F(Spear, VerboseDots) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 110.0f, 0.0f}},
                {{0.0f, 200.0f, 0.0f}, {1.0f, 210.0f, 0.0f}}});
    mark(0, 0, 1);
    mark(1, 0, 1);
    verbose = 1;
    EXPECT_EQ(export_selected(path() + "\n"), select + "Number of candidates: 2\n" + ask +
                                                  "x1= 0\treturned= 0\ty0= 0\ty1= 1\n."
                                                  "x1= 1\treturned= 1\ty0= 0\ty1= 1\n." +
                                                  done);
    EXPECT_EQ(export_all(path("b") + "\n"), all + ask + done);
}

TEST_F(Spear, TwoPointsCountAtTheEndAlone) {
    fill_store(
        {{{0.0f, 100.0f, 0.0f}, {1.0f, 110.0f, 0.0f}, {2.0f, 120.0f, 0.0f}, {3.0f, 130.0f, 0.0f}}});
    mark(0, 1, 2);
    EXPECT_EQ(export_selected("-c\n"), select + "Number of candidates: 0\n"
                                                "Selection doesn't meet criteria\n"
                                                "Program found nothing to export\n");
    mark(0, 1, 1, 0);
    mark(0, 2, 3);
    EXPECT_EQ(export_selected("-c\n"),
              select + "Number of candidates: 1\n" + ask + "Command cancelled\n");
}

TEST_F(Spear, ALoneLastPointIsSkipped) {
    mark(0, 2, 2);
    mark(1, 0, 1);
    EXPECT_EQ(export_selected(path() + "\n"), select + "Number of candidates: 1\n" + ask +
                                                  "x1= 1\treturned= 1\ty0= 0\ty1= 1\n" + done);
    EXPECT_TRUE(text_of().starts_with(header + "1\npartials-data\n0 2 0.250000 ")) << text_of();
}

TEST_F(Spear, TheOnlyPointOfAPartialIsARun) {
    fill_store({{{0.5f, 100.0f, 0.0f}}, {{0.5f, 200.0f, -20.0f}}, {{0.5f, 300.0f, -20.0f}}});
    mark(1, 0, 0);
    mark(2, 0, 0, 2); // a run starts at a flag of 1
    EXPECT_EQ(export_selected(path() + "\n"), select + "Number of candidates: 1\n" + ask +
                                                  "x1= 1\treturned= 1\ty0= 0\ty1= 0\n" + done);
    EXPECT_EQ(text_of(), header + "1\npartials-data\n"
                                  "0 1 0.500000 0.000000\n"
                                  "    0.500\t  200.000\t    0.100\n"
                                  "\n"
                                  "\n");
}

TEST_F(Spear, PartialsOfOnePointAndOfNone) {
    fill_store({{{0.5f, 100.0f, 0.0f}}, {}});
    EXPECT_EQ(export_all(path() + "\n"), all + ask + done);
    EXPECT_EQ(text_of(), header + "2\npartials-data\n"
                                  "0 1 0.500000 0.000000\n"
                                  "    0.500\t  100.000\t    1.000\n"
                                  "1 0 0.000000 0.000000\n");
}

} // namespace
