// MIDI packets and what they do: the note stack, the way from notes to moments, bend, wheel,
// expression and pedal.
#include "live/notes.h"

#include "interact/selection.h"
#include "live/shared.h"
#include "store/published.h"
#include "store/settings.h"
#include "synth/sound.h"
#include "tests/support/console.h"
#include "tests/support/live_play.h"

#include <cstring>
#include <thread>

namespace {

using Bytes = std::vector<uint8_t>;

/// A list of packets in the layout that the read procedure takes.
Bytes list_of(const std::vector<Bytes> &packets) {
    Bytes list;
    const auto put = [&list](auto number) {
        uint8_t bytes[sizeof number];
        std::memcpy(bytes, &number, sizeof number);
        list.insert(list.end(), bytes, bytes + sizeof number);
    };
    put(static_cast<uint32_t>(packets.size()));
    for (const Bytes &packet : packets) {
        put(uint64_t{0});
        put(static_cast<uint16_t>(packet.size()));
        list.insert(list.end(), packet.begin(), packet.end());
    }
    return list;
}

void receive(const Bytes &list) {
    midiReadProc({list.data(), list.size()}, nullptr, nullptr);
}

void send(const Bytes &message) {
    receive(list_of({message}));
}

void press(uint8_t note) {
    send({0x90, note, 64});
}

void release(uint8_t note) {
    send({0x80, note, 64});
}

/// A note on of velocity 0.
void lift(uint8_t note) {
    send({0x90, note, 0});
}

/// Four partials over 10 s, played by MIDI.
class HeldNotes : public LivePlayTest {
  protected:
    void SetUp() override {
        LivePlayTest::SetUp();
        std::vector<Partial> content;
        for (int i = 1; i <= 4; ++i) {
            const float freq = 100.0f * static_cast<float>(i);
            content.push_back({{0.0f, freq, -20.0f}, {5.0f, freq, -20.0f}, {10.0f, freq, -20.0f}});
        }
        fill_store(content);
        publish_store();
        midi = 1;
        omni = 1;
        wgen.playing = 0;
    }

    void TearDown() override {
        withdraw_store();
        LivePlayTest::TearDown();
    }

    Bytes stack() const {
        return {n + 1, n + 1 + hold};
    }

