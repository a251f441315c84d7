// interact/choose.h -- moves a selection that stands: a whole partial to its neighbour, found
// points along their partials, a found point's frequency by about 2 cents. Window thread only.
#pragma once

#include <cstdint>

/// Hands the selection of one whole partial on to the next one (direction 1) or the one before
/// (-1), wrapping round. Refuses, with a message, anything but one whole partial.
void cycleSelection(int32_t direction);

/// Moves found points to the left or right. `which` is 0 for all, 1 with shift, 2 with alt; the
/// two directions read the modifiers the other way round. Two slots that come to name the same
/// point become one.
void chooseSingle_left(int32_t which);
void chooseSingle_right(int32_t which);

/// Retunes the one found point by the factor 1.00125 and brings the ranges along. When it was
/// the outermost point, only its own partial is searched for the new one.
void upfreq();
void downfreq();
