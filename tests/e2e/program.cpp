#include "tests/e2e/program.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <poll.h>
#include <pty.h>
#include <sstream>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr char end_of_file_key = 4; // Ctrl+D

[[noreturn]] void be_program(const Launch &launch, pid_t parent) {
    die_with_parent(parent, SIGKILL);
    if (!launch.folder.empty() && chdir(launch.folder.c_str()) != 0) {
        _exit(126);
    }
    if (launch.display.empty()) {
        unsetenv("DISPLAY");
    } else {
        setenv("DISPLAY", launch.display.c_str(), 1);
    }
    unsetenv("WAYLAND_DISPLAY");
    // No sound server but one that the test has named.
    setenv("PULSE_SERVER", "unix:/nowhere", 0);
    setenv("JACK_DEFAULT_SERVER", "quillgrove_none", 0);
    setenv("ALSA_CONFIG_PATH", "/dev/null", 0); // neither cards nor MIDI devices of the machine
    std::vector<std::string> command = {QUILLGROVE_PROGRAM};
    command.insert(command.end(), launch.arguments.begin(), launch.arguments.end());
    execute(command);
}

void close_end(int &end) {
    if (end >= 0) {
        close(end);
        end = -1;
    }
}

/// Takes what one end has to say; closes it at its end of file.
bool drain(int &from, std::string &text) {
    char bytes[4096];
    const ssize_t count = read(from, bytes, sizeof bytes);
    if (count <= 0) {
        close_end(from);
        return false;
    }
    text.append(bytes, static_cast<size_t>(count));
    return true;
}

} // namespace

Program::Program(const Launch &launch) : on_terminal(launch.terminal) {
    if (launch.terminal) {
        start_on_terminal(launch);
    } else {
        start_on_pipes(launch);
    }
}

void Program::start_on_terminal(const Launch &launch) {
    const pid_t parent = getpid();
    termios quiet = {};
    winsize size = {50, 132, 0, 0};
    cfmakeraw(&quiet);
    quiet.c_lflag |= ICANON | ISIG; // lines and the end-of-file key, but no echo
    quiet.c_iflag |= ICRNL;
    quiet.c_oflag |= OPOST | ONLCR;
    quiet.c_cc[VEOF] = end_of_file_key;
    child = forkpty(&from_program, nullptr, &quiet, &size);
    if (child == 0) {
        be_program(launch, parent);
    }
    to_program = dup(from_program);
}

void Program::start_on_pipes(const Launch &launch) {
    int input[2], output[2], error[2];
    if (pipe(input) != 0 || pipe(output) != 0 || pipe(error) != 0) {
        return;
    }
    const pid_t parent = getpid();
    child = fork();
    if (child == 0) {
        dup2(input[0], STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        dup2(error[1], STDERR_FILENO);
        for (const int *ends : {input, output, error}) {
            close(ends[0]);
            close(ends[1]);
        }
        be_program(launch, parent);
    }
    close(input[0]);
    close(output[1]);
    close(error[1]);
    to_program = input[1];
    from_program = output[0];
    from_errors = error[0];
}

Program::~Program() {
    if (child > 0) {
        end_process(child, SIGKILL);
    }
    close_end(to_program);
    close_end(from_program);
    close_end(from_errors);
}

bool Program::read_some(int timeout) {
    pollfd ends[2] = {{from_program, POLLIN, 0}, {from_errors, POLLIN, 0}};
    if (poll(ends, 2, timeout) < 1) {
        return from_program >= 0 || from_errors >= 0;
    }
    if (ends[0].revents != 0) {
        drain(from_program, said);
    }
    if (ends[1].revents != 0) {
        drain(from_errors, complaints);
    }
    return from_program >= 0 || from_errors >= 0;
}

std::string Program::output() const {
    std::string text = said;
    std::string::size_type at = 0;
    while ((at = text.find("\r\n", at)) != std::string::npos) {
        text.erase(at, 1);
    }
    return text;
}

bool Program::expect(const std::string &text, Duration timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    bool open = true;
    while (true) {
        const std::string whole = output();
        const size_t at = whole.find(text, std::min(found, whole.size()));
        if (at != std::string::npos) {
            found = at + text.size();
            return true;
        }
        if (!open || std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        open = read_some(50);
    }
}

void Program::send(const std::string &text) {
    size_t sent = 0;
    while (sent < text.size()) {
        const ssize_t count = write(to_program, text.data() + sent, text.size() - sent);
        if (count <= 0) {
            return;
        }
        sent += static_cast<size_t>(count);
    }
}

void Program::end_input() {
    if (on_terminal) {
        send(std::string(1, end_of_file_key));
    } else {
        close_end(to_program);
    }
}

void Program::listen(Duration time) {
    const auto deadline = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < deadline && read_some(20)) {
    }
}

int Program::exit_status(Duration timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (std::chrono::steady_clock::now() < deadline && read_some(50)) {
    }
    const std::optional<int> status = wait_for_exit(child, Duration(1000));
    if (status) {
        child = -1;
    }
    return status.value_or(-1);
}

double Program::busy_seconds() const {
    std::ifstream file("/proc/" + std::to_string(child) + "/stat");
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    // The name in parentheses comes second and may hold blanks; the times of user and system
    // are the twelfth and thirteenth field behind it, in clock ticks.
    const size_t behind_name = text.rfind(')');
    if (behind_name == std::string::npos) {
        return 0.0;
    }
    std::istringstream fields(text.substr(behind_name + 1));
    std::string skipped;
    for (int i = 0; i < 11; ++i) {
        fields >> skipped;
    }
    double user = 0.0;
    double system = 0.0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}
