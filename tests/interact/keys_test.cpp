// The dispatch of the keyboard: which characters are reported as unknown, that no key harms any
// store, that the tables hold no row twice, what GLUT and the numeric lock add.
#include "interact/keys.h"

#include "display/view.h"
#include "interact/key_rows.h"
#include "interact/shell.h"
#include "store/settings.h"
#include "store/window.h"
#include "tests/interact/keys_support.h"
#include "tests/support/console.h"

#include <cstring>
#include <map>

namespace {

constexpr int num_lock = 8;
constexpr int characters = 256;
constexpr unsigned char control_l = 12;

/// The printable characters that only report themselves.
const std::string unknown = "!\"#$%&'*+,./45689;?@ABEJKQTU\\^_`bejkqtu|~";

bool reports_itself(int code, int modifiers) {
    if (code > 127) {
        return true;
    }
    if (code < 32) {
        const bool ctrl_l = code == control_l && modifiers == key_ctrl;
        return code != key_return && code != key_escape && !ctrl_l;
    }
    return unknown.find(static_cast<char>(code)) != std::string::npos;
}

std::string report(int code) {
    return std::string("Pressed key : ") + static_cast<char>(code) + " \n";
}

int no_shell(const char *) {
    ADD_FAILURE() << "a shell was started at end of input";
    return 0;
}

class Keys : public KeysTest {
  protected:
    void SetUp() override {
        KeysTest::SetUp();
        run_command_line = no_shell;
    }
    void TearDown() override {
        run_command_line = std::system;
        KeysTest::TearDown();
    }
    void press_everything() {
        for (int modifiers = 0; modifiers < key_states; ++modifiers) {
            for (int code = 0; code < characters; ++code) {
                const std::string text = press(static_cast<unsigned char>(code), modifiers);
                const bool reported = text.find("Pressed key") != std::string::npos;
                ASSERT_EQ(reported, reports_itself(code, modifiers)) << code << " " << modifiers;
                if (reported) {
                    ASSERT_EQ(text, report(code));
                    ASSERT_EQ(posted(), 0) << code;
                }
            }
            for (int code = 0; code < characters; ++code) {
                press_special(code, modifiers);
            }
        }
    }
};

TEST_F(Keys, EveryCharacterOnAnEmptyStore) {
    fill_store({});
    for (int view = 0; view < 4; ++view) {
        flat = view & 1;
        bps = view >> 1;
        press_everything();
    }
}

TEST_F(Keys, EveryCharacterOnAFilledStore) {
    for (int view = 0; view < 4; ++view) {
        fill_store(small_content());
        flat = view & 1;
        bps = view >> 1;
        press_everything();
    }
}

TEST_F(Keys, EveryCharacterWithEverythingSelectedAndFound) {
    for (int code = 0; code < characters; ++code) {
        for (int modifiers = 0; modifiers < key_states; ++modifiers) {
            fill_store(small_content());
            select_group({"1111", "111", "11", "1"});
            sweepSelect = 1;
            find_points(0, 1, 1, 2);
            test_sound = &fspan;
            const std::string text = press(static_cast<unsigned char>(code), modifiers);
            ASSERT_EQ(text.find("Pressed key") != std::string::npos,
                      reports_itself(code, modifiers))
                << code << " " << modifiers;
        }
    }
}

TEST_F(Keys, EveryCharacterWithStalePointsFound) {
    const FoundPoints stale[] = {{9, 0, 0, 9, 2}, {-1, -1, -1, -1, 2}, {0, 99, 0, -5, 2}};
    for (const FoundPoints &queue : stale) {
        foundSubscriptions = queue;
        directSelect = found = sweepSelect = selected = 1;
        increment = 1.0f;
        press_everything();
    }
}

TEST_F(Keys, UnknownOnesChangeNothing) {
    EXPECT_EQ(unknown.size(), 41u);
    select_group({"0110", "111", "01", "1"});
    find_points(1, 2, 0, 1);
    const structure::Snapshot before = structure::snapshot();
    for (const char code : unknown) {
        EXPECT_EQ(press(static_cast<unsigned char>(code)), report(code));
    }
    EXPECT_TRUE(structure::same_points(structure::snapshot(), before));
    EXPECT_EQ(player_calls(), "");
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(foundSubscriptions.count, 2);
}

TEST_F(Keys, CharactersBeyondAsciiGoOutAsTheirByte) {
    EXPECT_EQ(press(0xe4), "Pressed key : \xe4 \n");
    EXPECT_EQ(press(0xff), "Pressed key : \xff \n");
    EXPECT_EQ(press(0), std::string("Pressed key : \0 \n", 17));
}

TEST_F(Keys, RowsForOtherModifiersAloneAreSilent) {
    const std::map<unsigned char, std::vector<int>> modifiers_of = {
        {'7', {key_alt}}, {'L', {key_shift_alt}}, {'l', {key_alt, key_ctrl}},
        {'N', {key_alt}}, {'n', {key_alt}},       {'P', {key_alt}},
        {'p', {key_alt}}};
    select_group({"0110", "111", "01", "1"});
    sweepSelect = 1;
    find_points(1, 2, 0, 1);
    for (const auto &[code, own] : modifiers_of) {
        for (const int modifiers : all_modifiers_but(own)) {
            expect_nothing(code, modifiers);
        }
    }
}

TEST_F(Keys, NumLockIsLeftAside) {
    EXPECT_EQ(press('l', key_alt | num_lock), "Select: Left\t ");
    EXPECT_EQ(press('2', num_lock), "");
    EXPECT_EQ(increment, 2.0f);
    EXPECT_EQ(press('R', key_shift_alt | num_lock), "R\n5\nSelect: Remainder\t ");
    EXPECT_EQ(press_special(GLUT_KEY_UP, num_lock), "0\n");
}

TEST_F(Keys, LastKeyIsKept) {
    EXPECT_EQ(gLastKey, 32);
    press('q');
    EXPECT_EQ(gLastKey, 'q');
    press(0xff);
    EXPECT_EQ(gLastKey, 255);
    press_special(GLUT_KEY_LEFT);
    EXPECT_EQ(gLastKey, GLUT_KEY_LEFT);
    press_special(GLUT_KEY_F5);
    EXPECT_EQ(gLastKey, GLUT_KEY_F5);
}

TEST_F(Keys, EveryStrokeCountsAsAnInputEvent) {
    const uint32_t before = input_events;
    press('q');
    EXPECT_EQ(input_events, before + 1);
    press('h');
    EXPECT_EQ(input_events, before + 2);
    press_special(GLUT_KEY_LEFT);
    EXPECT_EQ(input_events, before + 3);
}

TEST_F(Keys, NoRowStandsTwice) {
    std::map<std::pair<char, int>, int> rows;
    for (const auto &table :
         {view_keys(), select_keys(), edit_keys(), sound_keys(), console_keys()}) {
        for (const KeyRow &row : table) {
            for (const char code : row.keys) {
                EXPECT_EQ(++rows[std::make_pair(code, row.modifiers)], 1)
                    << code << " with " << row.modifiers;
            }
        }
    }
}

TEST_F(Keys, StartUpRegistersBothCallbacks) {
    gl_double::recorder().initialized = true;
    register_callbacks();
    EXPECT_EQ(gl_double::recorder().callbacks.keyboard, key);
    EXPECT_EQ(gl_double::recorder().callbacks.special, special);
}

} // namespace
