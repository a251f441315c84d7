// export/convert3d.h -- a raw float file as a 16-bit AIFF file. No command reaches it.
#pragma once

/// Turns `name` plus ".fp", floats in the machine's byte order, into AIFF, scaled so that the
/// loudest sample comes near full scale. The output's name is the input's up to its first point,
/// plus ".AIFF"; into a file that exists the samples go behind what is there, and its header is
/// raised as the sound files' header functions do. R is the rate. Tells on standard error what
/// cannot be read or written.
void convert3(const char *name);
