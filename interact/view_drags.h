// interact/view_drags.h -- pan, rotate and zoom by mouse: motion callbacks that move the camera
// alone. The first event of a drag only stores the position. Window thread only.
#pragma once

void mouseTranslate(int x, int y);
void mouseRot(int x, int y);   // not in the flat view
void mouseScale(int x, int y); // works on the aperture, in degrees; at most 5

/// Placeholders for scaling and rotating partials: each event writes a character on the console
/// in the flat linear breakpoint view. The second is registered nowhere.
void partialsScale(int x, int y);
void partialsRot(int x, int y);
