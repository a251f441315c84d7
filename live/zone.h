// live/zone.h -- a stretch of time played at its natural speed: zgen's callback keeps the time,
// and the idle function samples the partials at it. Window thread.
#pragma once

#include <cstdint>

// The system's library has a function of this name.
inline namespace zone {

/// Seconds; where each partial stands in a zone through which all walk by themselves.
extern float times[2048];

} // namespace zone

/// Plays the zone between two pixel columns, which it puts in ascending order in place.
void qplay(int32_t *x0, int32_t *x1);

/// Plays the zone from *start to *end, in seconds.
void tqplay(const float *start, const float *end);

/// Idle function while a zone plays: samples, and ends or repeats the zone.
void qmotion();

/// Ends qmotion: the idle function becomes that of the rendered sound's player while it plays,
/// else none.
void leave_idle_to_player();
