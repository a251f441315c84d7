#include "tests/live/player_support.h"

#include "store/settings.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

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
    std::free(fBuffer);
    fBuffer = nullptr;
    fbuffersize = 0;
    fplayer = {};
    zgen = {};
    totalfFrames = 0;
    dbp = 0;
    R = 44100.0;
    printed([] { serve_requests(); });
    StoreTest::TearDown();
}

float PlayerTest::value(int64_t n) {
    return 0.5f + 0.4f * std::sin(static_cast<float>(n) * 0.37f);
}

void PlayerTest::give_sound(int64_t frames) {
    std::free(fBuffer);
    fBuffer = static_cast<float *>(std::calloc(static_cast<size_t>(frames) + 1, sizeof(float)));
    for (int64_t n = 0; n < frames; n++) {
        fBuffer[n] = value(n);
    }
    fbuffersize = frames;
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

Samples PlayerTest::rising(int64_t from, uint32_t frames) {
    Samples samples(frames);
    for (uint32_t k = 0; k < frames; k++) {
        samples[k] = static_cast<float>(k) * value(from + k) / static_cast<float>(frames);
    }
    return samples;
}

Samples PlayerTest::level(int64_t from, uint32_t frames) {
    Samples samples(frames);
    for (uint32_t k = 0; k < frames; k++) {
        samples[k] = value(from + k);
    }
    return samples;
}

Samples PlayerTest::falling(int64_t from, uint32_t frames) {
    Samples samples(frames);
    for (uint32_t k = 0; k < frames; k++) {
        samples[k] = static_cast<float>(frames - k) * value(from + k) / static_cast<float>(frames);
    }
    return samples;
}

std::string standing() {
    char text[128];
    std::snprintf(text, sizeof text, "state %d playing %d position %g total %ld", fplayer.state,
                  fplayer.playing, fplayer.position, static_cast<long>(totalfFrames));
    return text;
}
