// tests/interact/menu_support.h -- what the tests of the menu's commands share: a menu that
// stands, choices with replies waiting on the console, and which finish a command ran.
#pragma once

#include "interact/command.h"
#include "interact/menu.h"
#include "interact/selection.h"
#include "tests/edit/structure.h"
#include "tests/support/pointer.h"

#include <functional>
#include <string>

constexpr const char *prompt = "\033[31mQuillgrove> \033[0m";
constexpr const char *not_built = "Not implemented yet...\n";

// What the rows of "Generate" print up to their reply.
inline const std::string harmonics_ask = std::string(prompt) +
                                         "Generate artificial harmonics...\t " +
                                         "Enter: <number>, <type>, <order>, <amp.decay>\n";
inline const std::string replicate_ask = std::string(prompt) + "Replicate selected partials...\t " +
                                         "Enter: <destination_time> (-1 = @end)\n\t";
inline const std::string arbitrary_ask = std::string(prompt) +
                                         "\nGenerate arbitrary partials...\t " +
                                         "Enter: <freq_mult1> <freq_mult2> ...[c|r|q|e|b]\n\t";

/// Starts each test with four small partials, all flags at their start values, and the menu
/// attached to the right button as start-up leaves it.
class MenuTest : public PointerTest {
  protected:
    void SetUp() override;
    void TearDown() override;
};

/// Throws the menus away and builds them again for the view flags as they are.
void rebuild_menu();

/// The tree from the attached menu down: a line an entry, its text in quotes, then its value;
/// submenus have no value and their entries below, indented by two blanks.
std::string menu_tree();

/// The menu that holds the entry of this value; 0 when there is none.
int menu_of(int value);

/// The text of the entry of this value, "none" without one.
std::string text_of(int value);

/// Runs the command of `value` as a choice from its own menu would, with `replies` waiting on
/// standard input; what it printed. Values without an entry come from the menu "View".
std::string command(int value, const std::string &replies = "", int modifiers = 0);

/// What the last command left unread of its replies.
const std::string &unread();

/// Flags these points and tells that a group is selected: texts as in set_flags.
void select_group(const std::vector<std::string> &texts);

/// Makes the derived values wrong, so that a refresh shows.
void spoil_derived();

/// Which derived values were brought back since, and whether a redisplay was posted, as in
/// "amp times pitch phase logfreq averages redisplay".
std::string refreshed();

/// Nothing selected and nothing found.
bool selection_cleared();

/// Two points of partials `part0` and `part1` found, the first one newest; numbers of -1 leave
/// a slot empty.
void find_points(int32_t part0, int32_t point0, int32_t part1 = -1, int32_t point1 = -1);

/// The store as `work` leaves it when it runs on a store made by `prepare`.
structure::Snapshot left_by(const std::function<void()> &prepare,
                            const std::function<void()> &work);
