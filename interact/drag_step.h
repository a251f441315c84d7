// interact/drag_step.h -- one motion event of an editing drag: how far the pointer went since
// the last event, in the units of the store. Window thread only.
#pragma once

struct DragStep {
    float dt; // seconds that points go back in time
    float df; // Hz that they go down
};

/// Whether an editing drag acts in this view.
bool drag_acts();

/// Takes the pointer's new place in, and tells the way from the last one.
DragStep begin_drag_step(int x, int y);

/// Makes this place the one from which the next event counts, and posts a redisplay.
void end_drag_step(int x, int y);
