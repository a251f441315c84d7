// The shape of the source tree: includes point one way, files stay small, state is declared in
// headers alone. Each rule is checked on the tree, and on small broken trees that it must catch.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>; // text by path from the root
using Findings = std::vector<std::string>;

const char *const rooms[] = {"store",    "import", "toolbox", "edit",   "display",
                             "interact", "synth",  "live",    "export", "envelope"};

// --- who may include whom ----------------------------------------------------------------------

enum Rank {
    state,     // headers of globals with their owners, and helpers that know nothing else
    of_store,  // operations on the store
    of_import, //
    of_edit,   //
    of_synth,  //
    of_export, //
    of_envelope,
    of_sound_and_picture, // live and display, side by side
    of_interact,
    start_up,
    program,
};

struct RankRow {
    const char *prefix; // of the path without its ending
    Rank rank;
};

/// The rank of a unit is that of the first row whose prefix fits: single units that differ from
/// their room stand above the rooms. A prefix that ends in '/' is a room.
const RankRow rank_table[] = {
    // State headers with their owners.
    {"store/store", state},
    {"store/settings", state},
    {"display/view", state},
    {"interact/selection", state},
    {"live/live", state},
    {"live/shared", state},
    {"synth/sound", state},
    // Helpers that know no more than those.
    {"store/phase", state},
    {"store/phase_kernels", state},
    {"store/progress", state},
    {"store/published", state},
    {"store/console", state},
    {"store/misc", state},
    {"live/oscillator_block", state},
    // Thinning the store reallocates it.
    {"toolbox/sampling", of_store},
    {"toolbox/", state},
    // Clearing of the selections only writes state, and edits end with it.
    {"interact/clear", of_store},
    // Gestures map pixels to times; notes play by them, and MIDI is connected to the notes.
    {"live/gestures", of_interact},
    {"live/notes", of_interact},
    {"live/midi", of_interact},
    {"live/cleanup", of_interact},
    {"live/zone", of_interact},
    // Start-up brings all rooms together.
    {"store/commandline", start_up},
    {"store/importers", start_up},
    {"store/reading", start_up},
    {"store/window", start_up},
    {"store/QuillGrove", program},
    // Rooms.
    {"store/", of_store},
    {"import/", of_import},
    {"edit/", of_edit},
    {"synth/", of_synth},
    {"export/", of_export},
    {"envelope/", of_envelope},
    {"live/", of_sound_and_picture},
    {"display/", of_sound_and_picture},
    {"interact/", of_interact},
};

constexpr int most_lines = 600; // of a .cpp, not reached

// --- reading -----------------------------------------------------------------------------------

/// "store/store" of "store/store.cpp": a header and the source of the same name are one unit.
std::string unit_of(const std::string &path) {
    return path.substr(0, path.rfind('.'));
}

bool is_source(const std::string &path) {
    return path.ends_with(".cpp");
}

/// -1 for a unit that no row fits.
int rank_of(const std::string &unit) {
    for (const RankRow &row : rank_table) {
        const std::string prefix = row.prefix;
        if (prefix.ends_with('/') ? unit.starts_with(prefix) : unit == prefix) {
            return row.rank;
        }
    }
    return -1;
}

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

bool is_word(char c) {
    return c == '_' || std::isalnum(static_cast<unsigned char>(c)) != 0;
}

/// The name in `#include "name"`, empty for any other line.
std::string included_by(std::string line) {
    const size_t quote = line.find('"');
    if (quote == std::string::npos) {
        return "";
    }
    std::string head = line.substr(0, quote);
    std::erase_if(head, is_blank);
    return head == "#include" ? line.substr(quote + 1, line.rfind('"') - quote - 1) : "";
}

std::vector<std::string> includes_of(const std::string &text) {
    std::vector<std::string> included;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (const std::string name = included_by(line); !name.empty()) {
            included.push_back(name);
        }
    }
    return included;
}

/// Where the comment or literal that starts at `at` ends; `at` itself where none starts.
size_t past_noise(const std::string &text, size_t at) {
    if (text.compare(at, 2, "//") == 0) {
        return std::min(text.find('\n', at), text.size());
    }
    if (text.compare(at, 2, "/*") == 0) {
        const size_t end = text.find("*/", at + 2);
        return end == std::string::npos ? text.size() : end + 2;
    }
    const char quote = text[at];
    // A digit before it makes the mark a separator of thousands.
    if (quote != '"' && (quote != '\'' || (at > 0 && is_word(text[at - 1])))) {
        return at;
    }
    size_t end = at + 1;
    while (end < text.size() && text[end] != quote && text[end] != '\n') {
        end += text[end] == '\\' ? 2 : 1;
    }
    return std::min(end + 1, text.size());
}

