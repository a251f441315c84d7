// Lisp partials lists, of the whole store and of the selection, and read back.
#include "export/export3d.h"

#include "store/settings.h"
#include "tests/export/export_support.h"
#include "tests/support/console.h"

namespace {

const std::string ask = "Enter file name (w/o extension): ";
const std::string ask_selected = "Enter file name (w/o sufix): ";

class List : public ExportTest {
  protected:
    void SetUp() override {
        ExportTest::SetUp();
        fill_store(two_partials());
    }

    std::string export_all(const std::string &replies) {
        return conversation(replies, [this] { audiosculpt3d(parray, npoints, partials, name); });
    }
    static std::string export_selected(const std::string &replies) {
        return conversation(replies, [] { audiosculpt3ds(parray, npoints, partials); });
    }

    char name[list_path_size] = "";
};

const std::string both = "( PARTIALS\t2\n"
                         "( POINTS\t3\n"
                         "    0.000\t  440.000\t    0.000\n"
                         "    0.500\t  441.123\t  -20.000\n"
                         "    1.001\t  442.000\t  -40.000\n"
                         ")\n"
                         "( POINTS\t2\n"
                         "    0.250\t  880.000\t   -6.000\n"
                         "    2.000\t12345.678\t -140.000\n"
                         ")\n"
                         ")\n";

TEST_F(List, WholeFile) {
    EXPECT_EQ(export_all(path() + "\n"),
              ask + "Exporting 2 partials to: " + path("out.pt") + "\n\tdone\n");
    EXPECT_EQ(text_of("out.pt"), both);
    EXPECT_EQ(name, path("out.pt"));
}

TEST_F(List, VerboseDots) {
    verbose = 1;
    EXPECT_EQ(export_all(path() + "\n"),
              ask + "Exporting 2 partials to: " + path("out.pt") + "\n..\tdone\n");
    EXPECT_EQ(text_of("out.pt"), both);
}

TEST_F(List, Cancelled) {
    EXPECT_EQ(export_all("-c\n"), ask + "Command cancelled\n");
    EXPECT_STREQ(name, "");
    mark(0, 0, 2);
    EXPECT_EQ(export_selected("-c\n"), ask_selected + "Command cancelled\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(List, ShortNamesDoNothing) {
    for (const char *shorty : {"a", ".", "..", "./a", ".ab", "a ", "\\ "}) {
        EXPECT_EQ(export_all(std::string(shorty) + "\n"), ask) << shorty;
        EXPECT_STREQ(name, "");
        EXPECT_EQ(export_selected(std::string(shorty) + "\n"), ask_selected) << shorty;
    }
}

TEST_F(List, EndOfInput) {
    EXPECT_EQ(export_all(""), ask);
    EXPECT_STREQ(name, "");
    EXPECT_EQ(export_selected(""), ask_selected);
}

TEST_F(List, ExistingFileIsLeftAlone) {
    make("out.pt", "kept");
    const std::string refusal = "Error: File \"" + path("out.pt") + "\" already exists\n";
    EXPECT_EQ(export_all(path() + "\n"), ask + refusal);
    EXPECT_STREQ(name, "");
    mark(0, 0, 2);
    EXPECT_EQ(export_selected(path() + "\n"), ask_selected + refusal);
    EXPECT_EQ(text_of("out.pt"), "kept");
    // The writers hold to it by themselves.
    EXPECT_EQ(printed([this] {
                  EXPECT_FALSE(audiosculpt3d_c(parray, npoints, path("out.pt").c_str(), partials));
              }),
              "Error: Can't create file \"" + path("out.pt") + "\"\n");
    EXPECT_EQ(text_of("out.pt"), "kept");
}

TEST_F(List, CannotBeCreated) {
    const std::string whole = path("no/where") + ".pt";
    EXPECT_EQ(export_all(path("no/where") + "\n"), ask + "Exporting 2 partials to: " + whole +
                                                       "\nError: Can't create file \"" + whole +
                                                       "\"\n\tdone\n");
    EXPECT_STREQ(name, "");
    mark(0, 0, 2);
    EXPECT_EQ(export_selected(path("no/where") + "\n"),
              ask_selected + "Exporting selections to: " + whole +
                  "\nNumber of candidates: 1\nError: Can't create file \"" + whole +
                  "\"\n\tdone\n");
}

TEST_F(List, LongestName) {
    const std::string longest = path(std::string(99 - path("").size(), 'n'));
    export_all(longest + "\n");
    EXPECT_EQ(name, longest + ".pt");
    EXPECT_EQ(files().size(), 1u);
}

TEST_F(List, FullDisk) {
    const ShortOfRoom result = short_of_room(150, path() + "\n", [] {
        char name[list_path_size] = "";
        audiosculpt3d(parray, npoints, partials, name);
        std::printf("<%s>", name);
    });
    EXPECT_EQ(result.out, ask + "Exporting 2 partials to: " + path("out.pt") + "\n\tdone\n<>");
    EXPECT_EQ(result.err, "Quillgrove: " + path("out.pt") + ": File too large\n");
    EXPECT_TRUE(files().empty());
    mark(0, 0, 2);
    mark(1, 0, 1);
    const ShortOfRoom selection =
        short_of_room(190, path() + "\n", [] { audiosculpt3ds(parray, npoints, partials); });
    EXPECT_EQ(selection.out, ask_selected + "Exporting selections to: " + path("out.pt") +
                                 "\nNumber of candidates: 2\n"
                                 "x1= 0\treturned= 0\ty0= 0\ty1= 2\n"
                                 "x1= 1\treturned= 1\ty0= 0\ty1= 1\n"
                                 "\tdone\n");
    EXPECT_EQ(selection.err, "Quillgrove: " + path("out.pt") + ": File too large\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(List, NothingSelected) {
    EXPECT_EQ(export_selected(path() + "\n"),
              ask_selected + "Exporting selections to: " + path("out.pt") +
                  "\nNumber of candidates: 0\nSelection doesn't meet criteria\n"
                  "Program found nothing to export\n\tdone\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(List, OneSelection) {
    mark(1, 0, 1);
    EXPECT_EQ(export_selected(path() + "\n"),
              ask_selected + "Exporting selections to: " + path("out.pt") +
                  "\nNumber of candidates: 1\nx1= 1\treturned= 1\ty0= 0\ty1= 1\n"
                  "Exporting 1 selection  to: " +
                  path("out.pt") + "\n\tdone\n");
    EXPECT_EQ(text_of("out.pt"), "( PARTIALS\t1\n"
                                 "( POINTS\t2\n"
                                 "    0.250\t  880.000\t   -6.000\n"
                                 "    2.000\t12345.678\t -140.000\n"
                                 ")\n"
                                 ")\n");
}

TEST_F(List, TwoSelections) {
    mark(0, 1, 2);
    mark(1, 0, 1);
    EXPECT_EQ(export_selected(path() + "\n"),
              ask_selected + "Exporting selections to: " + path("out.pt") +
                  "\nNumber of candidates: 2\nx1= 0\treturned= 0\ty0= 1\ty1= 2\n"
                  "x1= 1\treturned= 1\ty0= 0\ty1= 1\nExporting 2 selections to: " +
                  path("out.pt") + "\n\tdone\n");
    EXPECT_EQ(text_of("out.pt"), "( PARTIALS\t2\n"
                                 "( POINTS\t2\n"
                                 "    0.500\t  441.123\t  -20.000\n"
                                 "    1.001\t  442.000\t  -40.000\n"
                                 ")\n"
                                 "( POINTS\t2\n"
                                 "    0.250\t  880.000\t   -6.000\n"
                                 "    2.000\t12345.678\t -140.000\n"
                                 ")\n"
                                 ")\n");
}

} // namespace
