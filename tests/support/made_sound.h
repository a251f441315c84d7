// tests/support/made_sound.h -- a rendered sound made by hand, no two neighbours and no two blocks
// of which are alike, and what each kind of the player's blocks makes of it.
#pragma once

#include <cstdint>
#include <vector>

using Samples = std::vector<float>;

/// Replaces the rendered sound by these samples, or by one whose frame n is value(n); the player
/// does not stand in it.
void fill_sound(const Samples &samples);
void give_sound(int64_t frames);
float value(int64_t n);

/// Leaves no rendered sound.
void drop_sound();

/// A block from frame `from` on: fading in, as it is, fading out.
Samples rising(int64_t from, uint32_t frames = 512);
Samples level(int64_t from, uint32_t frames = 512);
Samples falling(int64_t from, uint32_t frames = 512);