/// Whether the code, without comments and literals, holds this word.
bool has_word(const std::string &text, const std::string &word) {
    for (size_t at = 0; at < text.size();) {
        const size_t past = past_noise(text, at);
        if (past != at) {
            at = past;
            continue;
        }
        size_t end = at;
        while (end < text.size() && is_word(text[end])) {
            ++end;
        }
        if (text.compare(at, end - at, word) == 0 && end != at) {
            return true;
        }
        at = std::max(end, at + 1);
    }
    return false;
}

std::string text_of(const fs::path &path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

Files tree() {
    Files files;
    const fs::path root = SOURCE_DIR;
    for (const char *room : rooms) {
        if (!fs::exists(root / room)) {
            continue;
        }
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(root / room)) {
            const std::string ending = entry.path().extension().string();
            if (ending == ".h" || ending == ".cpp") {
                files[fs::relative(entry.path(), root).generic_string()] = text_of(entry.path());
            }
        }
    }
    return files;
}

/// The build's own files, wherever they stand below the root; build trees are left out.
Files build_files() {
    Files files;
    const fs::path root = SOURCE_DIR;
    fs::recursive_directory_iterator at(root);
    for (; at != fs::recursive_directory_iterator(); ++at) {
        const std::string name = at->path().filename().string();
        if (at->is_directory() && (name.starts_with(".") || name.starts_with("build"))) {
            at.disable_recursion_pending();
        } else if (name == "CMakeLists.txt" || name == "CMakePresets.json" ||
                   name.ends_with(".cmake")) {
            files[fs::relative(at->path(), root).generic_string()] = text_of(at->path());
        }
    }
    return files;
}

// --- the rules ---------------------------------------------------------------------------------

Findings wrong_directions(const Files &files) {
    Findings findings;
    for (const auto &[path, text] : files) {
        const int from = rank_of(unit_of(path));
        if (from < 0) {
            findings.push_back(path + " has no rank");
        }
        for (const std::string &included : includes_of(text)) {
            if (!files.contains(included)) {
                findings.push_back(path + " includes " + included + ", which is in no room");
            } else if (rank_of(unit_of(included)) > from) {
                findings.push_back(path + " includes " + included + ", which ranks above it");
            }
        }
    }
    return findings;
}

/// Units included by each unit, itself left out.
using Graph = std::map<std::string, std::vector<std::string>>;

Graph graph_of(const Files &files) {
    Graph graph;
    for (const auto &[path, text] : files) {
        std::vector<std::string> &targets = graph[unit_of(path)];
        for (const std::string &included : includes_of(text)) {
            if (unit_of(included) != unit_of(path)) {
                targets.push_back(unit_of(included));
            }
        }
    }
    return graph;
}

void walk(const Graph &graph, const std::string &unit, std::vector<std::string> &way,
          std::map<std::string, bool> &finished, Findings &findings) {
    const auto seen = std::find(way.begin(), way.end(), unit);
    if (seen != way.end()) {
        std::string cycle;
        for (auto at = seen; at != way.end(); ++at) {
            cycle += *at + " -> ";
        }
        findings.push_back(cycle + unit);
        return;
    }
    if (finished[unit] || !graph.contains(unit)) {
        return;
    }
    way.push_back(unit);
    for (const std::string &target : graph.at(unit)) {
        walk(graph, target, way, finished, findings);
    }
    way.pop_back();
    finished[unit] = true;
}

Findings cycles(const Files &files) {
    const Graph graph = graph_of(files);
    Findings findings;
    std::vector<std::string> way;
    std::map<std::string, bool> finished;
    for (const auto &[unit, targets] : graph) {
        walk(graph, unit, way, finished, findings);
    }
    return findings;
}

Findings extern_in_sources(const Files &files) {
    Findings findings;
    for (const auto &[path, text] : files) {
        if (is_source(path) && has_word(text, "extern")) {
            findings.push_back(path);
        }
    }
    return findings;
}

Findings too_long(const Files &files) {
    Findings findings;
    for (const auto &[path, text] : files) {
        const auto lines = std::count(text.begin(), text.end(), '\n');
        if (is_source(path) && lines >= most_lines) {
            findings.push_back(path + " has " + std::to_string(lines) + " lines");
        }
    }
    return findings;
}

