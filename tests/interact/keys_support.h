// tests/interact/keys_support.h -- what the tests of the keyboard share: strokes with their
// modifiers, and players that only write down what they were asked.
#pragma once

#include "interact/keys.h"
#include "interact/selection.h"
#include "tests/interact/menu_support.h"

#include <string>
#include <vector>

constexpr int no_modifier = 0;
constexpr int key_shift = GLUT_ACTIVE_SHIFT;
constexpr int key_ctrl = GLUT_ACTIVE_CTRL;
constexpr int key_alt = GLUT_ACTIVE_ALT;
constexpr int key_shift_alt = key_shift | key_alt;
constexpr int key_states = 8; // states of the three modifiers

constexpr unsigned char key_delete = 127;
constexpr unsigned char key_escape = 27;
constexpr unsigned char key_return = 13;

/// Starts each test with four small partials in the flat view with breakpoints, players at rest
/// and silent ones in place of the real ones.
class KeysTest : public PointerTest {
  protected:
    void SetUp() override;
    void TearDown() override;
};

/// One stroke of a character or a special key; what it printed. Standard input holds `replies`.
std::string press(unsigned char code, int modifiers = 0, const std::string &replies = "");
std::string press_special(int code, int modifiers = 0);

/// Redisplays that the last stroke posted.
int posted();

/// The stroke prints nothing, posts no redisplay and leaves store and selection alone.
void expect_nothing(unsigned char code, int modifiers);

/// All calls to the players so far, as in "fbstop1 wait 20000".
std::string player_calls();
void forget_player_calls();

/// The states of the modifiers but for those given.
std::vector<int> all_modifiers_but(const std::vector<int> &left_out = {});

/// What a sound of one frame would be; null for none.
extern const float *test_sound;

/// Run inside a wait, to see or change what stands at that moment.
extern void (*during_wait)();

/// An idle function of the players, to compare with the registered one.
void zone_idle();
void player_idle();
