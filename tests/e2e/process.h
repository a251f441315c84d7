// tests/e2e/process.h -- child processes of the tests: each is ended by its own pid, at the
// latest when the test process itself dies.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

using Duration = std::chrono::milliseconds;

/// For a child between fork and exec: asks for `signal` when the parent dies.
void die_with_parent(pid_t parent, int signal);

/// For a child: replaces the process by the command, or leaves with status 127.
[[noreturn]] void execute(const std::vector<std::string> &command);

/// Waits for the child's end. The exit status, 128 plus the number of a deadly signal, or
/// nothing when it still runs after `timeout`.
std::optional<int> wait_for_exit(pid_t child, Duration timeout);

/// Ends a child: `signal` first, SIGKILL when that does not help within two seconds.
void end_process(pid_t child, int signal);

/// Runs a command to its end, its output discarded, and returns its exit status.
int run_command(const std::vector<std::string> &command, const std::string &display);

/// Asks `condition` every few milliseconds until it is true; false when `timeout` has passed.
template <typename Condition> bool wait_until(Duration timeout, const Condition &condition);

void pause_for(Duration time);

template <typename Condition> bool wait_until(Duration timeout, const Condition &condition) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        pause_for(Duration(10));
    }
    return true;
}
