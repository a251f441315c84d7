// Replies and selections out of all bounds, through the dialogues of "Generate" and "Process": the
// operation with that very argument, a store that is whole, and a frame that ends.
#include "interact/menu.h"

#include "display/view.h"
#include "edit/generate.h"
#include "edit/replicate.h"
#include "edit/scale.h"
#include "edit/shifts.h"
#include "store/recompute.h"
#include "tests/interact/menu_support.h"
#include "tests/support/console.h"

#include <cmath>
#include <limits>

namespace {

using structure::same_points;
using structure::Snapshot;
using structure::snapshot;

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr size_t most_vertices = 2000000; // of a frame

/// Which points are selected: whole partials, runs of one and two, a partial of one point, none.
const std::vector<std::vector<std::string>> selections = {
    {"1111", "111", "11", "1"}, {"0110", "011", "10", "0"}, {"0100", "101", "00", "0"},
    {"0000", "000", "00", "1"}, {"0000", "000", "00", "0"},
};

class MenuWild : public MenuTest {
  protected:
    static void fresh(const std::vector<std::string> &selection) {
        fill_store(small_content());
        reset_selection();
        select_group(selection);
    }

    static void show(int32_t view) {
        flat = view & 1;
        logpos = (view >> 1) & 1;
        bps = 1;
    }

    /// The command prints and leaves what the operation by itself does, on every selection.
    void expect_operation(int value, const std::string &replies, const std::string &asked,
                          const std::function<void()> &work) {
        for (const std::vector<std::string> &selection : selections) {
            std::string text;
            show(1);
            const Snapshot want = left_by([&] { fresh(selection); }, [&] { text = printed(work); });
            fresh(selection);
            EXPECT_EQ(command(value, "\n" + replies), asked + text) << replies;
            EXPECT_TRUE(same_points(want, snapshot())) << replies << " on " << selection[0];
        }
    }

