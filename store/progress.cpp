#include "store/progress.h"

#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace {

constexpr int64_t second = 1000000000;
constexpr int64_t rewrite_interval = second / 10;

int64_t now() {
    timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return static_cast<int64_t>(t.tv_sec) * second + t.tv_nsec;
}

} // namespace

Progress::Progress(const char *verb, uint64_t amount)
    : what(verb), total(amount), terminal(isatty(STDERR_FILENO) != 0), next(now() + second) {}

Progress::~Progress() {
    if (shown) {
        std::fputs("\r\033[K", stderr);
    }
}

void Progress::look(uint64_t done) {
    if (!terminal) {
        return;
    }
    const int64_t time = now();
    if (time < next) {
        return;
    }
    next = time + rewrite_interval;
    shown = true;
    if (total > 0) {
        const double percent = 100.0 * static_cast<double>(done) / static_cast<double>(total);
        std::fprintf(stderr, "\r\033[K%s: %3.0f %%", what, percent > 100.0 ? 100.0 : percent);
    } else {
        std::fprintf(stderr, "\r\033[K%s...", what);
    }
}
