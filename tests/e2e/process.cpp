#include "tests/e2e/process.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr Duration patience(2000);      // for a process to heed a signal
constexpr Duration longest_tool(20000); // for a helper command
constexpr int status_not_started = 127; // as a shell tells it
constexpr int status_of_signal_0 = 128; // as a shell tells it

} // namespace

void die_with_parent(pid_t parent, int signal) {
    prctl(PR_SET_PDEATHSIG, signal);
    if (getppid() != parent) {
        _exit(status_not_started); // the parent was gone before the request stood
    }
}

void execute(const std::vector<std::string> &command) {
    std::vector<char *> words;
    for (const std::string &word : command) {
        words.push_back(const_cast<char *>(word.c_str()));
    }
    words.push_back(nullptr);
    execvp(words[0], words.data());
    _exit(status_not_started);
}

void pause_for(Duration time) {
    std::this_thread::sleep_for(time);
}

std::optional<int> wait_for_exit(pid_t child, Duration timeout) {
    int status = 0;
    if (!wait_until(timeout, [&] { return waitpid(child, &status, WNOHANG) == child; })) {
        return std::nullopt;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : status_of_signal_0 + WTERMSIG(status);
}

void end_process(pid_t child, int signal) {
    kill(child, signal);
    if (!wait_for_exit(child, patience)) {
        kill(child, SIGKILL);
        wait_for_exit(child, patience);
    }
}

int run_command(const std::vector<std::string> &command, const std::string &display) {
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        die_with_parent(parent, SIGKILL);
        setenv("DISPLAY", display.c_str(), 1);
        const int nothing = open("/dev/null", O_WRONLY);
        dup2(nothing, STDOUT_FILENO);
        execute(command);
    }
    const std::optional<int> status = wait_for_exit(child, longest_tool);
    if (!status) {
        end_process(child, SIGKILL);
    }
    return status.value_or(-1);
}
