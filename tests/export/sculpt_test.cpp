// "SCULPT" scores, which no command reaches.
#include "export/export3d.h"

#include "store/settings.h"
#include "tests/export/export_support.h"
#include "tests/support/console.h"

namespace {

const std::string ask = "Score file name: " + blanks;
const std::string ask_sound = "Sound file name ( . if RT ): " + blanks;
const std::string parameters = "Enter \"SCULPT\" parameters: "
                               "start-offset  time-stretch  overall-amp  stereo-spread\n";
const std::string info =
    "/* SCULPT: instrument for tracking linear partial data placed in makegens\n*\n"
    "*  p0 = start time\n*  p1 = duration of each point\n*  p2 = overall amplitude\n"
    "*  p3 = number of points\n*  p4 = stereo spread (0-1) <optional>\n"
    "*  function slot 1 is Gen24 =overall amp envelope (slot#, 24, <time, value>, ... )\n"
    "*  function slot 2 is Gen10 =waveform (slot#, 10, <1th_harmonic_amp>[0-1], ... "
    "<nth_harmonic_amp>[0-1])\n"
    "*  function slot 3 is Gen2  =listing of frequency points =(slot#, 2, <num_members>, where?) "
    "0= next line\n"
    "*  function slot 4 is Gen2  =listing of amplitude points\n*/\n\n";
const std::string real_time = "\nrtsetparams(44100, 2) \n\nload(\"SCULPT\") \n";
const std::string slots = "\nmakegen(1, 24, 1000, 0, 1, 1, 1)\nmakegen(2, 10, 1000, 1)\n";
const std::string first = "makegen(3, 2, 3, 0)\n   440.0   441.1   442.0"
                          "\nmakegen(4, 2, 3, 0)\n    0.0  -20.0  -40.0";
const std::string second = "makegen(3, 2, 2, 0)\n   880.0 12345.7"
                           "\nmakegen(4, 2, 2, 0)\n   -6.0 -140.0";

class Sculpt : public ExportTest {
  protected:
    void SetUp() override {
        ExportTest::SetUp();
        fill_store(two_partials());
    }

    static std::string export_all(const std::string &replies) {
        return conversation(replies, [] { sculpt3d(parray, npoints, partials); });
    }
    static std::string export_selected(const std::string &replies) {
        return conversation(replies, [] { sculpt3ds(parray, npoints, partials); });
    }
    std::string writing(const std::string &kind) const {
        return "Writing " + kind + "cmix score to file: \"" + path() + "\"\n";
    }
};

TEST_F(Sculpt, RealTime) {
    EXPECT_EQ(export_all(path() + "\n.\n0.5 2 1000.9 0.5\n"),
              ask + ask_sound + parameters + writing("RT") + "\tdone\n");
    EXPECT_EQ(text_of(), info + real_time + slots + first +
                             "\n\nSCULPT( 0.500,  2.001,1000, 3 )\n\n" + second +
                             "\n\nSCULPT( 1.000,  3.500,1000, 2 )\n\n\n");
}

TEST_F(Sculpt, IntoASoundFile) {
    EXPECT_EQ(export_all(path() + "\nmy sound\n0 1 1000 0.5\n"),
              ask + ask_sound + parameters + writing("") + "\tdone\n");
    EXPECT_EQ(text_of(), info + "\nload(\"sculpt\") \n\noutput(\"my sound\") \n" + slots + first +
                             "\n\nsculpt( 0.000,  1.001,1000, 3 )\n\n" + second +
                             "\n\nsculpt( 0.250,  1.750,1000, 2 )\n\n\n");
}

TEST_F(Sculpt, VerbosePrintsTheScore) {
    verbose = 1;
    const std::string text = export_all(path() + "\n.\n0.5 2 1000 0.5\n");
    EXPECT_EQ(text, ask + ask_sound + parameters +
                        "(Consult Orvane's prototype of \"sculpt\" in RTcmix)\n" + text_of() +
                        "\tdone\n");
    EXPECT_NE(text_of(), "none");
}

TEST_F(Sculpt, NoDefaultsAndNoLimits) {
    EXPECT_EQ(export_all(path() + "\n.\nnone\n"),
              ask + ask_sound + parameters + writing("RT") + "\tdone\n");
    EXPECT_NE(text_of().find("SCULPT( 0.000,  0.000,0, 3 )"), std::string::npos);
    export_all(path("b") + "\n.\n0 0.01 1e30 9\n");
    EXPECT_NE(text_of("b").find("SCULPT( 0.000,  0.010,2147483520, 3 )"), std::string::npos)
        << "held to the type's range";
}

TEST_F(Sculpt, GuardAndEndOfInput) {
    make("out", "kept");
    EXPECT_EQ(export_all(path() + "\n.\n0 1 1 1\n"), ask + "File " + path() + " exists\n");
    const std::string nowhere = path("no/where");
    EXPECT_EQ(export_all(nowhere + "\n"), ask + "Cannot create file " + nowhere + "\n");
    EXPECT_EQ(export_all(""), ask);
    EXPECT_EQ(export_all(path("b") + "\n"), ask + ask_sound);
    EXPECT_EQ(export_all(path("b") + "\n.\n"), ask + ask_sound + parameters);
    EXPECT_EQ(text_of(), "kept");
    EXPECT_EQ(files(), std::vector<std::string>{"out"});
}

TEST_F(Sculpt, NothingSelected) {
    EXPECT_EQ(export_selected(path() + "\n.\n"), "Candidates: 0\nnothing selected\n");
    parray[1][0].selected = 2;
    EXPECT_EQ(export_selected(path() + "\n.\n"), "Candidates: 0\nnothing selected\n");
}

TEST_F(Sculpt, SelectedPartialsAreWhole) {
    mark(1, 1, 1);
    const std::string opening = "Candidates: 1\nPartial# 1 \n"
                                "Quillgrove> Enter CMIX score file parameters\n"
                                "\033[31mQuillgrove> \033[0m Enter CMIX score file parameters\n";
    const std::string names = "Score file name: Sound file name: ";
    EXPECT_EQ(export_selected(path() + " . 0.5 2 1000 0.5\n"),
              opening + names + parameters + writing("RT") + "\tdone\n");
    EXPECT_EQ(text_of(),
              info + real_time + slots + second + "\n\nSCULPT( 1.000,  3.500, 1000, 2 )\n\n\n");
    std::remove(path().c_str());
    EXPECT_EQ(export_selected(path() + " sound 0.5 2 1000 0.5\n"),
              opening + names + "Quillgrove: Generating real-time score\n" + parameters +
                  writing("") + "\tdone\n");
    EXPECT_EQ(text_of(), info + "\nload(\"sculpt\") \n\noutput(\"sound\") \n" + slots + second +
                             "\n\nsculpt( 1.000,  3.500, 1000, 2 )\n\n\n");
    EXPECT_EQ(export_selected(path() + " .\n"),
              opening + "Score file name: File " + path() + " exists\n");
    EXPECT_EQ(export_selected(path("b")), opening + names);
    EXPECT_EQ(files(), std::vector<std::string>{"out"});
}

TEST_F(Sculpt, FullDisk) {
    const ShortOfRoom result =
        short_of_room(500, path() + "\n.\n0 1 1 1\n", [] { sculpt3d(parray, npoints, partials); });
    EXPECT_EQ(result.out, ask + ask_sound + parameters + writing("RT"));
    EXPECT_EQ(result.err, "Quillgrove: " + path() + ": File too large\n");
    EXPECT_TRUE(files().empty());
}

} // namespace
