// edit/shifts.h -- level, pitch and time shifts of selected points, in place: no point comes or
// goes, no flag changes. The caller refreshes the derived ranges, but for what is named here.
// Each accepts any number. Window thread only.
#pragma once

#include <cstdint>

/// Fades each selected run by 96 dB: in for mode 1, out for any other. The ramp is linear in dB
/// over the index of the points, whatever their times. A run of one point becomes NaN, its
/// ramp having no length.
void fade(int32_t mode);

/// Adds `decibels` to the level of every selected point.
void gain(float decibels);

/// Multiplies the frequency of every selected point by `ratio`. minfreq, maxfreq and
/// logmaxfreq follow point by point, which may leave the range wider than the points.
void pitch(float ratio);

/// Glides each selected run of at least three points from its own pitch to `ratio` times it,
/// exponentially in time. Refreshes pitch range, log positions and averages itself.
void va_pitch(float ratio);

/// Moves the first selected point of each partial, and all points behind it, by `seconds`.
/// A move to the left is cut short where a partial would start before 0, or a tail would reach
/// the point before it: then to half of that gap. Refreshes the times; prints what it did.
void timesh(float seconds);
