#include "display/view.h"

#include <cstring>

int32_t flat = 0;
int32_t clo = 0;
int32_t bps = 0;
int32_t logpos = 0;
uint16_t coord = 1;
uint8_t gShowHelp = 1;
uint8_t gShowInfo = 1;
uint8_t gShowMethod = 0;
uint8_t gShowStaff = 0;
uint8_t gShowClef = 0;
int16_t X = 0;
int16_t Y = 1;

CameraRecord gCamera = {};
double mOrigin[3] = {};
float rot[4] = {};
float zoom = 1.0f;
int32_t ptsize = 1;
uint8_t dragging = 0;

double gOrigin[3] = {};
float gShapeSize = 10.0f;
float gWorldRotation[4] = {180.0f, 0.0f, -1.0f, 0.0f};
float scal[3] = {1.0f, 1.0f, 1.0f};
float trans[3] = {};

double mvmatrix[16] = {};
double projmatrix[16] = {};
double zero[3] = {};
double one[3] = {};
float r1 = 0.0f, g1 = 0.0f, b1 = 0.0f;
float gr_sndlen = 0.0f;

int32_t thewidth = design_size;
int32_t theheight = design_size;
float tuplet[3] = {};

uint8_t tCallbackReg = 0;
int gMainWindow = 0;
uint32_t input_events = 0;

bool edit_mode() {
    return flat != 0 && bps != 0;
}

bool soft_mode() {
    return flat != 0 || bps != 0;
}

void reset_view() {
    flat = clo = bps = logpos = 0;
    coord = 1;
    gShowHelp = gShowInfo = 1;
    gShowMethod = gShowStaff = gShowClef = 0;
    X = 0;
    Y = 1;
    zoom = 1.0f;
    ptsize = 1;
    dragging = 0;
    tCallbackReg = 0;
    thewidth = theheight = design_size;
    for (int axis = 0; axis < 3; ++axis) {
        scal[axis] = 1.0f;
        trans[axis] = 0.0f;
        tuplet[axis] = 0.0f;
    }
    std::memset(rot, 0, sizeof rot);
}
