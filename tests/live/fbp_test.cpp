// The player of the rendered sound: its states block by block, the fades to the bit, pauses,
// loops, and what it says.
#include "live/idle.h"
#include "store/settings.h"
#include "store/store.h"
#include "tests/live/player_support.h"

#include <cmath>

namespace {

const std::string line = "_____________________________________________\n\n";

std::string frames_line(int64_t frames) {
    return "FBP1: " + std::to_string(frames) + "\t frames\n";
}

int redisplays() {
    return gl_double::recorder().redisplays;
}

/// The player as created.
void fresh_player() {
    void *unit = fplayer.unit;
    fplayer = {};
    fplayer.unit = unit;
}

void (*idle())() {
    return gl_double::recorder().callbacks.idle;
}

} // namespace

// --- starting ----------------------------------------------------------------------------------

TEST_F(PlayerTest, StartSaysWhatItPlays) {
    give_sound(4000);
    fplayer.position = 77.0;
    fplayer.frames_played = fplayer.blocks = 5;
    totalfFrames = 9;
    N = 0.0f;
    EXPECT_EQ(printed([] { EXPECT_EQ(fbplay1(1.25f, 4000), 0); }),
              frames_line(4000) + "zgen.state = 0\n" + line);
    EXPECT_EQ(standing(), "state 1 playing 1 position 0 total 0");
    EXPECT_EQ(fplayer.seconds, 1.25f);
    EXPECT_EQ(fplayer.frames_played, 0);
    EXPECT_EQ(fplayer.blocks, 0);
    EXPECT_EQ(fplayer.buffer, fBuffer);
    EXPECT_EQ(N, 2000.0f);
    EXPECT_EQ(idle(), Idle);
    EXPECT_EQ(redisplays(), 1);
    EXPECT_EQ(audio.heard(), "start\n");
}

TEST_F(PlayerTest, DebugStartSaysTheCountItWasGiven) {
    give_sound(4000);
    dbp = 1;
    EXPECT_EQ(printed([] { fbplay1(0.0f, -3); }),
              "FBP1: -3\t size\n" + frames_line(4000) + "zgen.state = 0\n" + line);
}

TEST_F(PlayerTest, StartLeavesTheIdleFunctionOfAZoneAlone) {
    give_sound(4000);
    zgen.state = 2;
    EXPECT_EQ(printed([] { fbplay1(0.0f, 4000); }), frames_line(4000) + "zgen.state = 2\n" + line);
    EXPECT_EQ(idle(), nullptr);
}

TEST_F(PlayerTest, SecondStartDoesNothing) {
    give_sound(4000);
    play();
    block();
    const std::string before = standing();
    EXPECT_EQ(printed([] { fbplay1(3.0f, 4000); }), "");
    EXPECT_EQ(standing(), before);
}

TEST_F(PlayerTest, WithoutASoundThereIsNothingToPlay) {
    fbuffersize = 7;
    EXPECT_EQ(printed([] { EXPECT_EQ(fbplay1(0.0f, 0), 0); }), frames_line(7) + "NULL Buffer!\n");
    EXPECT_EQ(standing(), "state 0 playing 0 position 0 total 0");
    EXPECT_EQ(audio.heard(), "");
}

// --- the states --------------------------------------------------------------------------------

TEST_F(PlayerTest, FirstBlockFadesIn) {
    give_sound(10000);
    play();
    EXPECT_EQ(block(), rising(0));
    EXPECT_EQ(standing(), "state 2 playing 1 position 512 total 512");
}

TEST_F(PlayerTest, MiddleBlocksAreTheSoundItself) {
    give_sound(10000);
    play();
    block();
    EXPECT_EQ(block(), level(512));
    EXPECT_EQ(block(), level(1024));
    EXPECT_EQ(standing(), "state 2 playing 1 position 1536 total 1536");
}

TEST_F(PlayerTest, StopFadesOutAndTheNextBlockStopsTheUnit) {
    give_sound(10000);
    play();
    block();
    audio.heard();
    fbstop1();
    EXPECT_EQ(fplayer.state, 3);
    EXPECT_EQ(block(), falling(512));
    EXPECT_EQ(standing(), "state 0 playing 0 position 1024 total 1024");
    EXPECT_EQ(audio.heard(), "");
    EXPECT_EQ(served(), "");
    EXPECT_EQ(idle(), Idle);
    EXPECT_EQ(block(512, 0.5f), Samples(512, 0.0f));
    EXPECT_EQ(audio.heard(), "stop\n");
    EXPECT_EQ(standing(), "state 0 playing 0 position 1024 total 1536");
    EXPECT_EQ(served(), "fpAU:Stopped!\n");
    EXPECT_EQ(idle(), nullptr);
    EXPECT_EQ(block(), Samples(512, 0.0f)); // the unit does not call any more
    EXPECT_EQ(served(), "");
}

