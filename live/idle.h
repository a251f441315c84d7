// live/idle.h -- the idle function while the player of a rendered buffer runs. Interface thread.
#pragma once

/// Redraws the play head, spaced out.
void Idle();

/// Sleeps some milliseconds: an idle function that returns at once takes a whole processor.
void pace_idle();
