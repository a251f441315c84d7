// interact/gesture_source.h -- what the relative gestures ask for before they touch anything: a
// source partial, named by two found points, that is not among the selected targets. Window
// thread only.
#pragma once

#include <cstdint>

/// What a gesture says when something is missing.
struct GestureTexts {
    const char *no_pair;   // fewer than two found points
    const char *no_target; // nothing was swept
};

/// The source partial that the found pair names; -1, after the text for what is missing, when
/// there is none. Silent when the pair spans two partials or names points that are gone.
int32_t gesture_source(const GestureTexts &texts);

/// Whether the source has a selected point, which is said on the console.
bool source_is_target(int32_t source);

/// Index of the first selected point of partial i; its point count when there is none.
int32_t first_selected_point(int32_t i);
