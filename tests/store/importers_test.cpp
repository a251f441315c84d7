// Start-up on every kind of analysis: whole texts, the store they end in, and the failures.
#include "store/importers.h"

#include "tests/support/analysis_file.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"
#include "tests/support/frame_text.h"

#include <climits>
#include <unistd.h>

namespace {

class Importers : public StoreTest {};

std::string folder_line() {
    char folder[PATH_MAX];
    return "Current working folder is:\n" +
           std::string(getcwd(folder, sizeof folder) != nullptr ? folder : "") + "\n";
}

const std::string opening = "Opening: a.pt \n";
const std::string unknown = "Quillgrove> Cannot recognize file type\n"
                            "Quillgrove> Try to read interactively?\nQuillgrove> ";
const std::string closing = "Quillgrove> Close the file and exit?\n"
                            "Quillgrove> Please confirm (enter y): "
                            "Quillgrove> Closing \"a.pt\" and exiting...\n\n";
const std::string none = "No valid partials to import: quitting program\n"
                         "No valid partials imported: quitting program\n";

TEST_F(Importers, SpearPartials) {
    const ChildResult result =
        start_on(spear_text("2", "0 2 0 1 0 440 1 0.5 441 0.1 1 1 0 0 0.25 880 0"), "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, opening +
                              "par-text-partials-format\npoint-type\nsuccess!\n"
                              "SPEAR partials file recognized: a.pt\nPartials: 2\nSPEAR file OK\n"
                              "snd. start = 0.000000\tsnd.length =   0.500\n"
                              "max. freq. =   880.00\tmin. freq. =   440.00\n"
                              "max. amp.  =    0.000 dB\n"
                              "Mean time interval between points = 0.500000\n" +
                              folder_line() +
                              "STORE\n[0][0]\t 0.000000\t440.000000\t0.000000\n"
                              "[0][1]\t 0.500000\t441.000000\t-20.000000\n\n"
                              "[1][0]\t 0.250000\t880.000000\t-140.000000\n\n");
}

TEST_F(Importers, SpearFrames) {
    const ChildResult result =
        start_on(spear_frames_text("2", "2", "0 2 1 880 1 0 440 1 0.5 1 0 441 0.1"), "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, opening +
                              "par-text-frame-format\n5\npoint-type\nsuccess!\n"
                              "SPEAR frames file recognized: a.pt\nPartials: 2\nFrames  : 2\n"
                              "SPEAR frames file OK\nSPEAR frames file imported\n"
                              "snd. start = 0.000000\tsnd.length =   0.500\n"
                              "max. freq. =   880.00\tmin. freq. =   440.00\n"
                              "max. amp.  =    0.000 dB\n"
                              "Mean time interval between points = 0.500000\n" +
                              folder_line() +
                              "STORE\n[0][0]\t 0.000000\t440.000000\t0.000000\n"
                              "[0][1]\t 0.500000\t441.000000\t-20.000000\n\n"
                              "[1][0]\t 0.000000\t880.000000\t0.000000\n\n");
}

std::string three_frames(const std::string &signature) {
    return sdif_frame(signature, "0.25", {"1 440 1 0", "3 2 1 0"}) +
           sdif_frame(signature, "0.5", {"1 441 1 0", "3 30000 1 0"}) +
           sdif_frame(signature, "0.75", {"1 442 0.1 0", "3 30000 1 0"});
}

std::string tracks_out(const std::string &table, const std::string &signature) {
    return opening + "SDIF\nSDIF\n1NVT\n" + table + "\nSDFC\n" + signature +
           "\nsuccess!\nSDFC\nENDC\nNum. Partials: 3\nrevisiting SDIF File\n"
           "importing SDIF File\nCorrupt partial[1] with 0 points\nAll corrupt partials removed\n"
           "snd. start = 0.250000\tsnd.length =   0.750\n"
           "max. freq. =   442.00\tmin. freq. =   440.00\n"
           "max. amp.  =    0.000 dB\n"
           "Mean time interval between points = 0.500000\n" +
           folder_line() +
           "STORE\n[0][0]\t 0.250000\t440.000000\t-6.000000\n"
           "[0][1]\t 0.500000\t441.000000\t-36.000000\n"
           "[0][2]\t 0.750000\t442.000000\t-140.000000\n\n\n";
}

TEST_F(Importers, SdifTracks) {
    // The empty partial in the last place but one stays, and the last one goes.
    const ChildResult result = start_on(tracks_text("1TRC", three_frames("1TRC")), "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, tracks_out("SinusoidalTracks;", "1TRC"));
    EXPECT_EQ(result.err, "");
}

TEST_F(Importers, SdifHarmonicTracks) {
    EXPECT_EQ(start_on(tracks_text("1HRM", three_frames("1HRM")), "").out,
              tracks_out("HarmonicTracks;", "1HRM"));
}

TEST_F(Importers, TracksAreHeldToTheRange) {
    const std::string body = sdif_frame("1TRC", "0", {"1 2 1 0"}) +
                             sdif_frame("1TRC", "1", {"1 30000 0.1 0"}) +
                             sdif_frame("1TRC", "2", {"1 440 1 0"});
    const ChildResult result = start_on(tracks_text("1TRC", body), "");
    EXPECT_NE(result.out.find("max. freq. = 22050.00\tmin. freq. =     4.00\n"), std::string::npos);
    EXPECT_NE(result.out.find("STORE\n[0][0]\t 0.000000\t4.000000\t-6.000000\n"
                              "[0][1]\t 1.000000\t22050.000000\t-56.000000\n"
                              "[0][2]\t 2.000000\t440.000000\t-140.000000\n"),
              std::string::npos)
        << result.out;
}

TEST_F(Importers, SdifFundamental) {
    const ChildResult result = start_on(curve_text(sdif_frame("1FQ0", "0.5", {"440 1"}, 2) +
                                                   sdif_frame("1FQ0", "1", {"430 1"}, 2) +
                                                   sdif_frame("1FQ0", "1.5", {"450 1"}, 2)),
                                        "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, opening +
                              "SDIF\nSDIF\n1FQ0\nsuccess!\nProceeding with f0 SDIF file import\n"
                              "revisiting SDIF File\nSDIF\nPARTIAL # 0   3 POINTS\n"
                              "importing SDIF File\n"
                              "PARRAY[0][0]: 0.500000  440.000000  -140.000000\n"
                              "PARRAY[0][1]: 1.000000  430.000000  -140.000000\n"
                              "PARRAY[0][2]: 1.500000  450.000000  -140.000000\n"
                              "snd. start = 0.500000\tsnd.length =   1.500\n"
                              "max. freq. =   450.00\tmin. freq. =   430.00\n"
                              "max. amp.  =  -10.000 dB\n"
                              "Mean time interval between points = 0.500000\n" +
                              folder_line() +
                              "STORE\n[0][0]\t 0.500000\t440.000000\t-140.000000\n"
                              "[0][1]\t 1.000000\t430.000000\t-122.000000\n"
                              "[0][2]\t 1.500000\t450.000000\t-140.000000\n\n");
}

TEST_F(Importers, AnUnknownTextByHand) {
    const ChildResult result = start_on("peaks 440 880", "y\ny\nf\nf\nf\n1 4 -10 8\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              opening + "peaks\n" + unknown +
                  "Quillgrove> Reading interactively:\nQuillgrove> Please confirm (y/n): "
                  "Quillgrove> Which parameters? (a|f|d)\n"
                  "            f = freq.\n            a = amp.\n            d = dur.\n"
                  "            (no space, in reading order): Sequence of arguments: f\n"
                  "Number  of values:    1\nf @ 1\nBegin reading:\n"
                  "    text:  \"440\"  \t(f|a|d/n)?:     text:  \"880\"  \t(f|a|d/n)?: "
                  "End reading.\n"
                  "Quillgrove> Enter: <duration> <points/s.> <amp(dB)> <decay/s.>\n\t\t"
                  " 1.00 4 -10.00  8.0\n"
                  "Num. Partials: 2\ndur = 4.000000\tfactor = 0.250000\n"
                  "npoints[0] = 4\nnpoints[1] = 4\n"
                  "snd. start = 0.000000\tsnd.length =   0.750\n"
                  "max. freq. =   880.00\tmin. freq. =   440.00\n"
                  "max. amp.  =  -10.000 dB\n"
                  "Mean time interval between points = 0.250000\n" +
                  folder_line() +
                  "STORE\n[0][0]\t 0.000000\t440.000000\t-16.000000\n"
                  "[0][1]\t 0.250000\t440.000000\t-12.000000\n"
                  "[0][2]\t 0.500000\t440.000000\t-72.000000\n"
                  "[0][3]\t 0.750000\t440.000000\t-100.000000\n\n"
                  "[1][0]\t 0.000000\t880.000000\t-16.000000\n"
                  "[1][1]\t 0.250000\t880.000000\t-12.000000\n"
                  "[1][2]\t 0.500000\t880.000000\t-72.000000\n"
                  "[1][3]\t 0.750000\t880.000000\t-100.000000\n\n");
}

TEST_F(Importers, GivingUpByHandClosesTheFile) {
    for (const std::string input : {"y\nn\ny\n", "y\ny\nad\ny\n", "y\ny\nf\n/\ny\ny\n", "y\n",
                                    "y\ny\n", "y\ny\nf\n", "y\ny\nf\nf\n", "y\ny\nf\nf\n1 2\n"}) {
        const ChildResult result = start_on("hello 440", input);
        EXPECT_EQ(result.status, 1) << input;
        EXPECT_TRUE(result.out.ends_with(closing)) << input << result.out;
    }
}

TEST_F(Importers, TooFewPointsByHandCloseTheFile) {
    const ChildResult result = start_on("hello 440", "y y f f 1 2 -10 0 y");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.out.ends_with("Not enough points - min. 3 per partial\n" + closing))
        << result.out;
}

TEST_F(Importers, AnotherLetterByHandEndsAtOnce) {
    const ChildResult result = start_on("hello 440", "y y fx f");
    EXPECT_EQ(result.status, 255);
    EXPECT_TRUE(result.out.ends_with("Sequence of arguments: fx\n")) << result.out;
}

TEST_F(Importers, SpearHeadsWithoutTheirCounts) {
    for (const std::string text :
         {"par-text-partials-format point-type time 2", "par-text-frame-format point-type 2",
          "par-text-frame-format point-type partials-count 2 frames 3 frame-data"}) {
        const ChildResult result = start_on(text, "");
        EXPECT_EQ(result.status, 255) << text;
        EXPECT_TRUE(result.out.ends_with("recognized: a.pt\n"
                                         "Quillgrove > file sub-type not recognized\n"))
            << result.out;
    }
}

TEST_F(Importers, CorruptSpearFiles) {
    ChildResult result = start_on(spear_text("1", "0 5 0 0 0 440 1"), "");
    EXPECT_EQ(result.status, 255);
    EXPECT_TRUE(result.out.ends_with("Partials: 1\nQuillgrove > SPEAR file corrupt\nExiting\n"));
    result = start_on(spear_frames_text("1", "1", "0 5 0 440 1"), "");
    EXPECT_EQ(result.status, 255);
    EXPECT_TRUE(result.out.ends_with("Partials: 1\nFrames  : 1\n"
                                     "Quillgrove > SPEAR frames file corrupt\nExiting\n"));
}

TEST_F(Importers, CountsThatTheFileCannotHoldNeedNoMemory) {
    ChildLimits limits;
    limits.address_space = sanitized() ? 0 : size_t{256} << 20;
    for (const std::string &text :
         {spear_text("2147483647", "0 1 0 0 0 440 1"), spear_text("1", "0 2147483647 0 0 0 440 1"),
          spear_frames_text("2147483647", "1", "0 1 0 440 1"),
          spear_frames_text("1", "1", "0 2147483647 0 440 1")}) {
        const ChildResult result = start_on(text, "", limits);
        EXPECT_EQ(result.signal, 0);
        EXPECT_EQ(result.status, 255) << text;
        EXPECT_NE(result.out.find(" corrupt\nExiting\n"), std::string::npos) << result.out;
    }
    const ChildResult result =
        start_on(tracks_text("1TRC", sdif_frame("1TRC", "0", {"2147483647 440 1 0"})), "", limits);
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.out.ends_with("SDFC\nError: Analysis file corrupt! Exiting...\n"))
        << result.out;
}

