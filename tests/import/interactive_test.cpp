// The dialogue of interactive reading: texts, replies and what the records hold.
#include "import/afile_interactive.h"

#include "store/settings.h"
#include "tests/support/child.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

namespace {

const std::string confirm =
    "Quillgrove> Reading interactively:\nQuillgrove> Please confirm (y/n): ";
const std::string which = "Quillgrove> Which parameters? (a|f|d)\n"
                          "            f = freq.\n"
                          "            a = amp.\n"
                          "            d = dur.\n"
                          "            (no space, in reading order): ";

std::string question(const std::string &text) {
    return "    text:  \"" + text + "\"  \t(f|a|d/n)?: ";
}

std::string head_of(const std::string &sequence, const std::string &places) {
    return confirm + which + "Sequence of arguments: " + sequence +
           "\nNumber  of values:    " + std::to_string(sequence.size()) + "\n" + places +
           "\nBegin reading:\n";
}

class Interactive : public StoreTest {
  protected:
    /// Reads `text` with these replies; what is printed.
    std::string read(const std::string &text, const std::string &replies) {
        ph.assign(most_records, PhRecord());
        TokenFile file;
        open_tokens_from_memory(file, text.data(), text.size());
        std::string out =
            conversation(replies, [&] { result = read_interactively(file, ph.data()); });
        close_tokens(file);
        return out;
    }
    std::vector<PhRecord> ph;
    int32_t result = -2;
};

TEST_F(Interactive, DecimalsAreDigitsAndOnePoint) {
    for (const char *yes : {"0", "440", "1.5", "440.", ".5", "12 ", "1.5 ", ".", ""}) {
        EXPECT_EQ(isDecimal(yes), 1) << yes;
    }
    for (const char *no :
         {" ", "-1", "+1", "1.2.3", "1e5", "1 2", " 1", "x", "1,", "1  ", "nan", "0x10"}) {
        EXPECT_EQ(isDecimal(no), 0) << no;
    }
}

TEST_F(Interactive, DecimalsAreToldUnderTheDebugSwitch) {
    dwbg = 1;
    EXPECT_EQ(printed([] {
                  isDecimal("12");
                  isDecimal("-1");
              }),
              "\"12\", 1\n\"-1\", 0\n");
}

TEST_F(Interactive, FrequenciesAlone) {
    EXPECT_EQ(read("Peaks: 440, 880.5 Hz", "y\nf\nf\nf\n"),
              head_of("f", "f @ 1") + question("440 ") + question("880.5") + "End reading.\n");
    ASSERT_EQ(result, 2);
    EXPECT_EQ(ph[0].value[0], 440.0f);
    EXPECT_EQ(ph[1].value[0], 880.5f);
    EXPECT_EQ(ph[0].index, 1);
    EXPECT_STREQ(ph[0].tag, "f");
    EXPECT_EQ(ph[2].index, 0);
}

TEST_F(Interactive, TwoValues) {
    EXPECT_EQ(read("0.5 440", "y af a f"), head_of("af", "f @ pos.2\t @ pos.1") + question("0.5") +
                                               question("440") + "End reading.\n");
    ASSERT_EQ(result, 1);
    EXPECT_EQ(ph[0].value[1], 0.5f);
    EXPECT_EQ(ph[0].value[0], 440.0f);
    EXPECT_EQ(ph[0].index, 2);
    EXPECT_STREQ(ph[0].tag, "af");
}

TEST_F(Interactive, ThreeValues) {
    EXPECT_EQ(read("2 440 0.5 3 880 0.25", "y dfa d f a d f a"),
              head_of("dfa", "f @ pos.2,  a @ pos.3,  d @ pos.1") + question("2") +
                  question("440") + question("0.5") + question("3") + question("880") +
                  question("0.25") + "End reading.\n");
    ASSERT_EQ(result, 2);
    EXPECT_EQ(ph[1].value[2], 3.0f);
    EXPECT_EQ(ph[1].index, 3);
}

TEST_F(Interactive, ConfirmationIsAskedUntilYesOrNo) {
    EXPECT_EQ(read("1", "what\nmaybe\nn\n"), confirm + "Quillgrove> Quillgrove> ");
    EXPECT_EQ(result, -1);
    EXPECT_EQ(read("", "what\nyes\nf\n"), confirm + "Quillgrove> " +
                                              head_of("f", "f @ 1").substr(confirm.size()) +
                                              "End reading.\n");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(read("1", "n\n"), confirm);
    EXPECT_EQ(result, -1);
}

TEST_F(Interactive, ASequenceWithoutAFrequencyMakesNoSense) {
    EXPECT_EQ(read("1", "y\nad\n"), confirm + which +
                                        "Sequence of arguments: ad\n"
                                        "Quillgrove> partials without frequency\n"
                                        "            don't make sense\n");
    EXPECT_EQ(result, -1);
}

TEST_F(Interactive, AnotherLetterInTheSequenceEndsTheProcess) {
    for (const std::string sequence : {"fx", "ff", "fadf", "f,a", "xf"}) {
        const ChildResult child = in_child("y\n" + sequence + "\n", [] {
            TokenFile file;
            open_tokens_from_memory(file, "1 2", 3);
            PhRecord records[most_records] = {};
            read_interactively(file, records);
        });
        EXPECT_EQ(child.status, 255) << sequence;
        EXPECT_EQ(child.out, confirm + which + "Sequence of arguments: " + sequence + "\n");
    }
}

TEST_F(Interactive, NegativeNumbersAreNeverOffered) {
    EXPECT_EQ(read("-440 1e3 Hz , 5", "y f f"),
              head_of("f", "f @ 1") + question("5") + "End reading.\n");
    EXPECT_EQ(result, 1);
}

TEST_F(Interactive, AFrequencyOfZeroLeavesTheRecordEmpty) {
    read("0 440 0.00001", "y f f f f");
    EXPECT_EQ(ph[0].index, 0);
    EXPECT_EQ(ph[1].index, 1);
    EXPECT_EQ(ph[2].index, 0); // not above the smallest
    EXPECT_EQ(result, 1);
}

TEST_F(Interactive, AnAmplitudeOfZeroFillsTheRecord) {
    read("0 0", "y fa f a");
    EXPECT_EQ(ph[0].index, 2);
    EXPECT_EQ(result, 1);
}

TEST_F(Interactive, OtherRepliesPassANumberOver) {
    read("1 2 3 4 5", "y fa n x f 12 a");
    ASSERT_EQ(result, 1);
    EXPECT_EQ(ph[0].value[0], 3.0f);
    EXPECT_EQ(ph[0].value[1], 5.0f);
}

TEST_F(Interactive, ALetterOutsideTheSequenceStoresItsValueToo) {
    read("7 440", "y fa d f");
    ASSERT_EQ(result, 1);
    EXPECT_EQ(ph[0].value[2], 7.0f);
    EXPECT_EQ(ph[0].value[0], 440.0f);
}

TEST_F(Interactive, ASlashAsksWhetherToFinish) {
    EXPECT_EQ(read("1 2 3 4", "y f f / n /x yes"),
              head_of("f", "f @ 1") + question("1") + question("2") + "Finish reading? (y/n): " +
                  question("3") + "Finish reading? (y/n): End reading.\n");
    EXPECT_EQ(result, 1);
}

TEST_F(Interactive, TheEndOfInputEndsTheReading) {
    read("1 2 3", "y f f");
    EXPECT_EQ(result, 1);
    read("1 2 3", "y f f /");
    EXPECT_EQ(result, 1);
    read("1 2 3", "y");
    EXPECT_EQ(result, -1);
    read("1 2 3", "");
    EXPECT_EQ(result, -1);
}

TEST_F(Interactive, ARecordThatIsNotFullCounts) {
    read("1 2 3", "y fa f a f");
    EXPECT_EQ(result, 2);
    EXPECT_EQ(ph[1].value[1], 0.0f);
}

TEST_F(Interactive, ReadingStopsAtTheLastRecord) {
    std::string text;
    std::string replies = "y f";
    for (int i = 1; i <= most_records + 50; ++i) {
        text += std::to_string(i) + "\n";
        replies += " f";
    }
    read(text, replies);
    EXPECT_EQ(result, most_records);
    EXPECT_EQ(ph.back().value[0], 1024.0f);
}

TEST_F(Interactive, ALongTokenIsCut) {
    const std::string out = read(std::string(100000, '1'), "y f n");
    EXPECT_NE(out.find(question(std::string(255, '1'))), std::string::npos);
    EXPECT_LT(out.size(), 1000u);
}

TEST_F(Interactive, AZeroByteEndsAToken) {
    const std::string out = read(std::string("44\0x 5", 6), "y f f n");
    EXPECT_EQ(out, head_of("f", "f @ 1") + question("44") + question("5") + "End reading.\n");
    EXPECT_EQ(ph[0].value[0], 44.0f);
}

TEST_F(Interactive, LettersAreToldUnderOneDebugSwitch) {
    dwbg = 1;
    const std::string out = read("1 2 3", "y fad f a d");
    EXPECT_NE(out.find("\"1\", 1\n" + question("1") + " F\n \"2\", 1\n" + question("2") +
                       " A\n \"3\", 1\n" + question("3") + " D\n End reading.\n"),
              std::string::npos)
        << out;
}

TEST_F(Interactive, RecordsAreToldUnderTheOther) {
    dbp = 1;
    const std::string out = read("440 0.5 0 0", "y fa f a f");
    EXPECT_NE(out.find("End reading.\n>>PARTIALS: 1\n"
                       "ph[0].index = 2\ttag = fa\tvalue[0] = 440.000000\tvalue[1] = 0.500000"
                       "\tvalue[2] = 0.000000\n"
                       "ph[1].index = 0\ttag = fa\tvalue[0] = 0.000000\tvalue[1] = 0.000000"
                       "\tvalue[2] = 0.000000\n"),
              std::string::npos)
        << out;
}

struct Constructed {
    int32_t count, pps;
    float dur, level, decay;
    std::string out;
};

Constructed construct(const std::string &input) {
    Constructed data = {7, 1, 2.0f, 3.0f, 4.0f, ""};
    data.out = conversation(input, [&] {
        const int32_t total = 7;
        data.count = construct_data(&total, &data.pps, &data.dur, &data.level, &data.decay);
    });
    return data;
}

const std::string enter = "Quillgrove> Enter: <duration> <points/s.> <amp(dB)> <decay/s.>\n\t\t";

TEST_F(Interactive, TheEnvelopeIsFourNumbers) {
    const Constructed data = construct("2.5 100.9\n-12.25\n6\n");
    EXPECT_EQ(data.count, 7);
    EXPECT_EQ(data.dur, 2.5f);
    EXPECT_EQ(data.pps, 100);
    EXPECT_EQ(data.level, -12.25f);
    EXPECT_EQ(data.decay, 6.0f);
    EXPECT_EQ(data.out, enter + " 2.50 100 -12.25  6.0\n");
}

TEST_F(Interactive, ANegativeDecayIsFull) {
    EXPECT_EQ(construct("2.5 100 -12.25 -1").out, enter + " 2.50 100 -12.25 full decay\n");
}

TEST_F(Interactive, NoDecayIsNotAFullOne) {
    EXPECT_EQ(construct("2.5 100 -12.25 0").out, enter + " 2.50 100 -12.25  0.0\n");
}

TEST_F(Interactive, WhatCannotBeReadKeepsItsValue) {
    Constructed data = construct("2.5 x 100 -12");
    EXPECT_EQ(data.dur, 2.5f);
    EXPECT_EQ(data.pps, 1);
    EXPECT_EQ(data.level, 3.0f);
    EXPECT_EQ(data.out, enter + " 2.50 1   3.00  4.0\n");
    data = construct("");
    EXPECT_EQ(data.dur, 2.0f);
    EXPECT_EQ(data.count, 7);
}

TEST_F(Interactive, APointRateOutsideTheTypeIsHeldToIt) {
    EXPECT_EQ(construct("1 1e300 0 0").pps, INT32_MAX);
    EXPECT_EQ(construct("1 -1e300 0 0").pps, INT32_MIN);
    EXPECT_EQ(construct("1 nan 0 0").pps, 0);
}

} // namespace
