// edit/retro.h -- playing selected material backward, in place. Flags and phases stay in their
// positions; the caller refreshes times, phases and averages. Both trace each exchange on the
// console. Window thread only.
#pragma once

/// Reverses frequency, level and log position inside each selected run; times stay.
void retro();

/// Mirrors the wholly selected partials around the centre of their common span: what ended last
/// begins first. Refuses, with two lines, a partial that is selected from its first point on but
/// not to its end. A run that leaves out its partial's first point has its points exchanged,
/// times included, and ends up running backward.
void reverse();

/// Does nothing, and no command calls it.
void swap_breakpoints();
