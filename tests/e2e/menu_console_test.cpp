// Dialogues of the sound entries under modifier keys, and consoles that end or keep waiting.

#include "tests/e2e/menu_test.h"

namespace {

const std::string name_question = "Enter the audio file name (no extension): ";

class MenuConsole : public MenuTest {
  protected:
    void expect_reply_to(const std::string &way, const std::vector<std::string> &modifiers,
                         const std::string &reply, const std::string &text) {
        choose(way, modifiers);
        program->send(reply);
        expect_said(text);
    }
};

} // namespace

TEST_F(MenuConsole, SynthAllUnderModifiers) {
    begin("-fb");
    expect_reply_to("Synth/All...", {}, "\n-c\n",
                    tag + "Synth: All... Synthesize AIFF audio file from all partials: " +
                        name_question + "Command cancelled\n");
    // The name is read with its line: each dialogue waits for a return of its own.
    expect_reply_to("Synth/All...", {"ctrl"}, "\n-c\n",
                    "CTRL\n" + tag + "Synth: All... Synthesize AIFF file all parts. debug mode: " +
                        name_question + "Command cancelled\n");
    choose("Synth/All...", {"shift"});
    program->send("\n");
    expect_said("SHIFT\n" + tag +
                "Synth: All... Synthesize AIFF file all parts. debug w. fp file: " + name_question);
}

TEST_F(MenuConsole, SynthSelectedUnderModifiers) {
    begin("-fb");
    const std::string announce = "Synth: Selected...\t ";
    choose("Synth/Selected...");
    expect_said("Invalid Selection Mode for: Synth\n");
    choose("Synth/Selected...", {"ctrl"});
    expect_said("CTRL\nInvalid Selection Mode for: Synth\n");
    sweep(0.45, 0.4, 0.55, 0.55);
    expect_reply_to("Synth/Selected...", {}, "-c\n",
                    announce + "Synthesize AIFF audio file from select partials: " + name_question +
                        "Command cancelled\n");
    expect_reply_to("Synth/Selected...", {"ctrl"}, "-c\n",
                    "CTRL\n" + announce +
                        "Synth: All... Synthesize AIFF file select parts. debug mode: " +
                        name_question + "Command cancelled\n");
    expect_reply_to("Synth/Selected...", {"shift"}, "-c\n",
                    "SHIFT\n" + announce +
                        "Synth: All... Synthesize AIFF file select parts. debug mode\n"
                        "preserving floating point file: " +
                        name_question + "Command cancelled\n");
    expect_alive();
}

TEST_F(MenuConsole, GeneratorsAskForASelection) {
    begin("-fb");
    expect_reply_to("Edit/Generate/Harmonics...", {}, "\n",
                    tag + "Generate artificial harmonics...\t nothing selected\n");
    expect_reply_to("Edit/Generate/Replicate...", {}, "\n",
                    tag + "Replicate selected partials...\t nothing selected\n");
    expect_reply_to("Edit/Generate/Arbitrary...", {}, "\n",
                    tag + "\nGenerate arbitrary partials...\t nothing selected\n");
    sweep(0.45, 0.4, 0.55, 0.55);
    expect_reply_to("Edit/Generate/Harmonics...", {}, "\n-c\n",
                    tag + "Generate artificial harmonics...\t "
                          "Enter: <number>, <type>, <order>, <amp.decay>\nCommand cancelled\n");
    expect_reply_to("Edit/Generate/Replicate...", {}, "-c\n",
                    tag + "Replicate selected partials...\t "
                          "Enter: <destination_time> (-1 = @end)\n\tCommand cancelled\n");
    expect_reply_to("Edit/Generate/Arbitrary...", {}, "\n-c\n",
                    tag + "\nGenerate arbitrary partials...\t "
                          "Enter: <freq_mult1> <freq_mult2> ...[c|r|q|e|b]\n\tCommand cancelled\n");
}

TEST_F(MenuConsole, EnvelopeProbesAFile) {
    begin("-fb");
    const std::string question = tag + "Enter SDIF Spectral Envelope file name:\nquillgrove> ";
    expect_reply_to("Process/Envelope...", {}, "\nmissing.txt\n",
                    question +
                        "missing.txt\nCan't open file \"missing.txt\"\nNot implemented yet...\n");
    expect_reply_to("Process/Envelope...", {}, "-c\n", question + "operation cancelled\n");
    expect_reply_to("Process/Envelope...", {}, "tones.pt\n",
                    question + "tones.pt\nNot implemented yet...\n");
}

TEST_F(MenuConsole, EndOfInputEndsTheDialogueAndSparesTheWindow) {
    begin("-fb");
    sweep(0.2, 0.75, 0.3, 0.85);
    expect_count(green, 1);
    look();
    const Image swept = picture;
    choose("Process/Shift/Gain...");
    expect_said(tag);
    program->end_input();
    program->end_input();
    expect_said("Process: Shift:\tGain\t Quillgrove > Enter gain shift (dB):\n             ");
    expect_picture(swept); // the command ended there
    const double before = program->busy_seconds();
    program->listen(Duration(400));
    EXPECT_LT(program->busy_seconds() - before, 0.15);
    expect_alive();
    EXPECT_EQ(program->exit_status(Duration(50)), -1) << "it has ended";
}
