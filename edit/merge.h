// edit/merge.h -- fuses two partials that overlap in time into one, adding them as phasors in
// the overlap. Window thread only.
#pragma once

/// Merges the two partials that hold selected points; which points those are does not matter.
/// Outside the overlap the head of the earlier one and the tail of the later one are kept. The
/// merged points are unselected, at phase 0. Tells its working values on the console. Any other
/// number of partials, and overlaps of unequal length, leave the store alone. The caller brings
/// the derived values back, without the phases.
void merge3d();
