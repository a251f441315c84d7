// edit/replicate.h -- pasting selected stretches at another time, as new partials. Window
// thread only.
#pragma once

/// Copies every selected run of at least three points so that the earliest copy starts at the
/// time, in seconds, that `word` gives; the copies keep their distances. A word that begins with
/// "-1" stands for one mean spacing behind the end, which is also the latest time there is. A
/// word of 0 or below is refused unless it begins with "0.". The copies end up selected, alone
/// in the flat view. Refreshes times, pitch range, phases and summaries, but neither log
/// positions nor levels.
void replicate_selections(const char *word);
