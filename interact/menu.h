// interact/menu.h -- the pop-up menu: its tree, and the one callback of all its submenus.
// Window thread only; the console's dialogues block it.
#pragma once

#include <cstdint>

/// Builds the tree with the entries that the view flags ask for; the top menu is current then.
void glutMenu();

/// Runs the command of a menu value, with the modifier keys as they are at this moment.
void menu_select(int value);

/// A callback that only tells its name.
void null_select();

// Texts of the entries of "View" that tell what a choice would change to.
const char *flat_entry();
const char *logarithmic_entry();
const char *breakpoints_entry();
