// edit/generate.h -- new partials above or below selected stretches: by a list of factors, or
// as a harmonic series. Both run at the times of their sources and end up selected, alone in
// the flat view. They refresh pitch range, log positions, phases and summaries, but not the
// range of levels. Window thread only.
#pragma once

#include <cstdint>

/// Makes one partial for each factor of `line`, such as "2 etP5 3/2 q\n" (edit/multipliers.h).
/// The phases of the new partials are derived from 0.
void arbitrary_partials(const char *line);

/// Makes `number` partials, at most 511, for each stretch, taken as member `order` of a series:
/// all harmonics for `type` "a", even ones "e", odd ones "o", primes "p" (1 to 20 partials).
/// `decay` is a law (edit/decay.h). A number below 0 counts as 0. Members that lie outside the
/// table of 1,024 have a frequency of 0, or a level 140 dB below their source; an order of 0
/// divides by 0, so that its frequencies are infinite. All phases of the new partials are 0.
void artificial_harmonics(const int32_t *number, const char *type, const int32_t *order,
                          const char *decay);

/// Zeroes `n` bytes; nothing for n of 0 and below. No command calls it.
void clear_string(char *s, int32_t n);
