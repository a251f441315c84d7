// interact/modifiers.h -- which modifier keys are down. GLUT tells it in key and mouse
// callbacks alone; a menu choice asks the display itself. Window thread only.
#pragma once

enum Modifiers : int { plain = 0, shift = 1, ctrl = 2, alt = 4 };

/// The state in a key, special or mouse callback, a sum of Modifiers; locks are left aside.
int event_modifiers();

/// The state at this moment, for menu callbacks.
int menu_modifiers();
