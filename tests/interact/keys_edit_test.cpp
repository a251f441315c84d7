// Keys that change the points: the amplitude step on groups and found points, the threshold,
// glides by one stroke, thinning.
#include "display/view.h"
#include "edit/shifts.h"
#include "interact/amplitude_step.h"
#include "live/live.h"
#include "store/settings.h"
#include "tests/interact/keys_support.h"
#include "tests/support/console.h"
#include "toolbox/auxmath3d.h"

#include <cmath>

namespace {

using Levels = std::vector<float>;
using Flags = std::vector<std::string>;

const std::string ask = "Amp: set the step value\n";

class KeysEdit : public KeysTest {
  protected:
    static Levels levels(int32_t i) {
        return structure::amps(i);
    }
    /// Nothing but a sweep of these points.
    static void sweep(const Flags &texts) {
        select_group(texts);
        sweepSelect = 1;
    }
    /// The gesture line as the picture showed it in the last stroke, empty when none was drawn.
    static std::string drawn_gesture() {
        for (const std::string &text : label_texts()) {
            if (text.starts_with("Amp: ")) {
                return text;
            }
        }
        return "";
    }
    /// The range made wrong, so that bringing it back shows.
    static void spoil_range() {
        minamp = maxamp = 12345.0f;
    }
    static bool range_is_fresh() {
        return minamp != 12345.0f && maxamp != 12345.0f;
    }
};

// --- the size of the step ----------------------------------------------------------------------

TEST_F(KeysEdit, DigitsChooseTheStep) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        const bool alt = modifiers == key_alt;
        EXPECT_EQ(press('1', modifiers), "");
        EXPECT_EQ(increment, 1.0f);
        EXPECT_EQ(posted(), 0);
        EXPECT_EQ(press('2', modifiers), "");
        EXPECT_EQ(increment, alt ? 0.5f : 2.0f);
        EXPECT_EQ(posted(), 0);
        EXPECT_EQ(press('3', modifiers), "");
        EXPECT_EQ(increment, alt ? 0.3333f : 3.0f);
        EXPECT_EQ(posted(), 0);
        gShowMethod = 1;
        method = 2;
        EXPECT_EQ(press('0', modifiers), "");
        EXPECT_EQ(increment, 0.0f);
        EXPECT_EQ(gShowMethod, 0);
        EXPECT_EQ(method, 2);
        EXPECT_EQ(posted(), 1);
    }
}

// --- the group ---------------------------------------------------------------------------------

TEST_F(KeysEdit, StepUpRaisesTheGroup) {
    for (const int modifiers : all_modifiers_but({key_alt})) {
        fill_store(small_content());
        sweep({"0110", "000", "01", "1"});
        increment = 2.0f;
        gShowMethod = 0;
        spoil_range();
        gl_double::forget_drawing();
        EXPECT_EQ(press('=', modifiers), "");
        EXPECT_EQ(levels(0), (Levels{-20, -8, -13, -30}));
        EXPECT_EQ(levels(1), (Levels{-12, -6, -18}));
        EXPECT_EQ(levels(2), (Levels{-40, -48}));
        EXPECT_EQ(levels(3), (Levels{-58}));
        EXPECT_EQ(maxamp, -6.0f);
        EXPECT_EQ(minamp, -58.0f);
        EXPECT_EQ(method, 2);
        EXPECT_EQ(gShowMethod, 1);
        EXPECT_EQ(drawn_gesture(), "Amp: +2.0 dB\n");
        EXPECT_EQ(posted(), 1);
    }
}

TEST_F(KeysEdit, StepDownLowersTheGroup) {
    for (const int modifiers : all_modifiers_but({key_alt})) {
        fill_store(small_content());
        sweep({"0110", "111", "00", "0"});
        increment = 0.5f;
        gShowMethod = 0;
        spoil_range();
        gl_double::forget_drawing();
        EXPECT_EQ(press('-', modifiers), "");
        EXPECT_EQ(levels(0), (Levels{-20, -10.5f, -15.5f, -30}));
        EXPECT_EQ(levels(1), (Levels{-12.5f, -6.5f, -18.5f}));
        EXPECT_EQ(levels(2), (Levels{-40, -50}));
        EXPECT_EQ(maxamp, -6.5f);
        EXPECT_EQ(minamp, -60.0f);
        EXPECT_EQ(method, -2);
        EXPECT_EQ(gShowMethod, 1);
        EXPECT_EQ(drawn_gesture(), "Amp: -0.5 dB\n");
        EXPECT_EQ(posted(), 1);
    }
}

