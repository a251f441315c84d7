// bench/plain_formats.h -- SPEAR and SDIF texts read the plain way: every pass goes over the file
// with fscanf, word by word. What the readers are measured against.
#pragma once

#include "bench/plain_list.h"

/// Each loads a well-formed file, `type` telling which; false where it is not one.
bool load_plain_format(const char *name, int type, PlainStore &store);
