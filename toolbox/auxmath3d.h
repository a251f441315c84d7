// toolbox/auxmath3d.h -- level conversions between linear amplitude and dB. Pure.
#pragma once

/// 20 log10 of a linear amplitude; -140 dB for 0 and below.
double amp2db(double amp);

/// Linear amplitude of a level in dB, floored at -140 dB, in single precision.
float db2amp(float db);
