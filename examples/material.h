// examples/material.h -- the sounds that the generator writes, as partials of points. The
// generator stands alone: it shares no code with the program that reads its files.
#pragma once

#include <cstdio>
#include <vector>

struct Point {
    double time;  // seconds
    double freq;  // Hz
    double level; // dB, 0 is full scale
};
using Partial = std::vector<Point>;
using Sound = std::vector<Partial>;

constexpr double hop = 0.01; // seconds between two points of a partial

/// Writes the sound as a Lisp partials list, leaving out partials of fewer than two points.
void write_list(FILE *file, const Sound &sound);

/// The same sound in the other formats that are read: SPEAR text by partials and by frames, SDIF
/// text of inharmonic and of harmonic tracks, and of the fundamental that the first partial is.
void write_spear_partials(FILE *file, const Sound &sound);
void write_spear_frames(FILE *file, const Sound &sound);
void write_sdif_tracks(FILE *file, const Sound &sound);
void write_sdif_harmonics(FILE *file, const Sound &sound);
void write_sdif_fundamental(FILE *file, const Sound &sound);

/// Writes a table of the partials' loudest points, in no format that is known: text to be read
/// by hand.
void write_peaks(FILE *file, const Sound &sound);

/// A spectral envelope over time: frames of as many points each.
struct EnvelopePoint {
    double amplitude; // linear, 1 is full scale
    double freq;      // Hz, rising within a frame
};
struct EnvelopeFrame {
    double time; // seconds
    std::vector<EnvelopePoint> points;
};
using Envelope = std::vector<EnvelopeFrame>;

/// Writes the envelope as text of an LPC analysis: for each frame its time and count of points,
/// then as many pairs of amplitude and frequency.
void write_lpc(FILE *file, const Envelope &envelope);

/// Partials that all start at 0 and last as long: material to measure with.
Sound large_sound(int partials, int points);

/// Writes a list of `partials` partials with `points` points each, in the digits that analysis
/// programs print: material to measure with, too large to keep in memory.
void write_large_list(FILE *file, int partials, int points);

Sound bell();
Sound glissando();
Sound melody();
Sound tones();
Sound vowel();

/// The formants that shape the vowel, as its mouth moves.
Envelope vowel_envelope();
