// display/cursors.h -- the moving lines of the players: live play, rendered buffer, zone.
// Positions that the audio thread writes are read plainly; a stale one shifts a cursor by one
// frame. Window thread only.
#pragma once

#include "display/view.h"

/// Draws the cursor of every player that sounds, in perspective with a curtain behind it.
void draw_cursors(const CameraRecord &camera);
