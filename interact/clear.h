// interact/clear.h -- the complete clearing of both selections. Window thread only.
#pragma once

/// Clears every selection flag of partials and points, the found points and all summary flags.
void clear_all();

/// clear_all in the flat view; outside it nothing, so that a selection outlives an edit there.
void deselect_all();
