// store/console.h -- reading replies from the terminal. Every prompt is flushed before the
// read; replies may come several on a line; nothing here ever spins at end of input. An edit
// that asks lends the store to its readers meanwhile.
#pragma once

#include <cstddef>
#include <cstdint>

/// Reads one word, as scanf's "%s" would, into `word` of `size` bytes. What does not fit of an
/// over-long word is dropped. Returns false at end of input, with `word` left as it was.
bool read_word(char *word, size_t size);

/// Reads a whole number, as scanf's "%d" would; one out of range becomes the nearest that fits.
/// Returns false with `value` left as it was when there is none: what did not fit stays unread.
bool read_integer(int32_t &value);

/// Reads a number, as scanf's "%f" would, with the same answer.
bool read_float(float &value);

/// The same in double precision, as "%lf" would.
bool read_double(double &value);

/// Reads one line with its newline, as fgets would, into `line` of `size` bytes. What does not
/// fit of an over-long line is dropped. Returns false at end of input, `line` left as it was.
bool read_line(char *line, size_t size);

/// Prints a text as the console shows it: one that ends in a blank, a tab, ": " or "> " or a
/// newline as it stands, any other as a line of its own.
void say(const char *text);

/// Drops input up to and including a newline, or to end of input.
void drop_line();
