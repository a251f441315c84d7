#include "tests/support/child.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string contents(FILE *file) {
    std::string text;
    char block[4096];
    std::rewind(file);
    for (size_t got; (got = std::fread(block, 1, sizeof block, file)) > 0;) {
        text.append(block, got);
    }
    std::fclose(file);
    return text;
}

[[noreturn]] void be_child(int in, FILE *out, FILE *err, const std::function<void()> &work,
                           const ChildLimits &limits) {
    dup2(in, STDIN_FILENO);
    dup2(fileno(out), STDOUT_FILENO);
    dup2(fileno(err), STDERR_FILENO);
    alarm(limits.seconds);
    if (limits.address_space > 0) {
        const rlimit limit = {limits.address_space, limits.address_space};
        setrlimit(RLIMIT_AS, &limit);
    }
    work();
    std::fflush(nullptr);
    _exit(0);
}

} // namespace

ChildResult in_child(const std::string &input, const std::function<void()> &work,
                     ChildLimits limits) {
    constexpr size_t pipe_room = 65536; // bytes that a pipe takes without a reader
    int ends[2];
    if (input.size() > pipe_room || pipe(ends) != 0) {
        std::abort();
    }
    FILE *out = std::tmpfile();
    FILE *err = std::tmpfile();
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[1]);
        be_child(ends[0], out, err, work, limits);
    }
    close(ends[0]);
    const ssize_t wrote = write(ends[1], input.data(), input.size());
    close(ends[1]);
    int state = 0;
    rusage usage = {};
    wait4(child, &state, 0, &usage);
    ChildResult result = {};
    result.status = WIFEXITED(state) && wrote >= 0 ? WEXITSTATUS(state) : -1;
    result.signal = WIFSIGNALED(state) ? WTERMSIG(state) : 0;
    result.out = contents(out);
    result.err = contents(err);
    result.peak = usage.ru_maxrss;
    return result;
}
