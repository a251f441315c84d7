// display/axes.h -- the three axes with ticks and labels. Laws that the cursors and the staff
// share stand here too. Window thread only.
#pragma once

#include "display/view.h"

/// Window ratios of one frame, by which screen-fixed offsets are divided, so that labels keep
/// their distance from the axes under zoom.
struct AxisScale {
    float Hratio; // window width over the design width
    float Vratio; // window height over the design height
    float hz;     // Hratio, times the zoom above 1
    float vz;     // Vratio, times the zoom above 1
    float tick;   // width of one second, in units of the design width
};

AxisScale axis_scale(const CameraRecord &camera);

constexpr double tick_octave = 0.69314718;    // of ticks and staff lines in the log view
constexpr double label_octave = 0.7000786518; // of labels, which stand a little lower

/// Scene height of the frequency f (Hz): f / maxfreq, or its logarithmic place with the given
/// constant. Minus infinity for 0 Hz in the log view.
double frequency_height(double f, double octave);

/// Writes a label below the time axis at scene position x.
void draw_time_label(double x, const AxisScale &scale, const char *text);

/// Labels, then lines; stores the view size in thewidth and theheight.
void draw_axes(const CameraRecord &camera);
