// What other threads ask of the interface thread, and the idle function of the player.
#include "live/requests.h"

#include "live/idle.h"
#include "store/settings.h"
#include "tests/live/player_support.h"

#include <thread>

namespace {

void some_idle() {}

class Requests : public testing::Test {
  protected:
    void SetUp() override {
        gl_double::reset();
        printed([] { serve_requests(); });
        gl_double::reset();
        zgen = {};
        fplayer = {};
    }
    void TearDown() override {
        zgen = {};
        fplayer = {};
        dbp = 0;
    }
    static std::string served() {
        return printed([] { serve_requests(); });
    }
    static bool idles() {
        return gl_double::recorder().callbacks.idle != nullptr;
    }
};

} // namespace

TEST_F(Requests, NothingAskedNothingDone) {
    glutIdleFunc(some_idle);
    EXPECT_EQ(served(), "");
    EXPECT_TRUE(idles());
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(Requests, EachTextIsPrintedAsItStands) {
    ask_print(Said::stopped);
    ask_print(Said::no_buffer);
    ask_print(Said::read_position, 5000000000.0);
    ask_print(Said::odd_block, 480.0);
    ask_print(Said::zone_time, 1.5);
    EXPECT_EQ(served(), "fpAU:Stopped!\nCan't access input buffer\nl = 5000000000\nINNF = 480\n"
                        "Time: 1.500000\n");
    EXPECT_EQ(served(), "");
}

TEST_F(Requests, LinesBeyondTheRoomAreDropped) {
    for (int i = 0; i < 300; i++) {
        ask_print(Said::odd_block, i);
    }
    std::string expected;
    for (int i = 0; i < 256; i++) {
        expected += "INNF = " + std::to_string(i) + "\n";
    }
    EXPECT_EQ(served(), expected);
    ask_print(Said::odd_block, 7);
    EXPECT_EQ(served(), "INNF = 7\n");
}

TEST_F(Requests, TheIdleFunctionGoesUnlessAZoneOrThePlayerRuns) {
    glutIdleFunc(some_idle);
    ask_idle_off();
    zgen.state = 2;
    served();
    EXPECT_TRUE(idles());
    zgen.state = 0;
    served(); // a request is served once
    EXPECT_TRUE(idles());
    ask_idle_off();
    fplayer.playing = 1;
    served();
    EXPECT_TRUE(idles());
    fplayer.playing = 0;
    ask_idle_off();
    served();
    EXPECT_FALSE(idles());
}

TEST_F(Requests, ManyRedisplaysAreOne) {
    ask_redisplay();
    ask_redisplay();
    served();
    served();
    EXPECT_EQ(gl_double::recorder().redisplays, 1);
}

TEST_F(Requests, TheTimerServesAgainAndAgain) {
    serve_by_timer();
    for (int i = 0; i < 3; i++) {
        ask_print(Said::odd_block, i);
        EXPECT_EQ(printed([] { gl_double::fire_timers(); }), "INNF = " + std::to_string(i) + "\n");
    }
}

TEST_F(Requests, ThreadsMayAskTogether) {
    constexpr int each = 2000;
    const auto ask = [](int first) {
        for (int i = 0; i < each; i++) {
            ask_print(Said::odd_block, first + i);
            ask_redisplay();
        }
    };
    std::string said;
    std::thread one(ask, 0), two(ask, 100000);
    for (int i = 0; i < 20; i++) {
        said += served();
    }
    one.join();
    two.join();
    said += served();
    int last_one = -1, last_two = 99999, lines = 0;
    for (size_t at = 0; at < said.size(); at = said.find('\n', at) + 1, lines++) {
        const int number = std::stoi(said.substr(at + 7));
        int &last = number < 100000 ? last_one : last_two;
        EXPECT_GT(number, last); // whole, and in order
        last = number;
    }
    EXPECT_GE(lines, 256);
}

TEST_F(Requests, IdleSpacesOutItsRedraws) {
    int &now = gl_double::recorder().elapsed_time;
    const auto draws = [] {
        const int before = gl_double::recorder().redisplays;
        Idle();
        return gl_double::recorder().redisplays - before;
    };
    now = 1000000; // long after any mark
    EXPECT_EQ(draws(), 1);
    now += 500; // drawn: not again before a second is over
    EXPECT_EQ(draws(), 0);
    now += 500;
    EXPECT_EQ(draws(), 0);
    now += 1;
    EXPECT_EQ(draws(), 1);
    now += 100; // soon after the mark each call draws, and the mark stays
    EXPECT_EQ(draws(), 1);
    EXPECT_EQ(draws(), 1);
    now += 1; // not drawn since: a new mark
    EXPECT_EQ(draws(), 1);
    now += 1000;
    EXPECT_EQ(draws(), 0);
}

TEST_F(Requests, IdleTellsUnderDebug) {
    dbp = 1;
    int &now = gl_double::recorder().elapsed_time;
    now = 2000000;
    EXPECT_EQ(complained([] { EXPECT_EQ(printed(Idle), "i"); }), "ET = 2000000\n");
    now += 50;
    EXPECT_EQ(complained([] { EXPECT_EQ(printed(Idle), "i"); }), "");
}
