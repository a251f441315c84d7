// Notes on the MIDI thread while the window's thread edits the store and the audio thread renders:
// nothing for the thread sanitizer to say.
#include "edit/extend.h"
#include "edit/join.h"
#include "edit/remove.h"
#include "edit/replicate.h"
#include "edit/split.h"
#include "live/gestures.h"
#include "live/notes.h"
#include "live/pause.h"
#include "live/requests.h"
#include "live/shared.h"
#include "live/zone.h"
#include "store/published.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "tests/edit/structure.h"
#include "tests/live/audio_thread.h"
#include "tests/support/console.h"

#include <atomic>
#include <cmath>
#include <thread>

namespace {

/// Real messages on the MIDI thread, real edits in the window's.
class EditedNotes : public LivePlayTest {
  protected:
    void SetUp() override {
        LivePlayTest::SetUp();
        pause_for = [](uint32_t) { std::this_thread::yield(); };
        fill_store(chord(partial_count));
        open_edit_view();
        midi = 1;
        omni = 1;
    }

    static void message(uint8_t status, uint8_t data1, uint8_t data2) {
        // One packet: count, time stamp, length, bytes.
        const uint8_t list[] = {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, status, data1, data2};
        midiReadProc({list, sizeof list}, nullptr, nullptr);
    }

    /// A few notes, more than are kept, and what else there is to turn.
    static void phrase(int turn) {
        const auto key = [turn](int k) { return static_cast<uint8_t>(44 + (turn + 3 * k) % 34); };
        const int keys = turn % 8 == 0 ? 20 : 3;
        for (int k = 0; k < keys; ++k) {
            message(0x90, key(k), 64);
            message(0xE0, 0, static_cast<uint8_t>((turn + k) % 128));
        }
        message(0xB0, 1, static_cast<uint8_t>(turn % 128));
        for (int k = 0; k < keys; ++k) {
            message(turn % 2 == 0 ? 0x80 : 0x90, key(k), 0);
        }
        if (turn % 5 == 0) {
            message(0xB0, 64, 0);
        }
    }

    /// One edit of the store and the refresh behind it; the number of partials stays about.
    static void edit(int turn) {
        const StoreEdit held;
        const int32_t part = turn % partials;
        const int32_t last = npoints[part] - 1;
        switch (turn % 6) {
        case 0:
            remove3d(part, last > 3 ? 1 : 0, 0);
            break;
        case 1:
            structure::select_points(part, 0, last);
            replicate_selections("0.1");
            break;
        case 2:
            split3d({part, last, part, last - 1, 2});
            break;
        case 3:
            if (partials > partial_count) {
                join3d(part, (part + 1) % partials);
            }
            break;
        case 4:
            extend3d(part, 3);
            break;
        default:
            if (partials > partial_count) {
                structure::select_points(part, 0, last);
                remove3d(part, 0, 1);
            }
            break;
        }
        structure::refresh();
    }
};

TEST_F(EditedNotes, NotesAreHeardWhileTheStoreIsEdited) {
    std::atomic<int> phrases = 0;
    std::atomic<bool> over = false;
    bool silent = true;
    printed([&] {
        AudioThread audio;
        std::thread midi_thread([&] {
            for (int turn = 0; !over; ++turn) {
                phrase(turn);
                ++phrases;
            }
            message(0xB0, 64, 0);
        });
        for (int turn = 0; turn < 300 || phrases < 40 || audio.rendered() < 50; ++turn) {
            edit(turn);
            std::this_thread::yield();
        }
        over = true;
        midi_thread.join();
        silent = !(audio.largest() > 0.0f) || !std::isfinite(audio.largest());
    });
    EXPECT_FALSE(silent);
    EXPECT_GT(partials, 0);
    EXPECT_EQ(hold, 0);
    EXPECT_EQ(unkept, 0);
    EXPECT_EQ(wgen.playing, 0);
    withdraw_store();
    EXPECT_EQ(retired_blocks(), 0);
}

} // namespace
