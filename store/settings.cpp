#include "store/settings.h"

#include <cstring>

int32_t verbose = 0;
int32_t dwbg = 0;
int32_t dbp = 0;
char afname[256] = "";

const char *const app_name = "Quillgrove";
const char *const version = "0.89b5";
ChipInfo chip = {};
const ArchInfo *thisarchinfo = nullptr;
char *title = nullptr;

float floorAmp = -90.0f;
float increment = 0.0f;
int32_t method = 0;
int32_t gLastKey = 32;

void reset_settings() {
    verbose = 0;
    dwbg = 0;
    dbp = 0;
    floorAmp = -90.0f;
    increment = 0.0f;
    method = 0;
    gLastKey = 32;
    std::memset(afname, 0, sizeof afname);
}
