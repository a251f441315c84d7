#include "store/store.h"

int32_t partials = 0;
int32_t *npoints = nullptr;
Breakpoint **parray = nullptr;
PartialEval *peval = nullptr;
PartialIndexEntry *xarray = nullptr;

float sndstart = 0.0f;
float sndlen = 0.0f;
float meant = 0.0f;
float minfreq = 22050.0f;
float maxfreq = 1.0f;
float fspan = 0.0f;
float logmaxfreq = 0.0f;
float minamp = 0.0f;
float maxamp = -200.0f;

float nlogmaxfreq = 0.0f;
float oldmaxfreq = 0.0f;
float oldminfreq = 0.0f;

void reset_store_globals() {
    partials = 0;
    minfreq = 22050.0f;
    maxfreq = 1.0f;
    maxamp = -200.0f;
    minamp = 0.0f;
}
