// The progress line on a terminal and its absence elsewhere.
#include "store/progress.h"

#include "tests/support/child.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

namespace {

constexpr useconds_t over_a_second = 1050000; // microseconds

/// What `work` writes to standard error while that is a terminal.
std::string on_terminal(void (*work)()) {
    int master = -1;
    int slave = -1;
    if (openpty(&master, &slave, nullptr, nullptr, nullptr) != 0) {
        return "no terminal";
    }
    const int kept = dup(STDERR_FILENO);
    std::fflush(stderr);
    dup2(slave, STDERR_FILENO);
    work();
    std::fflush(stderr);
    dup2(kept, STDERR_FILENO);
    close(kept);
    const ssize_t ending = write(slave, "$", 1);
    std::string text;
    char c;
    while (ending == 1 && read(master, &c, 1) == 1 && c != '$') {
        text += c;
    }
    close(slave);
    close(master);
    return text;
}

TEST(ProgressLine, ShortWorkShowsNothing) {
    EXPECT_EQ(on_terminal([] {
                  Progress progress("Reading", 100);
                  for (uint64_t i = 0; i < 100000; ++i) {
                      progress.advance(50);
                  }
                  progress.look(99);
              }),
              "");
}

TEST(ProgressLine, LongWorkIsShownAndGoneAtTheEnd) {
    EXPECT_EQ(on_terminal([] {
                  Progress progress("Reading", 200);
                  usleep(over_a_second);
                  progress.look(50);
                  progress.look(60); // within a tenth of a second: not written again
              }),
              "\r\x1b[KReading:  25 %\r\x1b[K");
}

TEST(ProgressLine, AmountsPastTheTotalAreAHundredPercent) {
    EXPECT_EQ(on_terminal([] {
                  Progress progress("Reading", 10);
                  usleep(over_a_second);
                  for (int i = 0; i < 256; ++i) {
                      progress.advance(25);
                  }
              }),
              "\r\x1b[KReading: 100 %\r\x1b[K");
}

TEST(ProgressLine, AnUnknownTotalShowsTheVerbAlone) {
    EXPECT_EQ(on_terminal([] {
                  Progress progress("Mixing", 0);
                  usleep(over_a_second);
                  progress.look(50);
              }),
              "\r\x1b[KMixing...\r\x1b[K");
}

TEST(ProgressLine, ElsewhereNothingIsWritten) {
    const ChildResult result = in_child("", [] {
        Progress progress("Reading", 200);
        usleep(over_a_second);
        progress.look(50);
    });
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.status, 0);
}

} // namespace
