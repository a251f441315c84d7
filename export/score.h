// export/score.h -- what the two kinds of score share: the four numbers that their dialogues ask
// for, and whole numbers of levels. Window thread only.
#pragma once

#include <cstdint>

/// How a score places the sound.
struct ScoreParameters {
    float offset;    // seconds added to all times
    float stretch;   // factor of all times
    float amplitude; // of the loudest point
    float spread;    // in stereo, -1 to 1
};

/// Asks for the parameters of the instrument; values that the reply lacks stay as they are.
/// `lower_name` is the instrument's name in the line that verbose adds. False at the end of
/// input.
bool read_score_parameters(ScoreParameters &parameters, const char *instrument,
                           const char *lower_name);

/// Tells which file the score goes to; verbose leaves it out. `kind` is "RT" or empty.
void tell_score(const char *kind, const char *name);

/// Toward zero, held to the type's range; 0 for not a number.
int32_t whole_part(float value);