    float moment_of(float p) const {
        const float end = sndlen + static_cast<float>(-512.0 / R);
        return p < 72.0f ? ((p - 48.0f) * (end - sndstart)) / 24.0f + sndstart : end;
    }
};

TEST_F(HeldNotes, FirstNoteStartsTheGenerator) {
    press(60);
    EXPECT_EQ(stack(), (Bytes{60}));
    EXPECT_EQ(wgen.playing, 1);
    EXPECT_EQ(wgen.midi_started, 1);
    EXPECT_EQ(liveSynth, 1);
    EXPECT_EQ(starts(), 1);
    EXPECT_EQ(amplitudef, 0.67f);
    EXPECT_EQ(prev_hold, 0);
    EXPECT_EQ(pcandidates[2].status, 1);
    EXPECT_EQ(pcandidates[2].freq, 300.0f);
}

TEST_F(HeldNotes, Note60IsTheMiddleOfTheSound) {
    press(60);
    EXPECT_NEAR(wgen.time, 4.994f, 0.0005f);
    EXPECT_EQ(wgen.time, moment_of(60));
}

TEST_F(HeldNotes, Note48IsTheStart) {
    press(48);
    EXPECT_EQ(wgen.time, 0.0f);
}

TEST_F(HeldNotes, Note72AndAboveAreTheEnd) {
    for (const int key : {72, 73, 127}) {
        const auto note = static_cast<uint8_t>(key);
        press(note);
        EXPECT_EQ(wgen.time, 10.0f + static_cast<float>(-512.0 / 44100.0)) << key;
        release(note);
    }
}

TEST_F(HeldNotes, NotesBelow48AreSilent) {
    press(40);
    EXPECT_LT(wgen.time, 0.0f);
    EXPECT_EQ(wgen.time, moment_of(40));
    EXPECT_EQ(pcandidates[0].status, 0);
}

TEST_F(HeldNotes, LaterNotesOnlyMoveTheMoment) {
    press(60);
    press(54);
    EXPECT_EQ(stack(), (Bytes{60, 54}));
    EXPECT_EQ(prev_hold, 1);
    EXPECT_EQ(wgen.time, moment_of(54));
    EXPECT_EQ(wgen.prev_time, moment_of(54));
    EXPECT_EQ(starts(), 1);
}

TEST_F(HeldNotes, ReleasingTheTopReturnsToTheNoteBefore) {
    press(60);
    press(54);
    release(54);
    EXPECT_EQ(stack(), (Bytes{60}));
    EXPECT_EQ(wgen.time, moment_of(60));
    EXPECT_EQ(amplitudef, 0.67f);
}

TEST_F(HeldNotes, ReleasingALowerNoteClosesTheGap) {
    press(50);
    press(52);
    press(54);
    release(52);
    EXPECT_EQ(stack(), (Bytes{50, 54}));
    EXPECT_EQ(wgen.time, moment_of(54));
    EXPECT_EQ(prev_hold, 3);
}

TEST_F(HeldNotes, LastNoteOffLeavesTheUnitRunning) {
    press(60);
    release(60);
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(pitchf, 0.0f);
    EXPECT_EQ(wgen.time, moment_of(0));
    EXPECT_EQ(pcandidates[0].status, 0);
    EXPECT_EQ(wgen.playing, 1);
    EXPECT_EQ(stops(), 0);
    EXPECT_EQ(amplitudef, 0.0f);
    EXPECT_EQ(prev_hold, 0);
}

TEST_F(HeldNotes, TheNextNoteNeedsNoStart) {
    press(60);
    release(60);
    press(62);
    EXPECT_EQ(starts(), 1);
    EXPECT_EQ(stack(), (Bytes{62}));
    EXPECT_EQ(pcandidates[0].status, 1);
}

TEST_F(HeldNotes, LastNoteOnOfVelocity0StopsTheUnit) {
    press(60);
    lift(60);
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(wgen.playing, 0);
    EXPECT_EQ(wgen.midi_started, 0);
    EXPECT_EQ(wgen.state, 0);
    EXPECT_EQ(liveSynth, 0);
    EXPECT_EQ(stops(), 1);
    EXPECT_EQ(pauses().front(), 20000u);
}

TEST_F(HeldNotes, ALowerNoteOfVelocity0StopsNothing) {
    press(60);
    press(62);
    lift(60);
    EXPECT_EQ(stack(), (Bytes{62}));
    EXPECT_EQ(stops(), 0);
    EXPECT_EQ(wgen.playing, 1);
}

TEST_F(HeldNotes, ReleasingANoteThatIsNotHeldTakesTheTop) {
    press(60);
    press(62);
    release(99);
    EXPECT_EQ(stack(), (Bytes{60}));
    EXPECT_EQ(wgen.time, moment_of(60));
}

TEST_F(HeldNotes, ReleasingWithNothingHeldDoesNothing) {
    release(60);
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(stops(), 0);
    EXPECT_EQ(wgen.time, 0.0f);
}

TEST_F(HeldNotes, TheSameNoteTwiceLeavesOneOfThem) {
    press(60);
    press(60);
    release(60);
    EXPECT_EQ(stack(), (Bytes{60}));
}

TEST_F(HeldNotes, TheSixteenthNoteIsHeardButNotKept) {
    Bytes first;
    for (uint8_t k = 0; k < 15; ++k) {
        press(static_cast<uint8_t>(50 + k));
        first.push_back(static_cast<uint8_t>(50 + k));
    }
    EXPECT_EQ(hold, 15);
    press(70);
    EXPECT_EQ(stack(), first);
    EXPECT_EQ(wgen.time, moment_of(70));
    press(71);
    release(70);
    release(71);
    EXPECT_EQ(stack(), first);
    EXPECT_EQ(wgen.time, moment_of(64));
    EXPECT_EQ(unkept, 0);
}

TEST_F(HeldNotes, ReleasingAKeptNoteBesideUnkeptOnes) {
    for (uint8_t k = 0; k < 16; ++k) {
        press(static_cast<uint8_t>(50 + k));
    }
    release(50);
    EXPECT_EQ(hold, 14);
    EXPECT_EQ(stack().front(), 51);
    release(65); // the one without a place
    EXPECT_EQ(hold, 14);
    EXPECT_EQ(stack().back(), 64);
}

TEST_F(HeldNotes, AllKeysOfAKeyboardAtOnce) {
    for (uint8_t k = 0; k < 128; ++k) {
        press(k);
    }
    EXPECT_EQ(hold, 15);
    for (uint8_t k = 128; k-- > 0;) {
        release(k);
    }
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(unkept, 0);
    EXPECT_EQ(n[0], 0);
}

TEST_F(HeldNotes, AGeneratorThatHasStoppedForgetsTheNotes) {
    press(60);
    press(62);
    poke(wgen.playing, uint8_t{0});
    send({0xC0, 1, 0});
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(prev_hold, 0);
}

TEST_F(HeldNotes, WithMidiOffNothingHappensButTheForgetting) {
    press(60);
    midi = 0;
    press(62);
    EXPECT_EQ(stack(), (Bytes{60}));
    poke(wgen.playing, uint8_t{0});
    press(62);
    EXPECT_EQ(hold, 0);
}

TEST_F(HeldNotes, SystemMessagesAreSkipped) {
    for (int status = 0xF0; status <= 0xFF; ++status) {
        send({static_cast<uint8_t>(status), 60, 64});
        EXPECT_EQ(hold, 0);
        EXPECT_EQ(wgen.time, 0.0f);
    }
}

TEST_F(HeldNotes, OtherMessagesDoNothing) {
    press(60);
    const float before = wgen.time;
    for (const int status : {0x00, 0x3C, 0x7F, 0xA0, 0xC0, 0xD0}) {
        EXPECT_EQ(printed([=] { send({static_cast<uint8_t>(status), 70, 64}); }), "");
        EXPECT_EQ(stack(), (Bytes{60}));
        EXPECT_EQ(wgen.time, before);
    }
}

TEST_F(HeldNotes, AllChannelsAreTaken) {
    send({0x95, 60, 64});
    EXPECT_EQ(stack(), (Bytes{60}));
}

TEST_F(HeldNotes, WithoutOmniOneChannelIs) {
    omni = 0;
    channel = 5;
    send({0x94, 60, 64});
    EXPECT_EQ(hold, 0);
    send({0x95, 60, 64});
    EXPECT_EQ(stack(), (Bytes{60}));
}

TEST_F(HeldNotes, DataBytesAreMasked) {
    send({0x90, 0x80 | 60, 0xC0});
    EXPECT_EQ(stack(), (Bytes{60}));
}

TEST_F(HeldNotes, OnlyTheFirstMessageOfAPacketCounts) {
    send({0x90, 60, 64, 0x90, 62, 64});
    EXPECT_EQ(stack(), (Bytes{60}));
}

TEST_F(HeldNotes, EveryPacketOfAListCounts) {
    receive(list_of({{0x90, 60, 64}, {0x90, 62, 64, 1}, {0x90, 64, 64}}));
    EXPECT_EQ(stack(), (Bytes{60, 62, 64}));
}

TEST_F(HeldNotes, CutListsAreReadAsFarAsTheyGo) {
    const Bytes whole = list_of({{0x90, 60, 64}, {0x90, 62, 64}});
    for (size_t size = 0; size < whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
        receive(cut);
        lift(60);
        lift(62);
        lift(0);
        EXPECT_EQ(hold, 0) << size;
    }
}

TEST_F(HeldNotes, ShortPacketsLackTheirDataBytes) {
    send({});
    EXPECT_EQ(hold, 0);
    send({0x90, 60}); // velocity 0
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(stops(), 1);
}

TEST_F(HeldNotes, BendAtItsCentre) {
    press(60);
    send({0xE0, 0, 64});
    EXPECT_EQ(bendf, 0.0f);
    EXPECT_EQ(wgen.time, moment_of(60));
}

TEST_F(HeldNotes, BendAtItsEnds) {
    press(60);
    send({0xE0, 0, 0});
    EXPECT_EQ(bendf, -1.0f);
    EXPECT_EQ(wgen.time, moment_of(59));
    send({0xE0, 127, 127});
    EXPECT_EQ(bendf, static_cast<float>(8191 * 0.0001220703125));
    EXPECT_EQ(wgen.time, moment_of(60 + bendf));
    EXPECT_EQ(wgen.prev_time, wgen.time);
}

TEST_F(HeldNotes, TheWheelIsTold) {
    EXPECT_EQ(printed([] { send({0xB0, 1, 127}); }), "mod:1.000000\n");
    EXPECT_EQ(mmif, 1.0f);
    EXPECT_EQ(bmi, 127);
    EXPECT_EQ(printed([] { send({0xB0, 1, 32}); }), "mod:0.251969\n");
    EXPECT_EQ(mmif, 32 / 127.0f);
    EXPECT_EQ(changed, 0); // the move of the sound has seen it
}

TEST_F(HeldNotes, ExpressionIsKept) {
    EXPECT_EQ(printed([] { send({0xB0, 11, 0}); }), "xpr:1.000000\n");
    EXPECT_EQ(printed([] { send({0xB0, 11, 64}); }), "xpr:2.511811\n");
    EXPECT_EQ(printed([] { send({0xB0, 11, 127}); }), "xpr:4.000000\n");
    EXPECT_EQ(mxpf, 4.0f);
    EXPECT_EQ(bmi, 127);
    EXPECT_EQ(changex, 1);
}

TEST_F(HeldNotes, OtherControllersDoNothing) {
    for (const int number : {0, 2, 7, 10, 12, 63, 65, 123}) {
        EXPECT_EQ(printed([=] { send({0xB0, static_cast<uint8_t>(number), 99}); }), "");
    }
    EXPECT_EQ(bmi, 0);
}

TEST_F(HeldNotes, ThePedalGoingDownDoesNothing) {
    press(60);
    send({0xB0, 64, 127});
    EXPECT_EQ(stack(), (Bytes{60}));
    EXPECT_EQ(wgen.playing, 1);
}

TEST_F(HeldNotes, ThePedalGoingUpSilencesTheNotesHeld) {
    press(60);
    press(62);
    send({0xB0, 64, 0});
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(prev_hold, 0);
    EXPECT_EQ(wgen.playing, 0);
    EXPECT_EQ(wgen.midi_started, 0);
    EXPECT_EQ(liveSynth, 0);
    EXPECT_EQ(stops(), 1);
}

TEST_F(HeldNotes, ThePedalGoingUpInSilenceStopsNothing) {
    send({0xB0, 64, 0});
    EXPECT_EQ(stops(), 0);
    EXPECT_TRUE(pauses().empty());
}

TEST_F(HeldNotes, LowerHalfOfTheWheelWidensTheBand) {
    wgen.select = 1;
    press(60);
    send({0xB0, 1, 32}); // 0.252: two of four
    std::string chosen;
    for (int32_t i = 0; i < partials; ++i) {
        chosen += parray[i][0].selected == 1 ? '1' : '0';
    }
    EXPECT_EQ(chosen, "1100");
    EXPECT_EQ(pcandidates[1].status, 1);
    EXPECT_EQ(pcandidates[2].status, 0);
}

TEST_F(HeldNotes, UpperHalfOfTheWheelNarrowsTheBandFromBelow) {
    wgen.select = 1;
    press(60);
    send({0xB0, 1, 96}); // 0.756: from the third on
    std::string chosen;
    for (int32_t i = 0; i < partials; ++i) {
        chosen += parray[i][2].selected == 1 ? '1' : '0';
    }
    EXPECT_EQ(chosen, "0011");
    EXPECT_EQ(pcandidates[1].status, 0);
    EXPECT_EQ(pcandidates[2].status, 1);
}

TEST_F(HeldNotes, DebugPrintsOfANote) {
    dbp = 1;
    const std::string text = printed([] { press(60); });
    EXPECT_TRUE(text.starts_with("Channel: 0, Message: 9\ntime = 4.994195\n")) << text;
    EXPECT_TRUE(text.ends_with("||||||||||||||||||\nHOLD = 1\n")) << text;
    const std::string last = printed([] { lift(60); });
    EXPECT_EQ(last, "Channel: 0, Message: 9\nHOLD = 0\n*****************\n");
}

TEST_F(HeldNotes, MakeNoCallToTheGraphics) {
    const gl_double::Recorder &gl = gl_double::recorder();
    gl_double::forget_drawing();
    const size_t timers = gl.timers.size();
    wgen.select = 1;
    printed([] {
        press(60);
        press(64);
        send({0xE0, 0, 96});
        send({0xB0, 1, 100});
        release(64);
        lift(60);
        press(60);
        send({0xB0, 64, 0});
    });
    EXPECT_EQ(starts(), 2);
    EXPECT_TRUE(gl.calls.empty());
    EXPECT_TRUE(gl.errors.empty());
    EXPECT_EQ(gl.redisplays, 0);
    EXPECT_EQ(gl.timers.size(), timers);
    EXPECT_EQ(gl.callbacks.idle, nullptr);
}

TEST_F(HeldNotes, DuringAnEditAreKeptAndHeardAfterIt) {
    withdraw_store();
    press(60);
    press(54);
    EXPECT_EQ(stack(), (Bytes{60, 54}));
    EXPECT_EQ(pcandidates[0].status, 0);
    publish_store();
    release(54);
    EXPECT_EQ(numbOfCands, 4) << "the first note found no store to count";
    EXPECT_EQ(pcandidates[0].status, 1);
    EXPECT_EQ(pcandidates[0].time, moment_of(60));
}

TEST_F(HeldNotes, InASoundWithoutLengthAreSilent) {
    sndstart = sndlen = 0.0f;
    press(60);
    send({0xE0, 127, 127});
    press(127);
    for (const float sample : run_blocks(4)) {
        ASSERT_EQ(sample, 0.0f);
    }
    lift(127);
    lift(60);
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(wgen.playing, 0);
}

TEST_F(HeldNotes, AUnitThatDoesNotStartKeepsNone) {
    output().failing = "start";
    output().code = -50;
    press(60);
    EXPECT_EQ(wgen.playing, 0);
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(unkept, 0);
}

TEST_F(HeldNotes, ReleasedInAnyOrderEndWithAnEmptyStack) {
    uint32_t seed = 1;
    const auto next = [&seed](uint32_t below) {
        seed = seed * 1664525u + 1013904223u;
        return (seed >> 16) % below;
    };
    for (int turn = 0; turn < 20000; ++turn) {
        const auto note = static_cast<uint8_t>(next(24) + 48);
        if (next(3) != 0) {
            press(note);
        } else if (next(4) != 0) {
            release(note);
        } else {
            lift(note);
        }
        ASSERT_GE(hold, 0);
        ASSERT_LT(hold, note_room);
        ASSERT_GE(unkept, 0);
        ASSERT_EQ(n[0], 0);
        ASSERT_TRUE(hold > 0 || unkept == 0);
        for (int32_t k = 1; k <= hold; ++k) {
            ASSERT_GE(n[k], 48) << "place " << k;
        }
    }
}

TEST_F(HeldNotes, PlayAlongsideTheAudioThread) {
    std::thread audio([] { run_blocks(200); });
    for (int k = 0; k < 200; ++k) {
        press(static_cast<uint8_t>(48 + k % 24));
        send({0xE0, 0, static_cast<uint8_t>(k % 128)});
        release(static_cast<uint8_t>(48 + k % 24));
    }
    audio.join();
    EXPECT_EQ(hold, 0);
}

} // namespace
