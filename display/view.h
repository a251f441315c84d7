// display/view.h -- what the window shows and from where: camera, view flags, and the
// matrices of the last frame, through which all picking goes. Window thread only.
#pragma once

#include <cstdint>

/// The camera. Zooming works on the aperture alone.
struct CameraRecord {
    double viewPos[3];  // position before the fixed offset of the look-at step
    double viewDir[3];  // from the camera to its target
    double viewUp[3];   //
    double rotPoint[3]; // kept, never read
    double focalLength; // distance from the camera to the scene plane
    double aperture;    // degrees, full opening angle, at most 5
    int32_t viewWidth;  // pixels, last size given to reshape
    int32_t viewHeight; // pixels
};

/// Side of the window, in pixels, for which all screen-fixed offsets were drawn.
constexpr int32_t design_size = 450;

// Flags, changed by the command line, keys and menu.
extern int32_t flat;        // 1: flat view, 0: perspective
extern int32_t clo;         // 1: flat came from the command line and the menu was not used yet
extern int32_t bps;         // non-zero: breakpoints are shown
extern int32_t logpos;      // non-zero: logarithmic frequency axis
extern uint16_t coord;      // non-zero: axes are shown
extern uint8_t gShowHelp;   // non-zero: help lines
extern uint8_t gShowInfo;   // non-zero: information lines
extern uint8_t gShowMethod; // 1: the line of the last gesture
extern uint8_t gShowStaff;  // 1: staff lines
extern uint8_t gShowClef;   // non-zero: clefs, in the log view
extern int16_t X;           // non-zero: shifts move in time
extern int16_t Y;           // non-zero: shifts move in frequency

// Changed by view drags.
extern CameraRecord gCamera;
extern double mOrigin[3]; // running sum of mouse pans
extern float rot[4];      // degrees about X and Y; the second pair keeps them in the flat view
extern float zoom;        // relative zoom, 1 at the start
extern int32_t ptsize;    // pixels, 1 to 4
extern uint8_t dragging;  // a view drag has seen its first motion event

// Constant in practice.
extern double gOrigin[3];
extern float gShapeSize;        // depth of the scene for the clipping planes
extern float gWorldRotation[4]; // degrees and axis
extern float scal[3];           // divisors of the pointer position
extern float trans[3];          // offset of the reference points

// Written by each frame.
extern double mvmatrix[16];
extern double projmatrix[16];
extern double zero[3];   // window coordinates of the scene point (0, 0, 0)
extern double one[3];    // window coordinates of the scene point (1, 1, 0)
extern float r1, g1, b1; // the last contour colour
extern float gr_sndlen;  // seconds, duration shown by the frame

// Written by reshape, the frame and the mouse.
extern int32_t thewidth;  // pixels
extern int32_t theheight; // pixels
extern float tuplet[3];   // pointer position in scene units

extern uint8_t tCallbackReg; // 1 while the repaint timer is armed
extern int gMainWindow;      // GLUT's number of the window

/// Counts the input events that may have changed the store: keys, menu choices, mouse buttons
/// and editing drags. A frame may show the arrays of an earlier one only while it stands still.
extern uint32_t input_events;

/// The flat view with breakpoints, in which single points are seen and found.
bool edit_mode();

/// The flat view or breakpoints: selections may be changed, and edits are allowed.
bool soft_mode();

/// Start values of everything above.
void reset_view();