TEST_F(Importers, TracksWithManyGapsAreQuick) {
    ChildLimits limits;
    limits.seconds = 20;
    const std::string body = sdif_frame("1TRC", "0", {"65000 440 1 0", "64999 441 1 0"}) +
                             sdif_frame("1TRC", "1", {"65000 440 1 0", "64999 441 1 0"});
    const ChildResult result = start_on(tracks_text("1TRC", body), "", limits);
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.ends_with("STORE\n[0][0]\t 0.000000\t441.000000\t-36.000000\n"
                                     "[0][1]\t 1.000000\t441.000000\t-140.000000\n\n"
                                     "[1][0]\t 0.000000\t441.000000\t-36.000000\n"
                                     "[1][1]\t 1.000000\t441.000000\t-140.000000\n\n"))
        << result.out.substr(result.out.size() - 400);
}

TEST_F(Importers, TextsOfNoPartial) {
    for (const std::string &text :
         {spear_text("0", ""), spear_text("-3", ""), spear_frames_text("0", "0", ""),
          tracks_text("1TRC", ""), tracks_text("1HRM", "")}) {
        const ChildResult result = start_on(text, "");
        EXPECT_EQ(result.status, 255) << text;
        EXPECT_TRUE(result.out.ends_with(none)) << result.out;
    }
}

TEST_F(Importers, AFundamentalOfNoPointIsOneEmptyPartial) {
    const ChildResult result = start_on(curve_text(""), "");
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.ends_with("STORE\n\n")) << result.out;
}

TEST_F(Importers, AFundamentalWhoseThirdWordIsAnother) {
    // The detector has read the first word of the table for the frame's.
    const ChildResult result = start_on("SDIF 1NVT x 1FQ0 1 1 0", "");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.out.ends_with("revisiting SDIF File\nSDIF\nx\n")) << result.out;
}

TEST_F(Importers, PartialsThatTheFramesNeverNameStayEmpty) {
    const ChildResult result = start_on(spear_frames_text("3", "1", "0 1 1 440 1"), "");
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.ends_with("STORE\n\n[1][0]\t 0.000000\t440.000000\t0.000000\n\n\n"))
        << result.out;
}

} // namespace
