// live/cleanup.h -- the end of all sound, on the ways out of the program. Main thread.
#pragma once

/// Closes the player's unit, lets go of the MIDI sources, then closes the units of the
/// generators, without stopping them first. What was never opened is left alone.
void cleanupAudioMIDI();
