#include "tests/interact/keys_support.h"

#include "display/view.h"
#include "live/fbp.h"
#include "live/live.h"
#include "store/machine.h"
#include "synth/sound.h"
#include "synth/syn.h"
#include "tests/support/console.h"

#include <algorithm>

namespace {

int32_t (*const no_player)(float, int64_t) = play_rendered;
int last_posted = 0;

int32_t one_worker() {
    return 1;
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

void KeysTest::SetUp() {
    LivePlayTest::SetUp();
    fill_store(small_content());
    flat = bps = 1;
    gShowInfo = gShowHelp = 1;
    STOP = 0;
    CreateAndConnectFpOutputUnit1(&fplayer);
    play_rendered = fbplay1;
    worker_count = one_worker;
}

void KeysTest::TearDown() {
    play_rendered = no_player;
    worker_count = getCPUnum;
    fplayer = {};
    totalfFrames = 0;
    drop_sound();
    LivePlayTest::TearDown();
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

bool players_left_alone() {
    return starts() + stops() == 0 && pauses().empty();
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
