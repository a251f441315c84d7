// tests/support/child.h -- a piece of code that may end the process, run in a child of its own.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

/// How the child ended and what it and its own children wrote.
struct ChildResult {
    int status;      // exit status; 0 when the work returned, -1 when a signal ended it
    int signal;      // 0 unless a signal ended it
    std::string out; // standard output
    std::string err; // standard error
    long peak;       // KiB, largest resident size
};

struct ChildLimits {
    size_t address_space = 0; // bytes, 0 for no limit
    unsigned seconds = 60;    // wall-clock time before the child is ended by SIGALRM
};

/// Runs `work` in a child whose standard input is a pipe that holds `input` and then ends.
ChildResult in_child(const std::string &input, const std::function<void()> &work,
                     ChildLimits limits = {});

/// True when the code runs under a sanitizer, whose own memory no limit could tell apart.
constexpr bool sanitized() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    return true;
#else
    return false;
#endif
#else
    return false;
#endif
}