TEST_F(PlayerTest, TheIdleFunctionOfAZoneOutlivesThePlay) {
    give_sound(10000);
    play();
    block();
    fbstop1();
    block();
    zgen.state = 2;
    block();
    zgen.state = 0; // what counts is how it stood at the block
    EXPECT_EQ(served(), "fpAU:Stopped!\n");
    EXPECT_EQ(idle(), Idle);
}

TEST_F(PlayerTest, AStartComesBehindWhatTheLastPlayAskedFor) {
    for (void (*start)() : {+[] { fbplay1(0.0f, 4000); }, fbresume1}) {
        give_sound(4000);
        fresh_player();
        play();
        block();
        fbstop1();
        block();
        block();
        const std::string said = printed(start);
        EXPECT_TRUE(said.starts_with("fpAU:Stopped!\n" + frames_line(4000))) << said;
        EXPECT_EQ(served(), "");
        EXPECT_EQ(idle(), Idle);
    }
}

TEST_F(PlayerTest, EndFadesOverTheBlockBeforeTheLast) {
    give_sound(3 * 512 + 100);
    play();
    block();
    EXPECT_EQ(block(), level(512));
    EXPECT_EQ(standing(), "state 7 playing 1 position 1024 total 1024");
    EXPECT_EQ(block(), falling(1024));
    // The fade was complete before the sound was used up: the place is behind it.
    EXPECT_EQ(standing(), "state 0 playing 0 position 1536 total 1536");
    audio.heard();
    EXPECT_EQ(block(512, 0.5f), Samples(512, 0.0f));
    EXPECT_EQ(audio.heard(), "stop\n");
    EXPECT_EQ(standing(), "state 0 playing 0 position 0 total 0");
    EXPECT_EQ(served(), "fpAU:Stopped!\n");
}

TEST_F(PlayerTest, FadeBeginsWithLessThanTwoBlocksLeft) {
    give_sound(4 * 512);
    play();
    block();
    block(); // two blocks are left, which is not less
    EXPECT_EQ(fplayer.state, 2);
    block();
    EXPECT_EQ(fplayer.state, 7);
    // One block is left: the sound is used up one frame before its end.
    Samples expected = falling(3 * 512);
    expected[511] = 0.0f;
    EXPECT_EQ(block(), expected);
    EXPECT_EQ(standing(), "state 0 playing 0 position 0 total 0");
    EXPECT_EQ(served(), "fpAU:Stopped!\n");
}

TEST_F(PlayerTest, AnUnknownStateLeavesTheBlockAlone) {
    give_sound(10000);
    play();
    fplayer.state = 5;
    EXPECT_EQ(block(512, 0.25f), Samples(512, 0.25f));
    EXPECT_EQ(standing(), "state 5 playing 1 position 0 total 512");
}

TEST_F(PlayerTest, BlocksOfEachSizeFollowTheSameLaw) {
    for (const uint32_t frames : {1u, 511u, 512u, 4096u}) {
        give_sound(30000);
        fresh_player();
        play();
        EXPECT_EQ(block(frames), rising(0, frames)) << frames;
        EXPECT_EQ(fplayer.state, 2) << frames;
        EXPECT_EQ(block(frames), level(frames, frames)) << frames;
        fbstop1();
        EXPECT_EQ(block(frames), falling(2 * frames, frames)) << frames;
        EXPECT_EQ(fplayer.position, 3.0 * frames) << frames;
        EXPECT_EQ(block(frames, 0.5f), Samples(frames, 0.0f)) << frames;
        EXPECT_EQ(served(), "fpAU:Stopped!\n") << frames;
    }
}

