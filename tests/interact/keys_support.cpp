#include "tests/interact/keys_support.h"

#include "display/view.h"
#include "interact/transport.h"
#include "live/live.h"
#include "tests/support/console.h"

#include <algorithm>

const float *test_sound = nullptr;
void (*during_wait)() = nullptr;

namespace {

std::string calls;
int last_posted = 0;

void note(const std::string &call) {
    calls += (calls.empty() ? "" : " ") + call;
}

/// Names the render; the name of a file has no place in a call by a key.
void note_render(const char *what, int32_t mode, const char *name) {
    note(what + std::to_string(mode) + (name == nullptr ? "" : name));
}

Transport recording_transport() {
    Transport t = {};
    t.synsumWT = [](int32_t mode, char *name) { note_render("synsumWT ", mode, name); };
    t.synssumWT = [](int32_t mode, char *name) { note_render("synssumWT ", mode, name); };
    t.rendered_sound = [] { return test_sound; };
    t.rendered_frames = [] { return int64_t{77}; };
    t.fbplay1 = [](float start, int64_t frames) {
        note("fbplay1 " + std::to_string(start) + " " + std::to_string(frames));
        return 0;
    };
    t.fbstop1 = [] { note("fbstop1"); };
    t.fbresume1 = [] { note("fbresume1"); };
    t.tqplay = [](const float *start, const float *end) {
        EXPECT_EQ(start, &zgen.starttime);
        EXPECT_EQ(end, &zgen.endtime);
        note("tqplay");
    };
    t.AudioOutputUnitStop = [](void *unit) {
        EXPECT_EQ(unit, zgen.unit);
        note("unit_stop");
        return 0;
    };
    t.set_N = [](float value) { note("N " + std::to_string(static_cast<int>(value))); };
    t.qmotion = zone_idle;
    t.Idle = player_idle;
    t.wait = [](uint32_t microseconds) {
        note("wait " + std::to_string(microseconds));
        if (during_wait != nullptr) {
            during_wait();
        }
    };
    return t;
}

void players_at_rest() {
    wgen = {};
    zgen = {};
    fplayer = {};
    live_gain = 0.2f;
    STOP = 0;
    test_sound = nullptr;
    during_wait = nullptr;
    calls.clear();
}

std::string stroke(const std::string &replies, int modifiers, const std::function<void()> &work) {
    gl_double::Recorder &r = gl_double::recorder();
    r.modifiers = modifiers;
    const int before = r.redisplays;
    const std::string text = conversation(replies, work);
    last_posted = r.redisplays - before;
    return text;
}

/// Everything that a selection is made of, to compare.
std::vector<int64_t> selection_state() {
    const FoundPoints &q = foundSubscriptions;
    return {selected, sweepSelect, directSelect, found,   numfound, selecting, q.part0,
            q.point0, q.part1,     q.point1,     q.count, ptsize,   X,         Y};
}

} // namespace

void zone_idle() {}
void player_idle() {
    note("idle");
}

void KeysTest::SetUp() {
    PointerTest::SetUp();
    fill_store(small_content());
    flat = bps = 1;
    gShowInfo = gShowHelp = 1;
    players_at_rest();
    transport = recording_transport();
}

void KeysTest::TearDown() {
    transport = unbuilt_transport();
    players_at_rest();
    PointerTest::TearDown();
}

std::string press(unsigned char code, int modifiers, const std::string &replies) {
    return stroke(replies, modifiers, [=] { key(code, 0, 0); });
}

std::string press_special(int code, int modifiers) {
    return stroke("", modifiers, [=] { special(code, 0, 0); });
}

int posted() {
    return last_posted;
}

void expect_nothing(unsigned char code, int modifiers) {
    const structure::Snapshot store = structure::snapshot();
    const std::vector<std::string> flagged = flags();
    const std::vector<int64_t> state = selection_state();
    EXPECT_EQ(press(code, modifiers), "") << code << " with " << modifiers;
    EXPECT_EQ(posted(), 0) << code << " with " << modifiers;
    EXPECT_TRUE(structure::same_points(structure::snapshot(), store))
        << code << " with " << modifiers;
    EXPECT_EQ(flags(), flagged) << code << " with " << modifiers;
    EXPECT_EQ(selection_state(), state) << code << " with " << modifiers;
}

std::string player_calls() {
    return calls;
}

void forget_player_calls() {
    calls.clear();
}

std::vector<int> all_modifiers_but(const std::vector<int> &left_out) {
    std::vector<int> states;
    for (int state = 0; state < key_states; ++state) {
        if (std::find(left_out.begin(), left_out.end(), state) == left_out.end()) {
            states.push_back(state);
        }
    }
    return states;
}
