// The envelope that moves along the sound: its dialogue, its spans and the ends of partials.

#include "envelope/lpcf.h"
#include "envelope/mutate.h"
#include "tests/envelope/envelope_support.h"
#include "tests/support/console.h"

#include <filesystem>

namespace {

constexpr const char *ask_file = "//Enter the Audiosculpt LPC analysis file to open:\n>\t";
constexpr const char *ask_residual = "Create residual? (y/n)\n\n>\t";
constexpr const char *applied = "APPLYING SPECTRAL ENVELOPE...\n";

using Levels = std::vector<float>;

class Mutdyn : public EnvelopeTest {
  protected:
    void SetUp() override {
        EnvelopeTest::SetUp();
        content = Partial{};
        for (int i = 0; i <= 8; ++i) {
            content.push_back({static_cast<float>(i), 3000.0f, -20.0f});
        }
        fill_store({content});
    }

    std::string run(const std::string &replies, int32_t mode, LpcFrame a = nullptr,
                    LpcFrame b = nullptr) {
        return conversation(replies,
                            [&] { status = mutdyn(8.0f, parray, peval, a, b, npoints, mode); });
    }

    Levels levels(int32_t partial = 0) const {
        Levels all;
        for (int32_t j = 0; j < npoints[partial]; ++j) {
            all.push_back(parray[partial][j].amp);
        }
        return all;
    }

    /// `count` frames in dB. Reading turns the first two levels into 0; the last two are what a
    /// point between -10 and 20000 Hz finds.
    std::string db_file(int count) {
        std::string all;
        for (int i = 0; i < count; ++i) {
            all += std::to_string(i) + " 4\n-1 -100\n-1 -50\n-1 -10\n-1 20000\n";
        }
        return file_of(all);
    }

