// live/rt_output.h -- the stream to a sound server or device. Main thread.
#pragma once

/// Opens and starts a stream of two channels on JACK, PulseAudio or ALSA, the first that is
/// there. Its rate in Hz, or 0 where none is; says nothing about it.
double open_rt_output();

/// The stream has reported that it cannot go on.
bool rt_output_failed();

/// Ends the stream; deliver() does not run any more when this returns.
void close_rt_output();

/// The same for a stream that has died. Its remains, which may hang, go in the background.
void abandon_rt_output();
