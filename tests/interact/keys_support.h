// tests/interact/keys_support.h -- what the tests of the keyboard share: strokes with their
// modifiers, on the real players and an output whose blocks the test asks for.
#pragma once

#include "interact/keys.h"
#include "interact/selection.h"
#include "tests/interact/menu_support.h"
#include "tests/support/live_play.h"
#include "tests/support/made_sound.h"

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

/// Starts each test with four small partials in the flat view with breakpoints, the players set up
/// and at rest, no rendered sound, and one worker for renders.
class KeysTest : public LivePlayTest {
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

/// No unit was started or stopped and no pause taken since the test began.
bool players_left_alone();

/// The states of the modifiers but for those given.
std::vector<int> all_modifiers_but(const std::vector<int> &left_out = {});
