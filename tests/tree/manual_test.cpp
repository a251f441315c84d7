// The manual against the tables: every entry of the menu, every key with every state of the
// modifiers that has a row, and every text of the commands is in it.

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>

namespace {

std::string source(const std::string &path) {
    std::ifstream file(std::string(SOURCE_DIR "/") + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

using Words = std::vector<std::string>;

/// The first captures of the pattern, in order; of two where the second is asked for.
Words captures(const std::string &text, const std::string &pattern, size_t group = 1) {
    const std::regex wanted(pattern);
    Words words;
    for (std::sregex_iterator at(text.begin(), text.end(), wanted), end; at != end; ++at) {
        words.push_back((*at)[group]);
    }
    return words;
}

/// What the manual writes before a key that is held with these modifiers.
std::string held(const std::string &modifiers) {
    const std::pair<const char *, const char *> names[] = {{"alt", "Alt+"},
                                                           {"shift", "Shift+"},
                                                           {"ctrl", "Ctrl+"},
                                                           {"shift_alt", "Shift+Alt+"},
                                                           {"shift_ctrl", "Shift+Ctrl+"},
                                                           {"other_modifiers", ""},
                                                           {"others", ""}};
    for (const auto &[name, text] : names) {
        if (modifiers == name) {
            return text;
        }
    }
    return "unknown modifiers " + modifiers;
}

/// What the manual calls a key of the tables.
std::string key_name(const std::string &key) {
    const std::pair<const char *, const char *> names[] = {
        {"\\r", "Return"}, {"\\033", "Esc"},   {"\\177", "Delete"}, {" ", "Space"},
        {"LEFT", "Left"},  {"RIGHT", "Right"}, {"UP", "Up"},        {"DOWN", "Down"}};
    for (const auto &[name, text] : names) {
        if (key == name) {
            return text;
        }
    }
    return key;
}

/// The keys of a row's characters, each by itself; those that are written as an escape are one.
Words keys_of(const std::string &characters) {
    if (characters.starts_with("\\")) {
        return {key_name(characters)};
    }
    Words keys;
    for (const char character : characters) {
        keys.push_back(key_name(std::string(1, character)));
    }
    return keys;
}

/// The keys of a table's rows that the manual does not name. A row is {key, modifiers, ...
Words missing_keys(const std::string &manual, const std::string &path, const std::string &key,
                   size_t fewest) {
    const std::string text = source(path);
    const std::string row = "\\{" + key + ", ([a-z_]+),";
    const Words characters = captures(text, row, 1);
    const Words modifiers = captures(text, row, 2);
    Words missing;
    if (characters.size() < fewest) {
        missing.push_back(path + " has too few rows");
    }
    for (size_t i = 0; i < characters.size(); ++i) {
        const bool one = key.front() != '"';
        for (const std::string &name :
             one ? Words{key_name(characters[i])} : keys_of(characters[i])) {
            const std::string stroke = held(modifiers[i]) + name;
            if (manual.find("`" + stroke + "`") == std::string::npos) {
                missing.push_back(path + ": " + stroke);
            }
        }
    }
    return missing;
}

const Words none;

/// Those of the texts that do not stand in the manual, as a pattern makes one of them.
Words not_named(const Words &texts, const std::function<std::regex(const std::string &)> &pattern) {
    const std::string manual = source("docs/help.md");
    Words missing;
    for (const std::string &text : texts) {
        const std::string plain = text.substr(0, text.find_last_not_of(' ') + 1);
        if (!std::regex_search(manual, pattern(plain))) {
            missing.push_back(plain);
        }
    }
    return missing;
}

std::regex in_bold(const std::string &text) {
    return std::regex("\\*\\*" + std::regex_replace(text, std::regex("\\."), "\\.") + "\\*\\*");
}

std::regex as_a_word(const std::string &text) {
    return std::regex("\\b" + text + "\\b");
}

TEST(Manual, NamesEveryEntryOfTheMenu) {
    const std::string tree = source("interact/menu_tree.cpp");
    const Words entries = captures(tree, "\\{\"([^\"]+)\", [1-9]");
    EXPECT_EQ(entries.size(), 43U);
    EXPECT_EQ(not_named(entries, in_bold), none);
    const Words menus = captures(tree, "\\{\"([^\"]+)\", 0, [a-z]+_menu\\}");
    EXPECT_EQ(menus.size(), 14U);
    EXPECT_EQ(not_named(menus, as_a_word), none);
}

TEST(Manual, NamesEveryKey) {
    const std::string manual = source("docs/help.md");
    const std::string characters = "\"((?:[^\"\\\\]|\\\\.)[^\"]*)\"";
    EXPECT_EQ(missing_keys(manual, "interact/keys_console.cpp", characters, 3), none);
    EXPECT_EQ(missing_keys(manual, "interact/keys_edit.cpp", characters, 19), none);
    EXPECT_EQ(missing_keys(manual, "interact/keys_select.cpp", characters, 21), none);
    EXPECT_EQ(missing_keys(manual, "interact/keys_sound.cpp", characters, 13), none);
    EXPECT_EQ(missing_keys(manual, "interact/keys_view.cpp", characters, 9), none);
    EXPECT_EQ(missing_keys(manual, "interact/special_keys.cpp", "GLUT_KEY_([A-Z]+)", 16), none);
}

// --- what the terminal says --------------------------------------------------------------------

std::string without(const std::string &text, const std::string &pattern, const char *instead = "") {
    return std::regex_replace(text, std::regex(pattern), instead);
}

/// Any white space as one blank, as a reader sees it, and none at the ends.
std::string as_read(const std::string &text) {
    return without(without(text, "\\s+", " "), "^ | $");
}

/// The lines of the texts in a source, cut where a tab, a quote or a number stands, without the
/// program's name before them; those that hold a word.
Words texts_of(const std::string &path) {
    std::string text = without(source(path), "#include[^\n]*|//[^\n]*");
    text = without(text, "\"\\s*\n\\s*\"");
    Words texts;
    for (const std::string &literal : captures(text, "\"((?:[^\"\\\\]|\\\\.)*)\"")) {
        const std::string cut = without(literal, R"(\\[nt"]|%[-+.0-9]*l*[a-zA-Z])", "\n");
        for (const std::string &line : captures(cut, "([^\n]+)")) {
            const std::string words =
                without(as_read(line), "^[Qq]uill[Gg]rove ?> ?|^Invalid Selection Mode for: ");
            if (std::regex_search(words, std::regex("[A-Za-z]{3}"))) {
                texts.push_back(words);
            }
        }
    }
    return texts;
}

TEST(Manual, HoldsWhatTheCommandsAskAndSay) {
    const Words left_out = {
        "-etm2",          // intervals of keys
        "etm2",           //
        "num_chars =",    // of the letter d alone
        "Quillgrove:",    // before a complaint
        "<ctrl>a|A",      // told in words: the bar would end a column
        "s, zgAU stopped" // the end of a line that is named
    };
    const std::string manual = as_read(source("docs/help.md"));
    size_t count = 0;
    Words missing;
    for (const char *room : {"commands_edit", "commands_export", "commands_process",
                             "commands_select", "commands_sound", "commands_view", "keys_console",
                             "keys_edit", "keys_select", "keys_sound", "keys_view", "special_keys",
                             "command", "choose", "follow", "harmonize", "gesture_source"}) {
        for (const std::string &text : texts_of("interact/" + std::string(room) + ".cpp")) {
            ++count;
            const bool wanted = std::find(left_out.begin(), left_out.end(), text) == left_out.end();
            if (wanted && manual.find(text) == std::string::npos) {
                missing.push_back(text);
            }
        }
    }
    EXPECT_GT(count, 150U);
    EXPECT_EQ(missing, none);
}

TEST(Manual, HoldsEveryPictureThatItShows) {
    const Words pictures = captures(source("docs/help.md"), "\\]\\((pictures/[^)]+)\\)");
    EXPECT_GE(pictures.size(), 7U);
    for (const std::string &picture : pictures) {
        EXPECT_TRUE(source("docs/" + picture).starts_with("\x89PNG")) << picture;
        EXPECT_LT(source("docs/" + picture).size(), 100000U) << picture;
    }
}

} // namespace
