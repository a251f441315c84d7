// The entries of "Export": announcements, refusals and finishes, the window's name, and which
// exporter each reaches; what an exporter writes is tested with the exporters.
#include "interact/menu.h"

#include "display/view.h"
#include "store/settings.h"
#include "tests/interact/menu_support.h"
#include "tests/support/folder.h"

#include <utility>

namespace {

using structure::same_points;
using structure::Snapshot;
using structure::snapshot;

struct Row {
    int value;
    const char *announce;
    const char *refusal; // printed when nothing is selected, null where nothing is asked
    bool redisplay;
};

const Row rows[] = {
    {24, "Export: Partials: All... Export All\n", nullptr, false},
    {25, "Export: Partials: Selected... Export Selected\n", "Error: nothing selected\n", false},
    {34, "Export: Cmix -all partials\t ", nullptr, true},
    {35, "Export: Cmix -selected partials\t ", "nothing selected\n", true},
    {73, "Export: SPEAR -all partials\t ", nullptr, true},
    {74, "Export: SPEAR -selected partials\t ", nullptr, true},
    {83, "Export: SDIF -all partials\t ", nullptr, true},
    {84, "Export: SDIF -selected partials\t ", nullptr, true},
};

using MenuExport = MenuTest;

/// Replies for any exporter's dialogue: its names cancel it, or the input ends.
const std::string no_export = "\n-c\n";

TEST_F(MenuExport, AnnouncesItself) {
    select_group({"1111", "000", "00", "0"});
    for (const Row &row : rows) {
        gl_double::recorder().redisplays = 0;
        const std::string text = command(row.value, no_export);
        EXPECT_TRUE(text.starts_with(prompt + std::string(row.announce))) << text;
        EXPECT_EQ(gl_double::recorder().redisplays, row.redisplay ? 1 : 0) << row.announce;
    }
}

TEST_F(MenuExport, NothingSelected) {
    for (const Row &row : rows) {
        gl_double::recorder().redisplays = 0;
        const std::string text = command(row.value, no_export);
        const std::string announced = prompt + std::string(row.announce);
        if (row.refusal != nullptr) {
            EXPECT_EQ(text, announced + row.refusal);
            EXPECT_EQ(unread(), "-c\n");
            EXPECT_EQ(gl_double::recorder().redisplays, 0);
        } else {
            EXPECT_GT(text.size(), announced.size()) << "it goes on without a selection";
            EXPECT_EQ(gl_double::recorder().redisplays, row.redisplay ? 1 : 0) << row.announce;
        }
    }
}

TEST_F(MenuExport, LeavesTheStoreAlone) {
    select_group({"1111", "000", "00", "0"});
    const Snapshot before = snapshot();
    for (const Row &row : rows) {
        command(row.value, no_export);
        command(row.value, "");
    }
    EXPECT_TRUE(same_points(before, snapshot()));
}

TEST_F(MenuExport, NoGateStandsBeforeIt) {
    select_group({"1111", "000", "00", "0"});
    ASSERT_TRUE(flat == 0 && bps == 0);
    for (const Row &row : rows) {
        EXPECT_EQ(command(row.value, no_export).find("Mode"), std::string::npos) << row.announce;
    }
}

/// A folder for the files, gone afterwards.
class MenuExportFiles : public MenuTest {
  protected:
    void SetUp() override {
        MenuTest::SetUp();
        gl_double::recorder().window = {1, "untouched", 0, 0, 450, 450, 0};
    }

    std::string path(const std::string &file) const {
        return folder.path(file);
    }
    static const std::string &title() {
        return gl_double::recorder().window.title;
    }

    Folder folder;
};

TEST_F(MenuExportFiles, ListOfAllNamesTheWindow) {
    dbp = 1;
    const std::string name = path("mine");
    const std::string named = "Quillgrove: " + name + ".pt";
    EXPECT_EQ(command(24, "\n" + name + "\n"),
              prompt + std::string(rows[0].announce) +
                  "Enter file name (w/o extension): Exporting 4 partials to: " + name +
                  ".pt\n\tdone\n" + named + "\t" + name + ".pt\n");
    EXPECT_EQ(title(), named);
    EXPECT_TRUE(folder.read("mine.pt").starts_with("( PARTIALS\t4\n( POINTS\t4\n"));
}

TEST_F(MenuExportFiles, TheWindowKeepsItsNameWithoutAnExport) {
    folder.write("there.pt", "kept");
    for (const std::string &reply :
         {std::string("-c"), std::string("a"), path("there"), path("no/where"), std::string()}) {
        command(24, "\n" + reply + "\n");
        EXPECT_EQ(title(), "untouched") << reply;
    }
    select_group({"1111", "000", "00", "0"});
    EXPECT_TRUE(command(25, "\n" + path("mine") + "\n").ends_with("\tdone\n"));
    EXPECT_EQ(title(), "untouched");
    EXPECT_EQ(folder.read("there.pt"), "kept");
}

TEST_F(MenuExportFiles, EveryRowReachesItsExporter) {
    select_group({"1111", "000", "00", "0"});
    const std::pair<int, const char *> beginnings[] = {
        {25, "( PARTIALS\t1\n"},
        {34, "/* CMIX WAVETABLE score"},
        {35, "/* CMIX WAVETABLE score"},
        {73, "par-text-partials-format\npoint-type time frequency amplitude\npartials-count 4\n"},
        {74, "par-text-partials-format\npoint-type time frequency amplitude\npartials-count 1\n"},
        {83, "SDIF\n\n1NVT\n"},
        {84, "SDIF\n\n1NVT\n"}};
    for (const auto &[value, beginning] : beginnings) {
        const std::string file = std::to_string(value) + ".pt";
        const std::string name = path(value == 25 ? "25" : file);
        command(value, "\n" + name + "\n0.1 1 1000 0\n");
        EXPECT_TRUE(folder.read(file).starts_with(beginning)) << value << folder.read(file);
    }
    const auto count = [this](const std::string &file, const std::string &part) {
        const std::string text = folder.read(file);
        int found = 0;
        for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++found;
        }
        return found;
    };
    EXPECT_EQ(count("34.pt", "WAVETABLE( "), 4);
    EXPECT_EQ(count("35.pt", "WAVETABLE( "), 1);
    EXPECT_GT(count("83.pt", "\n\t2\t"), 0);
    EXPECT_EQ(count("84.pt", "\n\t2\t"), 0) << "the second partial is not selected";
}

} // namespace
