// Random menu commands with random replies on small random stores, with random selections, stale
// found points, view flags, selection operations, mouse events and key strokes in between: the
// store stays whole after every one of them. QUILLGROVE_RANDOM_COMMANDS asks for another number of
// commands.
#include "interact/menu.h"

#include "display/view.h"
#include "interact/choose.h"
#include "interact/keys.h"
#include "interact/select.h"
#include "interact/shell.h"
#include "live/live.h"
#include "store/settings.h"
#include "tests/interact/keys_support.h"
#include "tests/support/console.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>

namespace {

constexpr int usual_commands = 2000;
constexpr int tame_run = 8; // commands on a store, few enough that finite replies keep times finite
constexpr int long_run = 150;
constexpr int32_t most_points = 3000;
constexpr float spoilt_span = -5.0f; // what a refresh of the pitch range replaces

/// Every row but "Quit", and some values without one.
const int values[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 30, 101, 11, 12, 13,
                      14, 15, 80, 81, 82, 16, 17, 18, 19, 20, 21, 22, 23,  37, 24, 25,
                      34, 35, 73, 74, 83, 84, 27, 28, 71, 72, 75, 26, 50,  99, -3, 102};

/// Rows that change points, chosen more often.
const int edits[] = {11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23};

const char *const tame_words[] = {
    "0",    "1",   "-1",  "2",    "3",  "0.5",  "-0.25",       "100", "440",  "-440",
    "1e3",  "-99", "0.1", "0.05", "-2", "1e-5", "3/2",         "+P8", "-m3",  "v",
    "@",    "*",   "-c",  "<",    ">",  "size", "odd",         "abc", "endt", "start",
    "0x10", "1/0", "-",   "+",    ".",  "e",    "\x01\xff\x80"};
const char *const wild_words[] = {
    "nan", "inf", "-inf", "1e39", "-1e39", "99999999999", "-99999999999999999999", "1e-46"};
const char *const types[] = {"a", "e", "o", "p", "a", "h", "1", "\xff", "-"};
const char *const decays[] = {"c", "l", "r", "i", "q", "e", "b", "c", "s", "\xff"};
const char *const names[] = {"/nonexistent/x", "/nonexistent/a\\ b", "/nonexistent/\x01\xfe"};

void (*const selection_operations[])() = {
    select_left,     select_right,      select_vertical, select_partials,  select_all,
    select_inverted, select_p_inverted, deselect_group,  select_none,      oneMoreL,
    oneLessL,        oneMoreR,          oneLessR,        select_remainder, select_trailer,
    upfreq,          downfreq};

class RandomCommands : public KeysTest {
  protected:
    void SetUp() override {
        KeysTest::SetUp();
        menu_state = {};
        rebuild_menu();
        run_command_line = [](const char *) { return 0; };
    }
    void TearDown() override {
        run_command_line = std::system;
        menu_state = {};
        KeysTest::TearDown();
    }

    std::mt19937 random;
    std::string log;  // what happened to this store
    bool tame = true; // every reply so far was a finite number of moderate size, or no number

    int32_t below(int32_t n) {
        return std::uniform_int_distribution<int32_t>(0, n - 1)(random);
    }
    bool one_in(int32_t n) {
        return below(n) == 0;
    }
    float between(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    }
    template <typename T, size_t n> const T &any_of(const T (&choices)[n]) {
        return choices[below(static_cast<int32_t>(n))];
    }

    void note(const std::string &what) {
        log += what + "\n";
    }

    Partial random_partial(bool still);
    void random_store(int number);
    void random_flags();
    void random_found();
    void random_view();
    void random_mouse();
    void random_strokes();
    void random_event();

    std::string random_word();
    std::string random_words(int32_t most);
    std::string random_replies(int value, int modifiers);
    void random_command();
    void check_store();
    void check_range();
};

Partial RandomCommands::random_partial(bool still) {
    Partial partial;
    float time = still ? 0.5f : 0.1f * static_cast<float>(below(12));
    const int32_t n = one_in(3) ? 1 : 1 + below(7);
    for (int32_t j = 0; j < n; ++j) {
        const float freq = one_in(4) ? 440.0f : between(0.5f, 23000.0f);
        partial.push_back({time, freq, one_in(5) ? -10.0f : between(-150.0f, 6.0f)});
        time += still || one_in(6) ? 0.0f : one_in(4) ? between(0.01f, 0.2f) : 0.1f;
    }
    return partial;
}

void RandomCommands::random_store(int number) {
    random.seed(static_cast<unsigned>(number));
    log = "store " + std::to_string(number) + "\n";
    tame = true;
    reset_selection();
    std::vector<Partial> content;
    const bool still = one_in(10); // a sound of no length
    for (int32_t n = 1 + below(6); n > 0; --n) {
        content.push_back(random_partial(still));
    }
    fill_store(content);
    random_view();
    random_flags();
}

void RandomCommands::random_flags() {
    const int32_t rarity = 1 + below(6);
    for (int32_t i = 0; i < partials; ++i) {
        const bool whole = one_in(5);
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const bool flagged = whole || one_in(rarity);
            parray[i][j].selected = flagged ? static_cast<uint16_t>(one_in(30) ? 2 : 1) : 0;
        }
        peval[i].selected = static_cast<int16_t>(below(2));
    }
    selected = one_in(5) ? 0 : 1;
    sweepSelect = static_cast<uint16_t>(below(2));
    note("flags, selected " + std::to_string(selected));
}

