// edit/pick.h -- selects whole partials by a criterion: length, start time, end time. Adds to
// the selection that stands; the partials' own marks stay as they are, but for pick_odd. The
// caller posts the redisplay. Window thread only.
#pragma once

#include <cstdint>

/// The whole dialogue on the console: criterion, its arguments, the selection.
void pick();

/// Partials of fewer ("<") or more (">") than n points. Nothing where n is not below the length
/// of the longest partial, whichever way it is asked.
void pick_by_size(const char *op, int32_t n);

/// Partials that start, or end, strictly between t0 and t1, in seconds. Says "Bad value" to a
/// bound outside 0 to sndlen for starts, outside sndstart to sndstart + sndlen for ends.
void pick_by_startTime(float t0, float t1);
void pick_by_endTime(float t0, float t1);

/// Selects every second partial, from the first on, and deselects the others. The mark of the
/// first partial alone is kept, with the answer for the last one.
void pick_odd();
