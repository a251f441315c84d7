#include "envelope/LPC.h"

TokenFile afPtr;
char text[lpc_text_room];
int16_t Oerror;
int32_t lpoints;
LpcSize lpcf_size;
double value;
double value2;
uint8_t lpc_is;
uint8_t lpc1_is;

void reset_lpc() {
    close_tokens(afPtr);
    text[0] = '\0';
    Oerror = 0;
    lpoints = 0;
    lpcf_size = {};
    value = 0;
    value2 = 0;
    lpc_is = 0;
    lpc1_is = 0;
}
