#include "tests/live/player_support.h"

#include "store/settings.h"

#include <cstdio>

void PlayerTest::SetUp() {
    StoreTest::SetUp();
    gl_double::reset();
    serve_requests();
    fplayer = {};
    totalfFrames = 0;
    zgen = {};
    dbp = 0;
    R = 44100.0;
    CreateAndConnectFpOutputUnit1(&fplayer);
    audio.heard();
}

void PlayerTest::TearDown() {
    drop_sound();
    fplayer = {};
    zgen = {};
    totalfFrames = 0;
    dbp = 0;
    R = 44100.0;
    printed([] { serve_requests(); });
    StoreTest::TearDown();
}

void PlayerTest::play() {
    printed([] { fbplay1(0.0f, fbuffersize); });
}

void PlayerTest::resume() {
    printed([] { fbresume1(); });
}

Samples PlayerTest::block(uint32_t frames, float before) {
    return audio.pump(frames, before);
}

std::string PlayerTest::served() {
    return printed([] { serve_requests(); });
}

std::string standing() {
    char text[128];
    std::snprintf(text, sizeof text, "state %d playing %d position %g total %ld", fplayer.state,
                  fplayer.playing, fplayer.position, static_cast<long>(totalfFrames));
    return text;
}
