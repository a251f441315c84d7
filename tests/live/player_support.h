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
#include "tests/support/made_sound.h"

#include <cstdint>
#include <string>

/// Ends each test with no sound, no unit and the player at its start values.
class PlayerTest : public StoreTest {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Starts from the beginning; what is printed is dropped.
    void play();
    void resume();

    /// One block of the player.
    Samples block(uint32_t frames = 512, float before = 0.0f);

    /// What the interface thread prints when it serves.
    static std::string served();

    AudioDouble audio;
};

/// state, playing, position and totalfFrames in one text.
std::string standing();
