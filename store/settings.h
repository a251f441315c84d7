// store/settings.h -- what the command line and the machine say: debug switches, names,
// processor counts. Written once at start-up; the keyboard changes verbose
// and the last group.
#pragma once

#include <cstdint>

/// What the banner tells of the machine.
struct ChipInfo {
    char brand[48];        // processor name, at most 27 characters when it was 28 or longer
    int32_t physical;      // cores
    int32_t logical;       // hardware threads
    int32_t process_limit; // most processes that the system runs
};

/// The machine as uname names it; held, not interpreted.
struct ArchInfo {
    char name[65];
};

// Written by the command line.
extern int32_t verbose; // 1: verbose console output
extern int32_t dwbg;    // 1: debug printing of the display and window code
extern int32_t dbp;     // 1: debug printing of breakpoints and import
extern char afname[256];

// Constant or written once by main.
extern const char *const app_name; // first part of the window title
extern const char *const version;
extern ChipInfo chip;
extern const ArchInfo *thisarchinfo;
extern char *title; // the window title, 256 characters on the heap

// Changed by keys.
extern float floorAmp;   // dB, threshold of the compress and expand keys
extern float increment;  // dB, amplitude step of the keys
extern int32_t method;   // the last relative gesture, shown by the text layer
extern int32_t gLastKey; // the last character or special key; nothing reads it

/// Start values of the settings.
void reset_settings();
