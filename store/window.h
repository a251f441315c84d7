// store/window.h -- the last steps of start-up: sound units, window, callbacks, title. Main
// thread, once, after the store is live.
#pragma once

/// Start values of live play, then the generators, MIDI, the sine table and the player. A unit
/// that cannot be had ends the process.
void start_sound();

/// Creates the window and reports what the graphics can do.
void open_window();

/// Readies the drawing state and registers the callbacks.
void register_callbacks();

/// Clears the selection for the flat view and puts the file's name into the title.
void show_title();