TEST_F(PlayerTest, EmptyBlocksMoveTheStatesOn) {
    give_sound(10000);
    fplayer.metering = 1;
    play();
    block(0);
    EXPECT_EQ(standing(), "state 2 playing 1 position 0 total 0");
    block(0);
    EXPECT_EQ(standing(), "state 2 playing 1 position 0 total 0");
    fbstop1();
    block(0);
    EXPECT_EQ(standing(), "state 0 playing 0 position 0 total 0");
    EXPECT_EQ(fplayer.level, 0.0f);
    EXPECT_EQ(fplayer.blocks, 3);
}

// --- short and ended sounds --------------------------------------------------------------------

TEST_F(PlayerTest, AShortSoundFadesOutStraightAfterItsFadeIn) {
    give_sound(800);
    play();
    EXPECT_EQ(block(), rising(0));
    EXPECT_EQ(fplayer.state, 7);
    Samples expected = falling(512);
    std::fill(expected.begin() + 287, expected.end(), 0.0f);
    EXPECT_EQ(block(512, 0.5f), expected);
    EXPECT_EQ(standing(), "state 0 playing 0 position 0 total 0");
    EXPECT_EQ(served(), "fpAU:Stopped!\n");
    EXPECT_EQ(block(), Samples(512, 0.0f));
}

TEST_F(PlayerTest, FromTwoBlocksOnABlockIsPlayedBehindTheFadeIn) {
    for (const auto &[frames, state] : {std::pair{1023, 7}, {1024, 2}, {1025, 2}, {1535, 2}}) {
        give_sound(frames);
        fresh_player();
        play();
        EXPECT_EQ(block(), rising(0)) << frames;
        EXPECT_EQ(fplayer.state, state) << frames;
    }
    EXPECT_EQ(block(), level(512));
    EXPECT_EQ(fplayer.state, 7);
}

TEST_F(PlayerTest, ASoundOfLessThanABlockEndsInItsFadeIn) {
    give_sound(100);
    play();
    audio.heard();
    Samples expected = rising(0);
    std::fill(expected.begin() + 99, expected.end(), 0.0f);
    EXPECT_EQ(block(512, 0.5f), expected);
    EXPECT_EQ(standing(), "state 0 playing 0 position 0 total 0");
    EXPECT_EQ(audio.heard(), "stop\n");
    EXPECT_EQ(served(), "fpAU:Stopped!\n");
    EXPECT_EQ(idle(), nullptr);
}

TEST_F(PlayerTest, AnEmptySoundIsSilence) {
    for (const int64_t frames : {int64_t{0}, int64_t{1}}) {
        give_sound(frames);
        play();
        EXPECT_EQ(block(512, 0.5f), Samples(512, 0.0f));
        EXPECT_EQ(standing(), "state 0 playing 0 position 0 total 0");
        EXPECT_EQ(served(), "fpAU:Stopped!\n");
    }
}

TEST_F(PlayerTest, AfterTheEndItPlaysAnew) {
    give_sound(2000);
    play();
    for (int i = 0; i < 8; i++) {
        block();
    }
    EXPECT_EQ(fplayer.position, 0.0);
    EXPECT_EQ(fplayer.playing, 0);
    play();
    EXPECT_EQ(block(), rising(0));
}

// --- pause and resume --------------------------------------------------------------------------

TEST_F(PlayerTest, PauseAndResumeLoseNoFrame) {
    give_sound(10000);
    sndstart = 0.5f;
    play();
    block();
    block();
    fbstop1();
    EXPECT_EQ(block(), falling(1024));
    block();
    served();
    fplayer.buffer = nullptr;
    N = 0.0f;
    EXPECT_EQ(printed([] { fbresume1(); }), frames_line(10000) + "zgen.state = 0\n");
    EXPECT_EQ(fplayer.buffer, fBuffer);
    EXPECT_EQ(N, 2000.0f);
    EXPECT_EQ(standing(), "state 1 playing 1 position 1536 total 1536");
    EXPECT_EQ(fplayer.frames_played, 1535);
    EXPECT_EQ(fplayer.seconds, static_cast<float>(1536.0 / 44100.0) + 0.5f);
    EXPECT_EQ(idle(), Idle);
    EXPECT_EQ(block(), rising(1536));
    EXPECT_EQ(block(), level(2048));
    sndstart = 0.0f;
}

TEST_F(PlayerTest, ResumeRightAfterTheFadeKeepsTheUnitRunning) {
    give_sound(10000);
    play();
    block();
    fbstop1();
    block();
    resume();
    EXPECT_EQ(block(), rising(1024));
    EXPECT_EQ(block(), level(1536));
    EXPECT_EQ(served(), "");
}