Findings loose_arithmetic(const Files &files) {
    Findings findings;
    for (const auto &[path, text] : files) {
        for (const char *flag : {"-ffast-math", "-Ofast", "-funsafe-math-optimizations"}) {
            if (text.find(flag) != std::string::npos) {
                findings.push_back(path + " uses " + flag);
            }
        }
    }
    return findings;
}

const Findings none;

} // namespace

TEST(Tree, HasItsFiles) {
    const Files files = tree();
    EXPECT_TRUE(files.contains("store/store.h"));
    EXPECT_TRUE(files.contains("store/QuillGrove.cpp"));
    EXPECT_TRUE(files.contains("display/scene.cpp"));
    EXPECT_TRUE(build_files().contains("CMakeLists.txt"));
    EXPECT_TRUE(build_files().contains("tests/CMakeLists.txt"));
}

TEST(Tree, IncludesPointToEqualOrLowerRanks) {
    EXPECT_EQ(wrong_directions(tree()), none);
}

TEST(Tree, UnitsFormNoCycle) {
    EXPECT_EQ(cycles(tree()), none);
}

TEST(Tree, SourcesDeclareNothingExtern) {
    EXPECT_EQ(extern_in_sources(tree()), none);
}

TEST(Tree, SourcesStayUnder600Lines) {
    EXPECT_EQ(too_long(tree()), none);
}

TEST(Tree, ArithmeticStaysStrict) {
    EXPECT_EQ(loose_arithmetic(build_files()), none);
    EXPECT_EQ(loose_arithmetic(tree()), none);
}

TEST(TreeRules, EveryTableRowIsReachable) {
    for (const RankRow &row : rank_table) {
        const std::string prefix = row.prefix;
        EXPECT_EQ(rank_of(prefix.ends_with('/') ? prefix + "anything" : prefix), row.rank)
            << prefix;
    }
    EXPECT_EQ(rank_of("elsewhere/thing"), -1);
    EXPECT_EQ(rank_of("live/liver"), of_sound_and_picture);
}

TEST(TreeRules, UpwardIncludeIsCaught) {
    const Files files = {{"edit/gain.cpp", "#include \"display/scene.h\"\n"},
                         {"display/scene.h", "#include \"display/view.h\"\n"},
                         {"display/view.h", ""}};
    EXPECT_EQ(wrong_directions(files),
              Findings{"edit/gain.cpp includes display/scene.h, which ranks above it"});
}

TEST(TreeRules, StateMustNotKnowOperations) {
    const Files files = {{"store/store.cpp", "  #  include \"store/recompute.h\"\n"},
                         {"store/recompute.h", ""}};
    EXPECT_EQ(wrong_directions(files).size(), 1u);
}

TEST(TreeRules, IncludeFromOutsideTheRoomsIsCaught) {
    const Files files = {{"edit/gain.cpp", "#include \"tests/support/console.h\"\n"}};
    EXPECT_EQ(wrong_directions(files).size(), 1u);
}

TEST(TreeRules, CycleOfUnitsIsCaught) {
    // No header includes the other: the cycle runs through the sources.
    const Files files = {{"edit/a.h", ""},
                         {"edit/a.cpp", "#include \"edit/a.h\"\n#include \"edit/b.h\"\n"},
                         {"edit/b.h", ""},
                         {"edit/b.cpp", "#include \"edit/b.h\"\n#include \"edit/a.h\"\n"}};
    EXPECT_EQ(cycles(files), Findings{"edit/a -> edit/b -> edit/a"});
    EXPECT_EQ(wrong_directions(files), none);
}

TEST(TreeRules, ExternIsCaughtInCodeAlone) {
    const Files files = {{"edit/a.cpp", "// extern stands here\nchar t[] = \"\\\"extern\";\n"
                                        "/* extern\n extern */ int external = 1'000;\n"},
                         {"edit/b.cpp", "extern int x;\n"},
                         {"edit/c.h", "extern int x;\n"}};
    EXPECT_EQ(extern_in_sources(files), Findings{"edit/b.cpp"});
}

TEST(TreeRules, LongSourceIsCaught) {
    const Files files = {{"edit/a.cpp", std::string(600, '\n')},
                         {"edit/b.cpp", std::string(599, '\n')},
                         {"edit/c.h", std::string(900, '\n')}};
    EXPECT_EQ(too_long(files), Findings{"edit/a.cpp has 600 lines"});
}

TEST(TreeRules, FastMathIsCaught) {
    const Files files = {{"CMakeLists.txt", "add_compile_options(-O2 -ffast-math)\n"}};
    EXPECT_EQ(loose_arithmetic(files).size(), 1u);
}
