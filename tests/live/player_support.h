// tests/live/player_support.h -- the player on a scripted output: sounds made by hand, blocks
// asked for one by one.
#pragma once

#include "live/fbp.h"
#include "live/requests.h"
#include "synth/sound.h"
#include "tests/support/audio_double.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "tests/support/gl_double.h"

#include <cstdint>
#include <string>
#include <vector>

using Samples = std::vector<float>;

/// Ends each test with no sound, no unit and the player at its start values.
class PlayerTest : public StoreTest {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// A sound whose frame n is value(n); the player does not stand in it yet.
    void give_sound(int64_t frames);

    /// Sample n of such a sound: no two neighbours and no two blocks are alike.
    static float value(int64_t n);

    /// Starts from the beginning; what is printed is dropped.
    void play();
    void resume();

    /// One block of the player.
    Samples block(uint32_t frames = 512, float before = 0.0f);

    /// What the interface thread prints when it serves.
    static std::string served();

    /// The law of each kind of block, from frame `from` on.
    static Samples rising(int64_t from, uint32_t frames = 512);
    static Samples level(int64_t from, uint32_t frames = 512);
    static Samples falling(int64_t from, uint32_t frames = 512);

    AudioDouble audio;
};

/// state, playing, position and totalfFrames in one text.
std::string standing();