TEST_F(PlayerTest, ResumeDuringAPlayOnlyTouchesAStoppedState) {
    give_sound(10000);
    dbp = 1;
    play();
    fplayer.state = 3;
    EXPECT_EQ(printed([] { fbresume1(); }), "resuming\n");
    EXPECT_EQ(fplayer.state, 3);
    fplayer.state = 0;
    EXPECT_EQ(printed([] { fbresume1(); }), "resuming\n");
    EXPECT_EQ(fplayer.state, 1);
}

TEST_F(PlayerTest, ResumeWithoutASound) {
    EXPECT_EQ(printed([] { fbresume1(); }), frames_line(0) + "NULL Buffer!\n");
    EXPECT_EQ(standing(), "state 1 playing 0 position 0 total 0");
    EXPECT_EQ(audio.heard(), "");
}

TEST_F(PlayerTest, APauseInTheLastBlockRewinds) {
    give_sound(2000);
    play();
    block();
    block();
    fbstop1();
    block();
    EXPECT_EQ(fplayer.position, 1536.0);
    block();
    EXPECT_EQ(fplayer.position, 0.0); // 1536 is within a block of 2000
    EXPECT_EQ(totalfFrames, 0);
}

TEST_F(PlayerTest, ASecondStopDuringTheFadeChangesNothing) {
    give_sound(10000);
    play();
    block();
    fbstop1();
    fbstop1();
    EXPECT_EQ(block(), falling(512));
    fbstop1(); // nothing plays any more
    EXPECT_EQ(standing(), "state 0 playing 0 position 1024 total 1024");
    EXPECT_EQ(block(), Samples(512, 0.0f));
}

TEST_F(PlayerTest, StopWithoutAUnitOrAPlayDoesNothing) {
    fbstop1();
    EXPECT_EQ(fplayer.state, 0);
    fplayer.playing = 1;
    fplayer.unit = nullptr;
    fbstop1();
    EXPECT_EQ(fplayer.state, 0);
}

// --- loops -------------------------------------------------------------------------------------

TEST_F(PlayerTest, ALoopBeginsAgainWithAFadeIn) {
    give_sound(3 * 512 + 100);
    fplayer.loop = 1;
    play();
    for (int round = 0; round < 3; round++) {
        EXPECT_EQ(block(), rising(0)) << round;
        EXPECT_EQ(block(), level(512)) << round;
        EXPECT_EQ(block(), falling(1024)) << round;
        EXPECT_EQ(standing(), "state 1 playing 1 position 0 total 0") << round;
    }
    EXPECT_EQ(served(), "");
}

TEST_F(PlayerTest, ALoopOfWholeBlocksBeginsAgainToo) {
    give_sound(4 * 512);
    fplayer.loop = 1;
    play();
    for (int round = 0; round < 3; round++) {
        EXPECT_EQ(block(), rising(0)) << round;
        block();
        block();
        Samples expected = falling(3 * 512);
        expected[511] = 0.25f; // a used up loop leaves the block as it was
        EXPECT_EQ(block(512, 0.25f), expected) << round;
        EXPECT_EQ(standing(), "state 1 playing 1 position 0 total 0") << round;
    }
}

TEST_F(PlayerTest, ALoopOfLessThanABlockBeginsAgainWithEachBlock) {
    give_sound(100);
    fplayer.loop = 1;
    play();
    Samples expected = rising(0);
    std::fill(expected.begin() + 99, expected.end(), 0.0f);
    EXPECT_EQ(block(), expected);
    EXPECT_EQ(block(), expected);
    fbstop1();
    expected = falling(0);
    std::fill(expected.begin() + 99, expected.end(), 0.0f);
    EXPECT_EQ(block(), expected);
}

TEST_F(PlayerTest, AnEndedLoopStops) {
    give_sound(3 * 512 + 100);
    fplayer.loop = 1;
    play();
    block();
    block();
    fplayer.loop = 0;
    EXPECT_EQ(block(), falling(1024));
    EXPECT_EQ(fplayer.playing, 0);
}

// --- what the block measures and counts --------------------------------------------------------

TEST_F(PlayerTest, LevelIsTheSampleOfLargestMagnitude) {
    give_sound(10000);
    fBuffer[600] = -3.0f;
    fBuffer[700] = 2.5f;
    play();
    block();
    const float first = fplayer.level;
    block();
    EXPECT_EQ(fplayer.level, -3.0f);
    EXPECT_EQ(fplayer.prev_level, first);
}

