// import/afile_fundamental.h -- SDIF text of a fundamental: a curve of frequency that becomes one
// partial. The passes of revisit_sdiffile and import_sdiffile for that type. Window thread.
#pragma once

#include "import/tokens.h"

/// Counts the frames behind the first into npoints[0]. Returns the type, or -1 where the third
/// word is none of a frame; the file is left at its head.
int32_t revisit_fundamental(TokenFile &file, int32_t *npoints);

/// Reads npoints[0] points into the first partial, tells each, shapes the ends of the curve and
/// sets maxamp (dB). Returns as the revisit does.
int32_t import_fundamental(TokenFile &file, const int32_t *npoints, float *maxamp);
