// Window, MIDI and audio thread at once, each at its own work: nothing for the thread sanitizer
// to say, and no sample beyond what the partials can give.
#include "interact/clear.h"
#include "interact/keys.h"
#include "interact/menu.h"
#include "live/gestures.h"
#include "live/pause.h"
#include "live/requests.h"
#include "live/shared.h"
#include "live/zone.h"
#include "store/published.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "tests/live/audio_thread.h"
#include "tests/support/console.h"

#include <atomic>
#include <cmath>
#include <thread>

namespace {

constexpr int gain_entry = 18;

class Threads : public LivePlayTest {
  protected:
    void SetUp() override {
        LivePlayTest::SetUp();
        pause_for = [](uint32_t) { std::this_thread::yield(); };
        fill_store(chord(partial_count));
        open_edit_view();
    }

    /// As loud as all partials together at their loudest.
    static constexpr float most = 0.2f * 0.3163f * partial_count;
};

TEST_F(Threads, ScrubsAndZonesWhileTheSoundRuns) {
    float largest = 0.0f;
    printed([&largest] {
        AudioThread audio;
        for (int turn = 0; turn < 300 || audio.rendered() < 100; ++turn) {
            const int x = pixel_x(0.1 + 0.8 * (turn % 50) / 50.0);
            mouse_down(GLUT_MIDDLE_BUTTON, x, 50, GLUT_ACTIVE_ALT);
            mouse_move(x + 5, 50);
            mouse_up(GLUT_MIDDLE_BUTTON, x + 5, 50, GLUT_ACTIVE_ALT);
            const float start = 0.02f * static_cast<float>(turn % 50);
            poke(zgen.starttime, start);
            poke(zgen.time, start);
            poke(zgen.endtime, start + 0.05f);
            tqplay(&zgen.starttime, &zgen.endtime);
            for (int n = 0; n < 5; ++n) {
                qmotion();
            }
            serve_requests();
        }
        zstop();
        largest = audio.largest();
    });
    EXPECT_GT(largest, 0.0f);
    EXPECT_LE(largest, most);
}

/// Starts the sound and moves it, the wheel on now and then, until told to end.
class MidiThread {
  public:
    MidiThread() : thread([this] { play(); }) {}
    ~MidiThread() {
        over = true;
        thread.join();
    }
    int moved() const {
        return moves;
    }

  private:
    void play() {
        for (int n = 0; !over; ++n) {
            poke(wgen.time, 0.01f * static_cast<float>(n % 200));
            poke(mmif, 0.1f * static_cast<float>(n % 11));
            poke(wgen.select, static_cast<uint8_t>(n / 16 % 2));
            if (n == 0) {
                pplay(0, 1);
            } else {
                mmotion();
            }
            ++moves;
        }
    }

    std::atomic<bool> over = false;
    std::atomic<int> moves = 0;
    std::thread thread;
};

std::vector<float> all_of(float Breakpoint::*field) {
    std::vector<float> values;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            values.push_back(parray[i][j].*field);
        }
    }
    return values;
}

/// One edit of points where they stand, by turns, as the window asks for it.
void edit_in_place(int turn) {
    const int x = pixel_x(0.2), y = pixel_y(0.3);
    switch (turn % 6) {
    case 0:
        mouse_down(GLUT_LEFT_BUTTON, pixel_x(0.0), pixel_y(1.0));
        mouse_up(GLUT_LEFT_BUTTON, pixel_x(0.7), pixel_y(0.0));
        break;
    case 1:
        menu_select(gain_entry);
        break;
    case 2:
        mouse_down(GLUT_MIDDLE_BUTTON, x, y, GLUT_ACTIVE_SHIFT);
        mouse_move(x, y + turn % 5 - 2);
        mouse_up(GLUT_MIDDLE_BUTTON, x, y, GLUT_ACTIVE_SHIFT);
        break;
    case 3:
        mouse_down(GLUT_LEFT_BUTTON, x, y);
        mouse_up(GLUT_LEFT_BUTTON, x, y);
        mouse_down(GLUT_MIDDLE_BUTTON, x, y);
        mouse_move(x + 1, y + turn % 5 - 2);
        mouse_up(GLUT_MIDDLE_BUTTON, x + 1, y);
        break;
    case 4:
        special(turn % 4 == 0 ? GLUT_KEY_UP : GLUT_KEY_DOWN, 0, 0);
        break;
    default:
        clear_all();
        break;
    }
    frame();
}

TEST_F(Threads, NotesMoveTheSoundWhilePointsAreEdited) {
    float largest = 0.0f;
    int moves = 0;
    std::string replies;
    for (int n = 0; n < 4000; ++n) {
        replies += "x\n-0.01\n";
    }
    const std::vector<float> levels = all_of(&Breakpoint::amp);
    const std::vector<float> freqs = all_of(&Breakpoint::freq);
    conversation(replies, [&] {
        AudioThread audio;
        MidiThread midi_thread;
        for (int turn = 0; turn < 300 || midi_thread.moved() < 100 || audio.rendered() < 50;
             ++turn) {
            edit_in_place(turn);
        }
        moves = midi_thread.moved();
        largest = audio.largest();
    });
    EXPECT_GT(moves, 0);
    EXPECT_GT(largest, 0.0f);
    EXPECT_TRUE(store_is_published());
    EXPECT_NE(all_of(&Breakpoint::amp), levels);
    EXPECT_NE(all_of(&Breakpoint::freq), freqs);
    withdraw_store();
    EXPECT_EQ(retired_blocks(), 0);
}

TEST_F(Threads, NotesMoveTheSoundWhileTheStoreIsEdited) {
    float largest = 0.0f;
    printed([&] {
        AudioThread audio;
        MidiThread midi_thread;
        for (int turn = 0; turn < 200 || midi_thread.moved() < 100 || audio.rendered() < 50;
             ++turn) {
            const StoreEdit edit;
            take_out_slot(turn % partials, false);
            --partials;
            grow_slots(1);
            parray[partials] = clone_points(parray[0], npoints[0]);
            npoints[partials] = npoints[0];
            ++partials;
            cover_by_peval();
            recompute_times();
            recompute_all_pitch();
            recompute_logfreq();
            std::this_thread::yield();
        }
        largest = audio.largest();
    });
    EXPECT_LE(largest, most);
    withdraw_store();
    EXPECT_EQ(retired_blocks(), 0);
}

} // namespace