    /// A frame of the store in each view, none of it endless.
    void expect_drawable(const std::string &after) {
        for (int32_t view = 0; view < 4; ++view) {
            show(view);
            frame();
            size_t vertices = 0;
            for (const gl_double::Primitive &primitive : gl_double::recorder().primitives) {
                vertices += primitive.vertices.size();
            }
            EXPECT_LT(vertices, most_vertices) << after;
        }
    }
};

TEST_F(MenuWild, NumbersAndOrdersOfHarmonics) {
    struct Reply {
        const char *text;
        int32_t number, order;
        const char *type;
    };
    const Reply replies[] = {
        {"511 a 1 c\n", 511, 1, "a"},
        {"512 a 1 c\n", 512, 1, "a"},
        {"2147483647 a 1 c\n", INT32_MAX, 1, "a"},
        {"-7 a 1 c\n", -7, 1, "a"},
        {"0 a 1 c\n", 0, 1, "a"},
        {"3 a 0 c\n", 3, 0, "a"},
        {"3 a -1 c\n", 3, -1, "a"},
        {"3 a 2147483647 c\n", 3, INT32_MAX, "a"},
        {"3 a -2147483648 c\n", 3, INT32_MIN, "a"},
        {"3 e -2 c\n", 3, -2, "e"},
        {"3 o -1 c\n", 3, -1, "o"},
        {"3 p 0 c\n", 3, 0, "p"},
        {"50 p 131 c\n", 50, 131, "p"},
        {"3 o 2147483647 c\n", 3, INT32_MAX, "o"},
    };
    for (const Reply &reply : replies) {
        expect_operation(80, reply.text, harmonics_ask, [&] {
            artificial_harmonics(&reply.number, reply.type, &reply.order, "c");
        });
        fresh(selections[0]);
        command(80, std::string("\n") + reply.text);
        expect_drawable(reply.text);
    }
}

TEST_F(MenuWild, HarmonicsBeyondTheMostAreToldAndNothingElse) {
    fresh(selections[0]);
    const Snapshot before = snapshot();
    EXPECT_EQ(command(80, "\n512 a 1 c\n"),
              harmonics_ask + "Maximum of 511 new harmonics exceeded!\n");
    EXPECT_TRUE(same_points(before, snapshot()));
    command(80, "\n511 a 1 c\n");
    EXPECT_EQ(partials, 4 + 2 * 511);
}

TEST_F(MenuWild, TheRunsOfOneAndTwoAndThePartialOfOnePointAreNoSources) {
    for (size_t k = 1; k < selections.size(); ++k) {
        for (const auto &[value, reply] :
             {std::pair<int, const char *>{80, "2 a 1 c\n"}, {81, "-1\n"}, {82, "1.5 2 c\n"}}) {
            fresh(selections[k]);
            const std::string text = command(value, std::string("\n") + reply);
            EXPECT_NE(text.find("0 source candidates\n"), std::string::npos) << text;
            EXPECT_EQ(partials, 4) << value;
        }
    }
}

TEST_F(MenuWild, DestinationsOfAReplica) {
    for (const char *word : {"nan", "-nan", "inf", "-inf", "1e39", "-1", "-1e39", "0.", "0.0", "0",
                             "0.nan", "1e-46", "-", "x"}) {
        expect_operation(81, std::string(word) + "\n", replicate_ask,
                         [&] { replicate_selections(word); });
        fresh(selections[0]);
        command(81, std::string("\n") + word + "\n");
        expect_drawable(word);
    }
}

TEST_F(MenuWild, FactorsOfNoughtInfinityAndNoNumber) {
    for (const char *line :
         {"0\n", "nan\n", "inf\n", "-inf\n", "0 0\n", "0 0 0 c\n", "nan inf 0 b\n", "1 1 q\n",
          "inf nan\n", "2 1 b\n", "2 1 r\n", "2 1 q\n", "1e39\n", "-3\n", "-3 -3 e\n",
          "1/0 2/0 c\n", "        \n", "c\n", "c c c\n"}) {
        expect_operation(82, line, arbitrary_ask, [&] {
            std::puts(line);
            arbitrary_partials(line);
        });
        fresh(selections[0]);
        command(82, std::string("\n") + line);
        expect_drawable(line);
    }
}

TEST_F(MenuWild, AThousandFactorsGoAsFarAsTheLineIsRead) {
    std::string line;
    for (int k = 0; k < 1000; ++k) {
        line += std::to_string(2 + k) + "/" + std::to_string(1 + k % 9) + " ";
    }
    const std::string taken = line.substr(0, 99);
    expect_operation(82, line + "c\n", arbitrary_ask, [&] {
        std::puts(taken.c_str());
        arbitrary_partials(taken.c_str());
    });
    EXPECT_EQ(unread(), line.substr(99) + "c\n");
}

TEST_F(MenuWild, ALineOfTenThousandCharacters) {
    for (const std::string &line :
         {std::string(10000, ' '), std::string(10000, '9'), std::string(10000, 'c')}) {
        expect_operation(82, line + "\n", arbitrary_ask, [&] {
            std::puts(line.substr(0, 99).c_str());
            arbitrary_partials(line.substr(0, 99).c_str());
        });
    }
}

TEST_F(MenuWild, FactorsOfTheProcesses) {
    const char *const words[] = {"0",    "-0",   "nan",   "-nan",  "inf",
                                 "-inf", "1e39", "-1e39", "1e-46", "-1e-46"};
    for (const std::string word : words) {
        for (const std::vector<std::string> &selection : selections) {
            for (const auto &[value, reply] : {std::pair<int, std::string>{18, word},
                                               {19, word},
                                               {19, "v " + word},
                                               {20, word},
                                               {21, word + " 1 1"},
                                               {21, "1 " + word + " 1"},
                                               {21, "1 1 " + word},
                                               {21, word + " " + word + " " + word},
                                               {22, word}}) {
                show(1);
                fresh(selection);
                command(value, "\n" + reply + "\n");
                EXPECT_EQ(unread(), "\n") << value << ": " << reply;
                EXPECT_EQ(partials, 4);
                EXPECT_EQ(npoints[0] + npoints[1] + npoints[2] + npoints[3], 10);
                if (&selection == &selections.front()) {
                    expect_drawable(std::to_string(value) + ": " + reply);
                }
            }
        }
    }
}

TEST_F(MenuWild, TheArithmeticOfFactorsThatAreNoNumber) {
    expect_operation(18, "inf\n",
                     std::string(prompt) + "Process: Shift:\tGain\t " +
                         "Quillgrove > Enter gain shift (dB):\n             ",
                     [] { gain(infinite); });
    show(1);
    fresh(selections[0]);
    for (const char *refused : {"\nnan\n", "\n0\n", "\nv inf\n"}) {
        const std::string text = command(19, refused);
        EXPECT_NE(text.find("\tmust be within +-2 octaves\n"), std::string::npos) << text;
        EXPECT_EQ(parray[0][3].freq, 110.0f) << "a factor of 1 in its place";
    }
    fresh(selections[0]);
    command(20, "\nnan\n");
    EXPECT_TRUE(std::isnan(parray[0][0].time));
    fresh(selections[0]);
    command(21, "\n1 0 1\n");
    EXPECT_EQ(parray[0][0].freq, parray[0][3].freq) << "flattened onto the mean";
    fresh(selections[0]);
    command(21, "\n1 1 inf\n");
    EXPECT_FALSE(std::isfinite(parray[0][0].amp));
}

} // namespace
