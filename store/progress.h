// store/progress.h -- one progress line on standard error for work that lasts over a second.
// Shown only when standard error is a terminal, rewritten in place, gone at the end; standard
// output never sees it. Calling advance() in a loop costs a counter.
#pragma once

#include <cstdint>

/// Lives as long as the work it reports. One at a time, window thread only.
class Progress {
  public:
    /// `what` is the verb shown, `total` the amount of work in any unit, 0 for unknown.
    Progress(const char *what, uint64_t total);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// `done` of the total is done by now.
    void advance(uint64_t done) {
        if (++calls % look_every == 0) {
            look(done);
        }
    }

    /// For steps that are long themselves: looks at the clock at every call.
    void look(uint64_t done);

  private:
    static constexpr uint32_t look_every = 256; // calls between looks at the clock
    const char *what;
    uint64_t total;
    uint32_t calls = 0;
    bool terminal;
    bool shown = false;
    int64_t next; // nanoseconds on the monotonic clock, when to write again
};
