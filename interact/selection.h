// interact/selection.h -- the two selections that live side by side: the group of flagged
// breakpoints, and the one or two points found by clicks. Written by the window thread; MIDI
// control writes square[0], tfsquare[0 and 1] and point flags as well.
#pragma once

#include <array>
#include <cstdint>

/// The queue of found points, newest first. An empty slot holds -1, -1.
struct FoundPoints {
    int32_t part0;  // partial of the newest point
    int32_t point0; // its place in that partial
    int32_t part1;  // the point found before it
    int32_t point1; //
    int32_t count;  // 0, 1 or 2
};

extern uint16_t selected;    // some group selection exists
extern uint16_t sweepSelect; // a sweep was done since the last clearing
extern int32_t directSelect; // a point was found by a click
extern uint16_t found;       // something is found or selected
extern int32_t numfound;     // the count as the last found click left it
extern uint8_t selecting;    // a sweep is running or its rectangle is on show
extern FoundPoints foundSubscriptions;

extern int32_t square[4];  // pixels: x at press, x at release or latest motion, y likewise
extern float tfsquare[4];  // scene: t of release, t of press, f of release, f of press
extern float ztfsquare[4]; // scene: start and end of the play zone in X, its Y twice

/// tfsquare as it stands at the moment.
std::array<float, 4> swept_square();

/// Sets the flags of a group selection that has just been made.
void declare_selected();

/// Start values: nothing found, nothing selected.
void reset_selection();