TEST_F(PlayerTest, MeteringTakesTheRootMeanSquare) {
    give_sound(10000);
    std::fill_n(fBuffer, 10000, 0.5f);
    fplayer.metering = 1;
    play();
    block();
    block();
    EXPECT_EQ(fplayer.level, static_cast<float>(0.5 * 1.414));
}

TEST_F(PlayerTest, TheSilenceBehindTheSoundIsNotMeasured) {
    give_sound(2);
    fBuffer[0] = 0.0f;
    fplayer.metering = 1;
    play();
    block();
    EXPECT_EQ(fplayer.level, 0.0f);
}

TEST_F(PlayerTest, TimePlayedCountsTheFirstBlockTwice) {
    give_sound(10000);
    printed([] { fbplay1(3.0f, 10000); });
    EXPECT_EQ(fplayer.seconds, 3.0f);
    block();
    EXPECT_EQ(fplayer.frames_played, 1024);
    EXPECT_EQ(fplayer.seconds, 1024.0f / 44100.0f);
    block();
    EXPECT_EQ(fplayer.frames_played, 1536);
    EXPECT_EQ(fplayer.seconds, 1536.0f / 44100.0f);
    EXPECT_EQ(fplayer.blocks, 2);
}

TEST_F(PlayerTest, CountersWrapAtTheirEnd) {
    give_sound(10000);
    play();
    block();
    fplayer.frames_played = fplayer.blocks = INT32_MAX;
    block();
    EXPECT_EQ(fplayer.frames_played, INT32_MIN + 511);
    EXPECT_EQ(fplayer.blocks, INT32_MIN);
}

TEST_F(PlayerTest, DebugPrintsThePlaceOfEachBlock) {
    give_sound(10000);
    dbp = 1;
    play();
    block();
    block();
    EXPECT_EQ(served(), "l = 0\nl = 512\n");
}

// --- a sound that changes under the player -----------------------------------------------------

TEST_F(PlayerTest, ALostSoundLeavesBlockAndStateAlone) {
    give_sound(10000);
    play();
    block();
    float *kept = fBuffer;
    fBuffer = nullptr;
    EXPECT_EQ(block(512, 0.25f), Samples(512, 0.25f));
    EXPECT_EQ(standing(), "state 2 playing 1 position 512 total 512");
    EXPECT_EQ(served(), "Can't access input buffer\n");
    fBuffer = kept;
}

TEST_F(PlayerTest, ANewSoundIsPlayedFromThePlaceReached) {
    give_sound(10000);
    play();
    block();
    block();
    give_sound(5000);
    EXPECT_EQ(block(), level(1024));
}

TEST_F(PlayerTest, AShorterSoundEndsThePlay) {
    give_sound(10000);
    play();
    block();
    block();
    give_sound(300);
    EXPECT_EQ(block(512, 0.5f), Samples(512, 0.0f));
    EXPECT_EQ(standing(), "state 0 playing 0 position 0 total 0");
    EXPECT_EQ(served(), "fpAU:Stopped!\n");
}

TEST_F(PlayerTest, APlaceOutsideTheSoundIsSilent) {
    give_sound(2000);
    for (const double place : {-5.0, 1e300, std::nan(""), 1999.0}) {
        fresh_player();
        play();
        fplayer.position = place;
        block();
        EXPECT_EQ(fplayer.playing, 1) << place;
    }
}

// --- creation ----------------------------------------------------------------------------------

TEST_F(PlayerTest, TheUnitIsCreatedStepByStep) {
    audio.rate = 48000.0;
    CreateAndConnectFpOutputUnit1(&fplayer);
    EXPECT_EQ(audio.heard(), "find auou ahal appl\n"
                             "new\n"
                             "set 23 scope 1 element 0 size 16\n"
                             "get 2 scope 2 element 0 size 8\n"
                             "set 8 scope 1 element 0 size 40\n"
                             "initialize\n");
    EXPECT_EQ(audio.units[1].callback.procedure, FloatBufRenderProc1);
    EXPECT_EQ(audio.units[1].callback.context, &fplayer);
    EXPECT_EQ(fplayer.unit, &audio.units[1]);
    EXPECT_EQ(R, 48000.0);
}
