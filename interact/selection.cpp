#include "interact/selection.h"

#include "live/shared.h"

uint16_t selected = 0;
uint16_t sweepSelect = 0;
int32_t directSelect = 0;
uint16_t found = 0;
int32_t numfound = 0;
uint8_t selecting = 0;
FoundPoints foundSubscriptions = {-1, -1, -1, -1, 0};

int32_t square[4] = {};
float tfsquare[4] = {};
float ztfsquare[4] = {};

std::array<float, 4> swept_square() {
    return {peek(tfsquare[0]), peek(tfsquare[1]), tfsquare[2], tfsquare[3]};
}

void declare_selected() {
    selected = 1;
    sweepSelect = 1;
}

void reset_selection() {
    selected = 0;
    sweepSelect = 0;
    directSelect = 0;
    found = 0;
    numfound = 0;
    selecting = 0;
    foundSubscriptions = {-1, -1, -1, -1, 0};
}
