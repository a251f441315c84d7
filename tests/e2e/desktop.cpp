#include "tests/e2e/desktop.h"

#include "tests/e2e/process.h"

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int start_timeout = 20000; // milliseconds

/// Reads the display number that the server writes when it is ready.
std::string read_number(int from) {
    std::string text;
    pollfd wait = {from, POLLIN, 0};
    while (poll(&wait, 1, start_timeout) == 1) {
        char c;
        if (read(from, &c, 1) != 1 || c == '\n') {
            break;
        }
        text += c;
    }
    return text;
}

void be_server(int number_to) {
    const int nothing = open("/dev/null", O_WRONLY);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    execute({"Xvfb", "-displayfd", std::to_string(number_to), "-noreset", "-screen", "0",
             "1600x1400x24"});
}

} // namespace

Desktop::Desktop() {
    int ends[2];
    if (pipe(ends) != 0) {
        return;
    }
    const pid_t parent = getpid();
    server = fork();
    if (server == 0) {
        die_with_parent(parent, SIGTERM);
        close(ends[0]);
        be_server(ends[1]);
    }
    close(ends[1]);
    const std::string number = read_number(ends[0]);
    close(ends[0]);
    if (!number.empty()) {
        name = ":" + number;
    }
}

Desktop::~Desktop() {
    if (server > 0) {
        end_process(server, SIGTERM);
    }
}
