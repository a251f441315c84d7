// The manual against the tables: every entry of the menu and every row of keys is named in it.

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

bool any_named(const std::string &manual, const std::string &before, const Words &keys) {
    return std::any_of(keys.begin(), keys.end(), [&](const std::string &key) {
        return manual.find("`" + before + key + "`") != std::string::npos;
    });
}

/// The rows of a table whose keys the manual does not name. A row is {key, modifiers, ...
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
        const Words keys = keys_of(characters[i]);
        const bool one = key.front() != '"';
        if (!any_named(manual, held(modifiers[i]), one ? Words{key_name(characters[i])} : keys)) {
            missing.push_back(path + ": " + held(modifiers[i]) + characters[i]);
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

TEST(Manual, HoldsEveryPictureThatItShows) {
    const Words pictures = captures(source("docs/help.md"), "\\]\\((pictures/[^)]+)\\)");
    EXPECT_GE(pictures.size(), 6U);
    for (const std::string &picture : pictures) {
        EXPECT_TRUE(source("docs/" + picture).starts_with("\x89PNG")) << picture;
        EXPECT_LT(source("docs/" + picture).size(), 100000U) << picture;
    }
}

} // namespace
