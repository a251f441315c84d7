// The entries of "Process" with their dialogues on the console.

#include "tests/e2e/menu_test.h"

namespace {

constexpr double high = 0.8, middle = 0.48, low = 0.24;

using MenuProcess = MenuTest;

const std::string gain_announce = tag + "Process: Shift:\tGain\t ";
const std::string gain_question =
    gain_announce + "Quillgrove > Enter gain shift (dB):\n             ";
const std::string pitch_question =
    tag + "Process: Shift:  Pitch\t Quillgrove > Enter pitch shift factor:\n             ";
const std::string time_question =
    tag + "Process: Shift: Time\tQuillgrove > Enter time shift value:\n             ";
const std::string scale_question =
    tag + "Process: Scale...  Arguments: time-stretch freq.exponent gain-compand\nArguments: ";
const std::string mirror_question =
    tag + "Process: Mirror...\t Quillgrove > Enter mirror freq:\n             "
          ">0 ->freq. mirror, <0 ->pitch mirror\n              0 ->cancel\n             ";
const std::string retro_question =
    tag + "Process: Retrogression \t Retro: [@|*]\n\t@ = internal  retrogression\n\t"
          "* = selected group reversal\n\t";

/// A rising partial of four points and a short one above; 4400 Hz is the top.
std::string stairs_file() {
    return "( PARTIALS 2\n"
           "( POINTS 4\n0.5 500 -40\n1.0 1000 -40\n1.5 1500 -40\n2.0 2000 -90\n)\n"
           "( POINTS 2\n0.0 4400 -60\n4.0 4400 -90\n)\n)\n";
}

} // namespace

TEST_F(MenuProcess, GainOfASweptPoint) {
    begin("-fb");
    sweep(0.2, 0.75, 0.3, 0.85);
    expect_count(green, 1);
    expect_dialogue("Process/Shift/Gain...", "\n-30\n", gain_question);
    expect_colour(0.375, high, contour(-30.0, 0.0));
    expect_count(green, 1); // the selection stays
    // The end of the last reply's line stands for the return that the first dialogue waits for.
    expect_dialogue("Process/Shift/Gain...", "-30\n", gain_question);
    expect_colour(0.375, high, contour(-60.0, 0.0));
    expect_colour(0.375, middle, contour(-30.0, -30.0));
    expect_alive();
}

TEST_F(MenuProcess, GainWaitsForReturnBeforeItAsks) {
    begin("-fb");
    sweep(0.2, 0.75, 0.3, 0.85);
    choose("Process/Shift/Gain...");
    expect_said(tag);
    const double before = program->busy_seconds();
    program->listen(Duration(400));
    EXPECT_LT(program->busy_seconds() - before, 0.15);
    expect_said("");
    program->send("dropped words\n");
    expect_said(gain_question.substr(tag.size()));
    program->send("-c\n");
    expect_said("Command cancelled\n");
    expect_colour(0.375, high, loudest);
    expect_alive();
}

TEST_F(MenuProcess, GainRefusals) {
    begin("-fb");
    const Image start = picture;
    expect_dialogue("Process/Shift/Gain...", "\n",
                    gain_announce + "Quillgrove> nothing selected\n");
    expect_picture(start);
    choose("View/Flat"); // breakpoints are on: editing is allowed in perspective, too
    expect_said("View: Perspective\n");
    expect_dialogue("Process/Shift/Gain...", "\n",
                    gain_announce + "Quillgrove> nothing selected\n");
}

TEST_F(MenuProcess, FadesOfAPartial) {
    begin("-fb");
    sweep(0.2, 0.4, 1.02, 0.55); // four points from 0.5 s on
    expect_count(green, 4);
    choose("Process/Fade/In");
    expect_said("Process: Fade: In\t QuillGrove > Fade In\n");
    expect_colour(0.375, middle, contour(-126.0, -94.0));
    choose("Edit/Select/None");
    expect_said("Select: None     ");
    sweep(0.2, 0.75, 0.8, 0.85);
    expect_count(green, 3);
    choose("Process/Fade/Out");
    expect_said("Process: Fade: Out\t Quillgrove > Fade Out\n");
    expect_colour(0.375, high, contour(0.0, -48.0));
    expect_colour(0.625, high, contour(-48.0, -114.0));
}

TEST_F(MenuProcess, RefusalsOutsideTheEditingMode) {
    begin("");
    const Image start = picture;
    choose("Process/Fade/In");
    expect_said("Process: Fade: In\t Invalid Selection Mode for: Fade In\n");
    choose("Process/Fade/Out");
    expect_said("Process: Fade: Out\t Invalid Selection Mode for: Fade Out\n");
    // Nothing is selected either; the mode alone is told.
    expect_dialogue("Process/Scale...", "\n",
                    tag + "Process: Scale...  Invalid Selection Mode for: Scale\n");
    expect_dialogue("Process/Mirror...", "\n", tag + "Invalid Selection Mode for: Mirror\n");
    expect_dialogue("Process/Retro...", "\n",
                    tag + "Process: Retrogression \t Invalid Selection Mode for: Retro\n");
    expect_dialogue("Process/Shift/Gain...", "\n",
                    gain_announce + "Invalid Selection Mode for: Gain Shift\n");
    expect_dialogue("Process/Shift/Pitch...", "\n",
                    tag + "Process: Shift:  Pitch\t Invalid Selection Mode for: Pitch Shift\n");
    expect_dialogue("Process/Shift/Time...", "\n",
                    tag + "Process: Shift: Time\tInvalid Selection Mode for: Time Shift\n");
    expect_picture(start);
}

