// synth/sound_files.h -- a rendered sound as a file: AIFF with 16-bit samples, or bare floats.
// Neither replaces what is there: an AIFF file grows by the sound and gets a header that is
// raised from what the reader makes of the old one, a float file grows at its end. A file that
// cannot be written costs one line on standard error; nothing else changes. Window thread only.
#pragma once

#include <cstdint>

/// Room of the path buffers that callers pass, with extension and end.
constexpr int32_t sound_path_room = 256;

/// Writes `name` plus an extension into `path`. False when there is no room; `path` is then empty.
bool sound_path(char (&path)[sound_path_room], const char *name, const char *extension);

/// One sample of a 16-bit file: cut toward zero, held to the type's range; 0 for not a number.
int16_t sample16(float value);

/// Writes fBuffer to `name` plus ".AIFF", which `name`, a buffer of 256 bytes, ends with
/// afterwards. The header takes its length from sndlen and R. Returns 0.
int32_t write2soundfile(char *name, int64_t frames);

/// The same for any samples, `length` (seconds) and `rate` (Hz), each sample times `factor`;
/// says nothing at its end.
void append_aiff(char *name, const float *samples, int64_t frames, float factor, float length,
                 float rate);

/// Writes the floats of `buffer`, in the machine's byte order, to `name` plus ".fp". Returns 0.
int32_t write2rawfloatfile(const char *name, const float *buffer, int64_t frames);
