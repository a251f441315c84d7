// interact/shell.h -- the way out to a shell on the same terminal and back. The window stands
// still meanwhile. Window thread only.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr size_t shell_word_size = 256; // bytes of the answer, its end included

/// Rewrites `name`, of at least shell_word_size bytes, to the path of the shell that it names: the
/// first of tcsh, csh, ksh, bash and zsh that it holds, else the plain one. 1 to go on; 0 with a
/// line when it holds none of them but the letter n. Null stands for a buffer of its own, which
/// gets the plain shell.
int32_t setshell(char *name);

/// Runs the shell at `path` to its end; null takes the buffer of setshell. Whatever it returns,
/// and when it is not there at all, the command ends by the same line.
void shell(const char *path);

/// Asks for a shell and runs it; nothing more at end of input.
void escape_to_shell();

extern int (*run_command_line)(const char *); // system, but for tests
