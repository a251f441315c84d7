// live/requests.h -- what a render procedure or the MIDI thread wants of the interface thread,
// which alone may call GLUT and print. Asking takes no lock and allocates nothing; the interface
// thread serves it some milliseconds later.
#pragma once

/// The texts that another thread may print; each has a row in requests.cpp.
enum class Said {
    stopped,       // "fpAU:Stopped!"
    no_buffer,     // "Can't access input buffer"
    read_position, // "l = %ld\n"
    odd_block,     // "INNF = %d\n"
    zone_time,     // "Time: %f\n"
};

// Any thread.

/// A line for the console. Dropped when 256 lines wait already.
void ask_print(Said text, double number = 0.0);

/// No idle function, unless a zone or the player runs when this is served.
void ask_idle_off();

/// A redisplay.
void ask_redisplay();

// Interface thread.

/// Does what was asked since the last call: idle function off, redisplay, then the lines in the
/// order of their asking.
void serve_requests();

/// Serves from now on every few milliseconds. Once the window exists.
void serve_by_timer();
