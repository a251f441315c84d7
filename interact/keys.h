// interact/keys.h -- GLUT's keyboard callbacks: characters, and the arrows among the special
// keys. Single strokes, each a row of a table. Window thread only; Esc blocks it until its shell
// ends, a stop of a player for 20 ms.
#pragma once

/// Runs the row of this character with the modifiers as they are. A character that no row has is
/// named on the console; one that has rows for other modifiers alone does nothing.
void key(unsigned char key, int x, int y);

/// Runs the row of an arrow. Other special keys, the modifiers themselves among them, do nothing.
void special(int key, int x, int y);
