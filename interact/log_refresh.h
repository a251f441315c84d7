// interact/log_refresh.h -- sweeps over the store for the logarithmic frequency axis: what the
// range has to hold, and where the points lie on an axis. Window thread only.
#pragma once

#include "interact/log_position.h"

#include <cstdint>

/// Widens minfreq and maxfreq so that every point of the store lies within.
void widen_range_to_all();

/// Puts the logfreq of every point of partial i where the axis has it.
void refresh_log_positions(const LogAxis &axis, int32_t i);

/// The same for every point of the store.
void refresh_log_positions(const LogAxis &axis);