TEST_F(MenuProcess, PitchOfAPartial) {
    begin("-fb");
    sweep(-0.02, 0.2, 1.02, 0.28);
    expect_count(green, 4);
    expect_dialogue("Process/Shift/Pitch...", "\n1.5\n", pitch_question + "1.5\nlen = 3\ti = 3\n");
    expect_colour(0.375, 0.36, contour(-150.0, -150.0));
    expect_colour(0.375, low, background);
    expect_dialogue("Process/Shift/Pitch...", "-c\n", pitch_question + "-c\nCommand cancelled\n");
    // Over time: the last point gets the whole factor.
    expect_dialogue("Process/Shift/Pitch...", "v 2\n", pitch_question + "2\nlen = 1\ti = 1\n");
    expect_colour(1.0, 0.72, green);
    expect_colour(0.5, 0.36 * std::sqrt(2.0), green);
}

TEST_F(MenuProcess, TimeShiftOfAPartial) {
    begin("-fb");
    sweep(-0.02, 0.05, 0.3, 0.15);
    expect_count(green, 1);
    expect_dialogue("Process/Shift/Time...", "\n0.25\n",
                    time_question + "TIME SHIFTING by 0.250000\n");
    expect_colour(0.125, 0.1, green);
    expect_colour(0.375, 0.1, green);
    expect_dialogue("Process/Shift/Time...", "-1\n",
                    time_question + "Closest acceptable time shift value: -0.250000 sec.\n"
                                    "TIME SHIFTING by -0.250000\n");
    expect_colour(0.25, 0.1, green);
    expect_dialogue("Process/Shift/Time...", "-c\n", time_question + "Command cancelled\n");
}

TEST_F(MenuProcess, ScaleOfAPartial) {
    begin("-fb");
    sweep(-0.02, 0.05, 0.3, 0.15);
    expect_count(green, 1);
    expect_dialogue("Process/Scale...", "\n2 1 1\n",
                    scale_question + "2.000000\t1.000000\t1.000000\n"
                                     "Reference time = 0.000000\n");
    expect_colour(0.5, 0.1, green);
    expect_colour(0.25, 0.1, contour(-45.0, -90.0));
    expect_dialogue("Process/Scale...", "0.05 1 1\n",
                    scale_question + "0.050000\t1.000000\t1.000000\n"
                                     "Time-stretch must be > 0.1\n");
    expect_dialogue("Process/Scale...", "-c\n", scale_question + "Command cancelled\n");
    expect_colour(0.5, 0.1, green);
}

TEST_F(MenuProcess, MirrorOfAPartial) {
    begin("-fb");
    sweep(-0.02, 0.2, 1.02, 0.28);
    expect_count(green, 4);
    expect_dialogue("Process/Mirror...", "\n1000\n",
                    mirror_question + "Mirroring frequencies @1000.000000\n");
    expect_colour(0.375, 0.72, contour(-150.0, -150.0)); // 600 Hz went to 1800 Hz
    expect_dialogue("Process/Mirror...", "-900\n",
                    mirror_question + "Mirroring pitch intervals @900.000000\n");
    expect_colour(0.375, 0.18, contour(-150.0, -150.0)); // and to 450 Hz
    expect_dialogue("Process/Mirror...", "0\n", mirror_question + "Command cancelled\n");
    expect_dialogue("Process/Mirror...", "-c\n", mirror_question + "Command cancelled\n");
    expect_colour(0.375, 0.18, contour(-150.0, -150.0));
}

TEST_F(MenuProcess, RetroOfAPartial) {
    constexpr double kilohertz = 1.0 / 4.4;
    begin_on(stairs_file(), "-fb");
    sweep(0.1, 0.05, 0.52, 0.55);
    expect_count(green, 4);
    expect_dialogue("Process/Retro...", "\n@\n",
                    retro_question + "partials = 2\ni = 0\tj = 0\tk = 0\ni = 0\tj = 0\tk = 1\n");
    expect_colour(0.125, 2.0 * kilohertz, green);
    expect_colour(0.25, 1.5 * kilohertz, green);
    expect_colour(0.375, kilohertz, green);
    expect_colour(0.5, 0.5 * kilohertz, green);
    expect_dialogue("Process/Retro...", "*\n",
                    retro_question + "partials = 2\n"
                                     "MINT = 0.500000\tMAXT = 2.000000\tTAU = 1.250000\n"
                                     "i = 0\tj = 0\tk = 0\ni = 0\tj = 0\tk = 1\n");
    expect_colour(0.125, 0.5 * kilohertz, green);
    expect_colour(0.5, 2.0 * kilohertz, green);
    look();
    const Image rising = picture;
    expect_dialogue("Process/Retro...", "backward\n", retro_question);
    expect_dialogue("Process/Retro...", "-c\n", retro_question + "Command cancelled\n");
    expect_picture(rising);
}
