// The real program on a file of each format beside the Lisp list: its console up to the window.

#include "tests/e2e/expected.h"
#include "tests/e2e/window_test.h"

namespace {

class Formats : public WindowTest {
  protected:
    /// The console's text between the line "Opening" and the working folder, once the window
    /// of a file with this text shows.
    std::string report_of(const std::string &text) {
        folder.write("a.txt", text);
        start({"a.txt"}, "a.txt");
        program->listen(Duration(300));
        return middle(program->output());
    }

    std::string middle(const std::string &all) {
        const std::string head = arguments_text({"a.txt"}) + banner() + "Opening: a.txt \n";
        const std::string tail = folder_and_graphics(folder.path());
        EXPECT_TRUE(all.starts_with(head)) << all;
        EXPECT_TRUE(all.ends_with(tail)) << all;
        return all.size() < head.size() + tail.size()
                   ? ""
                   : all.substr(head.size(), all.size() - head.size() - tail.size());
    }
};

/// What is told of two seconds between these frequencies, with these levels and intervals.
std::string ranges(const std::string &start, const std::string &high, const std::string &low,
                   const std::string &loudest, const std::string &interval) {
    return "snd. start = " + start + "\tsnd.length =   2.000\nmax. freq. = " + high +
           "\tmin. freq. = " + low + "\nmax. amp.  = " + loudest +
           " dB\nMean time interval between points = " + interval + "\n";
}

const std::string sinusoidal = "SDIF 1NVT { TableName SinusoidalTracks; } SDFC ";
const std::string harmonic = "SDIF 1NVT { TableName HarmonicTracks; } SDFC ";

std::string track_frames(const std::string &signature) {
    std::string text;
    for (const std::string time : {"0", "0", "1", "2"}) {
        text += signature + " 1 0 " + time + " " + signature + " 0x0004 2 4 ";
        text += "1 500 1 0 2 800 0.1 0 ";
    }
    return text + "ENDC ENDF";
}

} // namespace

TEST_F(Formats, SpearPartials) {
    EXPECT_EQ(report_of("par-text-partials-format\npoint-type time frequency amplitude\n"
                        "partials-count 2\npartials-data\n"
                        "0 3 0 2\n0 500 1 1 500 1 2 500 1\n1 2 0 1\n0 800 0.1 1 800 0.1\n"),
              "par-text-partials-format\npoint-type\nsuccess!\n"
              "SPEAR partials file recognized: a.txt\nPartials: 2\nSPEAR file OK\n" +
                  ranges("0.000000", "  800.00", "  500.00", "   0.000", "1.000000"));
}

TEST_F(Formats, SpearFrames) {
    EXPECT_EQ(report_of("par-text-frame-format\npoint-type index frequency amplitude\n"
                        "partials-count 2\nframe-count 3\nframe-data\n"
                        "0 2 1 800 0.1 0 500 1\n1 2 0 500 1 1 800 0.1\n2 1 0 500 1\n"),
              "par-text-frame-format\n5\npoint-type\nsuccess!\n"
              "SPEAR frames file recognized: a.txt\nPartials: 2\nFrames  : 3\n"
              "SPEAR frames file OK\nSPEAR frames file imported\n" +
                  ranges("0.000000", "  800.00", "  500.00", "   0.000", "1.000000"));
}

TEST_F(Formats, SdifTracks) {
    EXPECT_EQ(report_of(sinusoidal + track_frames("1TRC")),
              "SDIF\nSDIF\n1NVT\nSinusoidalTracks;\nSDFC\n1TRC\nsuccess!\nSDFC\nENDC\n"
              "Num. Partials: 2\nrevisiting SDIF File\nimporting SDIF File\n"
              "All corrupt partials removed\n" +
                  ranges("0.000000", "  800.00", "  500.00", "   0.000", "1.000000"));
}

