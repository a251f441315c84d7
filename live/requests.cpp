#include "live/requests.h"

#include "live/live.h"
#include "live/shared.h"
#include "live/sound_output.h"
#include "store/published.h"

#include <GL/freeglut.h>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdio>

namespace {

struct Line {
    Said text;
    double number;
};

/// A line's place; `turn` tells whose turn it is: equal to the writer's count when free, one
/// above when filled.
struct Place {
    std::atomic<size_t> turn;
    Line line;
};

constexpr size_t most_lines = 256;      // a power of two
constexpr unsigned serve_interval = 10; // ms

/// Bounded queue of several writers and one reader.
class Lines {
  public:
    Lines() {
        for (size_t i = 0; i < most_lines; i++) {
            places[i].turn.store(i, std::memory_order_relaxed);
        }
    }

    /// False when it is full.
    bool put(Line line) {
        size_t count = written.load(std::memory_order_relaxed);
        for (;;) {
            Place &place = places[count % most_lines];
            const auto ahead = static_cast<ptrdiff_t>(place.turn.load(std::memory_order_acquire)) -
                               static_cast<ptrdiff_t>(count);
            if (ahead < 0) {
                return false;
            }
            if (ahead > 0) {
                count = written.load(std::memory_order_relaxed);
            } else if (written.compare_exchange_weak(count, count + 1, std::memory_order_relaxed)) {
                place.line = line;
                place.turn.store(count + 1, std::memory_order_release);
                return true;
            }
        }
    }

    /// False when it is empty.
    bool take(Line &line) {
        Place &place = places[taken % most_lines];
        if (place.turn.load(std::memory_order_acquire) != taken + 1) {
            return false;
        }
        line = place.line;
        place.turn.store(taken + most_lines, std::memory_order_release);
        taken++;
        return true;
    }

  private:
    std::array<Place, most_lines> places;
    std::atomic<size_t> written = 0;
    size_t taken = 0;
};

Lines lines;
std::atomic<bool> idle_off = false;
std::atomic<bool> redisplay = false;

/// How each text is printed, in the order of Said.
void (*const printers[])(double number) = {
    [](double) { std::puts("fpAU:Stopped!"); },
    [](double) { std::puts("Can't access input buffer"); },
    [](double number) { std::printf("l = %ld\n", static_cast<long>(number)); },
    [](double number) { std::printf("INNF = %d\n", static_cast<int>(number)); },
    [](double number) { std::printf("Time: %f\n", number); },
};

void serve_again(int) {
    serve_requests();
    if (!store_is_published()) {
        publish_store(); // the edit that withdrew it is over
    }
    watch_sound_output();
    glutTimerFunc(serve_interval, serve_again, 0);
}

} // namespace

void ask_print(Said text, double number) {
    lines.put({text, number});
}

void ask_idle_off() {
    idle_off.store(true, std::memory_order_release);
}

void ask_redisplay() {
    redisplay.store(true, std::memory_order_release);
}

void serve_requests() {
    if (idle_off.exchange(false) && peek(zgen.state) == 0 && peek(fplayer.playing) == 0) {
        glutIdleFunc(nullptr);
    }
    if (redisplay.exchange(false)) {
        glutPostRedisplay();
    }
    Line line;
    while (lines.take(line)) {
        printers[static_cast<size_t>(line.text)](line.number);
    }
}

void serve_by_timer() {
    glutTimerFunc(serve_interval, serve_again, 0);
}