TEST_F(KeysEdit, StepOfZeroAsksForOne) {
    sweep({"1111", "111", "11", "1"});
    const structure::Snapshot before = structure::snapshot();
    for (const uint8_t shown : {uint8_t{0}, uint8_t{1}}) {
        gShowMethod = shown;
        EXPECT_EQ(press('='), ask);
        EXPECT_EQ(method, 2);
        EXPECT_EQ(press('-'), ask);
        EXPECT_EQ(method, -2);
        EXPECT_EQ(gShowMethod, shown) << "it stays as it was";
        EXPECT_EQ(posted(), 1);
    }
    EXPECT_TRUE(structure::same_points(structure::snapshot(), before));
}

TEST_F(KeysEdit, SmallStepIsNotShown) {
    sweep({"1000", "000", "00", "0"});
    increment = 0.001f; // as a float it lies just above the bound
    press('=');
    EXPECT_EQ(gShowMethod, 1);
    gShowMethod = 0;
    increment = 0.0009f;
    EXPECT_EQ(press('='), "");
    EXPECT_EQ(gShowMethod, 0);
    increment = -0.5f;
    press('=');
    EXPECT_EQ(gShowMethod, 1);
}

TEST_F(KeysEdit, StepNeedsASweep) {
    select_group({"1111", "111", "11", "1"});
    increment = 2.0f;
    const structure::Snapshot before = structure::snapshot();
    spoil_range();
    EXPECT_EQ(press('='), "");
    EXPECT_FALSE(range_is_fresh()) << "neither group nor found points were there";
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(press('-'), "");
    EXPECT_TRUE(range_is_fresh()) << "a step down brings it back in every case";
    EXPECT_EQ(posted(), 1);
    EXPECT_TRUE(structure::same_points(structure::snapshot(), before));
    EXPECT_EQ(method, 0);
    EXPECT_EQ(gShowMethod, 0);
}

TEST_F(KeysEdit, OnlyFlagsOfOneCount) {
    sweep({"0000", "000", "00", "0"});
    parray[0][0].selected = 2;
    increment = 2.0f;
    press('=');
    EXPECT_EQ(levels(0), (Levels{-20, -10, -15, -30}));
}

// --- found points ------------------------------------------------------------------------------

TEST_F(KeysEdit, StepMovesTheFoundPoints) {
    find_points(1, 2, 0, 1);
    increment = 3.0f;
    spoil_range();
    EXPECT_EQ(press('='), "parray[1][2].amp = -15.000000\n");
    EXPECT_EQ(levels(0), (Levels{-20, -7, -15, -30}));
    EXPECT_EQ(levels(1), (Levels{-12, -6, -15}));
    EXPECT_TRUE(range_is_fresh());
    EXPECT_EQ(method, 0) << "the line tells of the group alone";
    EXPECT_EQ(gShowMethod, 0);
    EXPECT_EQ(posted(), 1);
    EXPECT_EQ(press('-'), "parray[1][2].amp = -18.000000\n");
    EXPECT_EQ(levels(0), (Levels{-20, -10, -15, -30}));
}

TEST_F(KeysEdit, StepMovesTheOneFoundPoint) {
    find_points(1, 1);
    foundSubscriptions.part1 = 0; // what is left of a dropped point
    foundSubscriptions.point1 = 0;
    increment = 8.0f;
    EXPECT_EQ(press('='), "parray[1][1].amp = 2.000000\n");
    EXPECT_EQ(levels(0), (Levels{-20, -10, -15, -30}));
    EXPECT_EQ(maxamp, 2.0f);
    EXPECT_EQ(press('-'), "parray[1][1].amp = -6.000000\n");
    EXPECT_EQ(maxamp, -6.0f);
}

TEST_F(KeysEdit, StepOfZeroOnFoundPoints) {
    find_points(1, 1);
    EXPECT_EQ(press('='), "parray[1][1].amp = -6.000000\n" + ask);
    EXPECT_EQ(press('-'), "parray[1][1].amp = -6.000000\n" + ask);
    sweep({"1000", "000", "00", "0"});
    EXPECT_EQ(press('-'), ask + "parray[1][1].amp = -6.000000\n" + ask);
}

TEST_F(KeysEdit, FoundPointOfTheGroupMovesOnce) {
    sweep({"0000", "011", "00", "0"});
    find_points(1, 1, 0, 0);
    increment = 2.0f;
    EXPECT_EQ(press('='), "parray[1][1].amp = -4.000000\n");
    EXPECT_EQ(levels(1), (Levels{-12, -4, -16}));
    EXPECT_EQ(levels(0)[0], -18.0f);
    EXPECT_EQ(press('-'), "parray[1][1].amp = -6.000000\n");
    EXPECT_EQ(levels(1), (Levels{-12, -6, -18}));
    EXPECT_EQ(levels(0)[0], -20.0f);
}