TEST_F(Formats, SdifHarmonicTracks) {
    EXPECT_EQ(report_of(harmonic + track_frames("1HRM")),
              "SDIF\nSDIF\n1NVT\nHarmonicTracks;\nSDFC\n1HRM\nsuccess!\nSDFC\nENDC\n"
              "Num. Partials: 2\nrevisiting SDIF File\nimporting SDIF File\n"
              "All corrupt partials removed\n" +
                  ranges("0.000000", "  800.00", "  500.00", "   0.000", "1.000000"));
}

TEST_F(Formats, SdifFundamental) {
    std::string text = "SDIF SDFC ";
    for (const std::string frame : {"0 1FQ0 0x0004 1 4 1", "1 1FQ0 0x0004 1 4 500",
                                    "1.5 1FQ0 0x0004 1 4 400", "2 1FQ0 0x0004 1 4 800"}) {
        text += "1FQ0 1 0 " + frame + " 1 1 0.1 ";
    }
    EXPECT_EQ(report_of(text + "ENDC ENDF"),
              "SDIF\nSDIF\n1FQ0\nsuccess!\nProceeding with f0 SDIF file import\n"
              "revisiting SDIF File\nSDIF\nPARTIAL # 0   3 POINTS\nimporting SDIF File\n"
              "PARRAY[0][0]: 1.000000  500.000000  -20.000000\n"
              "PARRAY[0][1]: 1.500000  400.000000  -20.000000\n"
              "PARRAY[0][2]: 2.000000  800.000000  -20.000000\n" +
                  ranges("1.000000", "  800.00", "  400.00", " -10.000", "0.500000"));
}

TEST_F(Formats, UnknownTextReadByHand) {
    folder.write("a.txt", "peaks: 12 24");
    program = std::make_unique<Program>(Launch{{"a.txt"}, folder.path(), desktop.display(), true});
    for (const auto &[prompt, reply] : std::initializer_list<std::pair<const char *, const char *>>{
             {"Try to read interactively?\nQuillgrove> ", "y\n"},
             {"Please confirm (y/n): ", "y\n"},
             {"(no space, in reading order): ", "f\n"},
             {"\"12\"  \t(f|a|d/n)?: ", "f\n"},
             {"\"24\"  \t(f|a|d/n)?: ", "f\n"},
             {"<amp(dB)> <decay/s.>\n\t\t", "2.5 2 -10 8\n"},
             {"Enter a desired lowest partial's frequency: ", "400\n"}}) {
        ASSERT_TRUE(program->expect(prompt)) << program->output();
        program->send(reply);
    }
    ASSERT_TRUE(program->expect("max clip planes = 8\n")) << program->output();
    EXPECT_NE(screen.find("Quillgrove: a.txt"), 0u);
    program->listen(Duration(300));
    EXPECT_EQ(middle(program->output()),
              "peaks:\nQuillgrove> Cannot recognize file type\n"
              "Quillgrove> Try to read interactively?\nQuillgrove> "
              "Quillgrove> Reading interactively:\nQuillgrove> Please confirm (y/n): "
              "Quillgrove> Which parameters? (a|f|d)\n"
              "            f = freq.\n            a = amp.\n            d = dur.\n"
              "            (no space, in reading order): Sequence of arguments: f\n"
              "Number  of values:    1\nf @ 1\nBegin reading:\n"
              "    text:  \"12\"  \t(f|a|d/n)?:     text:  \"24\"  \t(f|a|d/n)?: End reading.\n"
              "Quillgrove> Enter: <duration> <points/s.> <amp(dB)> <decay/s.>\n\t\t"
              " 2.50 2 -10.00  8.0\n"
              "Num. Partials: 2\ndur = 5.000000\tfactor = 0.500000\n"
              "Minimal detected frequency of 12.00 Hz is a subsonic\n"
              "frequency and probably represents only a harmonic ratio.\n"
              "Enter a desired lowest partial's frequency: 400.000000\n"
              "npoints[0] = 5\nnpoints[1] = 5\n" +
                  ranges("0.000000", "  800.00", "  400.00", " -10.000", "0.500000"));
}
