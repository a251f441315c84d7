// One frame of an envelope for the whole sound: its dialogue and the levels it gives.

#include "envelope/mutate.h"

#include "store/settings.h"
#include "tests/envelope/envelope_support.h"
#include "tests/support/console.h"
#include "toolbox/auxmath3d.h"

namespace {

constexpr const char *ask_file = "//Enter the Audiosculpt LPC analysis file to open:\n>\t";
constexpr const char *ask_frame = "Specify one envelope (-1 = current):\n>\t";
constexpr const char *ask_apply = "Apply to the partials? (y/n)\n>\t";

class Mutstat : public EnvelopeTest {
  protected:
    void SetUp() override {
        EnvelopeTest::SetUp();
        fill_store({{{0, 200, -10}, {1, 200, -20}}, {{0, 5000, -40}, {1, 5000, -50}}});
        peval[1].spare2 = 3.0f;
    }

    std::string run(const std::string &replies, LpcFrame envelope = nullptr) {
        return conversation(replies, [&] { status = mutstat(parray, peval, envelope); });
    }

    LpcFrame small_envelope() {
        return frame_of({{0, 3}, {0.9, 100}, {0.5, 250}, {0.25, 1000}});
    }

    int16_t status = 99;
};

TEST_F(Mutstat, AGivenFrameIsTaken) {
    Oerror = 3;
    EXPECT_EQ(run("1\n", small_envelope()),
              std::string("//LPC envelope pre-loaded...\n") + ask_apply);
    EXPECT_EQ(status, 3);
    const float level = static_cast<float>(amp2db(0.5));
    EXPECT_EQ(peval[0].spare2, level);
    EXPECT_EQ(parray[0][0].amp, -10.0f + level - peval[0].avgamp);
    EXPECT_EQ(parray[0][1].amp, -20.0f + level - peval[0].avgamp);
}

TEST_F(Mutstat, APartialAboveTheEnvelopeKeepsItsWorkValue) {
    const float before = peval[1].avgamp;
    run("1\n", small_envelope());
    EXPECT_EQ(peval[1].spare2, 3.0f);
    EXPECT_EQ(parray[1][0].amp, -40.0f + 3.0f - before);
}

TEST_F(Mutstat, OnlyTheReplyOneApplies) {
    for (const char *reply : {"y\n", "n\n", "0\n", "2\n", "yes\n", ""}) {
        run(reply, small_envelope());
        EXPECT_EQ(parray[0][0].amp, -10.0f) << reply;
    }
}

TEST_F(Mutstat, AFrameIsChosenFromAFile) {
    const std::string name = file_of("0 2\n0.5 100\n0.5 300\n1 2\n0.25 100\n0.25 300\n");
    EXPECT_EQ(run(name + "\n1\n1\n"),
              std::string(ask_file) + "*/\n" + ask_frame + "\n" + ask_apply);
    EXPECT_EQ(status, 2);
    EXPECT_EQ(std::string(afname), name);
    EXPECT_EQ(peval[0].spare2, static_cast<float>(amp2db(0.25)));
}

TEST_F(Mutstat, AMissingFileEndsIt) {
    EXPECT_EQ(run(folder + "/none\n"), std::string(ask_file) + "*/\n");
    EXPECT_EQ(status, -1);
    EXPECT_EQ(Oerror, -1);
}

TEST_F(Mutstat, AFileThatBeginsWithAWordEndsIt) {
    run(file_of("frames") + "\n");
    EXPECT_EQ(status, -4);
}

TEST_F(Mutstat, TheCurrentFrameIsNone) {
    const std::string name = file_of("0 2\n0.5 100\n0.5 300\n");
    EXPECT_EQ(run(name + "\n-1\n-1\n0\ny\n"), std::string(ask_file) + "*/\n" + ask_frame +
                                                  "NULL array\n" + ask_frame + "NULL array\n" +
                                                  ask_frame + "\n" + ask_apply);
    EXPECT_EQ(status, -10);
    EXPECT_EQ(peval[0].spare2, static_cast<float>(amp2db(0.5)));
}

TEST_F(Mutstat, AFrameBeyondTheEndAsksForTheFileAgain) {
    const std::string name = file_of("0 2\n0.5 100\n0.5 300\n");
    EXPECT_EQ(run(name + "\n1\n" + name + "\n0\ny\n"),
              std::string(ask_file) + "*/\n" + ask_frame + "/*Selection is beyond EOF!*/\n" +
                  ask_file + "*/\n" + ask_frame + "\n" + ask_apply);
    EXPECT_EQ(status, 2);
}

TEST_F(Mutstat, TheEndOfTheInputEndsEachQuestion) {
    EXPECT_EQ(run(""), ask_file);
    EXPECT_EQ(status, -10);
    EXPECT_EQ(run(file_of("0 2\n0.5 100\n0.5 300\n")), std::string(ask_file) + "*/\n" + ask_frame);
    EXPECT_EQ(status, -10);
    EXPECT_EQ(peval[0].spare2, 0.0f);
}

} // namespace