    Partial content;
    int16_t status = 99;
};

/// What a span of frames of p points prints; lines behind the first use blanks.
std::string span_line(double a, double b, bool first, int p = 4) {
    char line[100];
    std::snprintf(line, sizeof line, first ? "%f\t%d\t\t%f\t%d\n" : "%f  %d\t\t%f  %d\n", a, p, b,
                  p);
    return line + std::string(applied);
}

TEST_F(Mutdyn, EveryPairOfAFileIsApplied) {
    EXPECT_EQ(run(db_file(5) + "\n", 1), std::string(ask_file) + "\n\n\n" + span_line(0, 2, true) +
                                             "\n" + span_line(2, 4, false) + "\n" +
                                             span_line(4, 6, false) + "\n" +
                                             span_line(6, 8, false) + "\nat EOF\n");
    EXPECT_EQ(status, -11);
    EXPECT_EQ(Oerror, -11);
}

TEST_F(Mutdyn, ThreeFramesFilterOnePairOnly) {
    EXPECT_EQ(run(db_file(3) + "\n", 1), std::string(ask_file) + "\n\n\n" + span_line(0, 4, true));
    EXPECT_EQ(status, 4);
    EXPECT_NE(levels()[4], -20.0f);
    EXPECT_EQ(levels()[5], -20.0f); // behind the pair
    EXPECT_EQ(levels()[7], -20.0f); // the end loses nothing at 3000 Hz
    EXPECT_EQ(levels()[8], -92.0f);
}

TEST_F(Mutdyn, ACutFrameIsNotApplied) {
    const std::string name = file_of("0 2\n-1 100\n-1 20000\n1 2\n-1 100\n-1 20000\n"
                                     "2 2\n-1 100\n-1 20000\n3 2\n-1 100\n");
    const std::string text = run(name + "\n", 1);
    EXPECT_TRUE(text.ends_with("at EOF\n")) << text;
    EXPECT_EQ(status, -11);
    EXPECT_EQ(levels()[7], -20.0f); // the span from 2 to 3 s of the file
}

TEST_F(Mutdyn, AFileWithMostSignsNegativeIsInDecibels) {
    run(db_file(3) + "\n", 1);
    EXPECT_EQ(levels()[1], -20.0f - 13.0f);
}

TEST_F(Mutdyn, AFileWithoutSignsIsLinear) {
    const std::string name = file_of("0 2\n0.5 100\n0.5 20000\n1 2\n0 100\n0 20000\n");
    for (int32_t j = 0; j < npoints[0]; ++j) {
        parray[0][j].amp = 0.5f;
    }
    run(name + "\n", 1);
    EXPECT_EQ(levels()[1], 0.5f * 0.25f * 0.5f);
}

TEST_F(Mutdyn, AMissingFileEndsIt) {
    EXPECT_EQ(run(folder + "/none\n", 1), ask_file);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(levels(), Levels(9, -20.0f));
}

TEST_F(Mutdyn, AFileThatBeginsWithAWordSkipsToTheEnd) {
    run(file_of("frames") + "\n", 1);
    EXPECT_EQ(status, -4);
    EXPECT_EQ(levels(), Levels(9, -20.0f));
}

TEST_F(Mutdyn, TheEndOfTheInputLeavesTheLevels) {
    EXPECT_EQ(run("", 1), ask_file);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(levels(), Levels(9, -20.0f));
}

TEST_F(Mutdyn, Mode4OffersAResidual) {
    EXPECT_EQ(run("n\n" + folder + "/none\n", 4), std::string(ask_residual) + ask_file);
    EXPECT_EQ(levels(), Levels(9, -20.0f));
}

TEST_F(Mutdyn, TheResidualIsAFlatShapeThatIsSaved) {
    const std::string list = folder + "/flat";
    run("y\n" + list + "\n" + folder + "/none\n", 4);
    EXPECT_EQ(levels(), (Levels{-42, -36, -36, -36, -36, -36, -36, -24, -120}));
    EXPECT_TRUE(std::filesystem::exists(list + ".pt"));
}

TEST_F(Mutdyn, Mode41TakesTheFlatShapeWithoutSavingIt) {
    EXPECT_EQ(run(folder + "/none\n", 41), ask_file);
    EXPECT_EQ(levels(), (Levels{-42, -36, -36, -36, -36, -36, -36, -24, -120}));
}

TEST_F(Mutdyn, Mode44SavesTheFlatShape) {
    const std::string list = folder + "/flat";
    run(list + "\n" + folder + "/none\n", 44);
    EXPECT_TRUE(std::filesystem::exists(list + ".pt"));
}

TEST_F(Mutdyn, TheFlatShapeOfShortPartials) {
    fill_store({{{0, 3000, -20}},
                {{0, 3000, -20}, {1, 3000, -20}},
                {{0, 3000, -20}, {1, 3000, -20}, {2, 3000, -20}}});
    run(folder + "/none\n", 41);
    EXPECT_EQ(levels(0), (Levels{-42}));
    EXPECT_EQ(levels(1), (Levels{-42, -120}));
    EXPECT_EQ(levels(2), (Levels{-42, -24, -120}));
}

TEST_F(Mutdyn, Mode44DiscardsThePointsOwnLevels) {
    run(folder + "/flat\n" + db_file(3) + "\n", 44);
    EXPECT_EQ(levels()[1], -13.0f);
    EXPECT_EQ(levels()[2], -13.0f);
}

TEST_F(Mutdyn, Mode41KeepsTheFlatShapesShare) {
    run(db_file(3) + "\n", 41);
    EXPECT_EQ(levels()[1], -36.0f - 13.0f);
}

TEST_F(Mutdyn, FramesPassedInAreTakenOver) {
    LpcFrame a = lpc_initialize(0, 1);
    LpcFrame b = lpc_initialize(0, 1);
    run(db_file(3) + "\n", 1, a, b);
    EXPECT_EQ(status, 4);
    EXPECT_EQ(lpc_is, 1);
    EXPECT_EQ(lpc1_is, 1);
}

TEST_F(Mutdyn, FramesPassedInServeAFileWithoutPoints) {
    LpcFrame a = frame_of({{5, 5}});
    LpcFrame b = frame_of({{5, 5}});
    run(file_of("0 0\n1 0\n2 0\n") + "\n", 1, a, b);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(lpc_is, 0);
    EXPECT_EQ(records_of(a), "0 0");
    EXPECT_EQ(records_of(b), "1 0");
}

TEST_F(Mutdyn, AFileOfOneFrameHasNoLength) {
    run(file_of("0 2\n-1 100\n-1 20000\n") + "\n", 1);
    EXPECT_EQ(status, 2);
    EXPECT_EQ(levels()[1], -20.0f);
}

TEST_F(Mutdyn, AFirstFrameThatIsCutHasNoLengthEither) {
    run(file_of("0 3\n0.5 100\n0.5") + "\n", 1);
    EXPECT_EQ(status, 3);
    EXPECT_EQ(levels()[1], -20.0f);
}

TEST_F(Mutdyn, ASecondFrameThatIsCutIsFilledWithItsLastToken) {
    // Every level reads as 0 among so few, which makes the file linear and the points silent.
    const std::string name = file_of("0 2\n-1 100\n-1 20000\n1 2\n-1\n");
    EXPECT_EQ(run(name + "\n", 1), std::string(ask_file) + "\n\n\n" + span_line(0, 8, true, 2));
    EXPECT_EQ(status, 2);
    EXPECT_EQ(levels(), (Levels{0, 0, 0, 0, 0, 0, 0, -20, -92}));
}

TEST_F(Mutdyn, FramesWithoutPointsShapeOnlyTheEnds) {
    const std::string name = file_of("0 0\n1 0\n2 0\n3 0\n");
    const double s = 8.0f / 3.0f;
    EXPECT_EQ(run(name + "\n", 1), std::string(ask_file) + "\n\n\n" + span_line(0, s, true, 0) +
                                       "\n" + span_line(s, 2 * s, false, 0) + "\n" +
                                       span_line(2 * s, 3 * s, false, 0) + "\nat EOF\n");
    EXPECT_EQ(status, -11);
    EXPECT_EQ(lpc_is, 1);
    EXPECT_EQ(lpc1_is, 1);
    EXPECT_EQ(levels(), (Levels{-20, -20, -20, -20, -20, -20, -20, -20, -92}));
}

TEST_F(Mutdyn, FramesOfOnePoint) {
    run(file_of("0 1\n-1 100\n1 1\n-1 100\n2 1\n-1 100\n3 1\n-1 100\n") + "\n", 1);
    EXPECT_EQ(status, -11);
    EXPECT_EQ(levels()[1], -20.0f);
}

/// The losses of a partial of four points from `start` on at `freq`, each of -20 dB.
class MutdynEnds : public Mutdyn {
  protected:
    Levels after(float freq, float start = 0) {
        Partial partial;
        for (int i = 0; i < 4; ++i) {
            partial.push_back({start + static_cast<float>(i), freq, -20.0f});
        }
        fill_store({partial});
        run(file_of("0 1\n1 1\n2 1\n") + "\n", 1);
        return levels();
    }
};

TEST_F(MutdynEnds, FollowTheFrequencyOfTheLastPoint) {
    EXPECT_EQ(after(2400), (Levels{-20, -20, -20, -92}));
    EXPECT_EQ(after(2399), (Levels{-20, -20, -26, -92}));
    EXPECT_EQ(after(1919), (Levels{-20, -20, -33, -92}));
    EXPECT_EQ(after(959), (Levels{-20, -20, -43, -92}));
    EXPECT_EQ(after(239), (Levels{-20, -32, -55, -92}));
}

TEST_F(MutdynEnds, ALateLowPartialBeginsLower) {
    EXPECT_EQ(after(239, 0.25f), (Levels{-20, -32, -55, -92}));
    EXPECT_EQ(after(239, 0.5f), (Levels{-28, -32, -55, -92}));
    EXPECT_EQ(after(241, 0.5f), (Levels{-20, -20, -43, -92}));
}

TEST_F(MutdynEnds, ShortPartials) {
    fill_store({{{1, 100, -20}}, {{1, 100, -20}, {2, 100, -20}}});
    run(file_of("0 1\n1 1\n2 1\n") + "\n", 1);
    EXPECT_EQ(levels(0), (Levels{-20 - 72 - 8}));
    EXPECT_EQ(levels(1), (Levels{-20 - 35 - 8, -92}));
}

} // namespace
