// live/wheel.h -- the mod wheel as a selection: its lower half widens a band of partials from
// the first one up, its upper half narrows it from below towards the last one.
#pragma once

#include "store/published.h"

/// Selects the points of the partials that `wheel`, 0 to 1, chooses, and no others. Any thread
/// that holds a StoreReader.
void select_by_wheel(const PublishedStore &store, float wheel);
