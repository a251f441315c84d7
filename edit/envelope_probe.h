// edit/envelope_probe.h -- looks whether a spectral envelope file can be opened; nothing is
// done with it yet. Window thread only.
#pragma once

/// Echoes the name and opens the file for reading and closes it at once; says so when it
/// cannot be opened.
void spectral_envelope(const char *name);
