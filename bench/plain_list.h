// bench/plain_list.h -- a partials list read the plain way: every pass goes over the file with
// fscanf, word by word, and converts by atof and atoi. What the reader is measured against.
#pragma once

#include "store/store.h"

#include <vector>

struct PlainStore {
    std::vector<int32_t> counts;
    std::vector<PartialIndexEntry> index;
    std::vector<Breakpoint *> points;
    float maxamp = -200.0f;   // dB
    float minfreq = 22050.0f; // Hz
    float maxfreq = 1.0f;     // Hz
};

/// Loads a well-formed list; false where it cannot be opened or is not one.
bool load_plain(const char *name, PlainStore &store);

void free_plain(PlainStore &store);
