// The entries of "Process": gate, requirement, dialogue, the operation with the reply's value,
// and the derived values that each one's finish brings back.
#include "interact/menu.h"

#include "display/view.h"
#include "edit/mirror.h"
#include "edit/retro.h"
#include "edit/scale.h"
#include "edit/shifts.h"
#include "store/recompute.h"
#include "tests/interact/menu_support.h"
#include "tests/support/console.h"
#include "toolbox/auxmath3d.h"

#include <cstdlib>
#include <unistd.h>

namespace {

using structure::same_points;
using structure::Snapshot;
using structure::snapshot;

const std::string gain_ask = std::string(prompt) + "Process: Shift:\tGain\t " +
                             "Quillgrove > Enter gain shift (dB):\n             ";
const std::string pitch_ask = std::string(prompt) + "Process: Shift:  Pitch\t " +
                              "Quillgrove > Enter pitch shift factor:\n             ";
const std::string time_ask = std::string(prompt) + "Process: Shift: Time\t" +
                             "Quillgrove > Enter time shift value:\n             ";
const std::string scale_ask = std::string(prompt) + "Process: Scale...  " +
                              "Arguments: time-stretch freq.exponent gain-compand\nArguments: ";
const std::string mirror_ask = std::string(prompt) + "Process: Mirror...\t " +
                               "Quillgrove > Enter mirror freq:\n             " +
                               ">0 ->freq. mirror, <0 ->pitch mirror\n             " +
                               " 0 ->cancel\n             ";
const std::string retro_ask = std::string(prompt) + "Process: Retrogression \t " +
                              "Retro: [@|*]\n\t@ = internal  retrogression\n\t" +
                              "* = selected group reversal\n\t";
const std::string envelope_ask =
    std::string(prompt) + "Enter SDIF Spectral Envelope file name:\nquillgrove> ";

constexpr const char *cancelled = "Command cancelled\n";

/// A fresh store with a run over the whole of partial 0 and one inside partial 1.
void fresh() {
    fill_store(small_content());
    reset_selection();
    select_group({"1111", "011", "00", "0"});
}

class MenuProcess : public MenuTest {
  protected:
    void SetUp() override {
        MenuTest::SetUp();
        bps = 1;
        fresh();
    }

    /// What the command prints and leaves is the prompts and what the operation by itself
    /// prints and leaves, its finish included.
    void expect_operation(int value, const std::string &replies, const std::string &asked,
                          const std::function<void()> &work) {
        std::string text;
        const Snapshot want = left_by(fresh, [&] { text = printed(work); });
        fresh();
        EXPECT_EQ(command(value, replies), asked + text) << replies;
        EXPECT_TRUE(same_points(want, snapshot())) << replies;
    }

    void expect_finish(int value, const std::string &replies, const std::string &want) {
        fresh();
        spoil_derived();
        command(value, replies);
        EXPECT_EQ(refreshed(), want) << value << ": " << replies;
    }

