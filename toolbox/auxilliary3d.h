// toolbox/auxilliary3d.h -- small numeric functions, each told once. Their oddities are part
// of what callers see: 1 counts as even, 4 as prime. Pure, but for kbhit, randf and func1; func1
// runs on the window thread only.
#pragma once

#include "store/store.h"

/// ceil where the first decimal is 5 or more, else floor; a negative number counts as less.
/// Held to the type's range.
int16_t round_off(double x);

/// Hamming window of n points at i.
double hamming(int32_t i, int32_t n);

/// Kaiser window of n points at i, counted from the middle.
float kaiser(int32_t i, int32_t n, float beta);

/// Modified Bessel function of order zero, by its power series.
float bessel_0(float x);

/// Bessel function of the first kind of order zero (Numerical Recipes, rational approximation).
double bessj0(double x);

/// 1 when standard input has input waiting, 0 otherwise or on error.
int32_t kbhit();

int32_t is_it_even(int32_t n);
int32_t is_it_odd(int32_t n);
int32_t is_it_prime(int32_t n);

/// Entry k, from 0 on, of a table of 33 numbers that are mostly primes; 0 outside it.
int32_t prime(int32_t k);

/// Bell curve of width w at x; 0 outside -(w/2) to w/2.
float gauss(float x, float w);

/// The next of rand(), as 0 to 1.
float randf();

/// 1 when (x, y) is not outside the circle of radius r around (cx, cy).
int32_t inside_circle(float x, float y, float cx, float cy, float r);

/// The line through (x0, y0) and (x1, y1) at x.
float linear_interpolation(float x, float x1, float x0, float y1, float y0);

/// Frequency (Hz), level (dB) and linear amplitude of partial m at the time of point j of
/// partial k. There is no interpolation into the last segment; behind the last point its value
/// stands. m has at least one point.
float linear_interpol(Breakpoint *const *parray, const int32_t *npoints, int32_t j, int32_t k,
                      int32_t m);
float linear_interpol_a(Breakpoint *const *parray, const int32_t *npoints, int32_t j, int32_t k,
                        int32_t m);
float linear_interpol_al(Breakpoint *const *parray, const int32_t *npoints, int32_t j, int32_t k,
                         int32_t m);

/// Keeps every second partial, from the first on, in fresh arrays. Returns 0, or on a failed
/// allocation, with the store as it was, 1 for npoints, 2 for parray, 3 for a point array, 4
/// for peval.
int32_t func1(Breakpoint ***parray, int32_t **npoints, int32_t *partials, PartialEval **peval);
