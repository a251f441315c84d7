// live/silent_clock.h -- asks for blocks at the pace of a sound card and drops them: so the
// players run, silently, on a machine without sound. Main thread.
#pragma once

/// Starts the clock at so many Hz.
void start_silent_clock(double rate);

/// Ends it; deliver() does not run any more when this returns.
void stop_silent_clock();
