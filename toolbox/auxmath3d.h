// toolbox/auxmath3d.h -- how musicians write pitch and level: note names, interval names and
// ratios as console words, octave notations, decibels. Pure, but for the messages of
// string2ratio.
#pragma once

/// Hz of a note name such as "etc#1"; 0 for any other text. The table has gaps and repeats.
float string2freq(const char *text);

/// Transposition ratio of an interval name such as "-etP5", a fraction with a denominator of
/// one digit, or a number. Prints what it makes of the last two. Outside 0.25 to 4 it says so
/// and gives 1; so it does for a numerator of more than 15 characters, on standard error.
float string2ratio(const char *text);

/// Octave.pitch-class notation, semitones as hundredths; `tuning` is the Hz of A.
float ftpc(float freq, float tuning);  // pitch class alone
float ftopc(float freq, float tuning); // octave and pitch class
float opctof(float opc, float tuning); // Hz
float opctor(float opc, float tuning); // ratio within the octave

/// Linear octaves. cpsoct takes the Hz of octave 0.
float octcps(float cps);
float octcpstu(float cps, float tuning);
float cpsoct(float oct, float base);

/// Octaves of a text such as "8*50", octave and cents; the text is cut at its "*".
float octc2oct(char *text);

/// 20 log10 of a linear amplitude; -140 dB for 0 and below.
double amp2db(double amp);

/// Linear amplitude of a level in dB, floored at -140 dB, in single precision.
float db2amp(float db);