    /// The dialogue ended early: `text` alone, nothing changed, no finish.
    void expect_no_finish(int value, const std::string &replies, const std::string &text) {
        fresh();
        spoil_derived();
        const Snapshot before = snapshot();
        EXPECT_EQ(command(value, replies), text) << replies;
        EXPECT_EQ(refreshed(), "") << replies;
        EXPECT_TRUE(same_points(before, snapshot())) << replies;
    }
};

TEST_F(MenuProcess, NothingSelectedIsToldWithARedisplay) {
    const std::pair<int, std::string> rows[] = {
        {16, "Process: Fade: In\t "},
        {17, "Process: Fade: Out\t "},
        {18, prompt + std::string("Process: Shift:\tGain\t ")},
        {19, prompt + std::string("Process: Shift:  Pitch\t ")},
        {20, prompt + std::string("Process: Shift: Time\t")},
        {21, prompt + std::string("Process: Scale...  ")},
    };
    selected = 0;
    for (const auto &[value, announce] : rows) {
        const Snapshot before = snapshot();
        gl_double::recorder().redisplays = 0;
        EXPECT_EQ(command(value, "\n2 2 2\n"), announce + "Quillgrove> nothing selected\n");
        EXPECT_EQ(gl_double::recorder().redisplays, 1);
        EXPECT_TRUE(same_points(before, snapshot()));
        EXPECT_EQ(unread(), value < 18 ? "\n2 2 2\n" : "2 2 2\n");
    }
}

TEST_F(MenuProcess, FadesOutsideSoftModeTellTheModeAndChangeNothing) {
    bps = 0;
    expect_no_finish(16, "", "Process: Fade: In\t Invalid Selection Mode for: Fade In\n");
    expect_no_finish(17, "", "Process: Fade: Out\t Invalid Selection Mode for: Fade Out\n");
}

TEST_F(MenuProcess, ScaleTestsTheModeBeforeTheSelection) {
    bps = 0;
    selected = 0;
    EXPECT_EQ(command(21, "\n1 1 1\n"),
              prompt + std::string("Process: Scale...  Invalid Selection Mode for: Scale\n"));
    EXPECT_EQ(gl_double::recorder().redisplays, 0);
}

TEST_F(MenuProcess, FadeIn) {
    expect_operation(16, "", "Process: Fade: In\t QuillGrove > Fade In\n", [] { fade(1); });
    EXPECT_EQ(parray[0][0].amp, -116.0f);
    EXPECT_EQ(parray[0][3].amp, -30.0f);
    EXPECT_EQ(minamp, -116.0f);
    expect_finish(16, "", "amp redisplay");
}

TEST_F(MenuProcess, FadeOut) {
    expect_operation(17, "", "Process: Fade: Out\t Quillgrove > Fade Out\n", [] {
        fade(0);
        recompute_all_phase();
    });
    EXPECT_EQ(parray[0][0].amp, -20.0f);
    EXPECT_EQ(parray[0][3].amp, -126.0f);
    expect_finish(17, "", "amp phase redisplay");
}

TEST_F(MenuProcess, FadesReadNothing) {
    command(16, "6\n");
    EXPECT_EQ(unread(), "6\n");
    command(17, "6\n");
    EXPECT_EQ(unread(), "6\n");
}

TEST_F(MenuProcess, ProcessesKeepTheSelectionInTheFlatView) {
    flat = 1;
    fresh();
    const std::vector<std::string> before = flags();
    for (const int value : {16, 17, 18, 19, 20, 21, 22, 23}) {
        command(value, "\n2 1 1\n");
        EXPECT_EQ(flags(), before) << value;
        EXPECT_EQ(selected, 1) << value;
    }
}

TEST_F(MenuProcess, Gain) {
    expect_operation(18, "\n6\n", gain_ask, [] { gain(6.0f); });
    EXPECT_EQ(parray[0][0].amp, -14.0f);
    EXPECT_EQ(parray[1][0].amp, -12.0f);
    EXPECT_EQ(maxamp, 0.0f);
    expect_operation(18, "\n-3.5 9\n", gain_ask, [] { gain(-3.5f); });
    EXPECT_EQ(unread(), " 9\n");
    expect_finish(18, "\n6\n", "amp redisplay");
}

TEST_F(MenuProcess, GainOfTextIsZero) {
    for (const std::string &reply : {std::string("loud"), std::string(10000, 'x'), std::string("-"),
                                     std::string("\x01\x80\xff"), std::string("--c")}) {
        expect_operation(18, "\n" + reply + "\n", gain_ask, [] {});
        EXPECT_EQ(unread(), "\n");
        expect_finish(18, "\n" + reply + "\n", "amp redisplay");
    }
    expect_operation(18, "\n" + std::string(10000, '1') + "\n", gain_ask,
                     [] { gain(static_cast<float>(std::atof(std::string(255, '1').c_str()))); });
}

TEST_F(MenuProcess, GainCancelledOrAtTheEndOfTheInput) {
    expect_no_finish(18, "\n-c\n", gain_ask + cancelled);
    expect_no_finish(18, "\n", gain_ask);
    expect_no_finish(18, "", gain_ask);
}

void finish_of_pitch() {
    recompute_all_pitch();
    recompute_logfreq();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
}

TEST_F(MenuProcess, Pitch) {
    expect_operation(19, "\n2\n", pitch_ask, [] {
        std::puts("2");
        std::puts("len = 1\ti = 1");
        pitch(2.0f);
        finish_of_pitch();
    });
    EXPECT_EQ(parray[0][0].freq, 200.0f);
    EXPECT_EQ(parray[1][0].freq, 400.0f);
    expect_operation(19, "\n3/2 v\n", pitch_ask, [] {
        std::puts("3/2");
        std::puts("len = 3\ti = 1\nnum = 3\nlen1 = 1\nden = 2");
        pitch(1.5f);
        finish_of_pitch();
    });
    EXPECT_EQ(unread(), " v\n");
    expect_finish(19, "\n2\n", "pitch phase logfreq averages redisplay");
}

TEST_F(MenuProcess, PitchByAnIntervalsName) {
    expect_operation(19, "\n+P8\n", pitch_ask, [] {
        std::puts("+P8");
        pitch(string2ratio("+P8"));
        finish_of_pitch();
    });
}

TEST_F(MenuProcess, PitchVaryingOverTime) {
    for (const char *replies : {"\nv 2\n", "\nv\n2\n"}) {
        expect_operation(19, replies, pitch_ask, [] {
            std::puts("2");
            std::puts("len = 1\ti = 1");
            va_pitch(2.0f);
            finish_of_pitch();
        });
        EXPECT_EQ(parray[0][0].freq, 100.0f);
        EXPECT_EQ(parray[0][3].freq, 220.0f);
    }
    expect_finish(19, "\nv 2\n", "pitch phase logfreq averages redisplay");
}

TEST_F(MenuProcess, PitchOfAnOtherWordIsAFactor) {
    const std::string refused = "\tmust be within +-2 octaves\n";
    expect_operation(19, "\nV\n", pitch_ask, [&] {
        std::puts("V");
        pitch(string2ratio("V"));
        finish_of_pitch();
    });
    expect_operation(19, "\nv v\n", pitch_ask, [&] {
        std::puts("v");
        va_pitch(string2ratio("v"));
        finish_of_pitch();
    });
    const std::string kept(255, 'x');
    expect_operation(19, "\n" + std::string(10000, 'x') + "\n", pitch_ask, [&] {
        std::puts(kept.c_str());
        pitch(string2ratio(kept.c_str()));
        finish_of_pitch();
    });
    EXPECT_NE(command(19, "\n\x01\xff\n").find(refused), std::string::npos);
}

TEST_F(MenuProcess, PitchEchoesTheCancellingWordToo) {
    expect_no_finish(19, "\n-c\n", pitch_ask + "-c\n" + cancelled);
    expect_no_finish(19, "\nv -c\n", pitch_ask + "-c\n" + cancelled);
}

TEST_F(MenuProcess, PitchAtTheEndOfTheInput) {
    expect_no_finish(19, "", pitch_ask);
    expect_no_finish(19, "\n", pitch_ask);
    expect_no_finish(19, "\nv", pitch_ask);
    expect_no_finish(19, "\nv\n", pitch_ask);
}

TEST_F(MenuProcess, TimeShift) {
    expect_operation(20, "\n0.5 1\n", time_ask, [] {
        timesh(0.5f);
        recompute_all_phase();
    });
    EXPECT_EQ(parray[0][0].time, 0.5f);
    EXPECT_EQ(unread(), " 1\n");
    expect_finish(20, "\n0.5\n", "times phase redisplay");
    expect_finish(20, "\n0\n", "phase redisplay");
    expect_finish(20, "\n" + std::string(10000, 'x') + "\n", "phase redisplay");
    expect_finish(20, "\n\xff\x02\n", "phase redisplay");
}

TEST_F(MenuProcess, TimeShiftCancelledOrAtTheEndOfTheInput) {
    expect_no_finish(20, "\n-c\n", time_ask + cancelled);
    expect_no_finish(20, "\n", time_ask);
    expect_no_finish(20, "", time_ask);
}

void finish_of_scale() {
    recompute_all_pitch();
    recompute_logfreq();
    recompute_times();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
}

TEST_F(MenuProcess, Scale) {
    for (const char *replies : {"\n2 0.5 0.25\n", "\n2\n0.5\n\n0.25 1\n"}) {
        expect_operation(21, replies, scale_ask, [] {
            std::puts("2.000000\t0.500000\t0.250000");
            newscale(2.0f, 0.5f, 0.25f);
            finish_of_scale();
        });
    }
    EXPECT_EQ(unread(), " 1\n");
    expect_finish(21, "\n2 1 1\n", "times pitch phase logfreq averages redisplay");
}

TEST_F(MenuProcess, ScaleRefusedByItsOperationStillFinishes) {
    expect_operation(21, "\n0.05 2 2\n", scale_ask, [] {
        std::puts("0.050000\t2.000000\t2.000000\nTime-stretch must be > 0.1");
        finish_of_scale();
    });
    expect_finish(21, "\n0.05 2 2\n", "times pitch phase logfreq averages redisplay");
    expect_finish(21, "\nxyz 2 2\n", "times pitch phase logfreq averages redisplay");
    expect_finish(21, "\n" + std::string(10000, 'x') + " 2 2\n",
                  "times pitch phase logfreq averages redisplay");
}

TEST_F(MenuProcess, ScaleCancelledByItsFirstWordAlone) {
    expect_no_finish(21, "\n-c 1 1\n", scale_ask + cancelled);
    EXPECT_EQ(unread(), " 1 1\n");
}

TEST_F(MenuProcess, ScaleWithoutItsNumbersDoesNothing) {
    for (const char *replies : {"\n2 -c 1\n", "\n2 x 1\n", "\n2 1 x\n", "\n2 1 \xff\n"}) {
        expect_no_finish(21, replies, scale_ask);
    }
}

TEST_F(MenuProcess, ScaleAtTheEndOfTheInput) {
    for (const char *replies : {"", "\n", "\n2", "\n2 ", "\n2 1", "\n2 1\n"}) {
        expect_no_finish(21, replies, scale_ask);
    }
}

TEST_F(MenuProcess, ScaleByLongNumbers) {
    command(21, "\n2 1" + std::string(10000, '0') + " 0." + std::string(10000, '5') + "\n");
    EXPECT_EQ(unread(), "\n");
    EXPECT_EQ(partials, 4);
}

TEST_F(MenuProcess, MirrorFrequencies) {
    expect_operation(22, "\n300 1\n", mirror_ask, [] {
        mirror3d(300.0f);
        finish_of_pitch();
    });
    EXPECT_EQ(unread(), " 1\n");
    expect_finish(22, "\n300\n", "pitch phase logfreq averages redisplay");
}

TEST_F(MenuProcess, MirrorPitchByANegativeNumber) {
    expect_operation(22, "\n-300\n", mirror_ask, [] {
        mirror_pitch(300.0f);
        finish_of_pitch();
    });
    expect_finish(22, "\n-300\n", "pitch phase logfreq averages redisplay");
}

TEST_F(MenuProcess, MirrorCancelledByItsWordOrByZero) {
    for (const std::string &reply :
         {std::string("-c"), std::string("0"), std::string("-0.0"), std::string("abc"),
          std::string(10000, 'x'), std::string("\x01\xfe"), std::string("nan")}) {
        expect_no_finish(22, "\n" + reply + "\n", mirror_ask + cancelled);
        EXPECT_EQ(unread(), "\n");
    }
}

TEST_F(MenuProcess, MirrorAtTheEndOfTheInput) {
    expect_no_finish(22, "\n", mirror_ask);
    expect_no_finish(22, "", mirror_ask);
}

TEST_F(MenuProcess, MirrorAndRetroNeedNoSelection) {
    fill_store(small_content());
    reset_selection();
    const Snapshot before = snapshot();
    command(22, "\n300\n");
    command(23, "\n@\n");
    command(23, "\n*\n");
    EXPECT_TRUE(same_points(before, snapshot()));
    EXPECT_EQ(gl_double::recorder().redisplays, 3);
}

TEST_F(MenuProcess, MirrorTestsTheGateBeforeItAnnouncesItself) {
    bps = 0;
    expect_no_finish(22, "\n300\n", prompt + std::string("Invalid Selection Mode for: Mirror\n"));
}

void finish_of_retro() {
    recompute_times();
    recompute_all_phase();
    averages(partials, npoints, parray, peval);
}

TEST_F(MenuProcess, RetroInsideTheRuns) {
    expect_operation(23, "\n@ *\n", retro_ask, [] {
        retro();
        finish_of_retro();
    });
    EXPECT_EQ(parray[0][0].amp, -30.0f);
    EXPECT_EQ(unread(), " *\n");
    expect_finish(23, "\n@\n", "times phase averages redisplay");
}

TEST_F(MenuProcess, RetroOfTheGroup) {
    expect_operation(23, "\n*\n", retro_ask, [] {
        reverse();
        finish_of_retro();
    });
    expect_finish(23, "\n*\n", "times phase averages redisplay");
}

TEST_F(MenuProcess, RetroWithAnotherWordFinishesAllTheSame) {
    for (const std::string &reply : {std::string("x"), std::string("@@"), std::string("**"),
                                     std::string(10000, '@'), std::string("\x01\xff")}) {
        expect_operation(23, "\n" + reply + "\n", retro_ask, finish_of_retro);
        expect_finish(23, "\n" + reply + "\n", "times phase averages redisplay");
    }
}

TEST_F(MenuProcess, RetroCancelledOrAtTheEndOfTheInput) {
    expect_no_finish(23, "\n-c\n", retro_ask + cancelled);
    expect_no_finish(23, "\n", retro_ask);
    expect_no_finish(23, "", retro_ask);
}

TEST_F(MenuProcess, EnvelopeProbesTheFile) {
    char name[] = "/tmp/quillgrove-envelope-XXXXXX";
    const int file = mkstemp(name);
    ASSERT_GE(file, 0);
    expect_operation(37, std::string("\n") + name + " other\n", envelope_ask, [&name] {
        std::puts(name);
        std::puts("Not implemented yet...");
    });
    EXPECT_EQ(unread(), " other\n");
    close(file);
    unlink(name);
    expect_operation(37, std::string("\n") + name + "\n", envelope_ask, [&name] {
        std::puts(name);
        std::printf("Can't open file \"%s\"\n", name);
        std::puts("Not implemented yet...");
    });
    expect_finish(37, "\n/nonexistent/name\n", "redisplay");
}

TEST_F(MenuProcess, EnvelopeNeedsNeitherGateNorSelection) {
    bps = 0;
    selected = 0;
    EXPECT_TRUE(command(37, "\n/nonexistent/name\n").ends_with(not_built));
}

TEST_F(MenuProcess, EnvelopeTakesAnyName) {
    const std::string kept(255, 'x');
    EXPECT_EQ(command(37, "\n" + std::string(10000, 'x') + "\n"),
              envelope_ask + kept + "\nCan't open file \"" + kept + "\"\n" + not_built);
    const std::string bytes = "/\x01\xff\x80";
    EXPECT_EQ(command(37, "\n" + bytes + "\n"),
              envelope_ask + bytes + "\nCan't open file \"" + bytes + "\"\n" + not_built);
}

TEST_F(MenuProcess, EnvelopeCancelledOrAtTheEndOfTheInput) {
    expect_no_finish(37, "\n-c\n", envelope_ask + "operation cancelled\n");
    expect_no_finish(37, "\n", envelope_ask);
    expect_no_finish(37, "", envelope_ask);
}

} // namespace
