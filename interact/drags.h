// interact/drags.h -- motion callbacks of the editing drags, active while the middle button is
// down: found points, or everything selected, follow the pointer. X and Y tell in which
// directions. Flat view with breakpoints; each event ends with a redisplay. Window thread only.
#pragma once

/// Moves the one or two found points. In the linear view a point keeps 4 ms from its neighbours;
/// a point that cannot go on ends the event's moves.
void breakpointsTranslate(int x, int y);

/// Moves every selected point. In the linear view the first one that would leave 0 to 22050 Hz
/// ends the event's moves; those already made stay.
void partialsTranslate(int x, int y);