/// Slots that name neighbours, ends, anything, or points of a store that is gone.
void RandomCommands::random_found() {
    const int32_t range = one_in(5) ? 2 * partials + 4 : partials;
    FoundPoints queue = {below(range), 0, below(range), 0, below(3)};
    const auto count_of = [](int32_t part) { return part < partials ? npoints[part] : 5; };
    queue.point0 = one_in(2) ? count_of(queue.part0) - 1 : below(count_of(queue.part0) + 1);
    queue.point1 = one_in(2) ? 0 : below(count_of(queue.part1) + 1);
    if (one_in(3)) {
        queue.part1 = queue.part0;
        queue.point1 = queue.point0 + (one_in(2) ? 1 : -1);
    }
    if (one_in(6)) {
        queue.part0 = queue.point0 = -1;
    }
    if (one_in(8)) {
        (one_in(2) ? queue.point0 : queue.part1) = one_in(2) ? INT32_MAX : INT32_MIN;
    }
    foundSubscriptions = queue;
    numfound = one_in(4) ? below(3) : queue.count;
    found = one_in(6) ? 0 : 1;
    directSelect = below(2);
    if (one_in(2)) {
        selected = 0;
    }
    note("found " + std::to_string(queue.part0) + " " + std::to_string(queue.point0) + ", " +
         std::to_string(queue.part1) + " " + std::to_string(queue.point1) + ", count " +
         std::to_string(queue.count) + ", numfound " + std::to_string(numfound));
}

void RandomCommands::random_view() {
    flat = below(2);
    bps = one_in(4) ? 0 : 1;
    logpos = below(2);
    clo = one_in(6) ? flat : 0;
    verbose = one_in(8) ? 1 : 0;
    dbp = one_in(8) ? 1 : 0;
    rebuild_menu();
    note("view: flat " + std::to_string(flat) + " bps " + std::to_string(bps));
}

void RandomCommands::random_mouse() {
    const int button = one_in(4) ? GLUT_MIDDLE_BUTTON : GLUT_LEFT_BUTTON;
    const int modifiers = one_in(2) ? 0 : below(8);
    const int x = below(470) - 10;
    const int y = below(470) - 10;
    printed([=, this] {
        mouse_down(button, x, y, modifiers);
        const int to_x = one_in(2) ? x : below(470) - 10;
        for (int32_t moves = below(4); moves > 0; --moves) {
            mouse_move(below(470), below(470));
        }
        if (!one_in(10)) {
            mouse_up(button, to_x, below(470), modifiers);
        }
    });
    note("mouse " + std::to_string(button) + " with " + std::to_string(modifiers));
}

/// A few strokes of any key, an arrow among two.
void RandomCommands::random_strokes() {
    gl_double::Recorder &r = gl_double::recorder();
    for (int32_t strokes = 1 + below(6); strokes > 0; --strokes) {
        r.modifiers = below(8);
        const bool arrow = one_in(2);
        const int code = arrow ? GLUT_KEY_LEFT + below(4) : below(256);
        conversation(any_of(tame_words), [=] {
            if (arrow) {
                special(code, 0, 0);
            } else {
                key(static_cast<unsigned char>(code), 0, 0);
            }
        });
        note((arrow ? "arrow " : "key ") + std::to_string(code) + " with " +
             std::to_string(r.modifiers));
    }
    r.timers.clear();
    check_store();
}

void RandomCommands::random_event() {
    switch (below(10)) {
    case 0:
        random_flags();
        break;
    case 1:
    case 2:
        random_found();
        break;
    case 3:
        random_view();
        break;
    case 4:
        random_mouse();
        break;
    case 5:
        printed([] { frame(); });
        break;
    case 6:
    case 7:
        random_strokes();
        break;
    case 8: {
        const size_t which =
            static_cast<size_t>(below(static_cast<int32_t>(std::size(selection_operations))));
        selection_operations[which]();
        note("selection operation " + std::to_string(which));
        break;
    }
    default:
        printed([this] {
            cycleSelection(one_in(2) ? 1 : -1);
            one_in(2) ? chooseSingle_left(below(3)) : chooseSingle_right(below(3));
        });
        note("cycled and moved");
    }
}

