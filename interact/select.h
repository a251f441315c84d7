// interact/select.h -- derives a group selection from the one that stands, partial by partial.
// None of these sets the partials' own marks, which go on telling of the sweeps alone. Soft
// mode: the flat view or breakpoints on. The caller posts the redisplay. Window thread only.
#pragma once

/// Soft mode, in which selections may be changed and edits are allowed.
bool soft_mode();

/// The flat view with breakpoints, in which single points are seen and found.
bool edit_mode();

void select_left();       // soft mode: all points before the first selected one
void select_right();      // soft mode: all points after the last one; point 0 is not looked at
void select_vertical();   // soft mode: across all partials, the times that the selection spans
void select_partials();   // soft mode: each partial with a selected point, whole
void select_all();        // flat view with breakpoints: everything
void select_inverted();   // soft mode: the complement, over all partials
void select_p_inverted(); // soft mode: the complement, within partials with a selected point
void deselect_group();    // flat view: clears the group, keeps found points
void select_none();       // flat view: clears everything

/// select_all with its line on the console; tells of a sweep even where it selects nothing.
void select_everything();

/// select_none, and with it, in any view, what tells of a sweep and of the last gesture.
void drop_selection();

/// Grow and shrink each partial's run by one point, on its left or right end.
void oneMoreL();
void oneLessL();
void oneMoreR();
void oneLessR();

void select_remainder(); // what comes after each partial's last selected point, instead of it
void select_trailer();   // what comes before the first one; the scan is uneven across partials

/// Not built: they say so.
void select_up();
void select_down();
