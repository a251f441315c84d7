// interact/amplitude_step.h -- levels moved by the step of the keys, in dB: those of the group
// selection, those of the found points, and all levels below a threshold. None of them brings the
// amplitude range back. Window thread only.
#pragma once

#include "interact/selection.h"

/// Raises or lowers the one or two found points; a point of the group is left alone, since the
/// group's own step has moved it. Tells the newest point's level. A step of 0 changes nothing and
/// asks for a step. Only while something is found by a click; attenuate says what is missing.
void amplify(float step, FoundPoints queue);
void attenuate(float step, FoundPoints queue);

/// Raises or lowers every selected point; a step of 0 asks for a step.
void amplifyAll(float step);
void attenuateAll(float step);

/// Halves the distance of every level below `floor` from it, or makes it half as wide again,
/// selected or not.
void raise_floor(float floor);
void lower_floor(float floor);