TEST_F(KeysEdit, PointFoundTwiceMovesTwice) {
    find_points(1, 1, 1, 1); // as a script of clicks and arrows may leave it
    increment = 1.0f;
    EXPECT_EQ(press('='), "parray[1][1].amp = -4.000000\n");
}

TEST_F(KeysEdit, SteppingNeedsAFoundPoint) {
    find_points(1, 1);
    increment = 2.0f;
    found = 0;
    const structure::Snapshot before = structure::snapshot();
    EXPECT_EQ(press('-'), "NOT FOUND\n");
    EXPECT_EQ(press('='), "");
    const auto down = [] { attenuate(increment, foundSubscriptions); };
    const auto up = [] { amplify(increment, foundSubscriptions); };
    directSelect = 0;
    EXPECT_EQ(printed(down), "NOT FOUND\n");
    EXPECT_EQ(printed(up), "");
    found = 1;
    EXPECT_EQ(printed(down), "NOT DIRECT\n");
    EXPECT_EQ(printed(up), "");
    EXPECT_EQ(press('-'), "") << "the key asks for directSelect first";
    EXPECT_TRUE(structure::same_points(structure::snapshot(), before));
}

TEST_F(KeysEdit, StaleFoundPointsAreLeftOut) {
    increment = 2.0f;
    find_points(9, 0, 0, 99);
    EXPECT_EQ(press('='), "");
    find_points(9, 0, 0, 1);
    EXPECT_EQ(press('-'), "");
    EXPECT_EQ(levels(0)[1], -12.0f);
    find_points(0, 1);
    foundSubscriptions.count = 0;
    EXPECT_EQ(press('='), "");
    EXPECT_EQ(levels(0)[1], -12.0f);
}

// --- the threshold -----------------------------------------------------------------------------

TEST_F(KeysEdit, FloorMovesByThree) {
    for (const int modifiers : all_modifiers_but({key_alt})) {
        floorAmp = -90.0f;
        EXPECT_EQ(press('F', modifiers), "Amp. treshold = -87.00 dB\n");
        EXPECT_EQ(floorAmp, -87.0f);
        EXPECT_EQ(posted(), 0);
        EXPECT_EQ(press('f', modifiers), "Amp. treshold = -90.00 dB\n");
        EXPECT_EQ(press('f', modifiers), "Amp. treshold = -93.00 dB\n");
        EXPECT_EQ(floorAmp, -93.0f);
        EXPECT_EQ(posted(), 0);
    }
}

TEST_F(KeysEdit, FloorIsReset) {
    for (const unsigned char code : {'F', 'f'}) {
        floorAmp = -12.0f;
        EXPECT_EQ(press(code, key_alt), "Amp. treshold reset\n");
        EXPECT_EQ(floorAmp, -90.0f);
        EXPECT_EQ(posted(), 0);
    }
}

TEST_F(KeysEdit, CompressHalvesTheDistanceBelowTheFloor) {
    floorAmp = -20.0f;
    const float stale_min = minamp;
    EXPECT_EQ(press('=', key_alt), "Compressed amplitudes below -20.00\n");
    EXPECT_EQ(levels(0), (Levels{-20, -10, -15, -25}));
    EXPECT_EQ(levels(1), (Levels{-12, -6, -18}));
    EXPECT_EQ(levels(2), (Levels{-30, -35}));
    EXPECT_EQ(levels(3), (Levels{-40}));
    EXPECT_EQ(minamp, stale_min) << "the range is not brought back";
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysEdit, ExpandWidensTheDistanceBelowTheFloor) {
    floorAmp = -20.0f;
    EXPECT_EQ(press('-', key_alt), "Expanded amplitudes below -20.00\n");
    EXPECT_EQ(levels(0), (Levels{-20, -10, -15, -35}));
    EXPECT_EQ(levels(2), (Levels{-50, -65}));
    EXPECT_EQ(levels(3), (Levels{-80}));
    EXPECT_EQ(minamp, -80.0f);
    EXPECT_EQ(maxamp, -6.0f);
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysEdit, FloorTakesNoNoticeOfTheSelection) {
    sweep({"0001", "000", "00", "0"});
    floorAmp = -25.0f;
    raise_floor(floorAmp);
    EXPECT_EQ(levels(0)[3], -27.5f);
    EXPECT_EQ(levels(3)[0], -42.5f);
    lower_floor(floorAmp);
    EXPECT_EQ(levels(0)[3], -28.75f);
    EXPECT_EQ(levels(3)[0], -51.25f);
    parray[3][0].amp = -25.0f;
    lower_floor(floorAmp);
    EXPECT_EQ(levels(3)[0], -25.0f) << "the floor itself is not below it";
}