std::string RandomCommands::random_word() {
    if (one_in(12)) {
        tame = false;
        return any_of(wild_words);
    }
    if (one_in(40)) {
        tame = false;
        return std::string(10000, one_in(2) ? 'x' : '7');
    }
    return one_in(3) ? std::to_string(between(-3.0f, 3.0f)) : any_of(tame_words);
}

std::string RandomCommands::random_words(int32_t most) {
    std::string text;
    for (int32_t n = below(most + 1); n > 0; --n) {
        text += random_word() + (one_in(3) ? "\n" : " ");
    }
    return text;
}

/// What waits on the console: mostly an empty line for the opening, then words. Where a name is
/// asked for, it is one under which nothing can be written, and a letter is one letter.
std::string RandomCommands::random_replies(int value, int modifiers) {
    const std::string opening = one_in(15) ? "" : one_in(10) ? "left over\n" : "\n";
    if (value == 80) {
        const std::string words[] = {random_word(), any_of(types), random_word(), any_of(decays)};
        std::string text = "\n";
        for (int32_t k = 0, n = one_in(3) ? below(5) : 4; k < n; ++k) {
            text += words[k] + "\n";
        }
        return text;
    }
    const bool named = value == 37 || value == 27 || value == 28 || (value >= 73 && value <= 84) ||
                       value == 24 || value == 25 || value == 34 || value == 35;
    if (named && (value < 80 || value > 82)) {
        const bool cancel = one_in(3) && (value != 27 || modifiers != GLUT_ACTIVE_SHIFT);
        const std::string name = cancel ? "-c" : any_of(names);
        return (value == 28 ? "" : opening) + (one_in(5) ? "" : name + "\n");
    }
    return (value == 101 ? "" : opening) + random_words(5) + (one_in(2) ? "\n" : "");
}

void RandomCommands::random_command() {
    const int value = one_in(2) ? any_of(edits) : any_of(values);
    const int modifiers = one_in(4) ? below(8) : 0;
    const std::string replies = random_replies(value, modifiers);
    note("command " + std::to_string(value) + " with " + std::to_string(modifiers) + ": " +
         replies.substr(0, 200));
    const float span = fspan;
    fspan = spoilt_span;
    command(value, replies, modifiers);
    if (fspan == spoilt_span) {
        fspan = span;
    } else {
        check_range();
    }
    check_store();
    for (const std::string &error : gl_double::recorder().errors) {
        EXPECT_TRUE(value == 4 || value == 2) << error;
        EXPECT_EQ(error, "no such menu item");
    }
    gl_double::recorder().errors.clear();
    gl_double::forget_drawing();
}

/// Every record is there, and times have stayed numbers.
void RandomCommands::check_store() {
    ASSERT_GE(partials, 1);
    ASSERT_TRUE(sndstart >= 0.0f || (std::isnan(sndstart) && !tame)) << sndstart;
    ASSERT_TRUE(std::isfinite(sndlen) || !tame);
    for (int32_t i = 0; i < partials; ++i) {
        ASSERT_GE(npoints[i], 1);
        const PartialEval summary = peval[i];
        peval[i] = summary;
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const Breakpoint point = parray[i][j];
            parray[i][j] = point;
            ASSERT_TRUE(std::isfinite(point.time) || !tame) << i << " " << j;
            ASSERT_EQ(point.scratch, 0.0f);
        }
    }
}

/// After a refresh of the pitch range it holds every frequency that is a number.
void RandomCommands::check_range() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const float freq = parray[i][j].freq;
            ASSERT_TRUE(std::isnan(freq) || (freq >= minfreq && freq <= maxfreq))
                << freq << " outside " << minfreq << " to " << maxfreq;
        }
    }
}

int32_t points_of_store() {
    int32_t sum = 0;
    for (int32_t i = 0; i < partials; ++i) {
        sum += npoints[i];
    }
    return sum;
}

int commands_asked_for() {
    const char *number = std::getenv("QUILLGROVE_RANDOM_COMMANDS");
    return number != nullptr ? std::atoi(number) : usual_commands;
}

TEST_F(RandomCommands, KeepTheStoreWhole) {
    std::strcpy(afname, "/nonexistent/analysis");
    const int wanted = commands_asked_for();
    int structural_changes = 0;
    for (int done = 0, store = 0; done < wanted; ++store) {
        random_store(store);
        const int run = one_in(40) ? long_run : tame_run;
        tame = run == tame_run;
        for (int k = 0; k < run && done < wanted; ++k, ++done) {
            for (int32_t events = below(4); events > 0; --events) {
                random_event();
            }
            const int32_t before = points_of_store();
            random_command();
            structural_changes += points_of_store() != before ? 1 : 0;
            ASSERT_FALSE(HasFailure()) << log;
            if (points_of_store() > most_points) {
                break;
            }
        }
    }
    EXPECT_GT(structural_changes, wanted / 50) << "the stores must be such that edits take hold";
}

} // namespace
