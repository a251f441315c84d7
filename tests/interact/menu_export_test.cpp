// The entries of "Export": announcements, refusals and finishes; what each exporter writes is
// tested with the exporters.
#include "interact/menu.h"

#include "display/view.h"
#include "tests/interact/menu_support.h"

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

} // namespace