TEST_F(KeysEdit, WidthOfTheFloorsArithmetic) {
    parray[3][0].amp = -100.1f;
    const float floor = -90.3f;
    const double distance = static_cast<double>(floor - -100.1f);
    raise_floor(floor);
    EXPECT_EQ(levels(3)[0], static_cast<float>(static_cast<double>(-100.1f) + distance * 0.5));
}

// --- glides ------------------------------------------------------------------------------------

/// The frequencies after va_pitch by this ratio on the same selection.
Levels glided(float ratio) {
    const structure::Snapshot points = left_by(
        [] {
            fill_store(small_content());
            select_group({"1111", "000", "00", "0"});
        },
        [=] { va_pitch(ratio); });
    Levels freqs;
    for (const Breakpoint &point : points[0]) {
        freqs.push_back(point.freq);
    }
    return freqs;
}

TEST_F(KeysEdit, ParenthesesGlide) {
    const float tone_down = string2ratio("-etm2");
    const float tone_up = string2ratio("etm2");
    ASSERT_NEAR(tone_down, std::pow(2.0, -1.0 / 12.0), 1e-4);
    ASSERT_NEAR(tone_up, std::pow(2.0, 1.0 / 12.0), 1e-4);
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        const bool tone = modifiers == key_shift_alt;
        for (const unsigned char code : {'(', ')'}) {
            const float octave = code == '(' ? 0.5f : 2.0f;
            const Levels expected = glided(!tone ? octave : code == '(' ? tone_down : tone_up);
            fill_store(small_content());
            select_group({"1111", "000", "00", "0"});
            const std::string text = press(code, modifiers);
            EXPECT_EQ(text, std::to_string(modifiers) + "\n");
            EXPECT_EQ(structure::freqs(0), expected) << code << " with " << modifiers;
            EXPECT_EQ(posted(), 1);
        }
    }
    EXPECT_FLOAT_EQ(glided(2.0f)[3], 220.0f);
}

TEST_F(KeysEdit, EditViewGuardsGlidesAndBraces) {
    select_group({"1111", "111", "11", "1"});
    for (int view = 0; view < 3; ++view) {
        flat = view & 1;
        bps = view >> 1;
        for (const unsigned char code : {'(', ')', '{', '}'}) {
            for (int modifiers = 0; modifiers < key_states; ++modifiers) {
                expect_nothing(code, modifiers);
            }
        }
    }
}

TEST_F(KeysEdit, BracesAreNotBuilt) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        EXPECT_EQ(press('{', modifiers), not_built);
        EXPECT_EQ(posted(), 1);
        EXPECT_EQ(press('}', modifiers), not_built);
        EXPECT_EQ(posted(), 1);
    }
}

// --- thinning ----------------------------------------------------------------------------------

TEST_F(KeysEdit, SevenKeepsEverySecondPartial) {
    flat = 0; // clears all the same
    sweep({"0110", "111", "01", "1"});
    find_points(0, 1, 1, 1);
    spoil_derived();
    const std::string text = press('7', key_alt);
    EXPECT_EQ(text, "[0]: -5.000000\n[2]: -5.000000\n");
    ASSERT_EQ(partials, 2);
    EXPECT_EQ(structure::freqs(0), (Levels{100, 110, 120, 110}));
    EXPECT_EQ(structure::freqs(1), (Levels{800, 810}));
    EXPECT_EQ(maxamp, -10.0f);
    EXPECT_EQ(minamp, -50.0f);
    EXPECT_EQ(sndlen, 0.6f);
    EXPECT_EQ(maxfreq, 810.0f);
    EXPECT_NEAR(parray[1][1].logfreq, 1.0, 1e-6);
    EXPECT_NE(parray[0][1].phase, 9.0f) << "phases of partials with a selected point";
    EXPECT_TRUE(selection_cleared());
    EXPECT_EQ(posted(), 1);
}

TEST_F(KeysEdit, SevenWaitsForTheGenerators) {
    wgen.playing = 1;
    expect_nothing('7', key_alt);
    wgen.playing = 0;
    zgen.playing = 1;
    expect_nothing('7', key_alt);
    EXPECT_EQ(partials, 4);
}

TEST_F(KeysEdit, SevenDownToOnePartialAndNone) {
    for (const int expected : {2, 1, 1}) {
        press('7', key_alt);
        EXPECT_EQ(partials, expected);
    }
    fill_store({});
    press('7', key_alt);
    EXPECT_EQ(partials, 0);
}

} // namespace
